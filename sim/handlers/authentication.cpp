// These commands authenticate, confirm and describe ONUs.
#include "model/lifecycle/authentication.h"

#include "generated/service_words.h"
#include "handlers/record.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

Outcome auth_set(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    const auto remove = request.get(layout::auth_record::remove);
    AuthRequest wanted{record.arg_word12, {}, {}, remove == 1};
    const bool texts_are_good = get_text(record.text45, wanted.loid) && get_text(record.text109, wanted.password);
    if (!texts_are_good || remove > 1) return {PON_ERR_BAD_RECORD};
    return to_outcome(set_authentication(olt, record.pon_port, wanted));
}

Outcome auth_get(const Olt &olt, const Request &request)
{
    bsp_pon_msg common{};
    common.cmd = request.read<bsp_pon_msg>().cmd;
    common.pon_port = request.read<bsp_pon_msg>().pon_port;
    const PonPort *port = olt.port(common.pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    common.arg_word12 = static_cast<uint32_t>(port->authentication.mode);
    const AuthCounts counts = count_onus(olt, *port);
    Answer answer(common);
    answer.put(layout::auth_counts::records, counts.records);
    answer.put(layout::auth_counts::admitted, counts.admitted);
    answer.put(layout::auth_counts::unauthenticated, counts.unauthenticated);
    answer.put(layout::auth_counts::waiting, counts.waiting);
    answer.put(layout::auth_counts::rejected, counts.rejected);
    return answer.outcome();
}

void add_port(Table<view::auth> &table, const Olt &olt, const PonPort &port)
{
    const AuthCounts counts = count_onus(olt, port);
    table.add({.pon_port = port.number,
               .mode = static_cast<uint32_t>(port.authentication.mode),
               .records = counts.records,
               .admitted = counts.admitted,
               .unauthenticated = counts.unauthenticated,
               .waiting = counts.waiting,
               .rejected = counts.rejected,
               .loid = std::nullopt,
               .has_password = std::nullopt,
               .mac = std::nullopt,
               .onu_id = std::nullopt});
}

void add_record(Table<view::auth> &table, const PonPort &port, const LoidRecord &record)
{
    table.add({.pon_port = port.number,
               .mode = std::nullopt,
               .records = std::nullopt,
               .admitted = std::nullopt,
               .unauthenticated = std::nullopt,
               .waiting = std::nullopt,
               .rejected = std::nullopt,
               .loid = record.loid,
               .has_password = record.has_password,
               .mac = record.mac,
               .onu_id = record.onu_id});
}

Outcome auth_list(const Olt &olt, const Request &request)
{
    const Selection selection = port_selection_of(olt, request);
    if (selection.status != BSP_OK) return {selection.status};
    Table<view::auth> table;
    if (request.read<bsp_pon_msg>().pon_port == 0) {
        for (const PonPort &port : selection.ports)
            add_port(table, olt, port);
        return {BSP_OK, {}, table.text()};
    }
    const PonPort &port = selection.ports.front();
    for (const LoidRecord &record : loid_records(olt, port))
        add_record(table, port, record);
    return {BSP_OK, {}, table.text()};
}

Outcome confirm(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    const auto by_mode = request.get(layout::onu_confirm::by_mode);
    if (by_mode > 1) return {PON_ERR_BAD_RECORD};
    const Confirmation confirmation{.exempt = by_mode == 0, .mode = record.arg_word36};
    return to_outcome(confirm_onu(olt, record.pon_port, record.onu_id, mac_of(record), confirmation));
}

Outcome describe(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    std::string description;
    if (!get_text(record.text237, description)) return {PON_ERR_BAD_RECORD};
    return to_outcome(describe_onu(olt, record.pon_port, record.onu_id, description));
}

constexpr Handler handlers[] = {
    {BSP_MSG_PON, BSP_CMD_AUTH_SET, auth_set},
    {BSP_MSG_PON, BSP_CMD_AUTH_GET, auth_get},
    {BSP_MSG_PON, BSP_CMD_AUTH_LIST, auth_list},
    {BSP_MSG_PON, BSP_CMD_ONU_CONFIRM, confirm},
    {BSP_MSG_PON, BSP_CMD_ONU_DESCRIPTION_SET, describe},
};

} // namespace

std::span<const Handler> authentication_handlers()
{
    return handlers;
}

} // namespace ponsim
