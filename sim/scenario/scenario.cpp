#include "scenario/scenario.h"

#include <algorithm>
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
#include "scenario/composition.h"
#include "scenario/curves.h"
#include "scenario/distribution.h"
#include "scenario/expectations.h"
#include "scenario/failures.h"
#include "scenario/keys.h"
#include "scenario/summary.h"
#include "scenario/timeline.h"
#include "toml_file/section.h"

namespace ponsim
{
namespace
{

constexpr uint32_t max_olts = 1024;
constexpr size_t max_description = 127;

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

// What is drawn of a service is drawn for each ONU.
struct Service : ServiceTerms {
    std::optional<NumberDistribution> loads_up = {};
    std::optional<NumberDistribution> loads_down = {};
    std::string curve = {}; // empty: the loads are the same all day
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
const Value &known(const toml_file::Section &section, const std::string &key, const std::string &what,
                   const std::map<std::string, Value> &values)
{
    const std::string name = section.needed_name(key);
    const auto found = values.find(name);
    if (found == values.end()) section.fail_unknown(key, what, name, names_of(values));
    return found->second;
}

// Returns the values that can be drawn, by name.
template <class Value>
std::map<std::string, const Value *> known(const NameDistribution &drawn, const std::string &key,
                                           const std::map<std::string, Value> &values)
{
    std::map<std::string, const Value *> all;
    for (const auto &[name, at] : drawn.names()) {
        const auto found = values.find(name);
        if (found == values.end())
            fail_at(*at, key + ": there is no " + key + ' ' + name + toml_file::hint(name, names_of(values)));
        all.emplace(name, &found->second);
    }
    return all;
}

// Returns the random numbers of something that is drawn for an ONU.
Random random_of(uint64_t seed, const Mac &mac, Draw draw)
{
    return {random_for(seed, Purpose::population, mac).next(), static_cast<uint64_t>(draw)};
}

std::optional<uint32_t> word(const std::optional<uint64_t> &number)
{
    return number ? std::optional(static_cast<uint32_t>(*number)) : std::nullopt;
}

// Reads a code of letters and digits.
std::string code_of(const toml_file::Section &section, const std::string &key, size_t least, size_t most)
{
    const std::string code = section.needed_name(key);
    if (code.size() < least || code.size() > most)
        section.fail(key, "expected " + (least == most ? "" : std::to_string(least) + " to ") + std::to_string(most) +
                              " characters, found \"" + code + '"');
    return code;
}

// Returns the optical class that the section chooses.
const OpticalClass *class_or(const toml_file::Section &section, const OpticalClass *otherwise)
{
    std::vector<std::string_view> names;
    for (const OpticalClass &each : optical_classes())
        names.push_back(each.name);
    return section.has("class") ? &optical_classes()[section.choice_or("class", names, 0)] : otherwise;
}

// A kind with a boot time of its own has no spread unless it is stated, so that the time is what was asked for.
void set_boot(const toml_file::Section &section, DeviceType &type)
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

Kind read_own_kind(const toml_file::Section &section)
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

Kind read_kind(const toml_file::Section &section)
{
    constexpr std::string_view of_any_kind[] = {"model", "class", "boot", "boot_spread"};
    if (section.has("vendor")) return read_own_kind(section);
    for (const toml_file::Key &key : toml_file::key_of(scenario_keys(), "kind").tables)
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

using Curves = std::map<std::string, std::vector<CurvePoint>>;

Service read_service(const toml_file::Section &section, const Curves &curves)
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
    service.loads_up = NumberDistribution::read(section, "load_up", 0, line_rate, line_rate);
    service.loads_down = NumberDistribution::read(section, "load_down", 0, line_rate, line_rate);
    if (section.has("curve")) {
        static_cast<void>(known(section, "curve", "curve", curves));
        service.curve = section.needed_name("curve");
        if (!service.loads_up && !service.loads_down)
            section.fail("curve", "expected with load_up or load_down: a curve is a percentage of these");
    }
    return service;
}

struct Context {
    uint64_t seed;
    bool cold;
    std::map<std::string, Kind> kinds;
    std::map<std::string, Service> services;
    Curves curves;
};

// A Fibre is the fibre of a port while it is put together.
class Fibre
{
public:
    std::vector<Branch> branches;

