#include "model/olt/fdb.h"

#include <algorithm>
#include <tuple>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/block.h"
#include "model/olt/llid.h"
#include "model/olt/olt.h"
#include "model/olt/uni_config.h"

namespace ponsim
{
namespace
{

constexpr uint32_t shortest_ageing = 10; // s; longer than any station is silent
constexpr uint32_t longest_ageing = 1000000;
static_assert(shortest_ageing * ms_per_second > longest_silence);

// Returns whether the filter selects the entry. Entries of the PON side have an ONU id.
bool holds_for(const FdbFilter &filter, const FdbEntry &entry)
{
    if (!(entry.onu_id ? filter.pon : filter.network)) return false;
    if (filter.port != 0 && filter.port != entry.port) return false;
    if (filter.llid != 0 && (!entry.onu_id || filter.llid != to_llid(*entry.onu_id))) return false;
    if (filter.uni != 0 && filter.uni != entry.uni) return false;
    if (filter.vlan != 0 && filter.vlan != entry.vlan) return false;
    return is_zero(filter.mac) || filter.mac == entry.mac;
}

// Keeps the `limit` entries that were learned first, in the order in which they stand. A limit of 0 keeps all.
void keep_first(std::vector<FdbEntry> &entries, uint32_t limit)
{
    if (limit == 0 || entries.size() <= limit) return;
    const auto age = [](const FdbEntry &entry) { return std::tuple(entry.since, entry.mac); };
    std::vector<FdbEntry> oldest = entries;
    std::ranges::nth_element(oldest, oldest.begin() + limit, {}, age);
    const auto first_left_out = age(oldest[limit]);
    std::erase_if(entries, [&](const FdbEntry &entry) { return age(entry) >= first_left_out; });
}

constexpr uint32_t every_uplink = (2u << ge_uplinks) - 2; // bits 1 to ge_uplinks

// Returns which UNI ports of an ONU that is online have a link: bit N is that of port N.
uint32_t linked(const Olt &olt, const PonPort &port, uint32_t onu_id)
{
    const std::vector<std::optional<LinkMode>> links = uni_links(olt, find_onu(olt, port.number, onu_id).onu);
    uint32_t bits = 0;
    for (size_t index = 0; index < links.size(); ++index)
        bits |= uint32_t{links[index].has_value()} << (index + 1);
    return bits;
}

} // namespace

bool is_good(const FdbConfig &config)
{
    const bool ages = config.ageing == 0 || (config.ageing >= shortest_ageing && config.ageing <= longest_ageing);
    return ages && config.learning <= 1;
}

FdbConfig fdb_config(const Olt &olt)
{
    return from_block(olt.block(BSP_MSG_PLAT, BSP_CMD_FDB_CFG_SET, 0), FdbConfig{});
}

Plan set_fdb_config(const FdbConfig &config)
{
    if (!is_good(config)) return {PON_ERR_BAD_RECORD};
    Plan plan{BSP_OK};
    plan.change.add(block_at({BSP_MSG_PLAT, BSP_CMD_FDB_CFG_SET, 0, 0},
                             config == FdbConfig{} ? std::nullopt : std::optional(to_block(config))));
    return plan;
}

Plan flush_fdb(const Olt &olt, const FdbFilter &filter)
{
    if (const uint32_t status = check_filter(olt, filter)) return {status};
    Plan plan{BSP_OK};
    plan.change.flushes.push_back(filter);
    return plan;
}

uint32_t check_filter(const Olt &olt, const FdbFilter &filter)
{
    if (filter.port != 0 && filter.pon == filter.network) return PON_ERR_BAD_RECORD;
    if (filter.port != 0 && filter.pon && !olt.port(filter.port)) return PON_ERR_NO_PORT;
    if (filter.port > ge_uplinks && filter.network) return PON_ERR_NO_PORT;
    if ((filter.llid != 0 || filter.uni != 0) && filter.network) return PON_ERR_BAD_RECORD;
    return filter.llid > onus_per_port ? PON_ERR_BAD_LLID : BSP_OK;
}

void Fdb::start(const Olt &olt)
{
    for (const PonPort &port : olt.ports())
        onus.emplace_back(port.arrivals.size());
    network.stations = network_stations(olt.seed());
    std::ranges::sort(network.stations, {}, &Station::port);
    network.learned.resize(network.stations.size());
}

void Fdb::follow(const Olt &olt, const Change &change, std::span<const std::pair<uint32_t, Mac>> moved)
{
    for (const FdbFilter &filter : change.flushes)
        flush(filter, olt.now());
    const auto look_at = [&](uint32_t pon_port, const Mac &mac) {
        const PonPort &port = *olt.port(pon_port);
        const auto found = std::ranges::lower_bound(port.arrivals, mac, MacOrder(), &Arrival::mac);
        if (found != port.arrivals.end() && found->mac == mac)
            look(olt, port, static_cast<size_t>(found - port.arrivals.begin()));
    };
    for (const auto &[pon_port, mac] : moved)
        look_at(pon_port, mac);
    for (const auto &[cage, record] : change.of<ModuleRecord>())
        if (const PonPort *port = olt.port(cage)) look(olt, *port);
    for (const auto &[pon_port, record] : change.of<PortRecord>())
        look(olt, *olt.port(pon_port));
    for (const auto &[key, password] : change.of<LoidPassword>())
        look(olt, *olt.port(key.pon_port));
    for (const auto &[key, setting] : change.of<OnuSetting>())
        if (is_uni_config(key)) look_at(key.pon_port, key.mac);
    for (const auto &[key, loop] : change.of<LoopRecord>())
        look_at(key.pon_port, key.mac);
    for (const auto &[key, onu] : change.of<PluggedOnu>())
        look_at(key.pon_port, key.mac);
    for (const auto &[key, device] : change.of<PluggedDevice>())
        look_at(key.pon_port, key.mac);
    for (const auto &[key, block] : change.of<Block>()) {
        for (const PonPort &port : olt.ports())
            if (is_oui(key)) look(olt, port);
        if (key.channel != BSP_MSG_PLAT) continue;
        if (key.command == BSP_CMD_LLID_BEHAVIOR_SET) look(olt, *olt.port(key.pon_port));
        if (key.command == BSP_CMD_FDB_CFG_SET) configure(olt);
    }
    listen(network, config.learning ? every_uplink : 0, olt.now());
}

void Fdb::replug(const PonPort &port, std::span<const Arrival> arrivals)
{
    std::vector<Group> &groups = onus[port.number - 1];
    std::vector<Group> now(arrivals.size());
    for (size_t index = 0; index < arrivals.size(); ++index) {
        const auto before = std::ranges::lower_bound(port.arrivals, arrivals[index].mac, MacOrder(), &Arrival::mac);
        if (before != port.arrivals.end() && before->mac == arrivals[index].mac)
            now[index] = std::move(groups[static_cast<size_t>(before - port.arrivals.begin())]);
    }
    groups = std::move(now);
}

std::vector<FdbEntry> Fdb::entries(const FdbFilter &filter, ModelTime now) const
{
    std::vector<FdbEntry> matching;
    const auto add = [&](const std::vector<FdbEntry> &entries) {
        std::ranges::copy_if(entries, std::back_inserter(matching),
                             [&](const FdbEntry &entry) { return holds_for(filter, entry); });
    };
    for (uint32_t pon_port = 1; filter.pon && pon_port <= onus.size(); ++pon_port)
        if (filter.port == 0 || filter.port == pon_port) add(entries_at(pon_port, now));
    if (filter.network) add(entries_of(network, 0, now));
    return matching;
}

std::vector<FdbEntry> Fdb::entries_at(uint32_t pon_port, ModelTime now) const
{
    std::vector<const Group *> groups;
    for (const Group &group : onus[pon_port - 1])
        groups.push_back(&group);
    std::ranges::stable_sort(groups, {}, &Group::onu_id);
    std::vector<FdbEntry> entries;
    for (const Group *group : groups)
        std::ranges::copy(entries_of(*group, pon_port, now), std::back_inserter(entries));
    keep_first(entries, config.port_limit);
    return entries;
}

std::optional<Fdb::Learned> Fdb::learned(const Group &group, size_t index, ModelTime now) const
{
    const ModelTime ageing = config.ageing * ms_per_second;
    const auto aged_out = [ageing](const std::optional<Learned> &entry, ModelTime at) {
        return !entry || (ageing != 0 && at - entry->seen >= ageing);
    };
    std::optional<Learned> entry = group.learned[index];
    const Station &station = group.stations[index];
    const ModelTime next = station.next_frame(group.settled);
    // An entry that is heard again does not age out after that, because no station is silent for so long.
    if ((group.heard >> station.port & 1) && next <= now)
        entry = {aged_out(entry, next) ? next : entry->since, *station.last_frame(now)};
    return aged_out(entry, now) ? std::nullopt : entry;
}

void Fdb::settle(Group &group, ModelTime now) const
{
    for (size_t index = 0; index < group.stations.size(); ++index)
        group.learned[index] = learned(group, index, now);
    group.settled = now;
}

void Fdb::listen(Group &group, uint32_t heard, ModelTime now) const
{
    if (group.heard == heard) return;
    settle(group, now);
    group.heard = heard;
}

void Fdb::look(const Olt &olt, const PonPort &port, size_t arrival)
{
    Group &group = onus[port.number - 1][arrival];
    const Mac &mac = port.arrivals[arrival].mac;
    const std::optional<uint32_t> onu_id = olt.id_at(port.number, mac);
    uint32_t heard = 0;
    if (onu_id) {
        const LlidBehavior behavior = llid_behavior(olt, port.number, to_llid(*onu_id));
        group.onu_id = *onu_id;
        group.limit = behavior.mac_limit;
        if (config.learning && behavior.frames == Frames::learned && port.online(*port.bindings[*onu_id]))
            heard = linked(olt, port, *onu_id);
    }
    if (heard != 0 && group.stations.empty()) {
        group.stations = stations_behind(olt.seed(), mac, olt.device_of(mac));
        group.learned.resize(group.stations.size());
    }
    listen(group, heard, olt.now());
}

void Fdb::look(const Olt &olt, const PonPort &port)
{
    for (size_t arrival = 0; arrival < port.arrivals.size(); ++arrival)
        look(olt, port, arrival);
}

void Fdb::configure(const Olt &olt)
{
    // Time until now counts with the ageing time that was valid until now.
    for (std::vector<Group> &port : onus)
        for (Group &group : port)
            settle(group, olt.now());
    settle(network, olt.now());
    config = fdb_config(olt);
    for (const PonPort &port : olt.ports())
        look(olt, port);
}

void Fdb::flush(const FdbFilter &filter, ModelTime now)
{
    const auto forget = [&](Group &group, uint32_t pon_port) {
        settle(group, now);
        for (size_t index = 0; index < group.stations.size(); ++index) {
            const std::optional<FdbEntry> entry = entry_of(group, index, pon_port, now);
            if (entry && holds_for(filter, *entry)) group.learned[index].reset();
        }
    };
    for (uint32_t pon_port = 1; filter.pon && pon_port <= onus.size(); ++pon_port)
        if (filter.port == 0 || filter.port == pon_port)
            for (Group &group : onus[pon_port - 1])
                forget(group, pon_port);
    if (filter.network) forget(network, 0);
}

std::optional<FdbEntry> Fdb::entry_of(const Group &group, size_t index, uint32_t pon_port, ModelTime now) const
{
    const std::optional<Learned> entry = learned(group, index, now);
    if (!entry) return std::nullopt;
    const Station &station = group.stations[index];
    if (pon_port == 0)
        return FdbEntry{station.port, std::nullopt, 0, station.vlan, station.mac, entry->since, entry->seen};
    return FdbEntry{pon_port, group.onu_id, station.port, station.vlan, station.mac, entry->since, entry->seen};
}

std::vector<FdbEntry> Fdb::entries_of(const Group &group, uint32_t pon_port, ModelTime now) const
{
    std::vector<FdbEntry> entries;
    for (size_t index = 0; index < group.stations.size(); ++index)
        if (const std::optional<FdbEntry> entry = entry_of(group, index, pon_port, now)) entries.push_back(*entry);
    keep_first(entries, group.limit);
    return entries;
}

} // namespace ponsim
