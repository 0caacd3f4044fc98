#include "store/configuration.h"

#include <algorithm>
#include <optional>

#include <rapidjson/error/en.h>

#include "store/cells.h"
#include "store/digest.h"
#include "store/records.h"
#include "store/store.h"
#include "store/table.h"
#include "text/hex.h"
#include "text/json.h"

namespace ponsim
{
namespace
{

using text::json::Document;
using JsonWriter = text::json::Writer;

constexpr char version_key[] = "ponsim_configuration";

// The first row is in this line. Each row has one line.
constexpr size_t first_row_line = 2;

[[noreturn]] void fail(size_t line, const std::string &problem)
{
    throw ConfigurationError("line " + std::to_string(line) + ": " + problem);
}

void write(JsonWriter &writer, const std::string &text)
{
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void write(JsonWriter &writer, const Cell &cell)
{
    if (const auto *number = std::get_if<int64_t>(&cell)) {
        writer.Int64(*number);
    } else if (const auto *text = std::get_if<std::string>(&cell)) {
        write(writer, *text);
    } else {
        const std::string &bytes = std::get<Blob>(cell).bytes;
        writer.StartObject();
        writer.Key("hex");
        write(writer, text::to_hex(bytes_of(bytes)));
        writer.EndObject();
    }
}

template <class Put>
void write_line(std::string &text, Put put)
{
    text::json::Buffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    put(writer);
    writer.EndObject();
    text.append(buffer.GetString(), buffer.GetSize());
    text += '\n';
}

// Returns the digest of the scenario's text. It is empty without a scenario.
std::string digest_of(const Settings &settings)
{
    return settings.scenario.empty() ? std::string() : digest(settings.scenario);
}

void write_names(JsonWriter &writer, const char *key, const std::vector<Declaration::Declared> &columns)
{
    writer.Key(key);
    writer.StartArray();
    for (const Declaration::Declared &column : columns)
        writer.String(column.name.data(), static_cast<rapidjson::SizeType>(column.name.size()));
    writer.EndArray();
}

// Returns the columns of a family that somebody configures.
template <class Record>
std::vector<Declaration::Declared> configured_columns(const TableForm &form)
{
    std::vector<Declaration::Declared> columns;
    if constexpr (requires { Family<Record>::configured.size(); }) {
        for (const std::string_view name : Family<Record>::configured)
            columns.push_back({name, {}});
    } else if constexpr (requires { Family<Record>::configured; }) {
        columns = form.value.columns();
    }
    return columns;
}

// Describes the tables to whoever reads the text: the names of the values in a row, and which of them are configured.
void write_tables(JsonWriter &writer)
{
    const auto write_table = [&](const TableForm &form, const std::vector<Declaration::Declared> &configured) {
        writer.Key(form.name.data(), static_cast<rapidjson::SizeType>(form.name.size()));
        writer.StartObject();
        write_names(writer, "key", form.key.columns());
        write_names(writer, "values", form.value.columns());
        write_names(writer, "configured", configured);
        writer.EndObject();
    };
    writer.Key("tables");
    writer.StartObject();
    Kept::each_family([&]<class Record>() {
        const TableForm form = form_of<Record>();
        write_table(form, configured_columns<Record>(form));
        for_each_column(parts_of<Record>(), [&](const auto &part) { write_table(form_of<Record>(part), {}); });
    });
    writer.EndObject();
}

// Describes in words what makes it this OLT. A scenario is identified by the digest of its text.
std::string options(const Settings &settings, const std::string &scenario)
{
    if (!scenario.empty()) return "the scenario of digest " + scenario + ", in which it is " + settings.olt;
    return "--seed " + std::to_string(settings.seed) + " --ports " + std::to_string(settings.ports) + " --arrivals " +
           std::to_string(settings.arrivals) + " --silent " + std::to_string(settings.silent);
}

std::optional<Blob> to_blob(std::string_view hex)
{
    const auto bytes = text::from_hex(hex);
    if (!bytes) return std::nullopt;
    return Blob{std::string(bytes->begin(), bytes->end())};
}

std::string_view text_of(const text::json::Value &value)
{
    return {value.GetString(), value.GetStringLength()};
}

std::optional<Cell> to_cell(const text::json::Value &value)
{
    if (value.IsInt64()) return value.GetInt64();
    if (value.IsString()) return std::string(text_of(value));
    if (value.IsObject() && value.MemberCount() == 1 && value.HasMember("hex") && value["hex"].IsString())
        return to_blob(text_of(value["hex"]));
    return std::nullopt;
}

// Lines reads the lines of a text one by one.
class Lines
{
public:
    explicit Lines(std::string_view text) : rest(text) {}

    size_t number() const { return count; }
    bool at_end() const { return rest.empty(); }

    // Returns the next line. Every line must end with a newline.
    const Document &next()
    {
        ++count;
        const size_t end = rest.find('\n');
        if (end == std::string_view::npos) fail(count, "the text is cut off here");
        // Parsing is iterative, so that deep nesting does no harm.
        line.Parse<rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag>(rest.data(), end);
        rest.remove_prefix(end + 1);
        if (line.HasParseError()) fail(count, rapidjson::GetParseError_En(line.GetParseError()));
        if (!line.IsObject()) fail(count, "not a JSON object");
        return line;
    }

private:
    std::string_view rest;
    size_t count = 0;
    Document line;
};

// Returns a member that must exist.
uint64_t number_of(const Lines &lines, const Document &line, const char *name)
{
    if (!line.HasMember(name) || !line[name].IsUint64()) fail(lines.number(), std::string("no number ") + name);
    return line[name].GetUint64();
}

void check_header(Lines &lines, const Settings &settings)
{
    const Document &line = lines.next();
    const uint64_t version = number_of(lines, line, version_key);
    if (version != static_cast<uint64_t>(Store::version()))
        fail(lines.number(), "version " + std::to_string(version) + " of the configuration; this ponsim has version " +
                                 std::to_string(Store::version()));
    const auto word = [&](const char *name) {
        const uint64_t number = number_of(lines, line, name);
        if (number > UINT32_MAX) fail(lines.number(), std::string(name) + " is too great");
        return static_cast<uint32_t>(number);
    };
    const auto text = [&](const char *name) {
        return line.HasMember(name) && line[name].IsString() ? std::string(text_of(line[name])) : std::string();
    };
    const Settings found{.seed = number_of(lines, line, "seed"),
                         .ports = word("ports"),
                         .arrivals = word("arrivals"),
                         .silent = word("silent"),
                         .olt = text("olt")};
    const std::string theirs = options(found, text("scenario")), ours = options(settings, digest_of(settings));
    if (theirs != ours)
        throw OtherOltError("line 1: the configuration of an OLT with " + theirs + "; this one has " + ours);
}

Row row_of(const Lines &lines, const Document &line)
{
    if (!line.HasMember("table") || !line["table"].IsString() || !line.HasMember("row") || !line["row"].IsArray())
        fail(lines.number(), "neither a table with a row nor the number of rows");
    Row row{std::string(text_of(line["table"])), {}};
    for (const text::json::Value &value : line["row"].GetArray()) {
        std::optional<Cell> cell = to_cell(value);
        if (!cell)
            fail(lines.number(), "value " + std::to_string(row.cells.size() + 1) +
                                     " of the row is neither a number nor a text nor bytes");
        row.cells.push_back(std::move(*cell));
    }
    return row;
}

// Takes the rows one by one, so that the first wrong one is found when it comes and what follows is not looked at.
Change read_rows(Lines &lines, const Settings &settings)
{
    Records records(settings.ports);
    for (uint64_t count = 0;; ++count) {
        if (lines.at_end()) fail(lines.number() + 1, "the text ends without the number of its rows");
        const Document &line = lines.next();
        if (!line.HasMember("rows")) {
            records.take(row_of(lines, line));
            continue;
        }
        if (number_of(lines, line, "rows") != count)
            fail(lines.number(), "the text has " + std::to_string(count) + " rows");
        if (!lines.at_end()) fail(lines.number() + 1, "the text goes on after the number of its rows");
        return records.finish();
    }
}

} // namespace

std::string write_configuration(const Settings &settings, std::span<const Row> rows)
{
    std::string text;
    write_line(text, [&](JsonWriter &writer) {
        writer.Key(version_key);
        writer.Int64(Store::version());
        writer.Key("seed");
        writer.Uint64(settings.seed);
        writer.Key("ports");
        writer.Uint(settings.ports);
        writer.Key("arrivals");
        writer.Uint(settings.arrivals);
        writer.Key("silent");
        writer.Uint(settings.silent);
        if (!settings.scenario.empty()) {
            writer.Key("scenario");
            write(writer, digest(settings.scenario));
            writer.Key("olt");
            write(writer, settings.olt);
        }
        write_tables(writer);
    });
    for (const Row &row : rows)
        write_line(text, [&](JsonWriter &writer) {
            writer.Key("table");
            write(writer, row.table);
            writer.Key("row");
            writer.StartArray();
            for (const Cell &cell : row.cells)
                write(writer, cell);
            writer.EndArray();
        });
    write_line(text, [&](JsonWriter &writer) {
        writer.Key("rows");
        writer.Uint64(rows.size());
    });
    return text;
}

Change read_configuration(std::string_view text, const Settings &settings)
{
    Lines lines(text);
    check_header(lines, settings);
    try {
        return read_rows(lines, settings);
    } catch (const RowError &error) {
        fail(first_row_line + error.row, error.what());
    }
}

} // namespace ponsim
