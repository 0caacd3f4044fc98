// What the REST interface tells, as far as the page shows it.

export type Role = "read" | "write" | "service-affecting";

export interface Session {
    user: string | null;
    role: Role | null;
    token: string;
    login: boolean;
    time: number;
    version: string;
}

export interface Severities {
    critical: number;
    major: number;
    minor: number;
}

export interface Olt {
    name: string;
    reached: boolean;
    since: number | null;
    model: string | null;
    version: string | null;
    serial: string | null;
    mac: string | null;
    pon_ports: number | null;
    ge_ports: number | null;
    uptime: number | null;
    bound: number;
    online: number;
    offline: number;
    unauthenticated: number;
    waiting: number;
    alarms: Severities;
    low_light: number;
    ports?: Port[];
    tables?: TableState[];
}

export interface TableState {
    name: string;
    brief: string;
    period: number;
    read: number;
    error: string | null;
    stale: boolean;
    outdated: boolean;
}

export interface Quantity {
    quantity: string;
    value: number | null;
    unit: string;
    low_alarm: number | null;
    low_warning: number | null;
    high_warning: number | null;
    high_alarm: number | null;
    state: string | null; // null where nothing was measured
}

export type Counters = {
    read: number
}&Record<string, number>;

export interface Port {
    pon_port: number;
    mac: string;
    uplink: number;
    laser: boolean;
    tx_power: number;
    temperature: number;
    bound: number;
    online: number;
    waiting: number;
    up_load: number;
    down_load: number;
    offline: number;
    unauthenticated: number;
    low_light: number;
    alarms: Severities;
    module: Quantity[];
    counters: Counters | null;
}

export interface Columns {
    columns: string[];
    rows: unknown[][];
}

export interface Onu {
    pon_port: number;
    onu_id: number;
    mac: string;
    state: string;
    since: number | null;
    cause: string | null;
    place: string | null;
    description: string | null;
    loid: string | null;
    text_a: string | null;
    serial: string | null;
    vendor: string | null;
    model: string | null;
    software: string | null;
    distance: number | null;
    rx_power: number | null;
    olt_rx_power: number | null;
    light: string | null;
    alarms: number;
    severity: string | null;
    upgrade_run: string | null;
    upgrade_progress: number | null;
    upgrade_reason: string | null;
}

export interface Waiting {
    pon_port: number;
    mac: string;
    supported: boolean;
    distance: number | null;
    loid: string | null;
    since: number | null;
}

export interface Alarm {
    pon_port: number;
    onu_id: number | null;
    mac: string | null;
    name: string;
    alarm: number;
    severity: string;
    count: number;
    state: string;
    cause: string;
    place: string | null;
    since: number | null;
}

export interface PonEvent {
    id: number;
    at: number;
    olt: string;
    kind: string;
    port: number;
    count: number;
    onu_id: number | null;
    mac: string;
    onus: string;
    detail: string;
    cause: string;
    place: string;
    measure: number | null;
    text: string;
}

export type Row = Record<string, string | number | boolean | null>;

export interface LightLimit {
    low: number;
    well: number;
}

// A MAC address that was learnt behind an ONU.
export interface Station {
    uni: number;
    vlan: number;
    mac: string;
}

export interface OnuDetail {
    olt: string;
    onu: Row;
    serial: string | null;
    since: number | null;
    cause: string | null;
    place: string | null;
    optics: Row | null;
    light: { limits: { olt: LightLimit; onu: LightLimit }; olt: string | null; onu: string | null };
    capabilities: Row | null;
    upgrade: Row | null;
    stats: Row | null;
    unis: Row[];
    loops: Row[];
    stations: Station[];
    alarms: Alarm[];
    events: PonEvent[];
    read: Record<string, number | null>;
}

export interface Match {
    olt: string;
    pon_port: number;
    onu_id: number | null;
    mac: string;
    state: string;
    description: string | null;
    loid: string | null;
    serial: string | null;
    model: string | null;
    found: string;
}

export interface Hit {
    pon_port: number;
    onu_id: number | null;
    mac: string;
    state: string;
    description: string | null;
}

export interface Difference {
    table: string;
    key: string;
    name: string;
    before: string | null;
    after: string | null;
}

export interface Confirmation {
    confirm: string | null;
    target: string;
    scope: string;
    count: number;
    online: number;
    onus: Hit[];
    differences?: Difference[];
    left_out?: string[];
}

export interface Outcome {
    sent: boolean;
    ipc_result: number;
    ipc_text: string;
    status: number;
    status_name: string | null;
    status_text: string | null;
    outputs: Record<string, unknown> | null;
}

const unpacked = new WeakMap<Columns, Onu[]>();
// Returns the rows of a table as objects. It is done once for each answer.
export function onus_of(table: Columns): Onu[] {
    let onus = unpacked.get(table);
    if (!onus) {
        onus = table.rows.map(
            (row) => Object.fromEntries(table.columns.map((name, place) => [name, row[place]])) as unknown as Onu,
        );
        unpacked.set(table, onus);
    }
    return onus;
}
