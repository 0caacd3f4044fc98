// All that is known of one ONU, and what can be changed of it.
import m from "mithril";
import { may } from "../base/api";
import { age, count, moment_and_age, rate, text, whole, words } from "../base/format";
import type { OnuDetail, Row } from "../base/model";
import { to_olt, to_port } from "../base/place";
import { use } from "../base/store";
import { change, changes_table } from "../parts/dialog";
import {
    awaited_screen,
    badge,
    button,
    columns,
    facts,
    input,
    link,
    nothing,
    OpenedForm,
    panel,
    problem,
    state_badge,
} from "../parts/parts";
import { timeline } from "../parts/timeline";
import { cause_text, meaning, severity_tone } from "../parts/wrong";
import { OnuBandwidth } from "./onu_bandwidth";
import { OnuLight } from "./onu_light";
import { OnuUnis } from "./onu_unis";
import { onu_tables } from "./onus";

interface Given {
    olt: string;
    port: number;
    id: number;
}

function value(row: Row | null, name: string): string | number | null {
    const found = row?.[name];
    return typeof found === "boolean" ? (found ? "yes" : "no") : found ?? null;
}

function number(row: Row | null, name: string): number | null {
    const found = row?.[name];
    return typeof found === "number" ? found : null;
}

function traffic(now: Row | null, before: Row | null, count_now: () => void): m.Children {
    const up = number(now, "up_load");
    const seconds = (number(now, "counted") ?? 0) - (number(before, "counted") ?? 0);
    const per_second = (name: string): string => {
        const [last, first] = [number(now, name), number(before, name)];
        return last === null || first === null || seconds <= 0 ? "–" : `${whole((last - first) / seconds)}/s`;
    };
    const counters: [string, string][] = [
        ["Frames up", "up_frames"],
        ["Frames up with errors", "up_errors"],
        ["Frames down", "down_frames"],
        ["Frames down, discarded", "down_discarded"],
    ];
    return [
        facts(["Offers upstream", rate(up)], ["Is offered downstream", rate(number(now, "down_load"))]),
        number(now, "counted") === null ?
            [
                nothing("Its frames are not counted."),
                may("write") && button("Count them", count_now, { class: "small" }),
            ] :
            facts(...counters.map(
                ([label, name]
                ): [string, m.Children] => [label, [count(number(now, name)), m("span.muted", ` ${per_second(name)}`)]]
            )),
    ];
}

function alarms(detail: OnuDetail): m.Children {
    if (detail.alarms.length === 0) return nothing("None.");
    return m(
        "ul.wrongs",
        detail.alarms.map(
            (alarm) => m(
                "li",
                alarm.state === "active" ? badge(severity_tone(alarm.severity), alarm.severity) :
                                           badge("idle", "cleared"),
                m("span.what", meaning(alarm.name), m("span.why", ` ${cause_text(alarm.cause, alarm.place)}`)),
                m("span.since", alarm.since === null ? "–" : age(alarm.since)),
            ),
        ),
    );
}

