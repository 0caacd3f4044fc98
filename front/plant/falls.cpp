#include "plant/falls.h"

#include <algorithm>
#include <array>
#include <map>

namespace front
{
namespace
{

// Returns the cause of an ONU that went offline by itself; none where light may be missing.
std::string_view own_cause(std::string_view cause)
{
    static constexpr std::array<std::string_view, 10> own{"power", "reboot",    "command",   "distance", "black_list",
                                                          "loid",  "elsewhere", "same_loid", "same_mac", "test"};
    return std::ranges::find(own, cause) == own.end() ? std::string_view() : cause;
}

std::optional<size_t> deepest_of(const PortPlant &plant, std::span<const PlacedOnu> onus, const Fall &fall)
{
    std::optional<std::vector<size_t>> common;
    size_t placed = 0;
    for (const size_t index : fall.onus) {
        if (!onus[index].node) continue;
        ++placed;
        const std::vector<size_t> path = path_to(plant, *onus[index].node);
        if (!common)
            common = path;
        else
            common->erase(std::ranges::mismatch(*common, path).in1, common->end());
    }
    return placed < 2 ? std::nullopt : std::optional(common->back());
}

bool is_below(const PortPlant &plant, size_t node, std::optional<size_t> top)
{
    for (std::optional<size_t> each = node; each; each = plant[*each].from)
        if (each == top) return true;
    return false;
}

void complete(Fall &fall, const PortPlant &plant, std::span<const PlacedOnu> onus)
{
    fall.first = onus[fall.onus.front()].since;
    fall.last = onus[fall.onus.back()].since;
    fall.cause = onus[fall.onus.front()].cause;
    if (!std::ranges::all_of(fall.onus, [&](size_t index) { return onus[index].cause == fall.cause; })) fall.cause = {};
    fall.node = deepest_of(plant, onus, fall);
    fall.whole = fall.node && std::ranges::none_of(onus, [&](const PlacedOnu &onu) {
                     return onu.state == "online" && onu.node && is_below(plant, *onu.node, fall.node);
                 });
}

} // namespace

std::vector<size_t> path_to(const PortPlant &plant, size_t node)
{
    std::vector<size_t> path;
    for (std::optional<size_t> each = node; each; each = plant[*each].from)
        path.push_back(*each);
    std::ranges::reverse(path);
    return path;
}

std::vector<Fall> falls_of(const PortPlant &plant, std::span<const PlacedOnu> onus, UnixTime span)
{
    std::map<std::string_view, std::vector<size_t>> fallen; // by their own causes
    for (size_t index = 0; index < onus.size(); ++index)
        if (onus[index].state == "offline" && onus[index].since > 0)
            fallen[own_cause(onus[index].cause)].push_back(index);
    std::vector<Fall> falls;
    for (auto &[cause, of_cause] : fallen) {
        std::ranges::stable_sort(of_cause, {}, [&](size_t index) { return onus[index].since; });
        std::vector<Fall> of_this;
        UnixTime before = 0;
        for (const size_t index : of_cause) {
            if (of_this.empty() || onus[index].since - before > span) of_this.emplace_back();
            of_this.back().onus.push_back(index);
            before = onus[index].since;
        }
        for (Fall &fall : of_this) {
            if (fall.onus.size() < 2) continue;
            complete(fall, plant, onus);
            falls.push_back(std::move(fall));
        }
    }
    std::ranges::stable_sort(falls, std::greater(), &Fall::last);
    return falls;
}

} // namespace front
