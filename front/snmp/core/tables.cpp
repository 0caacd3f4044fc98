#include "snmp/core/mib.h"
#include "snmp/core/pon_tables.h"

namespace front::snmp
{

std::span<const TableInfo> table_infos()
{
    static const std::vector<TableInfo> infos{port_table()};
    return infos;
}

} // namespace front::snmp
