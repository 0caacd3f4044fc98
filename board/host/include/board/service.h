/* This is the server half of the host edition. It serves one IPC module on Unix sockets.
 *
 * A service listens on two sockets in one folder: MODULE.seq (SOCK_SEQPACKET) for the set and get calls, and
 * MODULE.dgram (SOCK_DGRAM) for the datagram calls. MODULE is the module's number. The folder is BOARD_IPC_DIR.
 * Without that variable it is /run/board-ipc for root. For other users it is XDG_RUNTIME_DIR/board-ipc, or
 * /tmp/board-ipc-UID as the last resort. A service makes the folder when it does not exist. The owner and mode of
 * the folder and the sockets decide who may connect. A service does not use a folder of another user than its own or
 * root, nor one in which others may replace its sockets.
 *
 * Sockets that a service manager holds for the process (LISTEN_FDS and LISTEN_PID, from descriptor 3 on) are used where
 * their type and name are those of a service's. They are the service manager's: their owner and mode stay as they are,
 * and they are there when the service has stopped, so that a request waits for the next one.
 *
 * A service has 256 connections at most. 16 of them are for its own user and for root; of the others each user has 64
 * at most. A client beyond that gets IPC_ERR_SERVICE. */
#ifndef BOARD_SERVICE_H
#define BOARD_SERVICE_H

#include <stdint.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Returns the folder of sockets that the calling thread uses. The caller must never free the text. The text lives as
 * long as the process, like the texts of the functions below. */
const char *board_ipc_directory(void);

/* Makes all threads use another folder from their next call on. Null means the folder of the environment again. The
 * connections that a thread keeps are closed: those of the calling thread at once, those of other threads before their
 * next call. A call that is in progress ends in the folder where it began. A result database that has arrived but is
 * not opened yet is lost with its connection. The text is copied. Any thread may call this function at any time. If
 * there is no memory for the text, the folder does not change, and a log line says so. */
void board_ipc_use_directory(const char *directory);

/* As above, but for the calling thread alone, whatever all threads use. Null means that the thread again uses what all
 * threads use. Returns the folder that this function set before, or null for none. */
const char *board_ipc_use_thread_directory(const char *directory);

/* Returns the first word of BOARD_LOG that has no meaning, or null when there is none. The words are off, err, debug
 * and syslog. Programs call it once, before they have threads, and refuse to go on; the log itself passes over such a
 * word. */
const char *board_log_unknown_word(void);

/* Sets what is logged where BOARD_LOG is not set, as BOARD_LOG would say it. Words without a meaning are passed over. A
 * library that tells its users of failures in another way calls it with "off". */
void board_log_default(const char *words);

/* Returns what the calling thread's last exchange returned, as ipc_set_exec does, and forgets it. Returns IPC_OK when
 * there was no exchange since the last call of this function. By it a caller of the library tells an exchange that
 * failed from a status word of the service that looks the same. */
int32_t board_ipc_take_thread_result(void);

/* Bounds each later call of the calling thread by so many milliseconds, in place of BOARD_IPC_TIMEOUT_MS. 0 means that
 * BOARD_IPC_TIMEOUT_MS counts again. Returns the bound that this function set before, or 0 for none. */
uint32_t board_ipc_use_thread_timeout(uint32_t milliseconds);

typedef enum board_call { BOARD_CALL_SET, BOARD_CALL_GET, BOARD_CALL_DGRAM_SET, BOARD_CALL_DGRAM_GET } board_call;

/* A board_request is one request as the handler sees it. Nothing in it lives longer than the call of the handler. */
typedef struct board_request {
    board_call call;
    uint32_t msg_type; /* the channel */
    const void *data;  /* the record, aligned for 32-bit words */
    uint32_t length;   /* its length in bytes */
    uint32_t allowed;  /* response bytes that the caller allows; 0: no bound stated */
    pid_t pid;         /* the peer's credentials, from the kernel */
    uid_t uid;
    gid_t gid;
    const gid_t *groups; /* the peer's other groups, from the kernel; null when it does not say: it does so of the peer
                          * of a connection, and not of the sender of a datagram */
    uint32_t group_count;
} board_request;

/* A board_answer is the answer under construction. It starts with IPC result 0, status 0, no response bytes and no
 * result. */
typedef struct board_answer board_answer;

/* Sets the status word that the caller receives. */
void board_answer_status(board_answer *answer, uint32_t status);
/* Makes the exchange itself fail: the caller's IPC call returns `result`, which must not be 0. */
void board_answer_fail(board_answer *answer, int32_t result);
/* Sets the response bytes, at most IPC_MAX_LENGTH, and copies them at once. Returns 0, or -1 when there are too many
 * bytes. */
int board_answer_data(board_answer *answer, const void *data, uint32_t length);
/* Sets the result database under `key`: a JSON text of `length` bytes, which is copied at once. A request has one
 * result; the last one counts. Returns 0, or -1 when the text is longer than BOARD_RESULT_MAX. Then the caller gets no
 * result, and the caller's log says why. */
