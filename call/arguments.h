// This file makes the arguments of an operation from texts that are given by name.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "call/codec/decode.h"
#include "invoke.h"

struct db_handle;

namespace call
{

// Arguments are values that are ready for catalogue::invoke, with the memory that they point to: the given bytes, room
// for what the operation delivers, and the databases that it delivered.
class Arguments
{
public:
    // Reads the assignments by their names. Throws a UsageError that names the argument and says what was expected when
    // an argument is unknown, repeated or missing, or when a value is wrong or not allowed.
    Arguments(const catalogue::Operation &operation, std::span<const Assignment> assignments, Allowed allowed);
    // As above, from words of the form name=value.
    Arguments(const catalogue::Operation &operation, std::span<const std::string> words, Allowed allowed = {});
    ~Arguments();
    Arguments(const Arguments &) = delete;
    Arguments &operator=(const Arguments &) = delete;

    const catalogue::Operation &operation() const { return called; }
    std::span<const catalogue::Value> values() const { return passed; }

    // Returns the command that the operation sends with its call, or null when the catalogue does not know it.
    const catalogue::Command *command() const;

    // Moves a byte that was delivered as a 16-bit number to its offset in the answer. It is called after the operation.
    void settle();

    // These return what an argument's memory holds: a record, a response, a text that was delivered, or a database
    // (null when none was delivered). A block or word of the answer has the same offset as in the answer's record, and
    // ends the memory.
    std::span<const uint8_t> bytes(size_t index) const { return memory[index].bytes; }
    db_handle *database(size_t index) const { return memory[index].database; }

private:
    struct Memory {
        Bytes bytes;
        uint16_t number = 0;   // of a byte that is delivered as a 16-bit number
        uint32_t wanted = 0;   // of a length that is read through a pointer
        void *block = nullptr; // of the board's memory, as it was delivered
        db_handle *database = nullptr;
    };
    struct Given; // the assignments, sorted by argument

    void set(size_t index, const Given &given, Allowed allowed);
    void set_record(size_t index, const Given &given, Allowed allowed);
    void set_room(size_t index, uint32_t size);
    void set_payload(size_t index, const Assignment &assignment, Allowed allowed);
    void set_length(size_t index, const Given &given);
    uint32_t delivered_length() const;
    void set_wanted(size_t index, const Given &given);
    void set_block(size_t index, const Assignment &assignment, Allowed allowed);
    void set_sized_block(size_t index, const Given &given, Allowed allowed);
    void set_fields_of(size_t index, const Given &given, Allowed allowed);

    const catalogue::Operation &called;
    std::vector<Memory> memory;
    std::vector<catalogue::Value> passed;
};

// Returns whether the argument is filled by the call itself, so that a command line need not, or cannot, name it.
bool is_output(const catalogue::Argument &argument);
// Returns whether the operation answers into the argument that holds its request, or a part of the request.
bool is_in_place(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Returns whether the argument always has the same number of bytes, which are a part of the request.
bool is_sized_block(const catalogue::Argument &argument);
// Returns whether a command line may set fields of the argument.
bool takes_fields(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Returns whether the operation does not use the argument at all.
bool is_ignored(const catalogue::Argument &argument);
// Returns whether the argument is the command code, which may be given by name.
bool is_command(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Returns the field of the request's layout that names the numbers or the bits of the argument, which may be given by
// these names. Returns null when the catalogue has no names for them.
const catalogue::Field *named_values_of(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Returns the fields that may be set in an argument. For a record these are the fields that the operation picks for its
// request, if it picks some. Otherwise they are all fields, without the command code when the operation writes its own.
// For a block they are the fields of the command's layout inside the block.
std::vector<const catalogue::Field *> fields_of(const catalogue::Operation &operation,
                                                const catalogue::Argument &argument);
// These return whether the argument is a number that the caller gives, the length of a block, or a number that an
// answer delivers.
bool is_number(const catalogue::Argument &argument);
bool is_length(const catalogue::Argument &argument);
bool is_number_out(const catalogue::Argument &argument);
// Returns whether a command line may leave the argument out.
bool may_be_omitted(const catalogue::Argument &argument);
// Returns how a command line names the argument and what it takes: "pon_port=NUMBER". The text is empty for outputs.
std::string form_of(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Returns the argument's type in one word: number, byte, command, mac, text, block, length, record, response, database.
std::string_view type_name(const catalogue::Operation &operation, const catalogue::Argument &argument);

} // namespace call
