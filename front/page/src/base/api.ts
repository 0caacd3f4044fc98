// Requests to the daemon that serves the page, and nowhere else.
import m from "mithril";
import type { Confirmation, Outcome, Role, Session } from "./model";

export class ApiError extends Error {
    constructor(
        readonly status: number,
        readonly code: string,
        message: string,
        readonly confirmation?: Confirmation,
    ) {
        super(message);
    }
}

export const session: {now: Session | undefined; ended: boolean} = {
    now: undefined,
    ended: false
};

const classes: Role[] = ["read", "write", "service-affecting"];
export function may(wanted: Role): boolean {
    const role = session.now?.role;
    return !!role && classes.indexOf(role) >= classes.indexOf(wanted);
}

// A segment of a path: names of OLTs are whatever people call them.
export function segment(name: string | number): string { return encodeURIComponent(String(name)); }

async function error_of(answer: Response): Promise<ApiError> {
    const body: unknown = await answer.json().catch(() => undefined);
    const said = (body as { error?: { code?: string; message?: string } } | undefined)?.error;
    const confirmation = (body as { confirmation?: Confirmation } | undefined)?.confirmation;
    const message = said?.message ?? `the answer was ${answer.status} ${answer.statusText}`;
    return new ApiError(answer.status, said?.code ?? "unknown", message, confirmation);
}

// Sends a request. What is answered with an error is an ApiError, also when nobody answers: that has the status 0.
export async function send(method: string, path: string, body?: unknown, headers: HeadersInit = {}): Promise<Response> {
    const all = new Headers(headers);
    if (body !== undefined) all.set("Content-Type", "application/json");
    if (method !== "GET" && session.now?.token) all.set("X-CSRF-Token", session.now.token);
    let answer: Response;
    try {
        const text = body === undefined ? null : JSON.stringify(body);
        answer = await fetch(`/api/v1${path}`, { method, headers: all, body: text, cache: "no-store" });
    } catch {
        throw new ApiError(0, "unreachable", "The console's server does not answer. It is asked again by itself.");
    }
    if (answer.ok || answer.status === 304) return answer;
    const error = await error_of(answer);
    if (error.status === 401 && path !== "/session") {
        session.ended = true;
        void read_session();
    }
    throw error;
}

export async function get<T>(path: string): Promise<T> { return (await (await send("GET", path)).json()) as T; }
export async function post<T>(path: string, body: unknown): Promise<T | undefined> {
    const answer = await send("POST", path, body);
    return answer.status === 204 ? undefined : ((await answer.json()) as T);
}

export async function read_session(): Promise<void> {
    try {
        session.now = await get<Session>("/session");
    } finally {
        m.redraw();
    }
}
export async function log_in(user: string, password: string): Promise<void> {
    session.now = await post<Session>("/session", { user, password });
    session.ended = false;
    m.redraw();
}
export async function log_out(): Promise<void> {
    await send("DELETE", "/session");
    session.ended = false;
    await read_session();
}

// Asks whom an operation would hit, without doing it.
export async function would_hit(
    olt: string,
    operation: string,
    given: Record<string, unknown>,
): Promise<Confirmation> {
    const body = { arguments: given, dry_run: true };
    const answer = await post<{ confirmation: Confirmation }>(`/olts/${segment(olt)}/calls/${operation}`, body);
    return (answer as { confirmation: Confirmation }).confirmation;
}

// Calls an operation of the catalogue. Throws when the OLT refuses, or does not answer.
export async function call(
    olt: string,
    operation: string,
    given: Record<string, unknown>,
    confirm?: string,
): Promise<Outcome> {
    const body = { arguments: given, ...(confirm ? { confirm } : {}) };
    const outcome = (await post<Outcome>(`/olts/${segment(olt)}/calls/${operation}`, body)) as Outcome;
    if (outcome.ipc_result !== 0) throw new ApiError(502, "no_answer", `${olt} did not answer: ${outcome.ipc_text}`);
    if (outcome.status !== 0) {
        const why = outcome.status_text ?? `status ${outcome.status}`;
        throw new ApiError(
            502, "refused", `${olt} refuses: ${why}${outcome.status_name ? ` (${outcome.status_name})` : ""}`
        );
    }
    return outcome;
}
