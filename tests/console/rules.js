// Rules of WCAG 2.1 AA that can be told by looking at the document. Returns what breaks one, a line each. With the
// argument "colours" only those are looked at that other colours may break.
const broken = [];
const say = (rule, element) => broken.push(`${rule}: ${element.outerHTML.replace(/\s+/g, " ").slice(0, 140)}`);

const is_shown = (element) => element.checkVisibility({ opacityProperty: true, visibilityProperty: true });
const all = (selector) => [...document.querySelectorAll(selector)].filter(is_shown);

function rgba(text) {
    const [r, g, b, a = "1"] = text.match(/[\d.]+/g) ?? ["0", "0", "0", "0"];
    return [Number(r), Number(g), Number(b), Number(a)];
}
function over(top, below) {
    return [0, 1, 2].map((place) => top[place] * top[3] + below[place] * (1 - top[3])).concat(1);
}
const grounds = new Map();
function ground_of(element) {
    if (!element) return [255, 255, 255, 1];
    if (!grounds.has(element))
        grounds.set(element, over(rgba(getComputedStyle(element).backgroundColor), ground_of(element.parentElement)));
    return grounds.get(element);
}
function luminance([r, g, b]) {
    const [x, y, z] = [r, g, b].map((value) => {
        const part = value / 255;
        return part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * x + 0.7152 * y + 0.0722 * z;
}
function contrast(one, other) {
    const [low, high] = [luminance(one), luminance(other)].sort((a, b) => a - b);
    return (high + 0.05) / (low + 0.05);
}

// 1.4.3: text stands out from what is behind it.
const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
for (let node = walker.nextNode(); node; node = walker.nextNode()) {
    const element = node.parentElement;
    if (!node.data.trim() || !is_shown(element) || element.closest(":disabled, .hidden, noscript, script")) continue;
    const style = getComputedStyle(element);
    const size = parseFloat(style.fontSize);
    const large = size >= 24 || (size >= 18.66 && Number(style.fontWeight) >= 700);
    const ground = ground_of(element);
    const found = contrast(over(rgba(style.color), ground), ground);
    if (found < (large ? 3 : 4.5)) say(`contrast ${found.toFixed(2)}`, element);
}
// 1.4.11: so does the edge of what one types into or presses.
for (const element of all("input, select, button:not(:disabled)")) {
    const style = getComputedStyle(element);
    if (style.borderTopWidth === "0px" || rgba(style.borderTopColor)[3] === 0) continue;
    const found = contrast(rgba(style.borderTopColor), ground_of(element.parentElement));
    if (found < 3) say(`contrast of an edge ${found.toFixed(2)}`, element);
}

// And what a picture is made of.
for (const element of all(".fillbar, .stroke, .dot")) {
    const found = contrast(rgba(getComputedStyle(element).backgroundColor), ground_of(element.parentElement));
    if (found < 3) say(`contrast of a shape ${found.toFixed(2)}`, element);
}

if (arguments[0] === "colours") return broken;

// 4.1.2, 2.4.4, 3.3.2: what one uses has a name.
function name_of(element) {
    const by = element.getAttribute("aria-labelledby");
    if (by) return by.split(" ").map((id) => document.getElementById(id)?.textContent ?? "").join("");
    const labels = [...(element.labels ?? [])].map((label) => label.textContent).join("");
    return (element.getAttribute("aria-label") ?? "") + labels || element.textContent;
}
const named = "a, button, dialog, nav, progress, ol.timeline, [role=img], [role=grid], [role=region], [role=listbox], [role=tree], [role=treeitem]";
for (const element of all(named))
    if (!name_of(element).trim()) say("has no name", element);
for (const element of all("input, select, textarea"))
    if (!(element.getAttribute("aria-label") || element.labels?.length)) say("has no label", element);
for (const element of all("img")) if (!element.hasAttribute("alt")) say("has no text", element);

// 4.1.1, 1.3.1: references are to what there is, and structure is what it says.
const ids = all("[id]").map(({ id }) => id);
for (const id of ids) if (ids.indexOf(id) !== ids.lastIndexOf(id)) broken.push(`id ${id}: twice`);
for (const attribute of ["aria-controls", "aria-activedescendant", "aria-labelledby", "aria-describedby"])
    for (const element of all(`[${attribute}]`))
        for (const id of element.getAttribute(attribute).split(" "))
            if (!document.getElementById(id)) say(`${attribute} names nothing`, element);
const parents_of = { row: ["grid", "rowgroup"], gridcell: ["row"], columnheader: ["row"], option: ["listbox"], treeitem: ["tree", "group"] };
for (const [child, parents] of Object.entries(parents_of))
    for (const element of all(`[role=${child}]`))
        if (!parents.includes(element.parentElement.getAttribute("role"))) say(`${child} outside ${parents}`, element);
for (const element of all("th")) if (!element.hasAttribute("scope")) say("of which cells?", element);
for (const element of all("li")) if (!element.closest("ul, ol")) say("outside a list", element);
for (const element of all("[aria-sort]"))
    if (!["ascending", "descending"].includes(element.getAttribute("aria-sort"))) say("aria-sort", element);
for (const element of all("*"))
    for (const { name, value } of element.attributes)
        if (name.startsWith("aria-") && ["undefined", "null"].includes(value)) say(`${name} is ${value}`, element);
const levels = all("h1, h2, h3").map((heading) => Number(heading.tagName[1]));
levels.forEach((level, place) => {
    if (level > (levels[place - 1] ?? 0) + 1) broken.push(`a heading of level ${level} behind one of ${levels[place - 1]}`);
});
if (all("h1").length !== 1) broken.push(`${all("h1").length} headings of level 1`);
if (all("main").length !== 1) broken.push(`${all("main").length} main parts`);

// 2.4.2, 3.1.1: the page says what it is, and in which language.
if (!document.title.trim()) broken.push("no title");
if (!document.documentElement.lang) broken.push("no language");
// 2.4.3: nothing jumps ahead in the order of the Tab key.
for (const element of all("[tabindex]")) if (Number(element.getAttribute("tabindex")) > 0) say("tabindex", element);
// 2.1.1: what has to be scrolled can be scrolled by keys.
const stops = "a[href]:not([tabindex='-1']), button:not(:disabled):not([tabindex='-1']), input, select, [tabindex='0']";
for (const element of all("main *, dialog *")) {
    const { overflowX, overflowY } = getComputedStyle(element);
    const wide = ["auto", "scroll"].includes(overflowX) && element.scrollWidth > element.clientWidth;
    const high = ["auto", "scroll"].includes(overflowY) && element.scrollHeight > element.clientHeight;
    if ((wide || high) && !element.matches(stops) && !element.querySelector(stops)) say("keys cannot scroll", element);
}
// 4.1.3: what changes by itself is told.
if (!document.querySelector(".login"))
    for (const role of ["log", "status"])
        if (!document.querySelector(`[role=${role}][aria-live=polite]`)) broken.push(`nothing is a live region ${role}`);
// 2.3.3: nothing moves for whom does not want it.
if (matchMedia("(prefers-reduced-motion: reduce)").matches)
    for (const element of all("*")) {
        const style = getComputedStyle(element);
        if (style.animationName !== "none" || parseFloat(style.transitionDuration) > 0) say("moves", element);
    }
// 2.4.7: where the focus is can be seen.
const before = document.activeElement;
for (const element of all(stops).slice(0, 80)) {
    element.focus({ focusVisible: true, preventScroll: true });
    if (document.activeElement !== element) continue;
    const style = getComputedStyle(element);
    if (style.outlineStyle === "none") say("focus is not seen", element);
    // 1.4.11: the ring around it stands out, too.
    const found = contrast(rgba(style.outlineColor), ground_of(element.parentElement));
    if (found < 3) say(`contrast of the focus ${found.toFixed(2)}`, element);
}
before?.focus({ preventScroll: true });
// 1.4.10: nothing has to be scrolled sideways to be read.
if (document.documentElement.scrollWidth > window.innerWidth)
    broken.push(`wider than the window: ${document.documentElement.scrollWidth} of ${window.innerWidth}`);
return broken;
