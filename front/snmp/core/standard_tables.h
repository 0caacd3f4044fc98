// Tables of standards, as far as what they ask for is known of an OLT.
#pragma once

#include "snmp/core/table_kind.h"

namespace front::snmp
{

// Of IF-MIB: PON ports and uplinks.
TableInfo if_table();
TableInfo if_x_table();
// Of ENTITY-MIB and ENTITY-SENSOR-MIB: the OLT, its modules, and what they measure.
TableInfo physical_table();
TableInfo sensor_table();
// Of BRIDGE-MIB and Q-BRIDGE-MIB: the forwarding database.
TableInfo bridge_port_table();
TableInfo fdb_table();
TableInfo station_table();
// Of DOT3-EPON-MIB: what PON ports have in common for all their ONUs.
TableInfo epon_mpcp_table();
TableInfo epon_fec_table();

// Returns the ifIndex of a PON port and of an uplink.
uint32_t pon_if_index(uint32_t olt, uint32_t port);
uint32_t uplink_if_index(uint32_t olt, uint32_t port);

} // namespace front::snmp
