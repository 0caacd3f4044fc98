#include "call/codec/values.h"

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

#include "call/codec/errors.h"
#include "text/number.h"
#include "text/words.h"

namespace call
{
namespace
{

[[noreturn]] void refuse(std::string_view name, std::string_view text, const std::string &expected)
{
    throw UsageError(std::string(name) + ": '" + std::string(text) + "' is not " + expected);
}

std::optional<uint32_t> to_number(std::string_view text)
{
    return text::to_number_of_either_base<uint32_t>(text);
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
    return to_number(text).has_value();
}

uint32_t parse_number(std::string_view name, std::string_view text, uint32_t greatest)
{
    const auto number = to_number(text);
    if (!number || *number > greatest)
        refuse(name, text, "a number from 0 to " + std::to_string(greatest) + ", decimal or hexadecimal with 0x");
    return *number;
}

const catalogue::Channel &parse_channel(std::string_view name, std::string_view text)
{
    const catalogue::Channel *channel = catalogue::find_channel(text);
    if (const auto number = to_number(text); !channel && number) channel = catalogue::find_channel(*number);
    if (channel) return *channel;
    std::vector<std::string_view> names;
    for (const catalogue::Channel &known : catalogue::channels())
        names.push_back(known.name);
    refuse(name, text,
           "a channel" + text::suggestion(text, names) + " (known are " + text::join(names) + ", and their numbers)");
}

uint32_t parse_command(std::string_view name, std::string_view text, const catalogue::Channel &channel)
{
    if (const auto code = to_number(text)) return *code;
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

text::Mac parse_mac(std::string_view name, std::string_view text, const std::string &or_else)
{
    if (const auto mac = text::to_mac(text)) return *mac;
    refuse(name, text, or_else + "a MAC address: six pairs of hexadecimal digits, as 00:11:22:33:44:55");
}

IdSet parse_idset(std::string_view name, std::string_view text)
{
    IdSet set{};
    if (text.empty()) return set;
    for (const std::string &run : text::split(text, ',')) {
        const auto ends = text::split(run, '-');
        const auto first = to_number(ends.front()), last = to_number(ends.back());
        if (ends.size() > 2 || !first || !last || *first > *last || *last > max_onu_id)
            refuse(name, text, "a set of ONU ids from 0 to 127, as 1-5,7");
        for (uint32_t id = *first; id <= *last; ++id)
            set[id / 32] |= uint32_t{1} << id % 32;
    }
    return set;
}

IdSet parse_idset_words(std::string_view name, std::string_view text)
{
    IdSet set{};
    const auto words = text::split(text, ',');
    bool good = words.size() == set.size();
    for (size_t index = 0; good && index < set.size(); ++index) {
        const auto word = to_number(words[index]);
        good = word.has_value();
        set[index] = word.value_or(0);
    }
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
    if (!files && text.starts_with("@"))
        refuse(name, text, "a block of bytes: hex:0011... in pairs of digits, or text:...");
    if (text.starts_with("@")) return read_file(name, std::string(text.substr(1)));
    if (text.starts_with("text:")) return {text.begin() + 5, text.end()};
    if (text.starts_with("hex:"))
        if (const auto bytes = text::from_hex(text.substr(4))) return *bytes;
    refuse(name, text, "a block of bytes: hex:0011... in pairs of digits, text:..., or @FILE");
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
