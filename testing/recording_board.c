#include "bsp_testing/board.h"

#include "generated/record_length.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* A reset clears these counts and scripts. */
static struct {
    uint32_t recorded;
    uint32_t exchanges, logs, dbs, utils;
    uint32_t answers, answers_used;
    rb_answer answer[RB_KEPT];
    uint32_t handles, handles_used;
    db_handle *handle[RB_KEPT];
    uint32_t pmalloc_failures;
    int file_result;
    const void *file_bytes;
    uint32_t file_length;
} board;

/* The counts above count these records. A record is cleared when it is taken. */
static struct {
    rb_exchange exchange[RB_KEPT];
    rb_log log[RB_KEPT];
    rb_db db[RB_KEPT];
    rb_util util[RB_KEPT];
} kept;

/* Result databases without a script differ only by their address. */
static char tokens[RB_KEPT];

void rb_reset(void)
{
    memset(&board, 0, sizeof board);
}

/* Returns a new record of one kind: the next one that is kept, or a spare one that is only counted. */
#define NEW_RECORD(kind, count)                                                                                        \
    static rb_##kind *new_##kind(void)                                                                                 \
    {                                                                                                                  \
        static rb_##kind spare;                                                                                        \
        rb_##kind *record = board.count < RB_KEPT ? &kept.kind[board.count] : &spare;                                  \
        board.count++;                                                                                                 \
        memset(record, 0, sizeof *record);                                                                             \
        record->at = board.recorded++;                                                                                 \
        return record;                                                                                                 \
    }                                                                                                                  \
                                                                                                                       \
    uint32_t rb_##count(void)                                                                                          \
    {                                                                                                                  \
        return board.count;                                                                                            \
    }                                                                                                                  \
                                                                                                                       \
    const rb_##kind *rb_##kind##_at(uint32_t index)                                                                    \
    {                                                                                                                  \
        return index < board.count && index < RB_KEPT ? &kept.kind[index] : NULL;                                      \
    }

NEW_RECORD(exchange, exchanges)
NEW_RECORD(log, logs)
NEW_RECORD(db, dbs)
NEW_RECORD(util, utils)

uint32_t rb_recorded(void)
{
    return board.recorded;
}

static void keep_text(char to[RB_TEXT_LENGTH], const char *text)
{
    snprintf(to, RB_TEXT_LENGTH, "%s", text);
}

static uint32_t smaller(uint32_t a, uint32_t b)
{
    return a < b ? a : b;
}

/* --- Scripts --- */

int rb_script_answer(const rb_answer *answer)
{
    if (board.answers == RB_KEPT) return -1;
    board.answer[board.answers++] = *answer;
    return 0;
}

int rb_script_db(db_handle *handle)
{
    if (board.handles == RB_KEPT) return -1;
    board.handle[board.handles++] = handle;
    return 0;
}

void rb_fail_pmalloc(uint32_t count)
{
    board.pmalloc_failures = count;
}

void rb_script_file(int result, const void *bytes, uint32_t length)
{
    board.file_result = result;
    board.file_bytes = bytes;
    board.file_length = length;
}

/* --- The IPC library --- */

static int32_t exchange(rb_call call, uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                        void *response, uint32_t *response_length, uint32_t *status)
{
    rb_exchange *record = new_exchange();
    record->call = call;
    record->module = module;
    record->msg_type = msg_type;
    record->request = (void *)request;
    record->request_length = request_length;
    memcpy(record->sent, request, smaller(request_length, sizeof record->sent));
    record->status_before = *status;
    if (response_length) record->preset = *response_length;
    if (response) {
        record->response = response;
        record->room =
            smaller(record->preset ? record->preset : record_length(module, msg_type), sizeof record->before);
        memcpy(record->before, response, record->room);
    }

    static const rb_answer success;
    const rb_answer *answer = board.answers_used < board.answers ? &board.answer[board.answers_used++] : &success;
    if (answer->during) answer->during(record, answer->context);
    if (response) {
        *response_length = smaller(answer->length, record->room);
        if (*response_length) memcpy(response, answer->bytes, *response_length);
    }
    if (!answer->status_not_written) *status = answer->status;
    return answer->result;
}

