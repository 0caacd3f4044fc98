#include "control/fault_forms.h"

#include <algorithm>
#include <array>
#include <limits>

#include "catalogue.h"

namespace ponsim
{
namespace
{

constexpr std::array<std::string_view, bad_results> result_words{"any", "cut", "text", "type", "columns"};
constexpr std::array<std::string_view, 2> kill_words{"before", "after"};
constexpr uint32_t any_word = std::numeric_limits<uint32_t>::max();

constexpr FaultForm forms[] = {
    {FaultKind::late, "late", "MS", 1, max_answer_delay},
    {FaultKind::lost, "lost"},
    {FaultKind::shortened, "short", "BYTES", 0, max_answer},
    {FaultKind::oversized, "oversized", "BYTES", 1, max_answer},
    {FaultKind::duplicated, "duplicated", "TIMES", 1, max_answer_repeats},
    {FaultKind::status, "status", "WORD", 0, any_word},
    {FaultKind::no_result, "no-result"},
    {FaultKind::big_result, "big-result"},
    {FaultKind::bad_result, "bad-result", "HOW", 0, 0, result_words, true},
    {FaultKind::unterminated, "unterminated"},
    {FaultKind::kill, "kill", "WHEN", 0, 0, kill_words},
};

} // namespace

std::string to_text(const Fault &fault)
{
    const FaultForm &form = *std::ranges::find(forms, fault.kind, &FaultForm::kind);
    std::string text{form.name};
    const auto add = [&text](std::string_view key, std::string_view value) {
        text.append(" ").append(key).append(value);
    };
    if (!form.words.empty())
        add("", form.words[fault.value]);
    else if (!form.value.empty())
        add("", std::to_string(fault.value));
    if (fault.channel) {
        const catalogue::Channel *channel = catalogue::find_channel(*fault.channel);
        add("channel=", channel ? std::string(channel->name) : std::to_string(*fault.channel));
    }
    if (fault.code) add("command=", std::to_string(*fault.code));
    if (fault.command) add("command=", fault.command->name);
    if (fault.percent != 100) add("percent=", std::to_string(fault.percent));
    if (fault.count) add("count=", std::to_string(*fault.count));
    if (fault.skip) add("skip=", std::to_string(fault.skip));
    return text;
}

std::span<const FaultForm> fault_forms()
{
    return forms;
}

} // namespace ponsim
