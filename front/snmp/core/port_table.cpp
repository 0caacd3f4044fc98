// bspPonPortTable.
#include <cmath>

#include "snmp/core/pon_tables.h"

namespace front::snmp
{
namespace
{

using Row = view::port_info;

Item hundredths(double value)
{
    return static_cast<int>(std::lround(value * 100));
}

constexpr Column<Row> columns[] = {
    {2, "bspPortMac", Type::octets, [](const Row &row, const Making &) { return Item(row.mac); }},
    {5, "bspPortTxPower", Type::integer, [](const Row &row, const Making &) { return hundredths(row.tx_power); }},
};

} // namespace

TableInfo port_table()
{
    return {.is_standard = false,
            .entry = {1, 2, 1},
            .name = "bspPortEntry",
            .index = {"bspOltIndex", "bspPortNumber"},
            .columns = kinds_of<Row>(columns),
            .made_of = {Table::ports},
            .make = [](const TableInfo &info, const Making &making) {
                Part part(info.index.size(), info.columns.size());
                for (const Row &row : rows_of(making.source.snapshot->ports))
                    add<Row>(part, columns, Oid{making.source.index, row.pon_port}, row, making);
                return part;
            }};
}

} // namespace front::snmp
