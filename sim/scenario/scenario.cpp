#include "scenario/scenario.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>

#include "control/control.h"
#include "model/base/random.h"
#include "model/lifecycle/authentication.h"
#include "model/lifecycle/registration.h"
#include "model/olt/demand.h"
#include "model/olt/mpcp.h"
#include "model/plant/device.h"
#include "model/plant/fibre.h"
#include "model/port/sla.h"
#include "scenario/section.h"
#include "scenario/summary.h"

namespace ponsim
{
namespace
{

constexpr uint32_t max_olts = 32;
constexpr size_t max_description = 127;
constexpr uint32_t deepest = 6;          // fibres that can follow one another
constexpr int32_t greatest_loss = 4500;  // 0.01 dB; far beyond what any receiver tolerates
constexpr uint32_t default_feeder = 100; // m
constexpr uint32_t shortest_drop = 50;   // m, when it follows from the seed
constexpr uint32_t longest_drop = 1000;  // m, when it follows from the seed
constexpr uint32_t max_times = 10000;    // how often an event can be repeated
constexpr size_t max_events = 100000;    // for each OLT

constexpr std::string_view starts[] = {"registered", "cold"};
constexpr std::string_view auth_modes[] = {"mac", "loid", "loid+password", "mac-or-loid"}; // in the order of AuthMode

using Kind = std::shared_ptr<const DeviceType>;

// An OwnKind is a kind with the texts that describe it.
struct OwnKind {
    std::string vendor;
    std::string model;
    std::string chipset;
    DeviceType type;
};

// This topology owns the kinds, so that they live as long as it does.
struct ScenarioTopology : Topology {
    std::vector<Kind> owned;
};

// An Owner is the first ONU that has an address.
struct Owner {
    std::string name;
    uint32_t port;
    bool bound = false; // it, or another one with the address
};

struct Service {
    bool bound = true;
    bool authenticated = false; // the ONU's LOID has a record
    std::optional<Sla> sla = {};
    std::optional<uint32_t> down = {};
    std::string description = {};
    std::optional<uint32_t> load_up = {};
    std::optional<uint32_t> load_down = {};
};

template <class Value>
std::vector<std::string> names_of(const std::map<std::string, Value> &values)
{
    std::vector<std::string> names;
    for (const auto &[name, value] : values)
        names.push_back(name);
    return names;
}

template <class Value>
const Value &known(const Section &section, const std::string &key, const std::string &what,
                   const std::map<std::string, Value> &values)
{
    const std::string name = section.needed_name(key);
    const auto found = values.find(name);
    if (found == values.end()) section.fail_unknown(key, what, name, names_of(values));
    return found->second;
}

std::optional<uint32_t> word(const std::optional<uint64_t> &number)
{
    return number ? std::optional(static_cast<uint32_t>(*number)) : std::nullopt;
}

// Reads a code of letters and digits.
std::string code_of(const Section &section, const std::string &key, size_t least, size_t most)
{
    const std::string code = section.needed_name(key);
    if (code.size() < least || code.size() > most)
        section.fail(key, "expected " + (least == most ? "" : std::to_string(least) + " to ") + std::to_string(most) +
                              " characters, found \"" + code + '"');
    return code;
}

// Returns the optical class that the section chooses.
const OpticalClass *class_or(const Section &section, const OpticalClass *otherwise)
{
    std::vector<std::string_view> names;
    for (const OpticalClass &each : optical_classes())
        names.push_back(each.name);
    return section.has("class") ? &optical_classes()[section.choice_or("class", names, 0)] : otherwise;
}

// A kind with a boot time of its own has no spread unless it is stated, so that the time is what was asked for.
void set_boot(const Section &section, DeviceType &type)
{
    constexpr ModelTime longest_boot = 600 * ms_per_second;
    if (const std::optional<ModelTime> boot = section.time("boot")) {
        if (*boot > longest_boot) section.fail("boot", "expected at most 10 minutes");
        type.boot = *boot;
        type.boot_spread = 0;
    }
    if (const std::optional<ModelTime> spread = section.time("boot_spread")) {
        if (*spread > type.boot) section.fail("boot_spread", "expected at most the time that it boots");
        type.boot_spread = *spread;
    }
}

Kind read_own_kind(const Section &section)
{
    const auto kind = std::make_shared<OwnKind>();
    kind->vendor = code_of(section, "vendor", 4, 4);
    kind->model = code_of(section, "model", 1, 4);
    if (section.has("chipset")) kind->chipset = code_of(section, "chipset", 1, 8);
    kind->type = {.vendor = kind->vendor,
                  .model = kind->model,
                  .chipset = kind->chipset,
                  .ge_ports = section.number_or("ge_ports", 0, max_unis, 0),
                  .fe_ports = section.number_or("fe_ports", 0, max_unis, 0),
                  .pots_ports = section.number_or("pots_ports", 0, 2, 0),
                  .us_queues = section.number_or("us_queues", 1, 8, 4),
                  .fec = section.flag_or("fec", true),
                  .battery = section.flag_or("battery", false),
                  .igmp_snooping = section.flag_or("igmp_snooping", false),
                  .multicast_control = section.flag_or("multicast_control", false),
                  .fast_leave = section.flag_or("fast_leave", false),
                  .vlan_translation = section.flag_or("vlan_translation", false),
                  .vlan_trunk = section.flag_or("vlan_trunk", false),
                  .optics = class_or(section, nullptr)};
    set_boot(section, kind->type);
    const uint32_t unis = kind->type.ge_ports + kind->type.fe_ports;
    if (unis < 1 || unis > max_unis)
        section.fail(section.has("fe_ports") ? "fe_ports" : "ge_ports", "expected 1 to " + std::to_string(max_unis) +
                                                                            " GE and FE ports together, found " +
                                                                            std::to_string(unis));
    return {kind, &kind->type};
}

Kind read_kind(const Section &section)
{
    constexpr std::string_view of_any_kind[] = {"model", "class", "boot", "boot_spread"};
    if (section.has("vendor")) return read_own_kind(section);
    for (const Key &key : key_of(scenario_keys(), "kind").tables)
        if (std::ranges::find(of_any_kind, key.name) == std::end(of_any_kind) && section.has(key.name))
            section.fail(key.name, "expected with a vendor: a built-in model has its own");
    std::map<std::string, const DeviceType *> models;
    for (const DeviceType &type : device_types())
        models.emplace(type.model, &type);
    const auto kind = std::make_shared<DeviceType>(*known(section, "model", "built-in model", models));
    kind->optics = class_or(section, nullptr);
    set_boot(section, *kind);
    return kind;
}

Service read_service(const Section &section)
{
    Service service;
    service.bound = section.flag_or("bound", true);
    service.authenticated = section.flag_or("auth", false);
    const bool has_sla =
        std::ranges::any_of(std::initializer_list<const char *>{"fixed", "assured", "maximum", "priority", "weight"},
                            [&](const char *key) { return section.has(key); });
    const Sla sla{.fixed = section.number_or("fixed", 0, line_rate, 0),
                  .assured = section.number_or("assured", 0, line_rate, 0),
                  .maximum = section.number_or("maximum", 1, line_rate, line_rate),
                  .priority = section.number_or("priority", 0, max_priority, 0),
                  .weight = section.number_or("weight", 1, max_weight, 1)};
    if (sla.fixed + sla.assured > sla.maximum)
        section.fail("maximum", "expected at least what is fixed and assured, " +
                                    std::to_string(sla.fixed + sla.assured) + ", found " + std::to_string(sla.maximum));
    if (has_sla) service.sla = sla;
    service.down = word(section.number("down", 1, line_rate));
    service.description = section.text("description", 0, max_description).value_or("");
    service.load_up = word(section.number("load_up", 0, line_rate));
    service.load_down = word(section.number("load_down", 0, line_rate));
    return service;
}

struct Context {
    uint64_t seed;
    bool cold;
    std::map<std::string, Kind> kinds;
    std::map<std::string, Service> services;
};

// A Fibre is the fibre of a port while it is put together.
class Fibre
{
public:
    std::vector<Branch> branches;

