// A record is kept of each UNI port that has a loop, is shut, or once had a loop or was shut.
#pragma once

#include <cstdint>
#include <optional>

#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/family.h"

namespace ponsim
{

// A UniKey names a UNI port of an ONU.
struct UniKey {
    uint32_t pon_port;
    Mac mac;
    uint32_t uni;

    auto operator<=>(const UniKey &) const = default;
};

inline constexpr size_t max_loops = 48; // how many UNI ports are kept, for the whole OLT

// A LoopRecord describes a UNI port that has a loop, is shut, or once had a loop or was shut.
struct LoopRecord {
    bool looped = false; // there is a loop
    bool shut = false;   // by loop detection
    uint32_t detected = 0;
    ModelTime since = 0;                        // time of the last change of its state
    std::optional<ModelTime> watched_from = {}; // while detection packets reach the loop: since when

    bool operator==(const LoopRecord &) const = default;
};

template <>
struct Family<LoopRecord> {
    static constexpr std::string_view table = "loop";
    using Key = UniKey;
    static constexpr size_t most = max_loops;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac},
                                    Column{"uni", &Key::uni, {1, max_unis}}};
    static constexpr std::tuple value{Column{"looped", &LoopRecord::looped}, Column{"shut", &LoopRecord::shut},
                                      Column{"detected", &LoopRecord::detected},
                                      Column{"since", &LoopRecord::since, past},
                                      FlagAndNumber{"watched", "watched_from", &LoopRecord::watched_from, past}};
};

} // namespace ponsim
