/* These are the board's functions that the library calls. They do nothing, so only the operation's own cost is left. */
#include "board/datastore.h"
#include "board/ipc.h"
#include "board/util.h"

int32_t ipc_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, uint32_t *status)
{
    (void)module, (void)msg_type, (void)request, (void)request_length, (void)status;
    return 0;
}

int32_t ipc_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, void *response,
                     uint32_t *response_length, uint32_t *status)
{
    (void)module, (void)msg_type, (void)request, (void)request_length, (void)response, (void)response_length;
    (void)status;
    return 0;
}

int32_t ipc_dgram_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           void *response, uint32_t *response_length, uint32_t *status)
{
    return ipc_get_exec(module, msg_type, request, request_length, response, response_length, status);
}

db_handle *db_from_string(const char *text)
{
    (void)text;
    return 0;
}

db_handle *db_from_shmem(uint32_t key, uint32_t bound)
{
    (void)key, (void)bound;
    return 0;
}

void userlog_err(const char *function, int line, const char *format, ...)
{
    (void)function, (void)line, (void)format;
}

void userlog_debug(const char *function, int line, const char *format, ...)
{
    (void)function, (void)line, (void)format;
}

int32_t ipc_dgram_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           uint32_t *status)
{
    return ipc_set_exec(module, msg_type, request, request_length, status);
}

db_handle *db_create_fromfile(const char *file)
{
    (void)file;
    return 0;
}

int delete_file(const char *file)
{
    (void)file;
    return 0;
}

int get_from_file(const char *file, uint32_t count, void *destination)
{
    (void)file, (void)count, (void)destination;
    return 1;
}

void *pmalloc(uint32_t size)
{
    (void)size;
    return 0;
}

void pfree(void *block)
{
    (void)block;
}
