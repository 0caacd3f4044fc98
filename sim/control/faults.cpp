// These commands order what goes wrong on the wire.
#include "control/fault_forms.h"

#include <algorithm>

#include "bsp_pon.h"
#include "catalogue.h"
#include "control/control.h"

namespace ponsim
{
namespace
{

constexpr uint32_t any_number = UINT32_MAX;

uint32_t number_of(const std::string &word, uint32_t least = 0, uint32_t greatest = any_number)
{
    return static_cast<uint32_t>(control_number(word, least, greatest));
}

bool is_number(const std::string &word)
{
    return !word.empty() && std::ranges::all_of(word, [](char c) { return c >= '0' && c <= '9'; });
}

// Lists the names as in "a, b or c".
template <class Names>
std::string one_of(const Names &names)
{
    std::string text;
    for (size_t i = 0; i < names.size(); ++i)
        text.append(i == 0 ? "" : i + 1 < names.size() ? ", " : " or ").append(names[i]);
    return text;
}

const FaultForm &form_of(const std::string &word)
{
    std::vector<std::string_view> names;
    for (const FaultForm &form : fault_forms()) {
        if (form.name == word) return form;
        names.push_back(form.name);
    }
    names.push_back("clear");
    throw ControlError("fault: " + word + ": expected " + one_of(names));
}

uint32_t status_word(const std::string &word)
{
    if (is_number(word)) return number_of(word);
    const auto known = std::ranges::find(catalogue::statuses(), word, &catalogue::Status::name);
    if (known == catalogue::statuses().end())
        throw ControlError(word + ": expected a status word: a number, or a name such as PON_ERR_NOT_BOUND");
    return known->value;
}

uint32_t value_of(const FaultForm &form, const std::string &word)
{
    if (form.kind == FaultKind::status) return status_word(word);
    if (form.words.empty()) return number_of(word, form.least, form.greatest);
    const auto found = std::ranges::find(form.words, word);
    if (found == form.words.end()) throw ControlError(word + ": expected " + one_of(form.words));
    return static_cast<uint32_t>(found - form.words.begin());
}

uint32_t channel_of(const std::string &word)
{
    if (is_number(word)) return number_of(word);
    if (const catalogue::Channel *channel = catalogue::find_channel(word)) return channel->type;
    throw ControlError(word + ": expected a channel: a number, or a name such as BSP_MSG_PON");
}

void set_command(Fault &fault, const std::string &word)
{
    if (is_number(word)) {
        fault.code = number_of(word);
    } else {
        fault.command = catalogue::find_command(word);
        if (!fault.command)
            throw ControlError(word + ": expected a command: a code, or a name such as BSP_CMD_ONU_BIND");
    }
}

void set_option(Fault &fault, const std::string &word)
{
    const size_t middle = std::min(word.find('='), word.size());
    const std::string key = word.substr(0, middle);
    const std::string value = middle < word.size() ? word.substr(middle + 1) : std::string();
    if (key == "channel")
        fault.channel = channel_of(value);
    else if (key == "command")
        set_command(fault, value);
    else if (key == "percent")
        fault.percent = number_of(value, 1, 100);
    else if (key == "count")
        fault.count = number_of(value, 1);
    else if (key == "skip")
        fault.skip = number_of(value);
    else
        throw ControlError("fault: " + word + ": expected channel=, command=, percent=, count= or skip=");
}

Plan planned(FaultOrder order)
{
    Plan plan{BSP_OK};
    plan.change.faults.push_back(std::move(order));
    return plan;
}

Plan clear(std::span<const std::string> words)
{
    if (words.size() > 1) throw ControlError("fault clear: expected the number of a fault, or nothing for all");
    ClearFaults wanted;
    if (!words.empty()) wanted.number = number_of(words[0], 1);
    return planned(wanted);
}

Plan set_fault(const Olt &, std::span<const std::string> words)
{
    if (words.empty()) throw ControlError("fault: expected a kind of fault, or clear; ponsim(8) tells of them");
    if (words[0] == "clear") return clear(words.subspan(1));
    const FaultForm &form = form_of(words[0]);
    Fault fault{form.kind};
    words = words.subspan(1);
    const bool given = !words.empty() && words[0].find('=') == std::string::npos;
    if (!form.value.empty() && given) {
        fault.value = value_of(form, words[0]);
        words = words.subspan(1);
    } else if (!form.value.empty() && !form.optional) {
        throw ControlError("fault " + std::string(form.name) + ": expected " +
                           (form.words.empty() ? std::string(form.value) : one_of(form.words)) + " behind it");
    }
    for (const std::string &word : words)
        set_option(fault, word);
    return planned(fault);
}

constexpr Control commands[] = {
    {"fault", "KIND [VALUE] [channel=C] [command=C] [percent=P] [count=N] [skip=N]",
     "something goes wrong on the wire; fault clear [NUMBER] ends it", set_fault},
};

} // namespace

std::span<const Control> fault_controls()
{
    return commands;
}

} // namespace ponsim
