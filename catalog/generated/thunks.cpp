// generated from the catalogue by catalog/generate.py; change the catalogue, not this file.
// clang-format off
#include "../invoke.h"

#include "bsp_pon.h"

namespace catalogue
{
namespace
{

using Thunk = uint32_t (*)(const Value *);

// In the order of operations().
constexpr Thunk thunks[] = {
    [](const Value *v) { return bsp_pon_onu_auth_mode_type_set(v[0].number, static_cast<const char *>(v[1].pointer), static_cast<const char *>(v[2].pointer), v[3].number); },
    [](const Value *v) { return bsp_pon_onu_auth_set(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_onu_auth_mode_type_get(v[0].number, static_cast<void *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_onu_auth_infolist_get(static_cast<db_handle **>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_confirm_onu(v[0].number, static_cast<const bsp_pon_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_onu_description(v[0].number, v[1].number, static_cast<const char *>(v[2].pointer)); },
    [](const Value *v) { return bsp_pon_cfg(v[0].number, v[1].number, static_cast<const void *>(v[2].pointer), v[3].number); },
    [](const Value *v) { return bsp_ponmsg_cfg_set(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_bind_onu_auto_id(v[0].number, static_cast<const uint8_t *>(v[1].pointer), static_cast<const char *>(v[2].pointer), static_cast<const char *>(v[3].pointer), v[4].number, static_cast<const char *>(v[5].pointer)); },
    [](const Value *v) { return bsp_pon_onu_support_set(v[0].number, static_cast<const uint8_t *>(v[1].pointer), v[2].number); },
    [](const Value *v) { return bsp_pon_bind_onu_spec_id(v[0].number, v[1].number, static_cast<const uint8_t *>(v[2].pointer), static_cast<const char *>(v[3].pointer), static_cast<const char *>(v[4].pointer), v[5].number, static_cast<const char *>(v[6].pointer)); },
    [](const Value *v) { return bsp_pon_no_bind_onu_spec_id(v[0].number, v[1].number); },
    [](const Value *v) { return bsp_pon_no_bind_onu_spec_id_and_mac(v[0].number, v[1].number, static_cast<const uint8_t *>(v[2].pointer)); },
    [](const Value *v) { return bsp_pon_no_bind_onu_by_mac(v[0].number, static_cast<const uint8_t *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_no_bind_onu_all(v[0].number); },
    [](const Value *v) { return bsp_pon_no_bind_offline_onu_all(v[0].number); },
    [](const Value *v) { return bsp_pon_no_bind_onu_batch_spec_id(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_reboot_onu_batch(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_onu_batch_sort(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_set_opt_range(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_blacklist_add_onu_auto_id(v[0].number, static_cast<const uint8_t *>(v[1].pointer), static_cast<const char *>(v[2].pointer)); },
    [](const Value *v) { return bsp_pon_reject_onu_to_blacklist(v[0].number, v[1].number); },
    [](const Value *v) { return bsp_pon_reject_onu_to_blacklist_batch(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_no_bind_blacklist_onu_by_mac(v[0].number, static_cast<const uint8_t *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_no_bind_blacklist_batch(static_cast<bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_get_w_onu_spec_id(v[0].number, v[1].number, static_cast<void *>(v[2].pointer)); },
    [](const Value *v) { return bsp_pon_get_w_onu_by_mac(v[0].number, static_cast<const uint8_t *>(v[1].pointer), static_cast<void *>(v[2].pointer)); },
    [](const Value *v) { return bsp_pon_get_w_onu_id_resouce(v[0].number, static_cast<void *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_b_onu_id_resouce(v[0].number, static_cast<void *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_onu_blacklist(static_cast<bsp_pon_msg *>(v[0].pointer), static_cast<db_handle **>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_b_onu_spec_id(static_cast<const bsp_pon_msg *>(v[0].pointer), static_cast<db_handle **>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_b_onu_by_mac(v[0].number, static_cast<const uint8_t *>(v[1].pointer), static_cast<db_handle **>(v[2].pointer)); },
    [](const Value *v) { return bsp_pon_get_onu_blacklist_snmp(static_cast<db_handle **>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_get_onu_blacklist_web(static_cast<db_handle **>(v[0].pointer), static_cast<bsp_pon_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get(static_cast<bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_exec_set(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get_json(v[0].number, v[1].number, v[2].number, static_cast<db_handle **>(v[3].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get_json_(v[0].number, v[1].number, v[2].number, static_cast<db_handle **>(v[3].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get_file(v[0].number, v[1].number, static_cast<char *>(v[2].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get_onu_json(v[0].number, v[1].number, v[2].number, v[3].number, static_cast<db_handle **>(v[4].pointer)); },
    [](const Value *v) { return bsp_pon_config_by_db(static_cast<db_handle **>(v[0].pointer), static_cast<const bsp_pon_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pononu_ctc_config_by_db(static_cast<db_handle **>(v[0].pointer), static_cast<const bsp_onu_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_platform_by_db(static_cast<db_handle **>(v[0].pointer), static_cast<const bsp_plat_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_onu_info(static_cast<db_handle **>(v[0].pointer), static_cast<bsp_pon_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_onu_info_snmp(static_cast<db_handle **>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_get_onu_info_web(static_cast<db_handle **>(v[0].pointer), static_cast<bsp_pon_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_onu_cap_snmp(static_cast<db_handle **>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_get_base_info_web(static_cast<db_handle **>(v[0].pointer), static_cast<bsp_pon_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_upgrade_base_info_web(static_cast<db_handle **>(v[0].pointer), static_cast<bsp_pon_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_get_onu_alarm(static_cast<db_handle **>(v[0].pointer), static_cast<bsp_pon_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_clear_onu_alarm(static_cast<bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_get_uni_attribute_snmp(static_cast<db_handle **>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_onu_get_cfg_info(static_cast<db_handle **>(v[0].pointer), v[1].number, v[2].number); },
    [](const Value *v) { return bsp_pon_onu_get_portcfg_info(static_cast<db_handle **>(v[0].pointer), v[1].number, v[2].number); },
    [](const Value *v) { return bsp_pononu_ctc_config_snmp_get(static_cast<db_handle **>(v[0].pointer), static_cast<const bsp_onu_msg *>(v[1].pointer)); },
    [](const Value *v) { return bsp_pon_onu_get_vlan_mode_snmp(static_cast<db_handle **>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_onu_get_vlanlist_snmp(static_cast<db_handle **>(v[0].pointer)); },
};

} // namespace

uint32_t invoke(const Operation &operation, std::span<const Value> values)
{
    return thunks[&operation - operations().data()](values.data());
}

} // namespace catalogue
