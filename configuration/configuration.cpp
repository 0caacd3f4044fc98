#include "configuration/configuration.h"

#include <algorithm>

#include "call/codec/decode.h"
#include "text/hex.h"
#include "text/json.h"
#include "text/words.h"

namespace config
{
namespace
{

using text::json::Document;
using text::json::Value;

std::string string_of(const Value &value)
{
    return {value.GetString(), value.GetStringLength()};
}

std::vector<std::string> names_in(const Value &table, const char *member)
{
    std::vector<std::string> names;
    if (table.IsObject() && table.HasMember(member) && table[member].IsArray())
        for (const Value &name : table[member].GetArray())
            if (name.IsString()) names.push_back(string_of(name));
    return names;
}

// Reads the lines of a text one by one.
class Lines
{
public:
    Lines(const std::string &name, std::string_view text) : of(name), rest(text) {}

    bool at_end() const { return rest.empty(); }
    std::string_view line() const { return read; }

    const Document &next()
    {
        ++count;
        const size_t end = rest.find('\n');
        if (end == rest.npos) fail("the text is cut off here");
        read = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        document.Parse<rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag>(read.data(),
                                                                                               read.size());
        if (document.HasParseError() || !document.IsObject()) fail("this is no line of a configuration");
        return document;
    }

