// The UNI ports of an ONU with their VLANs, which can be changed by their names.
import m from "mithril";
import { call, may } from "../base/api";
import { rate } from "../base/format";
import type { OnuDetail, Row } from "../base/model";
import { badge, loading, nothing, panel, problem, Scrolls } from "../parts/parts";
import { vlan_cell, VlanForm } from "./uni_vlans";

interface Given {
    detail: OnuDetail;
    port: number;
    id: number;
}

function link_badge(uni: Row): m.Vnode {
    if (uni.admin === false) return badge("idle", "disabled");
    if (uni.link === null || uni.link === undefined) return badge("idle", "unknown");
    return uni.link === "down" ? badge("idle", "no link") : badge("good", String(uni.link));
}

// How much a UNI port takes in and gives out.
function limits(uni: Row): m.Children {
    const said = (["ingress", "egress"] as const).map((way) => {
        const limit = uni[way];
        return typeof limit === "number" && m("div", `${way === "ingress" ? "in" : "out"}: ${rate(limit)}`);
    });
    return said.some(Boolean) ? said : "none";
}

export const OnuUnis: m.Closure<Given> = ({attrs: {detail: first, port, id}}) => {
    const olt = first.olt;
    let vlans: Map<number, Row> | undefined;
    let failed: Error | undefined;
    let under_way = false;
    let asked_online = false;
    let edited: number | undefined;  // a UNI port

    async function read(): Promise<void> {
        under_way = true;
        try {
            const outcome = await call(olt, "bsp_pon_onu_ctc_get_vlan_json", { pon_port: port, onu_id: id });
            const rows = (outcome.outputs?.result ?? []) as Row[];
            vlans = new Map(rows.map((row) => [Number(row.uni), row]));
            failed = undefined;
        } catch (error) {
            failed = error as Error;
        }
        under_way = false;
        m.redraw();
    }

    function row(uni: Row, looped: boolean): m.Vnode {
        const number = Number(uni.uni);
        const vlan = vlans?.get(number);
        return m(
            "tr",
            m("th", { scope: "row" }, number),
            m("td", link_badge(uni), looped && badge("warn", "loop")),
            m("td", vlan_cell(vlan)),
            may("service-affecting") &&
                m("td",
                  vlan &&
                      m("button.small",
                        {
                            type: "button",
                            onclick: () => (edited = edited === number ? undefined : number),
                            "aria-expanded": edited === number ? "true" : "false",
                            "aria-label": `Change the VLANs of UNI port ${number}`
                        },
                        "Change")),
            m("td.whole", limits(uni)),
        );
    }

    function stations(detail: OnuDetail): m.Children {
        const learnt = detail.stations;
        if (learnt.length === 0)
            return nothing(detail.read.stations ? "No MAC address was learnt behind it." :
                                                  "What was learnt behind it was not read yet.");
        return [
            m("h3", "MAC addresses behind it", m("span.count", learnt.length)),
            m(Scrolls,
              { label: "MAC addresses behind it", selector: ".few" },
              m("table.plain",
                m("thead",
                  m("tr", ["UNI", "MAC address", "VLAN"].map((title) => m("th", { scope: "col" }, title)))),
                m("tbody",
                  learnt.map(
                      ({ uni, vlan, mac }) =>
                          m("tr", m("th", { scope: "row" }, uni || "–"), m("td.mono", mac), m("td", vlan || "none"))
                  )))),
        ];
    }

    function close(is_changed: boolean): void {
        edited = undefined;
        if (is_changed) void read();
    }

    return {
        view: ({ attrs: { detail } }) => {
            const online = detail.onu.state === "online";
            // Calls need a role. Whoever only looks may still read.
            if (online && !asked_online && !under_way) {
                asked_online = true;
                void read();
            }
            const loops = new Set(detail.loops.map((loop) => Number(loop.uni)));
            const now = edited === undefined ? undefined : vlans?.get(edited);
            const heads = ["UNI", "Link", "VLANs"];
            return panel(
                "UNI ports",
                detail.unis.length === 0 ?
                    nothing("They were not read yet.") :
                    m(
                        Scrolls,
                        { label: "UNI ports" },
                        m("table.plain",
                          m("thead",
                            m("tr",
                              heads.map((title) => m("th", { scope: "col" }, title)),
                              may("service-affecting") && m("th", { scope: "col" }, m("span.hidden", "Change")),
                              m("th", { scope: "col" }, "Limits"))),
                          m("tbody", detail.unis.map((uni) => row(uni, loops.has(Number(uni.uni)))))),
                    ),
                detail.unis.length > 0 && stations(detail),
                failed && problem(failed, () => void read()),
                under_way && !vlans && loading("VLANs", 1),
                now && edited !== undefined && [m(VlanForm, {
                    key: edited,
                    olt,
                    port,
                    id,
                    uni: edited,
                    now,
                    capabilities: detail.capabilities,
                    close
                })],
            );
        },
    };
};
