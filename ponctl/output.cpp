#include "output.h"

#include <algorithm>
#include <array>
#include <cstring>

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include "numbers.h"
#include "report.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

using catalogue::Field;
using catalogue::FieldType;

size_t documents = 0; // of JSON that were written

bool is_utf8(std::string_view text)
{
    rapidjson::MemoryStream in(text.data(), text.size());
    rapidjson::StringBuffer out;
    while (in.Tell() < text.size())
        if (!rapidjson::UTF8<>::Validate(in, out)) return false;
    return true;
}

bool is_json(std::string_view text)
{
    rapidjson::MemoryStream in(text.data(), text.size());
    rapidjson::BaseReaderHandler<> ignore;
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    return !rapidjson::Reader().Parse<flags>(in, ignore).IsError();
}

template <class Writer>
void pass_on(std::string_view document, Writer &writer)
{
    rapidjson::MemoryStream in(document.data(), document.size());
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    rapidjson::Reader().Parse<flags>(in, writer);
}

std::string_view text_of(std::span<const uint8_t> bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

// Whether contents of a file are a text throughout: UTF-8 without control characters but tabs and line ends.
bool is_text(std::string_view content)
{
    return is_utf8(content) && std::ranges::none_of(content, [](unsigned char byte) {
               return (byte < ' ' && byte != '\t' && byte != '\n') || byte == 0x7f;
           });
}

std::string cell_text(db_handle *database, uint32_t row, const char *column)
{
    switch (db_get_type(database, row, column)) {
    case DB_NONE:
        return "-";
    case DB_BOOL: {
        int value = 0;
        db_get_bool(database, row, column, &value);
        return value ? "yes" : "no";
    }
    case DB_INTEGER:
    case DB_REAL:
    case DB_TEXT:
    case DB_NESTED:
        break;
    }
    const char *text = db_get_text(database, row, column);
    return text ? text : "-";
}

// A number as the word for it, where it has one.
std::string cell_word(db_handle *database, uint32_t row, const std::string &column,
                      std::span<const std::string_view> words)
{
    int64_t number = 0;
    const bool known = db_get_integer(database, row, column.c_str(), &number) == 0 && number >= 0 &&
                       static_cast<uint64_t>(number) < words.size();
    return known ? std::string(words[static_cast<size_t>(number)]) : cell_text(database, row, column.c_str());
}

bool is_empty(std::span<const Owned> databases, const std::string &column)
{
    for (const Owned &owned : databases)
        for (uint32_t row = 0; row < db_rows(owned.database); ++row)
            if (db_get_type(owned.database, row, column.c_str()) != DB_NONE) return false;
    return true;
}

struct ViewColumn {
    std::string name;
    Table::Heading heading;
};

Table::Fit fit_of(catalogue::ColumnType type)
{
    switch (type) {
    case catalogue::ColumnType::u32:
    case catalogue::ColumnType::u64:
    case catalogue::ColumnType::real:
        return Table::Fit::right;
    case catalogue::ColumnType::mac:
    case catalogue::ColumnType::boolean:
        return Table::Fit::whole;
    case catalogue::ColumnType::text:
        return Table::Fit::wrap;
    }
    return Table::Fit::wrap;
}

std::vector<ViewColumn> columns_of(std::span<const Owned> databases, const catalogue::View *view)
{
    std::vector<ViewColumn> columns;
    if (view)
        for (const catalogue::Column &column : view->columns) {
            std::string title(column.title);
            if (!column.unit.empty()) title.append(" (").append(column.unit).append(")");
            columns.push_back({std::string(column.name), {title, fit_of(column.type)}});
        }
    for (const Owned &owned : databases)
        for (uint32_t index = 0; index < db_columns(owned.database); ++index) {
            const std::string name = db_column_name(owned.database, index);
            if (std::ranges::find(columns, name, &ViewColumn::name) == columns.end())
                columns.push_back({name, {name, Table::Fit::wrap}});
        }
    return columns;
}

// The rows of databases, with their owners in a first column if that has a title.
void print_rows(const Output &output, const std::string &owner_title, std::span<const Owned> databases,
                const catalogue::View *view, const TableStyle &style)
{
    std::vector<ViewColumn> columns = columns_of(databases, view);
    if (style.filled_only)
        std::erase_if(columns, [databases](const ViewColumn &column) { return is_empty(databases, column.name); });
    std::vector<Table::Heading> headings;
    if (!owner_title.empty()) headings.push_back({owner_title});
    for (const ViewColumn &column : columns)
        headings.push_back(
            {column.heading.title, column.name == style.worded ? Table::Fit::whole : column.heading.fit});
    Table table(std::move(headings));
    for (const auto &[owner, database] : databases)
        for (uint32_t row = 0; row < db_rows(database); ++row) {
            std::vector<std::string> cells;
            if (!owner_title.empty()) cells.push_back(owner);
            for (const ViewColumn &column : columns)
                cells.push_back(column.name == style.worded ? cell_word(database, row, column.name, style.words)
                                                            : cell_text(database, row, column.name.c_str()));
            table.add(std::move(cells));
        }
    table.print(output);
}

void write_field(Json &json, const Field &field, std::span<const uint8_t> bytes)
{
    switch (field.type) {
    case FieldType::u8:
    case FieldType::u16:
    case FieldType::s16:
    case FieldType::u32:
    case FieldType::s32:
    case FieldType::u64:
        json.number(number_text(field, bytes));
        break;
    case FieldType::mac:
        json.text(format_mac(bytes.data()));
        break;
    case FieldType::text:
        json.text(field_text(bytes));
        break;
    case FieldType::bytes:
        json.text(format_hex(without_trailing_zeros(bytes)));
        break;
    case FieldType::idset: {
        IdSet set;
        std::memcpy(set.data(), bytes.data(), sizeof set);
        json.ids(set);
        break;
    }
    }
}

constexpr size_t bytes_a_line = 16;

void print_line(std::FILE *stream, size_t offset, std::span<const uint8_t> bytes, std::string_view name)
{
    std::string hex, characters;
    for (const uint8_t byte : bytes) {
        hex.append(format_hex({&byte, 1})).push_back(' ');
        characters.push_back(byte >= ' ' && byte < 0x7f ? static_cast<char>(byte) : '.');
    }
    hex.resize(3 * bytes_a_line, ' ');
    if (!name.empty()) {
        characters.resize(bytes_a_line, ' ');
        characters.append("  ").append(name);
    }
    std::fprintf(stream, "%5zu  %s %s\n", offset, hex.c_str(), characters.c_str());
}

// The bytes of one field, or between two.
void print_segment(std::FILE *stream, size_t offset, std::span<const uint8_t> bytes, std::string_view name)
{
    const auto zero = [](std::span<const uint8_t> line) { return without_trailing_zeros(line).empty(); };
    bool starred = false;
    for (size_t at = 0; at < bytes.size(); at += bytes_a_line) {
        const auto line = bytes.subspan(at, std::min(bytes_a_line, bytes.size() - at));
        const bool repeats = at > 0 && zero(line) && zero(bytes.subspan(at - bytes_a_line, bytes_a_line));
        if (!repeats)
            print_line(stream, offset + at, line, at == 0 ? name : std::string_view{});
        else if (!starred)
            std::fputs("    *\n", stream);
        starred = repeats;
    }
}

void print_document(const Output &output, std::string_view document)
{
    print_bytes(output, {reinterpret_cast<const uint8_t *>(document.data()), document.size()});
}

void write_request(Json &json, const Exchange &exchange)
{
    json->StartObject();
    json.member("channel", exchange.channel->name);
    json.member("call", catalogue::to_text(exchange.call));
    json.member("length", static_cast<uint32_t>(exchange.request.size()));
    json.key("request");
    json.record(read_record(*exchange.record, {exchange.channel, exchange.call}, exchange.request));
    json.member("bytes", format_hex(without_trailing_zeros(exchange.request)));
    json->EndObject();
}

void print_request(const Output &output, const Exchange &exchange)
{
    const Reading reading = read_record(*exchange.record, {exchange.channel, exchange.call}, exchange.request);
    if (output.format == Format::table) {
        std::fprintf(output.stream, "not sent: %s on %s, %zu bytes\n",
                     std::string(catalogue::to_text(exchange.call)).c_str(),
                     std::string(exchange.channel->name).c_str(), exchange.request.size());
        print_fields(output, reading);
    }
    print_bytes(output, exchange.request, &reading);
}

} // namespace

