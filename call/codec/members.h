// This file takes JSON objects apart, whose members are all known.
#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <rapidjson/document.h>

#include "call/codec/member.h"

namespace call
{

using JsonValue = rapidjson::Value;

// A document can be passed on to this writer. A number stays as it was written, whatever its size and precision.
template <class Base>
struct Passing : Base {
    using Base::Base;
    bool RawNumber(const char *text, rapidjson::SizeType length, bool)
    {
        return Base::RawValue(text, length, rapidjson::kNumberType);
    }
};

// Each function throws a UsageError that starts with the name when the value is of another kind.
[[noreturn]] void refuse_member(const std::string &name, const char *expected);
std::string read_text(const std::string &name, const JsonValue &value);
// Null reads as an empty text.
std::string read_text_or_null(const std::string &name, const JsonValue &value);
bool read_truth(const std::string &name, const JsonValue &value);
uint32_t read_number(const std::string &name, const JsonValue &value);
int32_t read_signed(const std::string &name, const JsonValue &value);

// Returns a text, and a value as it was written.
std::string text_of(const JsonValue &value);
std::string json_of(const JsonValue &value);

// Members says what is done with each member of an object.
using Members =
    std::map<std::string, std::function<void(const std::string &name, const JsonValue &value)>, std::less<>>;

// Does nothing with a member: whoever reads it does so by its JSON.
void pass_over(const std::string &name, const JsonValue &value);

// Reads an object whose members are all known, and which `what` names in errors. The required members must be there.
// Throws a UsageError that says what is wrong with the text, and where.
void read_object(std::string_view json, const std::string &what, const Members &members,
                 std::initializer_list<const char *> required);
// As above, from a value of a document that was read before.
void read_object(const JsonValue &object, const std::string &what, const Members &members,
                 std::initializer_list<const char *> required);

// Reads a document, which `what` names in errors. Throws a UsageError that says what is wrong with the text, and where.
rapidjson::Document read_document(std::string_view json, const std::string &what);

// Returns the members of a text that is an object. Numbers stay as they were written.
std::vector<Member> members_of(std::string_view object);
// Returns the JSON of the member of this name, or null when there is none.
const std::string *find_member(const std::vector<Member> &members, std::string_view name);

} // namespace call
