// The blacklist of an OLT: ONUs that are turned away, and the way back for them.
import m from "mithril";
import { call, may } from "../base/api";
import { text } from "../base/format";
import type { Row, Waiting } from "../base/model";
import { change } from "../parts/dialog";
import { badge, button, loading, nothing, panel, problem, Scrolls } from "../parts/parts";

interface Given {
    olt: string;
    waiting: Waiting[];  // it is read again when this is another list, for who is turned away does not wait
}

export const Blacklist: m.Closure<Given> = ({attrs: {olt}}) => {
    let rows: Row[] | undefined;
    let failed: Error | undefined;
    let read_for: Waiting[] | undefined;

    async function read(): Promise<void> {
        try {
            rows = ((await call(olt, "bsp_pon_get_onu_blacklist_snmp", {})).outputs?.db_out ?? []) as Row[];
            failed = undefined;
        } catch (error) {
            failed = error as Error;
        }
        m.redraw();
    }

    async function allow(row: Row): Promise<void> {
        const { pon_port, mac } = row;
        const done = await change(
            olt,
            "bsp_pon_no_bind_blacklist_onu_by_mac",
            { pon_port, mac },
            `Allow ${mac} at port ${pon_port} again?`,
            "Allow",
            `${mac} is off the blacklist. If it is on the fibre, it waits now.`
        );
        if (done) await read();
    }

    function table(all: Row[]): m.Vnode {
        const heads = ["Port", "MAC address", "Text", "State"];
        return m(
            Scrolls,
            { label: "Blacklist" },
            m(
                "table.plain",
                m("thead",
                  m("tr",
                    heads.map((title) => m("th", { scope: "col" }, title)),
                    may("service-affecting") && m("th", { scope: "col" }, m("span.hidden", "Allow")))),
                m("tbody",
                  all.map(
                      (row) => m(
                          "tr",
                          m("td", text(row.pon_port as number)),
                          m("th.mono", { scope: "row" }, row.mac),
                          m("td", text(row.text as string)),
                          m("td",
                            row.registering ? badge("warn", "tries to come in") : badge("idle", "not on the fibre")),
                          may("service-affecting") &&
                              m("td",
                                button(
                                    "Allow again",
                                    () => void allow(row),
                                    { class: "small", "aria-label": `Allow ${row.mac} again` }
                                )),
                      )
                  )),
            ),
        );
    }

    return {
        view: ({ attrs: { waiting } }) => {
            if (waiting !== read_for) {
                read_for = waiting;
                void read();
            }
            return panel(
                ["Blacklist", rows && rows.length > 0 && m("span.count", rows.length)],
                failed     ? problem(failed, () => void read()) :
                    !rows  ? loading("the blacklist", 1) :
                    rows.length === 0 ?
                             nothing("It is empty. An ONU on it is released, and stays away until it is allowed again.") :
                             table(rows),
            );
        },
    };
};