export const OnuScreen: m.Closure<Given> = ({attrs: {olt, port, id}}) => {
    const path = `/olts/${encodeURIComponent(olt)}/onus/${port}/${id}`;
    const name = `ONU ${port}/${id}`;
    let description: string | undefined;  // while it is edited
    let last: Row | null = null;
    let before: Row | null = null;

    async function describe(event: Event): Promise<void> {
        event.preventDefault();
        const words = { pon_port: port, onu_id: id, text: description };
        if (!(await change(
                olt, "bsp_pon_onu_description", words, `Describe ${name}`, "Describe", `${name} is described.`
            )))
            return;
        description = undefined;
        m.redraw();
    }

    function edit_description(now: string): m.Children {
        if (!may("write")) return undefined;
        const opener = button("Describe", () => (description = description === undefined ? now : undefined), {
            class: "small",
            "aria-label": `Describe ${name}`,
            "aria-expanded": description === undefined ? "false" : "true",
        });
        if (description === undefined) return opener;
        return [
            opener,
            m(
                OpenedForm,
                { label: "Description", submit: describe },
                input("Description", description, (typed) => (description = typed), { maxlength: 127 }),
                description === now ? m("p.muted", "Nothing is different yet.") :
                                      changes_table([{ name: "Description", before: now, after: description }]),
                m(".buttons",
                  button("Cancel", () => (description = undefined)),
                  m("button.primary", { type: "submit", disabled: description === now }, "Change")),
            ),
        ];
    }

    function actions(detail: OnuDetail): m.Children {
        if (!may("service-affecting")) return undefined;
        const where = { pon_port: port, onu_id: id };
        const online = detail.onu.state === "online";
        const act =
            async(operation: string, given: Record<string, unknown>, verb: string, done: string): Promise<void> => {
            const gone = operation !== "bsp_pon_reboot_onu_batch";
            if ((await change(olt, operation, given, `${verb} ${name}?`, verb, done)) && gone)
                m.route.set(to_olt(olt, "onus"));
        };
        return m(
            ".actions",
            online &&
                button(
                    "Reboot",
                    () => void act(
                        "bsp_pon_reboot_onu_batch",
                        { record: { pon_port: port, onu_set: [id] } },
                        "Reboot",
                        `${name} reboots.`
                    )
                ),
            button(
                "Release",
                () => void act(
                    "bsp_pon_no_bind_onu_spec_id",
                    where,
                    "Release",
                    `${name} is released. If it is on the fibre, it waits now.`
                )
            ),
            button(
                "To the blacklist",
                () => void act("bsp_pon_reject_onu_to_blacklist", where, "Reject", `${name} is on the blacklist.`)
            ),
        );
    }

    async function begin_to_count(): Promise<void> {
        await change(
            olt,
            "bsp_pon_onu_ctc_set_perf_monitor_status",
            { pon_port: port, onu_id: id, enable: 1 },
            `Count the frames of ${name}`,
            "Count them",
            `The frames of ${name} are counted from now on. Its CATV port, where it has one, is on as well.`
        );
    }

    function title(detail: OnuDetail): m.Vnode {
        const state = String(detail.onu.state);
        const why = state === "online" ? "" : cause_text(detail.cause, detail.place);
        return m(
            ".title",
            m("h1",
              name,
              m("span.muted", " of "),
              link(to_port(olt, port), `port ${port}`),
              m("span.muted", ` of ${olt}`)),
            state_badge(state),
            why && m("strong.why", why),
            detail.since !== null && m("span.muted", "since ", moment_and_age(detail.since)),
            m("span.description", text((detail.onu.description || detail.onu.text_a) as string | null)),
            edit_description(String(detail.onu.description ?? "")),
            actions(detail),
        );
    }

    function identity(detail: OnuDetail): m.Vnode {
        const { onu, capabilities, upgrade } = detail;
        const run = upgrade?.run;
        return panel(
            "Identity",
            facts(
                ["MAC", m("span.mono", text(value(onu, "mac")))],
                ["LOID", text(value(onu, "loid"))],
                ["Serial number", text(detail.serial)],
                ["Model", [text(value(capabilities, "vendor")), " ", text(value(capabilities, "model"))]],
                ["Hardware", text(value(upgrade, "hardware"))],
                ["Software", text(value(upgrade, "software"))],
                [
                    "Upgrade",
                    run ?
                        [
                            words(String(run)),
                            upgrade?.progress === null ? "" : ` ${upgrade?.progress} %`,
                            value(upgrade, "reason") && ` ${value(upgrade, "reason")}`
                        ] :
                                                         "none"
                ],
                ["Distance", onu.distance === null ? "–" : `${onu.distance} m`],
                [
                    "Bind texts",
                    text(["text_a", "text_b", "text_c"].map((one) => value(onu, one)).filter(Boolean).join(", "))
                ],
                ["Reboots by command", text(value(onu, "reboots"))],
                [
                    "UNI ports",
                    `${value(capabilities, "ge_ports") ?? "–"} GE, ${value(capabilities, "fe_ports") ?? "–"} FE`
                ],
                ["FEC", capabilities ? (capabilities.fec ? "supported" : "not supported") : "–"],
            ),
        );
    }

    return {
        view: () => {
            const detail = use<OnuDetail>(path, [...onu_tables, "stats", "unis", "loops", "stations"]);
            if (!detail.value) return awaited_screen(detail, `${name} of ${olt}`);
            const known = detail.value;
            if (known.stats && known.stats !== last) {
                before = last;
                last = known.stats;
            }
            return [
                detail.error && problem(detail.error),
                title(known),
                columns(
                    [panel("Alarms", alarms(known)), m(OnuLight, { detail: known, port, id })],
                    [identity(known), m(OnuUnis, { detail: known, port, id })],
                    [
                        m(OnuBandwidth, { olt, port, id }),
                        panel(
                            ["Traffic", known.read.stats && m("span.muted.about", "counted ", age(known.read.stats))],
                            traffic(known.stats, before, () => void begin_to_count())
                        ),
                        panel(
                            "History",
                            known.events.length === 0 ?
                                nothing("Nothing happened to it since the console's server knows it.") :
                                timeline(known.events, `Events of ${name}`)
                        ),
                    ],
                ),
            ];
        },
    };
};
