// The VLANs of a UNI port as lists, and the form that changes them.
import m from "mithril";
import type { Row } from "../base/model";
import { change, changes_table } from "../parts/dialog";
import { button, choice, input, nothing, OpenedForm } from "../parts/parts";

// A VLAN of a list. A trunk has the same on both sides.
interface Vlan {
    user: string;
    network: string;
}

const most_vlan = 4094;
const tag_type = 0x8100;

// The service tells a list as 100,200 of a trunk, as 100:1100,200:1200 of a translation.
function vlans_of(uni: Row | undefined): Vlan[] {
    if (!uni?.vlans) return [];
    return String(uni.vlans).split(",").map((one) => {
        const [user = "", network = user] = one.split(":");
        return { user, network };
    });
}

function said(mode: string, vlans: Vlan[]): string {
    return vlans.map(({ user, network }) => (mode === "trunk" ? user : `${user} → ${network}`)).join(", ");
}

// What a UNI port does with VLANs, in a cell of a table.
export function vlan_cell(uni: Row | undefined): m.Children {
    if (!uni) return "–";
    const mode = String(uni.vlan_mode);
    const vlans = vlans_of(uni);
    return [
        mode,
        vlans.length > 0 && m("ul.vlans", vlans.map((vlan) => m("li", said(mode, [vlan])))),
        m(".muted.whole", `untagged: ${uni.pvid}`),
    ];
}

export interface FormAttributes {
    olt: string;
    port: number;
    id: number;
    uni: number;
    now: Row;
    capabilities: Row | null;
    close: (is_changed: boolean) => void;
}

export const VlanForm: m.Closure<FormAttributes> = ({attrs: {olt, port, id, uni, now, capabilities, close}}) => {
    const had = String(now.vlan_mode);
    let mode = had;
    let pvid = String(now.pvid);
    let priority = String(now.priority);
    let vlans = vlans_of(now);
    const most = Number(capabilities?.max_vlans ?? 0);

    // What it has now can stay, whatever is known of it.
    function modes(): [string, string][] {
        const able: [string, boolean][] = [
            ["transparent", true],
            ["tag", true],
            ["translation", capabilities?.vlan_translation === true],
            ["trunk", capabilities?.vlan_trunk === true],
        ];
        return able.filter(([name, can]) => can || name === had).map(([name]) => [name, name]);
    }

    const has_list = (): boolean => mode === "translation" || mode === "trunk";

    function listed(): Vlan[] {
        if (!has_list()) return [];
        const all = vlans.map(({ user, network }) => ({ user, network: mode === "trunk" ? user : network }));
        return all.sort((a, b) => Number(a.user) - Number(b.user));
    }

    function differences(): { name: string; before: string; after: string }[] {
        const all = [
            { name: "VLAN mode", before: had, after: mode },
            { name: "VLAN of untagged frames", before: String(now.pvid), after: pvid },
            { name: "802.1p priority", before: String(now.priority), after: priority },
            { name: "VLANs", before: said(had, vlans_of(now)) || "none", after: said(mode, listed()) || "none" },
        ];
        return all.filter(({ before, after }) => before !== after);
    }

    // What cannot be, as a sentence; what single fields take they say themselves.
    function wrong(): string {
        if (!has_list()) return "";
        if (vlans.length === 0) return "The list has at least one VLAN.";
        for (const side of ["user", "network"] as const) {
            const seen = new Set<string>();
            for (const vlan of listed()) {
                if (vlan[side] && seen.has(vlan[side]))
                    return `VLAN ${vlan[side]} is in the list twice${side === "network" ? ", in the network" : ""}.`;
                seen.add(vlan[side]);
            }
        }
        return "";
    }

    function values(): Record<string, string | number> {
        const all: Record<string, string | number> =
            { mode, pvid, priority, tpid: Number(now.tpid ?? tag_type), count: listed().length };
        listed().forEach(({ user, network }, place) => {
            all[`user_${place + 1}`] = user;
            all[`network_${place + 1}`] = network;
        });
        return all;
    }

    async function submit(event: Event): Promise<void> {
        event.preventDefault();
        const where = { onu_cmd: "BSP_CMD_ONU_VLAN_SET", onu_pon_port: port, onu_onu_id: id, onu_uni_port: uni };
        const name = `UNI port ${uni} of ONU ${port}/${id}`;
        const done = await change(
            olt,
            "bsp_pon_onu_ctc_config",
            { msg: {...where, ...values() } },
            `Change the VLANs of ${name}`,
            "Change it",
            `${name} is changed.`
        );
        if (done) close(true);
        m.redraw();
    }

    function vlan_field(label: string, value: string, set: (value: string) => void): m.Vnode {
        return input(label, value, set, { type: "number", min: 1, max: most_vlan, required: true });
    }

    function list(): m.Vnode {
        return m(
            "fieldset.list",
            m("legend",
              mode === "trunk" ? "VLANs that pass with their tags" : "VLANs at the UNI port, and what they are beyond"),
            vlans.map(
                (vlan, place) => m(
                    ".entry",
                    mode === "trunk" ?
                        vlan_field(`VLAN ${place + 1}`, vlan.user, (value) => (vlan.user = value)) :
                        [
                            vlan_field(`At the UNI port ${place + 1}`, vlan.user, (value) => (vlan.user = value)),
                            m("span.arrow", { "aria-hidden": "true" }, "→"),
                            vlan_field(`In the network ${place + 1}`, vlan.network, (value) => (vlan.network = value)),
                        ],
                    button(
                        "Remove",
                        () => (vlans = vlans.filter((_, other) => other !== place)),
                        { class: "small", "aria-label": `Remove VLAN ${vlan.user || place + 1}` }
                    ),
                ),
            ),
            vlans.length === 0 && nothing("There is none yet."),
            button(
                "Add a VLAN",
                () => (vlans = [...vlans, { user: "", network: "" }]),
                { class: "small", disabled: vlans.length >= most }
            ),
            m("span.hint", `At most ${most}.`),
        );
    }

    return {
        view: () => {
            const changed = differences();
            const problem = wrong();
            return m(
                OpenedForm,
                { label: `VLANs of UNI port ${uni}`, submit },
                m("h3", `UNI port ${uni}`),
                choice("VLAN mode", mode, modes(), (value) => (mode = value)),
                vlan_field("VLAN of untagged frames", pvid, (value) => (pvid = value)),
                input(
                    "802.1p priority",
                    priority,
                    (value) => (priority = value),
                    { type: "number", min: 0, max: 7, required: true }
                ),
                has_list() && list(),
                changed.length === 0 ? m("p.muted", "Nothing is different yet.") : changes_table(changed),
                m("p.failed", { role: "alert" }, problem),
                m(
                    ".buttons",
                    button("Cancel", () => close(false)),
                    m("button.primary",
                      { type: "submit", disabled: changed.length === 0 || problem !== "" },
                      "Change"),
                ),
            );
        },
    };
};
