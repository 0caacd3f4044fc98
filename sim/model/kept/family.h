// A family is a set of kept records of one kind. Each record is found by its key.
//
// A family is declared once, in a file of this folder: its key, its record, and a Family that says which of their
// members are columns of its table. The table itself, what is written of a change and read back, and the lines of the
// configuration follow from that. kept.h lists the families.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "model/base/limits.h"
#include "model/base/time.h"

namespace ponsim
{

// Each family specialises this template. The specialisation has these members:
//   table   the table's name
//   Key     the key, by which a record is found
//   key     the columns of the key, as a tuple
//   value   the columns of the record, as a tuple
// It can have these members:
//   parts   optional members that have a table of their own, with the same key
//   unique  columns whose values together differ between any two records
//   configured  the names of the columns that somebody configures, or `all_columns`. Without it the records are a state
//           that follows from what happens.
//   as_new  true: a record that equals a newly made one is not kept
//   placed  true: the OLT has a place of its own for the records; otherwise it keeps them by their keys, as they are
//   Check   what rows must meet beyond the bounds of their columns. One Check is made for a table. It is called with
//   the
//           number of the OLT's PON ports and with key and record of each row. It returns what is wrong, or null.
// It must have this one:
//   most    so many records an OLT can have
// Where their number does not follow from the key, a family by PON port also has this one:
//   most_of_port  so many records one PON port can have
// The bounds, the Check and the numbers of records are all that says which records there can be. Whatever is written,
// loaded or opened is held to them (see store/records.h).
template <class Record>
struct Family;

// All columns behind the key are configured.
struct AllColumns {
};
inline constexpr AllColumns all_columns;

// Bounds say which numbers a column can have, or how many bytes its text or its bytes can have.
struct Bounds {
    int64_t least;
    int64_t greatest;
    bool past = false; // a time that is not later than the OLT's

    bool contains(int64_t number) const { return number >= least && number <= greatest; }
};

// A column without Bounds of its own has this one. An enumeration needs its own, or has
// its first value only.
template <class Value>
constexpr Bounds natural_bounds()
{
    if constexpr (std::is_same_v<Value, bool>)
        return {0, 1};
    else if constexpr (std::is_enum_v<Value>)
        return {0, 0};
    else if constexpr (std::is_same_v<Value, ModelTime>)
        return {0, greatest_time};
    else if constexpr (std::is_same_v<Value, std::string>)
        return {0, longest_kept_text};
    else if constexpr (std::is_integral_v<Value>)
        return {std::numeric_limits<Value>::min(), std::numeric_limits<Value>::max()};
    else
        return {0, sizeof(Value)};
}

// These are the bounds of a time at which something has happened.
inline constexpr Bounds past{0, latest_time, true};

// A ColumnField is what a row is told of a column whose value is put or got.
struct ColumnField {
    std::string_view name;
    Bounds bounds;
};

// A kind of column declares its columns, puts the owner's member into a row and gets it from a row. A row refuses what
// is not within the field's bounds.

// A Column holds a member in a column of its own: a number, a text, or an array of bytes.
template <class Owner, class Value>
struct Column {
    std::string_view name;
    Value Owner::*member;
    Bounds bounds = natural_bounds<Value>();

    void declare(auto &columns) const { columns.template add<Value>(name); }
    void put(auto &row, const Owner &owner) const { row.put(owner.*member, ColumnField{name, bounds}); }
    void get(auto &row, Owner &owner) const { row.get(owner.*member, ColumnField{name, bounds}); }
};

// An Itself column holds the whole key, where the key is one value.
template <class Value>
struct Itself {
    std::string_view name;
    Bounds bounds = natural_bounds<Value>();

    void declare(auto &columns) const { columns.template add<Value>(name); }
    void put(auto &row, const Value &value) const { row.put(value, ColumnField{name, bounds}); }
    void get(auto &row, Value &value) const { row.get(value, ColumnField{name, bounds}); }
};

// A PortItself column holds the number of a PON port, where that is the whole key. The OLT must have the port.
struct PortItself {
    static constexpr ColumnField field{"pon_port", {1, max_ports}};

    void declare(auto &columns) const { columns.template add<uint32_t>(field.name); }
    void put(auto &row, uint32_t port) const { row.put(port, field); }
    void get(auto &row, uint32_t &port) const { row.get_port(port, field); }
};
// A PortColumn holds the number of a PON port that is a member of the key. The OLT must have the port.
template <class Owner>
struct PortColumn {
    uint32_t Owner::*member;

    void declare(auto &columns) const { PortItself{}.declare(columns); }
    void put(auto &row, const Owner &owner) const { PortItself{}.put(row, owner.*member); }
    void get(auto &row, Owner &owner) const { PortItself{}.get(row, owner.*member); }
};

// Only is the key of a family that has one record only, and OnlyColumn is its column.
struct Only {
    auto operator<=>(const Only &) const = default;
};
struct OnlyColumn {
    static constexpr ColumnField field{"one", {1, 1}};

