// The alarms of an OLT.
import m from "mithril";
import { may } from "../base/api";
import { age, plural, text } from "../base/format";
import type { Alarm } from "../base/model";
import { to_onu, to_port } from "../base/place";
import { use } from "../base/store";
import { change } from "../parts/dialog";
import { awaited_screen, badge, choice, input, row_link } from "../parts/parts";
import { Column, Sorting, Table } from "../parts/table";
import { cause_text, meaning, severity_tone } from "../parts/wrong";

const severities = ["critical", "major", "minor"];

function where(olt: string, alarm: Alarm): m.Children {
    if (alarm.pon_port === 0) return `uplink ${alarm.place ?? ""}`;
    if (alarm.onu_id !== null)
        return row_link(to_onu(olt, alarm.pon_port, alarm.onu_id), `ONU ${alarm.pon_port}/${alarm.onu_id}`);
    return row_link(to_port(olt, alarm.pon_port), `port ${alarm.pon_port}`);
}

function place_of(alarm: Alarm): number { return alarm.pon_port * 1000 + (alarm.onu_id ?? 0); }

export const AlarmsScreen: m.Closure<{olt: string}> = ({attrs: {olt}}) => {
    let state = "active";
    let severity = "";
    let words = "";
    let sorting: Sorting = { by: "severity", down: false };
    let from: Alarm[] | undefined;
    let by = "";
    let rows: Alarm[] = [];

    async function clear(alarm: Alarm): Promise<void> {
        const record = { pon_port: alarm.pon_port, onu_id: alarm.onu_id ?? 0, arg_value: alarm.alarm };
        const name =
            `${meaning(alarm.name)}, port ${alarm.pon_port}${alarm.onu_id === null ? "" : `, ONU ${alarm.onu_id}`}`;
        await change(
            olt,
            "bsp_pon_clear_onu_alarm",
            { record },
            `Clear the alarm: ${name}`,
            "Clear",
            "The alarm is cleared. It comes back if its cause is still there."
        );
    }

    const columns: Column<Alarm>[] = [
        {
            name: "severity",
            title: "Severity",
            width: "7.5rem",
            show: (alarm) => badge(severity_tone(alarm.severity), alarm.severity),
            // The worst ones stand together in the order of their places.
            by: (alarm) => severities.indexOf(alarm.severity) * 1e6 + place_of(alarm)
        },
        {
            name: "where",
            title: "Where",
            width: "7rem",
            show: (alarm) => where(olt, alarm),
            by: place_of
        },
        {
            name: "what",
            title: "What",
            width: "minmax(9rem, 2fr)",
            show: (alarm) => meaning(alarm.name),
            by: (alarm) => alarm.name
        },
        {
            name: "why",
            title: "Why",
            width: "minmax(6rem, 1fr)",
            show: (alarm) => cause_text(alarm.cause, alarm.place),
            by: (alarm) => alarm.cause,
            from: 560
        },
        {
            name: "since",
            title: "Since",
            width: "9rem",
            show: (alarm) => (alarm.since === null ? "–" : age(alarm.since)),
            by: (alarm) => alarm.since,
            from: 700
        },
        {
            name: "state",
            title: "State",
            width: "6rem",
            show: (alarm) => alarm.state,
            by: (alarm) => alarm.state,
            from: 900
        },
        {
            name: "count",
            title: "Times",
            width: "5rem",
            right: true,
            show: (alarm) => alarm.count,
            by: (alarm) => alarm.count,
            from: 1000
        },
        {
            name: "mac",
            title: "MAC",
            width: "10.5rem",
            show: (alarm) => m("span.mono", text(alarm.mac)),
            by: (alarm) => alarm.mac,
            from: 1200
        },
    ];
    if (may("write"))
        columns.push({
            name: "clear",
            title: "",
            width: "5rem",
            from: 640,
            show: (alarm) =>
                m("button.small",
                  {
                      type: "button",
                      tabindex: -1,
                      onclick: () => void clear(alarm),
                      "aria-label": `Clear ${meaning(alarm.name)}`
                  },
                  "Clear"),
        });

    function wanted(all: Alarm[]): Alarm[] {
        const asked = [state, severity, words].join("\n");
        if (all === from && asked === by) return rows;
        from = all;
        by = asked;
        const typed = words.toLowerCase();
        rows = all.filter(
            (alarm) => (!state || alarm.state === state) && (!severity || alarm.severity === severity) &&
                [
                    `${alarm.pon_port}/${alarm.onu_id}`,
                    alarm.mac,
                    alarm.name,
                    meaning(alarm.name),
                    alarm.cause,
                    alarm.place
                ].join(" ")
                    .toLowerCase()
                    .includes(typed),
        );
        return rows;
    }

    return {
        view: () => {
            const alarms = use<{ alarms: Alarm[] }>(`/olts/${encodeURIComponent(olt)}/alarms`, ["alarms"]);
            if (!alarms.value) return awaited_screen(alarms, `Alarms of ${olt}`);
            const all = alarms.value.alarms;
            const shown = wanted(all);
            return m(
                ".fill",
                m("h1.hidden", `Alarms of ${olt}`),
                m(
                    "form.filters",
                    { "aria-label": "Filter alarms", onsubmit: (event: Event) => event.preventDefault() },
                    input("Words", words, (value) => (words = value), { placeholder: "any column" }),
                    choice(
                        "State",
                        state,
                        [["active", "active"], ["cleared", "cleared"], ["", "all"]],
                        (value) => (state = value)
                    ),
                    choice(
                        "Severity",
                        severity,
                        [["", "all"], ...severities.map((one): [string, string] => [one, one])],
                        (value) => (severity = value)
                    ),
                    m("span.shown", { role: "status" }, `${shown.length} of ${plural(all.length, "alarm")}`),
                ),
                m(Table<Alarm>, {
                    label: `Alarms of ${olt}`,
                    columns,
                    rows: shown,
                    id: (alarm: Alarm) =>
                        `${alarm.pon_port} ${alarm.mac} ${alarm.onu_id} ${alarm.alarm} ${alarm.place}`,
                    open: (alarm: Alarm) => alarm.pon_port > 0 &&
                        m.route.set(
                            alarm.onu_id === null ? to_port(olt, alarm.pon_port) :
                                                    to_onu(olt, alarm.pon_port, alarm.onu_id)
                        ),
                    sorting,
                    sort: (other: Sorting) => (sorting = other),
                    alone: true,
                    empty: state === "active" ? "No alarm is active." : "There is no such alarm.",
                }),
            );
        },
    };
};
