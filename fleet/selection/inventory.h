// What an OLT of a fleet is and has, as the retained message of its bridge says it: JSON in one line.
//
//     {"olt":"north-3","bridge":"hut-7","labels":{"site":"north"},"version":"0.1.0","catalogue":"5d1c...",
//      "answers":true,"model":"...","firmware":"...","ports":16,"onus":{"online":410,"offline":3,"waiting":1},
//      "at":1780000000}
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace fleet
{

struct OnuCounts {
    uint32_t online = 0, offline = 0, waiting = 0;

    bool operator==(const OnuCounts &) const = default;
};

struct Inventory {
    std::string olt, bridge;
    std::map<std::string, std::string> labels = {}; // which its operator gives it, by their names
    std::string version = {};                       // of the program that answers for the OLT
    std::string catalogue = {};                     // digest of its catalogue
    bool answers = false;                           // the OLT answers its bridge
    std::string model = {}, firmware = {};          // empty: not known yet, as what follows is 0 then
    uint32_t ports = 0;
    OnuCounts onus = {};
    uint64_t at = 0; // seconds since 1970

    bool operator==(const Inventory &) const = default;
};

// A text of an inventory has so many bytes at most, one of its values so many, and it has so many labels at most.
inline constexpr size_t longest_inventory = 64 << 10, longest_value = 256, most_labels = 32;

// Writes one line.
std::string to_json(const Inventory &inventory);
// Throws a call::UsageError that says what is wrong. Members that are not known are passed over: a bridge of a later
// version may say more.
Inventory inventory_from_json(std::string_view text);

// What the retained message of a bridge says of it: {"state":"online","version":"0.1.0","olts":12}.
struct BridgeState {
    bool online = false;
    std::string version = {};
    uint32_t olts = 0;

    bool operator==(const BridgeState &) const = default;
};
std::string to_json(const BridgeState &state);
// Throws a call::UsageError, as above.
BridgeState bridge_state_from_json(std::string_view text);

// An Olt is what a client of the fleet knows of one.
struct Olt {
    Inventory inventory;
    bool online = false; // its bridge is there, and the OLT answers it
};

} // namespace fleet
