// What was read of the daemon. Screens ask for it whenever they are drawn; it is read for the first of them, and
// again when a table that it is made of has changed.
import m from "mithril";
import { ApiError, send } from "./api";

export class Resource<T> {
    value: T | undefined;
    error: Error | undefined;
    private tag = "";
    private under_way = false;
    private again = false;

    constructor(
        readonly path: string,
        readonly tables: readonly string[],
    ) {}

    // Reads it. What changes while it is being read is read afterwards.
    async refresh(): Promise<void> {
        if (this.under_way) {
            this.again = true;
            return;
        }
        this.under_way = true;
        try {
            const answer = await send("GET", this.path, undefined, this.tag ? { "If-None-Match": this.tag } : {});
            if (answer.status !== 304) {
                this.value = (await answer.json()) as T;
                this.tag = answer.headers.get("ETag") ?? "";
            }
            this.error = undefined;
        } catch (error) {
            // A table that the daemon has not read yet is told of by the stream when it was.
            const is_early = error instanceof ApiError && error.code === "not_yet";
            this.error = is_early ? undefined : (error as Error);
        }
        this.under_way = false;
        m.redraw();
        if (this.again) {
            this.again = false;
            void this.refresh();
        }
    }
}

const known = new Map<string, Resource<unknown>>();
const used = new Set<Resource<unknown>>();

// Returns what is at a path. `tables` are those that it is made of.
export function use<T>(path: string, tables: readonly string[] = []): Resource<T> {
    let resource = known.get(path);
    if (!resource) {
        resource = new Resource<unknown>(path, tables);
        known.set(path, resource);
    }
    if (!used.has(resource)) {
        used.add(resource);
        void resource.refresh();
    }
    return resource as Resource<T>;
}

// Another screen is shown: what it does not use is not read again. What is known is shown until it was read.
export function forget_use(): void { used.clear(); }

// Somebody else is logged in, who may see something else.
export function forget_all(): void {
    known.clear();
    used.clear();
}

// Reads again what is made of these tables of an OLT; of any tables where none are named.
export function refresh_tables(olt: string, changed?: readonly string[]): void {
    const own = `/olts/${encodeURIComponent(olt)}`;
    for (const resource of used) {
        const of_olt = resource.path === "/olts" || resource.path === own || resource.path.startsWith(`${own}/`);
        const concerned = !changed || resource.tables.some((table) => changed.includes(table));
        if (of_olt && resource.tables.length > 0 && concerned) void resource.refresh();
    }
}
export function refresh_failed(): void {
    for (const resource of used)
        if (resource.error && !(resource.error instanceof ApiError && resource.error.status === 404))
            void resource.refresh();
}
export function refresh_path(start: string): void {
    for (const resource of used)
        if (resource.path.startsWith(start)) void resource.refresh();
}
