// These commands concern the image banks of ONUs, and how they are updated.
#include <array>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/lifecycle/images.h"
#include "model/lifecycle/upgrade.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

Outcome write_part(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_image_part;
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const auto bytes = request.get(at::data);
    const auto version = request.get(at::version);
    const auto length = request.get(at::length);
    ImagePart part{.offset = request.get(at::offset),
                   .size = request.get(at::size),
                   .version = {},
                   .bytes = {reinterpret_cast<const char *>(bytes.data()), bytes.size()}};
    if (length == 0 || length > part.bytes.size()) return {PON_ERR_BAD_RECORD};
    part.bytes = part.bytes.substr(0, length);
    if (part.offset == 0 && !get_text(version, part.version)) return {PON_ERR_BAD_RECORD};
    return to_outcome(push_part(olt, found.onu, part));
}

Outcome commit(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    return to_outcome(commit_image(olt, found.onu));
}

Outcome get_status(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_image_status;
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const Banks banks = banks_of(olt, *found.onu.port, found.onu.binding->mac);
    OnuBlock block(20);
    if (banks.push != Banks::Push::none) {
        const Banks::Bank &bank = banks.pushed_bank();
        block.put(at::state, banks.push);
        block.put(at::received, bank.received);
        block.put(at::size, bank.size);
        block.put(at::crc, bank.crc);
        block.put(at::bank, banks.pushed + 1);
        block.put(at::progress, bank.percent());
    }
    return answer_with(request, block);
}

Outcome get_banks(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_banks;
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const Banks banks = banks_of(olt, *found.onu.port, found.onu.binding->mac);
    OnuBlock block(64);
    for (uint32_t index = 0; index < banks.banks.size(); ++index) {
        const Banks::Bank &bank = banks.banks[index];
        block.put(at::version[index], bank.name());
        block.put(at::valid[index], bank.valid != 0);
        block.put(at::active[index], index == banks.active);
        block.put(at::committed[index], index == banks.committed);
        block.put(at::size[index], bank.size);
        block.put(at::crc[index], bank.crc);
    }
    return answer_with(request, block);
}

Outcome update(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_image_update;
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const auto field = request.get(at::file);
    std::string file;
    if (!get_text(field, file) || file.empty()) return {PON_ERR_BAD_RECORD};
    const auto bank = request.get(at::bank);
    const Banks banks = banks_of(olt, *found.onu.port, found.onu.binding->mac);
    if (bank != 0 && bank != banks.spare() + 1) return {PON_ERR_BAD_RECORD};
    return to_outcome(upgrade_onu_with(olt, *found.onu.port, *found.onu.binding, file));
}

void add_row(Table<view::onu_upgrade_status> &table, const Olt &olt, const RemoteOnu &onu)
{
    const Banks banks = banks_of(olt, *onu.port, onu.binding->mac);
    const Banks::Bank *pushed = banks.push == Banks::Push::none ? nullptr : &banks.pushed_bank();
    const UpgradeProgress upgrade = upgrade_progress(olt, *onu.port, onu.binding->mac);
    table.add({.pon_port = onu.port->number,
               .onu_id = onu.onu_id,
               .mac = onu.binding->mac,
               .state = to_text(onu.state),
               .bank = banks.active + 1,
               .running = onu.device.software,
               .committed = banks.banks.at(banks.committed).name(),
               .run = upgrade.state,
               .progress = upgrade.progress,
               .reason = upgrade.reason,
               .pushed = to_text(banks.push),
               .version = pushed ? std::optional(pushed->name()) : std::nullopt,
               .received = pushed ? std::optional(pushed->percent()) : std::nullopt});
}

Outcome view_status(const Olt &olt, const Request &request)
{
    const Selection selection = selection_of(olt, request);
    if (selection.status != BSP_OK) return {selection.status};
    Table<view::onu_upgrade_status> table;
    bool found = false;
    for (const PonPort &port : selection.ports)
        for (const RemoteOnu &onu : onus_of(olt, port)) {
            if (selection.id != 0 && selection.id != onu.onu_id) continue;
            add_row(table, olt, onu);
            found = true;
        }
    if (selection.id != 0 && !found) return {PON_ERR_NOT_BOUND};
    return {BSP_OK, {}, table.text()};
}

constexpr Handler handlers[] = {
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_IMAGE_WRITE, write_part},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_IMAGE_COMMIT, commit},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_IMAGE_STATUS_GET, get_status},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_BANKS_GET, get_banks},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_IMAGE_UPDATE, update},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_UPGRADE_STATUS, view_status},
};

} // namespace

std::span<const Handler> onu_images_handlers()
{
    return handlers;
}

} // namespace ponsim
