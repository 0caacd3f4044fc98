// The commands for the OLT's own side, beside those of commands.h, whose rules hold here too.
#pragma once

#include <map>

#include "commands.h"
#include "history.h"

namespace ponctl
{

struct PortStatsOptions {
    std::string port; // PON port
    std::string ge;   // or GE port; one of them is given
    ChartOptions chart;
    std::shared_ptr<std::map<std::string_view, Rate>> rates = std::make_shared<std::map<std::string_view, Rate>>();
};

ExitCode run_port_show(const Output &output, const std::string &port);
ExitCode run_port_stats(const Output &output, const PortStatsOptions &options);

struct OpticsOptions {
    std::string port; // empty: all
    std::string onu;  // id; its power as the port receives it
    bool measured = false;
    ChartOptions chart;
};

ExitCode run_optics(const Output &output, const OpticsOptions &options);

struct SlaOptions {
    std::string port; // or a set, without an ONU
    std::string onu;  // ids; empty: all of the port
};

struct SlaSetOptions : SlaOptions {
    std::string fixed, assured, maximum, priority, weight, down; // those left out stay
};

ExitCode run_sla_show(const Output &output, const SlaOptions &options);
ExitCode run_sla_set(const Output &output, const SlaSetOptions &options);
ExitCode run_sla_clear(const Output &output, const SlaOptions &options);

struct P2pSwitchOptions {
    std::string port; // 0: all ports
    std::string state, onu;
    std::string rest, rate, vlans, broadcast, multicast; // those left out stay
};

struct P2pEntryOptions {
    std::string port, entry, action;
    std::string from_onu, to_port, to_onu, rate, vlan, ethertype;
};

struct P2pOwnPortOptions {
    std::string port, uplink;
};

ExitCode run_p2p_show(const Output &output, const std::string &port);
ExitCode run_p2p_set(const Output &output, const P2pSwitchOptions &options);
ExitCode run_p2p_entry(const Output &output, const P2pEntryOptions &options);
ExitCode run_p2p_own_port(const Output &output, const P2pOwnPortOptions &options);

struct FdbOptions {
    std::string port; // empty: all
    std::string llid, uni, vlan, mac, from, count;
    bool network = false; // the side of the uplinks
};

struct FdbFlushOptions {
    std::string side, port, llid, vlan, mac;
};

struct FdbSetOptions {
    std::string ageing, learning = "on", limit = "0";
};

ExitCode run_fdb_show(const Output &output, const FdbOptions &options);
ExitCode run_fdb_age(const Output &output);
ExitCode run_fdb_flush(const Output &output, const FdbFlushOptions &options);
ExitCode run_fdb_set(const Output &output, const FdbSetOptions &options);

struct DebugView {
    const char *name, *operation, *brief;
    bool registers;      // what it shows are registers
    bool of_either_port; // of a PON port or a GE port
};

// The settings of a PHY, from the highest bit on; one has no meaning.
inline constexpr std::array<std::string_view, 8> phy_settings{
    "reset", "loopback", "", "auto-negotiation", "power-down", "isolate", "restart-negotiation", "full-duplex"};

// The views of the chip and the interfaces.
extern const std::array<DebugView, 10> debug_views;

struct DebugOptions {
    const DebugView *view;
    std::string port;
    bool ge = false; // where that can be chosen
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

ExitCode run_debug_view(const Output &output, const DebugOptions &options);
ExitCode run_debug_ge_phy_set(const Output &output, const DebugPhyOptions &options);
ExitCode run_debug_fdb(const Output &output, const DebugFdbOptions &options);
ExitCode run_debug_ctc_oam(const Output &output, const DebugSwitchOptions &options);
ExitCode run_debug_onu(const Output &output, const DebugSwitchOptions &options);

struct I2cOptions {
    std::string port, address, offset;
    std::string length; // of what is read
    std::string bytes;  // to write
};

ExitCode run_i2c_read(const Output &output, const I2cOptions &options);
ExitCode run_i2c_write(const Output &output, const I2cOptions &options);

struct UpgradeAddOptions {
    std::string name, vendor, model, version, size, file;
};

struct UpgradeBindOptions {
    std::string port, name;
    bool none = false; // in place of the name
    std::string onus;  // a set; empty: the whole port
};

struct UpgradeStartOptions {
    std::string port; // or a set, without an ONU
    std::string onu;  // id; empty: all of the port
};

ExitCode run_upgrade_types(const Output &output);
ExitCode run_upgrade_add(const Output &output, const UpgradeAddOptions &options);
ExitCode run_upgrade_delete(const Output &output, const std::string &name);
ExitCode run_upgrade_load(const Output &output, const std::string &file);
ExitCode run_upgrade_bind(const Output &output, const UpgradeBindOptions &options);
ExitCode run_upgrade_start(const Output &output, const UpgradeStartOptions &options);
ExitCode run_upgrade_status(const Output &output, const std::string &port);

// How ports that a loop shut recover, from 0 on.
inline constexpr std::array<std::string_view, 2> loop_modes{"automatic", "manual"};

ExitCode run_loop_show(const Output &output);
ExitCode run_loop_on(const Output &output);
ExitCode run_loop_off(const Output &output);
ExitCode run_loop_recover(const Output &output);
ExitCode run_loop_mode(const Output &output, const std::string &mode);
ExitCode run_loop_time(const Output &output, const std::string &seconds);
ExitCode run_loop_interval(const Output &output, const std::string &seconds);

// `-` is standard output.
ExitCode run_config_save(const Output &output, const std::string &file);
ExitCode run_config_load(const Output &output, const std::string &file);

} // namespace ponctl
