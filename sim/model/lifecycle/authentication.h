// How ONUs prove who they are, and confirming and describing them.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

inline constexpr size_t max_auth_records = 128; // a port
inline constexpr size_t max_loid = 24;
inline constexpr size_t max_password = 12;

struct AuthRequest {
    uint32_t mode;
    std::string loid; // of the record that is meant; empty for none
    std::string password;
    bool remove; // the record, instead of adding it or replacing its password
};

// Sets mode and at most one record. All ONUs on the fibre register again: those that now are accepted by their LOID and
// not bound are bound.
Plan set_authentication(const Olt &olt, uint32_t pon_port, const AuthRequest &request);

// The records of a port, in order of LOID.
struct LoidRecord {
    std::string_view loid;
    bool has_password;
    std::optional<Mac> mac;         // of the ONU on the fibre that has this LOID
    std::optional<uint32_t> onu_id; // that it is bound to at this port
};
std::vector<LoidRecord> loid_records(const Olt &olt, const PonPort &port);

// What extended OAM is known by.
using Oui = std::array<uint8_t, 3>;
inline constexpr Oui onus_oui{0x11, 0x11, 0x11}; // of the CTC extensions, which the ONUs speak

// With another OUI than the ONUs' own there is no extended OAM. All ONUs on the fibre register again.
Plan set_oui(const Olt &olt, const Oui &oui);

struct Confirmation {
    bool exempt;   // from authentication by LOID
    uint32_t mode; // bind mode of an ONU that it binds
};

// Lets in an ONU: the one that is bound to the id or, where the id is 0 and `mac` is not zero, the one with this
// address, which is bound to the next free id while it waits. Nothing changes for one that is online.
Plan confirm_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac, const Confirmation &confirmation);

Plan describe_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const std::string &description);

// How the ONUs of a port stand.
struct AuthCounts {
    uint32_t records;
    uint32_t admitted;        // bound and online
    uint32_t unauthenticated; // bound and turned away
    uint32_t waiting;
    uint32_t rejected; // on the black list, and on the fibre
};
AuthCounts count_onus(const Olt &olt, const PonPort &port);

} // namespace ponsim
