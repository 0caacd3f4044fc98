/* clang-format off */
/* generated from the catalogue by catalog/generate.py; change the catalogue, not this file. */
/**
 * The client library of the EPON OLT's PON management service.
 *
 * Rules that hold for every function:
 *
 * - A call sends one request to the service and blocks until the board's IPC library returns. There is no start-up, no
 *   shut-down and no state; every function may be called from any thread at once, with 16 KiB of stack left.
 * - What is sent stands below the first sentence: the command code, by its name or as the caller states it, the
 *   channel, and the record with its length; then what the command does to the network: read, write or
 *   service-affecting. What goes by another function is sent and logged as by that one.
 * - The result is a status word: BSP_OK or the service's own word, passed through unchanged, after an exchange that
 *   succeeded; else one of the BSP_ERR_ words or a value of the IPC library.
 * - A failed exchange is reported, passed or silent. Reported: it is logged, and the result is BSP_ERR_IPC. Passed: it
 *   is logged, and the result is the IPC library's own value, of which ipc_strerror has the text. Silent: that value,
 *   and nothing is logged. It is reported where neither a group nor a function says otherwise.
 * - Outputs are delivered after every exchange that succeeded, whatever the status word, and are untouched when the
 *   exchange failed or a checked pointer was null. Test the status before you use them.
 * - A pointer that must not be null is checked: if it is null, the result is BSP_ERR_PARAM, and nothing is sent. No
 *   other pointer is checked; it must be valid, unless its description says what null means. Numbers are not checked.
 * - Integers are in host order, MAC addresses in transmission order, texts NUL-terminated. A text or block that is
 *   longer than its field runs on into the fields behind it and ends with the record.
 * - A result database is received as a handle, null where the service left none. It belongs to the caller, who reads
 *   and releases it with the board's data-store library.
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
    uint32_t onu_word20; /* 20: in a response: the word that is returned */
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

/**
 * @defgroup bsp_commands Commands of the generic operations
 * Codes that the caller of a generic operation states.
 * @{
 */
#define BSP_CMD_CONFIG_READ 1u /* BSP_MSG_PROFILE: the OLT's configuration, in a file */
#define BSP_CMD_CONFIG_LOAD_PART 2u /* BSP_MSG_PROFILE: receive a part of a configuration to load */
#define BSP_CMD_CONFIG_LOAD 3u /* BSP_MSG_PROFILE: load the configuration that was received */
#define BSP_CMD_PROFILE_LINE_STORE 17u /* BSP_MSG_PROFILE: store a line profile, or change the one of its name */
#define BSP_CMD_PROFILE_LINE_FETCH 18u /* BSP_MSG_PROFILE: get a line profile by its name */
#define BSP_CMD_PROFILE_LINE_DELETE 19u /* BSP_MSG_PROFILE: delete a line profile by its name */
#define BSP_CMD_PROFILE_LINE_LIST 20u /* BSP_MSG_PROFILE: numbers and names of line profiles */
#define BSP_CMD_PROFILE_LINE_TABLE 21u /* BSP_MSG_PROFILE: all line profiles, as a file of rows that the answer names */
#define BSP_CMD_PROFILE_LINE_TEXT 22u /* BSP_MSG_PROFILE: all line profiles, as a file of text that the answer names with its length */
#define BSP_CMD_PROFILE_SLA_STORE 33u /* BSP_MSG_PROFILE: store an SLA profile, or change the one of its name */
#define BSP_CMD_PROFILE_SLA_FETCH 34u /* BSP_MSG_PROFILE: get an SLA profile by its name */
#define BSP_CMD_PROFILE_SLA_DELETE 35u /* BSP_MSG_PROFILE: delete an SLA profile by its name */
#define BSP_CMD_PROFILE_SLA_LIST 36u /* BSP_MSG_PROFILE: numbers and names of SLA profiles */
#define BSP_CMD_PROFILE_SLA_TABLE 37u /* BSP_MSG_PROFILE: all SLA profiles, as a file of rows that the answer names */
#define BSP_CMD_PROFILE_SLA_TEXT 38u /* BSP_MSG_PROFILE: all SLA profiles, as a file of text that the answer names with its length */
#define BSP_CMD_PROFILE_ALARM_STORE 49u /* BSP_MSG_PROFILE: store an alarm profile, or change the one of its name */
#define BSP_CMD_PROFILE_ALARM_FETCH 50u /* BSP_MSG_PROFILE: get an alarm profile by its name */
#define BSP_CMD_PROFILE_ALARM_DELETE 51u /* BSP_MSG_PROFILE: delete an alarm profile by its name */
#define BSP_CMD_PROFILE_ALARM_LIST 52u /* BSP_MSG_PROFILE: numbers and names of alarm profiles */
#define BSP_CMD_PROFILE_ALARM_TABLE 53u /* BSP_MSG_PROFILE: all alarm profiles, as a file of rows that the answer names */
#define BSP_CMD_PROFILE_ALARM_TEXT 54u /* BSP_MSG_PROFILE: all alarm profiles, as a file of text that the answer names with its length */
#define BSP_CMD_ONU_ADMIN_STATE_SET 688u /* BSP_MSG_ONU_INFO: switches a UNI port on or off */
#define BSP_CMD_ONU_AUTONEG_SET 690u /* BSP_MSG_ONU_INFO: has a UNI port negotiate its speed, or not */
#define BSP_CMD_ONU_AUTONEG_ADV_SET 693u /* BSP_MSG_ONU_INFO: says what a UNI port offers in auto-negotiation */
#define BSP_CMD_ONU_CLASSIFICATION_SET 696u /* BSP_MSG_ONU_INFO: changes the classification rules of a UNI port */
#define BSP_CMD_ONU_TIME_SET 706u /* BSP_MSG_ONU_INFO: set the time configuration of an ONU */
#define BSP_CMD_ONU_ALARM_TEST 777u /* BSP_MSG_ONU_INFO: raise an alarm of an ONU as a test */
#define BSP_CMD_ONU_VLAN_SET 644u /* BSP_MSG_ONU_CFG: sets the VLANs of a UNI port */
#define BSP_CMD_ONU_RATE_LIMIT_SET 655u /* BSP_MSG_ONU_CFG: limits the rates of a UNI port */
#define BSP_CMD_ONU_LOOP_DETECT_SET 657u /* BSP_MSG_ONU_CFG: switches loop detection at a UNI port */
#define BSP_CMD_ONU_FAST_LEAVE_SET 659u /* BSP_MSG_ONU_CFG: set multicast fast leave of an ONU */
#define BSP_CMD_ONU_MC_SWITCH_SET 662u /* BSP_MSG_ONU_CFG: set the multicast mode of an ONU */
#define BSP_CMD_ONU_MC_GROUP_MAX_SET 665u /* BSP_MSG_ONU_CFG: set how many multicast groups a UNI port may join */
#define BSP_CMD_ONU_MC_VLAN_MODE_SET 668u /* BSP_MSG_ONU_CFG: set what becomes of the tags of multicast frames at a UNI port */
#define BSP_CMD_ONU_MC_VLAN_SET 670u /* BSP_MSG_ONU_CFG: add multicast VLANs to a UNI port, or take them away */
#define BSP_CMD_ONU_MC_GROUP_SET 672u /* BSP_MSG_ONU_CFG: let UNI ports of an ONU join multicast groups, or stop them, in controllable multicast */
#define BSP_CMD_ONU_PAUSE_SET 683u /* BSP_MSG_ONU_CFG: switches flow control of a UNI port */
#define BSP_CMD_ONU_FEC_SET 685u /* BSP_MSG_ONU_CFG: switch forward error correction of an ONU */
#define BSP_CMD_ONU_WAN_SET 734u /* BSP_MSG_ONU_CFG: add, change or remove a WAN connection of an ONU */
#define BSP_CMD_ONU_WLAN_SET 736u /* BSP_MSG_ONU_CFG: set one WLAN of an ONU */
#define BSP_CMD_ONU_ACL_SET 757u /* BSP_MSG_ONU_CFG: add, change or remove a rule of an ONU's access control list */
#define BSP_CMD_ONU_DHCP_SET 761u /* BSP_MSG_ONU_CFG: set the DHCP server of an ONU */

/** @} */

/**
 * @defgroup bsp_frame_onu_ids ONU-id sets
 * @{
 */

/**
 * 128 ONU ids: id w*32+b is a member when bit b (bit 0 the least significant) of word w is 1. 16 bytes.
 */
struct onu_id_set {
    uint32_t words[4]; /* ids 0 to 31 in the first word, 96 to 127 in the last */
};
typedef struct onu_id_set onu_id_set;

/**
 * Tells whether a set of ONU ids has members.
 *
 * Makes no request.
 * @param set the set, read only
 * @return 1 if any id is a member, else 0; 0 also for a null set, after a line in the log.
 */
BSP_PON_API int ont_id_res_exists_ont(const onu_id_set *set);

/**
 * Prints a set of ONU ids as ranges, such as 1-5,7,9-12.
 *
 * Makes no request.
 * Two ids in a row print as two, three or more as first and last. Three ways of printing are as they always were, and
 * front ends rely on them: a word without members does not end a run (ids 31 and 64 print as 31,32); a run that is
 * still open at the end of the last word with members is not closed, so that of ids 120 to 127 only 120 is printed;
 * and at `last_id`, from the second id of a run on, the length of the run so far is printed behind a dash (ids 120 to
 * 127 with `last_id` 127: 120-8). The length is counted in 8 bits with a sign: all 128 ids with `last_id` 127 print as
 * 0--128. Use ont_id_res_str_expand where every id must be known.
 * @param set the set, read only
 * @param last_id the id at which the length of an open run is printed; one that is no member for none, as 128
 * @param text room for 402 bytes, receives the text, NUL-terminated; an empty set leaves it as it was
 * @return `text`; null if `set` or `text` is null, after a line in the log.
 */
BSP_PON_API char *ont_id_res_str(const onu_id_set *set, uint32_t last_id, char *text);

/**
 * Prints a set of ONU ids as a list of all members in ascending order, such as 1,2,3,7.
 *
 * Makes no request.
 * @param set the set, read only
 * @param spare ignored
 * @param text room for 402 bytes, receives the text, NUL-terminated; an empty set leaves it as it was
 * @return `text`; null if `set` or `text` is null, after a line in the log.
 */
BSP_PON_API char *ont_id_res_str_expand(const onu_id_set *set, uint32_t spare, char *text);

/** @} */

/**
 * @defgroup bsp_admission_authentication Authentication, confirmation and description
 * @{
 */
#define BSP_CMD_AUTH_SET 376u /* BSP_MSG_PON: set the authentication mode of a PON port */
#define BSP_CMD_AUTH_GET 377u /* BSP_MSG_PON: the authentication mode of a PON port */
#define BSP_CMD_AUTH_LIST 378u /* BSP_MSG_PON: the authentication records: a summary of all PON ports for port 0, else those of one port */
#define BSP_CMD_ONU_CONFIRM 380u /* BSP_MSG_PON: confirm an ONU that waits, named by its ONU id or else by its MAC address */
#define BSP_CMD_ONU_DESCRIPTION_SET 398u /* BSP_MSG_PON: describe a bound ONU in a text */

/**
 * Sets the authentication mode of a PON port.
 *
 * BSP_CMD_AUTH_SET (376) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param pon_port PON port number
 * @param text_a first authentication text, at most 63 characters; null leaves the field empty
 * @param text_b second authentication text, at most 63 characters; null leaves the field empty
 * @param mode authentication mode, of the simulated service: 0 MAC address, 1 LOID, 2 LOID and password, 3 MAC address
 *        or LOID
 */
BSP_PON_API uint32_t bsp_pon_onu_auth_mode_type_set(uint32_t pon_port, const char *text_a, const char *text_b,
                                                    uint32_t mode);

/**
 * Sets the authentication of a PON port from a record that the caller built.
 *
 * BSP_CMD_AUTH_SET (376) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param record port, mode and texts, 944 bytes; copied, not changed, its `cmd` is not used
 */
BSP_PON_API uint32_t bsp_pon_onu_auth_set(const bsp_pon_msg *record);

/**
 * Asks for the authentication mode of a PON port.
 *
 * BSP_CMD_AUTH_GET (377) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param resp room for 944 bytes, receives the answer, a bsp_pon_msg; handed to the IPC library as it is
 */
BSP_PON_API uint32_t bsp_pon_onu_auth_mode_type_get(uint32_t pon_port, void *resp);

/**
 * Asks for the authentication records as a result database of at most 10240 bytes.
 *
 * BSP_CMD_AUTH_LIST (378) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_auth_infolist_get(db_handle **db_out);

/**
 * Confirms an ONU that waits.
 *
 * BSP_CMD_ONU_CONFIRM (380) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * Of the record, `onu_id` is sent where it is not 0 and otherwise `onu_mac`, never both; further `arg_byte16` and
 * `arg_word36`.
 * @param pon_port PON port number
 * @param onu which ONU, 944 bytes; not changed, nothing else of it is used; must not be null
 */
BSP_PON_API uint32_t bsp_pon_confirm_onu(uint32_t pon_port, const bsp_pon_msg *onu);

/**
 * Describes a bound ONU in a text.
 *
 * BSP_CMD_ONU_DESCRIPTION_SET (398) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param text the description, at most 127 characters; empty for none; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_description(uint32_t pon_port, uint32_t onu_id, const char *text);

/** @} */

/**
 * @defgroup bsp_admission_binding ONU binding and unbinding
 * @{
 */
#define BSP_CMD_ONU_BIND_AUTO 364u /* BSP_MSG_PON: bind an ONU by MAC address, the service picks the ONU id */
#define BSP_CMD_ONU_BIND 365u /* BSP_MSG_PON: bind an ONU by MAC address to a given ONU id */
#define BSP_CMD_ONU_RELEASE 366u /* BSP_MSG_PON: release the binding of one ONU, by id, by MAC address, or by both */
#define BSP_CMD_ONU_RELEASE_BATCH 367u /* BSP_MSG_PON: release a batch of bindings described by the caller's record */
#define BSP_CMD_ONU_REBOOT_BATCH 368u /* BSP_MSG_PON: reboot a batch of ONUs described by the caller's record */
#define BSP_CMD_ONU_RELEASE_ALL 369u /* BSP_MSG_PON: release all bindings of a PON port */
#define BSP_CMD_ONU_RELEASE_OFFLINE 370u /* BSP_MSG_PON: release all bindings of offline ONUs of a PON port */
#define BSP_CMD_ONU_SORT_BATCH 423u /* BSP_MSG_PON: re-sort a batch of ONUs described by the caller's record */
#define BSP_CMD_OPT_RANGE_SET 424u /* BSP_MSG_PON: set the optical ranging limits from the caller's record */
#define BSP_CMD_ONU_SUPPORT_SET 764u /* BSP_MSG_PON: set whether an ONU, named by its MAC address, is supported */

