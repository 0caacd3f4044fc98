#include "call/codec/meaning.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "call/codec/errors.h"
#include "call/codec/numbers.h"
#include "text/ipv4.h"
#include "text/words.h"

namespace call
{
namespace
{

using catalogue::Field;
using catalogue::FieldType;
using catalogue::Named;
using catalogue::Notation;

// Returns a name as a word of a command line: without blanks, so that it needs no quotes.
std::string word_of(std::string_view name)
{
    return text::replaced(name, " ", "-");
}

std::vector<std::string> words_of(std::span<const Named> names)
{
    std::vector<std::string> words;
    for (const Named &named : names)
        words.push_back(word_of(named.name));
    return words;
}

const Named *find_name(std::span<const Named> names, std::string_view text)
{
    const std::string wanted = text::lower_case(word_of(text));
    const auto found = std::ranges::find_if(
        names, [&wanted](const Named &named) { return text::lower_case(word_of(named.name)) == wanted; });
    return found == names.end() ? nullptr : &*found;
}

[[noreturn]] void refuse(std::string_view name, std::string_view text, const std::string &expected)
{
    throw UsageError(std::string(name) + ": '" + std::string(text) + "' is not " + expected);
}

uint64_t bits_of(const Field &field, std::span<const uint8_t> bytes)
{
    uint64_t bits = 0;
    const size_t gap = std::endian::native == std::endian::big ? sizeof bits - field.size : 0;
    std::memcpy(reinterpret_cast<uint8_t *>(&bits) + gap, bytes.data(), field.size);
    return bits;
}

uint64_t parse_flags(std::string_view name, std::string_view text, const Field &field)
{
    uint64_t number = 0;
    for (const std::string &word : text::split(text, ',')) {
        const Named *flag = find_name(field.flags, word);
        if (!flag && word != "none")
            refuse(name, word, "one of none, " + text::join(words_of(field.flags)) + ", nor a number");
        if (flag) number |= uint64_t{1} << flag->number;
    }
    return parse_number(name, std::to_string(number), field);
}

uint64_t big_endian_number(std::span<const uint8_t> bytes)
{
    uint64_t number = 0;
    for (const uint8_t byte : bytes)
        number = number << 8 | byte;
    return number;
}

std::string hexadecimal_text(uint64_t bits)
{
    char text[32];
    std::snprintf(text, sizeof text, "0x%0*llx",
                  bits > 0xffff ? 8
                  : bits > 0xff ? 4
                                : 2,
                  static_cast<unsigned long long>(bits));
    return text;
}

// Returns the digits of a text that a hexadecimal number has when nothing stands between its pairs of digits.
std::string without_separators(std::string_view text)
{
    std::string digits(text);
    std::erase_if(digits, [](char c) { return c == ':' || c == '-' || c == '.'; });
    return digits;
}

text::Ipv4 parse_ipv4(std::string_view name, std::string_view text)
{
    if (const auto address = text::to_ipv4(text)) return *address;
    refuse(name, text, "an IPv4 address, as 10.0.0.2");
}

Bytes parse_date(std::string_view name, std::string_view text)
{
    std::string digits = without_separators(text);
    if (digits.size() == 8 && digits.starts_with("20")) digits.erase(0, 2);
    const auto bytes = text::from_hex(digits);
    const bool decimal = digits.find_first_not_of("0123456789") == digits.npos;
    if (digits.size() != 6 || !decimal || !bytes) refuse(name, text, "a date, as 2022-02-24");
    return *bytes;
}

} // namespace

std::optional<std::string_view> name_of(const Field &field, std::span<const uint8_t> bytes)
{
    if (field.values.empty()) return std::nullopt;
    const std::string digits = number_text(field, bytes);
    const auto found = std::ranges::find_if(
        field.values, [&digits](const Named &named) { return std::to_string(named.number) == digits; });
    return found == field.values.end() ? std::nullopt : std::optional(found->name);
}

std::vector<std::string> flags_of(const Field &field, std::span<const uint8_t> bytes)
{
    uint64_t bits = bits_of(field, bytes);
    std::vector<std::string> names;
    for (const Named &flag : field.flags)
        if (bits >> flag.number & 1) {
            names.emplace_back(flag.name);
            bits &= ~(uint64_t{1} << flag.number);
        }
    for (int bit = 0; bit < 64; ++bit)
        if (bits >> bit & 1) names.push_back("bit " + std::to_string(bit));
    return names;
}

std::string meaning_text(const Field &field, std::span<const uint8_t> bytes)
{
    if (field.unit == "uW") {
        char text[32];
        std::snprintf(text, sizeof text, "%.2f dBm", dbm_of(number_of(field, bytes)));
        return text;
    }
    if (const auto name = name_of(field, bytes)) return std::string(*name);
    if (!field.flags.empty()) {
        const auto names = flags_of(field, bytes);
        return names.empty() ? "-" : text::join(names);
    }
    if (field.hexadecimal) return hexadecimal_text(bits_of(field, bytes));
    return number_text(field, bytes) + (field.unit.empty() ? "" : " " + std::string(field.unit));
}

std::vector<uint32_t> numbers_in(const Field &field, std::span<const uint8_t> bytes)
{
    if (field.type == FieldType::list) return {bytes.begin(), bytes.end()};
    std::vector<uint32_t> ports;
    for (uint32_t port = 1; port <= 8 * bytes.size(); ++port)
        if (bytes[bytes.size() - 1 - (port - 1) / 8] >> (port - 1) % 8 & 1) ports.push_back(port);
    return ports;
}

std::string composed_text(const Field &field, std::span<const uint8_t> bytes)
{
    if (field.type == FieldType::list || field.type == FieldType::ports) {
        std::vector<std::string> numbers;
        for (const uint32_t number : numbers_in(field, bytes))
            numbers.push_back(std::to_string(number));
        return numbers.empty() ? "-" : text::join(numbers);
    }
    if (field.type == FieldType::ipv4) return text::ipv4_text(bytes.first<4>());
    std::string text = field.type == FieldType::date ? "20" : "";
    for (size_t index = 0; index < bytes.size(); ++index)
        text.append(index == 0                      ? ""
                    : field.type == FieldType::date ? "-"
                                                    : ":")
            .append(text::to_hex(bytes.subspan(index, 1)));
    return text;
}

std::string big_endian_digits(std::span<const uint8_t> bytes)
{
    return std::to_string(big_endian_number(bytes));
}

std::string decided_text(Notation notation, std::span<const uint8_t> bytes)
{
    switch (notation) {
    case Notation::mac:
        return text::mac_text(bytes.first<6>());
    case Notation::ipv4:
        return text::ipv4_text(bytes.last<4>());
    case Notation::hexadecimal:
        return hexadecimal_text(big_endian_number(bytes));
    case Notation::number:
        break;
    }
    return big_endian_digits(bytes);
}

Bytes parse_decided(std::string_view name, std::string_view text, Notation notation, const Field &field)
{
    Bytes bytes(field.size);
    if (notation == Notation::mac) {
        std::ranges::copy(parse_mac(name, text), bytes.begin());
    } else if (notation == Notation::ipv4) {
        std::ranges::copy(parse_ipv4(name, text), bytes.end() - 4);
    } else {
        uint32_t number = parse_number(name, text);
        for (auto byte = bytes.rbegin(); number != 0; number >>= 8)
            *byte++ = static_cast<uint8_t>(number);
    }
    return bytes;
}

double dbm_of(double microwatts)
{
    constexpr double dark = -40;
    return microwatts > 0 ? std::max(dark, 10 * std::log10(microwatts / 1000)) : dark;
}

uint64_t parse_meaning(std::string_view name, std::string_view text, const Field &field)
{
    if (const Named *named = find_name(field.values, text))
        return parse_number(name, std::to_string(named->number), field);
    if (is_number(text)) return parse_number(name, text, field);
    if (!field.flags.empty()) return parse_flags(name, text, field);
    if (!field.values.empty()) refuse(name, text, "one of " + text::join(words_of(field.values)) + ", nor a number");
    return parse_number(name, text, field);
}

Bytes parse_composed(std::string_view name, std::string_view text, const Field &field)
{
    if (text.starts_with("hex:") || field.type == FieldType::list || field.type == FieldType::ports) {
        const Bytes block = parse_block(name, text);
        if (block.size() == field.size) return block;
        refuse(name, text, "a block of " + std::to_string(field.size) + " bytes");
    }
    if (field.type == FieldType::date) return parse_date(name, text);
    if (field.type == FieldType::ipv4) {
        const auto address = parse_ipv4(name, text);
        return {address.begin(), address.end()};
    }
    const auto oui = text::from_hex(without_separators(text));
    if (!oui || oui->size() != field.size) refuse(name, text, "an OUI: three pairs of hexadecimal digits, as 00:1a:ff");
    return *oui;
}

std::string allowed_text(const Field &field)
{
    if (!field.values.empty()) return "one of " + text::join(words_of(field.values));
    if (!field.flags.empty())
        return "none, or some of " + text::join(words_of(field.flags)) + " with commas between them";
    if (!field.range) return {};
    return std::to_string(field.range->least) + " to " + std::to_string(field.range->greatest) +
           (field.unit.empty() ? "" : " " + std::string(field.unit));
}

std::vector<std::string> value_words(const Field &field)
{
    return words_of(field.values.empty() ? field.flags : field.values);
}

void check_allowed(std::string_view name, const Field &field, std::span<const uint8_t> bytes)
{
    if (!field.values.empty() && !name_of(field, bytes)) refuse(name, number_text(field, bytes), allowed_text(field));
    if (!field.range) return;
    const double number = number_of(field, bytes);
    if (number < static_cast<double>(field.range->least) || number > static_cast<double>(field.range->greatest))
        refuse(name, number_text(field, bytes), "a number from " + allowed_text(field));
}

} // namespace call
