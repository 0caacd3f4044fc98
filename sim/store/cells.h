// Families' columns are used in three ways: they are declared in SQL, put into a statement, and read from a row.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "store/statement.h"

namespace ponsim
{

template <class Value>
concept Number = std::integral<Value> || std::is_enum_v<Value>;

template <class Value>
inline constexpr size_t array_size = 0;
template <size_t size>
inline constexpr size_t array_size<std::array<uint8_t, size>> = size;

// A Declaration holds the columns of a table as SQL declares them.
class Declaration
{
public:
    template <class Value>
    void add(std::string_view name, std::string_view check = {})
    {
        if constexpr (Number<Value>)
            declare(name, "INTEGER", check);
        else if constexpr (std::is_same_v<Value, std::string>)
            declare(name, "TEXT", check);
        else
            declare(name, "BLOB", "length(?) = " + std::to_string(array_size<Value>));
    }
    void add_bytes(std::string_view name) { declare(name, "BLOB", {}); }

    struct Declared {
        std::string_view name;
        std::string type;
        std::string check; // empty: no check
    };
    const std::vector<Declared> &columns() const { return all; }

private:
    void declare(std::string_view name, std::string_view type, std::string_view check)
    {
        std::string named;
        for (const char each : check)
            each == '?' ? named.append(name) : named.append(1, each);
        all.push_back({name, std::string(type), named});
    }

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

// Parameters put values into the parameters of a statement. The values must live until the statement has run.
class Parameters
{
public:
    explicit Parameters(Statement &of) : statement(of) {}

    template <Number Value>
    void put(Value value)
    {
        statement.bind(static_cast<int64_t>(value));
    }
    void put(const std::string &text) { statement.bind(std::string_view(text)); }
    template <size_t size>
    void put(const std::array<uint8_t, size> &bytes)
    {
        put_bytes(bytes);
    }
    template <class Value>
    void put_bytes(const Value &value)
    {
        statement.bind(bytes_of(value));
    }

private:
    Statement &statement;
};

// Cells read values from the cells of a row, beginning with the first.
class Cells
{
public:
    // The row is from a table of an OLT with so many PON ports.
    Cells(const Statement &at, uint32_t of_olt) : row(at), ports(of_olt) {}

    template <Number Value>
    void get(Value &value)
    {
        value = static_cast<Value>(row.number(column++));
    }
    void get(bool &value) { value = row.number(column++) != 0; }
    void get(std::string &text) { text = row.text(column++); }
    template <size_t size>
    void get(std::array<uint8_t, size> &bytes)
    {
        get_bytes(bytes, "a value");
    }
    template <class Value>
    void get_bytes(Value &value, std::string_view what)
    {
        const std::span<const uint8_t> found = row.bytes(column++);
        make_room(value, found.size());
        const std::span<const uint8_t> room = bytes_of(value);
        if (room.size() != found.size()) throw StoreError(std::string(what) + " in it is damaged");
        std::ranges::copy(found, const_cast<uint8_t *>(room.data()));
    }
    void get_port(uint32_t &port)
    {
        get(port);
        if (port < 1 || port > ports) throw StoreError("a port in it is damaged");
    }

private:
    const Statement &row;
    uint32_t ports;
    int column = 0;
};

} // namespace ponsim
