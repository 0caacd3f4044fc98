// A PON port: its light, who is off together, its module and its traffic.
import m from "mithril";
import { age, count, id_set, moment, octets, plural, power, rate, text, whole, words } from "../base/format";
import { live } from "../base/live";
import { Alarm, Columns, Counters, Onu, onus_of, PonEvent, Port, Quantity } from "../base/model";
import { olt_tables, to_olt, to_onu, to_port } from "../base/place";
import { use } from "../base/store";
import { histogram } from "../parts/histogram";
import { awaited, awaited_screen, badge, columns, facts, link, loading, nothing, panel, Scrolls } from "../parts/parts";
import { Sorting, Table } from "../parts/table";
import { timeline } from "../parts/timeline";
import { cause_text, worst_first, wrong_list, wrong_of } from "../parts/wrong";
import { onu_columns, onu_tables } from "./onus";
import { plant_hint, plant_panel } from "./port_plant";

const weak_at_olt = -27;  // dBm
const weak_at_onu = -25;

interface Given {
    olt: string;
    port: number;
}

function fallen(olt: string, onus: Onu[]): m.Children {
    const groups = new Map<string, Onu[]>();
    for (const onu of onus)
        if (onu.state !== "online") {
            // What fell within the same minute, for the same cause and at the same place, fell together.
            const key = `${onu.state} ${onu.cause ?? ""} ${onu.place ?? ""} ${Math.floor((onu.since ?? 0) / 60000)}`;
            groups.set(key, [...(groups.get(key) ?? []), onu]);
        }
    if (groups.size === 0) return nothing("All its ONUs are online.");
    const sorted = [...groups.values()].sort((a, b) => b.length - a.length);
    return m(
        "ul.fallen",
        sorted.map((group) => {
            const first = group[0] as Onu;
            const why = cause_text(first.cause, first.place) || "unknown why";
            const ids = id_set(group.map(({ onu_id }) => onu_id));
            const what = `${plural(group.length, "ONU")} ${first.state === "offline" ? "offline" : "refused"}: ${why}`;
            return m(
                "li",
                badge(first.state === "offline" ? "bad" : "warn", what),
                group.length === 1 ? link(to_onu(olt, first.pon_port, first.onu_id), ` ${first.pon_port}/${ids}`) :
                                     m("span.ids", ` ${ids}`),
                first.since !== null && m("span.muted", " ", age(first.since)),
            );
        }),
    );
}

const units: Record<string, string> = {
    degC: "°C"
};

function bounds(low: number | null, high: number | null): string { return `${power(low)} … ${power(high)}`; }

function quantity_badge(state: string): m.Vnode {
    return badge(state === "normal" ? "good" : state.includes("alarm") ? "bad" : "warn", words(state));
}

function module_table(module: Quantity[]): m.Children {
    if (module.length === 0) return nothing("The module was not read yet, or there is none.");
    const head = ["Quantity", "Value", "State", "Warning outside", "Alarm outside"];
    return m(
        Scrolls,
        { label: "Quantities of the module" },
        m("table.plain",
          m("thead", m("tr", head.map((title) => m("th", { scope: "col" }, title)))),
          m("tbody",
            module.map(
                (of) => m(
                    "tr",
                    m("th", { scope: "row" }, words(of.quantity)),
                    m("td.whole", of.value === null ? "–" : `${of.value.toFixed(2)} ${units[of.unit] ?? of.unit}`),
                    m("td.whole", of.state === null ? "–" : quantity_badge(of.state)),
                    m("td.muted", bounds(of.low_warning, of.high_warning)),
                    m("td.muted", bounds(of.low_alarm, of.high_alarm)),
                ),
            ))),
    );
}

// Counters as rates between the last two readings that this page saw.
function traffic(port: Port, before: Counters | undefined): m.Children {
    const now = port.counters;
    if (!now) return nothing("The counters were not read yet.");
    const seconds = before ? (now.read - before.read) / 1000 : 0;
    const per_second = (name: string): string => {
        if (!before || seconds <= 0) return "–";
        return `${whole(((now[name] ?? 0) - (before[name] ?? 0)) / seconds)}/s`;
    };
    const names = ["unicast", "multicast", "broadcast", "errors", "discards"];
    return [
        facts(
            ["Upstream load", rate(port.up_load)],
            ["Downstream load", rate(port.down_load)],
            ["Received", octets(now.in_octets ?? 0)],
            ["Sent", octets(now.out_octets ?? 0)],
        ),
        m(
            Scrolls,
            { label: "Frames" },
            m(
                "table.plain",
                m("thead",
                  m("tr",
                    ["Frames", "In", "In, rate", "Out", "Out, rate"]
                        .map((title, place) => m(place ? "th.right" : "th", { scope: "col" }, title)))),
                m(
                    "tbody",
                    names.map(
                        (name) => m(
                            "tr",
                            m("th", { scope: "row" }, name),
                            ["in", "out"].flatMap((way) => {
                                const key = `${way}_${name}`;
                                const has = key in now;
                                return [
                                    m("td.right", has ? count(now[key]) : "–"),
                                    m("td.right", has ? per_second(key) : "–")
                                ];
                            }),
                        ),
                    ),
                ),
            ),
        ),
        m("p.muted",
          before ? ["Rates between ", moment(before.read), " and ", moment(now.read), "."] :
                   "Rates follow with the next reading."),
    ];
}

