#include "called.h"

#include "mode.h"
#include "numbers.h"
#include "report.h"

namespace ponctl
{

using catalogue::Argument;
using catalogue::ArgumentType;

Called::Called(const catalogue::Operation &operation, const std::vector<std::string> &words, const CallOptions &options)
    : arguments(operation, words, options.allow_long), command(arguments.command())
{
    const Sender sender{"calling " + std::string(operation.name), operation.record, &operation};
    const Watch watch(sender);
    returned = catalogue::invoke(operation, arguments.values());
    exchanged = watch.exchange();
    arguments.settle();
}

Called::Called(const char *operation, const std::vector<std::string> &words)
    : Called(*catalogue::find_operation(operation), words)
{
}

ExitCode Called::report(const std::string &subject) const
{
    return report_exchange(subject + std::string(operation().name), exchanged, returned);
}

void Called::expect_answer() const
{
    if (mode().dry_run)
        throw UsageError("--dry-run: the requests that follow are made of what " + std::string(operation().name) +
                         " answers");
}

bool Called::delivers(size_t index) const
{
    const Argument &argument = operation().arguments[index];
    // The operations that deliver in a way of their own do so only where the status is 0.
    if (returned != 0 && catalogue::find_oddity(operation(), catalogue::Facet::answer)) return false;
    if (is_output(argument)) return true;
    // A block that goes out is left alone where it is not given, or another one receives the answer.
    const bool is_block = argument.type == ArgumentType::block_inout;
    const bool left_alone = is_block && (bytes(index).empty() || has(ArgumentType::block_out));
    return is_in_place(operation(), argument) && !left_alone;
}

db_handle *Called::database(size_t index) const
{
    db_handle *database = arguments.database(index);
    return document_of(database).empty() ? nullptr : database;
}

std::string_view Called::text(size_t index) const
{
    return field_text(bytes(index));
}

Reading Called::reading(size_t index) const
{
    Reading reading = read_record(*operation().response, {operation().channel, operation().call, command, true},
                                  arguments.bytes(index));
    const Argument &argument = operation().arguments[index];
    const bool is_part = argument.type == ArgumentType::block_out || argument.type == ArgumentType::block_inout ||
                         is_number_out(argument);
    if (is_part) reading.start = argument.field->offset;
    return reading;
}

Reading Called::block() const
{
    return reading(index_of(has(ArgumentType::block_out) ? ArgumentType::block_out : ArgumentType::block_inout));
}

Reading Called::answer() const
{
    return read_record(*operation().response, {operation().channel, operation().call, command, true},
                       exchanged.response);
}

const catalogue::Field &Called::word_field(size_t index) const
{
    const catalogue::Field &field = *operation().arguments[index].field;
    if (const catalogue::Layout *layout = reading(index).layout)
        for (const catalogue::Field &named : layout->fields)
            if (named.offset == field.offset && is_number(named.type)) return named;
    return field;
}

size_t Called::index_of(ArgumentType type) const
{
    size_t index = 0;
    while (index < operation().arguments.size() && operation().arguments[index].type != type)
        ++index;
    return index;
}

} // namespace ponctl