    [[noreturn]] void fail(const std::string &problem) const
    {
        throw UsageError(of + ": line " + std::to_string(count) + ": " + problem);
    }

private:
    const std::string &of;
    std::string_view rest, read;
    size_t count = 0;
    Document document;
};

ConfigCell cell_of(const Lines &lines, const Value &value)
{
    if (value.IsInt64()) return value.GetInt64();
    if (value.IsString()) return string_of(value);
    if (value.IsObject() && value.HasMember("hex") && value["hex"].IsString())
        if (const auto bytes = text::from_hex(string_of(value["hex"])))
            return ConfigBytes{std::string(bytes->begin(), bytes->end())};
    lines.fail("a value is neither a number nor a text nor bytes");
}

std::span<const uint8_t> bytes_of(const ConfigBytes &cell)
{
    return {reinterpret_cast<const uint8_t *>(cell.bytes.data()), cell.bytes.size()};
}

std::string cell_text(const std::string &name, const ConfigCell &cell)
{
    if (const auto *number = std::get_if<int64_t>(&cell)) return std::to_string(*number);
    if (const auto *text = std::get_if<std::string>(&cell)) return *text;
    const auto bytes = bytes_of(std::get<ConfigBytes>(cell));
    if (name != "mac") return "hex:" + text::to_hex(bytes);
    std::string mac;
    for (const uint8_t byte : bytes)
        mac.append(mac.empty() ? "" : ":").append(text::to_hex(std::span(&byte, 1)));
    return mac;
}

// Returns the number in a column of a row, or 0 when there is none.
uint32_t number_in(const ConfigTable &table, const ConfigRow &row, const char *column)
{
    for (size_t index = 0; index < table.key.size(); ++index)
        if (const auto *number = std::get_if<int64_t>(&row.cells[index]); number && table.key[index] == column)
            return static_cast<uint32_t>(*number);
    return 0;
}

bool has_key(const ConfigTable &table, std::string_view column)
{
    return std::ranges::find(table.key, column) != table.key.end();
}

// Returns the command of a row that is kept by the command, or null when the catalogue does not know it.
const catalogue::Command *command_of(const ConfigTable &table, const ConfigRow &row)
{
    const uint32_t code = number_in(table, row, "command"), index = number_in(table, row, "idx");
    if (!has_key(table, "command")) return nullptr;
    const bool is_of_onu = !has_key(table, "channel");
    const catalogue::Command *found = nullptr;
    for (const catalogue::Command &command : catalogue::commands()) {
        const bool is_on_channel = is_of_onu ? command.channel->name.starts_with("BSP_MSG_ONU")
                                             : command.channel->type == number_in(table, row, "channel");
        if (command.code != code || !is_on_channel) continue;
        const catalogue::Layout *kept = catalogue::find_kept_layout(command);
        if (kept && kept->index == index) return &command;
        if (!found && !(kept && kept->index)) found = &command;
    }
    return found;
}

// A value of this name is a secret, in every table.
constexpr std::string_view password = "password";

constexpr std::string_view profile_start = "BSP_CMD_PROFILE_", profile_end = "_STORE";

// Returns the command that stores a profile of the kind of a row, or null when the row is no profile.
const catalogue::Command *profile_command_of(const ConfigTable &table, const ConfigRow &row)
{
    constexpr uint32_t actions_of_a_kind = 16, store = 1;
    const uint32_t kind = number_in(table, row, "kind");
    const catalogue::Channel *channel = catalogue::find_channel("BSP_MSG_PROFILE");
    const catalogue::Command *command = catalogue::find_command(channel->type, actions_of_a_kind * kind + store);
    return kind != 0 && command && command->name.starts_with(profile_start) && command->name.ends_with(profile_end)
               ? command
               : nullptr;
}

// Returns whether a field is one of several places for the same, of which nothing says how many count, and is not used.
bool is_unused_place(const DecodedField &decoded)
{
    return decoded.field->place != 0 && decoded.field->counter.empty() && decoded.text == "0";
}

// Returns the fields of a block by a layout in which the block starts at this offset. Returns none when the layout does
// not know all of the block.
std::vector<DecodedField> fields_in(const catalogue::Layout &layout, const catalogue::Command &command, size_t start,
                                    const ConfigBytes &block)
{
    Bytes record(start);
    record.insert(record.end(), block.bytes.begin(), block.bytes.end());
    const size_t end = end_of(layout);
    // Only the bytes of a text are kept, without the room behind it.
    if (layout.fields.back().type == catalogue::FieldType::text) record.resize(std::max(record.size(), end));
    if (record.size() < end ||
        std::any_of(record.begin() + static_cast<ptrdiff_t>(end), record.end(), [](uint8_t byte) { return byte != 0; }))
        return {};
    const Reading reading{layout.record, &layout, {command.channel, catalogue::Call::get, &command}, record, start};
    std::vector<DecodedField> fields;
    for (const catalogue::Field &field : layout.fields)
        if (field.offset >= start)
            fields.push_back({&field, is_counted(reading, field) ? call::text_of(reading, field) : "", false});
    return fields;
}

// Returns the fields of a block that is kept by a command, or none when the catalogue does not know them.
std::vector<DecodedField> fields_of(const ConfigTable &table, const ConfigRow &row, const ConfigBytes &block)
{
    if (const catalogue::Command *profile = profile_command_of(table, row)) {
        // The number and the name, which the layout has first, are kept apart.
        const catalogue::Layout *layout = catalogue::find_layout(*profile);
        if (!layout || block.bytes.size() >= end_of(*layout)) return {};
        return fields_in(*layout, *profile, end_of(*layout) - block.bytes.size(), block);
    }
    const catalogue::Command *command = command_of(table, row);
    const catalogue::Layout *layout = command ? catalogue::find_kept_layout(*command) : nullptr;
    if (command && !layout) layout = catalogue::find_layout(*command, true);
    if (command && !layout) layout = catalogue::find_layout(*command);
    if (!layout) return {};
    // Blocks of ONUs start where the data of their record does, unless the setting is a word before it.
    const catalogue::Field *data = catalogue::find_field(layout->record->fields, "onu_data");
    const bool is_data = data && end_of(*layout) > data->offset;
    return fields_in(*layout, *command, is_data ? data->offset : layout->fields.front().offset, block);
}

} // namespace

std::vector<ConfigCell> ConfigTable::key_of(const ConfigRow &row) const
{
    return {row.cells.begin(), row.cells.begin() + static_cast<ptrdiff_t>(key.size())};
}

std::vector<size_t> ConfigTable::configured_cells() const
{
    std::vector<size_t> cells;
    for (size_t index = 0; index < values.size(); ++index)
        if (std::ranges::find(configured, values[index]) != configured.end()) cells.push_back(key.size() + index);
    return cells;
}

Configuration::Configuration(const std::string &name, const std::string &text)
{
    Lines lines(name, text);
    const Document &head = lines.next();
    first_line = lines.line();
    if (!head.HasMember("ponsim_configuration") || !head.HasMember("ports") || !head["ports"].IsUint())
        lines.fail("this is not the configuration of an OLT");
    if (!head.HasMember("tables") || !head["tables"].IsObject())
        lines.fail("the values have no names here; save the configuration again");
    ports = head["ports"].GetUint();
    olt = first_line.substr(0, first_line.find(",\"tables\""));
    for (const auto &table : head["tables"].GetObject())
        tables[string_of(table.name)] = {names_in(table.value, "key"), names_in(table.value, "values"),
                                         names_in(table.value, "configured")};
    while (!lines.at_end()) {
        const Document &line = lines.next();
        if (line.HasMember("rows")) {
            if (!line["rows"].IsUint64() || line["rows"].GetUint64() != rows.size() || !lines.at_end())
                lines.fail("the text has another number of rows");
            return;
        }
        if (!line.HasMember("table") || !line["table"].IsString() || !line.HasMember("row") || !line["row"].IsArray())
            lines.fail("this is no row");
        ConfigRow row{string_of(line["table"]), {}};
        for (const Value &value : line["row"].GetArray())
            row.cells.push_back(cell_of(lines, value));
        const auto table = tables.find(row.table);
        if (table == tables.end()) lines.fail("table " + row.table + " is not named in the first line");
        if (row.cells.size() != table->second.key.size() + table->second.values.size())
            lines.fail("the row has another number of values than table " + row.table);
        rows.push_back(std::move(row));
    }
    throw UsageError(name + ": the text ends without the number of its rows");
}

std::string text_of(const std::string &first_line, const std::vector<ConfigRow> &rows)
{
    std::string text = first_line + "\n";
    const auto write_line = [&text](const auto &put) {
        text::json::Buffer buffer;
        text::json::Writer writer(buffer);
        writer.StartObject();
        put(writer);
        writer.EndObject();
        text.append(buffer.GetString(), buffer.GetSize());
        text += '\n';
    };
    const auto write_text = [](text::json::Writer &writer, const std::string &value) {
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    };
    for (const ConfigRow &row : rows)
        write_line([&](text::json::Writer &writer) {
            writer.Key("table");
            write_text(writer, row.table);
            writer.Key("row");
            writer.StartArray();
            for (const ConfigCell &cell : row.cells) {
                if (const auto *number = std::get_if<int64_t>(&cell)) {
                    writer.Int64(*number);
                } else if (const auto *value = std::get_if<std::string>(&cell)) {
                    write_text(writer, *value);
                } else {
                    writer.StartObject();
                    writer.Key("hex");
                    write_text(writer, text::to_hex(bytes_of(std::get<ConfigBytes>(cell))));
                    writer.EndObject();
                }
            }
            writer.EndArray();
        });
    write_line([&](text::json::Writer &writer) {
        writer.Key("rows");
        writer.Uint64(rows.size());
    });
    return text;
}

std::string key_text(const ConfigTable &table, const ConfigRow &row)
{
    std::string text;
    for (size_t index = 0; index < table.key.size(); ++index) {
        const std::string &name = table.key[index];
        std::string value = cell_text(name, row.cells[index]);
        if (name == "one" || name == "channel") continue; // there is one row, and the command says the channel
        const bool is_onu = index == 1 && table.key[0] == "pon_port" && (name == "onu_id" || name == "mac");
        if (name == "command") {
            if (const catalogue::Command *command = command_of(table, row)) value = command->name;
        } else if (name == "kind") {
            if (const catalogue::Command *profile = profile_command_of(table, row))
                value = text::lower_case(profile->name.substr(
                    profile_start.size(), profile->name.size() - profile_start.size() - profile_end.size()));
        }
        if (is_onu)
            text += "/" + value;
        else if (text.empty())
            text = value;
        else
            text += " " + name + " " + value;
    }
    return text;
}

std::string key_cell_text(const ConfigTable &table, const ConfigRow &row, std::string_view column)
{
    const auto found = std::ranges::find(table.key, column);
    if (found == table.key.end()) return {};
    return cell_text(*found, row.cells[static_cast<size_t>(found - table.key.begin())]);
}

std::string_view command_name_of(const ConfigTable &table, const ConfigRow &row)
{
    const catalogue::Command *command = command_of(table, row);
    return command ? command->name : std::string_view();
}

std::map<size_t, ConfigSetting> settings_of(const ConfigTable &table, const ConfigRow &row)
{
    std::map<size_t, ConfigSetting> settings;
    size_t place = 0;
    const auto add = [&](const std::string &name, const std::string &value) {
        if (!value.empty()) settings[place] = {row.table, key_text(table, row), name, value, name == password};
        ++place;
    };
    for (const size_t index : table.configured_cells()) {
        const std::string &name = table.values[index - table.key.size()];
        const auto *block = std::get_if<ConfigBytes>(&row.cells[index]);
        const auto fields = block ? fields_of(table, row, *block) : std::vector<DecodedField>();
        for (const DecodedField &decoded : fields)
            add(std::string(decoded.field->name), is_unused_place(decoded) ? "" : decoded.text);
        if (fields.empty()) add(name, cell_text(name, row.cells[index]));
    }
    return settings;
}

std::map<ConfigPlace, ConfigSetting> settings_of(const Configuration &configuration)
{
    std::map<ConfigPlace, ConfigSetting> settings;
    for (const ConfigRow &row : configuration.rows) {
        const ConfigTable &table = configuration.tables.at(row.table);
        for (const auto &[place, setting] : settings_of(table, row))
            settings[{row.table, table.key_of(row), place}] = setting;
    }
    return settings;
}

} // namespace config
