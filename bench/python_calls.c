/* The C side of the comparison with Python: each function makes a call so many times, and returns how many nanoseconds
 * all of them took. */
#include <stddef.h>
#include <stdint.h>
#include <time.h>

#include "bsp_pon.h"

static uint64_t nanoseconds(void)
{
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (uint64_t)now.tv_sec * 1000000000u + (uint64_t)now.tv_nsec;
}

#define TIME(count, call)                                                                                              \
    const uint64_t start = nanoseconds();                                                                              \
    for (uint32_t each = 0; each < (count); ++each)                                                                    \
        call;                                                                                                          \
    return nanoseconds() - start;

static const uint8_t mac[6] = {2, 0, 0x5e, 0x10, 0, 1};

uint64_t time_numbers(uint32_t count){TIME(count, bsp_pon_no_bind_onu_spec_id(1, 5))}

uint64_t time_texts(uint32_t count){TIME(count, bsp_pon_bind_onu_spec_id(1, 5, mac, "customer 1207", NULL, 0, NULL))}

uint64_t time_block(uint32_t count)
{
    uint8_t answer[54];
    TIME(count, bsp_pon_onu_ctc_get_sn(1, 5, answer))
}

uint64_t time_record(uint32_t count)
{
    bsp_pon_msg record = {0};
    TIME(count, bsp_ponmsg_cfg_set(&record))
}
