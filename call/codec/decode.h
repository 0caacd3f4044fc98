// Records as the catalogue reads them: setting a field from a word, and the fields of a record that was sent or
// received.
#pragma once

#include <optional>

#include "call/codec/values.h"

namespace call
{

// Which exchange a record belongs to, and on which side of it.
struct Place {
    const catalogue::Channel *channel;
    catalogue::Call call;
    const catalogue::Command *command = nullptr; // null: the one whose code the record carries
    bool is_answer = false;
};

// A record's bytes, as many as there are, with what says how they are read.
struct Reading {
    const catalogue::Record *record;
    const catalogue::Layout *layout; // of the opaque part, where the record's command has one; else null
    Place place;
    std::span<const uint8_t> bytes;
    size_t start = 0; // where a block starts that is all there is of the record; the bytes before it do not count

    bool is_block() const { return start > 0; }
    // Whether it holds the whole of a field, or enough of it to be shown.
    bool reaches(const catalogue::Field &field) const;
};

// Reads a record by the layout of its command: an answer by that of the answer, or where there is none, as a request.
Reading read_record(const catalogue::Record &record, const Place &place, std::span<const uint8_t> bytes);

// The command of a record; null where its place states none, and it carries none or an unknown one.
const catalogue::Command *command_of(const catalogue::Record &record, const Place &place,
                                     std::span<const uint8_t> bytes);

// The record that the answer to a command is, where the request is `record`.
const catalogue::Record &answer_record(const catalogue::Record &record, const catalogue::Command *command);

// Turns the words of a record that was written in the other byte order. Its command says which words the opaque part
// holds.
void swap_words(const catalogue::Record &record, const Place &place, Bytes &bytes);
// Turns the numbers of these fields, each as wide as it is.
void swap_words(std::span<const catalogue::Field> fields, Bytes &bytes);

// The offset behind all fields of a layout.
uint32_t end_of(const catalogue::Layout &layout);

uint32_t load_word(const uint8_t *bytes);

// Sets fields of a request, which must have the record's size, from assignments FIELD=value. The fields of the layout
// that belongs to its command are known too. `prefix` stands before the field's name in errors.
//
// Refused with a UsageError: unknown and repeated fields, wrong values, and a text or block that is longer than its
// field, unless `allowed` lets it run on into the fields behind it. Returns the offset behind the last byte that was
// set, 0 where none was.
size_t set_fields(const catalogue::Record &record, const Place &place, std::span<const Assignment> assignments,
                  Allowed allowed, const std::string &prefix, Bytes &bytes);

// The longest text or block of a field; of a text, without its NUL.
uint32_t longest(const catalogue::Field &field, bool text);
// Refuses a value that is longer than its field.
void check_length(std::string_view name, size_t length, const catalogue::Field &field, bool text);

struct DecodedField {
    const catalogue::Field *field;
    std::string text; // for people
    bool zero;        // every byte of the field that no other field names is zero
};

// The fields in order of offset, the layout's behind the record's. Fields that the bytes do not reach are left out, and
// of a block with a layout so are bytes without a name that are zero.
std::vector<DecodedField> decode(const Reading &reading);

// The value of one field for people.
std::string text_of(const Reading &reading, const catalogue::Field &field);

// The bytes of a field, as far as they go.
std::span<const uint8_t> field_bytes(const catalogue::Field &field, std::span<const uint8_t> bytes);
// The text of a field, up to its NUL or its end.
std::string_view field_text(std::span<const uint8_t> bytes);
// Bytes without the zeros at their end.
std::span<const uint8_t> without_trailing_zeros(std::span<const uint8_t> bytes);

} // namespace call