    // Adds a branch. It ends at a splitter into `split` branches, which is 1 when there is no splitter. With a `split`
    // of 0 it ends at an ONU. The keys are those by which the section names the length of the branch, and the branch at
    // whose end it begins.
    uint32_t add(const Section &section, const std::string &name, std::optional<uint32_t> parent, uint32_t length,
                 uint32_t split, const std::string &length_key, const std::string &parent_key)
    {
        if (index_of(name)) section.fail("name", "there is a fibre " + name + " at this port already");
        FarEnd key{length, splitter_loss(split) + 2 * connector_loss, 1, split, 0};
        if (parent) {
            FarEnd &from = far_ends[*parent];
            if (from.taken == from.split) section.fail(parent_key, branches[*parent].name + ' ' + end_of(from));
            ++from.taken;
            key.distance += from.distance;
            key.loss += from.loss;
            key.depth += from.depth;
        }
        if (key.depth > deepest)
            section.fail(parent_key, "expected at most " + std::to_string(deepest) + " fibres one behind the other");
        if (key.distance > max_distance)
            section.fail(length_key, "expected a distance from the OLT of at most " + std::to_string(max_distance) +
                                         " m, found " + std::to_string(key.distance));
        const int32_t loss = key.loss + fibre_loss(key.distance, Direction::up);
        if (loss > greatest_loss)
            section.fail(length_key,
                         "expected a loss of at most " + to_db(greatest_loss) + " dB to the OLT, found " + to_db(loss));
        branches.push_back({name, parent, length, splitter_loss(split) + 2 * connector_loss});
        far_ends.push_back(key);
        return static_cast<uint32_t>(branches.size() - 1);
    }

