// What a table of a MIB is: its name, place and columns, and how its rows are made of what is known of an OLT.
#pragma once

#include <memory>
#include <string>

#include "snmp/core/part.h"
#include "watch/fact.h"

namespace front::snmp
{

// A Source is an OLT, and what is known of it.
struct Source {
    uint32_t index = 1; // in tables, 1 to 255
    std::string name = {};
    std::shared_ptr<const Snapshot> snapshot;
    std::shared_ptr<const Facts> facts = {}; // of the watcher, or null
};

// What values depend on beside the OLTs.
struct Times {
    UnixTime now = 0;
    UnixTime started = 0; // when the master's sysUpTime was 0
};

// Returns the sysUpTime at a time; 0 of what was before it counted.
uint64_t time_ticks(UnixTime at, const Times &times);
// Returns the octets of a DateAndTime, in UTC.
std::string date_and_time(UnixTime at);

// What a part is made of.
struct Making {
    const Source &source;
    const Times &times;
    const Part *before; // that was made of this OLT before, or null
};

// An object of an index, and how many arcs it has there.
struct IndexKind {
    std::string_view name;
    size_t width = 1;
    Words words = {}; // of an enumeration
};

struct TableInfo {
    bool is_standard = false; // its entry is absolute, and else below the root
    Oid entry;
    std::string_view name; // of the entry
    std::vector<IndexKind> index;
    std::vector<ColumnKind> columns;
    std::vector<Table> made_of; // it is made again when one of these was read
    bool of_facts = false;      // or when facts changed
    bool of_time = false;       // or when a second has passed
    void (*make)(Part &part, const Making &making);
};

// A Column says what stands in a column, by a row of what a table is made of.
template <class Row>
struct Column {
    uint32_t number;
    std::string_view name;
    Type type;
    Item (*item)(const Row &row, const Making &making);
    Words words = {};
};

template <class Row>
std::vector<ColumnKind> kinds_of(std::span<const Column<Row>> columns)
{
    std::vector<ColumnKind> kinds;
    for (const Column<Row> &column : columns)
        kinds.push_back({column.number, column.name, column.type, column.words});
    return kinds;
}

// Adds a row with all its columns, unless it does not stand behind the row before it.
template <class Row>
void add(Part &part, std::span<const Column<Row>> columns, OidView index, const Row &row, const Making &making)
{
    if (!part.add_row(index)) return;
    for (size_t column = 0; column < columns.size(); ++column)
        part.put(column, columns[column].item(row, making));
}

} // namespace front::snmp