/**
 * Sends a free-form PON configuration command.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param cmd command code
 * @param pon_port PON port number
 * @param data configuration block, read only; may be null: nothing is sent of it
 * @param length bytes of `data` to send, at most 515
 */
BSP_PON_API uint32_t bsp_pon_cfg(uint32_t cmd, uint32_t pon_port, const void *data, uint32_t length);

/**
 * Sends a record that the caller built, as it stands, as a PON configuration command.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param record the request, 944 bytes with the command code in `cmd`; not changed
 */
BSP_PON_API uint32_t bsp_ponmsg_cfg_set(const bsp_pon_msg *record);

/**
 * Binds an ONU, named by its MAC address, to an ONU id that the service picks.
 *
 * BSP_CMD_ONU_BIND_AUTO (364) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * The first text goes to the later field of the record: the order of the texts is that of the arguments, not of the
 * record.
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param text_a first bind text, at most 127 characters; null leaves the field empty
 * @param text_b second bind text, at most 63 characters; null leaves the field empty
 * @param value bind mode, any number: the simulated service keeps and shows it, and nothing follows from it
 * @param text_c third bind text, at most 63 characters; null leaves the field empty
 */
BSP_PON_API uint32_t bsp_pon_bind_onu_auto_id(uint32_t pon_port, const uint8_t *mac, const char *text_a,
                                              const char *text_b, uint32_t value, const char *text_c);

/**
 * Sets whether an ONU, named by its MAC address, is supported.
 *
 * BSP_CMD_ONU_SUPPORT_SET (764) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param value support flag: 1 supported, 0 not
 */
BSP_PON_API uint32_t bsp_pon_onu_support_set(uint32_t pon_port, const uint8_t *mac, uint32_t value);

/**
 * Binds an ONU, named by its MAC address, to a given ONU id.
 *
 * BSP_CMD_ONU_BIND (365) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * The first text goes to the later field of the record: the order of the texts is that of the arguments, not of the
 * record.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param text_a first bind text, at most 127 characters; null leaves the field empty
 * @param text_b second bind text, at most 63 characters; null leaves the field empty
 * @param value bind mode, any number: the simulated service keeps and shows it, and nothing follows from it
 * @param text_c third bind text, at most 63 characters; null leaves the field empty
 */
BSP_PON_API uint32_t bsp_pon_bind_onu_spec_id(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac,
                                              const char *text_a, const char *text_b, uint32_t value,
                                              const char *text_c);

/**
 * Releases the binding of one ONU, named by its ONU id.
 *
 * BSP_CMD_ONU_RELEASE (366) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_spec_id(uint32_t pon_port, uint32_t onu_id);

/**
 * Releases the binding of one ONU, named by its ONU id and its MAC address.
 *
 * BSP_CMD_ONU_RELEASE (366) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * Unlike in bsp_pon_no_bind_onu_by_mac, the MAC pointer is not checked: it must be valid.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param mac ONU MAC address, 6 bytes in transmission order
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_spec_id_and_mac(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac);

/**
 * Releases the binding of one ONU, named by its MAC address.
 *
 * BSP_CMD_ONU_RELEASE (366) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_by_mac(uint32_t pon_port, const uint8_t *mac);

/**
 * Releases all bindings of a PON port.
 *
 * BSP_CMD_ONU_RELEASE_ALL (369) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param pon_port PON port number
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_all(uint32_t pon_port);

/**
 * Releases the bindings of all offline ONUs of a PON port.
 *
 * BSP_CMD_ONU_RELEASE_OFFLINE (370) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param pon_port PON port number
 */
BSP_PON_API uint32_t bsp_pon_no_bind_offline_onu_all(uint32_t pon_port);

/**
 * Releases a batch of bindings.
 *
 * BSP_CMD_ONU_RELEASE_BATCH (367) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param record which ONUs, 944 bytes; copied, not changed, its `cmd` is not used
 */
BSP_PON_API uint32_t bsp_pon_no_bind_onu_batch_spec_id(const bsp_pon_msg *record);

/**
 * Reboots a batch of ONUs.
 *
 * BSP_CMD_ONU_REBOOT_BATCH (368) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param record which ONUs, 944 bytes; copied, not changed, its `cmd` is not used
 */
BSP_PON_API uint32_t bsp_pon_reboot_onu_batch(const bsp_pon_msg *record);

/**
 * Re-sorts a batch of ONUs.
 *
 * BSP_CMD_ONU_SORT_BATCH (423) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param record which ONUs, 944 bytes; copied, not changed, its `cmd` is not used
 */
BSP_PON_API uint32_t bsp_pon_onu_batch_sort(const bsp_pon_msg *record);

/**
 * Sets the optical ranging limits.
 *
 * BSP_CMD_OPT_RANGE_SET (424) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param record the limits, 944 bytes; copied, not changed, its `cmd` is not used
 */
BSP_PON_API uint32_t bsp_pon_set_opt_range(const bsp_pon_msg *record);

/** @} */

/**
 * @defgroup bsp_admission_lists Whitelist and blacklist
 * @{
 */
#define BSP_CMD_BLACKLIST_ADD_AUTO 371u /* BSP_MSG_PON: put an ONU, named by its MAC address, on the blacklist; the service picks the id there */
#define BSP_CMD_BLACKLIST_REJECT 372u /* BSP_MSG_PON: put the ONU that is bound to an ONU id on the blacklist */
#define BSP_CMD_BLACKLIST_REJECT_BATCH 373u /* BSP_MSG_PON: put a batch of ONUs, described by the caller's record, on the blacklist */
#define BSP_CMD_BLACKLIST_REMOVE 374u /* BSP_MSG_PON: take an ONU, named by its MAC address, off the blacklist */
#define BSP_CMD_BLACKLIST_REMOVE_BATCH 375u /* BSP_MSG_PON: take a batch of ONUs, described by the caller's record, off the blacklist */
#define BSP_CMD_WHITELIST_GET 381u /* BSP_MSG_PON: look up one ONU of the whitelist, by id or by MAC address */
#define BSP_CMD_WHITELIST_IDS 390u /* BSP_MSG_PON: which ONU ids of a port are in use on the whitelist */
#define BSP_CMD_BLACKLIST_GET 391u /* BSP_MSG_PON: the blacklist: whole, of a port, or one ONU by id or by MAC address */
#define BSP_CMD_VIEW_BLACKLIST_SNMP 392u /* BSP_MSG_PON: the blacklist of the whole OLT, for the SNMP agent */
#define BSP_CMD_VIEW_BLACKLIST_WEB 393u /* BSP_MSG_PON: the blacklist of one PON port, or of all for port 0, for the web server */
#define BSP_CMD_BLACKLIST_IDS 394u /* BSP_MSG_PON: which ids of a port are in use on the blacklist */

/**
 * Puts an ONU, named by its MAC address, on the blacklist; the service picks the id there.
 *
 * BSP_CMD_BLACKLIST_ADD_AUTO (371) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param text free text of the entry, at most 514 characters; null leaves the field empty
 */
BSP_PON_API uint32_t bsp_pon_blacklist_add_onu_auto_id(uint32_t pon_port, const uint8_t *mac, const char *text);

/**
 * Puts the ONU that is bound to an ONU id on the blacklist.
 *
 * BSP_CMD_BLACKLIST_REJECT (372) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_reject_onu_to_blacklist(uint32_t pon_port, uint32_t onu_id);

/**
 * Puts a batch of ONUs on the blacklist.
 *
 * BSP_CMD_BLACKLIST_REJECT_BATCH (373) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param record which ONUs, 944 bytes; copied, not changed, its `cmd` is not used; must not be null
 */
BSP_PON_API uint32_t bsp_pon_reject_onu_to_blacklist_batch(const bsp_pon_msg *record);

/**
 * Takes an ONU, named by its MAC address, off the blacklist.
 *
 * BSP_CMD_BLACKLIST_REMOVE (374) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 */
BSP_PON_API uint32_t bsp_pon_no_bind_blacklist_onu_by_mac(uint32_t pon_port, const uint8_t *mac);

/**
 * Takes a batch of ONUs off the blacklist.
 *
 * BSP_CMD_BLACKLIST_REMOVE_BATCH (375) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * Unlike bsp_pon_reject_onu_to_blacklist_batch, it sends the caller's own record.
 * @param record which ONUs, 944 bytes; its `cmd` becomes the command code and stays so; must not be null
 */
BSP_PON_API uint32_t bsp_pon_no_bind_blacklist_batch(bsp_pon_msg *record);

/**
 * Looks up one ONU of the whitelist, named by its ONU id.
 *
 * BSP_CMD_WHITELIST_GET (381) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param resp room for 776 bytes, receives the answer, a bsp_pon_msg as far as that goes; may be null: the answer is
 *        dropped
 */
BSP_PON_API uint32_t bsp_pon_get_w_onu_spec_id(uint32_t pon_port, uint32_t onu_id, void *resp);

/**
 * Looks up one ONU of the whitelist, named by its MAC address.
 *
 * BSP_CMD_WHITELIST_GET (381) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param resp room for 776 bytes, receives the answer, a bsp_pon_msg as far as that goes; may be null: the answer is
 *        dropped
 */
BSP_PON_API uint32_t bsp_pon_get_w_onu_by_mac(uint32_t pon_port, const uint8_t *mac, void *resp);

/**
 * Asks which ONU ids of a port are in use on the whitelist.
 *
 * BSP_CMD_WHITELIST_IDS (390) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param resp room for 944 bytes, receives the answer, a bsp_pon_msg; must not be null
 */
BSP_PON_API uint32_t bsp_pon_get_w_onu_id_resouce(uint32_t pon_port, void *resp);

/**
 * Asks which ids of a port are in use on the blacklist.
 *
 * BSP_CMD_BLACKLIST_IDS (394) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param resp room for 944 bytes, receives the answer, a bsp_pon_msg; must not be null
 */
BSP_PON_API uint32_t bsp_pon_get_b_onu_id_resouce(uint32_t pon_port, void *resp);

/**
 * Asks for the blacklist, as the caller's record selects it, as a result database of at most 1048576 bytes.
 *
 * BSP_CMD_BLACKLIST_GET (391) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param record PON port, ONU id or MAC address as wanted, 944 bytes; its `cmd` becomes the command code and stays so
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_onu_blacklist(bsp_pon_msg *record, db_handle **db_out);

/**
 * Asks for one ONU of the blacklist, named by its id there, as a result database of at most 1048576 bytes.
 *
 * BSP_CMD_BLACKLIST_GET (391) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param record 944 bytes, of which only `pon_port` and `onu_id` are used; not changed
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_b_onu_spec_id(const bsp_pon_msg *record, db_handle **db_out);

/**
 * Asks for one ONU of the blacklist, named by its MAC address, as a result database of at most 1048576 bytes.
 *
 * BSP_CMD_BLACKLIST_GET (391) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param mac ONU MAC address, 6 bytes in transmission order; must not be null
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_b_onu_by_mac(uint32_t pon_port, const uint8_t *mac, db_handle **db_out);

/**
 * Asks for the blacklist of the whole OLT, for the SNMP agent.
 *
 * BSP_CMD_VIEW_BLACKLIST_SNMP (392) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 */
BSP_PON_API uint32_t bsp_pon_get_onu_blacklist_snmp(db_handle **db_out);

/**
 * Asks for the blacklist of a PON port, for the web server.
 *
 * BSP_CMD_VIEW_BLACKLIST_WEB (393) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 * @param record `pon_port` as wanted, 944 bytes; its `cmd` becomes the command code and stays so
 */
BSP_PON_API uint32_t bsp_pon_get_onu_blacklist_web(db_handle **db_out, bsp_pon_msg *record);

/** @} */

/**
 * @defgroup bsp_generic_passthrough Generic pass-through
 * @{
 */

/**
 * Sends a record that the caller built and takes the answer in the same record.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param record in: the request, 944 bytes with the command code in `cmd`; out: what the service answered, from the
 *        first byte on
 */
BSP_PON_API uint32_t bsp_pon_exec_get(bsp_pon_msg *record);

/**
 * Sends a record that the caller built, as it stands.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param record the request, 944 bytes with the command code in `cmd`; not changed
 */
BSP_PON_API uint32_t bsp_pon_exec_set(const bsp_pon_msg *record);

/**
 * Asks for a small view of a PON port, at most 10240 bytes, as a result database.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * Differs from bsp_pon_exec_get_json_ in the bound alone.
 * @param cmd command code of the view, and the key of its result
 * @param pon_port PON port number
 * @param spare ignored
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_exec_get_json(uint32_t cmd, uint32_t pon_port, uint32_t spare, db_handle **db_out);

/**
 * Asks for a large view of a PON port, at most 1048576 bytes, as a result database.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * Differs from bsp_pon_exec_get_json in the bound alone.
 * @param cmd command code of the view, and the key of its result
 * @param pon_port PON port number
 * @param spare ignored
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_exec_get_json_(uint32_t cmd, uint32_t pon_port, uint32_t spare, db_handle **db_out);

/**
 * Asks for a view of a PON port that the service leaves in a file, and returns the file's name.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * The file is the caller's to remove.
 * @param cmd command code of the view
 * @param pon_port PON port number
 * @param name_out room for 515 bytes, receives the file's name, NUL-terminated; null for none
 */
BSP_PON_API uint32_t bsp_pon_exec_get_file(uint32_t cmd, uint32_t pon_port, char *name_out);

/**
 * Asks for a large view of one ONU, at most 1048576 bytes, as a result database.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param cmd command code of the view, and the key of its result
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param spare ignored
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_exec_get_onu_json(uint32_t cmd, uint32_t pon_port, uint32_t onu_id, uint32_t spare,
                                               db_handle **db_out);

/** @} */

/**
 * @defgroup bsp_generic_views Stored views
 * A failed exchange is reported where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_ONU_INFO_GET 381u /* BSP_MSG_PON: ONU information, by datagram: of one ONU by id or MAC address, of one PON port, or of all */
