"""These tests check that wrong input of each kind is refused with file, entry and reason, and that nothing is written.
"""

import tempfile
import unittest

from copies import Copy, contents, generate, run

RECORDS = "catalog/records.toml"
CHANNELS = "catalog/channels.toml"
STATUS = "catalog/status.toml"
BINDING = "catalog/admission/binding.toml"
LISTS = "catalog/admission/lists.toml"
AUTHENTICATION = "catalog/admission/authentication.toml"
PASSTHROUGH = "catalog/generic/passthrough.toml"
STORED = "catalog/generic/views.toml"
IDS = "catalog/frame/onu_ids.toml"
CHIP = "catalog/debug/chip.toml"
FDB = "catalog/platform/fdb.toml"
FUNCTIONS = "catalog/platform/functions.toml"
PROFILES = "catalog/config/profiles.toml"
QUERIES = "catalog/onu/queries.toml"
REQUESTS = "catalog/onu/requests.toml"
OPTICS = "catalog/platform/optics.toml"
LAYOUTS = "catalog/layouts/batch.toml"
CHIP_LAYOUTS = "catalog/layouts/chip.toml"
UNI = "catalog/layouts/onu_uni.toml"
UNI_LAYOUTS = "catalog/layouts/onu_uni.toml"
VIEWS = "catalog/views/onu.toml"

