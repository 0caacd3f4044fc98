#include "snmp/core/items.h"

#include <algorithm>
#include <cmath>

namespace front::snmp
{

Item truth(bool value)
{
    return value ? 1 : 2;
}

Item scaled(double value, double factor)
{
    if (std::isnan(value)) return std::nullopt;
    const double most = INT32_MAX;
    return static_cast<int32_t>(std::lround(std::clamp(value * factor, -most, most)));
}

Item scaled(const std::optional<double> &value, double factor)
{
    return value ? scaled(*value, factor) : std::nullopt;
}

Item gauge(double value)
{
    if (std::isnan(value)) return std::nullopt;
    return static_cast<uint32_t>(std::llround(std::clamp(value, 0.0, double{UINT32_MAX})));
}

Item gauge(const std::optional<double> &value)
{
    return value ? gauge(*value) : std::nullopt;
}

Item place_of(std::string_view word, Words words)
{
    const auto found = std::ranges::find(words, word);
    if (found == words.end()) return std::nullopt;
    return static_cast<int>(found - words.begin()) + 1;
}

Oid index_with(Oid numbers, const view::Mac &mac)
{
    numbers.insert(numbers.end(), mac.begin(), mac.end());
    return numbers;
}

} // namespace front::snmp
