#include "model/lifecycle/upgrade.h"

#include <algorithm>
#include <utility>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/lifecycle/admission.h"
#include "model/lifecycle/images.h"
#include "model/lifecycle/registration.h"
#include "model/olt/bound.h"

namespace ponsim
{
namespace
{

using State = UpgradeRun::State;
using Reason = UpgradeRun::Reason;

Plan refuse(uint32_t status)
{
    return {status};
}

bool in_use(const Olt &olt, const std::string &type)
{
    return std::ranges::any_of(olt.ports(), [&type](const PonPort &port) {
        const auto uses = [&](const auto &entry) { return port.upgrades.find(entry.second)->type == type; };
        return std::ranges::any_of(port.upgrades.stepping(), uses) || std::ranges::any_of(port.upgrades.queued(), uses);
    });
}

Entry<Block> port_entry(uint32_t pon_port, const std::string &name)
{
    return block_at({BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_BIND_PORT, pon_port, 0},
                    name.empty() ? std::nullopt : std::optional(name));
}

const std::string *type_of_port(const Olt &olt, uint32_t pon_port)
{
    return olt.block(BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_BIND_PORT, pon_port);
}

// Returns the name of the type that applies to an ONU. The name is empty when no type applies.
std::string type_of(const Olt &olt, const PonPort &port, const Mac &mac)
{
    const std::string own = port.record(mac).upgrade_type;
    if (!own.empty()) return own;
    const std::string *name = type_of_port(olt, port.number);
    return name ? *name : std::string();
}

bool is_full(const PonPort &port, const Mac &mac)
{
    return !port.onus.contains(mac) && port.onus.size() >= max_onu_records;
}

bool fits(const UpgradeType &type, const DeviceType &device)
{
    return type.vendor == device.vendor && type.model == device.model;
}

// Returns the name of the type that has this file and fits the device. When none fits, returns that of another type
// with the file, or an empty name when there is none.
std::string type_with_file(const Olt &olt, const std::string &file, const DeviceType &device)
{
    std::string found;
    for (const auto &[name, type] : olt.upgrade_types()) {
        if (type.file != file) continue;
        if (fits(type, device)) return name;
        found = name;
    }
    return found;
}

// A Start is a run of a bound ONU with the type of this name, as it begins, or the reason why it cannot begin.
struct Start {
    uint32_t status;
    UpgradeRun run;
};

Start start_of(const Olt &olt, const PonPort &port, const Binding &binding, const std::string &name)
{
    if (!port.online(binding)) {
        const bool reboots = port.upgrades.rebooting(binding.mac);
        return {reboots ? PON_ERR_UPGRADING : PON_ERR_OFFLINE, {}};
    }
    const UpgradeRun *last = port.upgrades.find(binding.mac);
    if (last && last->under_way()) return {PON_ERR_UPGRADING, {}};
    const auto found = olt.upgrade_types().find(name);
    if (found == olt.upgrade_types().end()) return {PON_ERR_NO_UPGRADE_TYPE, {}};
    const UpgradeType &type = found->second;
    const Device device = device_at(olt, port, binding.mac);
    if (!fits(type, *device.type)) return {PON_ERR_WRONG_UPGRADE_TYPE, {}};
    if (type.version == device.software) return {PON_ERR_UP_TO_DATE, {}};
    return {BSP_OK, {name, type.version, type.size, State::queued, olt.now()}};
}

Plan start_one(const PonPort &port, const Binding &binding, Start start)
{
    if (start.status != BSP_OK) return refuse(start.status);
    if (port.upgrades.downloads() < max_downloads) start.run.state = State::downloading;
    return {BSP_OK, change_of<UpgradeRun>({port.number, binding.mac}, start.run)};
}

// Returns why a run cannot go on. The reboot that is part of the run does not count.
Reason hindrance(const Olt &olt, const PonPort &port, const Mac &mac)
{
    if (port.refuses(mac)) return Reason::rejected;
    const std::optional<uint32_t> onu_id = olt.id_at(port.number, mac);
    if (!onu_id) return Reason::released;
    const Arrival *arrival = port.ranged(mac);
    const bool works = arrival && port.state_rebooted(*port.bindings[*onu_id], *arrival) == OnuState::online;
    return works ? Reason::none : Reason::offline;
}

// Returns the run in another state, from now on.
UpgradeRun moved(const Olt &olt, UpgradeRun run, State state)
{
    run.state = state;
    run.since = olt.now();
    return run;
}

UpgradeRun failed(const Olt &olt, const UpgradeRun &run, Reason reason)
{
    UpgradeRun result = moved(olt, run, State::failed);
    result.reason = reason;
    return result;
}

// As many downloads as `places` have ended. The first runs that wait and can go on take their places.
void start_next(const Olt &olt, const PonPort &port, uint32_t places, Change &change)
{
    for (const auto &[since, mac] : port.upgrades.queued()) {
        if (places == 0) return;
        const UpgradeRun &run = *port.upgrades.find(mac);
        const Reason reason = hindrance(olt, port, mac);
        const bool good = reason == Reason::none;
        change.put<UpgradeRun>({port.number, mac},
                               good ? moved(olt, run, State::downloading) : failed(olt, run, reason));
        places -= good;
    }
}

UpgradeRun step(const Olt &olt, const PonPort &port, const Mac &mac, Change &change)
{
    const UpgradeRun &run = *port.upgrades.find(mac);
    if (const Reason reason = hindrance(olt, port, mac); reason != Reason::none) return failed(olt, run, reason);
    OnuRecord record = port.record(mac);
    switch (run.state) {
    case State::downloading:
        return moved(olt, run, State::verifying);
    case State::verifying:
        return record.bad_image ? failed(olt, run, Reason::verification) : moved(olt, run, State::rebooting);
    default:
        start_upgraded(olt, port, mac, run, record, change);
        ++record.reboots;
        change.put<OnuRecord>({port.number, mac}, record);
        begin_registration(olt, port, mac, olt.now(), change);
        return moved(olt, run, State::done);
    }
}

std::optional<ModelTime> next_step(const Olt &olt)
{
    std::optional<ModelTime> first;
    for (const PonPort &port : olt.ports()) {
        const UpgradeRuns::Times &times = port.upgrades.stepping();
        if (!times.empty() && (!first || times.begin()->first < *first)) first = times.begin()->first;
    }
    return first;
}

// Takes a step of one run of each port at a time, because the order of steps decides which download takes whose place.
Change take_steps(const Olt &olt)
{
    Change change;
    for (const PonPort &port : olt.ports()) {
        const UpgradeRuns::Times &times = port.upgrades.stepping();
        if (times.empty() || times.begin()->first > olt.now()) continue;
        const Mac &mac = times.begin()->second;
        if (port.upgrades.find(mac)->state == State::downloading) start_next(olt, port, 1, change);
        change.put<UpgradeRun>({port.number, mac}, step(olt, port, mac, change));
    }
    return change;
}

uint32_t percent_of(const Olt &olt, const UpgradeRun &run)
{
    if (run.state == State::queued) return 0;
    if (run.state != State::downloading) return 100;
    return static_cast<uint32_t>((olt.now() - run.since) * 100 / download_time(run.size));
}

} // namespace

const Process upgrade_process{next_step, take_steps};

Plan add_upgrade_types(const Olt &olt, const UpgradeTypes &types)
{
    Plan plan{BSP_OK};
    size_t count = olt.upgrade_types().size();
    for (const auto &[name, type] : types) {
        const auto found = olt.upgrade_types().find(name);
        if (found == olt.upgrade_types().end())
            ++count;
        else if (found->second == type)
            continue;
        else if (in_use(olt, name))
            return refuse(PON_ERR_UPGRADE_TYPE_IN_USE);
        plan.change.put<UpgradeType>(name, type);
    }
    return count <= max_upgrade_types ? plan : refuse(PON_ERR_TABLE_FULL);
}

Plan delete_upgrade_type(const Olt &olt, const std::string &name)
{
    if (!olt.upgrade_types().contains(name)) return refuse(PON_ERR_NO_UPGRADE_TYPE);
    if (in_use(olt, name)) return refuse(PON_ERR_UPGRADE_TYPE_IN_USE);
    Plan plan{BSP_OK, removal_of<UpgradeType>(name)};
    for (const PonPort &port : olt.ports()) {
        const std::string *bound = type_of_port(olt, port.number);
        if (bound && *bound == name) plan.change.add(port_entry(port.number, {}));
        for (const auto &[mac, record] : port.onus) {
            if (record.upgrade_type != name) continue;
            OnuRecord without = record;
            without.upgrade_type.clear();
            plan.change.put<OnuRecord>({port.number, mac}, without);
        }
    }
    return plan;
}

Plan bind_upgrade_type(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids, const std::string &name)
{
    const PonPort *port = olt.port(pon_port);
    if (const uint32_t status = check_bound(port, onu_ids)) return refuse(status);
    if (!name.empty() && !olt.upgrade_types().contains(name)) return refuse(PON_ERR_NO_UPGRADE_TYPE);
    Plan plan{BSP_OK};
    size_t count = port->onus.size();
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
        if (!onu_ids[onu_id]) continue;
        const Mac &mac = port->bindings[onu_id]->mac;
        OnuRecord record = port->record(mac);
        if (record.upgrade_type == name) continue;
        record.upgrade_type = name;
        count += !port->onus.contains(mac);
        plan.change.put<OnuRecord>({pon_port, mac}, record);
    }
    return count <= std::max(max_onu_records, port->onus.size()) ? plan : refuse(PON_ERR_TABLE_FULL);
}

