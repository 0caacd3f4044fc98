// Light or dark: as the system says, unless somebody chose.
const names = ["system", "light", "dark"] as const;
type Theme = (typeof names)[number];

let chosen: Theme = "system";

export function theme(): Theme { return chosen; }

function show(): void {
    if (chosen === "system")
        delete document.documentElement.dataset.theme;
    else
        document.documentElement.dataset.theme = chosen;
}

export function next_theme(): void {
    chosen = names[(names.indexOf(chosen) + 1) % names.length] ?? "system";
    localStorage.setItem("theme", chosen);
    show();
}

export function begin_theme(): void {
    chosen = names.find((name) => name === localStorage.getItem("theme")) ?? "system";
    show();
}
