// The arguments of an operation, from texts by their names.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "call/codec/decode.h"
#include "invoke.h"

struct db_handle;

namespace call
{

// Values ready for catalogue::invoke, with the memory that they point to: what was given, room for what the operation
// delivers, and the databases that it delivered.
class Arguments
{
public:
    // Reads what was given by names. Refused with a UsageError that names the argument and says what was expected:
    // unknown, repeated and missing arguments, wrong values, and what is not allowed.
    Arguments(const catalogue::Operation &operation, std::span<const Assignment> assignments, Allowed allowed);
    // The same from words of the form name=value.
    Arguments(const catalogue::Operation &operation, std::span<const std::string> words, Allowed allowed = {});
    ~Arguments();
    Arguments(const Arguments &) = delete;
    Arguments &operator=(const Arguments &) = delete;

    const catalogue::Operation &operation() const { return called; }
    std::span<const catalogue::Value> values() const { return passed; }

    // The command that the operation sends with its call; null where the catalogue does not know it.
    const catalogue::Command *command() const;

    // Once the operation was called: puts what came out widened where it stands in the answer.
    void settle();

    // What an argument's memory holds: a record, a response, a text that was delivered, a database (null where none was
    // delivered). A block or word of the answer stands where it stands in the answer's record, at the memory's end.
    std::span<const uint8_t> bytes(size_t index) const { return memory[index].bytes; }
    db_handle *database(size_t index) const { return memory[index].database; }

private:
    struct Memory {
        Bytes bytes;
        uint16_t number = 0;   // of a byte that comes out widened
        uint32_t wanted = 0;   // of a length that is read through a pointer
        void *block = nullptr; // of the board's memory, as it was delivered
        db_handle *database = nullptr;
    };
    struct Given; // the assignments, sorted out by argument

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

// Whether the tool fills an argument itself and a command line need not, or cannot, name it.
bool is_output(const catalogue::Argument &argument);
// Whether the operation answers into the argument that holds its request, or a part of that.
bool is_in_place(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Whether the argument always has as many bytes, which are a part of the request.
bool is_sized_block(const catalogue::Argument &argument);
// Whether a command line may set fields of the argument.
bool takes_fields(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Whether the operation does not use the argument at all.
bool is_ignored(const catalogue::Argument &argument);
// Whether the argument is the command code, which may be given by name.
bool is_command(const catalogue::Operation &operation, const catalogue::Argument &argument);
// The fields that may be set in an argument. Of a record: where the operation picks some for its request, these; else
// all but the command code where the operation writes its own. Of a block: those of the command's layout inside it.
std::vector<const catalogue::Field *> fields_of(const catalogue::Operation &operation,
                                                const catalogue::Argument &argument);
// Whether the argument is a number of the caller's, the length of a block, or a number that comes out of an answer.
bool is_number(const catalogue::Argument &argument);
bool is_length(const catalogue::Argument &argument);
bool is_number_out(const catalogue::Argument &argument);
// Whether a command line may leave the argument out.
bool may_be_omitted(const catalogue::Argument &argument);
// How a command line names the argument and what it takes: "pon_port=NUMBER". Empty for outputs.
std::string form_of(const catalogue::Operation &operation, const catalogue::Argument &argument);
// The argument's type in one word: number, byte, command, mac, text, block, length, record, response, database.
std::string_view type_name(const catalogue::Operation &operation, const catalogue::Argument &argument);

} // namespace call