Plan bind_upgrade_type(const Olt &olt, uint32_t pon_port, const std::string &name)
{
    if (!olt.port(pon_port)) return refuse(PON_ERR_NO_PORT);
    if (!name.empty() && !olt.upgrade_types().contains(name)) return refuse(PON_ERR_NO_UPGRADE_TYPE);
    return {BSP_OK, change_of(port_entry(pon_port, name))};
}

Plan upgrade_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id)
{
    const Named onu = find_bound(olt, pon_port, onu_id, {});
    if (onu.status != BSP_OK) return refuse(onu.status);
    const PonPort &port = *olt.port(pon_port);
    const Binding &binding = *port.bindings[onu_id];
    return start_one(port, binding, start_of(olt, port, binding, type_of(olt, port, binding.mac)));
}

Plan upgrade_onu_with(const Olt &olt, const PonPort &port, const Binding &binding, const std::string &file)
{
    const std::string name = type_with_file(olt, file, *olt.device_of(binding.mac).type);
    return start_one(port, binding, start_of(olt, port, binding, name));
}

Plan upgrade_port(const Olt &olt, uint32_t pon_port)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return refuse(PON_ERR_NO_PORT);
    Plan plan{BSP_OK};
    uint32_t downloads = port->upgrades.downloads();
    for (const std::optional<Binding> &binding : port->bindings) {
        if (!binding) continue;
        Start start = start_of(olt, *port, *binding, type_of(olt, *port, binding->mac));
        if (start.status != BSP_OK) continue;
        if (downloads < max_downloads) {
            start.run.state = State::downloading;
            ++downloads;
        }
        plan.change.put<UpgradeRun>({pon_port, binding->mac}, start.run);
    }
    return plan.change.empty() ? refuse(PON_ERR_NOTHING_TO_UPGRADE) : plan;
}