    std::optional<uint32_t> index_of(const std::string &name) const
    {
        const auto found = std::ranges::find(branches, name, &Branch::name);
        if (found == branches.end()) return std::nullopt;
        return static_cast<uint32_t>(found - branches.begin());
    }
    uint32_t distance(uint32_t branch) const { return far_ends[branch].distance; }
    // Returns the loss of all splitters and connectors on the way.
    int32_t loss(uint32_t branch) const { return far_ends[branch].loss; }

    // Returns the branch that the section names by this key.
    uint32_t named(const Section &section, const std::string &key) const
    {
        const std::string name = section.needed_name(key);
        const std::optional<uint32_t> found = index_of(name);
        if (!found) {
            std::vector<std::string> names;
            for (const Branch &branch : branches)
                names.push_back(branch.name);
            section.fail_unknown(key, "earlier branch", name, names);
        }
        return *found;
    }

private:
    // A FarEnd is the far end of a branch.
    struct FarEnd {
        uint32_t distance;
        int32_t loss;
        uint32_t depth;
        uint32_t split;
        uint32_t taken;
    };

    // Returns why no further branch can begin there.
    static std::string end_of(const FarEnd &key)
    {
        if (key.split == 0) return "ends at an ONU";
        if (key.split == 1) return "has no splitter, and a fibre goes on from it";
        return "has a splitter, all " + std::to_string(key.split) + " ends of which are taken";
    }

    std::vector<FarEnd> far_ends;
};

struct Onu {
    Section section;
    Arrival arrival;
    const Service *service; // null: no service
    std::optional<uint32_t> id;
};

// A Builder puts an OLT together.
class Builder
{
public:
    Builder(const Context &scenario, OltScenario &built, uint64_t seed)
        : context(scenario), olt(built), topology(std::make_shared<ScenarioTopology>())
    {
        olt.settings.seed = seed;
        olt.settings.arrivals = 0;
        olt.settings.silent = 0;
        olt.settings.olt = olt.name;
        for (const auto &[name, kind] : context.kinds)
            topology->owned.push_back(kind);
    }

    void read(const Section &section)
    {
        olt.settings.ports = section.number_or("ports", 1, max_ports, max_ports);
        topology->ports.resize(olt.settings.ports);
        const OpticalClass *optics = class_or(section, &usual_class());
        for (PortPopulation &port : topology->ports)
            port.optics = optics;
        std::map<uint32_t, uint32_t> lines; // by the ports that are described
        for (const Section &port : section.tables("port"))
            for (const uint32_t number : numbers_of(port)) {
                if (const auto [first, is_new] = lines.emplace(number, port.line()); !is_new)
                    port.fail(port.has("number") ? "number" : "numbers",
                              "port " + std::to_string(number) + " is described in line " +
                                  std::to_string(first->second) + " already");
                read_port(port, number);
            }
        olt.settings.topology = topology;
        if (context.cold) power_up(Olt(olt.settings), olt.provisioning);
    }

private:
    std::vector<uint32_t> numbers_of(const Section &port) const
    {
        if (port.has("numbers")) {
            if (port.has("number")) port.fail("numbers", "expected either number or numbers");
            return port.numbers("numbers", 1, olt.settings.ports);
        }
        const std::optional<uint64_t> number = port.number("number", 1, olt.settings.ports);
        if (!number) port.fail("number", "expected that of a PON port, or numbers");
        return {static_cast<uint32_t>(*number)};
    }

