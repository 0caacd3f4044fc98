/* generated from the catalogue by catalog/generate.py; change the catalogue, not this file. */
/* clang-format off */
#ifndef RECORD_LENGTH_H
#define RECORD_LENGTH_H

#include <stdint.h>

/* The length of the records of a channel; 0 where the channel is not known. */
static inline uint32_t record_length(uint32_t module, uint32_t msg_type)
{
    if (module != 6) return 0;
    switch (msg_type) {
    case 232:
        return 944;
    case 235:
        return 4120;
    case 236:
    case 239:
    case 240:
        return 1148;
    case 237:
    case 238:
    case 241:
    case 243:
        return 1888;
    case 242:
    case 244:
        return 1044;
    default:
        return 0;
    }
}

#endif
