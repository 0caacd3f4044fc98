#include "engine/faults.h"

#include <algorithm>

#include "catalogue.h"
#include "control/fault_forms.h"
#include "model/base/random.h"

namespace ponsim
{
namespace
{

// Returns the catalogue's command of a message. Returns null when there is none.
const catalogue::Command *known_command(const Message &message)
{
    const std::optional<uint32_t> code = command_of(message);
    return code ? catalogue::find_command(command_channel(message), *code, message.call) : nullptr;
}

bool concerns(const Fault &fault, const Message &message)
{
    return (!fault.channel || message.channel == *fault.channel) &&
           (!fault.code || command_of(message) == fault.code) &&
           (!fault.command || known_command(message) == fault.command);
}

std::string bad_result(const std::string &good, const FaultCase &fault)
{
    auto how = static_cast<BadResult>(fault.fault.value);
    if (how == BadResult::any) how = static_cast<BadResult>(1 + fault.random % (bad_results - 1));
    switch (how) {
    case BadResult::any:
    case BadResult::cut:
        return good.substr(0, good.empty() ? 0 : fault.random / bad_results % good.size());
    case BadResult::text:
        return "no table, but a text";
    case BadResult::type:
        return "42";
    case BadResult::columns:
        return R"([{"no_such_column":1},{"nor_this_one":null}])";
    }
    return good;
}

// Returns the fields that hold texts in the answer to a command. A field does so by its type, or because an operation
// takes a text from there.
std::vector<const catalogue::Field *> texts_in_answer(const catalogue::Command &command)
{
    std::vector<const catalogue::Field *> texts;
    const auto add_texts_of = [&texts](std::span<const catalogue::Field> fields) {
        for (const catalogue::Field &field : fields)
            if (field.type == catalogue::FieldType::text) texts.push_back(&field);
    };
    add_texts_of(command.channel->record->fields);
    if (const catalogue::Layout *layout = catalogue::find_layout(command, true)) add_texts_of(layout->fields);
    for (const catalogue::Operation &operation : catalogue::operations()) {
        if (operation.command != &command) continue;
        for (const catalogue::Argument &argument : operation.arguments) {
            const bool text = argument.type == catalogue::ArgumentType::text_out ||
                              argument.source == catalogue::Source::text || argument.source == catalogue::Source::file;
            if (text && argument.field) texts.push_back(argument.field);
        }
    }
    return texts;
}

void fill_up(std::string &answer, const catalogue::Field &field)
{
    const size_t end = std::min<size_t>(field.offset + field.size, answer.size());
    if (field.offset >= end) return;
    const auto from = std::find(answer.begin() + field.offset, answer.begin() + static_cast<ptrdiff_t>(end), '\0');
    std::fill(from, answer.begin() + static_cast<ptrdiff_t>(end), 'x');
}

} // namespace

std::string Faults::objection(const FaultOrder &order) const
{
    if (std::holds_alternative<Fault>(order)) {
        if (entries.size() < max_faults) return {};
        return "fault: " + std::to_string(max_faults) + " are set, and no more can be; clear some";
    }
    const std::optional<uint32_t> number = std::get<ClearFaults>(order).number;
    if (!number || std::ranges::find(entries, *number, &Entry::number) != entries.end()) return {};
    return "fault: there is no number " + std::to_string(*number) + "; ponsim ctl faults lists those there are";
}

void Faults::carry_out(const FaultOrder &order)
{
    if (const Fault *fault = std::get_if<Fault>(&order)) {
        entries.push_back({++last_number, *fault});
    } else {
        const std::optional<uint32_t> number = std::get<ClearFaults>(order).number;
        std::erase_if(entries, [&](const Entry &entry) { return !number || entry.number == *number; });
    }
}

std::vector<FaultCase> Faults::happen_to(const Message &message)
{
    std::vector<FaultCase> cases;
    for (Entry &entry : entries) {
        const Fault &fault = entry.fault;
        if (!concerns(fault, message)) continue;
        // Each fault draws from a stream of its own for each request to which it may happen. So no fault shifts the
        // numbers of another.
        Random random{seed,
                      static_cast<uint64_t>(Purpose::faults) << 56 | uint64_t{entry.number} << 32 | entry.matched};
        if (entry.matched++ < fault.skip || !random.happens(fault.percent)) continue;
        ++entry.happened;
        cases.push_back({fault, entry.number, random.next()});
    }
    std::erase_if(entries,
                  [](const Entry &entry) { return entry.fault.count && entry.happened >= *entry.fault.count; });
    return cases;
}

std::string Faults::list() const
{
    std::string text;
    for (const Entry &entry : entries)
        text += std::to_string(entry.number) + ": " + to_text(entry.fault) + ", happened " +
                std::to_string(entry.happened) + (entry.happened == 1 ? " time\n" : " times\n");
    return text;
}

void spoil(Reply &reply, const FaultCase &fault)
{
    const auto replace = [&reply](const auto &made_of) {
        if (reply.result) reply.result = made_of(*reply.result);
        if (reply.file) reply.file->content = made_of(reply.file->content);
    };
    switch (fault.fault.kind) {
    case FaultKind::status:
        reply.status = fault.fault.value;
        break;
    case FaultKind::no_result:
        reply.result.reset();
        reply.file.reset();
        break;
    case FaultKind::big_result:
        replace([](const std::string &good) { return good + std::string(max_result, ' '); });
        break;
    case FaultKind::bad_result:
        replace([&fault](const std::string &good) { return bad_result(good, fault); });
        break;
    default:
        break;
    }
}

void spoil(std::string &answer, const FaultCase &fault, const Message &message)
{
    switch (fault.fault.kind) {
    case FaultKind::shortened:
        answer.resize(std::min<size_t>(answer.size(), fault.fault.value));
        break;
    case FaultKind::oversized:
        answer.resize(std::max<size_t>(answer.size(), fault.fault.value), 'x');
        break;
    case FaultKind::unterminated:
        if (const catalogue::Command *command = known_command(message))
            for (const catalogue::Field *text : texts_in_answer(*command))
                fill_up(answer, *text);
        break;
    default:
        break;
    }
}

} // namespace ponsim
