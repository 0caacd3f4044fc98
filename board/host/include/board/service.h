/* The server half of the host edition: serves one IPC module on Unix sockets.
 *
 * A service listens on two sockets in one folder, MODULE.seq (SOCK_SEQPACKET, the set and get calls) and MODULE.dgram
 * (SOCK_DGRAM, the datagram calls), MODULE being the module's number. The folder is BOARD_IPC_DIR; without it
 * /run/board-ipc for root, and for others XDG_RUNTIME_DIR/board-ipc, or /tmp/board-ipc-UID as the last resort. A
 * service makes the folder where it is missing. The folder's and the sockets' owner and mode decide who may connect. */
#ifndef BOARD_SERVICE_H
#define BOARD_SERVICE_H

#include <stdint.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The folder of sockets that the calling thread uses. The text is never to be freed, and lives as long as the process,
 * as those of the functions below do. */
const char *board_ipc_directory(void);

/* Makes all threads use another folder from their next call on; null: that of the environment again. A thread's kept
 * connections end: the calling thread's at once, those of others before their next call; a call that is under way ends
 * where it began. A result database that has come, but is not opened yet, is gone with its connection. The text is
 * copied. Any thread may call it at any time. Without memory for it the folder stays, and a log line says so. */
void board_ipc_use_directory(const char *directory);

/* The same for the calling thread alone, whatever all threads use; null: again what they use. Returns the folder that
 * was set by this function before, null for none. */
const char *board_ipc_use_thread_directory(const char *directory);

/* Bounds each call of the calling thread by so many milliseconds from now on, in place of BOARD_IPC_TIMEOUT_MS; 0: by
 * that again. Returns the bound that was set by this function before, 0 for none. */
uint32_t board_ipc_use_thread_timeout(uint32_t milliseconds);

typedef enum board_call { BOARD_CALL_SET, BOARD_CALL_GET, BOARD_CALL_DGRAM_SET, BOARD_CALL_DGRAM_GET } board_call;

/* One request, as the handler sees it; nothing in it lives longer than the handler's call. */
typedef struct board_request {
    board_call call;
    uint32_t msg_type; /* the channel */
    const void *data;  /* the record, aligned for 32-bit words */
    uint32_t length;   /* its length in bytes */
    uint32_t allowed;  /* response bytes that the caller allows; 0: no bound stated */
    pid_t pid;         /* the peer's credentials, from the kernel */
    uid_t uid;
    gid_t gid;
} board_request;

/* The answer under construction. What a handler does not state is: IPC result 0, status 0, no bytes, no result. */
typedef struct board_answer board_answer;

/* The status word that the caller receives. */
void board_answer_status(board_answer *answer, uint32_t status);
/* Makes the exchange itself fail: the caller's IPC call returns `result`, which must not be 0. */
void board_answer_fail(board_answer *answer, int32_t result);
/* The response bytes, copied at once; at most IPC_MAX_LENGTH. 0, or -1 when it is longer. */
int board_answer_data(board_answer *answer, const void *data, uint32_t length);
/* A result database under `key`, JSON text of `length` bytes, copied at once. One a request; the last one holds.
 * 0; -1 when it is longer than BOARD_RESULT_MAX: then the caller gets no result, and its log says why. */
int board_answer_result(board_answer *answer, uint32_t key, const char *json, uint32_t length);

#define BOARD_RESULT_MAX 1048576u

/* For services that misbehave on purpose, so that their clients can be tested. What goes wrong with an answer's bytes
 * or its result needs no more than other bytes; these say how the answer goes out.
 *
 * It goes out so many milliseconds later, at most BOARD_DELAY_MAX, and not at all once its client has hung up or the
 * service is stopped. Meanwhile the requests of other clients are handled. Of answers to datagrams, up to
 * BOARD_DELAYED_MAX can be late at a time; more go out at once, and the log says so. */
void board_answer_delay(board_answer *answer, uint32_t milliseconds);
/* It does not go out at all. */
void board_answer_drop(board_answer *answer);
/* It goes out so many times more, at most BOARD_REPEAT_MAX. */
void board_answer_repeat(board_answer *answer, uint32_t times);

#define BOARD_DELAY_MAX 60000u
#define BOARD_DELAYED_MAX 64u
#define BOARD_REPEAT_MAX 8u

/* Handles one request. Calls are made one at a time, never two at once, whatever the number of clients, from threads
 * with a stack of 1 MiB and all signals blocked. */
typedef void board_handler(void *context, const board_request *request, board_answer *answer);

typedef struct board_service_config {
    uint32_t module;       /* the module number served */
    const char *directory; /* folder of the sockets; null: board_ipc_directory() */
    uint32_t socket_mode;  /* permission bits of the sockets, 0: 0660 */
    board_handler *handler;
    /* May be null. Asked before the handler, in the same manner: null lets the request pass; a text refuses it (the
     * caller gets IPC_ERR_REFUSED) and goes to the service's log. */
    const char *(*authorize)(void *context, const board_request *request);
    void *context; /* passed to both */
    /* The file to which each request is appended with what its client gets, in the order of the handler's calls;
     * board/trace.h reads it. Null: nothing is recorded. What is no request of this service never is. */
    const char *record;
} board_service_config;

typedef struct board_service board_service;

/* Opens the sockets and starts to serve. Null on failure, with one log line that says why (another live service on
 * the same folder and module, or a file that cannot be recorded in, among the reasons; what a dead one left behind is
 * replaced). */
board_service *board_service_start(const board_service_config *config);
/* Stops serving: no handler runs any more when it returns; removes the sockets and releases everything. Not to be
 * called from a handler. Null is allowed. */
void board_service_stop(board_service *service);

#ifdef __cplusplus
}
#endif

#endif
