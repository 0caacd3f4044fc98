/* This is a front end in its smallest form. It finds an ONU that waits on a PON port, binds it, shows it, and
 * releases it.
 *
 *     bind_example [PORT]
 *
 * It links the library and the board's libraries: -lbsp_pon -lboard. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "board/datastore.h"
#include "board/ipc.h"
#include "bsp_pon.h"

/* Returns the port's ONUs as a result database, or null after a message. */
static db_handle *onus_of(uint32_t pon_port)
{
    db_handle *db = NULL;
    uint32_t status = bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, pon_port, 0, &db);

    if (status != BSP_OK) {
        fprintf(stderr, "bind_example: no list of ONUs: status %u\n", status);
        db_free(db);
        return NULL;
    }
    if (db == NULL) fprintf(stderr, "bind_example: the service left no list of ONUs\n");
    return db;
}

/* Returns the row whose column has this text, or db_rows when there is none. */
static uint32_t find_row(db_handle *db, const char *column, const char *text)
{
    uint32_t row = 0;
    const char *cell;

    for (; row < db_rows(db); ++row) {
        cell = db_get_text(db, row, column);
        if (cell != NULL && strcmp(cell, text) == 0) break;
    }
    return row;
}

int main(int argc, char **argv)
{
    uint32_t pon_port = argc > 1 ? (uint32_t)strtoul(argv[1], NULL, 0) : 1;
    char mac_text[18] = "";
    unsigned byte[6];
    uint8_t mac[6];
    uint32_t row, status;
    int i, bound;
    db_handle *db = onus_of(pon_port);

    if (db == NULL) return 1;
    row = find_row(db, "state", "waiting");
    if (row < db_rows(db)) snprintf(mac_text, sizeof mac_text, "%s", db_get_text(db, row, "mac"));
    db_free(db);
    if (sscanf(mac_text, "%x:%x:%x:%x:%x:%x", &byte[0], &byte[1], &byte[2], &byte[3], &byte[4], &byte[5]) != 6) {
        fprintf(stderr, "bind_example: no ONU waits on port %u\n", pon_port);
        return 1;
    }
    for (i = 0; i < 6; ++i)
        mac[i] = (uint8_t)byte[i];

    status = bsp_pon_bind_onu_auto_id(pon_port, mac, "example", NULL, 0, NULL);
    printf("bound %s on port %u: status %u\n", mac_text, pon_port, status);
    if (status != BSP_OK) return 1;

    db = onus_of(pon_port);
    if (db == NULL) return 1;
    row = find_row(db, "mac", mac_text);
    bound = row < db_rows(db) && db_get_type(db, row, "onu_id") == DB_INTEGER;
    if (bound) printf("it has id %s and is %s\n", db_get_text(db, row, "onu_id"), db_get_text(db, row, "state"));
    db_free(db);

    status = bsp_pon_no_bind_onu_by_mac(pon_port, mac);
    printf("released it: status %u\n", status);
    return bound && status == BSP_OK ? 0 : 1;
}
