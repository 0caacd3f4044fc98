// Words of a command line that are values of an operation's arguments.
#include <string>
#include <vector>

#include "call/arguments.h"
#include "call/codec/errors.h"
#include "input.h"
#include "target.h"
#include "text/words.h"

// An input is the number of the operation, and words behind NULs.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::Input input(data, size);
    const std::span operations = catalogue::operations();
    const catalogue::Operation &operation = operations[input.take<uint16_t>() % operations.size()];
    const std::span<const uint8_t> rest = input.take_bytes(size);
    const std::string text(rest.begin(), rest.end());
    call::Allowed nothing_else{};
    nothing_else.files = false;
    try {
        const call::Arguments arguments(operation, text::split(text, '\0'), nothing_else);
        fuzz::require(arguments.values().size() == operation.arguments.size(), "each argument has a value");
    } catch (const call::UsageError &) {
        return 0;
    }
    return 0;
}
