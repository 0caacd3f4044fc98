// ponctl debug: registers of the PON chip and the interfaces, and the switches of its debug output.
#include "daily.h"
#include "platform.h"
#include "sections.h"

namespace ponctl
{

const std::array<DebugView, 10> debug_views{{
    {"pon-mac", "bsp_debug_plat_pon_mac_get", "MAC of a PON port", false},
    {"pon-phy", "bsp_debug_plat_pon_phy_get", "PHY of a PON port", false},
    {"laser", "bsp_debug_plat_pon_laser_get", "laser state of a PON port", false},
    {"ge-mac", "bsp_debug_plat_ge_mac_get", "MAC of a GE port", false},
    {"ge-phy", "bsp_debug_plat_ge_phy_get", "PHY of a GE port", false},
    {"xaui-mac", "bsp_debug_plat_xaui_mac_get", "MAC of a XAUI interface", false},
    {"xaui-phy", "bsp_debug_plat_xaui_phy_get", "PHY of a XAUI interface", false},
    {"mgmt", "bsp_debug_plat_mgmt_cfg_get", "configuration of a management port", false},
    {"ingress", "bsp_debug_plat_ingress_behavior_get", "ingress behaviour of a port", true},
    {"egress", "bsp_debug_plat_egress_behavior_get", "egress behaviour of a port", true},
}};

namespace
{

constexpr std::array<std::string_view, 3> laser_states{"off", "on", "on in spite of TX disable"};

} // namespace

ExitCode run_debug_view(const Output &output, const DebugOptions &options)
{
    std::vector<FieldStyle> styles;
    if (options.view->operation == std::string_view("bsp_debug_plat_pon_laser_get"))
        styles.push_back({"state", "state", laser_states});
    return run_show(
        output, options.view->operation,
        words_of({{"port", number_word("PORT", options.port)},
                  {"selector", options.view->has_selector ? number_word("SELECTOR", options.selector) : ""}}),
        styles);
}

ExitCode run_debug_ge_phy_set(const Output &, const DebugSetOptions &options)
{
    const auto words = words_of(
        {{"port", number_word("PORT", options.port)}, {"value", number_word("VALUE", options.value, UINT8_MAX)}});
    ask(options.confirmed, "setting the PHY of GE port " + options.port);
    return Called("bsp_debug_plat_ge_phy_set", words).report();
}

ExitCode run_debug_fdb(const Output &, const DebugPairOptions &options)
{
    return Called("bsp_debug_cs8022_get_fdb", words_of({{"port", number_word("PORT", options.first)},
                                                        {"selector", number_word("SELECTOR", options.second)}}))
        .report();
}

ExitCode run_debug_ctc_oam(const Output &, const DebugPairOptions &options)
{
    return Called("bsp_debug_ctc_oam", words_of({{"first", number_word("FIRST", options.first)},
                                                 {"second", number_word("SECOND", options.second)}}))
        .report();
}

ExitCode run_debug_onu(const Output &, const DebugPairOptions &options)
{
    return Called("bsp_debug_onu_debug", words_of({{"first", number_word("FIRST", options.first)},
                                                   {"second", number_word("SECOND", options.second)}}))
        .report();
}

} // namespace ponctl
