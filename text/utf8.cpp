#include "text/utf8.h"

#include <algorithm>

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

namespace text
{
namespace
{

struct NoOutput {
    void Put(char) {}
};

} // namespace

bool is_utf8(std::string_view text)
{
    rapidjson::MemoryStream in(text.data(), text.size());
    NoOutput none;
    while (in.Tell() < text.size())
        if (!rapidjson::UTF8<>::Validate(in, none)) return false;
    return true;
}

bool has_control_characters(std::string_view text, std::string_view allowed)
{
    return std::ranges::any_of(text, [allowed](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return (byte < ' ' || byte == 0x7f) && allowed.find(character) == allowed.npos;
    });
}

} // namespace text
