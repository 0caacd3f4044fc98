// A table of any length: only the rows that are seen are in the document, so that thousands scroll, sort and filter at
// once. Its rows are one stop of the Tab key; arrows, Page Up, Page Down, Home and End move in them, Enter opens one.
import m from "mithril";

export interface Column<Row> {
    name: string;
    title: string;  // with the unit, where it has one
    width: string;  // of a column of a CSS grid
    show: (row: Row) => m.Children;
    by?: (row: Row) => string | number | null | undefined;  // what it is sorted by; without it cannot be
    right?: boolean;
    from?: number;  // it is left out of pages that are narrower than so many pixels
}

export interface Sorting {
    by: string;
    down: boolean;
}

interface Attributes<Row> {
    label: string;
    columns: Column<Row>[];
    rows: Row[];
    id: (row: Row) => string;
    open?: (row: Row) => void;
    sorting?: Sorting;
    sort?: (sorting: Sorting) => void;
    empty: m.Children;
    alone?: boolean;  // the screen is about it: it has the rest of the page, and the keys at once
}

export function sorted<Row>(rows: Row[], columns: Column<Row>[], sorting: Sorting): Row[] {
    const by = columns.find((column) => column.name === sorting.by)?.by;
    if (!by) return rows;
    const keyed = rows.map((row) => ({ row, value: by(row) }));
    const sign = sorting.down ? -1 : 1;
    keyed.sort((a, b) => {
        // What is not known stands last, whichever way it is sorted.
        if (a.value == null || b.value == null) return Number(a.value == null) - Number(b.value == null);
        if (typeof a.value === "number" && typeof b.value === "number") return sign * (a.value - b.value);
        return sign * String(a.value).localeCompare(String(b.value), "en", { numeric: true });
    });
    return keyed.map(({ row }) => row);
}

const beyond = 8;  // rows that are kept above and below those that are seen

function row_height(): number {
    return Math.round(2 * parseFloat(getComputedStyle(document.documentElement).fontSize));
}

