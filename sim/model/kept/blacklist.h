// The blacklist of a port names the ONUs that the port refuses.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <utility>

#include "model/base/mac.h"
#include "model/kept/family.h"

namespace ponsim
{

struct BlacklistKey {
    uint32_t pon_port;
    uint32_t id;

    auto operator<=>(const BlacklistKey &) const = default;
};

struct BlacklistEntry {
    Mac mac;
    std::string text;
};

template <>
struct Family<BlacklistEntry> {
    static constexpr std::string_view table = "blacklist";
    static constexpr AllColumns configured = all_columns;
    using Key = BlacklistKey;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"id", &Key::id, {0, onus_per_port - 1}}};
    static constexpr std::tuple value{Column{"mac", &BlacklistEntry::mac}, Column{"text", &BlacklistEntry::text}};
    static constexpr bool placed = true;
    static constexpr size_t most = max_ports * onus_per_port;

    class Check
    {
    public:
        const char *operator()(uint32_t, const Key &key, const BlacklistEntry &entry)
        {
            const bool first = listed.insert({key.pon_port, entry.mac}).second;
            return first ? nullptr : "the ONU is twice on the blacklist of its port";
        }

    private:
        std::set<std::pair<uint32_t, Mac>> listed;
    };
};

} // namespace ponsim
