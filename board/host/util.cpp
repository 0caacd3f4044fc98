// This file has the utilities of board/util.h except logging.
#include "board/util.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

#include "descriptor.h"

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
    const board::Descriptor opened(open(file, O_RDONLY | O_CLOEXEC));
    if (!opened) return -1;
    char *to = static_cast<char *>(destination);
    for (uint32_t done = 0; done < count;) {
        const ssize_t got = read(opened.get(), to + done, count - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -2;
        if (got == 0) return -3;
        done += static_cast<uint32_t>(got);
    }
    return 0;
}

int delete_file(const char *file)
{
    return unlink(file);
}
