// These commands return the tables of all ONUs, and of the OLT and its PON ports.
#include "views/bulk.h"

#include <algorithm>
#include <cstddef>

#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/olt/light.h"
#include "model/olt/uni_config.h"
#include "model/onu/classification.h"
#include "model/onu/onu_identity.h"
#include "model/port/loops.h"
#include "model/port/performance.h"

namespace ponsim
{
namespace
{

// These texts identify the modelled OLT.
constexpr std::string_view olt_vendor = "SIMO";
constexpr std::string_view olt_model = "EP16";
constexpr std::string_view olt_version = "1.0.0";

OnuNumbers numbers_of(const Olt &olt, std::span<const PonPort> ports)
{
    OnuNumbers numbers;
    for (const PonPort &port : ports) {
        numbers.bound += static_cast<uint32_t>(ids_of(port.bindings).count());
        numbers.online += port.traffic.online();
        numbers.waiting += static_cast<uint32_t>(olt.waiting(port).size());
    }
    return numbers;
}

Outcome port_info(const Olt &olt, const Request &)
{
    std::vector<PortRow> rows;
    for (const PonPort &port : olt.ports()) {
        const Module &module = *olt.module(port.number);
        rows.push_back({port.number, interface_address(olt.seed(), Interface::pon, port.number), uplink_of(port.number),
                        module.laser_on(), module.readings(olt.second() * ms_per_second), numbers_of(olt, {&port, 1}),
                        pon_load(port)});
    }
    return {BSP_OK, {}, ports_table(rows)};
}

Outcome basic_info(const Olt &olt, const Request &)
{
    const Mac mac = interface_address(olt.seed(), Interface::management, 1);
    return {BSP_OK,
            {},
            olt_table({olt_model, olt_version, serial_number(olt_vendor, mac), mac,
                       static_cast<uint32_t>(olt.ports().size()), olt.now(), numbers_of(olt, olt.ports())})};
}

std::string line(const std::string &of, const OnuNumbers &numbers)
{
    return of + ": " + std::to_string(numbers.bound) + " bound, " + std::to_string(numbers.online) + " online, " +
           std::to_string(numbers.waiting) + " waiting\n";
}

Outcome all_onus(const Olt &olt, const Request &request)
{
    std::string text;
    for (const PonPort &port : olt.ports())
        text += line("port " + std::to_string(port.number), numbers_of(olt, {&port, 1}));
    text += line("total", numbers_of(olt, olt.ports()));
    Outcome outcome{BSP_OK};
    outcome.answer = text_answer(request.read<bsp_pon_msg>().cmd, text);
    return outcome;
}

Outcome optics_of(const Olt &olt, std::span<const PonPort> ports)
{
    std::vector<OnuOptics> rows;
    for (const PonPort &port : ports)
        for (const RemoteOnu &onu : onus_of(olt, port)) {
            const Mac &mac = onu.binding->mac;
            OnuOptics row{port.number, onu.onu_id, mac, {}};
            if (onu.online())
                row.measured = {onu_readings(olt, onu),
                                received_from(olt, port, *port.ranged(mac), olt.second() * ms_per_second)};
            rows.push_back(row);
        }
    return {BSP_OK, {}, onu_optics_table(rows)};
}

Outcome optics_of_port(const Olt &olt, const Request &request)
{
    const PonPort *port = olt.port(request.read<bsp_pon_msg>().pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    return optics_of(olt, {port, 1});
}

Outcome optics_of_all(const Olt &olt, const Request &)
{
    return optics_of(olt, olt.ports());
}

std::optional<OnuStats::Counts> counts_of(const Olt &olt, const RemoteOnu &onu)
{
    const std::optional<ModelTime> since = on_since(olt, onu);
    if (!since) return std::nullopt;
    OnuStats::Counts counts{};
    counts.time = olt.now() - *since;
    for (uint32_t uni = 1; uni <= onu.device.unis.size(); ++uni) {
        const UniCounters of_uni = uni_counters(olt, onu, uni, {0, counts.time});
        counts.up_frames += of_uni.frames.up;
        counts.up_octets += of_uni.octets.up;
        counts.up_errors += of_uni.errored.up;
        counts.down_frames += of_uni.frames.down;
        counts.down_octets += of_uni.octets.down;
        counts.down_discarded += of_uni.discarded.down;
    }
    return counts;
}

Outcome stats_of_all(const Olt &olt, const Request &)
{
    std::vector<OnuStats> rows;
    for (const PonPort &port : olt.ports())
        for (const RemoteOnu &onu : onus_of(olt, port)) {
            const Mac &mac = onu.binding->mac;
            OnuStats row{port.number, onu.onu_id, mac, {}, {}};
            if (onu.online()) {
                row.load = load_of(port.traffic.onu(onu.onu_id).passed);
                row.counts = counts_of(olt, onu);
            }
            rows.push_back(row);
        }
    return {BSP_OK, {}, onu_stats_table(rows)};
}

// Returns what an ONU has been sent by a setting command, in a word or byte of its block. Returns 0 when it has been
// sent nothing.
template <class Number>
Number configured(const Olt &olt, const RemoteOnu &onu, uint32_t command, layout::At<Number> at)
{
    const OnuBlock nothing(at.end() - offsetof(bsp_onu_msg, onu_data));
    return setting_of(olt, onu.key(command), Side::local, nothing).get(at);
}

bool has_rules(const Olt &olt, const RemoteOnu &onu, uint32_t uni)
{
    return classification(olt, onu, uni, Side::local).get(layout::onu_classification::count) != 0;
}

uint32_t config_word(const Olt &olt, const RemoteOnu &onu)
{
    constexpr uint32_t fec_enabled = 2; // the number that CTC uses
    uint32_t word = 0;
    const auto put = [&word](uint32_t bit, bool set) { word |= uint32_t{set} << bit; };
    put(0, configured(olt, onu, BSP_CMD_ONU_MGMT_GET, layout::onu_mgmt::mode) != 0);
    put(1, configured(olt, onu, BSP_CMD_ONU_FEC_GET, layout::onu_fec::mode) == fec_enabled);
    put(2, configured(olt, onu, BSP_CMD_ONU_TIME_GET, layout::onu_time::mode) != 0);
    put(3, onu.binding->sla || onu.binding->sla_down);
    put(4, llids_of(olt, onu, Side::local) > 1);
    put(5, switched_on(olt, onu, Side::local));
    put(6, configured(olt, onu, BSP_CMD_ONU_MC_SWITCH_GET, layout::onu_mc_switch::mode) != 0);
    put(7, configured(olt, onu, BSP_CMD_ONU_FAST_LEAVE_GET, layout::onu_fast_leave::state) != 0);
    uint32_t uni = 0;
    for (const UniConfig &config : uni_configs(olt, onu, Side::local)) {
        ++uni;
        put(8, !config.enabled);
        put(9, !config.autoneg);
        put(10, config.pause);
        put(11, config.ingress || config.egress);
        put(12, config.vlan_mode != VlanMode::transparent);
        put(13, has_rules(olt, onu, uni));
        put(14, !detects_loops(olt, {onu.port->number, onu.binding->mac, uni}, Side::local));
    }
    return word;
}

Outcome config_word_of(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    Outcome outcome = answer_with(request, std::string_view{});
    layout::store(outcome.answer->data(), layout::onu_config_word::word, config_word(olt, found.onu));
    return outcome;
}

constexpr Handler handlers[] = {
    {BSP_MSG_PON, BSP_CMD_VIEW_PORT_INFO, port_info},
    {BSP_MSG_PON, BSP_CMD_VIEW_BASIC_INFO, basic_info},
    {BSP_MSG_PON, BSP_CMD_ALL_ONU_INFO, all_onus},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_OPTICS, optics_of_port},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_OPTICS_ALL, optics_of_all},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_STATS_ALL, stats_of_all},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_CONFIG_WORD, config_word_of},
};

} // namespace

std::span<const Handler> bulk_handlers()
{
    return handlers;
}

} // namespace ponsim
