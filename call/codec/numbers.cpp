#include "call/codec/numbers.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>

#include "call/codec/errors.h"
#include "text/number.h"

namespace call
{
namespace
{

using catalogue::Field;
using catalogue::FieldType;

template <class Number>
Number load(std::span<const uint8_t> bytes)
{
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

// Calls `act` with a zero of the field's C type.
template <class Act>
auto with_type(FieldType type, Act act)
{
    switch (type) {
    case FieldType::u8:
        return act(uint8_t{});
    case FieldType::u16:
        return act(uint16_t{});
    case FieldType::s16:
        return act(int16_t{});
    case FieldType::s32:
        return act(int32_t{});
    case FieldType::u64:
        return act(uint64_t{});
    case FieldType::u32:
    case FieldType::mac:
    case FieldType::text:
    case FieldType::bytes:
    case FieldType::idset:
    case FieldType::ipv4:
    case FieldType::oui:
    case FieldType::date:
    case FieldType::list:
    case FieldType::ports:
        break;
    }
    return act(uint32_t{});
}

std::string with_decimals(double number, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, number);
    return text;
}

template <class Number>
[[noreturn]] void refuse(std::string_view name, std::string_view text, const Field &field)
{
    using Limits = std::numeric_limits<Number>;
    std::string expected = std::to_string(Limits::min()) + " to " + std::to_string(Limits::max());
    if (field.scale != 1) {
        const int decimals = decimals_of(field);
        expected = with_decimals(static_cast<double>(Limits::min()) * field.scale, decimals) + " to " +
                   with_decimals(static_cast<double>(Limits::max()) * field.scale, decimals) + " " +
                   std::string(field.unit) + " in steps of " + with_decimals(field.scale, decimals);
    } else {
        expected += ", decimal or hexadecimal with 0x";
    }
    throw UsageError(std::string(name) + ": '" + std::string(text) + "' is not a number from " + expected);
}

// Reads a number in the field's unit as a whole number of steps of the scale.
template <class Number>
std::optional<Number> to_scaled(std::string_view text, double scale)
{
    constexpr double rounding = 1e-6;
    const auto value = text::to_real(text);
    if (!value || !std::isfinite(*value)) return std::nullopt;
    const double steps = std::round(*value / scale);
    using Limits = std::numeric_limits<Number>;
    if (std::abs(*value / scale - steps) > rounding || steps < static_cast<double>(Limits::min()) ||
        steps >= static_cast<double>(Limits::max()) + 1)
        return std::nullopt;
    return static_cast<Number>(steps);
}

} // namespace

bool is_number(FieldType type)
{
    switch (type) {
    case FieldType::u8:
    case FieldType::u16:
    case FieldType::s16:
    case FieldType::u32:
    case FieldType::s32:
    case FieldType::u64:
        return true;
    case FieldType::mac:
    case FieldType::text:
    case FieldType::bytes:
    case FieldType::idset:
    case FieldType::ipv4:
    case FieldType::oui:
    case FieldType::date:
    case FieldType::list:
    case FieldType::ports:
        break;
    }
    return false;
}

double number_of(const Field &field, std::span<const uint8_t> bytes)
{
    return with_type(field.type,
                     [&](auto zero) { return static_cast<double>(load<decltype(zero)>(bytes)) * field.scale; });
}

int decimals_of(const Field &field)
{
    constexpr int most = 9;
    int decimals = 0;
    for (double step = field.scale; decimals < most && std::abs(step - std::round(step)) > 1e-9; step *= 10)
        ++decimals;
    return decimals;
}

std::string number_text(const Field &field, std::span<const uint8_t> bytes)
{
    if (field.scale != 1) return with_decimals(number_of(field, bytes), decimals_of(field));
    return with_type(field.type, [&](auto zero) { return std::to_string(load<decltype(zero)>(bytes)); });
}

uint64_t parse_number(std::string_view name, std::string_view text, const Field &field)
{
    return with_type(field.type, [&](auto zero) {
        using Number = decltype(zero);
        const auto number =
            field.scale == 1 ? text::to_number_of_either_base<Number>(text) : to_scaled<Number>(text, field.scale);
        if (!number) refuse<Number>(name, text, field);
        uint64_t bytes = 0;
        std::memcpy(&bytes, &*number, sizeof *number);
        return bytes;
    });
}

} // namespace call
