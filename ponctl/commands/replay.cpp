// ponctl replay sends a recording's requests once more, and shows where the answers differ.
#include <algorithm>
#include <utility>

#include "board/datastore.h"
#include "board/ipc.h"
#include "board/service.h"
#include "call/arguments.h"
#include "call/codec/decode.h"
#include "call/exchange.h"
#include "call/json.h"
#include "call/record.h"
#include "cli/program.h"
#include "describe/operation_text.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/mode.h"
#include "output/report.h"
#include "output/table.h"
#include "output/text.h"
#include "results/recording.h"

namespace ponctl
{
namespace
{

struct ReplayOptions {
    std::string file;
    bool verbose = false;             // also show exchanges that are equal
    std::vector<std::string> ignored; // fields and columns that may differ
    bool reads_only = false;
};

using catalogue::Class;
using catalogue::Field;

struct Difference {
    std::string row; // empty, or the number of the row of a result database, from 1 on
    std::string field, recorded, live;

    std::string where() const { return row.empty() ? field : "row " + row + " " + field; }
};

// A LiveAnswer is what the service answers now.
struct LiveAnswer {
    Exchange exchange;
    std::string database; // the document; empty: there is none
};

// Returns what a request does, as the catalogue describes it. An unknown request may change something unless it is a
// get call.
Class impact_of(const Traced &traced)
{
    if (traced.command) return traced.command->impact;
    return has_answer(traced.call()) ? Class::read : Class::write;
}

// A recording may also have exchanges with other services, such as the commands that controlled a simulation.
bool is_of_pon(const Traced &traced)
{
    return traced.record.module == catalogue::module;
}

// The user was already asked for all requests of the recording together.
class AskedAtOnce : public call::Permission
{
    call::Verdict decide(const call::PermissionRequest &) override { return call::Verdict::send; }
};

LiveAnswer send(const Traced &traced)
{
    AskedAtOnce permission;
    const call::Sender sender{"sending a recorded request", traced.kind};
    // The whole answer is received, as it is in the recording, whatever the recorded caller allowed.
    LiveAnswer answer{exchange_record(sender, permission, {traced.record.module, traced.record.msg_type}, traced.call(),
                                      traced.request, IPC_MAX_LENGTH, IPC_MAX_LENGTH),
                      {}};
    const uint32_t key = traced.record.result_key ? traced.record.result_key : traced.code().value_or(0);
    if (answer.exchange.result != IPC_OK || key == 0) return answer;
    const bool file = key == BOARD_TRACE_FILE;
    if (const Database database{file ? db_create_fromfile(BOARD_RESULT_FILE) : db_from_shmem(key, BOARD_RESULT_MAX)})
        answer.database = document_of(database.get());
    return answer;
}

// A Comparison compares one exchange.
class Comparison
{
public:
    Comparison(const Traced &recorded, const LiveAnswer &now, const std::vector<std::string> &may_differ)
        : traced(recorded), live(now), ignored(may_differ)
    {
        compare("ipc_result", failure_text(traced.record.ipc_result), failure_text(live.exchange.result));
        if (!traced.answered() || live.exchange.result != IPC_OK) return;
        compare("status", describe_status(traced.record.status), describe_status(live.exchange.status));
        if (has_answer(traced.call())) {
            compare("response_length", std::to_string(traced.response.size()),
                    std::to_string(live.exchange.response.size()));
            compare_responses();
        }
        compare_documents("result", traced.result, live.database);
    }

    const std::vector<Difference> &differences() const { return found; }

private:
    static std::string failure_text(int32_t result) { return std::to_string(result) + " " + ipc_strerror(result); }

    bool is_ignored(std::string_view field) const { return std::ranges::find(ignored, field) != ignored.end(); }

    void compare(std::string_view field, std::string recorded, std::string now, std::string of_row = {})
    {
        if (recorded == now) return;
        explained = true;
        if (!is_ignored(field))
            found.push_back({std::move(of_row), std::string(field), std::move(recorded), std::move(now)});
    }

    // Returns whether both texts are the name of a result file, which differs each time.
    bool are_file_names(const Field &field, std::string_view recorded, std::string_view now) const
    {
        return recorded.starts_with('/') && now.starts_with('/') &&
               std::ranges::any_of(catalogue::operations(), [&](const catalogue::Operation &operation) {
                   return operation.channel == traced.channel &&
                          (!operation.command || operation.command == traced.command) &&
                          std::ranges::any_of(operation.arguments, [&](const catalogue::Argument &argument) {
                              return argument.source == catalogue::Source::file &&
                                     argument.field->offset == field.offset;
                          });
               });
    }

