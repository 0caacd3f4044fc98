// The rows of one table that come from one OLT.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "snmp/core/oid.h"

namespace front::snmp
{

// The words for the numbers of an enumeration, from 1 on.
using Words = std::span<const std::string_view>;

struct ColumnKind {
    uint32_t number;
    std::string_view name;
    Type type;
    Words words = {}; // of an enumeration that follows from words of the OLT
};

// What is longer is cut, so that a value always fits into a message.
inline constexpr size_t longest_text = 255;

// An Item is what stands in one column of one row, or that nothing stands there.
struct Item {
    bool present = true;
    uint64_t number = 0;
    std::string octets = {};

    Item(std::nullopt_t) : present(false) {}
    Item(uint64_t value) : number(value) {}
    Item(uint32_t value) : number(value) {}
    Item(bool) = delete; // a TruthValue is 1 or 2
    Item(int value) : number(static_cast<uint32_t>(value)) {}
    Item(std::string_view text) : octets(text) {}
    Item(const char *text) : octets(text) {}
    Item(std::string text) : octets(std::move(text)) {}
    Item(const std::array<uint8_t, 6> &mac) : octets(mac.begin(), mac.end()) {}
    template <class Of>
    Item(const std::optional<Of> &value) : Item(value ? Item(*value) : Item(std::nullopt))
    {
    }
};

// A Part keeps its rows in the order of their indexes, and for each column the rows that have something in it, so that
// whatever comes next is found by bisection.
class Part
{
public:
    // All indexes have so many arcs. Without any there is one row at most, as of a scalar.
    Part(size_t index_width, size_t columns) : width(index_width), cells(columns) {}

    // Starts a row. Returns false, and adds nothing, when it does not stand behind the row before it.
    bool add_row(OidView index);
    // Puts something into a column of the last row. Columns count from 0 here.
    void put(size_t column, const Item &item);

    size_t rows() const { return count; }
    OidView index_of(size_t row) const { return OidView(indexes).subspan(row * width, width); }

    // Returns the first cell of a column whose index is not before this one or, unless `include` says so, is behind it.
    std::optional<size_t> find(size_t column, OidView index, bool include) const;
    OidView index_of_cell(size_t column, size_t cell) const { return index_of(cells[column][cell].row); }
    Value value(size_t column, size_t cell, Type type) const;
    // Returns what stands in a column of a row.
    std::optional<Value> at(size_t column, OidView index, Type type) const;

private:
    struct Cell {
        uint32_t row;
        uint32_t length; // of octets
        uint64_t number; // or where octets begin
    };

    size_t width;
    size_t count = 0; // of rows
    Oid indexes;
    std::vector<std::vector<Cell>> cells; // by column
    std::string texts;
};

} // namespace front::snmp
