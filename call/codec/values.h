// These functions read single values from the words of a command line, and turn them into text.
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

// An Assignment is a word of the form name=value.
struct Assignment {
    std::string name;
    std::string value;

    bool operator==(const Assignment &) const = default;
};

// Allowed says which values are possible beside those that are always allowed.
struct Allowed {
    bool long_values = false; // texts and blocks longer than their field, which continue into the fields behind it
    bool files = true;        // @FILE, which stands for the contents of a file of this machine

    Allowed(bool allow_long = false, bool allow_files = true) : long_values(allow_long), files(allow_files) {}
};

// Every parser throws a UsageError that starts with `name` and says what was expected.
Assignment parse_assignment(const std::string &word);
std::vector<Assignment> parse_assignments(std::span<const std::string> words);
bool is_number(std::string_view text);
// The number is decimal, or hexadecimal with 0x.
uint32_t parse_number(std::string_view name, std::string_view text, uint32_t greatest = UINT32_MAX);
// Reads a channel by its name or number.
const catalogue::Channel &parse_channel(std::string_view name, std::string_view text);
// Reads a command of the channel by its name, or any number.
uint32_t parse_command(std::string_view name, std::string_view text, const catalogue::Channel &channel);
// Reads 00:11:22:33:44:55, 00-11-22-33-44-55 or 0011.2233.4455. When something else would be accepted, too, `or_else`
// names it, and the error starts with it.
text::Mac parse_mac(std::string_view name, std::string_view text, const std::string &or_else = {});
// Reads ONU ids and runs of them, as in 1-5,7. An empty text is the empty set.
IdSet parse_idset(std::string_view name, std::string_view text);
// Reads the four words of a set with commas between them, as in 0x3e,0,0,0.
IdSet parse_idset_words(std::string_view name, std::string_view text);
// Reads hex:0011... or text:..., and when `files` are allowed also @FILE for the contents of a file.
Bytes parse_block(std::string_view name, std::string_view text, bool files = true);

// Joins words of a command line that are separated by blanks to one text with commas: 1-5 7 becomes 1-5,7.
std::string join_words(const std::vector<std::string> &words);

bool holds(const IdSet &set, uint32_t id);
uint32_t count_of(const IdSet &set);

std::string format_idset(const IdSet &set);

} // namespace call
