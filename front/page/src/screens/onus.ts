// All ONUs of an OLT in one table, filtered by words and by state.
import m from "mithril";
import { age, plural, power, text } from "../base/format";
import { Columns, Onu, onus_of } from "../base/model";
import { to_onu } from "../base/place";
import { use } from "../base/store";
import { awaited_screen, badge, choice, input, row_link, state_badge } from "../parts/parts";
import { Column, Sorting, Table } from "../parts/table";
import { cause_text, severity_tone } from "../parts/wrong";

export const onu_tables = ["onus", "alarms", "optics", "upgrades", "capabilities"];

export const onu_columns = (olt: string): Column<Onu>[] =>
    [{
        name: "onu",
        title: "ONU",
        width: "5rem",
        show: (onu) => row_link(to_onu(olt, onu.pon_port, onu.onu_id), `${onu.pon_port}/${onu.onu_id}`),
        by: (onu) => onu.pon_port * 1000 + onu.onu_id,
    },
     {
         name: "state",
         title: "State",
         width: "minmax(7rem, 8rem)",
         show: (onu) => state_badge(onu.state),
         by: (onu) => ["offline", "unauthenticated", "online"].indexOf(onu.state),
     },
     {
         name: "description",
         title: "Description",
         width: "minmax(7rem, 2fr)",
         show: (onu) => text(onu.description || onu.text_a),
         by: (onu) => onu.description || onu.text_a || null,
     },
     {
         name: "why",
         title: "Why",
         width: "minmax(6rem, 1fr)",
         show: (onu) => cause_text(onu.cause, onu.place),
         by: (onu) => onu.cause,
         from: 900
     },
     {
         name: "since",
         title: "Since",
         width: "8.5rem",
         show: (onu) => (onu.since === null ? "–" : age(onu.since)),
         by: (onu) => onu.since,
         from: 1200
     },
     {
         name: "mac",
         title: "MAC",
         width: "10.5rem",
         show: (onu) => m("span.mono", onu.mac),
         by: (onu) => onu.mac,
         from: 640
     },
     {
         name: "loid",
         title: "LOID",
         width: "minmax(7rem, 1fr)",
         show: (onu) => text(onu.loid),
         by: (onu) => onu.loid,
         from: 1500
     },
     {name: "model", title: "Model", width: "6rem", show: (onu) => text(onu.model), by: (onu) => onu.model, from: 1100},
     {
         name: "software",
         title: "Software",
         width: "7rem",
         show: (onu) => text(onu.software),
         by: (onu) => onu.software,
         from: 1700
     },
     {
         name: "distance",
         title: "Distance, m",
         width: "7rem",
         right: true,
         show: (onu) => text(onu.distance),
         by: (onu) => onu.distance,
         from: 1300
     },
     {
         name: "rx",
         title: "At ONU, dBm",
         width: "7.5rem",
         right: true,
         show: (onu) => power(onu.rx_power),
         by: (onu) => onu.rx_power,
         from: 800,
     },
     {
         name: "olt_rx",
         title: "At OLT, dBm",
         width: "7.5rem",
         right: true,
         show: (onu) => [onu.light === "low" && badge("warn", ""), power(onu.olt_rx_power)],
         by: (onu) => onu.olt_rx_power,
         from: 560,
     },
     {
         name: "alarms",
         title: "Alarms",
         width: "6.5rem",
         show: (onu) =>
             (onu.alarms > 0 ? badge(severity_tone(onu.severity), `${onu.alarms} ${onu.severity ?? ""}`) : ""),
         by: (onu) => -onu.alarms,
         from: 1000,
     },
];

const texts = new WeakMap<Onu, string>();
function text_of(onu: Onu): string {
    let all = texts.get(onu);
    if (all === undefined) {
        const { pon_port, onu_id, mac, description, text_a, loid, serial, model, software, cause, place } = onu;
        all = [`${pon_port}/${onu_id}`, mac, description, text_a, loid, serial, model, software, cause, place].join(" "
        ).toLowerCase();
        texts.set(onu, all);
    }
    return all;
}

export interface Filter {
    words: string;
    state: string;
    light: string;
    port: string;
}

export function filtered(onus: Onu[], filter: Filter): Onu[] {
    const words = filter.words.toLowerCase().split(/\s+/).filter(Boolean);
    return onus.filter(
        (onu) => (!filter.state || onu.state === filter.state) && (!filter.light || onu.light === filter.light) &&
            (!filter.port || String(onu.pon_port) === filter.port) &&
            words.every((word) => text_of(onu).includes(word)),
    );
}

interface Given {
    olt: string;
    state?: string;
    light?: string;
    port?: string;
}

export const Onus: m.Closure<Given> = ({attrs: first}) => {
    const filter: Filter = { words: "", state: first.state ?? "", light: first.light ?? "", port: first.port ?? "" };
    let sorting: Sorting = { by: "onu", down: false };
    let from: Onu[] | undefined;
    let by = "";
    let rows: Onu[] = [];
    const columns = onu_columns(first.olt);

    // The rows stay the same while nothing else is wanted, so that they need not be sorted again.
    function wanted(all: Onu[]): Onu[] {
        const asked = JSON.stringify(filter);
        if (all !== from || asked !== by) {
            from = all;
            by = asked;
            rows = filtered(all, filter);
        }
        return rows;
    }

    function filters(all: Onu[]): m.Vnode {
        const ports = [...new Set(all.map(({ pon_port }) => pon_port))];
        return m(
            "form.filters",
            { role: "search", "aria-label": "Filter ONUs", onsubmit: (event: Event) => event.preventDefault() },
            input("Words", filter.words, (value) => (filter.words = value), {
                placeholder: "any column",
                spellcheck: "false"
            }),
            choice(
                "State",
                filter.state,
                [["", "all"], ["online", "online"], ["offline", "offline"], ["unauthenticated", "refused"]],
                (value) => (filter.state = value)
            ),
            choice(
                "Light",
                filter.light,
                [["", "all"], ["low", "weak"], ["well", "good"]],
                (value) => (filter.light = value)
            ),
            choice(
                "Port",
                filter.port,
                [["", "all"], ...ports.map((port): [string, string] => [`${port}`, `${port}`])],
                (value) => (filter.port = value)
            ),
            m("span.shown",
              { role: "status" },
              rows.length === all.length ? plural(all.length, "ONU") : `${rows.length} of ${plural(all.length, "ONU")}`
            ),
        );
    }

    return {
        view: ({ attrs }) => {
            const table = use<Columns>(`/olts/${encodeURIComponent(attrs.olt)}/onus`, onu_tables);
            if (!table.value) return awaited_screen(table, `ONUs of ${attrs.olt}`);
            const all = onus_of(table.value);
            const shown = wanted(all);
            return m(
                ".fill",
                m("h1.hidden", `ONUs of ${attrs.olt}`),
                filters(all),
                m(Table<Onu>, {
                    label: `ONUs of ${attrs.olt}`,
                    columns,
                    rows: shown,
                    id: (onu: Onu) => `${onu.pon_port}/${onu.onu_id}`,
                    open: (onu: Onu) => m.route.set(to_onu(attrs.olt, onu.pon_port, onu.onu_id)),
                    sorting,
                    sort: (other: Sorting) => (sorting = other),
                    alone: true,
                    empty: all.length === 0 ? "No ONU is bound. Those that wait are under Waiting." :
                                              "No ONU is like this. Change the filter.",
                }),
            );
        },
    };
};
