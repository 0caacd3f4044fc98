#include "store/configuration.h"

#include <algorithm>
#include <optional>
#include <ranges>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "store/cells.h"
#include "store/digest.h"
#include "store/store.h"
#include "text/hex.h"

namespace ponsim
{
namespace
{

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

constexpr char version_key[] = "ponsim_configuration";

// The first row is in this line. Each row has one line.
constexpr size_t first_row_line = 2;

[[noreturn]] void fail(size_t line, const std::string &problem)
{
    throw ConfigurationError("line " + std::to_string(line) + ": " + problem);
}

void write(Writer &writer, const std::string &text)
{
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void write(Writer &writer, const Cell &cell)
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
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
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

std::string_view text_of(const rapidjson::Value &value)
{
    return {value.GetString(), value.GetStringLength()};
}

std::optional<Cell> to_cell(const rapidjson::Value &value)
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
    const rapidjson::Document &next()
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
    rapidjson::Document line;
};

// Returns a member that must exist.
uint64_t number_of(const Lines &lines, const rapidjson::Document &line, const char *name)
{
    if (!line.HasMember(name) || !line[name].IsUint64()) fail(lines.number(), std::string("no number ") + name);
    return line[name].GetUint64();
}

void check_header(Lines &lines, const Settings &settings)
{
    const rapidjson::Document &line = lines.next();
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

Row row_of(const Lines &lines, const rapidjson::Document &line)
{
    if (!line.HasMember("table") || !line["table"].IsString() || !line.HasMember("row") || !line["row"].IsArray())
        fail(lines.number(), "neither a table with a row nor the number of rows");
    Row row{std::string(text_of(line["table"])), {}};
    for (const rapidjson::Value &value : line["row"].GetArray()) {
        std::optional<Cell> cell = to_cell(value);
        if (!cell)
            fail(lines.number(), "value " + std::to_string(row.cells.size() + 1) +
                                     " of the row is neither a number nor a text nor bytes");
        row.cells.push_back(std::move(*cell));
    }
    return row;
}

std::vector<Row> read_rows(std::string_view text, const Settings &settings)
{
    Lines lines(text);
    check_header(lines, settings);
    std::vector<Row> rows;
    while (true) {
        if (lines.at_end()) fail(lines.number() + 1, "the text ends without the number of its rows");
        const rapidjson::Document &line = lines.next();
        if (line.HasMember("rows")) {
            if (number_of(lines, line, "rows") != rows.size())
                fail(lines.number(), "the text has " + std::to_string(rows.size()) + " rows");
            if (!lines.at_end()) fail(lines.number() + 1, "the text goes on after the number of its rows");
            return rows;
        }
        rows.push_back(row_of(lines, line));
    }
}

Store store_of(const Settings &settings)
{
    Store store({}, false);
    store.set_settings(settings);
    return store;
}

// Returns what is wrong with rows taken together, or an empty text.
std::string problem_of(const Settings &settings, std::span<const Row> rows)
{
    Store store = store_of(settings);
    try {
        store.insert(rows);
        store.load();
    } catch (const StoreError &error) {
        return error.what();
    }
    return {};
}

// Throws for the first row that is wrong, by itself or together with the rows before it.
[[noreturn]] void fail_at_the_first_wrong_row(const Settings &settings, std::span<const Row> rows)
{
    const auto counts = std::views::iota(size_t{1}, rows.size());
    const size_t count = *std::ranges::partition_point(
        counts, [&](size_t before) { return problem_of(settings, rows.first(before)).empty(); });
    fail(first_row_line + count - 1, problem_of(settings, rows.first(count)));
}

} // namespace

std::string write_configuration(const Settings &settings, std::span<const Row> rows)
{
    std::string text;
    write_line(text, [&](Writer &writer) {
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
        if (settings.scenario.empty()) return;
        writer.Key("scenario");
        write(writer, digest(settings.scenario));
        writer.Key("olt");
        write(writer, settings.olt);
    });
    for (const Row &row : rows)
        write_line(text, [&](Writer &writer) {
            writer.Key("table");
            write(writer, row.table);
            writer.Key("row");
            writer.StartArray();
            for (const Cell &cell : row.cells)
                write(writer, cell);
            writer.EndArray();
        });
    write_line(text, [&](Writer &writer) {
        writer.Key("rows");
        writer.Uint64(rows.size());
    });
    return text;
}

Configuration read_configuration(std::string_view text, const Settings &settings)
{
    const std::vector<Row> rows = read_rows(text, settings);
    Configuration configuration;
    Store store = store_of(settings);
    try {
        store.insert(rows);
        configuration.change = store.load();
    } catch (const StoreError &) {
        fail_at_the_first_wrong_row(settings, rows);
    }
    // The OLT would keep exactly what the text has. Otherwise the text has values that are not possible.
    Store kept = store_of(settings);
    kept.write(configuration.change);
    configuration.rows = kept.rows();
    for (size_t index = 0; index < rows.size(); ++index)
        if (!std::ranges::binary_search(configuration.rows, rows[index]))
            fail(first_row_line + index, "the OLT cannot be in this state");
    return configuration;
}

} // namespace ponsim
