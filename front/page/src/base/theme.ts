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

// What is drawn on a canvas has the colours that it had then, so that it is drawn again.
export function begin_theme(redraw: () => void): void {
    window.matchMedia("(prefers-color-scheme: dark)").addEventListener("change", redraw);
    chosen = names.find((name) => name === localStorage.getItem("theme")) ?? "system";
    show();
}
