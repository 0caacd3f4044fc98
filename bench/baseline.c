#define _POSIX_C_SOURCE 200809L
#include "baseline.h"

#include <stddef.h>
#include <string.h>

#include "board/datastore.h"
#include "board/ipc.h"
#include "board/util.h"

static uint32_t outcome(int32_t rv, uint32_t status, const char *function, int line)
{
    if (rv != 0) {
        userlog_err(function, line, "ipc msg failed. rv=%d\n", rv);
        return BSP_ERR_IPC;
    }
    return status;
}

/* Copies as the library does: beyond the end of the field if necessary, but never beyond the end of the record. */
static void put_text(char *to, size_t room, const char *text)
{
    size_t length;

    if (text == NULL) return;
    length = strnlen(text, room);
    memcpy(to, text, length < room ? length + 1 : room);
}

uint32_t c_bind(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac, const char *text_a, const char *text_b,
                uint32_t value, const char *text_c)
{
    bsp_pon_msg msg;
    uint32_t status = 0;
    int32_t rv;

    if (mac == NULL) return BSP_ERR_PARAM;
    memset(&msg, 0, sizeof msg);
    msg.pon_port = pon_port;
    msg.onu_id = onu_id;
    memcpy(msg.onu_mac, mac, 6);
    put_text(msg.text237, sizeof msg - offsetof(bsp_pon_msg, text237), text_a);
    put_text(msg.text173, sizeof msg - offsetof(bsp_pon_msg, text173), text_b);
    put_text(msg.text365, sizeof msg - offsetof(bsp_pon_msg, text365), text_c);
    msg.arg_value = value;
    msg.cmd = BSP_CMD_ONU_BIND;
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_bind_unbounded(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac, const char *text_a,
                          const char *text_b, uint32_t value, const char *text_c)
{
    bsp_pon_msg msg;
    uint32_t status = 0;
    int32_t rv;

    if (mac == NULL) return BSP_ERR_PARAM;
    memset(&msg, 0, sizeof msg);
    msg.pon_port = pon_port;
    msg.onu_id = onu_id;
    memcpy(msg.onu_mac, mac, 6);
    if (text_a != NULL) strcpy(msg.text237, text_a);
    if (text_b != NULL) strcpy(msg.text173, text_b);
    if (text_c != NULL) strcpy(msg.text365, text_c);
    msg.arg_value = value;
    msg.cmd = BSP_CMD_ONU_BIND;
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_release(uint32_t pon_port, uint32_t onu_id)
{
    bsp_pon_msg msg;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    msg.pon_port = pon_port;
    msg.onu_id = onu_id;
    msg.cmd = BSP_CMD_ONU_RELEASE;
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_release_by_mac(uint32_t pon_port, const uint8_t *mac)
{
    bsp_pon_msg msg;
    uint32_t status = 0;
    int32_t rv;

    if (mac == NULL) return BSP_ERR_PARAM;
    memset(&msg, 0, sizeof msg);
    msg.pon_port = pon_port;
    memcpy(msg.onu_mac, mac, 6);
    msg.cmd = BSP_CMD_ONU_RELEASE;
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_reboot_batch(const bsp_pon_msg *record)
{
    bsp_pon_msg msg;
    uint32_t status = 0;
    int32_t rv;

    memcpy(&msg, record, sizeof msg);
    msg.cmd = BSP_CMD_ONU_REBOOT_BATCH;
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_cfg(uint32_t cmd, uint32_t pon_port, const void *data, uint32_t length)
{
    bsp_pon_msg msg;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    msg.cmd = cmd;
    msg.pon_port = pon_port;
    if (data != NULL && length != 0) memcpy(msg.data429, data, length);
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_get(bsp_pon_msg *record)
{
    uint32_t length = sizeof *record;
    uint32_t status = 0;
    int32_t rv = ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, record, sizeof *record, record, &length, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_get_json(uint32_t cmd, uint32_t pon_port, uint32_t spare, db_handle **db_out)
{
    bsp_pon_msg msg, response;
    uint32_t length = 0;
    uint32_t status = 0;
    int32_t rv;

    (void)spare;
    memset(&msg, 0, sizeof msg);
    memset(&response, 0, sizeof response);
    msg.cmd = cmd;
    msg.pon_port = pon_port;
    rv = ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, &response, &length, &status);
    if (rv == 0) *db_out = db_from_shmem(cmd, 10240);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_get_file(uint32_t cmd, uint32_t pon_port, char *name_out)
{
    bsp_pon_msg msg, response;
    uint32_t length = 0;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    memset(&response, 0, sizeof response);
    msg.cmd = cmd;
    msg.pon_port = pon_port;
    rv = ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, &response, &length, &status);
    if (rv == 0 && name_out != NULL) strcpy(name_out, (const char *)response.data429);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_white(uint32_t pon_port, uint32_t onu_id, void *resp)
{
    bsp_pon_msg msg;
    uint8_t scratch[776];
    uint32_t length = sizeof scratch;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    if (resp == NULL) {
        memset(scratch, 0, sizeof scratch);
        resp = scratch;
    }
    msg.cmd = BSP_CMD_WHITELIST_GET;
    msg.pon_port = pon_port;
    msg.onu_id = onu_id;
    rv = ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, &msg, sizeof msg, resp, &length, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_view(db_handle **db_out, const bsp_pon_msg *record)
{
    bsp_pon_msg_ext response;
    uint32_t length = sizeof response;
    uint32_t status = 0;
    int32_t rv;

    memset(&response, 0, sizeof response);
    rv = ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, record, sizeof *record, &response, &length, &status);
    if (rv == 0) *db_out = db_from_shmem(record->cmd, 1048576);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_view_web(db_handle **db_out, bsp_pon_msg *record)
{
    record->cmd = BSP_CMD_VIEW_ONU_INFO_WEB;
    return c_view(db_out, record);
}

uint32_t c_view_snmp(db_handle **db_out)
{
    bsp_pon_msg msg;

    memset(&msg, 0, sizeof msg);
    msg.cmd = BSP_CMD_VIEW_ONU_INFO_SNMP;
    return c_view(db_out, &msg);
}

uint32_t c_pon_stats(uint32_t port, void *out)
{
    bsp_plat_msg msg, response;
    uint32_t length = sizeof response;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    memset(&response, 0, sizeof response);
    msg.plat_port = port;
    msg.plat_cmd = BSP_CMD_DEBUG_PON_STATS;
    rv = ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_DEBUG, &msg, sizeof msg, &response, &length, &status);
    if (rv == 0) memcpy(out, response.plat_data, 160);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_own_port(uint32_t pon_port, uint32_t *value)
{
    bsp_plat_msg msg, response;
    uint32_t length = sizeof response;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    memset(&response, 0, sizeof response);
    msg.plat_port = pon_port;
    msg.plat_cmd = BSP_CMD_P2P_OWN_PORT_GET;
    rv = ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PLAT, &msg, sizeof msg, &response, &length, &status);
    if (rv == 0) *value = response.plat_arg116;
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_upgrade(const void *block)
{
    bsp_pon_msg_ext msg;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    msg.cmd = BSP_CMD_UPGRADE_ONU;
    memcpy(msg.ext_payload, block, 400);
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_UPGRADE, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}

uint32_t c_lol_mode(uint32_t pon_port, uint32_t id, uint32_t mode, const void *params)
{
    bsp_plat_msg msg;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    msg.plat_port = pon_port;
    msg.plat_arg4 = id;
    msg.plat_cmd = BSP_CMD_LOL_MODE_SET;
    msg.plat_arg112 = mode;
    memcpy(msg.plat_data, params, 8);
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_PLAT, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}

static uint32_t ask(uint32_t channel, uint32_t cmd, uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out,
                    uint32_t size)
{
    bsp_onu_msg msg, response;
    uint32_t length = sizeof response;
    uint32_t status = 0;
    int32_t rv;

    memset(&msg, 0, sizeof msg);
    memset(&response, 0, sizeof response);
    msg.onu_pon_port = pon_port;
    msg.onu_onu_id = onu_id;
    msg.onu_uni_port = (uint8_t)uni_port;
    msg.onu_cmd = cmd;
    rv = ipc_get_exec(BSP_IPC_MODULE, channel, &msg, sizeof msg, &response, &length, &status);
    if (rv != 0) return (uint32_t)rv;
    if (out) memcpy(out, response.onu_data, size);
    return status;
}

uint32_t c_onu_sn(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return ask(BSP_MSG_ONU_INFO, BSP_CMD_ONU_SN_GET, pon_port, onu_id, 0, out, 54);
}

uint32_t c_onu_vlan(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out)
{
    if (!out) return BSP_ERR_PARAM;
    return ask(BSP_MSG_ONU_CFG, BSP_CMD_ONU_VLAN_GET, pon_port, onu_id, uni_port, out, 159);
}

uint32_t c_onu_mgmt_set(uint32_t pon_port, uint32_t onu_id, const void *mgmt)
{
    bsp_onu_msg msg;
    uint32_t status = 0;
    int32_t rv;

    if (!mgmt) return BSP_ERR_PARAM;
    memset(&msg, 0, sizeof msg);
    msg.onu_pon_port = pon_port;
    msg.onu_onu_id = onu_id;
    msg.onu_cmd = BSP_CMD_ONU_MGMT_SET;
    memcpy(msg.onu_data, mgmt, 17);
    rv = ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_ONU_CFG, &msg, sizeof msg, &status);
    return outcome(rv, status, __func__, __LINE__);
}
