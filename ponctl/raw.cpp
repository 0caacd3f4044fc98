// ponctl raw: any record on any channel, straight to the board's IPC library.
#include <algorithm>

#include "board/ipc.h"
#include "board/service.h"
#include "commands.h"
#include "exchange.h"
#include "mode.h"
#include "report.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

using catalogue::Call;

Call call_of(const std::string &text)
{
    std::vector<std::string_view> names;
    for (const Call call : {Call::set, Call::get, Call::dgram_set, Call::dgram_get}) {
        names.push_back(catalogue::to_text(call));
        if (names.back() == text) return call;
    }
    throw UsageError("CALL: '" + text + "' is not one of " + text::join(names));
}

const catalogue::Record &record_of(const RawOptions &options, const catalogue::Channel &channel)
{
    if (options.record.empty()) return *channel.record;
    if (const catalogue::Record *record = catalogue::find_record(options.record)) return *record;
    std::vector<std::string_view> names;
    for (const catalogue::Record &known : catalogue::records())
        names.push_back(known.name);
    throw UsageError("--record: '" + options.record + "' is not a record (known are " + text::join(names) + ")");
}

bool answers(Call call)
{
    return call == Call::get || call == Call::dgram_get;
}

// The request: the given bytes, the given fields, and zeros up to the record's length.
Bytes request_of(const RawOptions &options, const Place &place, const catalogue::Record &record)
{
    std::vector<Assignment> assignments;
    for (const std::string &word : options.fields)
        assignments.push_back(parse_assignment(word));
    Bytes request;
    if (!options.data.empty()) request = parse_block("--data", options.data);
    if (request.size() > record.size)
        throw UsageError("--data: " + std::to_string(request.size()) + " bytes are more than the " +
                         std::to_string(record.size) + " of " + std::string(record.name));
    const size_t given = request.size();
    request.resize(record.size);
    const size_t set = set_fields(record, place, assignments, options.allow_long, "", request);
    if (!record.payload) return request;

    // A record with a payload is as long as that, with all that the service reads of it, and 4 bytes more.
    constexpr size_t trailer = 4;
    const catalogue::Layout *layout = read_record(record, place, request).layout;
    const size_t read = layout ? end_of(*layout) : 0;
    request.resize(std::max<size_t>({given, set, read, record.payload->offset}) + trailer);
    return request;
}

struct Answer {
    Bytes bytes;
    uint32_t status = 0;
    db_handle *database = nullptr;

    Answer() = default;
    Answer(const Answer &) = delete;
    Answer &operator=(const Answer &) = delete;
    ~Answer() { db_free(database); }
};

void exchange_record(const catalogue::Channel &channel, Call call, const Bytes &request, uint32_t preset,
                     Answer &answer)
{
    const auto length = static_cast<uint32_t>(request.size());
    if (call == Call::set) {
        ipc_set_exec(catalogue::module, channel.type, request.data(), length, &answer.status);
        return;
    }
    if (call == Call::dgram_set) {
        ipc_dgram_set_exec(catalogue::module, channel.type, request.data(), length, &answer.status);
        return;
    }
    // A preset of 0 allows as much as the channel's record holds.
    answer.bytes.resize(std::max(preset, channel.record->size));
    uint32_t received = preset;
    const auto get = call == Call::get ? ipc_get_exec : ipc_dgram_get_exec;
    get(catalogue::module, channel.type, request.data(), length, answer.bytes.data(), &received, &answer.status);
    answer.bytes.resize(std::min<size_t>(received, answer.bytes.size()));
}

void show_answer(const Output &output, const Place &place, const catalogue::Record &record, const Answer &answer)
{
    const Call call = place.call;
    const Reading reading = read_record(answer_record(record, place.command), place, answer.bytes);
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartObject();
        json.member("channel", place.channel->name);
        json.member("call", catalogue::to_text(call));
        json.status(answer.status);
        if (answers(call)) {
            json.member("length", static_cast<uint32_t>(answer.bytes.size()));
            json.key("response");
            json.record(reading);
            json.key("result");
            json.document(answer.database);
        }
        json->EndObject();
        return;
    }
    if (output.format == Format::table) {
        std::fprintf(output.stream, "status %s", describe_status(answer.status).c_str());
        if (answers(call)) std::fprintf(output.stream, ", %zu bytes", answer.bytes.size());
        std::fputc('\n', output.stream);
        print_fields(output, reading);
    } else {
        print_bytes(output, answer.bytes, &reading);
    }
    if (answer.database)
        print_database(output, answer.database, place.command ? catalogue::find_view(*place.command) : nullptr);
}

} // namespace

ExitCode run_raw(const Output &output, const RawOptions &options)
{
    const catalogue::Channel &channel = parse_channel("CHANNEL", options.channel);
    const Call call = call_of(options.call);
    const catalogue::Record &record = record_of(options, channel);
    if (!options.preset.empty() && !answers(call))
        throw UsageError("--preset: only get and dgram-get have an answer to bound");
    const uint32_t preset =
        options.preset.empty() ? record.size : parse_number("--preset", options.preset, IPC_MAX_LENGTH);
    const Bytes request = request_of(options, {&channel, call}, record);

    const catalogue::Command *command = command_of(record, {&channel, call}, request);
    const Sender sender{"sending a record on " + std::string(channel.name), &record};
    const Watch watch(sender);
    Answer answer;
    exchange_record(channel, call, request, preset, answer);
    const Exchange &exchange = watch.exchange();
    if (exchange.result == IPC_OK && !mode().dry_run) {
        if (answers(call) && record.command)
            answer.database = db_from_shmem(load_word(request.data() + record.command->offset), BOARD_RESULT_MAX);
        show_answer(output, {&channel, call, command, true}, record, answer);
    }
    return report_exchange(channel.name, exchange, answer.status);
}

} // namespace ponctl
