/* The board's utility library: logging, blocks of memory, result files. */
#ifndef BOARD_UTIL_H
#define BOARD_UTIL_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define BOARD_PRINTF_LIKE __attribute__((format(printf, 3, 4)))
#else
#define BOARD_PRINTF_LIKE
#endif

/* Log a line: the caller's function name, its source line, a printf format and its arguments. */
void userlog_err(const char *function, int line, const char *format, ...) BOARD_PRINTF_LIKE;
void userlog_debug(const char *function, int line, const char *format, ...) BOARD_PRINTF_LIKE;

/* A block of `size` bytes, released with pfree; null when there is no memory. pfree of null is allowed. */
void *pmalloc(uint32_t size);
void pfree(void *block);

/* Reads exactly `count` bytes of `file` into `destination`: 0 on success, else a non-zero value. */
int get_from_file(const char *file, uint32_t count, void *destination);
/* Removes `file`: 0 on success, else a non-zero value. */
int delete_file(const char *file);

#ifdef __cplusplus
}
#endif

#endif
