// Files of recorded exchanges.
#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "board/trace.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const int file = memfd_create("recording", MFD_CLOEXEC);
    fuzz::require(file >= 0 && write(file, data, size) == static_cast<ssize_t>(size), "there is room for a file");
    const char *error = nullptr;
    if (board_trace *trace = board_trace_open(("/proc/self/fd/" + std::to_string(file)).c_str(), &error)) {
        board_trace_entry entry;
        unsigned sum = 0;
        while (board_trace_next(trace, &entry) == 1) {
            const board_trace_record &record = entry.record;
            fuzz::require(record.request_length + record.response_length + record.result_carried <= size,
                          "nothing is longer than its file");
            for (uint32_t index = 0; index < record.request_length; ++index)
                sum += entry.request[index];
            for (uint32_t index = 0; index < record.response_length; ++index)
                sum += entry.response[index];
            for (uint32_t index = 0; index < record.result_carried; ++index)
                sum += static_cast<unsigned char>(entry.result[index]);
        }
        volatile unsigned read = sum;
        (void)read;
        board_trace_close(trace);
    } else {
        fuzz::require(error, "what is refused is refused for a reason");
    }
    close(file);
    return 0;
}
