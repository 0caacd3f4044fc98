// The profiles of an OLT, as it has them now.
import m from "mithril";
import { text, words } from "../base/format";
import type { Row } from "../base/model";
import { use } from "../base/store";
import { awaited_screen, button, nothing, panel, Scrolls } from "../parts/parts";

const kinds: [string, string][] = [
    ["line", "Line profiles"],
    ["sla", "Bandwidth (SLA)"],
    ["uni", "UNI profiles"],
    ["alarm", "Alarm thresholds"],
];
const units: Record<string, string> = {
    upstream: "kbit/s",
    downstream: "kbit/s",
    fixed: "kbit/s",
    assured: "kbit/s",
    maximum: "kbit/s",
    temperature_low: "°C",
    temperature_high: "°C",
    launch_power_low: "dBm",
    launch_power_high: "dBm",
    received_power_low: "dBm",
    received_power_high: "dBm",
};

function table(title: string, rows: Row[]): m.Vnode {
    const columns = Object.keys(rows[0] ?? {});
    return m(
        Scrolls,
        { label: title },
        m(
            "table.plain",
            m("thead",
              m("tr",
                columns.map(
                    (name) =>
                        m("th", { scope: "col" }, words(name), units[name] ? m("span.muted", `, ${units[name]}`) : "")
                ))),
            m("tbody",
              rows.map(
                  (row) => m("tr", columns.map((name) => m("td", text(row[name] === null ? null : String(row[name])))))
              )),
        ),
    );
}

export function profiles(olt: string): m.Children {
    const asked = use<Record<string, Row[] | null>>(`/olts/${encodeURIComponent(olt)}/profiles`);
    if (!asked.value) return awaited_screen(asked, `Profiles of ${olt}`);
    const all = asked.value;
    return [
        m(".title",
          m("h1", "Profiles", m("span.muted", ` of ${olt}`)),
          button("Read again", () => void asked.refresh(), { class: "small" })),
        m(
            ".columns",
            kinds.map(([name, title]) => {
                const rows = all[name];
                if (!rows) return panel(title, nothing("The OLT does not tell them."));
                return panel(
                    [title, m("span.count", rows.length)], rows.length === 0 ? nothing("There are none.") : table(title, rows)
                );
            }),
        ),
    ];
}
