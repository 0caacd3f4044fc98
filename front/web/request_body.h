// The body of a request: an object of JSON.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "text/json.h"
#include "web/context.h"

namespace front
{

class RequestBody
{
public:
    // An empty body is an empty object. Throws a Refusal when it is no object, or has other members than these.
    RequestBody(const Context &context, std::initializer_list<std::string_view> members);

    // These return the value of a member, or none where it is missing. They throw a Refusal when it is of another type.
    std::optional<std::string> text(const char *name) const;
    std::optional<uint32_t> number(const char *name) const;
    bool truth(const char *name) const;

    // Throws a Refusal when it is missing.
    std::string needed_text(const char *name) const;

    // Returns null where it is missing.
    const text::json::Value *value(const char *name) const;

private:
    text::json::Document document;
};

} // namespace front
