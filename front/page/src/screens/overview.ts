// Every OLT and port at a glance, what is wrong on top.
import m from "mithril";
import { plural, rate, span, text, whole } from "../base/format";
import type { Alarm, Olt, Port } from "../base/model";
import { olt_tables, to_olt, to_port } from "../base/place";
import { use } from "../base/store";
import { awaited, awaited_screen, badge, link, nothing, panel } from "../parts/parts";
import { lost, Wrong, worst_first, wrong_list, wrong_of } from "../parts/wrong";

const most_wrong = 12;
let all_wrong = false;

function alarms_of(olt: string): Alarm[] {
    return use<{ alarms: Alarm[] }>(`/olts/${encodeURIComponent(olt)}/alarms`, ["alarms"]).value?.alarms ?? [];
}

function wrong_panel(olts: Olt[]): m.Vnode {
    const list: Wrong[] =
        worst_first(olts.flatMap((olt) => [...lost(olt), ...wrong_of(olt.name, alarms_of(olt.name))]));
    const shown = all_wrong ? list : list.slice(0, most_wrong);
    return panel(
        ["What is wrong", list.length > 0 && m("span.count", list.length)],
        list.length === 0 ? m("p.nothing.well", badge("good", "Nothing is wrong that an alarm tells of.")) :
                            wrong_list(shown, olts.length > 1),
        list.length > most_wrong &&
            m(
                "button.small",
                { type: "button", onclick: () => (all_wrong = !all_wrong) },
                all_wrong ? "Show the worst only" : `Show ${list.length - most_wrong} more`,
            ),
    );
}

function tile({ name: olt, reached }: Olt, port: Port): m.Vnode {
    const off = port.offline + port.unauthenticated;
    const severe = port.alarms.critical > 0 || (port.bound > 0 && port.online === 0);
    const troubled = off + port.low_light + port.alarms.major > 0;
    // Nobody knows how a port is whose OLT does not answer.
    const tone = !reached ? "idle" : severe ? "bad" : troubled ? "warn" : port.bound === 0 ? "idle" : "good";
    const notes = [
        off > 0 && `${off} off`,
        port.low_light > 0 && `${port.low_light} weak`,
        port.waiting > 0 && `${port.waiting} waiting`,
    ].filter(Boolean);
    return m(
        `a.tile.${tone}`,
        {
            href: `#${to_port(olt, port.pon_port)}`,
            "aria-label": `Port ${port.pon_port}: ${port.online} of ${plural(port.bound, "ONU")} online${
                notes.length ? `, ${notes.join(", ")}` : ""}`,
            title: `up ${rate(port.up_load)}, down ${rate(port.down_load)}`,
        },
        m("span.number", port.pon_port),
        m("span.share", port.bound === 0 ? "none" : `${port.online}/${port.bound}`),
        m("span.notes", notes.join(" · ") || " "),
    );
}

function figure(value: string, label: string, to: string, tone = ""): m.Vnode {
    return m(`a.figure${tone}`, { href: `#${to}` }, m("b", value), ` ${label}`);
}

function olt_panel(olt: Olt): m.Vnode {
    const ports = use<{ ports: Port[] }>(`/olts/${encodeURIComponent(olt.name)}/ports`, olt_tables);
    const to = (rest: string) => to_olt(olt.name, rest);
    return m(
        "section.panel.olt",
        m(
            "h2",
            link(to("onus"), olt.name),
            olt.reached ? badge("good", "answers") :
                          badge("bad", olt.since ? `lost for ${span(Date.now() - olt.since)}` : "lost"),
            m("span.muted.about",
              [olt.model, olt.version, olt.uptime && `up ${span(olt.uptime * 1000)}`].filter(Boolean).join(" · ")),
        ),
        m(
            ".figures",
            figure(whole(olt.online), `of ${whole(olt.bound)} ONUs online`, to("onus")),
            olt.offline > 0 && figure(whole(olt.offline), "offline", to("onus?state=offline"), ".bad"),
            olt.unauthenticated > 0 &&
                figure(whole(olt.unauthenticated), "refused", to("onus?state=unauthenticated"), ".warn"),
            olt.low_light > 0 && figure(whole(olt.low_light), "with weak light", to("onus?light=low"), ".warn"),
            olt.waiting > 0 && figure(whole(olt.waiting), "waiting", to("waiting"), ".new"),
        ),
        ports.value ? m(".tiles", ports.value.ports.map((port) => tile(olt, port))) : awaited(ports, "ports", 2),
    );
}

export function overview(): m.Children {
    const olts = use<{ olts: Olt[] }>("/olts", olt_tables);
    if (!olts.value) return awaited_screen(olts, "Overview");
    const all = olts.value.olts;
    if (all.length === 0) return nothing("No OLT is configured. ponfront.toml(5) says how to name them.");
    return [
        m("h1.hidden", "Overview"),
        wrong_panel(all),
        m(".olts", all.map(olt_panel)),
        m("p.muted.foot",
          `${plural(all.length, "OLT")}, ${text(all.reduce((sum, olt) => sum + olt.bound, 0))} bound ONUs`),
    ];
}
