#include "exporting/export.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <type_traits>

#include "model/inventory/inventory.h"
#include "model/lifecycle/authentication.h"
#include "model/olt/demand.h"
#include "model/plant/fibre.h"
#include "model/plant/plugging.h"
#include "scenario/summary.h"
#include "text/hex.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

constexpr std::string_view auth_words[] = {"mac", "loid", "loid+password", "mac-or-loid"}; // in the order of AuthMode
constexpr size_t longest_description = 127;
constexpr uint32_t most_times = 10000; // that an event of a scenario can be repeated

std::string in_quotes(std::string_view value)
{
    std::string text = "\"";
    for (const char byte : value) {
        if (byte == '"' || byte == '\\') text += '\\';
        text += byte;
    }
    return text + '"';
}

template <class Value>
std::string line(std::string_view key, const Value &value)
{
    const std::string begin = std::string(key) + " = ";
    if constexpr (std::is_same_v<Value, bool>)
        return begin + (value ? "true\n" : "false\n");
    else if constexpr (std::is_integral_v<Value>)
        return begin + std::to_string(value) + '\n';
    else
        return begin + in_quotes(value) + '\n';
}

// Writes a name as a part of a table's name.
std::string table_key(const std::string &name)
{
    return name.find('.') == std::string::npos ? name : in_quotes(name);
}

// Returns everything of a kind but its optics.
auto nature_of(const DeviceType &type)
{
    return std::tie(type.vendor, type.model, type.chipset, type.ge_ports, type.fe_ports, type.pots_ports,
                    type.us_queues, type.fec, type.battery, type.igmp_snooping, type.multicast_control, type.fast_leave,
                    type.vlan_translation, type.vlan_trunk);
}

std::string kind_text(const std::string &name, const DeviceType &type)
{
    std::string text = "\n[kind." + table_key(name) + "]\n";
    const auto is_same = [&](const DeviceType &other) { return nature_of(other) == nature_of(type); };
    DeviceType known;
    if (const auto same = std::ranges::find_if(device_types(), is_same); same != device_types().end()) {
        known = *same;
        text += line("model", type.model);
    } else {
        text += line("vendor", type.vendor) + line("model", type.model);
        if (!type.chipset.empty()) text += line("chipset", type.chipset);
        text += line("ge_ports", type.ge_ports) + line("fe_ports", type.fe_ports) +
                line("pots_ports", type.pots_ports) + line("us_queues", type.us_queues);
        for (const auto &[key, value] : {std::pair{"fec", type.fec},
                                         {"battery", type.battery},
                                         {"igmp_snooping", type.igmp_snooping},
                                         {"multicast_control", type.multicast_control},
                                         {"fast_leave", type.fast_leave},
                                         {"vlan_translation", type.vlan_translation},
                                         {"vlan_trunk", type.vlan_trunk}})
            text += line(key, value);
    }
    if (type.optics) text += line("class", type.optics->name);
    if (type.boot != known.boot || type.boot_spread != known.boot_spread)
        text += line("boot", text::time_text(type.boot)) + line("boot_spread", text::time_text(type.boot_spread));
    return text;
}

std::string service_text(const std::string &name, const ServiceTerms &terms)
{
    std::string text = "\n[service." + table_key(name) + "]\n";
    if (!terms.bound) text += line("bound", false);
    if (terms.authenticated) text += line("auth", true);
    if (terms.sla)
        text += line("fixed", terms.sla->fixed) + line("assured", terms.sla->assured) +
                line("maximum", terms.sla->maximum) + line("priority", terms.sla->priority) +
                line("weight", terms.sla->weight);
    if (terms.down) text += line("down", *terms.down);
    if (!terms.description.empty()) text += line("description", terms.description);
    if (terms.load_up) text += line("load_up", *terms.load_up);
    if (terms.load_down) text += line("load_down", *terms.load_down);
    return text;
}

// What an ONU that is not bound would have been bound with does not show.
ServiceTerms what_shows(ServiceTerms terms)
{
    if (!terms.bound) {
        terms.sla.reset();
        terms.down.reset();
        terms.description.clear();
    }
    return terms;
}

// An Exporter writes one OLT.
class Exporter
{
public:
    explicit Exporter(const Olt &exported) : olt(exported)
    {
        if (const Topology *topology = olt.topology()) {
            for (const auto &[name, kind] : topology->kinds)
                kinds.emplace(name, *kind);
            services = topology->services;
        }
    }