    void read_port(const Section &port, uint32_t number)
    {
        Fibre fibre;
        for (const Section &branch : port.tables("branch"))
            read_branch(branch, fibre);
        if (fibre.branches.empty()) fibre.add(port, "feeder", std::nullopt, default_feeder, onus_per_port, "", "");
        const bool one_branch = fibre.branches.size() == 1;
        // Each ONU is the one that would be found there without a scenario, except for what the scenario says of it.
        std::vector<Arrival> found =
            population_at({.seed = olt.settings.seed, .arrivals = onus_per_port}, number).arrivals;
        std::ranges::sort(found, {}, [](const Arrival &arrival) { return arrival.mac.back(); });
        std::vector<Onu> onus;
        for (const Section &section : port.tables("onu")) {
            const std::string name = section.needed_name("name");
            const bool counted = section.has("count");
            const uint32_t count = section.number_or("count", 1, onus_per_port, 1);
            for (uint32_t index = 0; index < count; ++index) {
                if (onus.size() == onus_per_port)
                    section.fail(counted ? "count" : "name", "expected at most " + std::to_string(onus_per_port) +
                                                                 " ONUs at port " + std::to_string(number));
                onus.push_back({section, found[onus.size()], nullptr, std::nullopt});
                onus.back().arrival.name = counted ? name + '-' + std::to_string(index + 1) : name;
                read_onu(onus.back(), number, index, counted, one_branch, fibre);
            }
        }
        const size_t mode = port.choice_or("auth", auth_modes, 0);
        if (mode != 0) olt.provisioning.put<PortRecord>(number, {{}, static_cast<uint32_t>(mode)});
        provision(onus, number);
        PortPopulation &population = topology->ports[number - 1];
        population.optics = class_or(port, population.optics);
        population.branches = std::move(fibre.branches);
        for (Onu &onu : onus)
            population.arrivals.push_back(std::move(onu.arrival));
        std::ranges::sort(population.arrivals, {}, &Arrival::mac);
    }

    static void read_branch(const Section &section, Fibre &fibre)
    {
        const std::string name = section.needed_name("name");
        std::optional<uint32_t> parent;
        if (section.has("from")) parent = fibre.named(section, "from");
        if (!parent && !fibre.branches.empty())
            section.fail("from", "expected a branch: the fibre of the port begins with " + fibre.branches[0].name);
        const uint32_t length = section.number_or("length", 0, max_distance, 0);
        const uint32_t split = section.number_or("split", 1, onus_per_port, 1);
        if ((split & (split - 1)) != 0)
            section.fail("split", "expected 1, 2, 4, 8, 16, 32, 64 or 128, found " + std::to_string(split));
        fibre.add(section, name, parent, length, split, "length", "from");
    }

    void read_onu(Onu &onu, uint32_t port, uint32_t index, bool counted, bool one_branch, Fibre &fibre)
    {
        const Section &section = onu.section;
        Arrival &arrival = onu.arrival;
        for (const char *key : {"mac", "loid"})
            if (counted && section.has(key)) section.fail(key, "expected without count: it is that of one ONU");
        if (const std::optional<std::string> mac = section.text("mac", 1, 17)) arrival.mac = mac_of(section, *mac);
        const std::string key = arrival.name + " at port " + std::to_string(port);
        const auto [first, is_new] = macs.emplace(arrival.mac, Owner{key, port});
        if (!is_new && (first->second.port == port || !section.has("mac")))
            section.fail(section.has("mac") ? "mac" : "name",
                         text::mac_text(arrival.mac) + " is the address of " + first->second.name + " already");
        if (section.has("service")) onu.service = &known(section, "service", "service", context.services);
        // Whoever has a service uses it.
        Equipment equipment{.in_use = section.flag_or("in_use", onu.service)};
        if (section.has("kind")) equipment.kind = known(section, "kind", "kind", context.kinds).get();
        if (!is_new) check_twin(section, first->second.name, topology->equipment.at(arrival.mac), equipment);
        if (onu.service && onu.service->bound) {
            if (first->second.bound)
                section.fail("service", "expected one that does not bind the ONU: " + first->second.name +
                                            " has its address, and is bound");
            first->second.bound = true;
        }
        topology->equipment[arrival.mac] = equipment;
        if (!one_branch && !section.has("branch")) section.fail("branch", "expected one: the port has several");
        const uint32_t branch = section.has("branch") ? fibre.named(section, "branch") : 0;
        const uint32_t drawn = shortest_drop + arrival.distance % (longest_drop - shortest_drop + 1);
        const uint32_t drop =
            section.number_or("drop", 0, max_distance, std::min(drawn, max_distance - fibre.distance(branch)));
        arrival.branch = fibre.add(section, arrival.name, branch, drop, 0, "drop", "branch");
        arrival.distance = fibre.distance(arrival.branch);
        arrival.loss = fibre.loss(arrival.branch);
        arrival.loid = section.text("loid", 1, max_loid).value_or(arrival.loid);
        arrival.password = section.text("password", 0, max_password).value_or(arrival.password);
        arrival.silent = section.flag_or("silent", false);
        onu.id = word(section.number("id", 0, onus_per_port - 1));
        if (onu.id && !(onu.service && onu.service->bound))
            section.fail("id", "expected with a service that binds the ONU");
        if (onu.id && (*onu.id += index) >= onus_per_port)
            section.fail("id", "expected room for all of count up to " + std::to_string(onus_per_port - 1));
        if (!onu.service) return;
        arrival.load_up = onu.service->load_up;
        arrival.load_down = onu.service->load_down;
    }

