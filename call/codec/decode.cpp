#include "call/codec/decode.h"

#include <algorithm>
#include <cstring>

#include "call/codec/errors.h"
#include "call/codec/meaning.h"
#include "call/codec/numbers.h"
#include "text/words.h"

namespace call
{
namespace
{

using catalogue::Field;
using catalogue::FieldType;

std::vector<std::string_view> field_names(const Reading &reading)
{
    std::vector<std::string_view> names;
    for (const Field &field : reading.record->fields)
        names.push_back(field.name);
    if (reading.layout)
        for (const Field &field : reading.layout->fields)
            names.push_back(field.name);
    return names;
}

const Field &named_field(const Reading &reading, const std::string &prefix, const std::string &name)
{
    const Field *field = reading.layout ? catalogue::find_field(reading.layout->fields, name) : nullptr;
    if (!field) field = catalogue::find_field(reading.record->fields, name);
    if (field) return *field;
    const auto names = field_names(reading);
    throw UsageError(prefix + name + ": not a field of " + std::string(reading.record->name) +
                     text::suggestion(name, names) + " (known are " + text::join(names) + ")");
}

// Copies a value to its field and beyond, as far as the record reaches. Returns the offset behind the last byte.
size_t put(const Field &field, const void *value, size_t length, Bytes &bytes)
{
    length = std::min(length, bytes.size() - field.offset);
    std::memcpy(bytes.data() + field.offset, value, length);
    return field.offset + length;
}

size_t put_block(const std::string &name, const Field &field, const Bytes &block, Allowed allowed, Bytes &bytes)
{
    if (!allowed.long_values) check_length(name, block.size(), field, false);
    return put(field, block.data(), block.size(), bytes);
}

// Returns whether a value is given as a block, whatever it means.
bool is_block(std::string_view value)
{
    return value.starts_with("hex:") || value.starts_with("text:") || value.starts_with('@');
}

size_t set_field(const catalogue::Record &record, const RecordRole &role, const Field &field, const std::string &name,
                 const std::string &value, Allowed allowed, Bytes &bytes)
{
    if (&field == record.command) {
        const uint32_t code = parse_command(name, value, *role.channel);
        return put(field, &code, sizeof code, bytes);
    }
    switch (field.type) {
    case FieldType::u8:
    case FieldType::u16:
    case FieldType::s16:
    case FieldType::u32:
    case FieldType::s32:
    case FieldType::u64: {
        const uint64_t number = parse_meaning(name, value, field);
        return put(field, &number, field.size, bytes);
    }
    case FieldType::mac:
        return put(field, parse_mac(name, value).data(), 6, bytes);
    case FieldType::idset:
        return put(field, parse_idset(name, value).data(), sizeof(IdSet), bytes);
    case FieldType::text:
        if (!allowed.long_values) check_length(name, value.size(), field, true);
        return put(field, value.c_str(), value.size() + 1, bytes);
    case FieldType::ipv4:
    case FieldType::oui:
    case FieldType::date:
    case FieldType::list:
    case FieldType::ports:
        return put(field, parse_composed(name, value, field).data(), field.size, bytes);
    case FieldType::bytes: {
        const auto notation = is_block(value) ? std::nullopt : notation_of(read_record(record, role, bytes), field);
        const Bytes block =
            notation ? parse_decided(name, value, *notation, field) : parse_block(name, value, allowed.files);
        return put_block(name, field, block, allowed, bytes);
    }
    }
    return 0;
}

bool all_zero(std::span<const uint8_t> bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](uint8_t byte) { return byte == 0; });
}

// Passes each field that is shown with its bytes.
template <class Visit>
void for_each_shown_field(const Reading &reading, Visit visit)
{
    // The bytes of the layout's fields are not shown a second time as a part of the record's opaque field.
    Bytes rest(reading.bytes.begin(), reading.bytes.end());
    if (reading.layout)
        for (const Field &field : reading.layout->fields)
            std::fill_n(rest.begin() + std::min<size_t>(field.offset, rest.size()), field_bytes(field, rest).size(),
                        uint8_t{0});

    const bool named = reading.is_block() && reading.layout;
    for (const Field &field : reading.record->fields) {
        const auto own = field_bytes(field, rest);
        if (reading.reaches(field) && !(named && all_zero(own))) visit(field, own);
    }
    if (!reading.layout) return;
    for (const Field &field : reading.layout->fields)
        if (reading.reaches(field)) visit(field, field_bytes(field, reading.bytes));
}

// Returns bytes in the notation in which a block is given. Bytes that look like a text are shown as one.
std::string block_text(std::span<const uint8_t> bytes)
{
    constexpr size_t shortest_text = 4;
    bytes = without_trailing_zeros(bytes);
    const bool is_text = bytes.size() >= shortest_text && std::all_of(bytes.begin(), bytes.end(), [](uint8_t byte) {
                             return byte >= ' ' && byte < 0x7f;
                         });
    return is_text ? "text:" + std::string(bytes.begin(), bytes.end()) : "hex:" + text::to_hex(bytes);
}

