#include "scenario/failures.h"

#include <algorithm>
#include <numeric>
#include <set>

#include "scenario/timeline.h"

namespace ponsim
{
namespace
{

constexpr ModelTime shortest_mtbf = 60 * ms_per_second;
constexpr size_t max_parts = 20000; // of an OLT

enum class PartOf : uint32_t { onu, fibre, port };

// A Breakage says which control makes a part fail, and which one repairs it. The words stand around the port and the
// name of the part.
struct Breakage {
    std::string_view name;
    PartOf part;
    std::string_view fails, fails_end;
    std::string_view repairs, repairs_end;
};
constexpr Breakage breakages[] = {
    {"power", PartOf::onu, "power", " off", "power", " on"},
    {"rogue", PartOf::onu, "rogue", " on", "rogue", " off"},
    {"fibre", PartOf::fibre, "cut", "", "mend", ""},
    {"laser", PartOf::port, "dim", " 60", "dim", " off"},
};

const Breakage &read_breakage(const toml_file::Section &section)
{
    std::vector<std::string_view> names;
    for (const Breakage &each : breakages)
        names.push_back(each.name);
    if (!section.has("of")) section.fail_expected("of", "\"power\", \"rogue\", \"fibre\" or \"laser\"");
    return breakages[section.choice_or("of", names, 0)];
}

ModelTime read_mean(const toml_file::Section &section, const std::string &key, ModelTime least)
{
    const std::optional<ModelTime> mean = section.time(key);
    if (!mean || *mean < least)
        section.fail_expected(key, "a time of at least " + std::to_string(least / ms_per_second) + " s");
    return *mean;
}

// Returns the names of all parts of a kind at a port. The part that is the port itself has no name.
std::vector<std::string> parts_of(PartOf part, const PortPopulation &port)
{
    std::vector<std::string> names;
    if (part == PartOf::onu)
        for (const Arrival &arrival : port.arrivals)
            names.push_back(arrival.name);
    if (part == PartOf::fibre)
        for (const Branch &branch : port.branches)
            names.push_back(branch.name);
    if (part == PartOf::port) names.emplace_back();
    std::ranges::sort(names);
    return names;
}

// Returns whether the name is meant by a pattern, which may end with a * for any further characters.
bool is_meant(const std::string &name, const std::string &pattern)
{
    if (!pattern.ends_with('*')) return name == pattern;
    return name.starts_with(std::string_view(pattern).substr(0, pattern.size() - 1));
}

// The Patterns are the names of parts that a table states. Without any, all parts are meant.
class Patterns
{
public:
    Patterns(const toml_file::Section &section, PartOf part)
    {
        const toml_file::Value *names = section.written("names");
        if (!names) return;
        if (part == PartOf::port) section.fail("names", "expected without it: what fails is a part of the port");
        if (!names->array() || names->array()->empty()) section.fail_expected("names", expected);
        for (const toml_file::Value &each : *names->array()) {
            const auto *name = std::get_if<std::string>(&each.value);
            if (!name || name->empty()) fail_at(each, std::string("names: expected ") + expected);
            patterns.push_back({*name, &each});
        }
    }

    bool mean(const std::string &name)
    {
        bool meant = patterns.empty();
        for (Pattern &pattern : patterns)
            if (is_meant(name, pattern.name)) meant = pattern.used = true;
        return meant;
    }
    // Refuses a pattern that nothing has matched. `known` are the names that there are.
    void check_used(const std::vector<std::string> &known) const
    {
        for (const Pattern &pattern : patterns)
            if (!pattern.used)
                fail_at(*pattern.at, "names: there is no part " + pattern.name + toml_file::hint(pattern.name, known));
    }

private:
    static constexpr const char *expected = "a list of names, as [\"a-1\", \"b-*\"]";

    struct Pattern {
        std::string name;
        const toml_file::Value *at;
        bool used = false;
    };
    std::vector<Pattern> patterns;
};

std::vector<uint32_t> read_ports(const toml_file::Section &section, uint32_t ports)
{
    if (section.has("ports")) return section.numbers("ports", 1, ports);
    std::vector<uint32_t> all(ports);
    std::iota(all.begin(), all.end(), 1);
    return all;
}

void add_parts(const toml_file::Section &section, const Breakage &breakage, OltScenario &olt)
{
    const ModelTime mtbf = read_mean(section, "mtbf", shortest_mtbf);
    const ModelTime mttr = read_mean(section, "mttr", ms_per_second);
    Patterns patterns(section, breakage.part);
    std::set<std::string> known;
    for (const uint32_t port : read_ports(section, olt.settings.ports))
        for (const std::string &name : parts_of(breakage.part, olt.settings.topology->ports[port - 1])) {
            known.insert(name);
            if (!patterns.mean(name)) continue;
            const std::string part = ' ' + std::to_string(port) + (name.empty() ? "" : ' ' + name);
            olt.failing.push_back({std::string(breakage.fails) + part + std::string(breakage.fails_end),
                                   std::string(breakage.repairs) + part + std::string(breakage.repairs_end), mtbf,
                                   mttr});
        }
    patterns.check_used({known.begin(), known.end()});
    if (olt.failing.size() > max_parts)
        section.fail("of", "expected at most " + std::to_string(max_parts) + " parts of an OLT that fail");
}

} // namespace

void read_failures(const toml_file::Section &root, Scenario &scenario)
{
    for (const toml_file::Section &section : root.tables("failure")) {
        const std::optional<std::string> name = read_olt_name(section, scenario);
        const Breakage &breakage = read_breakage(section);
        for (OltScenario &olt : scenario.olts)
            if (!name || *name == olt.name) add_parts(section, breakage, olt);
    }
}

} // namespace ponsim
