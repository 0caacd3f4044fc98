// The OLT has one optical module in the SFP cage of each PON port, and behind those one for each uplink.
//
// A module measures once a second, in the units of SFF-8472. Everything that shows its values reads these measurements,
// so that all show the same. The measurements follow from the seed, the cage, what is kept of the module, and the time.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/module.h"
#include "model/plant/optical_class.h"

namespace ponsim
{

// The cage of PON port N has number N. The cage of uplink (GE) port N has the number of PON ports + N.

// Thresholds, measurements and flags all have the order of SFF-8472.
enum Quantity : uint32_t { temperature, voltage, bias, launch_power, received_power };
inline constexpr uint32_t quantities = 5;

// The units, by quantity, are 1/256 degC, 100 uV, 2 uA, 0.1 uW and 0.1 uW.
using Readings = std::array<int32_t, quantities>;

// These are the thresholds of one quantity, in its unit and in the order of SFF-8472.
struct Thresholds {
    int32_t high_alarm;
    int32_t low_alarm;
    int32_t high_warning;
    int32_t low_warning;
};

struct ModuleType {
    std::string_view vendor;   // at most 16 characters
    std::string_view part;     // at most 16
    std::string_view revision; // at most 4
    uint8_t connector;         // code of SFF-8472
    uint8_t ethernet;          // Ethernet compliance codes of SFF-8472
    uint32_t wavelength;       // nm
    uint32_t reach;            // km
    std::array<Thresholds, quantities> thresholds;
    // These numbers describe the laser: what new lasers have in the coldest hour, from `least` on, how much bias rises
    // up to the warmest hour, and in how many hours bias rises and launch power falls by one unit.
    uint32_t least_bias;
    uint32_t bias_range;
    uint32_t bias_swing;
    uint32_t hours_per_bias;
    uint32_t least_power;
    uint32_t power_range;
    uint32_t hours_per_power;
};

inline constexpr uint64_t half_day = 12 * 60 * 60; // s
// Returns how warm the room is, from 0 in the coldest hour, midnight, to half_day in the warmest, noon. Warmth rises
// and falls in straight lines, so that everything that depends on it is exact.
uint64_t warmth(uint64_t second);

class Module
{
public:
    // The class is that of the PON port that the module is for. It is null for an uplink.
    Module(uint64_t seed, uint32_t cage, const OpticalClass *optics);

    uint32_t cage() const { return number; }
    bool of_pon_port() const { return of_pon; }
    const ModuleType &type() const { return *kind; }
    const std::string &serial() const { return own_serial; }
    const std::string &date() const { return own_date; } // of manufacture, YYMMDD

    const ModuleRecord &record() const { return kept; }
    // Sets the record, which is valid from the time `now` on.
    void set(const ModuleRecord &record, ModelTime now);

    bool laser_on() const { return laser_on(kept); }
    static bool laser_on(const ModuleRecord &record) { return !record.tx_disabled || record.always_on; }
    uint32_t laser_hours(ModelTime now) const;
    // Returns the launch power in 0.01 dBm. It never rises unless the record changes.
    int32_t launch_level(uint64_t second) const;

    // The received power of a PON port's module is that of the ONU that was measured last, because light comes in
    // bursts from many ONUs. It is 0 until an ONU has been measured, and raises no flags.
    Readings readings(ModelTime now) const;
    bool receives() const { return !of_pon || kept.result; }
    // The bits are in the order of SFF-8472: bit 15-2q says that quantity q is above its high threshold, bit 14-2q that
    // it is below its low one.
    uint16_t alarms(ModelTime now) const;
    uint16_t warnings(ModelTime now) const;
    // Returns whether the laser needs more current than it should to give light.
    bool fault(ModelTime now) const;
    // The level is the received power below which light is lost, in 0.1 uW. The threshold is the same in 0.01 dBm.
    int32_t loss_level() const;
    int32_t loss_threshold() const;
    bool loss_of_light(ModelTime now) const;

    // Returns the alarms that are due as the laser ages, as bits by their codes, without those raised before.
    uint32_t due_alarms(ModelTime now) const;
    // Returns when the next alarm is due. Returns no time when there is none in a thousand years.
    std::optional<ModelTime> next_alarm() const { return alarm_at; }

private:
    int32_t bias_at(uint64_t second) const;
    int32_t power_at(uint64_t second) const;
    bool bias_is_high(uint64_t second) const;
    bool power_is_low(uint64_t second) const;
    std::optional<uint64_t> bias_alarm(uint64_t from) const;
    std::optional<uint64_t> power_alarm(uint64_t from) const;
    std::optional<ModelTime> find_alarm(ModelTime from) const;
    uint16_t flags(const Readings &readings, int32_t Thresholds::*high, int32_t Thresholds::*low) const;

    uint32_t number;
    bool of_pon;
    const ModuleType *kind;
    int32_t own_temperature; // in the coldest hour, as are all of these
    int32_t own_voltage;
    int32_t new_bias;
    int32_t new_power;
    int32_t uplink_power; // which the far end of an uplink sends here
    std::string own_serial;
    std::string own_date;
    ModuleRecord kept;
    std::optional<ModelTime> alarm_at;
};

// A QuantityFormat says how people read a quantity. A reading is converted to units, `per_unit` of which are one
// `unit`.
struct QuantityFormat {
    std::string_view name;
    std::string_view unit;
    int32_t per_unit;
    int32_t (*convert)(int32_t reading);
};
const QuantityFormat &format_of(Quantity quantity);

// These convert between powers in 0.1 uW and in 0.01 dBm. No light is -40 dBm.
int32_t centi_dbm(int32_t power);
int32_t power_of(int32_t centi_dbm);

} // namespace ponsim
