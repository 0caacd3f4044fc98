// ponctl call: any operation of the library.
#include "commands.h"
#include "exchange.h"
#include "report.h"

namespace ponctl
{
namespace
{

using catalogue::Argument;
using catalogue::ArgumentType;

// What an operation delivered through its arguments, and how that is read.
struct Delivered {
    const Arguments &arguments;
    const catalogue::Command *command;

    Reading record(size_t index) const
    {
        const catalogue::Operation &operation = arguments.operation();
        return read_record(*operation.record, *operation.channel, arguments.bytes(index), command);
    }
    const catalogue::View *view() const { return command ? catalogue::find_view(*command) : nullptr; }
};

bool is_delivered(const catalogue::Operation &operation, const Argument &argument)
{
    return is_output(argument) || is_in_place(operation, argument);
}

void print_output(const Output &output, const Delivered &delivered, size_t index)
{
    const Arguments &arguments = delivered.arguments;
    const Argument &argument = arguments.operation().arguments[index];
    if (argument.type == ArgumentType::db) {
        if (db_handle *database = arguments.database(index))
            print_database(output, database, delivered.view());
        else
            complain(std::string(argument.name) + ": the service left no result database");
    } else if (argument.type == ArgumentType::text_out) {
        const std::string_view text = field_text(arguments.bytes(index));
        if (output.format == Format::hex)
            print_bytes(output, arguments.bytes(index).first(text.size()));
        else
            std::fprintf(output.stream, "%s\n", printable(text).c_str());
    } else {
        const Reading reading = delivered.record(index);
        if (output.format == Format::hex)
            print_bytes(output, reading.bytes, &reading);
        else
            print_fields(output, reading);
    }
}

void write_output(Json &json, const Delivered &delivered, size_t index)
{
    const Arguments &arguments = delivered.arguments;
    const Argument &argument = arguments.operation().arguments[index];
    json.key(argument.name);
    if (argument.type == ArgumentType::db) {
        if (const db_handle *database = arguments.database(index))
            json.document(document_of(database));
        else
            json->Null();
    } else if (argument.type == ArgumentType::text_out) {
        json.text(field_text(arguments.bytes(index)));
    } else {
        json.record(delivered.record(index));
    }
}

void show_outputs(const Output &output, const Delivered &delivered, uint32_t status)
{
    const catalogue::Operation &operation = delivered.arguments.operation();
    const auto each = [&operation](auto show) {
        for (size_t index = 0; index < operation.arguments.size(); ++index)
            if (is_delivered(operation, operation.arguments[index])) show(index);
    };
    if (output.format != Format::json) return each([&](size_t index) { print_output(output, delivered, index); });

    Json json(output.stream);
    json->StartObject();
    json.member("operation", operation.name);
    json.status(status);
    json.key("outputs");
    json->StartObject();
    each([&](size_t index) { write_output(json, delivered, index); });
    json->EndObject();
    json->EndObject();
}

} // namespace

ExitCode run_call(const Output &output, const catalogue::Operation &operation, const std::vector<std::string> &words,
                  const CallOptions &options)
{
    Arguments arguments(operation, words, options.allow_long);
    const Delivered delivered{arguments, arguments.command()};
    const Watch watch(!options.dry_run);
    const uint32_t status = catalogue::invoke(operation, arguments.values());
    const Exchange &exchange = watch.exchange();
    if (options.dry_run && exchange.made) {
        print_request(output, exchange, *operation.record);
        return exit_success;
    }
    if (exchange.made && exchange.result == 0) show_outputs(output, delivered, status);
    return report_exchange(operation.name, exchange, status);
}

ExitCode run_list(const Output &output, const char *operation_name, const std::vector<std::string> &words)
{
    const catalogue::Operation &operation = *catalogue::find_operation(operation_name);
    Arguments arguments(operation, words);
    const Delivered delivered{arguments, arguments.command()};
    const Watch watch;
    const uint32_t status = catalogue::invoke(operation, arguments.values());
    if (watch.exchange().result == 0) {
        for (size_t index = 0; index < operation.arguments.size(); ++index) {
            if (!is_output(operation.arguments[index])) continue;
            const db_handle *database = arguments.database(index);
            if (output.format == Format::json && database)
                Json(output.stream).document(document_of(database));
            else
                print_output(output, delivered, index);
        }
    }
    return report_exchange(operation.name, watch.exchange(), status);
}

} // namespace ponctl
