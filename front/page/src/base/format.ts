// Numbers, times and words as people read them. Every quantity has its unit.
import m from "mithril";

const none = "–";

export function power(value: number | null | undefined): string { return value == null ? none : value.toFixed(1); }

export function whole(value: number | null | undefined): string {
    return value == null ? none : Math.round(value).toLocaleString("en");
}

// A count in four digits; the whole of it is its title.
export function count(value: number | null | undefined): m.Children {
    if (value == null) return none;
    const steps = ["", " k", " M", " G", " T", " P"];
    const step = value < 10000 ? 0 : Math.min(steps.length - 1, Math.floor(Math.log10(value) / 3));
    const shown = (value / 1000 ** step).toLocaleString("en", { maximumSignificantDigits: 4, useGrouping: false });
    return m("span.whole", { title: value.toLocaleString("en") }, shown + steps[step]);
}

export function text(value: string | number | null | undefined): string {
    return value == null || value === "" ? none : String(value);
}

// A rate that is given in kbit/s.
export function rate(value: number | null | undefined): string {
    if (value == null) return none;
    if (value < 1000) return `${value.toFixed(0)} kbit/s`;
    if (value < 1e6) return `${(value / 1000).toFixed(1)} Mbit/s`;
    return `${(value / 1e6).toFixed(2)} Gbit/s`;
}

export function octets(value: number): string {
    const units = ["B", "kB", "MB", "GB", "TB"];
    let step = 0;
    while (value >= 1000 && step < units.length - 1) {
        value /= 1000;
        step += 1;
    }
    return `${value.toFixed(step ? 1 : 0)} ${units[step]}`;
}

export function plural(count: number, one: string, several = `${one}s`): string {
    return `${count.toLocaleString("en")} ${count === 1 ? one : several}`;
}

// How long something lasts, in its two largest units.
export function span(milliseconds: number): string {
    const seconds = Math.max(0, Math.round(milliseconds / 1000));
    if (seconds < 60) return `${seconds} s`;
    const minutes = Math.floor(seconds / 60);
    if (minutes < 60) return `${minutes} min`;
    const hours = Math.floor(minutes / 60);
    if (hours < 48) return minutes % 60 ? `${hours} h ${minutes % 60} min` : `${hours} h`;
    return `${Math.floor(hours / 24)} d ${hours % 24} h`;
}

export function clock(at: number): string {
    const then = new Date(at);
    const time =
        then.toLocaleTimeString([], { hourCycle: "h23", hour: "2-digit", minute: "2-digit", second: "2-digit" });
    if (then.toDateString() === new Date().toDateString()) return time;
    return `${then.toLocaleDateString([], { day: "2-digit", month: "short" })} ${time}`;
}

// A time in the browser's zone, or the age of what happened then. What is not shown of the two is its title.
export function age(at: number): m.Vnode {
    const then = new Date(at);
    return m("time", { datetime: then.toISOString(), title: then.toLocaleString() }, `${span(Date.now() - at)} ago`);
}
export function moment(at: number): m.Vnode {
    const then = new Date(at);
    return m("time", { datetime: then.toISOString(), title: `${span(Date.now() - at)} ago` }, clock(at));
}
export function moment_and_age(at: number): m.Vnode {
    return m("span.moment", moment(at), m("span.muted", `, ${span(Date.now() - at)} ago`));
}

// Names of the service as words: "onu_offline" and "alarm-list" have spaces for people, and devices their letters.
export function words(name: string): string {
    return name.replace(/[_-]/g, " ").replace(/\b(olt|onu|uni)\b/g, (device) => device.toUpperCase());
}

// ONU ids as a set: 1-5,9.
export function id_set(ids: number[]): string {
    const sorted = [...new Set(ids)].sort((a, b) => a - b);
    const runs: string[] = [];
    for (let first = 0; first < sorted.length;) {
        let last = first;
        while (sorted[last + 1] === (sorted[last] as number) + 1) last += 1;
        runs.push(first === last ? `${sorted[first]}` : `${sorted[first]}-${sorted[last]}`);
        first = last + 1;
    }
    return runs.join(",");
}
