// One box that finds an ONU by whatever is known of it.
import m from "mithril";
import { get } from "../base/api";
import { text } from "../base/format";
import type { Match } from "../base/model";
import { to_olt, to_onu } from "../base/place";
import { state_badge } from "./parts";

let asked = "";
let found: Match[] | undefined;
let failed = "";
let more = false;
let chosen = 0;
let open = false;
let timer = 0;

async function search(): Promise<void> {
    const wanted = asked;
    try {
        const answer =
            await get<{ matches: Match[]; more: boolean }>(`/search?limit=20&q=${encodeURIComponent(wanted)}`);
        if (wanted !== asked) return;  // more was typed meanwhile
        found = answer.matches;
        more = answer.more;
        failed = "";
    } catch (error) {
        found = undefined;
        failed = (error as Error).message;
    }
    chosen = 0;
    m.redraw();
}

function type(value: string): void {
    asked = value.trim();
    open = asked !== "";
    window.clearTimeout(timer);
    if (open)
        timer = window.setTimeout(() => void search(), 80);
    else
        found = undefined;
}

function close(): void {
    open = false;
    asked = "";
    found = undefined;
}

function go(match: Match | undefined): void {
    if (!match) return;
    close();
    document.getElementById("search")?.blur();
    m.route.set(
        match.onu_id === null ? to_olt(match.olt, "waiting") : to_onu(match.olt, match.pon_port, match.onu_id),
    );
}

function press(event: KeyboardEvent): void {
    const count = found?.length ?? 0;
    if (event.key === "ArrowDown")
        chosen = Math.min(count - 1, chosen + 1);
    else if (event.key === "ArrowUp")
        chosen = Math.max(0, chosen - 1);
    else if (event.key === "Enter")
        go(found?.[chosen]);
    else if (event.key === "Escape")
        close();
    else
        return;
    event.preventDefault();
}

function result(match: Match, place: number): m.Vnode {
    const what = match.onu_id === null ? `${match.pon_port}/–` : `${match.pon_port}/${match.onu_id}`;
    const shown: Record<string, string | null> = { LOID: match.loid, serial: match.serial, model: match.model };
    const matched = Object.entries(shown).find(([name]) => name.toLowerCase() === match.found.replace("loid", "loid"));
    return m(
        `li${place === chosen ? ".chosen" : ""}`,
        {
            id: `found-${place}`,
            role: "option",
            "aria-selected": place === chosen ? "true" : "false",
            // The box loses the focus before a click is done, so that the list would be gone.
            onmousedown: (event: Event) => event.preventDefault(),
            onclick: () => go(match),
        },
        m("span.where", `${match.olt} ${what}`),
        state_badge(match.state),
        m("span.mono", match.mac),
        m("span.about", matched ? `${matched[0]} ${text(matched[1])}` : text(match.description)),
    );
}

function results(): m.Children {
    if (!open || (!found && !failed)) return undefined;
    if (failed) return m(".found", m("p", { role: "alert" }, failed));
    if (found?.length === 0) return m(".found", m("p", "Nothing is found."));
    return m(
        ".found",
        m("ul", { id: "found", role: "listbox", "aria-label": "ONUs that were found" }, found?.map(result)),
        more && m("p", "There are more. Type more to find fewer."),
    );
}

export const Search: m.Component = {
    view: () => m(
        ".search",
        {role: "search"},
        m("input", {
            id: "search",
            type: "text",
            value: asked,
            role: "combobox",
            autocomplete: "off",
            spellcheck: "false",
            placeholder: "Find an ONU   /",
            "aria-label": "Find an ONU by MAC address, LOID, name, description or serial number",
            "aria-controls": open && found && found.length > 0 ? "found" : false,
            "aria-autocomplete": "list",
            "aria-expanded": open && found ? "true" : "false",
            "aria-activedescendant": open && found && found.length > 0 ? `found-${chosen}` : false,
            oninput: (event: Event) => type((event.target as HTMLInputElement).value),
            onkeydown: press,
            onblur: close,
        }),
        m(
            "span.hidden",
            {role: "status", "aria-live": "polite"},
            open && found ? `${found.length} found` : "",
        ),
        results(),
    ),
};