# Each case has the file, the text that is replaced, its replacement, and what must be reported: the entry, then the
# reason.
BROKEN = {
    # These cases break the file as a whole.
    "not TOML": (CHANNELS, "[[channel]]", "[[channel", "", "not TOML"),
    "unknown kind of entry": (BINDING, "[[operation]]", "[[operatoin]]", "", "unknown entry 'operatoin'"),
    "one table instead of a list": ("catalog/views/new.toml", "", "[view]\nname = 'x'\n", "view",
                                    "entries start with [[view]]"),
    "family missing": (BINDING, 'family = "ONU', '# family = "ONU', "", "'family' is missing"),
    "module missing": (CHANNELS, "module = 6", "", "module", "'number' must be a number"),

    # These cases apply to any entry.
    "key missing": (CHANNELS, 'brief  = "loop detection"', "", "channel BSP_MSG_LOOP_DETECT", "'brief' is missing"),
    "brief empty": (CHANNELS, 'brief  = "loop detection"', 'brief  = " "', "channel BSP_MSG_LOOP_DETECT",
                    "'brief' must be"),
    "key unknown": (CHANNELS, "type   = 244", "type   = 244\nsort   = 1", "channel BSP_MSG_LOOP_DETECT",
                    "'sort' is not a key"),
    "number too large": (CHANNELS, "type   = 244", "type   = 4294967296", "channel BSP_MSG_LOOP_DETECT",
                         "'type' must be a number"),
    "number negative": (CHANNELS, "type   = 244", "type   = -1", "channel BSP_MSG_LOOP_DETECT",
                        "'type' must be a number"),
    "number not one": (CHANNELS, "type   = 244", "type   = true", "channel BSP_MSG_LOOP_DETECT",
                       "'type' must be a number"),
    "name not one": (CHANNELS, '"BSP_MSG_LOOP_DETECT"', '"BSP MSG"', "channel BSP MSG", "must be a C identifier"),
    "name a number": (CHANNELS, '"BSP_MSG_LOOP_DETECT"', "5", "channel 5", "must be a C identifier"),
    "entry not a table": (RECORDS, "fields  = [", "fields  = [ 5,", "record bsp_pon_msg: field", "not a table"),

    "release not one": (BINDING, 'name    = "bsp_pon_bind_onu_spec_id"',
                        'name    = "bsp_pon_bind_onu_spec_id"\nsince = "next"', "operation bsp_pon_bind_onu_spec_id",
                        "'since' is a release, as 0.1, not 'next'"),

    # These cases break records.
    "record of a wrong size": (RECORDS, "size    = 944", "size    = 948", "record bsp_pon_msg",
                               "948 bytes is not the size"),
    "record of an unknown name": (RECORDS, '"bsp_onu_msg"', '"bsp_other_msg"', "record bsp_other_msg",
                                  "is not the size"),
    "record twice": (RECORDS, '"bsp_pon_msg_ext"\nsize    = 1044', '"bsp_pon_msg"\nsize    = 944', "record bsp_pon_msg",
                     "the name is taken"),
    "record's command not a field": (RECORDS, 'command = "cmd"', 'command = "code"', "record bsp_pon_msg",
                                     "names 'code'"),
    "record's fields not a list": (RECORDS, "", "[[record]]\nname = 'r'\nsize = 4\nbrief = 'x'\nfields = 3\n",
                                   "record r",
                                   "'fields' must be a list"),
    "payload short of the end": (RECORDS, "size    = 4120", "size    = 4124", "record bsp_profile_msg",
                                 "does not reach"),
    "fields overlap": (RECORDS, "offset = 109, type", "offset = 108, type", "field text109", "overlaps field text45"),
    "field outside": (RECORDS, "bytes:515", "bytes:516", "field data429", "not inside the record of 944 bytes"),
    "field of no bytes": (RECORDS, "bytes:515", "bytes:0", "field data429", "not inside the record"),
    "field twice": (RECORDS, '"text109"', '"text45" ', "field text45", "the name is taken"),
    "scale of nothing": (LAYOUTS, 'type = "u32", unit = "m", brief = "nearest', 'type = "u32", scale = 0.1, brief = "nearest',
                         "field min_distance", "only numbers with a unit"),
    "scale not a number": (LAYOUTS, 'unit = "m", brief = "nearest', 'unit = "m", scale = "x", brief = "nearest',
                           "field min_distance", "'scale' must be a number above 0"),
    "values not a table": (LAYOUTS, 'unit = "m", brief = "nearest', 'values = ["a"], brief = "nearest',
                           "field min_distance", "'values' must be a table of names with numbers from 0 to 4294967295"),
    "values too great": (CHIP_LAYOUTS, "values = { \"strict priority\" = 0", "values = { \"strict priority\" = 256",
                         "field scheduler", "'values' must be a table of names with numbers from 0 to 255"),
    "values with one number": (CHIP_LAYOUTS, "\"weighted round robin\" = 1", "\"weighted round robin\" = 0",
                               "field scheduler", "gives a number two names"),
    "value without a name": (CHIP_LAYOUTS, "\"weighted round robin\" = 1", "\" \" = 1", "field scheduler", "is no name"),
    "flag beyond the number": (CHIP_LAYOUTS, "reset = 7", "reset = 8", "field control", "numbers from 0 to 7"),
    "range upside down": (LAYOUTS, 'unit = "m", brief = "nearest', 'unit = "m", range = [2, 1], brief = "nearest',
                          "field min_distance", "two whole numbers in ascending order"),
    "range beyond the number": (LAYOUTS, 'unit = "m", brief = "nearest',
                                'unit = "m", range = [0, 4294967296], brief = "nearest',
                                "field min_distance", "more than a u32 holds"),
    "range beside values": (CHIP_LAYOUTS, "values = { \"strict priority\" = 0", "range = [0, 1], values = { \"strict priority\" = 0",
                            "field scheduler", "needs no 'range'"),
    "unit beside hexadecimal": (LAYOUTS, 'unit = "m", brief = "nearest',
                                'unit = "m", hexadecimal = true, brief = "nearest', "field min_distance", "has either"),
    "values of a text": (LAYOUTS, 'type = "idset", brief', 'type = "idset", values = { a = 0 }, brief', "field onu_set",
                         "only numbers have"),
    "hexadecimal set": (LAYOUTS, 'type = "idset", brief', 'type = "idset", hexadecimal = true, brief', "field onu_set",
                        "only numbers have"),
    "condition of two fields": (UNI, 'where = { mode = ["translation", "trunk"] }',
                                'where = { mode = ["trunk"], pvid = ["x"] }', "field count", "must be one field"),
    "condition of an unknown field": (UNI, 'where = { mode =', 'where = { mood =', "field count", "of 'mood'"),
    "condition of an unknown value": (UNI, '["translation", "trunk"]', '["translating", "trunk"]', "field count",
                                      "must list names of values"),
    "counted by an unknown field": (UNI, 'counted = "count"', 'counted = "number"', "field ability_1", "names the field"),
    "counted though not repeated": (UNI, 'range = [1, 5], brief', 'range = [1, 5], counted = "ability", brief',
                                    "field count", "names the field"),
    "decided by an unknown field": (UNI, 'by = "field_a"', 'by = "field_x"', "field value_a_1", "says 'by' which field"),
    "decided in an unknown notation": (UNI, 'ipv4 = ["destination-IPv4"', 'ip = ["destination-IPv4"', "field value_a_1",
                                       "not ip ="),
    "decided by an unknown value": (UNI, 'hexadecimal = ["ethertype"]', 'hexadecimal = ["etertype"]', "field value_a_1",
                                    "must list values of 'field_a'"),
    "part of an unknown field": (UNI, 'part = { entries = 1 }', 'part = { entry = 1 }', "field field_a_1",
                                 "'part' must be one field"),
    "part without a number": (UNI, 'part = { entries = 1 }', 'part = { entries = 0 }', "field field_a_1",
                              "'part' must be one field"),
    "part of nothing": (UNI, 'part = { entries = 1 }', 'part = 1', "field field_a_1", "'part' must be one field"),
    "secret number": (UNI, 'range = [1, 5], brief', 'range = [1, 5], secret = true, brief', "field count",
                      "only texts and bytes"),
    "kept answer": (CHIP_LAYOUTS, "kept     = true", "kept     = true\nanswer   = true", "layout kept_mpcp",
                    "what is 'kept' is no answer"),
    "index of what is not kept": (CHIP_LAYOUTS, "kept     = true\n", "", "layout kept_mpcp", "alone may have an 'index'"),
    "left_out beside present": (UNI, 'present  = "BSP_CMD_ONU_ADMIN_STATE_GET"',
                                'present  = "BSP_CMD_ONU_ADMIN_STATE_GET"\nleft_out = "x"',
                                "layout onu_admin_state_set", "starts from nothing"),
    "present of an answer": (UNI, 'answer   = true', 'answer   = true\npresent  = "BSP_CMD_ONU_PAUSE_GET"',
                             "layout onu_admin_state", "only what is sent starts"),
    "present of an unknown command": (UNI, 'present  = "BSP_CMD_ONU_ADMIN_STATE_GET"', 'present  = "BSP_CMD_X"',
                                      "layout onu_admin_state_set", "names 'BSP_CMD_X'"),
    "word unaligned": (RECORDS, "offset = 36,  type", "offset = 35,  type", "field arg_word36", "not aligned to 4"),
    "field of an unknown type": (RECORDS, '"text:128"', '"string:128"', "field text237", "'type' must be one of"),
    "text without a size": (RECORDS, '"text:128"', '"text"', "field text237", "'type' must be one of"),
    "word with a size": (RECORDS, 'offset = 4,   type = "u32"', 'offset = 4,   type = "u32:4"', "field pon_port",
                         "'type' must be one of"),

    # These cases break channels, statuses and commands.
    "channel type twice": (CHANNELS, "type   = 244", "type   = 243", "channel BSP_MSG_LOOP_DETECT",
                           "type 243 is taken"),
    "channel twice": (CHANNELS, '"BSP_MSG_LOOP_DETECT"', '"BSP_MSG_PON"', "channel BSP_MSG_PON", "the name is taken"),
    "channel of an unknown record": (CHANNELS, 'record = "bsp_onu_msg"', 'record = "bsp_msg"',
                                     "channel BSP_MSG_ONU_INFO",
                                     "names 'bsp_msg', which does not exist"),
    "status value twice": (STATUS, "value  = 1002", "value  = 1001", "status BSP_ERR_NOMEM", "value 1001 is taken"),
    "status twice": (STATUS, '"BSP_ERR_NOMEM"', '"BSP_ERR_IPC"', "status BSP_ERR_IPC", "the name is taken"),
    "status of unknown origin": (STATUS, 'origin = "library"', 'origin = "board"', "status BSP_OK",
                                 "'origin' must be one of"),
    "command code twice": (BINDING, "code    = 764", "code    = 424", "command BSP_CMD_ONU_SUPPORT_SET",
                           "code 424 is BSP_CMD_OPT_RANGE_SET"),
    "command code of another family": (STORED, "code    = 383", "code    = 364", "command BSP_CMD_VIEW_ONU_INFO_SNMP",
                                       "code 364 is BSP_CMD_ONU_BIND_AUTO"),
    "command code shared without a call": (STORED, 'call    = "dgram-get"\n', "", "command BSP_CMD_ONU_INFO_GET",
                                           "state the 'call' that each is for"),
    "command code shared by one call": (STORED, 'call    = "dgram-get"', 'call    = "get"',
                                        "command BSP_CMD_ONU_INFO_GET", "code 381 is BSP_CMD_WHITELIST_GET"),
    "command with a twin of another code": (OPTICS, 'twin    = "BSP_CMD_MPCP_SET"', 'twin    = "BSP_CMD_ONU_DEREGISTER"',
                                            "command BSP_CMD_OPTICS_STATUS_SET", "another code or channel"),
    "command with a twin that is none": (OPTICS, 'twin    = "BSP_CMD_MPCP_SET"', 'twin    = "BSP_CMD_MPCP"',
                                         "command BSP_CMD_OPTICS_STATUS_SET", "names 'BSP_CMD_MPCP'"),
    "command of an unknown call": (STORED, 'call    = "dgram-get"', 'call    = "mail"', "command BSP_CMD_ONU_INFO_GET",
                                   "'call' must be one of"),
    "command twice": (BINDING, '"BSP_CMD_ONU_SUPPORT_SET"', '"BSP_CMD_OPT_RANGE_SET"', "command BSP_CMD_OPT_RANGE_SET",
                      ""),
    "command without the prefix": (BINDING, 'name    = "BSP_CMD_ONU_SUPPORT_SET"', 'name    = "ONU_SUPPORT_SET"',
                                   "command ONU_SUPPORT_SET", "must start with BSP_CMD_"),
    "command of an unknown class": (BINDING, 'class   = "write"', 'class   = "harmless"',
                                    "command BSP_CMD_OPT_RANGE_SET",
                                    "'class' must be one of"),
    "command on an unknown channel": (BINDING, 'channel = "BSP_MSG_PON"', 'channel = "BSP_MSG"',
                                      "command BSP_CMD_ONU_BIND_AUTO", "names 'BSP_MSG'"),

    # These cases break operations.
    "operation twice": (BINDING, '"bsp_ponmsg_cfg_set"', '"bsp_pon_cfg"', "operation bsp_pon_cfg", "the name is taken"),
    "operation of another family": (PASSTHROUGH, '"bsp_pon_exec_set"', '"bsp_pon_cfg"', "operation bsp_pon_cfg",
                                    "taken by an entry of catalog/admission/binding.toml"),
    "unknown command": (BINDING, 'command = "BSP_CMD_ONU_BIND"', 'command = "BSP_CMD_BIND"',
                        "operation bsp_pon_bind_onu_spec_id", "names 'BSP_CMD_BIND', which does not exist"),
    "channel beside a command": (BINDING, 'command = "BSP_CMD_ONU_BIND"',
                                 'command = "BSP_CMD_ONU_BIND"\nchannel = "BSP_MSG_PON"',
                                 "operation bsp_pon_bind_onu_spec_id", "'channel' is stated by its command already"),
    "unknown call": (BINDING, 'call    = "set"', 'call    = "put"', "operation bsp_pon_cfg", "'call' must be one of"),
    "call not a text": (BINDING, 'call    = "set"', 'call    = ["set"]', "operation bsp_pon_cfg",
                        "'call' must be one of"),
    "unknown failure": (BINDING, 'error_policy = "report"', 'error_policy = "A"', "operation bsp_pon_cfg",
                        "'error_policy' must be one of"),
    "unknown request": (BINDING, 'request = "as-is"', 'request = "raw"', "operation bsp_ponmsg_cfg_set",
                        "'request' must be one of"),
    "get without an answer": (BINDING, 'call    = "set"', 'call    = "get"', "operation bsp_pon_cfg",
                              "get calls have an 'answer'"),
    "set with an answer": (PASSTHROUGH, 'call    = "get"', 'call    = "set"', "operation bsp_pon_exec_get",
                           "set calls have none"),
    "answer in an unknown place": (PASSTHROUGH, 'buffer = "own"', 'buffer = "mine"', "operation bsp_pon_exec_get_json",
                                   "'buffer' must be one of"),
    "answer in place of another length": (PASSTHROUGH, "preset = 944", "preset = 940", "operation bsp_pon_exec_get",
                                          "the record's length as its preset"),
    "answer in no more than it offers": (PASSTHROUGH, 'buffer = "own", preset = 0', 'buffer = "own", preset = 0, size = 944',
                                         "operation bsp_pon_exec_get_json", "more than the 944 bytes that it offers"),
    "size of a caller's buffer": (PASSTHROUGH, 'preset = 944', 'preset = 944, size = 1044', "operation bsp_pon_exec_get",
                                  "only a buffer of the library's own has a 'size'"),
    "as-is without a record": (BINDING, 'call    = "set"', 'call    = "set"\nrequest = "as-is"',
                               "operation bsp_pon_cfg",
                               "has one argument of type record"),
    "record in a built request": (BINDING, 'request = "as-is"', 'request = "built"', "operation bsp_ponmsg_cfg_set",
                                  "others none"),
    "call missing": (BINDING, 'call    = "set"\n', "", "operation bsp_pon_cfg", "'call' is missing"),
    "failure missing": (BINDING, 'error_policy = "report"\n', "", "operation bsp_pon_cfg", "'error_policy' is missing"),
    "command by another call": (LISTS, 'call    = "get"\nerror_policy', 'call    = "dgram-get"\nerror_policy',
                                "operation bsp_pon_get_w_onu_spec_id", "BSP_CMD_WHITELIST_GET is for get calls only"),
    "stamped without a command": (BINDING, 'request = "as-is"', 'request = "stamped"', "operation bsp_ponmsg_cfg_set",
                                  "where it has one"),
    "answer of an unknown record": (STORED, 'preset = 0, record = "bsp_pon_msg_ext"', 'preset = 0, record = "bsp_msg"',
                                    "operation bsp_pon_onu_get_cfg_info", "names 'bsp_msg'"),
    "caller's buffer without an argument": (PASSTHROUGH, 'buffer = "own"', 'buffer = "caller"',
                                            "operation bsp_pon_exec_get_json", "one argument of type response"),
    "response in a buffer of our own": (LISTS, 'buffer = "caller"', 'buffer = "own"',
                                        "operation bsp_pon_get_w_onu_spec_id", "others none"),
    "oddity of an unknown facet": (STORED, "odd     = { status", "odd     = { weather",
                                   "operation bsp_pon_onu_get_cfg_info", "'odd' knows request, status, null, answer, not 'weather'"),
    "oddity without words": (STORED, "odd     = { status = \"BSP_OK after every exchange that succeeded: the service's "
                             "status word is dropped\" }", "odd     = { status = true }",
                             "operation bsp_pon_onu_get_cfg_info", "says in words"),
    "wrapper of nothing": (LISTS, 'via     = "bsp_pon_config_by_db"', 'via     = "bsp_pon_config"',
                           "operation bsp_pon_get_onu_blacklist_snmp", "names 'bsp_pon_config'"),
    "wrapper of a local function": (LISTS, 'via     = "bsp_pon_config_by_db"', 'via     = "ont_id_res_str"',
                                    "operation bsp_pon_get_onu_blacklist_snmp", "does not go through another itself"),
    "wrapper of a wrapper": (LISTS, 'via     = "bsp_pon_config_by_db"', 'via     = "bsp_pon_get_onu_info_snmp"',
                             "operation bsp_pon_get_onu_blacklist_snmp", "does not go through another itself"),
    "wrapper of itself": (LISTS, 'via     = "bsp_pon_config_by_db"', 'via     = "bsp_pon_get_onu_blacklist_snmp"',
                          "operation bsp_pon_get_onu_blacklist_snmp", "does not go through another itself"),
    "wrapper with a call of its own": (LISTS, 'via     = "bsp_pon_config_by_db"',
                                       'via     = "bsp_pon_config_by_db"\ncall    = "get"',
                                       "operation bsp_pon_get_onu_blacklist_snmp", "that of bsp_pon_config_by_db"),
    "wrapper on another channel": (LISTS, 'via     = "bsp_pon_config_by_db"', 'via     = "bsp_pon_platform_by_db"',
                                   "operation bsp_pon_get_onu_blacklist_snmp", "a command of BSP_MSG_PLAT"),
    "wrapper's database where there is none": (LISTS, 'via     = "bsp_pon_config_by_db"',
                                               'via     = "bsp_pon_reject_onu_to_blacklist"',
                                               "argument db_out", "has no result database"),
    "arguments not a list": (BINDING, "", "[[operation]]\nname = 'o'\nbrief = 'x'\ncommand = 'BSP_CMD_ONU_BIND'\n"
                             "call = 'set'\nerror_policy = 'report'\nargs = 3\n", "operation o", "'args' must be a list"),

    # These cases break arguments.
    "argument twice": (BINDING, '"pon_port", type', '"cmd", type', "argument cmd", "the name is taken"),
    "argument of an unknown type": (BINDING, 'type = "mac"', 'type = "MAC"', "argument mac", "'type' must be one of"),
    "argument into an unknown field": (BINDING, 'to = "onu_mac"', 'to = "mac"', "argument mac",
                                       "names 'mac', which does not exist"),
    "argument into a field of another type": (BINDING, 'to = "onu_mac"', 'to = "text45"', "argument mac",
                                              "text45, which is a text"),
    "argument into no field": (BINDING, 'type = "u32",    to = "cmd",      brief', 'type = "u32", brief',
                               "argument cmd", "'to' must be"),
    "flag not one": (BINDING, "required = true", "required = 1", "argument mac", "'required' must be true or false"),
    "required and optional": (BINDING, "required = true", "required = true, optional = true", "argument mac",
                              "not both"),
    "number required": (BINDING, 'to = "pon_port",  brief', 'to = "pon_port", required = true, brief',
                        "argument pon_port",
                        "only pointers"),
    "key of another type": (BINDING, 'to = "onu_mac",   brief', 'to = "onu_mac", bound = 10240, brief', "argument mac",
                            "'bound' means nothing for a mac"),
    "length of nothing": (BINDING, 'of = "data"', 'of = "block"', "argument length", "names 'block'"),
    "length of a number": (BINDING, 'of = "data"', 'of = "cmd"', "argument length", "cmd, which is not a block"),
    "bound not known": (PASSTHROUGH, "bound = 10240", "bound = 10000", "argument db_out", "'bound' must be one of"),
    "database from elsewhere": (PASSTHROUGH, 'from = "shmem"', 'from = "disk"', "argument db_out",
                                "'from' must be one of"),
    "database keyed by a command that is not stated": (PASSTHROUGH, 'key = "cmd"', 'key = "command"',
                                                       "argument db_out", "it has none"),
    "database keyed by another argument": (PASSTHROUGH, 'key = "cmd"', 'key = "pon_port"', "argument db_out",
                                           "not the command code"),
    "database from no text": (STORED, 'at = "ext_payload"', 'at = "payload"', "argument db_out", "names 'payload'"),
    "bound of a text": (STORED, 'at = "ext_payload"', 'at = "ext_payload", bound = 10240', "argument db_out",
                        "'bound' means nothing for a db"),
    "wrapper's database with a bound": (LISTS, '{ name = "db_out", type = "db", brief',
                                        '{ name = "db_out", type = "db", bound = 10240, brief', "argument db_out",
                                        "'bound' means nothing"),
    "block of no bytes": (OPTICS, "size = 464", "size = 0", "argument out", "at least one byte"),
    "block without a size": (OPTICS, "size = 464, ", "", "argument out", "'size' must be a number"),
    "block longer than its field": (OPTICS, 'to = "plat_data", size = 32', 'to = "plat_data", size = 1025',
                                    "argument status", "1025 bytes do not fit plat_data, which has 1024"),
    "block of two fields": (CHIP, 'to = "plat_data", from = "plat_data"', 'to = "plat_data", from = "plat_arg96"',
                            "argument buf", "goes and comes by the same field"),
    "size of a number": (OPTICS, 'to = "plat_arg120", brief', 'to = "plat_arg120", size = 4, brief', "argument sel",
                         "'size' means nothing for a u32"),
    "word out of a number of another width": (REQUESTS, 'type = "block-out", from = "onu_data", size = 1, optional = true',
                                              'type = "u16-out", from = "onu_data"', "argument out",
                                              "onu_data, which is a bytes"),
    "skipped bytes that are no number": (QUERIES, "skip = 4", "skip = true", "argument out", "'skip' must be a number"),
    "skipped bytes of a text": (PASSTHROUGH, 'type = "text-out", from', 'type = "text-out", skip = 4, from',
                                "argument name_out", "'skip' means nothing for a text-out"),
    "length of a word that comes out": (REQUESTS, 'type = "block-out", from = "onu_data", optional = true',
                                        'type = "u32-out", from = "onu_data"', "argument out_len",
                                        "out, which is not a block"),
    "constant that is no word": (PROFILES, "constants = { is_get = 1 }", "constants = { data = 1 }",
                                 "operation bsp_profile_exec_get", "which is not a word of bsp_profile_msg"),
    "constant without a value": (PROFILES, "constants = { is_get = 1 }", 'constants = { is_get = "yes" }',
                                 "operation bsp_profile_exec_get", "which is not a number"),
    "file of no answer": (PROFILES, 'at = "data", logged', 'at = "date", logged', "argument db_out", "names 'date'"),
    "log line without a text": (QUERIES, 'logged = "filename=%s"', 'logged = "filename"', "argument out",
                                "holds %s where the text goes"),
    "log line with a number": (QUERIES, 'logged = "filename=%s"', 'logged = "%d filename=%s"', "argument out",
                               "holds %s where the text goes"),
    "operation of an unknown record": (FUNCTIONS, 'record  = "bsp_pon_msg"', 'record  = "bsp_msg"',
                                       "operation bsp_poncfg_set", "names 'bsp_msg'"),
    "picked field that is none": (LISTS, 'fields = ["pon_port", "onu_id"]', 'fields = ["pon_port", "id"]',
                                  "argument record", "names 'id'"),
    "database without a key": (PASSTHROUGH, 'key = "cmd"', 'key = "code"', "argument db_out", "names 'code'"),
    "database of a set call": (BINDING, 'type = "u32", to = "arg_value", brief = "support',
                               'type = "db", from = "shmem", key = "command", bound = 10240, brief = "support',
                               "argument value", "a set call has no answer"),

    # These cases break types and functions.
    "member of a type without words": (IDS, "words = 4, ", "", "type onu_id_set: member", "'words' is missing"),
    "declaration without a name": (IDS, 'declaration = "uint32_t {}"', 'declaration = "uint32_t"', "argument last_id",
                                   "where the name goes"),
    "function twice": (IDS, '"ont_id_res_str_expand"', '"ont_id_res_str"', "function ont_id_res_str",
                       "the name is taken"),
    "function of an operation's name": (BINDING, '"bsp_pon_cfg"', '"ont_id_res_str"', "operation ont_id_res_str",
                                        "taken by an entry of catalog/frame/onu_ids.toml"),

    # These cases break layouts and views.
    "layout of half an answer": (LAYOUTS, 'name     = "opt_range"', 'name     = "opt_range"\nanswer   = "no"',
                                 "layout opt_range", "'answer' must be true or false"),
    "layout of an unknown command": (LAYOUTS, '"BSP_CMD_OPT_RANGE_SET"', '"BSP_CMD_OPT"', "layout opt_range",
                                     "names 'BSP_CMD_OPT'"),
    "layout's commands not a list": (LAYOUTS, '["BSP_CMD_OPT_RANGE_SET"]', '"BSP_CMD_OPT_RANGE_SET"',
                                     "layout opt_range",
                                     "'commands' must be a list"),
    "layout of an unknown record": (LAYOUTS, 'record   = "bsp_pon_msg"', 'record   = "bsp_msg"', "layout onu_batch",
                                    "names 'bsp_msg'"),
    "layout's field outside": (LAYOUTS, "offset = 436", "offset = 944", "field max_distance", "not inside the record"),
    "layout's fields overlap": (LAYOUTS, "offset = 436", "offset = 432", "overlaps field", ""),
    "layout's field that comes once": (LAYOUTS, "offset = 436", "times = 1, every = 4, offset = 436",
                                       "field max_distance", "'times' must be 2 at least"),
    "layout's fields that overlap themselves": (LAYOUTS, "offset = 436", "times = 3, every = 3, offset = 436",
                                                "field max_distance_2", "is not aligned"),
    "layout's field that comes often, at no distance": (LAYOUTS, "offset = 436", "times = 3, offset = 436",
                                                        "field max_distance", "'every' must be a number"),
    "layout like none": (UNI_LAYOUTS, 'like     = "onu_vlan"', 'like     = "onu_vlans"', "layout onu_vlan_set",
                         "names 'onu_vlans', which does not exist"),
    "layout like another, and with fields": (UNI_LAYOUTS, 'like     = "onu_vlan"', 'like     = "onu_vlan"\nfields   = []',
                                             "layout onu_vlan_set", "not both"),
    "view of a layout's name": (VIEWS, 'name     = "base_info"', 'name     = "onu_batch"', "view onu_batch",
                                "the name is taken"),
    "view of an unknown command": (VIEWS, '"BSP_CMD_VIEW_BASE_INFO_WEB"]', '"BSP_CMD_VIEW"]', "view base_info",
                                   "names 'BSP_CMD_VIEW'"),
    "column of an unknown type": (VIEWS, 'type = "mac"', 'type = "macaddr"', "column mac", "'type' must be one of"),
    "view of nothing": (VIEWS, "", "[[view]]\nname = 'v'\nbrief = 'x'\ncommands = []\ncolumns = []\n", "view v",
                        "'columns' has none"),
    "column that is half null": (VIEWS, "nullable = true", "nullable = 1", "column onu_id", "'nullable' must be true or false"),
    "order by more columns than there are": (VIEWS, "order    = 2", "order    = 99", "view onu_info",
                                             "'order' is more than"),
    "column of an unknown priority": (VIEWS, "nullable = true", 'priority = "top"', "column onu_id",
                                      "'priority' must be one of high, normal, low"),
    "column twice": (VIEWS, '"onu_id"', '"pon_port"', "column pon_port", "the name is taken"),
}


