// Answers of a service to the operations of the library. All that an operation writes has the exact size.
#include <vector>

#include "bsp_testing/board.h"
#include "input.h"
#include "subject.h"
#include "target.h"

// An input is the number of the operation, the result of the exchange, the status, and the bytes of the answer.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::Input input(data, size);
    const std::span operations = catalogue::operations();
    const catalogue::Operation &operation = operations[input.take<uint16_t>() % operations.size()];
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
