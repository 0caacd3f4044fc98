#include "model/olt/olt.h"

#include <algorithm>

#include "bsp_pon.h"
#include "model/olt/demand.h"
#include "model/olt/interfaces.h"
#include "model/olt/llid.h"
#include "model/olt/uni_config.h"
#include "model/plant/plugging.h"

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

bool is_oui(const BlockKey &key)
{
    return key.channel == BSP_MSG_PON && key.command == BSP_CMD_OUI_SET;
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

void UpgradeRuns::set(const Mac &mac, const std::optional<UpgradeRun> &run)
{
    if (const UpgradeRun *before = find(mac)) {
        if (const std::optional<ModelTime> end = before->end()) ends.erase({*end, mac});
        queue.erase({before->since, mac});
        downloading -= before->state == UpgradeRun::State::downloading;
    }
    if (!run) {
        runs.erase(mac);
        return;
    }
    runs[mac] = *run;
    if (const std::optional<ModelTime> end = run->end()) ends.insert({*end, mac});
    if (run->state == UpgradeRun::State::queued) queue.insert({run->since, mac});
    downloading += run->state == UpgradeRun::State::downloading;
}

const Arrival *PonPort::arrived(const Mac &mac) const
{
    const auto found = std::ranges::lower_bound(arrivals, mac, MacOrder(), &Arrival::mac);
    return found != arrivals.end() && found->mac == mac ? &*found : nullptr;
}

const Arrival *PonPort::ranged(const Mac &mac) const
{
    const Arrival *arrival = arrived(mac);
    return arrival && ranges(*arrival) ? arrival : nullptr;
}

const OnuRecord &PonPort::record(const Mac &mac) const
{
    static const OnuRecord as_new;
    const auto found = onus.find(mac);
    return found == onus.end() ? as_new : found->second;
}

OnuState PonPort::state(const Binding &binding) const
{
    const Arrival *arrival = ranged(binding.mac);
    return arrival ? state(binding, *arrival) : OnuState::offline;
}

OnuState PonPort::state(const Binding &binding, const Arrival &arrival) const
{
    return upgrades.rebooting(binding.mac) ? OnuState::offline : state_rebooted(binding, arrival);
}

OnuState PonPort::state_rebooted(const Binding &binding, const Arrival &arrival) const
{
    if (arrival.silent) return OnuState::offline;
    return authentication.turns_away(arrival, &binding) ? OnuState::unauthenticated : OnuState::online;
}

OnuRecord &edit(Change &change, const PonPort &port, const Mac &mac)
{
    const OnuAtPort key{port.number, mac};
    if (OnuRecord *record = change.find<OnuRecord>(key)) return *record;
    change.put<OnuRecord>(key, port.record(mac));
    return *change.find<OnuRecord>(key);
}

Olt::Olt(const Settings &settings) : as_found(settings)
{
    for (uint32_t number = 1; number <= settings.ports; ++number) {
        PortPopulation port = found_at(number);
        pon_ports.push_back({number, std::move(port.branches), std::move(port.arrivals), port.optics});
        optics.emplace_back(settings.seed, number, port.optics);
    }
    for (uint32_t uplink = 1; uplink <= ge_uplinks; ++uplink)
        optics.emplace_back(settings.seed, settings.ports + uplink, nullptr);
    forwarding.start(*this);
    lights.start(*this);
    conditions.start(*this);
}

Olt::Olt(const Olt &) = default;
Olt::Olt(Olt &&) noexcept = default;
Olt &Olt::operator=(Olt &&) noexcept = default;
Olt::~Olt() = default;

Equipment Olt::equipment_of(const Mac &mac) const
{
    if (const auto found = plugged.find(mac); found != plugged.end()) return found->second;
    return topology() ? topology()->equipment_of(mac) : Equipment{};
}

const DeviceType *Olt::kind(const std::string &name) const
{
    if (topology())
        if (const auto found = topology()->kinds.find(name); found != topology()->kinds.end()) return found->second;
    const auto built_in = std::ranges::find(device_types(), name, &DeviceType::model);
    return built_in == device_types().end() ? nullptr : &*built_in;
}

PortPopulation Olt::found_at(uint32_t pon_port) const
{
    if (!topology()) return population_at(as_found, pon_port);
    PortPopulation port = topology()->ports.at(pon_port - 1);
    if (port.branches.empty()) port.branches.push_back(found_feeder());
    return port;
}

Device Olt::device_of(const Mac &mac) const
{
    return ponsim::device_of(seed(), mac, equipment_of(mac));
}

const OpticalClass &Olt::optics_of(const PonPort &port, const Mac &mac) const
{
    const DeviceType *kind = equipment_of(mac).kind;
    return kind && kind->optics ? *kind->optics : *port.optics;
}

const PonPort *Olt::port(uint32_t number) const
{
    return number >= 1 && number <= pon_ports.size() ? &pon_ports[number - 1] : nullptr;
}

const Module *Olt::module(uint32_t cage) const
{
    return cage >= 1 && cage <= optics.size() ? &optics[cage - 1] : nullptr;
}

std::optional<OnuKey> Olt::find(const Mac &mac) const
{
    const auto found = bound_at.find(mac);
    if (found == bound_at.end()) return std::nullopt;
    return found->second;
}

std::optional<uint32_t> Olt::id_at(uint32_t pon_port, const Mac &mac) const
{
    const std::optional<OnuKey> key = find(mac);
    if (!key || key->pon_port != pon_port) return std::nullopt;
    return key->onu_id;
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

// Returns whether the same ONU is bound, and whether everything else in the binding that counts for its traffic is the
// same, too.
bool same_traffic(const std::optional<Binding> &before, const std::optional<Binding> &now)
{
    return before && now && before->mac == now->mac && before->exempt == now->exempt && before->sla == now->sla &&
           before->sla_down == now->sla_down;
}

// Returns whether nothing but the light of the ONU is different.
bool same_but_light(const OnuRecord &before, OnuRecord now)
{
    now.up = before.up;
    now.down = before.down;
    return now == before;
}

} // namespace

// Returns what a change concerns, by PON port. Where the shares of one port may be different, those of the other ports
// of its uplink may be, too.
std::map<uint32_t, Olt::Concern> Olt::concerned(const Change &change) const
{
    std::map<uint32_t, Concern> ports;
    const auto shares = [&](uint32_t pon_port) -> OnuIds & {
        ports[pon_port].sharing = true;
        return ports[pon_port].demands;
    };
    for (const auto &[key, binding] : change.of<Binding>())
        if (!same_traffic(pon_ports.at(key.pon_port - 1).bindings.at(key.onu_id), binding))
            shares(key.pon_port).set(key.onu_id);
    for (const auto &[key, record] : change.of<OnuRecord>()) {
        const std::optional<uint32_t> onu_id = id_at(key.pon_port, key.mac);
        const OnuRecord &before = pon_ports.at(key.pon_port - 1).record(key.mac);
        const bool present = record ? record->present() : OnuRecord{}.present();
        if (!onu_id || (!present && !before.present())) continue;
        if (record && same_but_light(before, *record))
            ports[key.pon_port].errors.set(*onu_id);
        else
            shares(key.pon_port).set(*onu_id);
    }
    for (const auto &[pon_port, record] : change.of<PortRecord>())
        shares(pon_port).set();
    for (const auto &[key, password] : change.of<LoidPassword>())
        shares(key.pon_port).set();
    for (const auto &[key, run] : change.of<UpgradeRun>())
        if (const std::optional<uint32_t> onu_id = id_at(key.pon_port, key.mac)) shares(key.pon_port).set(*onu_id);
    for (const auto &[key, bytes] : change.of<Block>())
        for (const PonPort &port : pon_ports) {
            if (is_oui(key)) shares(port.number).set();
            if (key.channel == BSP_MSG_DEBUG && key.command == BSP_CMD_DEBUG_GE_PHY_SET &&
                uplink_of(port.number) == key.pon_port)
                shares(port.number);
            if (key.channel != BSP_MSG_PLAT || key.pon_port != port.number) continue;
            if (key.command == BSP_CMD_MPCP_SET) shares(port.number);
            if (key.command == BSP_CMD_LLID_BEHAVIOR_SET) shares(port.number).set(to_onu_id(key.index));
        }
    for (const auto &[key, record] : change.of<LoopRecord>())
        if (const std::optional<uint32_t> onu_id = id_at(key.pon_port, key.mac)) shares(key.pon_port).set(*onu_id);
    for (const auto &[key, setting] : change.of<OnuSetting>()) {
        const bool arrived = !setting || setting->sent == setting->before;
        const std::optional<uint32_t> onu_id = id_at(key.pon_port, key.mac);
        if (onu_id && arrived && is_uni_config(key)) shares(key.pon_port).set(*onu_id);
    }
    const auto plugged_in = [&](uint32_t pon_port, const Mac &mac) {
        if (const std::optional<uint32_t> onu_id = id_at(pon_port, mac)) shares(pon_port).set(*onu_id);
    };
    for (const auto &[key, onu] : change.of<PluggedOnu>())
        plugged_in(key.pon_port, key.mac);
    for (const auto &[key, device] : change.of<PluggedDevice>())
        plugged_in(key.pon_port, key.mac);
    const std::map<uint32_t, Concern> of_themselves = ports;
    for (const auto &[pon_port, concern] : of_themselves)
        for (const PonPort &port : pon_ports)
            if (uplink_of(port.number) == uplink_of(pon_port)) ports[port.number].sharing |= concern.sharing;
    return ports;
}

void Olt::follow_demand(const std::map<uint32_t, Concern> &concerned)
{
    struct Uplink {
        std::vector<Traffic *> ports = {};
        bool sharing = false;
    };
    std::map<uint32_t, Uplink> uplinks;
    for (const auto &[pon_port, concern] : concerned) {
        PonPort &port = pon_ports.at(pon_port - 1);
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
            if (concern.demands[onu_id])
                port.traffic.set(onu_id, demand_of(*this, port, onu_id));
            else if (concern.errors[onu_id])
                port.traffic.set_errors(onu_id, errors_of(port.record(port.bindings[onu_id].value().mac)));
        if (concern.sharing) port.traffic.set_capacity(capacity_of(mpcp_of(*this, pon_port), port.traffic.online()));
        Uplink &uplink = uplinks[uplink_of(pon_port)];
        uplink.ports.push_back(&port.traffic);
        uplink.sharing |= concern.sharing;
    }
    for (const auto &[number, uplink] : uplinks) {
        const bool up = phy_control(*this, number).link_up();
        if (uplink.sharing)
            Traffic::share(uplink.ports, up);
        else
            Traffic::pass_on(uplink.ports, up);
    }
}

namespace
{

template <class Record, class... Others>
constexpr bool is_one_of = (std::is_same_v<Record, Others> || ...);

// Returns whether the ONU has restarted: it has booted, or it comes back after an upgrade.
bool restarts(const OnuRecord &before, const OnuRecord &now)
{
    return (before.phase == Phase::booting && now.phase != Phase::booting) || before.reboots != now.reboots;
}

} // namespace

void Olt::add_traffic(Change &change) const
{
    // What the change itself says of a ledger holds.
    std::set<OnuAtPort> said;
    for (const auto &[key, ledger] : change.of<Ledger>())
        said.insert(key);
    for (const auto &[pon_port, concern] : concerned(change)) {
        const PonPort &port = pon_ports.at(pon_port - 1);
        change.put<Offered>(pon_port, port.traffic.offered(time));
        for (auto at = kept<Ledger>().lower_bound({pon_port, {}});
             at != kept<Ledger>().end() && at->first.pon_port == pon_port; ++at) {
            const auto &[key, before] = *at;
            if (said.contains(key)) continue;
            const std::optional<uint32_t> onu_id = id_at(pon_port, key.mac);
            if (!concern.sharing && !(onu_id && concern.errors[*onu_id])) continue;
            constexpr uint32_t none = onus_per_port; // an id that no ONU has
            change.put<Ledger>(key, settled(before, port.traffic.onu(onu_id.value_or(none)), time));
        }
    }
    for (const auto &[key, record] : change.of<OnuRecord>()) {
        const Ledger *before = ledger(key);
        if (before && !said.contains(key) &&
            restarts(pon_ports.at(key.pon_port - 1).record(key.mac), record.value_or(OnuRecord{})))
            change.put<Ledger>(key, ledger_from(std::max(time, before->since)));
    }
}

// Begins a generation of the OLT, and of the ports that the change concerns. It must be called before the change is
// made.
void Olt::count(const Change &change)
{
    if (change.empty()) return;
    ++changes;
    const auto concerns = [this](uint32_t pon_port) { pon_ports.at(pon_port - 1).generation = changes; };
    const auto concerns_all = [this] {
        for (PonPort &port : pon_ports)
            port.generation = changes;
    };
    change.each([&]<class Record>(const Entry<Record> &entry) {
        constexpr bool not_in_rows = is_one_of<Record, Offered, Ledger, ModelClock, Timeline, AlarmRecord, AlarmEvent>;
        if constexpr (is_one_of<Record, Block>) {
            concerns_all(); // because the number in its key is not always that of a port
        } else if constexpr (is_one_of<Record, PortRecord>) {
            concerns(entry.key);
        } else if constexpr (is_one_of<Record, PluggedOnu>) {
            concerns_all(); // because what the ONU is shows wherever it is bound
        } else if constexpr (is_one_of<Record, ModuleRecord>) {
            if (port(entry.key)) concerns(entry.key);
        } else if constexpr (!not_in_rows && requires { entry.key.pon_port; }) {
            concerns(entry.key.pon_port);
        } else if constexpr (!not_in_rows) {
            concerns_all();
        }
    });
    for (const auto &[key, binding] : change.of<Binding>())
        if (const std::optional<OnuKey> before = binding ? find(binding->mac) : std::nullopt)
            concerns(before->pon_port);
}

void Olt::apply(const Change &change)
{
    count(change);
    const std::map<uint32_t, Concern> traffic_of = concerned(change);
    if (const ModelClock *clock = change.find<ModelClock>({})) time = clock->now;
    for (const auto &[pon_port, concern] : traffic_of)
        pon_ports.at(pon_port - 1).traffic.settle(time);
    std::vector<std::pair<uint32_t, Mac>> moved; // ONUs with their ports
    for (const auto &[key, record] : change.of<OnuRecord>())
        if (!record || !same_but_light(pon_ports.at(key.pon_port - 1).record(key.mac), *record))
            moved.push_back({key.pon_port, key.mac});
    for (const auto &[key, binding] : change.of<Binding>()) {
        std::optional<Binding> &bound = pon_ports.at(key.pon_port - 1).bindings.at(key.onu_id);
        if (bound) moved.push_back({key.pon_port, bound->mac});
        if (binding) moved.push_back({key.pon_port, binding->mac});
        forget(key);
        bound = binding;
        if (binding) bound_at[binding->mac] = key;
    }
    for (const Entry<OnuRecord> &entry : change.of<OnuRecord>()) {
        const auto &[pon_port, mac] = entry.key;
        PonPort &port = pon_ports.at(pon_port - 1);
        due.erase({port.record(mac).phase_ends, pon_port, mac});
        const OnuRecord *record = kept_record(entry);
        if (record)
            port.onus[mac] = *record;
        else
            port.onus.erase(mac);
        if (record && record->phase_ends != 0) due.insert({record->phase_ends, pon_port, mac});
    }
    for (const auto &[pon_port, record] : change.of<PortRecord>()) {
        PonPort &port = pon_ports.at(pon_port - 1);
        const PortRecord now = record.value_or(PortRecord{});
        port.limits = now.limits;
        port.authentication.mode = AuthMode{now.auth_mode};
    }
    for (const auto &[key, entry] : change.of<BlacklistEntry>()) {
        PonPort &port = pon_ports.at(key.pon_port - 1);
        std::optional<BlacklistEntry> &listed = port.blacklist.at(key.id);
        if (listed) port.blacklist_ids.erase(listed->mac);
        if (entry) port.blacklist_ids[entry->mac] = key.id;
        listed = entry;
    }
    for (const auto &[key, password] : change.of<LoidPassword>()) {
        std::map<std::string, std::string> &records = pon_ports.at(key.pon_port - 1).authentication.records;
        if (password)
            records[key.loid] = password->password;
        else
            records.erase(key.loid);
    }
    for (const auto &[key, alarm] : change.of<AlarmRecord>()) {
        Alarms &alarms = key.pon_port == 0 ? of_uplinks : pon_ports.at(key.pon_port - 1).alarms;
        if (alarm)
            alarms.insert_or_assign({key.mac, key.alarm, key.unit}, *alarm);
        else
            alarms.erase({key.mac, key.alarm, key.unit});
    }
    for (const auto &[key, block] : change.of<Block>())
        if (is_oui(key))
            for (PonPort &port : pon_ports)
                port.authentication.extended_oam = !block;
    for (const auto &[cage, record] : change.of<ModuleRecord>())
        optics.at(cage - 1).set(record.value_or(ModuleRecord{}), time);
    for (const auto &[key, run] : change.of<UpgradeRun>())
        pon_ports.at(key.pon_port - 1).upgrades.set(key.mac, run);
    for (const auto &[key, damage] : change.of<Damage>()) {
        std::map<uint32_t, int32_t> &damages = pon_ports.at(key.pon_port - 1).damage;
        if (damage)
            damages[key.branch] = damage->loss;
        else
            damages.erase(key.branch);
    }
    for (const auto &[key, profile] : change.of<Profile>()) {
        std::map<uint32_t, Profile> &profiles = profiles_of_kinds.at(static_cast<uint32_t>(key.kind) - 1);
        if (profile)
            profiles[key.id] = *profile;
        else
            profiles.erase(key.id);
    }
    for (const auto &[key, setting] : change.of<OnuSetting>()) {
        if (!is_uni_config(key)) continue;
        if (const OnuSetting *before = this->setting(key)) on_their_way.erase({before->arrives, key});
        if (setting && setting->sent != setting->before) on_their_way.insert({setting->arrives, key});
    }
    change.each([this]<class Record>(const Entry<Record> &entry) { std::get<Shelf<Record>>(shelves).take(entry); });
    plug(change);
    lights.follow(*this, change);
    follow_demand(traffic_of);
    for (const auto &[pon_port, offered] : change.of<Offered>())
        pon_ports.at(pon_port - 1).traffic.restore(offered.value());
    forwarding.follow(*this, change, moved);
    conditions.follow(*this, change, moved);
}

const AlarmRecord *Olt::alarm(const AlarmKey &key) const
{
    const Alarms &all = alarms(key.pon_port);
    const auto found = all.find({key.mac, key.alarm, key.unit});
    return found == all.end() ? nullptr : &found->second;
}

// ONUs were plugged in or taken away. The records of the change have been kept.
void Olt::plug(const Change &change)
{
    std::set<uint32_t> concerned;
    for (const auto &[key, onu] : change.of<PluggedOnu>())
        concerned.insert(key.pon_port);
    if (concerned.empty()) return;
    plugged.clear();
    unplugged.clear();
    std::map<uint32_t, std::vector<std::pair<Mac, PluggedOnu>>> by_port;
    for (const auto &[key, onu] : kept<PluggedOnu>()) {
        if (concerned.contains(key.pon_port)) by_port[key.pon_port].push_back({key.mac, onu});
        if (onu.state == Plugged::leaving) unplugged.insert(key);
        Equipment equipment = topology() ? topology()->equipment_of(key.mac) : Equipment{};
        if (const DeviceType *own = onu.kind.empty() ? nullptr : kind(onu.kind)) equipment.kind = own;
        equipment.in_use = onu.in_use;
        // Where the ONU is counts more than where it was.
        if (onu.state == Plugged::there)
            plugged.insert_or_assign(key.mac, equipment);
        else
            plugged.emplace(key.mac, equipment);
    }
    for (const uint32_t pon_port : concerned) {
        PonPort &port = pon_ports.at(pon_port - 1);
        PortPopulation now = population_with(found_at(pon_port), by_port[pon_port]);
        forwarding.replug(port, now.arrivals);
        port.branches = std::move(now.branches);
        port.arrivals = std::move(now.arrivals);
    }
}

const LoopRecord *Olt::loop(const UniKey &key) const
{
    return std::get<Shelf<LoopRecord>>(shelves).find(key);
}

bool Olt::shut(const UniKey &key) const
{
    const LoopRecord *record = loop(key);
    return record && record->shut;
}

const Ledger *Olt::ledger(const OnuAtPort &key) const
{
    return std::get<Shelf<Ledger>>(shelves).find(key);
}

const OnuSetting *Olt::setting(const SettingKey &key) const
{
    return std::get<Shelf<OnuSetting>>(shelves).find(key);
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
    const Block *block = std::get<Shelf<Block>>(shelves).find({channel, command, pon_port, index});
    return block ? &block->bytes : nullptr;
}

// The place is about to be taken or freed. It is no longer the place of its ONU, unless the ONU has already moved on
// within the change.
void Olt::forget(const OnuKey &key)
{
    const std::optional<Binding> &binding = pon_ports.at(key.pon_port - 1).bindings.at(key.onu_id);
    if (binding && find(binding->mac) == key) bound_at.erase(binding->mac);
}

Device device_at(const Olt &olt, const PonPort &port, const Mac &mac)
{
    Device device = olt.device_of(mac);
    const auto found = port.onus.find(mac);
    if (found != port.onus.end() && !found->second.software.empty()) device.software = found->second.software;
    const auto &devices = olt.kept<PluggedDevice>();
    for (auto at = devices.lower_bound({port.number, mac, 0});
         at != devices.end() && at->first.pon_port == port.number && at->first.mac == mac; ++at) {
        const auto &[key, plugged] = *at;
        if (key.uni < 1 || key.uni > device.unis.size()) continue;
        std::optional<LinkMode> &partner = device.unis[key.uni - 1].partner;
        partner.reset();
        if (plugged.speed != 0) partner = LinkMode{plugged.speed, plugged.full_duplex};
    }
    return device;
}

} // namespace ponsim
