// The light of an ONU both ways: how much, how far from what is too little, and over time.
import type { Row as Point } from "dygraphs/dygraph.min.js";
import m from "mithril";
import { age, power } from "../base/format";
import type { Columns, LightLimit, OnuDetail } from "../base/model";
import { use } from "../base/store";
import { Chart } from "../parts/chart";
import { awaited, badge, nothing, panel } from "../parts/parts";

const spans: [string, number][] = [
    ["6 hours", 6],
    ["2 days", 48],
    ["31 days", 31 * 24],
];

function way(label: string, value: unknown, limit: LightLimit, state: string | null): m.Vnode {
    const measured = typeof value === "number" ? value : null;
    const margin = measured === null ? null : measured - limit.low;
    const said = margin === null ?
        "not measured" :
        `${Math.abs(margin).toFixed(1)} dB ${margin < 0 ? "below" : "above"} the limit of ${limit.low} dBm`;
    return m(
        ".way",
        m("span.label", label),
        m("b", `${power(measured)} dBm`),
        // What was found before the ONU went off says nothing of its light now.
        measured !== null && (state === "low" ? badge("warn", "weak") : badge("good", "good")),
        m("span.muted", said),
    );
}

const read = new WeakMap<Columns, Point[]>();
function points_of(table: Columns): Point[] {
    let points = read.get(table);
    if (!points) {
        const [at, rx, olt_rx] =
            ["at", "rx_power", "olt_rx_power"].map((name) => table.columns.indexOf(name)) as [number, number, number];
        points = table.rows.map(
            (row): Point => [new Date(row[at] as number), row[olt_rx] as number | null, row[rx] as number | null]
        );
        read.set(table, points);
    }
    return points;
}

function summary(points: Point[]): string {
    const range = (place: 1|2): string => {
        const values = points.flatMap((point) => (typeof point[place] === "number" ? [point[place] as number] : []));
        if (values.length === 0) return "not measured";
        return `${Math.min(...values).toFixed(1)} to ${Math.max(...values).toFixed(1)} dBm`;
    };
    return `Light over time. At the OLT ${range(1)}, at the ONU ${range(2)}, ${points.length} values.`;
}

export const OnuLight: m.Closure<{detail: OnuDetail; port: number; id: number}> = ({attrs: first}) => {
    let hours = 6;
    const path = `/olts/${encodeURIComponent(first.detail.olt)}/optics/${first.port}/${first.id}`;

    function over_time(limits: OnuDetail["light"]["limits"]): m.Children {
        const table = use<Columns>(path, ["optics"]);
        if (!table.value) return awaited(table, "light over time", 5);
        const points = points_of(table.value);
        if (points.length === 0) return nothing("No light was measured yet. A value is kept every 5 minutes.");
        const end = Math.max(Date.now(), (points[points.length - 1] as Point)[0].getTime());
        const window: [number, number] =
            [Math.floor(end / 60000) * 60000 - hours * 3600000, Math.ceil(end / 60000) * 60000];
        return m(Chart, {
            label: summary(points),
            unit: "dBm",
            series: [
                { label: "at the OLT", color: "--series-1" },
                { label: "at the ONU", color: "--series-2" },
            ],
            rows: points,
            limits: [
                { value: limits.olt.low, color: "--series-1" },
                { value: limits.onu.low, color: "--series-2" },
            ],
            window,
        });
    }

    return {
        view: ({ attrs: { detail } }) => panel(
            ["Light", detail.read.optics && m("span.muted.about", "measured ", age(detail.read.optics))],
            way("At the OLT", detail.optics?.olt_rx_power, detail.light.limits.olt, detail.light.olt),
            way("At the ONU", detail.optics?.rx_power, detail.light.limits.onu, detail.light.onu),
            m(
                ".choices",
                { role: "group", "aria-label": "Time that is shown" },
                spans.map(
                    ([label, value]) =>
                        m("button.small",
                          {
                              type: "button",
                              "aria-pressed": hours === value ? "true" : "false",
                              onclick: () => (hours = value)
                          },
                          label),
                ),
            ),
            over_time(detail.light.limits),
            m("p.muted", "Dashed: below this, light is too weak."),
        ),
    };
};
