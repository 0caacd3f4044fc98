#include "model/plant/module.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "model/base/alarm.h"
#include "model/base/random.h"
#include "model/base/search.h"

namespace ponsim
{
namespace
{

constexpr uint64_t hour = 3600; // s
static_assert(half_day == 12 * hour);
constexpr uint64_t horizon = 1000 * 365 * 2 * half_day; // s; for so long alarms are looked for ahead

constexpr int32_t degree = 256; // of temperature
constexpr int32_t temperature_swing = 8 * degree;
constexpr int32_t no_light = -4000;   // 0.01 dBm
constexpr int32_t bias_limit = 60000; // the most that the driver of a laser can give: 120 mA

// A PonLaser says what the lasers of a class are like in modules of PON ports. The powers are in 0.1 uW.
struct PonLaser {
    std::string_view part; // of the module
    uint32_t least_power;
    uint32_t power_range;
    uint32_t hours_per_power;
};

// The lasers are in the order of the classes. A new one has at least 1.2 dB more than the class asks for.
constexpr PonLaser pon_lasers[] = {{"SX-OLT-PX10", 7100, 5500, 18},
                                   {"SX-OLT-PX20", 22500, 17000, 6},
                                   {"SX-OLT-PX20+", 25200, 14500, 5},
                                   {"SX-OLT-PX30", 28000, 12000, 5}};

ModuleType pon_module(const OpticalClass &optics, const PonLaser &laser)
{
    const Transceiver &levels = optics.olt;
    return {
        .vendor = "SIMA OPTICS",
        .part = laser.part,
        .revision = "1.0",
        .connector = 0x01, // SC
        .ethernet = 0x80,  // BASE-PX
        .wavelength = 1490,
        .reach = optics.reach,
        .thresholds = {{
            {75 * degree, -10 * degree, 70 * degree, 0},
            {36000, 30000, 35000, 31000},
            {35000, 2500, 30000, 4000},
            {power_of(levels.greatest_launch + 50), power_of(levels.least_launch - 100),
             power_of(levels.greatest_launch), power_of(levels.least_launch)},
            {power_of(levels.overload), power_of(levels.sensitivity - olt_loss_below_sensitivity),
             power_of(levels.overload - 100), power_of(levels.sensitivity)},
        }},
        .least_bias = 14000,
        .bias_range = 4000,
        .bias_swing = 1000, // 0.25 mA a degree
        .hours_per_bias = 5,
        .least_power = laser.least_power,
        .power_range = laser.power_range,
        .hours_per_power = laser.hours_per_power,
    };
}

const ModuleType &pon_module(const OpticalClass &optics)
{
    static const std::vector<ModuleType> types = [] {
        std::vector<ModuleType> all;
        for (const OpticalClass &each : optical_classes())
            all.push_back(pon_module(each, pon_lasers[all.size()]));
        return all;
    }();
    return types.at(static_cast<size_t>(&optics - optical_classes().data()));
}

constexpr ModuleType uplink_module{
    .vendor = "SIMB PHOTONICS",
    .part = "SY-1000-LX",
    .revision = "A",
    .connector = 0x07, // LC
    .ethernet = 0x02,  // 1000BASE-LX
    .wavelength = 1310,
    .reach = 10,
    .thresholds = {{
        {85 * degree, -20 * degree, 80 * degree, -10 * degree},
        {36000, 30000, 35000, 31000},
        {20000, 500, 17500, 1000},
        {10000, 891, 7943, 1122}, // 0, -10.5, -1 and -9.5 dBm
        {10000, 100, 7943, 126},  // 0, -20, -1 and -19 dBm
    }},
    .least_bias = 6000,
    .bias_range = 3000,
    .bias_swing = 300,
    .hours_per_bias = 40,
    .least_power = 2500,
    .power_range = 1500,
    .hours_per_power = 100,
};

constexpr std::array<QuantityFormat, quantities> formats{{
    {"temperature", "degC", 100, [](int32_t reading) { return static_cast<int32_t>(std::lround(reading / 2.56)); }},
    {"voltage", "V", 10000, [](int32_t reading) { return reading; }},
    {"bias", "mA", 1000, [](int32_t reading) { return 2 * reading; }},
    {"launch power", "dBm", 100, centi_dbm},
    {"received power", "dBm", 100, centi_dbm},
}};

constexpr uint32_t bit_of(Alarm alarm)
{
    return 1u << static_cast<uint32_t>(alarm);
}

int32_t number_from(Random &random, uint32_t least, uint32_t range)
{
    return static_cast<int32_t>(least + random.below(range + 1));
}

std::string digits(Random &random, size_t count)
{
    std::string text;
    while (text.size() < count)
        text += static_cast<char>('0' + random.below(10));
    return text;
}

std::string two_digits(uint32_t number)
{
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

} // namespace

uint64_t warmth(uint64_t second)
{
    const uint64_t of_day = second % (2 * half_day);
    return std::min(of_day, 2 * half_day - of_day);
}

Module::Module(uint64_t seed, uint32_t cage, const OpticalClass *optics)
    : number(cage), of_pon(optics != nullptr), kind(optics ? &pon_module(*optics) : &uplink_module)
{
    // The stream is that of a group address, which no ONU has.
    Random random = random_for(seed, Purpose::optics, {1, 0, 0, 0, 0, static_cast<uint8_t>(cage)});
    own_temperature = number_from(random, 30 * degree, 15 * degree);
    own_voltage = number_from(random, 32600, 800);
    new_bias = number_from(random, kind->least_bias, kind->bias_range);
    new_power = number_from(random, kind->least_power, kind->power_range);
    uplink_power = number_from(random, 500, 2500);
    own_serial = std::string(kind->vendor.substr(0, 4)) + digits(random, 8);
    own_date = two_digits(23 + random.below(3)) + two_digits(1 + random.below(12)) + two_digits(1 + random.below(28));
    alarm_at = find_alarm(0);
}

void Module::set(const ModuleRecord &record, ModelTime now)
{
    kept = record;
    alarm_at = find_alarm(now);
}

uint32_t Module::laser_hours(ModelTime now) const
{
    return static_cast<uint32_t>(now / ms_per_second / hour + kept.added_hours);
}

// The threshold current of a laser rises with temperature and with age. There is only one division, at the end, so that
// the bias never rises while the room gets colder. bias_alarm() depends on that.
int32_t Module::bias_at(uint64_t second) const
{
    const uint64_t age = second + kept.added_hours * hour;
    const uint64_t ageing = kind->hours_per_bias * hour;
    const uint64_t rise = (warmth(second) * kind->bias_swing * ageing + age * half_day) / (half_day * ageing);
    return static_cast<int32_t>(std::min<uint64_t>(static_cast<uint64_t>(new_bias) + rise, bias_limit));
}

// The bias is controlled so that the light does not change with temperature. In spite of that the laser gives less
// light as it ages.
int32_t Module::power_at(uint64_t second) const
{
    const uint64_t age = second + kept.added_hours * hour;
    const uint64_t lost = age / (kind->hours_per_power * hour);
    const int32_t power = new_power - static_cast<int32_t>(std::min<uint64_t>(lost, static_cast<uint64_t>(new_power)));
    return kept.dimmed == 0 ? power : power_of(centi_dbm(power) - kept.dimmed);
}

int32_t Module::launch_level(uint64_t second) const
{
    return laser_on() ? centi_dbm(power_at(second)) : no_light;
}

Readings Module::readings(ModelTime now) const
{
    const uint64_t second = now / ms_per_second;
    Readings values{};
    values[temperature] = own_temperature + static_cast<int32_t>(warmth(second) * temperature_swing / half_day);
    // For each degree, the regulator gives 0.4 mV less.
    values[voltage] = own_voltage - 4 * (values[temperature] - 30 * degree) / degree;
    values[bias] = laser_on() ? bias_at(second) : 0;
    values[launch_power] = laser_on() ? power_at(second) : 0;
    if (!of_pon)
        values[received_power] = uplink_power;
    else if (kept.result)
        values[received_power] = static_cast<int32_t>(kept.result->average);
    return values;
}

uint16_t Module::flags(const Readings &readings, int32_t Thresholds::*high, int32_t Thresholds::*low) const
{
    uint32_t bits = 0;
    for (uint32_t quantity = 0; quantity < quantities; ++quantity) {
        if (quantity == received_power && !receives()) continue;
        const Thresholds &thresholds = kind->thresholds[quantity];
        if (readings[quantity] > thresholds.*high) bits |= 1u << (15 - 2 * quantity);
        if (readings[quantity] < thresholds.*low) bits |= 1u << (14 - 2 * quantity);
    }
    return static_cast<uint16_t>(bits);
}

uint16_t Module::alarms(ModelTime now) const
{
    return flags(readings(now), &Thresholds::high_alarm, &Thresholds::low_alarm);
}

uint16_t Module::warnings(ModelTime now) const
{
    return flags(readings(now), &Thresholds::high_warning, &Thresholds::low_warning);
}

bool Module::fault(ModelTime now) const
{
    return laser_on() && bias_is_high(now / ms_per_second);
}

int32_t Module::loss_level() const
{
    return kept.loss_level ? power_of(*kept.loss_level) : kind->thresholds[received_power].low_alarm;
}

int32_t Module::loss_threshold() const
{
    return kept.loss_level.value_or(centi_dbm(loss_level()));
}

bool Module::loss_of_light(ModelTime now) const
{
    return receives() && readings(now)[received_power] < loss_level();
}

bool Module::bias_is_high(uint64_t second) const
{
    return bias_at(second) > kind->thresholds[bias].high_alarm;
}

bool Module::power_is_low(uint64_t second) const
{
    return power_at(second) < kind->thresholds[launch_power].low_alarm;
}

uint32_t Module::due_alarms(ModelTime now) const
{
    if (!of_pon || !laser_on()) return 0;
    const uint64_t second = now / ms_per_second;
    const uint32_t due =
        (bias_is_high(second) ? bit_of(Alarm::bias_high) : 0) | (power_is_low(second) ? bit_of(Alarm::power_low) : 0);
    return due & ~kept.raised;
}

// The bias rises from noon to noon. It first becomes too high on the way to the first noon at which it is too high.
std::optional<uint64_t> Module::bias_alarm(uint64_t from) const
{
    const auto too_high = [this](uint64_t second) { return bias_is_high(second); };
    if (too_high(from)) return from;
    const uint64_t day = 2 * half_day;
    const uint64_t first_noon = (from + half_day - 1) / day * day + half_day;
    const auto noon = [=](uint64_t days) { return first_noon + days * day; };
    const uint64_t last = horizon / day;
    if (!too_high(noon(last))) return std::nullopt;
    const uint64_t found = noon(first_second(0, last, [&](uint64_t days) { return too_high(noon(days)); }));
    return first_second(std::max(from, found - half_day), found, too_high);
}

std::optional<uint64_t> Module::power_alarm(uint64_t from) const
{
    const auto too_low = [this](uint64_t second) { return power_is_low(second); };
    if (!too_low(from + horizon)) return std::nullopt;
    return first_second(from, from + horizon, too_low);
}

std::optional<ModelTime> Module::find_alarm(ModelTime from) const
{
    if (!of_pon || !laser_on()) return std::nullopt;
    std::optional<uint64_t> first;
    const auto consider = [&](Alarm alarm, std::optional<uint64_t> second) {
        if (!(kept.raised & bit_of(alarm)) && second && (!first || *second < *first)) first = second;
    };
    const uint64_t second = from / ms_per_second;
    consider(Alarm::bias_high, bias_alarm(second));
    consider(Alarm::power_low, power_alarm(second));
    if (!first) return std::nullopt;
    return std::max(*first * ms_per_second, from);
}

const QuantityFormat &format_of(Quantity quantity)
{
    return formats.at(quantity);
}

int32_t centi_dbm(int32_t power)
{
    return power > 0 ? static_cast<int32_t>(std::lround(1000 * std::log10(power / 10000.0))) : no_light;
}

int32_t power_of(int32_t level)
{
    return static_cast<int32_t>(std::lround(10000 * std::pow(10.0, level / 1000.0)));
}

} // namespace ponsim
