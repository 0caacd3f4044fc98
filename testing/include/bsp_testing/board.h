/* This is a board for unit tests. It stands in for the board's IPC, data-store and utility libraries, answers as the
 * test has scripted, and records its calls.
 *
 * Link it in place of the board's libraries, with libbsp_pon and the code under test. Then, in each test, write:
 *
 *     rb_reset();
 *     rb_answer refusal = {0};
 *     refusal.status = 4005;
 *     rb_script_answer(&refusal);
 *     uint32_t status = bsp_pon_no_bind_onu_spec_id(1, 5);
 *     assert(status == 4005);
 *     assert(rb_exchange_at(0)->msg_type == BSP_MSG_PON);
 *
 * Without a script everything succeeds: an exchange returns 0 with status 0 and no bytes, each result database has a
 * handle of its own, and a file reads as zeros.
 *
 * The board keeps its records in static storage, for tests that call it from one thread at a time. The first RB_KEPT
 * records of each kind since the reset are kept, and later ones are only counted. From the data-store library it has
 * the functions that make and release a result database, but not those that read one: a handle is only a token to
 * compare.
 */
#ifndef BSP_TESTING_BOARD_H
#define BSP_TESTING_BOARD_H

#include <stdint.h>

#include "board/datastore.h"
#include "board/ipc.h"
#include "board/util.h"

#ifdef __cplusplus
extern "C" {
#endif

#define RB_KEPT 32         /* records of each kind, and answers waiting */
#define RB_TEXT_LENGTH 512 /* longer texts are cut */

/* Forgets all records and scripts. Call it at the start of each test. */
void rb_reset(void);

/* --- Records of calls ---
 *
 * Each kind has a count and a lookup by index. The index counts from 0 in the order of time. The lookup returns null
 * when no such record is kept. `at` is the record's position among those of all kinds. Records live until rb_reset. */

uint32_t rb_recorded(void); /* records of all kinds */

typedef enum rb_call { RB_SET, RB_GET, RB_DGRAM_SET, RB_DGRAM_GET } rb_call;

/* This is one IPC call. A set call has no response: `response` is null, and there are no bytes. `request` is where the
 * record was. Do not use it after the operation has returned, unless the record is the caller's own. */
typedef struct rb_exchange {
    uint32_t at;
    rb_call call;
    uint32_t module;
    uint32_t msg_type;
    void *request;
    uint32_t request_length;        /* as the caller stated it, also when fewer bytes were kept */
    uint8_t sent[IPC_MAX_LENGTH];   /* the record's bytes at the call */
    void *response;                 /* where the answer went; null: there was no place for it */
    uint32_t preset;                /* the response length word at the call */
    uint32_t room;                  /* bytes that an answer may fill: the preset or, for 0, the channel's record */
    uint8_t before[IPC_MAX_LENGTH]; /* these bytes of the response buffer at the call */
    uint32_t status_before;         /* the status word at the call */
} rb_exchange;

uint32_t rb_exchanges(void);
const rb_exchange *rb_exchange_at(uint32_t index);

typedef enum rb_level { RB_ERR, RB_DEBUG } rb_level;

/* This is one log line. */
typedef struct rb_log {
    uint32_t at;
    rb_level level;
    char function[RB_TEXT_LENGTH];
    int line;
    char format[RB_TEXT_LENGTH];
    char text[RB_TEXT_LENGTH]; /* the format with its arguments filled in */
} rb_log;

uint32_t rb_logs(void);
const rb_log *rb_log_at(uint32_t index);

typedef enum rb_db_call { RB_FROM_SHMEM, RB_FROM_STRING, RB_FROM_FILE, RB_DB_FREE } rb_db_call;

/* This is one call that made or released a result database. */
typedef struct rb_db {
    uint32_t at;
    rb_db_call call;
    uint32_t key;              /* of db_from_shmem */
    uint32_t bound;            /* of db_from_shmem */
    char text[RB_TEXT_LENGTH]; /* the text of db_from_string, the name of db_create_fromfile */
    uint32_t text_length;      /* its whole length, also when less of it was kept */
    db_handle *handle;         /* what was handed out, or released */
} rb_db;

uint32_t rb_dbs(void);
const rb_db *rb_db_at(uint32_t index);

typedef enum rb_util_call { RB_PMALLOC, RB_PFREE, RB_GET_FROM_FILE, RB_DELETE_FILE } rb_util_call;

/* This is one call of the utility library other than a log line. */
typedef struct rb_util {
    uint32_t at;
    rb_util_call call;
    char file[RB_TEXT_LENGTH]; /* of the file calls */
    uint32_t count;            /* bytes asked for by pmalloc or get_from_file */
    void *block;               /* handed out by pmalloc, released by pfree, or filled by get_from_file */
} rb_util;

uint32_t rb_utils(void);
const rb_util *rb_util_at(uint32_t index);

/* --- Scripts of answers ---
 *
 * Scripts are used up in the order in which they were given. A script call returns 0, or -1 when RB_KEPT scripts are
 * already waiting. */

/* This is the answer to one exchange. All zero means success, status 0 and no bytes. The members take effect in this
 * order, also when `result` makes the exchange fail. */
typedef struct rb_answer {
    /* This is called in the middle of the exchange, when the request has been recorded and nothing is answered yet. It
     * may change the caller's request record. It may be null. */
    void (*during)(const rb_exchange *exchange, void *context);
    void *context;
    const void *bytes;      /* written as far as the response has room; not copied: must live until answered */
    uint32_t length;        /* number of bytes; the response length word becomes what was written */
    int status_not_written; /* true: the status word stays as the caller preset it */
    uint32_t status;
    int32_t result; /* what the IPC call returns */
} rb_answer;

int rb_script_answer(const rb_answer *answer);

/* Sets the handle that the next result database gets. Null stands for no database. */
int rb_script_db(db_handle *handle);

/* Makes the next `count` calls of pmalloc return null. */
void rb_fail_pmalloc(uint32_t count);

/* Sets what every later get_from_file does, until the next call of this function. It returns `result` when that is not
 * 0, and otherwise delivers `length` bytes of `bytes`, then zeros. The bytes are not copied and must live as long. */
void rb_script_file(int result, const void *bytes, uint32_t length);

#ifdef __cplusplus
}
#endif

#endif