#define BSP_CMD_VIEW_ONU_INFO_SNMP 383u /* BSP_MSG_PON: ONU information of the whole OLT, for the SNMP agent */
#define BSP_CMD_VIEW_ONU_INFO_WEB 384u /* BSP_MSG_PON: ONU information of one PON port, or of all for port 0, for the web server */
#define BSP_CMD_VIEW_ONU_CAP_SNMP 385u /* BSP_MSG_PON: capabilities of the bound ONUs of the whole OLT, for the SNMP agent */
#define BSP_CMD_VIEW_BASE_INFO_WEB 386u /* BSP_MSG_PON: base information of one PON port, or of all for port 0, for the web server */
#define BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB 387u /* BSP_MSG_PON: what an upgrade must know of the bound ONUs of one PON port, or of all for port 0, for the web server */
#define BSP_CMD_VIEW_ONU_ALARM 388u /* BSP_MSG_PON: alarms of one ONU, of one PON port, or of all for port 0 */
#define BSP_CMD_ONU_ALARM_CLEAR 389u /* BSP_MSG_PON: clear alarms of one ONU, of one PON port, or of all for port 0 */
#define BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP 395u /* BSP_MSG_PON: attributes of the UNI ports of the whole OLT, for the SNMP agent */
#define BSP_CMD_VIEW_ONU_CONFIG 709u /* BSP_MSG_ONU_CFG: configuration of one ONU */
#define BSP_CMD_VIEW_ONU_PORT_CONFIG 710u /* BSP_MSG_ONU_CFG: configuration of the UNI ports of one ONU */
#define BSP_CMD_VIEW_VLAN_MODE_SNMP 787u /* BSP_MSG_ONU_SNMP: VLAN modes of UNI ports, for the SNMP agent */
#define BSP_CMD_VIEW_VLAN_LIST_SNMP 788u /* BSP_MSG_ONU_SNMP: VLANs of UNI ports, for the SNMP agent */

/**
 * Asks for a view of the PON channel, at most 1048576 bytes, by a record that the caller built.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param db_out the result database
 * @param record the request, 944 bytes with the command code of the view in `cmd`, which is also the key of its
 *        result; not changed
 */
BSP_PON_API uint32_t bsp_pon_config_by_db(db_handle **db_out, const bsp_pon_msg *record);

/**
 * Asks for a view of remote-ONU configuration, at most 10240 bytes, by a record that the caller built.
 *
 * The caller's command on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param db_out the result database
 * @param record the request, 1888 bytes with the command code of the view in `onu_cmd`, which is also the key of its
 *        result; not changed
 */
BSP_PON_API uint32_t bsp_pononu_ctc_config_by_db(db_handle **db_out, const bsp_onu_msg *record);

/**
 * Asks for a view of the OLT's platform, at most 10240 bytes, by a record that the caller built.
 *
 * The caller's command on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param db_out the result database
 * @param record the request, 1148 bytes with the command code of the view in `plat_cmd`, which is also the key of its
 *        result; not changed
 */
BSP_PON_API uint32_t bsp_pon_platform_by_db(db_handle **db_out, const bsp_plat_msg *record);

/**
 * Asks for ONU information, by datagram, as a result database of at most 1048576 bytes.
 *
 * BSP_CMD_ONU_INFO_GET (381) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param db_out the result database
 * @param record `pon_port`, `onu_id` and `onu_mac` as wanted, 944 bytes; its `cmd` becomes the command code and stays
 *        so
 */
BSP_PON_API uint32_t bsp_pon_get_onu_info(db_handle **db_out, bsp_pon_msg *record);

/**
 * Asks for ONU information of the whole OLT, for the SNMP agent.
 *
 * BSP_CMD_VIEW_ONU_INFO_SNMP (383) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 */
BSP_PON_API uint32_t bsp_pon_get_onu_info_snmp(db_handle **db_out);

/**
 * Asks for ONU information of a PON port, for the web server.
 *
 * BSP_CMD_VIEW_ONU_INFO_WEB (384) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 * @param record `pon_port` as wanted, 944 bytes; its `cmd` becomes the command code and stays so
 */
BSP_PON_API uint32_t bsp_pon_get_onu_info_web(db_handle **db_out, bsp_pon_msg *record);

/**
 * Asks for the capabilities of the bound ONUs of the whole OLT, for the SNMP agent.
 *
 * BSP_CMD_VIEW_ONU_CAP_SNMP (385) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 */
BSP_PON_API uint32_t bsp_pon_get_onu_cap_snmp(db_handle **db_out);

/**
 * Asks for base information of the OLT's PON ports, for the web server.
 *
 * BSP_CMD_VIEW_BASE_INFO_WEB (386) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 * @param record `pon_port` as wanted, 944 bytes; its `cmd` becomes the command code and stays so
 */
BSP_PON_API uint32_t bsp_pon_get_base_info_web(db_handle **db_out, bsp_pon_msg *record);

/**
 * Asks for what an upgrade must know of the bound ONUs of a PON port, for the web server.
 *
 * BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB (387) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 * @param record `pon_port` as wanted, 944 bytes; its `cmd` becomes the command code and stays so
 */
BSP_PON_API uint32_t bsp_pon_get_upgrade_base_info_web(db_handle **db_out, bsp_pon_msg *record);

/**
 * Asks for alarms of ONUs.
 *
 * BSP_CMD_VIEW_ONU_ALARM (388) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 * @param record `pon_port` and `onu_id` as wanted, 944 bytes; its `cmd` becomes the command code and stays so
 */
BSP_PON_API uint32_t bsp_pon_get_onu_alarm(db_handle **db_out, bsp_pon_msg *record);

/**
 * Clears alarms of ONUs.
 *
 * BSP_CMD_ONU_ALARM_CLEAR (389) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write. A failed exchange is passed.
 * @param record `pon_port`, `onu_id` and the alarm as wanted, 944 bytes; its `cmd` becomes the command code and stays
 *        so; must not be null
 */
BSP_PON_API uint32_t bsp_pon_clear_onu_alarm(bsp_pon_msg *record);

/**
 * Asks for the attributes of the UNI ports of the whole OLT, for the SNMP agent.
 *
 * BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP (395) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read, by bsp_pon_config_by_db.
 * @param db_out the result database, at most 1048576 bytes
 */
BSP_PON_API uint32_t bsp_pon_get_uni_attribute_snmp(db_handle **db_out);

/**
 * Asks for the configuration of one ONU, which comes as a text in the answer, as a result database.
 *
 * BSP_CMD_VIEW_ONU_CONFIG (709) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param db_out the result database
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @return BSP_OK after every exchange that succeeded: the service's status word is dropped.
 */
BSP_PON_API uint32_t bsp_pon_onu_get_cfg_info(db_handle **db_out, uint32_t pon_port, uint32_t onu_id);

/**
 * Asks for the configuration of the UNI ports of one ONU.
 *
 * BSP_CMD_VIEW_ONU_PORT_CONFIG (710) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read, by
 * bsp_pononu_ctc_config_by_db.
 * @param db_out the result database, at most 10240 bytes
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_onu_get_portcfg_info(db_handle **db_out, uint32_t pon_port, uint32_t onu_id);

/**
 * Has a view of remote ONUs prepared for the SNMP agent. Its result is taken, at most 10240 bytes, and dropped: only
 * the status reaches the caller.
 *
 * The caller's command on BSP_MSG_ONU_SNMP, bsp_onu_msg of 1888 bytes; read.
 * @param db_out ignored; never written, may be null
 * @param record the request, 1888 bytes with the command code of the view in `onu_cmd`, which is also the key of its
 *        result; not changed
 */
BSP_PON_API uint32_t bsp_pononu_ctc_config_snmp_get(db_handle **db_out, const bsp_onu_msg *record);

/**
 * Has the VLAN modes of UNI ports prepared for the SNMP agent; only the status reaches the caller.
 *
 * BSP_CMD_VIEW_VLAN_MODE_SNMP (787) on BSP_MSG_ONU_SNMP, bsp_onu_msg of 1888 bytes; read, by
 * bsp_pononu_ctc_config_snmp_get.
 * @param db_out ignored; never written, may be null
 */
BSP_PON_API uint32_t bsp_pon_onu_get_vlan_mode_snmp(db_handle **db_out);

/**
 * Has the VLANs of UNI ports prepared for the SNMP agent; only the status reaches the caller.
 *
 * BSP_CMD_VIEW_VLAN_LIST_SNMP (788) on BSP_MSG_ONU_SNMP, bsp_onu_msg of 1888 bytes; read, by
 * bsp_pononu_ctc_config_snmp_get.
 * @param db_out ignored; never written, may be null
 */
BSP_PON_API uint32_t bsp_pon_onu_get_vlanlist_snmp(db_handle **db_out);

/** @} */

/**
 * @defgroup bsp_upgrade_upgrade Upgrade types and upgrade runs
 * @{
 */
#define BSP_CMD_UPGRADE_TYPE_ADD 790u /* BSP_MSG_UPGRADE: add an upgrade type */
#define BSP_CMD_UPGRADE_TYPE_DELETE 791u /* BSP_MSG_UPGRADE: delete an upgrade type */
#define BSP_CMD_UPGRADE_TYPE_LIST 792u /* BSP_MSG_UPGRADE: the upgrade types */
#define BSP_CMD_UPGRADE_TYPE_LOAD 793u /* BSP_MSG_UPGRADE: load the upgrade types from a file */
#define BSP_CMD_UPGRADE_TYPE_BIND_ONUS 795u /* BSP_MSG_UPGRADE: bind an upgrade type to some ONUs */
#define BSP_CMD_UPGRADE_TYPE_BIND_PORT 796u /* BSP_MSG_UPGRADE: bind an upgrade type to the ONUs of a PON port */
#define BSP_CMD_UPGRADE_ONU 797u /* BSP_MSG_UPGRADE: upgrade one ONU */
#define BSP_CMD_UPGRADE_PORT 798u /* BSP_MSG_UPGRADE: upgrade the ONUs of a PON port */

/**
 * Adds an upgrade type: which firmware goes to which kind of ONU.
 *
 * BSP_CMD_UPGRADE_TYPE_ADD (790) on BSP_MSG_UPGRADE, bsp_pon_msg_ext of 1044 bytes; write.
 * @param block 400 bytes, read only: the upgrade type
 */
BSP_PON_API uint32_t bsp_pon_set_onu_upgrade_type_add(const void *block);

/**
 * Deletes an upgrade type.
 *
 * BSP_CMD_UPGRADE_TYPE_DELETE (791) on BSP_MSG_UPGRADE, bsp_pon_msg_ext of 1044 bytes; write.
 * @param block 400 bytes, read only: the upgrade type
 */
BSP_PON_API uint32_t bsp_pon_set_onu_upgrade_type_del(const void *block);

/**
 * Asks for the upgrade types as a result database of at most 10240 bytes.
 *
 * BSP_CMD_UPGRADE_TYPE_LIST (792) on BSP_MSG_UPGRADE, bsp_pon_msg_ext of 1044 bytes; read.
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_onu_upgrade_type(db_handle **db_out);

/**
 * Loads the upgrade types from a file.
 *
 * BSP_CMD_UPGRADE_TYPE_LOAD (793) on BSP_MSG_UPGRADE, bsp_pon_msg_ext of 1044 bytes; write.
 * @param block 400 bytes, read only: the file
 */
BSP_PON_API uint32_t bsp_pon_load_onu_upgrade_type_file(const void *block);

/**
 * Binds an upgrade type to some ONUs.
 *
 * BSP_CMD_UPGRADE_TYPE_BIND_ONUS (795) on BSP_MSG_UPGRADE, bsp_pon_msg_ext of 1044 bytes; write.
 * @param block 400 bytes, read only: the upgrade type and the ONUs
 */
BSP_PON_API uint32_t bsp_pon_onu_upgrade_type_bind_some(const void *block);

/**
 * Binds an upgrade type to the ONUs of a PON port.
 *
 * BSP_CMD_UPGRADE_TYPE_BIND_PORT (796) on BSP_MSG_UPGRADE, bsp_pon_msg_ext of 1044 bytes; write.
 * @param block 400 bytes, read only: the upgrade type and the port
 */
BSP_PON_API uint32_t bsp_pon_onu_upgrade_type_bind_ponport(const void *block);

/**
 * Starts the upgrade of one ONU.
 *
 * BSP_CMD_UPGRADE_ONU (797) on BSP_MSG_UPGRADE, bsp_pon_msg_ext of 1044 bytes; service-affecting.
 * @param block 400 bytes, read only: the ONU
 */
BSP_PON_API uint32_t bsp_pon_onu_upgrade_one(const void *block);

/**
 * Starts the upgrade of the ONUs of a PON port.
 *
 * BSP_CMD_UPGRADE_PORT (798) on BSP_MSG_UPGRADE, bsp_pon_msg_ext of 1044 bytes; service-affecting.
 * @param block 400 bytes, read only: the port
 */
BSP_PON_API uint32_t bsp_pon_onu_upgrade_ponport(const void *block);

/** @} */

/**
 * @defgroup bsp_loopdetect_loopdetect Loop detection
 * A failed exchange is reported where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_LOOP_STATE_SET 779u /* BSP_MSG_LOOP_DETECT: switch loop detection on or off */
#define BSP_CMD_LOOP_RECOVER_MODE_SET 780u /* BSP_MSG_LOOP_DETECT: set how ports recover from a loop */
#define BSP_CMD_LOOP_RECOVER 781u /* BSP_MSG_LOOP_DETECT: recover the ports that a loop shut down, now */
#define BSP_CMD_LOOP_RECOVER_TIME_SET 782u /* BSP_MSG_LOOP_DETECT: set after which time ports recover from a loop */
#define BSP_CMD_LOOP_INTERVAL_SET 783u /* BSP_MSG_LOOP_DETECT: set the interval between detection packets */
#define BSP_CMD_LOOP_INFO 784u /* BSP_MSG_LOOP_DETECT: what loop detection has found */
#define BSP_CMD_LOOP_CONFIG_GET 785u /* BSP_MSG_LOOP_DETECT: the settings of loop detection */

/**
 * Switches loop detection on or off.
 *
 * BSP_CMD_LOOP_STATE_SET (779) on BSP_MSG_LOOP_DETECT, bsp_pon_msg_ext of 1044 bytes; service-affecting.
 * @param state 1 on, 0 off, as the simulated service has it; sent as a word
 */
BSP_PON_API uint32_t bsp_pon_loop_detect_status(uint8_t state);

/**
 * Sets how ports that a loop shut down recover.
 *
 * BSP_CMD_LOOP_RECOVER_MODE_SET (780) on BSP_MSG_LOOP_DETECT, bsp_pon_msg_ext of 1044 bytes; write.
 * @param mode 0 automatically after the recovery time, 1 by command only, as the simulated service has it; sent as a
 *        word
 */
BSP_PON_API uint32_t bsp_pon_loop_detect_recover_mode(uint8_t mode);

/**
 * Recovers the ports that a loop shut down, now.
 *
 * BSP_CMD_LOOP_RECOVER (781) on BSP_MSG_LOOP_DETECT, bsp_pon_msg_ext of 1044 bytes; service-affecting.
 */