int board_answer_result(board_answer *answer, uint32_t key, const char *json, uint32_t length);

#define BOARD_RESULT_MAX 1048576u

/* Sets a result that the caller reads as a file, by get_from_file or db_create_fromfile: `length` bytes, which are
 * copied at once. The response names it by BOARD_RESULT_FILE. It is in no file system: it travels in sealed memory to
 * this one caller, who can read it until its thread's next exchange. It takes the place of a result database. Returns
 * 0, or -1 when there are too many bytes, or no memory. */
int board_answer_file(board_answer *answer, const void *bytes, uint32_t length);

#define BOARD_RESULT_FILE "board:file"
#define BOARD_FILE_MAX 67108864u

/* These functions are for services that misbehave on purpose, so that their clients can be tested. To make the bytes
 * of an answer or its result wrong, a service only needs other bytes. These functions say how the answer is sent.
 *
 * board_answer_delay sends the answer so many milliseconds later, at most BOARD_DELAY_MAX. The answer is not sent at
 * all once its client has hung up or the service is stopped. Meanwhile the requests of other clients are handled. Up
 * to BOARD_DELAYED_MAX answers to datagrams can be late at a time. Further ones are sent at once, and the log says
 * so. */
void board_answer_delay(board_answer *answer, uint32_t milliseconds);
/* Does not send the answer at all. */
void board_answer_drop(board_answer *answer);
/* Sends the answer so many times more, at most BOARD_REPEAT_MAX. */
void board_answer_repeat(board_answer *answer, uint32_t times);

#define BOARD_DELAY_MAX 60000u
#define BOARD_DELAYED_MAX 64u
#define BOARD_REPEAT_MAX 8u

/* A board_handler handles one request. The handler is called for one request at a time, never for two at once, whatever
 * the number of clients, unless the service is concurrent. It is called from threads with a stack of 1 MiB and all
 * signals blocked. */
typedef void board_handler(void *context, const board_request *request, board_answer *answer);

typedef struct board_service_config {
    uint32_t module;       /* the module number served */
    const char *directory; /* folder of the sockets; null: board_ipc_directory() */
    uint32_t socket_mode;  /* permission bits of the sockets; 0: 0660 */
    board_handler *handler;
    /* This function may be null. It is called before the handler, in the same way. When it returns null, the request
     * passes. When it returns a text, the request is refused: the caller gets IPC_ERR_REFUSED, and the text goes to the
     * service's log. */
    const char *(*authorize)(void *context, const board_request *request);
    void *context; /* passed to both functions */
    /* A connection over which no request comes for so many seconds is closed, at most half as long later. Its client
     * connects again when it needs to. 0 means 600. */
    uint32_t idle_limit;
    /* When this is not 0, both functions are called for the requests of several clients at the same time: from a thread
     * for each connection, and from up to 4 threads for datagrams. Otherwise they are called for one request after the
     * other, but connections are accepted meanwhile. */
    int concurrent;
} board_service_config;

typedef struct board_service board_service;

/* Opens the sockets and starts to serve. Returns null on failure, with one log line that says why. Among the reasons
 * are another live service on the same folder and module, and a file that cannot be recorded in. What a dead service
 * left behind is replaced. */
board_service *board_service_start(const board_service_config *config);
/* Stops serving: no handler runs any more when this function returns. Removes the sockets and releases everything. A
 * handler must not call it. Null is allowed. */
void board_service_stop(board_service *service);

/* A board_recorder appends exchanges to a file, which board/trace.h reads. The service decides what it records, in
 * which order, and at what time of its own clock, so that equal sessions can make equal files. Several services may
 * share a recorder, and any thread may use it. */
typedef struct board_recorder board_recorder;

/* Opens the file, which is made when it does not exist. Returns null on failure, with one log line that says why. What
 * another user made, or what is no such record, is never written to. */
board_recorder *board_recorder_open(const char *file);
/* Appends a request to `module` and the answer as it is now. `time` is in nanoseconds. Of an answer that fails only the
 * failure is recorded. A null answer means that the request was refused. The process is the request's `pid`, which may
 * be 0. When the file takes no more, the log says so once, and nothing more is recorded. */
void board_recorder_write(board_recorder *recorder, uint64_t time, uint32_t module, const board_request *request,
                          const board_answer *answer);
/* Appends a note, which has no meaning but for the service: at most BOARD_NOTE_MAX bytes on a channel of the module. A
 * longer note is not recorded. */
void board_recorder_note(board_recorder *recorder, uint64_t time, uint32_t module, uint32_t msg_type, const void *note,
                         uint32_t length);

#define BOARD_NOTE_MAX BOARD_RESULT_MAX

/* Closes the file. Null is allowed. */
void board_recorder_close(board_recorder *recorder);

#ifdef __cplusplus
}
#endif

#endif
