#include "web/request_body.h"

#include <algorithm>

namespace front
{

RequestBody::RequestBody(const Context &context, std::initializer_list<std::string_view> members)
{
    const std::string &text = context.request.body;
    constexpr unsigned how = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    text.empty() ? document.SetObject() : document.Parse<how>(text.data(), text.size());
    if (document.HasParseError())
        bad_request("the body is no JSON: see byte " + std::to_string(document.GetErrorOffset()));
    if (!document.IsObject()) bad_request("the body is no object");
    for (auto member = document.MemberBegin(); member != document.MemberEnd(); ++member) {
        const std::string name(member->name.GetString(), member->name.GetStringLength());
        if (std::ranges::find(members, name) == members.end()) bad_request(name + ": there is no such member");
        if (&document[name.c_str()] != &member->value) bad_request(name + ": is there twice");
    }
}

const text::json::Value *RequestBody::value(const char *name) const
{
    const auto found = document.FindMember(name);
    return found == document.MemberEnd() || found->value.IsNull() ? nullptr : &found->value;
}

std::optional<std::string> RequestBody::text(const char *name) const
{
    const text::json::Value *const found = value(name);
    if (!found) return std::nullopt;
    if (!found->IsString()) bad_request(std::string(name) + ": expected a text");
    return std::string(found->GetString(), found->GetStringLength());
}

std::optional<uint32_t> RequestBody::number(const char *name) const
{
    const text::json::Value *const found = value(name);
    if (!found) return std::nullopt;
    if (!found->IsUint()) bad_request(std::string(name) + ": expected a number from 0 to 4294967295");
    return found->GetUint();
}

bool RequestBody::truth(const char *name) const
{
    const text::json::Value *const found = value(name);
    if (found && !found->IsBool()) bad_request(std::string(name) + ": expected true or false");
    return found && found->GetBool();
}

std::string RequestBody::needed_text(const char *name) const
{
    std::optional<std::string> found = text(name);
    if (!found) bad_request(std::string(name) + ": missing");
    return *found;
}

} // namespace front
