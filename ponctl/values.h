// Single values: from the words of a command line, and to text.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue.h"

namespace ponctl
{

using Bytes = std::vector<uint8_t>;
using IdSet = std::array<uint32_t, 4>; // id w*32+b is bit b of word w

// A word of the form name=value.
struct Assignment {
    std::string name;
    std::string value;
};

// Every parser throws a UsageError that starts with `name` and says what was expected.
Assignment parse_assignment(const std::string &word);
// Decimal, or hexadecimal with 0x.
uint32_t parse_number(std::string_view name, std::string_view text, uint32_t greatest = UINT32_MAX);
// A command of the channel by its name, or any number.
uint32_t parse_command(std::string_view name, std::string_view text, const catalogue::Channel &channel);
// 00:11:22:33:44:55, 00-11-22-33-44-55 or 0011.2233.4455.
std::array<uint8_t, 6> parse_mac(std::string_view name, std::string_view text);
// ONU ids and runs of them, as 1-5,7. An empty text is the empty set.
IdSet parse_idset(std::string_view name, std::string_view text);
// hex:0011..., text:..., or @FILE for the contents of a file.
Bytes parse_block(std::string_view name, std::string_view text);

std::string format_mac(const uint8_t *mac);
std::string format_idset(const IdSet &set);
std::string format_hex(std::span<const uint8_t> bytes);

} // namespace ponctl
