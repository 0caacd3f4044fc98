// This file writes the page of the operations.
#include <algorithm>

#include "call/arguments.h"
#include "describe/operation_text.h"
#include "output/exit_code.h"
#include "pages/mdoc.h"
#include "pages/pages.h"
#include "pages/tree.h"

namespace ponctl
{
namespace
{

using catalogue::Argument;
using catalogue::ArgumentType;
using catalogue::Field;
using catalogue::Operation;

std::string item(std::string_view name, const std::string &about)
{
    return ".It " + mdoc::word(name) + "\n" + mdoc::text(sentence(about));
}

std::string field_list(const std::string &lead, const std::vector<const Field *> &fields, bool is_set)
{
    std::string text = mdoc::text(lead) + ".Bl -tag -width Ds -compact\n";
    for (const Field *field : fields)
        text += item(field->name, about_field(*field, is_set));
    return text + ".El\n";
}

std::string field_list(const std::string &lead, std::span<const Field> fields, bool is_set)
{
    std::vector<const Field *> all;
    for (const Field &field : fields)
        all.push_back(&field);
    return field_list(lead, all, is_set);
}

std::string argument_item(const Operation &operation, const Argument &argument)
{
    const std::string form = form_of(operation, argument);
    std::string text =
        item(form.empty() ? argument.name : form, std::string(argument.brief)) +
        mdoc::text(sentence(std::string(type_name(operation, argument)) + " " + rule_text(operation, argument)));
    // Fields that several operations leave to the caller are described once, in a section of their own.
    const bool whole_record = takes_whole_record(argument);
    if (takes_fields(operation, argument) && !whole_record)
        text += field_list("Its fields:", fields_of(operation, argument), true);
    if (whole_record) {
        text += mdoc::text("Its fields are those of " + std::string(operation.record->name) + ", see RECORDS.");
        if (const catalogue::Layout *layout = layout_of(operation, false))
            text += field_list("Beside them, the simulated service reads:", layout->fields, true);
    }
    if (reads_back_fields(argument))
        if (const catalogue::Layout *layout = layout_of(operation, true))
            text += field_list("The simulated service answers with:", layout->fields, false);
    return text;
}

std::string columns(const catalogue::View &view)
{
    std::string text = mdoc::text("Columns of the result: " + sentence(std::string(view.brief)));
    text += ".Bl -tag -width Ds -compact\n";
    for (const catalogue::Column &column : view.columns)
        text += item(column.name, about_column(column));
    return text + ".El\n";
}

std::string operation_section(const Operation &operation)
{
    std::string text = ".Ss " + std::string(operation.name) + "\n" + mdoc::text(operation.brief);
    if (!operation.notes.empty()) text += mdoc::text(operation.notes);
    text += ".Pp\n" + mdoc::text(usage_of(operation));
    text += ".Bl -tag -width Ds\n";
    for (const Argument &argument : operation.arguments)
        text += argument_item(operation, argument);
    text += item("Class", std::string(catalogue::to_text(operation.impact)));
    if (const std::string asks = asking_text(operation); !asks.empty()) text += item("Asks", asks);
    text += item("Request", std::string(catalogue::to_text(operation.call)) + " on " +
                                std::string(operation.channel->name) + ", command " + command_text(operation) + "; " +
                                request_text(operation));
    text += item("Answer", answer_text(operation));
    if (const catalogue::View *view = view_of(operation)) text += columns(*view);
    text += item("Failure", failure_text(operation));
    if (goes_through(operation))
        text += item("Through", std::string(operation.logged_as) + ", whose name stands in the log");
    for (const catalogue::Oddity &oddity : operation.odd)
        text += item("Oddity", std::string(oddity.brief));
    return text + ".El\n";
}

std::string function_section(const catalogue::Function &function)
{
    std::string text = ".Ss " + std::string(function.name) + "\n" + mdoc::text(function.brief);
    if (!function.notes.empty()) text += mdoc::text(function.notes);
    return text + ".Pp\n" + mdoc::text(function.prototype) + ".Pp\nIt makes no request.\n";
}

std::vector<std::string_view> families()
{
    std::vector<std::string_view> found;
    const auto add = [&found](std::string_view family) {
        if (std::ranges::find(found, family) == found.end()) found.push_back(family);
    };
    for (const Operation &operation : catalogue::operations())
        add(operation.family);
    for (const catalogue::Function &function : catalogue::functions())
        add(function.family);
    return found;
}

std::string family_section(std::string_view family)
{
    std::string text = mdoc::section(family);
    for (const Operation &operation : catalogue::operations())
        if (operation.family == family) text += operation_section(operation);
    for (const catalogue::Function &function : catalogue::functions())
        if (function.family == family) text += function_section(function);
    return text;
}

} // namespace

std::string operations_page(const std::string &date)
{
    std::string page = mdoc::head(date, "ponctl-operations", 7) +
                       mdoc::name("ponctl-operations", "operations of an EPON OLT's PON management service");
    page += ".Sh DESCRIPTION\n"
            "These are the operations of the client library, each as\n"
            ".Xr ponctl-call 1\n"
            "takes it, and what the service may say of them.\n"
            "A NUMBER is decimal, or hexadecimal with 0x; other values are described in\n"
            ".Xr ponctl 1 .\n"
            ".Pp\n"
            "The class says what an operation does to the network: one to read changes nothing, one to write changes\n"
            "what is kept, and one that affects service may hit ONUs in service.\n";
    for (const std::string_view family : families())
        page += family_section(family);
    page += ".Sh RECORDS\n";
    for (const catalogue::Record &record : catalogue::records())
        page += ".Ss " + std::string(record.name) + "\n" +
                field_list(sentence(std::string(record.brief)) + " It has " + std::to_string(record.size) + " bytes:",
                           record.fields, true);
    page += ".Sh CHANNELS\n.Bl -tag -width Ds\n";
    for (const catalogue::Channel &channel : catalogue::channels())
        page += item(std::string(channel.name) + " (" + std::to_string(channel.type) + ")", std::string(channel.brief));
    page += ".El\n.Sh STATUS WORDS\n.Bl -tag -width Ds\n";
    for (const catalogue::Status &status : catalogue::statuses())
        page += item(std::to_string(status.value) + " " + std::string(status.name),
                     std::string(status.brief) + (status.of_library ? "; the library's own" : ""));
    return page + ".El\n.Sh SEE ALSO\n.Xr ponctl 1 ,\n.Xr ponctl-call 1 ,\n.Xr ponctl-ops 1\n";
}

} // namespace ponctl
