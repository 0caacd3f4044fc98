// How many ONUs have how much light: a bar a decibel.
import m from "mithril";
import { plural } from "../base/format";

export interface Bar {
    from: number;
    count: number;
}

export function bars_of(values: number[]): Bar[] {
    if (values.length === 0) return [];
    const low = Math.floor(Math.min(...values));
    const high = Math.floor(Math.max(...values));
    const bars: Bar[] = Array.from({ length: high - low + 1 }, (_, step) => ({ from: low + step, count: 0 }));
    for (const value of values) (bars[Math.floor(value) - low] as Bar).count += 1;
    return bars;
}

export function histogram(title: string, values: number[], limit: number): m.Vnode {
    const bars = bars_of(values);
    const most = Math.max(1, ...bars.map(({ count }) => count));
    const weak = values.filter((value) => value < limit).length;
    const said = `${title}: ${plural(values.length, "ONU")}, ${weak} below ${limit} dBm`;
    return m(
        "figure.histogram",
        m("figcaption", title, m("span.muted", ` ${weak === 0 ? "none" : weak} below ${limit} dBm`)),
        bars.length === 0 ? m("p.nothing", "No ONU is measured.") :
                            m(
                                ".bars",
                                { role: "img", "aria-label": said },
                                bars.map(
                                    ({ from, count }) => m(
                                        `.bar${from + 1 <= limit ? ".weak" : ""}`,
                                        { title: `${from} to ${from + 1} dBm: ${plural(count, "ONU")}` },
                                        m("span.count", count || ""),
                                        m(".fillbar", { style: { height: `${Math.round((count / most) * 90)}px` } }),
                                        m("span.at", from),
                                    ),
                                ),
                            ),
    );
}
