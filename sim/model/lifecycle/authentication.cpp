#include "model/lifecycle/authentication.h"

#include <algorithm>
#include <map>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/lifecycle/admission.h"
#include "model/lifecycle/registration.h"

namespace ponsim
{
namespace
{

bool is_printable(const std::string &text, size_t longest)
{
    return text.size() <= longest && std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

bool makes_sense(const AuthRequest &request)
{
    if (request.mode > static_cast<uint32_t>(AuthMode::mac_or_loid)) return false;
    if (request.loid.empty() && (request.remove || !request.password.empty())) return false;
    return is_printable(request.loid, max_loid) && is_printable(request.password, max_password);
}

// Adds, replaces or removes the record that the request names.
uint32_t change_record(Authentication &authentication, const AuthRequest &request)
{
    const bool known = authentication.records.contains(request.loid);
    if (request.remove) {
        if (!known) return PON_ERR_NOT_LISTED;
        authentication.records.erase(request.loid);
    } else {
        if (!known && authentication.records.size() >= max_auth_records) return PON_ERR_TABLE_FULL;
        authentication.records[request.loid] = request.password;
    }
    return BSP_OK;
}

void register_onus(const Olt &olt, const PonPort &port, const Authentication &authentication, Change &change)
{
    Registration registration(olt, port, authentication, change);
    for (const Arrival &arrival : port.arrivals)
        if (port.ranges(arrival) && !port.refuses(arrival.mac)) registration.add(arrival, true);
}

Plan confirm_bound(const PonPort &port, uint32_t onu_id, const Confirmation &confirmation)
{
    if (!port.bindings[onu_id]) return {PON_ERR_NOT_BOUND};
    Binding binding = *port.bindings[onu_id];
    const OnuState state = port.state(binding);
    if (state == OnuState::offline) return {PON_ERR_OFFLINE};
    if (state == OnuState::online || !confirmation.exempt) return {BSP_OK};
    binding.exempt = true;
    return {BSP_OK, change_of<Binding>({port.number, onu_id}, binding)};
}

} // namespace

Plan set_authentication(const Olt &olt, uint32_t pon_port, const AuthRequest &request)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (!makes_sense(request)) return {PON_ERR_BAD_RECORD};
    Plan plan{BSP_OK};
    Authentication authentication = port->authentication;
    authentication.mode = AuthMode{request.mode};
    plan.change.put<PortRecord>(pon_port, {port->limits, request.mode});
    if (!request.loid.empty()) {
        if (const uint32_t status = change_record(authentication, request)) return {status};
        const LoidKey key{pon_port, request.loid};
        if (request.remove)
            plan.change.drop<LoidPassword>(key);
        else
            plan.change.put<LoidPassword>(key, {request.password});
    }
    register_onus(olt, *port, authentication, plan.change);
    return plan;
}

std::vector<LoidRecord> loid_records(const Olt &olt, const PonPort &port)
{
    std::map<std::string_view, Mac> owners;
    for (const Arrival &arrival : port.arrivals)
        if (port.ranges(arrival)) owners[arrival.loid] = arrival.mac;
    std::vector<LoidRecord> records;
    for (const auto &[loid, password] : port.authentication.records) {
        LoidRecord record{loid, !password.empty(), {}, {}};
        if (const auto owner = owners.find(loid); owner != owners.end()) {
            record.mac = owner->second;
            record.onu_id = olt.id_at(port.number, owner->second);
        }
        records.push_back(record);
    }
    return records;
}

Plan set_oui(const Olt &olt, const Oui &oui)
{
    const bool of_onus = oui == onus_oui;
    Plan plan{BSP_OK};
    plan.change.add(block_at({BSP_MSG_PON, BSP_CMD_OUI_SET, 0, 0},
                             of_onus ? std::nullopt : std::optional(std::string(oui.begin(), oui.end()))));
    for (const PonPort &port : olt.ports()) {
        Authentication authentication = port.authentication;
        authentication.extended_oam = of_onus;
        register_onus(olt, port, authentication, plan.change);
    }
    return plan;
}

Plan confirm_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac, const Confirmation &confirmation)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (onu_id >= onus_per_port) return {PON_ERR_BAD_ONU_ID};
    if (onu_id != 0 || is_zero(mac)) return confirm_bound(*port, onu_id, confirmation);
    if (const std::optional<uint32_t> bound_id = olt.id_at(pon_port, mac))
        return confirm_bound(*port, *bound_id, confirmation);
    if (port->refuses(mac)) return {PON_ERR_BLACKLISTED};
    if (!port->ranged(mac)) return {PON_ERR_NOT_WAITING};
    return bind_onu(olt, pon_port, std::nullopt,
                    {.mac = mac,
                     .mode = confirmation.mode,
                     .text_a = {},
                     .text_b = {},
                     .text_c = {},
                     .description = {},
                     .exempt = confirmation.exempt});
}

Plan describe_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const std::string &description)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (onu_id >= onus_per_port) return {PON_ERR_BAD_ONU_ID};
    if (!port->bindings[onu_id]) return {PON_ERR_NOT_BOUND};
    Binding binding = *port->bindings[onu_id];
    binding.description = description;
    return {BSP_OK, change_of<Binding>({pon_port, onu_id}, binding)};
}

AuthCounts count_onus(const Olt &olt, const PonPort &port)
{
    AuthCounts counts{static_cast<uint32_t>(port.authentication.records.size()), 0, 0, 0, 0};
    // A bound ONU that has not arrived is in none of these states.
    for (const Arrival &arrival : port.arrivals) {
        if (!port.ranges(arrival)) continue;
        const std::optional<uint32_t> onu_id = olt.id_at(port.number, arrival.mac);
        const OnuState state = onu_id ? port.state(*port.bindings[*onu_id], arrival) : OnuState::offline;
        counts.admitted += state == OnuState::online;
        counts.unauthenticated += state == OnuState::unauthenticated;
        counts.waiting += !onu_id && !port.refuses(arrival.mac);
    }
    for (const std::optional<BlacklistEntry> &entry : port.blacklist)
        counts.rejected += entry && port.ranged(entry->mac);
    return counts;
}

} // namespace ponsim
