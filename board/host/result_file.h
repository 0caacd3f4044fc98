// A ResultFile is what the answer of a service names as a file.
//
// The name comes from the service, and a hostile one would have other files read and removed. So a name is either that
// of what came with the last exchange in memory, or that of a file in the folder of sockets itself: a regular file of
// the folder's owner, in a folder in which only the owner may write.
#pragma once

#include <cstdint>

#include "descriptor.h"

namespace board
{

class ResultFile
{
public:
    explicit ResultFile(const char *name);

    explicit operator bool() const { return !why; }
    // Returns why there is no such file that may be read.
    const char *problem() const { return why; }
    uint32_t length() const { return size; }
    // Reads the first bytes. Returns 0, or -2 when it cannot be read, or -3 when there are not so many bytes.
    int read(char *to, uint32_t count) const;

private:
    Descriptor file; // none: it came in memory
    uint32_t size = 0;
    const char *why = nullptr;
};

// Removes it. Returns 0, or -1 when there is no such file that may be read.
int remove_result_file(const char *name);

} // namespace board
