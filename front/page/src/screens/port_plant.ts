// The tree of fibres and splitters of a PON port: who is below what, who fell together, and where a cut is likely.
import m from "mithril";
import { segment } from "../base/api";
import { age, moment, plural, words } from "../base/format";
import { olt_tables, to_olt, to_onu } from "../base/place";
import type { Fall, Plant, PlantCounts, PlantNode, PlantOnu } from "../base/plant";
import { Resource, use } from "../base/store";
import { awaited, badge, link, nothing, panel, row_link, state_badge, Tone } from "../parts/parts";
import { Branch, Tree } from "../parts/tree";

const counted: [keyof PlantCounts, Tone, string][] = [
    ["online", "good", "online"],
    ["offline", "bad", "offline"],
    ["unauthenticated", "warn", "refused"],
    ["waiting", "new", "waiting"],
    ["missing", "idle", "not there"],
    ["low_light", "warn", "with weak light"],
];

function address(olt: string, onu: PlantOnu): string | undefined {
    if (onu.pon_port === null) return undefined;
    return onu.onu_id === null ? to_olt(olt, "waiting") : to_onu(olt, onu.pon_port, onu.onu_id);
}

function name_of(onu: PlantOnu): string {
    const where = onu.onu_id === null ? "" : `${onu.pon_port}/${onu.onu_id} `;
    return where + (onu.description || onu.named || onu.mac || "");
}

function state_of(onu: PlantOnu): string {
    if (onu.state) return onu.state === "unauthenticated" ? "refused" : onu.state;
    return onu.pon_port === null ? "not there" : `at port ${onu.pon_port}`;
}

function leaf(olt: string, onu: PlantOnu): Branch {
    const to = address(olt, onu);
    const weak = onu.light === "low";
    const shown = onu.state ? state_badge(onu.state) : badge("idle", state_of(onu));
    return {
        label: `ONU ${name_of(onu)}: ${state_of(onu)}${weak ? ", weak light" : ""}`,
        show: () => [to ? row_link(to, name_of(onu)) : m("span", name_of(onu)), shown, weak && badge("warn", "weak")],
        ...(to ? { open: () => m.route.set(to) } : {}),
        is_open: false,
        below: [],
    };
}

function likely(fall: Fall): string {
    const who = `${plural(fall.onus.length, "ONU")} fell together`;
    return fall.whole ? `likely cut here: ${who}` : `likely cut below it: ${who}`;
}

function branch_of(plant: Plant, node: PlantNode): Branch {
    const counts = counted.filter(([name]) => node.counts[name] > 0);
    const falls = plant.falls.filter((fall) => fall.node === node.name);
    const what = [node.name, node.ratio && `1:${node.ratio}`, node.place, node.length !== null && `${node.length} m`];
    const facts = what.filter((one): one is string => !!one);
    const is_troubled = node.counts.online < node.counts.onus;
    return {
        label: [
            ...facts, ...counts.map(([name, , said]) => `${node.counts[name]} ${said}`),
            node.counts.onus === 0 ? "no ONUs" : "", ...falls.map(likely)
        ].filter(Boolean)
                   .join(", "),
        show: () =>
            [m("strong", node.name),
             node.ratio !== null && m("span", `1:${node.ratio}`),
             m("span.muted", facts.filter((one) => one !== node.name && one !== `1:${node.ratio}`).join(", ")),
             counts.map(([name, tone, said]) => badge(tone, `${node.counts[name]} ${said}`)),
             node.counts.onus === 0 && m("span.muted", "no ONUs"),
             falls.map((fall) => m("strong.cut", "✂ ", likely(fall)))],
        is_open: is_troubled || node.splitters.length > 0,
        below: [
            ...node.splitters.map((each) => branch_of(plant, each)),
            ...node.onus.map((onu) => leaf(plant.olt, onu)),
        ],
    };
}

function fall_line(fall: Fall): m.Vnode {
    const why = fall.cause ? words(fall.cause) : "unknown why";
    const where = fall.node === null ?
        "The plan does not have them." :
        fall.whole ? `Nobody below ${fall.node} is online: look at it, and at the fibre to it.` :
                     `Others below ${fall.node} are online: look at the fibres that leave it.`;
    return m(
        "li",
        badge("bad", `${plural(fall.onus.length, "ONU")} fell together: ${why}`),
        " at ",
        moment(fall.first),
        m("span.muted", ", ", age(fall.first)),
        m("p", where, fall.path.length > 1 && m("span.muted", ` (${fall.path.join(" → ")})`)),
    );
}

function unplanned_line(plant: Plant): m.Children {
    if (plant.unplanned.length === 0) return undefined;
    return m(
        "p.unplanned",
        m("span.muted", "Not in the plan: "),
        plant.unplanned.map((onu, place) => [
            place > 0 && ", ",
            link(address(plant.olt, onu) ?? to_olt(plant.olt, "onus"), name_of(onu)),
        ]),
    );
}

function plant_of(olt: string, port: number): Resource<Plant> {
    return use<Plant>(`/olts/${segment(olt)}/ports/${port}/plant`, olt_tables);
}

// What is known of the fibres, or nothing where no plant file tells it.
export function plant_panel(olt: string, port: number): m.Children {
    const plant = plant_of(olt, port).value;
    if (!plant?.tree) return undefined;
    return panel(
        "Tree of splitters",
        plant.falls.length > 0 && m("ul.fallen", plant.falls.map(fall_line)),
        m(Tree, { label: `Splitters of port ${port}`, root: branch_of(plant, plant.tree) }),
        unplanned_line(plant),
    );
}

// What stands for it otherwise: how the daemon is told of the fibres, for whoever can do so.
export function plant_hint(olt: string, port: number): m.Vnode {
    const asked = plant_of(olt, port);
    if (!asked.value) return panel("Tree of splitters", awaited(asked, "the tree of splitters", 1));
    return panel(
        "Tree of splitters",
        nothing([
            "How this port is split is not known. A file tells it, which the OLT's table in ponfront.toml names: ",
            m("code", `plant = "/etc/ponfront/${olt}-plant.toml"`),
            ". ponfront.toml(5) says what it has.",
        ]),
    );
}
