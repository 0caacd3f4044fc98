// An operation of the catalogue with arguments to call it by, and what must go over the wire for them.
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

// True: the argument is a number of the caller's.
bool is_number(const Argument &argument);
// True: the argument is a pointer.
bool is_pointer(const Argument &argument);
// True: the operation writes through the argument.
bool is_written(const Operation &operation, const Argument &argument);
// True: what the service answered goes there.
bool is_output(const Operation &operation, const Argument &argument);
// True: bytes of an answer, as they stand there, go there.
bool is_data_out(const Argument &argument);
// The lines that the operation logs when all goes well.
uint32_t lines_logged(const Operation &operation);
// The files that it removes then.
uint32_t files_removed(const Operation &operation);

class Subject
{
public:
    // Every argument gets a value unlike all others, with no byte like another, no pointer is null, and the recording
    // board starts anew.
    explicit Subject(const Operation &operation);

    void set_number(const Argument &argument, uint32_t number);
    void set_null(const Argument &argument);
    void set_text(const Argument &argument, std::string_view text);
    // Also sets the length that belongs to it.
    void set_block(const Argument &argument, Bytes content);
    // The same for a block that comes out of an answer: as many bytes of it are wanted.
    void set_room(const Argument &argument, uint32_t size);

    // Calls the operation on a stack full of rubbish.
    uint32_t call();

    // The request for the arguments as lent, by the catalogue: what copies without a bound would have put into the
    // record.
    Bytes expected_request() const;
    const Operation &operation() const { return subject; }
    Memory &memory(const Argument &argument) { return memories[index_of(argument)]; }
    void *pointer(const Argument &argument) const { return values[index_of(argument)].pointer; }
    uint32_t number(const Argument &argument) const { return values[index_of(argument)].number; }
    // Null: the operation has no argument of the type.
    const Argument *argument_of(ArgumentType type) const;

    // True: nothing that an answer goes to has changed.
    bool outputs_untouched() const;
    // True: nothing that the operation only reads has changed, nor anything around what it writes.
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

// What the board recorded of the only exchange. Fails the test where there was none or more than one.
const rb_exchange &only_exchange();
// The bytes of that exchange's request.
Bytes sent();

// Scripts the next exchange, one at a time: what the IPC call returns, the status word and the bytes that it writes.
void script_exchange(int32_t result, uint32_t status, Bytes bytes);

} // namespace contract
