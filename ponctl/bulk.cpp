// ponctl bulk and ponctl arp.
#include "bulk.h"

#include "daily.h"

namespace ponctl
{

ExitCode run_arp(const Output &output, const std::string &port)
{
    return run_list(output, "bsp_pon_get_arptable", {"pon_port=" + port_of(port)});
}

ExitCode run_bulk_optics(const Output &output, const std::string &port)
{
    if (port.empty()) return run_list(output, "bsp_pon_get_onu_optical_diag_data_all", {});
    return run_list(output, "bsp_pon_get_onu_optical_diag_by_pon", {"pon_port=" + port_of(port)});
}

ExitCode run_bulk_stats(const Output &output)
{
    return run_list(output, "bsp_pon_get_onu_perf_stat_data_all", {});
}

ExitCode run_bulk_ports(const Output &output)
{
    return run_list(output, "bsp_pon_get_port_info", {});
}

ExitCode run_bulk_olt(const Output &output)
{
    return run_list(output, "bsp_pon_get_basic_info", {});
}

ExitCode run_bulk_all(const Output &output)
{
    const Called called("bsp_pon_get_allonuinfo", {});
    if (called.good()) {
        const std::string_view text = called.text(0);
        print_content(output, {reinterpret_cast<const uint8_t *>(text.data()), text.size()});
    }
    return called.report();
}

} // namespace ponctl