const char *colour_of(std::string_view word)
{
    constexpr std::array green{"online", "up", "registered", "recovered", "normal"};
    constexpr std::array yellow{"unauthenticated", "waiting", "connecting", "minor", "low warning", "high warning"};
    constexpr std::array red{"offline",  "unregistered", "looped",    "shut",
                             "critical", "major",        "low alarm", "high alarm"};
    if (std::ranges::find(green, word) != green.end()) return "\033[32m";
    if (std::ranges::find(yellow, word) != yellow.end()) return "\033[33m";
    if (std::ranges::find(red, word) != red.end()) return "\033[31m";
    return nullptr;
}

Json::Json(std::FILE *stream) : file(stream, buffer, sizeof buffer), writer(file)
{
    writer.SetIndent(' ', 2);
    ++documents;
}

size_t Json::written()
{
    return documents;
}

Json::~Json()
{
    file.Put('\n');
    file.Flush();
}

void Json::text(std::string_view text)
{
    std::string utf8;
    if (!is_utf8(text)) {
        for (const char c : text) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte >= 0x80) utf8.push_back(static_cast<char>(0xc0 | byte >> 6));
            utf8.push_back(static_cast<char>(byte >= 0x80 ? 0x80 | (byte & 0x3f) : byte));
        }
        text = utf8;
    }
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void Json::member(std::string_view name, std::string_view value)
{
    key(name);
    text(value);
}

