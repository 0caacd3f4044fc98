// The UNI ports of an ONU with their VLANs, which can be changed by their names.
import m from "mithril";
import { call, may } from "../base/api";
import { text } from "../base/format";
import type { OnuDetail, Row } from "../base/model";
import { change, changes_table } from "../parts/dialog";
import { badge, button, choice, input, loading, nothing, panel, problem } from "../parts/parts";

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

export const OnuUnis: m.Closure<Given> = ({attrs: {detail: first, port, id}}) => {
    const olt = first.olt;
    let vlans: Map<number, Row> | undefined;
    let failed: Error | undefined;
    let under_way = false;
    let asked_online = false;
    let edited: number | undefined;  // a UNI port
    let mode = "";
    let pvid = "";
    let priority = "";

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

    function edit(uni: number): void {
        const now = vlans?.get(uni);
        edited = uni;
        // A list of VLANs is not edited here; it can be left behind for one VLAN, or none.
        mode = now?.vlan_mode === "transparent" ? "transparent" : "tag";
        pvid = String(now?.pvid ?? 1);
        priority = String(now?.priority ?? 0);
    }

    function differences(): { name: string; before: string; after: string }[] {
        const now = vlans?.get(edited as number);
        const all = [
            { name: "VLAN mode", before: String(now?.vlan_mode), after: mode },
            { name: "VLAN of untagged frames", before: String(now?.pvid), after: pvid },
            { name: "VLANs of the list", before: String(now?.vlans ?? "none"), after: "none" },
            { name: "802.1p priority", before: String(now?.priority), after: priority },
        ];
        return all.filter(({ before, after }) => before !== after);
    }

    async function submit(event: Event): Promise<void> {
        event.preventDefault();
        const uni = edited as number;
        const setting = { onu_cmd: "BSP_CMD_ONU_VLAN_SET", onu_pon_port: port, onu_onu_id: id, onu_uni_port: uni };
        const values = { mode, pvid, priority, tpid: vlans?.get(uni)?.tpid ?? 33024 };
        const title = `Change the VLAN of UNI port ${uni} of ONU ${port}/${id}`;
        const msg = {...setting, ...values };
        if (!(await change(
                olt,
                "bsp_pon_onu_ctc_config",
                { msg },
                title,
                "Change it",
                `UNI port ${uni} of ONU ${port}/${id} is changed.`
            )))
            return;
        edited = undefined;
        void read();
        m.redraw();
    }

    function form(): m.Vnode {
        const changed = differences();
        return m(
            "form.edit",
            { onsubmit: submit, "aria-label": `VLAN of UNI port ${edited}` },
            m("h3", `UNI port ${edited}`),
            choice("VLAN mode", mode, [["transparent", "transparent"], ["tag", "tag"]], (value) => (mode = value)),
            input(
                "VLAN of untagged frames",
                pvid,
                (value) => (pvid = value),
                { type: "number", min: 1, max: 4094, required: true }
            ),
            input(
                "802.1p priority",
                priority,
                (value) => (priority = value),
                { type: "number", min: 0, max: 7, required: true }
            ),
            changed.length === 0 ? m("p.muted", "Nothing is different yet.") : changes_table(changed),
            m(
                ".buttons",
                button("Cancel", () => (edited = undefined)),
                m("button.primary", { type: "submit", disabled: changed.length === 0 }, "Change"),
            ),
        );
    }

    function row(uni: Row, looped: boolean): m.Vnode {
        const number = Number(uni.uni);
        const vlan = vlans?.get(number);
        return m(
            "tr",
            m("th", { scope: "row" }, number),
            m("td", link_badge(uni), looped && badge("warn", "loop")),
            m("td", vlan ? [text(vlan.vlan_mode as string), vlan.vlans && m("span.muted", ` ${vlan.vlans}`)] : "–"),
            m("td.right", vlan ? text(vlan.pvid as number) : "–"),
            m("td.right", text(uni.ingress as number | null)),
            m("td.right", text(uni.egress as number | null)),
            may("service-affecting") &&
                m("td",
                  vlan &&
                      m("button.small",
                        {
                            type: "button",
                            onclick: () => edit(number),
                            "aria-label": `Change the VLAN of UNI port ${number}`
                        },
                        "Change")),
        );
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
            const heads = ["UNI", "Link", "VLAN mode", "VLAN", "Ingress, kbit/s", "Egress, kbit/s"];
            return panel(
                "UNI ports",
                detail.unis.length === 0 ?
                    nothing("They were not read yet.") :
                    m(
                        "table.plain",
                        m("thead",
                          m("tr",
                            heads.map((title, place) => m(place > 2 ? "th.right" : "th", { scope: "col" }, title)),
                            may("service-affecting") && m("th", { scope: "col" }, m("span.hidden", "Change")))),
                        m("tbody", detail.unis.map((uni) => row(uni, loops.has(Number(uni.uni))))),
                    ),
                failed && problem(failed, () => void read()),
                under_way && !vlans && loading("VLANs", 1),
                edited !== undefined && form(),
            );
        },
    };
};
