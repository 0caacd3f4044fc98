// Events in a list, the newest first.
import m from "mithril";
import { moment, span, words } from "../base/format";
import type { PonEvent } from "../base/model";
import { to_olt, to_onu, to_port } from "../base/place";
import { badge, link, Tone } from "./parts";

const bad = ["olt_lost", "onu_offline", "rogue_found", "link_down", "upgrade_failed"];
const warn = ["light_low", "loop_found", "module_alarm", "alarm_raised", "onu_refused"];
const good = [
    "olt_back",
    "onu_online",
    "light_well",
    "rogue_gone",
    "loop_gone",
    "link_up",
    "module_well",
    "alarm_cleared",
    "upgrade_done"
];

export const event_kinds = [...bad, ...warn, ...good, "onu_waiting", "onu_removed"].sort();

export function event_tone(kind: string): Tone {
    if (bad.includes(kind)) return "bad";
    if (warn.includes(kind)) return "warn";
    if (good.includes(kind)) return "good";
    return kind === "onu_waiting" ? "new" : "idle";
}

function place_of(event: PonEvent): string {
    if (event.onu_id !== null && event.kind !== "onu_removed") return to_onu(event.olt, event.port, event.onu_id);
    if (event.kind === "onu_waiting") return to_olt(event.olt, "waiting");
    return event.port > 0 ? to_port(event.olt, event.port) : to_olt(event.olt, "alarms");
}

export function timeline(events: PonEvent[], label: string): m.Vnode {
    return m(
        "ol.timeline",
        { "aria-label": label },
        events.map(
            (event) => m(
                "li",
                { key: event.id },
                moment(event.at),
                badge(event_tone(event.kind), words(event.kind)),
                link(place_of(event), event.text, ".text"),
                m("span.muted.age", `${span(Date.now() - event.at)} ago`),
            ),
        ),
    );
}
