// This file says which ONUs a command line is about to hit, and what becomes different of them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "call/json.h"

namespace ponctl
{

// A Change is a value that becomes different. It is empty where there is none.
struct Change {
    std::string field, before, after;
};

// A HitOnu names a bound ONU.
struct HitOnu {
    uint32_t port, id;
};

// A Hit is an ONU that is about to be hit. Its texts are empty where nothing is known.
struct Hit {
    uint32_t port = 0;
    std::optional<uint32_t> id; // none while the ONU is not bound
    std::string mac, state, description;
    bool goes_offline = false; // it is online, and its customers will be without service
    std::vector<Change> changes;

    // Returns PORT/ID, or PORT/MAC of an ONU that is not bound.
    std::string name() const;
};

// Returns the changes for people: "mode transparent -> tag, pvid 1 -> 100", or "nothing".
std::string changes_text(std::span<const Change> changes);

// Writes the ONUs as an array.
void write_hits(call::JsonText &json, std::span<const Hit> hits);

} // namespace ponctl
