// Everything that SNMP can read, as it is known at one time. Nobody changes it.
#pragma once

#include <memory>
#include <optional>

#include "snmp/core/part.h"

namespace front::snmp
{

// An ObjectTable is found below its entry, column by column, and in a column in the order of the indexes. A group of
// scalars is a table, too: with one row, whose index is 0. A scalar by itself is a table whose only column is 0.
struct ObjectTable {
    Oid entry;
    std::vector<ColumnKind> columns;                // in the order of their numbers
    std::vector<std::shared_ptr<const Part>> parts; // in the order of their indexes
};

class Objects
{
public:
    // Takes tables in the order of their entries, none of which stands below another.
    Objects(std::vector<ObjectTable> all, std::vector<Oid> registered)
        : tables(std::move(all)), tops(std::move(registered))
    {
    }

    // Returns the value of an instance, or nothing when there is none.
    std::optional<Value> get(OidView oid) const;
    // Returns whether there is such a column or scalar, whatever instances it has: where it is not, there is "no such
    // object", and else "no such instance".
    bool has_object(OidView oid) const;
    // Returns the first instance behind this identifier, or it itself where it is to be included, that stands before
    // `end`; an empty end is none.
    std::optional<Binding> next(OidView after, bool include, OidView end = {}) const;
    // Returns below which identifiers all of this stands, in order.
    std::span<const Oid> regions() const { return tops; }

private:
    const ObjectTable *table_of(OidView oid) const;

    std::vector<ObjectTable> tables;
    std::vector<Oid> tops;
};

} // namespace front::snmp
