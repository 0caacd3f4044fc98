#include "control/control.h"

#include <algorithm>
#include <sstream>

#include "bsp_pon.h"
#include "catalogue.h"
#include "text/number.h"

namespace ponsim
{
namespace
{

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
        for (std::span<const Control> family : {fault_controls(), fibre_controls(), inventory_controls(),
                                                onu_controls(), optics_controls(), upgrade_controls()})
            collected.insert(collected.end(), family.begin(), family.end());
        return collected;
    }();
    return all;
}

uint64_t control_number(const std::string &word, uint64_t least, uint64_t greatest)
{
    const auto number = text::to_number<uint64_t>(word);
    if (!number || *number < least || *number > greatest)
        throw ControlError(word + ": expected a number from " + std::to_string(least) + " to " +
                           std::to_string(greatest));
    return *number;
}

bool control_switch(const std::string &word)
{
    if (word != "on" && word != "off") throw ControlError(word + ": expected on or off");
    return word == "on";
}

int32_t control_decibels(const std::string &word, int32_t greatest)
{
    constexpr size_t decimals = 2;
    const size_t point = std::min(word.find('.'), word.size());
    std::string digits = word.substr(0, point);
    std::string fraction = point < word.size() ? word.substr(point + 1) : "0";
    const bool fits = !digits.empty() && !fraction.empty() && fraction.size() <= decimals;
    fraction.resize(decimals, '0');
    digits += fraction;
    const auto loss = text::to_number<int32_t>(digits);
    if (!fits || !loss || *loss < 1 || *loss > greatest)
        throw ControlError(word + ": expected decibels from 0.01 to " + std::to_string(greatest / 100) + ", as 3.5");
    return *loss;
}

Mac control_mac(const std::string &word)
{
    const auto mac = text::to_mac(word);
    if (!mac) throw ControlError(word + ": expected a MAC address, as 02:00:5e:10:00:01");
    return *mac;
}

std::vector<std::string> control_words(std::string_view line)
{
    std::istringstream in{std::string(line)};
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

Plan read_control(const Olt &olt, std::string_view line)
{
    std::vector<std::string> words = control_words(line);
    const std::string name = words.empty() ? std::string() : words[0];
    const auto found = std::ranges::find(controls(), name, &Control::name);
    if (found == controls().end()) throw ControlError(name + ": not a command; ponsim ctl help lists the commands");
    words.erase(words.begin());
    return found->plan(olt, words);
}

Plan plan_control(const Olt &olt, std::string_view line)
{
    Plan plan = read_control(olt, line);
    if (plan.status != BSP_OK) throw ControlError((plan.of.empty() ? "" : plan.of + ": ") + describe(plan.status));
    return plan;
}

} // namespace ponsim
