/* This file describes records of what went over the IPC, and how to read them. Every client process that runs with
 * BOARD_IPC_TRACE=FILE writes them, and so do services that record what they answer (board/service.h). The contents of
 * files that an answer names are not in them.
 *
 * The file has a board_trace_file, followed by records. A record is a board_trace_record, followed by the bytes of
 * the request, the response and the result, with nothing between them and nothing behind them. Several processes may
 * write one file, because each record is appended in one piece. All words are in the byte order that the file names.
 *
 * Beside exchanges a service may record notes of its own. The bytes of a note stand where those of a request would. */
#ifndef BOARD_TRACE_H
#define BOARD_TRACE_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define BOARD_TRACE_MAGIC "BIPCTRC" /* with its NUL */
#define BOARD_TRACE_VERSION 1
#define BOARD_TRACE_LITTLE_ENDIAN 1
#define BOARD_TRACE_BIG_ENDIAN 2
#define BOARD_TRACE_TIME_OF_DAY 0  /* times are since 1970 */
#define BOARD_TRACE_SERVICE_TIME 1 /* times are those that the service states, since its own time began */
#define BOARD_TRACE_FILE 0xffffffffu
#define BOARD_TRACE_NOTE 4 /* stands for the call of a record that is a note and no exchange */

typedef struct board_trace_file {
    char magic[8];
    uint8_t version;
    uint8_t byte_order;
    uint8_t clock;
    uint8_t zero[5];
} board_trace_file;

typedef struct board_trace_record {
    uint64_t time; /* when the exchange ended: nanoseconds by the clock that the file names */
    uint32_t size; /* of the record, including the bytes that follow */
    uint32_t pid;  /* the client's process; 0 when it is not stated */
    uint32_t tid;  /* the client's thread; 0 when a service recorded */
    uint32_t call; /* a board_call, or BOARD_TRACE_NOTE */
    uint32_t module;
    uint32_t msg_type;  /* the channel */
    uint32_t allowed;   /* response bytes that the caller allowed; 0: no bound stated */
    int32_t ipc_result; /* what the call returned; if it is not 0, all that follows except the request is 0 */
    uint32_t status;    /* the service's status word */
    uint32_t request_length;
    uint32_t response_length; /* as the service sent it, whatever the caller allowed */
    uint32_t result_key;      /* 0 when no result database came; BOARD_TRACE_FILE when a result came as a file */
    uint32_t result_length;   /* of the result, as the service states it */
    uint32_t result_carried;  /* bytes of the result in the record; 0 when it was too long to travel */
} board_trace_record;

/* The functions below read a trace. They give everything in the reader's byte order, except the bytes of requests and
 * responses. */
typedef struct board_trace board_trace;

typedef struct board_trace_entry {
    board_trace_record record;
    const uint8_t *request; /* the bytes live until the next call on the trace */
    const uint8_t *response;
    const char *result;
} board_trace_entry;

/* Opens a trace file. Returns null on failure; then `*error` points to a static text that says why. `error` may be
 * null. */
board_trace *board_trace_open(const char *file, const char **error);
/* Returns the byte order of the bytes of requests and responses: BOARD_TRACE_LITTLE_ENDIAN or
 * BOARD_TRACE_BIG_ENDIAN. */
int board_trace_byte_order(const board_trace *trace);
/* Returns the clock of the times: BOARD_TRACE_TIME_OF_DAY or BOARD_TRACE_SERVICE_TIME. */
int board_trace_clock(const board_trace *trace);
/* Reads the next record. Returns 1, or 0 at the end of the file, or -1 when the file is damaged here or cannot be
 * read. */
int board_trace_next(board_trace *trace, board_trace_entry *entry);
/* Closes the file. Null is allowed. */
void board_trace_close(board_trace *trace);

#ifdef __cplusplus
}
#endif

#endif