BSP_PON_API uint32_t bsp_pon_loop_detect_recover_manual(void);

/**
 * Sets after which time ports that a loop shut down recover.
 *
 * BSP_CMD_LOOP_RECOVER_TIME_SET (782) on BSP_MSG_LOOP_DETECT, bsp_pon_msg_ext of 1044 bytes; write.
 * @param time the recovery time, of the simulated service in seconds, 10 to 86400
 */
BSP_PON_API uint32_t bsp_pon_loop_detect_recover_time(uint32_t time);

/**
 * Sets the interval between detection packets.
 *
 * BSP_CMD_LOOP_INTERVAL_SET (783) on BSP_MSG_LOOP_DETECT, bsp_pon_msg_ext of 1044 bytes; write.
 * @param interval the interval, of the simulated service in seconds, 1 to 600
 */
BSP_PON_API uint32_t bsp_pon_loop_detect_pkt_send_interval(uint32_t interval);

/**
 * Asks what loop detection has found, as a result database of at most 10240 bytes.
 *
 * BSP_CMD_LOOP_INFO (784) on BSP_MSG_LOOP_DETECT, bsp_pon_msg_ext of 1044 bytes; read.
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_loop_detect_info(db_handle **db_out);

/**
 * Asks for the settings of loop detection.
 *
 * BSP_CMD_LOOP_CONFIG_GET (785) on BSP_MSG_LOOP_DETECT, bsp_pon_msg_ext of 1044 bytes; read. A failed exchange is
 * silent.
 * @param cfg room for 80 bytes, receives the settings
 */
BSP_PON_API uint32_t bsp_pon_get_loop_detect_config(void *cfg);

/** @} */

/**
 * @defgroup bsp_debug_chip Chip debug and statistics
 * A failed exchange is reported where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_DEBUG_PON_STATS 237u /* BSP_MSG_DEBUG: counters of a PON port */
#define BSP_CMD_DEBUG_GE_STATS 238u /* BSP_MSG_DEBUG: counters of a GE port */
#define BSP_CMD_DEBUG_GE_PHY_GET 239u /* BSP_MSG_DEBUG: PHY of a GE port */
#define BSP_CMD_DEBUG_GE_PHY_SET 240u /* BSP_MSG_DEBUG: set the PHY of a GE port */
#define BSP_CMD_DEBUG_INGRESS_GET 241u /* BSP_MSG_DEBUG: ingress behaviour of a port */
#define BSP_CMD_DEBUG_EGRESS_GET 242u /* BSP_MSG_DEBUG: egress behaviour of a port */
#define BSP_CMD_DEBUG_PON_MAC_GET 243u /* BSP_MSG_DEBUG: MAC of a PON port */
#define BSP_CMD_DEBUG_PON_PHY_GET 244u /* BSP_MSG_DEBUG: PHY of a PON port */
#define BSP_CMD_DEBUG_PON_LASER_GET 245u /* BSP_MSG_DEBUG: laser state of a PON port */
#define BSP_CMD_DEBUG_GE_MAC_GET 246u /* BSP_MSG_DEBUG: MAC of a GE port */
#define BSP_CMD_DEBUG_XAUI_MAC_GET 247u /* BSP_MSG_DEBUG: MAC of a XAUI interface */
#define BSP_CMD_DEBUG_XAUI_PHY_GET 248u /* BSP_MSG_DEBUG: PHY of a XAUI interface */
#define BSP_CMD_DEBUG_I2C_READ 251u /* BSP_MSG_DEBUG: read bytes from the I2C bus */
#define BSP_CMD_DEBUG_I2C_WRITE 252u /* BSP_MSG_DEBUG: write bytes to the I2C bus */
#define BSP_CMD_DEBUG_FDB_DUMP 253u /* BSP_MSG_DEBUG: have the chip's forwarding database dumped */
#define BSP_CMD_DEBUG_MGMT_CFG_GET 259u /* BSP_MSG_DEBUG: configuration of a management port */
#define BSP_CMD_DEBUG_CTC_OAM 261u /* BSP_MSG_DEBUG: switch debug output of CTC OAM */
#define BSP_CMD_DEBUG_ONU 262u /* BSP_MSG_DEBUG: switch debug output of ONUs */
#define BSP_CMD_MPCP_SET 454u /* BSP_MSG_PLAT: set MPCP parameters of a PON port */
#define BSP_CMD_ONU_DEREGISTER 455u /* BSP_MSG_PLAT: deregister an ONU */
#define BSP_CMD_PORT_REREGISTER 456u /* BSP_MSG_PLAT: deregister the ONUs of a PON port and have them register again */

/**
 * Reads the counters of a PON port.
 *
 * BSP_CMD_DEBUG_PON_STATS (237) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 160 bytes, receives the counters
 */
BSP_PON_API uint32_t bsp_debug_8022_pon_stats(uint32_t port, void *out);

/**
 * Reads the counters of a GE port.
 *
 * BSP_CMD_DEBUG_GE_STATS (238) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 160 bytes, receives the counters
 */
BSP_PON_API uint32_t bsp_debug_8022_ge_stats(uint32_t port, void *out);

/**
 * Reads the PHY of a GE port.
 *
 * BSP_CMD_DEBUG_GE_PHY_GET (239) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 20 bytes, receives the registers
 */
BSP_PON_API uint32_t bsp_debug_plat_ge_phy_get(uint32_t port, void *out);

/**
 * Reads the ingress behaviour of a port.
 *
 * BSP_CMD_DEBUG_INGRESS_GET (241) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param selector whose behaviour, of the simulated service: 0 that of PON port `port`, 1 that of GE port `port`
 * @param out room for 54 bytes, receives the behaviour
 */
BSP_PON_API uint32_t bsp_debug_plat_ingress_behavior_get(uint32_t port, uint32_t selector, void *out);

/**
 * Reads the egress behaviour of a port.
 *
 * BSP_CMD_DEBUG_EGRESS_GET (242) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param selector whose behaviour, of the simulated service: 0 that of PON port `port`, 1 that of GE port `port`
 * @param out room for 8 bytes, receives the behaviour
 */
BSP_PON_API uint32_t bsp_debug_plat_egress_behavior_get(uint32_t port, uint32_t selector, void *out);

/**
 * Reads the MAC of a PON port.
 *
 * BSP_CMD_DEBUG_PON_MAC_GET (243) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 36 bytes, receives the registers
 */
BSP_PON_API uint32_t bsp_debug_plat_pon_mac_get(uint32_t port, void *out);

/**
 * Reads the PHY of a PON port.
 *
 * BSP_CMD_DEBUG_PON_PHY_GET (244) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 12 bytes, receives the registers
 */
BSP_PON_API uint32_t bsp_debug_plat_pon_phy_get(uint32_t port, void *out);

/**
 * Reads the laser state of a PON port.
 *
 * BSP_CMD_DEBUG_PON_LASER_GET (245) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 4 bytes, receives the state
 */
BSP_PON_API uint32_t bsp_debug_plat_pon_laser_get(uint32_t port, void *out);

/**
 * Reads the MAC of a GE port.
 *
 * BSP_CMD_DEBUG_GE_MAC_GET (246) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 22 bytes, receives the registers
 */
BSP_PON_API uint32_t bsp_debug_plat_ge_mac_get(uint32_t port, void *out);

/**
 * Reads the MAC of a XAUI interface.
 *
 * BSP_CMD_DEBUG_XAUI_MAC_GET (247) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 28 bytes, receives the registers
 */
BSP_PON_API uint32_t bsp_debug_plat_xaui_mac_get(uint32_t port, void *out);

/**
 * Reads the PHY of a XAUI interface.
 *
 * BSP_CMD_DEBUG_XAUI_PHY_GET (248) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 12 bytes, receives the registers
 */
BSP_PON_API uint32_t bsp_debug_plat_xaui_phy_get(uint32_t port, void *out);

/**
 * Reads the configuration of a management port.
 *
 * BSP_CMD_DEBUG_MGMT_CFG_GET (259) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param out room for 4 bytes, receives the configuration
 */
BSP_PON_API uint32_t bsp_debug_plat_mgmt_cfg_get(uint32_t port, void *out);

/**
 * Sets the PHY of a GE port.
 *
 * BSP_CMD_DEBUG_GE_PHY_SET (240) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param port port or interface number
 * @param value the setting, of the simulated service the upper byte of the PHY's control register: bit 7 reset, 6
 *        loopback, 4 auto-negotiation, 3 power down, 2 isolate, 1 restart auto-negotiation, 0 full duplex; sent as one
 *        byte
 */
BSP_PON_API uint32_t bsp_debug_plat_ge_phy_set(uint32_t port, uint8_t value);

/**
 * Reads bytes from the I2C bus of a port.
 *
 * BSP_CMD_DEBUG_I2C_READ (251) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param port port or interface number
 * @param buf 144 bytes; in: what is to be read; out: what was answered
 */
BSP_PON_API uint32_t bsp_debug_8022_i2c_read(uint32_t port, void *buf);

/**
 * Writes bytes to the I2C bus of a port.
 *
 * BSP_CMD_DEBUG_I2C_WRITE (252) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param port port or interface number
 * @param spare ignored
 * @param buf 144 bytes, read only: where to write, and what
 */
BSP_PON_API uint32_t bsp_debug_8022_i2c_write(uint32_t port, uint32_t spare, const void *buf);

/**
 * Has the chip's forwarding database dumped; nothing but the status comes back.
 *
 * BSP_CMD_DEBUG_FDB_DUMP (253) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * The selector comes before the port.
 * @param selector which entries, of the simulated service: 0 all, 1 dynamic ones, 2 static ones
 * @param port port number
 */
BSP_PON_API uint32_t bsp_debug_cs8022_get_fdb(uint32_t selector, uint32_t port);

/**
 * Switches debug output of CTC OAM.
 *
 * BSP_CMD_DEBUG_CTC_OAM (261) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; write.
 * @param first 1 on, 0 off, as the simulated service has it
 * @param second PON port number, as the simulated service has it; 0 all
 */
BSP_PON_API uint32_t bsp_debug_ctc_oam(uint32_t first, uint32_t second);

/**
 * Switches debug output of ONUs.
 *
 * BSP_CMD_DEBUG_ONU (262) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; write.
 * @param first 1 on, 0 off, as the simulated service has it
 * @param second PON port number, as the simulated service has it; 0 all
 */
BSP_PON_API uint32_t bsp_debug_onu_debug(uint32_t first, uint32_t second);

/**
 * Sends a record that the caller built, as it stands, to the chip's debug service.
 *
 * The caller's command on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; write.
 * @param record the request, 1148 bytes with the command code in `plat_cmd`; not changed; must not be null
 */
BSP_PON_API uint32_t bsp_debug_cs8022_set(const bsp_plat_msg *record);

/**
 * Sends a record that the caller built, as it stands, to the chip's debug service, and takes the answer.
 *
 * The caller's command on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read. A failed exchange is passed.
 * A null pointer is logged at debug level.
 * @param record the request, 1148 bytes with the command code in `plat_cmd`; not changed; must not be null
 * @param resp room for 1148 bytes, receives the answer, a bsp_plat_msg; must not be null
 */
BSP_PON_API uint32_t bsp_debug_cs8022_get(const bsp_plat_msg *record, void *resp);

/**
 * Sets MPCP parameters of a PON port.
 *
 * BSP_CMD_MPCP_SET (454) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param pon_port PON port number
 * @param value which parameters, of the simulated service: 1 discovery, 2 timeouts, 3 grants
 * @param data 32 bytes, read only: the parameters
 */
BSP_PON_API uint32_t bsp_debug_8022_mpcp_set(uint32_t pon_port, uint32_t value, const void *data);

/**
 * Deregisters an ONU.
 *
 * BSP_CMD_ONU_DEREGISTER (455) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_8022_deregister_onu(uint32_t pon_port, uint32_t onu_id);

/**
 * Deregisters the ONUs of a PON port and has them register again.
 *
 * BSP_CMD_PORT_REREGISTER (456) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param pon_port PON port number
 */
BSP_PON_API uint32_t bsp_8022_deregister_onu_state_register(uint32_t pon_port);

/** @} */

/**
 * @defgroup bsp_platform_fdb FDB and MAC tables
 * @{
 */
#define BSP_CMD_FDB_CFG_SET 482u /* BSP_MSG_PLAT: configure the FDB */
#define BSP_CMD_FDB_FLUSH 483u /* BSP_MSG_PLAT: flush entries of the FDB */
#define BSP_CMD_MAC_AGE_GET 484u /* BSP_MSG_PLAT: the ageing of MAC addresses */
#define BSP_CMD_MAC_GET 485u /* BSP_MSG_PLAT: query the MAC table of the PON side */
#define BSP_CMD_MAC_NNI_GET 486u /* BSP_MSG_PLAT: query the MAC table of the network side (NNI) */

/**
 * Configures the FDB.
 *
 * BSP_CMD_FDB_CFG_SET (482) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param cfg 12 bytes, read only: the configuration
 */
BSP_PON_API uint32_t bsp_pon_plat_fdb_cfg_set(const void *cfg);

/**
 * Flushes entries of the FDB.
 *
 * BSP_CMD_FDB_FLUSH (483) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param filter 16 bytes, read only: which entries
 */
BSP_PON_API uint32_t bsp_pon_plat_fdb_flush(const void *filter);

/**
 * Reads the ageing of MAC addresses.
 *
 * BSP_CMD_MAC_AGE_GET (484) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param first receives the first value, from offset 120 of the answer
 * @param second receives the second value, from offset 112 of the answer
 */
BSP_PON_API uint32_t bsp_pon_plat_mac_age_get(uint32_t *first, uint32_t *second);

/**
 * Queries the MAC table of the PON side.
 *
 * BSP_CMD_MAC_GET (485) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param query 92 bytes, read only: which entries
 * @param result receives the result word
 */
BSP_PON_API uint32_t bsp_pon_plat_mac_get(const void *query, uint32_t *result);

/**
 * Queries the MAC table of the network side (NNI).
 *
 * BSP_CMD_MAC_NNI_GET (486) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param query 92 bytes, read only: which entries
 * @param result receives the result word
 */
BSP_PON_API uint32_t bsp_pon_plat_mac_nni_get(const void *query, uint32_t *result);

/** @} */

/**
 * @defgroup bsp_platform_functions Platform functions and PON settings
 * @{
 */

/**
 * Sends a platform command, as it stands.
 *
 * The caller's command on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; write.
 * @param record the request, 1148 bytes with the command code in `plat_cmd`; not changed
 */
BSP_PON_API uint32_t plat_bsp_funcset(const bsp_plat_msg *record);

