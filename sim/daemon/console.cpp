#include "daemon/console.h"

#include <algorithm>

#include "control/control.h"

namespace ponsim
{
namespace
{

constexpr ModelTime longest_step = 10ull * 365 * 24 * 3600; // s: ten years

std::string seconds(ModelTime time)
{
    std::string text = std::to_string(time / ms_per_second);
    if (const ModelTime rest = time % ms_per_second)
        text += '.' + std::to_string(ms_per_second + rest).substr(1); // with its leading zeros
    return text + " s of model time";
}

// Reads seconds with up to three decimals.
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

std::string help_line(std::string head, std::string_view brief)
{
    head.resize(std::max<size_t>(head.size() + 1, 26), ' ');
    return head + std::string(brief) + '\n';
}

std::string help()
{
    std::string text = help_line("help", "lists these commands") + help_line("now", "how much model time has passed") +
                       help_line("step SECONDS", "lets model time pass") +
                       help_line("faults", "the faults that are set, and how often each happened");
    for (const Control &each : controls())
        text += help_line(std::string(each.name) + ' ' + std::string(each.usage), each.brief);
    return text;
}

} // namespace

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
    return seconds(simulator.olt().now()) + '\n';
}

std::string control(Simulator &simulator, Clock &clock, std::string_view line)
{
    std::vector<std::string> words = control_words(line);
    if (words.empty() || words[0] == "help") return help();
    const std::string name = words[0];
    words.erase(words.begin());

    if (name == "now") {
        if (!words.empty()) throw ControlError("now: expected no more words");
        return time_passed(simulator);
    }
    if (name == "faults") {
        if (!words.empty()) throw ControlError("faults: expected no more words");
        return simulator.faults().list();
    }
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