    std::string write(std::span<const Event> upcoming)
    {
        if (olt.found().seed > static_cast<uint64_t>(INT64_MAX))
            throw ExportError("the seed of the OLT is greater than scenarios can say");
        const std::string ports = ports_text(); // which finds the kinds and services
        const bool cold = all_boot();
        count_others(cold);
        std::string text =
            "# This scenario was written by a running OLT, whose time, counters and alarms begin anew.\n";
        if (!left_out.empty()) text += "# It does not say:\n";
        for (const auto &[what, count] : left_out)
            text += "# - " + what + ": " + std::to_string(count) + '\n';
        if (cold) text += "\n" + line("start", "cold");
        for (const auto &[name, kind] : kinds)
            text += kind_text(name, kind);
        for (const auto &[name, service] : services)
            text += service_text(name, service);
        text += "\n[[olt]]\n" + line("name", olt.found().olt.empty() ? "olt" : olt.found().olt) +
                line("ports", olt.ports().size()) + line("seed", olt.found().seed) + ports;
        std::vector<Event> events = events_of_state();
        events.insert(events.end(), upcoming.begin(), upcoming.end());
        return text + events_text(events);
    }

    // Counts what the text does not say.
    void leave_out(const std::string &what, size_t count = 1)
    {
        if (count == 0) return;
        const auto found = std::ranges::find(left_out, what, &std::pair<std::string, size_t>::first);
        if (found != left_out.end())
            found->second += count;
        else
            left_out.emplace_back(what, count);
    }

private:
    std::string ports_text()
    {
        std::string text;
        for (const PonPort &port : olt.ports())
            text += port_text(port);
        return text;
    }

    std::string port_text(const PonPort &port)
    {
        const bool usual = port.optics == &usual_class();
        const std::vector<Branch> undescribed = {found_feeder()};
        const auto mode = static_cast<size_t>(port.authentication.mode);
        std::string text = "\n[[olt.port]]\n" + line("number", port.number);
        if (usual && mode == 0 && port.arrivals.empty() && port.branches == undescribed) return {};
        if (!usual) text += line("class", port.optics->name);
        if (mode != 0) text += line("auth", auth_words[mode]);
        for (uint32_t branch = 0; branch < port.branches.size(); ++branch)
            if (!is_onus_own(port, branch)) text += branch_text(port, port.branches[branch]);
        std::vector<const Arrival *> onus;
        for (const Arrival &arrival : port.arrivals)
            if (!arrival.unplugged) onus.push_back(&arrival);
        std::ranges::sort(onus, {}, [](const Arrival *onu) { return onu->branch; });
        uint32_t bound = 0;
        for (const Arrival *onu : onus)
            bound += olt.id_at(port.number, onu->mac).has_value();
        uint32_t free = admissible({}, bound); // kbit/s that can be promised
        for (const Arrival *onu : onus)
            text += onu_text(port, *onu, free);
        return text;
    }

    static std::string branch_text(const PonPort &port, const Branch &branch)
    {
        std::string text = "\n[[olt.port.branch]]\n" + line("name", branch.name);
        if (branch.parent) text += line("from", port.branches.at(*branch.parent).name);
        text += line("length", branch.length);
        if (const uint32_t ways = ways_of(branch); ways > 1) text += line("split", ways);
        return text;
    }

    std::string onu_text(const PonPort &port, const Arrival &onu, uint32_t &free)
    {
        const Branch &fibre = port.branches.at(onu.branch);
        std::string text = "\n[[olt.port.onu]]\n" + line("name", fibre.name) + line("mac", text::mac_text(onu.mac)) +
                           line("branch", port.branches.at(fibre.parent.value()).name) + line("drop", fibre.length) +
                           line("loid", onu.loid) + line("password", onu.password);
        const Equipment equipment = olt.equipment_of(onu.mac);
        if (equipment.kind) text += line("kind", kind_of(*equipment.kind));
        const std::optional<std::string> service = service_of(port, onu, free);
        if (service) text += line("service", *service);
        if (const std::optional<uint32_t> id = olt.id_at(port.number, onu.mac)) text += line("id", *id);
        if (onu.silent) text += line("silent", true);
        if (equipment.in_use != service.has_value()) text += line("in_use", equipment.in_use);
        return text;
    }

    std::string kind_of(const DeviceType &type)
    {
        if (const Topology *topology = olt.topology())
            for (const auto &[name, kind] : topology->kinds)
                if (kind == &type) return name;
        kinds.emplace(type.model, type); // it is one that the simulator knows
        return std::string(type.model);
    }

