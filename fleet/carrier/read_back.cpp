#include "fleet/carrier/read_back.h"

#include <algorithm>

#include "call/codec/decode.h"
#include "call/record.h"

namespace fleet
{
namespace
{

using call::Reading;
using call::RecordCall;
using call::RecordRole;
using catalogue::Field;
using catalogue::Operation;

const catalogue::Layout *layout_of(const RecordCall &asked)
{
    return call::read_record(*asked.record, {asked.channel, asked.call}, asked.request).layout;
}

// Returns the operation that reads how a setting stands into a record.
const Operation *reader_of(const catalogue::Command &present)
{
    for (const Operation &operation : catalogue::operations())
        if (operation.command == &present && call::has_answer(operation.call) && operation.response) return &operation;
    return nullptr;
}

} // namespace

std::optional<RecordCall> question_about(const RecordCall &setting)
{
    const catalogue::Layout *layout = layout_of(setting);
    const Operation *reader = layout && layout->present ? reader_of(*layout->present) : nullptr;
    if (!reader || reader->record != setting.record || !setting.record->command) return std::nullopt;
    RecordCall question{reader->channel, reader->call, reader->record, setting.request, reader->preset};
    // What is asked for is no part of a question; which of several things is meant is.
    for (const Field &field : layout->fields)
        if (field.name != "index" && field.offset + field.size <= question.request.size())
            std::fill_n(question.request.begin() + field.offset, field.size, uint8_t{0});
    const uint32_t code = layout->present->code;
    std::copy_n(reinterpret_cast<const uint8_t *>(&code), sizeof code,
                question.request.begin() + setting.record->command->offset);
    return question;
}

bool shows(const call::RecordOutcome &answer, const RecordCall &question, const RecordCall &setting)
{
    if (answer.ipc_result != 0 || answer.status != 0) return false;
    RecordRole role{question.channel, question.call};
    role.command = call::command_of(*question.record, role, question.request);
    role.is_answer = true;
    const Reading stands =
        call::read_record(call::answer_record(*question.record, role.command), role, answer.response);
    const catalogue::Layout *wanted = layout_of(setting);
    if (!stands.layout || !wanted) return false;
    return std::ranges::all_of(wanted->fields, [&](const Field &field) {
        const Field *known = catalogue::find_field(stands.layout->fields, field.name);
        return known && known->size == field.size && stands.reaches(*known) &&
               std::ranges::equal(call::field_bytes(*known, answer.response),
                                  call::field_bytes(field, setting.request));
    });
}

} // namespace fleet