    // Compares the fields that both answers have. The lengths show what only one of them has.
    void compare_responses()
    {
        const size_t common = std::min(traced.response.size(), live.exchange.response.size());
        Bytes before(traced.response.begin(), traced.response.begin() + static_cast<std::ptrdiff_t>(common));
        Bytes after(live.exchange.response.begin(),
                    live.exchange.response.begin() + static_cast<std::ptrdiff_t>(common));
        if (before == after) return;
        if (traced.channel) compare_fields(before, after);
        // The remaining bytes lie between the fields, or behind the end of a text.
        const auto [first, other] = std::ranges::mismatch(before, after);
        if (first == before.end()) return;
        const auto at = static_cast<size_t>(first - before.begin());
        size_t end = common;
        while (before[end - 1] == after[end - 1])
            --end;
        const auto rest = [&](const Bytes &bytes) {
            return "hex:" + text::to_hex(std::span(bytes).subspan(at, end - at));
        };
        compare("byte " + std::to_string(at), rest(before), rest(after));
    }

    // Compares the fields, and clears the bytes that were compared.
    void compare_fields(Bytes &before, Bytes &after)
    {
        const catalogue::Record &record = answer_record(*traced.kind, traced.command);
        const Bytes recorded = before, now = after;
        const std::vector<DecodedField> fields = decode(read_record(record, traced.role(true), recorded));
        const std::vector<DecodedField> live_fields = decode(read_record(record, traced.role(true), now));
        for (const DecodedField &one : fields) {
            const auto other = std::ranges::find(live_fields, one.field, &DecodedField::field);
            if (other == live_fields.end()) continue;
            const size_t compared = compare_field(one, other->text, recorded, now);
            for (Bytes *bytes : {&before, &after})
                std::fill_n(bytes->begin() + one.field->offset, compared, uint8_t{0});
        }
    }

    // Returns how many bytes from the field's start on need no further comparison.
    size_t compare_field(const DecodedField &one, const std::string &text, const Bytes &recorded, const Bytes &now)
    {
        const Field &field = *one.field;
        const size_t reached = field_bytes(field, recorded).size();
        if (is_ignored(field.name)) return reached;
        if (field.type == catalogue::FieldType::text || field.type == catalogue::FieldType::bytes) {
            // A text that starts here may continue behind the field.
            const std::string before(field_text(std::span(recorded).subspan(field.offset)));
            const std::string after(field_text(std::span(now).subspan(field.offset)));
            if (are_file_names(field, before, after)) return reached;
            if (is_table(before) && is_table(after)) {
                compare_documents(field.name, before, after);
                return std::max(before.size(), after.size());
            }
        }
        if (one.text == text) return 0;
        compare(field.name, one.text, text);
        return reached;
    }

    static bool is_table(const std::string &text)
    {
        return (text.starts_with('[') || text.starts_with('{')) &&
               db_rows(Database(db_from_string(text.c_str())).get());
    }

    void compare_documents(std::string_view name, std::string_view recorded, std::string_view now)
    {
        if (recorded == now || is_ignored(name)) return;
        const Database before(db_from_string(std::string(recorded).c_str()));
        const Database after(db_from_string(std::string(now).c_str()));
        explained = false;
        const uint32_t rows = db_rows(before.get()), live_rows = db_rows(after.get());
        if (!recorded.empty() && !now.empty()) {
            compare("rows", std::to_string(rows), std::to_string(live_rows));
            for (uint32_t row = 0; row < std::min(rows, live_rows); ++row)
                compare_row(before.get(), after.get(), row);
        }
        const auto text = [](std::string_view document) { return document.empty() ? "none" : std::string(document); };
        if (!explained) compare(name, text(recorded), text(now));
    }

    void compare_row(db_handle *before, db_handle *after, uint32_t row)
    {
        const auto text = [row](db_handle *database, const char *column) {
            const char *cell = db_get_text(database, row, column);
            return std::string(cell ? cell : "-");
        };
        const std::string row_number = std::to_string(row + 1);
        for (uint32_t column = 0; column < db_columns(before); ++column) {
            const char *name = db_column_name(before, column);
            compare(name, text(before, name), text(after, name), row_number);
        }
        for (uint32_t column = 0; column < db_columns(after); ++column) {
            const char *name = db_column_name(after, column);
            if (!db_get_text(before, row, name)) compare(name, "-", text(after, name), row_number);
        }
    }

    const Traced &traced;
    const LiveAnswer &live;
    const std::vector<std::string> &ignored;
    std::vector<Difference> found;
    bool explained = false; // a difference was reported, or ignored because of its name
};

// A Report writes the exchanges as they are compared.
class Report
{
public:
    explicit Report(const Output &to) : output(to)
    {
        if (output.format != Format::json) return;
        json.emplace(output.stream);
        (*json)->StartArray();
    }
    ~Report()
    {
        if (json)
            (*json)->EndArray();
        else
            table.print(output);
    }
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;

