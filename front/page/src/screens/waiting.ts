// ONUs that wait, each of which is admitted in one step: id, description and bandwidth.
import m from "mithril";
import { may } from "../base/api";
import { age, plural, text } from "../base/format";
import { Columns, onus_of, Row, Waiting } from "../base/model";
import { use } from "../base/store";
import { change, change_all, Step } from "../parts/dialog";
import { awaited_screen, badge, button, choice, input, nothing, OpenedForm } from "../parts/parts";
import { Blacklist } from "./blacklist";
import { onu_tables } from "./onus";

const greatest_id = 127;

export const WaitingScreen: m.Closure<{olt: string}> = ({attrs: {olt}}) => {
    const base = `/olts/${encodeURIComponent(olt)}`;
    let chosen: Waiting | undefined;
    let id = "";
    let description = "";
    let profile = "";
    let under_way = false;

    function first_free(port: number): string {
        const table = use<Columns>(`${base}/onus`, onu_tables).value;
        if (!table) return "";
        const taken = new Set(onus_of(table).filter(({ pon_port }) => pon_port === port).map(({ onu_id }) => onu_id));
        for (let free = 1; free <= greatest_id; free += 1)
            if (!taken.has(free)) return String(free);
        return taken.has(0) ? "" : "0";
    }

    function slas(): Row[] {
        return may("service-affecting") ? use<{ sla: Row[] | null }>(`${base}/profiles`).value?.sla ?? [] : [];
    }

    function choose(onu: Waiting): void {
        chosen = onu;
        id = first_free(onu.pon_port);
        description = "";
        profile = "";
    }

    function bandwidth_step(port: number, sla: Row): Step {
        const { fixed, assured, maximum, priority, weight } = sla;
        const record = { plat_port: port, plat_arg4: Number(id), fixed, assured, maximum, priority, weight };
        return { what: `the bandwidth of ${sla.name}`, operation: "bsp_pon_onu_sla_config", given: { record } };
    }

    async function admit(event: Event): Promise<void> {
        event.preventDefault();
        const { mac, pon_port } = chosen as Waiting;
        const where = { pon_port, onu_id: Number(id) };
        const name = `ONU ${pon_port}/${id}`;
        const sla = slas().find((row) => String(row.id) === profile);
        const steps: Step[] =
            [{ what: "to bind it", operation: "bsp_pon_bind_onu_spec_id", given: {...where, mac, value: 0 } }];
        if (description)
            steps.push({
                what: "its description",
                operation: "bsp_pon_onu_description",
                given: {...where, text: description }
            });
        if (sla) steps.push(bandwidth_step(pon_port, sla));
        under_way = true;
        if (await change_all(olt, steps, `Admit ${mac} as ${name}?`, "Admit", `${name} is admitted.`))
            chosen = undefined;
        under_way = false;
        m.redraw();
    }

    async function turn_away(onu: Waiting): Promise<void> {
        await change(
            olt,
            "bsp_pon_blacklist_add_onu_auto_id",
            { pon_port: onu.pon_port, mac: onu.mac, text: "" },
            `Put ${onu.mac} of port ${onu.pon_port} on the blacklist?`,
            "Turn away",
            `${onu.mac} is on the blacklist.`
        );
    }

    function form(onu: Waiting): m.Vnode {
        return m(
            OpenedForm,
            { label: `Admit ${onu.mac}`, submit: admit },
            input(
                "ONU id",
                id,
                (value) => (id = value),
                { type: "number", min: 0, max: greatest_id, required: true },
                "The first free one is suggested."
            ),
            input("Description", description, (value) => (description = value), { maxlength: 127, autofocus: true }),
            choice(
                "Bandwidth",
                profile,
                [
                    ["", "as the OLT gives by default"],
                    ...slas().map(
                        (row): [string, string] => [String(row.id), `${row.name}: up to ${row.maximum} kbit/s`]
                    )
                ],
                (value) => (profile = value)
            ),
            m(".buttons",
              button("Cancel", () => (chosen = undefined)),
              m("button.primary", { type: "submit", disabled: under_way }, under_way ? "Admitting …" : "Admit")),
        );
    }

    function row(onu: Waiting): m.Vnode {
        const is_chosen = chosen?.mac === onu.mac && chosen.pon_port === onu.pon_port;
        return m(
            "li",
            { key: `${onu.pon_port} ${onu.mac}` },
            m(
                ".waits",
                badge("new", `port ${onu.pon_port}`),
                m("span.mono", onu.mac),
                m("span", onu.loid ? `LOID ${onu.loid}` : ""),
                m("span",
                  onu.distance === null ? "" : `${onu.distance} m`,
                  onu.supported ? "" : badge("warn", "not supported")),
                m("span.muted", onu.since === null ? "since before the console knew it" : ["since ", age(onu.since)]),
                may("service-affecting") &&
                    m("span.buttons",
                      button("Admit", () => (is_chosen ? (chosen = undefined) : choose(onu)), {
                          "aria-label": `Admit ${onu.mac}`,
                          "aria-expanded": is_chosen ? "true" : "false"
                      }),
                      button("Turn away", () => void turn_away(onu), { "aria-label": `Turn ${onu.mac} away` })),
            ),
            is_chosen && form(onu),
        );
    }

    return {
        view: () => {
            const waiting = use<{ waiting: Waiting[] }>(`${base}/waiting`, ["onus"]);
            first_free(0);  // what ids are taken is read before somebody wants to know it
            if (!waiting.value) return awaited_screen(waiting, `Waiting ONUs of ${olt}`);
            const all = waiting.value.waiting;
            return [
                m(".title",
                  m("h1", "Waiting ONUs", m("span.muted", ` of ${olt}`)),
                  m("span.shown", { role: "status" }, plural(all.length, "ONU"))),
                !may("service-affecting") && all.length > 0 &&
                    m("p.muted", "To admit one needs the role service-affecting."),
                all.length === 0 ?
                    nothing(text("Nobody waits. An ONU that is plugged in and not bound is shown here at once.")) :
                    m("ul.waiting", all.map(row)),
                m(Blacklist, { olt, waiting: all }),
            ];
        },
    };
};
