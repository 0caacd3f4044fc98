// ponctl raw sends any record on any channel, directly through the board's IPC library.
#include <algorithm>

#include "board/datastore.h"
#include "board/ipc.h"
#include "board/service.h"
#include "call/codec/decode.h"
#include "call/exchange.h"
#include "call/json.h"
#include "call/record.h"
#include "call/view_check.h"
#include "cli/program.h"
#include "output/bytes.h"
#include "output/consent.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/report.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct RawOptions {
    std::string channel;             // name or number
    std::string call;                // set, get, dgram-set or dgram-get
    std::vector<std::string> fields; // FIELD=value
    std::string record;              // name; empty: the channel's record
    std::string data;                // block with the first bytes of the record; empty: zeros
    std::string preset;              // response bytes allowed; empty: the record's size
    bool allow_long = false;
};

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

// Returns the request: the given bytes, the given fields, and zeros up to the record's length.
Bytes request_of(const RawOptions &options, const RecordRole &role, const catalogue::Record &record)
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
    const size_t set = set_fields(record, role, assignments, options.allow_long, "", request);
    if (!record.payload) return request;

    // A record with a payload is as long as its payload, including everything that the service reads of it, and 4 bytes
    // more.
    constexpr size_t trailer = 4;
    const catalogue::Layout *layout = read_record(record, role, request).layout;
    const size_t read = layout ? end_of(*layout) : 0;
    request.resize(std::max<size_t>({given, set, read, record.payload->offset}) + trailer);
    return request;
}

void show_answer(const Output &output, const RecordRole &role, const catalogue::Record &record, const Exchange &answer,
                 db_handle *database)
{
    const Call call = role.call;
    const Reading reading = read_record(answer_record(record, role.command), role, answer.response);
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartObject();
        json.member("channel", role.channel->name);
        json.member("call", catalogue::to_text(call));
        json.status(answer.status);
        if (has_answer(call)) {
            json.member("length", static_cast<uint32_t>(answer.response.size()));
            json.key("response");
            json.record(reading);
            json.key("result");
            json.document(database);
        }
        json->EndObject();
        return;
    }
    if (output.format == Format::table) {
        std::fprintf(output.stream, "status %s", describe_status(answer.status).c_str());
        if (has_answer(call)) std::fprintf(output.stream, ", %zu bytes", answer.response.size());
        std::fputc('\n', output.stream);
        print_fields(output, reading);
    } else {
        print_bytes(output, answer.response, &reading);
    }
    if (database) print_database(output, database, role.command ? catalogue::find_view(*role.command) : nullptr);
}

ExitCode run_raw(const Output &output, const RawOptions &options)
{
    const catalogue::Channel &channel = parse_channel("CHANNEL", options.channel);
    const Call call = call_of(options.call);
    const catalogue::Record &record = record_of(options, channel);
    if (!options.preset.empty() && !has_answer(call))
        throw UsageError("--preset: only get and dgram-get have an answer to bound");
    const uint32_t preset =
        options.preset.empty() ? record.size : parse_number("--preset", options.preset, IPC_MAX_LENGTH);
    const Bytes request = request_of(options, {&channel, call}, record);

    const catalogue::Command *command = command_of(record, {&channel, call}, request);
    // A preset of 0 allows as many bytes as the channel's record holds.
    const Exchange exchange = exchange_record({"sending a record on " + std::string(channel.name), &record}, consent(),
                                              {catalogue::module, channel.type}, call, request, preset,
                                              std::max(preset, channel.record->size));
    if (exchange.result == IPC_OK && !exchange.kept_back) {
        Database database;
        if (has_answer(call) && record.command)
            database.reset(db_from_shmem(load_word(request.data() + record.command->offset), BOARD_RESULT_MAX));
        show_answer(output, {&channel, call, command, true}, record, exchange, database.get());
        if (database && exchange.status == 0)
            return report_fault(channel.name,
                                fault_of(database.get(), command ? catalogue::find_view(*command) : nullptr));
    }
    return report_exchange(channel.name, exchange, exchange.status);
}

} // namespace

void add_raw(Program &program)
{
    Command &raw = program.tree.add("raw", "Sends any record on any channel");
    RawOptions &options = raw.runs(run_raw);
    raw.argument("CHANNEL", &options.channel, "name or number of the channel, as BSP_MSG_PON or 232").is_required();
    raw.argument("CALL", &options.call, "set, get, dgram-set or dgram-get", "set|get|dgram-set|dgram-get")
        .is_required();
    raw.argument("FIELD=VALUE", &options.fields, "fields of the record; all others are zero");
    raw.option("--record", &options.record, "another record than the channel's own", "RECORD");
    raw.option("--data", &options.data, "first bytes of the record: hex:0011..., text:..., or @FILE", "BLOCK");
    raw.option("--preset", &options.preset, "response bytes allowed; 0 states no bound (default: the record's size)",
               "N");
    raw.option("--allow-long", &options.allow_long,
               "let texts and blocks that are longer than their field run on into the fields behind it");
}

} // namespace ponctl
