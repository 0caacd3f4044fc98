// Answers of a service to the operations of the library. All that an operation writes has the exact size.
#include <algorithm>
#include <random>
#include <vector>

#include "bsp_testing/board.h"
#include "fields.h"
#include "input.h"
#include "subject.h"
#include "target.h"

namespace
{

constexpr size_t bytes_before_answer = sizeof(uint16_t) + sizeof(int8_t) + sizeof(uint32_t) + sizeof(uint8_t);

const catalogue::Operation &operation_of(uint16_t number)
{
    const std::span operations = catalogue::operations();
    return operations[number % operations.size()];
}

} // namespace

// An input is the number of the operation, the result of the exchange, the status, what becomes of a file, and the
// bytes of the answer.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::Input input(data, size);
    const catalogue::Operation &operation = operation_of(input.take<uint16_t>());
    rb_answer answer{};
    answer.result = input.take<int8_t>() < 0 ? -1 : 0;
    answer.status = input.take<uint32_t>();
    const uint8_t file = input.take<uint8_t>();
    const std::span<const uint8_t> bytes = input.take_bytes(size);
    answer.bytes = bytes.data();
    answer.length = static_cast<uint32_t>(bytes.size());

    contract::Subject subject(operation);
    // A length of a file that comes from the answer can ask for all memory.
    rb_fail_pmalloc(1);
    rb_script_file(file % 2 ? -1 : 0, bytes.data(), answer.length);
    rb_script_answer(&answer);
    subject.call();
    fuzz::require(subject.surroundings_untouched(), "nothing is written but what the operation delivers");
    return 0;
}

// Half of the inputs get an answer of the size of their operation's record, or another value in one of its fields.
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t room, unsigned seed)
{
    std::minstd_rand chance(seed);
    const catalogue::Operation &operation = operation_of(fuzz::Input(data, size).take<uint16_t>());
    const catalogue::Record *record = operation.response ? operation.response : operation.record;
    const size_t whole = bytes_before_answer + record->size;
    if (whole > room || chance() % 2) return LLVMFuzzerMutate(data, size, room);
    if (size < whole) {
        std::fill(data + size, data + whole, uint8_t{0});
        size = whole;
    }
    const std::span<uint8_t> answer(data + bytes_before_answer, size - bytes_before_answer);
    if (chance() % 2)
        fuzz::put_one_number(chance, record->fields, answer);
    else
        fuzz::put_numbers(chance, record->fields, answer);
    return size;
}
