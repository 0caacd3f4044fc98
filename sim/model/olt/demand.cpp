#include "model/olt/demand.h"

#include <algorithm>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/olt/bandwidth.h"
#include "model/olt/light.h"
#include "model/olt/llid.h"
#include "model/olt/sla.h"

namespace ponsim
{
namespace
{

constexpr uint32_t million = 1000000;
constexpr size_t broadcast_flow = flows.size() - 1;
static_assert(flows[broadcast_flow].cast == Cast::broadcast);

PerFlow with_load(const PerFlow &found, const std::optional<uint32_t> &load)
{
    return load ? spread(found, kbits(std::min(*load, line_rate))) : found;
}

// Returns the broadcast frames that an ONU sends beyond its load. Through a loop they multiply until the UNI port is
// full. A flood is as strong as it was made, but it comes through the UNI ports, too.
Bandwidth storm_of(const Olt &olt, const PonPort &port, const Mac &mac, uint32_t flood)
{
    const auto first = olt.loops().lower_bound({port.number, mac, 0});
    const bool looped = first != olt.loops().end() && first->first.pon_port == port.number && first->first.mac == mac;
    if (!looped && flood == 0) return 0;
    const std::vector<Uni> unis = olt.device_of(mac).unis;
    const auto rate_of = [](const Uni &uni) { return kbits(uint64_t{uni.line_rate} * 1000); };
    Bandwidth storm = flood * rate_unit * flows[broadcast_flow].length;
    Bandwidth most = 0;
    for (const Uni &uni : unis)
        most += rate_of(uni);
    for (auto loop = first; loop != olt.loops().end() && loop->first.pon_port == port.number && loop->first.mac == mac;
         ++loop)
        if (loop->second.looped && !loop->second.shut) storm += rate_of(unis.at(loop->first.uni - 1));
    return std::min({storm, most, kbits(line_rate)});
}

Plan change_record(const Olt &olt, uint32_t pon_port, const Mac &mac, const auto &edit_record)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (!port->arrived(mac)) return {PON_ERR_NOT_ARRIVED};
    Plan plan{BSP_OK};
    edit_record(edit(plan.change, *port, mac));
    return plan;
}

} // namespace

std::optional<Demand> demand_of(const Olt &olt, const PonPort &port, uint32_t onu_id)
{
    const std::optional<Binding> &binding = port.bindings[onu_id];
    if (!binding || !port.online(*binding)) return std::nullopt;
    const Mac &mac = binding->mac;
    const Arrival &arrival = *port.arrived(mac);
    const OnuRecord record = port.record(mac);
    const Rates found = rates_of(olt.seed(), mac);
    Demand demand{.wanted = {with_load(found.up, record.load_up ? record.load_up : arrival.load_up),
                             with_load(found.down, record.load_down ? record.load_down : arrival.load_down)},
                  .sla = binding->sla.value_or(default_sla),
                  .most_down = kbits(binding->sla_down.value_or(line_rate))};
    demand.wanted.up[broadcast_flow] += storm_of(olt, port, mac, record.flood) / flows[broadcast_flow].length;
    for (size_t flow = 0; flow < flows.size(); ++flow)
        demand.errored.at(flow) = errored_share(port, arrival, flows.at(flow), Direction::up) / (all_errored / million);

    const LlidBehavior behavior = llid_behavior(olt, port.number, to_llid(onu_id));
    const auto let_in = [&](Cast cast) -> std::optional<Bandwidth> & {
        return demand.let_in.at(static_cast<size_t>(cast));
    };
    if (behavior.broadcast_rate) let_in(Cast::broadcast) = kbits(behavior.broadcast_rate);
    if (behavior.multicast_rate) let_in(Cast::multicast) = kbits(behavior.multicast_rate);
    if (behavior.frames == Frames::dropped) demand.let_in.fill(0);
    return demand;
}

Traffic::Capacity capacity_of(const Mpcp &mpcp, uint32_t online)
{
    // FEC is RS(255,239) of IEEE 802.3, 65.2: of 255 octets on the line 239 carry frames.
    const Bandwidth line = mpcp.fec ? kbits(line_rate) * 239 / 255 : kbits(line_rate);
    // Each ONU has a grant in each cycle, because otherwise it could not report that it wants more. A grant starts with
    // the time that the receiver needs to synchronise. Before that one laser goes off and another one on, in 512 ns
    // each (60.7.13.1).
    constexpr uint64_t quantum = 16;          // ns
    constexpr uint64_t laser = 512 / quantum; // quanta
    const uint64_t cycle = mpcp.grant_cycle * uint64_t{1000} / quantum;
    const uint64_t overhead = std::min(cycle, online * (mpcp.sync_time + 2 * laser));
    return {.up = line * (cycle - overhead) / cycle, .down = line};
}

Plan set_load(const Olt &olt, uint32_t pon_port, const Mac &mac, Direction direction, std::optional<uint32_t> kbits)
{
    return change_record(olt, pon_port, mac, [&](OnuRecord &record) {
        (direction == Direction::up ? record.load_up : record.load_down) = kbits;
    });
}

Plan set_flood(const Olt &olt, uint32_t pon_port, const Mac &mac, uint32_t frames)
{
    return change_record(olt, pon_port, mac, [&](OnuRecord &record) { record.flood = frames; });
}

} // namespace ponsim
