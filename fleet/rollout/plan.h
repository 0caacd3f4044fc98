// A Plan says in which order and in which waves a command goes to the OLTs of a fleet.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fleet
{

// A Share is a number of OLTs, or so many of a hundred.
struct Share {
    uint32_t amount = 0;
    bool percent = false;

    bool operator==(const Share &) const = default;
};

struct RolloutOptions {
    uint32_t concurrency = 50;         // so many OLTs at a time
    std::optional<uint32_t> limit;     // only the first so many OLTs
    std::vector<Share> waves;          // how many OLTs each has; the rest is one more wave; empty: one wave
    std::optional<Share> max_failures; // no OLT begins when more have failed; none: however many fail
    std::string check;                 // a command between waves, which must end with 0; empty: none

    bool operator==(const RolloutOptions &) const = default;
};

// These read what a command line says. Each function throws a call::UsageError that starts with the option's name.
// --concurrency and --limit: a number from 1 on.
uint32_t read_concurrency(std::string_view text);
uint32_t read_limit(std::string_view text);
// --waves: "1,5%,25%,rest". A percentage is of all OLTs, rounded up. The last word is "rest".
std::vector<Share> read_waves(std::string_view text);
// --max-failures: "3" or "5%", rounded down.
Share read_max_failures(std::string_view text);

struct Plan {
    std::vector<std::vector<std::string>> waves; // names of OLTs, none of them empty
    uint32_t concurrency = 1;
    std::optional<uint32_t> most_failures; // no OLT begins when more have failed; none: however many fail
    bool checked = false;                  // what is said of a wave decides whether the next one begins

    size_t size() const; // how many OLTs

    bool operator==(const Plan &) const = default;
};

// Makes a plan for these OLTs, which stay in their order. With waves and without a bound of its own, no OLT may fail.
// Throws a call::UsageError when there are none, or when a check has no waves between which it could be.
Plan plan_for(const std::vector<std::string> &olts, const RolloutOptions &options);

} // namespace fleet
