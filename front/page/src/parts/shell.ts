// What is around every screen: navigation, search, whether the page is live, who is logged in.
import m from "mithril";
import { log_out, session } from "../base/api";
import { clock, span } from "../base/format";
import { live } from "../base/live";
import { current_olt, olts, to_olt } from "../base/place";
import { forget_all } from "../base/store";
import { next_theme, theme } from "../base/theme";
import { Dialogs, tell } from "./dialog";
import { help } from "./keys";
import { LogIn } from "./login";
import { Search } from "./search";

// The segment of the address behind which the screens of each OLT are, and the words for it.
const screens: [string, string][] = [
    ["onus", "ONUs"],
    ["waiting", "Waiting"],
    ["alarms", "Alarms"],
    ["upgrades", "Upgrades"],
    ["profiles", "Profiles"],
    ["configuration", "Configuration"],
];

function count_of(screen: string, name: string): number {
    const olt = olts()?.find((one) => one.name === name);
    if (screen === "waiting") return olt?.waiting ?? 0;
    if (screen === "alarms") return olt ? olt.alarms.critical + olt.alarms.major + olt.alarms.minor : 0;
    return 0;
}

function place(to: string, label: string, count = 0): m.Vnode {
    const here = (m.route.get() ?? "/").split("?")[0] ?? "/";
    const is_here = to === "/" ? here === "/" : here === to || here.startsWith(`${to}/`);
    return m(
        "a",
        { href: `#${to}`, "aria-current": is_here ? "page" : false },
        label,
        count > 0 && m("span.count", count.toLocaleString("en")),
    );
}

function navigation(): m.Vnode {
    const olt = current_olt();
    return m(
        "nav",
        { "aria-label": "Screens" },
        place("/", "Overview"),
        olt && screens.map(([name, label]) => place(to_olt(olt, name), label, count_of(name, olt))),
        place("/events", "Events"),
    );
}

// Another OLT is looked at on the same screen, unless that is about one thing of this OLT.
function choose(name: string): void {
    const screen = /^\/olts\/[^/]+\/([a-z]+)$/.exec((m.route.get() ?? "").split("?")[0] ?? "")?.[1] ?? "onus";
    m.route.set(to_olt(name, screen));
}

function olt_choice(): m.Children {
    const all = olts();
    const olt = current_olt();
    if (!all || !olt || all.length < 2) return olt && m("span.which", olt);
    return m(
        "select.which",
        {
            "aria-label": "OLT",
            value: olt,
            onchange: (event: Event) => choose((event.target as HTMLSelectElement).value)
        },
        all.map(({ name }) => m("option", { value: name, selected: name === olt }, name)),
    );
}

function connection(): m.Vnode {
    if (live.connection === "live")
        return m("span.live", { role: "status" }, m("span.dot", { "aria-hidden": "true" }), "live");
    if (live.connection === "connecting") return m("span.live.connecting", { role: "status" }, "connecting …");
    return m("span.live.lost", { role: "status", title: `since ${clock(live.lost_since)}` }, "not live");
}

async function leave(): Promise<void> {
    try {
        await log_out();
        live.stop();
        forget_all();
    } catch (error) {
        tell((error as Error).message, true);
    }
}

function who(): m.Children {
    const now = session.now;
    return m(
        ".who",
        now?.user && m("span.user", { title: `may: ${now.role}` }, now.user, m("span.muted", ` ${now.role}`)),
        !now?.login && m("span.muted", { title: "There are no users: whoever connects may look." }, "only looking"),
        m("button.plain",
          { type: "button", onclick: next_theme, title: `colours: ${theme()}`, "aria-label": `Colours: ${theme()}` },
          "◐"),
        m("button.plain", { type: "button", onclick: () => void help(), "aria-label": "Help: the keys" }, "?"),
        now?.user && m("button.plain", { type: "button", onclick: () => void leave() }, "Log out"),
    );
}

function lost_banner(): m.Children {
    if (live.connection !== "lost") return undefined;
    return m(
        ".banner",
        { role: "alert" },
        m("strong", "The console's server does not answer"),
        ` since ${clock(live.lost_since)} (${
            span(Date.now() - live.lost_since)}). What is shown may be old. It is asked again by itself.`,
    );
}

// What is around a screen, once it is known who asks. It stays where it is when another screen is shown.
export function shell(screen: () => m.Children): m.Children {
    const now = session.now;
    if (!now) return m(".starting", { role: "status" }, "Asking who you are …");
    if (!now.role) return [m(LogIn, {}), m(Dialogs, {})];
    return [
        m("a.skip", { href: "#main", onclick: skip }, "To the content"),
        m("header",
          m("a.brand", { href: "#/" }, "PON console"),
          olt_choice(),
          m(Search, {}),
          connection(),
          who(),
          navigation()),
        lost_banner(),
        m("main", { id: "main", tabindex: -1 }, screen()),
        // What those who do not see the page are told: where they are, and what happens.
        m("span.hidden", { role: "status", "aria-live": "polite" }, document.title),
        m("span.hidden", { role: "log", "aria-live": "polite" }, live.said),
        m(Dialogs, {}),
    ];
}

function skip(event: Event): void {
    event.preventDefault();
    document.getElementById("main")?.focus();
}
