// ONUs of a PON port that went offline together, and where the fibre may be cut.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "collector/snapshot.h"
#include "plant/plant.h"

namespace front
{

struct PlacedOnu {
    std::optional<size_t> node; // of the plant; none: the plant does not name the ONU
    std::string_view state;
    UnixTime since = 0; // 0: not known
    std::string_view cause = {};
};

struct Fall {
    UnixTime first, last;       // when they were found to be offline
    std::string_view cause;     // that all have, or nothing
    std::vector<size_t> onus;   // indices
    std::optional<size_t> node; // the deepest that contains all that are placed, of which there are two at least
    bool whole = false;         // no ONU below this node is online
};

// Returns the falls of a port, the newest first. They are of ONUs that are offline still, each found within a span
// behind another. What explains itself, such as a lack of power, is a fall of its own.
std::vector<Fall> falls_of(const PortPlant &plant, std::span<const PlacedOnu> onus, UnixTime span);

// Returns the nodes from the feeder to this one.
std::vector<size_t> path_to(const PortPlant &plant, size_t node);

} // namespace front
