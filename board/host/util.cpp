// This file has the utilities of board/util.h except logging.
#include "board/util.h"

#include <cstdlib>

#include "not_cancelled.h"
#include "result_file.h"

void *pmalloc(uint32_t size)
{
    return std::malloc(size);
}

void pfree(void *block)
{
    std::free(block);
}

int get_from_file(const char *file, uint32_t count, void *destination)
{
    const board::NotCancelled whole;
    try {
        const board::ResultFile found(file);
        return found ? found.read(static_cast<char *>(destination), count) : -1;
    } catch (...) {
        return -2;
    }
}

int delete_file(const char *file)
{
    const board::NotCancelled whole;
    try {
        return board::remove_result_file(file);
    } catch (...) {
        return -1;
    }
}
