// Families of what is kept: records of one kind, each found by its key.
//
// A family is declared once, in a file of this folder: key, record, and a Family that says which of their members are
// columns of its table. The table itself, what is written of a change and read back, and the lines of the configuration
// follow from that; kept.h lists the families.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>

namespace ponsim
{

// Specialised by each family, which says:
//   table   the table's name
//   Key     what a record is found by
//   key     the columns of the key, as a tuple
//   value   those of the record
// and may say:
//   parts   optional members with a table of their own, by the same key
//   unique  columns that no two records have the same values in
//   as_new  true: a record that is as a new one is not kept
//   placed  true: the OLT has a place of its own for the records; else it keeps them by their keys, as they are
//   Check   what must hold of rows that are read: one is made for a table, and called with the number of the OLT's PON
//           ports, key and record of each row; it returns what is wrong, or null
template <class Record>
struct Family;

// A kind of column declares its columns, puts the owner's member into a row and gets it from one.
// What SQL is to check of a column has '?' for its name.

// A member in a column of its own: a number, a text, or an array of bytes.
template <class Owner, class Value>
struct Column {
    std::string_view name;
    Value Owner::*member;
    std::string_view check = {};

    void declare(auto &columns) const { columns.template add<Value>(name, check); }
    void put(auto &row, const Owner &owner) const { row.put(owner.*member); }
    void get(auto &row, Owner &owner) const { row.get(owner.*member); }
};

// The key itself, where it is one value.
template <class Value>
struct Itself {
    std::string_view name;

    void declare(auto &columns) const { columns.template add<Value>(name); }
    void put(auto &row, const Value &value) const { row.put(value); }
    void get(auto &row, Value &value) const { row.get(value); }
};

// The number of a PON port, as the key itself. The OLT must have it.
struct PortItself {
    void declare(auto &columns) const { columns.template add<uint32_t>("pon_port"); }
    void put(auto &row, uint32_t port) const { row.put(port); }
    void get(auto &row, uint32_t &port) const { row.get_port(port); }
};
// The same as a member of the key.
template <class Owner>
struct PortColumn {
    uint32_t Owner::*member;

    void declare(auto &columns) const { PortItself{}.declare(columns); }
    void put(auto &row, const Owner &owner) const { PortItself{}.put(row, owner.*member); }
    void get(auto &row, Owner &owner) const { PortItself{}.get(row, owner.*member); }
};

// The key of the one record that there is, and its column.
struct Only {
    auto operator<=>(const Only &) const = default;
};
struct OnlyColumn {
    void declare(auto &columns) const { columns.template add<uint32_t>("one", "? = 1"); }
    void put(auto &row, const Only &) const { row.put(1); }
    void get(auto &row, Only &) const
    {
        uint32_t one = 0;
        row.get(one);
    }
};

// A member as its bytes. `what` says what is damaged where they do not fit it.
template <class Owner, class Value>
struct BytesColumn {
    std::string_view name;
    Value Owner::*member;
    std::string_view what = {};

    void declare(auto &columns) const { columns.add_bytes(name); }
    void put(auto &row, const Owner &owner) const { row.put_bytes(owner.*member); }
    void get(auto &row, Owner &owner) const { row.get_bytes(owner.*member, what); }
};

// An optional number of which one value, that it never has, stands for none.
template <class Owner, class Value>
struct NumberOrNone {
    std::string_view name;
    std::optional<Value> Owner::*member;
    int64_t none;

    void declare(auto &columns) const { columns.template add<int64_t>(name); }
    void put(auto &row, const Owner &owner) const
    {
        const std::optional<Value> &value = owner.*member;
        row.put(value ? int64_t{*value} : none);
    }
    void get(auto &row, Owner &owner) const
    {
        int64_t number = 0;
        row.get(number);
        if (number != none) owner.*member = static_cast<Value>(number);
    }
};

// An optional number in two columns: whether there is one, and the number.
template <class Owner, class Value>
struct FlagAndNumber {
    std::string_view flag;
    std::string_view name;
    std::optional<Value> Owner::*member;

    void declare(auto &columns) const
    {
        columns.template add<bool>(flag);
        columns.template add<Value>(name);
    }
    void put(auto &row, const Owner &owner) const
    {
        row.put((owner.*member).has_value());
        row.put((owner.*member).value_or(Value{}));
    }
    void get(auto &row, Owner &owner) const
    {
        bool there = false;
        Value value{};
        row.get(there);
        row.get(value);
        if (there) owner.*member = value;
    }
};

// What each column of several does.
template <class Columns, class Do>
void for_each_column(const Columns &columns, Do work)
{
    std::apply([&](const auto &...column) { (work(column), ...); }, columns);
}

// A record in a record, in columns of their owner.
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

// The same of one that may be none: then a member of it that is never 0 is 0.
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

// An optional record in a record, in a table of its own.
template <class Owner, class Inner, class Columns>
struct PartTable {
    std::string_view table;
    std::optional<Inner> Owner::*member;
    Columns value;
};

// What becomes of the record at a key; none: there is no such record any more.
template <class Record>
struct Entry {
    typename Family<Record>::Key key;
    std::optional<Record> record;
};

// The record that is to be kept; null when none is.
template <class Record>
const Record *kept_record(const Entry<Record> &entry)
{
    if (!entry.record) return nullptr;
    if constexpr (requires { Family<Record>::as_new; })
        if (*entry.record == Record{}) return nullptr;
    return &*entry.record;
}

} // namespace ponsim
