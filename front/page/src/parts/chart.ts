// Light over time, drawn by dygraphs, with the same in words for those who do not see it.
import Dygraph, { Row } from "dygraphs/dygraph.min.js";
import m from "mithril";
import { clock } from "../base/format";

export interface Series {
    label: string;
    color: string;  // a property of the style sheet
}

interface Attributes {
    label: string;  // what is shown, in a sentence
    unit: string;
    series: Series[];
    rows: Row[];
    limits: { value: number; color: string }[];
    window?: [number, number] | undefined;
}

// The legend of dygraphs is markup with styles in it, which the content security policy
// refuses. Ours is above the chart.
Dygraph.PLUGINS = Dygraph.PLUGINS.filter((plugin) => plugin !== Dygraph.Plugins.Legend);

// A property of the style sheet as the colour that it is now, in light or in dark.
function color_of(name: string): string {
    const root = document.documentElement;
    root.style.color = `var(${name})`;
    const color = getComputedStyle(root).color;
    root.style.color = "";
    return color;
}

// The limits are in sight, so that one sees how far it is to them.
function value_range({ rows, limits }: Attributes): [number, number] {
    const values = limits.map(({ value }) => value);
    for (const [, ...measured] of rows)
        for (const value of measured)
            if (value !== null) values.push(value);
    return [Math.floor(Math.min(...values)) - 1, Math.ceil(Math.max(...values)) + 1];
}

type Pointed = (value: string) => void;

function options(attrs: Attributes, point: Pointed): Record<string, unknown> {
    const grid = color_of("--line");
    return {
        labels: ["at", ...attrs.series.map(({ label }) => label)],
        colors: attrs.series.map(({ color }) => color_of(color)),
        strokeWidth: 1.6,
        drawPoints: attrs.rows.length < 40,
        pointSize: 2.5,
        connectSeparatedPoints: false,
        gridLineColor: grid,
        axisLineColor: grid,
        axisLabelFontSize: Math.round(0.86 * parseFloat(getComputedStyle(document.documentElement).fontSize)),
        valueRange: value_range(attrs),
        animatedZooms: false,
        highlightCallback: (_: unknown, at: number, points: { name: string; yval: number }[]) => point(
            `${clock(at)}: ${points.map(({ name, yval }) => `${name} ${yval.toFixed(1)} ${attrs.unit}`).join(", ")}`
        ),
        unhighlightCallback: () => point(""),
        dateWindow: attrs.window ?? null,
        // Limits are lines across the chart.
        underlayCallback: (context: CanvasRenderingContext2D, area: { x: number; w: number }, graph: {
            toDomYCoord: (y: number) => number
        }) => {
            context.save();
            context.setLineDash([5, 4]);
            for (const { value, color } of attrs.limits) {
                const y = Math.round(graph.toDomYCoord(value)) + 0.5;
                context.strokeStyle = color_of(color);
                context.beginPath();
                context.moveTo(area.x, y);
                context.lineTo(area.x + area.w, y);
                context.stroke();
            }
            context.restore();
        },
    };
}

export const Chart: m.Closure<Attributes> = () => {
    let graph: Dygraph | undefined;
    let drawn: Row[] | undefined;
    let look_drawn = "";
    let pointed = "";  // what is below the mouse, in words
    const point: Pointed = (said) => {
        pointed = said;
        m.redraw();
    };

    // What it is drawn anew for, besides other rows.
    const look_of = (attrs: Attributes): string => `${attrs.window} ${color_of("--line")}`;

    return {
        oncreate: ({ dom, attrs }) => {
            drawn = attrs.rows;
            look_drawn = look_of(attrs);
            graph = new Dygraph(dom.querySelector(".canvas") as HTMLElement, attrs.rows, options(attrs, point));
        },
        onupdate: ({ attrs }) => {
            const look = look_of(attrs);
            if (attrs.rows === drawn && look === look_drawn) return;
            drawn = attrs.rows;
            look_drawn = look;
            graph?.updateOptions({...options(attrs, point), file: attrs.rows });
        },
        onremove: () => graph?.destroy(),
        view: ({ attrs }) => m(
            ".chart",
            m(
                "p.legend",
                attrs.series.map(
                    ({ label, color }) => m("span", m("span.stroke", { style: { background: `var(${color})` } }), label)
                ),
                m("span.muted", pointed || attrs.unit),
            ),
            m(".canvas", { role: "img", "aria-label": attrs.label }),
        ),
    };
};
