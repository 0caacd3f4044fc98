#include "model/inventory/inventory.h"

#include <algorithm>

#include "bsp_pon.h"
#include "catalogue.h"
#include "generated/service_words.h"
#include "model/alarm/alarms.h"
#include "model/base/random.h"
#include "model/base/text.h"
#include "model/lifecycle/admission.h"
#include "model/lifecycle/authentication.h"
#include "model/lifecycle/registration.h"
#include "model/olt/demand.h"
#include "model/olt/remote.h"
#include "model/plant/fibre.h"
#include "model/plant/plugging.h"
#include "model/port/sla.h"

namespace ponsim
{
namespace
{

std::string at_port(uint32_t pon_port)
{
    return "PON port " + std::to_string(pon_port);
}

std::string brief_of(uint32_t status)
{
    const catalogue::Status *known = catalogue::find_status(status);
    return known ? std::string(known->brief) : "status " + std::to_string(status);
}

bool is_own(const std::vector<Branch> &branches, const std::vector<Arrival> &arrivals, uint32_t branch)
{
    return branches[branch].name.empty() || std::ranges::count(arrivals, branch, &Arrival::branch) > 0;
}

// Returns how many more fibres can begin at the end of a branch. The fibre of an ONU that leaves is taken away.
uint32_t room_at(const std::vector<Branch> &branches, const std::vector<Arrival> &arrivals, uint32_t branch)
{
    uint32_t taken = 0;
    for (uint32_t other = 0; other < branches.size(); ++other) {
        if (branches[other].parent != branch || branches[other].name.empty()) continue;
        const auto is_there = [&](const Arrival &arrival) { return arrival.branch == other && !arrival.unplugged; };
        taken += !is_own(branches, arrivals, other) || std::ranges::any_of(arrivals, is_there);
    }
    return ways_of(branches[branch]) - std::min(ways_of(branches[branch]), taken);
}

PluggedOnu plugged_of(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    const PluggedOnu *before = nullptr;
    if (const auto found = olt.kept<PluggedOnu>().find({port.number, arrival.mac});
        found != olt.kept<PluggedOnu>().end())
        before = &found->second;
    const Branch &fibre = port.branches.at(arrival.branch);
    return {.branch = fibre.parent.value_or(0),
            .fibre = arrival.branch,
            .length = fibre.length,
            .name = fibre.name,
            .loid = arrival.loid,
            .password = arrival.password,
            .kind = before ? before->kind : std::string(),
            .silent = arrival.silent,
            .in_use = olt.equipment_of(arrival.mac).in_use,
            .load_up = arrival.load_up,
            .load_down = arrival.load_down};
}

} // namespace

bool is_onus_own(const PonPort &port, uint32_t branch)
{
    return is_own(port.branches, port.arrivals, branch);
}

Inventory::Draft &Inventory::draft_of(uint32_t pon_port)
{
    const auto [found, is_new] = drafts.try_emplace(pon_port);
    if (is_new) {
        const PonPort &port = *olt.port(pon_port);
        found->second = {port.branches, port.arrivals, ids_of(port.bindings)};
        for (const auto &[loid, password] : port.authentication.records)
            found->second.loids.insert(loid);
    }
    return found->second;
}

const Arrival &Inventory::arrival_of(uint32_t pon_port, const Mac &mac)
{
    const Draft &draft = draft_of(pon_port);
    const auto found = std::ranges::find(draft.arrivals, mac, &Arrival::mac);
    if (found == draft.arrivals.end() || found->unplugged)
        throw InventoryError(text::mac_text(mac) + " is not at " + at_port(pon_port));
    return *found;
}

bool Inventory::is_known(const Mac &mac)
{
    if (olt.find(mac)) return true;
    for (const PonPort &port : olt.ports()) {
        const std::vector<Arrival> &arrivals =
            drafts.contains(port.number) ? drafts.at(port.number).arrivals : port.arrivals;
        if (std::ranges::count(arrivals, mac, &Arrival::mac) > 0) return true;
        if (olt.kept<PluggedOnu>().contains({port.number, mac})) return true;
    }
    return false;
}

// Returns the first ONU that follows from the seed and that is not known.
Arrival Inventory::newcomer(uint32_t pon_port)
{
    for (uint32_t number = onus_per_port;; ++number) {
        Arrival arrival = onu_of_number(olt.found(), pon_port, number);
        if (!is_known(arrival.mac)) return arrival;
    }
}

void Inventory::check_free(uint32_t pon_port, const Mac &mac)
{
    if (!is_station(mac)) throw InventoryError(text::mac_text(mac) + ": expected the address of one station");
    for (const PonPort &port : olt.ports()) {
        const std::vector<Arrival> &arrivals =
            drafts.contains(port.number) ? drafts.at(port.number).arrivals : port.arrivals;
        const auto found = std::ranges::find(arrivals, mac, &Arrival::mac);
        if (found == arrivals.end() || (found->unplugged && port.number != pon_port)) continue;
        throw InventoryError(text::mac_text(mac) + " is the address of " +
                             (found->name.empty() ? "an ONU" : found->name) + " at " + at_port(port.number) +
                             (found->unplugged ? ", whose link has not failed yet" : " already"));
    }
    const auto stays = [](const Arrival &arrival) { return !arrival.unplugged; };
    if (std::ranges::count_if(draft_of(pon_port).arrivals, stays) >= onus_per_port)
        throw InventoryError(at_port(pon_port) + " is full: it has " + std::to_string(onus_per_port) + " ONUs");
}

std::string Inventory::name_for(uint32_t pon_port, const std::string &wanted)
{
    const Draft &draft = draft_of(pon_port);
    const auto is_taken = [&](const std::string &name) {
        return std::ranges::any_of(
                   draft.arrivals,
                   [&](const Arrival &arrival) { return arrival.name == name && !arrival.unplugged; }) ||
               std::ranges::count(draft.branches, name, &Branch::name) > 0;
    };
    if (!wanted.empty()) {
        if (is_taken(wanted))
            throw InventoryError("there is a fibre " + wanted + " at " + at_port(pon_port) + " already");
        return wanted;
    }
    for (uint32_t number = 1;; ++number)
        if (const std::string name = "onu-" + std::to_string(number); !is_taken(name)) return name;
}

// Returns the branch that the ONU names. Without a name it is drawn from those with room, of which the ones that only
// lead to ONUs come first.
uint32_t Inventory::branch_for(uint32_t pon_port, const NewOnu &onu, const Mac &mac)
{
    const auto &[branches, arrivals, ids, loids, promised] = draft_of(pon_port);
    std::vector<uint32_t> with_room, last_with_room;
    std::string known;
    for (uint32_t branch = 0; branch < branches.size(); ++branch) {
        if (is_own(branches, arrivals, branch)) continue;
        const std::string &name = branches[branch].name;
        const uint32_t room = room_at(branches, arrivals, branch);
        if (name == onu.branch) {
            if (room > 0) return branch;
            const uint32_t ways = ways_of(branches[branch]);
            throw InventoryError(name + " of " + at_port(pon_port) +
                                 (ways == 1
                                      ? " has no splitter, and a fibre goes on from it"
                                      : " has a splitter, all " + std::to_string(ways) + " ends of which are taken"));
        }
        known += (known.empty() ? "" : ", ") + name;
        if (room == 0) continue;
        with_room.push_back(branch);
        bool is_last = true;
        for (uint32_t other = 0; other < branches.size(); ++other)
            is_last = is_last && (branches[other].parent != branch || is_own(branches, arrivals, other));
        if (is_last) last_with_room.push_back(branch);
    }
    if (!onu.branch.empty())
        throw InventoryError("there is no branch " + onu.branch + " at " + at_port(pon_port) + "; it has " + known);
    const std::vector<uint32_t> &choice = last_with_room.empty() ? with_room : last_with_room;
    if (choice.empty()) throw InventoryError("no splitter of " + at_port(pon_port) + " has an end that is free");
    Random random = random_for(olt.seed(), Purpose::places, mac);
    return choice[random.below(static_cast<uint32_t>(choice.size()))];
}

Inventory::Fibre Inventory::fibre_for(uint32_t pon_port, const NewOnu &onu, const Arrival &arrival)
{
    const uint32_t branch = branch_for(pon_port, onu, arrival.mac);
    const std::vector<Branch> &branches = draft_of(pon_port).branches;
    const FibreEnd from = end_of(branches, branch);
    if (from.depth == deepest_fibre)
        throw InventoryError(branches[branch].name + ": expected at most " + std::to_string(deepest_fibre) +
                             " fibres one behind the other");
    const uint32_t length = onu.length.value_or(drop_of(arrival, from.distance));
    const uint32_t distance = from.distance + length;
    if (distance > max_distance)
        throw InventoryError("out of reach: expected a distance from the OLT of at most " +
                             std::to_string(max_distance) + " m, found " + std::to_string(distance));
    if (from.loss + 2 * connector_loss + fibre_loss(distance, Direction::up) > greatest_loss)
        throw InventoryError("out of reach: expected a loss of at most " + std::to_string(greatest_loss / 100) +
                             " dB to the OLT");
    auto number = static_cast<uint32_t>(olt.found_at(pon_port).branches.size());
    const auto is_taken = [&] { return number < branches.size() && !branches[number].name.empty(); };
    while (is_taken())
        ++number;
    return {branch, number, length};
}

void Inventory::unplug(uint32_t pon_port, const Arrival &arrival, Plugged state)
{
    PluggedOnu onu = plugged_of(olt, *olt.port(pon_port), arrival);
    onu.state = state;
    planned.put<PluggedOnu>({pon_port, arrival.mac}, onu);
    std::vector<Arrival> &arrivals = draft_of(pon_port).arrivals;
    std::ranges::find(arrivals, arrival.mac, &Arrival::mac)->unplugged = true;
}

void Inventory::plug_in(uint32_t pon_port, const Mac &mac, const PluggedOnu &onu)
{
    planned.put<PluggedOnu>({pon_port, mac}, onu);
    Draft &draft = draft_of(pon_port);
    if (draft.branches.size() <= onu.fibre) draft.branches.resize(onu.fibre + 1);
    draft.branches[onu.fibre] = {onu.name, onu.branch, onu.length, 2 * connector_loss};
    Arrival arrival{mac, 0, onu.silent, onu.loid, onu.password};
    arrival.branch = onu.fibre;
    arrival.name = onu.name;
    std::erase_if(draft.arrivals, [&](const Arrival &other) { return other.mac == mac; });
    draft.arrivals.push_back(std::move(arrival));
}

// Switches an ONU on that was plugged in. What the port has of it stays.
void Inventory::start(const PonPort &port, const Mac &mac, const OnuRecord &device)
{
    OnuRecord record = device;
    const OnuRecord before = port.record(mac);
    record.supported = before.supported;
    record.upgrade_type = before.upgrade_type;
    record.reboots = before.reboots;
    record.powered = true;
    record.up = {};
    record.down = {};
    planned.put<OnuRecord>({port.number, mac}, record);
    boot(olt, port, mac, planned);
}

void Inventory::provision(uint32_t pon_port, const Mac &mac, const PluggedOnu &onu, const ServiceTerms &service,
                          std::optional<uint32_t> id)
{
    if (id && !service.bound) throw InventoryError("id: expected with a service that binds the ONU");
    Draft &draft = draft_of(pon_port);
    if (service.authenticated) {
        draft.loids.insert(onu.loid);
        if (draft.loids.size() > max_auth_records)
            throw InventoryError(at_port(pon_port) + ": " + brief_of(PON_ERR_TABLE_FULL));
        planned.put<LoidPassword>({pon_port, onu.loid}, {onu.password});
    }
    if (!service.bound) return;
    if (!id) id = lowest_free(draft.ids);
    if (!id) throw InventoryError(at_port(pon_port) + ": " + brief_of(PON_ERR_PORT_FULL));
    if (*id < onus_per_port && draft.ids[*id])
        throw InventoryError("ONU id " + std::to_string(*id) + " of " + at_port(pon_port) + " is taken already");
    Binding binding{.mac = mac, .mode = 0, .text_a = {}, .text_b = {}, .text_c = {}};
    binding.description = service.description;
    binding.sla = service.sla;
    binding.sla_down = service.down;
    if (olt.find(mac)) throw InventoryError(text::mac_text(mac) + ": " + brief_of(PON_ERR_ALREADY_BOUND));
    const Plan plan = bind_onu(olt, pon_port, id, binding);
    if (plan.status != BSP_OK) throw InventoryError(text::mac_text(mac) + ": " + brief_of(plan.status));
    draft.ids.set(*id);
    if (service.sla) draft.promised += service.sla->fixed + service.sla->assured;
    const PonPort &port = *olt.port(pon_port);
    const Granted granted = granted_at(olt, port);
    const uint32_t capacity = admissible(mpcp_of(olt, pon_port), static_cast<uint32_t>(draft.ids.count()));
    if (granted.fixed + granted.assured + draft.promised > capacity)
        throw InventoryError(at_port(pon_port) + ": " + brief_of(PON_ERR_SLA_CAPACITY));
    planned.add(plan.change);
}

void Inventory::arrive(uint32_t pon_port, const NewOnu &onu)
{
    Arrival drawn = newcomer(pon_port);
    drawn.mac = onu.mac.value_or(drawn.mac);
    check_free(pon_port, drawn.mac);
    const ServiceTerms *service = nullptr;
    if (!onu.service.empty()) {
        if (olt.topology())
            if (const auto found = olt.topology()->services.find(onu.service); found != olt.topology()->services.end())
                service = &found->second;
        if (!service) throw InventoryError("the scenario has no service " + onu.service);
    } else if (onu.id) {
        throw InventoryError("id: expected with a service that binds the ONU");
    }
    if (!onu.kind.empty() && !olt.kind(onu.kind))
        throw InventoryError(onu.kind + " is neither a kind of the scenario nor a built-in model");
    PluggedOnu plugged;
    plugged.name = name_for(pon_port, onu.name);
    const Fibre fibre = fibre_for(pon_port, onu, drawn);
    plugged.branch = fibre.branch;
    plugged.fibre = fibre.number;
    plugged.length = fibre.length;
    plugged.loid = onu.loid.empty() ? drawn.loid : onu.loid;
    plugged.password = onu.password.value_or(drawn.password);
    plugged.kind = onu.kind;
    plugged.silent = onu.silent.value_or(false);
    plugged.in_use = onu.in_use.value_or(service != nullptr);
    if (service) {
        plugged.load_up = service->load_up;
        plugged.load_down = service->load_down;
    }
    plug_in(pon_port, drawn.mac, plugged);
    start(*olt.port(pon_port), drawn.mac, {});
    if (service) provision(pon_port, drawn.mac, plugged, *service, onu.id);
}

void Inventory::leave(uint32_t pon_port, const Mac &mac)
{
    unplug(pon_port, Arrival(arrival_of(pon_port, mac)), Plugged::leaving);
}

// The ONU comes with what it has: its software and its age, what it has received and who uses it.
void Inventory::carry_over(const PonPort &from, const PonPort &to, const Mac &mac)
{
    const auto &settings = olt.kept<OnuSetting>();
    const auto each_of = [&](uint32_t pon_port, auto visit) {
        for (auto at = settings.lower_bound({pon_port, mac, 0, 0});
             at != settings.end() && at->first.pon_port == pon_port && at->first.mac == mac; ++at)
            visit(at->first, at->second);
    };
    each_of(to.number, [&](const SettingKey &key, const OnuSetting &) { planned.drop<OnuSetting>(key); });
    each_of(from.number, [&](SettingKey key, const OnuSetting &setting) {
        const std::string &has = olt.has_come(setting.arrives) ? setting.sent : setting.before;
        key.pon_port = to.number;
        planned.put<OnuSetting>(key, {has, has, olt.now()});
    });
    if (olt.ledger({from.number, mac})) planned.put<Ledger>({to.number, mac}, ledger_from(olt.now()));
    const auto &devices = olt.kept<PluggedDevice>();
    for (auto at = devices.lower_bound({from.number, mac, 0});
         at != devices.end() && at->first.pon_port == from.number && at->first.mac == mac; ++at)
        planned.put<PluggedDevice>({to.number, mac, at->first.uni}, at->second);
}

void Inventory::move(uint32_t pon_port, const Mac &mac, uint32_t to, const NewOnu &place)
{
    const Arrival arrival = arrival_of(pon_port, mac);
    const PonPort &from = *olt.port(pon_port);
    const PonPort &target = *olt.port(to);
    PluggedOnu plugged = plugged_of(olt, from, arrival);
    OnuRecord device = from.record(mac);
    if (to == pon_port) {
        if (olt.online(from, mac))
            raise(olt, alarm_key(from, mac, Alarm::los), {AlarmCause::fibre, arrival.branch}, planned);
        Draft &draft = draft_of(pon_port);
        draft.branches.at(arrival.branch).name.clear();
        std::erase_if(draft.arrivals, [&](const Arrival &other) { return other.mac == mac; });
        planned.drop<Damage>({pon_port, arrival.branch});
    } else {
        unplug(pon_port, arrival, Plugged::leaving);
        check_free(to, mac);
        carry_over(from, target, mac);
    }
    plugged.name = name_for(to, place.name.empty() ? arrival.name : place.name);
    const Fibre fibre = fibre_for(to, place, arrival);
    plugged.branch = fibre.branch;
    plugged.fibre = fibre.number;
    plugged.length = fibre.length;
    plug_in(to, mac, plugged);
    start(target, mac, device);
}

void Inventory::swap(uint32_t pon_port, const Mac &mac, const NewOnu &other)
{
    const Arrival arrival = arrival_of(pon_port, mac);
    Arrival drawn = newcomer(pon_port);
    drawn.mac = other.mac.value_or(drawn.mac);
    PluggedOnu plugged = plugged_of(olt, *olt.port(pon_port), arrival);
    unplug(pon_port, arrival, Plugged::leaving);
    check_free(pon_port, drawn.mac);
    if (!other.kind.empty() && !olt.kind(other.kind))
        throw InventoryError(other.kind + " is neither a kind of the scenario nor a built-in model");
    plugged.kind = other.kind;
    plugged.loid = other.loid.empty() ? drawn.loid : other.loid;
    plugged.password = other.password.value_or(drawn.password);
    plugged.silent = false;
    plug_in(pon_port, drawn.mac, plugged);
    start(*olt.port(pon_port), drawn.mac, {});
}

Change plug_device(const Olt &olt, const UniKey &key, const std::optional<LinkMode> &device)
{
    if (olt.device_of(key.mac).unis.at(key.uni - 1).partner == device) return removal_of<PluggedDevice>(key);
    return change_of<PluggedDevice>(key, device ? PluggedDevice{device->speed, device->full_duplex} : PluggedDevice{});
}

} // namespace ponsim
