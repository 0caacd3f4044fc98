// A tree that is one stop of the Tab key. Up and Down move in what is seen of it, Right opens a branch or goes into it,
// Left closes one or goes out of it, Home and End go to its ends, Enter opens what a branch is about.
import m from "mithril";

export interface Branch {
    label: string;  // all of it in words, for those who do not see it
    show: () => m.Children;
    open?: () => void;
    is_open: boolean;  // at first; later it is as whoever sits here wants it
    below: Branch[];
}

interface Attributes {
    label: string;
    root: Branch;
}

interface Seen {
    branch: Branch;
    id: string;
    parent: string | undefined;
}

let trees = 0;
export const Tree: m.Closure<Attributes> = () => {
    const name = `tree-${(trees += 1)}`;
    const wanted = new Map<string, boolean>();
    let active = name;
    let body: HTMLElement | undefined;

    function is_open(branch: Branch, id: string): boolean {
        return branch.below.length > 0 && (wanted.get(id) ?? branch.is_open);
    }

    function seen_of(branch: Branch, id: string, parent?: string): Seen[] {
        const below = is_open(branch, id) ? branch.below : [];
        return [{ branch, id, parent }, ...below.flatMap((each, place) => seen_of(each, `${id}-${place}`, id))];
    }

    function go(to: Seen | undefined): void {
        if (!to) return;
        active = to.id;
        body?.querySelector(`#${to.id} > .line`)?.scrollIntoView({ block: "nearest" });
    }

    function press(event: KeyboardEvent, root: Branch): void {
        if (event.target !== body) return;
        const seen = seen_of(root, name);
        const place = Math.max(0, seen.findIndex(({ id }) => id === active));
        const now = seen[place] as Seen;
        const open = is_open(now.branch, now.id);
        if (event.key === "ArrowDown")
            go(seen[place + 1]);
        else if (event.key === "ArrowUp")
            go(seen[place - 1]);
        else if (event.key === "Home")
            go(seen[0]);
        else if (event.key === "End")
            go(seen[seen.length - 1]);
        else if (event.key === "ArrowRight" && open)
            go(seen[place + 1]);
        else if (event.key === "ArrowRight")
            wanted.set(now.id, true);
        else if (event.key === "ArrowLeft" && open)
            wanted.set(now.id, false);
        else if (event.key === "ArrowLeft")
            go(seen.find(({ id }) => id === now.parent));
        else if (event.key === "Enter" && now.branch.open)
            now.branch.open();
        else if (event.key === "Enter" || event.key === " ")
            wanted.set(now.id, !open);
        else
            return;
        event.preventDefault();
    }

    function item(branch: Branch, id: string, level: number, place: number, count: number): m.Vnode {
        const open = is_open(branch, id);
        const is_leaf = branch.below.length === 0;
        return m(
            `li${id === active ? ".active" : ""}`,
            {
                id,
                role: "treeitem",
                "aria-label": branch.label,
                "aria-level": level,
                "aria-posinset": place + 1,
                "aria-setsize": count,
                "aria-selected": id === active ? "true" : "false",
                "aria-expanded": is_leaf ? false : String(open),
            },
            m(
                ".line",
                {
                    onclick: (event: MouseEvent) => {
                        active = id;
                        if (!(event.target as HTMLElement).closest("a")) wanted.set(id, !open);
                    },
                },
                !is_leaf && m("span.fold", { "aria-hidden": "true" }, open ? "▾" : "▸"),
                branch.show(),
            ),
            open &&
                m(
                    `ul${branch.below.every(({ below }) => below.length === 0) ? ".leaves" : ""}`,
                    { role: "group" },
                    branch.below.map((each, at) => item(each, `${id}-${at}`, level + 1, at, branch.below.length)),
                ),
        );
    }

    return {
        view: ({ attrs: { label, root } }) => {
            if (!seen_of(root, name).some(({ id }) => id === active)) active = name;
            return m(
                "ul.tree",
                {
                    role: "tree",
                    tabindex: 0,
                    "aria-label": label,
                    "aria-activedescendant": active,
                    oncreate: (vnode) => (body = vnode.dom),
                    onkeydown: (event: KeyboardEvent) => press(event, root),
                },
                item(root, name, 1, 0, 1),
            );
        },
    };
};
