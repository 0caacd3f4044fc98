// A record is kept of each optical module, by its cage.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "model/base/limits.h"
#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/family.h"

namespace ponsim
{

// No laser can be made older than this.
inline constexpr uint32_t max_laser_hours = 10000000;

struct ModuleRecord {
    // A Measurement of the power received from an ONU takes model time.
    struct Measurement {
        Mac mac;
        ModelTime end; // time of its last sample
        uint32_t samples;
        uint32_t interval; // ms

        bool operator==(const Measurement &) const = default;
    };
    struct Result {
        Mac mac;
        ModelTime at;
        uint32_t samples;
        uint32_t average; // 0.1 uW, as are the least and the greatest
        uint32_t least;
        uint32_t greatest;

        bool operator==(const Result &) const = default;
    };

    uint32_t added_hours = 0;               // the laser's age is this and the time of the OLT
    bool tx_disabled = false;               // by the soft control in the module's memory
    bool always_on = false;                 // LAO: the laser stays on despite tx_disabled
    std::optional<int32_t> loss_level = {}; // LOL, 0.01 dBm: with less, light is lost; none: the module's own threshold
    int32_t dimmed = 0;                     // by so much less light leaves the module than its laser gives, 0.01 dB
    uint32_t raised = 0; // bits by alarm code: alarms of the laser's age, and rogue while the receiver is blinded
    std::array<uint8_t, 120> user = {};          // the memory that users write
    std::optional<Measurement> measurement = {}; // under way
    std::optional<Result> result = {};           // result of the last measurement

    bool operator==(const ModuleRecord &) const = default;
};

template <>
struct Family<ModuleRecord> {
    static constexpr std::string_view table = "module";
    using Key = uint32_t;
    static constexpr std::tuple key{Itself<Key>{"cage"}};
    static constexpr std::tuple value{Column{"added_hours", &ModuleRecord::added_hours},
                                      Column{"tx_disabled", &ModuleRecord::tx_disabled},
                                      Column{"always_on", &ModuleRecord::always_on},
                                      FlagAndNumber{"own_loss_level", "loss_level", &ModuleRecord::loss_level},
                                      Column{"raised", &ModuleRecord::raised},
                                      Column{"user", &ModuleRecord::user},
                                      Column{"dimmed", &ModuleRecord::dimmed, "? BETWEEN 0 AND 6000"}};
    using Measurement = ModuleRecord::Measurement;
    using Result = ModuleRecord::Result;
    static constexpr std::tuple parts{
        PartTable{"measurement", &ModuleRecord::measurement,
                  std::tuple{Column{"mac", &Measurement::mac}, Column{"ends", &Measurement::end},
                             Column{"samples", &Measurement::samples}, Column{"interval", &Measurement::interval}}},
        PartTable{"measured", &ModuleRecord::result,
                  std::tuple{Column{"mac", &Result::mac}, Column{"taken", &Result::at},
                             Column{"samples", &Result::samples}, Column{"average", &Result::average},
                             Column{"least", &Result::least}, Column{"greatest", &Result::greatest}}}};
    static constexpr bool placed = true;

    struct Check {
        const char *operator()(uint32_t ports, Key cage, const ModuleRecord &) const
        {
            return cage >= 1 && cage <= ports + ge_uplinks ? nullptr : "an optical module in it is damaged";
        }
    };
};

} // namespace ponsim
