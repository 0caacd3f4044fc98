// A writer of JSON that lays it out for people, or writes one line.
#pragma once

#include <algorithm>
#include <string_view>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "call/codec/members.h"

namespace call
{

enum class JsonLayout {
    lines, // for people
    one_line,
};

class JsonWriter
{
public:
    using Ch = char;
    using SizeType = rapidjson::SizeType;

    JsonWriter(rapidjson::StringBuffer &into, JsonLayout wanted) : layout(wanted), buffer(into), lines(into), line(into)
    {
        lines.SetIndent(' ', 2);
    }

    bool Null() { return in_line() ? line.Null() : lines.Null(); }
    bool Bool(bool truth) { return in_line() ? line.Bool(truth) : lines.Bool(truth); }
    bool Int(int number) { return in_line() ? line.Int(number) : lines.Int(number); }
    bool Uint(unsigned number) { return in_line() ? line.Uint(number) : lines.Uint(number); }
    bool Int64(int64_t number) { return in_line() ? line.Int64(number) : lines.Int64(number); }
    bool Uint64(uint64_t number) { return in_line() ? line.Uint64(number) : lines.Uint64(number); }
    bool Double(double number) { return in_line() ? line.Double(number) : lines.Double(number); }
    bool RawNumber(const char *text, SizeType length, bool copy = true)
    {
        return in_line() ? line.RawNumber(text, length, copy) : lines.RawNumber(text, length, copy);
    }
    // Almost every text stands for itself, and is copied as a block.
    bool String(const char *text, SizeType length, bool copy = true)
    {
        const auto stands_for_itself = [](char character) {
            return is_harmless(character) && character != '"' && character != '\\';
        };
        if (std::all_of(text, text + length, stands_for_itself)) return quote({text, length});
        look_at({text, length});
        return in_line() ? line.String(text, length, copy) : lines.String(text, length, copy);
    }
    bool Key(const char *text, SizeType length, bool copy = true) { return String(text, length, copy); }
    bool StartObject() { return in_line() ? line.StartObject() : lines.StartObject(); }
    bool EndObject(SizeType count = 0) { return in_line() ? line.EndObject(count) : lines.EndObject(count); }
    bool StartArray() { return in_line() ? line.StartArray() : lines.StartArray(); }
    bool EndArray(SizeType count = 0) { return in_line() ? line.EndArray(count) : lines.EndArray(count); }
    // Writes a value that is JSON in one line already.
    bool Raw(std::string_view json, rapidjson::Type type)
    {
        look_at(json);
        const bool begun = begin(type);
        json.copy(buffer.Push(json.size()), json.size());
        return begun;
    }

    // Returns whether a terminal may see all that was written so far, as far as can be said without a closer look.
    bool is_harmless() const { return harmless; }

    // Returns whether a terminal may see a character, wherever it stands. Characters beyond ASCII have to be looked at.
    static bool is_harmless(char character) { return character >= ' ' && character <= '~'; }

private:
    bool in_line() const { return layout == JsonLayout::one_line; }

    void look_at(std::string_view text)
    {
        harmless = harmless && std::all_of(text.begin(), text.end(), [](char each) { return is_harmless(each); });
    }

    // Writes what stands before a value.
    bool begin(rapidjson::Type type) { return in_line() ? line.RawValue("", 0, type) : lines.RawValue("", 0, type); }

    bool quote(std::string_view text)
    {
        const bool begun = begin(rapidjson::kStringType);
        char *const quoted = buffer.Push(text.size() + 2);
        quoted[0] = quoted[text.size() + 1] = '"';
        text.copy(quoted + 1, text.size());
        return begun;
    }

    const JsonLayout layout;
    bool harmless = true;
    rapidjson::StringBuffer &buffer;
    Passing<rapidjson::PrettyWriter<rapidjson::StringBuffer>> lines;
    Passing<rapidjson::Writer<rapidjson::StringBuffer>> line;
};

} // namespace call