std::string value_text(const Reading &reading, const Field &field, std::span<const uint8_t> bytes)
{
    std::string text = meaning_text(field, bytes);
    if (&field == reading.record->command) {
        const catalogue::Command *command =
            catalogue::find_command(reading.role.channel->type, load_word(bytes.data()), reading.role.call);
        if (command) text.append(" ").append(command->name);
    }
    return text;
}

std::string text_of(const Reading &reading, const Field &field, std::span<const uint8_t> bytes)
{
    switch (field.type) {
    case FieldType::u8:
    case FieldType::u16:
    case FieldType::s16:
    case FieldType::u32:
    case FieldType::s32:
    case FieldType::u64:
        return value_text(reading, field, bytes);
    case FieldType::mac:
        return text::mac_text(bytes.first<6>());
    case FieldType::idset: {
        IdSet set;
        std::memcpy(set.data(), bytes.data(), sizeof set);
        return format_idset(set);
    }
    case FieldType::text:
        return std::string(field_text(bytes));
    case FieldType::bytes: {
        const auto notation = notation_of(reading, field);
        return notation ? decided_text(*notation, bytes) : block_text(bytes);
    }
    case FieldType::ipv4:
    case FieldType::oui:
    case FieldType::date:
    case FieldType::list:
    case FieldType::ports:
        return composed_text(field, bytes);
    }
    return {};
}

// Returns whether the bytes hold the whole of a field, or enough of it to be shown.
bool reached(const Field &field, std::span<const uint8_t> bytes)
{
    const bool divisible = field.type == FieldType::text || field.type == FieldType::bytes;
    return bytes.size() >= field.offset + (divisible ? 1 : field.size);
}

// Returns the field of this name or, of repeated fields, the one at the same place. Returns null when the bytes do not
// reach it.
const Field *field_beside(const Reading &reading, const Field &field, std::string_view name)
{
    const std::string at_place = std::string(name) + "_" + std::to_string(field.place);
    const Field *found = catalogue::find_field(reading.layout->fields, at_place);
    if (!found) found = catalogue::find_field(reading.layout->fields, name);
    return found && reading.reaches(*found) ? found : nullptr;
}

} // namespace