void Json::member(std::string_view name, uint32_t value)
{
    key(name);
    writer.Uint(value);
}

void Json::number(const std::string &digits)
{
    writer.RawNumber(digits.data(), static_cast<rapidjson::SizeType>(digits.size()), true);
}

void Json::status(uint32_t status)
{
    member("status", status);
    key("status_name");
    if (const catalogue::Status *known = catalogue::find_status(status))
        text(known->name);
    else
        writer.Null();
}

void Json::ids(const IdSet &set)
{
    writer.StartArray();
    for (uint32_t id = 0; id <= max_onu_id; ++id)
        if (holds(set, id)) writer.Uint(id);
    writer.EndArray();
}

void Json::row(db_handle *database, uint32_t row)
{
    writer.StartObject();
    for (uint32_t column = 0; column < db_columns(database); ++column) {
        const char *name = db_column_name(database, column);
        key(name);
        const char *cell = db_get_text(database, row, name);
        if (!cell)
            writer.Null();
        else if (db_get_type(database, row, name) == DB_TEXT)
            text(cell);
        else
            document(cell);
    }
    writer.EndObject();
}

void Json::content(std::span<const uint8_t> bytes)
{
    if (is_text(text_of(bytes)))
        text(text_of(bytes));
    else
        text(format_hex(bytes));
}

void Json::document(std::string_view document)
{
    if (!is_json(document)) return text(document);
    pass_on(document, writer);
}

void Json::document(const db_handle *database)
{
    if (database)
        document(document_of(database));
    else
        writer.Null();
}

void Json::list(const db_handle *database)
{
    document(database ? document_of(database) : "[]");
}

void Json::record(const Reading &reading)
{
    writer.StartObject();
    for (const DecodedField &decoded : decode(reading)) {
        key(decoded.field->name);
        field(*decoded.field, reading);
    }
    writer.EndObject();
}

void Json::field(const catalogue::Field &field, const Reading &reading)
{
    write_field(*this, field, field_bytes(field, reading.bytes));
}

std::string printable(std::string_view text)
{
    std::string safe;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < ' ' || byte == 0x7f)
            safe.append("\\x").append(format_hex({&byte, 1}));
        else
            safe.push_back(c);
    }
    return safe;
}

void print_text(const Output &output, std::string_view text)
{
    std::string lines;
    for (const char &c : text) {
        if (c == '\t' || c == '\n')
            lines.push_back(c);
        else
            lines.append(printable({&c, 1}));
    }
    if (!lines.ends_with('\n')) lines.push_back('\n');
    std::fputs(lines.c_str(), output.stream);
}

void print_content(const Output &output, std::span<const uint8_t> bytes)
{
    if (output.format == Format::json)
        Json(output.stream).content(bytes);
    else if (output.format == Format::table && is_text(text_of(bytes)))
        print_text(output, text_of(bytes));
    else
        print_bytes(output, bytes);
}

void refuse_hex(const Output &output)
{
    if (output.format == Format::hex)
        throw UsageError("--output: the catalogue has no bytes to show; take table, csv or json");
}

