// The fibres and splitters of a PON port, as the REST interface tells them.

export interface PlantOnu {
    named: string | null;  // as the plan names it; null of one that the plan does not have
    pon_port: number | null;
    onu_id: number | null;
    mac: string | null;
    description: string | null;
    state: string | null;  // null: it is not at this port
    since: number | null;
    cause: string | null;
    light: string | null;
}

export interface PlantCounts {
    onus: number;
    online: number;
    offline: number;
    unauthenticated: number;
    waiting: number;
    missing: number;
    low_light: number;
}

export interface PlantNode {
    name: string;
    kind: string;
    ratio: number | null;
    place: string | null;
    length: number | null;  // metres of the fibre that leads to it
    counts: PlantCounts;    // of everything below it
    onus: PlantOnu[];
    splitters: PlantNode[];
}

// ONUs that went off together, and the deepest node that all of them are below.
export interface Fall {
    first: number;
    last: number;
    cause: string | null;
    onus: PlantOnu[];
    node: string | null;
    path: string[];
    whole: boolean;  // no ONU below the node is online
}

export interface Plant {
    olt: string;
    pon_port: number;
    tree: PlantNode | null;
    falls: Fall[];
    unplanned: PlantOnu[];
}
