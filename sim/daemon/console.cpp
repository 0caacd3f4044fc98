#include "daemon/console.h"

#include <algorithm>
#include <limits>
#include <span>

#include "board/ipc.h"
#include "control/control.h"
#include "control/fault_forms.h"
#include "control/show.h"
#include "daemon/alarm_events.h"
#include "exporting/export.h"
#include "text/words.h"

namespace ponsim
{
namespace
{

constexpr ModelTime longest_step = 10ull * 365 * 24 * 3600; // s: ten years

} // namespace

std::string seconds_text(ModelTime time)
{
    std::string text = std::to_string(time / ms_per_second);
    if (const ModelTime rest = time % ms_per_second)
        text += '.' + std::to_string(ms_per_second + rest).substr(1); // with its leading zeros
    return text + " s of model time";
}

namespace
{

std::string help_line(std::string head, std::string_view brief)
{
    head.resize(std::max<size_t>(head.size() + 1, 26), ' ');
    return head + std::string(brief) + '\n';
}

std::string events(const Olt &olt, const std::vector<std::string> &words)
{
    if (words.size() > 1) throw ControlError("events: expected the number of an event, or no more words");
    if (words.empty()) return first_events(olt, IPC_MAX_LENGTH);
    return events_after(olt, control_number(words[0], 0, std::numeric_limits<int64_t>::max()), IPC_MAX_LENGTH);
}

std::string help()
{
    std::string text = help_line("help", "lists these commands") + help_line("now", "how much model time has passed") +
                       help_line("step SECONDS", "lets model time pass") +
                       help_line("faults", "the faults that are set, and how often each happened") +
                       help_line("show [PORT] [--json]", "what differs from a healthy plant") +
                       help_line("export", "the OLT as it is now, as a scenario") +
                       help_line("events [N]", "what happened to alarms, after event N, as lines of JSON");
    for (const Control &each : controls())
        text += help_line(std::string(each.name) + ' ' + std::string(each.usage), each.brief);
    return text +
           "PORT, CAGE, ONU, BRANCH and UNI may be sets, as 1-4,7 or all: ONUs by name, a-*, @BRANCH, id or MAC\n";
}

std::string show(const Simulator &simulator, std::span<const std::string> words)
{
    const bool json = !words.empty() && words.back() == "--json";
    if (json) words = words.first(words.size() - 1);
    if (words.size() > 1) throw ControlError("show: expected a PON port, and perhaps --json");
    const Olt &olt = simulator.olt();
    std::vector<Difference> differences = differences_at(olt, control_ports(olt, words.empty() ? "all" : words[0]));
    if (words.empty()) {
        const std::vector<Difference> uplinks = differences_of_uplinks(olt);
        differences.insert(differences.end(), uplinks.begin(), uplinks.end());
        for (const std::string &fault : text::split(simulator.faults().list(), '\n'))
            if (!fault.empty()) differences.push_back({.kind = "fault", .text = fault});
    }
    return json ? to_json(differences, olt.now()) : to_table(differences);
}

} // namespace

ModelTime read_seconds(const std::string &word)
{
    const size_t point = word.find('.');
    std::string decimals = point == std::string::npos ? "000" : word.substr(point + 1);
    if (decimals.empty() || decimals.size() > 3)
        throw ControlError(word + ": expected seconds with at most three decimals, as 90 or 0.25");
    decimals.resize(3, '0');
    return control_number(word.substr(0, point), 0, longest_step) * ms_per_second +
           control_number(decimals, 0, ms_per_second - 1);
}

std::string scenario_text(const Simulator &simulator)
{
    try {
        return export_scenario(simulator.olt(), simulator.upcoming(), simulator.scenario_of_olt());
    } catch (const ExportError &error) {
        throw ControlError(error.what());
    }
}

bool Step::go_on()
{
    const ModelTime from = clock.now();
    const bool there = simulator.pass(from + left, slice);
    const ModelTime passed = std::max(simulator.olt().now(), from) - from;
    clock.step(passed);
    left -= passed;
    if (there) simulator.keep_time();
    return !there;
}

std::optional<ModelTime> step_length(std::string_view line)
{
    const std::vector<std::string> words = control_words(line);
    if (words.empty() || words[0] != "step") return std::nullopt;
    if (words.size() != 2) throw ControlError("step: expected a number of seconds");
    return read_seconds(words[1]);
}

std::string time_passed(const Simulator &simulator)
{
    return seconds_text(simulator.olt().now()) + '\n';
}

Delivery delivery_of(uint32_t status, std::string_view said)
{
    if (said.size() > max_result) return {control_refused, "the answer is too long: ask for less at a time"};
    if (said.size() <= max_answer) return {status, said};
    return {status, {}, control_result, said};
}

std::string control(Simulator &simulator, Clock &clock, std::string_view line)
{
    std::vector<std::string> words = control_words(line);
    if (words.empty() || words[0] == "help") return help();
    const std::string name = words[0];
    words.erase(words.begin());
    const auto expect_no_more = [&] {
        if (!words.empty()) throw ControlError(name + ": expected no more words");
    };

    if (name == "now") {
        expect_no_more();
        return time_passed(simulator);
    }
    if (name == "faults") {
        expect_no_more();
        return simulator.faults().list();
    }
    if (name == "show") return show(simulator, words);
    if (name == "export") {
        expect_no_more();
        return scenario_text(simulator);
    }
    if (name == "events") return events(simulator.olt(), words);
    if (const std::optional<ModelTime> length = step_length(line)) {
        Step step(simulator, clock, *length);
        while (step.go_on())
            continue;
        return time_passed(simulator);
    }
    Plan plan = plan_control(simulator.olt(), line);
    for (const FaultOrder &order : plan.change.faults)
        if (const std::string wrong = simulator.faults().objection(order); !wrong.empty()) throw ControlError(wrong);
    simulator.change(plan.change);
    return plan.change.faults.empty() ? std::string() : simulator.faults().list();
}

} // namespace ponsim
