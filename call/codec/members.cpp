#include "call/codec/members.h"

#include <algorithm>
#include <utility>

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "call/codec/errors.h"
#include "text/words.h"

namespace call
{
namespace
{

// Apart separates an object into its members, and keeps the numbers as they were written.
class Apart : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Apart>
{
public:
    std::vector<Member> members;

    bool Null() { return writer.Null() && end(); }
    bool Bool(bool truth) { return writer.Bool(truth) && end(); }
    bool RawNumber(const char *text, rapidjson::SizeType length, bool)
    {
        return writer.RawNumber(text, length, true) && end();
    }
    bool String(const char *text, rapidjson::SizeType length, bool) { return writer.String(text, length) && end(); }
    bool Key(const char *text, rapidjson::SizeType length, bool)
    {
        if (depth > 1) return writer.Key(text, length);
        members.push_back({std::string(text, length), {}});
        return true;
    }
    bool StartObject() { return depth++ == 0 || writer.StartObject(); }
    bool EndObject(rapidjson::SizeType) { return --depth == 0 || (writer.EndObject() && end()); }
    bool StartArray()
    {
        ++depth;
        return writer.StartArray();
    }
    bool EndArray(rapidjson::SizeType)
    {
        --depth;
        return writer.EndArray() && end();
    }

private:
    // Ends a member of the object when a value of the outermost level has ended.
    bool end()
    {
        if (depth > 1) return true;
        members.back().value.assign(buffer.GetString(), buffer.GetSize());
        buffer.Clear();
        writer.Reset(buffer);
        return true;
    }

    size_t depth = 0;
    rapidjson::StringBuffer buffer;
    Passing<rapidjson::Writer<rapidjson::StringBuffer>> writer{buffer};
};

} // namespace

std::string text_of(const JsonValue &value)
{
    return {value.GetString(), value.GetStringLength()};
}

std::string json_of(const JsonValue &value)
{
    rapidjson::StringBuffer line;
    Passing<rapidjson::Writer<rapidjson::StringBuffer>> writer(line);
    value.Accept(writer);
    return {line.GetString(), line.GetSize()};
}

void refuse_member(const std::string &name, const char *expected)
{
    throw UsageError(name + ": expected " + expected);
}

std::string read_text(const std::string &name, const JsonValue &value)
{
    if (!value.IsString()) refuse_member(name, "a text");
    return text_of(value);
}

std::string read_text_or_null(const std::string &name, const JsonValue &value)
{
    return value.IsNull() ? std::string() : read_text(name, value);
}

bool read_truth(const std::string &name, const JsonValue &value)
{
    if (!value.IsBool()) refuse_member(name, "true or false");
    return value.GetBool();
}

uint32_t read_number(const std::string &name, const JsonValue &value)
{
    if (!value.IsUint()) refuse_member(name, "a number from 0 to 4294967295");
    return value.GetUint();
}

int32_t read_signed(const std::string &name, const JsonValue &value)
{
    if (!value.IsInt()) refuse_member(name, "a whole number of 32 bits");
    return value.GetInt();
}

rapidjson::Document read_document(std::string_view json, const std::string &what)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(json.data(), json.size());
    if (document.HasParseError())
        throw UsageError("the " + what + " is not JSON: byte " + std::to_string(document.GetErrorOffset() + 1) + ": " +
                         rapidjson::GetParseError_En(document.GetParseError()));
    return document;
}

void read_object(std::string_view json, const std::string &what, const Members &members,
                 std::initializer_list<const char *> required)
{
    read_object(read_document(json, what), what, members, required);
}

void read_object(const JsonValue &object, const std::string &what, const Members &members,
                 std::initializer_list<const char *> required)
{
    if (!object.IsObject()) refuse_member("the " + what, "an object");
    std::map<std::string, bool> seen;
    for (const auto &[key, value] : object.GetObject()) {
        const std::string name = text_of(key);
        const auto member = members.find(name);
        if (member == members.end()) {
            std::vector<std::string> known;
            for (const auto &[each, ignored] : members)
                known.push_back(each);
            throw UsageError(name + ": not a member of the " + what +
                             text::suggestion(name, std::vector<std::string_view>(known.begin(), known.end())) +
                             " (known are " + text::join(known) + ")");
        }
        if (std::exchange(seen[name], true)) throw UsageError(name + ": given twice");
        member->second(name, value);
    }
    for (const char *name : required)
        if (!seen[name]) throw UsageError(std::string(name) + ": missing");
}

std::vector<Member> members_of(std::string_view object)
{
    rapidjson::MemoryStream in(object.data(), object.size());
    Apart apart;
    rapidjson::Reader().Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(in, apart);
    return apart.members;
}

const std::string *find_member(const std::vector<Member> &members, std::string_view name)
{
    const auto found = std::ranges::find(members, name, &Member::name);
    return found == members.end() ? nullptr : &found->value;
}

void pass_over(const std::string &, const JsonValue &) {}

} // namespace call
