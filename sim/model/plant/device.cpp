#include "model/plant/device.h"

#include "model/base/random.h"

namespace ponsim
{
namespace
{

constexpr DeviceType types[] = {
    {.vendor = "SIMA",
     .model = "S100",
     .chipset = "SX-1001",
     .ge_ports = 1,
     .fe_ports = 0,
     .pots_ports = 0,
     .us_queues = 4,
     .fec = true,
     .battery = false,
     .igmp_snooping = true,
     .multicast_control = false,
     .fast_leave = false,
     .vlan_translation = true,
     .vlan_trunk = false,
     .boot = 12 * ms_per_second,
     .boot_spread = 4 * ms_per_second},
    {.vendor = "SIMA",
     .model = "S040",
     .chipset = "SX-1004",
     .ge_ports = 0,
     .fe_ports = 4,
     .pots_ports = 0,
     .us_queues = 4,
     .fec = true,
     .battery = false,
     .igmp_snooping = true,
     .multicast_control = true,
     .fast_leave = true,
     .vlan_translation = true,
     .vlan_trunk = true,
     .boot = 18 * ms_per_second,
     .boot_spread = 5 * ms_per_second},
    {.vendor = "SIMB",
     .model = "E020",
     .chipset = "SY-200",
     .ge_ports = 0,
     .fe_ports = 2,
     .pots_ports = 0,
     .us_queues = 1,
     .fec = false,
     .battery = false,
     .igmp_snooping = false,
     .multicast_control = false,
     .fast_leave = false,
     .vlan_translation = false,
     .vlan_trunk = false,
     .boot = 9 * ms_per_second,
     .boot_spread = 1 * ms_per_second},
    {.vendor = "SIMB",
     .model = "H132",
     .chipset = "SY-420",
     .ge_ports = 1,
     .fe_ports = 3,
     .pots_ports = 2,
     .us_queues = 8,
     .fec = true,
     .battery = false,
     .igmp_snooping = true,
     .multicast_control = true,
     .fast_leave = true,
     .vlan_translation = true,
     .vlan_trunk = true,
     .boot = 30 * ms_per_second,
     .boot_spread = 6 * ms_per_second},
    {.vendor = "SIMC",
     .model = "B400",
     .chipset = "SZ-8",
     .ge_ports = 4,
     .fe_ports = 0,
     .pots_ports = 0,
     .us_queues = 8,
     .fec = true,
     .battery = true,
     .igmp_snooping = true,
     .multicast_control = true,
     .fast_leave = true,
     .vlan_translation = true,
     .vlan_trunk = true,
     .boot = 24 * ms_per_second,
     .boot_spread = 5 * ms_per_second},
};
constexpr std::string_view hardware_versions[] = {"V1.0", "V1.1", "V2.0"};
constexpr std::string_view software_versions[] = {"1.0.7", "1.2.0", "1.2.3", "2.0.1"};

// These are the abilities of a GE port. An FE port does not have the last one.
constexpr Ability abilities[] = {
    {14, {10, false}}, {142, {10, true}}, {25, {100, false}}, {252, {100, true}}, {402, {1000, true}}};

constexpr uint32_t fe_rate = 100;
constexpr uint32_t ge_rate = 1000;

template <class Values>
const auto &pick(Random &random, const Values &values)
{
    return values[random.below(static_cast<uint32_t>(std::size(values)))];
}

Uni next_uni(Random &random, uint32_t line_rate)
{
    const bool plugged = random.happens(70);
    const uint32_t speed = random.happens(80) ? line_rate : line_rate / 10;
    const bool full_duplex = speed == line_rate || random.happens(75);
    Uni uni{line_rate, std::nullopt};
    if (plugged) uni.partner = LinkMode{speed, full_duplex};
    return uni;
}

std::optional<uint32_t> next_limit(Random &random)
{
    const bool limited = random.happens(50);
    const uint32_t limit = 1024 * (1 + random.below(50));
    return limited ? std::optional(limit) : std::nullopt;
}

VlanMode next_vlan_mode(Random &random, const DeviceType &type)
{
    const uint32_t share = random.below(100);
    if (share < 40) return VlanMode::transparent;
    if (share < 60 && type.vlan_translation) return VlanMode::translation;
    if (share >= 80 && type.vlan_trunk) return VlanMode::trunk;
    return VlanMode::tag;
}

std::vector<Vlan> next_vlans(Random &random, bool translated)
{
    std::vector<Vlan> vlans;
    const uint32_t shift = translated ? 1000 * (1 + random.below(3)) : 0;
    uint32_t user = 1;
    for (uint32_t count = 1 + random.below(max_vlans); count > 0; --count) {
        user += 1 + random.below(100);
        vlans.push_back({user, user + shift});
    }
    return vlans;
}

UniConfig next_config(Random &random, const DeviceType &type)
{
    UniConfig config{};
    config.enabled = random.happens(90);
    config.autoneg = random.happens(80);
    config.forced.speed = random.happens(75) ? 100 : 10;
    config.forced.full_duplex = random.happens(75);
    config.pause = random.happens(30);
    config.ingress = next_limit(random);
    config.egress = next_limit(random);
    config.vlan_mode = next_vlan_mode(random, type);
    config.pvid = config.vlan_mode == VlanMode::transparent ? 1 : 100 + random.below(900);
    if (config.vlan_mode == VlanMode::translation || config.vlan_mode == VlanMode::trunk)
        config.vlans = next_vlans(random, config.vlan_mode == VlanMode::translation);
    return config;
}

} // namespace

std::span<const DeviceType> device_types()
{
    return types;
}

Device device_of(uint64_t seed, const Mac &mac, const Equipment &equipment)
{
    Random random = random_for(seed, Purpose::device, mac);
    Device device{.type = &pick(random, types), .hardware = {}, .software = {}, .unis = {}};
    if (equipment.kind) device.type = equipment.kind;
    device.in_use = equipment.in_use;
    device.hardware = pick(random, hardware_versions);
    device.software = pick(random, software_versions);
    for (uint32_t index = 0; index < device.type->ge_ports + device.type->fe_ports; ++index)
        device.unis.push_back(next_uni(random, index < device.type->ge_ports ? ge_rate : fe_rate));
    if (device.in_use)
        for (Uni &uni : device.unis)
            uni.partner = LinkMode{uni.line_rate, true};
    return device;
}

ModelTime boot_time(uint64_t seed, const Mac &mac, const DeviceType &type)
{
    Random random = random_for(seed, Purpose::boot, mac);
    const auto range = static_cast<uint32_t>(2 * type.boot_spread + 1);
    return type.boot - type.boot_spread + random.below(range);
}

std::vector<UniConfig> default_configs(uint64_t seed, const Mac &mac, const Device &device)
{
    Random random = random_for(seed, Purpose::configuration, mac);
    std::vector<UniConfig> configs;
    while (configs.size() < device.unis.size())
        configs.push_back(next_config(random, *device.type));
    if (device.in_use)
        for (UniConfig &config : configs) {
            config.enabled = true;
            config.autoneg = true;
            config.ingress.reset();
            config.egress.reset();
        }
    return configs;
}

std::span<const Ability> all_abilities()
{
    return abilities;
}

std::span<const Ability> abilities_of(const Uni &uni)
{
    return std::span(abilities).first(std::size(abilities) - (uni.line_rate == ge_rate ? 0 : 1));
}

std::optional<LinkMode> link_of(const Uni &uni, const UniConfig &config)
{
    if (!config.enabled || !uni.partner) return std::nullopt;
    if (!config.autoneg) return config.forced;
    // The partner offers its mode and the slower ones. It offers full duplex only when its own mode has it.
    std::optional<LinkMode> best;
    const std::span<const Ability> own = abilities_of(uni);
    for (size_t index = 0; index < own.size(); ++index) {
        const LinkMode &mode = own[index].mode;
        const bool common = mode.speed <= uni.partner->speed && (!mode.full_duplex || uni.partner->full_duplex);
        if (common && (config.offered >> index & 1)) best = mode;
    }
    return best;
}

std::string to_text(const LinkMode &mode)
{
    return std::to_string(mode.speed) + (mode.full_duplex ? "FD" : "HD");
}

std::string_view to_text(VlanMode mode)
{
    constexpr std::string_view names[] = {"transparent", "tag", "translation", "trunk"};
    return names[static_cast<size_t>(mode)];
}

std::string to_text(std::span<const Vlan> vlans)
{
    std::string text;
    for (const Vlan &vlan : vlans) {
        if (!text.empty()) text += ',';
        text += std::to_string(vlan.user);
        if (vlan.network != vlan.user) text += ':' + std::to_string(vlan.network);
    }
    return text;
}

} // namespace ponsim
