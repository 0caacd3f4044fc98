// These functions read records as the catalogue describes them. They set a field from a word, and decode the fields of
// a record that was sent or received.
#pragma once

#include <optional>

#include "call/codec/values.h"

namespace call
{

// A RecordRole says which exchange a record belongs to, and on which side of the exchange it is.
struct RecordRole {
    const catalogue::Channel *channel;
    catalogue::Call call;
    const catalogue::Command *command = nullptr; // null: the record carries the code of its command
    bool is_answer = false;
};

// A Reading has a record's bytes, as many as there are, together with what says how they are read.
struct Reading {
    const catalogue::Record *record;
    const catalogue::Layout *layout; // the layout of the opaque part, or null when the record's command has none
    RecordRole role;
    std::span<const uint8_t> bytes;
    size_t start = 0; // where a block starts when only this block of the record is there; the bytes before it do not
                      // count

    bool is_block() const { return start > 0; }
    // Returns whether the bytes hold the whole of a field, or enough of it to be shown.
    bool reaches(const catalogue::Field &field) const;
};

// Reads a record by the layout of its command. An answer is read by the layout of the answer, or like a request when
// there is none.
Reading read_record(const catalogue::Record &record, const RecordRole &role, std::span<const uint8_t> bytes);

// Returns the command of a record. Returns null when its role states none, and the record carries no known one.
const catalogue::Command *command_of(const catalogue::Record &record, const RecordRole &role,
                                     std::span<const uint8_t> bytes);

// Returns the record that describes the answer to a command whose request is `record`.
const catalogue::Record &answer_record(const catalogue::Record &record, const catalogue::Command *command);

// Swaps the bytes of the words of a record that was written in the other byte order. The record's command says which
// words the opaque part holds.
void swap_words(const catalogue::Record &record, const RecordRole &role, Bytes &bytes);
// Swaps the bytes of the numbers in these fields, each in its own width.
void swap_words(std::span<const catalogue::Field> fields, Bytes &bytes);

// Returns the offset behind all fields of a layout.
uint32_t end_of(const catalogue::Layout &layout);

uint32_t load_word(const uint8_t *bytes);

// Sets fields of a request from assignments FIELD=value. The request must have the record's size. The fields of the
// layout of its command are known, too. `prefix` stands before the field's name in errors.
//
// Throws a UsageError for an unknown or repeated field, for a wrong value, and for a text or block that is longer than
// its field, unless `allowed` lets it continue into the fields behind it. Returns the offset behind the last byte that
// was set, or 0 when none was set.
size_t set_fields(const catalogue::Record &record, const RecordRole &role, std::span<const Assignment> assignments,
                  Allowed allowed, const std::string &prefix, Bytes &bytes);

// Returns the length of the longest text or block that a field takes. The NUL of a text does not count.
uint32_t longest(const catalogue::Field &field, bool text);
// Refuses a value that is longer than its field.
void check_length(std::string_view name, size_t length, const catalogue::Field &field, bool text);

struct DecodedField {
    const catalogue::Field *field;
    std::string text; // for people
    bool zero;        // every byte of the field that no other field names is zero
};

// Returns the fields in order of offset. The layout's fields come behind the record's. Fields that the bytes do not
// reach are left out. For a block with a layout, zero bytes that have no name are left out, too.
std::vector<const catalogue::Field *> shown_fields(const Reading &reading);
// Returns the same with what they hold.
std::vector<DecodedField> decode(const Reading &reading);

// Returns whether a field counts: of a repeated one there may be fewer than there is room for.
bool is_counted(const Reading &reading, const catalogue::Field &field);

// Returns the notation of a field's bytes, as another field decides it. Returns nothing when none decides.
std::optional<catalogue::Notation> notation_of(const Reading &reading, const catalogue::Field &field);

// Returns the bytes of a record with "***" in place of each secret in it.
Bytes without_secrets(const catalogue::Record &record, const RecordRole &role, std::span<const uint8_t> bytes);

// Returns the value of one field for people.
std::string text_of(const Reading &reading, const catalogue::Field &field);

// Returns the bytes of a field that are there.
std::span<const uint8_t> field_bytes(const catalogue::Field &field, std::span<const uint8_t> bytes);
// Returns the text of a field, up to its NUL or its end.
std::string_view field_text(std::span<const uint8_t> bytes);
// Returns the bytes without the zeros at their end.
std::span<const uint8_t> without_trailing_zeros(std::span<const uint8_t> bytes);

} // namespace call
