// This file knows what the ONUs of an OLT are able to, and which settings of a configuration they cannot have.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "call/permission.h"
#include "configuration/configuration.h"

namespace config
{

// The Abilities are those of one ONU, as its OLT says them.
struct Abilities {
    std::string vendor, model;
    uint32_t unis = 0;
    uint32_t queues = 0;    // upstream
    uint32_t max_vlans = 0; // of a UNI port
    bool fec = false, multicast_control = false, fast_leave = false, vlan_translation = false, vlan_trunk = false;
    bool is_gateway = false; // it has WLANs, an access control list and a DHCP server

    // Returns the kind of the ONU: "SIMA S040".
    std::string kind() const { return vendor + " " + model; }
};

// The ONUs are named by their port and their MAC address, as text::mac_text writes it.
using AbilitiesOfOnus = std::map<std::pair<uint32_t, std::string>, Abilities>;

// Asks the OLT what its ONUs are able to. What cannot be learnt is left out, and then is not checked.
AbilitiesOfOnus abilities_of_onus(call::Permission &permission);

// Returns why the ONU that a row is about cannot have what the row configures. The text is empty when it can, and when
// the OLT does not know the ONU.
std::string misfit_of(const AbilitiesOfOnus &onus, const ConfigTable &table, const ConfigRow &row);

} // namespace config
