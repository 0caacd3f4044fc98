// A Subject is an operation of the catalogue with arguments to call it with, and with what must be sent for them.
#pragma once

#include <string>
#include <string_view>

#include "bsp_testing/board.h"
#include "invoke.h"
#include "memory.h"

namespace contract
{

using catalogue::Argument;
using catalogue::ArgumentType;
using catalogue::Operation;

// Returns whether the argument is a number that the caller gives.
bool is_number(const Argument &argument);
// Returns whether the argument is a pointer.
bool is_pointer(const Argument &argument);
// Returns whether the operation writes through the argument.
bool is_written(const Operation &operation, const Argument &argument);
// Returns whether what the service answered is stored there.
bool is_output(const Operation &operation, const Argument &argument);
// Returns whether bytes of an answer are stored there unchanged.
bool is_data_out(const Argument &argument);
// Returns how many lines the operation logs when all goes well.
uint32_t lines_logged(const Operation &operation);
// Returns how many files it removes then.
uint32_t files_removed(const Operation &operation);

class Subject
{
public:
    // Gives every argument a value unlike all others, with no byte like another and no null pointer. Resets the
    // recording board.
    explicit Subject(const Operation &operation);

    void set_number(const Argument &argument, uint32_t number);
    void set_null(const Argument &argument);
    void set_text(const Argument &argument, std::string_view text);
    // Sets the block, and the length that belongs to it.
    void set_block(const Argument &argument, Bytes content);
    // As above, for a block that an answer delivers. As many bytes of it are wanted.
    void set_room(const Argument &argument, uint32_t size);

    // Calls the operation on a stack full of arbitrary bytes.
    uint32_t call();

    // Returns the request for the lent arguments, according to the catalogue: what copies without a bound would have
    // put into the record.
    Bytes expected_request() const;
    const Operation &operation() const { return subject; }
    Memory &memory(const Argument &argument) { return memories[index_of(argument)]; }
    void *pointer(const Argument &argument) const { return values[index_of(argument)].pointer; }
    uint32_t number(const Argument &argument) const { return values[index_of(argument)].number; }
    // Returns null when the operation has no argument of the type.
    const Argument *argument_of(ArgumentType type) const;

    // Returns whether everything that an answer is stored in is unchanged.
    bool outputs_untouched() const;
    // Returns whether everything that the operation only reads is unchanged, and also everything around what it writes.
    bool surroundings_untouched() const;

private:
    size_t index_of(const Argument &argument) const;
    uint32_t payload_length() const;
    void set_length_of(const Argument &block, uint32_t length);
    void lend(const Argument &argument, Memory memory);
    void put(Bytes &wire, const Argument &argument) const;

    const Operation &subject;
    std::vector<catalogue::Value> values;
    std::vector<Memory> memories;
};

// Returns what the board recorded of the only exchange. Fails the test when there was none or more than one.
const rb_exchange &only_exchange();
// Returns the bytes of that exchange's request.
Bytes sent();

// Scripts the next exchange, one at a time: what the IPC call returns, the status word, and the bytes that it writes.
void script_exchange(int32_t result, uint32_t status, Bytes bytes);

} // namespace contract
