// This file writes and reads exchanges of records as JSON: each field by its name, and the bytes that have no name by
// where they are.
#include <algorithm>
#include <bit>
#include <cstring>

#include "board/ipc.h"
#include "call/codec/decode.h"
#include "call/codec/members.h"
#include "call/codec/numbers.h"
#include "call/json.h"
#include "call/record.h"
#include "call/record_call.h"
#include "text/hex.h"
#include "text/utf8.h"

namespace call
{
namespace
{

using catalogue::Field;
using catalogue::FieldType;

bool is_zero(std::span<const uint8_t> bytes)
{
    return std::ranges::all_of(bytes, [](uint8_t byte) { return byte == 0; });
}

bool is_signed(FieldType type)
{
    return type == FieldType::s16 || type == FieldType::s32;
}

// Returns the number in a field as it stands there, without its unit.
template <class Number>
Number load(std::span<const uint8_t> bytes)
{
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

uint64_t count_in(const Field &field, std::span<const uint8_t> bytes)
{
    switch (field.size) {
    case 1:
        return load<uint8_t>(bytes);
    case 2:
        return field.type == FieldType::s16 ? static_cast<uint64_t>(load<int16_t>(bytes)) : load<uint16_t>(bytes);
    case 4:
        return field.type == FieldType::s32 ? static_cast<uint64_t>(load<int32_t>(bytes)) : load<uint32_t>(bytes);
    default:
        return load<uint64_t>(bytes);
    }
}

// Writes the lowest bytes of a number as a number of so many bytes.
void store(uint64_t number, std::span<uint8_t> bytes)
{
    for (size_t at = 0; at < bytes.size(); ++at) {
        const size_t from_least = std::endian::native == std::endian::little ? at : bytes.size() - 1 - at;
        bytes[at] = static_cast<uint8_t>(number >> (8 * from_least));
    }
}

// Returns whether a field holds a text in UTF-8, a NUL, and nothing behind it.
bool is_plain_text(std::span<const uint8_t> bytes)
{
    const std::string_view text = field_text(bytes);
    return text.size() < bytes.size() && is_zero(bytes.subspan(text.size())) && text::is_utf8(text);
}

// Returns whether a field has a form of its own. The others are bytes, which are the same in every byte order.
bool has_form(const Field &field, std::span<const uint8_t> bytes)
{
    if (is_number(field.type)) return field.size == 1 || field.size == 2 || field.size == 4 || field.size == 8;
    return field.type == FieldType::mac || (field.type == FieldType::idset && field.size == sizeof(IdSet)) ||
           (field.type == FieldType::text && is_plain_text(bytes));
}

void write_field(JsonText &json, const Field &field, std::span<const uint8_t> bytes)
{
    json.key(field.name);
    if (field.type == FieldType::mac) {
        json.text(text::mac_text(bytes.first<6>()));
    } else if (field.type == FieldType::text) {
        json.text(field_text(bytes));
    } else if (field.type == FieldType::idset) {
        IdSet set;
        std::memcpy(set.data(), bytes.data(), sizeof set);
        json.ids(set);
    } else if (const uint64_t count = count_in(field, bytes); is_signed(field.type)) {
        json.number(std::to_string(static_cast<int64_t>(count)));
    } else {
        json.number(std::to_string(count));
    }
}

// Writes the bytes that `unnamed` marks, a run of them each, without the zeros at its ends.
void write_runs(JsonText &json, std::span<const uint8_t> bytes, const std::vector<bool> &unnamed)
{
    json.key("bytes");
    json->StartObject();
    constexpr size_t least_gap = 8; // of zeros between two runs
    size_t at = 0;
    while (at < bytes.size()) {
        if (!unnamed[at] || bytes[at] == 0) {
            ++at;
            continue;
        }
        size_t end = at + 1;
        for (size_t next = end; next < bytes.size() && unnamed[next] && next - end < least_gap; ++next)
            if (bytes[next] != 0) end = next + 1;
        json.member(std::to_string(at), text::to_hex(bytes.subspan(at, end - at)));
        at = end;
    }
    json->EndObject();
}

// Returns whether the command of the record is stated apart. An answer has whatever code the service left there.
bool states_command(const RecordRole &role)
{
    return role.command && !role.is_answer;
}

// Writes the bytes of a record. What is zero is left out.
void write_bytes(JsonText &json, const catalogue::Record &record, const RecordRole &role,
                 std::span<const uint8_t> bytes)
{
    const Reading reading = read_record(record, role, bytes);
    std::vector<bool> unnamed(bytes.size(), true);
    const auto name = [&](std::span<const Field> fields) {
        for (const Field &field : fields) {
            if (field.offset + field.size > bytes.size()) continue;
            const auto there = bytes.subspan(field.offset, field.size);
            const auto marks = unnamed.begin() + field.offset;
            // A number that another name covers in part would be another one in another byte order.
            if (std::any_of(marks, marks + field.size, [](bool free) { return !free; })) continue;
            if (!has_form(field, there)) continue;
            std::fill(marks, marks + field.size, false);
            if (!is_zero(there) && !(states_command(role) && &field == record.command)) write_field(json, field, there);
        }
    };
    json.member("length", static_cast<uint32_t>(bytes.size()));
    json.key("fields");
    json->StartObject();
    if (reading.layout) name(reading.layout->fields);
    name(record.fields);
    json->EndObject();
    write_runs(json, bytes, unnamed);
}

uint64_t read_count(const std::string &name, const JsonValue &value, const Field &field)
{
    if (is_signed(field.type) && value.IsInt64()) {
        const int64_t most = (int64_t{1} << (8 * field.size - 1)) - 1;
        if (value.GetInt64() <= most && value.GetInt64() >= -most - 1) return static_cast<uint64_t>(value.GetInt64());
    } else if (value.IsUint64() && (field.size == 8 || value.GetUint64() >> (8 * field.size) == 0)) {
        return value.GetUint64();
    }
    refuse_member(name, ("a whole number of " + std::to_string(field.size) + " bytes").c_str());
}

void read_field(const std::string &name, const JsonValue &value, const Field &field, std::span<uint8_t> bytes)
{
    if (is_number(field.type)) {
        store(read_count(name, value, field), bytes);
    } else if (field.type == FieldType::mac) {
        std::ranges::copy(parse_mac(name, read_text(name, value)), bytes.begin());
    } else if (field.type == FieldType::text) {
        const std::string text = read_text(name, value);
        check_length(name, text.size(), field, true);
        std::ranges::copy(text, bytes.begin());
    } else if (field.type == FieldType::idset) {
        if (!value.IsArray()) refuse_member(name, "a list of ids");
        IdSet set{};
        for (const JsonValue &id : value.GetArray()) {
            if (!id.IsUint() || id.GetUint() > max_onu_id) refuse_member(name, "ids from 0 to 127");
            set[id.GetUint() / 32] |= uint32_t{1} << (id.GetUint() % 32);
        }
        std::memcpy(bytes.data(), set.data(), sizeof set);
    } else {
        refuse_member(name, "no value: its bytes stand below \"bytes\"");
    }
}

const Field &named_field(const Reading &reading, const std::string &name)
{
    const Field *field = reading.layout ? catalogue::find_field(reading.layout->fields, name) : nullptr;
    if (!field) field = catalogue::find_field(reading.record->fields, name);
    if (!field) throw UsageError(name + ": not a field of " + std::string(reading.record->name));
    return *field;
}

void read_run(const std::string &name, const JsonValue &value, Bytes &bytes)
{
    const uint32_t offset = parse_number(name, name);
    const Bytes run = parse_block(name, "hex:" + read_text(name, value), false);
    if (offset > bytes.size() || run.size() > bytes.size() - offset)
        refuse_member(name, "bytes inside the record's length");
    std::ranges::copy(run, bytes.begin() + offset);
}

void expect_object(const std::string &name, const JsonValue &value)
{
    if (!value.IsObject()) refuse_member(name, "an object");
}

// What an object says of a record, until it is known which record it is. The document must outlive it.
struct Written {
    uint32_t length = 0;
    const JsonValue *fields = nullptr, *bytes = nullptr; // null: not given

    // Adds what is known of it to the members of an object.
    Members members()
    {
        return {{"length", [this](const auto &name, const JsonValue &value) { length = read_number(name, value); }},
                {"fields",
                 [this](const auto &name, const JsonValue &value) {
                     expect_object(name, value);
                     fields = &value;
                 }},
                {"bytes", [this](const auto &name, const JsonValue &value) {
                     expect_object(name, value);
                     bytes = &value;
                 }}};
    }

    Bytes read(const catalogue::Record &record, const RecordRole &role) const
    {
        if (length > IPC_MAX_LENGTH) refuse_member("length", "a number from 0 to 8192");
        Bytes made(length);
        const Reading reading = read_record(record, role, made);
        if (states_command(role) && record.command && length >= record.command->offset + record.command->size)
            store(role.command->code, std::span(made).subspan(record.command->offset, record.command->size));
        if (fields)
            for (const auto &[key, value] : fields->GetObject()) {
                const std::string name = text_of(key);
                const Field &field = named_field(reading, name);
                if (field.offset + field.size > made.size()) refuse_member(name, "a field inside the record's length");
                read_field(name, value, field, std::span(made).subspan(field.offset, field.size));
            }
        if (bytes)
            for (const auto &[key, value] : bytes->GetObject())
                read_run(text_of(key), value, made);
        return made;
    }
};

catalogue::Call call_named(const std::string &name, const std::string &text)
{
    if (const std::optional<catalogue::Call> call = catalogue::find_call(text)) return *call;
    refuse_member(name, "set, get, dgram-set or dgram-get");
}

RecordRole role_of(const RecordCall &asked)
{
    RecordRole role{asked.channel, asked.call};
    role.command = command_of(*asked.record, role, asked.request);
    return role;
}

RecordRole answer_role_of(const RecordCall &asked)
{
    RecordRole role = role_of(asked);
    role.is_answer = true;
    return role;
}

} // namespace

std::string to_json(const RecordCall &asked)
{
    const RecordRole role = role_of(asked);
    JsonText json(JsonLayout::one_line);
    json->StartObject();
    json.member("channel", asked.channel->name);
    json.member("call", catalogue::to_text(asked.call));
    if (asked.record != asked.channel->record) json.member("record", asked.record->name);
    if (role.command) json.member("command", role.command->name);
    if (has_answer(asked.call)) json.member("preset", asked.preset);
    write_bytes(json, *asked.record, role, asked.request);
    json->EndObject();
    return json.written();
}

RecordCall record_call_from_json(std::string_view text)
{
    return record_call_from_json(read_document(text, "exchange"));
}

RecordCall record_call_from_json(const JsonValue &object)
{
    RecordCall asked;
    Written written;
    RecordRole role{};
    std::string command;
    Members members = written.members();
    members["channel"] = [&](const auto &name, const JsonValue &value) {
        asked.channel = &parse_channel(name, read_text(name, value));
    };
    members["call"] = [&](const auto &name, const JsonValue &value) {
        asked.call = call_named(name, read_text(name, value));
    };
    members["record"] = [&](const auto &name, const JsonValue &value) {
        asked.record = catalogue::find_record(read_text(name, value));
        if (!asked.record) throw UsageError(name + ": there is no '" + read_text(name, value) + "'");
    };
    members["command"] = [&](const auto &name, const JsonValue &value) {
        command = read_text(name, value);
        role.command = catalogue::find_command(command);
        if (!role.command) throw UsageError(name + ": there is no '" + command + "'");
    };
    members["preset"] = [&](const auto &name, const JsonValue &value) { asked.preset = read_number(name, value); };
    read_object(object, "exchange", members, {"channel", "call", "length"});
    if (!asked.record) asked.record = asked.channel->record;
    if (role.command && role.command->channel != asked.channel)
        throw UsageError("command: " + command + " is no command of " + std::string(asked.channel->name));
    if (asked.preset > IPC_MAX_LENGTH) refuse_member("preset", "a number from 0 to 8192");
    role.channel = asked.channel;
    role.call = asked.call;
    asked.request = written.read(*asked.record, role);
    return asked;
}

std::string to_json(const RecordOutcome &outcome, const RecordCall &asked)
{
    const RecordRole role = answer_role_of(asked);
    JsonText json(JsonLayout::one_line);
    json->StartObject();
    json.ipc_result(outcome.ipc_result);
    json.member("status", outcome.status);
    write_bytes(json, answer_record(*asked.record, role.command), role, outcome.response);
    if (!outcome.result.empty()) {
        json.member("result_key", outcome.result_key);
        json.key("result");
        json.document(outcome.result);
    }
    if (!outcome.file.name.empty()) {
        json.member("file_name", outcome.file.name);
        json.member("file", text::to_hex(outcome.file.content));
    }
    json->EndObject();
    return json.written();
}

RecordOutcome record_outcome_from_json(std::string_view text, const RecordCall &asked)
{
    RecordOutcome outcome;
    Written written;
    const rapidjson::Document document = read_document(text, "outcome");
    Members members = written.members();
    members["ipc_result"] = [&](const auto &name, const JsonValue &value) {
        outcome.ipc_result = read_signed(name, value);
    };
    members["status"] = [&](const auto &name, const JsonValue &value) { outcome.status = read_number(name, value); };
    members["result_key"] = [&](const auto &name, const JsonValue &value) {
        outcome.result_key = read_number(name, value);
    };
    members["result"] = [&](const auto &, const JsonValue &value) {
        if (value.IsString()) outcome.result = text_of(value);
    };
    members["file_name"] = [&](const auto &name, const JsonValue &value) {
        outcome.file.name = read_text(name, value);
    };
    members["file"] = [&](const auto &name, const JsonValue &value) {
        outcome.file.content = parse_block(name, "hex:" + read_text(name, value), false);
    };
    read_object(document, "outcome", members, {"ipc_result", "status", "length"});
    // The numbers of a result stay as they were written.
    for (Member &member : members_of(text))
        if (member.name == "result" && outcome.result.empty()) outcome.result = std::move(member.value);
    const RecordRole role = answer_role_of(asked);
    outcome.response = written.read(answer_record(*asked.record, role.command), role);
    return outcome;
}

} // namespace call
