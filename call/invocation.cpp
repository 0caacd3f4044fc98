#include "call/invocation.h"

#include "call/codec/numbers.h"
#include "call/json.h"
#include "call/view_check.h"

namespace call
{

using catalogue::Argument;
using catalogue::ArgumentType;

Invocation::Invocation(const catalogue::Operation &operation, std::span<const Assignment> given, Permission &permission,
                       Allowed allowed)
    : arguments(operation, given, allowed), command(arguments.command())
{
    const Sender sender{"calling " + std::string(operation.name), operation.record, &operation};
    const Watch watch(sender, permission);
    returned = catalogue::invoke(operation, arguments.values());
    exchanged = watch.exchange();
    arguments.settle();
    if (answered() && agreed()) wrong = find_fault();
}

Invocation::Invocation(const catalogue::Operation &operation, const std::vector<std::string> &words,
                       Permission &permission, Allowed allowed)
    : Invocation(operation, parse_assignments(words), permission, allowed)
{
}

Invocation::Invocation(const char *operation, const std::vector<std::string> &words, Permission &permission)
    : Invocation(*catalogue::find_operation(operation), words, permission)
{
}

bool Invocation::delivers(size_t index) const
{
    const Argument &argument = operation().arguments[index];
    // The operations that deliver in a way of their own deliver only when the status is 0.
    if (returned != 0 && catalogue::find_oddity(operation(), catalogue::Facet::answer)) return false;
    if (is_output(argument)) return true;
    // A block that is sent is not overwritten when it is not given, or when another block receives the answer.
    const bool is_block = argument.type == ArgumentType::block_inout;
    const bool left_alone = is_block && (bytes(index).empty() || has(ArgumentType::block_out));
    return is_in_place(operation(), argument) && !left_alone;
}

db_handle *Invocation::database(size_t index) const
{
    db_handle *database = arguments.database(index);
    return document_of(database).empty() ? nullptr : database;
}

std::string_view Invocation::text(size_t index) const
{
    return field_text(bytes(index));
}

Reading Invocation::reading(size_t index) const
{
    Reading reading = read_record(*operation().response, {operation().channel, operation().call, command, true},
                                  arguments.bytes(index));
    const Argument &argument = operation().arguments[index];
    const bool is_part = argument.type == ArgumentType::block_out || argument.type == ArgumentType::block_inout ||
                         is_number_out(argument);
    if (is_part) reading.start = argument.field->offset;
    return reading;
}

Reading Invocation::block() const
{
    return reading(index_of(has(ArgumentType::block_out) ? ArgumentType::block_out : ArgumentType::block_inout));
}

Reading Invocation::answer() const
{
    return read_record(*operation().response, {operation().channel, operation().call, command, true},
                       exchanged.response);
}

const catalogue::Field &Invocation::word_field(size_t index) const
{
    const catalogue::Field &field = *operation().arguments[index].field;
    if (const catalogue::Layout *layout = reading(index).layout)
        for (const catalogue::Field &named : layout->fields)
            if (named.offset == field.offset && is_number(named.type)) return named;
    return field;
}

std::string Invocation::find_fault() const
{
    for (size_t index = 0; index < operation().arguments.size(); ++index) {
        const Argument &argument = operation().arguments[index];
        if (!delivers(index) || argument.dropped) continue;
        const std::string start = std::string(argument.name) + ": ";
        if (argument.type == ArgumentType::pblock_out && bytes(index).empty())
            return start + "the service left nothing in a result file";
        if (argument.type != ArgumentType::db) continue;
        const db_handle *found = database(index);
        const std::string fault = found ? fault_of(found, view()) : "the service left no result database";
        if (!fault.empty()) return start + fault;
    }
    return {};
}

size_t Invocation::index_of(ArgumentType type) const
{
    size_t index = 0;
    while (index < operation().arguments.size() && operation().arguments[index].type != type)
        ++index;
    return index;
}

} // namespace call
