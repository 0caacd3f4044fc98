#include "frame/request.h"

namespace frame
{

void clear(void *record, uint32_t length)
{
    __builtin_memset(record, 0, length);
}

void put_text(void *record, uint32_t length, uint32_t offset, const char *text)
{
    if (!text) return;
    char *to = static_cast<char *>(record) + offset;
    char *const end = static_cast<char *>(record) + length;
    while (to != end && (*to++ = *text++)) {
    }
}

void put_block(void *record, uint32_t length, uint32_t offset, const void *block, uint32_t count)
{
    if (!block) return;
    if (count > length - offset) count = length - offset;
    __builtin_memcpy(static_cast<char *>(record) + offset, block, count);
}

} // namespace frame
