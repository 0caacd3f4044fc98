// What is wrong at OLTs, the worst first: alarms of one kind and one cause at one port are one line.
import m from "mithril";
import { age, id_set, plural, text, words } from "../base/format";
import type { Alarm, Olt } from "../base/model";
import { to_olt, to_onu, to_port } from "../base/place";
import { badge, link, Tone } from "./parts";

export interface Wrong {
    olt: string;
    weight: number;  // 0 is the worst
    what: string;
    where: string;
    why: string;
    since: number | null;
    to: string;
    ids: number[];
    count: number;
}

const severities = ["lost", "critical", "major", "minor"];
const meanings: Record<string, string> = {
    los: "offline: no light",
    dying_gasp: "offline: power failed",
    rejected: "rejected: on the blacklist",
    auth_failed: "refused for its LOID",
    bias_high: "laser bias is high",
    power_low: "launches too little light",
    receive_degraded: "light at the OLT is weak",
    rogue: "sends all the time and blinds others",
    deregistered: "deregistered",
    receive_overload: "too much light at the OLT",
    onu_los: "offline: the ONU gets no light",
    onu_receive_degraded: "light at the ONU is weak",
    onu_receive_overload: "too much light at the ONU",
    oam_link_lost: "OAM link is lost",
    port_los: "no light of any ONU",
    transmitter_off: "transmitter is off",
    uni_loop: "loop behind a UNI port",
    uplink_down: "uplink is down",
    wrong_port: "bound at another port",
    same_loid: "its LOID is used twice",
    same_mac: "its MAC address is used twice",
};

export function meaning(name: string): string { return meanings[name] ?? words(name); }

export function severity_tone(severity: string | null): Tone {
    if (severity === "critical" || severity === "lost") return "bad";
    return severity === "major" ? "warn" : "idle";
}

export function cause_text(cause: string | null, place: string | null): string {
    const why = cause && cause !== "unknown" ? words(cause) : "";
    return [why, place ? `at ${place}` : ""].filter(Boolean).join(" ");
}

function one_of(olt: string, group: Alarm[]): Wrong {
    const first = group[0] as Alarm;
    const ids = group.flatMap(({ onu_id }) => (onu_id === null ? [] : [onu_id]));
    const since = Math.min(...group.map((alarm) => alarm.since ?? Infinity));
    const single = group.length === 1 && first.onu_id !== null;
    const port = first.pon_port ? `port ${first.pon_port}` : "uplink";
    return {
        olt,
        weight: Math.max(1, severities.indexOf(first.severity)),
        what: meaning(first.name),
        where: single ? `ONU ${first.pon_port}/${first.onu_id}` :
            group.length > 1 ? `${plural(group.length, "ONU")} of ${port}` :
                               port,
        why: cause_text(first.cause, first.place),
        since: Number.isFinite(since) ? since : null,
        to: single         ? to_onu(olt, first.pon_port, ids[0] as number) :
            first.pon_port ? to_port(olt, first.pon_port) :
                             to_olt(olt, "alarms"),
        ids,
        count: group.length,
    };
}

export function wrong_of(olt: string, alarms: Alarm[]): Wrong[] {
    const groups = new Map<string, Alarm[]>();
    for (const alarm of alarms) {
        if (alarm.state !== "active") continue;
        const key = `${alarm.pon_port} ${alarm.name} ${alarm.cause} ${alarm.place ?? ""}`;
        const group = groups.get(key);
        if (group)
            group.push(alarm);
        else
            groups.set(key, [alarm]);
    }
    return [...groups.values()].map((group) => one_of(olt, group));
}

export function lost(olt: Olt): Wrong[] {
    if (olt.reached) return [];
    const why = "what is shown of it is what was known before";
    return [{
        olt: olt.name,
        weight: 0,
        what: "does not answer",
        where: "the OLT",
        why,
        since: olt.since,
        to: to_olt(olt.name, "onus"),
        ids: [],
        count: 1
    }];
}

export function worst_first(list: Wrong[]): Wrong[] {
    return [...list].sort((a, b) => a.weight - b.weight || b.count - a.count || (b.since ?? 0) - (a.since ?? 0));
}

export function wrong_list(list: Wrong[], with_olt: boolean): m.Vnode {
    return m(
        "ul.wrongs",
        list.map((wrong) => {
            const severity = severities[wrong.weight] ?? "minor";
            const ids = wrong.count > 1 && wrong.ids.length > 0 ? id_set(wrong.ids) : "";
            return m(
                `li.${severity}`,
                badge(severity_tone(severity), severity),
                link(wrong.to, [with_olt && `${wrong.olt}: `, wrong.where], ".where"),
                m("span.what",
                  wrong.what,
                  wrong.why && m("span.why", ` – ${wrong.why}`),
                  ids && m("span.muted.ids", { title: ids }, ` (${ids})`)),
                m("span.since", wrong.since === null ? text(null) : age(wrong.since)),
            );
        }),
    );
}