class WrongInput(unittest.TestCase):
    def refused(self, copy):
        before = dict(copy.files)
        status, said = generate(copy)
        self.assertEqual(status, 2, said)
        self.assertEqual(said.count("\n"), 1, said)
        self.assertEqual(copy.files, before)
        return said

    def test_is_refused_with_file_entry_and_reason(self):
        for name, (file, old, new, entry, reason) in BROKEN.items():
            with self.subTest(name):
                copy = Copy()
                copy.replace(file, old, new)
                said = self.refused(copy)
                self.assertTrue(said.startswith(f"generate.py: {file}: "), said)
                self.assertIn(entry, said)
                self.assertIn(reason, said)

    def test_missing_file_is_named(self):
        copy = Copy()
        del copy.files["catalog/status.toml"]
        self.assertEqual(self.refused(copy), "generate.py: catalog/status.toml: the file is missing\n")

    def test_ends_the_program_with_its_message_and_writes_nothing(self):
        copy = Copy()
        copy.replace(CHANNELS, "", "[[channel]]\n")
        copy.replace("include/bsp_pon.h", "", "stale\n")
        with tempfile.TemporaryDirectory() as folder:
            copy.write_to(folder)
            self.assertEqual(run("--root", folder), (2, "", f"generate.py: {CHANNELS}: channel ?: 'name' is missing\n"))
            self.assertEqual(contents(folder), copy.files)


if __name__ == "__main__":
    unittest.main()
