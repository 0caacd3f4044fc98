#include "text/ipv4.h"

#include "text/number.h"
#include "text/words.h"

namespace text
{

std::string ipv4_text(std::span<const uint8_t, 4> address)
{
    std::string text;
    for (const uint8_t part : address)
        text.append(text.empty() ? "" : ".").append(std::to_string(part));
    return text;
}

std::optional<Ipv4> to_ipv4(std::string_view text)
{
    const auto parts = split(text, '.');
    Ipv4 address{};
    if (parts.size() != address.size()) return std::nullopt;
    for (size_t index = 0; index < address.size(); ++index) {
        const auto part = to_number<uint8_t>(parts[index]);
        if (!part) return std::nullopt;
        address[index] = *part;
    }
    return address;
}

Ipv4 ipv4_mask(uint32_t length)
{
    Ipv4 mask{};
    for (uint32_t bit = 0; bit < length; ++bit)
        mask[bit / 8] |= static_cast<uint8_t>(0x80 >> bit % 8);
    return mask;
}

} // namespace text
