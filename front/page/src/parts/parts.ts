// What every screen is made of: panels, states, and what stands where there is nothing to show.
import m from "mithril";
import { ApiError } from "../base/api";

export type Tone = "good" | "warn" | "bad" | "idle" | "new";

const tones: Record<string, Tone> = {
    online: "good",
    reached: "good",
    offline: "bad",
    lost: "bad",
    waiting: "new",
    unauthenticated: "warn",
    done: "good",
    failed: "bad",
};
const shapes: Record<Tone, string> = {
    good: "●",
    warn: "▲",
    bad: "■",
    idle: "○",
    new: "◆"
};

export function tone_of(state: string): Tone { return tones[state] ?? "idle"; }

// A state is said by a word, a shape and a colour, so that none of them is needed to tell it.
export function badge(tone: Tone, word: m.Children): m.Vnode {
    return m(`span.badge.${tone}`, m("span.shape", { "aria-hidden": "true" }, shapes[tone]), word);
}
export function state_badge(state: string): m.Vnode {
    return badge(tone_of(state), state === "unauthenticated" ? "refused" : state);
}

export function panel(title: m.Children, ...content: m.Children[]): m.Vnode {
    return m("section.panel", m("h2", title), content);
}

// Panels in columns beside each other, so that one that grows moves those below it only.
export function columns(...stacks: m.Children[][]): m.Vnode {
    return m(
        ".columns",
        stacks.map((stack) => m(".stack", stack)),
    );
}

export function facts(...pairs: [string, m.Children][]): m.Vnode {
    return m(
        "dl.facts",
        pairs.map(([name, value]) => m("div", m("dt", name), m("dd", value))),
    );
}

export function nothing(said: m.Children): m.Vnode { return m("p.nothing", said); }

export function loading(what: string, lines = 4): m.Vnode {
    return m(
        ".loading",
        { role: "status", "aria-label": `Loading ${what}` },
        Array.from({ length: lines }, () => m(".line")),
    );
}

export function problem(error: Error, retry?: () => void): m.Vnode {
    if (error instanceof ApiError && error.status === 403)
        return m(".problem.denied", { role: "alert" }, m("strong", "You may not do this. "), error.message);
    return m(
        ".problem",
        { role: "alert" },
        m("strong", "This did not work. "),
        error.message,
        retry && m("button.small", { type: "button", onclick: retry }, "Try again"),
    );
}

// Stands where something will be that was not read yet, or cannot be read.
export function awaited(resource: {error: Error | undefined; refresh: () => Promise<void>}, what: string, lines = 4):
    m.Vnode {
    if (resource.error) return problem(resource.error, () => void resource.refresh());
    return loading(what, lines);
}
// The same in place of a whole screen, which has its heading already.
export function awaited_screen(resource: {error: Error | undefined; refresh: () => Promise<void>}, title: string):
    m.Children {
    return [m("h1.hidden", title), awaited(resource, title, 10)];
}

export function link(to: string, label: m.Children, selector = ""): m.Vnode {
    return m(`a${selector}`, { href: `#${to}` }, label);
}

// In a table, whose rows are reached by arrows, a link is for those who point.
export function row_link(to: string, label: m.Children): m.Vnode { return link(to, label, "[tabindex=-1]"); }

export function button(label: m.Children, press: () => void, attributes: m.Attributes = {}): m.Vnode {
    return m("button", { type: "button", onclick: press, ...attributes }, label);
}

// What may be wider or higher than its place. Then it is a stop of the Tab key, so that keys can scroll it.
export const Scrolls: m.Closure<{label: string; selector?: string}> = () => {
    const look = ({ dom }: m.DomVnode<unknown>): void => {
        dom.tabIndex = dom.scrollWidth > dom.clientWidth || dom.scrollHeight > dom.clientHeight ? 0 : -1;
    };
    return {
        oncreate: look,
        onupdate: look,
        view: ({ attrs, children }) =>
            m(`.scrolls${attrs.selector ?? ""}`, { role: "region", "aria-label": attrs.label }, children),
    };
};

// A form that a button opens: the focus goes into it, and back to the button when it is closed.
export const OpenedForm: m.Closure<{label: string; submit: (event: Event) => void}> = () => {
    const opener = document.activeElement;
    return {
        oncreate: ({ dom }) => {
            const wanted = dom.querySelector<HTMLElement>("[autofocus]");
            (wanted ?? dom.querySelector<HTMLElement>("input, select"))?.focus();
        },
        onremove: () => {
            if (opener instanceof HTMLElement && opener.isConnected) opener.focus({ preventScroll: true });
        },
        view: ({ attrs, children }) =>
            m("form.edit", { onsubmit: attrs.submit, "aria-label": attrs.label }, children),
    };
};

let fields = 0;
// A labelled field. `make` gets the id that its control has to have.
export const Field: m.Closure<{label: string; hint?: string; make: (id: string) => m.Children}> = () => {
    const id = `field-${(fields += 1)}`;
    return {
        view: ({ attrs }) =>
            m(".field",
              m("label",
                { for: id
                },
                attrs.label),
              attrs.make(id),
              attrs.hint && m("span.hint", attrs.hint)),
    };
};

export function input(
    label: string,
    value: string,
    change: (value: string) => void,
    attributes: m.Attributes = {},
    hint?: string,
): m.Vnode {
    return m(Field, {
        label,
        ...(hint ? { hint } : {}),
        make: (id: string) => m("input", {
            id,
            value,
            oninput: (event: Event) => change((event.target as HTMLInputElement).value),
            ...attributes,
        }),
    });
}

export function choice(
    label: string,
    value: string,
    options: [string, string][],
    change: (value: string) => void,
    hint?: string,
): m.Vnode {
    return m(Field, {
        label,
        ...(hint ? { hint } : {}),
        make: (id: string) => m(
            "select",
            { id, value, onchange: (event: Event) => change((event.target as HTMLSelectElement).value) },
            options.map(([of, said]) => m("option", { value: of, selected: of === value }, said)),
        ),
    });
}
