/* clang-format off */
/* generated from the catalogue by catalog/generate.py; change the catalogue, not this file. */
/**
 * The client library of the EPON OLT's PON management service.
 *
 * Rules that hold for every function:
 *
 * - A call sends one request to the service and blocks until the board's IPC library returns. There is no start-up, no
 *   shut-down and no state; every function may be called from any thread at once, with 16 KiB of stack left.
 * - The result is a status word: BSP_OK, the service's own word passed through unchanged, or one of the BSP_ERR_
 *   words. Where a function passes on the IPC library's own value, ipc_strerror has its text.
 * - Outputs are delivered after every exchange that succeeded, whatever the status word, and are untouched when the
 *   exchange failed or a checked pointer was null. Test the status before you use them.
 * - A pointer is checked for null only where its description says so; others must be valid. Numbers are not checked.
 * - Integers are in host order, MAC addresses in transmission order, texts NUL-terminated. A text or block that is
 *   longer than its field runs on into the fields behind it and ends with the record.
 * - Result databases (db_handle) belong to the caller, who reads and releases them with the board's data-store
 *   library.
 */
#ifndef BSP_PON_H
#define BSP_PON_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define BSP_PON_API __attribute__((visibility("default")))
#else
#define BSP_PON_API
#endif

#ifndef BOARD_DB_HANDLE
#define BOARD_DB_HANDLE
typedef struct db_handle db_handle; /* a result database of the board's data-store library */
#endif

/* Status words of the library itself. */
#define BSP_OK 0u /* success */
#define BSP_ERR_IPC 1001u /* the IPC exchange failed */
#define BSP_ERR_NOMEM 1002u /* no memory for a result */
#define BSP_ERR_PARAM 3003u /* a required pointer argument was null; nothing was sent */

/* The IPC module of the PON management service, and its channels (IPC message types). */
#define BSP_IPC_MODULE 6u /* module of every exchange */
#define BSP_MSG_PON 232u /* binding, pass-through, stored views, lists, authentication, bulk data */
#define BSP_MSG_PROFILE 235u /* profile exchange (datagram calls only) */
#define BSP_MSG_DEBUG 236u /* chip debug and statistics */
#define BSP_MSG_ONU_INFO 237u /* information and status of a remote ONU */
#define BSP_MSG_ONU_CFG 238u /* configuration of a remote ONU */
#define BSP_MSG_PLAT 239u /* the OLT's platform services */
#define BSP_MSG_CFGWR 240u /* configuration write-out */
#define BSP_MSG_ONU_SNMP 241u /* remote ONU views for the SNMP agent */
#define BSP_MSG_UPGRADE 242u /* ONU upgrade types and upgrade runs */
#define BSP_MSG_ONU_OAM 243u /* OAM printing and serial numbers of remote ONUs */
#define BSP_MSG_LOOP_DETECT 244u /* loop detection */

/* Command codes. */
#define BSP_CMD_ONU_BIND_AUTO 364u /* BSP_MSG_PON: bind an ONU by MAC address, the service picks the ONU id */
#define BSP_CMD_ONU_BIND 365u /* BSP_MSG_PON: bind an ONU by MAC address to a given ONU id */
#define BSP_CMD_ONU_RELEASE 366u /* BSP_MSG_PON: release the binding of one ONU, by id, by MAC address, or by both */
#define BSP_CMD_ONU_RELEASE_BATCH 367u /* BSP_MSG_PON: release a batch of bindings described by the caller's record */
#define BSP_CMD_ONU_REBOOT_BATCH 368u /* BSP_MSG_PON: reboot a batch of ONUs described by the caller's record */
#define BSP_CMD_ONU_RELEASE_ALL 369u /* BSP_MSG_PON: release all bindings of a PON port */
#define BSP_CMD_ONU_RELEASE_OFFLINE 370u /* BSP_MSG_PON: release all bindings of offline ONUs of a PON port */
#define BSP_CMD_VIEW_ONU_INFO_SNMP 383u /* BSP_MSG_PON: ONU information of the whole OLT, for the SNMP agent */
#define BSP_CMD_VIEW_ONU_INFO_WEB 384u /* BSP_MSG_PON: ONU information of one PON port, or of all for port 0, for the web server */
#define BSP_CMD_VIEW_BASE_INFO_WEB 386u /* BSP_MSG_PON: base information of the OLT's PON ports, for the web server */
#define BSP_CMD_ONU_SORT_BATCH 423u /* BSP_MSG_PON: re-sort a batch of ONUs described by the caller's record */
#define BSP_CMD_OPT_RANGE_SET 424u /* BSP_MSG_PON: set the optical ranging limits from the caller's record */
#define BSP_CMD_ONU_SUPPORT_SET 764u /* BSP_MSG_PON: set whether an ONU, named by its MAC address, is supported */