    void declare(auto &columns) const { columns.template add<uint32_t>(field.name); }
    void put(auto &row, const Only &) const { row.put(uint32_t{1}, field); }
    void get(auto &row, Only &) const
    {
        uint32_t one = 0;
        row.get(one, field);
    }
};

// A BytesColumn holds a member as its bytes.
template <class Owner, class Value>
struct BytesColumn {
    std::string_view name;
    Value Owner::*member;
    Bounds size = {sizeof(Value), sizeof(Value)};

    void declare(auto &columns) const { columns.add_bytes(name); }
    void put(auto &row, const Owner &owner) const { row.put_bytes(owner.*member, ColumnField{name, size}); }
    void get(auto &row, Owner &owner) const { row.get_bytes(owner.*member, ColumnField{name, size}); }
};

// A NumberOrNone column holds an optional number. One value, which the number never has, stands for no number.
template <class Owner, class Value>
struct NumberOrNone {
    std::string_view name;
    std::optional<Value> Owner::*member;
    int64_t none;
    Bounds bounds = natural_bounds<Value>();

    void declare(auto &columns) const { columns.template add<int64_t>(name); }
    void put(auto &row, const Owner &owner) const
    {
        if (const std::optional<Value> &value = owner.*member)
            row.put(*value, ColumnField{name, bounds});
        else
            row.put(none, of_none());
    }
    void get(auto &row, Owner &owner) const
    {
        int64_t number = 0;
        if (row.next_is(none))
            row.get(number, of_none());
        else
            row.get((owner.*member).emplace(), ColumnField{name, bounds});
    }

private:
    ColumnField of_none() const { return {name, {none, none}}; }
};

// FlagAndNumber holds an optional number in two columns: whether there is a number, and the number.
template <class Owner, class Value>
struct FlagAndNumber {
    std::string_view flag;
    std::string_view name;
    std::optional<Value> Owner::*member;
    Bounds bounds = natural_bounds<Value>();

    void declare(auto &columns) const
    {
        columns.template add<bool>(flag);
        columns.template add<Value>(name);
    }
    void put(auto &row, const Owner &owner) const
    {
        row.put((owner.*member).has_value(), ColumnField{flag, natural_bounds<bool>()});
        row.put((owner.*member).value_or(Value{}), ColumnField{name, bounds});
    }
    void get(auto &row, Owner &owner) const
    {
        bool there = false;
        Value value{};
        row.get(there, ColumnField{flag, natural_bounds<bool>()});
        row.get(value, ColumnField{name, bounds});
        if (there) owner.*member = value;
    }
};

// Does the work for each column.
template <class Columns, class Do>
void for_each_column(const Columns &columns, Do work)
{
    std::apply([&](const auto &...column) { (work(column), ...); }, columns);
}

// InnerColumns hold a record within a record in columns of the owner's table.
template <class Owner, class Inner, class Columns>
struct InnerColumns {
    Inner Owner::*member;
    Columns inner;

    void declare(auto &columns) const
    {
        for_each_column(inner, [&](const auto &column) { column.declare(columns); });
    }
    void put(auto &row, const Owner &owner) const
    {
        for_each_column(inner, [&](const auto &column) { column.put(row, owner.*member); });
    }
    void get(auto &row, Owner &owner) const
    {
        for_each_column(inner, [&](const auto &column) { column.get(row, owner.*member); });
    }
};

// InnerOrNone does the same for an optional record. When there is none, the column of `sign`, a member that is never 0,
// holds 0.
template <class Owner, class Inner, class Value, class Columns>
struct InnerOrNone {
    std::optional<Inner> Owner::*member;
    Value Inner::*sign;
    Columns inner;

    void declare(auto &columns) const
    {
        for_each_column(inner, [&](const auto &column) { column.declare(columns); });
    }
    void put(auto &row, const Owner &owner) const
    {
        static const Inner none{};
        const Inner &value = owner.*member ? *(owner.*member) : none;
        for_each_column(inner, [&](const auto &column) { column.put(row, value); });
    }
    void get(auto &row, Owner &owner) const
    {
        Inner value;
        for_each_column(inner, [&](const auto &column) { column.get(row, value); });
        if (value.*sign != 0) owner.*member = value;
    }
};

// A PartTable holds an optional record within a record in a table of its own.
template <class Owner, class Inner, class Columns>
struct PartTable {
    using Value = Inner;

    std::string_view table;
    std::optional<Inner> Owner::*member;
    Columns value;
};

// An Entry says what becomes of the record at a key. Without a record there is no such record any more.
template <class Record>
struct Entry {
    typename Family<Record>::Key key;
    std::optional<Record> record;
};

// A family by PON port says how many records one port can have.
template <class Record>
concept BoundedByPort = requires
{
    Family<Record>::most_of_port;
};

// Returns the record that is to be kept. Returns null when none is to be kept.
template <class Record>
const Record *kept_record(const Entry<Record> &entry)
{
    if (!entry.record) return nullptr;
    if constexpr (requires { Family<Record>::as_new; })
        if (*entry.record == Record{}) return nullptr;
    return &*entry.record;
}

} // namespace ponsim
