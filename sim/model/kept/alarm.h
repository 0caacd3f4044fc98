// The alarms that are raised are kept by PON port, address and alarm.
#pragma once

#include <cstdint>

#include "model/base/mac.h"
#include "model/kept/family.h"

namespace ponsim
{

struct AlarmKey {
    uint32_t pon_port;
    Mac mac; // zero: the alarm of the port itself
    uint32_t alarm;

    auto operator<=>(const AlarmKey &) const = default;
};

struct AlarmCount {
    uint32_t count;
};

template <>
struct Family<AlarmCount> {
    static constexpr std::string_view table = "alarm";
    using Key = AlarmKey;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac},
                                    Column{"alarm", &Key::alarm, "? BETWEEN 1 AND 15"}};
    static constexpr std::tuple value{Column{"count", &AlarmCount::count}};
    static constexpr bool placed = true;
};

} // namespace ponsim
