// Families' columns are used in three ways: they are declared in SQL, put into cells, and got from cells. Whatever is
// put or got is held to the bounds of its field.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "model/kept/family.h"
#include "store/stored.h"

namespace ponsim
{

template <class Value>
concept Number = std::integral<Value> || std::is_enum_v<Value>;

template <class Value>
inline constexpr size_t array_size = 0;
template <size_t size>
inline constexpr size_t array_size<std::array<uint8_t, size>> = size;

// A Declaration holds the columns of a table as SQL declares them: their names and types. Which values are allowed is
// not declared in SQL, because it is said once, by the bounds of the family, and because a file from a stranger can
// declare what it likes.
class Declaration
{
public:
    template <class Value>
    void add(std::string_view name)
    {
        if constexpr (Number<Value>)
            all.push_back({name, "INTEGER"});
        else if constexpr (std::is_same_v<Value, std::string>)
            all.push_back({name, "TEXT"});
        else
            add_bytes(name);
    }
    void add_bytes(std::string_view name) { all.push_back({name, "BLOB"}); }

    struct Declared {
        std::string_view name;
        std::string_view type;
    };
    const std::vector<Declared> &columns() const { return all; }

private:
    std::vector<Declared> all;
};

// Returns the bytes of a member.
inline std::span<const uint8_t> bytes_of(const std::string &text)
{
    return {reinterpret_cast<const uint8_t *>(text.data()), text.size()};
}
template <class Value>
std::span<const uint8_t> bytes_of(const std::vector<Value> &values)
{
    static_assert(std::has_unique_object_representations_v<Value>);
    return {reinterpret_cast<const uint8_t *>(values.data()), values.size() * sizeof(Value)};
}
template <class Value>
std::span<const uint8_t> bytes_of(const Value &value)
{
    static_assert(std::has_unique_object_representations_v<Value>);
    return {reinterpret_cast<const uint8_t *>(&value), sizeof value};
}

// Makes room for so many bytes, as far as the type of the member allows.
inline void make_room(std::string &text, size_t bytes)
{
    text.resize(bytes);
}
template <class Value>
void make_room(std::vector<Value> &values, size_t bytes)
{
    values.resize(bytes / sizeof(Value));
}
template <class Value>
void make_room(Value &, size_t)
{
}

// These throw StoreError, with the field and what it must be, unless the value is within the field's bounds. Texts are
// UTF-8, without a NUL.
void check_number(const ColumnField &field, int64_t number);
void check_text(const ColumnField &field, std::string_view text);
void check_size(const ColumnField &field, size_t bytes);

// A CellWriter makes the cells of a row.
class CellWriter
{
public:
    template <Number Value>
    void put(Value value, const ColumnField &field)
    {
        const auto number = static_cast<int64_t>(value);
        check_number(field, number);
        cells.emplace_back(number);
    }
    void put(const std::string &text, const ColumnField &field)
    {
        check_text(field, text);
        cells.emplace_back(text);
    }
    template <size_t size>
    void put(const std::array<uint8_t, size> &bytes, const ColumnField &field)
    {
        put_bytes(bytes, field);
    }
    template <class Value>
    void put_bytes(const Value &value, const ColumnField &field)
    {
        const std::span<const uint8_t> bytes = bytes_of(value);
        check_size(field, bytes.size());
        cells.emplace_back(Blob{{bytes.begin(), bytes.end()}});
    }

    std::vector<Cell> cells = {};
};

// A CellReader reads values from the cells of a row, beginning with the first. Throws StoreError when there are other
// cells than the columns need, or when a value is not within its bounds.
class CellReader
{
public:
    // The row is from a table of an OLT with so many PON ports.
    CellReader(std::span<const Cell> of_row, uint32_t of_olt) : row(of_row), ports(of_olt) {}

    template <Number Value>
    void get(Value &value, const ColumnField &field)
    {
        const int64_t number = next_number(field);
        check_number(field, number);
        if (field.bounds.past && number > static_cast<int64_t>(last)) {
            last = static_cast<ModelTime>(number);
            field_of_last = field.name;
        }
        value = static_cast<Value>(number);
    }
    void get(std::string &text, const ColumnField &field)
    {
        text = next<std::string>(field, "a text");
        check_text(field, text);
    }
    template <size_t size>
    void get(std::array<uint8_t, size> &bytes, const ColumnField &field)
    {
        get_bytes(bytes, {field.name, {size, size}});
    }
    template <class Value>
    void get_bytes(Value &value, const ColumnField &field)
    {
        const std::string &found = next<Blob>(field, "bytes").bytes;
        check_size(field, found.size());
        make_room(value, found.size());
        const std::span<const uint8_t> room = bytes_of(value);
        if (room.size() != found.size()) refuse_part(field, found.size());
        std::ranges::copy(found, const_cast<uint8_t *>(room.data()));
    }
    void get_port(uint32_t &port, const ColumnField &field) { get(port, {field.name, {1, ports}}); }
    // Returns whether the next value is this number.
    bool next_is(int64_t number) const
    {
        const int64_t *found = column < row.size() ? std::get_if<int64_t>(&row[column]) : nullptr;
        return found && *found == number;
    }

    // Returns the latest time that must not be later than that of the OLT, and the field that has it.
    ModelTime latest() const { return last; }
    std::string_view field_of_latest() const { return field_of_last; }

private:
    template <class Kind>
    const Kind &next(const ColumnField &field, std::string_view kind)
    {
        const Kind *found = column < row.size() ? std::get_if<Kind>(&row[column]) : nullptr;
        if (!found) refuse_kind(field, kind);
        ++column;
        return *found;
    }
    int64_t next_number(const ColumnField &field) { return next<int64_t>(field, "a number"); }
    [[noreturn]] static void refuse_kind(const ColumnField &field, std::string_view kind);
    [[noreturn]] static void refuse_part(const ColumnField &field, size_t bytes);

    std::span<const Cell> row;
    uint32_t ports;
    size_t column = 0;
    ModelTime last = 0;
    std::string_view field_of_last;
};

} // namespace ponsim
