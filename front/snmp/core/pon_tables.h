// The tables of BSP-PON-MIB. What they are is said there.
#pragma once

#include "snmp/core/table_kind.h"

namespace front::snmp
{

TableInfo port_table();

} // namespace front::snmp
