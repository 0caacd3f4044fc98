// What managers set, as calls of operations: who may order what, and how it is done.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "audit/entry.h"
#include "snmp/agentx/session.h"

namespace front::snmp
{

struct SetSettings {
    std::optional<catalogue::Class> up_to;   // none: nothing may be set
    std::map<uint32_t, std::string> folders; // of sockets, by the index of the OLT

    bool operator==(const SetSettings &) const = default;
};

// So long an order may take, in seconds, before its outcome counts as unknown; the master waits a little longer.
inline constexpr uint8_t order_time = 4, master_time = 6;

// Says whether the order may be carried out, where anything may be set at all.
agentx::Error permit(const Order &order, const SetSettings &settings);

// Takes what was sent to which OLT, and what came of it, for the audit log.
using Note = std::function<void(uint32_t olt_index, const audit::Wanted &wanted, std::string_view result)>;

// Carries out what is ordered, one after the other until one fails, within the time. Each is noted, and told in words.
agentx::Committed carry_out(const std::vector<Order> &orders, const SetSettings &settings, const Note &note,
                            const std::function<void(bool well, const std::string &)> &say);

} // namespace front::snmp
