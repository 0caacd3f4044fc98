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
    [](const Value *v) { return bsp_pon_exec_get(static_cast<bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_exec_set(static_cast<const bsp_pon_msg *>(v[0].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get_json(v[0].number, v[1].number, v[2].number, static_cast<db_handle **>(v[3].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get_json_(v[0].number, v[1].number, v[2].number, static_cast<db_handle **>(v[3].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get_file(v[0].number, v[1].number, static_cast<char *>(v[2].pointer)); },
    [](const Value *v) { return bsp_pon_exec_get_onu_json(v[0].number, v[1].number, v[2].number, v[3].number, static_cast<db_handle **>(v[4].pointer)); },
};

} // namespace

uint32_t invoke(const Operation &operation, std::span<const Value> values)
{
    return thunks[&operation - operations().data()](values.data());
}

} // namespace catalogue