uint32_t load_word(const uint8_t *bytes)
{
    uint32_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

uint32_t end_of(const catalogue::Layout &layout)
{
    uint32_t end = 0;
    for (const Field &field : layout.fields)
        end = std::max(end, field.offset + field.size);
    return end;
}

const catalogue::Command *command_of(const catalogue::Record &record, const RecordRole &role,
                                     std::span<const uint8_t> bytes)
{
    if (role.command) return role.command;
    if (!record.command || !reached(*record.command, bytes)) return nullptr;
    return catalogue::find_command(role.channel->type, load_word(bytes.data() + record.command->offset), role.call);
}

const catalogue::Record &answer_record(const catalogue::Record &record, const catalogue::Command *command)
{
    if (command)
        for (const catalogue::Operation &operation : catalogue::operations())
            if (operation.command == command && operation.response) return *operation.response;
    return record;
}

Reading read_record(const catalogue::Record &record, const RecordRole &role, std::span<const uint8_t> bytes)
{
    const catalogue::Command *command = command_of(record, role, bytes);
    const catalogue::Layout *layout = nullptr;
    if (command && role.is_answer) layout = catalogue::find_layout(*command, true);
    if (command && !layout) layout = catalogue::find_layout(*command);
    if (layout && layout->record != &record) layout = nullptr;
    return {&record, layout, role, bytes};
}

void swap_words(std::span<const Field> fields, Bytes &bytes)
{
    for (const Field &field : fields) {
        if (!reached(field, bytes) || (field.type != FieldType::idset && !is_number(field.type))) continue;
        const uint32_t word = field.type == FieldType::idset ? sizeof(uint32_t) : field.size;
        for (uint32_t at = field.offset; at < field.offset + field.size; at += word)
            std::reverse(bytes.begin() + at, bytes.begin() + at + word);
    }
}

void swap_words(const catalogue::Record &record, const RecordRole &role, Bytes &bytes)
{
    swap_words(record.fields, bytes);
    const catalogue::Layout *layout = read_record(record, role, bytes).layout;
    if (!layout) return;
    // A field of the layout that is also a word of the record is already swapped.
    std::vector<Field> opaque;
    for (const Field &field : layout->fields)
        if (std::ranges::none_of(record.fields, [&field](const Field &own) {
                return own.offset == field.offset && is_number(own.type);
            }))
            opaque.push_back(field);
    swap_words(opaque, bytes);
}

size_t set_fields(const catalogue::Record &record, const RecordRole &role, std::span<const Assignment> assignments,
                  Allowed allowed, const std::string &prefix, Bytes &bytes)
{
    // The command is set first, because it says which layout's fields are known.
    for (const Assignment &assignment : assignments)
        if (record.command && assignment.name == record.command->name)
            set_field(record, role, *record.command, prefix + assignment.name, assignment.value, false, bytes);

    const Reading reading = read_record(record, role, bytes);
    std::vector<const Field *> done;
    size_t end = 0;
    // What another field decides about comes behind it.
    for (const bool decided : {false, true})
        for (const Assignment &assignment : assignments) {
            const Field &field = named_field(reading, prefix, assignment.name);
            if (field.decider.empty() == decided) continue;
            if (std::find(done.begin(), done.end(), &field) != done.end())
                throw UsageError(prefix + assignment.name + ": given twice");
            done.push_back(&field);
            end = std::max(end,
                           set_field(record, role, field, prefix + assignment.name, assignment.value, allowed, bytes));
        }
    return end;
}

uint32_t longest(const Field &field, bool text)
{
    return text ? field.size - 1 : field.size;
}

void check_length(std::string_view name, size_t length, const Field &field, bool text)
{
    const uint32_t limit = longest(field, text);
    if (length > limit)
        throw UsageError(std::string(name) + ": " + std::to_string(length) + " bytes are more than the " +
                         std::to_string(limit) + " that " + std::string(field.name) +
                         " holds; --allow-long lets them run on into the fields behind it");
}

std::span<const uint8_t> field_bytes(const Field &field, std::span<const uint8_t> bytes)
{
    if (field.offset >= bytes.size()) return {};
    return bytes.subspan(field.offset, std::min<size_t>(field.size, bytes.size() - field.offset));
}

std::string_view field_text(std::span<const uint8_t> bytes)
{
    const auto end = std::find(bytes.begin(), bytes.end(), uint8_t{0});
    return {reinterpret_cast<const char *>(bytes.data()), static_cast<size_t>(end - bytes.begin())};
}

std::span<const uint8_t> without_trailing_zeros(std::span<const uint8_t> bytes)
{
    while (!bytes.empty() && bytes.back() == 0)
        bytes = bytes.first(bytes.size() - 1);
    return bytes;
}

std::vector<const Field *> shown_fields(const Reading &reading)
{
    std::vector<const Field *> shown;
    for_each_shown_field(reading, [&](const Field &field, std::span<const uint8_t>) { shown.push_back(&field); });
    return shown;
}

std::vector<DecodedField> decode(const Reading &reading)
{
    std::vector<DecodedField> decoded;
    for_each_shown_field(reading, [&](const Field &field, std::span<const uint8_t> own) {
        decoded.push_back({&field, text_of(reading, field, own), all_zero(own)});
    });
    return decoded;
}

std::optional<catalogue::Notation> notation_of(const Reading &reading, const Field &field)
{
    if (field.decider.empty() || !reading.layout || !reading.reaches(field) ||
        field.offset + field.size > reading.bytes.size())
        return std::nullopt;
    const Field *decider = field_beside(reading, field, field.decider);
    if (!decider) return std::nullopt;
    const auto value = name_of(*decider, field_bytes(*decider, reading.bytes));
    const auto form = std::ranges::find(field.forms, value.value_or(std::string_view()), &catalogue::Form::value);
    return form == field.forms.end() ? catalogue::Notation::number : form->notation;
}

Bytes without_secrets(const catalogue::Record &record, const RecordRole &role, std::span<const uint8_t> bytes)
{
    constexpr std::string_view hidden = "***";
    Bytes shown(bytes.begin(), bytes.end());
    const Reading reading = read_record(record, role, bytes);
    for (const Field &field : reading.layout ? reading.layout->fields : std::span<const Field>()) {
        const std::span<const uint8_t> own = field_bytes(field, bytes);
        if (!field.secret || all_zero(own)) continue;
        const auto start = shown.begin() + field.offset;
        std::fill_n(start, own.size(), uint8_t{0});
        std::copy_n(hidden.begin(), std::min(hidden.size(), own.size()), start);
    }
    return shown;
}

bool is_counted(const Reading &reading, const Field &field)
{
    if (!reading.layout) return true;
    // Of a repeated field its place counts, and of a part its number.
    const auto reaches = [&](std::string_view counter, uint32_t number) {
        const Field *known = counter.empty() ? nullptr : field_beside(reading, field, counter);
        return !known || number_of(*known, field_bytes(*known, reading.bytes)) >= number;
    };
    return reaches(field.counter, field.place) && reaches(field.whole, field.part);
}

std::string text_of(const Reading &reading, const Field &field)
{
    return text_of(reading, field, field_bytes(field, reading.bytes));
}

bool Reading::reaches(const Field &field) const
{
    return field.offset >= start && reached(field, bytes);
}

} // namespace call
