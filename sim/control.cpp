#include "control.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "bsp_pon.h"
#include "catalogue.h"

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

// Seconds with up to three decimals.
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

std::vector<std::string> words_of(std::string_view line)
{
    std::istringstream in{std::string(line)};
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

std::string describe(uint32_t status)
{
    const catalogue::Status *known = catalogue::find_status(status);
    return known ? std::string(known->brief) : "status " + std::to_string(status);
}

} // namespace

std::span<const Control> controls()
{
    static const std::vector<Control> all = [] {
        std::vector<Control> collected;
        for (std::span<const Control> family :
             {fault_controls(), fibre_controls(), onu_controls(), optics_controls(), upgrade_controls()})
            collected.insert(collected.end(), family.begin(), family.end());
        return collected;
    }();
    return all;
}

uint64_t control_number(const std::string &word, uint64_t least, uint64_t greatest)
{
    uint64_t number = 0;
    const char *const end = word.data() + word.size();
    const auto [last, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc{} || last != end || number < least || number > greatest)
        throw ControlError(word + ": expected a number from " + std::to_string(least) + " to " +
                           std::to_string(greatest));
    return number;
}

bool control_switch(const std::string &word)
{
    if (word != "on" && word != "off") throw ControlError(word + ": expected on or off");
    return word == "on";
}

Mac control_mac(const std::string &word)
{
    Mac mac{};
    bool good = word.size() == 17;
    for (size_t i = 0; good && i < mac.size(); ++i) {
        const char *const pair = word.data() + 3 * i;
        const auto [last, error] = std::from_chars(pair, pair + 2, mac[i], 16);
        good = error == std::errc{} && last == pair + 2 && (i + 1 == mac.size() || *last == ':');
    }
    if (!good) throw ControlError(word + ": expected a MAC address, as 02:00:5e:10:00:01");
    return mac;
}

const PonPort &control_port(const Olt &olt, const std::string &word)
{
    return *olt.port(static_cast<uint32_t>(control_number(word, 1, olt.ports().size())));
}

Mac control_onu(const PonPort &port, const std::string &word)
{
    const auto named = std::ranges::find(port.arrivals, word, &Arrival::name);
    if (named != port.arrivals.end()) return named->mac;
    try {
        return control_mac(word);
    } catch (const ControlError &error) {
        throw ControlError(error.what() + std::string(", or the name of an ONU at PON port ") +
                           std::to_string(port.number));
    }
}

Plan read_control(const Olt &olt, std::string_view line)
{
    std::vector<std::string> words = words_of(line);
    const std::string name = words.empty() ? std::string() : words[0];
    const auto found = std::ranges::find(controls(), name, &Control::name);
    if (found == controls().end()) throw ControlError(name + ": not a command; ponsim ctl help lists the commands");
    words.erase(words.begin());
    return found->plan(olt, words);
}

Plan plan_control(const Olt &olt, std::string_view line)
{
    Plan plan = read_control(olt, line);
    if (plan.status != BSP_OK) throw ControlError(describe(plan.status));
    return plan;
}

std::string control(Simulator &simulator, Clock &clock, std::string_view line)
{
    std::vector<std::string> words = words_of(line);
    if (words.empty() || words[0] == "help") return help();
    const std::string name = words[0];
    words.erase(words.begin());

    if (name == "now") {
        if (!words.empty()) throw ControlError("now: expected no more words");
        return seconds(simulator.olt().now()) + '\n';
    }
    if (name == "faults") {
        if (!words.empty()) throw ControlError("faults: expected no more words");
        return simulator.faults().list();
    }
    if (name == "step") {
        if (words.size() != 1) throw ControlError("step: expected a number of seconds");
        clock.step(read_seconds(words[0]));
        simulator.advance(clock.now());
        simulator.keep_time();
        return seconds(simulator.olt().now()) + '\n';
    }
    Plan plan = plan_control(simulator.olt(), line);
    for (const FaultOrder &order : plan.change.faults)
        if (const std::string wrong = simulator.faults().objection(order); !wrong.empty()) throw ControlError(wrong);
    simulator.change(plan.change);
    return plan.change.faults.empty() ? std::string() : simulator.faults().list();
}

} // namespace ponsim
