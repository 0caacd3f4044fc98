#include "frame/request.h"

namespace frame
{

void put_text(char *to, uint32_t room, const char *text)
{
    // Each round copies four bytes, so that the room is checked once for four bytes.
    for (; room >= 4; to += 4, text += 4, room -= 4)
        if (!(to[0] = text[0]) || !(to[1] = text[1]) || !(to[2] = text[2]) || !(to[3] = text[3])) return;
    while (room-- && (*to++ = *text++)) {
    }
}

} // namespace frame
