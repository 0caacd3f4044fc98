// ponctl trace shows what went over the IPC. It reads a file that BOARD_IPC_TRACE named or that ponsim recorded.
#include <functional>
#include <map>

#include "call/codec/decode.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "describe/operation_text.h"
#include "output/bytes.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/mode.h"
#include "output/report.h"
#include "output/table.h"
#include "output/text.h"
#include "results/listing.h"
#include "results/recording.h"
#include "results/sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct TraceOptions {
    std::string file;
    bool verbose = false;              // also show the fields of the records
    std::string channel, command, pid; // show only these exchanges; empty: all
    bool errors = false;               // show only exchanges that failed, or whose status is not zero
};

void write_exchange(JsonText &json, const Traced &traced)
{
    const auto record = [&](std::string_view name, bool of_answer) {
        json.key(name);
        if (traced.channel)
            json.record(traced.reading(of_answer));
        else
            json.text(text::to_hex(traced.bytes(of_answer)));
    };
    json->StartObject();
    json.member("time", traced.time());
    json.member("pid", traced.record.pid);
    json.member("tid", traced.record.tid);
    json.member("call", traced.call_text());
    json.member("channel", traced.channel_text());
    json.member("command", traced.command_text());
    json.ipc_result(traced.record.ipc_result);
    if (traced.answered()) {
        json.status(traced.record.status);
    } else {
        json.null("status");
        json.null("status_name");
    }
    json.member("allowed", traced.record.allowed);
    record("request", false);
    record("response", true);
    if (traced.result.empty()) {
        json.null("result");
    } else {
        json.key("result");
        json.document(traced.result);
    }
    json->EndObject();
}

void print_record(const Output &output, const char *label, const Traced &traced, bool of_answer)
{
    const Bytes &bytes = traced.bytes(of_answer);
    if (bytes.empty()) return;
    std::fprintf(output.stream, "%s, %zu bytes\n", label, bytes.size());
    if (!traced.channel) return print_bytes(output, bytes);
    const Reading reading = traced.reading(of_answer);
    if (output.format == Format::hex)
        print_bytes(output, bytes, &reading);
    else
        print_fields(output, reading);
}

void print_exchange(const Output &output, const Traced &traced)
{
    std::fprintf(output.stream, "%s process %u: %s on %s, command %s: %s\n", traced.time().c_str(), traced.record.pid,
                 traced.call_text().c_str(), traced.channel_text().c_str(), traced.command_text().c_str(),
                 traced.outcome().c_str());
    print_record(output, "request", traced, false);
    print_record(output, "response", traced, true);
    if (traced.record.result_length > 0) {
        const std::string key = traced.record.result_key == BOARD_TRACE_FILE
                                    ? "result as a file"
                                    : "result under key " + std::to_string(traced.record.result_key);
        std::fprintf(output.stream, "%s, %u bytes\n", key.c_str(), traced.record.result_length);
        print_line(output, traced.result);
    }
    std::fputc('\n', output.stream);
}

// Returns the command of this name, whatever its channel is.
const catalogue::Command &named_command(const std::string &name)
{
    if (const catalogue::Command *command = catalogue::find_command(name)) return *command;
    std::vector<std::string_view> names;
    for (const catalogue::Command &known : catalogue::commands())
        names.push_back(known.name);
    throw UsageError("--command: '" + name + "' is not a command code or the name of a command" +
                     text::suggestion(name, names));
}

// A Filter selects the exchanges that the user wants. Its numbers may be channels and commands that the catalogue does
// not know.
class Filter
{
public:
    explicit Filter(const TraceOptions &options) : errors(options.errors)
    {
        if (is_number(options.channel))
            channel = parse_number("--channel", options.channel);
        else if (!options.channel.empty())
            channel = parse_channel("--channel", options.channel).type;
        if (!options.pid.empty()) pid = parse_number("--pid", options.pid);
        if (is_number(options.command))
            code = parse_number("--command", options.command);
        else if (!options.command.empty())
            command = &named_command(options.command);
    }