    // Returns the name of the service that an ONU has. Returns none when it has nothing that a service says.
    std::optional<std::string> service_of(const PonPort &port, const Arrival &onu, uint32_t &free)
    {
        const OnuRecord record = port.record(onu.mac);
        const auto &records = port.authentication.records;
        const auto known = records.find(onu.loid);
        ServiceTerms terms{.bound = false};
        terms.authenticated = known != records.end() && known->second == onu.password;
        terms.load_up = record.load_up ? record.load_up : onu.load_up;
        terms.load_down = record.load_down ? record.load_down : onu.load_down;
        if (const std::optional<uint32_t> id = olt.id_at(port.number, onu.mac)) {
            const Binding &binding = *port.bindings[*id];
            terms.bound = true;
            terms.sla = binding.sla;
            terms.down = binding.sla_down;
            terms.description = binding.description;
            if (terms.description.size() > longest_description) terms.description.clear();
            const uint32_t promised = terms.sla ? terms.sla->fixed + terms.sla->assured : 0;
            if (promised > free) {
                leave_out("upstream SLAs beyond what a new OLT can promise");
                terms.sla.reset();
            } else {
                free -= promised;
            }
        }
        if (terms == ServiceTerms{.bound = false}) return std::nullopt;
        for (const auto &[name, service] : services)
            if (what_shows(service) == terms) return name;
        uint32_t number = 1;
        while (services.contains("service-" + std::to_string(number)))
            ++number;
        return services.emplace("service-" + std::to_string(number), terms).first->first;
    }

    // Returns what events can say of the state, as events that happen at once.
    std::vector<Event> events_of_state() const
    {
        std::vector<Event> events;
        const auto add = [&](const std::string &words) { events.push_back({olt.now(), words}); };
        for (const Module &module : olt.modules())
            if (const uint32_t hours = module.record().added_hours; hours != 0)
                add("age " + std::to_string(module.cage()) + ' ' + std::to_string(hours));
        for (const PonPort &port : olt.ports()) {
            const std::string number = ' ' + std::to_string(port.number) + ' ';
            if (const int32_t dimmed = olt.module(port.number)->record().dimmed; dimmed != 0)
                add("dim" + number + to_db(dimmed));
            for (const auto &[branch, loss] : port.damage) {
                const std::string &name = port.branches.at(branch).name;
                add(loss >= cut_loss ? "cut" + number + name : "bend" + number + name + ' ' + to_db(loss));
            }
            for (const Arrival &arrival : port.arrivals)
                if (!arrival.unplugged) add_events(port, arrival, events);
        }
        return events;
    }

    void add_events(const PonPort &port, const Arrival &arrival, std::vector<Event> &events) const
    {
        const std::string onu = ' ' + std::to_string(port.number) + ' ' + port.branches.at(arrival.branch).name;
        const auto add = [&](const std::string &command, const std::string &words) {
            events.push_back({olt.now(), command + onu + words});
        };
        const OnuRecord record = port.record(arrival.mac);
        if (!record.powered) add("power", " off");
        if (record.rogue) add("rogue", " on");
        if (record.added_hours != 0) add("age-onu", ' ' + std::to_string(record.added_hours));
        if (record.flood != 0) add("flood", ' ' + std::to_string(record.flood));
        if (record.bad_image) add("upgrade-fault", " on");
        for (uint32_t uni = 1; uni <= max_unis; ++uni) {
            const UniKey key{port.number, arrival.mac, uni};
            const auto device = olt.kept<PluggedDevice>().find(key);
            if (device != olt.kept<PluggedDevice>().end()) {
                const auto &[speed, full_duplex] = device->second;
                if (speed == 0)
                    add("unplug", ' ' + std::to_string(uni));
                else
                    add("plug", ' ' + std::to_string(uni) + ' ' + to_text(LinkMode{speed, full_duplex}));
            }
            const LoopRecord *loop = olt.loop(key);
            if (loop && loop->looped && olt.id_at(port.number, arrival.mac))
                add("loop", ' ' + std::to_string(uni) + " on");
        }
    }

    // Returns whether the ONUs are being switched on together.
    bool all_boot() const
    {
        bool any = false;
        for (const PonPort &port : olt.ports())
            for (const Arrival &arrival : port.arrivals) {
                if (arrival.unplugged || !port.record(arrival.mac).powered) continue;
                if (port.record(arrival.mac).phase != Phase::booting) return false;
                any = true;
            }
        return any;
    }

