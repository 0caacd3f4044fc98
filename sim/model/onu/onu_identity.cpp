#include "model/onu/onu_identity.h"

#include <algorithm>
#include <cstddef>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/random.h"
#include "model/olt/light.h"
#include "model/olt/uni_config.h"
#include "model/plant/fibre.h"
#include "text/number.h"
#include "text/words.h"

namespace ponsim
{
namespace
{

constexpr uint32_t mib = 1024; // KiB

struct Chipset {
    std::string_view name;
    Hardware hardware;
};
constexpr Chipset chipsets[] = {
    {"SX-1001", {OnuType::sfu, 2, {0x19, 0x04, 0x12}, 32 * mib, 8 * mib}},
    {"SX-1004", {OnuType::sfu, 1, {0x20, 0x09, 0x30}, 64 * mib, 16 * mib}},
    {"SY-200", {OnuType::sfu, 4, {0x16, 0x11, 0x07}, 16 * mib, 4 * mib}},
    {"SY-420", {OnuType::hgu, 2, {0x21, 0x06, 0x18}, 128 * mib, 32 * mib}},
    {"SZ-8", {OnuType::sbu, 3, {0x22, 0x02, 0x24}, 256 * mib, 64 * mib}},
};

// Returns a number from `least` to `greatest`, below 100, as two decimal digits.
uint8_t bcd_between(Random &random, uint32_t least, uint32_t greatest)
{
    const uint32_t number = least + random.below(greatest - least + 1);
    return static_cast<uint8_t>(number / 10 << 4 | number % 10);
}

OnuType onu_type_of(const DeviceType &type)
{
    if (type.pots_ports != 0) return OnuType::hgu;
    return type.battery ? OnuType::sbu : OnuType::sfu;
}

// Returns what the ONU has of a setting that is one word, at the start of the record's data.
uint32_t word_of(const Olt &olt, const SettingKey &key, Side side, uint32_t otherwise)
{
    constexpr layout::At<uint32_t> start{offsetof(bsp_onu_msg, onu_data)};
    OnuBlock block(sizeof otherwise);
    block.put(start, otherwise);
    return setting_of(olt, key, side, block).get(start);
}

} // namespace

Hardware hardware_of(const DeviceType &type)
{
    const auto found = std::ranges::find(chipsets, type.chipset, &Chipset::name);
    if (found != std::end(chipsets)) return found->hardware;
    uint64_t seed = 0;
    for (const char byte : type.chipset)
        seed = Random(seed, static_cast<uint8_t>(byte)).next();
    Random random(seed, type.chipset.size());
    Hardware hardware{};
    hardware.onu_type = onu_type_of(type);
    hardware.chip_revision = static_cast<uint8_t>(1 + random.below(4));
    hardware.chip_date = {bcd_between(random, 16, 22), bcd_between(random, 1, 12), bcd_between(random, 1, 28)};
    hardware.flash = 2 * mib * (4 * type.ge_ports + type.fe_ports + 4 * type.pots_ports);
    hardware.memory = 4 * hardware.flash;
    return hardware;
}

ChipName chip_name(std::string_view chipset)
{
    const size_t digits = chipset.find_last_not_of("0123456789") + 1; // 0 when there is nothing else
    const std::string_view before = chipset.substr(0, digits);
    return {.vendor = before.substr(0, before.find('-')),
            .number = text::to_number<uint16_t>(chipset.substr(digits)).value_or(0)};
}

std::string extended_model(const DeviceType &type)
{
    std::string model = std::string(type.model) + '-';
    for (const auto &[ports, kind] :
         {std::pair{type.ge_ports, "GE"}, std::pair{type.fe_ports, "FE"}, std::pair{type.pots_ports, "POTS"}})
        if (ports != 0) model += std::to_string(ports) + kind;
    return model;
}

std::string serial_number(std::string_view vendor, const Mac &mac)
{
    return std::string(vendor) + text::upper_case(text::to_hex(std::span(mac).subspan(2)));
}

Usage usage_of(const Olt &olt, const RemoteOnu &onu)
{
    constexpr ModelTime slice = 5 * ms_per_second;
    const Hardware hardware = hardware_of(*onu.device.type);
    Random own = random_for(olt.seed(), Purpose::usage, onu.binding->mac);
    const uint32_t memory_share = 40 + own.below(20); // percent
    const uint32_t flash_share = 50 + own.below(30);
    const uint32_t idle_load = 3 + own.below(10);
    Random momentary(own.next(), olt.now() / slice);
    const uint32_t memory_used = hardware.memory * memory_share / 100 + momentary.below(hardware.memory / 20);
    return {.memory_free = hardware.memory - memory_used,
            .flash_free = hardware.flash - hardware.flash * flash_share / 100,
            .cpu_load = idle_load + momentary.below(30)};
}

Readings onu_readings(const Olt &olt, const RemoteOnu &onu)
{
    constexpr uint32_t degree = 256;
    constexpr uint64_t temperature_swing = 8 * degree; // from the coldest to the warmest hour
    constexpr uint64_t bias_swing = 400;
    const Mac &mac = onu.binding->mac;
    const ModelTime second = olt.second();
    const uint64_t warm = warmth(second);
    const Arrival &arrival = *onu.port->ranged(mac);

    Random random = random_for(olt.seed(), Purpose::optics, mac);
    random.next(); // skips the number of the launch power
    Readings readings{};
    readings[temperature] =
        static_cast<int32_t>(35 * degree + random.below(12 * degree) + temperature_swing * warm / half_day);
    readings[voltage] = static_cast<int32_t>(32700 + random.below(600));
    readings[bias] = static_cast<int32_t>(5000 + random.below(3000) + bias_swing * warm / half_day);
    readings[launch_power] = power_of(laser_of(olt, *onu.port, mac).power(second));
    readings[received_power] =
        power_of(received_level(olt, *onu.port, arrival, Direction::down, second * ms_per_second));
    return readings;
}

uint32_t llids_of(const Olt &olt, const RemoteOnu &onu, Side side)
{
    return word_of(olt, onu.key(BSP_CMD_ONU_MULTI_LLID_SET), side, 1);
}

std::vector<OnuUni> unis_of(const Olt &olt, const RemoteOnu &onu)
{
    const std::vector<UniConfig> configs = uni_configs(olt, onu, Side::remote);
    const std::vector<std::optional<LinkMode>> links = uni_links(olt, onu, configs);
    std::vector<OnuUni> unis;
    for (uint32_t uni = 1; uni <= onu.device.unis.size(); ++uni)
        unis.push_back({.line_rate = onu.device.unis[uni - 1].line_rate,
                        .enabled = configs[uni - 1].enabled,
                        .autoneg = configs[uni - 1].autoneg,
                        .shut = olt.shut({onu.port->number, onu.binding->mac, uni}),
                        .link = links[uni - 1]});
    return unis;
}

} // namespace ponsim
