#include "model/olt/olt.h"

#include <algorithm>

#include "bsp_pon.h"
#include "model/olt/demand.h"
#include "model/olt/interfaces.h"
#include "model/olt/llid.h"

namespace ponsim
{

bool Authentication::accepts(const Arrival &arrival) const
{
    if (mode == AuthMode::mac || !extended_oam) return false;
    const auto found = records.find(arrival.loid);
    if (found == records.end()) return false;
    return mode != AuthMode::loid_and_password || found->second == arrival.password;
}

bool Authentication::turns_away(const Arrival &arrival, const Binding *binding) const
{
    if (mode == AuthMode::mac || mode == AuthMode::mac_or_loid) return false;
    return !(binding && binding->exempt) && !accepts(arrival);
}

bool is_oui(const Change::BlockRow &row)
{
    return row.channel == BSP_MSG_PON && row.command == BSP_CMD_OUI_SET;
}

std::string_view to_text(OnuState state)
{
    switch (state) {
    case OnuState::offline:
        return "offline";
    case OnuState::online:
        return "online";
    case OnuState::unauthenticated:
        return "unauthenticated";
    }
    return {};
}

const UpgradeRun *UpgradeRuns::find(const Mac &mac) const
{
    const auto found = runs.find(mac);
    return found == runs.end() ? nullptr : &found->second;
}

bool UpgradeRuns::rebooting(const Mac &mac) const
{
    const UpgradeRun *run = find(mac);
    return run && run->state == UpgradeRun::State::rebooting;
}

void UpgradeRuns::set(const Mac &mac, const UpgradeRun &run)
{
    if (const UpgradeRun *before = find(mac)) {
        if (const std::optional<ModelTime> end = before->end()) ends.erase({*end, mac});
        queue.erase({before->since, mac});
        downloading -= before->state == UpgradeRun::State::downloading;
    }
    runs[mac] = run;
    if (const std::optional<ModelTime> end = run.end()) ends.insert({*end, mac});
    if (run.state == UpgradeRun::State::queued) queue.insert({run.since, mac});
    downloading += run.state == UpgradeRun::State::downloading;
}

const Arrival *PonPort::arrived(const Mac &mac) const
{
    const auto found = std::ranges::lower_bound(arrivals, mac, {}, &Arrival::mac);
    return found != arrivals.end() && found->mac == mac ? &*found : nullptr;
}

const Arrival *PonPort::ranged(const Mac &mac) const
{
    const Arrival *arrival = arrived(mac);
    return arrival && ranges(*arrival) ? arrival : nullptr;
}

OnuRecord PonPort::record(const Mac &mac) const
{
    const auto found = onus.find(mac);
    return found == onus.end() ? OnuRecord{} : found->second;
}

OnuState PonPort::state(const Binding &binding) const
{
    return upgrades.rebooting(binding.mac) ? OnuState::offline : state_rebooted(binding);
}

OnuState PonPort::state_rebooted(const Binding &binding) const
{
    const Arrival *arrival = ranged(binding.mac);
    if (!arrival || arrival->silent) return OnuState::offline;
    return authentication.turns_away(*arrival, &binding) ? OnuState::unauthenticated : OnuState::online;
}

OnuRecord &edit(Change &change, const PonPort &port, const Mac &mac)
{
    const auto found = std::ranges::find_if(
        change.onus, [&](const Change::OnuRow &row) { return row.pon_port == port.number && row.mac == mac; });
    if (found != change.onus.end()) return found->record;
    return change.onus.emplace_back(port.number, mac, port.record(mac)).record;
}

Olt::Olt(const Settings &settings) : own_seed(settings.seed), topology(settings.topology)
{
    for (uint32_t number = 1; number <= settings.ports; ++number) {
        PortPopulation port = topology ? topology->ports.at(number - 1) : population_at(settings, number);
        pon_ports.push_back({number, std::move(port.branches), std::move(port.arrivals)});
    }
    for (uint32_t cage = 1; cage <= settings.ports + ge_uplinks; ++cage)
        optics.emplace_back(settings.seed, cage, cage <= settings.ports);
    forwarding.start(*this);
    lights.start(*this);
}

Device Olt::device_of(const Mac &mac) const
{
    const DeviceType *kind = nullptr;
    if (topology)
        if (const auto found = topology->kinds.find(mac); found != topology->kinds.end()) kind = found->second;
    return ponsim::device_of(own_seed, mac, kind);
}

const PonPort *Olt::port(uint32_t number) const
{
    return number >= 1 && number <= pon_ports.size() ? &pon_ports[number - 1] : nullptr;
}

const Module *Olt::module(uint32_t cage) const
{
    return cage >= 1 && cage <= optics.size() ? &optics[cage - 1] : nullptr;
}

std::optional<Olt::Place> Olt::find(const Mac &mac) const
{
    const auto found = places.find(mac);
    if (found == places.end()) return std::nullopt;
    return found->second;
}

std::optional<uint32_t> Olt::id_at(uint32_t pon_port, const Mac &mac) const
{
    const std::optional<Place> place = find(mac);
    if (!place || place->pon_port != pon_port) return std::nullopt;
    return place->onu_id;
}

bool Olt::online(const PonPort &port, const Mac &mac) const
{
    const std::optional<uint32_t> onu_id = id_at(port.number, mac);
    return onu_id && port.online(*port.bindings[*onu_id]);
}

bool Olt::waits(const PonPort &port, const Arrival &arrival) const
{
    return port.ranges(arrival) && !port.refuses(arrival.mac) && !id_at(port.number, arrival.mac);
}

std::vector<const Arrival *> Olt::waiting(const PonPort &port) const
{
    std::vector<const Arrival *> result;
    for (const Arrival &arrival : port.arrivals)
        if (waits(port, arrival)) result.push_back(&arrival);
    return result;
}

namespace
{

// Whether the same ONU is bound, and what else of the binding counts for its traffic is the same, too.
bool same_traffic(const std::optional<Binding> &before, const std::optional<Binding> &now)
{
    return before && now && before->mac == now->mac && before->exempt == now->exempt && before->sla == now->sla &&
           before->sla_down == now->sla_down;
}

} // namespace

// The ids, by PON port, of ONUs that may come online or go offline by the change, or demand something else. Of a port
// without any the traffic may change all the same: with its grants, its uplink, or another port of that.
std::map<uint32_t, OnuIds> Olt::concerned(const Change &change) const
{
    std::map<uint32_t, OnuIds> ids;
    for (const auto &row : change.bindings)
        if (!same_traffic(pon_ports.at(row.pon_port - 1).bindings.at(row.onu_id), row.binding))
            ids[row.pon_port].set(row.onu_id);
    for (const auto &row : change.onus) {
        const std::optional<uint32_t> onu_id = id_at(row.pon_port, row.mac);
        const bool absent = !row.record.present() && !pon_ports.at(row.pon_port - 1).record(row.mac).present();
        if (onu_id && !absent) ids[row.pon_port].set(*onu_id);
    }
    for (const auto &row : change.ports)
        ids[row.pon_port].set();
    for (const auto &row : change.auth)
        ids[row.pon_port].set();
    for (const auto &row : change.modules)
        if (port(row.cage)) ids[row.cage].set();
    for (const auto &row : change.upgrade_runs)
        if (const std::optional<uint32_t> onu_id = id_at(row.pon_port, row.mac)) ids[row.pon_port].set(*onu_id);
    for (const auto &row : change.blocks)
        for (const PonPort &port : pon_ports) {
            if (is_oui(row)) ids[port.number].set();
            if (row.channel == BSP_MSG_DEBUG && row.command == BSP_CMD_DEBUG_GE_PHY_SET &&
                uplink_of(port.number) == row.pon_port)
                ids[port.number];
            if (row.channel != BSP_MSG_PLAT || row.pon_port != port.number) continue;
            if (row.command == BSP_CMD_MPCP_SET) ids[port.number];
            if (row.command == BSP_CMD_LLID_BEHAVIOR_SET) ids[port.number].set(to_onu_id(row.index));
        }
    for (const auto &row : change.loops)
        if (const std::optional<uint32_t> onu_id = id_at(row.place.pon_port, row.place.mac))
            ids[row.place.pon_port].set(*onu_id);
    const std::map<uint32_t, OnuIds> of_themselves = ids;
    for (const auto &[pon_port, onu_ids] : of_themselves)
        for (const PonPort &port : pon_ports)
            if (uplink_of(port.number) == uplink_of(pon_port)) ids[port.number];
    return ids;
}

void Olt::follow_demand(const std::map<uint32_t, OnuIds> &concerned)
{
    std::map<uint32_t, std::vector<Traffic *>> by_uplink;
    for (const auto &[pon_port, onu_ids] : concerned) {
        PonPort &port = pon_ports.at(pon_port - 1);
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
            if (onu_ids[onu_id]) port.traffic.set(onu_id, demand_of(*this, port, onu_id));
        port.traffic.set_capacity(capacity_of(mpcp_of(*this, pon_port), port.traffic.online()));
        by_uplink[uplink_of(pon_port)].push_back(&port.traffic);
    }
    for (const auto &[uplink, ports] : by_uplink)
        Traffic::share(ports, phy_control(*this, uplink).link_up());
}

void Olt::add_traffic(Change &change) const
{
    for (const auto &[pon_port, onu_ids] : concerned(change))
        change.traffic.push_back({pon_port, pon_ports.at(pon_port - 1).traffic.offered(time)});
}

void Olt::apply(const Change &change)
{
    const std::map<uint32_t, OnuIds> traffic_of = concerned(change);
    time = change.now.value_or(time);
    for (const auto &[pon_port, onu_ids] : traffic_of)
        pon_ports.at(pon_port - 1).traffic.settle(time);
    std::vector<std::pair<uint32_t, Mac>> moved; // ONUs, and at which port
    for (const auto &[pon_port, onu_id, binding] : change.bindings) {
        if (const auto &old = pon_ports.at(pon_port - 1).bindings.at(onu_id)) moved.push_back({pon_port, old->mac});
        if (binding) moved.push_back({pon_port, binding->mac});
        forget({pon_port, onu_id});
        pon_ports.at(pon_port - 1).bindings.at(onu_id) = binding;
        if (binding) places[binding->mac] = {pon_port, onu_id};
    }
    for (const auto &[pon_port, mac, record] : change.onus) {
        std::map<Mac, OnuRecord> &onus = pon_ports.at(pon_port - 1).onus;
        due.erase({pon_ports.at(pon_port - 1).record(mac).phase_ends, pon_port, mac});
        if (record.phase_ends != 0) due.insert({record.phase_ends, pon_port, mac});
        if (record == OnuRecord{})
            onus.erase(mac);
        else
            onus[mac] = record;
    }
    for (const auto &[pon_port, limits, auth_mode] : change.ports) {
        PonPort &port = pon_ports.at(pon_port - 1);
        port.limits = limits;
        port.authentication.mode = AuthMode{auth_mode};
    }
    for (const auto &[pon_port, id, entry] : change.blacklist) {
        PonPort &port = pon_ports.at(pon_port - 1);
        std::optional<BlacklistEntry> &kept = port.blacklist.at(id);
        if (kept) port.blacklist_ids.erase(kept->mac);
        if (entry) port.blacklist_ids[entry->mac] = id;
        kept = entry;
    }
    for (const auto &[pon_port, loid, password] : change.auth) {
        std::map<std::string, std::string> &records = pon_ports.at(pon_port - 1).authentication.records;
        if (password)
            records[loid] = *password;
        else
            records.erase(loid);
    }
    for (const auto &[pon_port, mac, alarm, count] : change.alarms) {
        auto &alarms = pon_ports.at(pon_port - 1).alarms;
        if (count == 0)
            alarms.erase({mac, alarm});
        else
            alarms[{mac, alarm}] = count;
    }
    for (const auto &row : change.blocks) {
        const auto &[channel, command, pon_port, index, bytes] = row;
        const std::array key{channel, command, pon_port, index};
        if (bytes)
            blocks[key] = *bytes;
        else
            blocks.erase(key);
        if (is_oui(row))
            for (PonPort &port : pon_ports)
                port.authentication.extended_oam = !bytes;
    }
    for (const auto &[cage, record] : change.modules) {
        Module &module = optics.at(cage - 1);
        module.set(record, time);
        if (module.of_pon_port()) pon_ports.at(cage - 1).lit = module.laser_on();
    }
    for (const auto &[name, type] : change.upgrade_types) {
        if (type)
            types[name] = *type;
        else
            types.erase(name);
    }
    for (const auto &[pon_port, mac, run] : change.upgrade_runs)
        pon_ports.at(pon_port - 1).upgrades.set(mac, run);
    for (const auto &[place, record] : change.loops) {
        if (record)
            looped_unis[place] = *record;
        else
            looped_unis.erase(place);
    }
    for (const auto &[pon_port, branch, loss] : change.fibre) {
        std::map<uint32_t, int32_t> &damage = pon_ports.at(pon_port - 1).damage;
        if (loss == 0)
            damage.erase(branch);
        else
            damage[branch] = loss;
    }
    done = change.events_done.value_or(done);
    if (change.loop_detection) detection = *change.loop_detection;
    for (const auto &[place, setting] : change.onu_settings)
        onu_settings[place] = setting;
    for (const auto &[kind, id, profile] : change.profiles) {
        std::map<uint32_t, Profile> &profiles = profiles_of_kinds.at(static_cast<uint32_t>(kind) - 1);
        if (profile)
            profiles[id] = *profile;
        else
            profiles.erase(id);
    }
    lights.follow(*this, change);
    follow_demand(traffic_of);
    for (const auto &[pon_port, offered] : change.traffic)
        pon_ports.at(pon_port - 1).traffic.restore(offered);
    forwarding.follow(*this, change, moved);
}

bool Olt::shut(const UniPlace &place) const
{
    const auto found = looped_unis.find(place);
    return found != looped_unis.end() && found->second.shut;
}

const OnuSetting *Olt::setting(const SettingPlace &place) const
{
    const auto found = onu_settings.find(place);
    return found == onu_settings.end() ? nullptr : &found->second;
}

const std::map<uint32_t, Profile> &Olt::profiles(ProfileKind kind) const
{
    return profiles_of_kinds.at(static_cast<uint32_t>(kind) - 1);
}

void Olt::advance(ModelTime to)
{
    time = std::max(time, to);
}

const std::string *Olt::block(uint32_t channel, uint32_t command, uint32_t pon_port, uint32_t index) const
{
    const auto found = blocks.find({channel, command, pon_port, index});
    return found == blocks.end() ? nullptr : &found->second;
}

// The place that is about to be taken or freed no longer is its ONU's, unless that has moved on within the change.
void Olt::forget(const Place &place)
{
    const std::optional<Binding> &binding = pon_ports.at(place.pon_port - 1).bindings.at(place.onu_id);
    if (binding && find(binding->mac) == place) places.erase(binding->mac);
}

Device device_at(const Olt &olt, const PonPort &port, const Mac &mac)
{
    Device device = olt.device_of(mac);
    const auto found = port.onus.find(mac);
    if (found != port.onus.end() && !found->second.software.empty()) device.software = found->second.software;
    return device;
}

} // namespace ponsim
