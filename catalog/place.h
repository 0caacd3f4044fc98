// These types say where a field stands in a record and which type it has. The layouts of generated/service_words.h are
// made of them. Code that reads or writes a field names it and states no width.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

namespace layout
{

using Mac = std::array<uint8_t, 6>;

// The text includes its NUL, where there is room.
template <uint32_t size>
using Text = std::array<char, size>;

template <uint32_t size>
using Bytes = std::array<uint8_t, size>;

// The set has 128 ONU ids, 32 in each word.
using IdSet = std::array<uint32_t, 4>;

// A field may be repeated `times` times, each `every` bytes behind the one before. Only one of them can be read or
// written at a time.
template <class T, uint32_t times = 1, uint32_t every = 0>
struct At {
    uint32_t offset;

    static constexpr uint32_t count = times;

    constexpr bool operator==(const At &) const = default;

    // Returns the field after `index` others. Throws std::out_of_range when the field is not repeated so often.
    constexpr At<T> operator[](uint32_t index) const
    {
        if (index >= times) throw std::out_of_range("a field that does not come so often");
        return {offset + index * every};
    }
    // Returns the end of the first of them.
    constexpr uint32_t end() const { return offset + static_cast<uint32_t>(sizeof(T)); }
};

// Returns a number or similar value as a field of type T holds it. Throws std::logic_error when it does not fit.
template <class T, class Value>
constexpr T fitting(const Value &value)
{
    if constexpr (std::is_enum_v<Value>) {
        return fitting<T>(static_cast<std::underlying_type_t<Value>>(value));
    } else if constexpr (std::is_integral_v<T> && !std::is_same_v<Value, bool>) {
        static_assert(std::is_integral_v<Value>, "a field that is a number");
        if (!std::in_range<T>(value)) throw std::logic_error("a number does not fit its field");
        return static_cast<T>(value);
    } else {
        return value;
    }
}

template <class T>
inline constexpr bool is_text = false;
template <size_t size>
inline constexpr bool is_text<std::array<char, size>> = true;

template <class T>
T load(const char *record, At<T> at)
{
    T value;
    std::memcpy(&value, record + at.offset, sizeof value);
    return value;
}

// Stores a value. Bytes behind a text, or behind bytes that are given as a span, stay as they are. Throws
// std::logic_error when the value does not fit.
template <class T, class Value>
void store(char *record, At<T> at, const Value &value)
{
    const auto copy = [&](const auto &part) {
        if (part.size() > sizeof(T)) throw std::logic_error("more bytes than their field has");
        std::memcpy(record + at.offset, part.data(), part.size());
    };
    if constexpr (is_text<T>)
        copy(std::string_view(value));
    else if constexpr (std::is_class_v<T> && !std::is_same_v<T, Value>)
        copy(std::span<const uint8_t>(value));
    else
        copy(std::bit_cast<Bytes<sizeof(T)>>(fitting<T>(value)));
}

} // namespace layout
