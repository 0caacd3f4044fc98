#include "model/base/text.h"

#include <cstring>

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

namespace ponsim
{
namespace
{

struct NoOutput {
    void Put(char) {}
};

} // namespace

bool is_clean(const std::string &text)
{
    rapidjson::MemoryStream in(text.data(), text.size());
    NoOutput none;
    while (in.Tell() < text.size()) {
        const auto byte = static_cast<unsigned char>(in.Peek());
        if (byte < 0x20 || byte == 0x7f || !rapidjson::UTF8<>::Validate(in, none)) return false;
    }
    return true;
}

bool get_text(const char *field, size_t size, std::string &out)
{
    out.assign(field, strnlen(field, size));
    return out.size() < size && is_clean(out);
}

} // namespace ponsim
