// This file makes the exchange of a RecordCall, and takes what the service left.
#include "call/record_call.h"

#include "board/datastore.h"
#include "board/ipc.h"
#include "board/service.h"
#include "board/util.h"
#include "call/codec/decode.h"
#include "call/json.h"
#include "call/record.h"

namespace call
{
namespace
{

using catalogue::Argument;
using catalogue::ArgumentType;
using catalogue::Operation;

// Takes the result database, which has the code of the command as it stands in the request or in the answer.
void take_result(const catalogue::Record &record, const RecordCall &asked, RecordOutcome &outcome)
{
    if (!record.command) return;
    for (const Bytes *bytes : std::initializer_list<const Bytes *>{&asked.request, &outcome.response}) {
        if (bytes->size() < record.command->offset + sizeof(uint32_t)) continue;
        const uint32_t key = load_word(bytes->data() + record.command->offset);
        const Database found(db_from_shmem(key, BOARD_RESULT_MAX));
        if (!found) continue;
        outcome.result_key = key;
        outcome.result = document_of(found.get());
        return;
    }
}

// Returns where an answer names a file, if an operation with this request reads one.
const catalogue::Field *file_field_of(const RecordCall &asked, const catalogue::Command *command)
{
    for (const Operation &operation : catalogue::operations()) {
        const bool sends_this = operation.channel == asked.channel && operation.call == asked.call &&
                                (!operation.command || operation.command == command);
        if (!sends_this) continue;
        for (const Argument &argument : operation.arguments)
            if (argument.source == catalogue::Source::file || argument.type == ArgumentType::pblock_out)
                return argument.field;
    }
    return nullptr;
}

void take_file(const RecordCall &asked, const catalogue::Command *command, RecordOutcome &outcome)
{
    const catalogue::Field *field = file_field_of(asked, command);
    if (!field || outcome.response.size() <= field->offset) return;
    const std::string name(field_text(std::span(outcome.response).subspan(field->offset)));
    const Database found(name.empty() ? nullptr : db_create_fromfile(name.c_str()));
    if (!found) return;
    const std::string_view content = document_of(found.get());
    outcome.file = {name, {content.begin(), content.end()}};
    delete_file(name.c_str());
}

} // namespace

RecordOutcome perform(const RecordCall &asked, Permission &permission)
{
    const RecordRole role{asked.channel, asked.call};
    const catalogue::Command *command = command_of(*asked.record, role, asked.request);
    const Sender sender{"sending " + std::string(command ? command->name : asked.record->name), asked.record};
    Exchange made =
        exchange_record(sender, permission, {catalogue::module, asked.channel->type}, asked.call, asked.request,
                        asked.preset, std::max<size_t>(asked.preset, answer_record(*asked.record, command).size));
    RecordOutcome outcome{.ipc_result = made.kept_back ? IPC_ERR_REFUSED : made.result,
                          .status = made.status,
                          .response = std::move(made.response),
                          .result_key = 0,
                          .result = {},
                          .file = {}};
    if (outcome.ipc_result != IPC_OK || !has_answer(asked.call)) return outcome;
    take_result(*asked.record, asked, outcome);
    take_file(asked, command, outcome);
    return outcome;
}

} // namespace call
