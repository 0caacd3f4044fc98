// These commands concern the configuration of ONUs and of their UNI ports as one block, UNI profiles, LOIDs and the
// OUI, and the ARP table.
#include "model/onu/onu_config.h"

#include <algorithm>
#include <map>
#include <vector>

#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/lifecycle/authentication.h"
#include "views/onu_config.h"

namespace ponsim
{
namespace
{

// The following handlers are those of LOIDs and the OUI.

// Leaves the mode as it is. Without a LOID the record is refused, although BSP_CMD_AUTH_SET accepts that.
Outcome change_loid(const Olt &olt, const Request &request, bool remove)
{
    const auto record = request.read<bsp_pon_msg>();
    const PonPort *port = olt.port(record.pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    AuthRequest wanted{static_cast<uint32_t>(port->authentication.mode), {}, {}, remove};
    if (!get_text(record.text45, wanted.loid) || wanted.loid.empty()) return {PON_ERR_BAD_RECORD};
    if (!remove && !get_text(record.text109, wanted.password)) return {PON_ERR_BAD_RECORD};
    return to_outcome(set_authentication(olt, record.pon_port, wanted));
}

Outcome add_loid(const Olt &olt, const Request &request)
{
    return change_loid(olt, request, false);
}

Outcome delete_loid(const Olt &olt, const Request &request)
{
    return change_loid(olt, request, true);
}

Outcome view_loids(const Olt &olt, const Request &request)
{
    const Selection selection = port_selection_of(olt, request);
    if (selection.status != BSP_OK) return {selection.status};
    return {BSP_OK, {}, loids_table(olt, selection.ports)};
}

Outcome change_oui(const Olt &olt, const Request &request)
{
    return to_outcome(set_oui(olt, request.get(layout::oui::oui)));
}

// The following handlers are those of the ARP table.

// By now, the id of an entry may belong to another ONU.
bool is_behind_online_onu(const Olt &olt, const PonPort &port, const FdbEntry &entry)
{
    const std::optional<Binding> &binding = port.bindings[entry.onu_id.value()];
    if (!binding || !port.online(*binding)) return false;
    const std::vector<Station> stations = stations_behind(olt.seed(), binding->mac, olt.device_of(binding->mac));
    return std::ranges::find(stations, entry.mac, &Station::mac) != stations.end();
}

Outcome view_arp(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    const PonPort *port = olt.port(record.pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    std::vector<FdbEntry> entries = olt.fdb().entries({.network = false, .port = port->number}, olt.now());
    std::erase_if(entries, [&](const FdbEntry &entry) { return !is_behind_online_onu(olt, *port, entry); });
    bsp_pon_msg head{};
    head.cmd = record.cmd;
    head.pon_port = record.pon_port;
    Outcome outcome = Answer(head).outcome();
    outcome.file = ResultFile{arp_table(entries), offsetof(bsp_pon_msg, data429)};
    return outcome;
}

// The following handlers send several settings at once.

struct Part {
    const BlockSetting &setting;
    OnuBlock block;
};

std::vector<Part> uni_parts(const OnuBlock &config)
{
    std::vector<Part> parts;
    for (const ConfigPart &part : parts_of(config))
        parts.push_back({uni_setting(part.command), part.block});
    return parts;
}

// Sends all settings, or none.
Plan tell_all(const Olt &olt, const RemoteOnu &onu, uint32_t uni, std::span<const Part> parts)
{
    Plan all{BSP_OK};
    for (const Part &part : parts) {
        const Plan plan = send_setting(olt, onu, uni, part.block, part.setting);
        if (plan.status != BSP_OK) return {plan.status};
        all.change.add(plan.change);
    }
    return all;
}

// The port also remembers the configuration that it has received.
Plan configure_port(const Olt &olt, const RemoteOnu &onu, uint32_t uni, const OnuBlock &config)
{
    Plan plan = tell_all(olt, onu, uni, uni_parts(config));
    if (plan.status != BSP_OK) return plan;
    const Plan remembered =
        send_setting(olt, onu, onu.key(BSP_CMD_ONU_PORT_CONFIG_SET, uni), config, OnuBlock(port_config_size));
    plan.change.add(remembered.change);
    return plan;
}

Outcome set_port_config(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const auto uni = request.read<bsp_onu_msg>().onu_uni_port;
    const auto profile = request.get(layout::onu_port_config_set::profile);
    if (profile == 0) return to_outcome(configure_port(olt, found.onu, uni, data_of(request, port_config_size)));
    const std::optional<OnuBlock> config = uni_profile(olt, profile);
    if (!config) return {PON_ERR_NO_UNI_PROFILE};
    return to_outcome(configure_port(olt, found.onu, uni, *config));
}

Outcome set_onu_config(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_config_set;
    enum Bit : uint32_t { fec = 1, multicast = 2, fast_leave = 4, management = 8 };
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const uint32_t wanted = request.get(at::parts);
    if (wanted == 0 || wanted > (fec | multicast | fast_leave | management)) return {PON_ERR_BAD_RECORD};
    const auto bytes_from = [&](uint32_t offset, size_t size) {
        return OnuBlock(std::string(static_cast<const char *>(request.record) + offset, size));
    };
    std::vector<Part> parts;
    for (const auto &[bit, offset, setting] : {std::tuple{fec, at::fec.offset, &fec_setting()},
                                               {multicast, at::multicast.offset, &multicast_mode_setting()},
                                               {fast_leave, at::fast_leave.offset, &fast_leave_setting()},
                                               {management, at::address.offset, &management_setting()}})
        if (wanted & bit) parts.push_back({*setting, bytes_from(offset, setting->size)});
    return to_outcome(tell_all(olt, found.onu, 0, parts));
}

// The following handlers are those of UNI profiles.

Outcome set_profile(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    if (record.arg_value > 1) return {PON_ERR_BAD_RECORD};
    if (record.arg_value == 0) return to_outcome(set_uni_profile(olt, record.pon_port, std::nullopt));
    const std::string settings(reinterpret_cast<const char *>(record.data429), uni_profile_size);
    if (!is_good_config(OnuBlock('\0' + settings))) return {PON_ERR_BAD_RECORD};
    return to_outcome(set_uni_profile(olt, record.pon_port, settings));
}

Outcome view_profiles(const Olt &olt, const Request &request)
{
    const auto wanted = request.read<bsp_pon_msg>().pon_port;
    if (wanted != 0 && !uni_profile(olt, wanted)) return {PON_ERR_NO_UNI_PROFILE};
    std::map<uint32_t, uint32_t> ports;
    for (const ProfileUser &user : profile_users(olt))
        ++ports[user.profile()];
    std::vector<UniProfileRow> rows;
    for (uint32_t id = 1; id <= max_uni_profiles; ++id)
        if (wanted == 0 || wanted == id)
            if (const std::optional<OnuBlock> config = uni_profile(olt, id)) rows.push_back({id, *config, ports[id]});
    return {BSP_OK, {}, uni_profiles_table(rows)};
}

// Sends to UNI ports what has changed in the profiles that they took. A port whose profile was deleted stays as it is.
Outcome apply_profiles(const Olt &olt, const Request &request)
{
    const std::string_view record(static_cast<const char *>(request.record), request.length);
    if (record.find_first_not_of('\0') != std::string_view::npos) return {PON_ERR_BAD_RECORD};
    Outcome outcome{BSP_OK};
    for (const ProfileUser &user : profile_users(olt)) {
        const std::optional<OnuBlock> config = uni_profile(olt, user.profile());
        if (!config || *config == user.config) continue;
        const RemoteOnu onu = find_onu(olt, user.pon_port, user.onu_id).onu;
        if (!onu.online()) continue;
        const Plan plan = configure_port(olt, onu, user.uni, *config);
        if (plan.status == PON_ERR_NOT_ABLE)
            outcome.change.log.push_back("UNI port " + std::to_string(user.uni) + " of ONU " +
                                         std::to_string(user.pon_port) + '/' + std::to_string(user.onu_id) +
                                         " is not able to do what UNI profile " + std::to_string(user.profile()) +
                                         " asks for, and stays as it is");
        outcome.change.add(plan.change);
    }
    return outcome;
}

constexpr Handler handlers[] = {
    {BSP_MSG_PON, BSP_CMD_LOID_ADD, add_loid},
    {BSP_MSG_PON, BSP_CMD_LOID_DELETE, delete_loid},
    {BSP_MSG_PON, BSP_CMD_VIEW_LOID_LIST, view_loids},
    {BSP_MSG_PON, BSP_CMD_OUI_SET, change_oui},
    {BSP_MSG_PON, BSP_CMD_ARP_TABLE, view_arp},
    {BSP_MSG_PON, BSP_CMD_UNI_PROFILE_SET, set_profile},
    {BSP_MSG_PON, BSP_CMD_VIEW_UNI_PROFILE, view_profiles},
    {BSP_MSG_PON, BSP_CMD_ONU_CONFIG_BATCH, apply_profiles},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_CONFIG_SET, set_onu_config},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_PORT_CONFIG_SET, set_port_config},
};

} // namespace

std::span<const Handler> onu_config_handlers()
{
    return handlers;
}

} // namespace ponsim