    static Mac mac_of(const Section &section, const std::string &text)
    {
        try {
            const Mac mac = control_mac(text);
            if (is_station(mac)) return mac;
        } catch (const ControlError &error) {
            section.fail("mac", error.what());
        }
        section.fail("mac", text + ": expected the address of one station");
    }

    // What an ONU is follows from its address. So two ONUs with the same one, at two ports, are the same.
    static void check_twin(const Section &section, const std::string &first, const Equipment &of_first,
                           const Equipment &equipment)
    {
        if (of_first.kind != equipment.kind)
            section.fail("kind", "expected that of " + first + ", which has its address");
        if (of_first.in_use != equipment.in_use)
            section.fail("in_use", "expected that of " + first + ", which has its address");
    }

    void provision(std::vector<Onu> &onus, uint32_t port)
    {
        OnuIds taken;
        for (Onu &onu : onus) {
            if (!onu.id) continue;
            if (taken[*onu.id])
                onu.section.fail("id", "ONU id " + std::to_string(*onu.id) + " of port " + std::to_string(port) +
                                           " is taken already");
            taken.set(*onu.id);
        }
        const auto is_bound = [](const Onu &onu) { return onu.service && onu.service->bound; };
        const uint32_t capacity = admissible({}, static_cast<uint32_t>(std::ranges::count_if(onus, is_bound)));
        uint32_t promised = 0; // kbit/s
        for (Onu &onu : onus) {
            if (!onu.service) continue;
            const Service &service = *onu.service;
            if (service.authenticated)
                olt.provisioning.put<LoidPassword>({port, onu.arrival.loid}, {onu.arrival.password});
            if (!service.bound) continue;
            if (service.sla) promised += service.sla->fixed + service.sla->assured;
            if (promised > capacity)
                onu.section.fail("service", "expected at most " + std::to_string(capacity) +
                                                " kbit/s fixed and assured at port " + std::to_string(port) +
                                                ", found " + std::to_string(promised));
            // An id is free, because there are at most as many ONUs as ids.
            const uint32_t id = onu.id ? *onu.id : lowest_free(taken).value();
            taken.set(id);
            Binding binding{.mac = onu.arrival.mac, .mode = 0, .text_a = {}, .text_b = {}, .text_c = {}};
            binding.description = service.description;
            binding.sla = service.sla;
            binding.sla_down = service.down;
            olt.provisioning.put<Binding>({port, id}, binding);
        }
    }

