#include "fleet/selection/pattern.h"

namespace fleet
{

bool Pattern::is_plain() const
{
    return literal || text.find_first_of("*?") == text.npos;
}

bool Pattern::matches(std::string_view whole) const
{
    if (is_plain()) return text == whole;
    // When something does not match, the last star takes one character more. Stars before it need not take more: what
    // they could take, the last one can.
    size_t at = 0, of = 0, star = text.npos, star_of = 0;
    while (of < whole.size()) {
        if (at < text.size() && text[at] == '*') {
            star = at++;
            star_of = of;
        } else if (at < text.size() && (text[at] == '?' || text[at] == whole[of])) {
            ++at;
            ++of;
        } else if (star != text.npos) {
            at = star + 1;
            of = ++star_of;
        } else {
            return false;
        }
    }
    return text.find_first_not_of('*', at) == text.npos;
}

} // namespace fleet
