// This file says how ONUs prove their identity, and how they are confirmed and described.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

struct AuthRequest {
    uint32_t mode;
    std::string loid; // names the record to change; empty: no record
    std::string password;
    bool remove; // remove the record instead of adding it or replacing its password
};

// Sets mode and at most one record. All ONUs on the fibre register again. Those that are now accepted by their LOID and
// are not bound become bound.
Plan set_authentication(const Olt &olt, uint32_t pon_port, const AuthRequest &request);

// A LoidRecord is a record of a port. A port's records are in the order of their LOIDs.
struct LoidRecord {
    std::string_view loid;
    bool has_password;
    std::optional<Mac> mac;         // address of the ONU on the fibre that has this LOID
    std::optional<uint32_t> onu_id; // id to which this ONU is bound at this port
};
std::vector<LoidRecord> loid_records(const Olt &olt, const PonPort &port);

// Extended OAM is recognised by an OUI.
using Oui = std::array<uint8_t, 3>;
inline constexpr Oui onus_oui{0x11, 0x11, 0x11}; // OUI of the CTC extensions, which the ONUs use

// Sets the OUI. When it is not the ONUs' own there is no extended OAM. All ONUs on the fibre register again.
Plan set_oui(const Olt &olt, const Oui &oui);

struct Confirmation {
    bool exempt;   // from authentication by LOID
    uint32_t mode; // bind mode, when the ONU becomes bound
};

// Lets in the ONU that is bound to the id. When the id is 0 and `mac` is not zero, lets in the ONU with this address.
// When that one waits, it is bound to the next free id. Nothing changes for an ONU that is online.
Plan confirm_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac, const Confirmation &confirmation);

Plan describe_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const std::string &description);

// AuthCounts says how many ONUs of a port are in which state.
struct AuthCounts {
    uint32_t records;
    uint32_t admitted;        // bound and online
    uint32_t unauthenticated; // bound and turned away
    uint32_t waiting;
    uint32_t rejected; // on the blacklist, and on the fibre
};
AuthCounts count_onus(const Olt &olt, const PonPort &port);

} // namespace ponsim
