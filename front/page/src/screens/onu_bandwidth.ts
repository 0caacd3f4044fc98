// The bandwidth of an ONU both ways, and the form that changes it, by hand or by a profile.
import m from "mithril";
import { call, may, segment } from "../base/api";
import { rate, text } from "../base/format";
import type { Row } from "../base/model";
import { use } from "../base/store";
import { change_all, changes_table, Step } from "../parts/dialog";
import { button, choice, facts, input, loading, OpenedForm, panel, problem } from "../parts/parts";

interface Given {
    olt: string;
    port: number;
    id: number;
}

const most = 1000000;  // kbit/s

// The values of an SLA by their names. "down" is the maximum downstream.
const settings: [string, string, number, number][] = [
    ["fixed", "Fixed, kbit/s", 0, most],
    ["assured", "Assured, kbit/s", 0, most],
    ["maximum", "At most upstream, kbit/s", 1, most],
    ["priority", "Priority", 0, 7],
    ["weight", "Weight", 1, 100],
    ["down", "At most downstream, kbit/s", 1, most],
];

type Values = Record<string, string>;

export const OnuBandwidth: m.Closure<Given> = ({attrs: {olt, port, id}}) => {
    const name = `ONU ${port}/${id}`;
    let now: Values | undefined;
    let wanted: Values | undefined;  // while it is edited
    let profile = "";
    let failed: Error | undefined;

    async function read(): Promise<void> {
        failed = undefined;
        try {
            const [up, down] = await Promise.all(["bsp_pon_onu_sla_get", "bsp_pon_onu_sla_down_get"].map(
                async (operation) => (await call(olt, operation, { pon_port: port, onu_id: id })).outputs?.out as Row
            )) as [Row, Row];
            const all: Row = {...up, down: down.maximum ?? null };
            now = Object.fromEntries(settings.map(([one]) => [one, String(all[one] ?? "")]));
        } catch (error) {
            failed = error as Error;
        }
        m.redraw();
    }

    function profiles(): Row[] {
        return use<{ sla: Row[] | null }>(`/olts/${segment(olt)}/profiles`).value?.sla ?? [];
    }

    function take(chosen: string): void {
        profile = chosen;
        const row = profiles().find((one) => String(one.id) === chosen);
        if (!row || !wanted) return;
        for (const [one] of settings)
            if (row[one] != null) wanted[one] = String(row[one]);
    }

    function differences(): { name: string; before: string; after: string }[] {
        return settings.map(([one, label]) => ({ name: label, before: now?.[one] ?? "", after: wanted?.[one] ?? "" }))
            .filter(({ before, after }) => before !== after);
    }

    function wrong(): string {
        const { fixed, assured, maximum } = wanted ?? {};
        return Number(fixed) + Number(assured) > Number(maximum) ?
            "Fixed and assured together are at most what it may have upstream." :
            "";
    }

    async function submit(event: Event): Promise<void> {
        event.preventDefault();
        const values = wanted as Values;
        const where = { plat_port: port, plat_arg4: id };
        const differs = (one: string): boolean => values[one] !== now?.[one];
        const { down, ...up } = values;
        const title = `Change the bandwidth of ${name}?`;
        const done = `The bandwidth of ${name} is changed.`;
        const step = (what: string, operation: string, given: Values): Step =>
            ({ what, operation, given: { record: {...where, ...given } } });
        const steps = [
            ...(Object.keys(up).some(differs) ? [step("upstream", "bsp_pon_onu_sla_config", up)] : []),
            ...(differs("down") ? [step("downstream", "bsp_pon_onu_sla_down_config", { maximum: down ?? "" })] : []),
        ];
        if (await change_all(olt, steps, title, "Change it", done)) wanted = undefined;
        await read();
    }

    function form(values: Values): m.Vnode {
        const changed = differences();
        const said = wrong();
        return m(
            OpenedForm,
            { label: `Bandwidth of ${name}`, submit },
            choice(
                "As in the profile",
                profile,
                [
                    ["", "none: by hand"],
                    ...profiles().map((one): [string, string] => [String(one.id), String(one.name)]),
                ],
                take
            ),
            settings.map(
                ([one, label, min, max]) => input(
                    label,
                    values[one] ?? "",
                    (value) => {
                        values[one] = value;
                        profile = "";
                    },
                    { type: "number", min, max, required: true }
                )
            ),
            changed.length === 0 ? m("p.muted", "Nothing is different yet.") : changes_table(changed),
            m("p.failed", { role: "alert" }, said),
            m(".buttons",
              button("Cancel", () => (wanted = undefined)),
              m("button.primary", { type: "submit", disabled: changed.length === 0 || said !== "" }, "Change")),
        );
    }

    function shown(values: Values): m.Vnode {
        const share = (one: string): string => rate(Number(values[one]));
        return facts(
            ["Upstream", `up to ${share("maximum")}`],
            ["Of it fixed", share("fixed")],
            ["Of it assured", share("assured")],
            ["Priority, weight", `${text(values.priority)}, ${text(values.weight)}`],
            ["Downstream", `up to ${share("down")}`],
        );
    }

    function edit(): void {
        wanted = wanted || !now ? undefined : {...now };
        profile = "";
    }

    void read();
    return {
        view: () => panel(
            [
                "Bandwidth",
                now && may("service-affecting") && button("Change", edit, {
                    class: "small",
                    "aria-label": `Change the bandwidth of ${name}`,
                    "aria-expanded": wanted ? "true" : "false",
                }),
            ],
            failed ? problem(failed, () => void read()) : now ? shown(now) : loading("bandwidth", 2),
            wanted && form(wanted),
        ),
    };
};
