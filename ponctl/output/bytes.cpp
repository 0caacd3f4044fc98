#include "output/bytes.h"

#include <algorithm>

#include "call/codec/decode.h"
#include "output/exit_code.h"
#include "output/output.h"
#include "output/table.h"

namespace ponctl
{
namespace
{

using catalogue::Field;

constexpr size_t bytes_a_line = 16;

void print_line(std::FILE *stream, size_t offset, std::span<const uint8_t> bytes, std::string_view name)
{
    std::string hex, characters;
    for (const uint8_t byte : bytes) {
        hex.append(text::to_hex({&byte, 1})).push_back(' ');
        characters.push_back(byte >= ' ' && byte < 0x7f ? static_cast<char>(byte) : '.');
    }
    hex.resize(3 * bytes_a_line, ' ');
    if (!name.empty()) {
        characters.resize(bytes_a_line, ' ');
        characters.append("  ").append(name);
    }
    std::fprintf(stream, "%5zu  %s %s\n", offset, hex.c_str(), characters.c_str());
}

// Prints the bytes of one field, or the bytes between two fields.
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

} // namespace

void print_fields(const Output &output, const Reading &reading)
{
    Table table({{"FIELD"}, {"VALUE", Table::Fit::wrap}});
    for (const DecodedField &decoded : decode(reading))
        if (is_counted(reading, *decoded.field) && (reading.is_block() || !decoded.zero))
            table.add({std::string(decoded.field->name), decoded.text});
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

    // Each field is printed up to the start of the next one, because the layout's fields lie inside an opaque field of
    // the record.
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

} // namespace ponctl