/**
 * Request and response of the PON channel. 944 bytes.
 */
struct bsp_pon_msg {
    uint32_t cmd; /* 0: command code */
    uint32_t pon_port; /* 4: PON port number */
    uint32_t onu_id; /* 8: ONU id on the port */
    uint32_t arg_word12; /* 12: extra integer argument */
    uint8_t arg_byte16; /* 16: extra byte argument */
    uint8_t onu_mac[6]; /* 17: ONU MAC address, transmission order */
    uint8_t reserved23[13]; /* zero */
    uint32_t arg_word36; /* 36: extra integer argument */
    uint32_t arg_value; /* 40: main integer argument */
    uint8_t reserved44[1]; /* zero */
    char text45[64]; /* 45: text argument */
    char text109[64]; /* 109: text argument */
    char text173[64]; /* 173: text argument (binding: second text) */
    char text237[128]; /* 237: text argument (binding: first text; ONU description) */
    char text365[64]; /* 365: text argument (binding: third text) */
    uint8_t data429[515]; /* 429: data block to the end of the record; in responses the result file name */
};
typedef struct bsp_pon_msg bsp_pon_msg;

/**
 * Request and response of the upgrade and loop-detection channels, and the larger response of several views. 1044
 * bytes.
 */
struct bsp_pon_msg_ext {
    uint32_t cmd; /* 0: command code */
    uint32_t ext_arg; /* 4: integer argument */
    uint8_t reserved8[12]; /* zero */
    uint8_t ext_payload[400]; /* 20: block argument; in responses a text may start here */
    uint8_t reserved420[624]; /* zero */
};
typedef struct bsp_pon_msg_ext bsp_pon_msg_ext;

/**
 * Request and response of the platform, debug and write-out channels. The command code is not first. 1148 bytes.
 */
struct bsp_plat_msg {
    uint32_t plat_port; /* 0: port, PON port or index */
    uint32_t plat_arg4; /* 4: ONU id, LLID or index */
    uint8_t reserved8[84]; /* zero */
    uint32_t plat_cmd; /* 92: command code */
    uint32_t plat_arg96; /* 96: integer argument */
    uint32_t plat_arg100; /* 100: integer argument */
    uint32_t plat_arg104; /* 104: integer argument */
    uint32_t plat_arg108; /* 108: integer argument */
    uint32_t plat_arg112; /* 112: integer argument */
    uint32_t plat_arg116; /* 116: integer argument */
    uint32_t plat_arg120; /* 120: integer argument */
    uint8_t plat_data[1024]; /* 124: data block */
};
typedef struct bsp_plat_msg bsp_plat_msg;

/**
 * Request and response of the remote-ONU channels. 1888 bytes.
 */
struct bsp_onu_msg {
    uint32_t onu_pon_port; /* 0: PON port number */
    uint32_t onu_onu_id; /* 4: ONU id on the port */
    uint8_t onu_uni_port; /* 8: UNI (user) port number on the ONU */
    uint8_t reserved9[7]; /* zero */
    uint32_t onu_cmd; /* 16: command code */
    uint8_t reserved20[4]; /* zero */
    uint32_t onu_arg24; /* 24: integer argument */
    uint8_t reserved28[324]; /* zero */
    uint8_t onu_data[1536]; /* 352: data block; in responses the returned value or text starts here */
};
typedef struct bsp_onu_msg bsp_onu_msg;

/**
 * Request and response of the profile channel: a header of six words, then the payload. 4120 bytes.
 */
