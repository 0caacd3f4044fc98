/* This is a C program's use of the library: it binds an ONU on the recording board and checks what was sent. */
#include <stdio.h>
#include <string.h>

#include "bsp_pon.h"
#include "bsp_testing/board.h"

static int failures;

static void check(int holds, const char *what)
{
    if (holds) return;
    fprintf(stderr, "not so: %s\n", what);
    failures++;
}

static void bind_is_one_request(void)
{
    const uint8_t mac[6] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    bsp_pon_msg sent;

    rb_reset();
    check(bsp_pon_bind_onu_spec_id(1, 5, mac, "first", NULL, 2, NULL) == BSP_OK, "the bind succeeds");
    check(rb_exchanges() == 1, "one request was sent");
    check(rb_exchange_at(0)->call == RB_SET && rb_exchange_at(0)->msg_type == BSP_MSG_PON, "it is a set on 232");
    memcpy(&sent, rb_exchange_at(0)->sent, sizeof sent);
    check(sent.cmd == BSP_CMD_ONU_BIND && sent.pon_port == 1 && sent.onu_id == 5, "it names port and id");
    check(memcmp(sent.onu_mac, mac, sizeof mac) == 0, "it names the ONU");
    check(strcmp(sent.text237, "first") == 0, "the text is in its field");
}

static void refusal_comes_back(void)
{
    const uint8_t mac[6] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    rb_answer refusal = {0};

    rb_reset();
    refusal.status = 4006;
    check(rb_script_answer(&refusal) == 0, "the script is taken");
    check(bsp_pon_bind_onu_spec_id(1, 5, mac, NULL, NULL, 2, NULL) == 4006, "the service's status comes back");
}

static void view_is_handed_out_and_released(void)
{
    db_handle *view = NULL;

    rb_reset();
    check(bsp_pon_exec_get_json(384, 1, 0, &view) == BSP_OK, "the query succeeds");
    check(view != NULL && view == rb_db_at(0)->handle, "the view is the board's");
    db_free(view);
    check(rb_dbs() == 2 && rb_db_at(1)->call == RB_DB_FREE, "it was released");
}

int main(void)
{
    bind_is_one_request();
    refusal_comes_back();
    view_is_handed_out_and_released();
    return failures != 0;
}