void print_texts(const Output &output, const std::vector<std::string> &names,
                 const std::vector<std::vector<std::string>> &rows)
{
    refuse_hex(output);
    if (output.format != Format::json) {
        std::vector<Table::Heading> headings;
        for (const std::string &name : names)
            headings.push_back({name, &name == &names.back() ? Table::Fit::wrap : Table::Fit::whole});
        Table table(std::move(headings));
        for (const auto &row : rows)
            table.add(row);
        return table.print(output);
    }
    Json json(output.stream);
    json->StartArray();
    for (const auto &row : rows) {
        json->StartObject();
        for (size_t column = 0; column < row.size(); ++column)
            json.member(text::lower_case(names[column]), row[column]);
        json->EndObject();
    }
    json->EndArray();
}

void print_fields(const Output &output, const Reading &reading)
{
    Table table({{"FIELD"}, {"VALUE", Table::Fit::wrap}});
    for (const DecodedField &decoded : decode(reading))
        if (reading.is_block() || !decoded.zero) table.add({std::string(decoded.field->name), decoded.text});
    table.print(output);
}

void print_bytes(const Output &output, std::span<const uint8_t> bytes, const Reading *reading)
{
    std::vector<const Field *> fields;
    if (reading) {
        for (const Field &field : reading->record->fields)
            fields.push_back(&field);
        if (reading->layout)
            for (const Field &field : reading->layout->fields)
                fields.push_back(&field);
    }
    std::stable_sort(fields.begin(), fields.end(),
                     [](const Field *a, const Field *b) { return a->offset < b->offset; });

    // Each field reaches to the next one's start: the layout's lie inside an opaque field of the record.
    size_t at = reading ? reading->start : 0;
    std::string_view name;
    const auto print_to = [&](size_t end) {
        end = std::min(end, bytes.size());
        if (at < end) print_segment(output.stream, at, bytes.subspan(at, end - at), name);
        at = std::max(at, end);
    };
    for (const Field *field : fields) {
        if (field->offset < at) continue;
        print_to(field->offset);
        name = field->name;
        const bool holds_others = std::any_of(fields.begin(), fields.end(), [field](const Field *other) {
            return other->offset > field->offset && other->offset < field->offset + field->size;
        });
        if (holds_others) continue;
        print_to(field->offset + field->size);
        name = {};
    }
    print_to(bytes.size());
}

std::string_view document_of(const db_handle *database)
{
    uint32_t length = 0;
    const char *text = db_text(database, &length);
    return {text, length};
}

void print_requests(const Output &output, std::span<const Exchange> requests)
{
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        for (const Exchange &exchange : requests)
            write_request(json, exchange);
        json->EndArray();
        return;
    }
    if (requests.empty()) std::fputs("nothing would be sent\n", output.stream);
    for (const Exchange &exchange : requests) {
        if (&exchange != &requests.front()) std::fputc('\n', output.stream);
        print_request(output, exchange);
    }
}

void print_ending(const Output &output, const Exchange &last, int exit_code)
{
    Json json(output.stream);
    json->StartObject();
    json.member("exit_code", static_cast<uint32_t>(exit_code));
    json.key("ipc_result");
    json->Int(last.result);
    json.status(last.status);
    json->EndObject();
}

std::string compact(std::string_view document)
{
    rapidjson::StringBuffer line;
    Passing<rapidjson::Writer<rapidjson::StringBuffer>> writer(line);
    pass_on(document, writer);
    return {line.GetString(), line.GetSize()};
}

void print_database(const Output &output, db_handle *database, const catalogue::View *view, const TableStyle &style)
{
    const std::string_view document = document_of(database);
    if (output.format == Format::hex) return print_document(output, document);
    if (db_rows(database) == 0 && document != "[]") {
        std::fprintf(output.stream, "%s\n", printable(document).c_str());
        return;
    }
    print_rows(output, {}, std::array{Owned{{}, database}}, view, style);
}

void print_databases(const Output &output, const std::string &owner_title, std::span<const Owned> databases,
                     const catalogue::View *view)
{
    print_rows(output, owner_title, databases, view, {});
}

void print_row(const Output &output, db_handle *database, uint32_t row, const catalogue::View *view)
{
    if (output.format == Format::hex) return print_document(output, document_of(database));
    Table table({{"FIELD"}, {"VALUE", Table::Fit::wrap}});
    for (const ViewColumn &column : columns_of(std::array{Owned{{}, database}}, view))
        table.add({column.heading.title, cell_text(database, row, column.name.c_str())});
    table.print(output);
}

} // namespace ponctl
