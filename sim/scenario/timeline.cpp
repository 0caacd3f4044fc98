#include "scenario/timeline.h"

#include <algorithm>

#include "control/control.h"
#include "model/olt/olt.h"
#include "scenario/written.h"

namespace ponsim
{
namespace
{

constexpr uint32_t max_times = 10000; // how often something can be repeated

struct PlannedEvent {
    Section section;
    std::optional<std::string> olt; // none: all OLTs
    std::vector<Event> events;
};

PlannedEvent read_event(const Section &section, const Scenario &scenario)
{
    PlannedEvent planned{section, read_olt_name(section, scenario), {}};
    const std::vector<ModelTime> times = read_times(section);
    const std::optional<std::string> words = section.text("do", 1, 1000);
    if (!words) section.fail("do", "expected a control command");
    for (const ModelTime at : times)
        planned.events.push_back({at, *words});
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

} // namespace

std::vector<ModelTime> read_times(const Section &section)
{
    const std::optional<ModelTime> at = section.time("at");
    if (!at) section.fail("at", "expected a time");
    const std::optional<ModelTime> every = section.time("every");
    const uint32_t times = section.number_or("times", 1, max_times, 1);
    if (every.has_value() != section.has("times"))
        section.fail(every ? "every" : "times", "expected every and times together");
    if (every == 0) section.fail("every", "expected at least a second");
    if (*at + every.value_or(0) * (times - 1) > longest_time)
        section.fail("times", "expected the last time within ten years");
    std::vector<ModelTime> all;
    for (uint32_t time = 0; time < times; ++time)
        all.push_back(*at + every.value_or(0) * time);
    return all;
}

std::optional<std::string> read_olt_name(const Section &section, const Scenario &scenario)
{
    std::optional<std::string> name = section.name("olt");
    std::vector<std::string> olts;
    for (const OltScenario &olt : scenario.olts)
        olts.push_back(olt.name);
    if (name && std::ranges::count(olts, *name) == 0) section.fail_unknown("olt", "OLT", *name, olts);
    return name;
}

void read_events(const Section &root, Scenario &scenario)
{
    std::vector<PlannedEvent> events;
    for (const Section &section : root.tables("event"))
        events.push_back(read_event(section, scenario));
    for (OltScenario &olt : scenario.olts)
        add_events(olt, events);
}

} // namespace ponsim
