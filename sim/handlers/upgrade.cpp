// Upgrade types and upgrade runs.
#include "views/upgrade.h"
#include "bsp_pon.h"
#include "generated/service_words.h"
#include "handlers/record.h"
#include "model/lifecycle/upgrade_file.h"

namespace ponsim
{
namespace
{

Outcome add_type(const Olt &olt, const Request &request)
{
    namespace at = layout::upgrade_type;
    std::string name;
    UpgradeType type{.vendor = {}, .model = {}, .version = {}, .size = request.get(at::size), .file = {}};
    const bool texts_are_good =
        get_text(request.get(at::name), name) && get_text(request.get(at::vendor), type.vendor) &&
        get_text(request.get(at::model), type.model) && get_text(request.get(at::version), type.version) &&
        get_text(request.get(at::file), type.file);
    if (!texts_are_good || !is_good(name, type)) return {PON_ERR_BAD_RECORD};
    return to_outcome(add_upgrade_types(olt, {{name, type}}));
}

Outcome delete_type(const Olt &olt, const Request &request)
{
    std::string name;
    if (!get_text(request.get(layout::upgrade_type_name::name), name)) return {PON_ERR_BAD_RECORD};
    return to_outcome(delete_upgrade_type(olt, name));
}

Outcome list_types(const Olt &olt, const Request &)
{
    return {BSP_OK, {}, upgrade_types_table(olt.upgrade_types())};
}

Outcome load_types(const Olt &olt, const Request &request)
{
    std::string name;
    if (!get_text(request.get(layout::upgrade_type_file::file), name)) return {PON_ERR_BAD_RECORD};
    UpgradeFile file = read_upgrade_file(std::string(request.upgrade_folder), name);
    if (file.status == BSP_OK) return to_outcome(add_upgrade_types(olt, file.types));
    Outcome outcome{file.status};
    outcome.problem = std::move(file.problem);
    return outcome;
}

Outcome bind_onus(const Olt &olt, const Request &request)
{
    namespace at = layout::upgrade_bind_onus;
    std::string name;
    if (!get_text(request.get(at::name), name)) return {PON_ERR_BAD_RECORD};
    return to_outcome(bind_upgrade_type(olt, request.get(at::pon_port), id_set(request, at::onu_set), name));
}

Outcome bind_port(const Olt &olt, const Request &request)
{
    namespace at = layout::upgrade_bind_port;
    std::string name;
    if (!get_text(request.get(at::name), name)) return {PON_ERR_BAD_RECORD};
    return to_outcome(bind_upgrade_type(olt, request.get(at::pon_port), name));
}

Outcome upgrade_one(const Olt &olt, const Request &request)
{
    namespace at = layout::upgrade_onu;
    return to_outcome(upgrade_onu(olt, request.get(at::pon_port), request.get(at::onu_id)));
}

Outcome upgrade_all(const Olt &olt, const Request &request)
{
    return to_outcome(upgrade_port(olt, request.get(layout::upgrade_port::pon_port)));
}

constexpr Handler handlers[] = {
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_ADD, add_type},
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_DELETE, delete_type},
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_LIST, list_types},
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_LOAD, load_types},
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_BIND_ONUS, bind_onus},
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_BIND_PORT, bind_port},
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_ONU, upgrade_one},
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_PORT, upgrade_all},
};

} // namespace

std::span<const Handler> upgrade_handlers()
{
    return handlers;
}

} // namespace ponsim