    // Adds a branch. It ends at a splitter into `split` branches, which is 1 when there is no splitter. With a `split`
    // of 0 it ends at an ONU. The keys are those by which the section names the length of the branch, and the branch at
    // whose end it begins.
    uint32_t add(const toml_file::Section &section, const std::string &name, std::optional<uint32_t> parent,
                 uint32_t length, uint32_t split, const std::string &length_key, const std::string &parent_key)
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
        if (key.depth > deepest_fibre)
            section.fail(parent_key,
                         "expected at most " + std::to_string(deepest_fibre) + " fibres one behind the other");
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
    uint32_t named(const toml_file::Section &section, const std::string &key) const
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
    toml_file::Section section;
    Arrival arrival;
    const Service *service; // null: no service
    std::optional<uint32_t> id;
};

// Returns the terms for ONUs that arrive later: of what is drawn, one draw counts for all of them.
ServiceTerms terms_of(const Service &service, uint64_t seed)
{
    ServiceTerms terms = service;
    if (service.loads_up) terms.load_up = service.loads_up->draw(random_of(seed, {}, Draw::load_up));
    if (service.loads_down) terms.load_down = service.loads_down->draw(random_of(seed, {}, Draw::load_down));
    return terms;
}

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
        for (const auto &[name, kind] : context.kinds) {
            topology->owned.push_back(kind);
            topology->kinds.emplace(name, kind.get());
        }
        for (const auto &[name, service] : context.services)
            topology->services.emplace(name, terms_of(service, seed));
    }

    void read(const toml_file::Section &section)
    {
        olt.settings.ports = section.number_or("ports", 1, max_ports, max_ports);
        topology->ports.resize(olt.settings.ports);
        const OpticalClass *optics = class_or(section, &usual_class());
        for (PortPopulation &port : topology->ports)
            port.optics = optics;
        std::map<uint32_t, uint32_t> lines; // by the ports that are described
        for (const toml_file::Section &port : section.tables("port"))
            for (const uint32_t number : numbers_of(port)) {
                if (const auto [first, is_new] = lines.emplace(number, port.line()); !is_new)
                    port.fail(port.has("number") ? "number" : "numbers",
                              "port " + std::to_string(number) + " is described in line " +
                                  std::to_string(first->second) + " already");
                read_port(port, number);
            }
        add_curves();
        olt.settings.topology = topology;
        if (context.cold) power_up(Olt(olt.settings), olt.provisioning);
    }

private:
    std::vector<uint32_t> numbers_of(const toml_file::Section &port) const
    {
        if (port.has("numbers")) {
            if (port.has("number")) port.fail("numbers", "expected either number or numbers");
            return port.numbers("numbers", 1, olt.settings.ports);
        }
        const std::optional<uint64_t> number = port.number("number", 1, olt.settings.ports);
        if (!number) port.fail("number", "expected that of a PON port, or numbers");
        return {static_cast<uint32_t>(*number)};
    }

