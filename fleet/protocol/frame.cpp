#include "fleet/protocol/frame.h"

#include "call/codec/members.h"
#include "call/json.h"
#include "fleet/protocol/topics.h"

namespace fleet
{
namespace
{

using call::JsonText;
using call::JsonValue;
using call::Members;

constexpr size_t longest_correlation = 64;

catalogue::Class read_class(const std::string &name, const JsonValue &value)
{
    const auto impact = catalogue::find_class(call::read_text(name, value));
    if (!impact) call::refuse_member(name, "read, write or service-affecting");
    return *impact;
}

std::string read_correlation(const std::string &name, const JsonValue &value)
{
    const std::string correlation = call::read_text(name, value);
    if (correlation.empty() || correlation.size() > longest_correlation) call::refuse_member(name, "1 to 64 bytes");
    return correlation;
}

// Returns the JSON of a member that is there.
std::string json_in(std::string_view line, std::string_view name)
{
    return *call::find_member(call::members_of(line), name);
}

} // namespace

std::string to_line(const Hello &hello)
{
    JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    json.key("hello");
    json->StartObject();
    json.member("version", hello.version);
    json.member("allow", catalogue::to_text(hello.allow));
    json->EndObject();
    json->EndObject();
    return json.written();
}

std::string to_line(const RequestFrame &frame)
{
    JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    json.member("correlation", frame.correlation);
    json.member("class", catalogue::to_text(frame.impact));
    json.key("request");
    json.written_value(frame.request);
    json->EndObject();
    return json.written();
}

std::string to_line(const AnswerFrame &frame)
{
    JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    json.member("correlation", frame.correlation);
    json.key("answer");
    json.written_value(frame.answer);
    json->EndObject();
    return json.written();
}

Hello hello_from_line(std::string_view line)
{
    Hello hello;
    const Members members{
        {"version", [&](const auto &name, const JsonValue &value) { hello.version = call::read_text(name, value); }},
        {"allow", [&](const auto &name, const JsonValue &value) { hello.allow = read_class(name, value); }}};
    call::read_object(line, "line",
                      {{"hello",
                        [&](const auto &name, const JsonValue &value) {
                            call::read_object(value, name, members, {"version", "allow"});
                        }}},
                      {"hello"});
    return hello;
}

RequestFrame request_from_line(std::string_view line)
{
    RequestFrame frame;
    call::read_object(
        line, "line",
        {{"correlation",
          [&](const auto &name, const JsonValue &value) { frame.correlation = read_correlation(name, value); }},
         {"class", [&](const auto &name, const JsonValue &value) { frame.impact = read_class(name, value); }},
         {"request", call::pass_over}},
        {"correlation", "class", "request"});
    frame.request = json_in(line, "request");
    return frame;
}

AnswerFrame answer_from_line(std::string_view line)
{
    AnswerFrame frame;
    call::read_object(
        line, "line",
        {{"correlation",
          [&](const auto &name, const JsonValue &value) { frame.correlation = read_correlation(name, value); }},
         {"answer", call::pass_over}},
        {"correlation", "answer"});
    frame.answer = json_in(line, "answer");
    return frame;
}

} // namespace fleet
