// A record is kept of each optical module, by its cage.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "model/base/alarm.h"
#include "model/base/limits.h"
#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/family.h"
#include "model/kept/onu.h"

namespace ponsim
{

struct ModuleRecord {
    // A Measurement of the power received from an ONU takes model time.
    struct Measurement {
        static constexpr Bounds all_samples{1, 100};
        static constexpr Bounds intervals{0, 60000}; // ms

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

    static constexpr Bounds loss_levels{-4000, 0};
    static constexpr Bounds dimmings{0, 6000};

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
    static constexpr std::array<std::string_view, 4> configured{"tx_disabled", "always_on", "own_loss_level",
                                                                "loss_level"};
    using Key = uint32_t;
    static constexpr std::tuple key{Itself<Key>{"cage"}};
    static constexpr std::tuple value{
        Column{"added_hours", &ModuleRecord::added_hours, {0, max_laser_hours}},
        Column{"tx_disabled", &ModuleRecord::tx_disabled},
        Column{"always_on", &ModuleRecord::always_on},
        FlagAndNumber{"own_loss_level", "loss_level", &ModuleRecord::loss_level, ModuleRecord::loss_levels},
        Column{"raised", &ModuleRecord::raised, {0, (2 << max_alarm) - 1}},
        Column{"user", &ModuleRecord::user},
        Column{"dimmed", &ModuleRecord::dimmed, ModuleRecord::dimmings}};
    using Measurement = ModuleRecord::Measurement;
    using Result = ModuleRecord::Result;
    static constexpr std::tuple parts{
        PartTable{"measurement", &ModuleRecord::measurement,
                  std::tuple{Column{"mac", &Measurement::mac}, Column{"ends", &Measurement::end},
                             Column{"samples", &Measurement::samples, Measurement::all_samples},
                             Column{"interval", &Measurement::interval, Measurement::intervals}}},
        PartTable{"measured", &ModuleRecord::result,
                  std::tuple{Column{"mac", &Result::mac}, Column{"taken", &Result::at, past},
                             Column{"samples", &Result::samples, Measurement::all_samples},
                             Column{"average", &Result::average}, Column{"least", &Result::least},
                             Column{"greatest", &Result::greatest}}}};
    static constexpr bool placed = true;
    static constexpr size_t most = max_ports + ge_uplinks;

    struct Check {
        const char *operator()(uint32_t ports, Key cage, const ModuleRecord &record) const
        {
            if (cage < 1 || cage > ports + ge_uplinks) return "the OLT has no such cage";
            if (!record.measurement) return nullptr;
            if (cage > ports) return "only the module of a PON port measures";
            const Measurement &measurement = *record.measurement;
            const bool fits = measurement.end >= ModelTime{measurement.samples - 1} * measurement.interval;
            return fits ? nullptr : "the measurement began before the OLT was switched on";
        }
    };
};

} // namespace ponsim
