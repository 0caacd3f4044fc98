// What a request is about: the port and the ONUs that it names.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "call/codec/values.h"
#include "call/permission.h"

namespace call
{

struct Target {
    std::optional<std::string> port; // as people read them; none: the request names none
    std::optional<uint32_t> onu;
    std::optional<IdSet> onus;
    std::string mac;  // empty: the request names none
    std::string text; // all of it for people: "port 1, ONU 5"; empty: it names nothing

    // Returns whether it names any ONU.
    bool names_onus() const { return onu || onus || !mac.empty(); }
    // Returns whether it names this ONU of its port. A request that names none is about all of them.
    bool names(const std::optional<uint32_t> &id, const std::string &address) const;
};

Target target_of(const PermissionRequest &sent);

} // namespace call
