// The configuration of an OLT: shown, saved, compared with a text, and applied, with a way back.
import m from "mithril";
import { ApiError, get, may, post, segment, send } from "../base/api";
import { clock, plural, span, text } from "../base/format";
import type { Difference } from "../base/model";
import { use } from "../base/store";
import { changes_table, confirmed, tell } from "../parts/dialog";
import { awaited, badge, button, choice, input, nothing, panel, problem, Scrolls } from "../parts/parts";
import { Column, Sorting, Table } from "../parts/table";

interface Setting {
    table: string;
    key: string;
    name: string;
    value: string | null;
}
interface Pending {
    state: "none" | "waiting" | "rolling_back" | "rolled_back" | "failed";
    rolls_back: number | null;
    user: string | null;
}
interface Compared {
    differences: Difference[];
    left_out: string[];
}
interface Applied {
    changed: number;
    rolls_back: number | null;
}

const columns: Column<Setting>[] = [
    { name: "table", title: "Of", width: "minmax(7rem, 1fr)", show: ({ table }) => table, by: ({ table }) => table },
    { name: "key", title: "Which", width: "minmax(5rem, 1fr)", show: ({ key }) => text(key), by: ({ key }) => key },
    { name: "name", title: "Setting", width: "minmax(6rem, 1fr)", show: ({ name }) => name, by: ({ name }) => name },
    {
        name: "value",
        title: "Value",
        width: "minmax(8rem, 3fr)",
        show: ({ value }) => text(value),
        by: ({ value }) => value
    },
];