    void read_port(const toml_file::Section &port, uint32_t number)
    {
        Fibre fibre;
        for (const toml_file::Section &branch : port.tables("branch"))
            read_branch(branch, fibre);
        if (fibre.branches.empty()) {
            const Branch feeder = found_feeder();
            fibre.add(port, feeder.name, std::nullopt, feeder.length, onus_per_port, "", "");
        }
        const bool one_branch = fibre.branches.size() == 1;
        // Each ONU is the one that would be found there without a scenario, except for what the scenario says of it.
        std::vector<Arrival> found =
            population_at({.seed = olt.settings.seed, .arrivals = onus_per_port}, number).arrivals;
        std::ranges::sort(found, {}, [](const Arrival &arrival) { return arrival.mac.back(); });
        std::vector<Onu> onus;
        for (const toml_file::Section &section : port.tables("onu")) {
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
        for (const Onu &onu : onus)
            if (onu.service && !onu.service->curve.empty()) curved[onu.service->curve].push_back({number, onu.arrival});
        PortPopulation &population = topology->ports[number - 1];
        population.optics = class_or(port, population.optics);
        population.branches = std::move(fibre.branches);
        for (Onu &onu : onus)
            population.arrivals.push_back(std::move(onu.arrival));
        std::ranges::sort(population.arrivals, {}, &Arrival::mac);
    }

    static void read_branch(const toml_file::Section &section, Fibre &fibre)
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
        const toml_file::Section &section = onu.section;
        Arrival &arrival = onu.arrival;
        for (const char *key : {"mac", "loid"})
            if (counted && section.has(key)) section.fail(key, "expected without count: it is that of one ONU");
        if (const std::optional<std::string> mac = section.text("mac", 1, 17)) arrival.mac = mac_of(section, *mac);
        const std::string key = arrival.name + " at port " + std::to_string(port);
        const auto [first, is_new] = macs.emplace(arrival.mac, Owner{key, port});
        if (!is_new && (first->second.port == port || !section.has("mac")))
            section.fail(section.has("mac") ? "mac" : "name",
                         text::mac_text(arrival.mac) + " is the address of " + first->second.name + " already");
        const auto random = [&](Draw draw) { return random_of(olt.settings.seed, arrival.mac, draw); };
        if (section.has("service")) {
            const NameDistribution drawn(section, "service");
            const auto services = known(drawn, "service", context.services);
            onu.service = services.at(drawn.draw(random(Draw::service)));
            const auto binds = [](const auto &each) { return each.second->bound; };
            if (section.has("id") && !std::ranges::all_of(services, binds))
                section.fail("id", "expected with a service that binds the ONU");
        }
        // Whoever has a service uses it.
        Equipment equipment{.in_use = draw_flag(section, "in_use", onu.service, random(Draw::in_use))};
        if (section.has("kind")) {
            const NameDistribution drawn(section, "kind");
            equipment.kind = known(drawn, "kind", context.kinds).at(drawn.draw(random(Draw::kind)))->get();
        }
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
        const auto drops =
            NumberDistribution::read(section, "drop", 0, max_distance - fibre.distance(branch), max_distance);
        const uint32_t drop = drops ? drops->draw(random(Draw::drop)) : drop_of(arrival, fibre.distance(branch));
        arrival.branch = fibre.add(section, arrival.name, branch, drop, 0, "drop", "branch");
        arrival.distance = fibre.distance(arrival.branch);
        arrival.loss = fibre.loss(arrival.branch);
        arrival.loid = section.text("loid", 1, max_loid).value_or(arrival.loid);
        arrival.password = section.text("password", 0, max_password).value_or(arrival.password);
        arrival.silent = draw_flag(section, "silent", false, random(Draw::silent));
        onu.id = word(section.number("id", 0, onus_per_port - 1));
        if (onu.id && !(onu.service && onu.service->bound))
            section.fail("id", "expected with a service that binds the ONU");
        if (onu.id && (*onu.id += index) >= onus_per_port)
            section.fail("id", "expected room for all of count up to " + std::to_string(onus_per_port - 1));
        if (!onu.service) return;
        if (onu.service->loads_up) arrival.load_up = onu.service->loads_up->draw(random(Draw::load_up));
        if (onu.service->loads_down) arrival.load_down = onu.service->loads_down->draw(random(Draw::load_down));
    }

