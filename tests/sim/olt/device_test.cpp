// These tests check what ONUs are, and how their UNI ports are configured at first.
#include "model/plant/device.h"

#include <set>

#include "support.h"

namespace ponsim
{
namespace
{

constexpr uint64_t seed = 7;

// Returns a thousand ONUs. These are enough for everything that can follow from the seed.
std::vector<Mac> thousand()
{
    std::vector<Mac> macs;
    for (uint32_t index = 0; index < 1000; ++index)
        macs.push_back(stranger(static_cast<uint8_t>(index), static_cast<uint8_t>(index >> 8)));
    return macs;
}

std::vector<UniConfig> configs_of(const Mac &mac)
{
    return default_configs(seed, mac, device_of(seed, mac));
}

bool has_list(VlanMode mode)
{
    return mode == VlanMode::translation || mode == VlanMode::trunk;
}

UniConfig configured(bool enabled, bool autoneg)
{
    UniConfig config{};
    config.enabled = enabled;
    config.autoneg = autoneg;
    config.forced = {10, false};
    return config;
}

const Uni plugged{.line_rate = 1000, .partner = LinkMode{1000, true}};

TEST(Device, FollowsFromSeedAndMac)
{
    EXPECT_EQ(device_of(seed, stranger(1)), device_of(seed, stranger(1)));
    EXPECT_EQ(configs_of(stranger(1)), configs_of(stranger(1)));
}

TEST(Device, AnotherSeedGivesOtherDevices)
{
    const auto differs = [](const Mac &mac) { return device_of(seed, mac) != device_of(seed + 1, mac); };
    EXPECT_GT(std::ranges::count_if(thousand(), differs), 500);
}

TEST(Device, IsTheSameOnEveryMachine)
{
    // What follows from the seed must never change, because kept settings are applied on top of it.
    const Mac mac{0x02, 0x1e, 0x61, 0x97, 0x01, 0x00};
    const Device device = device_of(1, mac);
    EXPECT_EQ(device.type->model, "S040");
    EXPECT_EQ(device.hardware, "V1.1");
    EXPECT_EQ(device.software, "2.0.1");
    std::string modes;
    for (const UniConfig &config : default_configs(1, mac, device))
        modes += std::string(to_text(config.vlan_mode)) + " " + to_text(config.vlans) + ";";
    EXPECT_EQ(modes, "transparent ;translation 86:3086,154:3154,237:3237,290:3290,374:3374,450:3450,494:3494;"
                     "trunk 26,49,65,160,164,210,288,302;transparent ;");
}

TEST(Device, EveryTypeOccurs)
{
    std::set<const DeviceType *> types;
    for (const Mac &mac : thousand())
        types.insert(device_of(seed, mac).type);
    EXPECT_EQ(types.size(), device_types().size());
}

TEST(Device, KeepsToTheWidthsOfItsAttributes)
{
    for (const DeviceType &type : device_types()) {
        EXPECT_EQ(type.vendor.size(), 4u);
        EXPECT_LE(type.model.size(), 4u);
        EXPECT_LE(type.chipset.size(), 8u);
        EXPECT_GE(type.ge_ports + type.fe_ports, 1u);
        EXPECT_LE(type.ge_ports + type.fe_ports, max_unis);
        EXPECT_LE(type.pots_ports, 99u);
        EXPECT_LE(type.us_queues, 99u);
    }
    for (const Mac &mac : thousand()) {
        EXPECT_LE(device_of(seed, mac).hardware.size(), 8u);
        EXPECT_LE(device_of(seed, mac).software.size(), 16u);
    }
}

TEST(Device, HasTheUniPortsOfItsType)
{
    for (const Mac &mac : thousand()) {
        const Device device = device_of(seed, mac);
        EXPECT_EQ(std::ranges::count(device.unis, 1000u, &Uni::line_rate), device.type->ge_ports);
        EXPECT_EQ(std::ranges::count(device.unis, 100u, &Uni::line_rate), device.type->fe_ports);
        EXPECT_TRUE(std::ranges::is_sorted(device.unis, std::greater{}, &Uni::line_rate)) << "GE ports come first";
    }
}

TEST(Device, NoPartnerIsFasterThanThePort)
{
    for (const Mac &mac : thousand())
        for (const Uni &uni : device_of(seed, mac).unis)
            EXPECT_TRUE(!uni.partner || uni.partner->speed <= uni.line_rate);
}

TEST(UniConfig, EveryUniPortHasOne)
{
    for (const Mac &mac : thousand())
        EXPECT_EQ(configs_of(mac).size(), device_of(seed, mac).unis.size());
}

TEST(UniConfig, EveryVlanModeOccursButOnlyWhereItIsSupported)
{
    std::set<VlanMode> modes;
    for (const Mac &mac : thousand()) {
        const DeviceType &type = *device_of(seed, mac).type;
        for (const UniConfig &config : configs_of(mac)) {
            modes.insert(config.vlan_mode);
            EXPECT_TRUE(config.vlan_mode != VlanMode::translation || type.vlan_translation);
            EXPECT_TRUE(config.vlan_mode != VlanMode::trunk || type.vlan_trunk);
        }
    }
    EXPECT_EQ(modes.size(), 4u);
}

TEST(UniConfig, OneToEightVlansWhereTheModeHasAList)
{
    std::set<size_t> sizes;
    for (const Mac &mac : thousand())
        for (const UniConfig &config : configs_of(mac)) {
            EXPECT_EQ(config.vlans.empty(), !has_list(config.vlan_mode));
            if (has_list(config.vlan_mode)) sizes.insert(config.vlans.size());
        }
    EXPECT_EQ(sizes, (std::set<size_t>{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(UniConfig, VlansAscendFrom1To4094)
{
    for (const Mac &mac : thousand())
        for (const UniConfig &config : configs_of(mac)) {
            EXPECT_TRUE(config.pvid >= 1 && config.pvid <= 4094);
            EXPECT_EQ(std::ranges::adjacent_find(config.vlans, std::greater_equal{}, &Vlan::user), config.vlans.end());
            for (const Vlan &vlan : config.vlans) {
                EXPECT_TRUE(vlan.user >= 1 && vlan.user <= 4094 && vlan.network >= 1 && vlan.network <= 4094);
                EXPECT_EQ(vlan.user != vlan.network, config.vlan_mode == VlanMode::translation);
            }
        }
}

TEST(UniConfig, ARateLimitIsBelowTheLineRate)
{
    for (const Mac &mac : thousand()) {
        const Device device = device_of(seed, mac);
        const std::vector<UniConfig> configs = configs_of(mac);
        for (size_t index = 0; index < configs.size(); ++index)
            for (const std::optional<uint32_t> &limit : {configs[index].ingress, configs[index].egress})
                EXPECT_TRUE(!limit || (*limit > 0 && *limit < device.unis[index].line_rate * 1000));
    }
}

TEST(Link, IsDownWithoutAPartnerOrWhenDisabled)
{
    EXPECT_EQ(link_of({.line_rate = 1000, .partner = {}}, configured(true, true)), std::nullopt);
    EXPECT_EQ(link_of(plugged, configured(false, true)), std::nullopt);
}

TEST(Link, IsAsNegotiatedOrElseAsConfigured)
{
    EXPECT_EQ(link_of(plugged, configured(true, true)), (LinkMode{1000, true}));
    EXPECT_EQ(link_of(plugged, configured(true, false)), (LinkMode{10, false}));
}

TEST(Texts, OfLinksAndVlans)
{
    EXPECT_EQ(to_text(LinkMode{1000, true}), "1000FD");
    EXPECT_EQ(to_text(LinkMode{10, false}), "10HD");
    EXPECT_EQ(to_text(std::vector<Vlan>{{100, 100}, {200, 1200}}), "100,200:1200");
    EXPECT_EQ(to_text(std::vector<Vlan>{}), "");
}

} // namespace
} // namespace ponsim
