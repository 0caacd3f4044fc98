/* This is the board's utility library. It has logging, blocks of memory, and result files. */
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

/* These functions log a line. They take the caller's function name, its source line, a printf format and its
   arguments. */
void userlog_err(const char *function, int line, const char *format, ...) BOARD_PRINTF_LIKE;
void userlog_debug(const char *function, int line, const char *format, ...) BOARD_PRINTF_LIKE;

/* pmalloc returns a block of `size` bytes, which the caller releases with pfree, or null when there is no memory. pfree
   of null is allowed. */
void *pmalloc(uint32_t size);
void pfree(void *block);

/* These functions are for the files that a service names in its answers. The host edition knows what came in memory
   with the calling thread's last exchange, and regular files in the folder of sockets that belong to the folder's
   owner, when nobody else may write there. It neither reads nor removes any other file.

   Reads exactly `count` bytes of `file` into `destination`. Returns 0 on success, otherwise a non-zero value. */
int get_from_file(const char *file, uint32_t count, void *destination);
/* Removes `file`. Returns 0 on success, otherwise a non-zero value. */
int delete_file(const char *file);

#ifdef __cplusplus
}
#endif

#endif
