// This file writes and reads calls and outcomes as JSON.
#include "call/call.h"
#include "call/codec/members.h"
#include "call/json.h"
#include "text/words.h"

namespace call
{
namespace
{

// Returns the text that stands for a value: digits, words, or ids with commas between them.
std::string word_of(const std::string &name, const JsonValue &value)
{
    if (value.IsString()) return text_of(value);
    if (value.IsNumber()) return json_of(value);
    if (!value.IsArray()) refuse_member(name, "a number, a text, a list of ids, or an object of fields");
    std::vector<std::string> ids;
    for (const JsonValue &id : value.GetArray()) {
        if (!id.IsUint()) refuse_member(name, "ids in the list");
        ids.push_back(json_of(id));
    }
    return text::join(ids, ",");
}

void read_arguments(const std::string &name, const JsonValue &value, std::vector<Assignment> &arguments)
{
    if (!value.IsObject()) refuse_member(name, "an object");
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

} // namespace

std::string to_json(const Call &asked)
{
    JsonText json(JsonLayout::one_line);
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
    return json.written();
}

Call call_from_json(std::string_view text)
{
    return call_from_json(read_document(text, "call"));
}

Call call_from_json(const JsonValue &object)
{
    Call asked;
    read_object(
        object, "call",
        {{"id", [&](const auto &name, const JsonValue &value) { asked.id = read_text(name, value); }},
         {"operation", [&](const auto &name, const JsonValue &value) { asked.operation = read_text(name, value); }},
         {"arguments", [&](const auto &name, const JsonValue &value) { read_arguments(name, value, asked.arguments); }},
         {"allow_long", [&](const auto &name, const JsonValue &value) { asked.allow_long = read_truth(name, value); }},
         {"deadline_ms", [&](const auto &name, const JsonValue &value) { asked.deadline = read_number(name, value); }}},
        {"operation"});
    return asked;
}

std::string to_json(const Outcome &outcome)
{
    JsonText json(JsonLayout::one_line);
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
            json.written_value(delivered.value);
        }
        json->EndObject();
    } else {
        json.null("outputs");
    }
    json->EndObject();
    return json.written();
}

Outcome outcome_from_json(std::string_view text)
{
    Outcome outcome;
    read_object(
        text, "outcome",
        {{"id", [&](const auto &name, const JsonValue &value) { outcome.id = read_text(name, value); }},
         {"operation", [&](const auto &name, const JsonValue &value) { outcome.operation = read_text(name, value); }},
         {"sent", [&](const auto &name, const JsonValue &value) { outcome.sent = read_truth(name, value); }},
         {"ipc_result",
          [&](const auto &name, const JsonValue &value) { outcome.ipc_result = read_signed(name, value); }},
         {"ipc_text", [&](const auto &name, const JsonValue &value) { outcome.ipc_text = read_text(name, value); }},
         {"status", [&](const auto &name, const JsonValue &value) { outcome.status = read_number(name, value); }},
         {"status_name",
          [&](const auto &name, const JsonValue &value) { outcome.status_name = read_text_or_null(name, value); }},
         {"status_text",
          [&](const auto &name, const JsonValue &value) { outcome.status_text = read_text_or_null(name, value); }},
         {"outputs",
          [](const auto &name, const JsonValue &value) {
              if (!value.IsNull() && !value.IsObject()) refuse_member(name, "an object, or null");
          }}},
        {"operation", "sent", "ipc_result", "ipc_text", "status", "status_name", "status_text", "outputs"});
    const std::vector<Member> members = members_of(text);
    if (const std::string *outputs = find_member(members, "outputs"); *outputs != "null")
        outcome.outputs = members_of(*outputs);
    return outcome;
}

} // namespace call
