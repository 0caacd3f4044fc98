#include "access/attempts.h"

#include <algorithm>

namespace front
{

uint32_t Attempts::begin(const std::string &name, int64_t now)
{
    const std::lock_guard lock(guard);
    if (counts.size() >= most_names)
        std::erase_if(counts, [&](const auto &entry) { return now - entry.second.since >= span; });
    // Where so many fail at once, those whose span ends first are forgotten: the table stays small.
    if (counts.size() >= most_names && !counts.contains(name))
        counts.erase(std::ranges::min_element(counts, {}, [](const auto &entry) { return entry.second.since; }));
    Count &count = counts[name];
    if (count.attempts == 0 || now - count.since >= span) count = {0, now};
    if (count.attempts >= most) return static_cast<uint32_t>((count.since + span - now + 999) / 1000);
    ++count.attempts;
    return 0;
}

void Attempts::forgive(const std::string &name)
{
    const std::lock_guard lock(guard);
    counts.erase(name);
}

} // namespace front