/**
 * Sends a platform command and takes the answer in the same record.
 *
 * The caller's command on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param record in: the request, 1148 bytes with the command code in `plat_cmd`; out: what the service answered, from
 *        the first byte on
 */
BSP_PON_API uint32_t plat_bsp_funcget(bsp_plat_msg *record);

/**
 * Sends a platform command, takes the answer in the same record, and its result as a database of at most 10240 bytes.
 *
 * The caller's command on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param record in: the request, 1148 bytes with the command code in `plat_cmd`; out: what the service answered, from
 *        the first byte on
 * @param db_out the result database, under the command code that the answer carries
 */
BSP_PON_API uint32_t plat_bsp_funcget_json(bsp_plat_msg *record, db_handle **db_out);

/**
 * Sends a PON setting on the platform channel, as it stands.
 *
 * The caller's command on BSP_MSG_PLAT, bsp_pon_msg of 944 bytes; write.
 * @param record the request, 944 bytes with the command code in `cmd`; not changed
 */
BSP_PON_API uint32_t bsp_poncfg_set(const bsp_pon_msg *record);

/**
 * Sends a PON setting on the platform channel and takes the answer in the same record.
 *
 * The caller's command on BSP_MSG_PLAT, bsp_pon_msg of 944 bytes; read.
 * @param record in: the request, 944 bytes with the command code in `cmd`; out: what the service answered, from the
 *        first byte on
 */
BSP_PON_API uint32_t bsp_poncfg_get(bsp_pon_msg *record);

/**
 * Sends a command on the PON channel, takes the answer in the same record, and its result as a database of at most
 * 10240 bytes.
 *
 * The caller's command on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * Unlike its two neighbours, it goes by the PON channel.
 * @param record in: the request, 944 bytes with the command code in `cmd`; out: what the service answered, from the
 *        first byte on
 * @param db_out the result database, under the command code that the answer carries
 */
BSP_PON_API uint32_t bsp_poncfg_funcget_json(bsp_pon_msg *record, db_handle **db_out);

/** @} */

/**
 * @defgroup bsp_platform_optical_module LLID and optical module control
 * @{
 */
#define BSP_CMD_LLID_BEHAVIOR_SET 467u /* BSP_MSG_PLAT: set the behaviour of an LLID */
#define BSP_CMD_OPM_TRIGGER 478u /* BSP_MSG_PLAT: start an optical power measurement */
#define BSP_CMD_OPM_CANCEL 479u /* BSP_MSG_PLAT: cancel an optical power measurement */
#define BSP_CMD_LAO_MODE_SET 480u /* BSP_MSG_PLAT: set the LAO mode of an optical module */
#define BSP_CMD_LOL_MODE_SET 481u /* BSP_MSG_PLAT: set the LOL mode of an optical module */

/**
 * Sets the behaviour of an LLID.
 *
 * BSP_CMD_LLID_BEHAVIOR_SET (467) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param pon_port PON port number
 * @param llid LLID
 * @param behavior the behaviour, of the simulated service: 0 frames are forwarded and their addresses learned, 1 they
 *        are forwarded and nothing is learned, 2 they are dropped
 * @param params 24 bytes, read only: its parameters
 */
BSP_PON_API uint32_t bsp_llid_behavior_set(uint32_t pon_port, uint32_t llid, uint32_t behavior, const void *params);

/**
 * Starts an optical power measurement (OPM).
 *
 * BSP_CMD_OPM_TRIGGER (478) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; write.
 * @param pon_port PON port number
 * @param id id of the ONU whose light is measured, as the simulated service has it
 * @param params 12 bytes, read only: its parameters
 */
BSP_PON_API uint32_t bsp_om_opm_trigger_set(uint32_t pon_port, uint32_t id, const void *params);

/**
 * Cancels the optical power measurement (OPM) of a PON port.
 *
 * BSP_CMD_OPM_CANCEL (479) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; write.
 * @param pon_port PON port number
 */
BSP_PON_API uint32_t bsp_om_opm_cancel_set(uint32_t pon_port);

/**
 * Sets the LAO mode of a PON port's optical module.
 *
 * BSP_CMD_LAO_MODE_SET (480) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param pon_port PON port number
 * @param mode the mode, of the simulated service: 0 the laser obeys TX disable, 1 it stays on in spite of it
 * @param params 12 bytes, read only: its parameters
 */
BSP_PON_API uint32_t bsp_om_lao_mode_set(uint32_t pon_port, uint32_t mode, const void *params);

/**
 * Sets the LOL mode of a PON port's optical module.
 *
 * BSP_CMD_LOL_MODE_SET (481) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * Unlike bsp_om_lao_mode_set, it has a second selector before the mode.
 * @param pon_port PON port number
 * @param id the receiver, of which a module of the simulated service has one: 0
 * @param mode the mode, of the simulated service: 0 the low alarm threshold is the level, 1 the level is given
 * @param params 8 bytes, read only: its parameters
 */
BSP_PON_API uint32_t bsp_om_lol_mode_set(uint32_t pon_port, uint32_t id, uint32_t mode, const void *params);

/** @} */

/**
 * @defgroup bsp_platform_optics Optical diagnostics
 * @{
 */
#define BSP_CMD_OPTICS_STATUS_SET 454u /* BSP_MSG_PLAT: hand an optical status block to the PON chip's debug layer */
#define BSP_CMD_OPTICS_DIAG_GET 487u /* BSP_MSG_PLAT: digital diagnostics of a PON port's optical module */
#define BSP_CMD_OPTICS_RSSI_GET 488u /* BSP_MSG_PLAT: a received signal strength (RSSI) reading */
#define BSP_CMD_SFP_INFO_GET 489u /* BSP_MSG_PLAT: diagnostic information of an SFP cage, as a block */
#define BSP_CMD_VIEW_SFP_INFO 490u /* BSP_MSG_PLAT: diagnostic information of an SFP cage, as a table */

/**
 * Reads the digital diagnostics of a PON port's optical module.
 *
 * BSP_CMD_OPTICS_DIAG_GET (487) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param pon_port PON port number
 * @param out room for 56 bytes, receives the diagnostics
 */
BSP_PON_API uint32_t bsp_om_plat_diag_get(uint32_t pon_port, void *out);

/**
 * Takes a received signal strength (RSSI) reading.
 *
 * BSP_CMD_OPTICS_RSSI_GET (488) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param pon_port PON port number
 * @param id second selector, the ONU as a rule
 * @param sel which reading, of the simulated service: 0 what is received now, 1 what the last power measurement found
 * @param out room for 64 bytes, receives the reading
 */
BSP_PON_API uint32_t bsp_om_plat_diag_rssi_get(uint32_t pon_port, uint32_t id, uint32_t sel, void *out);

/**
 * Reads the diagnostic information of an SFP cage.
 *
 * BSP_CMD_SFP_INFO_GET (489) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param port SFP cage number
 * @param out room for 464 bytes, receives the information
 */
BSP_PON_API uint32_t bsp_sfp_diag_info_get(uint32_t port, void *out);

/**
 * Asks for the diagnostic information of an SFP cage as a result database of at most 10240 bytes.
 *
 * BSP_CMD_VIEW_SFP_INFO (490) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param port SFP cage number
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_sfp_diag_info_get_json(uint32_t port, db_handle **db_out);

/**
 * Hands an optical status block to the PON chip's debug layer.
 *
 * BSP_CMD_OPTICS_STATUS_SET (454) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; write.
 * It sends a block, and reads none.
 * @param pon_port PON port number
 * @param id ignored
 * @param status 32 bytes, read only: the status
 */
BSP_PON_API uint32_t bsp_debug_8022_optical_status(uint32_t pon_port, uint32_t id, const void *status);

/** @} */

/**
 * @defgroup bsp_platform_p2p P2P forwarding
 * @{
 */
#define BSP_CMD_P2P_STATE_SET 459u /* BSP_MSG_PLAT: switch P2P forwarding */
#define BSP_CMD_P2P_OWN_PORT_SET 460u /* BSP_MSG_PLAT: set the own port of P2P forwarding */
#define BSP_CMD_P2P_OWN_PORT_GET 461u /* BSP_MSG_PLAT: the own port of P2P forwarding */
#define BSP_CMD_P2P_STATE_GET 462u /* BSP_MSG_PLAT: the state of P2P forwarding */
#define BSP_CMD_P2P_ENTRY_SET 463u /* BSP_MSG_PLAT: set a forwarding entry */
#define BSP_CMD_P2P_CFG_SET 465u /* BSP_MSG_PLAT: configure P2P forwarding of a PON port */

/**
 * Switches P2P forwarding.
 *
 * BSP_CMD_P2P_STATE_SET (459) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param first PON port number, as the simulated service has it; 0 all
 * @param second ONU id, as the simulated service has it; 128 is the switch of the port itself
 * @param state 1 on, 0 off, as the simulated service has it; sent as a word
 */
BSP_PON_API uint32_t bsp_p2p_state_set(uint32_t first, uint32_t second, uint8_t state);

/**
 * Sets the own port of P2P forwarding.
 *
 * BSP_CMD_P2P_OWN_PORT_SET (460) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param pon_port PON port number
 * @param value the own port, of the simulated service: GE uplink 1 to 4 that takes what P2P forwarding leaves; 0 any
 */
BSP_PON_API uint32_t bsp_onu_p2p_own_port_set(uint32_t pon_port, uint32_t value);

/**
 * Reads the own port of P2P forwarding.
 *
 * BSP_CMD_P2P_OWN_PORT_GET (461) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param pon_port PON port number
 * @param value receives the own port
 */
BSP_PON_API uint32_t bsp_onu_p2p_own_port_get(uint32_t pon_port, uint32_t *value);

/**
 * Asks for the state of P2P forwarding, which comes as a text in the answer, as a result database.
 *
 * BSP_CMD_P2P_STATE_GET (462) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_p2p_state(db_handle **db_out);

/**
 * Sets a forwarding entry.
 *
 * BSP_CMD_P2P_ENTRY_SET (463) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * The word for offset 108 comes before that for offset 104.
 * @param pon_port PON port number
 * @param arg108 which traffic, of the simulated service: 0 all, or an ethertype from 1536 on
 * @param arg104 number of the entry, of the simulated service 0 to 31; the lowest that matches decides
 * @param entry 12 bytes, read only: the entry
 */
BSP_PON_API uint32_t bsp_p2p_entry_set(uint32_t pon_port, uint32_t arg108, uint32_t arg104, const void *entry);

/**
 * Sets a forwarding entry that matches everything: bsp_p2p_entry_set with a zero at offset 108.
 *
 * BSP_CMD_P2P_ENTRY_SET (463) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param pon_port PON port number
 * @param arg104 number of the entry, of the simulated service 0 to 31; the lowest that matches decides
 * @param entry 12 bytes, read only: the entry
 */
BSP_PON_API uint32_t bsp_p2p_entry_set_matchall(uint32_t pon_port, uint32_t arg104, const void *entry);

/**
 * Configures P2P forwarding of a PON port.
 *
 * BSP_CMD_P2P_CFG_SET (465) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param pon_port PON port number
 * @param arg108 what happens to frames between ONUs that no entry concerns, of the simulated service: 0 dropped, 1
 *        forwarded
 * @param cfg 10 bytes, read only: the configuration
 */
BSP_PON_API uint32_t bsp_p2p_cfg_set(uint32_t pon_port, uint32_t arg108, const void *cfg);

/** @} */

/**
 * @defgroup bsp_platform_sla Service level agreements
 * A failed exchange is passed where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_DEBUG_SLA_GET 470u /* BSP_MSG_DEBUG: the upstream SLA of an ONU, as the chip's debug service has it */
#define BSP_CMD_SLA_SET 469u /* BSP_MSG_PLAT: store an upstream SLA */
#define BSP_CMD_SLA_GET 470u /* BSP_MSG_PLAT: the upstream SLA of an ONU */
#define BSP_CMD_SLA_PORT_GET 471u /* BSP_MSG_PLAT: the SLA summary of a PON port */
#define BSP_CMD_VIEW_SLA_WEB 472u /* BSP_MSG_PLAT: upstream SLAs of a PON port, for the web server */
#define BSP_CMD_VIEW_SLA_SNMP 473u /* BSP_MSG_PLAT: upstream SLAs of the whole OLT, for the SNMP agent */
#define BSP_CMD_SLA_DOWN_SET 474u /* BSP_MSG_PLAT: store a downstream SLA */
#define BSP_CMD_SLA_DOWN_GET 475u /* BSP_MSG_PLAT: the downstream SLA of an ONU */
#define BSP_CMD_VIEW_SLA_DOWN_WEB 476u /* BSP_MSG_PLAT: downstream SLAs of a PON port, for the web server */

/**
 * Stores an upstream SLA.
 *
 * BSP_CMD_SLA_SET (469) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param record the ONU and the SLA, 1148 bytes; its `plat_cmd` becomes the command code and stays so; must not be
 *        null
 */
BSP_PON_API uint32_t bsp_pon_onu_sla_config(bsp_plat_msg *record);

/**
 * Stores a downstream SLA.
 *
 * BSP_CMD_SLA_DOWN_SET (474) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; service-affecting.
 * @param record the ONU and the SLA, 1148 bytes; its `plat_cmd` becomes the command code and stays so; must not be
 *        null
 */
BSP_PON_API uint32_t bsp_pon_onu_sla_down_config(bsp_plat_msg *record);

/**
 * Reads the upstream SLA of an ONU.
 *
 * BSP_CMD_SLA_GET (470) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out room for 20 bytes, receives the SLA; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_sla_get(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Reads the upstream SLA of an ONU from the chip's debug service.
 *
 * BSP_CMD_DEBUG_SLA_GET (470) on BSP_MSG_DEBUG, bsp_plat_msg of 1148 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out room for 20 bytes, receives the SLA; must not be null
 */