    const Context &context;
    OltScenario &olt;
    std::shared_ptr<ScenarioTopology> topology;
    std::map<Mac, Owner> macs; // to whom each address belongs first
};

struct PlannedEvent {
    Section section;
    std::optional<std::string> olt; // none: all OLTs
    std::vector<Event> events;
};

PlannedEvent read_event(const Section &section, const Scenario &scenario)
{
    PlannedEvent planned{section, section.name("olt"), {}};
    std::vector<std::string> olts;
    for (const OltScenario &olt : scenario.olts)
        olts.push_back(olt.name);
    if (planned.olt && std::ranges::count(olts, *planned.olt) == 0)
        section.fail_unknown("olt", "OLT", *planned.olt, olts);
    const std::optional<ModelTime> at = section.time("at");
    if (!at) section.fail("at", "expected a time");
    const std::optional<std::string> words = section.text("do", 1, 1000);
    if (!words) section.fail("do", "expected a control command");
    const std::optional<ModelTime> every = section.time("every");
    const uint32_t times = section.number_or("times", 1, max_times, 1);
    if (every.has_value() != section.has("times"))
        section.fail(every ? "every" : "times", "expected every and times together");
    if (every == 0) section.fail("every", "expected at least a second");
    if (*at + every.value_or(0) * (times - 1) > longest_time)
        section.fail("times", "expected the last time within ten years");
    for (uint32_t time = 0; time < times; ++time)
        planned.events.push_back({*at + every.value_or(0) * time, *words});
    return planned;
}

void add_events(OltScenario &olt, const std::vector<PlannedEvent> &planned)
{
    std::optional<Olt> first; // the OLT before its first event
    for (const PlannedEvent &each : planned) {
        if (each.olt && *each.olt != olt.name) continue;
        if (!first) {
            first.emplace(olt.settings);
            first->apply(olt.provisioning);
        }
        try {
            // This finds commands that make no sense. Whether the OLT refuses the command may be different when the
            // event happens.
            read_control(*first, each.events[0].words);
        } catch (const ControlError &error) {
            each.section.fail("do", error.what());
        }
        olt.events.insert(olt.events.end(), each.events.begin(), each.events.end());
        if (olt.events.size() > max_events)
            each.section.fail("do", "expected at most " + std::to_string(max_events) + " events of an OLT");
    }
    std::ranges::stable_sort(olt.events, {}, &Event::at);
}

void read_olts(const Section &root, const Context &context, std::string_view text, Scenario &scenario)
{
    for (const Section &section : root.tables("olt")) {
        const std::string name = section.name("name").value_or("olt");
        const uint32_t count = section.number_or("count", 1, max_olts, 1);
        const std::optional<uint64_t> seed = section.number("seed", 0, INT64_MAX);
        for (uint32_t copy = 0; copy < count; ++copy) {
            if (scenario.olts.size() == max_olts)
                section.fail("count", "expected at most " + std::to_string(max_olts) + " OLTs");
            OltScenario olt{section.has("count") ? name + '-' + std::to_string(copy + 1) : name, {}, {}, {}};
            if (std::ranges::count(scenario.olts, olt.name, &OltScenario::name) > 0)
                section.fail("name", "there is an OLT " + olt.name + " already");
            olt.settings.scenario = text;
            Builder builder(context, olt, seed ? *seed + copy : context.seed + scenario.olts.size());
            builder.read(section);
            scenario.olts.push_back(std::move(olt));
        }
    }
    if (scenario.olts.empty()) root.fail("olt", "expected at least one [[olt]]");
}

TomlValue parse(std::string_view text, const std::string &name)
{
    try {
        return read_toml(text);
    } catch (const TomlError &error) {
        throw ScenarioError(name + ':' + std::to_string(error.line) + ": " + error.what());
    }
}

} // namespace

Scenario read_scenario(std::string_view text, const std::string &name)
{
    const TomlValue value = parse(text, name);
    const Section root(name, value, scenario_keys());
    root.check_keys();
    Context context{.seed = root.number("seed", 0, INT64_MAX).value_or(1),
                    .cold = root.choice_or("start", starts, 0) == 1,
                    .kinds = {},
                    .services = {}};
    for (const auto &[kind, section] : root.named_tables("kind"))
        context.kinds.emplace(kind, read_kind(section));
    for (const auto &[service, section] : root.named_tables("service"))
        context.services.emplace(service, read_service(section));
    Scenario scenario;
    read_olts(root, context, text, scenario);
    std::vector<PlannedEvent> events;
    for (const Section &section : root.tables("event"))
        events.push_back(read_event(section, scenario));
    for (OltScenario &olt : scenario.olts)
        add_events(olt, events);
    return scenario;
}

Scenario read_scenario_file(const std::string &file)
{
    std::ifstream in(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    if (!in) throw ScenarioError(file + ": cannot be read: " + std::strerror(errno));
    return read_scenario(text, file);
}

void power_up(const Olt &olt, Change &change)
{
    for (const PonPort &port : olt.ports())
        for (const Arrival &arrival : port.arrivals)
            boot(olt, port, arrival.mac, change);
}

} // namespace ponsim
