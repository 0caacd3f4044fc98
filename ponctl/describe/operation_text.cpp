#include "describe/operation_text.h"

#include <algorithm>
#include <cstdio>

#include "call/arguments.h"
#include "call/codec/decode.h"
#include "call/codec/meaning.h"
#include "call/codec/numbers.h"
#include "output/exit_code.h"

namespace ponctl
{
namespace
{

using catalogue::Argument;
using catalogue::ArgumentType;
using catalogue::Operation;

// Returns the steps of a scaled number.
std::string steps_of(const catalogue::Field &field)
{
    if (field.scale == 1) return {};
    char steps[32];
    std::snprintf(steps, sizeof steps, ", in steps of %g", field.scale);
    return steps;
}

// Returns the range of the numbers that a field holds, in its unit, with the unit. The text is empty when the field
// holds no number.
std::string range_of(const catalogue::Field &field)
{
    if (!is_number(field.type)) return {};
    const bool is_signed = field.type == catalogue::FieldType::s16 || field.type == catalogue::FieldType::s32;
    const uint64_t greatest = UINT64_MAX >> (64 - 8 * field.size + (is_signed ? 1 : 0));
    const auto text_of = [&field](uint64_t number) {
        char text[32];
        if (field.scale == 1)
            std::snprintf(text, sizeof text, "%llu", static_cast<unsigned long long>(number));
        else
            std::snprintf(text, sizeof text, "%.10g", static_cast<double>(number) * field.scale);
        return std::string(text);
    };
    std::string range = is_signed ? "-" + text_of(greatest + 1) : "0";
    range += " to " + text_of(greatest);
    if (!field.unit.empty()) range.append(" ").append(field.unit);
    return range;
}

// Returns the range of the numbers that an argument takes: numbers of its type that the field holds. The field is that
// of the layout when the layout names it.
std::string range_of(const Operation &operation, const Argument &argument)
{
    catalogue::Field field = *argument.field;
    if (const catalogue::Layout *layout = layout_of(operation, false))
        for (const catalogue::Field &named : layout->fields)
            if (named.offset == field.offset && is_number(named.type)) field = named;
    if (argument.type == ArgumentType::u8) field.size = 1;
    if (argument.type == ArgumentType::u16) field.size = std::min<uint32_t>(field.size, 2);
    return range_of(field);
}

} // namespace

bool goes_through(const Operation &operation)
{
    return operation.logged_as != operation.name;
}

std::string failure_text(const Operation &operation)
{
    switch (operation.error_policy) {
    case catalogue::ErrorPolicy::report:
        return "a failed exchange is logged and returned as BSP_ERR_IPC (1001)";
    case catalogue::ErrorPolicy::pass:
        return "a failed exchange is logged and returned as the IPC library's own value";
    case catalogue::ErrorPolicy::silent:
        return "a failed exchange is returned as the IPC library's own value, without a log line";
    }
    return {};
}

std::string request_text(const Operation &operation)
{
    const std::string record(operation.record->name);
    const std::string size = std::to_string(operation.record->size);
    switch (operation.request) {
    case catalogue::RequestForm::built:
        return record + " built from the arguments, " +
               (operation.record->payload ? "its payload and 28 bytes" : size + " bytes");
    case catalogue::RequestForm::as_is:
        return record + " as you give it, " + size + " bytes";
    case catalogue::RequestForm::copied:
        return record + " as you give it but for the command code, " + size + " bytes";
    case catalogue::RequestForm::stamped:
        return record + " as you give it, with the command code written into it, " + size + " bytes";
    }
    return {};
}

std::string answer_text(const Operation &operation)
{
    if (!operation.response) return "the status alone";
    const std::string size = std::to_string(operation.response_size) + " bytes";
    const std::string record(operation.response->name);
    switch (operation.answer) {
    case catalogue::AnswerForm::none:
        break;
    case catalogue::AnswerForm::own:
        return record + ", into a buffer of the library";
    case catalogue::AnswerForm::in_place:
        return record + ", into the record that you gave, " + size;
    case catalogue::AnswerForm::caller:
        return record + " as far as " + size + " go, into your buffer";
    }
    return {};
}

std::string command_text(const Operation &operation)
{
    if (!operation.command) return operation.record->command ? "as you give it" : "none";
    return std::string(operation.command->name) + " (" + std::to_string(operation.command->code) +
           "): " + std::string(operation.command->brief);
}

std::string asking_text(const Operation &operation)
{
    const std::string unless = ", unless --yes is given";
    const bool is_set = operation.call == catalogue::Call::set || operation.call == catalogue::Call::dgram_set;
    if (!operation.command && is_set)
        return "before a command is sent that affects service, or that is not known" + unless;
    return operation.impact == catalogue::Class::service_affecting ? "before it is called" + unless : std::string();
}

std::string channel_text(const Operation &operation)
{
    return std::string(operation.channel->name) + " (" + std::to_string(operation.channel->type) +
           "): " + std::string(operation.channel->brief);
}

std::string usage_of(const Operation &operation)
{
    std::string usage = "ponctl call " + std::string(operation.name);
    for (const Argument &argument : operation.arguments) {
        if (is_output(argument)) continue;
        const std::string form = takes_fields(operation, argument) ? std::string(argument.name) + ".FIELD=VALUE..."
                                                                   : form_of(operation, argument);
        usage += may_be_omitted(argument) ? " [" + form + "]" : " " + form;
    }
    return usage;
}

const catalogue::View *view_of(const Operation &operation)
{
    return operation.command ? catalogue::find_view(*operation.command) : nullptr;
}

const catalogue::Layout *layout_of(const Operation &operation, bool of_answer)
{
    return operation.command ? catalogue::find_layout(*operation.command, of_answer) : nullptr;
}

std::string rule_text(const Operation &operation, const Argument &argument)
{
    if (is_ignored(argument)) return "(not used; 0 when left out)";
    if (argument.type == ArgumentType::length_at) return "(all that an answer holds when left out)";
    if (argument.type == ArgumentType::length) return "(all that there is when left out)";
    if (argument.dropped) return "(the service's result is taken and dropped: nothing is handed out)";
    std::string rule = is_output(argument) ? "(read back" : argument.optional ? "(may be left out" : "(required";
    if (argument.type == ArgumentType::block_inout) rule += " and read back";
    if (argument.field) {
        rule += std::string(is_output(argument) ? "; from " : "; to ") + std::string(argument.field->name) +
                " at offset " + std::to_string(argument.field->offset);
        if (const catalogue::Field *named = named_values_of(operation, argument))
            rule += "; " + allowed_text(*named) + ", or a number";
        else if (is_number(argument) && !is_command(operation, argument))
            rule += "; " + range_of(operation, argument);
        if (argument.type == ArgumentType::text)
            rule += ", which holds " + std::to_string(longest(*argument.field, true)) + " characters";
        if (argument.type == ArgumentType::block && argument.size == 0)
            rule += ", which holds " + std::to_string(longest(*argument.field, false)) + " bytes";
    }
    if (argument.size > 0) rule += "; " + std::to_string(argument.size) + " bytes";
    if (is_sized_block(argument)) rule += ", those not given zero";
    return rule + ")";
}

bool reads_back_fields(const Argument &argument)
{
    return argument.type == ArgumentType::response || argument.type == ArgumentType::block_out ||
           argument.type == ArgumentType::block_inout;
}

bool takes_whole_record(const Argument &argument)
{
    return argument.type == ArgumentType::record && argument.picked.empty();
}

std::string about_field(const catalogue::Field &field, bool is_set)
{
    std::string about = std::string(catalogue::to_text(field.type)) + " of " + std::to_string(field.size) +
                        (field.size == 1 ? " byte" : " bytes") + " at offset " + std::to_string(field.offset) + "; " +
                        std::string(field.brief);
    const std::string allowed = is_set ? allowed_text(field) : std::string();
    const std::string range = is_set ? range_of(field) : std::string(field.unit);
    if (!allowed.empty())
        about += " (" + allowed + ")";
    else if (!range.empty())
        about += " (" + range + steps_of(field) + ")";
    return about;
}

std::string about_column(const catalogue::Column &column)
{
    std::string about(column.brief);
    if (!column.unit.empty()) about.append(" (").append(column.unit).append(")");
    return about;
}

} // namespace ponctl
