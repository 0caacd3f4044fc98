// The settings that ONUs have received are kept here.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/block.h"
#include "model/kept/family.h"

namespace ponsim
{

inline constexpr size_t max_settings = 80; // of an ONU and its UNI ports

// A SettingKey names a setting of an ONU by the command that queries it.
struct SettingKey {
    uint32_t pon_port;
    Mac mac;
    uint32_t command;
    uint32_t uni; // 0: a setting of the ONU itself

    auto operator<=>(const SettingKey &) const = default;
};

// A setting that an ONU has received is kept as the bytes of its block.
struct OnuSetting {
    std::string sent;
    std::string before; // what the ONU has until the setting arrives
    ModelTime arrives;

    bool operator==(const OnuSetting &) const = default;
};

template <>
struct Family<OnuSetting> {
    static constexpr std::string_view table = "onu_setting";
    static constexpr std::array<std::string_view, 1> configured{"told"};
    using Key = SettingKey;
    static constexpr size_t most_of_port = remembered_per_port * max_settings;
    static constexpr size_t most = max_ports * most_of_port;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac},
                                    Column{"command", &Key::command}, Column{"uni", &Key::uni}};
    static constexpr std::tuple value{BytesColumn{"told", &OnuSetting::sent, {0, longest_block}},
                                      BytesColumn{"before", &OnuSetting::before, {0, longest_block}},
                                      Column{"arrives", &OnuSetting::arrives}};
};

} // namespace ponsim
