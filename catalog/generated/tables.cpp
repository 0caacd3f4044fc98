// generated from the catalogue by catalog/generate.py; change the catalogue, not this file.
// clang-format off
#include "../catalogue.h"

namespace catalogue
{
namespace
{

constexpr Field bsp_pon_msg_fields[] = {
    {"cmd", FieldType::u32, 0, 4, "", 1, "command code"},
    {"pon_port", FieldType::u32, 4, 4, "", 1, "PON port number"},
    {"onu_id", FieldType::u32, 8, 4, "", 1, "ONU id on the port"},
    {"arg_word12", FieldType::u32, 12, 4, "", 1, "extra integer argument"},
    {"arg_byte16", FieldType::u8, 16, 1, "", 1, "extra byte argument"},
    {"onu_mac", FieldType::mac, 17, 6, "", 1, "ONU MAC address, transmission order"},
    {"arg_word36", FieldType::u32, 36, 4, "", 1, "extra integer argument"},
    {"arg_value", FieldType::u32, 40, 4, "", 1, "main integer argument"},
    {"text45", FieldType::text, 45, 64, "", 1, "text argument"},
    {"text109", FieldType::text, 109, 64, "", 1, "text argument"},
    {"text173", FieldType::text, 173, 64, "", 1, "text argument (binding: second text)"},
    {"text237", FieldType::text, 237, 128, "", 1, "text argument (binding: first text; ONU description)"},
    {"text365", FieldType::text, 365, 64, "", 1, "text argument (binding: third text)"},
    {"data429", FieldType::bytes, 429, 515, "", 1, "data block to the end of the record; in responses the result file name"},
};

constexpr Field bsp_pon_msg_ext_fields[] = {
    {"cmd", FieldType::u32, 0, 4, "", 1, "command code"},
    {"ext_arg", FieldType::u32, 4, 4, "", 1, "integer argument"},
    {"ext_payload", FieldType::bytes, 20, 400, "", 1, "block argument; in responses a text may start here"},
};

constexpr Field bsp_plat_msg_fields[] = {
    {"plat_port", FieldType::u32, 0, 4, "", 1, "port, PON port or index"},
    {"plat_arg4", FieldType::u32, 4, 4, "", 1, "ONU id, LLID or index"},
    {"plat_cmd", FieldType::u32, 92, 4, "", 1, "command code"},
    {"plat_arg96", FieldType::u32, 96, 4, "", 1, "integer argument"},
    {"plat_arg100", FieldType::u32, 100, 4, "", 1, "integer argument"},
    {"plat_arg104", FieldType::u32, 104, 4, "", 1, "integer argument"},
    {"plat_arg108", FieldType::u32, 108, 4, "", 1, "integer argument"},
    {"plat_arg112", FieldType::u32, 112, 4, "", 1, "integer argument"},
    {"plat_arg116", FieldType::u32, 116, 4, "", 1, "integer argument"},
    {"plat_arg120", FieldType::u32, 120, 4, "", 1, "integer argument"},
    {"plat_data", FieldType::bytes, 124, 1024, "", 1, "data block"},
};

constexpr Field bsp_onu_msg_fields[] = {
    {"onu_pon_port", FieldType::u32, 0, 4, "", 1, "PON port number"},
    {"onu_onu_id", FieldType::u32, 4, 4, "", 1, "ONU id on the port"},
    {"onu_uni_port", FieldType::u8, 8, 1, "", 1, "UNI (user) port number on the ONU"},
    {"onu_cmd", FieldType::u32, 16, 4, "", 1, "command code"},
    {"onu_word20", FieldType::u32, 20, 4, "", 1, "in a response: the word that is returned"},
    {"onu_arg24", FieldType::u32, 24, 4, "", 1, "integer argument"},
    {"onu_data", FieldType::bytes, 352, 1536, "", 1, "data block; in responses the returned value or text starts here"},
};

constexpr Field bsp_profile_msg_fields[] = {
    {"action", FieldType::u32, 0, 4, "", 1, "the caller's action code"},
    {"is_get", FieldType::u32, 4, 4, "", 1, "1 in the get forms, 0 in the set form"},
    {"count", FieldType::u32, 8, 4, "", 1, "in responses: bytes of the result file"},
    {"data", FieldType::bytes, 24, 4096, "", 1, "payload; in responses a file name may start here"},
};

constexpr Record all_records[] = {
    {"bsp_pon_msg", 944, &bsp_pon_msg_fields[0], nullptr, bsp_pon_msg_fields, "Request and response of the PON channel."},
    {"bsp_pon_msg_ext", 1044, &bsp_pon_msg_ext_fields[0], nullptr, bsp_pon_msg_ext_fields, "Request and response of the upgrade and loop-detection channels, and the larger response of several views."},
    {"bsp_plat_msg", 1148, &bsp_plat_msg_fields[2], nullptr, bsp_plat_msg_fields, "Request and response of the platform, debug and write-out channels. The command code is not first."},
    {"bsp_onu_msg", 1888, &bsp_onu_msg_fields[3], nullptr, bsp_onu_msg_fields, "Request and response of the remote-ONU channels."},
    {"bsp_profile_msg", 4120, &bsp_profile_msg_fields[0], &bsp_profile_msg_fields[3], bsp_profile_msg_fields, "Request and response of the profile channel: a header of six words, then the payload."},
};

constexpr Channel all_channels[] = {
    {"BSP_MSG_PON", 232, &all_records[0], "binding, pass-through, stored views, lists, authentication, bulk data"},
    {"BSP_MSG_PROFILE", 235, &all_records[4], "profile exchange (datagram calls only)"},
    {"BSP_MSG_DEBUG", 236, &all_records[2], "chip debug and statistics"},
    {"BSP_MSG_ONU_INFO", 237, &all_records[3], "information and status of a remote ONU"},
    {"BSP_MSG_ONU_CFG", 238, &all_records[3], "configuration of a remote ONU"},
    {"BSP_MSG_PLAT", 239, &all_records[2], "the OLT's platform services"},
    {"BSP_MSG_CFGWR", 240, &all_records[2], "configuration write-out"},
    {"BSP_MSG_ONU_SNMP", 241, &all_records[3], "remote ONU views for the SNMP agent"},
    {"BSP_MSG_UPGRADE", 242, &all_records[1], "ONU upgrade types and upgrade runs"},
    {"BSP_MSG_ONU_OAM", 243, &all_records[3], "OAM printing and serial numbers of remote ONUs"},
    {"BSP_MSG_LOOP_DETECT", 244, &all_records[1], "loop detection"},
};

constexpr Command all_commands[] = {
    {"BSP_CMD_ONU_CONFIG_BATCH", 0, &all_channels[0], Class::service_affecting, Call::set, "apply the configuration of ONUs, by a request without a command code"},
    {"BSP_CMD_ONU_BIND_AUTO", 364, &all_channels[0], Class::service_affecting, std::nullopt, "bind an ONU by MAC address, the service picks the ONU id"},
    {"BSP_CMD_ONU_BIND", 365, &all_channels[0], Class::service_affecting, std::nullopt, "bind an ONU by MAC address to a given ONU id"},
    {"BSP_CMD_ONU_RELEASE", 366, &all_channels[0], Class::service_affecting, std::nullopt, "release the binding of one ONU, by id, by MAC address, or by both"},
    {"BSP_CMD_ONU_RELEASE_BATCH", 367, &all_channels[0], Class::service_affecting, std::nullopt, "release a batch of bindings described by the caller's record"},
    {"BSP_CMD_ONU_REBOOT_BATCH", 368, &all_channels[0], Class::service_affecting, std::nullopt, "reboot a batch of ONUs described by the caller's record"},
    {"BSP_CMD_ONU_RELEASE_ALL", 369, &all_channels[0], Class::service_affecting, std::nullopt, "release all bindings of a PON port"},
    {"BSP_CMD_ONU_RELEASE_OFFLINE", 370, &all_channels[0], Class::service_affecting, std::nullopt, "release all bindings of offline ONUs of a PON port"},
    {"BSP_CMD_BLACKLIST_ADD_AUTO", 371, &all_channels[0], Class::service_affecting, std::nullopt, "put an ONU, named by its MAC address, on the blacklist; the service picks the id there"},
    {"BSP_CMD_BLACKLIST_REJECT", 372, &all_channels[0], Class::service_affecting, std::nullopt, "put the ONU that is bound to an ONU id on the blacklist"},
    {"BSP_CMD_BLACKLIST_REJECT_BATCH", 373, &all_channels[0], Class::service_affecting, std::nullopt, "put a batch of ONUs, described by the caller's record, on the blacklist"},
    {"BSP_CMD_BLACKLIST_REMOVE", 374, &all_channels[0], Class::service_affecting, std::nullopt, "take an ONU, named by its MAC address, off the blacklist"},
    {"BSP_CMD_BLACKLIST_REMOVE_BATCH", 375, &all_channels[0], Class::service_affecting, std::nullopt, "take a batch of ONUs, described by the caller's record, off the blacklist"},
    {"BSP_CMD_AUTH_SET", 376, &all_channels[0], Class::service_affecting, std::nullopt, "set the authentication mode of a PON port"},
    {"BSP_CMD_AUTH_GET", 377, &all_channels[0], Class::read, std::nullopt, "the authentication mode of a PON port"},
    {"BSP_CMD_AUTH_LIST", 378, &all_channels[0], Class::read, std::nullopt, "the authentication records: a summary of all PON ports for port 0, else those of one port"},
    {"BSP_CMD_ONU_CONFIRM", 380, &all_channels[0], Class::service_affecting, std::nullopt, "confirm an ONU that waits, named by its ONU id or else by its MAC address"},
    {"BSP_CMD_WHITELIST_GET", 381, &all_channels[0], Class::read, Call::get, "look up one ONU of the whitelist, by id or by MAC address"},
    {"BSP_CMD_ONU_INFO_GET", 381, &all_channels[0], Class::read, Call::dgram_get, "ONU information, by datagram: of one ONU by id or MAC address, of one PON port, or of all"},
    {"BSP_CMD_VIEW_ONU_INFO_SNMP", 383, &all_channels[0], Class::read, std::nullopt, "ONU information of the whole OLT, for the SNMP agent"},
    {"BSP_CMD_VIEW_ONU_INFO_WEB", 384, &all_channels[0], Class::read, std::nullopt, "ONU information of one PON port, or of all for port 0, for the web server"},
    {"BSP_CMD_VIEW_ONU_CAP_SNMP", 385, &all_channels[0], Class::read, std::nullopt, "capabilities of the bound ONUs of the whole OLT, for the SNMP agent"},
    {"BSP_CMD_VIEW_BASE_INFO_WEB", 386, &all_channels[0], Class::read, std::nullopt, "base information of one PON port, or of all for port 0, for the web server"},
    {"BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB", 387, &all_channels[0], Class::read, std::nullopt, "what an upgrade must know of the bound ONUs of one PON port, or of all for port 0, for the web server"},
    {"BSP_CMD_VIEW_ONU_ALARM", 388, &all_channels[0], Class::read, std::nullopt, "alarms of one ONU, of one PON port, or of all for port 0"},
    {"BSP_CMD_ONU_ALARM_CLEAR", 389, &all_channels[0], Class::write, std::nullopt, "clear alarms of one ONU, of one PON port, or of all for port 0"},
    {"BSP_CMD_WHITELIST_IDS", 390, &all_channels[0], Class::read, std::nullopt, "which ONU ids of a port are in use on the whitelist"},
    {"BSP_CMD_BLACKLIST_GET", 391, &all_channels[0], Class::read, std::nullopt, "the blacklist: whole, of a port, or one ONU by id or by MAC address"},
    {"BSP_CMD_VIEW_BLACKLIST_SNMP", 392, &all_channels[0], Class::read, std::nullopt, "the blacklist of the whole OLT, for the SNMP agent"},
    {"BSP_CMD_VIEW_BLACKLIST_WEB", 393, &all_channels[0], Class::read, std::nullopt, "the blacklist of one PON port, or of all for port 0, for the web server"},
    {"BSP_CMD_BLACKLIST_IDS", 394, &all_channels[0], Class::read, std::nullopt, "which ids of a port are in use on the blacklist"},
    {"BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP", 395, &all_channels[0], Class::read, std::nullopt, "attributes of the UNI ports of the whole OLT, for the SNMP agent"},
    {"BSP_CMD_UNI_PROFILE_SET", 396, &all_channels[0], Class::write, std::nullopt, "set a UNI profile"},
    {"BSP_CMD_VIEW_UNI_PROFILE", 397, &all_channels[0], Class::read, std::nullopt, "a UNI profile"},
    {"BSP_CMD_ONU_DESCRIPTION_SET", 398, &all_channels[0], Class::write, std::nullopt, "describe a bound ONU in a text"},
    {"BSP_CMD_VIEW_PORT_INFO", 399, &all_channels[0], Class::read, std::nullopt, "PON ports"},
    {"BSP_CMD_VIEW_BASIC_INFO", 400, &all_channels[0], Class::read, std::nullopt, "the OLT"},
    {"BSP_CMD_ALL_ONU_INFO", 401, &all_channels[0], Class::read, std::nullopt, "all ONUs, in a text"},
    {"BSP_CMD_VIEW_ONU_OPTICS", 402, &all_channels[0], Class::read, std::nullopt, "optical diagnostics of the ONUs of a PON port"},
    {"BSP_CMD_VIEW_ONU_OPTICS_ALL", 403, &all_channels[0], Class::read, std::nullopt, "optical diagnostics of all ONUs"},
    {"BSP_CMD_VIEW_ONU_STATS_ALL", 404, &all_channels[0], Class::read, std::nullopt, "performance statistics of all ONUs"},
    {"BSP_CMD_LOID_ADD", 408, &all_channels[0], Class::write, std::nullopt, "add a LOID"},
    {"BSP_CMD_LOID_DELETE", 409, &all_channels[0], Class::write, std::nullopt, "delete a LOID"},
    {"BSP_CMD_VIEW_LOID_LIST", 410, &all_channels[0], Class::read, std::nullopt, "LOIDs of a PON port"},
    {"BSP_CMD_ARP_TABLE", 411, &all_channels[0], Class::read, std::nullopt, "ARP table of a PON port"},
    {"BSP_CMD_VIEW_ONU_WLAN_TABLE", 413, &all_channels[0], Class::read, std::nullopt, "WLANs of the ONUs of a PON port"},
    {"BSP_CMD_VIEW_ONU_WAN_TABLE", 414, &all_channels[0], Class::read, std::nullopt, "WAN connections of the ONUs of a PON port"},
    {"BSP_CMD_VIEW_ONU_CATV_TABLE", 415, &all_channels[0], Class::read, std::nullopt, "CATV ports of the ONUs of a PON port"},
    {"BSP_CMD_VIEW_ONU_SIP_TABLE", 416, &all_channels[0], Class::read, std::nullopt, "SIP users of the ONUs of a PON port"},
    {"BSP_CMD_VIEW_ONU_UPGRADE_STATUS", 418, &all_channels[0], Class::read, std::nullopt, "image updates of ONUs"},
    {"BSP_CMD_ONU_SORT_BATCH", 423, &all_channels[0], Class::service_affecting, std::nullopt, "re-sort a batch of ONUs described by the caller's record"},
    {"BSP_CMD_OPT_RANGE_SET", 424, &all_channels[0], Class::write, std::nullopt, "set the optical ranging limits from the caller's record"},
    {"BSP_CMD_OUI_SET", 425, &all_channels[0], Class::service_affecting, std::nullopt, "set the OUI"},
    {"BSP_CMD_ONU_SUPPORT_SET", 764, &all_channels[0], Class::write, std::nullopt, "set whether an ONU, named by its MAC address, is supported"},
    {"BSP_CMD_CONFIG_READ", 1, &all_channels[1], Class::write, Call::dgram_get, "the OLT's configuration, in a file"},
    {"BSP_CMD_CONFIG_LOAD_PART", 2, &all_channels[1], Class::write, Call::dgram_set, "receive a part of a configuration to load"},
    {"BSP_CMD_CONFIG_LOAD", 3, &all_channels[1], Class::service_affecting, Call::dgram_set, "load the configuration that was received"},
    {"BSP_CMD_PROFILE_LINE_STORE", 17, &all_channels[1], Class::write, Call::dgram_set, "store a line profile, or change the one of its name"},
    {"BSP_CMD_PROFILE_LINE_FETCH", 18, &all_channels[1], Class::read, Call::dgram_get, "get a line profile by its name"},
    {"BSP_CMD_PROFILE_LINE_DELETE", 19, &all_channels[1], Class::write, Call::dgram_set, "delete a line profile by its name"},
    {"BSP_CMD_PROFILE_LINE_LIST", 20, &all_channels[1], Class::read, Call::dgram_get, "numbers and names of line profiles"},
    {"BSP_CMD_PROFILE_LINE_TABLE", 21, &all_channels[1], Class::read, Call::dgram_get, "all line profiles, as a file of rows that the answer names"},
    {"BSP_CMD_PROFILE_LINE_TEXT", 22, &all_channels[1], Class::read, Call::dgram_get, "all line profiles, as a file of text that the answer names with its length"},
    {"BSP_CMD_PROFILE_SLA_STORE", 33, &all_channels[1], Class::write, Call::dgram_set, "store an SLA profile, or change the one of its name"},
    {"BSP_CMD_PROFILE_SLA_FETCH", 34, &all_channels[1], Class::read, Call::dgram_get, "get an SLA profile by its name"},
    {"BSP_CMD_PROFILE_SLA_DELETE", 35, &all_channels[1], Class::write, Call::dgram_set, "delete an SLA profile by its name"},
    {"BSP_CMD_PROFILE_SLA_LIST", 36, &all_channels[1], Class::read, Call::dgram_get, "numbers and names of SLA profiles"},
    {"BSP_CMD_PROFILE_SLA_TABLE", 37, &all_channels[1], Class::read, Call::dgram_get, "all SLA profiles, as a file of rows that the answer names"},
    {"BSP_CMD_PROFILE_SLA_TEXT", 38, &all_channels[1], Class::read, Call::dgram_get, "all SLA profiles, as a file of text that the answer names with its length"},
    {"BSP_CMD_PROFILE_ALARM_STORE", 49, &all_channels[1], Class::write, Call::dgram_set, "store an alarm profile, or change the one of its name"},
    {"BSP_CMD_PROFILE_ALARM_FETCH", 50, &all_channels[1], Class::read, Call::dgram_get, "get an alarm profile by its name"},
    {"BSP_CMD_PROFILE_ALARM_DELETE", 51, &all_channels[1], Class::write, Call::dgram_set, "delete an alarm profile by its name"},
    {"BSP_CMD_PROFILE_ALARM_LIST", 52, &all_channels[1], Class::read, Call::dgram_get, "numbers and names of alarm profiles"},
    {"BSP_CMD_PROFILE_ALARM_TABLE", 53, &all_channels[1], Class::read, Call::dgram_get, "all alarm profiles, as a file of rows that the answer names"},
    {"BSP_CMD_PROFILE_ALARM_TEXT", 54, &all_channels[1], Class::read, Call::dgram_get, "all alarm profiles, as a file of text that the answer names with its length"},
    {"BSP_CMD_DEBUG_PON_STATS", 237, &all_channels[2], Class::read, std::nullopt, "counters of a PON port"},
    {"BSP_CMD_DEBUG_GE_STATS", 238, &all_channels[2], Class::read, std::nullopt, "counters of a GE port"},
    {"BSP_CMD_DEBUG_GE_PHY_GET", 239, &all_channels[2], Class::read, std::nullopt, "PHY of a GE port"},
    {"BSP_CMD_DEBUG_GE_PHY_SET", 240, &all_channels[2], Class::service_affecting, std::nullopt, "set the PHY of a GE port"},
    {"BSP_CMD_DEBUG_INGRESS_GET", 241, &all_channels[2], Class::read, std::nullopt, "ingress behaviour of a port"},
    {"BSP_CMD_DEBUG_EGRESS_GET", 242, &all_channels[2], Class::read, std::nullopt, "egress behaviour of a port"},
    {"BSP_CMD_DEBUG_PON_MAC_GET", 243, &all_channels[2], Class::read, std::nullopt, "MAC of a PON port"},
    {"BSP_CMD_DEBUG_PON_PHY_GET", 244, &all_channels[2], Class::read, std::nullopt, "PHY of a PON port"},
    {"BSP_CMD_DEBUG_PON_LASER_GET", 245, &all_channels[2], Class::read, std::nullopt, "laser state of a PON port"},
    {"BSP_CMD_DEBUG_GE_MAC_GET", 246, &all_channels[2], Class::read, std::nullopt, "MAC of a GE port"},
    {"BSP_CMD_DEBUG_XAUI_MAC_GET", 247, &all_channels[2], Class::read, std::nullopt, "MAC of a XAUI interface"},
    {"BSP_CMD_DEBUG_XAUI_PHY_GET", 248, &all_channels[2], Class::read, std::nullopt, "PHY of a XAUI interface"},
    {"BSP_CMD_DEBUG_I2C_READ", 251, &all_channels[2], Class::read, std::nullopt, "read bytes from the I2C bus"},
    {"BSP_CMD_DEBUG_I2C_WRITE", 252, &all_channels[2], Class::service_affecting, std::nullopt, "write bytes to the I2C bus"},
    {"BSP_CMD_DEBUG_FDB_DUMP", 253, &all_channels[2], Class::read, std::nullopt, "have the chip's forwarding database dumped"},
    {"BSP_CMD_DEBUG_MGMT_CFG_GET", 259, &all_channels[2], Class::read, std::nullopt, "configuration of a management port"},
    {"BSP_CMD_DEBUG_CTC_OAM", 261, &all_channels[2], Class::write, std::nullopt, "switch debug output of CTC OAM"},
    {"BSP_CMD_DEBUG_ONU", 262, &all_channels[2], Class::write, std::nullopt, "switch debug output of ONUs"},
    {"BSP_CMD_DEBUG_SLA_GET", 470, &all_channels[2], Class::read, std::nullopt, "the upstream SLA of an ONU, as the chip's debug service has it"},
    {"BSP_CMD_ONU_CAP2_GET", 636, &all_channels[3], Class::read, std::nullopt, "more capabilities of an ONU"},
    {"BSP_CMD_ONU_SN_GET", 637, &all_channels[3], Class::read, std::nullopt, "identity of an ONU"},
    {"BSP_CMD_ONU_FW_GET", 638, &all_channels[3], Class::read, std::nullopt, "firmware version of an ONU"},
    {"BSP_CMD_ONU_CHIP_ID_GET", 639, &all_channels[3], Class::read, std::nullopt, "chipset of an ONU"},
    {"BSP_CMD_ONU_CAP_GET", 640, &all_channels[3], Class::read, std::nullopt, "capabilities of an ONU"},
    {"BSP_CMD_ONU_MEM_INFO_GET", 641, &all_channels[3], Class::read, std::nullopt, "memory of an ONU"},
    {"BSP_CMD_ONU_MULTI_LLID_SET", 642, &all_channels[3], Class::service_affecting, std::nullopt, "set the number of LLIDs of an ONU"},
    {"BSP_CMD_ONU_ADMIN_STATE_GET", 688, &all_channels[3], Class::read, Call::get, "whether a UNI port is on"},
    {"BSP_CMD_ONU_ADMIN_STATE_SET", 688, &all_channels[3], Class::service_affecting, Call::set, "switches a UNI port on or off"},
    {"BSP_CMD_ONU_AUTONEG_GET", 690, &all_channels[3], Class::read, Call::get, "whether a UNI port negotiates its speed"},
    {"BSP_CMD_ONU_AUTONEG_SET", 690, &all_channels[3], Class::service_affecting, Call::set, "has a UNI port negotiate its speed, or not"},
    {"BSP_CMD_ONU_AUTONEG_LOCAL_GET", 692, &all_channels[3], Class::read, std::nullopt, "what a UNI port can negotiate"},
    {"BSP_CMD_ONU_AUTONEG_ADV_GET", 693, &all_channels[3], Class::read, Call::get, "what a UNI port offers in auto-negotiation"},
    {"BSP_CMD_ONU_AUTONEG_ADV_SET", 693, &all_channels[3], Class::service_affecting, Call::set, "says what a UNI port offers in auto-negotiation"},
    {"BSP_CMD_ONU_CLASSIFICATION_GET", 696, &all_channels[3], Class::read, Call::get, "classification rules of a UNI port"},
    {"BSP_CMD_ONU_CLASSIFICATION_SET", 696, &all_channels[3], Class::service_affecting, Call::set, "changes the classification rules of a UNI port"},
    {"BSP_CMD_ONU_SLA_GET", 697, &all_channels[3], Class::read, Call::get, "service level agreement as an ONU has it"},
    {"BSP_CMD_ONU_IMAGE_WRITE", 698, &all_channels[3], Class::service_affecting, std::nullopt, "a part of an image for an ONU"},
    {"BSP_CMD_ONU_IMAGE_COMMIT", 699, &all_channels[3], Class::service_affecting, std::nullopt, "make an ONU start its new image from now on"},
    {"BSP_CMD_ONU_IMAGE_STATUS_GET", 702, &all_channels[3], Class::read, std::nullopt, "how an ONU's image update stands"},
    {"BSP_CMD_ONU_ABOUT_GET", 703, &all_channels[3], Class::read, std::nullopt, "all about an ONU"},
    {"BSP_CMD_ONU_PHY_INFO_GET", 705, &all_channels[3], Class::read, std::nullopt, "PHY of a UNI port"},
    {"BSP_CMD_ONU_TIME_GET", 706, &all_channels[3], Class::read, Call::get, "time configuration of an ONU"},
    {"BSP_CMD_ONU_TIME_SET", 706, &all_channels[3], Class::write, Call::set, "set the time configuration of an ONU"},
    {"BSP_CMD_ONU_BANKS_GET", 714, &all_channels[3], Class::read, std::nullopt, "image banks of an ONU"},
    {"BSP_CMD_ONU_CATV_STATE_GET", 716, &all_channels[3], Class::read, std::nullopt, "whether an ONU's CATV port is on"},
    {"BSP_CMD_ONU_PERF_MONITOR_SET", 717, &all_channels[3], Class::write, std::nullopt, "switch performance monitoring of an ONU"},
    {"BSP_CMD_ONU_CATV_SET", 717, &all_channels[3], Class::service_affecting, std::nullopt, "switch the CATV port of an ONU"},
    {"BSP_CMD_ONU_PERF_MONITOR_GET", 718, &all_channels[3], Class::read, std::nullopt, "performance monitoring of a UNI port"},
    {"BSP_CMD_ONU_PERF_CURRENT_GET", 720, &all_channels[3], Class::read, std::nullopt, "counters of a UNI port in the current period"},
    {"BSP_CMD_ONU_PERF_HISTORY_GET", 722, &all_channels[3], Class::read, std::nullopt, "counters of a UNI port in the period before"},
    {"BSP_CMD_ONU_ALARM_TEST", 777, &all_channels[3], Class::write, Call::set, "raise an alarm of an ONU as a test"},
    {"BSP_CMD_ONU_DEVICE_INFO_GET", 634, &all_channels[4], Class::read, std::nullopt, "device information of an ONU"},
    {"BSP_CMD_ONU_VLAN_GET", 644, &all_channels[4], Class::read, Call::get, "VLANs of a UNI port"},
    {"BSP_CMD_ONU_VLAN_SET", 644, &all_channels[4], Class::service_affecting, Call::set, "sets the VLANs of a UNI port"},
    {"BSP_CMD_VIEW_ONU_VLAN", 645, &all_channels[4], Class::read, std::nullopt, "VLANs of the UNI ports of an ONU"},
    {"BSP_CMD_ONU_OPTICS_GET", 648, &all_channels[4], Class::read, std::nullopt, "optical transceiver of an ONU"},
    {"BSP_CMD_ONU_MAX_PORT_GET", 650, &all_channels[4], Class::read, std::nullopt, "number of UNI ports of an ONU"},
    {"BSP_CMD_ONU_MGMT_GET", 651, &all_channels[4], Class::read, std::nullopt, "management address of an ONU"},
    {"BSP_CMD_ONU_MGMT_SET", 652, &all_channels[4], Class::service_affecting, std::nullopt, "set the management address of an ONU"},
    {"BSP_CMD_ONU_RATE_LIMIT_GET", 655, &all_channels[4], Class::read, Call::get, "rate limits of a UNI port"},
    {"BSP_CMD_ONU_RATE_LIMIT_SET", 655, &all_channels[4], Class::service_affecting, Call::set, "limits the rates of a UNI port"},
    {"BSP_CMD_ONU_LOOP_DETECT_GET", 657, &all_channels[4], Class::read, Call::get, "loop detection of an ONU"},
    {"BSP_CMD_ONU_LOOP_DETECT_SET", 657, &all_channels[4], Class::service_affecting, Call::set, "switches loop detection at a UNI port"},
    {"BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET", 658, &all_channels[4], Class::read, std::nullopt, "which forms of multicast fast leave an ONU knows"},
    {"BSP_CMD_ONU_FAST_LEAVE_GET", 659, &all_channels[4], Class::read, Call::get, "multicast fast leave, as an ONU has it"},
    {"BSP_CMD_ONU_FAST_LEAVE_SET", 659, &all_channels[4], Class::service_affecting, Call::set, "set multicast fast leave of an ONU"},
    {"BSP_CMD_ONU_FAST_LEAVE_LOCAL_GET", 660, &all_channels[4], Class::read, std::nullopt, "multicast fast leave of an ONU, as the OLT has it"},
    {"BSP_CMD_ONU_MC_SWITCH_GET", 662, &all_channels[4], Class::read, Call::get, "multicast mode, as an ONU has it"},
    {"BSP_CMD_ONU_MC_SWITCH_SET", 662, &all_channels[4], Class::service_affecting, Call::set, "set the multicast mode of an ONU"},
    {"BSP_CMD_ONU_MC_SWITCH_LOCAL_GET", 663, &all_channels[4], Class::read, std::nullopt, "multicast mode of an ONU, as the OLT has it"},
    {"BSP_CMD_ONU_MC_GROUP_MAX_GET", 665, &all_channels[4], Class::read, Call::get, "how many multicast groups a UNI port may join, as the ONU has it"},
    {"BSP_CMD_ONU_MC_GROUP_MAX_SET", 665, &all_channels[4], Class::service_affecting, Call::set, "set how many multicast groups a UNI port may join"},
    {"BSP_CMD_ONU_MC_GROUP_MAX_LOCAL_GET", 666, &all_channels[4], Class::read, std::nullopt, "how many multicast groups a UNI port may join, as the OLT has it"},
    {"BSP_CMD_ONU_MC_VLAN_MODE_GET", 668, &all_channels[4], Class::read, Call::get, "tags of multicast frames at a UNI port, as the ONU has it"},
    {"BSP_CMD_ONU_MC_VLAN_MODE_SET", 668, &all_channels[4], Class::service_affecting, Call::set, "set what becomes of the tags of multicast frames at a UNI port"},
    {"BSP_CMD_ONU_MC_VLAN_MODE_LOCAL_GET", 669, &all_channels[4], Class::read, std::nullopt, "tags of multicast frames at a UNI port, as the OLT has it"},
    {"BSP_CMD_ONU_MC_VLAN_GET", 670, &all_channels[4], Class::read, Call::get, "multicast VLANs of a UNI port, as the ONU has them"},
    {"BSP_CMD_ONU_MC_VLAN_SET", 670, &all_channels[4], Class::service_affecting, Call::set, "add multicast VLANs to a UNI port, or take them away"},
    {"BSP_CMD_ONU_MC_VLAN_LOCAL_GET", 671, &all_channels[4], Class::read, std::nullopt, "multicast VLANs of a UNI port, as the OLT has them"},
    {"BSP_CMD_ONU_MC_GROUP_GET", 672, &all_channels[4], Class::read, Call::get, "multicast groups of an ONU"},
    {"BSP_CMD_ONU_MC_GROUP_SET", 672, &all_channels[4], Class::service_affecting, Call::set, "let UNI ports of an ONU join multicast groups, or stop them, in controllable multicast"},
    {"BSP_CMD_VIEW_ONU_MC_CONFIG", 678, &all_channels[4], Class::read, std::nullopt, "multicast configuration of an ONU"},
    {"BSP_CMD_VIEW_ONU_UNI_MC_CONFIG", 679, &all_channels[4], Class::read, std::nullopt, "multicast configuration of the UNI ports of an ONU"},
    {"BSP_CMD_VIEW_ONU_MC_TRANSLATION", 680, &all_channels[4], Class::read, std::nullopt, "multicast VLAN translation of a UNI port"},
    {"BSP_CMD_VIEW_ONU_MC_VLAN", 681, &all_channels[4], Class::read, std::nullopt, "multicast VLANs of the UNI ports of an ONU"},
    {"BSP_CMD_ONU_LINK_STATE_GET", 682, &all_channels[4], Class::read, std::nullopt, "links of the UNI ports of an ONU"},
    {"BSP_CMD_ONU_PAUSE_GET", 683, &all_channels[4], Class::read, Call::get, "flow control of a UNI port"},
    {"BSP_CMD_ONU_PAUSE_SET", 683, &all_channels[4], Class::service_affecting, Call::set, "switches flow control of a UNI port"},
    {"BSP_CMD_ONU_FEC_GET", 685, &all_channels[4], Class::read, Call::get, "forward error correction of an ONU"},
    {"BSP_CMD_ONU_FEC_SET", 685, &all_channels[4], Class::service_affecting, Call::set, "switch forward error correction of an ONU"},
    {"BSP_CMD_ONU_FEC_ABILITY_GET", 686, &all_channels[4], Class::read, std::nullopt, "whether an ONU can correct errors"},
    {"BSP_CMD_ONU_IMAGE_UPDATE", 694, &all_channels[4], Class::service_affecting, std::nullopt, "have the OLT update an image of an ONU"},
    {"BSP_CMD_ONU_CONFIG_WORD", 707, &all_channels[4], Class::read, std::nullopt, "the configure word of an ONU"},
    {"BSP_CMD_ONU_CONFIG_SET", 708, &all_channels[4], Class::service_affecting, std::nullopt, "set the configuration of an ONU"},
    {"BSP_CMD_VIEW_ONU_CONFIG", 709, &all_channels[4], Class::read, std::nullopt, "configuration of one ONU"},
    {"BSP_CMD_VIEW_ONU_PORT_CONFIG", 710, &all_channels[4], Class::read, std::nullopt, "configuration of the UNI ports of one ONU"},
    {"BSP_CMD_ONU_PORT_CONFIG_SET", 711, &all_channels[4], Class::service_affecting, std::nullopt, "set the configuration of a UNI port"},
    {"BSP_CMD_VIEW_ONU_WAN", 734, &all_channels[4], Class::read, Call::get, "WAN connections of an ONU"},
    {"BSP_CMD_ONU_WAN_SET", 734, &all_channels[4], Class::service_affecting, Call::set, "add, change or remove a WAN connection of an ONU"},
    {"BSP_CMD_VIEW_ONU_WLAN", 736, &all_channels[4], Class::read, Call::get, "WLANs of an ONU"},
    {"BSP_CMD_ONU_WLAN_SET", 736, &all_channels[4], Class::service_affecting, Call::set, "set one WLAN of an ONU"},
    {"BSP_CMD_VIEW_ONU_CATV", 737, &all_channels[4], Class::read, Call::get, "CATV port of an ONU"},
    {"BSP_CMD_VIEW_ONU_VOIP", 751, &all_channels[4], Class::read, Call::get, "voice ports of an ONU"},
    {"BSP_CMD_VIEW_ONU_ACL", 757, &all_channels[4], Class::read, Call::get, "access control list of an ONU"},
    {"BSP_CMD_ONU_ACL_SET", 757, &all_channels[4], Class::service_affecting, Call::set, "add, change or remove a rule of an ONU's access control list"},
    {"BSP_CMD_VIEW_ONU_DHCP", 761, &all_channels[4], Class::read, Call::get, "DHCP server of an ONU"},
    {"BSP_CMD_ONU_DHCP_SET", 761, &all_channels[4], Class::service_affecting, Call::set, "set the DHCP server of an ONU"},
    {"BSP_CMD_VIEW_ONU_UNI_SNMP", 772, &all_channels[4], Class::read, std::nullopt, "UNI ports of an ONU, for the SNMP agent"},
    {"BSP_CMD_MPCP_SET", 454, &all_channels[5], Class::service_affecting, std::nullopt, "set MPCP parameters of a PON port"},
    {"BSP_CMD_OPTICS_STATUS_SET", 454, &all_channels[5], Class::write, std::nullopt, "hand an optical status block to the PON chip's debug layer"},
    {"BSP_CMD_ONU_DEREGISTER", 455, &all_channels[5], Class::service_affecting, std::nullopt, "deregister an ONU"},
    {"BSP_CMD_PORT_REREGISTER", 456, &all_channels[5], Class::service_affecting, std::nullopt, "deregister the ONUs of a PON port and have them register again"},
    {"BSP_CMD_P2P_STATE_SET", 459, &all_channels[5], Class::service_affecting, std::nullopt, "switch P2P forwarding"},
    {"BSP_CMD_P2P_OWN_PORT_SET", 460, &all_channels[5], Class::service_affecting, std::nullopt, "set the own port of P2P forwarding"},
    {"BSP_CMD_P2P_OWN_PORT_GET", 461, &all_channels[5], Class::read, std::nullopt, "the own port of P2P forwarding"},
    {"BSP_CMD_P2P_STATE_GET", 462, &all_channels[5], Class::read, std::nullopt, "the state of P2P forwarding"},
    {"BSP_CMD_P2P_ENTRY_SET", 463, &all_channels[5], Class::service_affecting, std::nullopt, "set a forwarding entry"},
    {"BSP_CMD_P2P_CFG_SET", 465, &all_channels[5], Class::service_affecting, std::nullopt, "configure P2P forwarding of a PON port"},
    {"BSP_CMD_LLID_BEHAVIOR_SET", 467, &all_channels[5], Class::service_affecting, std::nullopt, "set the behaviour of an LLID"},
    {"BSP_CMD_SLA_SET", 469, &all_channels[5], Class::service_affecting, std::nullopt, "store an upstream SLA"},
    {"BSP_CMD_SLA_GET", 470, &all_channels[5], Class::read, std::nullopt, "the upstream SLA of an ONU"},
    {"BSP_CMD_SLA_PORT_GET", 471, &all_channels[5], Class::read, std::nullopt, "the SLA summary of a PON port"},
    {"BSP_CMD_VIEW_SLA_WEB", 472, &all_channels[5], Class::read, std::nullopt, "upstream SLAs of a PON port, for the web server"},
    {"BSP_CMD_VIEW_SLA_SNMP", 473, &all_channels[5], Class::read, std::nullopt, "upstream SLAs of the whole OLT, for the SNMP agent"},
    {"BSP_CMD_SLA_DOWN_SET", 474, &all_channels[5], Class::service_affecting, std::nullopt, "store a downstream SLA"},
    {"BSP_CMD_SLA_DOWN_GET", 475, &all_channels[5], Class::read, std::nullopt, "the downstream SLA of an ONU"},
    {"BSP_CMD_VIEW_SLA_DOWN_WEB", 476, &all_channels[5], Class::read, std::nullopt, "downstream SLAs of a PON port, for the web server"},
    {"BSP_CMD_OPM_TRIGGER", 478, &all_channels[5], Class::write, std::nullopt, "start an optical power measurement"},
    {"BSP_CMD_OPM_CANCEL", 479, &all_channels[5], Class::write, std::nullopt, "cancel an optical power measurement"},
    {"BSP_CMD_LAO_MODE_SET", 480, &all_channels[5], Class::service_affecting, std::nullopt, "set the LAO mode of an optical module"},
    {"BSP_CMD_LOL_MODE_SET", 481, &all_channels[5], Class::service_affecting, std::nullopt, "set the LOL mode of an optical module"},
    {"BSP_CMD_FDB_CFG_SET", 482, &all_channels[5], Class::service_affecting, std::nullopt, "configure the FDB"},
    {"BSP_CMD_FDB_FLUSH", 483, &all_channels[5], Class::service_affecting, std::nullopt, "flush entries of the FDB"},
    {"BSP_CMD_MAC_AGE_GET", 484, &all_channels[5], Class::read, std::nullopt, "the ageing of MAC addresses"},
    {"BSP_CMD_MAC_GET", 485, &all_channels[5], Class::read, std::nullopt, "query the MAC table of the PON side"},
    {"BSP_CMD_MAC_NNI_GET", 486, &all_channels[5], Class::read, std::nullopt, "query the MAC table of the network side (NNI)"},
    {"BSP_CMD_OPTICS_DIAG_GET", 487, &all_channels[5], Class::read, std::nullopt, "digital diagnostics of a PON port's optical module"},
    {"BSP_CMD_OPTICS_RSSI_GET", 488, &all_channels[5], Class::read, std::nullopt, "a received signal strength (RSSI) reading"},
    {"BSP_CMD_SFP_INFO_GET", 489, &all_channels[5], Class::read, std::nullopt, "diagnostic information of an SFP cage, as a block"},
    {"BSP_CMD_VIEW_SFP_INFO", 490, &all_channels[5], Class::read, std::nullopt, "diagnostic information of an SFP cage, as a table"},
    {"BSP_CMD_CONFIG_WRITE", 0, &all_channels[6], Class::write, std::nullopt, "the service's configuration, by a request without a command code"},
    {"BSP_CMD_VIEW_VLAN_MODE_SNMP", 787, &all_channels[7], Class::read, std::nullopt, "VLAN modes of UNI ports, for the SNMP agent"},
    {"BSP_CMD_VIEW_VLAN_LIST_SNMP", 788, &all_channels[7], Class::read, std::nullopt, "VLANs of UNI ports, for the SNMP agent"},
    {"BSP_CMD_UPGRADE_TYPE_ADD", 790, &all_channels[8], Class::write, std::nullopt, "add an upgrade type"},
    {"BSP_CMD_UPGRADE_TYPE_DELETE", 791, &all_channels[8], Class::write, std::nullopt, "delete an upgrade type"},
    {"BSP_CMD_UPGRADE_TYPE_LIST", 792, &all_channels[8], Class::read, std::nullopt, "the upgrade types"},
    {"BSP_CMD_UPGRADE_TYPE_LOAD", 793, &all_channels[8], Class::write, std::nullopt, "load the upgrade types from a file"},
    {"BSP_CMD_UPGRADE_TYPE_BIND_ONUS", 795, &all_channels[8], Class::write, std::nullopt, "bind an upgrade type to some ONUs"},
    {"BSP_CMD_UPGRADE_TYPE_BIND_PORT", 796, &all_channels[8], Class::write, std::nullopt, "bind an upgrade type to the ONUs of a PON port"},
    {"BSP_CMD_UPGRADE_ONU", 797, &all_channels[8], Class::service_affecting, std::nullopt, "upgrade one ONU"},
    {"BSP_CMD_UPGRADE_PORT", 798, &all_channels[8], Class::service_affecting, std::nullopt, "upgrade the ONUs of a PON port"},
    {"BSP_CMD_OAM_PRINT", 0, &all_channels[9], Class::write, Call::set, "set what is printed of OAM, by a request without a command code"},
    {"BSP_CMD_VIEW_ONU_SN", 776, &all_channels[9], Class::read, std::nullopt, "serial numbers of the ONUs of a PON port"},
    {"BSP_CMD_LOOP_STATE_SET", 779, &all_channels[10], Class::service_affecting, std::nullopt, "switch loop detection on or off"},
    {"BSP_CMD_LOOP_RECOVER_MODE_SET", 780, &all_channels[10], Class::write, std::nullopt, "set how ports recover from a loop"},
    {"BSP_CMD_LOOP_RECOVER", 781, &all_channels[10], Class::service_affecting, std::nullopt, "recover the ports that a loop shut down, now"},
    {"BSP_CMD_LOOP_RECOVER_TIME_SET", 782, &all_channels[10], Class::write, std::nullopt, "set after which time ports recover from a loop"},
    {"BSP_CMD_LOOP_INTERVAL_SET", 783, &all_channels[10], Class::write, std::nullopt, "set the interval between detection packets"},
    {"BSP_CMD_LOOP_INFO", 784, &all_channels[10], Class::read, std::nullopt, "what loop detection has found"},
    {"BSP_CMD_LOOP_CONFIG_GET", 785, &all_channels[10], Class::read, std::nullopt, "the settings of loop detection"},
};

constexpr Status all_statuses[] = {
    {"BSP_OK", 0, true, "success"},
    {"BSP_ERR_IPC", 1001, true, "the IPC exchange failed"},
    {"BSP_ERR_NOMEM", 1002, true, "no memory for a result"},
    {"BSP_ERR_PARAM", 3003, true, "a required pointer argument was null; nothing was sent"},
    {"PON_ERR_UNKNOWN_COMMAND", 4001, false, "the service has no such command on this channel"},
    {"PON_ERR_BAD_RECORD", 4002, false, "the record's length or contents make no sense for the command"},
    {"PON_ERR_NO_PORT", 4003, false, "the OLT has no such PON port"},
    {"PON_ERR_BAD_ONU_ID", 4004, false, "the ONU id is not one of 0 to 127"},
    {"PON_ERR_NOT_BOUND", 4005, false, "no ONU is bound to this id or by this MAC address"},
    {"PON_ERR_ID_IN_USE", 4006, false, "another ONU is bound to this id, or another profile has this number"},
    {"PON_ERR_ALREADY_BOUND", 4007, false, "the ONU is bound to another id or port; release it first"},
    {"PON_ERR_PORT_FULL", 4008, false, "all 128 ids of the port are in use"},
    {"PON_ERR_UNSUPPORTED", 4009, false, "the ONU is marked as not supported"},
    {"PON_ERR_MISMATCH", 4010, false, "the id and the MAC address name two different ONUs"},
    {"PON_ERR_BAD_MAC", 4011, false, "not the MAC address of a station: all zero, or a group address"},
    {"PON_ERR_STORE", 4012, false, "the service could not store the change; nothing was changed"},
    {"PON_ERR_OFFLINE", 4013, false, "an ONU that the command needs is offline; nothing was changed"},
    {"PON_ERR_TABLE_FULL", 4014, false, "the service's table for this has no room left"},
    {"PON_ERR_NOT_LISTED", 4015, false, "not on the black list, or no such authentication record"},
    {"PON_ERR_BLACKLISTED", 4016, false, "the ONU is on the black list of the port; take it off first"},
    {"PON_ERR_NOT_WAITING", 4017, false, "no ONU with this MAC address waits at the port: it has not arrived, or is not ranged"},
    {"PON_ERR_BAD_SLA", 4050, false, "fixed and assured bandwidth exceed the maximum, the maximum is not 1 to 1000000 kbit/s, the priority not 0 to 7, or the weight not 1 to 100"},
    {"PON_ERR_SLA_CAPACITY", 4051, false, "the fixed and assured bandwidth of the port's ONUs would exceed its capacity"},
    {"PON_ERR_BAD_LLID", 4052, false, "the LLID is not one of 1 to 128, which are the ONU id and 1 more"},
    {"PON_ERR_NO_MEASUREMENT", 4030, false, "the power of this ONU was not measured, or that of another was measured since"},
    {"PON_ERR_MEASURING", 4031, false, "a power measurement is under way at the port; cancel it first"},
    {"PON_ERR_NO_CAGE", 4032, false, "the OLT has no such SFP cage"},
    {"PON_ERR_NO_DEVICE", 4033, false, "nothing answers at this address of the I2C bus"},
    {"PON_ERR_READ_ONLY", 4034, false, "some of these bytes of the module's memory cannot be written; none was"},
    {"PON_ERR_NO_UPGRADE_TYPE", 4060, false, "there is no upgrade type of this name, or none is bound to the ONU or its port"},
    {"PON_ERR_UPGRADE_TYPE_IN_USE", 4061, false, "an upgrade run that is under way uses the upgrade type; nothing was changed"},
    {"PON_ERR_WRONG_UPGRADE_TYPE", 4062, false, "the upgrade type is for another vendor or model than the ONU's"},
    {"PON_ERR_UP_TO_DATE", 4063, false, "the ONU has the version of its upgrade type already"},
    {"PON_ERR_UPGRADING", 4064, false, "an upgrade run of this ONU is under way"},
    {"PON_ERR_NOTHING_TO_UPGRADE", 4065, false, "none of the ONUs of the port can be upgraded: each is offline, without a type that fits, up to date or under way"},
    {"PON_ERR_NO_FILE", 4066, false, "the service cannot read the file; its log says why"},
    {"PON_ERR_NOT_ARRIVED", 4020, false, "no ONU with this MAC address has arrived at the port"},
    {"PON_ERR_NO_UNI", 4021, false, "the ONU has no such UNI port"},
    {"PON_ERR_TOO_LARGE", 4040, false, "the table is longer than a result can be; ask for less of it, one PON port for example"},
    {"PON_ERR_NO_INTERFACE", 4041, false, "the board has no such GE port (1 to 4), XAUI interface (1 and 2) or management port (1)"},
    {"PON_ERR_NOT_ABLE", 4070, false, "this kind of ONU is not able to do it"},
    {"PON_ERR_BAD_IMAGE", 4071, false, "the part does not go on where the image has got to, or the image is not what was announced"},
    {"PON_ERR_NO_IMAGE", 4072, false, "the ONU has no complete image to commit or to start"},
    {"PON_ERR_NOT_MONITORED", 4073, false, "the ONU does not monitor performance, or did not yet in the period before"},
    {"PON_ERR_SNOOPING", 4080, false, "the ONU does IGMP/MLD snooping; switch it to controllable multicast first"},
    {"PON_ERR_NO_PROFILE", 4090, false, "there is no profile of this name"},
    {"PON_ERR_NO_UNI_PROFILE", 4092, false, "there is no UNI profile of this number; they are numbered from 1 to 32"},
    {"PON_ERR_BAD_CONFIG", 4095, false, "the configuration is wrong or not complete, and nothing was changed; the service's log says what is wrong"},
    {"PON_ERR_OTHER_OLT", 4096, false, "the configuration is that of an OLT with another seed, ports, arrivals or silent share; nothing was changed"},
};

constexpr const Command *auth_record_commands[] = {&all_commands[13]};

constexpr Field auth_record_fields[] = {
    {"remove", FieldType::u32, 432, 4, "", 1, "1 removes the record of the LOID, else 0"},
};

constexpr const Command *auth_counts_commands[] = {&all_commands[14]};

constexpr Field auth_counts_fields[] = {
    {"records", FieldType::u32, 432, 4, "", 1, "authentication records"},
    {"admitted", FieldType::u32, 436, 4, "", 1, "bound ONUs that are online"},
    {"unauthenticated", FieldType::u32, 440, 4, "", 1, "bound ONUs that are turned away for their LOID"},
    {"waiting", FieldType::u32, 444, 4, "", 1, "ONUs that wait to be bound"},
    {"rejected", FieldType::u32, 448, 4, "", 1, "ONUs on the fibre that are on the black list"},
};

constexpr const Command *onu_confirm_commands[] = {&all_commands[16]};

constexpr Field onu_confirm_fields[] = {
    {"by_mode", FieldType::u8, 16, 1, "", 1, "0: the port's authentication does not concern the ONU while it is bound; 1: it does, so that a LOID mode may still turn it away"},
};

constexpr const Command *onu_batch_commands[] = {&all_commands[4], &all_commands[5], &all_commands[50], &all_commands[10]};

constexpr Field onu_batch_fields[] = {
    {"onu_set", FieldType::idset, 432, 16, "", 1, "the ONU ids, 128 bits: id w*32+b is bit b of word w"},
};

constexpr const Command *opt_range_commands[] = {&all_commands[51]};

constexpr Field opt_range_fields[] = {
    {"min_distance", FieldType::u32, 432, 4, "m", 1, "nearest ONU that is ranged, at most max_distance"},
    {"max_distance", FieldType::u32, 436, 4, "m", 1, "farthest ONU that is ranged, at most 20000"},
};

constexpr const Command *all_onu_info_commands[] = {&all_commands[37]};

constexpr Field all_onu_info_fields[] = {
    {"text", FieldType::text, 20, 1024, "", 1, "the text, at most 1023 characters and a NUL"},
};

constexpr const Command *onu_config_word_commands[] = {&all_commands[167]};

constexpr Field onu_config_word_fields[] = {
    {"word", FieldType::u32, 20, 4, "", 1, "bits: 0 it has a management address; 1 FEC is enabled; 2 it has its time by SNTP; 3 an SLA is stored, upstream or downstream; 4 it has several LLIDs; 5 performance monitoring and CATV are on; 6 controllable multicast; 7 fast leave is on; and where it is so at any of its UNI ports: 8 disabled, 9 no auto-negotiation, 10 flow control, 11 a rate limit, 12 a VLAN mode other than transparent, 13 a classification rule, 14 no loop detection. All other bits are 0"},
};

constexpr const Command *port_stats_commands[] = {&all_commands[75], &all_commands[76]};

constexpr Field port_stats_fields[] = {
    {"in_octets", FieldType::u64, 124, 8, "octets", 1, "received, of frames without errors (ifHCInOctets)"},
    {"in_unicast", FieldType::u64, 132, 8, "frames", 1, "received without errors, to one station (ifHCInUcastPkts)"},
    {"in_multicast", FieldType::u64, 140, 8, "frames", 1, "received without errors, to groups (ifHCInMulticastPkts, aMulticastFramesReceivedOK)"},
    {"in_broadcast", FieldType::u64, 148, 8, "frames", 1, "received without errors, to all (ifHCInBroadcastPkts, aBroadcastFramesReceivedOK)"},
    {"in_fcs_errors", FieldType::u64, 156, 8, "frames", 1, "dropped for a wrong frame check sequence (aFrameCheckSequenceErrors)"},
    {"in_code_errors", FieldType::u64, 164, 8, "frames", 1, "dropped for a wrong CRC-8 in the preamble, of a PON port (aOMPEmulationCRC8Errors), or for a wrong symbol, of a GE port (aSymbolErrorDuringCarrier)"},
    {"in_discards", FieldType::u64, 172, 8, "frames", 1, "received without errors, and dropped by policing (ifInDiscards)"},
    {"in_discard_octets", FieldType::u64, 180, 8, "octets", 1, "of in_discards"},
    {"out_octets", FieldType::u64, 188, 8, "octets", 1, "sent (ifHCOutOctets)"},
    {"out_unicast", FieldType::u64, 196, 8, "frames", 1, "sent to one station (ifHCOutUcastPkts)"},
    {"out_multicast", FieldType::u64, 204, 8, "frames", 1, "sent to groups (ifHCOutMulticastPkts, aMulticastFramesXmittedOK)"},
    {"out_broadcast", FieldType::u64, 212, 8, "frames", 1, "sent to all (ifHCOutBroadcastPkts, aBroadcastFramesXmittedOK)"},
    {"out_discards", FieldType::u64, 220, 8, "frames", 1, "not sent, for want of room or of a link (ifOutDiscards)"},
    {"out_discard_octets", FieldType::u64, 228, 8, "octets", 1, "of out_discards"},
    {"frames_64", FieldType::u64, 236, 8, "frames", 1, "received without errors or sent, of 64 octets (etherStatsPkts64Octets)"},
    {"frames_65_127", FieldType::u64, 244, 8, "frames", 1, "of 65 to 127 octets (etherStatsPkts65to127Octets)"},
    {"frames_128_255", FieldType::u64, 252, 8, "frames", 1, "of 128 to 255 octets (etherStatsPkts128to255Octets)"},
    {"frames_256_511", FieldType::u64, 260, 8, "frames", 1, "of 256 to 511 octets (etherStatsPkts256to511Octets)"},
    {"frames_512_1023", FieldType::u64, 268, 8, "frames", 1, "of 512 to 1023 octets (etherStatsPkts512to1023Octets)"},
    {"frames_1024_1518", FieldType::u64, 276, 8, "frames", 1, "of 1024 to 1518 octets (etherStatsPkts1024to1518Octets)"},
};

constexpr const Command *ge_phy_commands[] = {&all_commands[77]};

constexpr Field ge_phy_fields[] = {
    {"control", FieldType::u16, 124, 2, "", 1, "register 0: bit 14 loopback, 13 and 6 speed (01: 1000 Mbit/s), 12 auto-negotiation, 11 power down, 10 isolate, 8 full duplex"},
    {"status", FieldType::u16, 126, 2, "", 1, "register 1: bit 8 extended status, 6 preamble suppression, 5 auto-negotiation complete, 3 able to auto-negotiate, 2 link up, 0 extended registers"},
    {"phy_id_high", FieldType::u16, 128, 2, "", 1, "register 2: the PHY's identifier, bits 3 to 18 of its OUI"},
    {"phy_id_low", FieldType::u16, 130, 2, "", 1, "register 3: bits 19 to 24 of the OUI, model, revision"},
    {"advertised", FieldType::u16, 132, 2, "", 1, "register 4: bit 5 full duplex, 6 half duplex, 7 pause, 8 asymmetric pause"},
    {"partner", FieldType::u16, 134, 2, "", 1, "register 5: what the other end advertises, in the same bits, 14 acknowledged; 0 until auto-negotiation is complete"},
    {"expansion", FieldType::u16, 136, 2, "", 1, "register 6: bit 1 page received, 2 able to exchange next pages"},
    {"next_page", FieldType::u16, 138, 2, "", 1, "register 7: next page to send; bit 13 message page"},
    {"partner_page", FieldType::u16, 140, 2, "", 1, "register 8: next page of the other end"},
    {"extended_status", FieldType::u16, 142, 2, "", 1, "register 15: bit 15 1000BASE-X full duplex, 14 1000BASE-X half duplex"},
};

constexpr const Command *ge_phy_control_commands[] = {&all_commands[78]};

constexpr Field ge_phy_control_fields[] = {
    {"control", FieldType::u8, 124, 1, "", 1, "the upper byte of the control register: bit 7 reset (to auto-negotiation and full duplex, whatever the others), 6 loopback, 5 is refused (100 Mbit/s), 4 auto-negotiation, 3 power down, 2 isolate, 1 restart auto-negotiation (done at once), 0 full duplex"},
};

constexpr const Command *behavior_view_commands[] = {&all_commands[79], &all_commands[80]};

constexpr Field behavior_view_fields[] = {
    {"selector", FieldType::u32, 120, 4, "", 1, "0 the PON port, 1 the GE port (1 to 4)"},
};

constexpr const Command *ingress_commands[] = {&all_commands[79]};

constexpr Field ingress_fields[] = {
    {"vlan_mode", FieldType::u8, 124, 1, "", 1, "0: tags pass unchanged"},
    {"acceptable", FieldType::u8, 125, 1, "", 1, "frames that are let in: 0 all, 1 tagged only, 2 untagged only"},
    {"vlan_filter", FieldType::u8, 126, 1, "", 1, "1 where frames of VLANs that the port is no member of are dropped"},
    {"default_priority", FieldType::u8, 127, 1, "", 1, "802.1p priority of untagged frames"},
    {"pvid", FieldType::u16, 128, 2, "", 1, "VLAN of untagged frames"},
    {"tpid", FieldType::u16, 130, 2, "", 1, "type that a tag is known by"},
    {"max_frame", FieldType::u16, 132, 2, "octets", 1, "longest frame that is let in"},
    {"trust", FieldType::u8, 134, 1, "", 1, "what the queue follows from: 0 the port, 1 the 802.1p priority, 2 the DSCP"},
    {"learning", FieldType::u8, 135, 1, "", 1, "1 where source addresses are learnt"},
    {"committed_rate", FieldType::u32, 136, 4, "kbit/s", 1, "rate limit of policing"},
    {"committed_burst", FieldType::u32, 140, 4, "octets", 1, "how much may come at once beyond it"},
    {"peak_rate", FieldType::u32, 144, 4, "kbit/s", 1, "rate beyond which all is dropped"},
    {"peak_burst", FieldType::u32, 148, 4, "octets", 1, "how much may come at once beyond that"},
    {"broadcast_limit", FieldType::u32, 152, 4, "frames/s", 1, "storm control of broadcast frames"},
    {"multicast_limit", FieldType::u32, 156, 4, "frames/s", 1, "storm control of multicast frames"},
    {"unknown_limit", FieldType::u32, 160, 4, "frames/s", 1, "storm control of unicast frames to unknown addresses"},
    {"policed_share", FieldType::u32, 164, 4, "ppm", 1, "of the frames received without errors, those that policing drops"},
    {"queue_of", FieldType::bytes, 168, 8, "", 1, "queue of the 802.1p priorities 0 to 7"},
    {"queues", FieldType::u8, 176, 1, "", 1, "number of queues"},
    {"policing", FieldType::u8, 177, 1, "", 1, "1 where policing is on"},
};

constexpr const Command *egress_commands[] = {&all_commands[80]};

constexpr Field egress_fields[] = {
    {"tagging", FieldType::u8, 124, 1, "", 1, "0: frames leave as they are"},
    {"scheduler", FieldType::u8, 125, 1, "", 1, "0 strict priority, 1 weighted round robin"},
    {"discard_share", FieldType::u16, 126, 2, "ppm", 1, "of the frames to be sent, those that find no room in their queue"},
    {"shaping_rate", FieldType::u32, 128, 4, "kbit/s", 1, "rate limit"},
};

constexpr const Command *pon_mac_commands[] = {&all_commands[81]};

constexpr Field pon_mac_fields[] = {
    {"registered", FieldType::u32, 124, 4, "", 1, "bound ONUs that are online"},
    {"discovery_interval", FieldType::u32, 128, 4, "ms", 1, "from one discovery window to the next"},
    {"discovery_window", FieldType::u32, 132, 4, "TQ", 1, "its length"},
    {"report_timeout", FieldType::u32, 136, 4, "ms", 1, "without a REPORT, after which an ONU is deregistered"},
    {"gate_timeout", FieldType::u32, 140, 4, "ms", 1, "without a GATE, after which an ONU sends no more"},
    {"grant_length", FieldType::u32, 144, 4, "TQ", 1, "grant of an ONU with full queues"},
    {"grant_cycle", FieldType::u32, 148, 4, "us", 1, "from one grant of an ONU to the next"},
    {"sync_time", FieldType::u16, 152, 2, "TQ", 1, "that the receiver needs at a grant's start"},
    {"laser_on", FieldType::u16, 154, 2, "TQ", 1, "that an ONU's laser needs to come on"},
    {"laser_off", FieldType::u16, 156, 2, "TQ", 1, "that it needs to go off"},
    {"fec", FieldType::u8, 158, 1, "", 1, "1 with forward error correction"},
    {"uplink", FieldType::u8, 159, 1, "", 1, "GE port that the traffic goes through"},
};

constexpr const Command *mpcp_commands[] = {&all_commands[183]};

constexpr Field mpcp_fields[] = {
    {"discovery_interval", FieldType::u32, 124, 4, "ms", 1, "1: from one discovery window to the next, 100 to 10000; at first 1000"},
    {"discovery_window", FieldType::u32, 128, 4, "TQ", 1, "1: its length, 12500 (the round trip of 20 km) to 65535; at first 16384"},
    {"report_timeout", FieldType::u32, 132, 4, "ms", 1, "2: without a REPORT, after which an ONU is deregistered, 50 to 10000; at first 1000"},
    {"gate_timeout", FieldType::u32, 136, 4, "ms", 1, "2: without a GATE, after which an ONU sends no more, 10 to 1000; at first 50"},
    {"grant_length", FieldType::u32, 140, 4, "TQ", 1, "3: grant of an ONU with full queues, 64 to 65535; at first 2048"},
    {"grant_cycle", FieldType::u32, 144, 4, "us", 1, "3: from one grant of an ONU to the next, 250 to 10000; at first 1000"},
    {"sync_time", FieldType::u32, 148, 4, "TQ", 1, "3: that the receiver needs at a grant's start, from 1, less than grant_length; at first 64"},
    {"fec", FieldType::u32, 152, 4, "", 1, "3: 1 with forward error correction, else 0; at first 0"},
};

constexpr const Command *ge_mac_commands[] = {&all_commands[84]};

constexpr Field ge_mac_fields[] = {
    {"mac", FieldType::mac, 124, 6, "", 1, "its address"},
    {"max_frame", FieldType::u16, 130, 2, "octets", 1, "longest frame"},
    {"speed", FieldType::u16, 132, 2, "Mbit/s", 1, "0 while the link is down"},
    {"full_duplex", FieldType::u8, 134, 1, "", 1, "1 while the link is up: it is full duplex"},
    {"link", FieldType::u8, 135, 1, "", 1, "1 while the link is up"},
    {"tx_enabled", FieldType::u8, 136, 1, "", 1, "1 where it may send"},
    {"rx_enabled", FieldType::u8, 137, 1, "", 1, "1 where it may receive"},
    {"pause_tx", FieldType::u8, 138, 1, "", 1, "1 where it may send PAUSE"},
    {"pause_rx", FieldType::u8, 139, 1, "", 1, "1 where it obeys PAUSE"},
    {"pause_quanta", FieldType::u16, 140, 2, "", 1, "what it asks for in a PAUSE, in 512 bit times"},
    {"inter_frame_gap", FieldType::u16, 142, 2, "bit times", 1, "between frames that it sends"},
    {"loopback", FieldType::u8, 144, 1, "", 1, "1 while the PHY is in loopback"},
    {"promiscuous", FieldType::u8, 145, 1, "", 1, "1: it takes frames to any address"},
};

constexpr const Command *xaui_mac_commands[] = {&all_commands[85]};

constexpr Field xaui_mac_fields[] = {
    {"mac", FieldType::mac, 124, 6, "", 1, "its address"},
    {"max_frame", FieldType::u16, 130, 2, "octets", 1, "longest frame"},
    {"speed", FieldType::u32, 132, 4, "Mbit/s", 1, "always 10000"},
    {"full_duplex", FieldType::u8, 136, 1, "", 1, "always 1"},
    {"link", FieldType::u8, 137, 1, "", 1, "1 while its lanes are aligned"},
    {"pause_tx", FieldType::u8, 138, 1, "", 1, "1 where it may send PAUSE"},
    {"pause_rx", FieldType::u8, 139, 1, "", 1, "1 where it obeys PAUSE"},
    {"local_fault", FieldType::u8, 140, 1, "", 1, "1 while it sees no signal"},
    {"remote_fault", FieldType::u8, 141, 1, "", 1, "1 while the other end sees none"},
    {"pause_quanta", FieldType::u16, 142, 2, "", 1, "what it asks for in a PAUSE, in 512 bit times"},
    {"in_load", FieldType::u32, 144, 4, "kbit/s", 1, "offered by the network for the ONUs, now"},
    {"out_load", FieldType::u32, 148, 4, "kbit/s", 1, "offered by the ONUs for the network, now"},
};

constexpr const Command *xaui_phy_commands[] = {&all_commands[86]};

constexpr Field xaui_phy_fields[] = {
    {"control", FieldType::u16, 124, 2, "", 1, "register 0: bits 13 and 6 speed (11: 10 Gbit/s), 14 loopback, 11 low power"},
    {"status", FieldType::u16, 126, 2, "", 1, "register 1: bit 2 link up, 1 able to save power, 7 fault"},
    {"speed", FieldType::u16, 128, 2, "", 1, "register 4: bit 0 able to do 10 Gbit/s"},
    {"status_2", FieldType::u16, 130, 2, "", 1, "register 8: bits 15 and 14 present (10), 11 transmit fault, 10 receive fault"},
    {"lane_status", FieldType::u16, 132, 2, "", 1, "register 24: bit 12 lanes aligned, 11 able to send test patterns, 3 to 0 lanes synchronised"},
    {"test", FieldType::u16, 134, 2, "", 1, "register 25: bit 2 test pattern on, 1 and 0 which"},
};

constexpr const Command *mgmt_cfg_commands[] = {&all_commands[90]};

constexpr Field mgmt_cfg_fields[] = {
    {"enabled", FieldType::u8, 124, 1, "", 1, "1 where it is enabled"},
    {"full_duplex", FieldType::u8, 125, 1, "", 1, "1 with full duplex"},
    {"speed", FieldType::u16, 126, 2, "Mbit/s", 1, "its speed"},
};

constexpr const Command *fdb_dump_commands[] = {&all_commands[89]};

constexpr Field fdb_dump_fields[] = {
    {"selector", FieldType::u32, 120, 4, "", 1, "0 all entries, 1 dynamic ones, 2 static ones"},
};

constexpr const Command *debug_switch_commands[] = {&all_commands[91], &all_commands[92]};

constexpr Field debug_switch_fields[] = {
    {"on", FieldType::u32, 116, 4, "", 1, "1 on, 0 off"},
    {"pon_port", FieldType::u32, 120, 4, "", 1, "PON port, 0 for all"},
};

constexpr const Command *config_written_commands[] = {&all_commands[215]};

constexpr Field config_written_fields[] = {
    {"size", FieldType::u32, 120, 4, "bytes", 1, "size of the file"},
    {"file", FieldType::text, 124, 37, "", 1, "absolute path of the file, where the service runs"},
};

constexpr const Command *config_read_commands[] = {&all_commands[54]};

constexpr Field config_read_fields[] = {
    {"size", FieldType::u32, 8, 4, "bytes", 1, "size of the file"},
    {"file", FieldType::text, 24, 37, "", 1, "absolute path of the file, where the service runs"},
};

constexpr const Command *config_part_commands[] = {&all_commands[55]};

constexpr Field config_part_fields[] = {
    {"offset", FieldType::u32, 24, 4, "bytes", 1, "where in the text the part begins: 0, or where the last one ended"},
    {"total", FieldType::u32, 28, 4, "bytes", 1, "size of the whole text, at most 67108864; the same in all of its parts"},
    {"length", FieldType::u32, 32, 4, "bytes", 1, "length of this part, 1 to 4080"},
    {"bytes", FieldType::bytes, 36, 4080, "", 1, "the bytes of the text, from the left"},
};

constexpr const Command *vlan_view_commands[] = {&all_commands[216], &all_commands[217]};

constexpr Field vlan_view_fields[] = {
    {"scope", FieldType::u32, 352, 4, "", 1, "0 all PON ports or the whole PON port, 1 the ONU `onu_onu_id` of the PON port"},
};

constexpr const Command *sla_commands[] = {&all_commands[194]};

constexpr Field sla_fields[] = {
    {"fixed", FieldType::u32, 124, 4, "kbit/s", 1, "bandwidth that is granted whether used or not"},
    {"assured", FieldType::u32, 128, 4, "kbit/s", 1, "further bandwidth that is granted when asked for"},
    {"maximum", FieldType::u32, 132, 4, "kbit/s", 1, "bandwidth that is never exceeded, 1 to 1000000"},
    {"priority", FieldType::u32, 136, 4, "", 1, "of what is left: 0 lowest to 7 highest"},
    {"weight", FieldType::u32, 140, 4, "", 1, "share among those of one priority, 1 to 100"},
};

constexpr const Command *sla_of_onu_commands[] = {&all_commands[195], &all_commands[93]};

constexpr Field sla_of_onu_fields[] = {
    {"fixed", FieldType::u32, 124, 4, "kbit/s", 1, "bandwidth that is granted whether used or not"},
    {"assured", FieldType::u32, 128, 4, "kbit/s", 1, "further bandwidth that is granted when asked for"},
    {"maximum", FieldType::u32, 132, 4, "kbit/s", 1, "bandwidth that is never exceeded"},
    {"priority", FieldType::u32, 136, 4, "", 1, "of what is left: 0 lowest to 7 highest"},
    {"weight", FieldType::u32, 140, 4, "", 1, "share among those of one priority"},
};

constexpr const Command *sla_down_commands[] = {&all_commands[199]};

constexpr Field sla_down_fields[] = {
    {"maximum", FieldType::u32, 124, 4, "kbit/s", 1, "bandwidth that is never exceeded, at most 1000000; 0 takes the SLA away: the default holds again, which is 1000000"},
};

constexpr const Command *sla_down_of_onu_commands[] = {&all_commands[200]};

constexpr Field sla_down_of_onu_fields[] = {
    {"maximum", FieldType::u32, 124, 4, "kbit/s", 1, "bandwidth that is never exceeded: what was stored, or the default, which is 1000000"},
};

constexpr const Command *sla_of_port_commands[] = {&all_commands[196]};

constexpr Field sla_of_port_fields[] = {
    {"onus", FieldType::u32, 124, 4, "", 1, "bound ONUs with a stored SLA"},
    {"fixed", FieldType::u32, 128, 4, "kbit/s", 1, "sum of their fixed bandwidth"},
    {"assured", FieldType::u32, 132, 4, "kbit/s", 1, "sum of their assured bandwidth"},
    {"capacity", FieldType::u32, 136, 4, "kbit/s", 1, "what the port has for both"},
    {"free", FieldType::u32, 140, 4, "kbit/s", 1, "what is left of it"},
};

constexpr const Command *p2p_switch_commands[] = {&all_commands[187]};

constexpr Field p2p_switch_fields[] = {
    {"port", FieldType::u32, 96, 4, "", 1, "PON port number, 0 all ports"},
    {"onu", FieldType::u32, 100, 4, "", 1, "ONU id of a bound ONU, or 128: the switch of the port itself"},
    {"on", FieldType::u32, 116, 4, "", 1, "0 off, 1 on"},
};

constexpr const Command *p2p_own_port_commands[] = {&all_commands[188]};

constexpr Field p2p_own_port_fields[] = {
    {"own_port", FieldType::u32, 116, 4, "", 1, "GE uplink, 1 to 4, that takes the frames of the PON port that P2P forwarding leaves; 0 any, as at first"},
};

constexpr const Command *p2p_of_port_commands[] = {&all_commands[189]};

constexpr Field p2p_of_port_fields[] = {
    {"on", FieldType::u32, 100, 4, "", 1, "the switch of the port: 0 off, 1 on"},
    {"rest", FieldType::u32, 108, 4, "", 1, "what happens to frames between ONUs that no entry concerns: 0 dropped, 1 forwarded"},
    {"own_port", FieldType::u32, 116, 4, "", 1, "GE uplink that takes what P2P forwarding leaves; 0 any"},
    {"rate", FieldType::u32, 124, 4, "kbit/s", 1, "of all frames between ONUs together; 0 not limited"},
    {"first_vlan", FieldType::u16, 128, 2, "", 1, "first VLAN that is forwarded; 0 all of them"},
    {"last_vlan", FieldType::u16, 130, 2, "", 1, "last one; 0 with first_vlan 0"},
    {"broadcast", FieldType::u8, 132, 1, "", 1, "1 where broadcast frames are forwarded, else 0"},
    {"multicast", FieldType::u8, 133, 1, "", 1, "1 where multicast frames are forwarded, else 0"},
    {"onu_set", FieldType::idset, 136, 16, "", 1, "bound ONUs that the switch is on for, 128 bits: id w*32+b is bit b of word w"},
};

constexpr const Command *p2p_config_commands[] = {&all_commands[192]};

constexpr Field p2p_config_fields[] = {
    {"rate", FieldType::u32, 124, 4, "kbit/s", 1, "of all frames between ONUs together, at most 1000000; 0 not limited"},
    {"first_vlan", FieldType::u16, 128, 2, "", 1, "first VLAN that is forwarded, 1 to 4094; 0 all of them"},
    {"last_vlan", FieldType::u16, 130, 2, "", 1, "last one, at least first_vlan; 0 with first_vlan 0"},
    {"broadcast", FieldType::u8, 132, 1, "", 1, "1 to forward broadcast frames, else 0"},
    {"multicast", FieldType::u8, 133, 1, "", 1, "1 to forward multicast frames, else 0"},
};

constexpr const Command *p2p_entry_commands[] = {&all_commands[191]};

constexpr Field p2p_entry_fields[] = {
    {"action", FieldType::u16, 124, 2, "", 1, "1 forward, 2 drop, 0 remove the entry"},
    {"from_onu", FieldType::u16, 126, 2, "", 1, "ONU id that the frames come from, 128 any"},
    {"to_port", FieldType::u16, 128, 2, "", 1, "PON port that they go to"},
    {"to_onu", FieldType::u16, 130, 2, "", 1, "ONU id there, 128 any"},
    {"rate", FieldType::u32, 132, 4, "kbit/s", 1, "at most 1000000; 0 not limited"},
};

constexpr const Command *llid_behavior_commands[] = {&all_commands[193]};

constexpr Field llid_behavior_fields[] = {
    {"mac_limit", FieldType::u32, 124, 4, "", 1, "addresses that are learned at most; 0 not limited"},
    {"broadcast_rate", FieldType::u32, 128, 4, "kbit/s", 1, "of broadcast frames, at most 1000000; 0 not limited"},
    {"multicast_rate", FieldType::u32, 132, 4, "kbit/s", 1, "of multicast frames, at most 1000000; 0 not limited"},
    {"unknown_rate", FieldType::u32, 136, 4, "kbit/s", 1, "of frames to unknown addresses, at most 1000000; 0 not limited"},
    {"over_limit", FieldType::u32, 140, 4, "", 1, "frames from addresses that mac_limit keeps from being learned: 0 forwarded, 1 dropped"},
    {"isolated", FieldType::u32, 144, 4, "", 1, "1 where P2P forwarding leaves the LLID out, else 0"},
};

constexpr const Command *fdb_config_commands[] = {&all_commands[206]};

constexpr Field fdb_config_fields[] = {
    {"ageing", FieldType::u32, 124, 4, "s", 1, "how long an address stays that is not heard of, 10 to 1000000; 0 for ever"},
    {"learning", FieldType::u32, 128, 4, "", 1, "1 on; 0 off: no address is learned, and none that is known is refreshed"},
    {"port_limit", FieldType::u32, 132, 4, "", 1, "addresses that a PON port has at most, those that were learned first; 0 not limited"},
};

constexpr const Command *fdb_flush_commands[] = {&all_commands[207]};

constexpr Field fdb_flush_fields[] = {
    {"side", FieldType::u16, 124, 2, "", 1, "0 both, 1 the PON side, 2 the network side"},
    {"port", FieldType::u16, 126, 2, "", 1, "PON port (side 1) or GE uplink (side 2); 0 all"},
    {"llid", FieldType::u16, 128, 2, "", 1, "LLID of the PON port, 1 to 128; 0 all"},
    {"vlan", FieldType::u16, 130, 2, "", 1, "VLAN; 0 all"},
    {"mac", FieldType::mac, 132, 6, "", 1, "MAC address; zero all"},
};

constexpr const Command *mac_query_commands[] = {&all_commands[209], &all_commands[210]};

constexpr Field mac_query_fields[] = {
    {"from", FieldType::u32, 124, 4, "", 1, "how many of them to pass over"},
    {"count", FieldType::u32, 128, 4, "", 1, "how many to show then, at most 100; 0 as many as there may be"},
    {"port", FieldType::u32, 132, 4, "", 1, "PON port, or GE uplink of the network side; 0 all"},
    {"llid", FieldType::u32, 136, 4, "", 1, "LLID of the PON port, 1 to 128; 0 all, and on the network side"},
    {"uni", FieldType::u32, 140, 4, "", 1, "UNI port of the ONU; 0 all, and on the network side"},
    {"vlan", FieldType::u32, 144, 4, "", 1, "VLAN; 0 all"},
    {"mac", FieldType::mac, 148, 6, "", 1, "MAC address; zero all"},
};

constexpr const Command *mac_count_commands[] = {&all_commands[209], &all_commands[210]};

constexpr Field mac_count_fields[] = {
    {"matching", FieldType::u32, 120, 4, "", 1, "entries that the query matches, shown or not"},
};

constexpr const Command *mac_ageing_commands[] = {&all_commands[208]};

constexpr Field mac_ageing_fields[] = {
    {"entries", FieldType::u32, 112, 4, "", 1, "entries of both sides"},
    {"ageing", FieldType::u32, 120, 4, "s", 1, "how long an address stays that is not heard of; 0 for ever"},
};

constexpr const Command *blacklist_text_commands[] = {&all_commands[8]};

constexpr Field blacklist_text_fields[] = {
    {"text", FieldType::text, 429, 201, "", 1, "free text of the entry, at most 200 bytes of UTF-8"},
};

constexpr const Command *blacklist_batch_commands[] = {&all_commands[12]};

constexpr Field blacklist_batch_fields[] = {
    {"id_set", FieldType::idset, 432, 16, "", 1, "the ids on the black list, 128 bits: id w*32+b is bit b of word w"},
};

constexpr const Command *id_usage_commands[] = {&all_commands[26], &all_commands[30]};

constexpr Field id_usage_fields[] = {
    {"id_set", FieldType::idset, 432, 16, "", 1, "the ids in use, 128 bits: id w*32+b is bit b of word w"},
    {"count", FieldType::u32, 448, 4, "", 1, "how many they are"},
};

constexpr const Command *whitelist_entry_commands[] = {&all_commands[17]};

constexpr Field whitelist_entry_fields[] = {
    {"state", FieldType::u32, 432, 4, "", 1, "0 offline, 1 online, 2 unauthenticated"},
    {"distance", FieldType::u32, 436, 4, "m", 1, "distance that ranging found; 0 while the ONU is offline"},
    {"authenticated", FieldType::u32, 440, 4, "", 1, "1 where the ONU is on the fibre and let in, else 0"},
    {"exempt", FieldType::u32, 444, 4, "", 1, "1 where it was confirmed, so that the port's authentication does not concern it, else 0"},
    {"supported", FieldType::u32, 448, 4, "", 1, "1 where the ONU is supported, else 0"},
    {"reboots", FieldType::u32, 452, 4, "", 1, "how often the ONU was rebooted by command, or after an upgrade"},
    {"description", FieldType::text, 456, 128, "", 1, "the description"},
    {"loid", FieldType::text, 584, 25, "", 1, "the LOID that the ONU tells; empty while it is offline"},
};

constexpr const Command *loop_config_commands[] = {&all_commands[234]};

constexpr Field loop_config_fields[] = {
    {"state", FieldType::u32, 20, 4, "", 1, "1 while loops are detected, else 0"},
    {"mode", FieldType::u32, 24, 4, "", 1, "how ports recover: 0 automatically after the recovery time, 1 by command only"},
    {"time", FieldType::u32, 28, 4, "s", 1, "recovery time, 10 to 86400"},
    {"interval", FieldType::u32, 32, 4, "s", 1, "interval between detection packets, 1 to 600"},
    {"shut", FieldType::u32, 36, 4, "", 1, "how many UNI ports are shut now"},
    {"detected", FieldType::u32, 40, 4, "", 1, "how many loops were detected so far; one that is there again after a recovery counts again"},
    {"recovered", FieldType::u32, 44, 4, "", 1, "how many recoveries there were so far"},
    {"reserved", FieldType::bytes, 48, 52, "", 1, "zero"},
};

constexpr const Command *loid_commands[] = {&all_commands[41]};

constexpr Field loid_fields[] = {
    {"loid", FieldType::text, 45, 64, "", 1, "LOID, 1 to 24 printable ASCII characters"},
    {"password", FieldType::text, 109, 64, "", 1, "its password, at most 12 printable ASCII characters; may be empty"},
};

constexpr const Command *loid_delete_commands[] = {&all_commands[42]};

constexpr Field loid_delete_fields[] = {
    {"loid", FieldType::text, 45, 64, "", 1, "LOID, 1 to 24 printable ASCII characters"},
};

constexpr const Command *oui_commands[] = {&all_commands[52]};

constexpr Field oui_fields[] = {
    {"oui", FieldType::bytes, 429, 3, "", 1, "OUI in transmission order"},
};

constexpr const Command *uni_profile_commands[] = {&all_commands[32]};

constexpr Field uni_profile_fields[] = {
    {"admin", FieldType::u8, 429, 1, "", 1, "1 the port is on, 0 off"},
    {"autoneg", FieldType::u8, 430, 1, "", 1, "1 the port negotiates speed and duplex, 0 it takes those that it is configured to"},
    {"pause", FieldType::u8, 431, 1, "", 1, "flow control: 1 on, 0 off"},
    {"up_cir", FieldType::u32, 432, 4, "kbit/s", 1, "upstream committed rate, 1 to 999999"},
    {"up_cbs", FieldType::u32, 436, 4, "byte", 1, "upstream committed burst, 1522 to 16777215"},
    {"up_ebs", FieldType::u32, 440, 4, "byte", 1, "upstream excess burst, at most 16777215"},
    {"down_cir", FieldType::u32, 444, 4, "kbit/s", 1, "downstream committed rate, at most down_pir"},
    {"down_pir", FieldType::u32, 448, 4, "kbit/s", 1, "downstream peak rate, which limits it, 1 to 999999"},
    {"up_on", FieldType::u8, 452, 1, "", 1, "1 where upstream is limited, else 0: then its values do not count"},
    {"down_on", FieldType::u8, 453, 1, "", 1, "the same of downstream"},
    {"vlan_mode", FieldType::u8, 456, 1, "", 1, "0 transparent, 1 tag, 2 translation, 3 trunk"},
    {"vlans", FieldType::u8, 457, 1, "", 1, "how many VLANs there are: 1 to 8 of a translation or trunk, else 0"},
    {"pvid", FieldType::u16, 458, 2, "", 1, "VLAN of untagged frames, 1 to 4094"},
    {"priority", FieldType::u8, 460, 1, "", 1, "802.1p priority of untagged frames, 0 to 7"},
    {"tpid", FieldType::u16, 462, 2, "", 1, "type that a tag is known by, at least 1536; usually 33024 (8100h)"},
    {"user_1", FieldType::u16, 464, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_1", FieldType::u16, 466, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_2", FieldType::u16, 468, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_2", FieldType::u16, 470, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_3", FieldType::u16, 472, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_3", FieldType::u16, 474, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_4", FieldType::u16, 476, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_4", FieldType::u16, 478, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_5", FieldType::u16, 480, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_5", FieldType::u16, 482, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_6", FieldType::u16, 484, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_6", FieldType::u16, 486, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_7", FieldType::u16, 488, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_7", FieldType::u16, 490, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_8", FieldType::u16, 492, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_8", FieldType::u16, 494, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
};

constexpr const Command *onu_port_config_set_commands[] = {&all_commands[171]};

constexpr Field onu_port_config_set_fields[] = {
    {"profile", FieldType::u8, 352, 1, "", 1, "number of the UNI profile that the port takes, 1 to 32: then the rest does not count; 0 none"},
    {"admin", FieldType::u8, 353, 1, "", 1, "1 the port is on, 0 off"},
    {"autoneg", FieldType::u8, 354, 1, "", 1, "1 the port negotiates speed and duplex, 0 it takes those that it is configured to"},
    {"pause", FieldType::u8, 355, 1, "", 1, "flow control: 1 on, 0 off"},
    {"up_cir", FieldType::u32, 356, 4, "kbit/s", 1, "upstream committed rate, 1 to 999999"},
    {"up_cbs", FieldType::u32, 360, 4, "byte", 1, "upstream committed burst, 1522 to 16777215"},
    {"up_ebs", FieldType::u32, 364, 4, "byte", 1, "upstream excess burst, at most 16777215"},
    {"down_cir", FieldType::u32, 368, 4, "kbit/s", 1, "downstream committed rate, at most down_pir"},
    {"down_pir", FieldType::u32, 372, 4, "kbit/s", 1, "downstream peak rate, which limits it, 1 to 999999"},
    {"up_on", FieldType::u8, 376, 1, "", 1, "1 where upstream is limited, else 0: then its values do not count"},
    {"down_on", FieldType::u8, 377, 1, "", 1, "the same of downstream"},
    {"vlan_mode", FieldType::u8, 380, 1, "", 1, "0 transparent, 1 tag, 2 translation, 3 trunk"},
    {"vlans", FieldType::u8, 381, 1, "", 1, "how many VLANs there are: 1 to 8 of a translation or trunk, else 0"},
    {"pvid", FieldType::u16, 382, 2, "", 1, "VLAN of untagged frames, 1 to 4094"},
    {"priority", FieldType::u8, 384, 1, "", 1, "802.1p priority of untagged frames, 0 to 7"},
    {"tpid", FieldType::u16, 386, 2, "", 1, "type that a tag is known by, at least 1536; usually 33024 (8100h)"},
    {"user_1", FieldType::u16, 388, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_1", FieldType::u16, 390, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_2", FieldType::u16, 392, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_2", FieldType::u16, 394, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_3", FieldType::u16, 396, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_3", FieldType::u16, 398, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_4", FieldType::u16, 400, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_4", FieldType::u16, 402, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_5", FieldType::u16, 404, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_5", FieldType::u16, 406, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_6", FieldType::u16, 408, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_6", FieldType::u16, 410, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_7", FieldType::u16, 412, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_7", FieldType::u16, 414, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_8", FieldType::u16, 416, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_8", FieldType::u16, 418, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
};

constexpr const Command *onu_config_set_commands[] = {&all_commands[168]};

constexpr Field onu_config_set_fields[] = {
    {"parts", FieldType::u8, 352, 1, "", 1, "what is set, a sum, 1 to 15: 1 FEC, 2 multicast mode, 4 fast leave, 8 management address; the rest does not count"},
    {"multicast", FieldType::u8, 353, 1, "", 1, "multicast mode: 0 IGMP/MLD snooping, 1 controllable multicast"},
    {"fec", FieldType::u32, 356, 4, "", 1, "forward error correction: 2 on, 3 off"},
    {"fast_leave", FieldType::u32, 360, 4, "", 1, "1 on, 0 off"},
    {"address", FieldType::bytes, 364, 4, "", 1, "management address: IPv4 address of a host, neither the first nor the last of its network; with mode 0 this and the rest is 0"},
    {"mask", FieldType::bytes, 368, 4, "", 1, "network mask, of 1 to 30 bits from the left"},
    {"gateway", FieldType::bytes, 372, 4, "", 1, "IPv4 address of the gateway, another host of the network; 0 none"},
    {"vlan", FieldType::u16, 376, 2, "", 1, "VLAN, 1 to 4094; 0 untagged"},
    {"priority", FieldType::u8, 378, 1, "", 1, "802.1p priority, 0 to 7"},
    {"mode", FieldType::u8, 379, 1, "", 1, "0 off, 1 static address"},
    {"dscp", FieldType::u8, 380, 1, "", 1, "DSCP of what the ONU sends, 0 to 63"},
};

constexpr const Command *onu_wan_view_commands[] = {&all_commands[172]};

constexpr Field onu_wan_view_fields[] = {
    {"index", FieldType::u32, 24, 4, "", 1, "number of the connection, 1 to 8; 0 all"},
};

constexpr const Command *onu_wan_commands[] = {&all_commands[173]};

constexpr Field onu_wan_fields[] = {
    {"index", FieldType::u32, 24, 4, "", 1, "number of the connection, 1 to 8"},
    {"mode", FieldType::u8, 352, 1, "", 1, "0 removed, 1 bridge, 2 route: gateways only"},
    {"service", FieldType::u8, 353, 1, "", 1, "what it is for: 1 internet, 2 voice, 3 management, 4 other"},
    {"ip_mode", FieldType::u8, 354, 1, "", 1, "0 of a bridge; of a route 1 static, 2 DHCP, 3 PPPoE"},
    {"priority", FieldType::u8, 355, 1, "", 1, "802.1p priority, 0 to 7"},
    {"vlan", FieldType::u16, 356, 2, "", 1, "VLAN, 1 to 4094; 0 untagged"},
    {"address", FieldType::bytes, 360, 4, "", 1, "IPv4 address of a host; 0 unless static"},
    {"mask", FieldType::bytes, 364, 4, "", 1, "network mask, of 1 to 30 bits from the left; 0 unless static"},
    {"gateway", FieldType::bytes, 368, 4, "", 1, "IPv4 address of the gateway, another host of the network, or 0 none; 0 unless static"},
    {"name", FieldType::text, 372, 24, "", 1, "name, 1 to 23 bytes"},
};

constexpr const Command *onu_wlan_commands[] = {&all_commands[175]};

constexpr Field onu_wlan_fields[] = {
    {"index", FieldType::u32, 24, 4, "", 1, "number of the WLAN, 1 to 4"},
    {"enabled", FieldType::u8, 352, 1, "", 1, "1 enabled, else 0"},
    {"channel", FieldType::u8, 353, 1, "", 1, "channel, 1 to 13; 0 chosen by the ONU"},
    {"security", FieldType::u8, 354, 1, "", 1, "0 open, 1 WPA2, 2 WPA2 and WPA3, 3 WPA3"},
    {"hidden", FieldType::u8, 355, 1, "", 1, "1 where the name is not announced, else 0"},
    {"name", FieldType::text, 356, 33, "", 1, "SSID, 1 to 32 bytes"},
};

constexpr const Command *onu_acl_commands[] = {&all_commands[179]};

constexpr Field onu_acl_fields[] = {
    {"index", FieldType::u32, 24, 4, "", 1, "number of the rule, 1 to 8"},
    {"action", FieldType::u8, 352, 1, "", 1, "0 removed, 1 permit, 2 deny"},
    {"direction", FieldType::u8, 353, 1, "", 1, "1 upstream, 2 downstream"},
    {"protocol", FieldType::u8, 354, 1, "", 1, "IP protocol number, 6 TCP and 17 UDP; 0 any"},
    {"source", FieldType::bytes, 356, 4, "", 1, "IPv4 address of the sender's network"},
    {"source_mask", FieldType::bytes, 360, 4, "", 1, "its mask, of 1 to 32 bits from the left; 0 with source 0: any"},
    {"dest", FieldType::bytes, 364, 4, "", 1, "IPv4 address of the receiver's network"},
    {"dest_mask", FieldType::bytes, 368, 4, "", 1, "its mask, of 1 to 32 bits from the left; 0 with dest 0: any"},
    {"first_port", FieldType::u16, 372, 2, "", 1, "first port of the receiver, of TCP and UDP only; 0 any"},
    {"last_port", FieldType::u16, 374, 2, "", 1, "last one, at least first_port; 0 with first_port 0"},
};

constexpr const Command *onu_dhcp_commands[] = {&all_commands[181]};

constexpr Field onu_dhcp_fields[] = {
    {"enabled", FieldType::u8, 352, 1, "", 1, "1 enabled, else 0"},
    {"lease_time", FieldType::u32, 356, 4, "s", 1, "how long an address is leased, 60 to 864000"},
    {"address", FieldType::bytes, 360, 4, "", 1, "IPv4 address of the gateway on the users' side, a host's"},
    {"mask", FieldType::bytes, 364, 4, "", 1, "network mask, of 1 to 30 bits from the left"},
    {"first", FieldType::bytes, 368, 4, "", 1, "first address that is leased, a host's of the network"},
    {"last", FieldType::bytes, 372, 4, "", 1, "last one, at least the first; the gateway's is not among them"},
};

constexpr const Command *onu_sn_commands[] = {&all_commands[95]};

constexpr Field onu_sn_fields[] = {
    {"vendor", FieldType::text, 352, 4, "", 1, "vendor id"},
    {"model", FieldType::text, 356, 4, "", 1, "model"},
    {"mac", FieldType::mac, 360, 6, "", 1, "ONU id: its MAC address"},
    {"hardware", FieldType::text, 366, 8, "", 1, "hardware version"},
    {"software", FieldType::text, 374, 16, "", 1, "software version that runs"},
    {"extended_model", FieldType::text, 390, 16, "", 1, "extended model: the model, and its user ports"},
};

constexpr const Command *onu_fw_commands[] = {&all_commands[96]};

constexpr Field onu_fw_fields[] = {
    {"version", FieldType::text, 352, 128, "", 1, "version of the firmware that runs: that of the software, after an upgrade the new one"},
};

constexpr const Command *onu_chip_id_commands[] = {&all_commands[97]};

constexpr Field onu_chip_id_fields[] = {
    {"vendor", FieldType::text, 352, 2, "", 1, "vendor id"},
    {"model", FieldType::u16, 354, 2, "", 1, "model number"},
    {"revision", FieldType::u8, 356, 1, "", 1, "revision, from 1 on"},
    {"date", FieldType::bytes, 357, 3, "", 1, "date of its design, YYMMDD, a decimal digit each half of a byte"},
};

constexpr const Command *onu_cap_commands[] = {&all_commands[98]};

constexpr Field onu_cap_fields[] = {
    {"services", FieldType::u8, 352, 1, "", 1, "services: bit 0 GE, 1 FE, 2 VoIP, 3 TDM"},
    {"ge_ports", FieldType::u8, 353, 1, "", 1, "number of GE ports"},
    {"ge_bitmap", FieldType::bytes, 354, 8, "", 1, "which UNI ports are GE ports"},
    {"fe_ports", FieldType::u8, 362, 1, "", 1, "number of FE ports"},
    {"fe_bitmap", FieldType::bytes, 363, 8, "", 1, "which UNI ports are FE ports"},
    {"pots_ports", FieldType::u8, 371, 1, "", 1, "number of POTS ports"},
    {"e1_ports", FieldType::u8, 372, 1, "", 1, "number of E1 ports: none has any"},
    {"us_queues", FieldType::u8, 373, 1, "", 1, "upstream queues of the ONU"},
    {"us_queues_of_port", FieldType::u8, 374, 1, "", 1, "upstream queues of a UNI port, at most: its ports share those of the ONU"},
    {"ds_queues", FieldType::u8, 375, 1, "", 1, "downstream queues of the ONU"},
    {"ds_queues_of_port", FieldType::u8, 376, 1, "", 1, "downstream queues of a UNI port, at most"},
    {"battery", FieldType::u8, 377, 1, "", 1, "1 where there is battery backup, else 0"},
};

constexpr const Command *onu_cap2_commands[] = {&all_commands[94]};

constexpr Field onu_cap2_fields[] = {
    {"onu_type", FieldType::u32, 352, 4, "", 1, "0 SFU, 1 HGU, 2 SBU"},
    {"multi_llid", FieldType::u8, 356, 1, "", 1, "1: more than one LLID can be set"},
    {"protection", FieldType::u8, 357, 1, "", 1, "protection of its PON interface: 0 none, 1 type C, 2 type D"},
    {"pon_interfaces", FieldType::u8, 358, 1, "", 1, "number of PON interfaces"},
    {"slots", FieldType::u8, 359, 1, "", 1, "number of slots: 0, no ONU has cards"},
    {"interface_types", FieldType::u8, 360, 1, "", 1, "how many of the interface types that follow count"},
    {"interface_type_1", FieldType::u8, 364, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_1", FieldType::u8, 366, 1, "", 1, "how many interfaces of this type there are"},
    {"interface_type_2", FieldType::u8, 370, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_2", FieldType::u8, 372, 1, "", 1, "how many interfaces of this type there are"},
    {"interface_type_3", FieldType::u8, 376, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_3", FieldType::u8, 378, 1, "", 1, "how many interfaces of this type there are"},
    {"interface_type_4", FieldType::u8, 382, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_4", FieldType::u8, 384, 1, "", 1, "how many interfaces of this type there are"},
    {"interface_type_5", FieldType::u8, 388, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_5", FieldType::u8, 390, 1, "", 1, "how many interfaces of this type there are"},
    {"interface_type_6", FieldType::u8, 394, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_6", FieldType::u8, 396, 1, "", 1, "how many interfaces of this type there are"},
    {"interface_type_7", FieldType::u8, 400, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_7", FieldType::u8, 402, 1, "", 1, "how many interfaces of this type there are"},
    {"interface_type_8", FieldType::u8, 406, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_8", FieldType::u8, 408, 1, "", 1, "how many interfaces of this type there are"},
    {"interface_type_9", FieldType::u8, 412, 1, "", 1, "interface type: 0 GE, 1 FE, 2 VoIP"},
    {"interface_number_9", FieldType::u8, 414, 1, "", 1, "how many interfaces of this type there are"},
    {"battery", FieldType::u8, 415, 1, "", 1, "1 where there is battery backup, else 0"},
};

constexpr const Command *onu_mem_info_commands[] = {&all_commands[99]};

constexpr Field onu_mem_info_fields[] = {
    {"memory_total", FieldType::u32, 352, 4, "KiB", 1, "memory"},
    {"memory_free", FieldType::u32, 356, 4, "KiB", 1, "what of it is free"},
    {"flash_total", FieldType::u32, 360, 4, "KiB", 1, "flash memory"},
    {"flash_free", FieldType::u32, 364, 4, "KiB", 1, "what of it is free"},
};

constexpr const Command *onu_device_info_commands[] = {&all_commands[126]};

constexpr Field onu_device_info_fields[] = {
    {"mac", FieldType::mac, 352, 6, "", 1, "MAC address"},
    {"onu_type", FieldType::u8, 358, 1, "", 1, "0 SFU, 1 HGU, 2 SBU"},
    {"ge_ports", FieldType::u8, 359, 1, "", 1, "number of GE UNI ports; they are the first ones"},
    {"fe_ports", FieldType::u8, 360, 1, "", 1, "number of FE UNI ports"},
    {"pots_ports", FieldType::u8, 361, 1, "", 1, "number of POTS ports"},
    {"battery", FieldType::u8, 362, 1, "", 1, "1 where there is battery backup, else 0"},
    {"cpu_load", FieldType::u8, 363, 1, "%", 1, "load of its processor in five seconds of model time"},
    {"llids", FieldType::u32, 364, 4, "", 1, "number of LLIDs that it has"},
    {"memory_total", FieldType::u32, 368, 4, "KiB", 1, "memory"},
    {"flash_total", FieldType::u32, 372, 4, "KiB", 1, "flash memory"},
    {"temperature", FieldType::s32, 376, 4, "degC", 0.01, "temperature of its optical transceiver"},
    {"chip_revision", FieldType::u32, 380, 4, "", 1, "revision of its PON chip, from 1 on"},
    {"vendor", FieldType::text, 384, 4, "", 1, "vendor id"},
    {"model", FieldType::text, 388, 4, "", 1, "model"},
    {"extended_model", FieldType::text, 392, 16, "", 1, "extended model: the model, and its user ports"},
    {"serial", FieldType::text, 408, 12, "", 1, "serial number: the vendor id, and the last four bytes of the MAC address"},
    {"hardware", FieldType::text, 420, 8, "", 1, "hardware version"},
    {"software", FieldType::text, 428, 16, "", 1, "software version that runs"},
    {"chipset", FieldType::text, 444, 8, "", 1, "PON chip: vendor id and model number"},
};

constexpr const Command *onu_about_commands[] = {&all_commands[114]};

constexpr Field onu_about_fields[] = {
    {"mac", FieldType::mac, 352, 6, "", 1, "MAC address"},
    {"onu_id", FieldType::u8, 358, 1, "", 1, "id that it is bound to"},
    {"state", FieldType::u8, 359, 1, "", 1, "0 offline, 1 online, 2 unauthenticated: turned away for its LOID"},
    {"pon_port", FieldType::u32, 360, 4, "", 1, "PON port number"},
    {"llid", FieldType::u32, 364, 4, "", 1, "its LLID, where it has several the first"},
    {"llids", FieldType::u32, 368, 4, "", 1, "how many LLIDs it was told to have"},
    {"distance", FieldType::u32, 372, 4, "m", 1, "distance that ranging found; 0 while the ONU is offline"},
    {"received_power", FieldType::s32, 376, 4, "dBm", 0.01, "what the port receives of it; -40 while it is offline"},
    {"reboots", FieldType::u32, 380, 4, "", 1, "how often it was rebooted by command, or after an upgrade"},
    {"vendor", FieldType::text, 384, 4, "", 1, "vendor id"},
    {"model", FieldType::text, 388, 4, "", 1, "model"},
    {"extended_model", FieldType::text, 392, 16, "", 1, "extended model: the model, and its user ports"},
    {"serial", FieldType::text, 408, 12, "", 1, "serial number: the vendor id, and the last four bytes of the MAC address"},
    {"hardware", FieldType::text, 420, 8, "", 1, "hardware version"},
    {"software", FieldType::text, 428, 16, "", 1, "software version"},
    {"chipset", FieldType::text, 444, 8, "", 1, "PON chip: vendor id and model number"},
    {"ge_ports", FieldType::u8, 452, 1, "", 1, "number of GE UNI ports; they are the first ones"},
    {"fe_ports", FieldType::u8, 453, 1, "", 1, "number of FE UNI ports"},
    {"pots_ports", FieldType::u8, 454, 1, "", 1, "number of POTS ports"},
    {"battery", FieldType::u8, 455, 1, "", 1, "1 where there is battery backup, else 0"},
    {"unis_enabled", FieldType::u32, 456, 4, "", 1, "how many of its UNI ports are enabled"},
    {"unis_up", FieldType::u32, 460, 4, "", 1, "how many of its UNI ports have a link; 0 unless it is online"},
};

constexpr const Command *onu_max_port_commands[] = {&all_commands[131]};

constexpr Field onu_max_port_fields[] = {
    {"unis", FieldType::u8, 8, 1, "", 1, "number of UNI ports, 1 to 4"},
};

constexpr const Command *onu_optics_commands[] = {&all_commands[130]};

constexpr Field onu_optics_fields[] = {
    {"temperature", FieldType::s16, 352, 2, "degC", 0.00390625, "temperature, in 1/256 degC"},
    {"voltage", FieldType::u16, 354, 2, "V", 0.0001, "supply voltage"},
    {"bias", FieldType::u16, 356, 2, "mA", 0.002, "bias of the laser"},
    {"launch_power", FieldType::u16, 358, 2, "uW", 0.1, "launch power"},
    {"received_power", FieldType::u16, 360, 2, "uW", 0.1, "power received from the OLT"},
};

constexpr const Command *onu_image_part_commands[] = {&all_commands[111]};

constexpr Field onu_image_part_fields[] = {
    {"offset", FieldType::u32, 352, 4, "bytes", 1, "where in the image the part begins: 0, or where the image has got to"},
    {"size", FieldType::u32, 356, 4, "bytes", 1, "size of the whole image, 1 to 16777216; the same in all of its parts"},
    {"length", FieldType::u32, 360, 4, "bytes", 1, "length of this part, 1 to 1504"},
    {"version", FieldType::text, 364, 17, "", 1, "software version of the image, in its first part: 1 to 16 visible ASCII characters without blanks, quotes and backslashes; not read in the others"},
    {"data", FieldType::bytes, 384, 1504, "", 1, "the bytes of the image, from the left"},
};

constexpr const Command *onu_image_status_commands[] = {&all_commands[113]};

constexpr Field onu_image_status_fields[] = {
    {"state", FieldType::u32, 352, 4, "", 1, "0 none, 1 receiving, 2 complete, 3 committed: the ONU runs it from its next restart on, 4 started: the ONU runs it, 5 failed verification"},
    {"received", FieldType::u32, 356, 4, "bytes", 1, "how much the ONU has received; the next part begins there"},
    {"size", FieldType::u32, 360, 4, "bytes", 1, "size of the whole image"},
    {"crc", FieldType::u32, 364, 4, "", 1, "CRC-32 (as in Ethernet) of what the ONU has received"},
    {"bank", FieldType::u16, 368, 2, "", 1, "bank that it goes to, 1 or 2"},
    {"progress", FieldType::u16, 370, 2, "%", 1, "how much of the image the ONU has received"},
};

constexpr const Command *onu_banks_commands[] = {&all_commands[118]};

constexpr Field onu_banks_fields[] = {
    {"version_1", FieldType::text, 352, 17, "", 1, "software version of the image"},
    {"valid_1", FieldType::u8, 369, 1, "", 1, "1 where the image is complete and verified"},
    {"active_1", FieldType::u8, 370, 1, "", 1, "1 where the ONU runs the image"},
    {"committed_1", FieldType::u8, 371, 1, "", 1, "1 where the ONU runs the image from its next restart on"},
    {"size_1", FieldType::u32, 372, 4, "bytes", 1, "size of the image"},
    {"crc_1", FieldType::u32, 376, 4, "", 1, "CRC-32 of the image, while it is received of what has come. Of an image that was not pushed, the same for all ONUs of a vendor and model with the version"},
    {"version_2", FieldType::text, 384, 17, "", 1, "software version of the image"},
    {"valid_2", FieldType::u8, 401, 1, "", 1, "1 where the image is complete and verified"},
    {"active_2", FieldType::u8, 402, 1, "", 1, "1 where the ONU runs the image"},
    {"committed_2", FieldType::u8, 403, 1, "", 1, "1 where the ONU runs the image from its next restart on"},
    {"size_2", FieldType::u32, 404, 4, "bytes", 1, "size of the image"},
    {"crc_2", FieldType::u32, 408, 4, "", 1, "CRC-32 of the image, while it is received of what has come. Of an image that was not pushed, the same for all ONUs of a vendor and model with the version"},
};

constexpr const Command *onu_image_update_commands[] = {&all_commands[166]};

constexpr Field onu_image_update_fields[] = {
    {"bank", FieldType::u32, 352, 4, "", 1, "bank that the image goes to, 1 or 2, which must not be the active one; 0 the one that is not"},
    {"file", FieldType::text, 356, 256, "", 1, "file name of the image, as the upgrade type has it"},
};

constexpr const Command *onu_fast_leave_ability_commands[] = {&all_commands[138]};

constexpr Field onu_fast_leave_ability_fields[] = {
    {"number", FieldType::u32, 352, 4, "", 1, "how many of the words behind it count, 0 to 4; 0 where the ONU knows no multicast"},
    {"ability_1", FieldType::u32, 356, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_2", FieldType::u32, 360, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_3", FieldType::u32, 364, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_4", FieldType::u32, 368, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_5", FieldType::u32, 372, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_6", FieldType::u32, 376, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
};

constexpr const Command *onu_fast_leave_commands[] = {&all_commands[139]};

constexpr Field onu_fast_leave_fields[] = {
    {"state", FieldType::u32, 352, 4, "", 1, "0 off, which it is until set; 1 on"},
};

constexpr const Command *onu_fast_leave_set_commands[] = {&all_commands[140]};

constexpr Field onu_fast_leave_set_fields[] = {
    {"state", FieldType::u32, 352, 4, "", 1, "0 off: a port leaves a group once queries stay unanswered; 1 on: with the first leave message"},
};

constexpr const Command *onu_fast_leave_local_commands[] = {&all_commands[141]};

constexpr Field onu_fast_leave_local_fields[] = {
    {"state", FieldType::u32, 352, 4, "", 1, "0 off, 1 on"},
    {"number", FieldType::u32, 356, 4, "", 1, "how many of the words behind it count, 0 to 4; 0 where the ONU knows no multicast"},
    {"ability_1", FieldType::u32, 360, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_2", FieldType::u32, 364, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_3", FieldType::u32, 368, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_4", FieldType::u32, 372, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_5", FieldType::u32, 376, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
    {"ability_6", FieldType::u32, 380, 4, "", 1, "0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast"},
};

constexpr const Command *onu_mc_switch_commands[] = {&all_commands[142], &all_commands[144]};

constexpr Field onu_mc_switch_fields[] = {
    {"mode", FieldType::u8, 352, 1, "", 1, "0 IGMP/MLD snooping, which it is until set, and of kinds of ONUs without multicast; 1 controllable multicast"},
};

constexpr const Command *onu_mc_switch_set_commands[] = {&all_commands[143]};

constexpr Field onu_mc_switch_set_fields[] = {
    {"mode", FieldType::u8, 352, 1, "", 1, "0 IGMP/MLD snooping: users join what they like in the multicast VLANs of their UNI port; 1 controllable multicast: UNI ports join what the OLT tells"},
};

constexpr const Command *onu_mc_group_max_commands[] = {&all_commands[145], &all_commands[147]};

constexpr Field onu_mc_group_max_fields[] = {
    {"maximum", FieldType::u16, 352, 2, "", 1, "0 to 255; 32 until set, and 0 of kinds of ONUs without multicast"},
};

constexpr const Command *onu_mc_group_max_set_commands[] = {&all_commands[146]};

constexpr Field onu_mc_group_max_set_fields[] = {
    {"maximum", FieldType::u16, 352, 2, "", 1, "0 to 255; with 0 it joins none"},
};

constexpr const Command *onu_mc_vlan_mode_commands[] = {&all_commands[148], &all_commands[150]};

constexpr Field onu_mc_vlan_mode_fields[] = {
    {"mode", FieldType::u8, 352, 1, "", 1, "0 they stay, which it is until set; 1 they are stripped; 2 they are translated"},
    {"number", FieldType::u8, 353, 1, "", 1, "how many pairs count: 1 to 8 where tags are translated, else 0"},
    {"mc_vlan_1", FieldType::u16, 354, 2, "", 1, "multicast VLAN; 0 where the pair does not count"},
    {"user_vlan_1", FieldType::u16, 356, 2, "", 1, "VLAN that its frames are tagged with at the port; 0 where the pair does not count"},
    {"mc_vlan_2", FieldType::u16, 358, 2, "", 1, "multicast VLAN; 0 where the pair does not count"},
    {"user_vlan_2", FieldType::u16, 360, 2, "", 1, "VLAN that its frames are tagged with at the port; 0 where the pair does not count"},
    {"mc_vlan_3", FieldType::u16, 362, 2, "", 1, "multicast VLAN; 0 where the pair does not count"},
    {"user_vlan_3", FieldType::u16, 364, 2, "", 1, "VLAN that its frames are tagged with at the port; 0 where the pair does not count"},
    {"mc_vlan_4", FieldType::u16, 366, 2, "", 1, "multicast VLAN; 0 where the pair does not count"},
    {"user_vlan_4", FieldType::u16, 368, 2, "", 1, "VLAN that its frames are tagged with at the port; 0 where the pair does not count"},
    {"mc_vlan_5", FieldType::u16, 370, 2, "", 1, "multicast VLAN; 0 where the pair does not count"},
    {"user_vlan_5", FieldType::u16, 372, 2, "", 1, "VLAN that its frames are tagged with at the port; 0 where the pair does not count"},
    {"mc_vlan_6", FieldType::u16, 374, 2, "", 1, "multicast VLAN; 0 where the pair does not count"},
    {"user_vlan_6", FieldType::u16, 376, 2, "", 1, "VLAN that its frames are tagged with at the port; 0 where the pair does not count"},
    {"mc_vlan_7", FieldType::u16, 378, 2, "", 1, "multicast VLAN; 0 where the pair does not count"},
    {"user_vlan_7", FieldType::u16, 380, 2, "", 1, "VLAN that its frames are tagged with at the port; 0 where the pair does not count"},
    {"mc_vlan_8", FieldType::u16, 382, 2, "", 1, "multicast VLAN; 0 where the pair does not count"},
    {"user_vlan_8", FieldType::u16, 384, 2, "", 1, "VLAN that its frames are tagged with at the port; 0 where the pair does not count"},
};

constexpr const Command *onu_mc_vlan_mode_set_commands[] = {&all_commands[149]};

constexpr Field onu_mc_vlan_mode_set_fields[] = {
    {"mode", FieldType::u8, 352, 1, "", 1, "0 they stay; 1 they are stripped; 2 they are translated"},
    {"number", FieldType::u8, 353, 1, "", 1, "how many pairs count: 1 to 8 where tags are translated, else 0"},
    {"mc_vlan_1", FieldType::u16, 354, 2, "", 1, "multicast VLAN, 1 to 4094, each once; 0 where the pair does not count"},
    {"user_vlan_1", FieldType::u16, 356, 2, "", 1, "VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count"},
    {"mc_vlan_2", FieldType::u16, 358, 2, "", 1, "multicast VLAN, 1 to 4094, each once; 0 where the pair does not count"},
    {"user_vlan_2", FieldType::u16, 360, 2, "", 1, "VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count"},
    {"mc_vlan_3", FieldType::u16, 362, 2, "", 1, "multicast VLAN, 1 to 4094, each once; 0 where the pair does not count"},
    {"user_vlan_3", FieldType::u16, 364, 2, "", 1, "VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count"},
    {"mc_vlan_4", FieldType::u16, 366, 2, "", 1, "multicast VLAN, 1 to 4094, each once; 0 where the pair does not count"},
    {"user_vlan_4", FieldType::u16, 368, 2, "", 1, "VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count"},
    {"mc_vlan_5", FieldType::u16, 370, 2, "", 1, "multicast VLAN, 1 to 4094, each once; 0 where the pair does not count"},
    {"user_vlan_5", FieldType::u16, 372, 2, "", 1, "VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count"},
    {"mc_vlan_6", FieldType::u16, 374, 2, "", 1, "multicast VLAN, 1 to 4094, each once; 0 where the pair does not count"},
    {"user_vlan_6", FieldType::u16, 376, 2, "", 1, "VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count"},
    {"mc_vlan_7", FieldType::u16, 378, 2, "", 1, "multicast VLAN, 1 to 4094, each once; 0 where the pair does not count"},
    {"user_vlan_7", FieldType::u16, 380, 2, "", 1, "VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count"},
    {"mc_vlan_8", FieldType::u16, 382, 2, "", 1, "multicast VLAN, 1 to 4094, each once; 0 where the pair does not count"},
    {"user_vlan_8", FieldType::u16, 384, 2, "", 1, "VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count"},
};

constexpr const Command *onu_mc_vlan_commands[] = {&all_commands[151]};

constexpr Field onu_mc_vlan_fields[] = {
    {"operation", FieldType::u8, 352, 1, "", 1, "3: a list"},
    {"number", FieldType::u8, 353, 1, "", 1, "how many VLANs there are, 0 to 8"},
    {"vlan_1", FieldType::u16, 354, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_2", FieldType::u16, 356, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_3", FieldType::u16, 358, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_4", FieldType::u16, 360, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_5", FieldType::u16, 362, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_6", FieldType::u16, 364, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_7", FieldType::u16, 366, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_8", FieldType::u16, 368, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
};

constexpr const Command *onu_mc_vlan_set_commands[] = {&all_commands[152]};

constexpr Field onu_mc_vlan_set_fields[] = {
    {"operation", FieldType::u8, 352, 1, "", 1, "0 delete these VLANs, 1 add them, 2 clear: delete all"},
    {"number", FieldType::u8, 353, 1, "", 1, "how many VLANs count: 1 to 8; 0 to clear"},
    {"vlan_1", FieldType::u16, 354, 2, "", 1, "the VLANs, 1 to 4094, each once; those that do not count are not read"},
    {"vlan_2", FieldType::u16, 356, 2, "", 1, "the VLANs, 1 to 4094, each once; those that do not count are not read"},
    {"vlan_3", FieldType::u16, 358, 2, "", 1, "the VLANs, 1 to 4094, each once; those that do not count are not read"},
    {"vlan_4", FieldType::u16, 360, 2, "", 1, "the VLANs, 1 to 4094, each once; those that do not count are not read"},
    {"vlan_5", FieldType::u16, 362, 2, "", 1, "the VLANs, 1 to 4094, each once; those that do not count are not read"},
    {"vlan_6", FieldType::u16, 364, 2, "", 1, "the VLANs, 1 to 4094, each once; those that do not count are not read"},
    {"vlan_7", FieldType::u16, 366, 2, "", 1, "the VLANs, 1 to 4094, each once; those that do not count are not read"},
    {"vlan_8", FieldType::u16, 368, 2, "", 1, "the VLANs, 1 to 4094, each once; those that do not count are not read"},
};

constexpr const Command *onu_mc_vlan_local_commands[] = {&all_commands[153]};

constexpr Field onu_mc_vlan_local_fields[] = {
    {"vlan_1", FieldType::u16, 352, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_2", FieldType::u16, 354, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_3", FieldType::u16, 356, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_4", FieldType::u16, 358, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_5", FieldType::u16, 360, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_6", FieldType::u16, 362, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_7", FieldType::u16, 364, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
    {"vlan_8", FieldType::u16, 366, 2, "", 1, "the VLANs in the order in which they were added, 1 to 4094; 0 behind the last"},
};

constexpr const Command *onu_mc_group_commands[] = {&all_commands[154]};

constexpr Field onu_mc_group_fields[] = {
    {"action", FieldType::u8, 352, 1, "", 1, "3: a list"},
    {"control_type", FieldType::u8, 353, 1, "", 1, "1: groups are told apart by MAC address and VLAN"},
    {"number", FieldType::u8, 354, 1, "", 1, "how many entries there are, 0 to 128; those behind them are zero"},
    {"uni_1", FieldType::u16, 356, 2, "", 1, "UNI port"},
    {"vlan_1", FieldType::u16, 358, 2, "", 1, "multicast VLAN"},
    {"group_1", FieldType::mac, 360, 6, "", 1, "MAC address of the group"},
    {"uni_2", FieldType::u16, 366, 2, "", 1, "UNI port"},
    {"vlan_2", FieldType::u16, 368, 2, "", 1, "multicast VLAN"},
    {"group_2", FieldType::mac, 370, 6, "", 1, "MAC address of the group"},
    {"uni_3", FieldType::u16, 376, 2, "", 1, "UNI port"},
    {"vlan_3", FieldType::u16, 378, 2, "", 1, "multicast VLAN"},
    {"group_3", FieldType::mac, 380, 6, "", 1, "MAC address of the group"},
    {"uni_4", FieldType::u16, 386, 2, "", 1, "UNI port"},
    {"vlan_4", FieldType::u16, 388, 2, "", 1, "multicast VLAN"},
    {"group_4", FieldType::mac, 390, 6, "", 1, "MAC address of the group"},
    {"uni_5", FieldType::u16, 396, 2, "", 1, "UNI port"},
    {"vlan_5", FieldType::u16, 398, 2, "", 1, "multicast VLAN"},
    {"group_5", FieldType::mac, 400, 6, "", 1, "MAC address of the group"},
    {"uni_6", FieldType::u16, 406, 2, "", 1, "UNI port"},
    {"vlan_6", FieldType::u16, 408, 2, "", 1, "multicast VLAN"},
    {"group_6", FieldType::mac, 410, 6, "", 1, "MAC address of the group"},
    {"uni_7", FieldType::u16, 416, 2, "", 1, "UNI port"},
    {"vlan_7", FieldType::u16, 418, 2, "", 1, "multicast VLAN"},
    {"group_7", FieldType::mac, 420, 6, "", 1, "MAC address of the group"},
    {"uni_8", FieldType::u16, 426, 2, "", 1, "UNI port"},
    {"vlan_8", FieldType::u16, 428, 2, "", 1, "multicast VLAN"},
    {"group_8", FieldType::mac, 430, 6, "", 1, "MAC address of the group"},
    {"uni_9", FieldType::u16, 436, 2, "", 1, "UNI port"},
    {"vlan_9", FieldType::u16, 438, 2, "", 1, "multicast VLAN"},
    {"group_9", FieldType::mac, 440, 6, "", 1, "MAC address of the group"},
    {"uni_10", FieldType::u16, 446, 2, "", 1, "UNI port"},
    {"vlan_10", FieldType::u16, 448, 2, "", 1, "multicast VLAN"},
    {"group_10", FieldType::mac, 450, 6, "", 1, "MAC address of the group"},
    {"uni_11", FieldType::u16, 456, 2, "", 1, "UNI port"},
    {"vlan_11", FieldType::u16, 458, 2, "", 1, "multicast VLAN"},
    {"group_11", FieldType::mac, 460, 6, "", 1, "MAC address of the group"},
    {"uni_12", FieldType::u16, 466, 2, "", 1, "UNI port"},
    {"vlan_12", FieldType::u16, 468, 2, "", 1, "multicast VLAN"},
    {"group_12", FieldType::mac, 470, 6, "", 1, "MAC address of the group"},
    {"uni_13", FieldType::u16, 476, 2, "", 1, "UNI port"},
    {"vlan_13", FieldType::u16, 478, 2, "", 1, "multicast VLAN"},
    {"group_13", FieldType::mac, 480, 6, "", 1, "MAC address of the group"},
    {"uni_14", FieldType::u16, 486, 2, "", 1, "UNI port"},
    {"vlan_14", FieldType::u16, 488, 2, "", 1, "multicast VLAN"},
    {"group_14", FieldType::mac, 490, 6, "", 1, "MAC address of the group"},
    {"uni_15", FieldType::u16, 496, 2, "", 1, "UNI port"},
    {"vlan_15", FieldType::u16, 498, 2, "", 1, "multicast VLAN"},
    {"group_15", FieldType::mac, 500, 6, "", 1, "MAC address of the group"},
    {"uni_16", FieldType::u16, 506, 2, "", 1, "UNI port"},
    {"vlan_16", FieldType::u16, 508, 2, "", 1, "multicast VLAN"},
    {"group_16", FieldType::mac, 510, 6, "", 1, "MAC address of the group"},
    {"uni_17", FieldType::u16, 516, 2, "", 1, "UNI port"},
    {"vlan_17", FieldType::u16, 518, 2, "", 1, "multicast VLAN"},
    {"group_17", FieldType::mac, 520, 6, "", 1, "MAC address of the group"},
    {"uni_18", FieldType::u16, 526, 2, "", 1, "UNI port"},
    {"vlan_18", FieldType::u16, 528, 2, "", 1, "multicast VLAN"},
    {"group_18", FieldType::mac, 530, 6, "", 1, "MAC address of the group"},
    {"uni_19", FieldType::u16, 536, 2, "", 1, "UNI port"},
    {"vlan_19", FieldType::u16, 538, 2, "", 1, "multicast VLAN"},
    {"group_19", FieldType::mac, 540, 6, "", 1, "MAC address of the group"},
    {"uni_20", FieldType::u16, 546, 2, "", 1, "UNI port"},
    {"vlan_20", FieldType::u16, 548, 2, "", 1, "multicast VLAN"},
    {"group_20", FieldType::mac, 550, 6, "", 1, "MAC address of the group"},
    {"uni_21", FieldType::u16, 556, 2, "", 1, "UNI port"},
    {"vlan_21", FieldType::u16, 558, 2, "", 1, "multicast VLAN"},
    {"group_21", FieldType::mac, 560, 6, "", 1, "MAC address of the group"},
    {"uni_22", FieldType::u16, 566, 2, "", 1, "UNI port"},
    {"vlan_22", FieldType::u16, 568, 2, "", 1, "multicast VLAN"},
    {"group_22", FieldType::mac, 570, 6, "", 1, "MAC address of the group"},
    {"uni_23", FieldType::u16, 576, 2, "", 1, "UNI port"},
    {"vlan_23", FieldType::u16, 578, 2, "", 1, "multicast VLAN"},
    {"group_23", FieldType::mac, 580, 6, "", 1, "MAC address of the group"},
    {"uni_24", FieldType::u16, 586, 2, "", 1, "UNI port"},
    {"vlan_24", FieldType::u16, 588, 2, "", 1, "multicast VLAN"},
    {"group_24", FieldType::mac, 590, 6, "", 1, "MAC address of the group"},
    {"uni_25", FieldType::u16, 596, 2, "", 1, "UNI port"},
    {"vlan_25", FieldType::u16, 598, 2, "", 1, "multicast VLAN"},
    {"group_25", FieldType::mac, 600, 6, "", 1, "MAC address of the group"},
    {"uni_26", FieldType::u16, 606, 2, "", 1, "UNI port"},
    {"vlan_26", FieldType::u16, 608, 2, "", 1, "multicast VLAN"},
    {"group_26", FieldType::mac, 610, 6, "", 1, "MAC address of the group"},
    {"uni_27", FieldType::u16, 616, 2, "", 1, "UNI port"},
    {"vlan_27", FieldType::u16, 618, 2, "", 1, "multicast VLAN"},
    {"group_27", FieldType::mac, 620, 6, "", 1, "MAC address of the group"},
    {"uni_28", FieldType::u16, 626, 2, "", 1, "UNI port"},
    {"vlan_28", FieldType::u16, 628, 2, "", 1, "multicast VLAN"},
    {"group_28", FieldType::mac, 630, 6, "", 1, "MAC address of the group"},
    {"uni_29", FieldType::u16, 636, 2, "", 1, "UNI port"},
    {"vlan_29", FieldType::u16, 638, 2, "", 1, "multicast VLAN"},
    {"group_29", FieldType::mac, 640, 6, "", 1, "MAC address of the group"},
    {"uni_30", FieldType::u16, 646, 2, "", 1, "UNI port"},
    {"vlan_30", FieldType::u16, 648, 2, "", 1, "multicast VLAN"},
    {"group_30", FieldType::mac, 650, 6, "", 1, "MAC address of the group"},
    {"uni_31", FieldType::u16, 656, 2, "", 1, "UNI port"},
    {"vlan_31", FieldType::u16, 658, 2, "", 1, "multicast VLAN"},
    {"group_31", FieldType::mac, 660, 6, "", 1, "MAC address of the group"},
    {"uni_32", FieldType::u16, 666, 2, "", 1, "UNI port"},
    {"vlan_32", FieldType::u16, 668, 2, "", 1, "multicast VLAN"},
    {"group_32", FieldType::mac, 670, 6, "", 1, "MAC address of the group"},
    {"uni_33", FieldType::u16, 676, 2, "", 1, "UNI port"},
    {"vlan_33", FieldType::u16, 678, 2, "", 1, "multicast VLAN"},
    {"group_33", FieldType::mac, 680, 6, "", 1, "MAC address of the group"},
    {"uni_34", FieldType::u16, 686, 2, "", 1, "UNI port"},
    {"vlan_34", FieldType::u16, 688, 2, "", 1, "multicast VLAN"},
    {"group_34", FieldType::mac, 690, 6, "", 1, "MAC address of the group"},
    {"uni_35", FieldType::u16, 696, 2, "", 1, "UNI port"},
    {"vlan_35", FieldType::u16, 698, 2, "", 1, "multicast VLAN"},
    {"group_35", FieldType::mac, 700, 6, "", 1, "MAC address of the group"},
    {"uni_36", FieldType::u16, 706, 2, "", 1, "UNI port"},
    {"vlan_36", FieldType::u16, 708, 2, "", 1, "multicast VLAN"},
    {"group_36", FieldType::mac, 710, 6, "", 1, "MAC address of the group"},
    {"uni_37", FieldType::u16, 716, 2, "", 1, "UNI port"},
    {"vlan_37", FieldType::u16, 718, 2, "", 1, "multicast VLAN"},
    {"group_37", FieldType::mac, 720, 6, "", 1, "MAC address of the group"},
    {"uni_38", FieldType::u16, 726, 2, "", 1, "UNI port"},
    {"vlan_38", FieldType::u16, 728, 2, "", 1, "multicast VLAN"},
    {"group_38", FieldType::mac, 730, 6, "", 1, "MAC address of the group"},
    {"uni_39", FieldType::u16, 736, 2, "", 1, "UNI port"},
    {"vlan_39", FieldType::u16, 738, 2, "", 1, "multicast VLAN"},
    {"group_39", FieldType::mac, 740, 6, "", 1, "MAC address of the group"},
    {"uni_40", FieldType::u16, 746, 2, "", 1, "UNI port"},
    {"vlan_40", FieldType::u16, 748, 2, "", 1, "multicast VLAN"},
    {"group_40", FieldType::mac, 750, 6, "", 1, "MAC address of the group"},
    {"uni_41", FieldType::u16, 756, 2, "", 1, "UNI port"},
    {"vlan_41", FieldType::u16, 758, 2, "", 1, "multicast VLAN"},
    {"group_41", FieldType::mac, 760, 6, "", 1, "MAC address of the group"},
    {"uni_42", FieldType::u16, 766, 2, "", 1, "UNI port"},
    {"vlan_42", FieldType::u16, 768, 2, "", 1, "multicast VLAN"},
    {"group_42", FieldType::mac, 770, 6, "", 1, "MAC address of the group"},
    {"uni_43", FieldType::u16, 776, 2, "", 1, "UNI port"},
    {"vlan_43", FieldType::u16, 778, 2, "", 1, "multicast VLAN"},
    {"group_43", FieldType::mac, 780, 6, "", 1, "MAC address of the group"},
    {"uni_44", FieldType::u16, 786, 2, "", 1, "UNI port"},
    {"vlan_44", FieldType::u16, 788, 2, "", 1, "multicast VLAN"},
    {"group_44", FieldType::mac, 790, 6, "", 1, "MAC address of the group"},
    {"uni_45", FieldType::u16, 796, 2, "", 1, "UNI port"},
    {"vlan_45", FieldType::u16, 798, 2, "", 1, "multicast VLAN"},
    {"group_45", FieldType::mac, 800, 6, "", 1, "MAC address of the group"},
    {"uni_46", FieldType::u16, 806, 2, "", 1, "UNI port"},
    {"vlan_46", FieldType::u16, 808, 2, "", 1, "multicast VLAN"},
    {"group_46", FieldType::mac, 810, 6, "", 1, "MAC address of the group"},
    {"uni_47", FieldType::u16, 816, 2, "", 1, "UNI port"},
    {"vlan_47", FieldType::u16, 818, 2, "", 1, "multicast VLAN"},
    {"group_47", FieldType::mac, 820, 6, "", 1, "MAC address of the group"},
    {"uni_48", FieldType::u16, 826, 2, "", 1, "UNI port"},
    {"vlan_48", FieldType::u16, 828, 2, "", 1, "multicast VLAN"},
    {"group_48", FieldType::mac, 830, 6, "", 1, "MAC address of the group"},
    {"uni_49", FieldType::u16, 836, 2, "", 1, "UNI port"},
    {"vlan_49", FieldType::u16, 838, 2, "", 1, "multicast VLAN"},
    {"group_49", FieldType::mac, 840, 6, "", 1, "MAC address of the group"},
    {"uni_50", FieldType::u16, 846, 2, "", 1, "UNI port"},
    {"vlan_50", FieldType::u16, 848, 2, "", 1, "multicast VLAN"},
    {"group_50", FieldType::mac, 850, 6, "", 1, "MAC address of the group"},
    {"uni_51", FieldType::u16, 856, 2, "", 1, "UNI port"},
    {"vlan_51", FieldType::u16, 858, 2, "", 1, "multicast VLAN"},
    {"group_51", FieldType::mac, 860, 6, "", 1, "MAC address of the group"},
    {"uni_52", FieldType::u16, 866, 2, "", 1, "UNI port"},
    {"vlan_52", FieldType::u16, 868, 2, "", 1, "multicast VLAN"},
    {"group_52", FieldType::mac, 870, 6, "", 1, "MAC address of the group"},
    {"uni_53", FieldType::u16, 876, 2, "", 1, "UNI port"},
    {"vlan_53", FieldType::u16, 878, 2, "", 1, "multicast VLAN"},
    {"group_53", FieldType::mac, 880, 6, "", 1, "MAC address of the group"},
    {"uni_54", FieldType::u16, 886, 2, "", 1, "UNI port"},
    {"vlan_54", FieldType::u16, 888, 2, "", 1, "multicast VLAN"},
    {"group_54", FieldType::mac, 890, 6, "", 1, "MAC address of the group"},
    {"uni_55", FieldType::u16, 896, 2, "", 1, "UNI port"},
    {"vlan_55", FieldType::u16, 898, 2, "", 1, "multicast VLAN"},
    {"group_55", FieldType::mac, 900, 6, "", 1, "MAC address of the group"},
    {"uni_56", FieldType::u16, 906, 2, "", 1, "UNI port"},
    {"vlan_56", FieldType::u16, 908, 2, "", 1, "multicast VLAN"},
    {"group_56", FieldType::mac, 910, 6, "", 1, "MAC address of the group"},
    {"uni_57", FieldType::u16, 916, 2, "", 1, "UNI port"},
    {"vlan_57", FieldType::u16, 918, 2, "", 1, "multicast VLAN"},
    {"group_57", FieldType::mac, 920, 6, "", 1, "MAC address of the group"},
    {"uni_58", FieldType::u16, 926, 2, "", 1, "UNI port"},
    {"vlan_58", FieldType::u16, 928, 2, "", 1, "multicast VLAN"},
    {"group_58", FieldType::mac, 930, 6, "", 1, "MAC address of the group"},
    {"uni_59", FieldType::u16, 936, 2, "", 1, "UNI port"},
    {"vlan_59", FieldType::u16, 938, 2, "", 1, "multicast VLAN"},
    {"group_59", FieldType::mac, 940, 6, "", 1, "MAC address of the group"},
    {"uni_60", FieldType::u16, 946, 2, "", 1, "UNI port"},
    {"vlan_60", FieldType::u16, 948, 2, "", 1, "multicast VLAN"},
    {"group_60", FieldType::mac, 950, 6, "", 1, "MAC address of the group"},
    {"uni_61", FieldType::u16, 956, 2, "", 1, "UNI port"},
    {"vlan_61", FieldType::u16, 958, 2, "", 1, "multicast VLAN"},
    {"group_61", FieldType::mac, 960, 6, "", 1, "MAC address of the group"},
    {"uni_62", FieldType::u16, 966, 2, "", 1, "UNI port"},
    {"vlan_62", FieldType::u16, 968, 2, "", 1, "multicast VLAN"},
    {"group_62", FieldType::mac, 970, 6, "", 1, "MAC address of the group"},
    {"uni_63", FieldType::u16, 976, 2, "", 1, "UNI port"},
    {"vlan_63", FieldType::u16, 978, 2, "", 1, "multicast VLAN"},
    {"group_63", FieldType::mac, 980, 6, "", 1, "MAC address of the group"},
    {"uni_64", FieldType::u16, 986, 2, "", 1, "UNI port"},
    {"vlan_64", FieldType::u16, 988, 2, "", 1, "multicast VLAN"},
    {"group_64", FieldType::mac, 990, 6, "", 1, "MAC address of the group"},
    {"uni_65", FieldType::u16, 996, 2, "", 1, "UNI port"},
    {"vlan_65", FieldType::u16, 998, 2, "", 1, "multicast VLAN"},
    {"group_65", FieldType::mac, 1000, 6, "", 1, "MAC address of the group"},
    {"uni_66", FieldType::u16, 1006, 2, "", 1, "UNI port"},
    {"vlan_66", FieldType::u16, 1008, 2, "", 1, "multicast VLAN"},
    {"group_66", FieldType::mac, 1010, 6, "", 1, "MAC address of the group"},
    {"uni_67", FieldType::u16, 1016, 2, "", 1, "UNI port"},
    {"vlan_67", FieldType::u16, 1018, 2, "", 1, "multicast VLAN"},
    {"group_67", FieldType::mac, 1020, 6, "", 1, "MAC address of the group"},
    {"uni_68", FieldType::u16, 1026, 2, "", 1, "UNI port"},
    {"vlan_68", FieldType::u16, 1028, 2, "", 1, "multicast VLAN"},
    {"group_68", FieldType::mac, 1030, 6, "", 1, "MAC address of the group"},
    {"uni_69", FieldType::u16, 1036, 2, "", 1, "UNI port"},
    {"vlan_69", FieldType::u16, 1038, 2, "", 1, "multicast VLAN"},
    {"group_69", FieldType::mac, 1040, 6, "", 1, "MAC address of the group"},
    {"uni_70", FieldType::u16, 1046, 2, "", 1, "UNI port"},
    {"vlan_70", FieldType::u16, 1048, 2, "", 1, "multicast VLAN"},
    {"group_70", FieldType::mac, 1050, 6, "", 1, "MAC address of the group"},
    {"uni_71", FieldType::u16, 1056, 2, "", 1, "UNI port"},
    {"vlan_71", FieldType::u16, 1058, 2, "", 1, "multicast VLAN"},
    {"group_71", FieldType::mac, 1060, 6, "", 1, "MAC address of the group"},
    {"uni_72", FieldType::u16, 1066, 2, "", 1, "UNI port"},
    {"vlan_72", FieldType::u16, 1068, 2, "", 1, "multicast VLAN"},
    {"group_72", FieldType::mac, 1070, 6, "", 1, "MAC address of the group"},
    {"uni_73", FieldType::u16, 1076, 2, "", 1, "UNI port"},
    {"vlan_73", FieldType::u16, 1078, 2, "", 1, "multicast VLAN"},
    {"group_73", FieldType::mac, 1080, 6, "", 1, "MAC address of the group"},
    {"uni_74", FieldType::u16, 1086, 2, "", 1, "UNI port"},
    {"vlan_74", FieldType::u16, 1088, 2, "", 1, "multicast VLAN"},
    {"group_74", FieldType::mac, 1090, 6, "", 1, "MAC address of the group"},
    {"uni_75", FieldType::u16, 1096, 2, "", 1, "UNI port"},
    {"vlan_75", FieldType::u16, 1098, 2, "", 1, "multicast VLAN"},
    {"group_75", FieldType::mac, 1100, 6, "", 1, "MAC address of the group"},
    {"uni_76", FieldType::u16, 1106, 2, "", 1, "UNI port"},
    {"vlan_76", FieldType::u16, 1108, 2, "", 1, "multicast VLAN"},
    {"group_76", FieldType::mac, 1110, 6, "", 1, "MAC address of the group"},
    {"uni_77", FieldType::u16, 1116, 2, "", 1, "UNI port"},
    {"vlan_77", FieldType::u16, 1118, 2, "", 1, "multicast VLAN"},
    {"group_77", FieldType::mac, 1120, 6, "", 1, "MAC address of the group"},
    {"uni_78", FieldType::u16, 1126, 2, "", 1, "UNI port"},
    {"vlan_78", FieldType::u16, 1128, 2, "", 1, "multicast VLAN"},
    {"group_78", FieldType::mac, 1130, 6, "", 1, "MAC address of the group"},
    {"uni_79", FieldType::u16, 1136, 2, "", 1, "UNI port"},
    {"vlan_79", FieldType::u16, 1138, 2, "", 1, "multicast VLAN"},
    {"group_79", FieldType::mac, 1140, 6, "", 1, "MAC address of the group"},
    {"uni_80", FieldType::u16, 1146, 2, "", 1, "UNI port"},
    {"vlan_80", FieldType::u16, 1148, 2, "", 1, "multicast VLAN"},
    {"group_80", FieldType::mac, 1150, 6, "", 1, "MAC address of the group"},
    {"uni_81", FieldType::u16, 1156, 2, "", 1, "UNI port"},
    {"vlan_81", FieldType::u16, 1158, 2, "", 1, "multicast VLAN"},
    {"group_81", FieldType::mac, 1160, 6, "", 1, "MAC address of the group"},
    {"uni_82", FieldType::u16, 1166, 2, "", 1, "UNI port"},
    {"vlan_82", FieldType::u16, 1168, 2, "", 1, "multicast VLAN"},
    {"group_82", FieldType::mac, 1170, 6, "", 1, "MAC address of the group"},
    {"uni_83", FieldType::u16, 1176, 2, "", 1, "UNI port"},
    {"vlan_83", FieldType::u16, 1178, 2, "", 1, "multicast VLAN"},
    {"group_83", FieldType::mac, 1180, 6, "", 1, "MAC address of the group"},
    {"uni_84", FieldType::u16, 1186, 2, "", 1, "UNI port"},
    {"vlan_84", FieldType::u16, 1188, 2, "", 1, "multicast VLAN"},
    {"group_84", FieldType::mac, 1190, 6, "", 1, "MAC address of the group"},
    {"uni_85", FieldType::u16, 1196, 2, "", 1, "UNI port"},
    {"vlan_85", FieldType::u16, 1198, 2, "", 1, "multicast VLAN"},
    {"group_85", FieldType::mac, 1200, 6, "", 1, "MAC address of the group"},
    {"uni_86", FieldType::u16, 1206, 2, "", 1, "UNI port"},
    {"vlan_86", FieldType::u16, 1208, 2, "", 1, "multicast VLAN"},
    {"group_86", FieldType::mac, 1210, 6, "", 1, "MAC address of the group"},
    {"uni_87", FieldType::u16, 1216, 2, "", 1, "UNI port"},
    {"vlan_87", FieldType::u16, 1218, 2, "", 1, "multicast VLAN"},
    {"group_87", FieldType::mac, 1220, 6, "", 1, "MAC address of the group"},
    {"uni_88", FieldType::u16, 1226, 2, "", 1, "UNI port"},
    {"vlan_88", FieldType::u16, 1228, 2, "", 1, "multicast VLAN"},
    {"group_88", FieldType::mac, 1230, 6, "", 1, "MAC address of the group"},
    {"uni_89", FieldType::u16, 1236, 2, "", 1, "UNI port"},
    {"vlan_89", FieldType::u16, 1238, 2, "", 1, "multicast VLAN"},
    {"group_89", FieldType::mac, 1240, 6, "", 1, "MAC address of the group"},
    {"uni_90", FieldType::u16, 1246, 2, "", 1, "UNI port"},
    {"vlan_90", FieldType::u16, 1248, 2, "", 1, "multicast VLAN"},
    {"group_90", FieldType::mac, 1250, 6, "", 1, "MAC address of the group"},
    {"uni_91", FieldType::u16, 1256, 2, "", 1, "UNI port"},
    {"vlan_91", FieldType::u16, 1258, 2, "", 1, "multicast VLAN"},
    {"group_91", FieldType::mac, 1260, 6, "", 1, "MAC address of the group"},
    {"uni_92", FieldType::u16, 1266, 2, "", 1, "UNI port"},
    {"vlan_92", FieldType::u16, 1268, 2, "", 1, "multicast VLAN"},
    {"group_92", FieldType::mac, 1270, 6, "", 1, "MAC address of the group"},
    {"uni_93", FieldType::u16, 1276, 2, "", 1, "UNI port"},
    {"vlan_93", FieldType::u16, 1278, 2, "", 1, "multicast VLAN"},
    {"group_93", FieldType::mac, 1280, 6, "", 1, "MAC address of the group"},
    {"uni_94", FieldType::u16, 1286, 2, "", 1, "UNI port"},
    {"vlan_94", FieldType::u16, 1288, 2, "", 1, "multicast VLAN"},
    {"group_94", FieldType::mac, 1290, 6, "", 1, "MAC address of the group"},
    {"uni_95", FieldType::u16, 1296, 2, "", 1, "UNI port"},
    {"vlan_95", FieldType::u16, 1298, 2, "", 1, "multicast VLAN"},
    {"group_95", FieldType::mac, 1300, 6, "", 1, "MAC address of the group"},
    {"uni_96", FieldType::u16, 1306, 2, "", 1, "UNI port"},
    {"vlan_96", FieldType::u16, 1308, 2, "", 1, "multicast VLAN"},
    {"group_96", FieldType::mac, 1310, 6, "", 1, "MAC address of the group"},
    {"uni_97", FieldType::u16, 1316, 2, "", 1, "UNI port"},
    {"vlan_97", FieldType::u16, 1318, 2, "", 1, "multicast VLAN"},
    {"group_97", FieldType::mac, 1320, 6, "", 1, "MAC address of the group"},
    {"uni_98", FieldType::u16, 1326, 2, "", 1, "UNI port"},
    {"vlan_98", FieldType::u16, 1328, 2, "", 1, "multicast VLAN"},
    {"group_98", FieldType::mac, 1330, 6, "", 1, "MAC address of the group"},
    {"uni_99", FieldType::u16, 1336, 2, "", 1, "UNI port"},
    {"vlan_99", FieldType::u16, 1338, 2, "", 1, "multicast VLAN"},
    {"group_99", FieldType::mac, 1340, 6, "", 1, "MAC address of the group"},
    {"uni_100", FieldType::u16, 1346, 2, "", 1, "UNI port"},
    {"vlan_100", FieldType::u16, 1348, 2, "", 1, "multicast VLAN"},
    {"group_100", FieldType::mac, 1350, 6, "", 1, "MAC address of the group"},
    {"uni_101", FieldType::u16, 1356, 2, "", 1, "UNI port"},
    {"vlan_101", FieldType::u16, 1358, 2, "", 1, "multicast VLAN"},
    {"group_101", FieldType::mac, 1360, 6, "", 1, "MAC address of the group"},
    {"uni_102", FieldType::u16, 1366, 2, "", 1, "UNI port"},
    {"vlan_102", FieldType::u16, 1368, 2, "", 1, "multicast VLAN"},
    {"group_102", FieldType::mac, 1370, 6, "", 1, "MAC address of the group"},
    {"uni_103", FieldType::u16, 1376, 2, "", 1, "UNI port"},
    {"vlan_103", FieldType::u16, 1378, 2, "", 1, "multicast VLAN"},
    {"group_103", FieldType::mac, 1380, 6, "", 1, "MAC address of the group"},
    {"uni_104", FieldType::u16, 1386, 2, "", 1, "UNI port"},
    {"vlan_104", FieldType::u16, 1388, 2, "", 1, "multicast VLAN"},
    {"group_104", FieldType::mac, 1390, 6, "", 1, "MAC address of the group"},
    {"uni_105", FieldType::u16, 1396, 2, "", 1, "UNI port"},
    {"vlan_105", FieldType::u16, 1398, 2, "", 1, "multicast VLAN"},
    {"group_105", FieldType::mac, 1400, 6, "", 1, "MAC address of the group"},
    {"uni_106", FieldType::u16, 1406, 2, "", 1, "UNI port"},
    {"vlan_106", FieldType::u16, 1408, 2, "", 1, "multicast VLAN"},
    {"group_106", FieldType::mac, 1410, 6, "", 1, "MAC address of the group"},
    {"uni_107", FieldType::u16, 1416, 2, "", 1, "UNI port"},
    {"vlan_107", FieldType::u16, 1418, 2, "", 1, "multicast VLAN"},
    {"group_107", FieldType::mac, 1420, 6, "", 1, "MAC address of the group"},
    {"uni_108", FieldType::u16, 1426, 2, "", 1, "UNI port"},
    {"vlan_108", FieldType::u16, 1428, 2, "", 1, "multicast VLAN"},
    {"group_108", FieldType::mac, 1430, 6, "", 1, "MAC address of the group"},
    {"uni_109", FieldType::u16, 1436, 2, "", 1, "UNI port"},
    {"vlan_109", FieldType::u16, 1438, 2, "", 1, "multicast VLAN"},
    {"group_109", FieldType::mac, 1440, 6, "", 1, "MAC address of the group"},
    {"uni_110", FieldType::u16, 1446, 2, "", 1, "UNI port"},
    {"vlan_110", FieldType::u16, 1448, 2, "", 1, "multicast VLAN"},
    {"group_110", FieldType::mac, 1450, 6, "", 1, "MAC address of the group"},
    {"uni_111", FieldType::u16, 1456, 2, "", 1, "UNI port"},
    {"vlan_111", FieldType::u16, 1458, 2, "", 1, "multicast VLAN"},
    {"group_111", FieldType::mac, 1460, 6, "", 1, "MAC address of the group"},
    {"uni_112", FieldType::u16, 1466, 2, "", 1, "UNI port"},
    {"vlan_112", FieldType::u16, 1468, 2, "", 1, "multicast VLAN"},
    {"group_112", FieldType::mac, 1470, 6, "", 1, "MAC address of the group"},
    {"uni_113", FieldType::u16, 1476, 2, "", 1, "UNI port"},
    {"vlan_113", FieldType::u16, 1478, 2, "", 1, "multicast VLAN"},
    {"group_113", FieldType::mac, 1480, 6, "", 1, "MAC address of the group"},
    {"uni_114", FieldType::u16, 1486, 2, "", 1, "UNI port"},
    {"vlan_114", FieldType::u16, 1488, 2, "", 1, "multicast VLAN"},
    {"group_114", FieldType::mac, 1490, 6, "", 1, "MAC address of the group"},
    {"uni_115", FieldType::u16, 1496, 2, "", 1, "UNI port"},
    {"vlan_115", FieldType::u16, 1498, 2, "", 1, "multicast VLAN"},
    {"group_115", FieldType::mac, 1500, 6, "", 1, "MAC address of the group"},
    {"uni_116", FieldType::u16, 1506, 2, "", 1, "UNI port"},
    {"vlan_116", FieldType::u16, 1508, 2, "", 1, "multicast VLAN"},
    {"group_116", FieldType::mac, 1510, 6, "", 1, "MAC address of the group"},
    {"uni_117", FieldType::u16, 1516, 2, "", 1, "UNI port"},
    {"vlan_117", FieldType::u16, 1518, 2, "", 1, "multicast VLAN"},
    {"group_117", FieldType::mac, 1520, 6, "", 1, "MAC address of the group"},
    {"uni_118", FieldType::u16, 1526, 2, "", 1, "UNI port"},
    {"vlan_118", FieldType::u16, 1528, 2, "", 1, "multicast VLAN"},
    {"group_118", FieldType::mac, 1530, 6, "", 1, "MAC address of the group"},
    {"uni_119", FieldType::u16, 1536, 2, "", 1, "UNI port"},
    {"vlan_119", FieldType::u16, 1538, 2, "", 1, "multicast VLAN"},
    {"group_119", FieldType::mac, 1540, 6, "", 1, "MAC address of the group"},
    {"uni_120", FieldType::u16, 1546, 2, "", 1, "UNI port"},
    {"vlan_120", FieldType::u16, 1548, 2, "", 1, "multicast VLAN"},
    {"group_120", FieldType::mac, 1550, 6, "", 1, "MAC address of the group"},
    {"uni_121", FieldType::u16, 1556, 2, "", 1, "UNI port"},
    {"vlan_121", FieldType::u16, 1558, 2, "", 1, "multicast VLAN"},
    {"group_121", FieldType::mac, 1560, 6, "", 1, "MAC address of the group"},
    {"uni_122", FieldType::u16, 1566, 2, "", 1, "UNI port"},
    {"vlan_122", FieldType::u16, 1568, 2, "", 1, "multicast VLAN"},
    {"group_122", FieldType::mac, 1570, 6, "", 1, "MAC address of the group"},
    {"uni_123", FieldType::u16, 1576, 2, "", 1, "UNI port"},
    {"vlan_123", FieldType::u16, 1578, 2, "", 1, "multicast VLAN"},
    {"group_123", FieldType::mac, 1580, 6, "", 1, "MAC address of the group"},
    {"uni_124", FieldType::u16, 1586, 2, "", 1, "UNI port"},
    {"vlan_124", FieldType::u16, 1588, 2, "", 1, "multicast VLAN"},
    {"group_124", FieldType::mac, 1590, 6, "", 1, "MAC address of the group"},
    {"uni_125", FieldType::u16, 1596, 2, "", 1, "UNI port"},
    {"vlan_125", FieldType::u16, 1598, 2, "", 1, "multicast VLAN"},
    {"group_125", FieldType::mac, 1600, 6, "", 1, "MAC address of the group"},
    {"uni_126", FieldType::u16, 1606, 2, "", 1, "UNI port"},
    {"vlan_126", FieldType::u16, 1608, 2, "", 1, "multicast VLAN"},
    {"group_126", FieldType::mac, 1610, 6, "", 1, "MAC address of the group"},
    {"uni_127", FieldType::u16, 1616, 2, "", 1, "UNI port"},
    {"vlan_127", FieldType::u16, 1618, 2, "", 1, "multicast VLAN"},
    {"group_127", FieldType::mac, 1620, 6, "", 1, "MAC address of the group"},
    {"uni_128", FieldType::u16, 1626, 2, "", 1, "UNI port"},
    {"vlan_128", FieldType::u16, 1628, 2, "", 1, "multicast VLAN"},
    {"group_128", FieldType::mac, 1630, 6, "", 1, "MAC address of the group"},
};

constexpr const Command *onu_mc_group_set_commands[] = {&all_commands[155]};

constexpr Field onu_mc_group_set_fields[] = {
    {"action", FieldType::u8, 352, 1, "", 1, "0 delete these entries, 1 add them, 2 clear: delete all"},
    {"control_type", FieldType::u8, 353, 1, "", 1, "1: groups are told apart by MAC address and VLAN"},
    {"number", FieldType::u8, 354, 1, "", 1, "how many entries count: 1 to 128; 0 to clear"},
    {"uni_1", FieldType::u16, 356, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_1", FieldType::u16, 358, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_1", FieldType::mac, 360, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_2", FieldType::u16, 366, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_2", FieldType::u16, 368, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_2", FieldType::mac, 370, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_3", FieldType::u16, 376, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_3", FieldType::u16, 378, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_3", FieldType::mac, 380, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_4", FieldType::u16, 386, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_4", FieldType::u16, 388, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_4", FieldType::mac, 390, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_5", FieldType::u16, 396, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_5", FieldType::u16, 398, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_5", FieldType::mac, 400, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_6", FieldType::u16, 406, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_6", FieldType::u16, 408, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_6", FieldType::mac, 410, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_7", FieldType::u16, 416, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_7", FieldType::u16, 418, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_7", FieldType::mac, 420, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_8", FieldType::u16, 426, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_8", FieldType::u16, 428, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_8", FieldType::mac, 430, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_9", FieldType::u16, 436, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_9", FieldType::u16, 438, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_9", FieldType::mac, 440, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_10", FieldType::u16, 446, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_10", FieldType::u16, 448, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_10", FieldType::mac, 450, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_11", FieldType::u16, 456, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_11", FieldType::u16, 458, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_11", FieldType::mac, 460, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_12", FieldType::u16, 466, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_12", FieldType::u16, 468, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_12", FieldType::mac, 470, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_13", FieldType::u16, 476, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_13", FieldType::u16, 478, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_13", FieldType::mac, 480, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_14", FieldType::u16, 486, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_14", FieldType::u16, 488, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_14", FieldType::mac, 490, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_15", FieldType::u16, 496, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_15", FieldType::u16, 498, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_15", FieldType::mac, 500, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_16", FieldType::u16, 506, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_16", FieldType::u16, 508, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_16", FieldType::mac, 510, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_17", FieldType::u16, 516, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_17", FieldType::u16, 518, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_17", FieldType::mac, 520, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_18", FieldType::u16, 526, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_18", FieldType::u16, 528, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_18", FieldType::mac, 530, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_19", FieldType::u16, 536, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_19", FieldType::u16, 538, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_19", FieldType::mac, 540, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_20", FieldType::u16, 546, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_20", FieldType::u16, 548, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_20", FieldType::mac, 550, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_21", FieldType::u16, 556, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_21", FieldType::u16, 558, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_21", FieldType::mac, 560, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_22", FieldType::u16, 566, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_22", FieldType::u16, 568, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_22", FieldType::mac, 570, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_23", FieldType::u16, 576, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_23", FieldType::u16, 578, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_23", FieldType::mac, 580, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_24", FieldType::u16, 586, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_24", FieldType::u16, 588, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_24", FieldType::mac, 590, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_25", FieldType::u16, 596, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_25", FieldType::u16, 598, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_25", FieldType::mac, 600, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_26", FieldType::u16, 606, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_26", FieldType::u16, 608, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_26", FieldType::mac, 610, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_27", FieldType::u16, 616, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_27", FieldType::u16, 618, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_27", FieldType::mac, 620, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_28", FieldType::u16, 626, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_28", FieldType::u16, 628, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_28", FieldType::mac, 630, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_29", FieldType::u16, 636, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_29", FieldType::u16, 638, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_29", FieldType::mac, 640, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_30", FieldType::u16, 646, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_30", FieldType::u16, 648, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_30", FieldType::mac, 650, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_31", FieldType::u16, 656, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_31", FieldType::u16, 658, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_31", FieldType::mac, 660, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_32", FieldType::u16, 666, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_32", FieldType::u16, 668, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_32", FieldType::mac, 670, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_33", FieldType::u16, 676, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_33", FieldType::u16, 678, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_33", FieldType::mac, 680, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_34", FieldType::u16, 686, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_34", FieldType::u16, 688, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_34", FieldType::mac, 690, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_35", FieldType::u16, 696, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_35", FieldType::u16, 698, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_35", FieldType::mac, 700, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_36", FieldType::u16, 706, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_36", FieldType::u16, 708, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_36", FieldType::mac, 710, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_37", FieldType::u16, 716, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_37", FieldType::u16, 718, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_37", FieldType::mac, 720, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_38", FieldType::u16, 726, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_38", FieldType::u16, 728, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_38", FieldType::mac, 730, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_39", FieldType::u16, 736, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_39", FieldType::u16, 738, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_39", FieldType::mac, 740, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_40", FieldType::u16, 746, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_40", FieldType::u16, 748, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_40", FieldType::mac, 750, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_41", FieldType::u16, 756, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_41", FieldType::u16, 758, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_41", FieldType::mac, 760, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_42", FieldType::u16, 766, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_42", FieldType::u16, 768, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_42", FieldType::mac, 770, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_43", FieldType::u16, 776, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_43", FieldType::u16, 778, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_43", FieldType::mac, 780, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_44", FieldType::u16, 786, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_44", FieldType::u16, 788, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_44", FieldType::mac, 790, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_45", FieldType::u16, 796, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_45", FieldType::u16, 798, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_45", FieldType::mac, 800, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_46", FieldType::u16, 806, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_46", FieldType::u16, 808, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_46", FieldType::mac, 810, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_47", FieldType::u16, 816, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_47", FieldType::u16, 818, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_47", FieldType::mac, 820, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_48", FieldType::u16, 826, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_48", FieldType::u16, 828, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_48", FieldType::mac, 830, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_49", FieldType::u16, 836, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_49", FieldType::u16, 838, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_49", FieldType::mac, 840, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_50", FieldType::u16, 846, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_50", FieldType::u16, 848, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_50", FieldType::mac, 850, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_51", FieldType::u16, 856, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_51", FieldType::u16, 858, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_51", FieldType::mac, 860, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_52", FieldType::u16, 866, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_52", FieldType::u16, 868, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_52", FieldType::mac, 870, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_53", FieldType::u16, 876, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_53", FieldType::u16, 878, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_53", FieldType::mac, 880, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_54", FieldType::u16, 886, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_54", FieldType::u16, 888, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_54", FieldType::mac, 890, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_55", FieldType::u16, 896, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_55", FieldType::u16, 898, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_55", FieldType::mac, 900, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_56", FieldType::u16, 906, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_56", FieldType::u16, 908, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_56", FieldType::mac, 910, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_57", FieldType::u16, 916, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_57", FieldType::u16, 918, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_57", FieldType::mac, 920, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_58", FieldType::u16, 926, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_58", FieldType::u16, 928, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_58", FieldType::mac, 930, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_59", FieldType::u16, 936, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_59", FieldType::u16, 938, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_59", FieldType::mac, 940, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_60", FieldType::u16, 946, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_60", FieldType::u16, 948, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_60", FieldType::mac, 950, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_61", FieldType::u16, 956, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_61", FieldType::u16, 958, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_61", FieldType::mac, 960, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_62", FieldType::u16, 966, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_62", FieldType::u16, 968, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_62", FieldType::mac, 970, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_63", FieldType::u16, 976, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_63", FieldType::u16, 978, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_63", FieldType::mac, 980, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_64", FieldType::u16, 986, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_64", FieldType::u16, 988, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_64", FieldType::mac, 990, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_65", FieldType::u16, 996, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_65", FieldType::u16, 998, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_65", FieldType::mac, 1000, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_66", FieldType::u16, 1006, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_66", FieldType::u16, 1008, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_66", FieldType::mac, 1010, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_67", FieldType::u16, 1016, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_67", FieldType::u16, 1018, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_67", FieldType::mac, 1020, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_68", FieldType::u16, 1026, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_68", FieldType::u16, 1028, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_68", FieldType::mac, 1030, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_69", FieldType::u16, 1036, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_69", FieldType::u16, 1038, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_69", FieldType::mac, 1040, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_70", FieldType::u16, 1046, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_70", FieldType::u16, 1048, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_70", FieldType::mac, 1050, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_71", FieldType::u16, 1056, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_71", FieldType::u16, 1058, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_71", FieldType::mac, 1060, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_72", FieldType::u16, 1066, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_72", FieldType::u16, 1068, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_72", FieldType::mac, 1070, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_73", FieldType::u16, 1076, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_73", FieldType::u16, 1078, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_73", FieldType::mac, 1080, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_74", FieldType::u16, 1086, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_74", FieldType::u16, 1088, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_74", FieldType::mac, 1090, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_75", FieldType::u16, 1096, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_75", FieldType::u16, 1098, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_75", FieldType::mac, 1100, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_76", FieldType::u16, 1106, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_76", FieldType::u16, 1108, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_76", FieldType::mac, 1110, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_77", FieldType::u16, 1116, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_77", FieldType::u16, 1118, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_77", FieldType::mac, 1120, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_78", FieldType::u16, 1126, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_78", FieldType::u16, 1128, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_78", FieldType::mac, 1130, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_79", FieldType::u16, 1136, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_79", FieldType::u16, 1138, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_79", FieldType::mac, 1140, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_80", FieldType::u16, 1146, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_80", FieldType::u16, 1148, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_80", FieldType::mac, 1150, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_81", FieldType::u16, 1156, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_81", FieldType::u16, 1158, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_81", FieldType::mac, 1160, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_82", FieldType::u16, 1166, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_82", FieldType::u16, 1168, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_82", FieldType::mac, 1170, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_83", FieldType::u16, 1176, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_83", FieldType::u16, 1178, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_83", FieldType::mac, 1180, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_84", FieldType::u16, 1186, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_84", FieldType::u16, 1188, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_84", FieldType::mac, 1190, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_85", FieldType::u16, 1196, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_85", FieldType::u16, 1198, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_85", FieldType::mac, 1200, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_86", FieldType::u16, 1206, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_86", FieldType::u16, 1208, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_86", FieldType::mac, 1210, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_87", FieldType::u16, 1216, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_87", FieldType::u16, 1218, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_87", FieldType::mac, 1220, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_88", FieldType::u16, 1226, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_88", FieldType::u16, 1228, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_88", FieldType::mac, 1230, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_89", FieldType::u16, 1236, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_89", FieldType::u16, 1238, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_89", FieldType::mac, 1240, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_90", FieldType::u16, 1246, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_90", FieldType::u16, 1248, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_90", FieldType::mac, 1250, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_91", FieldType::u16, 1256, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_91", FieldType::u16, 1258, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_91", FieldType::mac, 1260, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_92", FieldType::u16, 1266, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_92", FieldType::u16, 1268, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_92", FieldType::mac, 1270, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_93", FieldType::u16, 1276, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_93", FieldType::u16, 1278, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_93", FieldType::mac, 1280, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_94", FieldType::u16, 1286, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_94", FieldType::u16, 1288, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_94", FieldType::mac, 1290, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_95", FieldType::u16, 1296, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_95", FieldType::u16, 1298, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_95", FieldType::mac, 1300, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_96", FieldType::u16, 1306, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_96", FieldType::u16, 1308, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_96", FieldType::mac, 1310, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_97", FieldType::u16, 1316, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_97", FieldType::u16, 1318, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_97", FieldType::mac, 1320, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_98", FieldType::u16, 1326, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_98", FieldType::u16, 1328, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_98", FieldType::mac, 1330, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_99", FieldType::u16, 1336, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_99", FieldType::u16, 1338, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_99", FieldType::mac, 1340, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_100", FieldType::u16, 1346, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_100", FieldType::u16, 1348, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_100", FieldType::mac, 1350, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_101", FieldType::u16, 1356, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_101", FieldType::u16, 1358, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_101", FieldType::mac, 1360, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_102", FieldType::u16, 1366, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_102", FieldType::u16, 1368, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_102", FieldType::mac, 1370, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_103", FieldType::u16, 1376, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_103", FieldType::u16, 1378, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_103", FieldType::mac, 1380, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_104", FieldType::u16, 1386, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_104", FieldType::u16, 1388, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_104", FieldType::mac, 1390, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_105", FieldType::u16, 1396, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_105", FieldType::u16, 1398, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_105", FieldType::mac, 1400, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_106", FieldType::u16, 1406, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_106", FieldType::u16, 1408, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_106", FieldType::mac, 1410, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_107", FieldType::u16, 1416, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_107", FieldType::u16, 1418, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_107", FieldType::mac, 1420, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_108", FieldType::u16, 1426, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_108", FieldType::u16, 1428, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_108", FieldType::mac, 1430, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_109", FieldType::u16, 1436, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_109", FieldType::u16, 1438, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_109", FieldType::mac, 1440, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_110", FieldType::u16, 1446, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_110", FieldType::u16, 1448, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_110", FieldType::mac, 1450, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_111", FieldType::u16, 1456, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_111", FieldType::u16, 1458, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_111", FieldType::mac, 1460, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_112", FieldType::u16, 1466, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_112", FieldType::u16, 1468, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_112", FieldType::mac, 1470, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_113", FieldType::u16, 1476, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_113", FieldType::u16, 1478, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_113", FieldType::mac, 1480, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_114", FieldType::u16, 1486, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_114", FieldType::u16, 1488, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_114", FieldType::mac, 1490, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_115", FieldType::u16, 1496, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_115", FieldType::u16, 1498, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_115", FieldType::mac, 1500, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_116", FieldType::u16, 1506, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_116", FieldType::u16, 1508, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_116", FieldType::mac, 1510, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_117", FieldType::u16, 1516, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_117", FieldType::u16, 1518, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_117", FieldType::mac, 1520, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_118", FieldType::u16, 1526, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_118", FieldType::u16, 1528, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_118", FieldType::mac, 1530, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_119", FieldType::u16, 1536, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_119", FieldType::u16, 1538, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_119", FieldType::mac, 1540, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_120", FieldType::u16, 1546, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_120", FieldType::u16, 1548, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_120", FieldType::mac, 1550, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_121", FieldType::u16, 1556, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_121", FieldType::u16, 1558, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_121", FieldType::mac, 1560, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_122", FieldType::u16, 1566, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_122", FieldType::u16, 1568, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_122", FieldType::mac, 1570, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_123", FieldType::u16, 1576, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_123", FieldType::u16, 1578, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_123", FieldType::mac, 1580, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_124", FieldType::u16, 1586, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_124", FieldType::u16, 1588, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_124", FieldType::mac, 1590, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_125", FieldType::u16, 1596, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_125", FieldType::u16, 1598, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_125", FieldType::mac, 1600, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_126", FieldType::u16, 1606, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_126", FieldType::u16, 1608, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_126", FieldType::mac, 1610, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_127", FieldType::u16, 1616, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_127", FieldType::u16, 1618, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_127", FieldType::mac, 1620, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
    {"uni_128", FieldType::u16, 1626, 2, "", 1, "UNI port; entries that do not count are not read"},
    {"vlan_128", FieldType::u16, 1628, 2, "", 1, "multicast VLAN, 1 to 4094"},
    {"group_128", FieldType::mac, 1630, 6, "", 1, "MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice"},
};

constexpr const Command *onu_switch_commands[] = {&all_commands[120], &all_commands[121]};

constexpr Field onu_switch_fields[] = {
    {"on", FieldType::u8, 352, 1, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_catv_state_commands[] = {&all_commands[119]};

constexpr Field onu_catv_state_fields[] = {
    {"on", FieldType::u8, 352, 1, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_perf_monitor_commands[] = {&all_commands[122]};

constexpr Field onu_perf_monitor_fields[] = {
    {"state", FieldType::u16, 352, 2, "", 1, "1 on, 0 off"},
    {"period", FieldType::u32, 356, 4, "s", 1, "how long a period is: 900; the first begins when monitoring does"},
    {"since", FieldType::u64, 360, 8, "ms", 1, "model time at which monitoring began; 0 while it is off"},
};

constexpr const Command *onu_performance_commands[] = {&all_commands[123], &all_commands[124]};

constexpr Field onu_performance_fields[] = {
    {"down_drop_events", FieldType::u64, 352, 8, "events", 1, "downstream drop events: each discarded frame is one"},
    {"up_drop_events", FieldType::u64, 360, 8, "events", 1, "upstream drop events: each discarded frame is one"},
    {"down_octets", FieldType::u64, 368, 8, "octets", 1, "downstream octets of frames, with their check sequence"},
    {"up_octets", FieldType::u64, 376, 8, "octets", 1, "upstream octets of frames, with their check sequence"},
    {"down_frames", FieldType::u64, 384, 8, "frames", 1, "downstream frames that passed well: the sum of those of each length"},
    {"up_frames", FieldType::u64, 392, 8, "frames", 1, "upstream frames that passed well: the sum of those of each length"},
    {"down_broadcast", FieldType::u64, 400, 8, "frames", 1, "downstream broadcast frames among them"},
    {"up_broadcast", FieldType::u64, 408, 8, "frames", 1, "upstream broadcast frames among them"},
    {"down_multicast", FieldType::u64, 416, 8, "frames", 1, "downstream multicast frames among them"},
    {"up_multicast", FieldType::u64, 424, 8, "frames", 1, "upstream multicast frames among them"},
    {"down_crc_errored", FieldType::u64, 432, 8, "frames", 1, "downstream frames with a wrong check sequence"},
    {"up_crc_errored", FieldType::u64, 440, 8, "frames", 1, "upstream frames with a wrong check sequence"},
    {"down_undersize", FieldType::u64, 448, 8, "frames", 1, "downstream frames below 64 octets: not modelled, 0"},
    {"up_undersize", FieldType::u64, 456, 8, "frames", 1, "upstream frames below 64 octets: not modelled, 0"},
    {"down_oversize", FieldType::u64, 464, 8, "frames", 1, "downstream frames above 1518 octets: not modelled, 0"},
    {"up_oversize", FieldType::u64, 472, 8, "frames", 1, "upstream frames above 1518 octets: not modelled, 0"},
    {"down_fragments", FieldType::u64, 480, 8, "frames", 1, "downstream broken frames below 64 octets, which collisions leave on a half-duplex link"},
    {"up_fragments", FieldType::u64, 488, 8, "frames", 1, "upstream broken frames below 64 octets, which collisions leave on a half-duplex link"},
    {"down_jabbers", FieldType::u64, 496, 8, "frames", 1, "downstream broken frames above 1518 octets: not modelled, 0"},
    {"up_jabbers", FieldType::u64, 504, 8, "frames", 1, "upstream broken frames above 1518 octets: not modelled, 0"},
    {"down_octets_64", FieldType::u64, 512, 8, "frames", 1, "downstream frames of 64 octets"},
    {"up_octets_64", FieldType::u64, 520, 8, "frames", 1, "upstream frames of 64 octets"},
    {"down_octets_65_127", FieldType::u64, 528, 8, "frames", 1, "downstream frames of 65 to 127 octets"},
    {"up_octets_65_127", FieldType::u64, 536, 8, "frames", 1, "upstream frames of 65 to 127 octets"},
    {"down_octets_128_255", FieldType::u64, 544, 8, "frames", 1, "downstream frames of 128 to 255 octets"},
    {"up_octets_128_255", FieldType::u64, 552, 8, "frames", 1, "upstream frames of 128 to 255 octets"},
    {"down_octets_256_511", FieldType::u64, 560, 8, "frames", 1, "downstream frames of 256 to 511 octets"},
    {"up_octets_256_511", FieldType::u64, 568, 8, "frames", 1, "upstream frames of 256 to 511 octets"},
    {"down_octets_512_1023", FieldType::u64, 576, 8, "frames", 1, "downstream frames of 512 to 1023 octets"},
    {"up_octets_512_1023", FieldType::u64, 584, 8, "frames", 1, "upstream frames of 512 to 1023 octets"},
    {"down_octets_1024_1518", FieldType::u64, 592, 8, "frames", 1, "downstream frames of 1024 to 1518 octets"},
    {"up_octets_1024_1518", FieldType::u64, 600, 8, "frames", 1, "upstream frames of 1024 to 1518 octets"},
    {"down_discarded", FieldType::u64, 608, 8, "frames", 1, "downstream frames that were not sent for want of room"},
    {"up_discarded", FieldType::u64, 616, 8, "frames", 1, "upstream frames that were not sent for want of room"},
    {"down_errored", FieldType::u64, 624, 8, "frames", 1, "downstream frames with errors: with a wrong check sequence, undersize, oversize, fragments and jabbers"},
    {"up_errored", FieldType::u64, 632, 8, "frames", 1, "upstream frames with errors: with a wrong check sequence, undersize, oversize, fragments and jabbers"},
    {"status_changes", FieldType::u64, 640, 8, "changes", 1, "changes of the link's state: not modelled, 0"},
};

constexpr const Command *onu_mgmt_commands[] = {&all_commands[132]};

constexpr Field onu_mgmt_fields[] = {
    {"address", FieldType::bytes, 352, 4, "", 1, "IPv4 address"},
    {"mask", FieldType::bytes, 356, 4, "", 1, "network mask"},
    {"gateway", FieldType::bytes, 360, 4, "", 1, "IPv4 address of the gateway; 0 none"},
    {"vlan", FieldType::u16, 364, 2, "", 1, "VLAN, 1 to 4094; 0 untagged"},
    {"priority", FieldType::u8, 366, 1, "", 1, "802.1p priority, 0 to 7"},
    {"mode", FieldType::u8, 367, 1, "", 1, "0 off, 1 static address"},
    {"dscp", FieldType::u8, 368, 1, "", 1, "DSCP of what the ONU sends, 0 to 63"},
};

constexpr const Command *onu_mgmt_set_commands[] = {&all_commands[133]};

constexpr Field onu_mgmt_set_fields[] = {
    {"address", FieldType::bytes, 352, 4, "", 1, "IPv4 address of a host: neither the first nor the last of its network"},
    {"mask", FieldType::bytes, 356, 4, "", 1, "network mask, of 1 to 30 bits from the left"},
    {"gateway", FieldType::bytes, 360, 4, "", 1, "IPv4 address of the gateway, another host of the network; 0 none"},
    {"vlan", FieldType::u16, 364, 2, "", 1, "VLAN, 1 to 4094; 0 untagged"},
    {"priority", FieldType::u8, 366, 1, "", 1, "802.1p priority, 0 to 7"},
    {"mode", FieldType::u8, 367, 1, "", 1, "0 off, 1 static address"},
    {"dscp", FieldType::u8, 368, 1, "", 1, "DSCP of what the ONU sends, 0 to 63"},
};

constexpr const Command *onu_fec_commands[] = {&all_commands[163]};

constexpr Field onu_fec_fields[] = {
    {"mode", FieldType::u32, 352, 4, "", 1, "1 unknown: the ONU cannot correct errors; 2 enabled, 3 disabled"},
};

constexpr const Command *onu_fec_set_commands[] = {&all_commands[164]};

constexpr Field onu_fec_set_fields[] = {
    {"mode", FieldType::u32, 352, 4, "", 1, "2 enabled, 3 disabled"},
};

constexpr const Command *onu_fec_ability_commands[] = {&all_commands[165]};

constexpr Field onu_fec_ability_fields[] = {
    {"ability", FieldType::u32, 352, 4, "", 1, "2 supported, 3 not supported"},
};

constexpr const Command *onu_time_commands[] = {&all_commands[116]};

constexpr Field onu_time_fields[] = {
    {"server", FieldType::bytes, 352, 4, "", 1, "IPv4 address of the time server; 0 none"},
    {"backup", FieldType::bytes, 356, 4, "", 1, "IPv4 address of a second one; 0 none"},
    {"interval", FieldType::u32, 360, 4, "s", 1, "between two questions to the server, 16 to 86400"},
    {"zone", FieldType::s16, 364, 2, "min", 1, "time zone, east of UTC: -720 to 840"},
    {"mode", FieldType::u8, 366, 1, "", 1, "0 the time of the OLT, 1 SNTP"},
    {"summer", FieldType::u8, 367, 1, "", 1, "1 while summer time adds an hour to the zone, else 0"},
};

constexpr const Command *onu_time_set_commands[] = {&all_commands[117]};

constexpr Field onu_time_set_fields[] = {
    {"server", FieldType::bytes, 352, 4, "", 1, "IPv4 address of the time server; 0 none, in mode 0 only"},
    {"backup", FieldType::bytes, 356, 4, "", 1, "IPv4 address of a second one; 0 none"},
    {"interval", FieldType::u32, 360, 4, "s", 1, "between two questions to the server, 16 to 86400"},
    {"zone", FieldType::s16, 364, 2, "min", 1, "time zone, east of UTC: -720 to 840"},
    {"mode", FieldType::u8, 366, 1, "", 1, "0 the time of the OLT, 1 SNTP"},
    {"summer", FieldType::u8, 367, 1, "", 1, "1 while summer time adds an hour to the zone, else 0"},
};

constexpr const Command *onu_sla_commands[] = {&all_commands[110]};

constexpr Field onu_sla_fields[] = {
    {"operation", FieldType::u8, 352, 1, "", 1, "1 where the OLT has an SLA stored, 0 where the default holds"},
    {"scheduling", FieldType::u8, 353, 1, "", 1, "0 strict priority"},
    {"boundary", FieldType::u8, 354, 1, "", 1, "lowest queue that is served by strict priority"},
    {"services", FieldType::u8, 355, 1, "", 1, "number of services, 0 to 8"},
    {"cycle", FieldType::u32, 356, 4, "us", 1, "time in which fixed bandwidth is granted once"},
    {"queue_1", FieldType::u8, 360, 1, "", 1, "queue of the service: the SLA's priority, 0 lowest to 7 highest"},
    {"weight_1", FieldType::u8, 361, 1, "", 1, "share among those of one priority"},
    {"packet_size_1", FieldType::u16, 362, 2, "bytes", 1, "size of the packets that fixed bandwidth is for; 0 without any"},
    {"fixed_1", FieldType::u16, 364, 2, "kbit/s", 64, "bandwidth that is granted whether used or not"},
    {"guaranteed_1", FieldType::u16, 366, 2, "kbit/s", 64, "further bandwidth that is granted when asked for"},
    {"best_effort_1", FieldType::u16, 368, 2, "kbit/s", 64, "bandwidth that is never exceeded"},
    {"queue_2", FieldType::u8, 370, 1, "", 1, "queue of the service: the SLA's priority, 0 lowest to 7 highest"},
    {"weight_2", FieldType::u8, 371, 1, "", 1, "share among those of one priority"},
    {"packet_size_2", FieldType::u16, 372, 2, "bytes", 1, "size of the packets that fixed bandwidth is for; 0 without any"},
    {"fixed_2", FieldType::u16, 374, 2, "kbit/s", 64, "bandwidth that is granted whether used or not"},
    {"guaranteed_2", FieldType::u16, 376, 2, "kbit/s", 64, "further bandwidth that is granted when asked for"},
    {"best_effort_2", FieldType::u16, 378, 2, "kbit/s", 64, "bandwidth that is never exceeded"},
    {"queue_3", FieldType::u8, 380, 1, "", 1, "queue of the service: the SLA's priority, 0 lowest to 7 highest"},
    {"weight_3", FieldType::u8, 381, 1, "", 1, "share among those of one priority"},
    {"packet_size_3", FieldType::u16, 382, 2, "bytes", 1, "size of the packets that fixed bandwidth is for; 0 without any"},
    {"fixed_3", FieldType::u16, 384, 2, "kbit/s", 64, "bandwidth that is granted whether used or not"},
    {"guaranteed_3", FieldType::u16, 386, 2, "kbit/s", 64, "further bandwidth that is granted when asked for"},
    {"best_effort_3", FieldType::u16, 388, 2, "kbit/s", 64, "bandwidth that is never exceeded"},
    {"queue_4", FieldType::u8, 390, 1, "", 1, "queue of the service: the SLA's priority, 0 lowest to 7 highest"},
    {"weight_4", FieldType::u8, 391, 1, "", 1, "share among those of one priority"},
    {"packet_size_4", FieldType::u16, 392, 2, "bytes", 1, "size of the packets that fixed bandwidth is for; 0 without any"},
    {"fixed_4", FieldType::u16, 394, 2, "kbit/s", 64, "bandwidth that is granted whether used or not"},
    {"guaranteed_4", FieldType::u16, 396, 2, "kbit/s", 64, "further bandwidth that is granted when asked for"},
    {"best_effort_4", FieldType::u16, 398, 2, "kbit/s", 64, "bandwidth that is never exceeded"},
    {"queue_5", FieldType::u8, 400, 1, "", 1, "queue of the service: the SLA's priority, 0 lowest to 7 highest"},
    {"weight_5", FieldType::u8, 401, 1, "", 1, "share among those of one priority"},
    {"packet_size_5", FieldType::u16, 402, 2, "bytes", 1, "size of the packets that fixed bandwidth is for; 0 without any"},
    {"fixed_5", FieldType::u16, 404, 2, "kbit/s", 64, "bandwidth that is granted whether used or not"},
    {"guaranteed_5", FieldType::u16, 406, 2, "kbit/s", 64, "further bandwidth that is granted when asked for"},
    {"best_effort_5", FieldType::u16, 408, 2, "kbit/s", 64, "bandwidth that is never exceeded"},
    {"queue_6", FieldType::u8, 410, 1, "", 1, "queue of the service: the SLA's priority, 0 lowest to 7 highest"},
    {"weight_6", FieldType::u8, 411, 1, "", 1, "share among those of one priority"},
    {"packet_size_6", FieldType::u16, 412, 2, "bytes", 1, "size of the packets that fixed bandwidth is for; 0 without any"},
    {"fixed_6", FieldType::u16, 414, 2, "kbit/s", 64, "bandwidth that is granted whether used or not"},
    {"guaranteed_6", FieldType::u16, 416, 2, "kbit/s", 64, "further bandwidth that is granted when asked for"},
    {"best_effort_6", FieldType::u16, 418, 2, "kbit/s", 64, "bandwidth that is never exceeded"},
    {"queue_7", FieldType::u8, 420, 1, "", 1, "queue of the service: the SLA's priority, 0 lowest to 7 highest"},
    {"weight_7", FieldType::u8, 421, 1, "", 1, "share among those of one priority"},
    {"packet_size_7", FieldType::u16, 422, 2, "bytes", 1, "size of the packets that fixed bandwidth is for; 0 without any"},
    {"fixed_7", FieldType::u16, 424, 2, "kbit/s", 64, "bandwidth that is granted whether used or not"},
    {"guaranteed_7", FieldType::u16, 426, 2, "kbit/s", 64, "further bandwidth that is granted when asked for"},
    {"best_effort_7", FieldType::u16, 428, 2, "kbit/s", 64, "bandwidth that is never exceeded"},
    {"queue_8", FieldType::u8, 430, 1, "", 1, "queue of the service: the SLA's priority, 0 lowest to 7 highest"},
    {"weight_8", FieldType::u8, 431, 1, "", 1, "share among those of one priority"},
    {"packet_size_8", FieldType::u16, 432, 2, "bytes", 1, "size of the packets that fixed bandwidth is for; 0 without any"},
    {"fixed_8", FieldType::u16, 434, 2, "kbit/s", 64, "bandwidth that is granted whether used or not"},
    {"guaranteed_8", FieldType::u16, 436, 2, "kbit/s", 64, "further bandwidth that is granted when asked for"},
    {"best_effort_8", FieldType::u16, 438, 2, "kbit/s", 64, "bandwidth that is never exceeded"},
};

constexpr const Command *onu_multi_llid_commands[] = {&all_commands[100]};

constexpr Field onu_multi_llid_fields[] = {
    {"llids", FieldType::u32, 24, 4, "", 1, "how many, 1 to 8; 1 at first"},
};

constexpr const Command *oam_print_commands[] = {&all_commands[226]};

constexpr Field oam_print_fields[] = {
    {"level", FieldType::u32, 24, 4, "", 1, "0 nothing, as at first; 1 errors, 2 errors and messages"},
};

constexpr const Command *onu_alarm_test_commands[] = {&all_commands[125]};

constexpr Field onu_alarm_test_fields[] = {
    {"alarm", FieldType::u32, 24, 4, "", 1, "an alarm of ONUs by its number in the table of alarms: 1 los, 2 dying_gasp, 3 rejected, 4 auth_failed, 7 receive_degraded, 10 deregistered"},
};

constexpr const Command *onu_admin_state_commands[] = {&all_commands[101]};

constexpr Field onu_admin_state_fields[] = {
    {"on", FieldType::u32, 352, 4, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_admin_state_set_commands[] = {&all_commands[102]};

constexpr Field onu_admin_state_set_fields[] = {
    {"on", FieldType::u32, 352, 4, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_autoneg_commands[] = {&all_commands[103]};

constexpr Field onu_autoneg_fields[] = {
    {"on", FieldType::u32, 352, 4, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_autoneg_set_commands[] = {&all_commands[104]};

constexpr Field onu_autoneg_set_fields[] = {
    {"on", FieldType::u32, 352, 4, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_autoneg_local_commands[] = {&all_commands[105]};

constexpr Field onu_autoneg_local_fields[] = {
    {"count", FieldType::u32, 352, 4, "", 1, "how many abilities there are, 1 to 5"},
    {"ability_1", FieldType::u32, 356, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_2", FieldType::u32, 360, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_3", FieldType::u32, 364, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_4", FieldType::u32, 368, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_5", FieldType::u32, 372, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
};

constexpr const Command *onu_autoneg_adv_commands[] = {&all_commands[106]};

constexpr Field onu_autoneg_adv_fields[] = {
    {"count", FieldType::u32, 352, 4, "", 1, "how many abilities there are, 1 to 5"},
    {"ability_1", FieldType::u32, 356, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_2", FieldType::u32, 360, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_3", FieldType::u32, 364, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_4", FieldType::u32, 368, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_5", FieldType::u32, 372, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
};

constexpr const Command *onu_autoneg_adv_set_commands[] = {&all_commands[107]};

constexpr Field onu_autoneg_adv_set_fields[] = {
    {"count", FieldType::u32, 352, 4, "", 1, "how many abilities there are, 1 to 5"},
    {"ability_1", FieldType::u32, 356, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_2", FieldType::u32, 360, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_3", FieldType::u32, 364, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_4", FieldType::u32, 368, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
    {"ability_5", FieldType::u32, 372, 4, "", 1, "AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last"},
};

constexpr const Command *onu_pause_commands[] = {&all_commands[161]};

constexpr Field onu_pause_fields[] = {
    {"on", FieldType::u8, 352, 1, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_pause_set_commands[] = {&all_commands[162]};

constexpr Field onu_pause_set_fields[] = {
    {"on", FieldType::u8, 352, 1, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_phy_info_commands[] = {&all_commands[115]};

constexpr Field onu_phy_info_fields[] = {
    {"link", FieldType::u32, 352, 4, "", 1, "1 while there is a link, else 0"},
    {"speed", FieldType::u32, 356, 4, "Mbit/s", 1, "speed of the link; 0 without one"},
    {"full_duplex", FieldType::u32, 360, 4, "", 1, "1 where the link is full duplex"},
    {"line_rate", FieldType::u32, 364, 4, "Mbit/s", 1, "highest speed of the port: 100 of an FE port, 1000 of a GE port"},
    {"negotiation", FieldType::u32, 368, 4, "", 1, "auto-negotiation: 0 off, 1 without a result, 2 complete"},
    {"pause", FieldType::u32, 372, 4, "", 1, "1 while there is flow control: it is on, and the link is full duplex"},
};

constexpr const Command *onu_rate_limit_commands[] = {&all_commands[134]};

constexpr Field onu_rate_limit_fields[] = {
    {"up_cir", FieldType::u32, 352, 4, "kbit/s", 1, "upstream committed rate, 1 to 999999"},
    {"up_cbs", FieldType::u32, 356, 4, "byte", 1, "upstream committed burst, 1522 to 16777215"},
    {"up_ebs", FieldType::u32, 360, 4, "byte", 1, "upstream excess burst, at most 16777215"},
    {"down_cir", FieldType::u32, 364, 4, "kbit/s", 1, "downstream committed rate, at most down_pir"},
    {"down_pir", FieldType::u32, 368, 4, "kbit/s", 1, "downstream peak rate, which limits it, 1 to 999999"},
    {"up_on", FieldType::u8, 372, 1, "", 1, "1 where upstream is limited, else 0: then its values do not count"},
    {"down_on", FieldType::u8, 373, 1, "", 1, "the same of downstream"},
};

constexpr const Command *onu_rate_limit_set_commands[] = {&all_commands[135]};

constexpr Field onu_rate_limit_set_fields[] = {
    {"up_cir", FieldType::u32, 352, 4, "kbit/s", 1, "upstream committed rate, 1 to 999999"},
    {"up_cbs", FieldType::u32, 356, 4, "byte", 1, "upstream committed burst, 1522 to 16777215"},
    {"up_ebs", FieldType::u32, 360, 4, "byte", 1, "upstream excess burst, at most 16777215"},
    {"down_cir", FieldType::u32, 364, 4, "kbit/s", 1, "downstream committed rate, at most down_pir"},
    {"down_pir", FieldType::u32, 368, 4, "kbit/s", 1, "downstream peak rate, which limits it, 1 to 999999"},
    {"up_on", FieldType::u8, 372, 1, "", 1, "1 where upstream is limited, else 0: then its values do not count"},
    {"down_on", FieldType::u8, 373, 1, "", 1, "the same of downstream"},
};

constexpr const Command *onu_loop_detect_commands[] = {&all_commands[136]};

constexpr Field onu_loop_detect_fields[] = {
    {"on", FieldType::u32, 352, 4, "", 1, "1 on, which it is until it is told otherwise; 0 off"},
    {"state", FieldType::u32, 356, 4, "", 1, "0 no loop, 1 a loop is there, 2 the port is shut for one"},
};

constexpr const Command *onu_loop_detect_set_commands[] = {&all_commands[137]};

constexpr Field onu_loop_detect_set_fields[] = {
    {"on", FieldType::u32, 352, 4, "", 1, "1 on, 0 off"},
};

constexpr const Command *onu_vlan_commands[] = {&all_commands[127]};

constexpr Field onu_vlan_fields[] = {
    {"mode", FieldType::u8, 352, 1, "", 1, "0 transparent, 1 tag, 2 translation, 3 trunk"},
    {"count", FieldType::u8, 353, 1, "", 1, "how many VLANs there are: 1 to 8 of a translation or trunk, else 0"},
    {"pvid", FieldType::u16, 354, 2, "", 1, "VLAN of untagged frames, 1 to 4094"},
    {"priority", FieldType::u8, 356, 1, "", 1, "802.1p priority of untagged frames, 0 to 7"},
    {"tpid", FieldType::u16, 358, 2, "", 1, "type that a tag is known by, at least 1536; usually 33024 (8100h)"},
    {"user_1", FieldType::u16, 360, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_1", FieldType::u16, 362, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_2", FieldType::u16, 364, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_2", FieldType::u16, 366, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_3", FieldType::u16, 368, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_3", FieldType::u16, 370, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_4", FieldType::u16, 372, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_4", FieldType::u16, 374, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_5", FieldType::u16, 376, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_5", FieldType::u16, 378, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_6", FieldType::u16, 380, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_6", FieldType::u16, 382, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_7", FieldType::u16, 384, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_7", FieldType::u16, 386, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_8", FieldType::u16, 388, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_8", FieldType::u16, 390, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
};

constexpr const Command *onu_vlan_set_commands[] = {&all_commands[128]};

constexpr Field onu_vlan_set_fields[] = {
    {"mode", FieldType::u8, 352, 1, "", 1, "0 transparent, 1 tag, 2 translation, 3 trunk"},
    {"count", FieldType::u8, 353, 1, "", 1, "how many VLANs there are: 1 to 8 of a translation or trunk, else 0"},
    {"pvid", FieldType::u16, 354, 2, "", 1, "VLAN of untagged frames, 1 to 4094"},
    {"priority", FieldType::u8, 356, 1, "", 1, "802.1p priority of untagged frames, 0 to 7"},
    {"tpid", FieldType::u16, 358, 2, "", 1, "type that a tag is known by, at least 1536; usually 33024 (8100h)"},
    {"user_1", FieldType::u16, 360, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_1", FieldType::u16, 362, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_2", FieldType::u16, 364, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_2", FieldType::u16, 366, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_3", FieldType::u16, 368, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_3", FieldType::u16, 370, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_4", FieldType::u16, 372, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_4", FieldType::u16, 374, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_5", FieldType::u16, 376, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_5", FieldType::u16, 378, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_6", FieldType::u16, 380, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_6", FieldType::u16, 382, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_7", FieldType::u16, 384, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_7", FieldType::u16, 386, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
    {"user_8", FieldType::u16, 388, 2, "", 1, "VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last"},
    {"network_8", FieldType::u16, 390, 2, "", 1, "the same beyond the ONU: of a translation another for each, of a trunk that of the user"},
};

constexpr const Command *onu_classification_commands[] = {&all_commands[108]};

constexpr Field onu_classification_fields[] = {
    {"action", FieldType::u8, 352, 1, "", 1, "in requests: 0 deletes the rules with these precedences, 1 adds these, in the place of any of the same precedence, 2 deletes all (and has none); in answers 1"},
    {"count", FieldType::u8, 353, 1, "", 1, "how many rules follow, at most 8"},
    {"precedence_1", FieldType::u8, 354, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_1", FieldType::u8, 355, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_1", FieldType::u8, 356, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_1", FieldType::u8, 357, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_1", FieldType::u8, 358, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_1", FieldType::u8, 359, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_1", FieldType::bytes, 360, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_1", FieldType::u8, 366, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_1", FieldType::u8, 367, 1, "", 1, "of the next condition, likewise"},
    {"value_b_1", FieldType::bytes, 368, 6, "", 1, "its value"},
    {"operator_b_1", FieldType::u8, 374, 1, "", 1, "its operator"},
    {"field_c_1", FieldType::u8, 375, 1, "", 1, "of the next condition, likewise"},
    {"value_c_1", FieldType::bytes, 376, 6, "", 1, "its value"},
    {"operator_c_1", FieldType::u8, 382, 1, "", 1, "its operator"},
    {"field_d_1", FieldType::u8, 383, 1, "", 1, "of the next condition, likewise"},
    {"value_d_1", FieldType::bytes, 384, 6, "", 1, "its value"},
    {"operator_d_1", FieldType::u8, 390, 1, "", 1, "its operator"},
    {"precedence_2", FieldType::u8, 391, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_2", FieldType::u8, 392, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_2", FieldType::u8, 393, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_2", FieldType::u8, 394, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_2", FieldType::u8, 395, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_2", FieldType::u8, 396, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_2", FieldType::bytes, 397, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_2", FieldType::u8, 403, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_2", FieldType::u8, 404, 1, "", 1, "of the next condition, likewise"},
    {"value_b_2", FieldType::bytes, 405, 6, "", 1, "its value"},
    {"operator_b_2", FieldType::u8, 411, 1, "", 1, "its operator"},
    {"field_c_2", FieldType::u8, 412, 1, "", 1, "of the next condition, likewise"},
    {"value_c_2", FieldType::bytes, 413, 6, "", 1, "its value"},
    {"operator_c_2", FieldType::u8, 419, 1, "", 1, "its operator"},
    {"field_d_2", FieldType::u8, 420, 1, "", 1, "of the next condition, likewise"},
    {"value_d_2", FieldType::bytes, 421, 6, "", 1, "its value"},
    {"operator_d_2", FieldType::u8, 427, 1, "", 1, "its operator"},
    {"precedence_3", FieldType::u8, 428, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_3", FieldType::u8, 429, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_3", FieldType::u8, 430, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_3", FieldType::u8, 431, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_3", FieldType::u8, 432, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_3", FieldType::u8, 433, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_3", FieldType::bytes, 434, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_3", FieldType::u8, 440, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_3", FieldType::u8, 441, 1, "", 1, "of the next condition, likewise"},
    {"value_b_3", FieldType::bytes, 442, 6, "", 1, "its value"},
    {"operator_b_3", FieldType::u8, 448, 1, "", 1, "its operator"},
    {"field_c_3", FieldType::u8, 449, 1, "", 1, "of the next condition, likewise"},
    {"value_c_3", FieldType::bytes, 450, 6, "", 1, "its value"},
    {"operator_c_3", FieldType::u8, 456, 1, "", 1, "its operator"},
    {"field_d_3", FieldType::u8, 457, 1, "", 1, "of the next condition, likewise"},
    {"value_d_3", FieldType::bytes, 458, 6, "", 1, "its value"},
    {"operator_d_3", FieldType::u8, 464, 1, "", 1, "its operator"},
    {"precedence_4", FieldType::u8, 465, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_4", FieldType::u8, 466, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_4", FieldType::u8, 467, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_4", FieldType::u8, 468, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_4", FieldType::u8, 469, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_4", FieldType::u8, 470, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_4", FieldType::bytes, 471, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_4", FieldType::u8, 477, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_4", FieldType::u8, 478, 1, "", 1, "of the next condition, likewise"},
    {"value_b_4", FieldType::bytes, 479, 6, "", 1, "its value"},
    {"operator_b_4", FieldType::u8, 485, 1, "", 1, "its operator"},
    {"field_c_4", FieldType::u8, 486, 1, "", 1, "of the next condition, likewise"},
    {"value_c_4", FieldType::bytes, 487, 6, "", 1, "its value"},
    {"operator_c_4", FieldType::u8, 493, 1, "", 1, "its operator"},
    {"field_d_4", FieldType::u8, 494, 1, "", 1, "of the next condition, likewise"},
    {"value_d_4", FieldType::bytes, 495, 6, "", 1, "its value"},
    {"operator_d_4", FieldType::u8, 501, 1, "", 1, "its operator"},
    {"precedence_5", FieldType::u8, 502, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_5", FieldType::u8, 503, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_5", FieldType::u8, 504, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_5", FieldType::u8, 505, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_5", FieldType::u8, 506, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_5", FieldType::u8, 507, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_5", FieldType::bytes, 508, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_5", FieldType::u8, 514, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_5", FieldType::u8, 515, 1, "", 1, "of the next condition, likewise"},
    {"value_b_5", FieldType::bytes, 516, 6, "", 1, "its value"},
    {"operator_b_5", FieldType::u8, 522, 1, "", 1, "its operator"},
    {"field_c_5", FieldType::u8, 523, 1, "", 1, "of the next condition, likewise"},
    {"value_c_5", FieldType::bytes, 524, 6, "", 1, "its value"},
    {"operator_c_5", FieldType::u8, 530, 1, "", 1, "its operator"},
    {"field_d_5", FieldType::u8, 531, 1, "", 1, "of the next condition, likewise"},
    {"value_d_5", FieldType::bytes, 532, 6, "", 1, "its value"},
    {"operator_d_5", FieldType::u8, 538, 1, "", 1, "its operator"},
    {"precedence_6", FieldType::u8, 539, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_6", FieldType::u8, 540, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_6", FieldType::u8, 541, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_6", FieldType::u8, 542, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_6", FieldType::u8, 543, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_6", FieldType::u8, 544, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_6", FieldType::bytes, 545, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_6", FieldType::u8, 551, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_6", FieldType::u8, 552, 1, "", 1, "of the next condition, likewise"},
    {"value_b_6", FieldType::bytes, 553, 6, "", 1, "its value"},
    {"operator_b_6", FieldType::u8, 559, 1, "", 1, "its operator"},
    {"field_c_6", FieldType::u8, 560, 1, "", 1, "of the next condition, likewise"},
    {"value_c_6", FieldType::bytes, 561, 6, "", 1, "its value"},
    {"operator_c_6", FieldType::u8, 567, 1, "", 1, "its operator"},
    {"field_d_6", FieldType::u8, 568, 1, "", 1, "of the next condition, likewise"},
    {"value_d_6", FieldType::bytes, 569, 6, "", 1, "its value"},
    {"operator_d_6", FieldType::u8, 575, 1, "", 1, "its operator"},
    {"precedence_7", FieldType::u8, 576, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_7", FieldType::u8, 577, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_7", FieldType::u8, 578, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_7", FieldType::u8, 579, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_7", FieldType::u8, 580, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_7", FieldType::u8, 581, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_7", FieldType::bytes, 582, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_7", FieldType::u8, 588, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_7", FieldType::u8, 589, 1, "", 1, "of the next condition, likewise"},
    {"value_b_7", FieldType::bytes, 590, 6, "", 1, "its value"},
    {"operator_b_7", FieldType::u8, 596, 1, "", 1, "its operator"},
    {"field_c_7", FieldType::u8, 597, 1, "", 1, "of the next condition, likewise"},
    {"value_c_7", FieldType::bytes, 598, 6, "", 1, "its value"},
    {"operator_c_7", FieldType::u8, 604, 1, "", 1, "its operator"},
    {"field_d_7", FieldType::u8, 605, 1, "", 1, "of the next condition, likewise"},
    {"value_d_7", FieldType::bytes, 606, 6, "", 1, "its value"},
    {"operator_d_7", FieldType::u8, 612, 1, "", 1, "its operator"},
    {"precedence_8", FieldType::u8, 613, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_8", FieldType::u8, 614, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_8", FieldType::u8, 615, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_8", FieldType::u8, 616, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_8", FieldType::u8, 617, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_8", FieldType::u8, 618, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_8", FieldType::bytes, 619, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_8", FieldType::u8, 625, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_8", FieldType::u8, 626, 1, "", 1, "of the next condition, likewise"},
    {"value_b_8", FieldType::bytes, 627, 6, "", 1, "its value"},
    {"operator_b_8", FieldType::u8, 633, 1, "", 1, "its operator"},
    {"field_c_8", FieldType::u8, 634, 1, "", 1, "of the next condition, likewise"},
    {"value_c_8", FieldType::bytes, 635, 6, "", 1, "its value"},
    {"operator_c_8", FieldType::u8, 641, 1, "", 1, "its operator"},
    {"field_d_8", FieldType::u8, 642, 1, "", 1, "of the next condition, likewise"},
    {"value_d_8", FieldType::bytes, 643, 6, "", 1, "its value"},
    {"operator_d_8", FieldType::u8, 649, 1, "", 1, "its operator"},
};

constexpr const Command *onu_classification_set_commands[] = {&all_commands[109]};

constexpr Field onu_classification_set_fields[] = {
    {"action", FieldType::u8, 352, 1, "", 1, "in requests: 0 deletes the rules with these precedences, 1 adds these, in the place of any of the same precedence, 2 deletes all (and has none); in answers 1"},
    {"count", FieldType::u8, 353, 1, "", 1, "how many rules follow, at most 8"},
    {"precedence_1", FieldType::u8, 354, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_1", FieldType::u8, 355, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_1", FieldType::u8, 356, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_1", FieldType::u8, 357, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_1", FieldType::u8, 358, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_1", FieldType::u8, 359, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_1", FieldType::bytes, 360, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_1", FieldType::u8, 366, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_1", FieldType::u8, 367, 1, "", 1, "of the next condition, likewise"},
    {"value_b_1", FieldType::bytes, 368, 6, "", 1, "its value"},
    {"operator_b_1", FieldType::u8, 374, 1, "", 1, "its operator"},
    {"field_c_1", FieldType::u8, 375, 1, "", 1, "of the next condition, likewise"},
    {"value_c_1", FieldType::bytes, 376, 6, "", 1, "its value"},
    {"operator_c_1", FieldType::u8, 382, 1, "", 1, "its operator"},
    {"field_d_1", FieldType::u8, 383, 1, "", 1, "of the next condition, likewise"},
    {"value_d_1", FieldType::bytes, 384, 6, "", 1, "its value"},
    {"operator_d_1", FieldType::u8, 390, 1, "", 1, "its operator"},
    {"precedence_2", FieldType::u8, 391, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_2", FieldType::u8, 392, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_2", FieldType::u8, 393, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_2", FieldType::u8, 394, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_2", FieldType::u8, 395, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_2", FieldType::u8, 396, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_2", FieldType::bytes, 397, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_2", FieldType::u8, 403, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_2", FieldType::u8, 404, 1, "", 1, "of the next condition, likewise"},
    {"value_b_2", FieldType::bytes, 405, 6, "", 1, "its value"},
    {"operator_b_2", FieldType::u8, 411, 1, "", 1, "its operator"},
    {"field_c_2", FieldType::u8, 412, 1, "", 1, "of the next condition, likewise"},
    {"value_c_2", FieldType::bytes, 413, 6, "", 1, "its value"},
    {"operator_c_2", FieldType::u8, 419, 1, "", 1, "its operator"},
    {"field_d_2", FieldType::u8, 420, 1, "", 1, "of the next condition, likewise"},
    {"value_d_2", FieldType::bytes, 421, 6, "", 1, "its value"},
    {"operator_d_2", FieldType::u8, 427, 1, "", 1, "its operator"},
    {"precedence_3", FieldType::u8, 428, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_3", FieldType::u8, 429, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_3", FieldType::u8, 430, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_3", FieldType::u8, 431, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_3", FieldType::u8, 432, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_3", FieldType::u8, 433, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_3", FieldType::bytes, 434, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_3", FieldType::u8, 440, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_3", FieldType::u8, 441, 1, "", 1, "of the next condition, likewise"},
    {"value_b_3", FieldType::bytes, 442, 6, "", 1, "its value"},
    {"operator_b_3", FieldType::u8, 448, 1, "", 1, "its operator"},
    {"field_c_3", FieldType::u8, 449, 1, "", 1, "of the next condition, likewise"},
    {"value_c_3", FieldType::bytes, 450, 6, "", 1, "its value"},
    {"operator_c_3", FieldType::u8, 456, 1, "", 1, "its operator"},
    {"field_d_3", FieldType::u8, 457, 1, "", 1, "of the next condition, likewise"},
    {"value_d_3", FieldType::bytes, 458, 6, "", 1, "its value"},
    {"operator_d_3", FieldType::u8, 464, 1, "", 1, "its operator"},
    {"precedence_4", FieldType::u8, 465, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_4", FieldType::u8, 466, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_4", FieldType::u8, 467, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_4", FieldType::u8, 468, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_4", FieldType::u8, 469, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_4", FieldType::u8, 470, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_4", FieldType::bytes, 471, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_4", FieldType::u8, 477, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_4", FieldType::u8, 478, 1, "", 1, "of the next condition, likewise"},
    {"value_b_4", FieldType::bytes, 479, 6, "", 1, "its value"},
    {"operator_b_4", FieldType::u8, 485, 1, "", 1, "its operator"},
    {"field_c_4", FieldType::u8, 486, 1, "", 1, "of the next condition, likewise"},
    {"value_c_4", FieldType::bytes, 487, 6, "", 1, "its value"},
    {"operator_c_4", FieldType::u8, 493, 1, "", 1, "its operator"},
    {"field_d_4", FieldType::u8, 494, 1, "", 1, "of the next condition, likewise"},
    {"value_d_4", FieldType::bytes, 495, 6, "", 1, "its value"},
    {"operator_d_4", FieldType::u8, 501, 1, "", 1, "its operator"},
    {"precedence_5", FieldType::u8, 502, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_5", FieldType::u8, 503, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_5", FieldType::u8, 504, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_5", FieldType::u8, 505, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_5", FieldType::u8, 506, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_5", FieldType::u8, 507, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_5", FieldType::bytes, 508, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_5", FieldType::u8, 514, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_5", FieldType::u8, 515, 1, "", 1, "of the next condition, likewise"},
    {"value_b_5", FieldType::bytes, 516, 6, "", 1, "its value"},
    {"operator_b_5", FieldType::u8, 522, 1, "", 1, "its operator"},
    {"field_c_5", FieldType::u8, 523, 1, "", 1, "of the next condition, likewise"},
    {"value_c_5", FieldType::bytes, 524, 6, "", 1, "its value"},
    {"operator_c_5", FieldType::u8, 530, 1, "", 1, "its operator"},
    {"field_d_5", FieldType::u8, 531, 1, "", 1, "of the next condition, likewise"},
    {"value_d_5", FieldType::bytes, 532, 6, "", 1, "its value"},
    {"operator_d_5", FieldType::u8, 538, 1, "", 1, "its operator"},
    {"precedence_6", FieldType::u8, 539, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_6", FieldType::u8, 540, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_6", FieldType::u8, 541, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_6", FieldType::u8, 542, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_6", FieldType::u8, 543, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_6", FieldType::u8, 544, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_6", FieldType::bytes, 545, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_6", FieldType::u8, 551, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_6", FieldType::u8, 552, 1, "", 1, "of the next condition, likewise"},
    {"value_b_6", FieldType::bytes, 553, 6, "", 1, "its value"},
    {"operator_b_6", FieldType::u8, 559, 1, "", 1, "its operator"},
    {"field_c_6", FieldType::u8, 560, 1, "", 1, "of the next condition, likewise"},
    {"value_c_6", FieldType::bytes, 561, 6, "", 1, "its value"},
    {"operator_c_6", FieldType::u8, 567, 1, "", 1, "its operator"},
    {"field_d_6", FieldType::u8, 568, 1, "", 1, "of the next condition, likewise"},
    {"value_d_6", FieldType::bytes, 569, 6, "", 1, "its value"},
    {"operator_d_6", FieldType::u8, 575, 1, "", 1, "its operator"},
    {"precedence_7", FieldType::u8, 576, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_7", FieldType::u8, 577, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_7", FieldType::u8, 578, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_7", FieldType::u8, 579, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_7", FieldType::u8, 580, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_7", FieldType::u8, 581, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_7", FieldType::bytes, 582, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_7", FieldType::u8, 588, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_7", FieldType::u8, 589, 1, "", 1, "of the next condition, likewise"},
    {"value_b_7", FieldType::bytes, 590, 6, "", 1, "its value"},
    {"operator_b_7", FieldType::u8, 596, 1, "", 1, "its operator"},
    {"field_c_7", FieldType::u8, 597, 1, "", 1, "of the next condition, likewise"},
    {"value_c_7", FieldType::bytes, 598, 6, "", 1, "its value"},
    {"operator_c_7", FieldType::u8, 604, 1, "", 1, "its operator"},
    {"field_d_7", FieldType::u8, 605, 1, "", 1, "of the next condition, likewise"},
    {"value_d_7", FieldType::bytes, 606, 6, "", 1, "its value"},
    {"operator_d_7", FieldType::u8, 612, 1, "", 1, "its operator"},
    {"precedence_8", FieldType::u8, 613, 1, "", 1, "tells one rule from another; the rule with the lowest is tried first"},
    {"length_8", FieldType::u8, 614, 1, "", 1, "bytes of the rule behind this one; in requests it does not count"},
    {"queue_8", FieldType::u8, 615, 1, "", 1, "queue for frames that match, 0 to 7, and less than the ONU has"},
    {"mark_8", FieldType::u8, 616, 1, "", 1, "802.1p priority that they are given, 0 to 7; 255 leaves it"},
    {"entries_8", FieldType::u8, 617, 1, "", 1, "how many conditions there are, 1 to 4; a frame must meet all"},
    {"field_a_8", FieldType::u8, 618, 1, "", 1, "what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port"},
    {"value_a_8", FieldType::bytes, 619, 6, "", 1, "value, a number with the highest byte first, no wider than what it is compared with"},
    {"operator_a_8", FieldType::u8, 625, 1, "", 1, "0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always"},
    {"field_b_8", FieldType::u8, 626, 1, "", 1, "of the next condition, likewise"},
    {"value_b_8", FieldType::bytes, 627, 6, "", 1, "its value"},
    {"operator_b_8", FieldType::u8, 633, 1, "", 1, "its operator"},
    {"field_c_8", FieldType::u8, 634, 1, "", 1, "of the next condition, likewise"},
    {"value_c_8", FieldType::bytes, 635, 6, "", 1, "its value"},
    {"operator_c_8", FieldType::u8, 641, 1, "", 1, "its operator"},
    {"field_d_8", FieldType::u8, 642, 1, "", 1, "of the next condition, likewise"},
    {"value_d_8", FieldType::bytes, 643, 6, "", 1, "its value"},
    {"operator_d_8", FieldType::u8, 649, 1, "", 1, "its operator"},
};

constexpr const Command *optics_diagnostics_commands[] = {&all_commands[211]};

constexpr Field optics_diagnostics_fields[] = {
    {"temperature", FieldType::s32, 124, 4, "degC", 0.01, "temperature"},
    {"voltage", FieldType::u32, 128, 4, "V", 0.0001, "supply voltage"},
    {"bias", FieldType::u32, 132, 4, "mA", 0.001, "bias of the laser"},
    {"launch_power", FieldType::s32, 136, 4, "dBm", 0.01, "launch power; -40 while the laser is off"},
    {"received_power", FieldType::s32, 140, 4, "dBm", 0.01, "received power that was measured last; -40 where it found no light, and before the first measurement"},
    {"alarms", FieldType::u16, 144, 2, "", 1, "alarm flags: from the highest bit on, high and low of temperature, voltage, bias, launch power, received power (this one only when it was measured)"},
    {"warnings", FieldType::u16, 146, 2, "", 1, "warning flags, likewise"},
    {"laser", FieldType::u8, 148, 1, "", 1, "1 while the laser is on"},
    {"tx_fault", FieldType::u8, 149, 1, "", 1, "1 while the bias is above its alarm threshold"},
    {"rx_los", FieldType::u8, 150, 1, "", 1, "1 where the received power is below the LOL level"},
    {"measuring", FieldType::u8, 151, 1, "", 1, "1 while a power measurement is under way"},
    {"lao_mode", FieldType::u8, 152, 1, "", 1, "LAO mode: 1 where the laser stays on in spite of TX disable"},
    {"lol_mode", FieldType::u8, 153, 1, "", 1, "LOL mode: 1 where the LOL level was set, 0 where it is the low alarm threshold of received power"},
    {"measured_onu", FieldType::u16, 154, 2, "", 1, "id of the ONU that was measured last; 65535 before the first measurement, and where it is bound here no more"},
    {"age", FieldType::u32, 156, 4, "h", 1, "age of the laser"},
    {"bias_high_warning", FieldType::u32, 160, 4, "mA", 0.001, "warning threshold of a bias too high"},
    {"bias_high_alarm", FieldType::u32, 164, 4, "mA", 0.001, "its alarm threshold"},
    {"launch_low_warning", FieldType::s32, 168, 4, "dBm", 0.01, "warning threshold of a launch power too low"},
    {"launch_low_alarm", FieldType::s32, 172, 4, "dBm", 0.01, "its alarm threshold"},
    {"lol_level", FieldType::s32, 176, 4, "dBm", 0.01, "LOL level: received power below it counts as loss of light"},
};

constexpr const Command *optics_rssi_commands[] = {&all_commands[212]};

constexpr Field optics_rssi_fields[] = {
    {"mac", FieldType::mac, 124, 6, "", 1, "MAC address of the ONU"},
    {"onu_id", FieldType::u8, 130, 1, "", 1, "its id"},
    {"light", FieldType::u8, 131, 1, "", 1, "1 where the received power reaches the LOL level"},
    {"received_power", FieldType::s32, 132, 4, "dBm", 0.01, "received power; of a measurement the average"},
    {"onu_launch_power", FieldType::s32, 136, 4, "dBm", 0.01, "what the ONU launches now; -40 while it is offline"},
    {"loss", FieldType::s32, 140, 4, "dB", 0.01, "what is lost between it and the port: splitter, fibre and connectors"},
    {"distance", FieldType::u32, 144, 4, "m", 1, "distance of the ONU; 0 while it is offline"},
    {"samples", FieldType::u32, 148, 4, "", 1, "of how many samples the received power is the average"},
    {"least", FieldType::s32, 152, 4, "dBm", 0.01, "the weakest of them"},
    {"greatest", FieldType::s32, 156, 4, "dBm", 0.01, "the strongest"},
    {"time", FieldType::u64, 160, 8, "ms", 1, "model time of the last of them"},
    {"temperature", FieldType::s32, 168, 4, "degC", 0.01, "temperature of the module"},
    {"voltage", FieldType::u32, 172, 4, "V", 0.0001, "its supply voltage"},
    {"bias", FieldType::u32, 176, 4, "mA", 0.001, "bias of its laser"},
    {"launch_power", FieldType::s32, 180, 4, "dBm", 0.01, "its launch power; -40 while the laser is off"},
    {"state", FieldType::u32, 184, 4, "", 1, "of the received power: 0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm"},
};

constexpr const Command *sfp_info_commands[] = {&all_commands[213]};

constexpr Field sfp_info_fields[] = {
    {"cage", FieldType::u32, 124, 4, "", 1, "SFP cage number"},
    {"pon_port", FieldType::u32, 128, 4, "", 1, "PON port of the module; 0 of an uplink"},
    {"vendor", FieldType::text, 132, 20, "", 1, "vendor name"},
    {"part", FieldType::text, 152, 20, "", 1, "part number"},
    {"revision", FieldType::text, 172, 8, "", 1, "revision"},
    {"serial", FieldType::text, 180, 20, "", 1, "serial number"},
    {"date", FieldType::text, 200, 12, "", 1, "date of manufacture, YYMMDD"},
    {"oui", FieldType::bytes, 212, 3, "", 1, "OUI of the vendor"},
    {"connector", FieldType::u8, 215, 1, "", 1, "connector, code of SFF-8472: 1 SC, 7 LC"},
    {"wavelength", FieldType::u32, 216, 4, "nm", 1, "wavelength of the laser"},
    {"reach", FieldType::u32, 220, 4, "km", 1, "length of single-mode fibre, at most"},
    {"rate", FieldType::u32, 224, 4, "MBd", 1, "line rate"},
    {"age", FieldType::u32, 228, 4, "h", 1, "age of the laser"},
    {"laser", FieldType::u8, 232, 1, "", 1, "1 while the laser is on"},
    {"tx_fault", FieldType::u8, 233, 1, "", 1, "1 while the bias is above its alarm threshold"},
    {"rx_los", FieldType::u8, 234, 1, "", 1, "1 where the received power is below the LOL level"},
    {"measuring", FieldType::u8, 235, 1, "", 1, "1 while a power measurement is under way"},
    {"alarms", FieldType::u16, 236, 2, "", 1, "alarm flags: from the highest bit on, high and low of temperature, voltage, bias, launch power, received power (of a PON port only when it was measured)"},
    {"warnings", FieldType::u16, 238, 2, "", 1, "warning flags, likewise"},
    {"temperature", FieldType::s32, 240, 4, "degC", 0.01, "temperature"},
    {"temperature_high_alarm", FieldType::s32, 244, 4, "degC", 0.01, "high alarm threshold"},
    {"temperature_low_alarm", FieldType::s32, 248, 4, "degC", 0.01, "low alarm threshold"},
    {"temperature_high_warning", FieldType::s32, 252, 4, "degC", 0.01, "high warning threshold"},
    {"temperature_low_warning", FieldType::s32, 256, 4, "degC", 0.01, "low warning threshold"},
    {"temperature_state", FieldType::u32, 260, 4, "", 1, "0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm"},
    {"voltage", FieldType::u32, 264, 4, "V", 0.0001, "voltage"},
    {"voltage_high_alarm", FieldType::u32, 268, 4, "V", 0.0001, "high alarm threshold"},
    {"voltage_low_alarm", FieldType::u32, 272, 4, "V", 0.0001, "low alarm threshold"},
    {"voltage_high_warning", FieldType::u32, 276, 4, "V", 0.0001, "high warning threshold"},
    {"voltage_low_warning", FieldType::u32, 280, 4, "V", 0.0001, "low warning threshold"},
    {"voltage_state", FieldType::u32, 284, 4, "", 1, "0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm"},
    {"bias", FieldType::u32, 288, 4, "mA", 0.001, "bias"},
    {"bias_high_alarm", FieldType::u32, 292, 4, "mA", 0.001, "high alarm threshold"},
    {"bias_low_alarm", FieldType::u32, 296, 4, "mA", 0.001, "low alarm threshold"},
    {"bias_high_warning", FieldType::u32, 300, 4, "mA", 0.001, "high warning threshold"},
    {"bias_low_warning", FieldType::u32, 304, 4, "mA", 0.001, "low warning threshold"},
    {"bias_state", FieldType::u32, 308, 4, "", 1, "0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm"},
    {"launch_power", FieldType::s32, 312, 4, "dBm", 0.01, "launch power"},
    {"launch_power_high_alarm", FieldType::s32, 316, 4, "dBm", 0.01, "high alarm threshold"},
    {"launch_power_low_alarm", FieldType::s32, 320, 4, "dBm", 0.01, "low alarm threshold"},
    {"launch_power_high_warning", FieldType::s32, 324, 4, "dBm", 0.01, "high warning threshold"},
    {"launch_power_low_warning", FieldType::s32, 328, 4, "dBm", 0.01, "low warning threshold"},
    {"launch_power_state", FieldType::u32, 332, 4, "", 1, "0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm"},
    {"received_power", FieldType::s32, 336, 4, "dBm", 0.01, "received power; of a PON port's module that of the ONU which was measured last"},
    {"received_power_high_alarm", FieldType::s32, 340, 4, "dBm", 0.01, "high alarm threshold"},
    {"received_power_low_alarm", FieldType::s32, 344, 4, "dBm", 0.01, "low alarm threshold"},
    {"received_power_high_warning", FieldType::s32, 348, 4, "dBm", 0.01, "high warning threshold"},
    {"received_power_low_warning", FieldType::s32, 352, 4, "dBm", 0.01, "low warning threshold"},
    {"received_power_state", FieldType::u32, 356, 4, "", 1, "0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm"},
    {"identity_memory", FieldType::bytes, 360, 96, "", 1, "the module's memory at A0h, bytes 0 to 95, as in SFF-8472"},
    {"diagnostic_memory", FieldType::bytes, 456, 120, "", 1, "its memory at A2h, bytes 0 to 119"},
    {"lao_mode", FieldType::u32, 576, 4, "", 1, "LAO mode: 1 where the laser stays on in spite of TX disable"},
    {"lol_mode", FieldType::u32, 580, 4, "", 1, "LOL mode: 1 where the LOL level was set, 0 where it is the low alarm threshold of received power"},
    {"lol_level", FieldType::s32, 584, 4, "dBm", 0.01, "LOL level: received power below it counts as loss of light"},
};

constexpr const Command *opm_trigger_commands[] = {&all_commands[202]};

constexpr Field opm_trigger_fields[] = {
    {"samples", FieldType::u32, 124, 4, "", 1, "how many samples to take, at most 100; 0 is 1"},
    {"interval", FieldType::u32, 128, 4, "ms", 1, "time between two samples, at most 60000"},
    {"delay", FieldType::u32, 132, 4, "ms", 1, "time before the first, at most 3600000"},
};

constexpr const Command *lao_mode_commands[] = {&all_commands[204]};

constexpr Field lao_mode_fields[] = {
    {"reserved", FieldType::bytes, 124, 12, "", 1, "zero"},
};

constexpr const Command *lol_mode_commands[] = {&all_commands[205]};

constexpr Field lol_mode_fields[] = {
    {"level", FieldType::s32, 124, 4, "dBm", 0.01, "the level of mode 1, -40 to 0; 0 in mode 0"},
    {"reserved", FieldType::bytes, 128, 4, "", 1, "zero"},
};

constexpr const Command *optical_status_commands[] = {&all_commands[184]};

constexpr Field optical_status_fields[] = {
    {"valid", FieldType::u8, 124, 1, "", 1, "1; 0 makes the debug layer forget what it was told, and the rest does not count"},
    {"laser", FieldType::u8, 125, 1, "", 1, "1 where the laser is on, else 0"},
    {"tx_fault", FieldType::u8, 126, 1, "", 1, "1 where the transmitter has a fault, else 0"},
    {"rx_los", FieldType::u8, 127, 1, "", 1, "1 where light is lost, else 0"},
    {"temperature", FieldType::s32, 128, 4, "degC", 0.01, "temperature"},
    {"voltage", FieldType::u32, 132, 4, "V", 0.0001, "supply voltage"},
    {"bias", FieldType::u32, 136, 4, "mA", 0.001, "bias of the laser"},
    {"launch_power", FieldType::s32, 140, 4, "dBm", 0.01, "launch power"},
    {"received_power", FieldType::s32, 144, 4, "dBm", 0.01, "received power"},
    {"time", FieldType::u64, 148, 8, "ms", 1, "when it was measured"},
};

constexpr const Command *pon_laser_commands[] = {&all_commands[83]};

constexpr Field pon_laser_fields[] = {
    {"state", FieldType::u32, 124, 4, "", 1, "0 off by TX disable, 1 on, 2 on in spite of TX disable by LAO mode"},
};

constexpr const Command *pon_phy_commands[] = {&all_commands[82]};

constexpr Field pon_phy_fields[] = {
    {"laser", FieldType::u8, 124, 1, "", 1, "1 while the laser is on"},
    {"tx_fault", FieldType::u8, 125, 1, "", 1, "1 while the bias is above its alarm threshold"},
    {"rx_los", FieldType::u8, 126, 1, "", 1, "1 where the received power is below the LOL level"},
    {"lao_mode", FieldType::u8, 127, 1, "", 1, "LAO mode"},
    {"told", FieldType::u8, 128, 1, "", 1, "1 where the debug layer was told an optical status; else the next three are 0"},
    {"told_laser", FieldType::u8, 129, 1, "", 1, "1 where the laser is on"},
    {"told_tx_fault", FieldType::u8, 130, 1, "", 1, "1 where the transmitter has a fault"},
    {"told_rx_los", FieldType::u8, 131, 1, "", 1, "1 where light is lost"},
    {"rate", FieldType::u16, 132, 2, "MBd", 1, "line rate, each way"},
    {"wavelength", FieldType::u16, 134, 2, "nm", 1, "wavelength of the laser"},
};

constexpr const Command *i2c_read_commands[] = {&all_commands[87]};

constexpr Field i2c_read_fields[] = {
    {"address", FieldType::u32, 124, 4, "", 1, "bus address, 0xa0 or 0xa2"},
    {"offset", FieldType::u32, 128, 4, "", 1, "first byte of the memory"},
    {"length", FieldType::u32, 132, 4, "", 1, "bytes, 1 to 128, not beyond byte 255 of the memory"},
    {"result", FieldType::u32, 136, 4, "", 1, "not read"},
    {"data", FieldType::bytes, 140, 128, "", 1, "not read"},
};

constexpr const Command *i2c_bytes_commands[] = {&all_commands[87]};

constexpr Field i2c_bytes_fields[] = {
    {"address", FieldType::u32, 124, 4, "", 1, "bus address, 0xa0 or 0xa2"},
    {"offset", FieldType::u32, 128, 4, "", 1, "first byte of the memory"},
    {"length", FieldType::u32, 132, 4, "", 1, "bytes, 1 to 128, not beyond byte 255 of the memory"},
    {"result", FieldType::u32, 136, 4, "", 1, "bytes that were read; 0 where the status is not"},
    {"data", FieldType::bytes, 140, 128, "", 1, "the bytes; behind them zero"},
};

constexpr const Command *i2c_write_commands[] = {&all_commands[88]};

constexpr Field i2c_write_fields[] = {
    {"address", FieldType::u32, 124, 4, "", 1, "bus address, 0xa0 or 0xa2"},
    {"offset", FieldType::u32, 128, 4, "", 1, "first byte of the memory"},
    {"length", FieldType::u32, 132, 4, "", 1, "bytes, 1 to 128, not beyond byte 255 of the memory"},
    {"result", FieldType::u32, 136, 4, "", 1, "not read"},
    {"data", FieldType::bytes, 140, 128, "", 1, "the bytes to write"},
};

constexpr const Command *profile_line_commands[] = {&all_commands[57]};

constexpr Field profile_line_fields[] = {
    {"name", FieldType::text, 24, 32, "", 1, "name, at least one character: UTF-8 without control characters"},
    {"id", FieldType::u32, 56, 4, "", 1, "number, 1 to 256, that no other of the kind has; 0: the profile keeps the one it has, and a new one gets the lowest that is free"},
    {"vlan", FieldType::u32, 60, 4, "", 1, "VLAN of the service, 1 to 4094; 0 untagged"},
    {"priority", FieldType::u32, 64, 4, "", 1, "802.1p priority, 0 to 7"},
    {"upstream", FieldType::u32, 68, 4, "kbit/s", 1, "maximum upstream rate, 1 to 1000000; 0 no limit"},
    {"downstream", FieldType::u32, 72, 4, "kbit/s", 1, "maximum downstream rate, 1 to 1000000; 0 no limit"},
    {"mac_limit", FieldType::u32, 76, 4, "", 1, "MAC addresses that may be learnt, 1 to 1024; 0 no limit"},
};

constexpr const Command *profile_line_fetched_commands[] = {&all_commands[58]};

constexpr Field profile_line_fetched_fields[] = {
    {"name", FieldType::text, 24, 32, "", 1, "name, at least one character: UTF-8 without control characters"},
    {"id", FieldType::u32, 56, 4, "", 1, "number, 1 to 256"},
    {"vlan", FieldType::u32, 60, 4, "", 1, "VLAN of the service, 1 to 4094; 0 untagged"},
    {"priority", FieldType::u32, 64, 4, "", 1, "802.1p priority, 0 to 7"},
    {"upstream", FieldType::u32, 68, 4, "kbit/s", 1, "maximum upstream rate, 1 to 1000000; 0 no limit"},
    {"downstream", FieldType::u32, 72, 4, "kbit/s", 1, "maximum downstream rate, 1 to 1000000; 0 no limit"},
    {"mac_limit", FieldType::u32, 76, 4, "", 1, "MAC addresses that may be learnt, 1 to 1024; 0 no limit"},
};

constexpr const Command *profile_sla_commands[] = {&all_commands[63]};

constexpr Field profile_sla_fields[] = {
    {"name", FieldType::text, 24, 32, "", 1, "name, at least one character: UTF-8 without control characters"},
    {"id", FieldType::u32, 56, 4, "", 1, "number, 1 to 256, that no other of the kind has; 0: the profile keeps the one it has, and a new one gets the lowest that is free"},
    {"fixed", FieldType::u32, 60, 4, "kbit/s", 1, "fixed bandwidth, at most 1000000"},
    {"assured", FieldType::u32, 64, 4, "kbit/s", 1, "assured bandwidth beside the fixed, at most 1000000"},
    {"maximum", FieldType::u32, 68, 4, "kbit/s", 1, "maximum bandwidth, 1 to 1000000"},
    {"priority", FieldType::u32, 72, 4, "", 1, "priority, 0 to 7"},
    {"weight", FieldType::u32, 76, 4, "", 1, "weight, 1 to 100"},
};

constexpr const Command *profile_sla_fetched_commands[] = {&all_commands[64]};

constexpr Field profile_sla_fetched_fields[] = {
    {"name", FieldType::text, 24, 32, "", 1, "name, at least one character: UTF-8 without control characters"},
    {"id", FieldType::u32, 56, 4, "", 1, "number, 1 to 256"},
    {"fixed", FieldType::u32, 60, 4, "kbit/s", 1, "fixed bandwidth, at most 1000000"},
    {"assured", FieldType::u32, 64, 4, "kbit/s", 1, "assured bandwidth beside the fixed, at most 1000000"},
    {"maximum", FieldType::u32, 68, 4, "kbit/s", 1, "maximum bandwidth, 1 to 1000000"},
    {"priority", FieldType::u32, 72, 4, "", 1, "priority, 0 to 7"},
    {"weight", FieldType::u32, 76, 4, "", 1, "weight, 1 to 100"},
};

constexpr const Command *profile_alarm_commands[] = {&all_commands[69]};

constexpr Field profile_alarm_fields[] = {
    {"name", FieldType::text, 24, 32, "", 1, "name, at least one character: UTF-8 without control characters"},
    {"id", FieldType::u32, 56, 4, "", 1, "number, 1 to 256, that no other of the kind has; 0: the profile keeps the one it has, and a new one gets the lowest that is free"},
    {"temperature_low", FieldType::s32, 60, 4, "degC", 0.01, "low alarm threshold of the temperature, -40 to 120 degC"},
    {"temperature_high", FieldType::s32, 64, 4, "degC", 0.01, "high alarm threshold of the temperature, -40 to 120 degC"},
    {"launch_power_low", FieldType::s32, 68, 4, "dBm", 0.01, "low alarm threshold of the launch power, -40 to 10 dBm"},
    {"launch_power_high", FieldType::s32, 72, 4, "dBm", 0.01, "high alarm threshold of the launch power, -40 to 10 dBm"},
    {"received_power_low", FieldType::s32, 76, 4, "dBm", 0.01, "low alarm threshold of the received power, -40 to 10 dBm"},
    {"received_power_high", FieldType::s32, 80, 4, "dBm", 0.01, "high alarm threshold of the received power, -40 to 10 dBm"},
};

constexpr const Command *profile_alarm_fetched_commands[] = {&all_commands[70]};

constexpr Field profile_alarm_fetched_fields[] = {
    {"name", FieldType::text, 24, 32, "", 1, "name, at least one character: UTF-8 without control characters"},
    {"id", FieldType::u32, 56, 4, "", 1, "number, 1 to 256"},
    {"temperature_low", FieldType::s32, 60, 4, "degC", 0.01, "low alarm threshold of the temperature, -40 to 120 degC"},
    {"temperature_high", FieldType::s32, 64, 4, "degC", 0.01, "high alarm threshold of the temperature, -40 to 120 degC"},
    {"launch_power_low", FieldType::s32, 68, 4, "dBm", 0.01, "low alarm threshold of the launch power, -40 to 10 dBm"},
    {"launch_power_high", FieldType::s32, 72, 4, "dBm", 0.01, "high alarm threshold of the launch power, -40 to 10 dBm"},
    {"received_power_low", FieldType::s32, 76, 4, "dBm", 0.01, "low alarm threshold of the received power, -40 to 10 dBm"},
    {"received_power_high", FieldType::s32, 80, 4, "dBm", 0.01, "high alarm threshold of the received power, -40 to 10 dBm"},
};

constexpr const Command *profile_name_commands[] = {&all_commands[58], &all_commands[59], &all_commands[64], &all_commands[65], &all_commands[70], &all_commands[71]};

constexpr Field profile_name_fields[] = {
    {"name", FieldType::text, 24, 32, "", 1, "name of the profile"},
};

constexpr const Command *profile_list_from_commands[] = {&all_commands[60], &all_commands[66], &all_commands[72]};

constexpr Field profile_list_from_fields[] = {
    {"from", FieldType::u32, 24, 4, "", 1, "least number that is listed"},
};

constexpr const Command *profile_list_commands[] = {&all_commands[60], &all_commands[66], &all_commands[72]};

constexpr Field profile_list_fields[] = {
    {"listed", FieldType::u32, 24, 4, "", 1, "how many follow, at most 113"},
    {"id_1", FieldType::u32, 28, 4, "", 1, "number"},
    {"name_1", FieldType::text, 32, 32, "", 1, "name"},
    {"id_2", FieldType::u32, 64, 4, "", 1, "number"},
    {"name_2", FieldType::text, 68, 32, "", 1, "name"},
    {"id_3", FieldType::u32, 100, 4, "", 1, "number"},
    {"name_3", FieldType::text, 104, 32, "", 1, "name"},
    {"id_4", FieldType::u32, 136, 4, "", 1, "number"},
    {"name_4", FieldType::text, 140, 32, "", 1, "name"},
    {"id_5", FieldType::u32, 172, 4, "", 1, "number"},
    {"name_5", FieldType::text, 176, 32, "", 1, "name"},
    {"id_6", FieldType::u32, 208, 4, "", 1, "number"},
    {"name_6", FieldType::text, 212, 32, "", 1, "name"},
    {"id_7", FieldType::u32, 244, 4, "", 1, "number"},
    {"name_7", FieldType::text, 248, 32, "", 1, "name"},
    {"id_8", FieldType::u32, 280, 4, "", 1, "number"},
    {"name_8", FieldType::text, 284, 32, "", 1, "name"},
    {"id_9", FieldType::u32, 316, 4, "", 1, "number"},
    {"name_9", FieldType::text, 320, 32, "", 1, "name"},
    {"id_10", FieldType::u32, 352, 4, "", 1, "number"},
    {"name_10", FieldType::text, 356, 32, "", 1, "name"},
    {"id_11", FieldType::u32, 388, 4, "", 1, "number"},
    {"name_11", FieldType::text, 392, 32, "", 1, "name"},
    {"id_12", FieldType::u32, 424, 4, "", 1, "number"},
    {"name_12", FieldType::text, 428, 32, "", 1, "name"},
    {"id_13", FieldType::u32, 460, 4, "", 1, "number"},
    {"name_13", FieldType::text, 464, 32, "", 1, "name"},
    {"id_14", FieldType::u32, 496, 4, "", 1, "number"},
    {"name_14", FieldType::text, 500, 32, "", 1, "name"},
    {"id_15", FieldType::u32, 532, 4, "", 1, "number"},
    {"name_15", FieldType::text, 536, 32, "", 1, "name"},
    {"id_16", FieldType::u32, 568, 4, "", 1, "number"},
    {"name_16", FieldType::text, 572, 32, "", 1, "name"},
    {"id_17", FieldType::u32, 604, 4, "", 1, "number"},
    {"name_17", FieldType::text, 608, 32, "", 1, "name"},
    {"id_18", FieldType::u32, 640, 4, "", 1, "number"},
    {"name_18", FieldType::text, 644, 32, "", 1, "name"},
    {"id_19", FieldType::u32, 676, 4, "", 1, "number"},
    {"name_19", FieldType::text, 680, 32, "", 1, "name"},
    {"id_20", FieldType::u32, 712, 4, "", 1, "number"},
    {"name_20", FieldType::text, 716, 32, "", 1, "name"},
    {"id_21", FieldType::u32, 748, 4, "", 1, "number"},
    {"name_21", FieldType::text, 752, 32, "", 1, "name"},
    {"id_22", FieldType::u32, 784, 4, "", 1, "number"},
    {"name_22", FieldType::text, 788, 32, "", 1, "name"},
    {"id_23", FieldType::u32, 820, 4, "", 1, "number"},
    {"name_23", FieldType::text, 824, 32, "", 1, "name"},
    {"id_24", FieldType::u32, 856, 4, "", 1, "number"},
    {"name_24", FieldType::text, 860, 32, "", 1, "name"},
    {"id_25", FieldType::u32, 892, 4, "", 1, "number"},
    {"name_25", FieldType::text, 896, 32, "", 1, "name"},
    {"id_26", FieldType::u32, 928, 4, "", 1, "number"},
    {"name_26", FieldType::text, 932, 32, "", 1, "name"},
    {"id_27", FieldType::u32, 964, 4, "", 1, "number"},
    {"name_27", FieldType::text, 968, 32, "", 1, "name"},
    {"id_28", FieldType::u32, 1000, 4, "", 1, "number"},
    {"name_28", FieldType::text, 1004, 32, "", 1, "name"},
    {"id_29", FieldType::u32, 1036, 4, "", 1, "number"},
    {"name_29", FieldType::text, 1040, 32, "", 1, "name"},
    {"id_30", FieldType::u32, 1072, 4, "", 1, "number"},
    {"name_30", FieldType::text, 1076, 32, "", 1, "name"},
    {"id_31", FieldType::u32, 1108, 4, "", 1, "number"},
    {"name_31", FieldType::text, 1112, 32, "", 1, "name"},
    {"id_32", FieldType::u32, 1144, 4, "", 1, "number"},
    {"name_32", FieldType::text, 1148, 32, "", 1, "name"},
    {"id_33", FieldType::u32, 1180, 4, "", 1, "number"},
    {"name_33", FieldType::text, 1184, 32, "", 1, "name"},
    {"id_34", FieldType::u32, 1216, 4, "", 1, "number"},
    {"name_34", FieldType::text, 1220, 32, "", 1, "name"},
    {"id_35", FieldType::u32, 1252, 4, "", 1, "number"},
    {"name_35", FieldType::text, 1256, 32, "", 1, "name"},
    {"id_36", FieldType::u32, 1288, 4, "", 1, "number"},
    {"name_36", FieldType::text, 1292, 32, "", 1, "name"},
    {"id_37", FieldType::u32, 1324, 4, "", 1, "number"},
    {"name_37", FieldType::text, 1328, 32, "", 1, "name"},
    {"id_38", FieldType::u32, 1360, 4, "", 1, "number"},
    {"name_38", FieldType::text, 1364, 32, "", 1, "name"},
    {"id_39", FieldType::u32, 1396, 4, "", 1, "number"},
    {"name_39", FieldType::text, 1400, 32, "", 1, "name"},
    {"id_40", FieldType::u32, 1432, 4, "", 1, "number"},
    {"name_40", FieldType::text, 1436, 32, "", 1, "name"},
    {"id_41", FieldType::u32, 1468, 4, "", 1, "number"},
    {"name_41", FieldType::text, 1472, 32, "", 1, "name"},
    {"id_42", FieldType::u32, 1504, 4, "", 1, "number"},
    {"name_42", FieldType::text, 1508, 32, "", 1, "name"},
    {"id_43", FieldType::u32, 1540, 4, "", 1, "number"},
    {"name_43", FieldType::text, 1544, 32, "", 1, "name"},
    {"id_44", FieldType::u32, 1576, 4, "", 1, "number"},
    {"name_44", FieldType::text, 1580, 32, "", 1, "name"},
    {"id_45", FieldType::u32, 1612, 4, "", 1, "number"},
    {"name_45", FieldType::text, 1616, 32, "", 1, "name"},
    {"id_46", FieldType::u32, 1648, 4, "", 1, "number"},
    {"name_46", FieldType::text, 1652, 32, "", 1, "name"},
    {"id_47", FieldType::u32, 1684, 4, "", 1, "number"},
    {"name_47", FieldType::text, 1688, 32, "", 1, "name"},
    {"id_48", FieldType::u32, 1720, 4, "", 1, "number"},
    {"name_48", FieldType::text, 1724, 32, "", 1, "name"},
    {"id_49", FieldType::u32, 1756, 4, "", 1, "number"},
    {"name_49", FieldType::text, 1760, 32, "", 1, "name"},
    {"id_50", FieldType::u32, 1792, 4, "", 1, "number"},
    {"name_50", FieldType::text, 1796, 32, "", 1, "name"},
    {"id_51", FieldType::u32, 1828, 4, "", 1, "number"},
    {"name_51", FieldType::text, 1832, 32, "", 1, "name"},
    {"id_52", FieldType::u32, 1864, 4, "", 1, "number"},
    {"name_52", FieldType::text, 1868, 32, "", 1, "name"},
    {"id_53", FieldType::u32, 1900, 4, "", 1, "number"},
    {"name_53", FieldType::text, 1904, 32, "", 1, "name"},
    {"id_54", FieldType::u32, 1936, 4, "", 1, "number"},
    {"name_54", FieldType::text, 1940, 32, "", 1, "name"},
    {"id_55", FieldType::u32, 1972, 4, "", 1, "number"},
    {"name_55", FieldType::text, 1976, 32, "", 1, "name"},
    {"id_56", FieldType::u32, 2008, 4, "", 1, "number"},
    {"name_56", FieldType::text, 2012, 32, "", 1, "name"},
    {"id_57", FieldType::u32, 2044, 4, "", 1, "number"},
    {"name_57", FieldType::text, 2048, 32, "", 1, "name"},
    {"id_58", FieldType::u32, 2080, 4, "", 1, "number"},
    {"name_58", FieldType::text, 2084, 32, "", 1, "name"},
    {"id_59", FieldType::u32, 2116, 4, "", 1, "number"},
    {"name_59", FieldType::text, 2120, 32, "", 1, "name"},
    {"id_60", FieldType::u32, 2152, 4, "", 1, "number"},
    {"name_60", FieldType::text, 2156, 32, "", 1, "name"},
    {"id_61", FieldType::u32, 2188, 4, "", 1, "number"},
    {"name_61", FieldType::text, 2192, 32, "", 1, "name"},
    {"id_62", FieldType::u32, 2224, 4, "", 1, "number"},
    {"name_62", FieldType::text, 2228, 32, "", 1, "name"},
    {"id_63", FieldType::u32, 2260, 4, "", 1, "number"},
    {"name_63", FieldType::text, 2264, 32, "", 1, "name"},
    {"id_64", FieldType::u32, 2296, 4, "", 1, "number"},
    {"name_64", FieldType::text, 2300, 32, "", 1, "name"},
    {"id_65", FieldType::u32, 2332, 4, "", 1, "number"},
    {"name_65", FieldType::text, 2336, 32, "", 1, "name"},
    {"id_66", FieldType::u32, 2368, 4, "", 1, "number"},
    {"name_66", FieldType::text, 2372, 32, "", 1, "name"},
    {"id_67", FieldType::u32, 2404, 4, "", 1, "number"},
    {"name_67", FieldType::text, 2408, 32, "", 1, "name"},
    {"id_68", FieldType::u32, 2440, 4, "", 1, "number"},
    {"name_68", FieldType::text, 2444, 32, "", 1, "name"},
    {"id_69", FieldType::u32, 2476, 4, "", 1, "number"},
    {"name_69", FieldType::text, 2480, 32, "", 1, "name"},
    {"id_70", FieldType::u32, 2512, 4, "", 1, "number"},
    {"name_70", FieldType::text, 2516, 32, "", 1, "name"},
    {"id_71", FieldType::u32, 2548, 4, "", 1, "number"},
    {"name_71", FieldType::text, 2552, 32, "", 1, "name"},
    {"id_72", FieldType::u32, 2584, 4, "", 1, "number"},
    {"name_72", FieldType::text, 2588, 32, "", 1, "name"},
    {"id_73", FieldType::u32, 2620, 4, "", 1, "number"},
    {"name_73", FieldType::text, 2624, 32, "", 1, "name"},
    {"id_74", FieldType::u32, 2656, 4, "", 1, "number"},
    {"name_74", FieldType::text, 2660, 32, "", 1, "name"},
    {"id_75", FieldType::u32, 2692, 4, "", 1, "number"},
    {"name_75", FieldType::text, 2696, 32, "", 1, "name"},
    {"id_76", FieldType::u32, 2728, 4, "", 1, "number"},
    {"name_76", FieldType::text, 2732, 32, "", 1, "name"},
    {"id_77", FieldType::u32, 2764, 4, "", 1, "number"},
    {"name_77", FieldType::text, 2768, 32, "", 1, "name"},
    {"id_78", FieldType::u32, 2800, 4, "", 1, "number"},
    {"name_78", FieldType::text, 2804, 32, "", 1, "name"},
    {"id_79", FieldType::u32, 2836, 4, "", 1, "number"},
    {"name_79", FieldType::text, 2840, 32, "", 1, "name"},
    {"id_80", FieldType::u32, 2872, 4, "", 1, "number"},
    {"name_80", FieldType::text, 2876, 32, "", 1, "name"},
    {"id_81", FieldType::u32, 2908, 4, "", 1, "number"},
    {"name_81", FieldType::text, 2912, 32, "", 1, "name"},
    {"id_82", FieldType::u32, 2944, 4, "", 1, "number"},
    {"name_82", FieldType::text, 2948, 32, "", 1, "name"},
    {"id_83", FieldType::u32, 2980, 4, "", 1, "number"},
    {"name_83", FieldType::text, 2984, 32, "", 1, "name"},
    {"id_84", FieldType::u32, 3016, 4, "", 1, "number"},
    {"name_84", FieldType::text, 3020, 32, "", 1, "name"},
    {"id_85", FieldType::u32, 3052, 4, "", 1, "number"},
    {"name_85", FieldType::text, 3056, 32, "", 1, "name"},
    {"id_86", FieldType::u32, 3088, 4, "", 1, "number"},
    {"name_86", FieldType::text, 3092, 32, "", 1, "name"},
    {"id_87", FieldType::u32, 3124, 4, "", 1, "number"},
    {"name_87", FieldType::text, 3128, 32, "", 1, "name"},
    {"id_88", FieldType::u32, 3160, 4, "", 1, "number"},
    {"name_88", FieldType::text, 3164, 32, "", 1, "name"},
    {"id_89", FieldType::u32, 3196, 4, "", 1, "number"},
    {"name_89", FieldType::text, 3200, 32, "", 1, "name"},
    {"id_90", FieldType::u32, 3232, 4, "", 1, "number"},
    {"name_90", FieldType::text, 3236, 32, "", 1, "name"},
    {"id_91", FieldType::u32, 3268, 4, "", 1, "number"},
    {"name_91", FieldType::text, 3272, 32, "", 1, "name"},
    {"id_92", FieldType::u32, 3304, 4, "", 1, "number"},
    {"name_92", FieldType::text, 3308, 32, "", 1, "name"},
    {"id_93", FieldType::u32, 3340, 4, "", 1, "number"},
    {"name_93", FieldType::text, 3344, 32, "", 1, "name"},
    {"id_94", FieldType::u32, 3376, 4, "", 1, "number"},
    {"name_94", FieldType::text, 3380, 32, "", 1, "name"},
    {"id_95", FieldType::u32, 3412, 4, "", 1, "number"},
    {"name_95", FieldType::text, 3416, 32, "", 1, "name"},
    {"id_96", FieldType::u32, 3448, 4, "", 1, "number"},
    {"name_96", FieldType::text, 3452, 32, "", 1, "name"},
    {"id_97", FieldType::u32, 3484, 4, "", 1, "number"},
    {"name_97", FieldType::text, 3488, 32, "", 1, "name"},
    {"id_98", FieldType::u32, 3520, 4, "", 1, "number"},
    {"name_98", FieldType::text, 3524, 32, "", 1, "name"},
    {"id_99", FieldType::u32, 3556, 4, "", 1, "number"},
    {"name_99", FieldType::text, 3560, 32, "", 1, "name"},
    {"id_100", FieldType::u32, 3592, 4, "", 1, "number"},
    {"name_100", FieldType::text, 3596, 32, "", 1, "name"},
    {"id_101", FieldType::u32, 3628, 4, "", 1, "number"},
    {"name_101", FieldType::text, 3632, 32, "", 1, "name"},
    {"id_102", FieldType::u32, 3664, 4, "", 1, "number"},
    {"name_102", FieldType::text, 3668, 32, "", 1, "name"},
    {"id_103", FieldType::u32, 3700, 4, "", 1, "number"},
    {"name_103", FieldType::text, 3704, 32, "", 1, "name"},
    {"id_104", FieldType::u32, 3736, 4, "", 1, "number"},
    {"name_104", FieldType::text, 3740, 32, "", 1, "name"},
    {"id_105", FieldType::u32, 3772, 4, "", 1, "number"},
    {"name_105", FieldType::text, 3776, 32, "", 1, "name"},
    {"id_106", FieldType::u32, 3808, 4, "", 1, "number"},
    {"name_106", FieldType::text, 3812, 32, "", 1, "name"},
    {"id_107", FieldType::u32, 3844, 4, "", 1, "number"},
    {"name_107", FieldType::text, 3848, 32, "", 1, "name"},
    {"id_108", FieldType::u32, 3880, 4, "", 1, "number"},
    {"name_108", FieldType::text, 3884, 32, "", 1, "name"},
    {"id_109", FieldType::u32, 3916, 4, "", 1, "number"},
    {"name_109", FieldType::text, 3920, 32, "", 1, "name"},
    {"id_110", FieldType::u32, 3952, 4, "", 1, "number"},
    {"name_110", FieldType::text, 3956, 32, "", 1, "name"},
    {"id_111", FieldType::u32, 3988, 4, "", 1, "number"},
    {"name_111", FieldType::text, 3992, 32, "", 1, "name"},
    {"id_112", FieldType::u32, 4024, 4, "", 1, "number"},
    {"name_112", FieldType::text, 4028, 32, "", 1, "name"},
    {"id_113", FieldType::u32, 4060, 4, "", 1, "number"},
    {"name_113", FieldType::text, 4064, 32, "", 1, "name"},
};

constexpr const Command *upgrade_type_commands[] = {&all_commands[218]};

constexpr Field upgrade_type_fields[] = {
    {"name", FieldType::text, 20, 32, "", 1, "name of the type"},
    {"vendor", FieldType::text, 52, 5, "", 1, "vendor id of the ONUs that it is for"},
    {"model", FieldType::text, 57, 16, "", 1, "their model"},
    {"version", FieldType::text, 73, 17, "", 1, "software version that they get"},
    {"size", FieldType::u32, 92, 4, "bytes", 1, "size of the image, at least 1"},
    {"file", FieldType::text, 96, 64, "", 1, "file name of the image; it is shown only, and may be empty"},
};

constexpr const Command *upgrade_type_name_commands[] = {&all_commands[219]};

constexpr Field upgrade_type_name_fields[] = {
    {"name", FieldType::text, 20, 32, "", 1, "name of the type"},
};

constexpr const Command *upgrade_type_file_commands[] = {&all_commands[221]};

constexpr Field upgrade_type_file_fields[] = {
    {"file", FieldType::text, 20, 256, "", 1, "absolute path of the file, where the service runs"},
};

constexpr const Command *upgrade_bind_onus_commands[] = {&all_commands[222]};

constexpr Field upgrade_bind_onus_fields[] = {
    {"pon_port", FieldType::u32, 20, 4, "", 1, "PON port number"},
    {"name", FieldType::text, 24, 32, "", 1, "name of the type; empty: none is bound any more"},
    {"onu_set", FieldType::idset, 56, 16, "", 1, "the ONU ids, 128 bits: id w*32+b is bit b of word w"},
};

constexpr const Command *upgrade_bind_port_commands[] = {&all_commands[223]};

constexpr Field upgrade_bind_port_fields[] = {
    {"pon_port", FieldType::u32, 20, 4, "", 1, "PON port number"},
    {"name", FieldType::text, 24, 32, "", 1, "name of the type; empty: none is bound any more"},
};

constexpr const Command *upgrade_onu_commands[] = {&all_commands[224]};

constexpr Field upgrade_onu_fields[] = {
    {"pon_port", FieldType::u32, 20, 4, "", 1, "PON port number"},
    {"onu_id", FieldType::u32, 24, 4, "", 1, "ONU id"},
};

constexpr const Command *upgrade_port_commands[] = {&all_commands[225]};

constexpr Field upgrade_port_fields[] = {
    {"pon_port", FieldType::u32, 20, 4, "", 1, "PON port number"},
};

constexpr Layout all_layouts[] = {
    {"auth_record", &all_records[0], auth_record_commands, auth_record_fields, false, "Authentication of one PON port (`pon_port`). Mode (`arg_word12`): 0 MAC address, 1 LOID, 2 LOID and password, 3 MAC address or LOID. A LOID (`text45`, at most 24 printable ASCII characters) adds a record with its password (`text109`, at most 12, may be empty), or replaces the password of the one that is there; without a LOID the records stay. A port has up to 128 records. In modes 1 to 3 an ONU that registers with a LOID of a record (mode 2: and its password) and is not bound is bound to the next free id, with bind mode 0 and no texts; in modes 1 and 2 a bound ONU with another LOID is unauthenticated, unless it was confirmed. The ONUs on the fibre register with each such request."},
    {"auth_counts", &all_records[0], auth_counts_commands, auth_counts_fields, true, "Authentication of one PON port (`pon_port`): the mode in `arg_word12`, and how its ONUs stand."},
    {"onu_confirm", &all_records[0], onu_confirm_commands, onu_confirm_fields, false, "An ONU of one PON port (`pon_port`) that is to be let in. The id, where it is not 0, else the MAC address names a bound ONU; one that is unauthenticated goes online, for one that is online nothing changes, one that is offline is refused. Else the address names one that waits: it is bound to the next free id with the bind mode of `arg_word36`. With neither it is the ONU bound to id 0."},
    {"onu_batch", &all_records[0], onu_batch_commands, onu_batch_fields, false, "Several ONUs of one PON port (`pon_port`). Releasing, rebooting and rejecting do all of them or, where one is not bound (for a reboot: not online; for rejecting: does not fit on the black list), none. Sorting leaves ids aside that are not bound and deals the others out again, so that MAC addresses ascend with ids."},
    {"opt_range", &all_records[0], opt_range_commands, opt_range_fields, false, "Ranging limits of one PON port (`pon_port`). An ONU outside them is not ranged: it does not show as waiting, and a bound one goes offline."},
    {"all_onu_info", &all_records[1], all_onu_info_commands, all_onu_info_fields, true, "How many ONUs there are, as a text of lines that each end with a newline: a line a PON port, as \"port 1: 5 bound, 3 online, 2 waiting\", and a last one of the whole OLT, as \"total: 5 bound, 3 online, 2 waiting\". It fits for 16 ports of 128 bound and 128 waiting ONUs."},
    {"onu_config_word", &all_records[3], onu_config_word_commands, onu_config_word_fields, true, "What is configured at an ONU, as the OLT told it, whether the ONU is online or not."},
    {"port_stats", &all_records[2], port_stats_commands, port_stats_fields, true, "Counters of a PON port or of a GE port (1 to 4), of the traffic that ONUs and network offered since the OLT was first switched on. In is from the fibre: of a PON port from its ONUs, of a GE port from the network. Octets are those of whole frames with their check sequence. They add up: what a GE port sent and could not send is what its PON ports received less their in_discards; what PON ports sent and could not send is what their GE port received less its in_discards."},
    {"ge_phy", &all_records[2], ge_phy_commands, ge_phy_fields, true, "PHY of a GE port (1 to 4): its registers as IEEE 802.3 clauses 22 and 37 have them for 1000BASE-X, which has one speed, 1000 Mbit/s."},
    {"ge_phy_control", &all_records[2], ge_phy_control_commands, ge_phy_control_fields, false, "What a PHY of a GE port (1 to 4) is set to. The link is up with auto-negotiation or full duplex, unless the PHY is in loopback, powered down or isolated; while it is down the network offers nothing to the port's PON ports, and the port drops what they send."},
    {"behavior_view", &all_records[2], behavior_view_commands, behavior_view_fields, false, "Whose behaviour to show: `plat_port` is the number of a PON port or of a GE port."},
    {"ingress", &all_records[2], ingress_commands, ingress_fields, true, "What a port does with frames that it receives. It cannot be set."},
    {"egress", &all_records[2], egress_commands, egress_fields, true, "What a port does with frames that it sends. It cannot be set."},
    {"pon_mac", &all_records[2], pon_mac_commands, pon_mac_fields, true, "MAC and multi-point control protocol (MPCP) of a PON port. A time quantum (TQ) is 16 ns."},
    {"mpcp", &all_records[2], mpcp_commands, mpcp_fields, false, "Multi-point control protocol (MPCP) parameters of a PON port. `plat_arg108` says which are set, the others are not looked at: 1 discovery, 2 timeouts, 3 grants. (0 is no MPCP parameter: then the block is an optical status.) A time quantum (TQ) is 16 ns. A deregistered ONU registers at a discovery window."},
    {"ge_mac", &all_records[2], ge_mac_commands, ge_mac_fields, true, "MAC of a GE port (1 to 4)."},
    {"xaui_mac", &all_records[2], xaui_mac_commands, xaui_mac_fields, true, "MAC of a XAUI interface (1 or 2)."},
    {"xaui_phy", &all_records[2], xaui_phy_commands, xaui_phy_fields, true, "PHY of a XAUI interface (1 or 2): registers of the PHY XS (MMD 4) as IEEE 802.3 clause 45 has them."},
    {"mgmt_cfg", &all_records[2], mgmt_cfg_commands, mgmt_cfg_fields, true, "Configuration of the management port (1)."},
    {"fdb_dump", &all_records[2], fdb_dump_commands, fdb_dump_fields, false, "What of the forwarding database the service writes to its log, at debug level: of one PON port, or of all for port 0, a line a port."},
    {"debug_switch", &all_records[2], debug_switch_commands, debug_switch_fields, false, "Switches lines in the service's log, at debug level: of ONUs that are deregistered by command and register again (ONU), or whose extended OAM is discovered then (CTC OAM). The switches are kept."},
    {"config_written", &all_records[2], config_written_commands, config_written_fields, true, "The file that has all that the OLT keeps, as a text that BSP_CMD_CONFIG_LOAD takes back. The request's port and `plat_arg4` are 0: the whole OLT, all of it. The file goes when later results need its place."},
    {"config_read", &all_records[4], config_read_commands, config_read_fields, true, "The file that has all that the OLT keeps, as a text that BSP_CMD_CONFIG_LOAD takes back."},
    {"config_part", &all_records[4], config_part_commands, config_part_fields, false, "A part of a configuration to load. Parts come in order; offset 0 starts anew. The service has them in memory until BSP_CMD_CONFIG_LOAD, which takes the complete text: the OLT becomes the one that the text is of, which needs the same seed, ports, arrivals and silent share. Where anything is wrong with the text nothing is changed, and the service's log says what and in which line; the text must be sent again. Model time goes on from that of the text, or from that of the OLT where it is later."},
    {"vlan_view", &all_records[3], vlan_view_commands, vlan_view_fields, false, "What of the OLT to show: all PON ports for `onu_pon_port` 0, else one PON port, or one ONU of it. Id 0 is an ONU's, so that a scope says which."},
    {"sla", &all_records[2], sla_commands, sla_fields, false, "Upstream SLA of the ONU bound to an id (`plat_arg4`) of a PON port (`plat_port`). It goes with the binding: it follows the ONU to another id, and is gone with its release. Fixed and assured bandwidth together are at most the maximum, and those of a port's ONUs together at most 1000000 kbit/s. Five zeros take the SLA away: the default holds again, which is 0, 0, 1000000, 0 and 1."},
    {"sla_of_onu", &all_records[2], sla_of_onu_commands, sla_of_onu_fields, true, "Upstream SLA of the ONU bound to an id (`plat_arg4`) of a PON port (`plat_port`): what was stored, or the default, which is 0, 0, 1000000, 0 and 1."},
    {"sla_down", &all_records[2], sla_down_commands, sla_down_fields, false, "Downstream SLA of the ONU bound to an id (`plat_arg4`) of a PON port (`plat_port`). It goes with the binding."},
    {"sla_down_of_onu", &all_records[2], sla_down_of_onu_commands, sla_down_of_onu_fields, true, "Downstream SLA of the ONU bound to an id (`plat_arg4`) of a PON port (`plat_port`)."},
    {"sla_of_port", &all_records[2], sla_of_port_commands, sla_of_port_fields, true, "Upstream bandwidth of a PON port (`plat_port`), as its ONUs have it by SLA."},
    {"p2p_switch", &all_records[2], p2p_switch_commands, p2p_switch_fields, false, "Switches forwarding between ONUs of a PON port at the OLT. Frames are forwarded between two ONUs while it is on for the port and for both; at first it is off for every port and on for every ONU. That of an ONU goes with its binding."},
    {"p2p_own_port", &all_records[2], p2p_own_port_commands, p2p_own_port_fields, false, "Own port of a PON port (`plat_port`)."},
    {"p2p_of_port", &all_records[2], p2p_of_port_commands, p2p_of_port_fields, true, "P2P forwarding of a PON port (`plat_port`). Its forwarding entries come as a result database under the same command code."},
    {"p2p_config", &all_records[2], p2p_config_commands, p2p_config_fields, false, "Configures P2P forwarding of a PON port (`plat_port`). `plat_arg108` says what happens to frames between ONUs that no entry concerns: 0 they are dropped, 1 forwarded. At first everything is 0."},
    {"p2p_entry", &all_records[2], p2p_entry_commands, p2p_entry_fields, false, "A forwarding entry of a PON port (`plat_port`), one of 32: `plat_arg104` is its number, 0 to 31. The entry of the lowest number that matches decides. `plat_arg108` is which traffic it matches: 0 all, or an ethertype of 1536 (0x600) to 65535. Which VLANs are forwarded at all the configuration of the port says."},
    {"llid_behavior", &all_records[2], llid_behavior_commands, llid_behavior_fields, false, "Behaviour of an LLID (`plat_arg4`, 1 to 128) of a PON port (`plat_port`), kept for the LLID whichever ONU has it. Frames beyond the rates of broadcast and multicast frames are dropped as the port receives them; no modelled frame goes to an unknown address. `plat_arg108`: 0 its frames are forwarded, and their source addresses learned; 1 they are forwarded, and nothing is learned; 2 they are dropped. At first everything is 0."},
    {"fdb_config", &all_records[2], fdb_config_commands, fdb_config_fields, false, "Configuration of the forwarding database. At first 300, 1 and 0."},
    {"fdb_flush", &all_records[2], fdb_flush_commands, fdb_flush_fields, false, "Which entries of the forwarding database to forget: those that all of it holds for. All entries are dynamic: an address is learned again when its station sends, which each does every 2 to 8 s."},
    {"mac_query", &all_records[2], mac_query_commands, mac_query_fields, false, "Which entries of a MAC table to count, and which of these to show: those that all of it holds for. Of the 92 bytes the rest is not read."},
    {"mac_count", &all_records[2], mac_count_commands, mac_count_fields, true, "How many entries match; those asked for come as a result database under the same command code."},
    {"mac_ageing", &all_records[2], mac_ageing_commands, mac_ageing_fields, true, "Ageing of the forwarding database."},
    {"blacklist_text", &all_records[0], blacklist_text_commands, blacklist_text_fields, false, "An ONU of one PON port (`pon_port`), named by its MAC address (`onu_mac`), that is to be refused there: it is deregistered until it is taken off. It takes the lowest free id of the black list, from 1 on and 0 last; 128 fit on it. Where it is bound at the port, it is released. For one that is on the list already, the text is replaced and the id stays."},
    {"blacklist_batch", &all_records[0], blacklist_batch_commands, blacklist_batch_fields, false, "Several entries of the black list of one PON port (`pon_port`), by their ids there. All of them are taken off or, where there is no entry of an id, none. Those that are on the fibre register again."},
    {"id_usage", &all_records[0], id_usage_commands, id_usage_fields, true, "Which of the 128 ids of one PON port (`pon_port`) are in use: ONU ids on the white list, or ids on the black list."},
    {"whitelist_entry", &all_records[0], whitelist_entry_commands, whitelist_entry_fields, true, "A bound ONU. The request names it by id, by MAC address, or by both where they agree; with neither it is the ONU on id 0. The answer has `pon_port`, `onu_id`, `onu_mac`, the bind mode in `arg_value` and the bind texts in `text237`, `text173` and `text365`; all that counts lies in its first 776 bytes."},
    {"loop_config", &all_records[1], loop_config_commands, loop_config_fields, true, "Settings of loop detection, and how many loops it met, 80 bytes. What is set is set as the word `ext_arg`, in the same units."},
    {"loid", &all_records[0], loid_commands, loid_fields, false, "An authentication record of a PON port (`pon_port`), as BSP_CMD_AUTH_SET adds it, but the mode stays. The password of one that is there is replaced. The ONUs on the fibre register with each such request."},
    {"loid_delete", &all_records[0], loid_delete_commands, loid_delete_fields, false, "An authentication record of a PON port (`pon_port`) that is to go. An ONU that was let in by it stays bound; where the mode asks for a LOID, it is turned away."},
    {"oui", &all_records[0], oui_commands, oui_fields, false, "The OUI that the extended OAM of ONUs is known by at all PON ports: 11:11:11 at first, that of the CTC extensions, which the ONUs speak. With another one there is no extended OAM: no ONU can tell its LOID, and where the mode asks for one it is turned away, unless it was confirmed. The ONUs on the fibre register with each such request."},
    {"uni_profile", &all_records[0], uni_profile_commands, uni_profile_fields, false, "A UNI profile by its number (`pon_port`), 1 to 32: how a UNI port that takes it is configured, 67 bytes. `arg_value` is 1 to set all of it, or 0 to delete it; then what follows does not count. Ports that took it stay as they are: those of ONUs that are online are told what became different by BSP_CMD_ONU_CONFIG_BATCH."},
    {"onu_port_config_set", &all_records[3], onu_port_config_set_commands, onu_port_config_set_fields, false, "All that a UNI port (`onu_uni_port`) of an ONU is told at once, 68 bytes: the settings behind the number, or those of a UNI profile. Where the ONU cannot be told a part of it, it is told nothing. The port remembers the profile until it is told settings of its own in this way."},
    {"onu_config_set", &all_records[3], onu_config_set_commands, onu_config_set_fields, false, "Several settings of an ONU at once, 29 bytes: those that `parts` names. Where the ONU cannot be told one of them, it is told none."},
    {"onu_wan_view", &all_records[3], onu_wan_view_commands, onu_wan_view_fields, false, "Which WAN connections of an ONU to show."},
    {"onu_wan", &all_records[3], onu_wan_commands, onu_wan_fields, false, "A WAN connection of an ONU. With mode 0, which removes it, everything but its number is 0."},
    {"onu_wlan", &all_records[3], onu_wlan_commands, onu_wlan_fields, false, "One of the four WLANs of a gateway."},
    {"onu_acl", &all_records[3], onu_acl_commands, onu_acl_fields, false, "A rule of the access control list of a gateway; the rule of the lowest number that matches decides. With action 0, which removes it, everything but its number is 0."},
    {"onu_dhcp", &all_records[3], onu_dhcp_commands, onu_dhcp_fields, false, "DHCP server of a gateway, for the users' side."},
    {"onu_sn", &all_records[3], onu_sn_commands, onu_sn_fields, true, "Identity of an ONU, 54 bytes: the CTC attribute ONU SN. Texts are filled up with NUL and need not end in one."},
    {"onu_fw", &all_records[3], onu_fw_commands, onu_fw_fields, true, "Firmware version of an ONU, 128 bytes."},
    {"onu_chip_id", &all_records[3], onu_chip_id_commands, onu_chip_id_fields, true, "PON chip of an ONU, 8 bytes: the CTC attribute Chipset ID."},
    {"onu_cap", &all_records[3], onu_cap_commands, onu_cap_fields, true, "Capabilities of an ONU, 26 bytes: the CTC attribute ONU capabilities. In a bitmap, the lowest bit of the last byte is UNI port 1; GE ports come before FE ports."},
    {"onu_cap2", &all_records[3], onu_cap2_commands, onu_cap2_fields, true, "More capabilities of an ONU, 64 bytes: the CTC attribute ONU capabilities-2, with room for 9 interface types. Of these, each with a type in 4 bytes and a number in 2, the fields are the last bytes; those before them are zero."},
    {"onu_mem_info", &all_records[3], onu_mem_info_commands, onu_mem_info_fields, true, "Memory of an ONU, 16 bytes. What is free differs from one five seconds of model time to the next."},
    {"onu_device_info", &all_records[3], onu_device_info_commands, onu_device_info_fields, true, "Device information of an ONU, 100 bytes. Texts are filled up with NUL and need not end in one."},
    {"onu_about", &all_records[3], onu_about_commands, onu_about_fields, true, "All that the OLT has of an ONU, at a glance, 112 bytes. It is answered whatever the ONU's state. Texts are filled up with NUL and need not end in one."},
    {"onu_max_port", &all_records[3], onu_max_port_commands, onu_max_port_fields, true, "Number of UNI ports of an ONU, in place of the UNI port number."},
    {"onu_optics", &all_records[3], onu_optics_commands, onu_optics_fields, true, "Diagnosis of the optical transceiver of an ONU, 10 bytes: the CTC attribute Optical Transceiver Diagnosis."},
    {"onu_image_part", &all_records[3], onu_image_part_commands, onu_image_part_fields, false, "A part of an image that is pushed to an ONU, to the bank that does not run. Parts come in order; offset 0 starts anew, and the bank is not committed any more. The last part completes the image. A reboot loses one that is not complete."},
    {"onu_image_status", &all_records[3], onu_image_status_commands, onu_image_status_fields, true, "How the image that was pushed to an ONU last stands, 20 bytes; all zero while there is none. Upgrade runs are not told of here."},
    {"onu_banks", &all_records[3], onu_banks_commands, onu_banks_fields, true, "The two image banks of an ONU, 64 bytes. One bank is active and one is committed, mostly the same; an empty bank is all zero."},
    {"onu_image_update", &all_records[3], onu_image_update_commands, onu_image_update_fields, false, "Has the OLT upgrade an ONU with an image file that it holds: that of an upgrade type. It starts an upgrade run of that type, as BSP_CMD_UPGRADE_ONU does of the type that is bound to the ONU; of several types with this file, one for the ONU's vendor and model. The run commits the image and reboots the ONU."},
    {"onu_fast_leave_ability", &all_records[3], onu_fast_leave_ability_commands, onu_fast_leave_ability_fields, true, "The forms of fast leave that the kind of ONU (`onu_pon_port`, `onu_onu_id`) knows, in ascending order; the ONU must be online. 28 bytes."},
    {"onu_fast_leave", &all_records[3], onu_fast_leave_commands, onu_fast_leave_fields, true, "Fast leave as the ONU has it, which must be online. 4 bytes."},
    {"onu_fast_leave_set", &all_records[3], onu_fast_leave_set_commands, onu_fast_leave_set_fields, false, "Fast leave of an ONU that is online. Not every kind of ONU is able to switch it on."},
    {"onu_fast_leave_local", &all_records[3], onu_fast_leave_local_commands, onu_fast_leave_local_fields, true, "Fast leave of an ONU as the OLT told it, and what the ONU told of its abilities; whether it is online or not. 32 bytes."},
    {"onu_mc_switch", &all_records[3], onu_mc_switch_commands, onu_mc_switch_fields, true, "The multicast mode: as the ONU has it, which must be online, or as the OLT told it, whether it is online or not. 1 byte."},
    {"onu_mc_switch_set", &all_records[3], onu_mc_switch_set_commands, onu_mc_switch_set_fields, false, "The multicast mode of an ONU that is online. Not every kind of ONU is able to do both. The groups of controllable multicast are kept while the ONU snoops."},
    {"onu_mc_group_max", &all_records[3], onu_mc_group_max_commands, onu_mc_group_max_fields, true, "How many multicast groups a UNI port (`onu_uni_port`) may join: as the ONU has it, which must be online, or as the OLT told it, whether it is online or not. 2 bytes."},
    {"onu_mc_group_max_set", &all_records[3], onu_mc_group_max_set_commands, onu_mc_group_max_set_fields, false, "How many multicast groups a UNI port (`onu_uni_port`) may join, of an ONU that is online. Groups beyond it stay out until there is room."},
    {"onu_mc_vlan_mode", &all_records[3], onu_mc_vlan_mode_commands, onu_mc_vlan_mode_fields, true, "What becomes of the VLAN tags of multicast frames that leave at a UNI port (`onu_uni_port`): as the ONU has it, which must be online, or as the OLT told it, whether it is online or not. 34 bytes."},
    {"onu_mc_vlan_mode_set", &all_records[3], onu_mc_vlan_mode_set_commands, onu_mc_vlan_mode_set_fields, false, "What becomes of the VLAN tags of multicast frames that leave at a UNI port (`onu_uni_port`), of an ONU that is online. It takes the place of all that was set before."},
    {"onu_mc_vlan", &all_records[3], onu_mc_vlan_commands, onu_mc_vlan_fields, true, "The multicast VLANs of a UNI port (`onu_uni_port`) as the ONU has them, which must be online. Until set they are what the ONU came with, at most 2. 18 bytes."},
    {"onu_mc_vlan_set", &all_records[3], onu_mc_vlan_set_commands, onu_mc_vlan_set_fields, false, "A change of the multicast VLANs of a UNI port (`onu_uni_port`), of an ONU that is online. The port has at most 8; where they would be more, none is added. To add one that it has, or delete one that it has not, changes nothing."},
    {"onu_mc_vlan_local", &all_records[3], onu_mc_vlan_local_commands, onu_mc_vlan_local_fields, true, "The multicast VLANs of a UNI port (`onu_uni_port`) as the OLT told them, whether the ONU is online or not. 16 bytes."},
    {"onu_mc_group", &all_records[3], onu_mc_group_commands, onu_mc_group_fields, true, "The multicast groups that UNI ports of an ONU, which must be online, have joined, none of them more than its maximum: in IGMP/MLD snooping what users behind ports with a link watch, in the port's multicast VLANs, in order of UNI port; in controllable multicast what the OLT told, in the order in which it did. 1284 bytes."},
    {"onu_mc_group_set", &all_records[3], onu_mc_group_set_commands, onu_mc_group_set_fields, false, "A change of the multicast groups that UNI ports of an ONU join in controllable multicast; the ONU must be online and set to that mode. There are at most 128 entries; where they would be more, none is added. To add one that is there, or delete one that is not, changes nothing."},
    {"onu_switch", &all_records[3], onu_switch_commands, onu_switch_fields, false, "Switches performance monitoring of all UNI ports of an ONU, and its CATV port where it has one, alike: the two requests cannot be told apart. 1 byte."},
    {"onu_catv_state", &all_records[3], onu_catv_state_commands, onu_catv_state_fields, true, "Whether the CATV port of an ONU is on, 1 byte. ONUs with telephone ports have a CATV port."},
    {"onu_perf_monitor", &all_records[3], onu_perf_monitor_commands, onu_perf_monitor_fields, true, "Performance monitoring of a UNI port, 16 bytes."},
    {"onu_performance", &all_records[3], onu_performance_commands, onu_performance_fields, true, "Counters of a UNI port, 296 bytes: those of the period that is running, and those of the whole period before it. Downstream is what the port sends to the user, upstream what it receives from there: frames of both ways may be discarded, upstream ones where the ONU has no grants for them, and only upstream ones may have errors. The traffic is the ONU's own, divided evenly among its UNI ports that have a link from the start; one without a link counts nothing. All is counted at the rates of now: time in which the ONU was offline, or had other rates, like any other."},
    {"onu_mgmt", &all_records[3], onu_mgmt_commands, onu_mgmt_fields, true, "Management address of an ONU, 17 bytes. At first it is off, and everything 0."},
    {"onu_mgmt_set", &all_records[3], onu_mgmt_set_commands, onu_mgmt_set_fields, false, "Management address of an ONU, 17 bytes. With mode 0 everything is 0."},
    {"onu_fec", &all_records[3], onu_fec_commands, onu_fec_fields, true, "Forward error correction of an ONU, numbered as by CTC. At first it is disabled."},
    {"onu_fec_set", &all_records[3], onu_fec_set_commands, onu_fec_set_fields, false, "Forward error correction of an ONU that can correct errors, numbered as by CTC."},
    {"onu_fec_ability", &all_records[3], onu_fec_ability_commands, onu_fec_ability_fields, true, "Whether an ONU can correct errors, numbered as by CTC."},
    {"onu_time", &all_records[3], onu_time_commands, onu_time_fields, true, "Time configuration of an ONU, 16 bytes. At first mode 0 with an interval of 3600 s, everything else 0."},
    {"onu_time_set", &all_records[3], onu_time_set_commands, onu_time_set_fields, false, "Time configuration of an ONU, 16 bytes."},
    {"onu_sla", &all_records[3], onu_sla_commands, onu_sla_fields, true, "Service SLA of an ONU as by CTC, 88 bytes. It is the upstream SLA that the OLT has for the ONU, as its first and only service; that is where it is set. Bandwidths are rounded up."},
    {"onu_multi_llid", &all_records[3], onu_multi_llid_commands, onu_multi_llid_fields, false, "LLIDs of an ONU."},
    {"oam_print", &all_records[3], oam_print_commands, oam_print_fields, false, "What the service is to print of OAM. It keeps this, and says in its log when it changes; the modelled links print nothing more."},
    {"onu_alarm_test", &all_records[3], onu_alarm_test_commands, onu_alarm_test_fields, false, "An alarm that an ONU, which must be online, raises once more as a test; it counts and is cleared as any other. The command code is this service's own choice: the operation that sends such tests has the code from its caller."},
    {"onu_admin_state", &all_records[3], onu_admin_state_commands, onu_admin_state_fields, true, "Whether a UNI port is on, 4 bytes."},
    {"onu_admin_state_set", &all_records[3], onu_admin_state_set_commands, onu_admin_state_set_fields, false, "Switches a UNI port on or off. One that is off has no link."},
    {"onu_autoneg", &all_records[3], onu_autoneg_commands, onu_autoneg_fields, true, "Whether a UNI port negotiates speed and duplex, 4 bytes."},
    {"onu_autoneg_set", &all_records[3], onu_autoneg_set_commands, onu_autoneg_set_fields, false, "Has a UNI port negotiate speed and duplex, or take those that it is configured to."},
    {"onu_autoneg_local", &all_records[3], onu_autoneg_local_commands, onu_autoneg_local_fields, true, "What a UNI port can offer in auto-negotiation, 24 bytes: 4 abilities of an FE port, 5 of a GE port."},
    {"onu_autoneg_adv", &all_records[3], onu_autoneg_adv_commands, onu_autoneg_adv_fields, true, "What a UNI port offers in auto-negotiation, 24 bytes; all that it can until it is told otherwise."},
    {"onu_autoneg_adv_set", &all_records[3], onu_autoneg_adv_set_commands, onu_autoneg_adv_set_fields, false, "What a UNI port is to offer in auto-negotiation, in any order: some of what it can, each once. Where the other end offers none of it, there is no link."},
    {"onu_pause", &all_records[3], onu_pause_commands, onu_pause_fields, true, "Flow control of a UNI port, 1 byte."},
    {"onu_pause_set", &all_records[3], onu_pause_set_commands, onu_pause_set_fields, false, "Switches flow control of a UNI port."},
    {"onu_phy_info", &all_records[3], onu_phy_info_commands, onu_phy_info_fields, true, "The PHY of a UNI port, 24 bytes."},
    {"onu_rate_limit", &all_records[3], onu_rate_limit_commands, onu_rate_limit_fields, true, "Rate limits of a UNI port, 22 bytes: policing upstream, shaping downstream."},
    {"onu_rate_limit_set", &all_records[3], onu_rate_limit_set_commands, onu_rate_limit_set_fields, false, "Limits the rates of a UNI port: policing upstream, shaping downstream."},
    {"onu_loop_detect", &all_records[3], onu_loop_detect_commands, onu_loop_detect_fields, true, "Loop detection at a UNI port, 8 bytes."},
    {"onu_loop_detect_set", &all_records[3], onu_loop_detect_set_commands, onu_loop_detect_set_fields, false, "Switches loop detection at a UNI port. It shuts a port only while the OLT detects loops, too."},
    {"onu_vlan", &all_records[3], onu_vlan_commands, onu_vlan_fields, true, "VLANs of a UNI port, 159 bytes."},
    {"onu_vlan_set", &all_records[3], onu_vlan_set_commands, onu_vlan_set_fields, false, "Sets the VLANs of a UNI port, 159 bytes. All of it is set; what has no meaning in the mode must be 0. Not every ONU can translate, or be a trunk."},
    {"onu_classification", &all_records[3], onu_classification_commands, onu_classification_fields, true, "Classification rules of a UNI port, 298 bytes, in order of precedence; none until it is told some."},
    {"onu_classification_set", &all_records[3], onu_classification_set_commands, onu_classification_set_fields, false, "Changes the classification rules of a UNI port, 298 bytes. It has 8 at most."},
    {"optics_diagnostics", &all_records[2], optics_diagnostics_commands, optics_diagnostics_fields, true, "Diagnostics of the optical module of one PON port (`plat_port`), 56 bytes. The received power is that of the ONU which was measured last: the light of ONUs comes in bursts."},
    {"optics_rssi", &all_records[2], optics_rssi_commands, optics_rssi_fields, true, "The power that a PON port (`plat_port`) receives from one of its ONUs (`plat_arg4`), 64 bytes. `plat_arg120` says which: 0 what is received now, of an ONU that is not offline; 1 what the power measurement found, where the last one at the port was of this ONU."},
    {"sfp_info", &all_records[2], sfp_info_commands, sfp_info_fields, true, "The module in an SFP cage (`plat_port`), 464 bytes: what it is, what it measures with its thresholds, and its memory. Cages 1 to the number of PON ports are theirs; the four behind them are those of the uplinks, GE ports 1 to 4."},
    {"opm_trigger", &all_records[2], opm_trigger_commands, opm_trigger_fields, false, "Has the module of a PON port (`plat_port`) measure the power that it receives from an ONU (`plat_arg4`) which is on the fibre: 12 bytes. With the last sample the result stands in the module's diagnostics and in the RSSI reading 1. One measurement at a time is under way at a port; zeros take one sample at once."},
    {"lao_mode", &all_records[2], lao_mode_commands, lao_mode_fields, false, "LAO (laser always on) mode of the module of a PON port (`plat_port`): `plat_arg112` 0 the laser obeys TX disable, 1 it stays on in spite of it."},
    {"lol_mode", &all_records[2], lol_mode_commands, lol_mode_fields, false, "LOL (loss of light) mode of the module of a PON port (`plat_port`), 8 bytes: below which received power light counts as lost. `plat_arg112` 0 the module's low alarm threshold, 1 the level given here. `plat_arg4` is the receiver, of which a module has one: 0."},
    {"optical_status", &all_records[2], optical_status_commands, optical_status_fields, false, "What the PON chip's debug layer is told of the optics of a PON port (`plat_port`), 32 bytes. It keeps this until it is told otherwise, and shows the flags beside those of the module itself, which are not touched."},
    {"pon_laser", &all_records[2], pon_laser_commands, pon_laser_fields, true, "The laser of a PON port (`plat_port`), 4 bytes."},
    {"pon_phy", &all_records[2], pon_phy_commands, pon_phy_fields, true, "The PHY of a PON port (`plat_port`), 12 bytes: its optics as the module says, and as the chip's debug layer was told."},
    {"i2c_read", &all_records[2], i2c_read_commands, i2c_read_fields, false, "The I2C bus of an SFP cage (`plat_port`), 144 bytes. A module has its memory at two addresses, 0xa0 what it is and 0xa2 what it measures, in the layout of SFF-8472."},
    {"i2c_bytes", &all_records[2], i2c_bytes_commands, i2c_bytes_fields, true, "The I2C bus of an SFP cage (`plat_port`), 144 bytes. A module has its memory at two addresses, 0xa0 what it is and 0xa2 what it measures, in the layout of SFF-8472."},
    {"i2c_write", &all_records[2], i2c_write_commands, i2c_write_fields, false, "The I2C bus of an SFP cage (`plat_port`), 144 bytes. A module has its memory at two addresses, 0xa0 what it is and 0xa2 what it measures, in the layout of SFF-8472. Of 0xa2 byte 110 and bytes 128 to 247 can be written: soft TX disable (bit 6 of byte 110), by which the laser goes off, and with it the port's ONUs; and what the user keeps. Where another byte is meant, none is written."},
    {"profile_line", &all_records[4], profile_line_commands, profile_line_fields, false, "What a line profile gives the service of an ONU. Action 17, 56 bytes of payload. A profile of the same name takes its place."},
    {"profile_line_fetched", &all_records[4], profile_line_fetched_commands, profile_line_fetched_fields, true, "What a line profile gives the service of an ONU. 56 bytes of payload, laid out as what stores it."},
    {"profile_sla", &all_records[4], profile_sla_commands, profile_sla_fields, false, "The bandwidth that an SLA profile stands for; fixed and assured together are at most the maximum. Action 33, 56 bytes of payload. A profile of the same name takes its place."},
    {"profile_sla_fetched", &all_records[4], profile_sla_fetched_commands, profile_sla_fetched_fields, true, "The bandwidth that an SLA profile stands for; fixed and assured together are at most the maximum. 56 bytes of payload, laid out as what stores it."},
    {"profile_alarm", &all_records[4], profile_alarm_commands, profile_alarm_fields, false, "The alarm thresholds of an ONU's optical transceiver; each low one is below its high one. Action 49, 60 bytes of payload. A profile of the same name takes its place."},
    {"profile_alarm_fetched", &all_records[4], profile_alarm_fetched_commands, profile_alarm_fetched_fields, true, "The alarm thresholds of an ONU's optical transceiver; each low one is below its high one. 60 bytes of payload, laid out as what stores it."},
    {"profile_name", &all_records[4], profile_name_commands, profile_name_fields, false, "The profile that is got (actions 18, 34 and 50) or deleted (19, 35 and 51): 32 bytes of payload, or as many as the whole profile has, of which only the name counts."},
    {"profile_list_from", &all_records[4], profile_list_from_commands, profile_list_from_fields, false, "Where the list begins (actions 20, 36 and 52). The payload may have any length; without one the list begins with the first profile."},
    {"profile_list", &all_records[4], profile_list_commands, profile_list_fields, true, "Profiles of a kind, in order of number. What follows the last one listed is 0; where 113 are listed there may be more, from the number behind the last on."},
    {"upgrade_type", &all_records[1], upgrade_type_commands, upgrade_type_fields, false, "An upgrade type. One of the same name takes its place, unless an upgrade run uses it; there are at most 32. Name, vendor, model and version are visible ASCII characters without blanks, quotes and backslashes, at least one each."},
    {"upgrade_type_name", &all_records[1], upgrade_type_name_commands, upgrade_type_name_fields, false, "The upgrade type that is deleted. Ports and ONUs that it is bound to have none then."},
    {"upgrade_type_file", &all_records[1], upgrade_type_file_commands, upgrade_type_file_fields, false, "A file of upgrade types, at most 64 KiB and 32 types. A line is a type: name, vendor, model, version and size in bytes, separated by blanks; empty lines, and what follows a #, do not count. Types of other names stay. Where a line is wrong, nothing is changed, and the service's log says what is wrong."},
    {"upgrade_bind_onus", &all_records[1], upgrade_bind_onus_commands, upgrade_bind_onus_fields, false, "Binds an upgrade type to ONUs of one PON port, all of them or, where one id is not bound, none. It goes before that of the port, and stays with the ONU's MAC address at the port."},
    {"upgrade_bind_port", &all_records[1], upgrade_bind_port_commands, upgrade_bind_port_fields, false, "Binds an upgrade type to the ONUs of one PON port that have none of their own."},
    {"upgrade_onu", &all_records[1], upgrade_onu_commands, upgrade_onu_fields, false, "Starts to upgrade one ONU, which must be online. Its type must fit its vendor and model, and have another version."},
    {"upgrade_port", &all_records[1], upgrade_port_commands, upgrade_port_fields, false, "Starts to upgrade the ONUs of one PON port that can be upgraded; the others are left aside."},
};

constexpr const Command *port_info_commands[] = {&all_commands[35]};

constexpr Column port_info_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"mac", "MAC", ColumnType::mac, "", "the port's own MAC address"},
    {"uplink", "UPLINK", ColumnType::u32, "", "GE port that its traffic goes through"},
    {"laser", "LASER", ColumnType::boolean, "", "whether the laser of its optical module is on"},
    {"tx_power", "TX", ColumnType::real, "dBm", "launch power; -40 without light"},
    {"temperature", "TEMP", ColumnType::real, "degC", "temperature of its optical module"},
    {"bound", "BOUND", ColumnType::u32, "", "bound ONUs"},
    {"online", "ONLINE", ColumnType::u32, "", "bound ONUs that are online"},
    {"waiting", "WAITING", ColumnType::u32, "", "ONUs that have arrived, are in ranging limits and wait"},
    {"up_load", "UP", ColumnType::real, "kbit/s", "upstream load"},
    {"down_load", "DOWN", ColumnType::real, "kbit/s", "downstream load"},
};

constexpr const Command *basic_info_commands[] = {&all_commands[36]};

constexpr Column basic_info_columns[] = {
    {"model", "MODEL", ColumnType::text, "", "model of the simulated OLT"},
    {"version", "VERSION", ColumnType::text, "", "version of its software"},
    {"serial", "SERIAL", ColumnType::text, "", "serial number, 12 characters: the vendor, and the last four bytes of the MAC address"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address of the management port"},
    {"pon_ports", "PON", ColumnType::u32, "", "PON ports"},
    {"ge_ports", "GE", ColumnType::u32, "", "GE ports, the uplinks"},
    {"uptime", "UPTIME", ColumnType::real, "s", "model time since the OLT was first switched on"},
    {"bound", "BOUND", ColumnType::u32, "", "bound ONUs"},
    {"online", "ONLINE", ColumnType::u32, "", "bound ONUs that are online"},
    {"waiting", "WAITING", ColumnType::u32, "", "ONUs that have arrived, are in ranging limits and wait"},
};

constexpr const Command *onu_optics_table_commands[] = {&all_commands[38], &all_commands[39]};

constexpr Column onu_optics_table_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"temperature", "TEMP", ColumnType::real, "degC", "temperature of the ONU's transceiver"},
    {"voltage", "VOLTAGE", ColumnType::real, "V", "its supply voltage"},
    {"bias", "BIAS", ColumnType::real, "mA", "bias of its laser"},
    {"tx_power", "TX", ColumnType::real, "dBm", "power that the ONU launches"},
    {"rx_power", "RX", ColumnType::real, "dBm", "power that the ONU receives from the OLT"},
    {"olt_rx_power", "OLT RX", ColumnType::real, "dBm", "power that the OLT receives from the ONU"},
};

constexpr const Command *onu_stats_table_commands[] = {&all_commands[40]};

constexpr Column onu_stats_table_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"up_load", "UP", ColumnType::real, "kbit/s", "what the ONU offers its PON port at this time"},
    {"down_load", "DOWN", ColumnType::real, "kbit/s", "what the network offers it; 0 while the PON port's uplink is down"},
    {"counted", "COUNTED", ColumnType::real, "s", "how long it has been counting"},
    {"up_frames", "UP FRAMES", ColumnType::u64, "", "upstream frames that passed well"},
    {"up_octets", "UP OCTETS", ColumnType::u64, "", "their octets, with their check sequence"},
    {"up_errors", "UP ERRORS", ColumnType::u64, "", "upstream frames with a wrong check sequence, and fragments; they are not among those that passed"},
    {"down_frames", "DOWN FRAMES", ColumnType::u64, "", "downstream frames that passed well"},
    {"down_octets", "DOWN OCTETS", ColumnType::u64, "", "their octets, with their check sequence"},
    {"down_discarded", "DISCARDED", ColumnType::u64, "", "downstream frames that were not sent for want of room"},
};

constexpr const Command *onu_capabilities_commands[] = {&all_commands[21]};

constexpr Column onu_capabilities_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"vendor", "VENDOR", ColumnType::text, "", "vendor id, 4 characters"},
    {"model", "MODEL", ColumnType::text, "", "model"},
    {"chipset", "CHIPSET", ColumnType::text, "", "chipset"},
    {"ge_ports", "GE", ColumnType::u32, "", "GE UNI ports; they are the first ones"},
    {"fe_ports", "FE", ColumnType::u32, "", "FE UNI ports"},
    {"pots_ports", "POTS", ColumnType::u32, "", "POTS ports"},
    {"us_queues", "QUEUES", ColumnType::u32, "", "upstream queues"},
    {"fec", "FEC", ColumnType::boolean, "", "whether FEC is supported"},
    {"battery", "BATTERY", ColumnType::boolean, "", "whether there is battery backup"},
    {"igmp_snooping", "IGMP", ColumnType::boolean, "", "whether IGMP snooping is supported"},
    {"multicast_control", "MC CONTROL", ColumnType::boolean, "", "whether controllable multicast is supported"},
    {"fast_leave", "FAST LEAVE", ColumnType::boolean, "", "whether fast leave is supported"},
    {"vlan_translation", "VLAN TRANSLATION", ColumnType::boolean, "", "whether UNI ports can translate VLANs; all can be transparent and tag"},
    {"vlan_trunk", "VLAN TRUNK", ColumnType::boolean, "", "whether UNI ports can be VLAN trunks"},
    {"max_vlans", "VLANS", ColumnType::u32, "", "VLANs in the list of a UNI port, at most; 0 where it can neither translate nor be a trunk"},
};

constexpr const Command *upgrade_base_info_commands[] = {&all_commands[23]};

constexpr Column upgrade_base_info_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"state", "STATE", ColumnType::text, "", "online, offline, or unauthenticated"},
    {"vendor", "VENDOR", ColumnType::text, "", "vendor id, 4 characters"},
    {"model", "MODEL", ColumnType::text, "", "model"},
    {"hardware", "HARDWARE", ColumnType::text, "", "hardware version"},
    {"software", "SOFTWARE", ColumnType::text, "", "software version"},
    {"type", "TYPE", ColumnType::text, "", "upgrade type that is bound to the ONU or, where none is, to its port"},
    {"run", "RUN", ColumnType::text, "", "upgrade run under way, or the last one: queued, downloading, verifying, rebooting, done or failed"},
    {"progress", "PROGRESS", ColumnType::u32, "%", "how much of the image is downloaded; null where the run failed"},
    {"reason", "REASON", ColumnType::text, "", "why the run failed: offline, released, rejected, verification or rebooted"},
};

constexpr const Command *uni_attributes_commands[] = {&all_commands[31]};

constexpr Column uni_attributes_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"admin", "ADMIN", ColumnType::boolean, "", "whether the port is enabled"},
    {"link", "LINK", ColumnType::text, "", "down, or speed in Mbit/s and duplex: 10HD, 1000FD; null unless the ONU is online"},
    {"autoneg", "AUTONEG", ColumnType::boolean, "", "whether speed and duplex are negotiated"},
    {"pause", "PAUSE", ColumnType::boolean, "", "whether there is flow control"},
    {"ingress", "INGRESS", ColumnType::u32, "kbit/s", "rate limit into the ONU; null without one"},
    {"egress", "EGRESS", ColumnType::u32, "kbit/s", "rate limit out of the ONU; null without one"},
};

constexpr const Command *onu_config_commands[] = {&all_commands[169]};

constexpr Column onu_config_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"state", "STATE", ColumnType::text, "", "online, offline, or unauthenticated"},
    {"vendor", "VENDOR", ColumnType::text, "", "vendor id, 4 characters"},
    {"model", "MODEL", ColumnType::text, "", "model"},
    {"hardware", "HARDWARE", ColumnType::text, "", "hardware version"},
    {"software", "SOFTWARE", ColumnType::text, "", "software version"},
    {"unis", "UNIS", ColumnType::u32, "", "UNI ports"},
    {"enabled", "ENABLED", ColumnType::u32, "", "UNI ports that are enabled"},
    {"mode", "MODE", ColumnType::u32, "", "bind mode, as it was bound"},
    {"text_a", "TEXT A", ColumnType::text, "", "first bind text"},
    {"text_b", "TEXT B", ColumnType::text, "", "second bind text"},
    {"text_c", "TEXT C", ColumnType::text, "", "third bind text"},
    {"description", "DESCRIPTION", ColumnType::text, "", "description; empty where there is none"},
};

constexpr const Command *uni_config_commands[] = {&all_commands[170]};

constexpr Column uni_config_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"line_rate", "RATE", ColumnType::u32, "Mbit/s", "line rate: 100 of an FE port, 1000 of a GE port"},
    {"admin", "ADMIN", ColumnType::boolean, "", "whether the port is enabled"},
    {"link", "LINK", ColumnType::text, "", "down, or speed in Mbit/s and duplex: 10HD, 1000FD; null unless the ONU is online"},
    {"autoneg", "AUTONEG", ColumnType::boolean, "", "whether speed and duplex are negotiated"},
    {"speed", "SPEED", ColumnType::u32, "Mbit/s", "speed without negotiation; null with it"},
    {"duplex", "DUPLEX", ColumnType::text, "", "full or half, without negotiation; null with it"},
    {"pause", "PAUSE", ColumnType::boolean, "", "whether there is flow control"},
    {"ingress", "INGRESS", ColumnType::u32, "kbit/s", "rate limit into the ONU; null without one"},
    {"egress", "EGRESS", ColumnType::u32, "kbit/s", "rate limit out of the ONU; null without one"},
    {"vlan_mode", "VLAN MODE", ColumnType::text, "", "transparent, tag, translation or trunk"},
    {"pvid", "PVID", ColumnType::u32, "", "VLAN of untagged frames"},
    {"vlans", "VLANS", ColumnType::text, "", "VLANs of a trunk, or user:network of a translation, separated by commas; null in the other modes"},
};

constexpr const Command *vlan_modes_commands[] = {&all_commands[216]};

constexpr Column vlan_modes_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id; null in the row of a PON port"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number; null in the row of a PON port or ONU"},
    {"transp", "TRANSPARENT", ColumnType::u32, "", "transparent UNI ports"},
    {"tag", "TAG", ColumnType::u32, "", "tagging UNI ports"},
    {"transl", "TRANSLATION", ColumnType::u32, "", "translating UNI ports"},
    {"trunk", "TRUNK", ColumnType::u32, "", "UNI ports that are trunks"},
};

constexpr const Command *vlan_lists_commands[] = {&all_commands[217]};

constexpr Column vlan_lists_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id; null in the row of a PON port"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number; null in the row of a PON port or ONU"},
    {"pvid", "PVID", ColumnType::u32, "", "VLAN of untagged frames; null in the row of a PON port or ONU"},
    {"vlans", "VLANS", ColumnType::u32, "", "number of entries in the VLAN lists"},
    {"list", "LIST", ColumnType::text, "", "VLANs of a trunk, or user:network of a translation, separated by commas; null in the row of a PON port or ONU, and where there are none"},
};

constexpr const Command *slas_commands[] = {&all_commands[197]};

constexpr Column slas_columns[] = {
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"fixed", "FIXED", ColumnType::u32, "kbit/s", "fixed bandwidth"},
    {"assured", "ASSURED", ColumnType::u32, "kbit/s", "assured bandwidth"},
    {"max", "MAX", ColumnType::u32, "kbit/s", "maximum bandwidth"},
    {"prio", "PRIORITY", ColumnType::u32, "", "of what is left: 0 lowest to 7 highest"},
    {"wt", "WEIGHT", ColumnType::u32, "", "share among those of one priority"},
};

constexpr const Command *slas_of_ports_commands[] = {&all_commands[198]};

constexpr Column slas_of_ports_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"bound", "BOUND", ColumnType::u32, "", "bound ONUs"},
    {"slas", "UP", ColumnType::u32, "", "those with a stored upstream SLA"},
    {"down", "DOWN", ColumnType::u32, "", "those with a stored downstream SLA"},
    {"fixed", "FIXED", ColumnType::u32, "kbit/s", "sum of fixed bandwidth"},
    {"assured", "ASSURED", ColumnType::u32, "kbit/s", "sum of assured bandwidth"},
    {"capacity", "CAPACITY", ColumnType::u32, "kbit/s", "what the port has for both"},
    {"free", "FREE", ColumnType::u32, "kbit/s", "what is left of it"},
};

constexpr const Command *slas_down_commands[] = {&all_commands[201]};

constexpr Column slas_down_columns[] = {
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"max", "MAX", ColumnType::u32, "kbit/s", "maximum bandwidth; null where no SLA is stored and the default holds"},
};

constexpr const Command *p2p_commands[] = {&all_commands[190]};

constexpr Column p2p_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"on", "ON", ColumnType::boolean, "", "the switch of the port"},
    {"own", "OWN", ColumnType::u32, "", "GE uplink that takes what P2P forwarding leaves; null any"},
    {"onus", "ONUS", ColumnType::u32, "", "ONUs that frames are forwarded between now: online, the switch is on for port and ONU, and their LLIDs are neither dropped nor isolated"},
    {"entries", "ENTRIES", ColumnType::u32, "", "forwarding entries"},
};

constexpr const Command *p2p_entries_commands[] = {&all_commands[189]};

constexpr Column p2p_entries_columns[] = {
    {"entry", "ENTRY", ColumnType::u32, "", "number of the entry"},
    {"traffic", "TRAFFIC", ColumnType::u32, "", "ethertype that it matches; null all"},
    {"action", "ACTION", ColumnType::text, "", "forward or drop"},
    {"from_onu", "FROM", ColumnType::u32, "", "ONU id that the frames come from; null any"},
    {"to_port", "PORT", ColumnType::u32, "", "PON port that they go to"},
    {"to_onu", "TO", ColumnType::u32, "", "ONU id there; null any"},
    {"rate", "RATE", ColumnType::u32, "kbit/s", "rate limit; null none"},
};

constexpr const Command *mac_table_commands[] = {&all_commands[209]};

constexpr Column mac_table_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id; the last one, where the ONU is no longer bound"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port of the ONU"},
    {"vlan", "VLAN", ColumnType::u32, "", "VLAN beyond the ONU"},
    {"mac", "MAC", ColumnType::mac, "", "address of the station"},
    {"age", "AGE", ColumnType::u32, "s", "since when it was not heard of"},
};

constexpr const Command *mac_table_nni_commands[] = {&all_commands[210]};

constexpr Column mac_table_nni_columns[] = {
    {"uplink", "UPLINK", ColumnType::u32, "", "GE uplink"},
    {"vlan", "VLAN", ColumnType::u32, "", "VLAN"},
    {"mac", "MAC", ColumnType::mac, "", "address of the station"},
    {"age", "AGE", ColumnType::u32, "s", "since when it was not heard of"},
};

constexpr const Command *blacklist_commands[] = {&all_commands[27], &all_commands[28], &all_commands[29]};

constexpr Column blacklist_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"id", "ID", ColumnType::u32, "", "id on the black list"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"text", "TEXT", ColumnType::text, "", "free text of the entry"},
    {"registering", "REGISTERING", ColumnType::boolean, "", "whether the ONU is on the fibre, and so tries to register"},
};

constexpr const Command *auth_commands[] = {&all_commands[15]};

constexpr Column auth_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"mode", "MODE", ColumnType::u32, "", "authentication mode: 0 MAC address, 1 LOID, 2 LOID and password, 3 MAC address or LOID"},
    {"records", "RECORDS", ColumnType::u32, "", "authentication records"},
    {"admitted", "ADMITTED", ColumnType::u32, "", "bound ONUs that are online"},
    {"unauthenticated", "UNAUTHENTICATED", ColumnType::u32, "", "bound ONUs that are turned away for their LOID"},
    {"waiting", "WAITING", ColumnType::u32, "", "ONUs that wait to be bound"},
    {"rejected", "REJECTED", ColumnType::u32, "", "ONUs on the fibre that are on the black list"},
    {"loid", "LOID", ColumnType::text, "", "LOID of the record"},
    {"has_password", "PASSWORD", ColumnType::boolean, "", "whether the record has a password"},
    {"mac", "MAC", ColumnType::mac, "", "the ONU with this LOID; null while none is on the fibre"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id that it is bound to; null while it is not bound at this port"},
};

constexpr const Command *onu_alarm_commands[] = {&all_commands[24]};

constexpr Column onu_alarm_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id; null while the ONU is not bound at this port, and of the port itself"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address; null of the port itself"},
    {"alarm", "ALARM", ColumnType::u32, "", "1 los: an online ONU went out of the ranging limits, or its light was lost; 2 dying_gasp: it was rebooted by command; 3 rejected: it is on the black list and tried to register; 4 auth_failed: it was turned away for its LOID; of the port: 5 bias_high: the bias of its laser has risen to the alarm threshold as it ages; 6 power_low: the launch power has fallen to it; 8 rogue: an ONU that sends all the time blinds the port; of ONUs: 7 receive_degraded: its light is so weak that there are bit errors; 10 deregistered: the ONU was deregistered by command"},
    {"name", "NAME", ColumnType::text, "", "the alarm in a word"},
    {"severity", "SEVERITY", ColumnType::text, "", "critical, major or minor"},
    {"count", "COUNT", ColumnType::u32, "", "how often it was raised since it was cleared"},
};

constexpr const Command *loop_info_commands[] = {&all_commands[233]};

constexpr Column loop_info_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ONU", ColumnType::u32, "", "ONU id; null where the ONU is bound here no more"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address of the ONU"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port of the ONU"},
    {"state", "STATE", ColumnType::text, "", "looped: it has a loop and is open; shut: by loop detection; recovered: it is open again, and the loop is gone"},
    {"detected", "DETECTED", ColumnType::u32, "", "how often a loop was detected here"},
    {"changed", "CHANGED", ColumnType::u32, "s", "seconds of model time since the state changed"},
    {"recovers", "RECOVERS", ColumnType::u32, "s", "seconds of model time until the port recovers; null where it is not shut, or recovers by command only"},
};

constexpr const Command *onu_info_commands[] = {&all_commands[19], &all_commands[20], &all_commands[18]};

constexpr Column onu_info_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id; null while the ONU waits"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"state", "STATE", ColumnType::text, "", "waiting, online, offline, or unauthenticated: bound, and turned away for its LOID"},
    {"supported", "SUPPORTED", ColumnType::boolean, "", "whether the ONU is supported"},
    {"distance", "DISTANCE", ColumnType::u32, "m", "distance that ranging found; null while the ONU is offline"},
    {"mode", "MODE", ColumnType::u32, "", "bind mode, as it was bound; null while the ONU waits"},
    {"text_a", "TEXT A", ColumnType::text, "", "first bind text; null while the ONU waits"},
    {"text_b", "TEXT B", ColumnType::text, "", "second bind text; null while the ONU waits"},
    {"text_c", "TEXT C", ColumnType::text, "", "third bind text; null while the ONU waits"},
    {"reboots", "REBOOTS", ColumnType::u32, "", "how often the ONU was rebooted by command, or after an upgrade"},
    {"description", "DESCRIPTION", ColumnType::text, "", "description; null while the ONU waits"},
    {"loid", "LOID", ColumnType::text, "", "logical ONU id that the ONU tells; null while it is offline"},
};

constexpr const Command *base_info_commands[] = {&all_commands[22]};

constexpr Column base_info_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"bound", "BOUND", ColumnType::u32, "", "bound ONUs"},
    {"online", "ONLINE", ColumnType::u32, "", "bound ONUs that are online"},
    {"waiting", "WAITING", ColumnType::u32, "", "ONUs that have arrived, are in ranging limits and wait"},
    {"min_distance", "MIN", ColumnType::u32, "m", "nearest ONU that is ranged"},
    {"max_distance", "MAX", ColumnType::u32, "m", "farthest ONU that is ranged"},
};

constexpr const Command *loids_commands[] = {&all_commands[43]};

constexpr Column loids_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"loid", "LOID", ColumnType::text, "", "LOID of the record"},
    {"has_password", "PASSWORD", ColumnType::boolean, "", "whether the record has a password"},
    {"mac", "MAC", ColumnType::mac, "", "the ONU with this LOID; null while none is on the fibre"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id that it is bound to; null while it is not bound at this port"},
};

constexpr const Command *arp_commands[] = {&all_commands[44]};

constexpr Column arp_columns[] = {
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"ip", "IP", ColumnType::text, "", "IPv4 address of the station"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address of the station"},
    {"vlan", "VLAN", ColumnType::u32, "", "VLAN beyond the ONU"},
    {"interface", "INTERFACE", ColumnType::text, "", "where the OLT hears it: pon and the number of the PON port"},
};

constexpr const Command *uni_profiles_commands[] = {&all_commands[33]};

constexpr Column uni_profiles_columns[] = {
    {"id", "ID", ColumnType::u32, "", "number of the profile"},
    {"admin", "ADMIN", ColumnType::boolean, "", "whether the port is on"},
    {"autoneg", "AUTONEG", ColumnType::boolean, "", "whether speed and duplex are negotiated"},
    {"pause", "PAUSE", ColumnType::boolean, "", "whether there is flow control"},
    {"up_cir", "UP CIR", ColumnType::u32, "kbit/s", "upstream committed rate; null where upstream is not limited"},
    {"up_cbs", "UP CBS", ColumnType::u32, "byte", "upstream committed burst, likewise"},
    {"up_ebs", "UP EBS", ColumnType::u32, "byte", "upstream excess burst, likewise"},
    {"down_cir", "DOWN CIR", ColumnType::u32, "kbit/s", "downstream committed rate; null where downstream is not limited"},
    {"down_pir", "DOWN PIR", ColumnType::u32, "kbit/s", "downstream peak rate, likewise"},
    {"vlan_mode", "VLAN MODE", ColumnType::text, "", "transparent, tag, translation or trunk"},
    {"pvid", "PVID", ColumnType::u32, "", "VLAN of untagged frames"},
    {"priority", "PRIORITY", ColumnType::u32, "", "802.1p priority of untagged frames"},
    {"tpid", "TPID", ColumnType::u32, "", "type that a tag is known by"},
    {"vlans", "VLANS", ColumnType::text, "", "VLANs of a trunk, or user:network of a translation, separated by commas; null in the other modes"},
    {"ports", "PORTS", ColumnType::u32, "", "UNI ports of bound ONUs that took the profile"},
};

constexpr const Command *onu_wans_commands[] = {&all_commands[172]};

constexpr Column onu_wans_columns[] = {
    {"index", "NR", ColumnType::u32, "", "number of the connection, 1 to 8"},
    {"name", "NAME", ColumnType::text, "", "name"},
    {"mode", "MODE", ColumnType::text, "", "bridge or route"},
    {"service", "SERVICE", ColumnType::text, "", "what it is for: internet, voice, management or other"},
    {"vlan", "VLAN", ColumnType::u32, "", "VLAN; null where it is untagged"},
    {"priority", "PRIORITY", ColumnType::u32, "", "802.1p priority, 0 to 7"},
    {"ip_mode", "IP MODE", ColumnType::text, "", "static, DHCP or PPPoE; null of a bridge"},
    {"address", "ADDRESS", ColumnType::text, "", "IPv4 address and length of the mask; null of a bridge, and without one"},
    {"gateway", "GATEWAY", ColumnType::text, "", "IPv4 address of the gateway; null of a bridge, and without one"},
    {"state", "STATE", ColumnType::text, "", "up, or connecting until the ONU has what it was told"},
};

constexpr const Command *onu_wlans_commands[] = {&all_commands[174]};

constexpr Column onu_wlans_columns[] = {
    {"index", "NR", ColumnType::u32, "", "number of the WLAN, 1 to 4"},
    {"enabled", "ENABLED", ColumnType::boolean, "", "whether it is enabled"},
    {"name", "NAME", ColumnType::text, "", "SSID"},
    {"channel", "CHANNEL", ColumnType::u32, "", "channel; null where the ONU chooses it"},
    {"security", "SECURITY", ColumnType::text, "", "open, WPA2, WPA2/WPA3 or WPA3"},
    {"hidden", "HIDDEN", ColumnType::boolean, "", "whether the name is not announced"},
    {"clients", "CLIENTS", ColumnType::u32, "", "stations in the WLAN"},
};

constexpr const Command *onu_catv_port_commands[] = {&all_commands[176]};

constexpr Column onu_catv_port_columns[] = {
    {"on", "ON", ColumnType::boolean, "", "whether it is switched on"},
    {"input", "INPUT", ColumnType::real, "dBm", "received optical power of the CATV signal"},
};

constexpr const Command *onu_voice_ports_commands[] = {&all_commands[177]};

constexpr Column onu_voice_ports_columns[] = {
    {"pots", "POTS", ColumnType::u32, "", "POTS port number"},
    {"user", "USER", ColumnType::text, "", "SIP user"},
    {"server", "SERVER", ColumnType::text, "", "SIP server"},
    {"state", "STATE", ColumnType::text, "", "registered, or unregistered while the ONU has no WAN connection for voice that is up"},
};

constexpr const Command *onu_acl_rules_commands[] = {&all_commands[178]};

constexpr Column onu_acl_rules_columns[] = {
    {"index", "NR", ColumnType::u32, "", "number of the rule, 1 to 8"},
    {"action", "ACTION", ColumnType::text, "", "permit or deny"},
    {"direction", "DIRECTION", ColumnType::text, "", "upstream or downstream"},
    {"protocol", "PROTOCOL", ColumnType::u32, "", "IP protocol number; null any"},
    {"source", "SOURCE", ColumnType::text, "", "network of the sender: 10.0.0.0/8; null any"},
    {"dest", "DEST", ColumnType::text, "", "network of the receiver; null any"},
    {"first_port", "FIRST PORT", ColumnType::u32, "", "first port of the receiver; null any"},
    {"last_port", "LAST PORT", ColumnType::u32, "", "last one; null any"},
};

constexpr const Command *onu_dhcp_server_commands[] = {&all_commands[180]};

constexpr Column onu_dhcp_server_columns[] = {
    {"enabled", "ENABLED", ColumnType::boolean, "", "whether it is enabled"},
    {"address", "ADDRESS", ColumnType::text, "", "IPv4 address of the gateway on the users' side, and length of the mask"},
    {"first", "FIRST", ColumnType::text, "", "first address that is leased"},
    {"last", "LAST", ColumnType::text, "", "last one"},
    {"lease_time", "LEASE TIME", ColumnType::u32, "s", "how long an address is leased"},
    {"leases", "LEASES", ColumnType::u32, "", "addresses that are leased"},
};

constexpr const Command *onu_wlan_table_commands[] = {&all_commands[45]};

constexpr Column onu_wlan_table_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"wlans", "WLANS", ColumnType::u32, "", "WLANs"},
    {"enabled", "ENABLED", ColumnType::u32, "", "those that are enabled"},
    {"clients", "CLIENTS", ColumnType::u32, "", "stations in them; null unless the ONU is online"},
};

constexpr const Command *onu_wan_table_commands[] = {&all_commands[46]};

constexpr Column onu_wan_table_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"wans", "WANS", ColumnType::u32, "", "WAN connections"},
    {"up", "UP", ColumnType::u32, "", "those that are up; null unless the ONU is online"},
    {"address", "ADDRESS", ColumnType::text, "", "IPv4 address of the first one that has one; null without one"},
};

constexpr const Command *onu_catv_table_commands[] = {&all_commands[47]};

constexpr Column onu_catv_table_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"on", "ON", ColumnType::boolean, "", "whether it is switched on"},
    {"input", "INPUT", ColumnType::real, "dBm", "received optical power of the CATV signal; null unless the ONU is online"},
};

constexpr const Command *onu_sip_table_commands[] = {&all_commands[48]};

constexpr Column onu_sip_table_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"pots", "POTS", ColumnType::u32, "", "POTS port number"},
    {"user", "USER", ColumnType::text, "", "SIP user"},
    {"server", "SERVER", ColumnType::text, "", "SIP server"},
    {"state", "STATE", ColumnType::text, "", "registered, or unregistered while the ONU has no WAN connection for voice that is up; null unless the ONU is online"},
};

constexpr const Command *onu_unis_commands[] = {&all_commands[182]};

constexpr Column onu_unis_columns[] = {
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"kind", "KIND", ColumnType::text, "", "GE or FE"},
    {"line_rate", "RATE", ColumnType::u32, "Mbit/s", "line rate, at most"},
    {"admin", "ADMIN", ColumnType::boolean, "", "whether the port is enabled, as the ONU has it"},
    {"autoneg", "AUTONEG", ColumnType::boolean, "", "whether speed and duplex are negotiated, as the ONU has it"},
    {"shut", "SHUT", ColumnType::boolean, "", "whether loop detection has shut the port"},
    {"link", "LINK", ColumnType::text, "", "down, or speed in Mbit/s and duplex: 10HD, 1000FD; null unless the ONU is online"},
};

constexpr const Command *onu_serial_numbers_commands[] = {&all_commands[227]};

constexpr Column onu_serial_numbers_columns[] = {
    {"id", "ID", ColumnType::u32, "", "ONU id"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"dev", "DEVICE", ColumnType::text, "", "vendor id and model, which the ONU tells: null unless it is online"},
    {"sw", "SOFTWARE", ColumnType::text, "", "software version, which the ONU tells: null unless it is online"},
};

constexpr const Command *onu_upgrade_status_commands[] = {&all_commands[49]};

constexpr Column onu_upgrade_status_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"mac", "MAC", ColumnType::mac, "", "MAC address"},
    {"state", "STATE", ColumnType::text, "", "online, offline, or unauthenticated"},
    {"bank", "BANK", ColumnType::u32, "", "bank that the ONU runs, 1 or 2"},
    {"running", "RUNNING", ColumnType::text, "", "software version that the ONU runs"},
    {"committed", "COMMITTED", ColumnType::text, "", "software version that it runs from its next restart on"},
    {"run", "RUN", ColumnType::text, "", "upgrade run under way, or the last one: queued, downloading, verifying, rebooting, done or failed"},
    {"progress", "PROGRESS", ColumnType::u32, "%", "how much of its image is downloaded; null where the run failed"},
    {"reason", "REASON", ColumnType::text, "", "why the run failed: offline, released, rejected, verification or rebooted"},
    {"pushed", "PUSHED", ColumnType::text, "", "image that was pushed: receiving, complete, committed, started or failed"},
    {"version", "VERSION", ColumnType::text, "", "its software version"},
    {"received", "RECEIVED", ColumnType::u32, "%", "how much of it the ONU has received"},
};

constexpr const Command *onu_mc_config_commands[] = {&all_commands[156]};

constexpr Column onu_mc_config_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"mode", "MODE", ColumnType::text, "", "snooping or control; null of kinds of ONUs without multicast"},
    {"fast_leave", "FAST LEAVE", ColumnType::boolean, "", "whether fast leave is on"},
    {"igmp_snooping", "IGMP", ColumnType::boolean, "", "whether IGMP/MLD snooping is supported"},
    {"multicast_control", "MC CONTROL", ColumnType::boolean, "", "whether controllable multicast is supported"},
    {"fast_leave_able", "FAST LEAVE ABLE", ColumnType::boolean, "", "whether fast leave is supported"},
    {"groups", "GROUPS", ColumnType::u32, "", "multicast groups that its UNI ports have joined; null unless the ONU is online"},
};

constexpr const Command *onu_uni_mc_config_commands[] = {&all_commands[157]};

constexpr Column onu_uni_mc_config_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"group_max", "MAX", ColumnType::u32, "", "multicast groups that it may join, 0 to 255"},
    {"tags", "TAGS", ColumnType::text, "", "what becomes of the tags of multicast frames: keep, strip or translate"},
    {"vlans", "VLANS", ColumnType::text, "", "multicast VLANs, separated by commas; null where there are none"},
    {"groups", "GROUPS", ColumnType::u32, "", "multicast groups that it has joined; null unless the ONU is online"},
};

constexpr const Command *onu_mc_translation_commands[] = {&all_commands[158]};

constexpr Column onu_mc_translation_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"mc_vlan", "MC VLAN", ColumnType::u32, "", "multicast VLAN"},
    {"user_vlan", "USER VLAN", ColumnType::u32, "", "VLAN that its frames are tagged with at the port"},
};

constexpr const Command *onu_mc_vlans_commands[] = {&all_commands[159]};

constexpr Column onu_mc_vlans_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"mc_vlan", "MC VLAN", ColumnType::u32, "", "multicast VLAN"},
};

constexpr const Command *onu_vlans_commands[] = {&all_commands[129]};

constexpr Column onu_vlans_columns[] = {
    {"pon_port", "PORT", ColumnType::u32, "", "PON port number"},
    {"onu_id", "ID", ColumnType::u32, "", "ONU id"},
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"vlan_mode", "VLAN MODE", ColumnType::text, "", "transparent, tag, translation or trunk"},
    {"pvid", "PVID", ColumnType::u32, "", "VLAN of untagged frames"},
    {"priority", "PRIORITY", ColumnType::u32, "", "802.1p priority of untagged frames"},
    {"tpid", "TPID", ColumnType::u32, "", "type that a tag is known by"},
    {"vlans", "VLANS", ColumnType::text, "", "VLANs of a trunk, or user:network of a translation, separated by commas; null in the other modes"},
};

constexpr const Command *onu_links_commands[] = {&all_commands[160]};

constexpr Column onu_links_columns[] = {
    {"uni", "UNI", ColumnType::u32, "", "UNI port number"},
    {"admin", "ADMIN", ColumnType::boolean, "", "whether the port is enabled"},
    {"link", "LINK", ColumnType::text, "", "down, or speed in Mbit/s and duplex: 10HD, 1000FD; null unless the ONU is online"},
    {"shut", "SHUT", ColumnType::boolean, "", "whether loop detection has shut the port"},
};

constexpr const Command *sfp_quantities_commands[] = {&all_commands[214]};

constexpr Column sfp_quantities_columns[] = {
    {"quantity", "QUANTITY", ColumnType::text, "", "temperature, voltage, bias, launch power or received power"},
    {"value", "VALUE", ColumnType::real, "", "what is measured; received power of a PON port's module is that of the ONU which was measured last, and null before the first measurement"},
    {"unit", "UNIT", ColumnType::text, "", "degC, V, mA or dBm: of the value and the thresholds"},
    {"low_alarm", "LOW ALARM", ColumnType::real, "", "low alarm threshold"},
    {"low_warning", "LOW WARNING", ColumnType::real, "", "low warning threshold"},
    {"high_warning", "HIGH WARNING", ColumnType::real, "", "high warning threshold"},
    {"high_alarm", "HIGH ALARM", ColumnType::real, "", "high alarm threshold"},
    {"state", "STATE", ColumnType::text, "", "normal, low warning, low alarm, high warning or high alarm; null where nothing was measured"},
};

constexpr const Command *line_profiles_commands[] = {&all_commands[61]};

constexpr Column line_profiles_columns[] = {
    {"id", "NR", ColumnType::u32, "", "number, 1 to 256"},
    {"name", "NAME", ColumnType::text, "", "name"},
    {"vlan", "VLAN", ColumnType::u32, "", "VLAN of the service, 1 to 4094; 0 untagged"},
    {"priority", "PRIORITY", ColumnType::u32, "", "802.1p priority, 0 to 7"},
    {"upstream", "UPSTREAM", ColumnType::u32, "kbit/s", "maximum upstream rate, 1 to 1000000; 0 no limit"},
    {"downstream", "DOWNSTREAM", ColumnType::u32, "kbit/s", "maximum downstream rate, 1 to 1000000; 0 no limit"},
    {"mac_limit", "MAC LIMIT", ColumnType::u32, "", "MAC addresses that may be learnt, 1 to 1024; 0 no limit"},
};

constexpr const Command *sla_profiles_commands[] = {&all_commands[67]};

constexpr Column sla_profiles_columns[] = {
    {"id", "NR", ColumnType::u32, "", "number, 1 to 256"},
    {"name", "NAME", ColumnType::text, "", "name"},
    {"fixed", "FIXED", ColumnType::u32, "kbit/s", "fixed bandwidth, at most 1000000"},
    {"assured", "ASSURED", ColumnType::u32, "kbit/s", "assured bandwidth beside the fixed, at most 1000000"},
    {"maximum", "MAXIMUM", ColumnType::u32, "kbit/s", "maximum bandwidth, 1 to 1000000"},
    {"priority", "PRIORITY", ColumnType::u32, "", "priority, 0 to 7"},
    {"weight", "WEIGHT", ColumnType::u32, "", "weight, 1 to 100"},
};

constexpr const Command *alarm_profiles_commands[] = {&all_commands[73]};

constexpr Column alarm_profiles_columns[] = {
    {"id", "NR", ColumnType::u32, "", "number, 1 to 256"},
    {"name", "NAME", ColumnType::text, "", "name"},
    {"temperature_low", "TEMP LOW", ColumnType::real, "degC", "low alarm threshold of the temperature, -40 to 120 degC"},
    {"temperature_high", "TEMP HIGH", ColumnType::real, "degC", "high alarm threshold of the temperature, -40 to 120 degC"},
    {"launch_power_low", "TX LOW", ColumnType::real, "dBm", "low alarm threshold of the launch power, -40 to 10 dBm"},
    {"launch_power_high", "TX HIGH", ColumnType::real, "dBm", "high alarm threshold of the launch power, -40 to 10 dBm"},
    {"received_power_low", "RX LOW", ColumnType::real, "dBm", "low alarm threshold of the received power, -40 to 10 dBm"},
    {"received_power_high", "RX HIGH", ColumnType::real, "dBm", "high alarm threshold of the received power, -40 to 10 dBm"},
};

constexpr const Command *upgrade_types_commands[] = {&all_commands[220]};

constexpr Column upgrade_types_columns[] = {
    {"name", "NAME", ColumnType::text, "", "name of the type"},
    {"vendor", "VENDOR", ColumnType::text, "", "vendor id of the ONUs that it is for"},
    {"model", "MODEL", ColumnType::text, "", "their model"},
    {"version", "VERSION", ColumnType::text, "", "software version that they get"},
    {"size", "SIZE", ColumnType::u32, "bytes", "size of the image"},
    {"file", "FILE", ColumnType::text, "", "file name of the image; empty where none was given"},
};

constexpr View all_views[] = {
    {"port_info", port_info_commands, port_info_columns, "A row a PON port. Its load is what its online ONUs offer, and what the network offers them, at this time; downstream passes only while the port's uplink has a link."},
    {"basic_info", basic_info_commands, basic_info_columns, "One row: the OLT, with the ONUs of all its PON ports."},
    {"onu_optics_table", onu_optics_table_commands, onu_optics_table_columns, "A row a bound ONU of the PON port (`pon_port`) or of the whole OLT, in order of port and id. What is measured is null unless the ONU is online. 2048 rows, as many as can be bound, stay within 1 MiB."},
    {"onu_stats_table", onu_stats_table_commands, onu_stats_table_columns, "A row a bound ONU of the whole OLT, in order of port and id. The load adds up to that of the PON port; it is null unless the ONU is online. What is counted is what the ONU's UNI ports count together, from when the ONU began to monitor (BSP_CMD_ONU_PERF_MONITOR_SET) until now; it is null unless the ONU is online and monitors. Of an ONU that is online all the time, and has a UNI port with a link from the start, upstream frames are those that its PON port receives of it, and downstream frames, with discarded ones, those that the network offers it. Time in which the ONU was offline is counted like any other. 2048 rows, as many as can be bound, stay within 1 MiB."},
    {"onu_capabilities", onu_capabilities_commands, onu_capabilities_columns, "A row a bound ONU, in order of port and id, whether it is online or not."},
    {"upgrade_base_info", upgrade_base_info_commands, upgrade_base_info_columns, "A row a bound ONU, in order of port and id. The last columns tell of its upgrade; they are null where there is none."},
    {"uni_attributes", uni_attributes_commands, uni_attributes_columns, "A row a UNI port of every bound ONU, in order of PON port, id and UNI port. The rows are short, so that 8192 of them stay within 1 MiB; more of one ONU's ports stands in the configuration of its UNI ports."},
    {"onu_config", onu_config_commands, onu_config_columns, "One row: the ONU bound to an id (`onu_pon_port`, `onu_onu_id`), as a text in the answer and as a result. The text always fits the answer, with the longest texts too; where the ONU cannot be shown, it is a table of no rows."},
    {"uni_config", uni_config_commands, uni_config_columns, "A row a UNI port of the ONU bound to an id (`onu_pon_port`, `onu_onu_id`)."},
    {"vlan_modes", vlan_modes_commands, vlan_modes_columns, "How many UNI ports of bound ONUs are in each VLAN mode, always within 10240 bytes: for PON port 0 a row a PON port; for one PON port a row an ONU or, with scope 1, a row a UNI port of one ONU, which has a 1 at its mode."},
    {"vlan_lists", vlan_lists_commands, vlan_lists_columns, "The VLANs of UNI ports of bound ONUs, always within 10240 bytes: for PON port 0 a row a PON port; for one PON port a row an ONU or, with scope 1, a row a UNI port of one ONU, which alone has the list itself."},
    {"slas", slas_commands, slas_columns, "A row a bound ONU of one PON port, in order of id. An ONU without a stored SLA has null but for its id: the default holds for it."},
    {"slas_of_ports", slas_of_ports_commands, slas_of_ports_columns, "A row a PON port: the SLAs of 2048 ONUs would not fit the 10240 bytes that this view has. The ONUs of one port are in the view for the web server."},
    {"slas_down", slas_down_commands, slas_down_columns, "A row a bound ONU of one PON port, in order of id."},
    {"p2p", p2p_commands, p2p_columns, "A row a PON port, at most 1023 bytes in all: it comes as a text in the answer, and as a result database."},
    {"p2p_entries", p2p_entries_commands, p2p_entries_columns, "A row a forwarding entry of one PON port, in order of number."},
    {"mac_table", mac_table_commands, mac_table_columns, "The addresses behind ONUs that the query asks for, at most 100 of them, in order of port, ONU id and UNI port."},
    {"mac_table_nni", mac_table_nni_commands, mac_table_nni_columns, "The addresses of the network side that the query asks for, at most 100 of them, in order of uplink."},
    {"blacklist", blacklist_commands, blacklist_columns, "A row an entry, in order of port and id. BSP_CMD_BLACKLIST_GET: of one port, or of all for port 0, narrowed to the id (`onu_id`) and the MAC address (`onu_mac`) that are not zero; where that leaves none, the status says so and the table is empty."},
    {"auth", auth_commands, auth_columns, "For port 0 a row a port, with the columns from mode to rejected, at most 10240 bytes in all; for a port a row an authentication record, in order of LOID, with the columns from loid on. The other columns are null. Passwords are not shown."},
    {"onu_alarm", onu_alarm_commands, onu_alarm_columns, "A row an alarm of a PON port itself or of an ONU, in order of port, MAC address and code: of one port, or of all for port 0, narrowed to the ONU with the id (`onu_id`) and the MAC address (`onu_mac`) that are not zero; where no ONU is bound to the id, the status says so and the table is empty. A table that would not fit into a result is refused; one port's always fits. The alarms of the port itself have neither id nor MAC address, and come first. An alarm stays until it is cleared. BSP_CMD_ONU_ALARM_CLEAR selects in the same way, and further one code (`arg_value`, 0 for all)."},
    {"loop_info", loop_info_commands, loop_info_columns, "A row a UNI port that has a loop, is shut for one, or was, in order of PON port, MAC address and UNI port. There are at most 48 of them: a new loop takes the place of the port that recovered longest ago, and where none has recovered, no further loop can be made."},
    {"onu_info", onu_info_commands, onu_info_columns, "A row an ONU: the bound ones in order of port and id, then those that have arrived and wait, in order of port and MAC address. BSP_CMD_ONU_INFO_GET: of one port, or of all for port 0, narrowed to the ONU id and the MAC address that are not zero; where that leaves none, the status says so and the table is empty. Where bind texts and descriptions would make the table longer than 1 MiB, all of them are null: ask for one port at a time."},
    {"base_info", base_info_commands, base_info_columns, "A row a PON port."},
    {"loids", loids_commands, loids_columns, "A row an authentication record of a PON port, in order of LOID; for port 0 of all ports. Passwords are not shown."},
    {"arp", arp_commands, arp_columns, "A row a station behind an ONU of the PON port that is online, and which the OLT has in its forwarding database, in order of ONU id and UNI port."},
    {"uni_profiles", uni_profiles_commands, uni_profiles_columns, "The row of one UNI profile; a row for each, in order of number, for number 0. All of them fit the 10240 bytes that the view has."},
    {"onu_wans", onu_wans_commands, onu_wans_columns, "A row a WAN connection of an ONU, in order of number."},
    {"onu_wlans", onu_wlans_commands, onu_wlans_columns, "A row a WLAN of an ONU, in order of number; none of an ONU that is no gateway."},
    {"onu_catv_port", onu_catv_port_commands, onu_catv_port_columns, "The CATV port of an ONU: a row, or none where the ONU has no such port."},
    {"onu_voice_ports", onu_voice_ports_commands, onu_voice_ports_columns, "A row a POTS port of an ONU, in order of number."},
    {"onu_acl_rules", onu_acl_rules_commands, onu_acl_rules_columns, "A row a rule of the access control list of an ONU, in order of number; none of an ONU that is no gateway."},
    {"onu_dhcp_server", onu_dhcp_server_commands, onu_dhcp_server_columns, "The DHCP server of an ONU: a row, or none where the ONU is no gateway."},
    {"onu_wlan_table", onu_wlan_table_commands, onu_wlan_table_columns, "A row a bound ONU of the PON port that is a gateway, in order of id."},
    {"onu_wan_table", onu_wan_table_commands, onu_wan_table_columns, "A row a bound ONU of the PON port, in order of id."},
    {"onu_catv_table", onu_catv_table_commands, onu_catv_table_columns, "A row a bound ONU of the PON port that has a CATV port, in order of id."},
    {"onu_sip_table", onu_sip_table_commands, onu_sip_table_columns, "A row a POTS port of a bound ONU of the PON port, in order of id and number."},
    {"onu_unis", onu_unis_commands, onu_unis_columns, "A row a UNI port of one ONU, in order of number, whether the ONU is online or not."},
    {"onu_serial_numbers", onu_serial_numbers_commands, onu_serial_numbers_columns, "A row an ONU that is bound at the PON port, in order of id. The rows are short, so that 128 of them stay within 10240 bytes; the hardware version and more stand in the answer of each ONU to BSP_CMD_ONU_SN_GET."},
    {"onu_upgrade_status", onu_upgrade_status_commands, onu_upgrade_status_columns, "A row a bound ONU, in order of PON port and id: its image banks, its upgrade run and the image that was pushed to it last; null where there is none. Of one port, or of all for port 0; of one ONU, or of all for ONU id 0. It always stays within 1 MiB."},
    {"onu_mc_config", onu_mc_config_commands, onu_mc_config_columns, "One row: multicast at the ONU bound to an id (`onu_pon_port`, `onu_onu_id`), as the OLT told it. The number of groups is the ONU's own."},
    {"onu_uni_mc_config", onu_uni_mc_config_commands, onu_uni_mc_config_columns, "A row a UNI port of the ONU bound to an id (`onu_pon_port`, `onu_onu_id`): multicast as the OLT told it. The number of groups is the ONU's own."},
    {"onu_mc_translation", onu_mc_translation_commands, onu_mc_translation_columns, "A row a translation of multicast VLANs at one UNI port (`onu_uni_port`) of the ONU bound to an id (`onu_pon_port`, `onu_onu_id`), as the OLT told it; no rows where tags are not translated."},
    {"onu_mc_vlans", onu_mc_vlans_commands, onu_mc_vlans_columns, "A row a multicast VLAN of each UNI port of the ONU bound to an id (`onu_pon_port`, `onu_onu_id`), as the OLT told it, in order of UNI port; a port without one has no row."},
    {"onu_vlans", onu_vlans_commands, onu_vlans_columns, "A row a UNI port of the ONU, with the VLANs that it was told: what it has may lag behind for a moment."},
    {"onu_links", onu_links_commands, onu_links_columns, "A row a UNI port of the ONU, as a text in the answer and as a result. The text always fits the answer; where the ONU cannot be shown, it is a table of no rows."},
    {"sfp_quantities", sfp_quantities_commands, sfp_quantities_columns, "The module in an SFP cage (`plat_port`): a row a quantity that it measures. Cages 1 to the number of PON ports are theirs; the four behind them are those of the uplinks, GE ports 1 to 4."},
    {"line_profiles", line_profiles_commands, line_profiles_columns, "A row a profile, in order of number. It comes by a file (action 21)."},
    {"sla_profiles", sla_profiles_commands, sla_profiles_columns, "A row a profile, in order of number. It comes by a file (action 37)."},
    {"alarm_profiles", alarm_profiles_commands, alarm_profiles_columns, "A row a profile, in order of number. It comes by a file (action 53)."},
    {"upgrade_types", upgrade_types_commands, upgrade_types_columns, "A row an upgrade type, in order of name. All of them always stay within 10240 bytes."},
};

constexpr Argument bsp_pon_onu_auth_mode_type_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"text_a", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[8], 0, 0, -1, Source::none, Key::none, 0, "", {}, "first authentication text, at most 63 characters"},
    {"text_b", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "second authentication text, at most 63 characters"},
    {"mode", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "authentication mode, the service's to define"},
};

constexpr Argument bsp_pon_onu_auth_set_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "port, mode and texts, 944 bytes; copied, not changed, its `cmd` is not used"},
};

constexpr Argument bsp_pon_onu_auth_mode_type_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"resp", ArgumentType::response, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "room for 944 bytes, receives the answer, a bsp_pon_msg; handed to the IPC library as it is"},
};

constexpr Argument bsp_pon_onu_auth_infolist_get_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr const Field *bsp_pon_confirm_onu_onu_fields[] = {&bsp_pon_msg_fields[2], &bsp_pon_msg_fields[4], &bsp_pon_msg_fields[5], &bsp_pon_msg_fields[6]};
constexpr Oddity bsp_pon_confirm_onu_odd[] = {{Facet::request, "the ONU id and the MAC address of the record are never both sent: the id where it is not 0, else the address"}};
constexpr Argument bsp_pon_confirm_onu_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", bsp_pon_confirm_onu_onu_fields, "which ONU, 944 bytes; not changed, nothing else of it is used"},
};

constexpr Argument bsp_pon_onu_description_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"text", ArgumentType::text, true, false, false, &bsp_pon_msg_fields[11], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the description, at most 127 characters; empty for none"},
};

constexpr Argument bsp_pon_cfg_arguments[] = {
    {"cmd", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "command code"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"data", ArgumentType::block, false, true, false, &bsp_pon_msg_fields[13], 0, 0, -1, Source::none, Key::none, 0, "", {}, "configuration block, read only"},
    {"length", ArgumentType::length, false, false, false, nullptr, 0, 0, 2, Source::none, Key::none, 0, "", {}, "bytes of `data` to send, at most 515"},
};

constexpr Argument bsp_ponmsg_cfg_set_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 944 bytes with the command code in `cmd`; not changed"},
};

constexpr Argument bsp_pon_bind_onu_auto_id_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"mac", ArgumentType::mac, true, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
    {"text_a", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[11], 0, 0, -1, Source::none, Key::none, 0, "", {}, "first bind text, at most 127 characters"},
    {"text_b", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[10], 0, 0, -1, Source::none, Key::none, 0, "", {}, "second bind text, at most 63 characters"},
    {"value", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[7], 0, 0, -1, Source::none, Key::none, 0, "", {}, "bind mode, the service's to define"},
    {"text_c", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[12], 0, 0, -1, Source::none, Key::none, 0, "", {}, "third bind text, at most 63 characters"},
};

constexpr Argument bsp_pon_onu_support_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"mac", ArgumentType::mac, true, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
    {"value", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[7], 0, 0, -1, Source::none, Key::none, 0, "", {}, "support flag: 1 supported, 0 not"},
};

constexpr Argument bsp_pon_bind_onu_spec_id_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"mac", ArgumentType::mac, true, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
    {"text_a", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[11], 0, 0, -1, Source::none, Key::none, 0, "", {}, "first bind text, at most 127 characters"},
    {"text_b", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[10], 0, 0, -1, Source::none, Key::none, 0, "", {}, "second bind text, at most 63 characters"},
    {"value", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[7], 0, 0, -1, Source::none, Key::none, 0, "", {}, "bind mode, the service's to define"},
    {"text_c", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[12], 0, 0, -1, Source::none, Key::none, 0, "", {}, "third bind text, at most 63 characters"},
};

constexpr Argument bsp_pon_no_bind_onu_spec_id_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_no_bind_onu_spec_id_and_mac_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"mac", ArgumentType::mac, false, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
};

constexpr Argument bsp_pon_no_bind_onu_by_mac_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"mac", ArgumentType::mac, true, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
};

constexpr Argument bsp_pon_no_bind_onu_all_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
};

constexpr Argument bsp_pon_no_bind_offline_onu_all_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
};

constexpr Argument bsp_pon_no_bind_onu_batch_spec_id_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "which ONUs, 944 bytes; copied, not changed, its `cmd` is not used"},
};

constexpr Argument bsp_pon_reboot_onu_batch_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "which ONUs, 944 bytes; copied, not changed, its `cmd` is not used"},
};

constexpr Argument bsp_pon_onu_batch_sort_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "which ONUs, 944 bytes; copied, not changed, its `cmd` is not used"},
};

constexpr Argument bsp_pon_set_opt_range_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the limits, 944 bytes; copied, not changed, its `cmd` is not used"},
};

constexpr Argument bsp_pon_blacklist_add_onu_auto_id_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"mac", ArgumentType::mac, true, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
    {"text", ArgumentType::text, false, true, false, &bsp_pon_msg_fields[13], 0, 0, -1, Source::none, Key::none, 0, "", {}, "free text of the entry, at most 514 characters"},
};

constexpr Argument bsp_pon_reject_onu_to_blacklist_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_reject_onu_to_blacklist_batch_arguments[] = {
    {"record", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "which ONUs, 944 bytes; copied, not changed, its `cmd` is not used"},
};

constexpr Argument bsp_pon_no_bind_blacklist_onu_by_mac_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"mac", ArgumentType::mac, true, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
};

constexpr Argument bsp_pon_no_bind_blacklist_batch_arguments[] = {
    {"record", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "which ONUs, 944 bytes; its `cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_get_w_onu_spec_id_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"resp", ArgumentType::response, false, true, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "room for 776 bytes, receives the answer, a bsp_pon_msg as far as that goes; may be null: the answer is dropped"},
};

constexpr Argument bsp_pon_get_w_onu_by_mac_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"mac", ArgumentType::mac, true, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
    {"resp", ArgumentType::response, false, true, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "room for 776 bytes, receives the answer, a bsp_pon_msg as far as that goes; may be null: the answer is dropped"},
};

constexpr Argument bsp_pon_get_w_onu_id_resouce_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"resp", ArgumentType::response, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "room for 944 bytes, receives the answer, a bsp_pon_msg"},
};

constexpr Argument bsp_pon_get_b_onu_id_resouce_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"resp", ArgumentType::response, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "room for 944 bytes, receives the answer, a bsp_pon_msg"},
};

constexpr Argument bsp_pon_get_onu_blacklist_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port, ONU id or MAC address as wanted, 944 bytes; its `cmd` becomes the command code and stays so"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database"},
};

constexpr const Field *bsp_pon_get_b_onu_spec_id_record_fields[] = {&bsp_pon_msg_fields[1], &bsp_pon_msg_fields[2]};
constexpr Argument bsp_pon_get_b_onu_spec_id_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", bsp_pon_get_b_onu_spec_id_record_fields, "944 bytes, of which only `pon_port` and `onu_id` are used; not changed"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_get_b_onu_by_mac_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"mac", ArgumentType::mac, true, false, false, &bsp_pon_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU MAC address, 6 bytes in transmission order"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_get_onu_blacklist_snmp_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
};

constexpr Argument bsp_pon_get_onu_blacklist_web_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port` as wanted, 944 bytes; its `cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_exec_get_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "in: the request, 944 bytes with the command code in `cmd`; out: what the service answered, from the first byte on"},
};

constexpr Argument bsp_pon_exec_set_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 944 bytes with the command code in `cmd`; not changed"},
};

constexpr Argument bsp_pon_exec_get_json_arguments[] = {
    {"cmd", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "command code of the view, and the key of its result"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"spare", ArgumentType::u32, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "ignored"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, 0, Source::shmem, Key::argument, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_exec_get_json__arguments[] = {
    {"cmd", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "command code of the view, and the key of its result"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"spare", ArgumentType::u32, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "ignored"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, 0, Source::shmem, Key::argument, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_exec_get_file_arguments[] = {
    {"cmd", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "command code of the view"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"name_out", ArgumentType::text_out, false, true, false, &bsp_pon_msg_fields[13], 0, 0, -1, Source::none, Key::none, 0, "", {}, "room for 515 bytes, receives the file's name, NUL-terminated; may be null"},
};

constexpr Argument bsp_pon_exec_get_onu_json_arguments[] = {
    {"cmd", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "command code of the view, and the key of its result"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"spare", ArgumentType::u32, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "ignored"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, 0, Source::shmem, Key::argument, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_config_by_db_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 944 bytes with the command code of the view in `cmd`, which is also the key of its result; not changed"},
};

constexpr Argument bsp_pononu_ctc_config_by_db_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1888 bytes with the command code of the view in `onu_cmd`, which is also the key of its result; not changed"},
};

constexpr Argument bsp_pon_platform_by_db_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1148 bytes with the command code of the view in `plat_cmd`, which is also the key of its result; not changed"},
};

constexpr Argument bsp_pon_get_onu_info_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 1048576, "", {}, "the result database"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port`, `onu_id` and `onu_mac` as wanted, 944 bytes; its `cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_get_onu_info_snmp_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
};

constexpr Argument bsp_pon_get_onu_info_web_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port` as wanted, 944 bytes; its `cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_get_onu_cap_snmp_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
};

constexpr Argument bsp_pon_get_base_info_web_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port` as wanted, 944 bytes; its `cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_get_upgrade_base_info_web_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port` as wanted, 944 bytes; its `cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_get_onu_alarm_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port` and `onu_id` as wanted, 944 bytes; its `cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_clear_onu_alarm_arguments[] = {
    {"record", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port`, `onu_id` and the alarm as wanted, 944 bytes; its `cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_get_uni_attribute_snmp_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 1048576, "", {}, "the result database, at most 1048576 bytes"},
};

constexpr Oddity bsp_pon_onu_get_cfg_info_odd[] = {{Facet::status, "BSP_OK after every exchange that succeeded: the service's status word is dropped"}};
constexpr Argument bsp_pon_onu_get_cfg_info_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, &bsp_pon_msg_ext_fields[2], 0, 0, -1, Source::text, Key::none, 0, "", {}, "the result database"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_onu_get_portcfg_info_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database, at most 10240 bytes"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pononu_ctc_config_snmp_get_arguments[] = {
    {"db_out", ArgumentType::db, false, true, true, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "ignored"},
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1888 bytes with the command code of the view in `onu_cmd`, which is also the key of its result; not changed"},
};

constexpr Argument bsp_pon_onu_get_vlan_mode_snmp_arguments[] = {
    {"db_out", ArgumentType::db, false, true, true, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "ignored"},
};

constexpr Argument bsp_pon_onu_get_vlanlist_snmp_arguments[] = {
    {"db_out", ArgumentType::db, false, true, true, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "ignored"},
};

constexpr Argument bsp_pon_set_onu_upgrade_type_add_arguments[] = {
    {"block", ArgumentType::block, false, false, false, &bsp_pon_msg_ext_fields[2], 400, 0, -1, Source::none, Key::none, 0, "", {}, "400 bytes, read only: the upgrade type"},
};

constexpr Argument bsp_pon_set_onu_upgrade_type_del_arguments[] = {
    {"block", ArgumentType::block, false, false, false, &bsp_pon_msg_ext_fields[2], 400, 0, -1, Source::none, Key::none, 0, "", {}, "400 bytes, read only: the upgrade type"},
};

constexpr Argument bsp_pon_get_onu_upgrade_type_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_load_onu_upgrade_type_file_arguments[] = {
    {"block", ArgumentType::block, false, false, false, &bsp_pon_msg_ext_fields[2], 400, 0, -1, Source::none, Key::none, 0, "", {}, "400 bytes, read only: the file"},
};

constexpr Argument bsp_pon_onu_upgrade_type_bind_some_arguments[] = {
    {"block", ArgumentType::block, false, false, false, &bsp_pon_msg_ext_fields[2], 400, 0, -1, Source::none, Key::none, 0, "", {}, "400 bytes, read only: the upgrade type and the ONUs"},
};

constexpr Argument bsp_pon_onu_upgrade_type_bind_ponport_arguments[] = {
    {"block", ArgumentType::block, false, false, false, &bsp_pon_msg_ext_fields[2], 400, 0, -1, Source::none, Key::none, 0, "", {}, "400 bytes, read only: the upgrade type and the port"},
};

constexpr Argument bsp_pon_onu_upgrade_one_arguments[] = {
    {"block", ArgumentType::block, false, false, false, &bsp_pon_msg_ext_fields[2], 400, 0, -1, Source::none, Key::none, 0, "", {}, "400 bytes, read only: the ONU"},
};

constexpr Argument bsp_pon_onu_upgrade_ponport_arguments[] = {
    {"block", ArgumentType::block, false, false, false, &bsp_pon_msg_ext_fields[2], 400, 0, -1, Source::none, Key::none, 0, "", {}, "400 bytes, read only: the port"},
};

constexpr Argument bsp_pon_loop_detect_status_arguments[] = {
    {"state", ArgumentType::u8, false, false, false, &bsp_pon_msg_ext_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the state, the service's to define; sent as a word"},
};

constexpr Argument bsp_pon_loop_detect_recover_mode_arguments[] = {
    {"mode", ArgumentType::u8, false, false, false, &bsp_pon_msg_ext_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the mode, the service's to define; sent as a word"},
};

constexpr Argument bsp_pon_loop_detect_recover_time_arguments[] = {
    {"time", ArgumentType::u32, false, false, false, &bsp_pon_msg_ext_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the time, in the service's unit"},
};

constexpr Argument bsp_pon_loop_detect_pkt_send_interval_arguments[] = {
    {"interval", ArgumentType::u32, false, false, false, &bsp_pon_msg_ext_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the interval, in the service's unit"},
};

constexpr Argument bsp_pon_get_loop_detect_info_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_get_loop_detect_config_arguments[] = {
    {"cfg", ArgumentType::block_out, false, false, false, &bsp_pon_msg_ext_fields[2], 80, 0, -1, Source::none, Key::none, 0, "", {}, "room for 80 bytes, receives the settings"},
};

constexpr Argument bsp_debug_8022_pon_stats_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 160, 0, -1, Source::none, Key::none, 0, "", {}, "room for 160 bytes, receives the counters"},
};

constexpr Argument bsp_debug_8022_ge_stats_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 160, 0, -1, Source::none, Key::none, 0, "", {}, "room for 160 bytes, receives the counters"},
};

constexpr Argument bsp_debug_plat_ge_phy_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 20, 0, -1, Source::none, Key::none, 0, "", {}, "room for 20 bytes, receives the registers"},
};

constexpr Argument bsp_debug_plat_ingress_behavior_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"selector", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "which behaviour, the service's to define"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 54, 0, -1, Source::none, Key::none, 0, "", {}, "room for 54 bytes, receives the behaviour"},
};

constexpr Argument bsp_debug_plat_egress_behavior_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"selector", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "which behaviour, the service's to define"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 8, 0, -1, Source::none, Key::none, 0, "", {}, "room for 8 bytes, receives the behaviour"},
};

constexpr Argument bsp_debug_plat_pon_mac_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 36, 0, -1, Source::none, Key::none, 0, "", {}, "room for 36 bytes, receives the registers"},
};

constexpr Argument bsp_debug_plat_pon_phy_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 12, 0, -1, Source::none, Key::none, 0, "", {}, "room for 12 bytes, receives the registers"},
};

constexpr Argument bsp_debug_plat_pon_laser_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 4, 0, -1, Source::none, Key::none, 0, "", {}, "room for 4 bytes, receives the state"},
};

constexpr Argument bsp_debug_plat_ge_mac_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 22, 0, -1, Source::none, Key::none, 0, "", {}, "room for 22 bytes, receives the registers"},
};

constexpr Argument bsp_debug_plat_xaui_mac_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 28, 0, -1, Source::none, Key::none, 0, "", {}, "room for 28 bytes, receives the registers"},
};

constexpr Argument bsp_debug_plat_xaui_phy_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 12, 0, -1, Source::none, Key::none, 0, "", {}, "room for 12 bytes, receives the registers"},
};

constexpr Argument bsp_debug_plat_mgmt_cfg_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 4, 0, -1, Source::none, Key::none, 0, "", {}, "room for 4 bytes, receives the configuration"},
};

constexpr Argument bsp_debug_plat_ge_phy_set_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"value", ArgumentType::u8, false, false, false, &bsp_plat_msg_fields[10], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the setting, the service's to define; sent as one byte"},
};

constexpr Argument bsp_debug_8022_i2c_read_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"buf", ArgumentType::block_inout, false, false, false, &bsp_plat_msg_fields[10], 144, 0, -1, Source::none, Key::none, 0, "", {}, "144 bytes; in: what is to be read; out: what was answered"},
};

constexpr Argument bsp_debug_8022_i2c_write_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port or interface number"},
    {"spare", ArgumentType::u32, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "ignored"},
    {"buf", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 144, 0, -1, Source::none, Key::none, 0, "", {}, "144 bytes, read only: where to write, and what"},
};

constexpr Argument bsp_debug_cs8022_get_fdb_arguments[] = {
    {"selector", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "which entries, the service's to define"},
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "port number"},
};

constexpr Argument bsp_debug_ctc_oam_arguments[] = {
    {"first", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[8], 0, 0, -1, Source::none, Key::none, 0, "", {}, "first argument, the service's to define"},
    {"second", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "second argument, the service's to define"},
};

constexpr Argument bsp_debug_onu_debug_arguments[] = {
    {"first", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[8], 0, 0, -1, Source::none, Key::none, 0, "", {}, "first argument, the service's to define"},
    {"second", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "second argument, the service's to define"},
};

constexpr Argument bsp_debug_cs8022_set_arguments[] = {
    {"record", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1148 bytes with the command code in `plat_cmd`; not changed"},
};

constexpr Oddity bsp_debug_cs8022_get_odd[] = {{Facet::null, "a null pointer is logged at debug level"}};
constexpr Argument bsp_debug_cs8022_get_arguments[] = {
    {"record", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1148 bytes with the command code in `plat_cmd`; not changed"},
    {"resp", ArgumentType::response, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "room for 1148 bytes, receives the answer, a bsp_plat_msg"},
};

constexpr Argument bsp_debug_8022_mpcp_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"value", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "which parameters, the service's to define"},
    {"data", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 32, 0, -1, Source::none, Key::none, 0, "", {}, "32 bytes, read only: the parameters"},
};

constexpr Argument bsp_8022_deregister_onu_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_8022_deregister_onu_state_register_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
};

constexpr Argument bsp_pon_plat_fdb_cfg_set_arguments[] = {
    {"cfg", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 12, 0, -1, Source::none, Key::none, 0, "", {}, "12 bytes, read only: the configuration"},
};

constexpr Argument bsp_pon_plat_fdb_flush_arguments[] = {
    {"filter", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 16, 0, -1, Source::none, Key::none, 0, "", {}, "16 bytes, read only: which entries"},
};

constexpr Argument bsp_pon_plat_mac_age_get_arguments[] = {
    {"first", ArgumentType::u32_out, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first value, from offset 120 of the answer"},
    {"second", ArgumentType::u32_out, false, false, false, &bsp_plat_msg_fields[7], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the second value, from offset 112 of the answer"},
};

constexpr Argument bsp_pon_plat_mac_get_arguments[] = {
    {"query", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 92, 0, -1, Source::none, Key::none, 0, "", {}, "92 bytes, read only: which entries"},
    {"result", ArgumentType::u32_out, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the result word"},
};

constexpr Argument bsp_pon_plat_mac_nni_get_arguments[] = {
    {"query", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 92, 0, -1, Source::none, Key::none, 0, "", {}, "92 bytes, read only: which entries"},
    {"result", ArgumentType::u32_out, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the result word"},
};

constexpr Argument plat_bsp_funcset_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1148 bytes with the command code in `plat_cmd`; not changed"},
};

constexpr Argument plat_bsp_funcget_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "in: the request, 1148 bytes with the command code in `plat_cmd`; out: what the service answered, from the first byte on"},
};

constexpr Argument plat_bsp_funcget_json_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "in: the request, 1148 bytes with the command code in `plat_cmd`; out: what the service answered, from the first byte on"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database, under the command code that the answer carries"},
};

constexpr Argument bsp_poncfg_set_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 944 bytes with the command code in `cmd`; not changed"},
};

constexpr Argument bsp_poncfg_get_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "in: the request, 944 bytes with the command code in `cmd`; out: what the service answered, from the first byte on"},
};

constexpr Argument bsp_poncfg_funcget_json_arguments[] = {
    {"record", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "in: the request, 944 bytes with the command code in `cmd`; out: what the service answered, from the first byte on"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database, under the command code that the answer carries"},
};

constexpr Argument bsp_llid_behavior_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"llid", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "LLID"},
    {"behavior", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the behaviour, the service's to define"},
    {"params", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 24, 0, -1, Source::none, Key::none, 0, "", {}, "24 bytes, read only: its parameters"},
};

constexpr Argument bsp_om_opm_trigger_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"id", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "what is measured, the service's to define"},
    {"params", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 12, 0, -1, Source::none, Key::none, 0, "", {}, "12 bytes, read only: its parameters"},
};

constexpr Argument bsp_om_opm_cancel_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
};

constexpr Argument bsp_om_lao_mode_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"mode", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[7], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the mode, the service's to define"},
    {"params", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 12, 0, -1, Source::none, Key::none, 0, "", {}, "12 bytes, read only: its parameters"},
};

constexpr Argument bsp_om_lol_mode_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"id", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "second selector, the service's to define"},
    {"mode", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[7], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the mode, the service's to define"},
    {"params", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 8, 0, -1, Source::none, Key::none, 0, "", {}, "8 bytes, read only: its parameters"},
};

constexpr Argument bsp_om_plat_diag_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 56, 0, -1, Source::none, Key::none, 0, "", {}, "room for 56 bytes, receives the diagnostics"},
};

constexpr Argument bsp_om_plat_diag_rssi_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"id", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "second selector, the ONU as a rule"},
    {"sel", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "third selector, the service's to define"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 64, 0, -1, Source::none, Key::none, 0, "", {}, "room for 64 bytes, receives the reading"},
};

constexpr Argument bsp_sfp_diag_info_get_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "SFP cage number"},
    {"out", ArgumentType::block_out, false, false, false, &bsp_plat_msg_fields[10], 464, 0, -1, Source::none, Key::none, 0, "", {}, "room for 464 bytes, receives the information"},
};

constexpr Argument bsp_sfp_diag_info_get_json_arguments[] = {
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "SFP cage number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_debug_8022_optical_status_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"id", ArgumentType::u32, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "ignored"},
    {"status", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 32, 0, -1, Source::none, Key::none, 0, "", {}, "32 bytes, read only: the status"},
};

constexpr Argument bsp_p2p_state_set_arguments[] = {
    {"first", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "first argument, the service's to define"},
    {"second", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[4], 0, 0, -1, Source::none, Key::none, 0, "", {}, "second argument, the service's to define"},
    {"state", ArgumentType::u8, false, false, false, &bsp_plat_msg_fields[8], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the state, the service's to define; sent as a word"},
};

constexpr Argument bsp_onu_p2p_own_port_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"value", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[8], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the own port, the service's to define"},
};

constexpr Argument bsp_onu_p2p_own_port_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"value", ArgumentType::u32_out, false, false, false, &bsp_plat_msg_fields[8], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the own port"},
};

constexpr Argument bsp_pon_get_p2p_state_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, &bsp_plat_msg_fields[10], 0, 0, -1, Source::text, Key::none, 0, "", {}, "the result database"},
};

constexpr Argument bsp_p2p_entry_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"arg108", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "which traffic, the service's to define"},
    {"arg104", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "entry argument, the service's to define"},
    {"entry", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 12, 0, -1, Source::none, Key::none, 0, "", {}, "12 bytes, read only: the entry"},
};

constexpr Argument bsp_p2p_entry_set_matchall_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"arg104", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "entry argument, the service's to define"},
    {"entry", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 12, 0, -1, Source::none, Key::none, 0, "", {}, "12 bytes, read only: the entry"},
};

constexpr Argument bsp_p2p_cfg_set_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"arg108", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "configuration argument, the service's to define"},
    {"cfg", ArgumentType::block, false, false, false, &bsp_plat_msg_fields[10], 10, 0, -1, Source::none, Key::none, 0, "", {}, "10 bytes, read only: the configuration"},
};

constexpr Argument bsp_pon_onu_sla_config_arguments[] = {
    {"record", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the ONU and the SLA, 1148 bytes; its `plat_cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_onu_sla_down_config_arguments[] = {
    {"record", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the ONU and the SLA, 1148 bytes; its `plat_cmd` becomes the command code and stays so"},
};

constexpr Argument bsp_pon_onu_sla_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_plat_msg_fields[10], 20, 0, -1, Source::none, Key::none, 0, "", {}, "room for 20 bytes, receives the SLA"},
};

constexpr Argument bsp_pon_plat_onu_sla_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_plat_msg_fields[10], 20, 0, -1, Source::none, Key::none, 0, "", {}, "room for 20 bytes, receives the SLA"},
};

constexpr Argument bsp_pon_onu_sla_down_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_plat_msg_fields[10], 4, 0, -1, Source::none, Key::none, 0, "", {}, "room for 4 bytes, receives the SLA"},
};

constexpr Argument bsp_pon_onu_sla_all_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_plat_msg_fields[10], 20, 0, -1, Source::none, Key::none, 0, "", {}, "room for 20 bytes, receives the summary"},
};

constexpr Argument bsp_pon_onu_sla_get_web_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database, at most 10240 bytes"},
};

constexpr Argument bsp_pon_onu_sla_down_get_web_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database, at most 10240 bytes"},
};

constexpr Argument bsp_pon_onu_sla_get_snmp_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database, at most 10240 bytes"},
};

constexpr Argument bsp_pon_onu_get_uniobj_snmp_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_autoneg_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 4, 0, -1, Source::none, Key::none, 0, "", {}, "the state, 4 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_phy_adminstate_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 4, 0, -1, Source::none, Key::none, 0, "", {}, "the state, 4 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_classification_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 298, 0, -1, Source::none, Key::none, 0, "", {}, "the rules, 298 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_dev_info_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 8058, 0, -1, Source::none, Key::none, 0, "", {}, "the information; zeros behind the 1536 bytes that an answer holds, 8058 bytes"},
};

constexpr Argument bsp_pon_onu_get_max_port_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::u16_out, true, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the number, 0 to 255"},
};

constexpr Argument bsp_pon_onu_ctc_get_vlan_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 159, 0, -1, Source::none, Key::none, 0, "", {}, "the VLANs, 159 bytes"},
};

constexpr Argument bsp_pon_tk_onu_get_fw_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 64, 0, -1, Source::none, Key::none, 0, "", {}, "the banks, 64 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mem_info_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 8058, 0, -1, Source::none, Key::none, 0, "", {}, "the memory; zeros behind the 1536 bytes that an answer holds, 8058 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_rate_limit_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 22, 0, -1, Source::none, Key::none, 0, "", {}, "the limits, 22 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_loop_detect_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 8, 0, -1, Source::none, Key::none, 0, "", {}, "the state, 8 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mgmt_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 17, 0, -1, Source::none, Key::none, 0, "", {}, "the address, 17 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_linkstate_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::db, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::text, Key::none, 0, "filename=%s", {}, "the result database, made of the text in the answer"},
};

constexpr Argument bsp_pon_onu_ctc_get_eth_pause_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::u8_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the state"},
};

constexpr Argument bsp_pon_onu_ctc_get_fast_leave_ability_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 28, 4, -1, Source::none, Key::none, 0, "", {}, "its first 4 bytes stay, behind them the abilities go, 28 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_fast_leave_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 4, 0, -1, Source::none, Key::none, 0, "", {}, "the state, 4 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_fast_leave_local_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 32, 0, -1, Source::none, Key::none, 0, "", {}, "the state and the abilities, 32 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_switch_remote_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::u8_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the mode"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_switch_local_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::u8_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the mode"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_group_num_max_remote_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 2, 0, -1, Source::none, Key::none, 0, "", {}, "the number, 2 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_group_num_max_local_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 2, 0, -1, Source::none, Key::none, 0, "", {}, "the number, 2 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_vlan_mode_remote_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 34, 0, -1, Source::none, Key::none, 0, "", {}, "the tags, 34 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_vlan_mode_local_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 34, 0, -1, Source::none, Key::none, 0, "", {}, "the tags, 34 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_vlan_remote_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 18, 0, -1, Source::none, Key::none, 0, "", {}, "the VLANs, 18 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_vlan_local_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 16, 0, -1, Source::none, Key::none, 0, "", {}, "the VLANs, 16 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_group_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 1284, 0, -1, Source::none, Key::none, 0, "", {}, "the groups, 1284 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_sn_ponport_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_debug_get_arguments[] = {
    {"msg", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1888 bytes with the command code in `onu_cmd`; becomes the answer"},
};

constexpr Argument bsp_pon_onu_ctc_config_get_arguments[] = {
    {"msg", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1888 bytes with the command code in `onu_cmd`; becomes the answer"},
};

constexpr Argument bsp_pon_onu_optical_diagnose_get_arguments[] = {
    {"msg", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1888 bytes with `onu_pon_port` and `onu_onu_id`; its `onu_cmd` becomes the command code, and the whole of it the answer"},
};

constexpr Argument bsp_pon_onu_ctc_get_vlan_json_arguments[] = {
    {"result", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database, at most 10240 bytes"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_onu_ctc_get_vlan_mode_json_arguments[] = {
    {"result", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database, at most 10240 bytes"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_onu_ctc_get_info_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"cmd", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "command code"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first `out_len` bytes of the answer's data, zeros behind its 1536"},
    {"out_len", ArgumentType::length, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "bytes wanted"},
};

constexpr Argument bsp_pon_onu_ctc_set_info_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"cmd", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "command code"},
    {"data", ArgumentType::block, false, true, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "what to set"},
    {"data_len", ArgumentType::length, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "its length in bytes; up to 1536 are sent"},
};

constexpr Argument bsp_pon_onu_ctc_port_get_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"cmd", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "command code"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first `*out_len` bytes of the answer's data, zeros behind its 1536"},
    {"out_len", ArgumentType::length_at, false, false, false, nullptr, 0, 0, 4, Source::none, Key::none, 0, "", {}, "bytes wanted; only read"},
};

constexpr Argument bsp_pon_onu_ctc_get_sn_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 54, 0, -1, Source::none, Key::none, 0, "", {}, "its identity, 54 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_fw_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 128, 0, -1, Source::none, Key::none, 0, "", {}, "the version, 128 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_chipid_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 8, 0, -1, Source::none, Key::none, 0, "", {}, "the chipset, 8 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_cap_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 26, 0, -1, Source::none, Key::none, 0, "", {}, "the capabilities, 26 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_cap2_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 64, 0, -1, Source::none, Key::none, 0, "", {}, "the capabilities, 64 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_sla_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 88, 0, -1, Source::none, Key::none, 0, "", {}, "the agreement, 88 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_onuinfo_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 8058, 0, -1, Source::none, Key::none, 0, "", {}, "all about it; zeros behind the 1536 bytes that an answer holds, 8058 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_upgrade_status_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 20, 0, -1, Source::none, Key::none, 0, "", {}, "the state, 20 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_catv_status_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_onu_msg_fields[6], 1, 0, -1, Source::none, Key::none, 0, "", {}, "the state, 1 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_upgrade_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"data", ArgumentType::block, false, true, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the part"},
    {"data_len", ArgumentType::length, false, false, false, nullptr, 0, 0, 2, Source::none, Key::none, 0, "", {}, "its length in bytes; up to 1536 are sent"},
};

constexpr Argument bsp_pon_onu_ctc_upgrade_commit_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_onu_ctc_set_perf_monitor_status_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "not used: the request names no UNI port"},
    {"enable", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "1 on, 0 off"},
};

constexpr Argument bsp_pon_onu_ctc_set_catv_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"value", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "1 on, 0 off"},
};

constexpr Argument bsp_onu_ctc_get_autoneg_local_abt_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first `*out_len` bytes of the answer's data, zeros behind its 1536"},
    {"out_len", ArgumentType::length_at, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "bytes wanted; only read"},
};

constexpr Argument bsp_onu_ctc_get_autoneg_adv_abt_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first `*out_len` bytes of the answer's data, zeros behind its 1536"},
    {"out_len", ArgumentType::length_at, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "bytes wanted; only read"},
};

constexpr Argument bsp_onu_ctc_get_phyinfo_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first `*out_len` bytes of the answer's data, zeros behind its 1536"},
    {"out_len", ArgumentType::length_at, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "bytes wanted; only read"},
};

constexpr Argument bsp_onu_ctc_get_perf_monitor_status_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first `*out_len` bytes of the answer's data, zeros behind its 1536"},
    {"out_len", ArgumentType::length_at, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "bytes wanted; only read"},
};

constexpr Argument bsp_onu_ctc_get_perf_current_data_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first `*out_len` bytes of the answer's data, zeros behind its 1536"},
    {"out_len", ArgumentType::length_at, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "bytes wanted; only read"},
};

constexpr Argument bsp_onu_ctc_get_perf_history_data_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"uni_port", ArgumentType::u16, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number, of which the low 8 bits count"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the first `*out_len` bytes of the answer's data, zeros behind its 1536"},
    {"out_len", ArgumentType::length_at, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "bytes wanted; only read"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_config_json_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_onu_uni_ctc_get_mc_config_json_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_vlan_translate_json_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"byte_arg", ArgumentType::u8, false, false, false, &bsp_onu_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "UNI port number"},
};

constexpr Argument bsp_pon_onu_ctc_get_mc_vlan_json_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_onu_ctc_get_voipinfo_json_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
};

constexpr Argument bsp_pon_onu_get_fec_mode_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::u32_out, false, false, false, &bsp_onu_msg_fields[6], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the mode, into the first word"},
};

constexpr Argument bsp_pon_onuc_get_fec_ability_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::u32_out, false, false, false, &bsp_onu_msg_fields[6], 0, 4, -1, Source::none, Key::none, 0, "", {}, "the ability, into the second word; the first stays, so that a caller may keep mode and ability side by side"},
};

constexpr Argument bsp_pon_onu_ctc_get_time_config_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::block_out, true, false, false, &bsp_onu_msg_fields[6], 16, 0, -1, Source::none, Key::none, 0, "", {}, "the configuration, 16 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_get_wanc_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"index", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "number of the WAN connection"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_wlan_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_catv_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_acl_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_dhcp_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_wlantab_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_wanctab_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_catvtab_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_sipusertab_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_get_upgradestatus_json_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_ctc_debug_arguments[] = {
    {"msg", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1888 bytes with the command code in `onu_cmd`; not changed"},
};

constexpr Argument bsp_pon_onu_ctc_config_arguments[] = {
    {"msg", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1888 bytes with the command code in `onu_cmd`; not changed"},
};

constexpr Oddity bsp_pon_onu_alarm_more_test_odd[] = {{Facet::status, "0 after every exchange that succeeded, whatever the service's status word says"}};
constexpr Argument bsp_pon_onu_alarm_more_test_arguments[] = {
    {"msg", ArgumentType::record, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the request, 1888 bytes with the command code in `onu_cmd`; not changed"},
};

constexpr Argument bsp_pon_onu_ctc_oam_print_arguments[] = {
    {"value", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "what is printed; the service knows the values"},
};

constexpr Argument bsp_pon_onu_ctc_set_multillid_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"count", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[5], 0, 0, -1, Source::none, Key::none, 0, "", {}, "number of LLIDs"},
};

constexpr Argument bsp_pon_onu_ctc_update_image_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"image", ArgumentType::block, true, false, false, &bsp_onu_msg_fields[6], 260, 0, -1, Source::none, Key::none, 0, "", {}, "which image and where, 260 bytes"},
};

constexpr Argument bsp_pon_onu_ctc_set_mgmt_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"mgmt", ArgumentType::block, true, false, false, &bsp_onu_msg_fields[6], 17, 0, -1, Source::none, Key::none, 0, "", {}, "the address, 17 bytes as bsp_pon_onu_ctc_get_mgmt reads them"},
};

constexpr Argument bsp_pon_get_onu_optical_diag_by_pon_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_get_onu_optical_diag_data_all_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_get_onu_perf_stat_data_all_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_onu_get_configure_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"onu_id", ArgumentType::u32, false, false, false, &bsp_onu_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "ONU id on the port"},
    {"out", ArgumentType::u32_out, false, false, false, &bsp_onu_msg_fields[4], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the word"},
};

constexpr Argument bsp_pon_get_allonuinfo_arguments[] = {
    {"text_out", ArgumentType::text_out, false, true, false, &bsp_pon_msg_ext_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the text, at most 1023 characters and the NUL"},
};

constexpr Argument bsp_pon_get_port_info_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_pon_get_basic_info_arguments[] = {
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::request, 10240, "", {}, "the result database"},
};

constexpr Oddity bsp_pon_get_config_write_odd[] = {{Facet::null, "without `text_out` nothing is stored through `word_out` either"}};
constexpr Argument bsp_pon_get_config_write_arguments[] = {
    {"text_out", ArgumentType::text_out, false, true, false, &bsp_plat_msg_fields[10], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the text, at most 1023 characters and the NUL"},
    {"word_out", ArgumentType::u32_out, false, true, false, &bsp_plat_msg_fields[9], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the word"},
    {"port", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number, or what the service takes for all"},
    {"arg", ArgumentType::u32, false, false, false, &bsp_plat_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "what is wanted; the service knows the values"},
};

constexpr Constant bsp_profile_exec_get_constants[] = {{&bsp_profile_msg_fields[1], 1}};
constexpr Argument bsp_profile_exec_get_arguments[] = {
    {"action", ArgumentType::u32, false, false, false, &bsp_profile_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "action code; the service knows the values"},
    {"buf", ArgumentType::block_inout, false, true, false, &bsp_profile_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the payload, which the answer overwrites"},
    {"len", ArgumentType::length, false, false, false, nullptr, 0, 0, 1, Source::none, Key::none, 0, "", {}, "its length in bytes, at most 4092"},
};

constexpr Constant bsp_profile_exec_get__constants[] = {{&bsp_profile_msg_fields[1], 1}};
constexpr Oddity bsp_profile_exec_get__odd[] = {{Facet::answer, "delivered only where the status is 0, into `out` or else into `buf`"}};
constexpr Argument bsp_profile_exec_get__arguments[] = {
    {"action", ArgumentType::u32, false, false, false, &bsp_profile_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "action code; the service knows the values"},
    {"buf", ArgumentType::block_inout, false, true, false, &bsp_profile_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the payload, which the answer overwrites where there is no `out`"},
    {"len", ArgumentType::length, false, false, false, nullptr, 0, 0, 1, Source::none, Key::none, 0, "", {}, "its length in bytes, at most 4092"},
    {"out", ArgumentType::block_out, false, true, false, &bsp_profile_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives the answer; then `buf` is left alone"},
    {"out_len", ArgumentType::length, false, false, false, nullptr, 0, 0, 3, Source::none, Key::none, 0, "", {}, "bytes wanted"},
};

constexpr Constant bsp_profile_exec_get_json_constants[] = {{&bsp_profile_msg_fields[1], 1}};
constexpr Argument bsp_profile_exec_get_json_arguments[] = {
    {"action", ArgumentType::u32, false, false, false, &bsp_profile_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "action code; the service knows the values"},
    {"db_out", ArgumentType::db, false, false, false, &bsp_profile_msg_fields[3], 0, 0, -1, Source::file, Key::none, 0, "content filename:%s", {}, "the result database"},
};

constexpr Argument bsp_profile_exec_set_arguments[] = {
    {"action", ArgumentType::u32, false, false, false, &bsp_profile_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "action code; the service knows the values"},
    {"buf", ArgumentType::block, false, true, false, &bsp_profile_msg_fields[3], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the payload"},
    {"len", ArgumentType::length, false, false, false, nullptr, 0, 0, 1, Source::none, Key::none, 0, "", {}, "its length in bytes, at most 4092"},
};

constexpr Constant bsp_profile_exec_get_cfgwr_constants[] = {{&bsp_profile_msg_fields[1], 1}};
constexpr Oddity bsp_profile_exec_get_cfgwr_odd[] = {{Facet::answer, "a file that is read into a block of memory where the status is 0 and the file is not empty"}, {Facet::status, "the service's status word; BSP_ERR_NOMEM where there is no memory for the file, and what reading it failed with, both logged"}};
constexpr Argument bsp_profile_exec_get_cfgwr_arguments[] = {
    {"action", ArgumentType::u32, false, false, false, &bsp_profile_msg_fields[0], 0, 0, -1, Source::none, Key::none, 0, "", {}, "action code; the service knows the values"},
    {"data_out", ArgumentType::pblock_out, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives a block that the caller owns and releases with pfree; not written where the status is not 0 or the file is empty"},
    {"len_out", ArgumentType::u32_out, false, false, false, &bsp_profile_msg_fields[2], 0, 0, -1, Source::none, Key::none, 0, "", {}, "receives its length in bytes; not written where the block is not"},
};

constexpr Argument bsp_onu_ctc_set_cfg_arguments[] = {
    {"rec", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the configuration, 1888 bytes; its command becomes the command code and stays so"},
};

constexpr Argument bsp_pon_onu_ctc_set_oui_arguments[] = {
    {"oui", ArgumentType::block, true, false, false, &bsp_pon_msg_fields[13], 3, 0, -1, Source::none, Key::none, 0, "", {}, "the OUI, 3 bytes in transmission order"},
};

constexpr Argument bsp_pon_onu_ctc_add_loid_arguments[] = {
    {"rec", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port` and what the service takes for the LOID, 944 bytes; its command becomes the command code and stays so"},
};

constexpr Argument bsp_pon_onu_ctc_delete_loid_arguments[] = {
    {"rec", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "`pon_port` and what the service takes for the LOID, 944 bytes; its command becomes the command code and stays so"},
};

constexpr Argument bsp_pon_get_onu_loidlist_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 1048576, "", {}, "the result database"},
};

constexpr Argument bsp_pon_get_arptable_arguments[] = {
    {"pon_port", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "PON port number"},
    {"db_out", ArgumentType::db, false, false, false, &bsp_pon_msg_fields[13], 0, 0, -1, Source::file, Key::none, 0, "", {}, "the result database"},
};

constexpr Argument bsp_pon_prof_uni_set_arguments[] = {
    {"profile_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "number of the profile"},
    {"value", ArgumentType::u16, false, false, false, &bsp_pon_msg_fields[7], 0, 0, -1, Source::none, Key::none, 0, "", {}, "passed to the service with the profile"},
    {"body", ArgumentType::block, false, true, false, &bsp_pon_msg_fields[13], 0, 0, -1, Source::none, Key::none, 0, "", {}, "the profile"},
    {"body_len", ArgumentType::length, false, false, false, nullptr, 0, 0, 2, Source::none, Key::none, 0, "", {}, "its length in bytes; up to 515 are sent"},
};

constexpr Argument bsp_pon_prof_uni_get_arguments[] = {
    {"profile_id", ArgumentType::u32, false, false, false, &bsp_pon_msg_fields[1], 0, 0, -1, Source::none, Key::none, 0, "", {}, "number of the profile"},
    {"db_out", ArgumentType::db, false, false, false, nullptr, 0, 0, -1, Source::shmem, Key::command, 10240, "", {}, "the result database"},
};

constexpr Argument bsp_onu_ctc_set_portcfg_arguments[] = {
    {"rec", ArgumentType::record, true, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "the configuration, 1888 bytes; its command becomes the command code and stays so"},
};

constexpr Argument bsp_pon_onucfg_set_batch_arguments[] = {
    {"value", ArgumentType::u32, false, false, false, nullptr, 0, 0, -1, Source::none, Key::none, 0, "", {}, "not used: the request is all zero"},
};

constexpr Operation all_operations[] = {
    {"bsp_pon_onu_auth_mode_type_set", "Authentication, confirmation and description", "Sets the authentication mode of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[13], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_auth_mode_type_set", {}, {}, bsp_pon_onu_auth_mode_type_set_arguments},
    {"bsp_pon_onu_auth_set", "Authentication, confirmation and description", "Sets the authentication of a PON port from a record that the caller built.", "",
     &all_channels[0], &all_records[0], &all_commands[13], Class::service_affecting, Call::set, Failure::report,
     Request::copied, Answer::none, nullptr, 0, 0, "bsp_pon_onu_auth_set", {}, {}, bsp_pon_onu_auth_set_arguments},
    {"bsp_pon_onu_auth_mode_type_get", "Authentication, confirmation and description", "Asks for the authentication mode of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[14], Class::read, Call::get, Failure::report,
     Request::built, Answer::caller, &all_records[0], 944, 944, "bsp_pon_onu_auth_mode_type_get", {}, {}, bsp_pon_onu_auth_mode_type_get_arguments},
    {"bsp_pon_onu_auth_infolist_get", "Authentication, confirmation and description", "Asks for the authentication records as a result database of at most 10240 bytes.", "",
     &all_channels[0], &all_records[0], &all_commands[15], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_onu_auth_infolist_get", {}, {}, bsp_pon_onu_auth_infolist_get_arguments},
    {"bsp_pon_confirm_onu", "Authentication, confirmation and description", "Confirms an ONU that waits.", "Of the record, `onu_id` is sent where it is not 0 and otherwise `onu_mac`, never both; further `arg_byte16` and `arg_word36`.",
     &all_channels[0], &all_records[0], &all_commands[16], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_confirm_onu", {}, bsp_pon_confirm_onu_odd, bsp_pon_confirm_onu_arguments},
    {"bsp_pon_onu_description", "Authentication, confirmation and description", "Describes a bound ONU in a text.", "",
     &all_channels[0], &all_records[0], &all_commands[34], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_description", {}, {}, bsp_pon_onu_description_arguments},
    {"bsp_pon_cfg", "ONU binding and unbinding", "Sends a free-form PON configuration command.", "",
     &all_channels[0], &all_records[0], nullptr, Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_cfg", {}, {}, bsp_pon_cfg_arguments},
    {"bsp_ponmsg_cfg_set", "ONU binding and unbinding", "Sends a record that the caller built, as it stands, as a PON configuration command.", "",
     &all_channels[0], &all_records[0], nullptr, Class::write, Call::set, Failure::report,
     Request::as_is, Answer::none, nullptr, 0, 0, "bsp_ponmsg_cfg_set", {}, {}, bsp_ponmsg_cfg_set_arguments},
    {"bsp_pon_bind_onu_auto_id", "ONU binding and unbinding", "Binds an ONU, named by its MAC address, to an ONU id that the service picks.", "The first text goes to the later field of the record: the order of the texts is that of the arguments, not of the record.",
     &all_channels[0], &all_records[0], &all_commands[1], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_bind_onu_auto_id", {}, {}, bsp_pon_bind_onu_auto_id_arguments},
    {"bsp_pon_onu_support_set", "ONU binding and unbinding", "Sets whether an ONU, named by its MAC address, is supported.", "",
     &all_channels[0], &all_records[0], &all_commands[53], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_support_set", {}, {}, bsp_pon_onu_support_set_arguments},
    {"bsp_pon_bind_onu_spec_id", "ONU binding and unbinding", "Binds an ONU, named by its MAC address, to a given ONU id.", "The first text goes to the later field of the record: the order of the texts is that of the arguments, not of the record.",
     &all_channels[0], &all_records[0], &all_commands[2], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_bind_onu_spec_id", {}, {}, bsp_pon_bind_onu_spec_id_arguments},
    {"bsp_pon_no_bind_onu_spec_id", "ONU binding and unbinding", "Releases the binding of one ONU, named by its ONU id.", "",
     &all_channels[0], &all_records[0], &all_commands[3], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_no_bind_onu_spec_id", {}, {}, bsp_pon_no_bind_onu_spec_id_arguments},
    {"bsp_pon_no_bind_onu_spec_id_and_mac", "ONU binding and unbinding", "Releases the binding of one ONU, named by its ONU id and its MAC address.", "Unlike in bsp_pon_no_bind_onu_by_mac, the MAC pointer is not checked: it must be valid.",
     &all_channels[0], &all_records[0], &all_commands[3], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_no_bind_onu_spec_id_and_mac", {}, {}, bsp_pon_no_bind_onu_spec_id_and_mac_arguments},
    {"bsp_pon_no_bind_onu_by_mac", "ONU binding and unbinding", "Releases the binding of one ONU, named by its MAC address.", "",
     &all_channels[0], &all_records[0], &all_commands[3], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_no_bind_onu_by_mac", {}, {}, bsp_pon_no_bind_onu_by_mac_arguments},
    {"bsp_pon_no_bind_onu_all", "ONU binding and unbinding", "Releases all bindings of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[6], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_no_bind_onu_all", {}, {}, bsp_pon_no_bind_onu_all_arguments},
    {"bsp_pon_no_bind_offline_onu_all", "ONU binding and unbinding", "Releases the bindings of all offline ONUs of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[7], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_no_bind_offline_onu_all", {}, {}, bsp_pon_no_bind_offline_onu_all_arguments},
    {"bsp_pon_no_bind_onu_batch_spec_id", "ONU binding and unbinding", "Releases a batch of bindings.", "",
     &all_channels[0], &all_records[0], &all_commands[4], Class::service_affecting, Call::set, Failure::report,
     Request::copied, Answer::none, nullptr, 0, 0, "bsp_pon_no_bind_onu_batch_spec_id", {}, {}, bsp_pon_no_bind_onu_batch_spec_id_arguments},
    {"bsp_pon_reboot_onu_batch", "ONU binding and unbinding", "Reboots a batch of ONUs.", "",
     &all_channels[0], &all_records[0], &all_commands[5], Class::service_affecting, Call::set, Failure::report,
     Request::copied, Answer::none, nullptr, 0, 0, "bsp_pon_reboot_onu_batch", {}, {}, bsp_pon_reboot_onu_batch_arguments},
    {"bsp_pon_onu_batch_sort", "ONU binding and unbinding", "Re-sorts a batch of ONUs.", "",
     &all_channels[0], &all_records[0], &all_commands[50], Class::service_affecting, Call::set, Failure::report,
     Request::copied, Answer::none, nullptr, 0, 0, "bsp_pon_onu_batch_sort", {}, {}, bsp_pon_onu_batch_sort_arguments},
    {"bsp_pon_set_opt_range", "ONU binding and unbinding", "Sets the optical ranging limits.", "",
     &all_channels[0], &all_records[0], &all_commands[51], Class::write, Call::set, Failure::report,
     Request::copied, Answer::none, nullptr, 0, 0, "bsp_pon_set_opt_range", {}, {}, bsp_pon_set_opt_range_arguments},
    {"bsp_pon_blacklist_add_onu_auto_id", "Whitelist and blacklist", "Puts an ONU, named by its MAC address, on the blacklist; the service picks the id there.", "",
     &all_channels[0], &all_records[0], &all_commands[8], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_blacklist_add_onu_auto_id", {}, {}, bsp_pon_blacklist_add_onu_auto_id_arguments},
    {"bsp_pon_reject_onu_to_blacklist", "Whitelist and blacklist", "Puts the ONU that is bound to an ONU id on the blacklist.", "",
     &all_channels[0], &all_records[0], &all_commands[9], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_reject_onu_to_blacklist", {}, {}, bsp_pon_reject_onu_to_blacklist_arguments},
    {"bsp_pon_reject_onu_to_blacklist_batch", "Whitelist and blacklist", "Puts a batch of ONUs on the blacklist.", "",
     &all_channels[0], &all_records[0], &all_commands[10], Class::service_affecting, Call::set, Failure::report,
     Request::copied, Answer::none, nullptr, 0, 0, "bsp_pon_reject_onu_to_blacklist_batch", {}, {}, bsp_pon_reject_onu_to_blacklist_batch_arguments},
    {"bsp_pon_no_bind_blacklist_onu_by_mac", "Whitelist and blacklist", "Takes an ONU, named by its MAC address, off the blacklist.", "",
     &all_channels[0], &all_records[0], &all_commands[11], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_no_bind_blacklist_onu_by_mac", {}, {}, bsp_pon_no_bind_blacklist_onu_by_mac_arguments},
    {"bsp_pon_no_bind_blacklist_batch", "Whitelist and blacklist", "Takes a batch of ONUs off the blacklist.", "Unlike bsp_pon_reject_onu_to_blacklist_batch, it sends the caller's own record.",
     &all_channels[0], &all_records[0], &all_commands[12], Class::service_affecting, Call::set, Failure::report,
     Request::stamped, Answer::none, nullptr, 0, 0, "bsp_pon_no_bind_blacklist_batch", {}, {}, bsp_pon_no_bind_blacklist_batch_arguments},
    {"bsp_pon_get_w_onu_spec_id", "Whitelist and blacklist", "Looks up one ONU of the whitelist, named by its ONU id.", "",
     &all_channels[0], &all_records[0], &all_commands[17], Class::read, Call::get, Failure::report,
     Request::built, Answer::caller, &all_records[0], 776, 776, "bsp_pon_get_w_onu_spec_id", {}, {}, bsp_pon_get_w_onu_spec_id_arguments},
    {"bsp_pon_get_w_onu_by_mac", "Whitelist and blacklist", "Looks up one ONU of the whitelist, named by its MAC address.", "",
     &all_channels[0], &all_records[0], &all_commands[17], Class::read, Call::get, Failure::report,
     Request::built, Answer::caller, &all_records[0], 776, 776, "bsp_pon_get_w_onu_by_mac", {}, {}, bsp_pon_get_w_onu_by_mac_arguments},
    {"bsp_pon_get_w_onu_id_resouce", "Whitelist and blacklist", "Asks which ONU ids of a port are in use on the whitelist.", "",
     &all_channels[0], &all_records[0], &all_commands[26], Class::read, Call::get, Failure::report,
     Request::built, Answer::caller, &all_records[0], 944, 944, "bsp_pon_get_w_onu_id_resouce", {}, {}, bsp_pon_get_w_onu_id_resouce_arguments},
    {"bsp_pon_get_b_onu_id_resouce", "Whitelist and blacklist", "Asks which ids of a port are in use on the blacklist.", "",
     &all_channels[0], &all_records[0], &all_commands[30], Class::read, Call::get, Failure::report,
     Request::built, Answer::caller, &all_records[0], 944, 944, "bsp_pon_get_b_onu_id_resouce", {}, {}, bsp_pon_get_b_onu_id_resouce_arguments},
    {"bsp_pon_get_onu_blacklist", "Whitelist and blacklist", "Asks for the blacklist, as the caller's record selects it, as a result database of at most 1048576 bytes.", "",
     &all_channels[0], &all_records[0], &all_commands[27], Class::read, Call::get, Failure::report,
     Request::stamped, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_get_onu_blacklist", {}, {}, bsp_pon_get_onu_blacklist_arguments},
    {"bsp_pon_get_b_onu_spec_id", "Whitelist and blacklist", "Asks for one ONU of the blacklist, named by its id there, as a result database of at most 1048576 bytes.", "",
     &all_channels[0], &all_records[0], &all_commands[27], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_get_b_onu_spec_id", {}, {}, bsp_pon_get_b_onu_spec_id_arguments},
    {"bsp_pon_get_b_onu_by_mac", "Whitelist and blacklist", "Asks for one ONU of the blacklist, named by its MAC address, as a result database of at most 1048576 bytes.", "",
     &all_channels[0], &all_records[0], &all_commands[27], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 1044, 776, "bsp_pon_get_b_onu_by_mac", {}, {}, bsp_pon_get_b_onu_by_mac_arguments},
    {"bsp_pon_get_onu_blacklist_snmp", "Whitelist and blacklist", "Asks for the blacklist of the whole OLT, for the SNMP agent.", "",
     &all_channels[0], &all_records[0], &all_commands[28], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_onu_blacklist_snmp_arguments},
    {"bsp_pon_get_onu_blacklist_web", "Whitelist and blacklist", "Asks for the blacklist of a PON port, for the web server.", "",
     &all_channels[0], &all_records[0], &all_commands[29], Class::read, Call::get, Failure::report,
     Request::stamped, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_onu_blacklist_web_arguments},
    {"bsp_pon_exec_get", "Generic pass-through", "Sends a record that the caller built and takes the answer in the same record.", "",
     &all_channels[0], &all_records[0], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::in_place, &all_records[0], 944, 944, "bsp_pon_exec_get", {}, {}, bsp_pon_exec_get_arguments},
    {"bsp_pon_exec_set", "Generic pass-through", "Sends a record that the caller built, as it stands.", "",
     &all_channels[0], &all_records[0], nullptr, Class::write, Call::set, Failure::report,
     Request::as_is, Answer::none, nullptr, 0, 0, "bsp_pon_exec_set", {}, {}, bsp_pon_exec_set_arguments},
    {"bsp_pon_exec_get_json", "Generic pass-through", "Asks for a small view of a PON port, at most 10240 bytes, as a result database.", "Differs from bsp_pon_exec_get_json_ in the bound alone.",
     &all_channels[0], &all_records[0], nullptr, Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 0, "bsp_pon_exec_get_json", {}, {}, bsp_pon_exec_get_json_arguments},
    {"bsp_pon_exec_get_json_", "Generic pass-through", "Asks for a large view of a PON port, at most 1048576 bytes, as a result database.", "Differs from bsp_pon_exec_get_json in the bound alone.",
     &all_channels[0], &all_records[0], nullptr, Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 0, "bsp_pon_exec_get_json_", {}, {}, bsp_pon_exec_get_json__arguments},
    {"bsp_pon_exec_get_file", "Generic pass-through", "Asks for a view of a PON port that the service leaves in a file, and returns the file's name.", "The file is the caller's to remove.",
     &all_channels[0], &all_records[0], nullptr, Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 0, "bsp_pon_exec_get_file", {}, {}, bsp_pon_exec_get_file_arguments},
    {"bsp_pon_exec_get_onu_json", "Generic pass-through", "Asks for a large view of one ONU, at most 1048576 bytes, as a result database.", "",
     &all_channels[0], &all_records[0], nullptr, Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 0, "bsp_pon_exec_get_onu_json", {}, {}, bsp_pon_exec_get_onu_json_arguments},
    {"bsp_pon_config_by_db", "Stored views", "Asks for a view of the PON channel, at most 1048576 bytes, by a record that the caller built.", "",
     &all_channels[0], &all_records[0], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_config_by_db_arguments},
    {"bsp_pononu_ctc_config_by_db", "Stored views", "Asks for a view of remote-ONU configuration, at most 10240 bytes, by a record that the caller built.", "",
     &all_channels[4], &all_records[3], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::own, &all_records[3], 1044, 1044, "bsp_pononu_ctc_config_by_db", {}, {}, bsp_pononu_ctc_config_by_db_arguments},
    {"bsp_pon_platform_by_db", "Stored views", "Asks for a view of the OLT's platform, at most 10240 bytes, by a record that the caller built.", "",
     &all_channels[5], &all_records[2], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::own, &all_records[2], 1044, 1044, "bsp_pon_platform_by_db", {}, {}, bsp_pon_platform_by_db_arguments},
    {"bsp_pon_get_onu_info", "Stored views", "Asks for ONU information, by datagram, as a result database of at most 1048576 bytes.", "",
     &all_channels[0], &all_records[0], &all_commands[18], Class::read, Call::dgram_get, Failure::report,
     Request::stamped, Answer::own, &all_records[0], 944, 944, "bsp_pon_get_onu_info", {}, {}, bsp_pon_get_onu_info_arguments},
    {"bsp_pon_get_onu_info_snmp", "Stored views", "Asks for ONU information of the whole OLT, for the SNMP agent.", "",
     &all_channels[0], &all_records[0], &all_commands[19], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_onu_info_snmp_arguments},
    {"bsp_pon_get_onu_info_web", "Stored views", "Asks for ONU information of a PON port, for the web server.", "",
     &all_channels[0], &all_records[0], &all_commands[20], Class::read, Call::get, Failure::report,
     Request::stamped, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_onu_info_web_arguments},
    {"bsp_pon_get_onu_cap_snmp", "Stored views", "Asks for the capabilities of the bound ONUs of the whole OLT, for the SNMP agent.", "",
     &all_channels[0], &all_records[0], &all_commands[21], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_onu_cap_snmp_arguments},
    {"bsp_pon_get_base_info_web", "Stored views", "Asks for base information of the OLT's PON ports, for the web server.", "",
     &all_channels[0], &all_records[0], &all_commands[22], Class::read, Call::get, Failure::report,
     Request::stamped, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_base_info_web_arguments},
    {"bsp_pon_get_upgrade_base_info_web", "Stored views", "Asks for what an upgrade must know of the bound ONUs of a PON port, for the web server.", "",
     &all_channels[0], &all_records[0], &all_commands[23], Class::read, Call::get, Failure::report,
     Request::stamped, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_upgrade_base_info_web_arguments},
    {"bsp_pon_get_onu_alarm", "Stored views", "Asks for alarms of ONUs.", "",
     &all_channels[0], &all_records[0], &all_commands[24], Class::read, Call::get, Failure::report,
     Request::stamped, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_onu_alarm_arguments},
    {"bsp_pon_clear_onu_alarm", "Stored views", "Clears alarms of ONUs.", "",
     &all_channels[0], &all_records[0], &all_commands[25], Class::write, Call::set, Failure::pass,
     Request::stamped, Answer::none, nullptr, 0, 0, "bsp_pon_clear_onu_alarm", {}, {}, bsp_pon_clear_onu_alarm_arguments},
    {"bsp_pon_get_uni_attribute_snmp", "Stored views", "Asks for the attributes of the UNI ports of the whole OLT, for the SNMP agent.", "",
     &all_channels[0], &all_records[0], &all_commands[31], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_config_by_db", {}, {}, bsp_pon_get_uni_attribute_snmp_arguments},
    {"bsp_pon_onu_get_cfg_info", "Stored views", "Asks for the configuration of one ONU, which comes as a text in the answer, as a result database.", "",
     &all_channels[4], &all_records[3], &all_commands[169], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[1], 1888, 0, "bsp_pon_onu_get_cfg_info", {}, bsp_pon_onu_get_cfg_info_odd, bsp_pon_onu_get_cfg_info_arguments},
    {"bsp_pon_onu_get_portcfg_info", "Stored views", "Asks for the configuration of the UNI ports of one ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[170], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1044, 1044, "bsp_pononu_ctc_config_by_db", {}, {}, bsp_pon_onu_get_portcfg_info_arguments},
    {"bsp_pononu_ctc_config_snmp_get", "Stored views", "Has a view of remote ONUs prepared for the SNMP agent. Its result is taken, at most 10240 bytes, and dropped: only the status reaches the caller.", "",
     &all_channels[7], &all_records[3], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::own, &all_records[3], 1888, 1888, "bsp_pononu_ctc_config_snmp_get", {}, {}, bsp_pononu_ctc_config_snmp_get_arguments},
    {"bsp_pon_onu_get_vlan_mode_snmp", "Stored views", "Has the VLAN modes of UNI ports prepared for the SNMP agent; only the status reaches the caller.", "",
     &all_channels[7], &all_records[3], &all_commands[216], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pononu_ctc_config_snmp_get", {}, {}, bsp_pon_onu_get_vlan_mode_snmp_arguments},
    {"bsp_pon_onu_get_vlanlist_snmp", "Stored views", "Has the VLANs of UNI ports prepared for the SNMP agent; only the status reaches the caller.", "",
     &all_channels[7], &all_records[3], &all_commands[217], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pononu_ctc_config_snmp_get", {}, {}, bsp_pon_onu_get_vlanlist_snmp_arguments},
    {"bsp_pon_set_onu_upgrade_type_add", "Upgrade types and upgrade runs", "Adds an upgrade type: which firmware goes to which kind of ONU.", "",
     &all_channels[8], &all_records[1], &all_commands[218], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_set_onu_upgrade_type_add", {}, {}, bsp_pon_set_onu_upgrade_type_add_arguments},
    {"bsp_pon_set_onu_upgrade_type_del", "Upgrade types and upgrade runs", "Deletes an upgrade type.", "",
     &all_channels[8], &all_records[1], &all_commands[219], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_set_onu_upgrade_type_del", {}, {}, bsp_pon_set_onu_upgrade_type_del_arguments},
    {"bsp_pon_get_onu_upgrade_type", "Upgrade types and upgrade runs", "Asks for the upgrade types as a result database of at most 10240 bytes.", "",
     &all_channels[8], &all_records[1], &all_commands[220], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[1], 1044, 1044, "bsp_pon_get_onu_upgrade_type", {}, {}, bsp_pon_get_onu_upgrade_type_arguments},
    {"bsp_pon_load_onu_upgrade_type_file", "Upgrade types and upgrade runs", "Loads the upgrade types from a file.", "",
     &all_channels[8], &all_records[1], &all_commands[221], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_load_onu_upgrade_type_file", {}, {}, bsp_pon_load_onu_upgrade_type_file_arguments},
    {"bsp_pon_onu_upgrade_type_bind_some", "Upgrade types and upgrade runs", "Binds an upgrade type to some ONUs.", "",
     &all_channels[8], &all_records[1], &all_commands[222], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_upgrade_type_bind_some", {}, {}, bsp_pon_onu_upgrade_type_bind_some_arguments},
    {"bsp_pon_onu_upgrade_type_bind_ponport", "Upgrade types and upgrade runs", "Binds an upgrade type to the ONUs of a PON port.", "",
     &all_channels[8], &all_records[1], &all_commands[223], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_upgrade_type_bind_ponport", {}, {}, bsp_pon_onu_upgrade_type_bind_ponport_arguments},
    {"bsp_pon_onu_upgrade_one", "Upgrade types and upgrade runs", "Starts the upgrade of one ONU.", "",
     &all_channels[8], &all_records[1], &all_commands[224], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_upgrade_one", {}, {}, bsp_pon_onu_upgrade_one_arguments},
    {"bsp_pon_onu_upgrade_ponport", "Upgrade types and upgrade runs", "Starts the upgrade of the ONUs of a PON port.", "",
     &all_channels[8], &all_records[1], &all_commands[225], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_upgrade_ponport", {}, {}, bsp_pon_onu_upgrade_ponport_arguments},
    {"bsp_pon_loop_detect_status", "Loop detection", "Switches loop detection on or off.", "",
     &all_channels[10], &all_records[1], &all_commands[228], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_loop_detect_status", {}, {}, bsp_pon_loop_detect_status_arguments},
    {"bsp_pon_loop_detect_recover_mode", "Loop detection", "Sets how ports that a loop shut down recover.", "",
     &all_channels[10], &all_records[1], &all_commands[229], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_loop_detect_recover_mode", {}, {}, bsp_pon_loop_detect_recover_mode_arguments},
    {"bsp_pon_loop_detect_recover_manual", "Loop detection", "Recovers the ports that a loop shut down, now.", "",
     &all_channels[10], &all_records[1], &all_commands[230], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_loop_detect_recover_manual", {}, {}, {}},
    {"bsp_pon_loop_detect_recover_time", "Loop detection", "Sets after which time ports that a loop shut down recover.", "",
     &all_channels[10], &all_records[1], &all_commands[231], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_loop_detect_recover_time", {}, {}, bsp_pon_loop_detect_recover_time_arguments},
    {"bsp_pon_loop_detect_pkt_send_interval", "Loop detection", "Sets the interval between detection packets.", "",
     &all_channels[10], &all_records[1], &all_commands[232], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_loop_detect_pkt_send_interval", {}, {}, bsp_pon_loop_detect_pkt_send_interval_arguments},
    {"bsp_pon_get_loop_detect_info", "Loop detection", "Asks what loop detection has found, as a result database of at most 10240 bytes.", "",
     &all_channels[10], &all_records[1], &all_commands[233], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[1], 1044, 1044, "bsp_pon_get_loop_detect_info", {}, {}, bsp_pon_get_loop_detect_info_arguments},
    {"bsp_pon_get_loop_detect_config", "Loop detection", "Asks for the settings of loop detection.", "",
     &all_channels[10], &all_records[1], &all_commands[234], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[1], 1044, 1044, "bsp_pon_get_loop_detect_config", {}, {}, bsp_pon_get_loop_detect_config_arguments},
    {"bsp_debug_8022_pon_stats", "Chip debug and statistics", "Reads the counters of a PON port.", "",
     &all_channels[2], &all_records[2], &all_commands[75], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_8022_pon_stats", {}, {}, bsp_debug_8022_pon_stats_arguments},
    {"bsp_debug_8022_ge_stats", "Chip debug and statistics", "Reads the counters of a GE port.", "",
     &all_channels[2], &all_records[2], &all_commands[76], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_8022_ge_stats", {}, {}, bsp_debug_8022_ge_stats_arguments},
    {"bsp_debug_plat_ge_phy_get", "Chip debug and statistics", "Reads the PHY of a GE port.", "",
     &all_channels[2], &all_records[2], &all_commands[77], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_ge_phy_get", {}, {}, bsp_debug_plat_ge_phy_get_arguments},
    {"bsp_debug_plat_ingress_behavior_get", "Chip debug and statistics", "Reads the ingress behaviour of a port.", "",
     &all_channels[2], &all_records[2], &all_commands[79], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_ingress_behavior_get", {}, {}, bsp_debug_plat_ingress_behavior_get_arguments},
    {"bsp_debug_plat_egress_behavior_get", "Chip debug and statistics", "Reads the egress behaviour of a port.", "",
     &all_channels[2], &all_records[2], &all_commands[80], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_egress_behavior_get", {}, {}, bsp_debug_plat_egress_behavior_get_arguments},
    {"bsp_debug_plat_pon_mac_get", "Chip debug and statistics", "Reads the MAC of a PON port.", "",
     &all_channels[2], &all_records[2], &all_commands[81], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_pon_mac_get", {}, {}, bsp_debug_plat_pon_mac_get_arguments},
    {"bsp_debug_plat_pon_phy_get", "Chip debug and statistics", "Reads the PHY of a PON port.", "",
     &all_channels[2], &all_records[2], &all_commands[82], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_pon_phy_get", {}, {}, bsp_debug_plat_pon_phy_get_arguments},
    {"bsp_debug_plat_pon_laser_get", "Chip debug and statistics", "Reads the laser state of a PON port.", "",
     &all_channels[2], &all_records[2], &all_commands[83], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_pon_laser_get", {}, {}, bsp_debug_plat_pon_laser_get_arguments},
    {"bsp_debug_plat_ge_mac_get", "Chip debug and statistics", "Reads the MAC of a GE port.", "",
     &all_channels[2], &all_records[2], &all_commands[84], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_ge_mac_get", {}, {}, bsp_debug_plat_ge_mac_get_arguments},
    {"bsp_debug_plat_xaui_mac_get", "Chip debug and statistics", "Reads the MAC of a XAUI interface.", "",
     &all_channels[2], &all_records[2], &all_commands[85], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_xaui_mac_get", {}, {}, bsp_debug_plat_xaui_mac_get_arguments},
    {"bsp_debug_plat_xaui_phy_get", "Chip debug and statistics", "Reads the PHY of a XAUI interface.", "",
     &all_channels[2], &all_records[2], &all_commands[86], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_xaui_phy_get", {}, {}, bsp_debug_plat_xaui_phy_get_arguments},
    {"bsp_debug_plat_mgmt_cfg_get", "Chip debug and statistics", "Reads the configuration of a management port.", "",
     &all_channels[2], &all_records[2], &all_commands[90], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_plat_mgmt_cfg_get", {}, {}, bsp_debug_plat_mgmt_cfg_get_arguments},
    {"bsp_debug_plat_ge_phy_set", "Chip debug and statistics", "Sets the PHY of a GE port.", "",
     &all_channels[2], &all_records[2], &all_commands[78], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_debug_plat_ge_phy_set", {}, {}, bsp_debug_plat_ge_phy_set_arguments},
    {"bsp_debug_8022_i2c_read", "Chip debug and statistics", "Reads bytes from the I2C bus of a port.", "",
     &all_channels[2], &all_records[2], &all_commands[87], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_debug_8022_i2c_read", {}, {}, bsp_debug_8022_i2c_read_arguments},
    {"bsp_debug_8022_i2c_write", "Chip debug and statistics", "Writes bytes to the I2C bus of a port.", "",
     &all_channels[2], &all_records[2], &all_commands[88], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_debug_8022_i2c_write", {}, {}, bsp_debug_8022_i2c_write_arguments},
    {"bsp_debug_cs8022_get_fdb", "Chip debug and statistics", "Has the chip's forwarding database dumped; nothing but the status comes back.", "The selector comes before the port.",
     &all_channels[2], &all_records[2], &all_commands[89], Class::read, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_debug_cs8022_get_fdb", {}, {}, bsp_debug_cs8022_get_fdb_arguments},
    {"bsp_debug_ctc_oam", "Chip debug and statistics", "Switches debug output of CTC OAM.", "",
     &all_channels[2], &all_records[2], &all_commands[91], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_debug_ctc_oam", {}, {}, bsp_debug_ctc_oam_arguments},
    {"bsp_debug_onu_debug", "Chip debug and statistics", "Switches debug output of ONUs.", "",
     &all_channels[2], &all_records[2], &all_commands[92], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_debug_onu_debug", {}, {}, bsp_debug_onu_debug_arguments},
    {"bsp_debug_cs8022_set", "Chip debug and statistics", "Sends a record that the caller built, as it stands, to the chip's debug service.", "",
     &all_channels[2], &all_records[2], nullptr, Class::write, Call::set, Failure::report,
     Request::as_is, Answer::none, nullptr, 0, 0, "bsp_debug_cs8022_set", {}, {}, bsp_debug_cs8022_set_arguments},
    {"bsp_debug_cs8022_get", "Chip debug and statistics", "Sends a record that the caller built, as it stands, to the chip's debug service, and takes the answer.", "A null pointer is logged at debug level.",
     &all_channels[2], &all_records[2], nullptr, Class::read, Call::get, Failure::pass,
     Request::as_is, Answer::caller, &all_records[2], 1148, 1148, "bsp_debug_cs8022_get", {}, bsp_debug_cs8022_get_odd, bsp_debug_cs8022_get_arguments},
    {"bsp_debug_8022_mpcp_set", "Chip debug and statistics", "Sets MPCP parameters of a PON port.", "",
     &all_channels[5], &all_records[2], &all_commands[183], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_debug_8022_mpcp_set", {}, {}, bsp_debug_8022_mpcp_set_arguments},
    {"bsp_8022_deregister_onu", "Chip debug and statistics", "Deregisters an ONU.", "",
     &all_channels[5], &all_records[2], &all_commands[185], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_8022_deregister_onu", {}, {}, bsp_8022_deregister_onu_arguments},
    {"bsp_8022_deregister_onu_state_register", "Chip debug and statistics", "Deregisters the ONUs of a PON port and has them register again.", "",
     &all_channels[5], &all_records[2], &all_commands[186], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_8022_deregister_onu_state_register", {}, {}, bsp_8022_deregister_onu_state_register_arguments},
    {"bsp_pon_plat_fdb_cfg_set", "FDB and MAC tables", "Configures the FDB.", "",
     &all_channels[5], &all_records[2], &all_commands[206], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_plat_fdb_cfg_set", {}, {}, bsp_pon_plat_fdb_cfg_set_arguments},
    {"bsp_pon_plat_fdb_flush", "FDB and MAC tables", "Flushes entries of the FDB.", "",
     &all_channels[5], &all_records[2], &all_commands[207], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_plat_fdb_flush", {}, {}, bsp_pon_plat_fdb_flush_arguments},
    {"bsp_pon_plat_mac_age_get", "FDB and MAC tables", "Reads the ageing of MAC addresses.", "",
     &all_channels[5], &all_records[2], &all_commands[208], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_pon_plat_mac_age_get", {}, {}, bsp_pon_plat_mac_age_get_arguments},
    {"bsp_pon_plat_mac_get", "FDB and MAC tables", "Queries the MAC table of the PON side.", "",
     &all_channels[5], &all_records[2], &all_commands[209], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_pon_plat_mac_get", {}, {}, bsp_pon_plat_mac_get_arguments},
    {"bsp_pon_plat_mac_nni_get", "FDB and MAC tables", "Queries the MAC table of the network side (NNI).", "",
     &all_channels[5], &all_records[2], &all_commands[210], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_pon_plat_mac_nni_get", {}, {}, bsp_pon_plat_mac_nni_get_arguments},
    {"plat_bsp_funcset", "Platform functions and PON settings", "Sends a platform command, as it stands.", "",
     &all_channels[5], &all_records[2], nullptr, Class::write, Call::set, Failure::report,
     Request::as_is, Answer::none, nullptr, 0, 0, "plat_bsp_funcset", {}, {}, plat_bsp_funcset_arguments},
    {"plat_bsp_funcget", "Platform functions and PON settings", "Sends a platform command and takes the answer in the same record.", "",
     &all_channels[5], &all_records[2], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::in_place, &all_records[2], 1148, 1148, "plat_bsp_funcget", {}, {}, plat_bsp_funcget_arguments},
    {"plat_bsp_funcget_json", "Platform functions and PON settings", "Sends a platform command, takes the answer in the same record, and its result as a database of at most 10240 bytes.", "",
     &all_channels[5], &all_records[2], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::in_place, &all_records[2], 1148, 1148, "plat_bsp_funcget_json", {}, {}, plat_bsp_funcget_json_arguments},
    {"bsp_poncfg_set", "Platform functions and PON settings", "Sends a PON setting on the platform channel, as it stands.", "",
     &all_channels[5], &all_records[0], nullptr, Class::write, Call::set, Failure::report,
     Request::as_is, Answer::none, nullptr, 0, 0, "bsp_poncfg_set", {}, {}, bsp_poncfg_set_arguments},
    {"bsp_poncfg_get", "Platform functions and PON settings", "Sends a PON setting on the platform channel and takes the answer in the same record.", "",
     &all_channels[5], &all_records[0], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::in_place, &all_records[0], 944, 944, "bsp_poncfg_get", {}, {}, bsp_poncfg_get_arguments},
    {"bsp_poncfg_funcget_json", "Platform functions and PON settings", "Sends a command on the PON channel, takes the answer in the same record, and its result as a database of at most 10240 bytes.", "Unlike its two neighbours, it goes by the PON channel.",
     &all_channels[0], &all_records[0], nullptr, Class::read, Call::get, Failure::report,
     Request::as_is, Answer::in_place, &all_records[0], 944, 944, "bsp_poncfg_funcget_json", {}, {}, bsp_poncfg_funcget_json_arguments},
    {"bsp_llid_behavior_set", "LLID and optical module control", "Sets the behaviour of an LLID.", "",
     &all_channels[5], &all_records[2], &all_commands[193], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_llid_behavior_set", {}, {}, bsp_llid_behavior_set_arguments},
    {"bsp_om_opm_trigger_set", "LLID and optical module control", "Starts an optical power measurement (OPM).", "",
     &all_channels[5], &all_records[2], &all_commands[202], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_om_opm_trigger_set", {}, {}, bsp_om_opm_trigger_set_arguments},
    {"bsp_om_opm_cancel_set", "LLID and optical module control", "Cancels the optical power measurement (OPM) of a PON port.", "",
     &all_channels[5], &all_records[2], &all_commands[203], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_om_opm_cancel_set", {}, {}, bsp_om_opm_cancel_set_arguments},
    {"bsp_om_lao_mode_set", "LLID and optical module control", "Sets the LAO mode of a PON port's optical module.", "",
     &all_channels[5], &all_records[2], &all_commands[204], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_om_lao_mode_set", {}, {}, bsp_om_lao_mode_set_arguments},
    {"bsp_om_lol_mode_set", "LLID and optical module control", "Sets the LOL mode of a PON port's optical module.", "Unlike bsp_om_lao_mode_set, it has a second selector before the mode.",
     &all_channels[5], &all_records[2], &all_commands[205], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_om_lol_mode_set", {}, {}, bsp_om_lol_mode_set_arguments},
    {"bsp_om_plat_diag_get", "Optical diagnostics", "Reads the digital diagnostics of a PON port's optical module.", "",
     &all_channels[5], &all_records[2], &all_commands[211], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_om_plat_diag_get", {}, {}, bsp_om_plat_diag_get_arguments},
    {"bsp_om_plat_diag_rssi_get", "Optical diagnostics", "Takes a received signal strength (RSSI) reading.", "",
     &all_channels[5], &all_records[2], &all_commands[212], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_om_plat_diag_rssi_get", {}, {}, bsp_om_plat_diag_rssi_get_arguments},
    {"bsp_sfp_diag_info_get", "Optical diagnostics", "Reads the diagnostic information of an SFP cage.", "",
     &all_channels[5], &all_records[2], &all_commands[213], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_sfp_diag_info_get", {}, {}, bsp_sfp_diag_info_get_arguments},
    {"bsp_sfp_diag_info_get_json", "Optical diagnostics", "Asks for the diagnostic information of an SFP cage as a result database of at most 10240 bytes.", "",
     &all_channels[5], &all_records[2], &all_commands[214], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_sfp_diag_info_get_json", {}, {}, bsp_sfp_diag_info_get_json_arguments},
    {"bsp_debug_8022_optical_status", "Optical diagnostics", "Hands an optical status block to the PON chip's debug layer.", "It sends a block, and reads none.",
     &all_channels[5], &all_records[2], &all_commands[184], Class::write, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_debug_8022_optical_status", {}, {}, bsp_debug_8022_optical_status_arguments},
    {"bsp_p2p_state_set", "P2P forwarding", "Switches P2P forwarding.", "",
     &all_channels[5], &all_records[2], &all_commands[187], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_p2p_state_set", {}, {}, bsp_p2p_state_set_arguments},
    {"bsp_onu_p2p_own_port_set", "P2P forwarding", "Sets the own port of P2P forwarding.", "",
     &all_channels[5], &all_records[2], &all_commands[188], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_onu_p2p_own_port_set", {}, {}, bsp_onu_p2p_own_port_set_arguments},
    {"bsp_onu_p2p_own_port_get", "P2P forwarding", "Reads the own port of P2P forwarding.", "",
     &all_channels[5], &all_records[2], &all_commands[189], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_onu_p2p_own_port_get", {}, {}, bsp_onu_p2p_own_port_get_arguments},
    {"bsp_pon_get_p2p_state", "P2P forwarding", "Asks for the state of P2P forwarding, which comes as a text in the answer, as a result database.", "",
     &all_channels[5], &all_records[2], &all_commands[190], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_pon_get_p2p_state", {}, {}, bsp_pon_get_p2p_state_arguments},
    {"bsp_p2p_entry_set", "P2P forwarding", "Sets a forwarding entry.", "The word for offset 108 comes before that for offset 104.",
     &all_channels[5], &all_records[2], &all_commands[191], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_p2p_entry_set", {}, {}, bsp_p2p_entry_set_arguments},
    {"bsp_p2p_entry_set_matchall", "P2P forwarding", "Sets a forwarding entry that matches everything: bsp_p2p_entry_set with a zero at offset 108.", "",
     &all_channels[5], &all_records[2], &all_commands[191], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_p2p_entry_set_matchall", {}, {}, bsp_p2p_entry_set_matchall_arguments},
    {"bsp_p2p_cfg_set", "P2P forwarding", "Configures P2P forwarding of a PON port.", "",
     &all_channels[5], &all_records[2], &all_commands[192], Class::service_affecting, Call::set, Failure::report,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_p2p_cfg_set", {}, {}, bsp_p2p_cfg_set_arguments},
    {"bsp_pon_onu_sla_config", "Service level agreements", "Stores an upstream SLA.", "",
     &all_channels[5], &all_records[2], &all_commands[194], Class::service_affecting, Call::set, Failure::pass,
     Request::stamped, Answer::none, nullptr, 0, 0, "bsp_pon_onu_sla_config", {}, {}, bsp_pon_onu_sla_config_arguments},
    {"bsp_pon_onu_sla_down_config", "Service level agreements", "Stores a downstream SLA.", "",
     &all_channels[5], &all_records[2], &all_commands[199], Class::service_affecting, Call::set, Failure::pass,
     Request::stamped, Answer::none, nullptr, 0, 0, "bsp_pon_onu_sla_down_config", {}, {}, bsp_pon_onu_sla_down_config_arguments},
    {"bsp_pon_onu_sla_get", "Service level agreements", "Reads the upstream SLA of an ONU.", "",
     &all_channels[5], &all_records[2], &all_commands[195], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[2], 1148, 0, "bsp_pon_onu_sla_get", {}, {}, bsp_pon_onu_sla_get_arguments},
    {"bsp_pon_plat_onu_sla_get", "Service level agreements", "Reads the upstream SLA of an ONU from the chip's debug service.", "",
     &all_channels[2], &all_records[2], &all_commands[93], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[2], 1148, 0, "bsp_pon_plat_onu_sla_get", {}, {}, bsp_pon_plat_onu_sla_get_arguments},
    {"bsp_pon_onu_sla_down_get", "Service level agreements", "Reads the downstream SLA of an ONU.", "",
     &all_channels[5], &all_records[2], &all_commands[200], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[2], 1148, 0, "bsp_pon_onu_sla_down_get", {}, {}, bsp_pon_onu_sla_down_get_arguments},
    {"bsp_pon_onu_sla_all_get", "Service level agreements", "Reads the SLA summary of a PON port.", "",
     &all_channels[5], &all_records[2], &all_commands[196], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[2], 1148, 0, "bsp_pon_onu_sla_all_get", {}, {}, bsp_pon_onu_sla_all_get_arguments},
    {"bsp_pon_onu_sla_get_web", "Service level agreements", "Asks for the upstream SLAs of a PON port, for the web server.", "",
     &all_channels[5], &all_records[2], &all_commands[197], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1044, 1044, "bsp_pon_platform_by_db", {}, {}, bsp_pon_onu_sla_get_web_arguments},
    {"bsp_pon_onu_sla_down_get_web", "Service level agreements", "Asks for the downstream SLAs of a PON port, for the web server.", "",
     &all_channels[5], &all_records[2], &all_commands[201], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1044, 1044, "bsp_pon_platform_by_db", {}, {}, bsp_pon_onu_sla_down_get_web_arguments},
    {"bsp_pon_onu_sla_get_snmp", "Service level agreements", "Asks for the upstream SLAs of the whole OLT, for the SNMP agent.", "",
     &all_channels[5], &all_records[2], &all_commands[198], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1044, 1044, "bsp_pon_platform_by_db", {}, {}, bsp_pon_onu_sla_get_snmp_arguments},
    {"bsp_pon_onu_get_uniobj_snmp", "Remote ONU queries", "Asks for the UNI ports of an ONU, for the SNMP agent.", "",
     &all_channels[4], &all_records[3], &all_commands[182], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_get_uniobj_snmp", {}, {}, bsp_pon_onu_get_uniobj_snmp_arguments},
    {"bsp_pon_onu_ctc_autoneg_get", "Remote ONU queries", "Asks a remote ONU whether a UNI port negotiates its speed.", "",
     &all_channels[3], &all_records[3], &all_commands[103], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_autoneg_get", {}, {}, bsp_pon_onu_ctc_autoneg_get_arguments},
    {"bsp_pon_onu_ctc_phy_adminstate_get", "Remote ONU queries", "Asks a remote ONU whether a UNI port is on.", "",
     &all_channels[3], &all_records[3], &all_commands[101], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_phy_adminstate_get", {}, {}, bsp_pon_onu_ctc_phy_adminstate_get_arguments},
    {"bsp_pon_onu_ctc_classification_get", "Remote ONU queries", "Asks a remote ONU for the classification rules of a UNI port.", "",
     &all_channels[3], &all_records[3], &all_commands[108], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_classification_get", {}, {}, bsp_pon_onu_ctc_classification_get_arguments},
    {"bsp_pon_onu_ctc_get_dev_info", "Remote ONU queries", "Asks for device information of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[126], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 0, "bsp_pon_onu_ctc_get_dev_info", {}, {}, bsp_pon_onu_ctc_get_dev_info_arguments},
    {"bsp_pon_onu_get_max_port", "Remote ONU queries", "Asks for the number of UNI ports of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[131], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 0, "bsp_pon_onu_get_max_port", {}, {}, bsp_pon_onu_get_max_port_arguments},
    {"bsp_pon_onu_ctc_get_vlan", "Remote ONU queries", "Asks a remote ONU for the VLANs of a UNI port.", "",
     &all_channels[4], &all_records[3], &all_commands[127], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_vlan", {}, {}, bsp_pon_onu_ctc_get_vlan_arguments},
    {"bsp_pon_tk_onu_get_fw", "Remote ONU queries", "Asks a remote ONU for its image banks.", "",
     &all_channels[3], &all_records[3], &all_commands[118], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_tk_onu_get_fw", {}, {}, bsp_pon_tk_onu_get_fw_arguments},
    {"bsp_pon_onu_ctc_get_mem_info", "Remote ONU queries", "Asks a remote ONU for its memory.", "",
     &all_channels[3], &all_records[3], &all_commands[99], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mem_info", {}, {}, bsp_pon_onu_ctc_get_mem_info_arguments},
    {"bsp_pon_onu_ctc_get_rate_limit", "Remote ONU queries", "Asks a remote ONU for the rate limits of a UNI port.", "",
     &all_channels[4], &all_records[3], &all_commands[134], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_rate_limit", {}, {}, bsp_pon_onu_ctc_get_rate_limit_arguments},
    {"bsp_pon_onu_ctc_get_loop_detect", "Remote ONU queries", "Asks a remote ONU for loop detection at a UNI port.", "",
     &all_channels[4], &all_records[3], &all_commands[136], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_loop_detect", {}, {}, bsp_pon_onu_ctc_get_loop_detect_arguments},
    {"bsp_pon_onu_ctc_get_mgmt", "Remote ONU queries", "Asks a remote ONU for its management address.", "",
     &all_channels[4], &all_records[3], &all_commands[132], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mgmt", {}, {}, bsp_pon_onu_ctc_get_mgmt_arguments},
    {"bsp_pon_onu_ctc_get_linkstate", "Remote ONU queries", "Asks for the links of the UNI ports of an ONU, by datagram.", "Every answer is logged as an error, with its text.",
     &all_channels[4], &all_records[3], &all_commands[160], Class::read, Call::dgram_get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_linkstate", {}, {}, bsp_pon_onu_ctc_get_linkstate_arguments},
    {"bsp_pon_onu_ctc_get_eth_pause", "Remote ONU queries", "Asks a remote ONU for flow control of a UNI port.", "",
     &all_channels[4], &all_records[3], &all_commands[161], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_eth_pause", {}, {}, bsp_pon_onu_ctc_get_eth_pause_arguments},
    {"bsp_pon_onu_ctc_get_fast_leave_ability", "Remote ONU queries", "Asks a remote ONU which forms of multicast fast leave it knows.", "",
     &all_channels[4], &all_records[3], &all_commands[138], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_fast_leave_ability", {}, {}, bsp_pon_onu_ctc_get_fast_leave_ability_arguments},
    {"bsp_pon_onu_ctc_get_fast_leave", "Remote ONU queries", "Asks a remote ONU for multicast fast leave.", "",
     &all_channels[4], &all_records[3], &all_commands[139], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_fast_leave", {}, {}, bsp_pon_onu_ctc_get_fast_leave_arguments},
    {"bsp_pon_onu_ctc_get_fast_leave_local", "Remote ONU queries", "Asks the OLT for multicast fast leave of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[141], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_fast_leave_local", {}, {}, bsp_pon_onu_ctc_get_fast_leave_local_arguments},
    {"bsp_pon_onu_ctc_get_mc_switch_remote", "Remote ONU queries", "Asks a remote ONU for the multicast mode.", "",
     &all_channels[4], &all_records[3], &all_commands[142], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_switch_remote", {}, {}, bsp_pon_onu_ctc_get_mc_switch_remote_arguments},
    {"bsp_pon_onu_ctc_get_mc_switch_local", "Remote ONU queries", "Asks the OLT for the multicast mode of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[144], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_switch_local", {}, {}, bsp_pon_onu_ctc_get_mc_switch_local_arguments},
    {"bsp_pon_onu_ctc_get_mc_group_num_max_remote", "Remote ONU queries", "Asks a remote ONU how many multicast groups a UNI port may join.", "",
     &all_channels[4], &all_records[3], &all_commands[145], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_group_num_max_remote", {}, {}, bsp_pon_onu_ctc_get_mc_group_num_max_remote_arguments},
    {"bsp_pon_onu_ctc_get_mc_group_num_max_local", "Remote ONU queries", "Asks the OLT how many multicast groups a UNI port may join of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[147], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_group_num_max_local", {}, {}, bsp_pon_onu_ctc_get_mc_group_num_max_local_arguments},
    {"bsp_pon_onu_ctc_get_mc_vlan_mode_remote", "Remote ONU queries", "Asks a remote ONU what becomes of the tags of multicast frames at a UNI port.", "",
     &all_channels[4], &all_records[3], &all_commands[148], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_vlan_mode_remote", {}, {}, bsp_pon_onu_ctc_get_mc_vlan_mode_remote_arguments},
    {"bsp_pon_onu_ctc_get_mc_vlan_mode_local", "Remote ONU queries", "Asks the OLT what becomes of the tags of multicast frames at a UNI port of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[150], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_vlan_mode_local", {}, {}, bsp_pon_onu_ctc_get_mc_vlan_mode_local_arguments},
    {"bsp_pon_onu_ctc_get_mc_vlan_remote", "Remote ONU queries", "Asks a remote ONU for the multicast VLANs of a UNI port.", "",
     &all_channels[4], &all_records[3], &all_commands[151], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_vlan_remote", {}, {}, bsp_pon_onu_ctc_get_mc_vlan_remote_arguments},
    {"bsp_pon_onu_ctc_get_mc_vlan_local", "Remote ONU queries", "Asks the OLT for the multicast VLANs of a UNI port of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[153], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_vlan_local", {}, {}, bsp_pon_onu_ctc_get_mc_vlan_local_arguments},
    {"bsp_pon_onu_ctc_get_mc_group", "Remote ONU queries", "Asks a remote ONU for its multicast groups.", "",
     &all_channels[4], &all_records[3], &all_commands[154], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_group", {}, {}, bsp_pon_onu_ctc_get_mc_group_arguments},
    {"bsp_pon_onu_ctc_get_sn_ponport", "Remote ONU queries", "Asks for the serial numbers of the ONUs of a PON port.", "",
     &all_channels[9], &all_records[3], &all_commands[227], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_sn_ponport", {}, {}, bsp_pon_onu_ctc_get_sn_ponport_arguments},
    {"bsp_pon_onu_ctc_debug_get", "Remote ONU queries", "Sends a query of the information channel that the caller built, and receives the answer in its place.", "",
     &all_channels[3], &all_records[3], nullptr, Class::read, Call::get, Failure::pass,
     Request::as_is, Answer::in_place, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_debug_get", {}, {}, bsp_pon_onu_ctc_debug_get_arguments},
    {"bsp_pon_onu_ctc_config_get", "Remote ONU queries", "Sends a query of the configuration channel that the caller built, and receives the answer in its place.", "",
     &all_channels[4], &all_records[3], nullptr, Class::read, Call::get, Failure::pass,
     Request::as_is, Answer::in_place, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_config_get", {}, {}, bsp_pon_onu_ctc_config_get_arguments},
    {"bsp_pon_onu_optical_diagnose_get", "Remote ONU queries", "Asks for the optical transceiver of an ONU, by a record that the caller built.", "",
     &all_channels[4], &all_records[3], &all_commands[130], Class::read, Call::get, Failure::pass,
     Request::stamped, Answer::in_place, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_config_get", {}, {}, bsp_pon_onu_optical_diagnose_get_arguments},
    {"bsp_pon_onu_ctc_get_vlan_json", "Remote ONU queries", "Asks for the VLANs of the UNI ports of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[129], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1044, 1044, "bsp_pononu_ctc_config_by_db", {}, {}, bsp_pon_onu_ctc_get_vlan_json_arguments},
    {"bsp_pon_onu_ctc_get_vlan_mode_json", "Remote ONU queries", "Asks for the VLAN modes of the UNI ports of an ONU: the same request, under another name.", "",
     &all_channels[4], &all_records[3], &all_commands[129], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1044, 1044, "bsp_pononu_ctc_config_by_db", {}, {}, bsp_pon_onu_ctc_get_vlan_mode_json_arguments},
    {"bsp_pon_onu_ctc_get_info", "Remote ONU requests", "Asks a remote ONU anything of the information channel.", "",
     &all_channels[3], &all_records[3], nullptr, Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_info_arguments},
    {"bsp_pon_onu_ctc_set_info", "Remote ONU requests", "Sets anything of the information channel at a remote ONU.", "",
     &all_channels[3], &all_records[3], nullptr, Class::service_affecting, Call::set, Failure::silent,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_set_info", {}, {}, bsp_pon_onu_ctc_set_info_arguments},
    {"bsp_pon_onu_ctc_port_get", "Remote ONU requests", "Asks a remote ONU anything of the information channel about one of its UNI ports.", "",
     &all_channels[3], &all_records[3], nullptr, Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_port_get", {}, {}, bsp_pon_onu_ctc_port_get_arguments},
    {"bsp_pon_onu_ctc_get_sn", "Remote ONU requests", "Asks a remote ONU who it is.", "",
     &all_channels[3], &all_records[3], &all_commands[95], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_sn_arguments},
    {"bsp_pon_onu_ctc_get_fw", "Remote ONU requests", "Asks a remote ONU for its firmware version.", "",
     &all_channels[3], &all_records[3], &all_commands[96], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_fw_arguments},
    {"bsp_pon_onu_ctc_get_chipid", "Remote ONU requests", "Asks a remote ONU for its chipset.", "",
     &all_channels[3], &all_records[3], &all_commands[97], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_chipid_arguments},
    {"bsp_pon_onu_ctc_get_cap", "Remote ONU requests", "Asks a remote ONU for its capabilities.", "",
     &all_channels[3], &all_records[3], &all_commands[98], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_cap_arguments},
    {"bsp_pon_onu_ctc_get_cap2", "Remote ONU requests", "Asks a remote ONU for more of its capabilities.", "",
     &all_channels[3], &all_records[3], &all_commands[94], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_cap2_arguments},
    {"bsp_pon_onu_ctc_get_sla", "Remote ONU requests", "Asks a remote ONU for its service level agreement.", "",
     &all_channels[3], &all_records[3], &all_commands[110], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_sla_arguments},
    {"bsp_pon_onu_ctc_get_onuinfo", "Remote ONU requests", "Asks a remote ONU for all about it.", "",
     &all_channels[3], &all_records[3], &all_commands[114], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_onuinfo_arguments},
    {"bsp_pon_onu_ctc_get_upgrade_status", "Remote ONU requests", "Asks a remote ONU how its image update stands.", "",
     &all_channels[3], &all_records[3], &all_commands[113], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_upgrade_status_arguments},
    {"bsp_pon_onu_ctc_get_catv_status", "Remote ONU requests", "Asks a remote ONU whether its CATV port is on.", "",
     &all_channels[3], &all_records[3], &all_commands[119], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_info", {}, {}, bsp_pon_onu_ctc_get_catv_status_arguments},
    {"bsp_pon_onu_ctc_upgrade", "Remote ONU requests", "Sends a part of an image to a remote ONU.", "",
     &all_channels[3], &all_records[3], &all_commands[111], Class::service_affecting, Call::set, Failure::silent,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_set_info", {}, {}, bsp_pon_onu_ctc_upgrade_arguments},
    {"bsp_pon_onu_ctc_upgrade_commit", "Remote ONU requests", "Makes a remote ONU start its new image from now on.", "",
     &all_channels[3], &all_records[3], &all_commands[112], Class::service_affecting, Call::set, Failure::silent,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_set_info", {}, {}, bsp_pon_onu_ctc_upgrade_commit_arguments},
    {"bsp_pon_onu_ctc_set_perf_monitor_status", "Remote ONU requests", "Switches performance monitoring of a remote ONU.", "The request is that of bsp_pon_onu_ctc_set_catv: a service cannot tell them apart.",
     &all_channels[3], &all_records[3], &all_commands[120], Class::write, Call::set, Failure::silent,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_set_info", {}, {}, bsp_pon_onu_ctc_set_perf_monitor_status_arguments},
    {"bsp_pon_onu_ctc_set_catv", "Remote ONU requests", "Switches the CATV port of a remote ONU.", "The request is that of bsp_pon_onu_ctc_set_perf_monitor_status: a service cannot tell them apart.",
     &all_channels[3], &all_records[3], &all_commands[121], Class::service_affecting, Call::set, Failure::silent,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_set_info", {}, {}, bsp_pon_onu_ctc_set_catv_arguments},
    {"bsp_onu_ctc_get_autoneg_local_abt", "Remote ONU requests", "Asks a remote ONU what a UNI port can negotiate.", "",
     &all_channels[3], &all_records[3], &all_commands[105], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_port_get", {}, {}, bsp_onu_ctc_get_autoneg_local_abt_arguments},
    {"bsp_onu_ctc_get_autoneg_adv_abt", "Remote ONU requests", "Asks a remote ONU what a UNI port offers in auto-negotiation.", "",
     &all_channels[3], &all_records[3], &all_commands[106], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_port_get", {}, {}, bsp_onu_ctc_get_autoneg_adv_abt_arguments},
    {"bsp_onu_ctc_get_phyinfo", "Remote ONU requests", "Asks a remote ONU for the PHY of a UNI port.", "",
     &all_channels[3], &all_records[3], &all_commands[115], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_port_get", {}, {}, bsp_onu_ctc_get_phyinfo_arguments},
    {"bsp_onu_ctc_get_perf_monitor_status", "Remote ONU requests", "Asks a remote ONU whether it monitors the performance of a UNI port.", "",
     &all_channels[3], &all_records[3], &all_commands[122], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_port_get", {}, {}, bsp_onu_ctc_get_perf_monitor_status_arguments},
    {"bsp_onu_ctc_get_perf_current_data", "Remote ONU requests", "Asks a remote ONU for the counters of a UNI port in the current period.", "",
     &all_channels[3], &all_records[3], &all_commands[123], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_port_get", {}, {}, bsp_onu_ctc_get_perf_current_data_arguments},
    {"bsp_onu_ctc_get_perf_history_data", "Remote ONU requests", "Asks a remote ONU for the counters of a UNI port in the period before.", "",
     &all_channels[3], &all_records[3], &all_commands[124], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_port_get", {}, {}, bsp_onu_ctc_get_perf_history_data_arguments},
    {"bsp_pon_onu_ctc_get_mc_config_json", "Remote ONU service views", "Asks for the multicast configuration of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[156], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_config_json", {}, {}, bsp_pon_onu_ctc_get_mc_config_json_arguments},
    {"bsp_pon_onu_uni_ctc_get_mc_config_json", "Remote ONU service views", "Asks for the multicast configuration of the UNI ports of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[157], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_uni_ctc_get_mc_config_json", {}, {}, bsp_pon_onu_uni_ctc_get_mc_config_json_arguments},
    {"bsp_pon_onu_ctc_get_mc_vlan_translate_json", "Remote ONU service views", "Asks for the multicast VLAN translation of a UNI port.", "",
     &all_channels[4], &all_records[3], &all_commands[158], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_vlan_translate_json", {}, {}, bsp_pon_onu_ctc_get_mc_vlan_translate_json_arguments},
    {"bsp_pon_onu_ctc_get_mc_vlan_json", "Remote ONU service views", "Asks for the multicast VLANs of the UNI ports of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[159], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_mc_vlan_json", {}, {}, bsp_pon_onu_ctc_get_mc_vlan_json_arguments},
    {"bsp_pon_onu_ctc_get_voipinfo_json", "Remote ONU service views", "Asks for the voice ports of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[177], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_voipinfo_json", {}, {}, bsp_pon_onu_ctc_get_voipinfo_json_arguments},
    {"bsp_pon_onu_get_fec_mode", "Remote ONU service views", "Asks for forward error correction of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[163], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_get_fec_mode", {}, {}, bsp_pon_onu_get_fec_mode_arguments},
    {"bsp_pon_onuc_get_fec_ability", "Remote ONU service views", "Asks whether an ONU can correct errors.", "",
     &all_channels[4], &all_records[3], &all_commands[165], Class::read, Call::get, Failure::silent,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onuc_get_fec_ability", {}, {}, bsp_pon_onuc_get_fec_ability_arguments},
    {"bsp_pon_onu_ctc_get_time_config", "Remote ONU service views", "Asks a remote ONU for its time configuration.", "",
     &all_channels[3], &all_records[3], &all_commands[116], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_time_config", {}, {}, bsp_pon_onu_ctc_get_time_config_arguments},
    {"bsp_pon_onu_ctc_get_wanc", "Remote ONU service views", "Asks for WAN connections of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[172], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_wanc", {}, {}, bsp_pon_onu_ctc_get_wanc_arguments},
    {"bsp_pon_onu_ctc_get_wlan", "Remote ONU service views", "Asks for the WLANs of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[174], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_wlan", {}, {}, bsp_pon_onu_ctc_get_wlan_arguments},
    {"bsp_pon_onu_ctc_get_catv", "Remote ONU service views", "Asks for the CATV port of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[176], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_catv", {}, {}, bsp_pon_onu_ctc_get_catv_arguments},
    {"bsp_pon_onu_ctc_get_acl", "Remote ONU service views", "Asks for the access control list of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[178], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_acl", {}, {}, bsp_pon_onu_ctc_get_acl_arguments},
    {"bsp_pon_onu_ctc_get_dhcp", "Remote ONU service views", "Asks for the DHCP server of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[180], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_ctc_get_dhcp", {}, {}, bsp_pon_onu_ctc_get_dhcp_arguments},
    {"bsp_pon_onu_ctc_get_wlantab", "Remote ONU service views", "Asks for the WLANs of the ONUs of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[45], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_onu_ctc_get_wlantab", {}, {}, bsp_pon_onu_ctc_get_wlantab_arguments},
    {"bsp_pon_onu_ctc_get_wanctab", "Remote ONU service views", "Asks for the WAN connections of the ONUs of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[46], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_onu_ctc_get_wanctab", {}, {}, bsp_pon_onu_ctc_get_wanctab_arguments},
    {"bsp_pon_onu_ctc_get_catvtab", "Remote ONU service views", "Asks for the CATV ports of the ONUs of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[47], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_onu_ctc_get_catvtab", {}, {}, bsp_pon_onu_ctc_get_catvtab_arguments},
    {"bsp_pon_onu_ctc_get_sipusertab", "Remote ONU service views", "Asks for the SIP users of the ONUs of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[48], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_onu_ctc_get_sipusertab", {}, {}, bsp_pon_onu_ctc_get_sipusertab_arguments},
    {"bsp_pon_onu_ctc_get_upgradestatus_json", "Remote ONU service views", "Asks how image updates of ONUs stand.", "",
     &all_channels[0], &all_records[0], &all_commands[49], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_onu_ctc_get_upgradestatus_json", {}, {}, bsp_pon_onu_ctc_get_upgradestatus_json_arguments},
    {"bsp_pon_onu_ctc_debug", "Remote ONU settings", "Sends a setting of the information channel that the caller built.", "",
     &all_channels[3], &all_records[3], nullptr, Class::service_affecting, Call::set, Failure::pass,
     Request::as_is, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_debug", {}, {}, bsp_pon_onu_ctc_debug_arguments},
    {"bsp_pon_onu_ctc_config", "Remote ONU settings", "Sends a setting of the configuration channel that the caller built.", "",
     &all_channels[4], &all_records[3], nullptr, Class::service_affecting, Call::set, Failure::pass,
     Request::as_is, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_config", {}, {}, bsp_pon_onu_ctc_config_arguments},
    {"bsp_pon_onu_alarm_more_test", "Remote ONU settings", "Triggers extra alarms for a test, by a record that the caller built.", "",
     &all_channels[3], &all_records[3], nullptr, Class::write, Call::set, Failure::silent,
     Request::as_is, Answer::none, nullptr, 0, 0, "bsp_pon_onu_alarm_more_test", {}, bsp_pon_onu_alarm_more_test_odd, bsp_pon_onu_alarm_more_test_arguments},
    {"bsp_pon_onu_ctc_oam_print", "Remote ONU settings", "Sets what the service prints of OAM.", "",
     &all_channels[9], &all_records[3], &all_commands[226], Class::write, Call::set, Failure::silent,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_oam_print", {}, {}, bsp_pon_onu_ctc_oam_print_arguments},
    {"bsp_pon_onu_ctc_set_multillid", "Remote ONU settings", "Sets the number of LLIDs of an ONU.", "",
     &all_channels[3], &all_records[3], &all_commands[100], Class::service_affecting, Call::set, Failure::pass,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_set_multillid", {}, {}, bsp_pon_onu_ctc_set_multillid_arguments},
    {"bsp_pon_onu_ctc_update_image", "Remote ONU settings", "Has the OLT update an image of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[166], Class::service_affecting, Call::set, Failure::pass,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_update_image", {}, {}, bsp_pon_onu_ctc_update_image_arguments},
    {"bsp_pon_onu_ctc_set_mgmt", "Remote ONU settings", "Sets the management address of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[133], Class::service_affecting, Call::set, Failure::pass,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_set_mgmt", {}, {}, bsp_pon_onu_ctc_set_mgmt_arguments},
    {"bsp_pon_get_onu_optical_diag_by_pon", "Bulk data", "Asks for the optical diagnostics of the ONUs of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[38], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_get_onu_optical_diag_by_pon", {}, {}, bsp_pon_get_onu_optical_diag_by_pon_arguments},
    {"bsp_pon_get_onu_optical_diag_data_all", "Bulk data", "Asks for the optical diagnostics of all ONUs.", "",
     &all_channels[0], &all_records[0], &all_commands[39], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_get_onu_optical_diag_data_all", {}, {}, bsp_pon_get_onu_optical_diag_data_all_arguments},
    {"bsp_pon_get_onu_perf_stat_data_all", "Bulk data", "Asks for the performance statistics of all ONUs.", "",
     &all_channels[0], &all_records[0], &all_commands[40], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_get_onu_perf_stat_data_all", {}, {}, bsp_pon_get_onu_perf_stat_data_all_arguments},
    {"bsp_pon_onu_get_configure", "Bulk data", "Asks for the configure word of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[167], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[3], 1888, 1888, "bsp_pon_onu_get_configure", {}, {}, bsp_pon_onu_get_configure_arguments},
    {"bsp_pon_get_allonuinfo", "Bulk data", "Asks for all ONUs, in a text.", "",
     &all_channels[0], &all_records[0], &all_commands[37], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[1], 1044, 1044, "bsp_pon_get_allonuinfo", {}, {}, bsp_pon_get_allonuinfo_arguments},
    {"bsp_pon_get_port_info", "Bulk data", "Asks for the PON ports.", "",
     &all_channels[0], &all_records[0], &all_commands[35], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_get_port_info", {}, {}, bsp_pon_get_port_info_arguments},
    {"bsp_pon_get_basic_info", "Bulk data", "Asks for the OLT.", "",
     &all_channels[0], &all_records[0], &all_commands[36], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[0], 1044, 1044, "bsp_pon_get_basic_info", {}, {}, bsp_pon_get_basic_info_arguments},
    {"bsp_pon_get_config_write", "Profiles and configuration", "Asks for the service's configuration, as a text or a file's name, and a word.", "",
     &all_channels[6], &all_records[2], &all_commands[215], Class::write, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[2], 1148, 1148, "bsp_pon_get_config_write", {}, bsp_pon_get_config_write_odd, bsp_pon_get_config_write_arguments},
    {"bsp_profile_exec_get", "Profiles and configuration", "Sends a payload on the profile channel and receives the answer in its place.", "Without `buf`, `len` zeros are sent.",
     &all_channels[1], &all_records[4], nullptr, Class::read, Call::dgram_get, Failure::silent,
     Request::built, Answer::own, &all_records[4], 4120, 0, "bsp_profile_exec_get", bsp_profile_exec_get_constants, {}, bsp_profile_exec_get_arguments},
    {"bsp_profile_exec_get_", "Profiles and configuration", "Sends a payload on the profile channel and receives the answer in a buffer of its own, or else in the payload's place.", "The answer is delivered only where the status is 0. Without `buf`, `len` zeros are sent.",
     &all_channels[1], &all_records[4], nullptr, Class::read, Call::dgram_get, Failure::silent,
     Request::built, Answer::own, &all_records[4], 4120, 0, "bsp_profile_exec_get_", bsp_profile_exec_get__constants, bsp_profile_exec_get__odd, bsp_profile_exec_get__arguments},
    {"bsp_profile_exec_get_json", "Profiles and configuration", "Asks for a result database on the profile channel.", "It comes by a file that the answer names, in at most 4095 characters; the file is removed.",
     &all_channels[1], &all_records[4], nullptr, Class::read, Call::dgram_get, Failure::silent,
     Request::built, Answer::own, &all_records[4], 4120, 61, "bsp_profile_exec_get_json", bsp_profile_exec_get_json_constants, {}, bsp_profile_exec_get_json_arguments},
    {"bsp_profile_exec_set", "Profiles and configuration", "Sends a payload on the profile channel.", "Without `buf`, `len` zeros are sent.",
     &all_channels[1], &all_records[4], nullptr, Class::write, Call::dgram_set, Failure::silent,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_profile_exec_set", {}, {}, bsp_profile_exec_set_arguments},
    {"bsp_profile_exec_get_cfgwr", "Profiles and configuration", "Asks for a result file on the profile channel, and reads it into memory.", "The file stays.",
     &all_channels[1], &all_records[4], nullptr, Class::read, Call::dgram_get, Failure::silent,
     Request::built, Answer::own, &all_records[4], 4120, 0, "bsp_profile_exec_get_cfgwr", bsp_profile_exec_get_cfgwr_constants, bsp_profile_exec_get_cfgwr_odd, bsp_profile_exec_get_cfgwr_arguments},
    {"bsp_onu_ctc_set_cfg", "ONU configuration, LOIDs and UNI profiles", "Sets the configuration of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[168], Class::service_affecting, Call::set, Failure::pass,
     Request::stamped, Answer::none, nullptr, 0, 0, "bsp_onu_ctc_set_cfg", {}, {}, bsp_onu_ctc_set_cfg_arguments},
    {"bsp_pon_onu_ctc_set_oui", "ONU configuration, LOIDs and UNI profiles", "Sets the OUI that remote ONUs are known by.", "",
     &all_channels[0], &all_records[0], &all_commands[52], Class::service_affecting, Call::set, Failure::pass,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_set_oui", {}, {}, bsp_pon_onu_ctc_set_oui_arguments},
    {"bsp_pon_onu_ctc_add_loid", "ONU configuration, LOIDs and UNI profiles", "Adds a LOID to a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[41], Class::write, Call::set, Failure::pass,
     Request::stamped, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_add_loid", {}, {}, bsp_pon_onu_ctc_add_loid_arguments},
    {"bsp_pon_onu_ctc_delete_loid", "ONU configuration, LOIDs and UNI profiles", "Deletes a LOID of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[42], Class::write, Call::set, Failure::pass,
     Request::stamped, Answer::none, nullptr, 0, 0, "bsp_pon_onu_ctc_delete_loid", {}, {}, bsp_pon_onu_ctc_delete_loid_arguments},
    {"bsp_pon_get_onu_loidlist", "ONU configuration, LOIDs and UNI profiles", "Asks for the LOIDs of a PON port.", "",
     &all_channels[0], &all_records[0], &all_commands[43], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_get_onu_loidlist", {}, {}, bsp_pon_get_onu_loidlist_arguments},
    {"bsp_pon_get_arptable", "ONU configuration, LOIDs and UNI profiles", "Asks for the ARP table of a PON port.", "It comes by a file that the answer names; the file is removed.",
     &all_channels[0], &all_records[0], &all_commands[44], Class::read, Call::get, Failure::report,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_get_arptable", {}, {}, bsp_pon_get_arptable_arguments},
    {"bsp_pon_prof_uni_set", "ONU configuration, LOIDs and UNI profiles", "Sets a UNI profile.", "",
     &all_channels[0], &all_records[0], &all_commands[32], Class::write, Call::set, Failure::pass,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_prof_uni_set", {}, {}, bsp_pon_prof_uni_set_arguments},
    {"bsp_pon_prof_uni_get", "ONU configuration, LOIDs and UNI profiles", "Asks for a UNI profile.", "",
     &all_channels[0], &all_records[0], &all_commands[33], Class::read, Call::get, Failure::pass,
     Request::built, Answer::own, &all_records[0], 944, 944, "bsp_pon_prof_uni_get", {}, {}, bsp_pon_prof_uni_get_arguments},
    {"bsp_onu_ctc_set_portcfg", "ONU configuration, LOIDs and UNI profiles", "Sets the configuration of a UNI port of an ONU.", "",
     &all_channels[4], &all_records[3], &all_commands[171], Class::service_affecting, Call::set, Failure::pass,
     Request::stamped, Answer::none, nullptr, 0, 0, "bsp_onu_ctc_set_portcfg", {}, {}, bsp_onu_ctc_set_portcfg_arguments},
    {"bsp_pon_onucfg_set_batch", "ONU configuration, LOIDs and UNI profiles", "Has the service apply the configuration of ONUs.", "",
     &all_channels[0], &all_records[0], &all_commands[0], Class::service_affecting, Call::set, Failure::pass,
     Request::built, Answer::none, nullptr, 0, 0, "bsp_pon_onucfg_set_batch", {}, {}, bsp_pon_onucfg_set_batch_arguments},
};

constexpr Function all_functions[] = {
    {"ont_id_res_exists_ont", "ONU-id sets", "Tells whether a set of ONU ids has members.", "", "int ont_id_res_exists_ont(const onu_id_set *set);"},
    {"ont_id_res_str", "ONU-id sets", "Prints a set of ONU ids as ranges, such as 1-5,7,9-12.", "Two ids in a row print as two, three or more as first and last. Three ways of printing are as they always were, and front ends rely on them: a word without members does not end a run (ids 31 and 64 print as 31,32); a run that is still open at the end of the last word with members is not closed, so that of ids 120 to 127 only 120 is printed; and at `last_id`, from the second id of a run on, the length of the run so far is printed behind a dash (ids 120 to 127 with `last_id` 127: 120-8). The length is counted in 8 bits with a sign: all 128 ids with `last_id` 127 print as 0--128. Use ont_id_res_str_expand where every id must be told.", "char *ont_id_res_str(const onu_id_set *set, uint32_t last_id, char *text);"},
    {"ont_id_res_str_expand", "ONU-id sets", "Prints a set of ONU ids as a list of all members in ascending order, such as 1,2,3,7.", "", "char *ont_id_res_str_expand(const onu_id_set *set, uint32_t spare, char *text);"},
};

} // namespace

const uint32_t module = 6;

std::span<const Record> records()
{
    return all_records;
}

std::span<const Channel> channels()
{
    return all_channels;
}

std::span<const Command> commands()
{
    return all_commands;
}

std::span<const Status> statuses()
{
    return all_statuses;
}

std::span<const Layout> layouts()
{
    return all_layouts;
}

std::span<const View> views()
{
    return all_views;
}

std::span<const Operation> operations()
{
    return all_operations;
}

std::span<const Function> functions()
{
    return all_functions;
}

} // namespace catalogue