struct bsp_profile_msg {
    uint32_t action; /* 0: the caller's action code */
    uint32_t is_get; /* 4: 1 in the get forms, 0 in the set form */
    uint32_t count; /* 8: in responses: bytes of the result file */
    uint8_t reserved12[12]; /* zero */
    uint8_t data[4096]; /* 24: payload; in responses a file name may start here */
};
typedef struct bsp_profile_msg bsp_profile_msg;

/* --- ONU binding and unbinding --- */

/**
 * Sends a free-form PON configuration command.
 *
 * The caller's command on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; write.
 *
 * @param cmd command code
 * @param pon_port PON port number
 * @param data configuration block, read only; nothing is sent of it where it is null or `length` is 0
 * @param length bytes of `data` to send, at most 515
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_cfg(uint32_t cmd, uint32_t pon_port, const void *data, uint32_t length);

/**
 * Sends a record that the caller built, as it stands, as a PON configuration command.
 *
 * The caller's command on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; write.
 *
 * @param record the request, 944 bytes with the command code in `cmd`; not changed
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_ponmsg_cfg_set(const bsp_pon_msg *record);

/**
 * Binds an ONU, named by its MAC address, to an ONU id that the service picks.
 *
 * BSP_CMD_ONU_BIND_AUTO (364) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 * The first text goes to the later field of the record: the order of the texts is that of the arguments, not of the
 * record.
 *
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param text_a first bind text, at most 127 characters; null leaves the field empty
 * @param text_b second bind text, at most 63 characters; null leaves the field empty
 * @param value bind mode, the service's to define
 * @param text_c third bind text, at most 63 characters; null leaves the field empty
 * @return the service's status word; BSP_ERR_PARAM where `mac` is null, nothing sent; BSP_ERR_IPC after a failed
 *         exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_bind_onu_auto_id(uint32_t pon_port, const uint8_t *mac, const char *text_a,
                                              const char *text_b, uint32_t value, const char *text_c);

/**
 * Sets whether an ONU, named by its MAC address, is supported.
 *
 * BSP_CMD_ONU_SUPPORT_SET (764) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; write.
 *
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param value support flag: 1 supported, 0 not
 * @return the service's status word; BSP_ERR_PARAM where `mac` is null, nothing sent; BSP_ERR_IPC after a failed
 *         exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_onu_support_set(uint32_t pon_port, const uint8_t *mac, uint32_t value);

/**
 * Binds an ONU, named by its MAC address, to a given ONU id.
 *
 * BSP_CMD_ONU_BIND (365) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 * The first text goes to the later field of the record: the order of the texts is that of the arguments, not of the
 * record.
 *
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param text_a first bind text, at most 127 characters; null leaves the field empty
 * @param text_b second bind text, at most 63 characters; null leaves the field empty
 * @param value bind mode, the service's to define
 * @param text_c third bind text, at most 63 characters; null leaves the field empty
 * @return the service's status word; BSP_ERR_PARAM where `mac` is null, nothing sent; BSP_ERR_IPC after a failed
 *         exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_bind_onu_spec_id(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac,
                                              const char *text_a, const char *text_b, uint32_t value,
                                              const char *text_c);

/**
 * Releases the binding of one ONU, named by its ONU id.
 *
 * BSP_CMD_ONU_RELEASE (366) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 *
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_spec_id(uint32_t pon_port, uint32_t onu_id);

/**
 * Releases the binding of one ONU, named by its ONU id and its MAC address.
 *
 * BSP_CMD_ONU_RELEASE (366) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 * Unlike in bsp_pon_no_bind_onu_by_mac, the MAC pointer is not checked: it must be valid.
 *
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param mac ONU MAC address, 6 bytes in transmission order
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_spec_id_and_mac(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac);

/**
 * Releases the binding of one ONU, named by its MAC address.
 *
 * BSP_CMD_ONU_RELEASE (366) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 *
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @return the service's status word; BSP_ERR_PARAM where `mac` is null, nothing sent; BSP_ERR_IPC after a failed
 *         exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_by_mac(uint32_t pon_port, const uint8_t *mac);

/**
 * Releases all bindings of a PON port.
 *
 * BSP_CMD_ONU_RELEASE_ALL (369) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 *
 * @param pon_port PON port number
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_all(uint32_t pon_port);

/**
 * Releases the bindings of all offline ONUs of a PON port.
 *
 * BSP_CMD_ONU_RELEASE_OFFLINE (370) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 *
 * @param pon_port PON port number
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_no_bind_offline_onu_all(uint32_t pon_port);

/**
 * Releases a batch of bindings.
 *
 * BSP_CMD_ONU_RELEASE_BATCH (367) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 *
 * @param record which ONUs, 944 bytes; copied, not changed, its `cmd` is not used
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_batch_spec_id(const bsp_pon_msg *record);

/**
 * Reboots a batch of ONUs.
 *
 * BSP_CMD_ONU_REBOOT_BATCH (368) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 *
 * @param record which ONUs, 944 bytes; copied, not changed, its `cmd` is not used
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_reboot_onu_batch(const bsp_pon_msg *record);

/**
 * Re-sorts a batch of ONUs.
 *
 * BSP_CMD_ONU_SORT_BATCH (423) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; service-affecting.
 *
 * @param record which ONUs, 944 bytes; copied, not changed, its `cmd` is not used
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_onu_batch_sort(const bsp_pon_msg *record);

/**
 * Sets the optical ranging limits.
 *
 * BSP_CMD_OPT_RANGE_SET (424) on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; write.
 *
 * @param record the limits, 944 bytes; copied, not changed, its `cmd` is not used
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_set_opt_range(const bsp_pon_msg *record);

/* --- Generic pass-through --- */

