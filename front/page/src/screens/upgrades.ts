// Upgrades of ONUs: which firmware there is for which kind of ONU, and how runs go on.
import m from "mithril";
import { may } from "../base/api";
import { octets, plural, text, words } from "../base/format";
import { Columns, Onu, onus_of, Row } from "../base/model";
import { to_onu } from "../base/place";
import { refresh_path, use } from "../base/store";
import { change_all, Step } from "../parts/dialog";
import { awaited, badge, button, choice, input, nothing, panel, row_link, Scrolls, Tone } from "../parts/parts";
import { Column, Sorting, Table } from "../parts/table";
import { onu_tables } from "./onus";

const tones: Record<string, Tone> = {
    done: "good",
    failed: "bad"
};

function progress(onu: Onu): m.Children {
    if (onu.upgrade_progress === null) return text(onu.upgrade_reason);
    const label = `${onu.upgrade_progress} percent`;
    return [
        m("progress", { max: 100, value: onu.upgrade_progress, "aria-label": label }),
        ` ${onu.upgrade_progress} %`
    ];
}

export const UpgradesScreen: m.Closure<{olt: string}> = ({attrs: {olt}}) => {
    const base = `/olts/${encodeURIComponent(olt)}`;
    let sorting: Sorting = { by: "run", down: false };
    let from: Onu[] | undefined;
    let runs: Onu[] = [];
    let port = "1";
    let ids = "";
    let type = "";

    const order = ["failed", "downloading", "verifying", "rebooting", "queued", "done"];
    const columns: Column<Onu>[] = [
        {
            name: "onu",
            title: "ONU",
            width: "5rem",
            show: (onu) => row_link(to_onu(olt, onu.pon_port, onu.onu_id), `${onu.pon_port}/${onu.onu_id}`),
            by: (onu) => onu.pon_port * 1000 + onu.onu_id
        },
        {
            name: "run",
            title: "Run",
            width: "9rem",
            show: (onu) => badge(tones[onu.upgrade_run ?? ""] ?? "new", words(onu.upgrade_run ?? "")),
            by: (onu) => order.indexOf(onu.upgrade_run ?? "")
        },
        {
            name: "progress",
            title: "Progress",
            width: "minmax(9rem, 1fr)",
            show: progress,
            by: (onu) => onu.upgrade_progress
        },
        {
            name: "software",
            title: "Software",
            width: "8rem",
            show: (onu) => text(onu.software),
            by: (onu) => onu.software,
            from: 560
        },
        {
            name: "model",
            title: "Model",
            width: "7rem",
            show: (onu) => text(onu.model),
            by: (onu) => onu.model,
            from: 800
        },
        {
            name: "description",
            title: "Description",
            width: "minmax(7rem, 2fr)",
            show: (onu) => text(onu.description || onu.text_a),
            by: (onu) => onu.description,
            from: 900
        },
    ];

    async function start(event: Event): Promise<void> {
        event.preventDefault();
        const where = Number(port);
        const all = numbers_of(ids);
        const steps = all.map((id): Step => ({
            what: `ONU ${port}/${id}`,
            operation: "bsp_pon_onu_upgrade_one",
            given: { block: { pon_port: where, onu_id: id } },
        }));
        const bind: Step = {
            what: `to bind ${type}`,
            operation: "bsp_pon_onu_upgrade_type_bind_some",
            given: { block: { pon_port: where, name: type, onu_set: ids } },
        };
        const who = all.length === 1 ? `ONU ${port}/${ids}` : `ONUs ${ids} of port ${port}`;
        await change_all(
            olt,
            [bind, ...steps],
            `Upgrade ${who} to ${type}, which ends in a reboot?`,
            "Upgrade",
            `The upgrade of ${who} has begun.`
        );
    }

    function numbers_of(set: string): number[] {
        return set.split(",").flatMap((run) => {
            const [first, last] = run.split("-").map(Number) as [number, number | undefined];
            return Array.from(
                { length: Math.max(0, Math.min(128, (last ?? first) - first + 1)) }, (_, step) => first + step
            );
        });
    }

    function types_panel(types: Row[] | null): m.Vnode {
        const heads = ["Name", "Vendor", "Model", "Version", "Size", "File"];
        return panel(
            "Firmware",
            !types || types.length === 0 ?
                nothing("There is none. “ponctl upgrade add” says which firmware is for which kind of ONU.") :
                m(
                    Scrolls,
                    { label: "Firmware" },
                    m("table.plain",
                      m("thead",
                        m("tr", heads.map((title) => m(title === "Size" ? "th.right" : "th", { scope: "col" }, title)))),
                      m("tbody",
                        types.map(
                            (row) => m(
                                "tr",
                                m("th", { scope: "row" }, row.name),
                                m("td", row.vendor),
                                m("td", row.model),
                                m("td", row.version),
                                m("td.right", octets(Number(row.size))),
                                m("td.mono", text(row.file as string)),
                            ),
                        ))),
                ),
        );
    }

    function start_panel(types: Row[]): m.Vnode {
        if (!type) type = String(types[0]?.name ?? "");
        return panel(
            "Start",
            m(
                "form.edit.flat",
                { onsubmit: start, "aria-label": "Start an upgrade" },
                choice(
                    "Firmware",
                    type,
                    types.map((row): [string, string] => [String(row.name), `${row.name}: ${row.version}`]),
                    (value) => (type = value)
                ),
                input("Port", port, (value) => (port = value), { type: "number", min: 1, max: 16, required: true }),
                input("ONUs", ids, (value) => (ids = value), {
                    required: true,
                    pattern: "[0-9]+(-[0-9]+)?(,[0-9]+(-[0-9]+)?)*",
                    placeholder: "1-5,9"
                }),
                m("button.primary", { type: "submit" }, "Upgrade"),
            ),
        );
    }

    return {
        view: () => {
            const table = use<Columns>(`${base}/onus`, onu_tables);
            const profiles = use<{ upgrade: Row[] | null }>(`${base}/profiles`);
            if (table.value) {
                const all = onus_of(table.value);
                if (all !== from) runs = all.filter((onu) => onu.upgrade_run !== null);
                from = all;
            }
            const types = profiles.value?.upgrade ?? null;
            return [
                m(".title",
                  m("h1", "Upgrades", m("span.muted", ` of ${olt}`)),
                  button("Read firmware again", () => refresh_path(`${base}/profiles`), { class: "small" })),
                m(
                    ".columns",
                    profiles.value ? types_panel(types) : awaited(profiles, "firmware"),
                    may("service-affecting") && types && types.length > 0 && start_panel(types),
                ),
                panel(
                    [
                        "Runs",
                        m("span.muted.about",
                          { role: "status" },
                          plural(
                              runs.filter((onu) => !["done", "failed"].includes(onu.upgrade_run ?? "")).length, "ONU"
                          ),
                          " under way")
                    ],
                    !table.value ? awaited(table, "runs") : m(Table<Onu>, {
                        label: "Upgrade runs",
                        columns,
                        rows: runs,
                        id: (onu: Onu) => `${onu.pon_port}/${onu.onu_id}`,
                        open: (onu: Onu) => m.route.set(to_onu(olt, onu.pon_port, onu.onu_id)),
                        sorting,
                        sort: (other: Sorting) => (sorting = other),
                        empty: "No ONU was upgraded since its OLT was started.",
                    }),
                ),
            ];
        },
    };
};