Plan set_bad_image(const Olt &olt, uint32_t pon_port, const Mac &mac, bool bad)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return refuse(PON_ERR_NO_PORT);
    if (!is_station(mac)) return refuse(PON_ERR_BAD_MAC);
    OnuRecord record = port->record(mac);
    if (record.bad_image == bad) return {BSP_OK};
    if (is_full(*port, mac)) return refuse(PON_ERR_TABLE_FULL);
    record.bad_image = bad;
    return {BSP_OK, change_of<OnuRecord>({pon_port, mac}, record)};
}

void interrupt_runs(const Olt &olt, const PonPort &port, std::span<const Mac> macs, Change &change)
{
    uint32_t places = 0;
    for (const Mac &mac : macs) {
        const UpgradeRun *run = port.upgrades.find(mac);
        if (!run || (run->state != State::downloading && run->state != State::verifying)) continue;
        places += run->state == State::downloading;
        change.put<UpgradeRun>({port.number, mac}, failed(olt, *run, Reason::rebooted));
    }
    start_next(olt, port, places, change);
}

UpgradeProgress upgrade_progress(const Olt &olt, const PonPort &port, const Mac &mac)
{
    constexpr std::string_view states[] = {"queued", "downloading", "verifying", "rebooting", "done", "failed"};
    constexpr std::string_view reasons[] = {"", "offline", "released", "rejected", "verification", "rebooted"};
    UpgradeProgress result;
    if (const std::string type = type_of(olt, port, mac); !type.empty()) result.type = type;
    const UpgradeRun *run = port.upgrades.find(mac);
    if (!run) return result;
    result.state = states[static_cast<size_t>(run->state)];
    if (run->state == State::failed)
        result.reason = reasons[static_cast<size_t>(run->reason)];
    else
        result.progress = percent_of(olt, *run);
    return result;
}

} // namespace ponsim
