// The stream of events and of tables that changed.
import m from "mithril";
import { read_session, session } from "./api";
import type { PonEvent } from "./model";
import { refresh_failed, refresh_path, refresh_tables } from "./store";

export type Connection = "live" | "connecting" | "lost";

const most_events = 500;

class Live {
    connection: Connection = "connecting";
    lost_since = 0;
    events: PonEvent[] = [];  // those that came while the page was open, the newest first
    said = "";                // the last of them, for screen readers
    private source: EventSource | undefined;
    private last = "";
    private wait = 1000;  // milliseconds
    private timer = 0;

    start(): void {
        this.stop();
        this.connection = "connecting";
        this.open();
    }

    stop(): void {
        window.clearTimeout(this.timer);
        this.source?.close();
        this.source = undefined;
    }

    private open(): void {
        const from = this.last ? `?last_event_id=${this.last}` : "";
        const source = new EventSource(`/api/v1/events/stream${from}`);
        this.source = source;
        source.onopen = () => {
            if (this.connection === "lost") refresh_failed();
            this.connection = "live";
            this.wait = 1000;
            m.redraw();
        };
        source.onerror = () => this.lose(source);
        source.addEventListener("tables", (message) => this.change(message as MessageEvent<string>));
        source.addEventListener("gap", () => refresh_path("/events"));
        source.addEventListener("event", (message) => this.tell(message as MessageEvent<string>));
    }

    // The browser's own attempts end at the first answer with an error, so the page makes them.
    private lose(source: EventSource): void {
        source.close();
        if (source !== this.source) return;
        this.source = undefined;
        if (this.connection !== "lost") this.lost_since = Date.now();
        this.connection = "lost";
        m.redraw();
        this.try_again();
    }

    private try_again(): void {
        window.clearTimeout(this.timer);
        this.timer = window.setTimeout(() => {
            read_session().then(
                () => session.now?.role && !this.source && this.open(),
                () => this.try_again(),
            );
        }, this.wait);
        this.wait = Math.min(15000, this.wait * 2);
    }

    private change(message: MessageEvent<string>): void {
        const said = JSON.parse(message.data) as {
            olt: string;
            versions: Record<string, number>
        };
        refresh_tables(said.olt, Object.keys(said.versions));
    }

    private tell(message: MessageEvent<string>): void {
        const event = JSON.parse(message.data) as PonEvent;
        this.last = message.lastEventId;
        this.events = [event, ...this.events].slice(0, most_events);
        this.said = event.text;
        // What is known of why something is so can come after the table that shows it.
        refresh_tables(event.olt);
        m.redraw();
    }
}

export const live = new Live();
