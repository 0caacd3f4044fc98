#include "call/codec/values.h"

#include <bit>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>

#include "call/codec/errors.h"
#include "text/words.h"

namespace call
{
namespace
{

[[noreturn]] void refuse(std::string_view name, std::string_view text, const std::string &expected)
{
    throw UsageError(std::string(name) + ": '" + std::string(text) + "' is not " + expected);
}

bool read_number(std::string_view text, uint32_t &number)
{
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        base = 16;
        text.remove_prefix(2);
    }
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc{} && stop == end;
}

// Reads bytes from an even number of hexadecimal digits.
bool read_hex(std::string_view text, Bytes &bytes)
{
    if (text.size() % 2) return false;
    for (; !text.empty(); text.remove_prefix(2)) {
        uint8_t byte = 0;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + 2, byte, 16);
        if (error != std::errc{} || stop != text.data() + 2) return false;
        bytes.push_back(byte);
    }
    return true;
}

// Returns the parts of a text between separators.
std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (;;) {
        const size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == text.npos) return parts;
        text.remove_prefix(end + 1);
    }
}

Bytes read_file(std::string_view name, const std::string &path)
{
    const auto close = [](std::FILE *file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(path.c_str(), "rb"), close);
    Bytes bytes;
    if (file) {
        uint8_t chunk[4096];
        while (const size_t count = std::fread(chunk, 1, sizeof chunk, file.get()))
            bytes.insert(bytes.end(), chunk, chunk + count);
    }
    if (!file || std::ferror(file.get()))
        throw UsageError(std::string(name) + ": cannot read '" + path + "': " + std::strerror(errno));
    return bytes;
}

} // namespace

Assignment parse_assignment(const std::string &word)
{
    const size_t equals = word.find('=');
    if (equals == word.npos || equals == 0) throw UsageError("'" + word + "' is not of the form name=value");
    return {word.substr(0, equals), word.substr(equals + 1)};
}

std::vector<Assignment> parse_assignments(std::span<const std::string> words)
{
    std::vector<Assignment> assignments;
    for (const std::string &word : words)
        assignments.push_back(parse_assignment(word));
    return assignments;
}

bool is_number(std::string_view text)
{
    uint32_t number = 0;
    return read_number(text, number);
}

uint32_t parse_number(std::string_view name, std::string_view text, uint32_t greatest)
{
    uint32_t number = 0;
    if (!read_number(text, number) || number > greatest)
        refuse(name, text, "a number from 0 to " + std::to_string(greatest) + ", decimal or hexadecimal with 0x");
    return number;
}

const catalogue::Channel &parse_channel(std::string_view name, std::string_view text)
{
    const catalogue::Channel *channel = catalogue::find_channel(text);
    if (uint32_t number = 0; !channel && read_number(text, number)) channel = catalogue::find_channel(number);
    if (channel) return *channel;
    std::vector<std::string_view> names;
    for (const catalogue::Channel &known : catalogue::channels())
        names.push_back(known.name);
    refuse(name, text,
           "a channel" + text::suggestion(text, names) + " (known are " + text::join(names) + ", and their numbers)");
}

uint32_t parse_command(std::string_view name, std::string_view text, const catalogue::Channel &channel)
{
    uint32_t code = 0;
    if (read_number(text, code)) return code;
    const catalogue::Command *command = catalogue::find_command(text);
    if (!command) {
        std::vector<std::string_view> names;
        for (const catalogue::Command &known : catalogue::commands())
            if (known.channel == &channel) names.push_back(known.name);
        refuse(name, text, "a command code or the name of a command" + text::suggestion(text, names));
    }
    if (command->channel != &channel)
        refuse(name, text,
               "a command of " + std::string(channel.name) + ": it belongs to " + std::string(command->channel->name));
    return command->code;
}

std::array<uint8_t, 6> parse_mac(std::string_view name, std::string_view text, const std::string &or_else)
{
    for (const char separator : {':', '-', '.'}) {
        const auto groups = split(text, separator);
        const size_t digits = groups.size() == 6 ? 2 : groups.size() == 3 && separator == '.' ? 4 : 0;
        Bytes bytes;
        bool good = digits != 0;
        for (const std::string_view group : groups)
            good = good && group.size() == digits && read_hex(group, bytes);
        if (!good) continue;
        std::array<uint8_t, 6> mac;
        std::memcpy(mac.data(), bytes.data(), mac.size());
        return mac;
    }
    refuse(name, text, or_else + "a MAC address: six pairs of hexadecimal digits, as 00:11:22:33:44:55");
}

IdSet parse_idset(std::string_view name, std::string_view text)
{
    IdSet set{};
    if (text.empty()) return set;
    for (const std::string_view run : split(text, ',')) {
        const auto ends = split(run, '-');
        uint32_t first = 0, last = 0;
        if (ends.size() > 2 || !read_number(ends.front(), first) || !read_number(ends.back(), last) || first > last ||
            last > max_onu_id)
            refuse(name, text, "a set of ONU ids from 0 to 127, as 1-5,7");
        for (uint32_t id = first; id <= last; ++id)
            set[id / 32] |= uint32_t{1} << id % 32;
    }
    return set;
}

IdSet parse_idset_words(std::string_view name, std::string_view text)
{
    IdSet set{};
    const auto words = split(text, ',');
    bool good = words.size() == set.size();
    for (size_t index = 0; good && index < set.size(); ++index)
        good = read_number(words[index], set[index]);
    if (!good) refuse(name, text, "four words with commas between them, as 0x3e,0,0,0");
    return set;
}

std::string join_words(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words)
        text += (text.empty() ? "" : ",") + word;
    return text;
}

bool holds(const IdSet &set, uint32_t id)
{
    return id <= max_onu_id && (set[id / 32] >> id % 32 & 1);
}

uint32_t count_of(const IdSet &set)
{
    int count = 0;
    for (const uint32_t word : set)
        count += std::popcount(word);
    return static_cast<uint32_t>(count);
}

Bytes parse_block(std::string_view name, std::string_view text, bool files)
{
    Bytes bytes;
    if (!files && text.starts_with("@"))
        refuse(name, text, "a block of bytes: hex:0011... in pairs of digits, or text:...");
    if (text.starts_with("@")) return read_file(name, std::string(text.substr(1)));
    if (text.starts_with("text:")) return {text.begin() + 5, text.end()};
    if (!text.starts_with("hex:") || !read_hex(text.substr(4), bytes))
        refuse(name, text, "a block of bytes: hex:0011... in pairs of digits, text:..., or @FILE");
    return bytes;
}

std::string format_hex(std::span<const uint8_t> bytes)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const uint8_t byte : bytes) {
        text.push_back(digits[byte >> 4]);
        text.push_back(digits[byte & 15]);
    }
    return text;
}

std::string format_mac(const uint8_t *mac)
{
    std::string text = format_hex({mac, 6});
    for (size_t at = 2; at < text.size(); at += 3)
        text.insert(at, 1, ':');
    return text;
}

std::string format_idset(const IdSet &set)
{
    std::string text;
    for (uint32_t first = 0; first <= max_onu_id; ++first) {
        if (!holds(set, first)) continue;
        uint32_t last = first;
        while (holds(set, last + 1))
            ++last;
        if (!text.empty()) text.push_back(',');
        text.append(std::to_string(first));
        if (last != first) text.append("-" + std::to_string(last));
        first = last;
    }
    return text;
}

} // namespace call