function module_panel(port: Port): m.Vnode {
    return panel(
        "Module",
        facts(
            ["Laser", badge(port.laser ? "good" : "bad", port.laser ? "on" : "off")],
            ["Launches", `${power(port.tx_power)} dBm`],
            ["Temperature", `${port.temperature.toFixed(1)} °C`],
            ["Uplink", text(port.uplink)],
            ["MAC", m("span.mono", port.mac)],
        ),
        module_table(port.module),
    );
}

function light(onus: Onu[] | undefined): m.Vnode {
    return panel(
        "Light",
        onus ?
            [
                histogram("At the OLT", measured(onus, "olt_rx_power"), weak_at_olt),
                histogram("At the ONUs", measured(onus, "rx_power"), weak_at_onu),
            ] :
            loading("light"),
    );
}

function measured(onus: Onu[], name: "rx_power" | "olt_rx_power"): number[] {
    return onus.flatMap((onu) => (onu[name] === null ? [] : [onu[name] as number]));
}

export const PortScreen: m.Closure<Given> = ({attrs: {olt, port: number}}) => {
    const base = `/olts/${encodeURIComponent(olt)}`;
    let sorting: Sorting = { by: "state", down: false };
    let last: Counters | undefined;
    let before: Counters | undefined;
    const listed = onu_columns(olt);

    function follow(counters: Counters | null): void {
        if (!counters || counters.read === last?.read) return;
        before = last;
        last = counters;
    }

    function onu_table(onus: Onu[]): m.Vnode {
        return m(Table<Onu>, {
            label: `ONUs of port ${number}`,
            columns: listed,
            rows: onus,
            id: (onu: Onu) => `${onu.onu_id}`,
            open: (onu: Onu) => m.route.set(to_onu(olt, onu.pon_port, onu.onu_id)),
            sorting,
            sort: (other: Sorting) => (sorting = other),
            empty: "No ONU is bound at this port.",
        });
    }

    function header(port: Port): m.Vnode {
        const total = use<{ ports: Port[] }>(`${base}/ports`, olt_tables).value?.ports.length ?? number;
        return m(
            ".title",
            m("h1", `Port ${number}`, m("span.muted", ` of ${olt}`)),
            badge(port.online < port.bound ? "warn" : "good", `${port.online} of ${plural(port.bound, "ONU")} online`),
            port.waiting > 0 && link(to_olt(olt, "waiting"), `${port.waiting} waiting`),
            m(
                "span.steps",
                number > 1 && link(to_port(olt, number - 1), "← port before"),
                number < total && link(to_port(olt, number + 1), "next port →"),
            ),
        );
    }

    return {
        view: () => {
            const port = use<Port>(`${base}/ports/${number}`, [...olt_tables, "counters", "modules"]);
            const onus = use<Columns>(`${base}/onus?port=${number}`, onu_tables);
            const alarms = use<{ alarms: Alarm[] }>(`${base}/alarms`, ["alarms"]);
            const events =
                use<{ events: PonEvent[] }>(`/events?olt=${encodeURIComponent(olt)}&port=${number}&limit=30`);
            if (!port.value) return awaited_screen(port, `Port ${number} of ${olt}`);
            follow(port.value.counters);
            const all = onus.value ? onus_of(onus.value) : undefined;
            const wrong =
                worst_first(wrong_of(olt, (alarms.value?.alarms ?? []).filter(({ pon_port }) => pon_port === number)));
            const fresh = live.events.filter((event) => event.olt === olt && event.port === number);
            const known = new Set(fresh.map(({ id }) => id));
            const tree = plant_panel(olt, number);
            const history = [...fresh, ...(events.value?.events ?? []).filter(({ id }) => !known.has(id))].slice(0, 30);
            return [
                header(port.value),
                tree,
                columns(
                    [
                        panel(
                            "What is wrong",
                            wrong.length === 0 ? nothing("Nothing that an alarm tells of.") : wrong_list(wrong, false)
                        ),
                        panel("Who is off together", all ? fallen(olt, all) : loading("ONUs")),
                        panel(
                            "What happened",
                            history.length === 0 ? nothing("Nothing since the console was started.") :
                                                   timeline(history, `Events of port ${number}`)
                        ),
                    ],
                    [light(all), panel("Traffic", traffic(port.value, before))],
                    [module_panel(port.value)],
                ),
                !tree && plant_hint(olt, number),
                panel("ONUs", all ? onu_table(all) : awaited(onus, "ONUs")),
            ];
        },
    };
};