let tables = 0;
export function Table<Row>(): m.Component<Attributes<Row>> {
    const name = `table-${(tables += 1)}`;
    let body: HTMLElement | undefined;
    let top = 0;
    let height = 600;
    let active = 0;
    let given: Row[] | undefined;
    let given_sorting = "";
    let shown: Row[] = [];
    const sizes = new ResizeObserver(() => {
        if (!body || body.clientHeight === height) return;
        height = body.clientHeight;
        m.redraw();
    });

    function order(attrs: Attributes<Row>): void {
        const sorting = attrs.sorting ? `${attrs.sorting.by} ${attrs.sorting.down}` : "";
        if (attrs.rows === given && sorting === given_sorting) return;
        given = attrs.rows;
        given_sorting = sorting;
        shown = attrs.sorting ? sorted(attrs.rows, attrs.columns, attrs.sorting) : attrs.rows;
        active = Math.min(active, Math.max(0, shown.length - 1));
    }

    function go(to: number): void {
        active = Math.max(0, Math.min(shown.length - 1, to));
        if (!body) return;
        const row = row_height();
        const head = row;  // it stays above the rows
        if (active * row < body.scrollTop)
            body.scrollTop = active * row;
        else if ((active + 1) * row + head > body.scrollTop + body.clientHeight)
            body.scrollTop = (active + 1) * row + head - body.clientHeight;
        top = body.scrollTop;
    }

    // Right and Left go through what can be pressed in the row, for which Tab does not stop; any other move leaves it.
    function press_in_row(event: KeyboardEvent): void {
        const row = body?.querySelector(".row.active");
        const all = [...(row?.querySelectorAll<HTMLElement>("a, button") ?? [])];
        const place = all.indexOf(event.target as HTMLElement);
        const to = event.key === "ArrowRight" ? Math.min(all.length - 1, place + 1) : place - 1;
        (all[to] ?? body)?.focus({ preventScroll: true });
        event.preventDefault();
    }

    function press(event: KeyboardEvent, attrs: Attributes<Row>): void {
        const is_in_row = event.target instanceof Element && event.target.closest(".row.active") !== null;
        if (is_in_row && ["ArrowUp", "ArrowDown", "Escape"].includes(event.key))
            body?.focus({ preventScroll: true });
        else if (event.target !== body && !is_in_row)
            return;
        if (["ArrowRight", "ArrowLeft"].includes(event.key)) return press_in_row(event);
        if (is_in_row && ["Enter", " "].includes(event.key)) return;
        const page = Math.max(1, Math.floor(height / row_height()) - 2);
        const steps: Record<string, number> = {
            ArrowDown: active + 1,
            ArrowUp: active - 1,
            PageDown: active + page,
            PageUp: active - page,
            Home: 0,
            End: shown.length - 1,
        };
        const to = steps[event.key];
        const row = shown[active];
        if (to !== undefined)
            go(to);
        else if (event.key === "Enter" && row && attrs.open)
            attrs.open(row);
        else
            return;
        event.preventDefault();
    }

    function head(attrs: Attributes<Row>, columns: Column<Row>[], template: string): m.Vnode {
        return m(
            ".row.head",
            { role: "row", "aria-rowindex": 1, style: { gridTemplateColumns: template } },
            columns.map((column) => {
                const is_sorted = attrs.sorting?.by === column.name;
                const sort = attrs.sort;
                const down = is_sorted && !attrs.sorting?.down;
                const direction = attrs.sorting?.down ? "descending" : "ascending";
                return m(
                    `.cell${column.right ? ".right" : ""}`,
                    { role: "columnheader", key: column.name, "aria-sort": is_sorted ? direction : false },
                    column.by && sort ? m(
                                            "button.sort",
                                            { type: "button", onclick: () => sort({ by: column.name, down }) },
                                            column.title,
                                            m("span",
                                              { "aria-hidden": "true" },
                                              !is_sorted              ? "" :
                                                  attrs.sorting?.down ? " ↓" :
                                                                        " ↑"),
                                        ) :
                                        column.title,
                );
            }),
        );
    }

    return {
        onremove: () => sizes.disconnect(),
        view: ({ attrs }) => {
            order(attrs);
            const columns = attrs.columns.filter((column) => !column.from || window.innerWidth >= column.from);
            const template = columns.map((column) => column.width).join(" ");
            const row = row_height();
            const first = Math.max(0, Math.floor(top / row) - beyond);
            const last = Math.min(shown.length, Math.ceil((top + height) / row) + beyond);
            return m(
                `.table${attrs.alone ? ".alone" : ""}`,
                {
                    role: "grid",
                    tabindex: 0,
                    "aria-label": attrs.label,
                    "aria-rowcount": shown.length + 1,
                    "aria-colcount": columns.length,
                    "aria-activedescendant": shown.length > 0 ? `${name}-${active}` : false,
                    oncreate: (vnode) => {
                        body = vnode.dom;
                        sizes.observe(body);
                        // Whoever came here by a key goes on with the keys.
                        const focus = document.activeElement;
                        if (attrs.alone && (focus === document.body || focus?.id === "main"))
                            body.focus({ preventScroll: true });
                    },
                    onscroll: (event: Event) => (top = (event.target as HTMLElement).scrollTop),
                    onkeydown: (event: KeyboardEvent) => press(event, attrs),
                },
                head(attrs, columns, template),
                shown.length === 0 ?
                    m(".row", { role: "row" }, m(".cell.nothing", { role: "gridcell" }, attrs.empty)) :
                    m(
                        ".rows",
                        { role: "rowgroup", style: { height: `${shown.length * row}px` } },
                        shown.slice(first, last).map((each, step) => {
                            const number = first + step;
                            return m(
                                `.row.of${number === active ? ".active" : ""}${attrs.open ? ".opens" : ""}`,
                                {
                                    role: "row",
                                    id: `${name}-${number}`,
                                    key: attrs.id(each),
                                    "aria-rowindex": number + 2,
                                    "aria-selected": number === active ? "true" : "false",
                                    style: { gridTemplateColumns: template, top: `${number * row}px` },
                                    onclick: (event: MouseEvent) => {
                                        active = number;
                                        const on = (event.target as HTMLElement).closest("a, button, input");
                                        if (!on && attrs.open) attrs.open(each);
                                    },
                                },
                                columns.map(
                                    (column) => m(
                                        `.cell${column.right ? ".right" : ""}`,
                                        { role: "gridcell", key: column.name },
                                        column.show(each),
                                    ),
                                ),
                            );
                        }),
                    ),
            );
        },
    };
}
