// In P2P forwarding the OLT itself forwards frames between ONUs. There are no such frames in the model. What is
// configured is kept and shown.
#pragma once

#include <cstdint>
#include <optional>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

inline constexpr uint32_t max_p2p_entries = 32;    // of a port, numbered from 0
inline constexpr uint32_t any_onu = onus_per_port; // the value for any ONU, where an entry asks for an ONU id
inline constexpr uint32_t whole_p2p_port = onus_per_port;

struct P2pConfig {
    uint32_t rest = 0; // what happens to frames to which no entry applies: 0 dropped, 1 forwarded
    uint32_t rate = 0; // kbit/s; 0: no limit
    uint32_t first_vlan = 0;
    uint32_t last_vlan = 0;
    uint32_t broadcast = 0;
    uint32_t multicast = 0;

    bool operator==(const P2pConfig &) const = default;
};

enum class P2pAction : uint32_t { none, forward, drop };

struct P2pEntry {
    uint32_t traffic; // 0 all, or an ethertype
    P2pAction action;
    uint32_t from_onu;
    uint32_t to_port;
    uint32_t to_onu;
    uint32_t rate; // kbit/s; 0: no limit

    bool operator==(const P2pEntry &) const = default;
};

// Returns whether there can be such a configuration. An entry that is kept does something.
bool is_good(const P2pConfig &config);
bool is_good(const P2pEntry &entry);

bool p2p_on(const Olt &olt, uint32_t pon_port);
uint32_t p2p_own_port(const Olt &olt, uint32_t pon_port); // GE uplink; 0: any
P2pConfig p2p_config(const Olt &olt, uint32_t pon_port);
std::optional<P2pEntry> p2p_entry(const Olt &olt, uint32_t pon_port, uint32_t number);
// Returns how many ONUs have frames forwarded between them.
uint32_t p2p_onus(const Olt &olt, const PonPort &port);

// Sets P2P forwarding. Port 0 means all ports. `onu` is an ONU id, or whole_p2p_port.
Plan set_p2p(const Olt &olt, uint32_t pon_port, uint32_t onu, uint32_t on);
Plan set_p2p_own_port(const Olt &olt, uint32_t pon_port, uint32_t own_port);
Plan set_p2p_config(const Olt &olt, uint32_t pon_port, const P2pConfig &config);
// Sets an entry. With action none the entry is removed.
Plan set_p2p_entry(const Olt &olt, uint32_t pon_port, uint32_t number, const P2pEntry &entry);

} // namespace ponsim
