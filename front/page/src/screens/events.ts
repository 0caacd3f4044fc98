// What happened, the newest first, and what happens while one looks.
import m from "mithril";
import { get } from "../base/api";
import { words } from "../base/format";
import { live } from "../base/live";
import type { PonEvent } from "../base/model";
import { olts } from "../base/place";
import { badge, button, choice, input, loading, nothing, problem } from "../parts/parts";
import { event_kinds, timeline } from "../parts/timeline";

interface Page {
    events: PonEvent[];
    more: boolean;
}

export const EventsScreen: m.Closure = () => {
    let olt = "";
    let kind = "";
    let port = "";
    let mac = "";
    let events: PonEvent[] | undefined;
    let more = false;
    let failed: Error | undefined;
    let opened = Date.now();
    let asked = 0;

    function query(before?: number): string {
        const wanted: [string, string][] = [
            ["olt", olt],
            ["kind", kind],
            ["port", port],
            ["mac", mac.trim()],
            ["before", before ? String(before) : ""]
        ];
        return wanted.filter(([, value]) => value)
            .map(([name, value]) => `&${name}=${encodeURIComponent(value)}`)
            .join("");
    }

    async function read(before?: number): Promise<void> {
        const turn = (asked += 1);
        try {
            const page = await get<Page>(`/events?limit=100${query(before)}`);
            if (turn !== asked) return;
            events = before ? [...(events ?? []), ...page.events] : page.events;
            more = page.more;
            failed = undefined;
            if (!before) opened = Date.now();
        } catch (error) {
            failed = error as Error;
        }
        m.redraw();
    }

    function filter(set: () => void): void {
        set();
        void read();
    }

    function is_wanted(event: PonEvent): boolean {
        return (
            (!olt || event.olt === olt) && (!kind || event.kind === kind) && (!port || String(event.port) === port) &&
            (!mac.trim() || event.mac.toLowerCase().includes(mac.trim().toLowerCase()))
        );
    }

    function list(): m.Children {
        if (!events) return failed ? problem(failed, () => void read()) : loading("events", 10);
        const newest = events[0]?.id ?? 0;
        const fresh = live.events.filter((event) => event.id > newest && is_wanted(event));
        const all = [...fresh, ...events];
        if (all.length === 0) return nothing("No event is like this. Events are shown here as they happen.");
        return [
            timeline(all, "Events"),
            failed && problem(failed),
            more && button("Show older ones", () => void read(all[all.length - 1]?.id)),
        ];
    }

    void read();
    return {
        view: () => {
            const since = live.events.filter((event) => event.at > opened).length;
            return [
                m("h1.hidden", "Events"),
                m(
                    "form.filters",
                    { "aria-label": "Filter events", onsubmit: (event: Event) => event.preventDefault() },
                    choice(
                        "OLT",
                        olt,
                        [["", "all"], ...(olts() ?? []).map(({ name }): [string, string] => [name, name])],
                        (value) => filter(() => (olt = value))
                    ),
                    choice(
                        "Kind",
                        kind,
                        [["", "all"], ...event_kinds.map((one): [string, string] => [one, words(one)])],
                        (value) => filter(() => (kind = value))
                    ),
                    input("Port", port, (value) => filter(() => (port = value)), { type: "number", min: 0, max: 255 }),
                    input("MAC", mac, (value) => filter(() => (mac = value)), { spellcheck: "false" }),
                    m("span.shown", since > 0 && badge("new", `${since} came while you look`)),
                ),
                list(),
            ];
        },
    };
};