    static Mac mac_of(const toml_file::Section &section, const std::string &text)
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
    static void check_twin(const toml_file::Section &section, const std::string &first, const Equipment &of_first,
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

    // Makes the load curves, of all ONUs with one and of each direction.
    void add_curves()
    {
        for (const auto &[name, onus] : curved)
            for (const Direction direction : {Direction::up, Direction::down}) {
                const std::string way = direction == Direction::up ? "up" : "down";
                LoadCurve curve{name + ' ' + way, {}};
                for (const CurvePoint &point : context.curves.at(name)) {
                    const std::string percent = std::to_string(point.percent) + " percent";
                    curve.steps.push_back(
                        {point.at, curve.name + ": " + percent, commands_of(onus, direction, point.percent)});
                }
                if (!curve.steps[0].commands->empty()) olt.curves.push_back(std::move(curve));
            }
    }

    struct CurvedOnu {
        uint32_t port;
        Arrival arrival;
    };

    static std::shared_ptr<const std::vector<std::string>> commands_of(const std::vector<CurvedOnu> &onus,
                                                                       Direction direction, uint32_t percent)
    {
        std::vector<std::string> commands;
        for (const CurvedOnu &onu : onus) {
            const auto &load = direction == Direction::up ? onu.arrival.load_up : onu.arrival.load_down;
            if (!load) continue;
            const uint64_t kbits = std::min<uint64_t>(uint64_t{*load} * percent / 100, line_rate);
            commands.push_back("load " + std::to_string(onu.port) + ' ' + onu.arrival.name +
                               (direction == Direction::up ? " up " : " down ") + std::to_string(kbits));
        }
        return std::make_shared<const std::vector<std::string>>(std::move(commands));
    }

    const Context &context;
    OltScenario &olt;
    std::map<std::string, std::vector<CurvedOnu>> curved; // by curve
    std::shared_ptr<ScenarioTopology> topology;
    ByMac<Owner> macs; // to whom each address belongs first
};

void read_olts(const toml_file::Section &root, const Context &context, std::string_view text, Scenario &scenario)
{
    for (const toml_file::Section &section : root.tables("olt")) {
        const std::string name = section.name("name").value_or("olt");
        const uint32_t count = section.number_or("count", 1, max_olts, 1);
        const std::optional<uint64_t> seed = section.number("seed", 0, INT64_MAX);
        for (uint32_t copy = 0; copy < count; ++copy) {
            if (scenario.olts.size() == max_olts)
                section.fail("count", "expected at most " + std::to_string(max_olts) + " OLTs");
            OltScenario olt;
            olt.name = section.has("count") ? name + '-' + std::to_string(copy + 1) : name;
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

Scenario read_composition(const Composition &composition)
{
    const toml_file::Section root(composition.table, scenario_keys());
    root.check_keys();
    Context context{.seed = root.number("seed", 0, INT64_MAX).value_or(1),
                    .cold = root.choice_or("start", starts, 0) == 1,
                    .kinds = {},
                    .services = {},
                    .curves = read_curves(root)};
    for (const auto &[kind, section] : root.named_tables("kind"))
        context.kinds.emplace(kind, read_kind(section));
    for (const auto &[service, section] : root.named_tables("service"))
        context.services.emplace(service, read_service(section, context.curves));
    Scenario scenario{.seed = context.seed};
    read_olts(root, context, composition.text, scenario);
    read_events(root, scenario);
    read_failures(root, scenario);
    read_expectations(root, scenario);
    return scenario;
}

} // namespace

Scenario read_scenario(std::string_view text, const std::string &name, const Overrides &overrides)
{
    return read_composition(compose(text, name, false, overrides));
}

Scenario read_scenario_file(const std::string &file, const Overrides &overrides)
{
    return read_composition(compose(text_of_file(file), file, true, overrides));
}

void power_up(const Olt &olt, Change &change)
{
    for (const PonPort &port : olt.ports())
        for (const Arrival &arrival : port.arrivals)
            boot(olt, port, arrival.mac, change);
}

} // namespace ponsim
