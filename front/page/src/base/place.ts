// Where the page is: which OLT is looked at, and the addresses of screens.
import m from "mithril";
import type { Olt } from "./model";
import { use } from "./store";

export const olt_tables = ["olt", "ports", "onus", "alarms", "optics"];

let last: string | undefined;

export function olts(): Olt[] | undefined { return use<{ olts: Olt[] }>("/olts", olt_tables).value?.olts; }

// The OLT of the address, else the one that was looked at last, else the first.
export function current_olt(): string | undefined {
    const named = /^\/olts\/([^/?]+)/.exec(m.route.get() ?? "");
    if (named?.[1]) last = decodeURIComponent(named[1]);
    const all = olts();
    if (all && !all.some((olt) => olt.name === last)) last = undefined;
    return last ?? all?.[0]?.name;
}

export function to_olt(olt: string, rest: string): string { return `/olts/${encodeURIComponent(olt)}/${rest}`; }
export function to_port(olt: string, port: number): string { return to_olt(olt, `ports/${port}`); }
export function to_onu(olt: string, port: number, id: number): string { return to_olt(olt, `onus/${port}/${id}`); }