int32_t ipc_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, uint32_t *status)
{
    return exchange(RB_SET, module, msg_type, request, request_length, NULL, NULL, status);
}

int32_t ipc_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, void *response,
                     uint32_t *response_length, uint32_t *status)
{
    return exchange(RB_GET, module, msg_type, request, request_length, response, response_length, status);
}

int32_t ipc_dgram_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           void *response, uint32_t *response_length, uint32_t *status)
{
    return exchange(RB_DGRAM_GET, module, msg_type, request, request_length, response, response_length, status);
}

int32_t ipc_dgram_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           uint32_t *status)
{
    return exchange(RB_DGRAM_SET, module, msg_type, request, request_length, NULL, NULL, status);
}

const char *ipc_strerror(int32_t value)
{
    return value == IPC_OK ? "no failure" : "a failure that the test scripted";
}

/* --- The data-store library --- */

static db_handle *hand_out(rb_db *record)
{
    record->handle = board.handles_used < board.handles ? board.handle[board.handles_used++]
                                                        : (db_handle *)&tokens[board.dbs % RB_KEPT];
    return record->handle;
}

db_handle *db_from_shmem(uint32_t key, uint32_t bound)
{
    rb_db *record = new_db();
    record->call = RB_FROM_SHMEM;
    record->key = key;
    record->bound = bound;
    return hand_out(record);
}

db_handle *db_from_string(const char *text)
{
    rb_db *record = new_db();
    record->call = RB_FROM_STRING;
    record->text_length = (uint32_t)strlen(text);
    keep_text(record->text, text);
    return hand_out(record);
}

db_handle *db_create_fromfile(const char *file)
{
    rb_db *record = new_db();
    record->call = RB_FROM_FILE;
    record->text_length = (uint32_t)strlen(file);
    keep_text(record->text, file);
    return hand_out(record);
}

void db_free(db_handle *db)
{
    rb_db *record = new_db();
    record->call = RB_DB_FREE;
    record->handle = db;
}

/* --- The utility library --- */

static void keep_log(rb_level level, const char *function, int line, const char *format, va_list arguments)
{
    rb_log *record = new_log();
    record->level = level;
    keep_text(record->function, function);
    record->line = line;
    keep_text(record->format, format);
    vsnprintf(record->text, sizeof record->text, format, arguments);
}

void userlog_err(const char *function, int line, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    keep_log(RB_ERR, function, line, format, arguments);
    va_end(arguments);
}

void userlog_debug(const char *function, int line, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    keep_log(RB_DEBUG, function, line, format, arguments);
    va_end(arguments);
}

void *pmalloc(uint32_t size)
{
    rb_util *record = new_util();
    record->call = RB_PMALLOC;
    record->count = size;
    if (board.pmalloc_failures)
        board.pmalloc_failures--;
    else
        record->block = malloc(size);
    return record->block;
}

void pfree(void *block)
{
    rb_util *record = new_util();
    record->call = RB_PFREE;
    record->block = block;
    free(block);
}

int get_from_file(const char *file, uint32_t count, void *destination)
{
    rb_util *record = new_util();
    record->call = RB_GET_FROM_FILE;
    keep_text(record->file, file);
    record->count = count;
    record->block = destination;
    if (board.file_result) return board.file_result;
    const uint32_t scripted = smaller(count, board.file_length);
    memset(destination, 0, count);
    if (scripted) memcpy(destination, board.file_bytes, scripted);
    return 0;
}

int delete_file(const char *file)
{
    rb_util *record = new_util();
    record->call = RB_DELETE_FILE;
    keep_text(record->file, file);
    return 0;
}