/**
 * Sends a record that the caller built and takes the answer in the same record.
 *
 * The caller's command on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; read.
 *
 * @param record in: the request, 944 bytes with the command code in `cmd`; out: what the service answered, from the
 *        first byte on
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_exec_get(bsp_pon_msg *record);

/**
 * Sends a record that the caller built, as it stands.
 *
 * The caller's command on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; write.
 *
 * @param record the request, 944 bytes with the command code in `cmd`; not changed
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_exec_set(const bsp_pon_msg *record);

/**
 * Asks for a small view of a PON port, at most 10240 bytes, as a result database.
 *
 * The caller's command on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; read.
 * Differs from bsp_pon_exec_get_json_ in the bound alone.
 *
 * @param cmd command code of the view, and the key of its result
 * @param pon_port PON port number
 * @param spare ignored
 * @param db_out the result database; receives a handle that the caller owns (null where the service left none)
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_exec_get_json(uint32_t cmd, uint32_t pon_port, uint32_t spare, db_handle **db_out);

/**
 * Asks for a large view of a PON port, at most 1048576 bytes, as a result database.
 *
 * The caller's command on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; read.
 * Differs from bsp_pon_exec_get_json in the bound alone.
 *
 * @param cmd command code of the view, and the key of its result
 * @param pon_port PON port number
 * @param spare ignored
 * @param db_out the result database; receives a handle that the caller owns (null where the service left none)
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_exec_get_json_(uint32_t cmd, uint32_t pon_port, uint32_t spare, db_handle **db_out);

/**
 * Asks for a view of a PON port that the service leaves in a file, and returns the file's name.
 *
 * The caller's command on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; read.
 * The file is the caller's to remove.
 *
 * @param cmd command code of the view
 * @param pon_port PON port number
 * @param name_out room for 515 bytes, receives the file's name, NUL-terminated; may be null
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_exec_get_file(uint32_t cmd, uint32_t pon_port, char *name_out);

/**
 * Asks for a large view of one ONU, at most 1048576 bytes, as a result database.
 *
 * The caller's command on BSP_MSG_PON, a bsp_pon_msg of 944 bytes; read.
 *
 * @param cmd command code of the view, and the key of its result
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param spare ignored
 * @param db_out the result database; receives a handle that the caller owns (null where the service left none)
 * @return the service's status word; BSP_ERR_IPC after a failed exchange, which is logged.
 */
BSP_PON_API uint32_t bsp_pon_exec_get_onu_json(uint32_t cmd, uint32_t pon_port, uint32_t onu_id, uint32_t spare,
                                               db_handle **db_out);

#ifdef __cplusplus
}
#endif

#endif
