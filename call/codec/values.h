// Single values: from the words of a command line, and to text.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue.h"
#include "text/hex.h"

namespace call
{

using Bytes = std::vector<uint8_t>;
using IdSet = std::array<uint32_t, 4>; // id w*32+b is bit b of word w
constexpr uint32_t max_onu_id = 127;

// A word of the form name=value.
struct Assignment {
    std::string name;
    std::string value;

    bool operator==(const Assignment &) const = default;
};

// What values may be, beside what they are for everyone.
struct Allowed {
    bool long_values = false; // texts and blocks longer than their field, which run on into the fields behind it
    bool files = true;        // @FILE: the contents of a file of this machine

    Allowed(bool allow_long = false, bool allow_files = true) : long_values(allow_long), files(allow_files) {}
};

// Every parser throws a UsageError that starts with `name` and says what was expected.
Assignment parse_assignment(const std::string &word);
std::vector<Assignment> parse_assignments(std::span<const std::string> words);
bool is_number(std::string_view text);
// Decimal, or hexadecimal with 0x.
uint32_t parse_number(std::string_view name, std::string_view text, uint32_t greatest = UINT32_MAX);
// A channel by its name or number.
const catalogue::Channel &parse_channel(std::string_view name, std::string_view text);
// A command of the channel by its name, or any number.
uint32_t parse_command(std::string_view name, std::string_view text, const catalogue::Channel &channel);
// 00:11:22:33:44:55, 00-11-22-33-44-55 or 0011.2233.4455. Where something else could stand as well, the error starts
// with that: `or_else`.
text::Mac parse_mac(std::string_view name, std::string_view text, const std::string &or_else = {});
// ONU ids and runs of them, as 1-5,7. An empty text is the empty set.
IdSet parse_idset(std::string_view name, std::string_view text);
// The four words of a set with commas between them, as 0x3e,0,0,0.
IdSet parse_idset_words(std::string_view name, std::string_view text);
// hex:0011..., text:..., or where `files` are allowed @FILE for the contents of a file.
Bytes parse_block(std::string_view name, std::string_view text, bool files = true);

// Words of a command line that are given with blanks, as one text with commas: 1-5 7 as 1-5,7.
std::string join_words(const std::vector<std::string> &words);

bool holds(const IdSet &set, uint32_t id);
uint32_t count_of(const IdSet &set);

std::string format_idset(const IdSet &set);

} // namespace call
