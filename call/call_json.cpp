// This file writes and reads calls and outcomes as JSON.
#include <functional>
#include <map>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/writer.h>

#include "call/call.h"
#include "call/json.h"
#include "text/words.h"

namespace call
{
namespace
{

using Value = rapidjson::Value;

std::string text_of(const Value &value)
{
    return {value.GetString(), value.GetStringLength()};
}

std::string json_of(const Value &value)
{
    rapidjson::StringBuffer line;
    Passing<rapidjson::Writer<rapidjson::StringBuffer>> writer(line);
    value.Accept(writer);
    return {line.GetString(), line.GetSize()};
}

[[noreturn]] void refuse(const std::string &name, const char *expected)
{
    throw UsageError(name + ": expected " + expected);
}

std::string read_text(const std::string &name, const Value &value)
{
    if (!value.IsString()) refuse(name, "a text");
    return text_of(value);
}

std::string read_text_or_null(const std::string &name, const Value &value)
{
    return value.IsNull() ? std::string() : read_text(name, value);
}

bool read_truth(const std::string &name, const Value &value)
{
    if (!value.IsBool()) refuse(name, "true or false");
    return value.GetBool();
}

uint32_t read_number(const std::string &name, const Value &value)
{
    if (!value.IsUint()) refuse(name, "a number from 0 to 4294967295");
    return value.GetUint();
}

int32_t read_signed(const std::string &name, const Value &value)
{
    if (!value.IsInt()) refuse(name, "a whole number of 32 bits");
    return value.GetInt();
}

// Members says what is done with each member of an object.
using Members = std::map<std::string, std::function<void(const std::string &name, const Value &value)>, std::less<>>;

// Reads an object whose members are all known. The required members must be there.
void read_object(std::string_view json, const std::string &what, const Members &members,
                 std::initializer_list<const char *> required)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(json.data(), json.size());
    if (document.HasParseError())
        throw UsageError("the " + what + " is not JSON: byte " + std::to_string(document.GetErrorOffset() + 1) + ": " +
                         rapidjson::GetParseError_En(document.GetParseError()));
    if (!document.IsObject()) refuse("the " + what, "an object");
    std::map<std::string, bool> seen;
    for (const auto &[key, value] : document.GetObject()) {
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

// Returns the text that stands for a value: digits, words, or ids with commas between them.
std::string word_of(const std::string &name, const Value &value)
{
    if (value.IsString()) return text_of(value);
    if (value.IsNumber()) return json_of(value);
    if (!value.IsArray()) refuse(name, "a number, a text, a list of ids, or an object of fields");
    std::vector<std::string> ids;
    for (const Value &id : value.GetArray()) {
        if (!id.IsUint()) refuse(name, "ids in the list");
        ids.push_back(json_of(id));
    }
    return text::join(ids, ",");
}

void read_arguments(const std::string &name, const Value &value, std::vector<Assignment> &arguments)
{
    if (!value.IsObject()) refuse(name, "an object");
    for (const auto &[key, given] : value.GetObject()) {
        const std::string argument = text_of(key);
        if (given.IsNull()) continue;
        if (!given.IsObject()) {
            arguments.push_back({argument, word_of(argument, given)});
            continue;
        }
        for (const auto &[field, inner] : given.GetObject())
            if (const std::string path = argument + "." + text_of(field); !inner.IsNull())
                arguments.push_back({path, word_of(path, inner)});
    }
}

// Apart separates an object into its members, and keeps the numbers as they were written.
class Apart : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Apart>
{
public:
    std::vector<Delivered> members;

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

// Returns the members of a text that is an object.
std::vector<Delivered> members_of(std::string_view object)
{
    rapidjson::MemoryStream in(object.data(), object.size());
    Apart apart;
    rapidjson::Reader().Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(in, apart);
    return apart.members;
}

} // namespace

std::string to_json(const Call &asked)
{
    JsonText json;
    json->StartObject();
    if (!asked.id.empty()) json.member("id", asked.id);
    json.member("operation", asked.operation);
    json.key("arguments");
    json->StartObject();
    for (const Assignment &argument : asked.arguments)
        json.member(argument.name, argument.value);
    json->EndObject();
    if (asked.allow_long) json.truth("allow_long", true);
    if (asked.deadline) json.member("deadline_ms", *asked.deadline);
    json->EndObject();
    return compact(json.written());
}

Call call_from_json(std::string_view text)
{
    Call asked;
    read_object(
        text, "call",
        {{"id", [&](const auto &name, const Value &value) { asked.id = read_text(name, value); }},
         {"operation", [&](const auto &name, const Value &value) { asked.operation = read_text(name, value); }},
         {"arguments", [&](const auto &name, const Value &value) { read_arguments(name, value, asked.arguments); }},
         {"allow_long", [&](const auto &name, const Value &value) { asked.allow_long = read_truth(name, value); }},
         {"deadline_ms", [&](const auto &name, const Value &value) { asked.deadline = read_number(name, value); }}},
        {"operation"});
    return asked;
}

std::string to_json(const Outcome &outcome)
{
    JsonText json;
    json->StartObject();
    if (!outcome.id.empty()) json.member("id", outcome.id);
    json.member("operation", outcome.operation);
    json.truth("sent", outcome.sent);
    json.ipc_result(outcome.ipc_result);
    json.member("ipc_text", outcome.ipc_text);
    json.member("status", outcome.status);
    json.member_or_null("status_name", outcome.status_name);
    json.member_or_null("status_text", outcome.status_text);
    if (outcome.outputs) {
        json.key("outputs");
        json->StartObject();
        for (const Delivered &delivered : *outcome.outputs) {
            json.key(delivered.name);
            json.document(delivered.value);
        }
        json->EndObject();
    } else {
        json.null("outputs");
    }
    json->EndObject();
    return compact(json.written());
}

Outcome outcome_from_json(std::string_view text)
{
    Outcome outcome;
    read_object(
        text, "outcome",
        {{"id", [&](const auto &name, const Value &value) { outcome.id = read_text(name, value); }},
         {"operation", [&](const auto &name, const Value &value) { outcome.operation = read_text(name, value); }},
         {"sent", [&](const auto &name, const Value &value) { outcome.sent = read_truth(name, value); }},
         {"ipc_result", [&](const auto &name, const Value &value) { outcome.ipc_result = read_signed(name, value); }},
         {"ipc_text", [&](const auto &name, const Value &value) { outcome.ipc_text = read_text(name, value); }},
         {"status", [&](const auto &name, const Value &value) { outcome.status = read_number(name, value); }},
         {"status_name",
          [&](const auto &name, const Value &value) { outcome.status_name = read_text_or_null(name, value); }},
         {"status_text",
          [&](const auto &name, const Value &value) { outcome.status_text = read_text_or_null(name, value); }},
         {"outputs",
          [](const auto &name, const Value &value) {
              if (!value.IsNull() && !value.IsObject()) refuse(name, "an object, or null");
          }}},
        {"operation", "sent", "ipc_result", "ipc_text", "status", "status_name", "status_text", "outputs"});
    for (const Delivered &member : members_of(text))
        if (member.name == "outputs" && member.value != "null") outcome.outputs = members_of(member.value);
    return outcome;
}

} // namespace call
