// Questions before something is done, and a word when it was. A dialog is the browser's own, which keeps the focus in
// it and gives it back.
import m from "mithril";
import { ApiError, call, would_hit } from "../base/api";
import { plural, text } from "../base/format";
import type { Confirmation, Difference, Hit, Outcome } from "../base/model";
import { state_badge } from "./parts";

interface Question {
    title: string;
    content: () => m.Children;
    yes: string;
    danger: boolean;
    answer: (yes: boolean) => void;
}

let question: Question | undefined;
let said: { text: string; bad: boolean } | undefined;
let said_timer = 0;

export function tell(what: string, bad = false): void {
    said = { text: what, bad };
    window.clearTimeout(said_timer);
    // What went wrong stays until it is closed.
    if (!bad) said_timer = window.setTimeout(() => ((said = undefined), m.redraw()), 8000);
    m.redraw();
}

export function ask(title: string, content: () => m.Children, yes: string, danger = false): Promise<boolean> {
    return new Promise((resolve) => {
        question = { title, content, yes, danger, answer: resolve };
        m.redraw();
    });
}

function end(yes: boolean): void {
    const asked = question;
    question = undefined;
    asked?.answer(yes);
    m.redraw();
}

export const Dialogs: m.Component = {
    view: () =>
        [question &&
             m(
                 "dialog",
                 {

                     "aria-labelledby": "question-title",
                     oncreate: (vnode) => (vnode.dom as HTMLDialogElement).showModal(),
                     oncancel: (event: Event) => {
                         event.preventDefault();
                         end(false);
                     },
                 },
                 m("h2", {id: "question-title"}, question.title),
                 m(".content", question.content()),
                 m(
                     ".buttons",
                     m("button", {type: "button", onclick: () => end(false), autofocus: true}, "Cancel"),
                     m(
                         `button.primary${question.danger ? ".danger" : ""}`,
                         {type: "button", onclick: () => end(true)},
                         question.yes,
                     ),
                 ),
             ),
         m(
             ".said",
             {role: "status", "aria-live": "polite"},
             said &&
                 m(
                     `p${said.bad ? ".bad" : ""}`,
                     said.text,
                     m("button.small", {type: "button", onclick: () => (said = undefined)}, "Close"),
                 ),
         ),
],
};

// What becomes different, by its name, before and after.
export function changes_table(differences: Pick<Difference, "name" | "before" | "after">[]): m.Vnode {
    return m(
        "table.changes",
        m("thead",
          m("tr",
            m("th", { scope: "col" }, "Setting"),
            m("th", { scope: "col" }, "Before"),
            m("th", { scope: "col" }, "After"))),
        m(
            "tbody",
            differences.map(
                ({ name, before, after }) =>
                    m("tr", m("th", { scope: "row" }, name), m("td.before", text(before)), m("td.after", text(after))),
            ),
        ),
    );
}

export function hit_list(hit: Confirmation): m.Vnode {
    return m(
        ".hit",
        m(
            "p",
            hit.count === 0 ? `No ONU is hit. It is done to ${hit.target}.` :
                              `${plural(hit.count, "ONU")} will be hit, of which ${hit.online} online now:`,
        ),
        hit.count > 0 &&
            m(
                "ul",
                { tabindex: 0, "aria-label": "ONUs that will be hit" },
                hit.onus.map(
                    (onu) => m(
                        "li",
                        m("span.mono", onu.onu_id === null ? onu.mac : `${onu.pon_port}/${onu.onu_id}`),
                        state_badge(onu.state),
                        m("span", text(onu.description)),
                    ),
                ),
                hit.count > hit.onus.length && m("li", `and ${hit.count - hit.onus.length} more`),
            ),
    );
}

// Does what may need a confirmation: the server says what will be hit, whoever sits here is asked, and it
// is sent again.
export async function confirmed<T>(title: string, yes: string, act: (confirm?: string) => Promise<T>):
    Promise<T | undefined> {
    let confirm: string | undefined;
    for (;;) {
        try {
            return await act(confirm);
        } catch (error) {
            const needed = error instanceof ApiError && error.status === 428 ? error.confirmation : undefined;
            if (!needed?.confirm) throw error;
            const content = () =>
                [m("p.affects", "This affects service."),
                 needed.differences &&
                     changes_table(needed.differences
                                       .map((one) => ({...one, name: `${one.table} ${one.key} ${one.name}` }))),
                 hit_list(needed),
            ];
            if (!(await ask(title, content, yes, true))) return undefined;
            confirm = needed.confirm;
        }
    }
}

// One of several things that are done together.
export interface Step {
    what: string;  // for whoever has to know which of them failed
    operation: string;
    given: Record<string, unknown>;
}

// Does a step whose hits were agreed to. Who is hit meanwhile beyond that was not agreed to.
async function do_agreed(olt: string, step: Step, agreed: ReadonlySet<string>): Promise<void> {
    try {
        await call(olt, step.operation, step.given);
    } catch (error) {
        const needed = error instanceof ApiError && error.status === 428 ? error.confirmation : undefined;
        if (!needed?.confirm) throw error;
        const other = needed.onus.find(({ mac }) => !agreed.has(mac));
        if (other)
            throw new ApiError(409, "conflict", `${other.mac} would be hit as well, which nobody was asked about`);
        await call(olt, step.operation, step.given, needed.confirm);
    }
}

// Does several things one after the other, after one question that names all ONUs that they will hit. Says what came of
// it, and returns whether all was done.
export async function change_all(
    olt: string,
    steps: Step[],
    title: string,
    yes: string,
    done: string,
): Promise<boolean> {
    let what = "";
    try {
        const hits = new Map<string, Hit>();
        for (const step of steps)
            for (const hit of (await would_hit(olt, step.operation, step.given)).onus) hits.set(hit.mac, hit);
        const onus = [...hits.values()];
        const online = onus.filter(({ state }) => state === "online").length;
        const all = { confirm: null, target: olt, scope: "onus", count: onus.length, online, onus };
        const content = () => [m("p.affects", "This affects service."), hit_list(all)];
        if (!(await ask(title, content, yes, true))) return false;
        for (const step of steps) {
            what = step.what;
            await do_agreed(olt, step, new Set(hits.keys()));
        }
        tell(done);
        return true;
    } catch (error) {
        tell([what, (error as Error).message].filter(Boolean).join(": "), true);
        return false;
    }
}

// Changes something by an operation, says what came of it, and returns whether it was done.
export async function change(
    olt: string,
    operation: string,
    given: Record<string, unknown>,
    title: string,
    yes: string,
    done: string,
): Promise<boolean> {
    try {
        const outcome = await confirmed<Outcome>(title, yes, (confirm) => call(olt, operation, given, confirm));
        if (outcome) tell(done);
        return outcome !== undefined;
    } catch (error) {
        tell((error as Error).message, true);
        return false;
    }
}
