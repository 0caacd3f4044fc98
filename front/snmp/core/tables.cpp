#include "snmp/core/mib.h"
#include "snmp/core/pon_tables.h"
#include "snmp/core/standard_tables.h"

namespace front::snmp
{

std::span<const TableInfo> table_infos()
{
    static const std::vector<TableInfo> infos{
        olt_table(),        port_table(),      mpcp_table(),        onu_table(),     onu_device_table(),
        onu_optics_table(), onu_stats_table(), uni_table(),         waiting_table(), loop_table(),
        alarm_table(),      module_table(),    reading_table(),     if_table(),      if_x_table(),
        physical_table(),   sensor_table(),    bridge_port_table(), fdb_table(),     station_table(),
        epon_mpcp_table(),  epon_fec_table(),
    };
    return infos;
}

} // namespace front::snmp
