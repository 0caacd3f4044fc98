// ponctl debug shows the PON chip and the interfaces, and switches the service's debug output.
#include <algorithm>
#include <array>

#include "call/invocation.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/operands.h"
#include "results/sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct DebugView {
    const char *name, *operation, *brief;
    bool registers;      // it shows registers
    bool of_either_port; // it takes a PON port or a GE port
};

// These are the settings of a PHY, from the highest bit on. One bit has no meaning.
constexpr std::array<std::string_view, 8> phy_settings{
    "reset", "loopback", "", "auto-negotiation", "power-down", "isolate", "restart-negotiation", "full-duplex"};

struct DebugOptions {
    const DebugView *view;
    std::string port;
    bool ge = false; // PORT is a GE port, where the user can choose
};

struct DebugPhyOptions {
    std::string port;
    std::vector<std::string> settings; // words, or one number
};

struct DebugFdbOptions {
    std::string port, entries = "all";
};

struct DebugSwitchOptions {
    std::string state, port; // empty: all ports
};

const std::array<DebugView, 10> debug_views{{
    {"pon-mac", "bsp_debug_plat_pon_mac_get", "MAC of a PON port", false, false},
    {"pon-phy", "bsp_debug_plat_pon_phy_get", "PHY of a PON port", false, false},
    {"laser", "bsp_debug_plat_pon_laser_get", "laser state of a PON port", false, false},
    {"ge-mac", "bsp_debug_plat_ge_mac_get", "MAC of a GE port", false, false},
    {"ge-phy", "bsp_debug_plat_ge_phy_get", "PHY of a GE port", true, false},
    {"xaui-mac", "bsp_debug_plat_xaui_mac_get", "MAC of a XAUI interface", false, false},
    {"xaui-phy", "bsp_debug_plat_xaui_phy_get", "PHY of a XAUI interface", true, false},
    {"mgmt", "bsp_debug_plat_mgmt_cfg_get", "configuration of a management port", false, false},
    {"ingress", "bsp_debug_plat_ingress_behavior_get", "ingress behaviour of a port", false, true},
    {"egress", "bsp_debug_plat_egress_behavior_get", "egress behaviour of a port", false, true},
}};

constexpr std::array<std::string_view, 3> entries{"all", "dynamic", "static"};

uint32_t settings_of(const std::vector<std::string> &words)
{
    if (words.size() == 1 && is_number(words.front())) return parse_number("SETTING", words.front(), UINT8_MAX);
    uint32_t settings = 0;
    for (const std::string &word : words) {
        uint32_t bit = 0x80;
        for (const std::string_view setting : phy_settings) {
            if (!word.empty() && setting == word) settings |= bit;
            bit >>= 1;
        }
        std::vector<std::string_view> known;
        for (const std::string_view setting : phy_settings)
            if (!setting.empty()) known.push_back(setting);
        if (std::ranges::find(known, word) == known.end())
            throw UsageError("SETTING: '" + word + "' is not a number up to 255, nor one of " + text::join(known));
    }
    return settings;
}

ExitCode switch_debug(const char *operation, const DebugSwitchOptions &options)
{
    return report(Invocation(
        operation,
        words_of({{"first", number_of_word("STATE", options.state, off_on)}, {"second", port_of(options.port)}}),
        consent()));
}

ExitCode run_debug_view(const Output &output, const DebugOptions &options)
{
    const DebugView &view = *options.view;
    const Invocation called(view.operation,
                            words_of({{"port", number_word("PORT", options.port)},
                                      {"selector", !view.of_either_port ? ""
                                                   : options.ge         ? "1"
                                                                        : "0"}}),
                            consent());
    Section section{{}, {}, &called};
    section.registers = view.registers;
    return show(output, {section});
}

ExitCode run_debug_ge_phy_set(const Output &, const DebugPhyOptions &options)
{
    const auto words = words_of(
        {{"port", number_word("PORT", options.port)}, {"value", std::to_string(settings_of(options.settings))}});
    ask_before("bsp_debug_plat_ge_phy_set", "setting the PHY of GE port " + options.port);
    return report(Invocation("bsp_debug_plat_ge_phy_set", words, consent()));
}

ExitCode run_debug_fdb(const Output &, const DebugFdbOptions &options)
{
    return report(Invocation("bsp_debug_cs8022_get_fdb",
                             words_of({{"selector", number_of_word("--entries", options.entries, entries)},
                                       {"port", port_of(options.port)}}),
                             consent()));
}

ExitCode run_debug_ctc_oam(const Output &, const DebugSwitchOptions &options)
{
    return switch_debug("bsp_debug_ctc_oam", options);
}

ExitCode run_debug_onu(const Output &, const DebugSwitchOptions &options)
{
    return switch_debug("bsp_debug_onu_debug", options);
}

void add_view(Command &debug, const DebugView &view)
{
    Command &one = debug.add(view.name, std::string("Shows the ") + view.brief);
    DebugOptions &options = one.runs(run_debug_view);
    options.view = &view;
    one.argument("PORT", &options.port, "port or interface number").is_required();
    if (view.of_either_port) one.option("--ge", &options.ge, "PORT is a GE port; else a PON port");
}

void add_switch(Command &debug, const char *name, const char *brief,
                ExitCode (*run)(const Output &, const DebugSwitchOptions &))
{
    Command &one = debug.add(name, brief);
    DebugSwitchOptions &options = one.runs(run);
    one.argument("STATE", &options.state, "on or off", "on|off").is_required();
    one.argument("PORT", &options.port, "PON port number; all ports when left out");
}

} // namespace

void add_debug(Program &program)
{
    Command &debug = program.tree.add("debug", "Shows registers of the PON chip and the interfaces, for engineers");
    for (const DebugView &view : debug_views)
        add_view(debug, view);

    Command &set = debug.add("ge-phy-set", "Sets the PHY of a GE port, all of it at once");
    DebugPhyOptions &options = set.runs(run_debug_ge_phy_set);
    set.argument("PORT", &options.port, "GE port number").is_required();
    set.argument("SETTING", &options.settings,
                 "reset, loopback, auto-negotiation, power-down, isolate, restart-negotiation, full-duplex; or all of "
                 "them as a number, the upper byte of the control register")
        .is_required();

    Command &fdb = debug.add("fdb-dump", "Has the chip's forwarding database written to the service's log");
    DebugFdbOptions &dumped = fdb.runs(run_debug_fdb);
    fdb.argument("PORT", &dumped.port, "PON port number; all ports when left out");
    fdb.option("--entries", &dumped.entries, "which entries; all when left out", "all|dynamic|static");

    add_switch(debug, "ctc-oam", "Switches debug output of CTC OAM", run_debug_ctc_oam);
    add_switch(debug, "onu", "Switches debug output of ONUs", run_debug_onu);
}

} // namespace ponctl
