// The commands for remote ONUs, beside those of commands.h, whose rules hold here too. Each is for one ONU or for a set
// of them, as 1/5, 1/3-17,20 or 1/all.
#pragma once

#include "commands.h"
#include "history.h"

namespace ponctl
{

struct RemoteOptions {
    std::string set;
    std::string uni;      // port; empty: the whole ONU
    bool local = false;   // as the OLT has it, in place of the ONU
    bool history = false; // the period before, in place of the current one
    ChartOptions chart;
};

struct ServicesOptions {
    std::string set;
    std::vector<std::string> services; // empty: all that the ONU has
    std::string wan = "0";             // number of a WAN connection; 0: all
};

// What `onu services` shows.
inline constexpr std::array<std::string_view, 9> onu_services{"wan",  "wlan", "catv", "voip", "acl",
                                                              "dhcp", "fec",  "time", "mgmt"};

ExitCode run_onu_info(const Output &output, const RemoteOptions &options);
ExitCode run_onu_ports(const Output &output, const RemoteOptions &options);
ExitCode run_onu_vlan(const Output &output, const RemoteOptions &options);
ExitCode run_onu_multicast(const Output &output, const RemoteOptions &options);
ExitCode run_onu_perf(const Output &output, const RemoteOptions &options);
ExitCode run_onu_perf_on(const Output &output, const std::string &set);
ExitCode run_onu_perf_off(const Output &output, const std::string &set);
ExitCode run_onu_optics(const Output &output, const RemoteOptions &options);
ExitCode run_onu_configure(const Output &output, const RemoteOptions &options);
ExitCode run_onu_services(const Output &output, const ServicesOptions &options);
ExitCode run_onu_image(const Output &output, const RemoteOptions &options);

struct ImagePushOptions {
    std::string set, file, version;
};

struct MultiLlidOptions {
    std::string set, count;
};

struct SettingOptions {
    std::string set;
    std::vector<std::string> words; // of the setting's name, and field=value
};

ExitCode run_onu_image_push(const Output &output, const ImagePushOptions &options);
ExitCode run_onu_image_commit(const Output &output, const std::string &set);
ExitCode run_onu_multillid(const Output &output, const MultiLlidOptions &options);
ExitCode run_onu_set(const Output &output, const SettingOptions &options);
// Lists the settings that run_onu_set knows, or the fields of one that is named by these words.
ExitCode run_onu_settings(const Output &output, const std::vector<std::string> &words);

} // namespace ponctl