    void count_others(bool cold)
    {
        for (const PonPort &port : olt.ports()) {
            for (const Arrival &arrival : port.arrivals)
                count_onu(port, arrival, cold);
            count_port(port);
        }
        for (const auto &[key, loop] : olt.loops()) {
            leave_out("UNI ports that loop detection has shut", loop.shut);
            leave_out("loops behind ONUs that are not bound", loop.looped && !olt.id_at(key.pon_port, key.mac));
        }
        leave_out("settings that ONUs have received", olt.kept<OnuSetting>().size());
        leave_out("settings of the OLT", olt.kept<Block>().size());
        leave_out("upgrade types", olt.upgrade_types().size());
        for (const ProfileKind kind : {ProfileKind::line, ProfileKind::sla, ProfileKind::alarm})
            leave_out("profiles", olt.profiles(kind).size());
    }

    void count_onu(const PonPort &port, const Arrival &arrival, bool cold)
    {
        if (arrival.unplugged) return leave_out("ONUs that are being taken away");
        const OnuRecord record = port.record(arrival.mac);
        leave_out("ONUs that register", record.powered && !cold && record.phase != Phase::registered);
        leave_out("ONUs with another software than they came with", !record.software.empty());
        leave_out("ONUs to which an upgrade type is bound", !record.upgrade_type.empty());
        leave_out("ONUs that are not supported", !record.supported);
    }

    void count_port(const PonPort &port)
    {
        leave_out("limits of the distance of ONUs", port.limits != RangingLimits{});
        leave_out("entries of blacklists", ids_of(port.blacklist).count());
        std::set<std::string> said; // LOIDs
        for (const Arrival &arrival : port.arrivals)
            if (const auto record = port.authentication.records.find(arrival.loid);
                record != port.authentication.records.end() && record->second == arrival.password)
                said.insert(arrival.loid);
        leave_out("other records of LOIDs", port.authentication.records.size() - said.size());
        for (const std::optional<Binding> &binding : port.bindings) {
            if (!binding) continue;
            const Arrival *arrival = port.arrived(binding->mac);
            if (!arrival || arrival->unplugged) {
                leave_out("bindings of ONUs that are not there");
                continue;
            }
            leave_out("bindings with a mode or texts", binding->mode != 0 || !binding->text_a.empty() ||
                                                           !binding->text_b.empty() || !binding->text_c.empty());
            leave_out("bindings that are exempt from authentication", binding->exempt);
            leave_out("bindings without P2P forwarding", !binding->p2p);
        }
    }

    // A Series is an event with its repetitions.
    struct Series {
        ModelTime first; // s
        ModelTime every; // s; 0: once
        uint32_t times;
        std::string words;
    };

    // Events of the same time stay in their order. So only those are put together that have their times for themselves.
    std::string events_text(std::span<const Event> upcoming) const
    {
        const auto second_of = [&](const Event &event) {
            const ModelTime left = event.at > olt.now() ? event.at - olt.now() : 0;
            return (left + ms_per_second - 1) / ms_per_second;
        };
        std::map<ModelTime, uint32_t> at_second;
        for (const Event &event : upcoming)
            ++at_second[second_of(event)];
        std::vector<Series> all;
        std::map<std::string, size_t> open; // the series of the words that may go on
        for (const Event &event : upcoming) {
            const ModelTime at = second_of(event);
            const bool alone = at_second[at] == 1;
            if (const auto found = open.find(event.words); alone && found != open.end()) {
                Series &series = all[found->second];
                const ModelTime step = at - (series.first + series.every * (series.times - 1));
                if (series.times < most_times && (series.times == 1 || step == series.every)) {
                    series.every = step;
                    ++series.times;
                    continue;
                }
            }
            if (alone) open[event.words] = all.size();
            all.push_back({at, 0, 1, event.words});
        }
        std::string text;
        for (const Series &series : all) {
            text +=
                "\n[[event]]\n" + line("at", text::time_text(series.first * ms_per_second)) + line("do", series.words);
            if (series.times > 1)
                text += line("every", text::time_text(series.every * ms_per_second)) + line("times", series.times);
        }
        return text;
    }

    const Olt &olt;
    std::map<std::string, DeviceType> kinds; // by name
    std::map<std::string, ServiceTerms> services;
    std::vector<std::pair<std::string, size_t>> left_out;
};

} // namespace

std::string export_scenario(const Olt &olt, std::span<const Event> upcoming, const OltScenario *scenario)
{
    Exporter exporter(olt);
    if (scenario) {
        exporter.leave_out("parts that fail by chance", scenario->failing.size());
        exporter.leave_out("curves of loads, which stay as they are now", scenario->curves.size());
    }
    return exporter.write(upcoming);
}

} // namespace ponsim
