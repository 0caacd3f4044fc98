// DueTimes hold a time for some of so many items, which are known by their numbers. The items whose time has come are
// found without a look at the others.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "model/base/time.h"

namespace ponsim
{

class DueTimes
{
public:
    explicit DueTimes(size_t items = 0) : times(items) {}

    // Sets the time of an item, in place of the time that was set before.
    void set(size_t item, std::optional<ModelTime> time)
    {
        std::optional<ModelTime> &set = times.at(item);
        if (set == time) return;
        if (set) order.erase({*set, item});
        if (time) order.insert({*time, item});
        set = time;
    }
    // Returns the earliest time. Returns no time when no item has one.
    std::optional<ModelTime> first() const
    {
        if (order.empty()) return std::nullopt;
        return order.begin()->first;
    }
    // Returns the items whose time has come, in the order of their numbers.
    std::vector<size_t> due(ModelTime now) const
    {
        std::vector<size_t> items;
        for (auto at = order.begin(); at != order.end() && at->first <= now; ++at)
            items.push_back(at->second);
        std::ranges::sort(items);
        return items;
    }

private:
    std::vector<std::optional<ModelTime>> times; // by item
    std::set<std::pair<ModelTime, size_t>> order;
};

} // namespace ponsim
