// A writer of JSON that lays it out for people, or writes one line.
#pragma once

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
    bool String(const char *text, SizeType length, bool copy = true)
    {
        return in_line() ? line.String(text, length, copy) : lines.String(text, length, copy);
    }
    bool Key(const char *text, SizeType length, bool copy = true)
    {
        return in_line() ? line.Key(text, length, copy) : lines.Key(text, length, copy);
    }
    bool StartObject() { return in_line() ? line.StartObject() : lines.StartObject(); }
    bool EndObject(SizeType count = 0) { return in_line() ? line.EndObject(count) : lines.EndObject(count); }
    bool StartArray() { return in_line() ? line.StartArray() : lines.StartArray(); }
    bool EndArray(SizeType count = 0) { return in_line() ? line.EndArray(count) : lines.EndArray(count); }
    // Writes a value that is JSON in one line already. It is not looked at.
    bool Raw(std::string_view json, rapidjson::Type type)
    {
        const bool begun = in_line() ? line.RawValue("", 0, type) : lines.RawValue("", 0, type);
        json.copy(buffer.Push(json.size()), json.size());
        return begun;
    }

private:
    bool in_line() const { return layout == JsonLayout::one_line; }

    const JsonLayout layout;
    rapidjson::StringBuffer &buffer;
    Passing<rapidjson::PrettyWriter<rapidjson::StringBuffer>> lines;
    Passing<rapidjson::Writer<rapidjson::StringBuffer>> line;
};

} // namespace call
