// This record says how loops are detected, and how many were detected and have recovered.
#pragma once

#include <array>
#include <cstdint>

#include "model/kept/family.h"

namespace ponsim
{

struct LoopDetection {
    bool on = false;
    bool manual = false;                               // shut ports recover by command only
    static constexpr Bounds recovery_times{10, 86400}; // s
    static constexpr Bounds intervals{1, 600};         // s

    uint32_t recovery_time = 300;
    uint32_t interval = 5; // between detection packets
    uint32_t detected = 0;
    uint32_t recovered = 0;

    bool operator==(const LoopDetection &) const = default;
};

template <>
struct Family<LoopDetection> {
    static constexpr std::string_view table = "loop_detection";
    static constexpr std::array<std::string_view, 4> configured{"switched_on", "manual", "recovery_time", "interval"};
    using Key = Only;
    static constexpr std::tuple key{OnlyColumn{}};
    static constexpr size_t most = 1;
    static constexpr std::tuple value{
        Column{"switched_on", &LoopDetection::on},
        Column{"manual", &LoopDetection::manual},
        Column{"recovery_time", &LoopDetection::recovery_time, LoopDetection::recovery_times},
        Column{"interval", &LoopDetection::interval, LoopDetection::intervals},
        Column{"detected", &LoopDetection::detected},
        Column{"recovered", &LoopDetection::recovered}};
};

} // namespace ponsim
