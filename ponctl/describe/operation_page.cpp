#include "describe/operation_page.h"

#include <algorithm>

#include "call/arguments.h"
#include "describe/operation_text.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/text.h"
#include "text/filled.h"

namespace ponctl
{
namespace
{

using catalogue::Argument;
using catalogue::ArgumentType;
using catalogue::Operation;

std::string field_page(const catalogue::Field &field, bool is_set)
{
    return text::filled("        " + std::string(field.name) + ": ", about_field(field, is_set), 12);
}

std::string layout_page(std::string_view what, const catalogue::Layout &layout, bool is_set)
{
    std::string page = text::filled(what, 6);
    for (const catalogue::Field &field : layout.fields)
        page += field_page(field, is_set);
    return page;
}

// Returns the commands of a channel that have no operation of their own. Only the operations that take a command code
// reach them.
std::string commands_page(const catalogue::Channel &channel)
{
    std::string page;
    for (const catalogue::Command &command : catalogue::commands()) {
        const auto sends = [&command](const Operation &operation) { return operation.command == &command; };
        if (command.channel != &channel || std::ranges::any_of(catalogue::operations(), sends)) continue;
        page += text::filled("        " + std::string(command.name) + ": ", command.brief, 12);
    }
    return page.empty() ? page : "      such as those that have no operation of their own:\n" + page;
}

std::string argument_page(const Operation &operation, const Argument &argument)
{
    const std::string form = form_of(operation, argument);
    std::string page = "  " + (form.empty() ? std::string(argument.name) : form) + "\n" +
                       text::filled(argument.brief, 6) + text::filled(rule_text(operation, argument), 6);
    if (is_command(operation, argument)) page += commands_page(*operation.channel);
    if (takes_fields(operation, argument)) {
        page += "      FIELD is one of\n";
        for (const catalogue::Field *field : fields_of(operation, argument))
            page += field_page(*field, true);
    }
    if (takes_whole_record(argument)) {
        if (const catalogue::Layout *layout = layout_of(operation, false))
            page += layout_page("or, as the simulated service reads this command's record, one of", *layout, true);
        else if (!operation.command)
            page += text::filled("or of those that the simulated service reads in the record of the command", 6);
    }
    if (reads_back_fields(argument))
        if (const catalogue::Layout *layout = layout_of(operation, true))
            page +=
                layout_page("which the simulated service answers with, beside the record's own fields", *layout, false);
    return page;
}

std::string columns_page(const catalogue::View &view)
{
    std::string page = "\nColumns of the result:\n" + text::filled(view.brief, 2);
    for (const catalogue::Column &column : view.columns)
        page += text::filled("  " + std::string(column.name) + ": ", about_column(column), 6);
    return page;
}

bool takes(const Operation &operation, ArgumentType type)
{
    for (const Argument &argument : operation.arguments)
        if (argument.type == type) return true;
    return false;
}

// Explains the words in capitals, as far as the operation has such arguments.
std::string forms_page(const Operation &operation)
{
    std::string page;
    if (takes(operation, ArgumentType::u32) || takes(operation, ArgumentType::u16))
        page += "  NUMBER  decimal, or hexadecimal with 0x\n";
    if (takes(operation, ArgumentType::u8)) page += "  BYTE    a NUMBER up to 255\n";
    for (const Argument &argument : operation.arguments)
        if (is_command(operation, argument)) page += "  COMMAND a BSP_CMD_ name or a number\n";
    if (takes(operation, ArgumentType::mac)) page += "  MAC     00:11:22:33:44:55, 00-11-22-33-44-55, 0011.2233.4455\n";
    if (takes(operation, ArgumentType::block) || takes(operation, ArgumentType::block_inout) ||
        takes(operation, ArgumentType::record))
        page += "  BLOCK   hex:0011..., text:..., or @FILE\n";
    if (std::ranges::any_of(operation.arguments, [&](const Argument &each) { return takes_fields(operation, each); }))
        page += "  VALUE   by the field's type: number, MAC, BLOCK, text, or ids as 1-5,7\n";
    return page;
}

std::string page_of(const Operation &operation)
{
    std::string page = std::string(operation.name) + "\n" + text::filled(operation.brief, 2);
    if (!operation.notes.empty()) page += text::filled(operation.notes, 2);
    page += "\nUsage:\n" + text::filled(usage_of(operation), 2);
    if (!operation.arguments.empty()) page += "\nArguments:\n";
    for (const Argument &argument : operation.arguments)
        page += argument_page(operation, argument);
    if (const std::string forms = forms_page(operation); !forms.empty()) page += "\n" + forms;
    if (const catalogue::View *view = view_of(operation)) page += columns_page(*view);
    page += "\n";
    const auto line = [&page](const char *label, std::string_view text) { page += text::filled(label, text, 9); };
    line("Family:", operation.family);
    line("Class:", catalogue::to_text(operation.impact));
    if (const std::string asks = asking_text(operation); !asks.empty()) line("Asks:", asks);
    line("Call:", catalogue::to_text(operation.call));
    line("Channel:", channel_text(operation));
    line("Command:", command_text(operation));
    line("Record:", request_text(operation));
    line("Answer:", answer_text(operation));
    line("Failure:", failure_text(operation));
    if (goes_through(operation)) line("Through:", std::string(operation.logged_as) + ", whose name stands in the log");
    for (const catalogue::Oddity &oddity : operation.odd)
        line("Oddity:", oddity.brief);
    return page;
}

std::string page_of(const catalogue::Function &function)
{
    std::string page = std::string(function.name) + "\n" + text::filled(function.brief, 2);
    if (!function.notes.empty()) page += text::filled(function.notes, 2);
    page += "\nPrototype:\n" + text::filled(function.prototype, 2) + "\n";
    page += text::filled("Family:", function.family, 9);
    page += text::filled(
        "Class:", std::string(local_class) + ", makes no request: for the command line there is 'ponctl idset'", 9);
    return page;
}

template <class Entry>
std::string_view name_or_none(const Entry *entry)
{
    return entry ? entry->name : std::string_view();
}

void write_arguments(JsonText &json, const Operation &operation)
{
    json.key("arguments");
    json->StartArray();
    for (const Argument &argument : operation.arguments) {
        json->StartObject();
        json.member("name", argument.name);
        json.member("type", type_name(operation, argument));
        json.member("direction", is_output(argument) ? "out" : is_in_place(operation, argument) ? "in-out" : "in");
        json.truth("required", !may_be_omitted(argument));
        json.member_or_null("field", name_or_none(argument.field));
        if (argument.size > 0) json.member("size", argument.size);
        json.member("brief", argument.brief);
        json->EndObject();
    }
    json->EndArray();
}

} // namespace

void write_operation(JsonText &json, const Operation &operation)
{
    json->StartObject();
    json.member("name", operation.name);
    json.member("family", operation.family);
    json.member("brief", operation.brief);
    json.member("notes", operation.notes);
    json.member("class", catalogue::to_text(operation.impact));
    json.member("call", catalogue::to_text(operation.call));
    json.member("channel", operation.channel->name);
    json.member("record", operation.record->name);
    json.member_or_null("command", name_or_none(operation.command));
    operation.command ? json.member("code", operation.command->code) : json.null("code");
    json.member("failure", failure_text(operation));
    json.member_or_null("response", name_or_none(operation.response));
    json.member_or_null("through", goes_through(operation) ? operation.logged_as : std::string_view());
    json.key("oddities");
    json->StartArray();
    for (const catalogue::Oddity &oddity : operation.odd)
        json.text(oddity.brief);
    json->EndArray();
    write_arguments(json, operation);
    json->EndObject();
}

void write_function(JsonText &json, const catalogue::Function &function)
{
    json->StartObject();
    json.member("name", function.name);
    json.member("family", function.family);
    json.member("brief", function.brief);
    json.member("notes", function.notes);
    json.member("class", local_class);
    json.member("prototype", function.prototype);
    json->EndObject();
}

void print_page(const Output &output, const Operation &operation)
{
    refuse_hex(output, "the catalogue");
    if (output.format == Format::json) {
        Json json(output.stream);
        write_operation(json, operation);
    } else {
        std::fputs(page_of(operation).c_str(), output.stream);
    }
}

void print_page(const Output &output, const catalogue::Function &function)
{
    refuse_hex(output, "the catalogue");
    if (output.format == Format::json) {
        Json json(output.stream);
        write_function(json, function);
    } else {
        std::fputs(page_of(function).c_str(), output.stream);
    }
}

} // namespace ponctl
