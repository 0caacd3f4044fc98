#include "fleet/protocol/message.h"

#include <algorithm>
#include <array>

#include "call/codec/members.h"
#include "call/json.h"
#include "text/hex.h"
#include "text/sha256.h"

namespace fleet
{
namespace
{

using call::JsonText;
using call::JsonValue;
using call::Member;
using call::UsageError;

constexpr std::array<std::string_view, 6> problem_names{"wrong",   "refused", "busy",
                                                        "expired", "unknown", "unavailable"};
constexpr size_t longest_id = 128;

// Returns {"NAME":VALUE}, where the value is JSON in one line.
std::string object_of(std::string_view name, const std::string &value)
{
    return "{\"" + std::string(name) + "\":" + value + "}";
}

std::string name_of_form(const Request &request)
{
    return std::holds_alternative<call::Call>(request.what) ? "call" : "exchange";
}

std::string json_of_what(const Request &request)
{
    return std::visit([](const auto &what) { return call::to_json(what); }, request.what);
}

std::string read_id(const std::string &name, const JsonValue &value)
{
    const std::string id = call::read_text(name, value);
    const bool is_plain = std::ranges::all_of(id, [](char character) { return character > ' ' && character < 0x7f; });
    if (id.empty() || id.size() > longest_id || !is_plain)
        call::refuse_member(name, "1 to 128 printable characters of ASCII, without blanks");
    return id;
}

Problem problem_named(const std::string &name, const std::string &text)
{
    const auto found = std::ranges::find(problem_names, text);
    if (found == problem_names.end()) call::refuse_member(name, "the name of a problem");
    return static_cast<Problem>(found - problem_names.begin());
}

} // namespace

std::string_view name_of(Problem problem)
{
    return problem_names[static_cast<size_t>(problem)];
}

std::string to_json(const Request &request)
{
    JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    if (!request.id.empty()) json.member("id", request.id);
    if (request.deadline != 0) json.member("deadline_ms", request.deadline);
    json.key(name_of_form(request));
    json.written_value(json_of_what(request));
    json->EndObject();
    return json.written();
}

Request request_from_json(std::string_view text)
{
    Request request;
    int forms = 0;
    call::read_object(text, "request",
                      {{"id", [&](const auto &name, const JsonValue &value) { request.id = read_id(name, value); }},
                       {"deadline_ms",
                        [&](const auto &name, const JsonValue &value) {
                            request.deadline = call::read_number(name, value);
                            if (request.deadline == 0) call::refuse_member(name, "milliseconds from 1");
                        }},
                       {"call",
                        [&](const auto &, const JsonValue &value) {
                            request.what = call::call_from_json(value);
                            ++forms;
                        }},
                       {"exchange",
                        [&](const auto &, const JsonValue &value) {
                            request.what = call::record_call_from_json(value);
                            ++forms;
                        }}},
                      {});
    if (forms != 1) throw UsageError("the request: expected either call or exchange");
    return request;
}

std::string answer_of(const call::Outcome &outcome)
{
    return object_of("outcome", call::to_json(outcome));
}

std::string answer_of(const call::RecordOutcome &outcome, const call::RecordCall &asked)
{
    return object_of("exchanged", call::to_json(outcome, asked));
}

std::string answer_of(const Failure &failure)
{
    JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    json.member("problem", name_of(failure.problem));
    json.member("text", failure.text);
    json->EndObject();
    return json.written();
}

Answer answer_from_json(std::string_view text, const Request &request)
{
    Failure failure;
    bool has_problem = false;
    call::read_object(
        text, "answer",
        {{"problem",
          [&](const auto &name, const JsonValue &value) {
              failure.problem = problem_named(name, call::read_text(name, value));
              has_problem = true;
          }},
         {"text", [&](const auto &name, const JsonValue &value) { failure.text = call::read_text(name, value); }},
         {"outcome", call::pass_over},
         {"exchanged", call::pass_over}},
        {});
    if (has_problem) return failure;
    const std::vector<Member> members = call::members_of(text);
    const auto *asked = std::get_if<call::RecordCall>(&request.what);
    if (const std::string *exchanged = call::find_member(members, "exchanged"); exchanged && asked)
        return call::record_outcome_from_json(*exchanged, *asked);
    if (const std::string *outcome = call::find_member(members, "outcome"); outcome && !asked)
        return call::outcome_from_json(*outcome);
    throw UsageError("the answer: expected a problem, or what the request came to");
}

std::string digest_of(const Request &request)
{
    return text::to_hex(text::sha256(object_of(name_of_form(request), json_of_what(request))));
}

} // namespace fleet
