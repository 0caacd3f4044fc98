// The OLT's optical modules: one in the SFP cage of each PON port, and one for each uplink behind them.
//
// A module measures once a second, in the units of SFF-8472. Whatever tells of it reads these measurements, so that all
// tell the same. They follow from the seed, the cage, what is kept of the module and the time at which one looks.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/module.h"

namespace ponsim
{

// The cage of PON port N has number N, that of uplink (GE) port N the number of PON ports + N.

// In the order of SFF-8472, that of thresholds, measurements and flags alike.
enum Quantity : uint32_t { temperature, voltage, bias, launch_power, received_power };
inline constexpr uint32_t quantities = 5;

// By quantity: 1/256 degC, 100 uV, 2 uA, 0.1 uW, 0.1 uW.
using Readings = std::array<int32_t, quantities>;

// Of one quantity, in its unit and in the order of SFF-8472.
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
    // Of the laser: what new ones have at the coldest hour, from `least` on; by how much bias rises to the warmest
    // hour; and the hours in which bias rises and launch power falls by one unit.
    uint32_t least_bias;
    uint32_t bias_range;
    uint32_t bias_swing;
    uint32_t hours_per_bias;
    uint32_t least_power;
    uint32_t power_range;
    uint32_t hours_per_power;
};

inline constexpr uint64_t half_day = 12 * 60 * 60; // s
// How far the room is between the coldest hour, midnight, and the warmest, noon: 0 to half_day. A straight line each
// way, so that all that follows it is exact.
uint64_t warmth(uint64_t second);

class Module
{
public:
    Module(uint64_t seed, uint32_t cage, bool of_pon_port);

    uint32_t cage() const { return number; }
    bool of_pon_port() const { return of_pon; }
    const ModuleType &type() const { return *kind; }
    const std::string &serial() const { return own_serial; }
    const std::string &date() const { return own_date; } // of manufacture, YYMMDD

    const ModuleRecord &record() const { return kept; }
    // `now` is the time from which on it is so.
    void set(const ModuleRecord &record, ModelTime now);

    bool laser_on() const { return laser_on(kept); }
    static bool laser_on(const ModuleRecord &record) { return !record.tx_disabled || record.always_on; }
    uint32_t laser_hours(ModelTime now) const;

    // What the receiver of a PON port's module tells of is the ONU that was measured last: light comes in bursts from
    // many. It tells 0 until one was measured, and raises no flags.
    Readings readings(ModelTime now) const;
    bool receives() const { return !of_pon || kept.result; }
    // Bits in the order of SFF-8472: quantity q is above its high threshold in bit 15-2q, below its low one in 14-2q.
    uint16_t alarms(ModelTime now) const;
    uint16_t warnings(ModelTime now) const;
    // The laser needs more than it should to give light.
    bool fault(ModelTime now) const;
    // Below which received power light is lost, in 0.1 uW and in 0.01 dBm.
    int32_t loss_level() const;
    int32_t loss_threshold() const;
    bool loss_of_light(ModelTime now) const;

    // Alarms that are due as the laser ages, by bit of their code, without those raised before.
    uint32_t due_alarms(ModelTime now) const;
    // When there is one next; none in a thousand years.
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
    int32_t own_temperature; // at the coldest hour, as all of these
    int32_t own_voltage;
    int32_t new_bias;
    int32_t new_power;
    int32_t uplink_power; // that the far end of an uplink sends here
    std::string own_serial;
    std::string own_date;
    ModuleRecord kept;
    std::optional<ModelTime> alarm_at;
};

// A quantity as people read it: a reading is converted to units of which `per_unit` are one `unit`.
struct QuantityFormat {
    std::string_view name;
    std::string_view unit;
    int32_t per_unit;
    int32_t (*convert)(int32_t reading);
};
const QuantityFormat &format_of(Quantity quantity);

// Between powers in 0.1 uW and in 0.01 dBm. No light is -40 dBm.
int32_t centi_dbm(int32_t power);
int32_t power_of(int32_t centi_dbm);

} // namespace ponsim