export const ConfigurationScreen: m.Closure<{olt: string}> = ({attrs: {olt}}) => {
    const base = `/olts/${segment(olt)}/configuration`;
    let words = "";
    let sorting: Sorting = { by: "", down: false };
    let offered = "";  // the text that is compared
    let file = "";
    let seconds = "60";
    let compared: Compared | undefined;
    let failed: Error | undefined;
    let pending: Pending | undefined;
    let from: Setting[] | undefined;
    let by = "";
    let rows: Setting[] = [];

    async function read_pending(): Promise<void> {
        try {
            pending = await get<Pending>(`${base}/pending`);
        } catch (error) {
            // Whoever may not know whether something waits is not asked about it either.
            if (!(error instanceof ApiError && error.status === 403)) failed = error as Error;
        }
        m.redraw();
        if (pending?.state === "waiting" || pending?.state === "rolling_back")
            timer = window.setTimeout(() => void read_pending(), 2000);
    }
    let timer = 0;

    async function attempt(act: () => Promise<void>): Promise<void> {
        failed = undefined;
        try {
            await act();
        } catch (error) {
            failed = error as Error;
        }
        m.redraw();
    }

    async function take(chosen: File | undefined): Promise<void> {
        if (!chosen) return;
        file = chosen.name;
        offered = await chosen.text();
        await compare();
    }

    const compare = (): Promise<void> => attempt(async () => {
        compared = undefined;
        compared = await post<Compared>(`${base}/compare`, { text: offered });
    });

    const apply = (): Promise<void> => attempt(async () => {
        const body = { text: offered, seconds: Number(seconds) };
        const done = await confirmed(
            `Apply this to ${olt}?`,
            "Apply",
            (confirm) => post<Applied>(`${base}/apply`, {...body, ...(confirm ? { confirm } : {}) })
        );
        if (!done) return;
        compared = undefined;
        tell(`Applied: ${plural(done.changed, "difference")}.`);
        void use<unknown>(base).refresh();
        await read_pending();
    });

    const decide = (what: "confirm" | "rollback"): Promise<void> => attempt(async () => {
        await post<unknown>(`${base}/${what}`, {});
        tell(what === "confirm" ? "What was applied is kept." : "It went back to what was before.");
        void use<unknown>(base).refresh();
        await read_pending();
    });

    const save = (): Promise<void> => attempt(async () => {
        const answer = await send("GET", `${base}/text`);
        const address = URL.createObjectURL(await answer.blob());
        const anchor = document.createElement("a");
        anchor.href = address;
        anchor.download = `${olt}.cfg`;
        anchor.click();
        URL.revokeObjectURL(address);
    });

    function waiting_banner(): m.Children {
        if (!pending || pending.state === "none" || pending.state === "rolled_back") return undefined;
        if (pending.state !== "waiting")
            return m(
                ".banner",
                { role: "alert" },
                pending.state === "failed" ? "Going back failed." : "It goes back to what was before …"
            );
        return m(
            ".banner",
            { role: "alert" },
            m("strong", "What was applied waits for its confirmation."),
            pending.rolls_back !== null &&
                ` It goes back by itself at ${clock(pending.rolls_back)}, in ${span(pending.rolls_back - Date.now())}.`,
            may("service-affecting") &&
                [
                    m("button.primary", { type: "button", onclick: () => void decide("confirm") }, "Keep it"),
                    button("Go back now", () => void decide("rollback")),
                ],
        );
    }

    function compare_panel(): m.Vnode {
        return panel(
            "Compare and apply",
            m(
                ".field",
                m("label",
                  { for: "configuration-file"
                  },
                  "A saved configuration"),
                m("input", {
                    id: "configuration-file",
                    type: "file",
                    onchange: (event: Event) => void take((event.target as HTMLInputElement).files?.[0])
                }),
            ),
            compared &&
                (compared.differences.length === 0 ?
                     m("p", badge("good", `${file} is what ${olt} has.`)) :
                     [
                         m("p", plural(compared.differences.length, "difference"), ` between ${olt} and ${file}:`),
                         m(Scrolls,
                           { label: "Differences" },
                           changes_table(compared.differences
                                             .map((one) => ({...one, name: `${one.table} ${one.key} ${one.name}` })))),
                         may("service-affecting") &&
                             m(
                                 "form.edit.flat",
                                 {
                                     onsubmit: (event: Event) => (event.preventDefault(), void apply()),
                                     "aria-label": "Apply"
                                 },
                                 choice(
                                     "Unless it is confirmed, go back after",
                                     seconds,
                                     [["60", "1 minute"], ["300", "5 minutes"], ["1800", "30 minutes"], ["0", "never"]],
                                     (value) => (seconds = value)
                                 ),
                                 m("button.primary", { type: "submit" }, "Apply"),
                             ),
                     ]),
            compared && compared.left_out.length > 0 &&
                m("p.muted", `Left out, for this OLT cannot have it: ${compared.left_out.join(", ")}`),
        );
    }

    function wanted(all: Setting[]): Setting[] {
        if (all === from && words === by) return rows;
        from = all;
        by = words;
        const typed = words.toLowerCase();
        rows = all.filter(
            (setting) =>
                `${setting.table} ${setting.key} ${setting.name} ${setting.value ?? ""}`.toLowerCase().includes(typed)
        );
        return rows;
    }

    void read_pending();
    return {
        onremove: () => window.clearTimeout(timer),
        view: () => {
            const asked = use<{ settings: Setting[] }>(base);
            const all = asked.value?.settings;
            const shown = all ? wanted(all) : [];
            return [
                waiting_banner(),
                m(
                    ".title",
                    m("h1", "Configuration", m("span.muted", ` of ${olt}`)),
                    button("Read again", () => void asked.refresh(), { class: "small" }),
                    may("service-affecting") &&
                        button("Save to a file", () => void save(), { class: "small",
                                                                      title: "The file has passwords." }),
                ),
                failed && problem(failed),
                may("write") && compare_panel(),
                panel(
                    ["Settings", all && m("span.count", all.length)],
                    !all ?
                        awaited(asked, "the configuration") :
                        all.length === 0 ?
                        nothing("Nothing is configured.") :
                        [
                            m("form.filters",
                              { onsubmit: (event: Event) => event.preventDefault(), "aria-label": "Filter settings" },
                              input("Words", words, (value) => (words = value), { placeholder: "any column" }),
                              m("span.shown", { role: "status" }, `${shown.length} of ${all.length}`)),
                            m(Table<Setting>, {
                                label: `Configuration of ${olt}`,
                                columns,
                                rows: shown,
                                id: (one: Setting) => `${one.table} ${one.key} ${one.name}`,
                                sorting,
                                sort: (other: Sorting) => (sorting = other),
                                empty: "No setting is like this."
                            }),
                        ],
                ),
            ];
        },
    };
};