    void add(size_t number, const Traced &traced, const std::vector<Difference> &differences)
    {
        if (json) return write(number, traced, differences);
        const auto add_line = [&](const std::string &field, const std::string &recorded, const std::string &live) {
            table.add({std::to_string(number), traced.call_text(), traced.command_text(), field, recorded, live});
        };
        if (differences.empty()) add_line("equal", "", "");
        for (const Difference &difference : differences)
            add_line(difference.where(), difference.recorded, difference.live);
    }

private:
    void write(size_t number, const Traced &traced, const std::vector<Difference> &differences)
    {
        (*json)->StartObject();
        json->member("exchange", static_cast<uint32_t>(number));
        json->member("call", traced.call_text());
        json->member("channel", traced.channel_text());
        json->member("command", traced.command_text());
        json->key("differences");
        (*json)->StartArray();
        for (const Difference &difference : differences) {
            (*json)->StartObject();
            json->member("field", difference.field);
            if (difference.row.empty()) {
                json->null("row");
            } else {
                json->key("row");
                json->number(difference.row);
            }
            json->member("recorded", difference.recorded);
            json->member("live", difference.live);
            (*json)->EndObject();
        }
        (*json)->EndArray();
        (*json)->EndObject();
    }

    const Output &output;
    Table table{{{"EXCHANGE", Table::Fit::right},
                 {"CALL"},
                 {"COMMAND", Table::Fit::cut},
                 {"FIELD"},
                 {"RECORDED", Table::Fit::wrap},
                 {"LIVE", Table::Fit::wrap}}};
    std::optional<Json> json;
};

// Returns whether the service itself returned this result, for this one exchange. After any other failure it is useless
// to continue.
bool is_answer(int32_t result)
{
    return result == IPC_OK || result == IPC_ERR_REFUSED || result == IPC_ERR_SERVICE;
}

// Counts the requests that change something, and checks that the recording can be sent.
size_t count_changes(const std::string &file)
{
    const TraceFile recording(file);
    if (recording.is_foreign())
        throw UsageError("FILE: '" + file + "' comes from a machine of the other byte order: the service here would " +
                         "read its requests turned round ('ponctl trace' shows it)");
    size_t changes = 0;
    const auto damage = recording.each(
        [&changes](const Traced &traced) { changes += is_of_pon(traced) && impact_of(traced) != Class::read; });
    if (damage)
        throw UsageError("FILE: '" + file + "' is damaged at record " + std::to_string(*damage + 1) +
                         "; nothing was sent");
    return changes;
}

ExitCode run_replay(const Output &output, const ReplayOptions &options)
{
    if (output.format == Format::hex)
        throw UsageError("--output: a replay has no bytes to show; take table, json or csv");
    if (mode().dry_run)
        throw UsageError("--dry-run: a replay compares what is answered; 'ponctl trace " + options.file +
                         "' shows the requests");
    const size_t changes = count_changes(options.file);
    if (changes > 0 && !options.reads_only)
        ask("sending " + std::to_string(changes) + " requests that change something");

    size_t sent = 0, differing = 0, others = 0, number = 0;
    Exchange failed;
    {
        Report report(output);
        TraceFile(options.file).each([&](const Traced &traced) {
            if (failed.made) return;
            ++number;
            if (!is_of_pon(traced)) {
                ++others;
                return;
            }
            if (options.reads_only && impact_of(traced) != Class::read) return;
            const LiveAnswer live = send(traced);
            if (!is_answer(live.exchange.result) && live.exchange.result != traced.record.ipc_result) {
                failed.made = true;
                failed.result = live.exchange.result;
                return;
            }
            ++sent;
            const Comparison comparison(traced, live, options.ignored);
            const auto &differences = comparison.differences();
            differing += !differences.empty();
            if (!differences.empty() || options.verbose) report.add(number, traced, differences);
        });
    }
    std::string summary = std::to_string(sent) + " exchanges, " + std::to_string(differing) + " differ";
    if (others > 0) summary += ", " + std::to_string(others) + " with other services left out";
    differing ? complain(summary) : note(summary);
    if (failed.made) return report_exchange("exchange " + std::to_string(number), failed, 0);
    return differing ? exit_status : exit_success;
}

} // namespace

void add_replay(Program &program)
{
    Command &replay =
        program.tree.add("replay", "Sends the requests of a recording and shows where the answers differ");
    ReplayOptions &options = replay.runs(run_replay);
    replay.argument("FILE", &options.file, "the recording, of BOARD_IPC_TRACE or ponsim --record").is_required();
    replay.option("-v,--verbose", &options.verbose, "show the exchanges that are equal, too");
    replay.option("--ignore", &options.ignored, "a field or column that may differ; may be repeated", "FIELD");
    replay.option("--reads-only", &options.reads_only, "send only the requests that change nothing");
}

} // namespace ponctl
