// What managers set, as calls of operations: who may order what, and how it is done.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "audit/entry.h"
#include "reach/reach.h"
#include "snmp/agentx/session.h"

namespace front::snmp
{

struct SetSettings {
    // An Olt is one to which orders go.
    struct Olt {
        std::string name;
        Reach reach;

        bool operator==(const Olt &) const = default;
    };

    std::optional<catalogue::Class> up_to; // none: nothing may be set
    std::map<uint32_t, Olt> olts;          // by index

    bool operator==(const SetSettings &) const = default;
};

// So long an order may take, in seconds, before its outcome counts as unknown; the master waits a little longer. Both
// are short, because snmpd answers nobody while something is set.
inline constexpr uint8_t order_time = 2, master_time = 4;

// Notes take for the audit log what was to be done at which OLT: what came of it, or why it was refused.
struct Notes {
    using Note = std::function<void(const std::string &olt, const audit::Wanted &wanted, std::string_view result)>;

    Note sent, refused;
};

// Says whether the order may be carried out, where anything may be set at all. The call is made, but nothing is sent.
agentx::Error permit(const Order &order, const SetSettings &settings, const Notes &notes);

// Carries out what is ordered, one after the other until one fails, within the time. Each is noted, and told in words.
agentx::Committed carry_out(const std::vector<Order> &orders, const SetSettings &settings, const Notes &notes,
                            const std::function<void(bool well, const std::string &)> &say);

} // namespace front::snmp
