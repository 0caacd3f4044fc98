#include "output/output.h"

#include <algorithm>
#include <array>

namespace ponctl
{
const char *colour_of(std::string_view word)
{
    constexpr std::array green{"online", "up", "registered", "recovered", "normal", "ok"};
    constexpr std::array yellow{"unauthenticated", "waiting",      "connecting", "minor",
                                "low warning",     "high warning", "warning"};
    constexpr std::array red{"offline",  "unregistered", "looped",    "shut",
                             "critical", "major",        "low alarm", "high alarm"};
    if (std::ranges::find(green, word) != green.end()) return "\033[32m";
    if (std::ranges::find(yellow, word) != yellow.end()) return "\033[33m";
    if (std::ranges::find(red, word) != red.end()) return "\033[31m";
    return nullptr;
}

} // namespace ponctl
