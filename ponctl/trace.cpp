// ponctl trace: what went over the IPC, from a file that BOARD_IPC_TRACE named.
#include <bit>
#include <ctime>
#include <memory>

#include "board/ipc.h"
#include "board/trace.h"
#include "commands.h"
#include "report.h"

namespace ponctl
{
namespace
{

struct Close {
    void operator()(board_trace *trace) const { board_trace_close(trace); }
};

constexpr int host_order = std::endian::native == std::endian::big ? BOARD_TRACE_BIG_ENDIAN : BOARD_TRACE_LITTLE_ENDIAN;

// The record that a request of this length is: the channel's own, or another of exactly that length.
const catalogue::Record &record_of(const catalogue::Channel &channel, size_t length)
{
    if (!channel.record->payload && channel.record->size != length)
        for (const catalogue::Record &record : catalogue::records())
            if (record.size == length) return record;
    return *channel.record;
}

// One exchange, read by the catalogue as far as that knows its channel.
struct Traced {
    const board_trace_record &record;
    const catalogue::Channel *channel; // null: unknown
    const catalogue::Command *command = nullptr;
    const catalogue::Record *kind = nullptr; // of the request
    Bytes request, response;
    std::string_view result;

    Traced(const board_trace_entry &entry, bool swapped)
        : record(entry.record),
          channel(catalogue::find_channel(record.msg_type)),
          request(entry.request, entry.request + record.request_length),
          response(entry.response, entry.response + record.response_length),
          result(entry.result ? entry.result : "", record.result_carried)
    {
        if (!channel) return;
        kind = &record_of(*channel, request.size());
        if (swapped) swap_words(*kind, place(), request);
        command = command_of(*kind, place(), request);
        if (swapped) swap_words(answer_record(*kind, command), place(true), response);
    }

    Place place(bool is_answer = false) const { return {channel, call(), command, is_answer}; }
    const Bytes &bytes(bool of_answer) const { return of_answer ? response : request; }
    Reading reading(bool of_answer) const
    {
        return read_record(of_answer ? answer_record(*kind, command) : *kind, place(of_answer), bytes(of_answer));
    }
    bool answered() const { return record.ipc_result == IPC_OK; }

    catalogue::Call call() const { return static_cast<catalogue::Call>(record.call); }
    std::string call_text() const { return std::string(catalogue::to_text(call())); }

    std::string channel_text() const { return channel ? std::string(channel->name) : std::to_string(record.msg_type); }

    std::string command_text() const
    {
        if (command) return std::string(command->name);
        if (!kind || !kind->command || request.size() < kind->command->offset + sizeof(uint32_t)) return "-";
        return std::to_string(load_word(request.data() + kind->command->offset));
    }

    std::string outcome() const
    {
        if (!answered())
            return "IPC failure " + std::to_string(record.ipc_result) + ": " + ipc_strerror(record.ipc_result);
        return describe_status(record.status);
    }

    // When the exchange ended, in Coordinated Universal Time.
    std::string time() const
    {
        constexpr uint64_t second = 1000000000;
        const auto seconds = static_cast<std::time_t>(record.time / second);
        std::tm parts{};
        gmtime_r(&seconds, &parts);
        char date[32], fraction[16];
        std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &parts);
        std::snprintf(fraction, sizeof fraction, ".%06uZ", static_cast<unsigned>(record.time % second / 1000));
        return std::string(date) + fraction;
    }
};

void write_exchange(Json &json, const Traced &traced)
{
    const auto record = [&](std::string_view name, bool of_answer) {
        json.key(name);
        if (traced.channel)
            json.record(traced.reading(of_answer));
        else
            json.text(format_hex(traced.bytes(of_answer)));
    };
    json->StartObject();
    json.member("time", traced.time());
    json.member("pid", traced.record.pid);
    json.member("tid", traced.record.tid);
    json.member("call", traced.call_text());
    json.member("channel", traced.channel_text());
    json.member("command", traced.command_text());
    json.key("ipc_result");
    json->Int(traced.record.ipc_result);
    if (traced.answered()) {
        json.status(traced.record.status);
    } else {
        json.key("status");
        json->Null();
        json.key("status_name");
        json->Null();
    }
    json.member("allowed", traced.record.allowed);
    record("request", false);
    record("response", true);
    json.key("result");
    if (traced.result.empty())
        json->Null();
    else
        json.document(traced.result);
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
        std::fprintf(output.stream, "result under key %u, %u bytes\n", traced.record.result_key,
                     traced.record.result_length);
        std::fprintf(output.stream, "%s\n", printable(traced.result).c_str());
    }
    std::fputc('\n', output.stream);
}

using Trace = std::unique_ptr<board_trace, Close>;

Trace open_trace(const std::string &file)
{
    const char *error = nullptr;
    Trace trace(board_trace_open(file.c_str(), &error));
    if (!trace) throw UsageError("FILE: cannot read '" + file + "': " + error);
    return trace;
}

// Shows every exchange of the file. Returns false where the file is damaged, after the exchanges before that place.
template <class Show>
bool show_all(const Trace &trace, Show show)
{
    const bool swapped = board_trace_byte_order(trace.get()) != host_order;
    board_trace_entry entry;
    int more = 0;
    while ((more = board_trace_next(trace.get(), &entry)) == 1)
        show(Traced(entry, swapped));
    return more == 0;
}

bool show_trace(const Output &output, const Trace &trace, bool verbose)
{
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        const bool whole = show_all(trace, [&json](const Traced &traced) { write_exchange(json, traced); });
        json->EndArray();
        return whole;
    }
    if (verbose || output.format == Format::hex)
        return show_all(trace, [&output](const Traced &traced) { print_exchange(output, traced); });
    Table table({{"TIME"},
                 {"PROCESS", Table::Fit::right},
                 {"CALL"},
                 {"CHANNEL"},
                 {"COMMAND", Table::Fit::cut},
                 {"OUTCOME", Table::Fit::cut}});
    const bool whole = show_all(trace, [&table](const Traced &traced) {
        table.add({traced.time(), std::to_string(traced.record.pid), traced.call_text(), traced.channel_text(),
                   traced.command_text(), traced.outcome()});
    });
    table.print(output);
    return whole;
}

} // namespace

ExitCode run_trace(const Output &output, const std::string &file, bool verbose)
{
    if (!show_trace(output, open_trace(file), verbose))
        throw UsageError("FILE: '" + file + "' is damaged behind the last exchange that is shown");
    return exit_success;
}

} // namespace ponctl
