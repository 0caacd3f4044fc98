/* This is the board's data-store library. A result database is a table or object that a service left for its caller. */
#ifndef BOARD_DATASTORE_H
#define BOARD_DATASTORE_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifndef BOARD_DB_HANDLE
#define BOARD_DB_HANDLE
typedef struct db_handle db_handle;
#endif

/* These are the three ways to build a result database. Each returns a handle, which the caller releases with
 * db_free. Each returns null when there is none, and then one log line says why: there is no such result, it is
 * larger than the bound, there is no such file, or there is no memory. The contents of the text are never the
 * reason: a text that is not JSON makes a handle, too, with no rows.
 *
 * db_from_shmem opens the result that came with the calling thread's last exchange under `key`, a command code, and
 * that has at most `bound` bytes. It can be opened until the thread's next exchange, also more than once.
 * db_from_string opens the NUL-terminated `text`; a null text gives no handle. db_create_fromfile opens the contents
 * of `file`. */
db_handle *db_from_shmem(uint32_t key, uint32_t bound);
db_handle *db_from_string(const char *text);
db_handle *db_create_fromfile(const char *file);

/* Releases a handle and everything read through it. Null is allowed. */
void db_free(db_handle *db);

/* A result database is a JSON document: an array of rows, each of which is an object of named columns, or one
 * object, which reads as a table of one row. Any other text is a table of no rows. So is an array with anything else
 * in it, with a number beyond the range of a double, or with more than 100 levels of nesting. db_text still returns
 * such a text. Rows may differ in their columns. When a row has several columns of one name, the last one counts.
 *
 * A null handle reads as a table of no rows with an empty text.
 *
 * Texts that these functions return belong to the handle, are NUL-terminated and live until db_free. Several threads
 * may read a handle at once. */
const char *db_text(const db_handle *db, uint32_t *length); /* the document as it came; length may be null */
uint32_t db_rows(const db_handle *db);                      /* number of rows */
uint32_t db_columns(const db_handle *db);                   /* number of columns, in order of appearance in row 0 */
const char *db_column_name(const db_handle *db, uint32_t column); /* null when there is no such column */

typedef enum db_type {
    DB_NONE, /* no such row or column, or JSON null */
    DB_BOOL,
    DB_INTEGER, /* a whole number that fits int64_t */
    DB_REAL,    /* any other number */
    DB_TEXT,
    DB_NESTED /* an array or object: db_get_text gives its JSON text */
} db_type;

db_type db_get_type(const db_handle *db, uint32_t row, const char *column);
/* Each function returns 0 and stores the value. It returns -1 and stores nothing when the cell is of another type. A
 * whole number reads as a real, too; nothing else is converted. */
int db_get_integer(const db_handle *db, uint32_t row, const char *column, int64_t *value);
int db_get_real(const db_handle *db, uint32_t row, const char *column, double *value);
int db_get_bool(const db_handle *db, uint32_t row, const char *column, int *value);
/* Returns the cell as text, whatever its type is: strings are decoded, everything else is as it stands in the document.
 * Returns null when the cell is DB_NONE. */
const char *db_get_text(const db_handle *db, uint32_t row, const char *column);

#ifdef __cplusplus
}
#endif

#endif
