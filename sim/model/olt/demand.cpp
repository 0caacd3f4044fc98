#include "model/olt/demand.h"

#include <algorithm>
#include <numeric>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/olt/light.h"
#include "model/olt/llid.h"
#include "model/olt/uni_config.h"
#include "model/traffic/bandwidth.h"

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

// Returns how many broadcast frames a port of this speed carries.
uint64_t broadcasts_at(const LinkMode &link)
{
    return kbits(uint64_t{link.speed} * 1000) / length_of(flows[broadcast_flow], Measure::line);
}

// Lets pass what the line of a UNI port has room for. On a line of half duplex both directions share the room, and the
// more of the line one takes, the more often frames of the other collide with it. The MAC of the sender sends these
// again.
void follow_link(UniDemand &uni, const LinkMode &link, bool other_side_is_half_duplex)
{
    const Bandwidth room = kbits(uint64_t{link.speed} * 1000);
    const Bandwidth up = octets_of(uni.up, Measure::line);
    const Bandwidth down = octets_of(uni.down, Measure::line);
    const Bandwidth both = other_side_is_half_duplex ? up + down : 0;
    uni.up = cut(uni.up, other_side_is_half_duplex ? portion(up, room, both) : room, Measure::line);
    uni.line_down = other_side_is_half_duplex ? portion(down, room, both) : room;
    if (!other_side_is_half_duplex) return;
    // A port that believes in full duplex takes what is left of a frame for a whole one with errors.
    uint64_t &collisions = link.full_duplex ? uni.crc_errored : uni.fragments;
    collisions = std::accumulate(uni.up.begin(), uni.up.end(), uint64_t{0}) * uni.line_down / room;
}

// Returns what the UNI ports of an ONU let pass. Its users are behind the ports that have links, more behind the faster
// ones.
std::vector<UniDemand> uni_demands(const Olt &olt, const RemoteOnu &onu, const Rates &users, uint32_t flood)
{
    const std::vector<UniConfig> configs = uni_configs(olt, onu, Side::remote);
    const std::vector<std::optional<LinkMode>> links = uni_links(olt, onu, configs);
    const auto speed_of = [&](size_t uni) { return uint64_t{links[uni] ? links[uni]->speed : 0}; };
    std::vector<UniDemand> unis(links.size());
    for (size_t flow = 0; flow < flows.size(); ++flow) {
        apportion(users.up[flow], unis.size(), speed_of, [&](size_t uni, uint64_t rate) { unis[uni].up[flow] = rate; });
        apportion(users.down[flow], unis.size(), speed_of,
                  [&](size_t uni, uint64_t rate) { unis[uni].down[flow] = rate; });
    }
    apportion(flood * rate_unit, unis.size(), speed_of,
              [&](size_t uni, uint64_t rate) { unis[uni].up[broadcast_flow] += rate; });
    for (size_t uni = 0; uni < unis.size(); ++uni) {
        if (!links[uni]) continue;
        // Through a loop broadcast frames multiply until the port is full.
        const LoopRecord *loop = olt.loop({onu.port->number, onu.binding->mac, static_cast<uint32_t>(uni + 1)});
        if (loop && loop->looped) unis[uni].up[broadcast_flow] += broadcasts_at(*links[uni]);
        // A device that negotiates finds nobody to negotiate with at a port of a forced mode, and takes half duplex.
        follow_link(unis[uni], *links[uni], !links[uni]->full_duplex || !configs[uni].autoneg);
        const PerFlow sent = unis[uni].up;
        unis[uni].up = cut(sent, kbits(configs[uni].ingress.value_or(line_rate)));
        unis[uni].limited = without(sent, unis[uni].up);
        unis[uni].most_down = kbits(configs[uni].egress.value_or(line_rate));
    }
    return unis;
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
    const OnuRecord &record = port.record(mac);
    const Rates found = rates_of(olt.seed(), mac);
    const Rates users{with_load(found.up, record.load_up ? record.load_up : arrival.load_up),
                      with_load(found.down, record.load_down ? record.load_down : arrival.load_down)};
    Demand demand{.wanted = {},
                  .unis = uni_demands(olt, find_onu(olt, port.number, onu_id).onu, users, record.flood),
                  .sla = binding->sla.value_or(default_sla),
                  .most_down = kbits(binding->sla_down.value_or(line_rate))};
    for (const UniDemand &uni : demand.unis) {
        add(demand.wanted.up, uni.up);
        add(demand.wanted.down, uni.down);
    }
    demand.errors = errors_of(record);
    const LlidBehavior behavior = llid_behavior(olt, port.number, to_llid(onu_id));
    const auto let_in = [&](Cast cast) -> std::optional<Bandwidth> & {
        return demand.let_in.at(static_cast<size_t>(cast));
    };
    if (behavior.broadcast_rate) let_in(Cast::broadcast) = kbits(behavior.broadcast_rate);
    if (behavior.multicast_rate) let_in(Cast::multicast) = kbits(behavior.multicast_rate);
    if (behavior.frames == Frames::dropped) demand.let_in.fill(0);
    return demand;
}

Errors errors_of(const OnuRecord &record)
{
    return {errored_shares(record.up), errored_shares(record.down), record.heard()};
}

Traffic::Capacity capacity_of(const Mpcp &mpcp, uint32_t online)
{
    // FEC is RS(255,239) of IEEE 802.3, 65.2: of 255 octets on the line 239 carry frames.
    const Bandwidth line = mpcp.fec ? kbits(line_rate) * 239 / 255 : kbits(line_rate);
    constexpr uint64_t quantum = 16;                                    // ns
    constexpr uint64_t laser = 512 / quantum;                           // quanta; on or off (60.7.13.1)
    constexpr uint64_t control = (64 + preamble_and_gap) * 8 / quantum; // quanta; a GATE or a REPORT
    const uint64_t cycle = mpcp.grant_cycle * uint64_t{1000} / quantum;
    // Each ONU has a grant in each cycle, because otherwise it could not report that it wants more. A longer cycle than
    // all of these grants is divided into more of them. A grant begins with the time that the receiver needs to
    // synchronise, and ends before the laser is off and the next one on.
    const uint64_t grants = std::max<uint64_t>(online, cycle / (mpcp.grant_length + 2 * laser));
    const auto room = [&](uint64_t overhead) { return line * (cycle - std::min(cycle, overhead)) / cycle; };
    return {.up = room(online == 0 ? 0 : grants * (mpcp.sync_time + 2 * laser) + online * control),
            .down = room(online * control)};
}

uint32_t admissible(const Mpcp &mpcp, uint32_t onus)
{
    const Flow &longest = flows[longest_flow];
    return static_cast<uint32_t>(capacity_of(mpcp, onus).up * longest.length / length_of(longest, Measure::line) /
                                 kbits(1));
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
