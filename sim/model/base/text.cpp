#include "model/base/text.h"

#include <cstring>

#include "text/utf8.h"

namespace ponsim
{
bool is_clean(const std::string &text)
{
    return text::is_printable(text);
}

bool get_text(const char *field, size_t size, std::string &out)
{
    out.assign(field, strnlen(field, size));
    return out.size() < size && is_clean(out);
}

} // namespace ponsim