BSP_PON_API uint32_t bsp_pon_plat_onu_sla_get(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Reads the downstream SLA of an ONU.
 *
 * BSP_CMD_SLA_DOWN_GET (475) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out room for 4 bytes, receives the SLA; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_sla_down_get(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Reads the SLA summary of a PON port.
 *
 * BSP_CMD_SLA_PORT_GET (471) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read.
 * @param pon_port PON port number
 * @param out room for 20 bytes, receives the summary; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_sla_all_get(uint32_t pon_port, void *out);

/**
 * Asks for the upstream SLAs of a PON port, for the web server.
 *
 * BSP_CMD_VIEW_SLA_WEB (472) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read, by bsp_pon_platform_by_db. A failed
 * exchange is reported.
 * @param pon_port PON port number
 * @param db_out the result database, at most 10240 bytes
 */
BSP_PON_API uint32_t bsp_pon_onu_sla_get_web(uint32_t pon_port, db_handle **db_out);

/**
 * Asks for the downstream SLAs of a PON port, for the web server.
 *
 * BSP_CMD_VIEW_SLA_DOWN_WEB (476) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read, by bsp_pon_platform_by_db. A
 * failed exchange is reported.
 * @param pon_port PON port number
 * @param db_out the result database, at most 10240 bytes
 */
BSP_PON_API uint32_t bsp_pon_onu_sla_down_get_web(uint32_t pon_port, db_handle **db_out);

/**
 * Asks for the upstream SLAs of the whole OLT, for the SNMP agent.
 *
 * BSP_CMD_VIEW_SLA_SNMP (473) on BSP_MSG_PLAT, bsp_plat_msg of 1148 bytes; read, by bsp_pon_platform_by_db. A failed
 * exchange is reported.
 * @param db_out the result database, at most 10240 bytes
 */
BSP_PON_API uint32_t bsp_pon_onu_sla_get_snmp(db_handle **db_out);

/** @} */

/**
 * @defgroup bsp_onu_queries Remote ONU queries
 * A failed exchange is silent where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_ONU_MEM_INFO_GET 641u /* BSP_MSG_ONU_INFO: memory of an ONU */
#define BSP_CMD_ONU_ADMIN_STATE_GET 688u /* BSP_MSG_ONU_INFO: whether a UNI port is on */
#define BSP_CMD_ONU_AUTONEG_GET 690u /* BSP_MSG_ONU_INFO: whether a UNI port negotiates its speed */
#define BSP_CMD_ONU_CLASSIFICATION_GET 696u /* BSP_MSG_ONU_INFO: classification rules of a UNI port */
#define BSP_CMD_ONU_BANKS_GET 714u /* BSP_MSG_ONU_INFO: image banks of an ONU */
#define BSP_CMD_ONU_DEVICE_INFO_GET 634u /* BSP_MSG_ONU_CFG: device information of an ONU */
#define BSP_CMD_ONU_VLAN_GET 644u /* BSP_MSG_ONU_CFG: VLANs of a UNI port */
#define BSP_CMD_VIEW_ONU_VLAN 645u /* BSP_MSG_ONU_CFG: VLANs of the UNI ports of an ONU */
#define BSP_CMD_ONU_OPTICS_GET 648u /* BSP_MSG_ONU_CFG: optical transceiver of an ONU */
#define BSP_CMD_ONU_MAX_PORT_GET 650u /* BSP_MSG_ONU_CFG: number of UNI ports of an ONU */
#define BSP_CMD_ONU_MGMT_GET 651u /* BSP_MSG_ONU_CFG: management address of an ONU */
#define BSP_CMD_ONU_RATE_LIMIT_GET 655u /* BSP_MSG_ONU_CFG: rate limits of a UNI port */
#define BSP_CMD_ONU_LOOP_DETECT_GET 657u /* BSP_MSG_ONU_CFG: loop detection of an ONU */
#define BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET 658u /* BSP_MSG_ONU_CFG: which forms of multicast fast leave an ONU knows */
#define BSP_CMD_ONU_FAST_LEAVE_GET 659u /* BSP_MSG_ONU_CFG: multicast fast leave, as an ONU has it */
#define BSP_CMD_ONU_FAST_LEAVE_LOCAL_GET 660u /* BSP_MSG_ONU_CFG: multicast fast leave of an ONU, as the OLT has it */
#define BSP_CMD_ONU_MC_SWITCH_GET 662u /* BSP_MSG_ONU_CFG: multicast mode, as an ONU has it */
#define BSP_CMD_ONU_MC_SWITCH_LOCAL_GET 663u /* BSP_MSG_ONU_CFG: multicast mode of an ONU, as the OLT has it */
#define BSP_CMD_ONU_MC_GROUP_MAX_GET 665u /* BSP_MSG_ONU_CFG: how many multicast groups a UNI port may join, as the ONU has it */
#define BSP_CMD_ONU_MC_GROUP_MAX_LOCAL_GET 666u /* BSP_MSG_ONU_CFG: how many multicast groups a UNI port may join, as the OLT has it */
#define BSP_CMD_ONU_MC_VLAN_MODE_GET 668u /* BSP_MSG_ONU_CFG: tags of multicast frames at a UNI port, as the ONU has it */
#define BSP_CMD_ONU_MC_VLAN_MODE_LOCAL_GET 669u /* BSP_MSG_ONU_CFG: tags of multicast frames at a UNI port, as the OLT has it */
#define BSP_CMD_ONU_MC_VLAN_GET 670u /* BSP_MSG_ONU_CFG: multicast VLANs of a UNI port, as the ONU has them */
#define BSP_CMD_ONU_MC_VLAN_LOCAL_GET 671u /* BSP_MSG_ONU_CFG: multicast VLANs of a UNI port, as the OLT has them */
#define BSP_CMD_ONU_MC_GROUP_GET 672u /* BSP_MSG_ONU_CFG: multicast groups of an ONU */
#define BSP_CMD_ONU_LINK_STATE_GET 682u /* BSP_MSG_ONU_CFG: links of the UNI ports of an ONU */
#define BSP_CMD_ONU_PAUSE_GET 683u /* BSP_MSG_ONU_CFG: flow control of a UNI port */
#define BSP_CMD_VIEW_ONU_UNI_SNMP 772u /* BSP_MSG_ONU_CFG: UNI ports of an ONU, for the SNMP agent */
#define BSP_CMD_VIEW_ONU_SN 776u /* BSP_MSG_ONU_OAM: serial numbers of the ONUs of a PON port */

/**
 * Asks for the UNI ports of an ONU, for the SNMP agent.
 *
 * BSP_CMD_VIEW_ONU_UNI_SNMP (772) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is reported.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_get_uniobj_snmp(uint32_t pon_port, uint32_t onu_id, db_handle **out);

/**
 * Asks a remote ONU whether a UNI port negotiates its speed.
 *
 * BSP_CMD_ONU_AUTONEG_GET (690) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out the state, 4 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_autoneg_get(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out);

/**
 * Asks a remote ONU whether a UNI port is on.
 *
 * BSP_CMD_ONU_ADMIN_STATE_GET (688) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out the state, 4 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_phy_adminstate_get(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port,
                                                        void *out);

/**
 * Asks a remote ONU for the classification rules of a UNI port.
 *
 * BSP_CMD_ONU_CLASSIFICATION_GET (696) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out the rules, 298 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_classification_get(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port,
                                                        void *out);

/**
 * Asks for device information of an ONU.
 *
 * BSP_CMD_ONU_DEVICE_INFO_GET (634) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the information; zeros behind the 1536 bytes that an answer holds, 8058 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_dev_info(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks for the number of UNI ports of an ONU.
 *
 * BSP_CMD_ONU_MAX_PORT_GET (650) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the number, 0 to 255; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_get_max_port(uint32_t pon_port, uint32_t onu_id, uint16_t *out);

/**
 * Asks a remote ONU for the VLANs of a UNI port.
 *
 * BSP_CMD_ONU_VLAN_GET (644) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out the VLANs, 159 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_vlan(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out);

/**
 * Asks a remote ONU for its image banks.
 *
 * BSP_CMD_ONU_BANKS_GET (714) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the banks, 64 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_tk_onu_get_fw(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for its memory.
 *
 * BSP_CMD_ONU_MEM_INFO_GET (641) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the memory; zeros behind the 1536 bytes that an answer holds, 8058 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mem_info(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for the rate limits of a UNI port.
 *
 * BSP_CMD_ONU_RATE_LIMIT_GET (655) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out the limits, 22 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_rate_limit(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out);

/**
 * Asks a remote ONU for loop detection at a UNI port.
 *
 * BSP_CMD_ONU_LOOP_DETECT_GET (657) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out the state, 8 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_loop_detect(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out);

/**
 * Asks a remote ONU for its management address.
 *
 * BSP_CMD_ONU_MGMT_GET (651) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the address, 17 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mgmt(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks for the links of the UNI ports of an ONU, by datagram.
 *
 * BSP_CMD_ONU_LINK_STATE_GET (682) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is reported.
 * Every answer is logged as an error, with its text.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the result database, made of the text in the answer; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_linkstate(uint32_t pon_port, uint32_t onu_id, db_handle **out);

/**
 * Asks a remote ONU for flow control of a UNI port.
 *
 * BSP_CMD_ONU_PAUSE_GET (683) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out the state; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_eth_pause(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, uint8_t *out);

/**
 * Asks a remote ONU which forms of multicast fast leave it knows.
 *
 * BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET (658) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out its first 4 bytes stay, behind them the abilities go, 28 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_fast_leave_ability(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for multicast fast leave.
 *
 * BSP_CMD_ONU_FAST_LEAVE_GET (659) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the state, 4 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_fast_leave(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks the OLT for multicast fast leave of an ONU.
 *
 * BSP_CMD_ONU_FAST_LEAVE_LOCAL_GET (660) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the state and the abilities, 32 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_fast_leave_local(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for the multicast mode.
 *
 * BSP_CMD_ONU_MC_SWITCH_GET (662) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the mode; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_switch_remote(uint32_t pon_port, uint32_t onu_id, uint8_t *out);

/**
 * Asks the OLT for the multicast mode of an ONU.
 *
 * BSP_CMD_ONU_MC_SWITCH_LOCAL_GET (663) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the mode; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_switch_local(uint32_t pon_port, uint32_t onu_id, uint8_t *out);

/**
 * Asks a remote ONU how many multicast groups a UNI port may join.
 *
 * BSP_CMD_ONU_MC_GROUP_MAX_GET (665) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number
 * @param out the number, 2 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_group_num_max_remote(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port,
                                                                 void *out);

/**
 * Asks the OLT how many multicast groups a UNI port may join of an ONU.
 *
 * BSP_CMD_ONU_MC_GROUP_MAX_LOCAL_GET (666) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number
 * @param out the number, 2 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_group_num_max_local(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port,
                                                                void *out);

/**
 * Asks a remote ONU what becomes of the tags of multicast frames at a UNI port.
 *
 * BSP_CMD_ONU_MC_VLAN_MODE_GET (668) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number
 * @param out the tags, 34 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_vlan_mode_remote(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port,
                                                             void *out);

/**
 * Asks the OLT what becomes of the tags of multicast frames at a UNI port of an ONU.
 *
 * BSP_CMD_ONU_MC_VLAN_MODE_LOCAL_GET (669) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number
 * @param out the tags, 34 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_vlan_mode_local(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port,
                                                            void *out);

/**
 * Asks a remote ONU for the multicast VLANs of a UNI port.
 *
 * BSP_CMD_ONU_MC_VLAN_GET (670) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number
 * @param out the VLANs, 18 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_vlan_remote(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port,
                                                        void *out);

/**
 * Asks the OLT for the multicast VLANs of a UNI port of an ONU.
 *
 * BSP_CMD_ONU_MC_VLAN_LOCAL_GET (671) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number
 * @param out the VLANs, 16 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_vlan_local(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port, void *out);

/**
 * Asks a remote ONU for its multicast groups.
 *
 * BSP_CMD_ONU_MC_GROUP_GET (672) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the groups, 1284 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_group(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks for the serial numbers of the ONUs of a PON port.
 *
 * BSP_CMD_VIEW_ONU_SN (776) on BSP_MSG_ONU_OAM, bsp_onu_msg of 1888 bytes; read. A failed exchange is reported.
 * @param pon_port PON port number
 * @param out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_sn_ponport(uint32_t pon_port, db_handle **out);

/**
 * Sends a query of the information channel that the caller built, and receives the answer in its place.
 *
 * The caller's command on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read. A failed exchange is passed.
 * @param msg the request, 1888 bytes with the command code in `onu_cmd`; becomes the answer; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_debug_get(bsp_onu_msg *msg);

/**
 * Sends a query of the configuration channel that the caller built, and receives the answer in its place.
 *
 * The caller's command on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is passed.
 * @param msg the request, 1888 bytes with the command code in `onu_cmd`; becomes the answer; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_config_get(bsp_onu_msg *msg);

/**
 * Asks for the optical transceiver of an ONU, by a record that the caller built.
 *
 * BSP_CMD_ONU_OPTICS_GET (648) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_config_get. A
 * failed exchange is passed.
 * @param msg the request, 1888 bytes with `onu_pon_port` and `onu_onu_id`; its `onu_cmd` becomes the command code, and
 *        the whole of it the answer
 */
BSP_PON_API uint32_t bsp_pon_onu_optical_diagnose_get(bsp_onu_msg *msg);

/**
 * Asks for the VLANs of the UNI ports of an ONU.
 *
 * BSP_CMD_VIEW_ONU_VLAN (645) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read, by bsp_pononu_ctc_config_by_db. A
 * failed exchange is reported.
 * @param result the result database, at most 10240 bytes
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_vlan_json(db_handle **result, uint32_t pon_port, uint32_t onu_id);

/**
 * Asks for the VLAN modes of the UNI ports of an ONU: the same request, under another name.
 *
 * BSP_CMD_VIEW_ONU_VLAN (645) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read, by bsp_pononu_ctc_config_by_db. A
 * failed exchange is reported.
 * @param result the result database, at most 10240 bytes
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_vlan_mode_json(db_handle **result, uint32_t pon_port, uint32_t onu_id);

/** @} */

/**
 * @defgroup bsp_onu_requests Remote ONU requests
 * A failed exchange is silent where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_ONU_CAP2_GET 636u /* BSP_MSG_ONU_INFO: more capabilities of an ONU */
#define BSP_CMD_ONU_SN_GET 637u /* BSP_MSG_ONU_INFO: identity of an ONU */
#define BSP_CMD_ONU_FW_GET 638u /* BSP_MSG_ONU_INFO: firmware version of an ONU */
#define BSP_CMD_ONU_CHIP_ID_GET 639u /* BSP_MSG_ONU_INFO: chipset of an ONU */
#define BSP_CMD_ONU_CAP_GET 640u /* BSP_MSG_ONU_INFO: capabilities of an ONU */
#define BSP_CMD_ONU_AUTONEG_LOCAL_GET 692u /* BSP_MSG_ONU_INFO: what a UNI port can negotiate */
#define BSP_CMD_ONU_AUTONEG_ADV_GET 693u /* BSP_MSG_ONU_INFO: what a UNI port offers in auto-negotiation */
#define BSP_CMD_ONU_SLA_GET 697u /* BSP_MSG_ONU_INFO: service level agreement as an ONU has it */
#define BSP_CMD_ONU_IMAGE_WRITE 698u /* BSP_MSG_ONU_INFO: a part of an image for an ONU */
#define BSP_CMD_ONU_IMAGE_COMMIT 699u /* BSP_MSG_ONU_INFO: make an ONU start its new image from now on */
#define BSP_CMD_ONU_IMAGE_STATUS_GET 702u /* BSP_MSG_ONU_INFO: how an ONU's image update stands */
#define BSP_CMD_ONU_ABOUT_GET 703u /* BSP_MSG_ONU_INFO: all about an ONU */
#define BSP_CMD_ONU_PHY_INFO_GET 705u /* BSP_MSG_ONU_INFO: PHY of a UNI port */
#define BSP_CMD_ONU_CATV_STATE_GET 716u /* BSP_MSG_ONU_INFO: whether an ONU's CATV port is on */
#define BSP_CMD_ONU_PERF_MONITOR_SET 717u /* BSP_MSG_ONU_INFO: switch performance monitoring of an ONU */
#define BSP_CMD_ONU_CATV_SET 717u /* BSP_MSG_ONU_INFO: switch the CATV port of an ONU */
#define BSP_CMD_ONU_PERF_MONITOR_GET 718u /* BSP_MSG_ONU_INFO: performance monitoring of a UNI port */
#define BSP_CMD_ONU_PERF_CURRENT_GET 720u /* BSP_MSG_ONU_INFO: counters of a UNI port in the current period */
#define BSP_CMD_ONU_PERF_HISTORY_GET 722u /* BSP_MSG_ONU_INFO: counters of a UNI port in the period before */

/**
 * Asks a remote ONU anything of the information channel.
 *
 * The caller's command on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param cmd command code
 * @param out receives the first `out_len` bytes of the answer's data, zeros behind its 1536; null for none
 * @param out_len bytes wanted
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_info(uint32_t pon_port, uint32_t onu_id, uint32_t cmd, void *out,
                                              uint32_t out_len);

/**
 * Sets anything of the information channel at a remote ONU.
 *
 * The caller's command on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; service-affecting.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param cmd command code
 * @param data what to set; may be null: nothing is sent of it
 * @param data_len its length in bytes; up to 1536 are sent
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_set_info(uint32_t pon_port, uint32_t onu_id, uint32_t cmd, const void *data,
                                              uint32_t data_len);

/**
 * Asks a remote ONU anything of the information channel about one of its UNI ports.
 *
 * The caller's command on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param cmd command code
 * @param out receives the first `*out_len` bytes of the answer's data, zeros behind its 1536; must not be null
 * @param out_len bytes wanted; only read
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_port_get(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, uint32_t cmd,
                                              void *out, const uint32_t *out_len);

/**
 * Asks a remote ONU who it is.
 *
 * BSP_CMD_ONU_SN_GET (637) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out its identity, 54 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_sn(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for its firmware version.
 *
 * BSP_CMD_ONU_FW_GET (638) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the version, 128 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_fw(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for its chipset.
 *
 * BSP_CMD_ONU_CHIP_ID_GET (639) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the chipset, 8 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_chipid(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for its capabilities.
 *
 * BSP_CMD_ONU_CAP_GET (640) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the capabilities, 26 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_cap(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for more of its capabilities.
 *
 * BSP_CMD_ONU_CAP2_GET (636) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the capabilities, 64 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_cap2(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for its service level agreement.
 *
 * BSP_CMD_ONU_SLA_GET (697) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the agreement, 88 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_sla(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU for all about it.
 *
 * BSP_CMD_ONU_ABOUT_GET (703) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out all about it; zeros behind the 1536 bytes that an answer holds, 8058 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_onuinfo(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU how its image update stands.
 *
 * BSP_CMD_ONU_IMAGE_STATUS_GET (702) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by
 * bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the state, 20 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_upgrade_status(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks a remote ONU whether its CATV port is on.
 *
 * BSP_CMD_ONU_CATV_STATE_GET (716) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_get_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the state, 1 bytes; null for none
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_catv_status(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Sends a part of an image to a remote ONU.
 *
 * BSP_CMD_ONU_IMAGE_WRITE (698) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; service-affecting, by
 * bsp_pon_onu_ctc_set_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param data the part; may be null: nothing is sent of it
 * @param data_len its length in bytes; up to 1536 are sent
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_upgrade(uint32_t pon_port, uint32_t onu_id, const void *data, uint32_t data_len);

/**
 * Makes a remote ONU start its new image from now on.
 *
 * BSP_CMD_ONU_IMAGE_COMMIT (699) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; service-affecting, by
 * bsp_pon_onu_ctc_set_info.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_upgrade_commit(uint32_t pon_port, uint32_t onu_id);

/**
 * Switches performance monitoring of a remote ONU.
 *
 * BSP_CMD_ONU_PERF_MONITOR_SET (717) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; write, by
 * bsp_pon_onu_ctc_set_info.
 * The request is that of bsp_pon_onu_ctc_set_catv: a service cannot distinguish them.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port not used: the request names no UNI port
 * @param enable 1 on, 0 off
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_set_perf_monitor_status(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port,
                                                             uint8_t enable);

/**
 * Switches the CATV port of a remote ONU.
 *
 * BSP_CMD_ONU_CATV_SET (717) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; service-affecting, by
 * bsp_pon_onu_ctc_set_info.
 * The request is that of bsp_pon_onu_ctc_set_perf_monitor_status: a service cannot distinguish them.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param value 1 on, 0 off
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_set_catv(uint32_t pon_port, uint32_t onu_id, uint8_t value);

/**
 * Asks a remote ONU what a UNI port can negotiate.
 *
 * BSP_CMD_ONU_AUTONEG_LOCAL_GET (692) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by
 * bsp_pon_onu_ctc_port_get. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out receives the first `*out_len` bytes of the answer's data, zeros behind its 1536; must not be null
 * @param out_len bytes wanted; only read
 */
BSP_PON_API uint32_t bsp_onu_ctc_get_autoneg_local_abt(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port,
                                                       void *out, const uint32_t *out_len);

/**
 * Asks a remote ONU what a UNI port offers in auto-negotiation.
 *
 * BSP_CMD_ONU_AUTONEG_ADV_GET (693) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_port_get.
 * A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out receives the first `*out_len` bytes of the answer's data, zeros behind its 1536; must not be null
 * @param out_len bytes wanted; only read
 */
BSP_PON_API uint32_t bsp_onu_ctc_get_autoneg_adv_abt(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out,
                                                     const uint32_t *out_len);

/**
 * Asks a remote ONU for the PHY of a UNI port.
 *
 * BSP_CMD_ONU_PHY_INFO_GET (705) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by bsp_pon_onu_ctc_port_get. A
 * failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out receives the first `*out_len` bytes of the answer's data, zeros behind its 1536; must not be null
 * @param out_len bytes wanted; only read
 */
BSP_PON_API uint32_t bsp_onu_ctc_get_phyinfo(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out,
                                             const uint32_t *out_len);

/**
 * Asks a remote ONU whether it monitors the performance of a UNI port.
 *
 * BSP_CMD_ONU_PERF_MONITOR_GET (718) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by
 * bsp_pon_onu_ctc_port_get. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out receives the first `*out_len` bytes of the answer's data, zeros behind its 1536; must not be null
 * @param out_len bytes wanted; only read
 */
BSP_PON_API uint32_t bsp_onu_ctc_get_perf_monitor_status(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port,
                                                         void *out, const uint32_t *out_len);

/**
 * Asks a remote ONU for the counters of a UNI port in the current period.
 *
 * BSP_CMD_ONU_PERF_CURRENT_GET (720) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by
 * bsp_pon_onu_ctc_port_get. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out receives the first `*out_len` bytes of the answer's data, zeros behind its 1536; must not be null
 * @param out_len bytes wanted; only read
 */
BSP_PON_API uint32_t bsp_onu_ctc_get_perf_current_data(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port,
                                                       void *out, const uint32_t *out_len);

/**
 * Asks a remote ONU for the counters of a UNI port in the period before.
 *
 * BSP_CMD_ONU_PERF_HISTORY_GET (722) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read, by
 * bsp_pon_onu_ctc_port_get. A failed exchange is passed.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param uni_port UNI port number, of which the low 8 bits count
 * @param out receives the first `*out_len` bytes of the answer's data, zeros behind its 1536; must not be null
 * @param out_len bytes wanted; only read
 */
BSP_PON_API uint32_t bsp_onu_ctc_get_perf_history_data(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port,
                                                       void *out, const uint32_t *out_len);

/** @} */

/**
 * @defgroup bsp_onu_services Remote ONU service views
 * A failed exchange is passed where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_VIEW_ONU_WLAN_TABLE 413u /* BSP_MSG_PON: WLANs of the ONUs of a PON port */
#define BSP_CMD_VIEW_ONU_WAN_TABLE 414u /* BSP_MSG_PON: WAN connections of the ONUs of a PON port */
#define BSP_CMD_VIEW_ONU_CATV_TABLE 415u /* BSP_MSG_PON: CATV ports of the ONUs of a PON port */
#define BSP_CMD_VIEW_ONU_SIP_TABLE 416u /* BSP_MSG_PON: SIP users of the ONUs of a PON port */
#define BSP_CMD_VIEW_ONU_UPGRADE_STATUS 418u /* BSP_MSG_PON: image updates of ONUs */
#define BSP_CMD_ONU_TIME_GET 706u /* BSP_MSG_ONU_INFO: time configuration of an ONU */
#define BSP_CMD_VIEW_ONU_MC_CONFIG 678u /* BSP_MSG_ONU_CFG: multicast configuration of an ONU */
#define BSP_CMD_VIEW_ONU_UNI_MC_CONFIG 679u /* BSP_MSG_ONU_CFG: multicast configuration of the UNI ports of an ONU */
#define BSP_CMD_VIEW_ONU_MC_TRANSLATION 680u /* BSP_MSG_ONU_CFG: multicast VLAN translation of a UNI port */
#define BSP_CMD_VIEW_ONU_MC_VLAN 681u /* BSP_MSG_ONU_CFG: multicast VLANs of the UNI ports of an ONU */
#define BSP_CMD_ONU_FEC_GET 685u /* BSP_MSG_ONU_CFG: forward error correction of an ONU */
#define BSP_CMD_ONU_FEC_ABILITY_GET 686u /* BSP_MSG_ONU_CFG: whether an ONU can correct errors */
#define BSP_CMD_VIEW_ONU_WAN 734u /* BSP_MSG_ONU_CFG: WAN connections of an ONU */
#define BSP_CMD_VIEW_ONU_WLAN 736u /* BSP_MSG_ONU_CFG: WLANs of an ONU */
#define BSP_CMD_VIEW_ONU_CATV 737u /* BSP_MSG_ONU_CFG: CATV port of an ONU */
#define BSP_CMD_VIEW_ONU_VOIP 751u /* BSP_MSG_ONU_CFG: voice ports of an ONU */
#define BSP_CMD_VIEW_ONU_ACL 757u /* BSP_MSG_ONU_CFG: access control list of an ONU */
#define BSP_CMD_VIEW_ONU_DHCP 761u /* BSP_MSG_ONU_CFG: DHCP server of an ONU */

/**
 * Asks for the multicast configuration of an ONU.
 *
 * BSP_CMD_VIEW_ONU_MC_CONFIG (678) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is reported.
 * @param db_out the result database
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_config_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id);

/**
 * Asks for the multicast configuration of the UNI ports of an ONU.
 *
 * BSP_CMD_VIEW_ONU_UNI_MC_CONFIG (679) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is
 * reported.
 * @param db_out the result database
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_onu_uni_ctc_get_mc_config_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id);

/**
 * Asks for the multicast VLAN translation of a UNI port.
 *
 * BSP_CMD_VIEW_ONU_MC_TRANSLATION (680) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is
 * reported.
 * @param db_out the result database
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param byte_arg UNI port number
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_vlan_translate_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id,
                                                                uint8_t byte_arg);

/**
 * Asks for the multicast VLANs of the UNI ports of an ONU.
 *
 * BSP_CMD_VIEW_ONU_MC_VLAN (681) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is reported.
 * @param db_out the result database
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_mc_vlan_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id);

/**
 * Asks for the voice ports of an ONU.
 *
 * BSP_CMD_VIEW_ONU_VOIP (751) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is reported.
 * @param db_out the result database
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_voipinfo_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id);

/**
 * Asks for forward error correction of an ONU.
 *
 * BSP_CMD_ONU_FEC_GET (685) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is silent.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the mode, into the first word
 */
BSP_PON_API uint32_t bsp_pon_onu_get_fec_mode(uint32_t pon_port, uint32_t onu_id, uint32_t *out);

/**
 * Asks whether an ONU can correct errors.
 *
 * BSP_CMD_ONU_FEC_ABILITY_GET (686) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read. A failed exchange is silent.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the ability, into the second word; the first stays, so that a caller may keep mode and ability side by
 *        side
 */
BSP_PON_API uint32_t bsp_pon_onuc_get_fec_ability(uint32_t pon_port, uint32_t onu_id, uint32_t *out);

/**
 * Asks a remote ONU for its time configuration.
 *
 * BSP_CMD_ONU_TIME_GET (706) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out the configuration, 16 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_time_config(uint32_t pon_port, uint32_t onu_id, void *out);

/**
 * Asks for WAN connections of an ONU.
 *
 * BSP_CMD_VIEW_ONU_WAN (734) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param index number of the WAN connection
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_wanc(uint32_t pon_port, uint32_t onu_id, uint32_t index, db_handle **db_out);

/**
 * Asks for the WLANs of an ONU.
 *
 * BSP_CMD_VIEW_ONU_WLAN (736) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_wlan(uint32_t pon_port, uint32_t onu_id, db_handle **db_out);

/**
 * Asks for the CATV port of an ONU.
 *
 * BSP_CMD_VIEW_ONU_CATV (737) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_catv(uint32_t pon_port, uint32_t onu_id, db_handle **db_out);

/**
 * Asks for the access control list of an ONU.
 *
 * BSP_CMD_VIEW_ONU_ACL (757) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_acl(uint32_t pon_port, uint32_t onu_id, db_handle **db_out);

/**
 * Asks for the DHCP server of an ONU.
 *
 * BSP_CMD_VIEW_ONU_DHCP (761) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_dhcp(uint32_t pon_port, uint32_t onu_id, db_handle **db_out);

/**
 * Asks for the WLANs of the ONUs of a PON port.
 *
 * BSP_CMD_VIEW_ONU_WLAN_TABLE (413) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_wlantab(uint32_t pon_port, db_handle **db_out);

/**
 * Asks for the WAN connections of the ONUs of a PON port.
 *
 * BSP_CMD_VIEW_ONU_WAN_TABLE (414) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_wanctab(uint32_t pon_port, db_handle **db_out);

/**
 * Asks for the CATV ports of the ONUs of a PON port.
 *
 * BSP_CMD_VIEW_ONU_CATV_TABLE (415) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_catvtab(uint32_t pon_port, db_handle **db_out);

/**
 * Asks for the SIP users of the ONUs of a PON port.
 *
 * BSP_CMD_VIEW_ONU_SIP_TABLE (416) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_sipusertab(uint32_t pon_port, db_handle **db_out);

/**
 * Asks how image updates of ONUs stand.
 *
 * BSP_CMD_VIEW_ONU_UPGRADE_STATUS (418) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_get_upgradestatus_json(uint32_t pon_port, uint32_t onu_id, db_handle **db_out);

/** @} */

/**
 * @defgroup bsp_onu_settings Remote ONU settings
 * A failed exchange is passed where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_ONU_MULTI_LLID_SET 642u /* BSP_MSG_ONU_INFO: set the number of LLIDs of an ONU */
#define BSP_CMD_ONU_MGMT_SET 652u /* BSP_MSG_ONU_CFG: set the management address of an ONU */
#define BSP_CMD_ONU_IMAGE_UPDATE 694u /* BSP_MSG_ONU_CFG: have the OLT update an image of an ONU */
#define BSP_CMD_OAM_PRINT 0u /* BSP_MSG_ONU_OAM: set what is printed of OAM, by a request without a command code */

/**
 * Sends a setting of the information channel that the caller built.
 *
 * The caller's command on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; service-affecting.
 * @param msg the request, 1888 bytes with the command code in `onu_cmd`; not changed; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_debug(const bsp_onu_msg *msg);

/**
 * Sends a setting of the configuration channel that the caller built.
 *
 * The caller's command on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; service-affecting.
 * @param msg the request, 1888 bytes with the command code in `onu_cmd`; not changed; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_config(const bsp_onu_msg *msg);

/**
 * Triggers extra alarms for a test, by a record that the caller built.
 *
 * The caller's command on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; write. A failed exchange is silent.
 * @param msg the request, 1888 bytes with the command code in `onu_cmd`; not changed
 * @return 0 after every exchange that succeeded, whatever the service's status word says.
 */
BSP_PON_API uint32_t bsp_pon_onu_alarm_more_test(const bsp_onu_msg *msg);

/**
 * Sets what the service prints of OAM.
 *
 * BSP_CMD_OAM_PRINT (0) on BSP_MSG_ONU_OAM, bsp_onu_msg of 1888 bytes; write. A failed exchange is silent.
 * @param value what is printed; the service knows the values
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_oam_print(uint32_t value);

/**
 * Sets the number of LLIDs of an ONU.
 *
 * BSP_CMD_ONU_MULTI_LLID_SET (642) on BSP_MSG_ONU_INFO, bsp_onu_msg of 1888 bytes; service-affecting.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param count number of LLIDs
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_set_multillid(uint32_t pon_port, uint32_t onu_id, uint32_t count);

/**
 * Has the OLT update an image of an ONU.
 *
 * BSP_CMD_ONU_IMAGE_UPDATE (694) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; service-affecting.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param image which image and where, 260 bytes; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_update_image(uint32_t pon_port, uint32_t onu_id, const void *image);

/**
 * Sets the management address of an ONU.
 *
 * BSP_CMD_ONU_MGMT_SET (652) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; service-affecting.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param mgmt the address, 17 bytes as bsp_pon_onu_ctc_get_mgmt reads them; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_set_mgmt(uint32_t pon_port, uint32_t onu_id, const void *mgmt);

/** @} */

/**
 * @defgroup bsp_config_bulk Bulk data
 * A failed exchange is passed where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_VIEW_PORT_INFO 399u /* BSP_MSG_PON: PON ports */
#define BSP_CMD_VIEW_BASIC_INFO 400u /* BSP_MSG_PON: the OLT */
#define BSP_CMD_ALL_ONU_INFO 401u /* BSP_MSG_PON: all ONUs, in a text */
#define BSP_CMD_VIEW_ONU_OPTICS 402u /* BSP_MSG_PON: optical diagnostics of the ONUs of a PON port */
#define BSP_CMD_VIEW_ONU_OPTICS_ALL 403u /* BSP_MSG_PON: optical diagnostics of all ONUs */
#define BSP_CMD_VIEW_ONU_STATS_ALL 404u /* BSP_MSG_PON: performance statistics of all ONUs */
#define BSP_CMD_ONU_CONFIG_WORD 707u /* BSP_MSG_ONU_CFG: the configure word of an ONU */

/**
 * Asks for the optical diagnostics of the ONUs of a PON port.
 *
 * BSP_CMD_VIEW_ONU_OPTICS (402) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read. A failed exchange is reported.
 * @param pon_port PON port number
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_onu_optical_diag_by_pon(uint32_t pon_port, db_handle **db_out);

/**
 * Asks for the optical diagnostics of all ONUs.
 *
 * BSP_CMD_VIEW_ONU_OPTICS_ALL (403) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read. A failed exchange is reported.
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_onu_optical_diag_data_all(db_handle **db_out);

/**
 * Asks for the performance statistics of all ONUs.
 *
 * BSP_CMD_VIEW_ONU_STATS_ALL (404) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read. A failed exchange is reported.
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_onu_perf_stat_data_all(db_handle **db_out);

/**
 * Asks for the configure word of an ONU.
 *
 * BSP_CMD_ONU_CONFIG_WORD (707) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; read.
 * @param pon_port PON port number
 * @param onu_id ONU id on the port
 * @param out receives the word
 */
BSP_PON_API uint32_t bsp_pon_onu_get_configure(uint32_t pon_port, uint32_t onu_id, uint32_t *out);

/**
 * Asks for all ONUs, in a text.
 *
 * BSP_CMD_ALL_ONU_INFO (401) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param text_out receives the text, at most 1023 characters and the NUL; null for none
 */
BSP_PON_API uint32_t bsp_pon_get_allonuinfo(char *text_out);

/**
 * Asks for the PON ports.
 *
 * BSP_CMD_VIEW_PORT_INFO (399) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_port_info(db_handle **db_out);

/**
 * Asks for the OLT.
 *
 * BSP_CMD_VIEW_BASIC_INFO (400) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_basic_info(db_handle **db_out);

/** @} */

/**
 * @defgroup bsp_config_profiles Profiles and configuration
 * A failed exchange is silent where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_CONFIG_WRITE 0u /* BSP_MSG_CFGWR: the service's configuration, by a request without a command code */

/**
 * Asks for the service's configuration, as a text or a file's name, and a word.
 *
 * BSP_CMD_CONFIG_WRITE (0) on BSP_MSG_CFGWR, bsp_plat_msg of 1148 bytes; write. A failed exchange is reported.
 * @param text_out receives the text, at most 1023 characters and the NUL; null for none
 * @param word_out receives the word; null for none
 * @param port PON port number, or what the service takes for all
 * @param arg what is wanted; the service knows the values
 */
BSP_PON_API uint32_t bsp_pon_get_config_write(char *text_out, uint32_t *word_out, uint32_t port, uint32_t arg);

/**
 * Sends a payload on the profile channel and receives the answer in its place.
 *
 * The caller's action on BSP_MSG_PROFILE, bsp_profile_msg of 28 bytes and the payload; read.
 * Without `buf`, `len` zeros are sent.
 * @param action action code; the service knows the values
 * @param buf the payload, which the answer overwrites; may be null: nothing is sent of it, nor delivered
 * @param len its length in bytes, at most 4092
 * @return the service's status word; BSP_ERR_PARAM where `len` is more than 4092, nothing sent.
 */
BSP_PON_API uint32_t bsp_profile_exec_get(uint32_t action, void *buf, uint32_t len);

/**
 * Sends a payload on the profile channel and receives the answer in a buffer of its own, or else in the payload's
 * place.
 *
 * The caller's action on BSP_MSG_PROFILE, bsp_profile_msg of 28 bytes and the payload; read.
 * The answer is delivered only where the status is 0. Without `buf`, `len` zeros are sent.
 * @param action action code; the service knows the values
 * @param buf the payload, which the answer overwrites where there is no `out`; may be null: nothing is sent of it, nor
 *        delivered
 * @param len its length in bytes, at most 4092
 * @param out receives the answer; then `buf` is left alone; null for none
 * @param out_len bytes wanted
 * @return the service's status word; BSP_ERR_PARAM where `len` is more than 4092, nothing sent.
 */
BSP_PON_API uint32_t bsp_profile_exec_get_(uint32_t action, void *buf, uint32_t len, void *out, uint32_t out_len);

/**
 * Asks for a result database on the profile channel.
 *
 * The caller's action on BSP_MSG_PROFILE, bsp_profile_msg of 28 bytes and the payload; read.
 * It comes by a file that the answer names, in at most 4095 characters; the file is removed.
 * @param action action code; the service knows the values
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_profile_exec_get_json(uint32_t action, db_handle **db_out);

/**
 * Sends a payload on the profile channel.
 *
 * The caller's action on BSP_MSG_PROFILE, bsp_profile_msg of 28 bytes and the payload; write.
 * Without `buf`, `len` zeros are sent.
 * @param action action code; the service knows the values
 * @param buf the payload; may be null: nothing is sent of it
 * @param len its length in bytes, at most 4092
 * @return the service's status word; BSP_ERR_PARAM where `len` is more than 4092, nothing sent.
 */
BSP_PON_API uint32_t bsp_profile_exec_set(uint32_t action, const void *buf, uint32_t len);

/**
 * Asks for a result file on the profile channel, and reads it into memory.
 *
 * The caller's action on BSP_MSG_PROFILE, bsp_profile_msg of 28 bytes and the payload; read.
 * The file stays.
 * @param action action code; the service knows the values
 * @param data_out receives a block that the caller owns and releases with pfree; not written where the status is not 0
 *        or the file is empty
 * @param len_out receives its length in bytes; not written where the block is not
 * @return the service's status word; BSP_ERR_NOMEM where there is no memory for the file, and what reading it failed
 *         with, both logged.
 */
BSP_PON_API uint32_t bsp_profile_exec_get_cfgwr(uint32_t action, void **data_out, uint32_t *len_out);

/** @} */

/**
 * @defgroup bsp_config_settings ONU configuration, LOIDs and UNI profiles
 * A failed exchange is passed where a function does not say otherwise.
 * @{
 */
#define BSP_CMD_ONU_CONFIG_BATCH 0u /* BSP_MSG_PON: apply the configuration of ONUs, by a request without a command code */
#define BSP_CMD_UNI_PROFILE_SET 396u /* BSP_MSG_PON: set a UNI profile */
#define BSP_CMD_VIEW_UNI_PROFILE 397u /* BSP_MSG_PON: a UNI profile */
#define BSP_CMD_LOID_ADD 408u /* BSP_MSG_PON: add a LOID */
#define BSP_CMD_LOID_DELETE 409u /* BSP_MSG_PON: delete a LOID */
#define BSP_CMD_VIEW_LOID_LIST 410u /* BSP_MSG_PON: LOIDs of a PON port */
#define BSP_CMD_ARP_TABLE 411u /* BSP_MSG_PON: ARP table of a PON port */
#define BSP_CMD_OUI_SET 425u /* BSP_MSG_PON: set the OUI */
#define BSP_CMD_ONU_CONFIG_SET 708u /* BSP_MSG_ONU_CFG: set the configuration of an ONU */
#define BSP_CMD_ONU_PORT_CONFIG_SET 711u /* BSP_MSG_ONU_CFG: set the configuration of a UNI port */

/**
 * Sets the configuration of an ONU.
 *
 * BSP_CMD_ONU_CONFIG_SET (708) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; service-affecting.
 * @param rec the configuration, 1888 bytes; its command becomes the command code and stays so; must not be null
 */
BSP_PON_API uint32_t bsp_onu_ctc_set_cfg(bsp_onu_msg *rec);

/**
 * Sets the OUI that remote ONUs are known by.
 *
 * BSP_CMD_OUI_SET (425) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param oui the OUI, 3 bytes in transmission order; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_set_oui(const uint8_t *oui);

/**
 * Adds a LOID to a PON port.
 *
 * BSP_CMD_LOID_ADD (408) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param rec `pon_port` and what the service takes for the LOID, 944 bytes; its command becomes the command code and
 *        stays so; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_add_loid(bsp_pon_msg *rec);

/**
 * Deletes a LOID of a PON port.
 *
 * BSP_CMD_LOID_DELETE (409) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param rec `pon_port` and what the service takes for the LOID, 944 bytes; its command becomes the command code and
 *        stays so; must not be null
 */
BSP_PON_API uint32_t bsp_pon_onu_ctc_delete_loid(bsp_pon_msg *rec);

/**
 * Asks for the LOIDs of a PON port.
 *
 * BSP_CMD_VIEW_LOID_LIST (410) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read. A failed exchange is reported.
 * @param pon_port PON port number
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_onu_loidlist(uint32_t pon_port, db_handle **db_out);

/**
 * Asks for the ARP table of a PON port.
 *
 * BSP_CMD_ARP_TABLE (411) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read. A failed exchange is reported.
 * It comes by a file that the answer names; the file is removed.
 * @param pon_port PON port number
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_get_arptable(uint32_t pon_port, db_handle **db_out);

/**
 * Sets a UNI profile.
 *
 * BSP_CMD_UNI_PROFILE_SET (396) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; write.
 * @param profile_id number of the profile
 * @param value passed to the service with the profile
 * @param body the profile; may be null: nothing is sent of it
 * @param body_len its length in bytes; up to 515 are sent
 */
BSP_PON_API uint32_t bsp_pon_prof_uni_set(uint32_t profile_id, uint16_t value, const void *body, uint32_t body_len);

/**
 * Asks for a UNI profile.
 *
 * BSP_CMD_VIEW_UNI_PROFILE (397) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; read.
 * @param profile_id number of the profile
 * @param db_out the result database
 */
BSP_PON_API uint32_t bsp_pon_prof_uni_get(uint32_t profile_id, db_handle **db_out);

/**
 * Sets the configuration of a UNI port of an ONU.
 *
 * BSP_CMD_ONU_PORT_CONFIG_SET (711) on BSP_MSG_ONU_CFG, bsp_onu_msg of 1888 bytes; service-affecting.
 * @param rec the configuration, 1888 bytes; its command becomes the command code and stays so; must not be null
 */
BSP_PON_API uint32_t bsp_onu_ctc_set_portcfg(bsp_onu_msg *rec);

/**
 * Has the service apply the configuration of ONUs.
 *
 * BSP_CMD_ONU_CONFIG_BATCH (0) on BSP_MSG_PON, bsp_pon_msg of 944 bytes; service-affecting.
 * @param value not used: the request is all zero
 */
BSP_PON_API uint32_t bsp_pon_onucfg_set_batch(uint32_t value);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
