// The keyboard: what a key does wherever the page is, and the help that says so.
import m from "mithril";
import { current_olt } from "../base/place";
import { ask } from "./dialog";

const jumps: Record<string, [string, (olt: string) => string]> = {
    o: ["Overview", () => "/"],
    n: ["ONUs", (olt) => `/olts/${olt}/onus`],
    w: ["Waiting ONUs", (olt) => `/olts/${olt}/waiting`],
    a: ["Alarms", (olt) => `/olts/${olt}/alarms`],
    e: ["Events", () => "/events"],
    u: ["Upgrades", (olt) => `/olts/${olt}/upgrades`],
    p: ["Profiles", (olt) => `/olts/${olt}/profiles`],
    c: ["Configuration", (olt) => `/olts/${olt}/configuration`],
};

let after_g = false;

function line(keys: string[], said: string): m.Vnode {
    return m("div", m("dt", keys.map((key) => m("kbd", key))), m("dd", said));
}

export async function help(): Promise<void> {
    await ask(
        "Keys",
        () => m(
            "dl.keys",
            line(["/"], "Search: MAC address, LOID, name, description, serial number, or PORT/ID"),
            line(["↑", "↓", "Page", "Home", "End"], "Move in a table or in what was found"),
            line(["Enter"], "Open what is chosen"),
            line(["→", "←"], "Into a row of a table and out of it; open and close a branch of a tree"),
            line(["Esc"], "Close, or leave a field"),
            Object.entries(jumps).map(([key, [name]]) => line(["g", key], name)),
            line(["?"], "This help"),
        ),
        "Close",
    );
}

function is_typing(target: EventTarget | null): boolean {
    return target instanceof HTMLElement && target.closest("input, textarea, select, dialog") !== null;
}

function press(event: KeyboardEvent): void {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    if (event.key === "Escape" && event.target instanceof HTMLElement && is_typing(event.target)) {
        if (!event.target.closest("dialog")) event.target.blur();
        return;
    }
    if (is_typing(event.target)) return;
    const olt = current_olt();
    const jump = after_g ? jumps[event.key] : undefined;
    after_g = event.key === "g";
    if (event.key === "/")
        document.getElementById("search")?.focus();
    else if (event.key === "?")
        void help();
    else if (jump && olt)
        m.route.set(jump[1](encodeURIComponent(olt)));
    else
        return;
    event.preventDefault();
}

export function listen_to_keys(): void { document.addEventListener("keydown", press); }
