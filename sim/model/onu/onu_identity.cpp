#include "model/onu/onu_identity.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/random.h"
#include "model/olt/light.h"
#include "model/onu/uni_config.h"
#include "model/plant/fibre.h"
#include "text/words.h"

namespace ponsim
{
namespace
{

constexpr uint32_t mib = 1024; // KiB

constexpr Hardware all_hardware[] = {
    {"SX-1001", OnuType::sfu, 2, {0x19, 0x04, 0x12}, 32 * mib, 8 * mib},
    {"SX-1004", OnuType::sfu, 1, {0x20, 0x09, 0x30}, 64 * mib, 16 * mib},
    {"SY-200", OnuType::sfu, 4, {0x16, 0x11, 0x07}, 16 * mib, 4 * mib},
    {"SY-420", OnuType::hgu, 2, {0x21, 0x06, 0x18}, 128 * mib, 32 * mib},
    {"SZ-8", OnuType::sbu, 3, {0x22, 0x02, 0x24}, 256 * mib, 64 * mib},
};

// Returns what the ONU has of a setting that is one word, at the start of the record's data.
uint32_t word_of(const Olt &olt, const SettingKey &key, Side side, uint32_t otherwise)
{
    constexpr layout::At<uint32_t> start{offsetof(bsp_onu_msg, onu_data)};
    OnuBlock block(sizeof otherwise);
    block.put(start, otherwise);
    return setting_of(olt, key, side, block).get(start);
}

} // namespace

const Hardware &hardware_of(const DeviceType &type)
{
    const auto found = std::ranges::find(all_hardware, type.chipset, &Hardware::chipset);
    if (found == std::end(all_hardware)) throw std::logic_error("a kind of ONU is made of nothing");
    return *found;
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
    const Hardware &hardware = hardware_of(*onu.device.type);
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
    constexpr uint32_t gain = 10; // 0.01 dB per km; fibre loses less of the 1490 nm that OLTs send
    const Mac &mac = onu.binding->mac;
    const ModelTime now = olt.now();
    const uint64_t warm = warmth(now / ms_per_second);
    const Arrival &arrival = *onu.port->ranged(mac);
    const int32_t sent = centi_dbm(olt.module(onu.port->number)->readings(now)[launch_power]);

    Random random = random_for(olt.seed(), Purpose::optics, mac);
    random.next(); // skips the number of the launch power
    Readings readings{};
    readings[temperature] =
        static_cast<int32_t>(35 * degree + random.below(12 * degree) + temperature_swing * warm / half_day);
    readings[voltage] = static_cast<int32_t>(32700 + random.below(600));
    readings[bias] = static_cast<int32_t>(5000 + random.below(3000) + bias_swing * warm / half_day);
    readings[launch_power] = power_of(OnuLaser(olt, *onu.port, mac).power(now / ms_per_second));
    readings[received_power] =
        power_of(sent - path_loss(*onu.port, arrival) + static_cast<int32_t>(arrival.distance * gain / 1000));
    return readings;
}

uint32_t llids_of(const Olt &olt, const RemoteOnu &onu, Side side)
{
    return word_of(olt, onu.key(BSP_CMD_ONU_MULTI_LLID_SET), side, 1);
}

std::vector<OnuUni> unis_of(const Olt &olt, const RemoteOnu &onu)
{
    const std::vector<UniConfig> configs = uni_configs(olt, onu, Side::remote);
    const std::vector<std::optional<LinkMode>> links = uni_links(olt, onu);
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
