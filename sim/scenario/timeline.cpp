#include "scenario/timeline.h"

#include <algorithm>
#include <set>

#include "control/control.h"
#include "model/olt/olt.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

constexpr uint32_t max_times = 10000; // how often something can be repeated

struct PlannedEvent {
    toml_file::Section section;
    std::optional<std::string> olt; // none: all OLTs
    std::vector<Event> events;
};

PlannedEvent read_event(const toml_file::Section &section, const Scenario &scenario)
{
    PlannedEvent planned{section, read_olt_name(section, scenario), {}};
    const std::vector<ModelTime> times = read_times(section);
    const std::optional<std::string> words = section.text("do", 1, 1000);
    if (!words) section.fail("do", "expected a control command");
    for (const ModelTime at : times)
        planned.events.push_back({at, *words});
    return planned;
}

// Lets ONUs that are being taken away be gone.
void end_departures(Olt &olt)
{
    Change change;
    for (const OnuAtPort &key : olt.leaving()) {
        PluggedOnu gone = olt.kept<PluggedOnu>().at(key);
        gone.state = Plugged::gone;
        change.put<PluggedOnu>(key, gone);
    }
    olt.apply(change);
}

// Finds commands that make no sense, in the order of time. Whether the OLT refuses a command may be different when the
// event happens. But which ONUs are there follows from the events before it.
void check_events(const OltScenario &olt, const std::vector<PlannedEvent> &planned)
{
    struct Checked {
        const PlannedEvent *plan;
        size_t repetition;
    };
    std::vector<Checked> all;
    for (const PlannedEvent &each : planned)
        if (!each.olt || *each.olt == olt.name)
            for (size_t repetition = 0; repetition < each.events.size(); ++repetition)
                all.push_back({&each, repetition});
    if (all.empty()) return;
    const auto event_of = [](const Checked &each) -> const Event & { return each.plan->events[each.repetition]; };
    std::ranges::stable_sort(all, {}, [&](const Checked &each) { return event_of(each).at; });
    Olt model(olt.settings);
    model.apply(olt.provisioning);
    std::set<const PlannedEvent *> lasting; // those of which one look is enough
    for (const Checked &each : all) {
        if (lasting.contains(each.plan)) continue;
        try {
            const Plan plan = read_control(model, event_of(each).words);
            if (plan.change.of<PluggedOnu>().empty()) {
                lasting.insert(each.plan);
            } else {
                model.apply(plan.change);
                end_departures(model);
            }
        } catch (const ControlError &error) {
            each.plan->section.fail("do", error.what());
        }
    }
}

void add_events(OltScenario &olt, const std::vector<PlannedEvent> &planned)
{
    for (const PlannedEvent &each : planned) {
        if (each.olt && *each.olt != olt.name) continue;
        olt.events.insert(olt.events.end(), each.events.begin(), each.events.end());
        if (olt.events.size() > max_events)
            each.section.fail("do", "expected at most " + std::to_string(max_events) + " events of an OLT");
    }
    std::ranges::stable_sort(olt.events, {}, &Event::at);
    check_events(olt, planned);
}

} // namespace

std::vector<ModelTime> read_times(const toml_file::Section &section)
{
    const std::optional<ModelTime> at = section.time("at");
    if (!at) section.fail("at", "expected a time");
    const std::optional<ModelTime> every = section.time("every");
    const uint32_t times = section.number_or("times", 1, max_times, 1);
    if (every.has_value() != section.has("times"))
        section.fail(every ? "every" : "times", "expected every and times together");
    if (every == 0) section.fail("every", "expected at least a second");
    if (*at + every.value_or(0) * (times - 1) > text::longest_time)
        section.fail("times", "expected the last time within ten years");
    std::vector<ModelTime> all;
    for (uint32_t time = 0; time < times; ++time)
        all.push_back(*at + every.value_or(0) * time);
    return all;
}

std::optional<std::string> read_olt_name(const toml_file::Section &section, const Scenario &scenario)
{
    std::optional<std::string> name = section.name("olt");
    std::vector<std::string> olts;
    for (const OltScenario &olt : scenario.olts)
        olts.push_back(olt.name);
    if (name && std::ranges::count(olts, *name) == 0) section.fail_unknown("olt", "OLT", *name, olts);
    return name;
}

void read_events(const toml_file::Section &root, Scenario &scenario)
{
    std::vector<PlannedEvent> events;
    for (const toml_file::Section &section : root.tables("event"))
        events.push_back(read_event(section, scenario));
    for (OltScenario &olt : scenario.olts)
        add_events(olt, events);
}

} // namespace ponsim
