// The tables of BSP-PON-MIB, in the order in which they stand there, which says what they are.
#pragma once

#include <vector>

#include "snmp/core/table_kind.h"

namespace front::snmp
{

TableInfo olt_table();
TableInfo port_table();
TableInfo mpcp_table();
TableInfo onu_table();
TableInfo onu_device_table();
TableInfo onu_optics_table();
TableInfo onu_stats_table();
TableInfo uni_table();
TableInfo waiting_table();
TableInfo loop_table();
TableInfo alarm_table();
TableInfo module_table();
TableInfo reading_table();

} // namespace front::snmp