    bool passes(const Traced &traced) const
    {
        return (!channel || traced.record.msg_type == *channel) && (!pid || traced.record.pid == *pid) &&
               (!code || traced.code() == code) && (!command || traced.command == command) &&
               (!errors || !traced.answered() || traced.record.status != 0);
    }

private:
    std::optional<uint32_t> channel, pid, code;
    const catalogue::Command *command = nullptr;
    bool errors;
};

// Passes the exchanges that pass the filter to `show`, without their secrets unless the command line asks for these.
// Returns what TraceFile::each returns.
std::optional<size_t> each_shown(const TraceFile &trace, const Filter &filter,
                                 const std::function<void(const Traced &)> &show)
{
    return trace.each([&](const Traced &traced) {
        if (!filter.passes(traced)) return;
        Traced shown = traced;
        if (!mode().secrets) shown.hide_secrets();
        show(shown);
    });
}

// Returns in JSON the exchanges that the command line wants of a listing, by their rows. They are read again, because a
// recording may be too large to keep every exchange.
std::map<size_t, std::string> written_exchanges(const Output &output, const TraceOptions &options, const Filter &filter,
                                                const Listing &listing)
{
    std::map<size_t, std::string> whole;
    if (output.format != Format::json) return whole;
    for (const size_t row : listing.selected(output).rows)
        whole[row] = {};
    size_t row = 0;
    each_shown(TraceFile(options.file), filter, [&](const Traced &traced) {
        if (const auto wanted = whole.find(row++); wanted != whole.end()) {
            JsonText json;
            write_exchange(json, traced);
            wanted->second = json.written();
        }
    });
    return whole;
}

std::optional<size_t> show_trace(const Output &output, const TraceOptions &options)
{
    const Filter filter(options);
    const TraceFile trace(options.file);
    const auto show_all = [&](const auto &show) { return each_shown(trace, filter, show); };
    if (output.format == Format::json && !output.selection) {
        Json json(output.stream);
        json->StartArray();
        const auto damage = show_all([&json](const Traced &traced) { write_exchange(json, traced); });
        json->EndArray();
        return damage;
    }
    if (output.format != Format::json && (options.verbose || output.format == Format::hex)) {
        refuse_selection(output);
        return show_all([&output](const Traced &traced) { print_exchange(output, traced); });
    }
    Listing listing({{"time", {"TIME"}},
                     {"pid", {"PROCESS", Table::Fit::right}, catalogue::ColumnType::u32},
                     {"call", {"CALL"}},
                     {"channel", {"CHANNEL"}},
                     {"command", {"COMMAND", Table::Fit::cut}},
                     {"outcome", {"OUTCOME", Table::Fit::cut, catalogue::Priority::high}}});
    const auto damage = show_all([&listing](const Traced &traced) {
        listing.add({{traced.time()},
                     {traced.record.pid ? ListCell(std::to_string(traced.record.pid)) : std::nullopt},
                     {traced.call_text()},
                     {traced.channel_text()},
                     {traced.command_text()},
                     {traced.outcome()}});
    });
    const std::map<size_t, std::string> whole = written_exchanges(output, options, filter, listing);
    listing.print(output, [&whole](JsonText &json, size_t row) { json.document(whole.at(row)); });
    return damage;
}

ExitCode run_trace(const Output &output, const TraceOptions &options)
{
    const auto damage = show_trace(output, options);
    if (!damage) return exit_success;
    complain("FILE: '" + options.file + "' is damaged at record " + std::to_string(*damage + 1) +
             "; what is before it is shown");
    return exit_usage;
}

} // namespace

void add_trace(Program &program)
{
    Command &trace =
        program.tree.add("trace", "Lists what went over the IPC, from a file of BOARD_IPC_TRACE or ponsim --record");
    program.askless.push_back(&trace);
    TraceOptions &options = trace.runs(run_trace);
    trace.argument("FILE", &options.file, "the recording").is_required();
    trace.option("-v,--verbose", &options.verbose, "show the records too");
    trace.option("--channel", &options.channel, "only exchanges on this channel, by name or number", "CHANNEL");
    trace.option("--command", &options.command, "only those with this command, by name or code", "COMMAND");
    trace.option("--pid", &options.pid, "only those of this process", "PID");
    trace.option("--errors", &options.errors, "only those that failed, or whose status is not zero");
    add_list_options(program, trace);
}

} // namespace ponctl
