#include "model/traffic/bandwidth.h"

#include <algorithm>
#include <functional>

namespace ponsim
{
namespace
{

// Returns what is taken from the room for an ONU before the others share the rest.
Bandwidth reserved_for(const Want &want)
{
    return std::clamp(want.bandwidth, want.fixed, want.fixed + want.assured);
}

// Returns how much an ONU may have beyond that.
Bandwidth missing_to(const Want &want)
{
    const Bandwidth most = std::min(want.bandwidth, want.maximum);
    return most - std::min(most, reserved_for(want));
}

// Shares what is left by weight, and subtracts from `left` what it grants.
void share_by_weight(std::vector<size_t> members, std::span<const Want> wants, std::vector<Bandwidth> &missing,
                     std::vector<Bandwidth> &granted, Bandwidth &left)
{
    const auto grant = [&](size_t member, Bandwidth bandwidth) {
        granted[member] += bandwidth;
        missing[member] -= bandwidth;
        left -= bandwidth;
    };
    while (!members.empty()) {
        uint64_t weights = 0;
        for (size_t member : members)
            weights += wants[member].weight;
        const Bandwidth available = left;
        // An ONU that wants less than its share leaves more to the others.
        const auto is_short = [&](size_t member) {
            return missing[member] * weights > available * wants[member].weight;
        };
        const auto content = std::stable_partition(members.begin(), members.end(), is_short);
        const bool all_short = content == members.end();
        for (auto member = content; member != members.end(); ++member)
            grant(*member, missing[*member]);
        members.erase(content, members.end());
        if (!all_short) continue;
        for (size_t member : members)
            grant(member, available * wants[member].weight / weights);
        return;
    }
}

} // namespace

uint64_t octets_of(const PerFlow &frames, Measure measure)
{
    uint64_t sum = 0;
    for (size_t flow = 0; flow < flows.size(); ++flow)
        sum += frames[flow] * length_of(flows[flow], measure);
    return sum;
}

void add(PerFlow &sum, const PerFlow &rates)
{
    std::ranges::transform(sum, rates, sum.begin(), std::plus());
}

PerFlow without(const PerFlow &rates, const PerFlow &part)
{
    PerFlow rest{};
    std::ranges::transform(rates, part, rest.begin(), std::minus());
    return rest;
}

PerFlow spread(const PerFlow &proportions, Bandwidth bandwidth, Measure measure)
{
    // The order is from the longest frames to the shortest, so that a rest that is too small for one more long frame is
    // left to the shorter ones.
    static constexpr std::array<size_t, flows.size()> order{5, 4, 3, 6, 2, 1, 7, 0};
    PerFlow rates{};
    const Bandwidth total = octets_of(proportions, measure);
    if (total == 0) return rates;
    Bandwidth seen = 0;
    Bandwidth given = 0;
    for (size_t flow : order) {
        const uint64_t length = length_of(flows[flow], measure);
        seen += proportions[flow] * length;
        rates[flow] = (bandwidth * seen / total - given) / length;
        given += rates[flow] * length;
    }
    return rates;
}

PerFlow cut(const PerFlow &rates, Bandwidth room, Measure measure)
{
    if (octets_of(rates, measure) <= room) return rates;
    PerFlow left = spread(rates, room, measure);
    for (size_t flow = 0; flow < flows.size(); ++flow)
        left[flow] = std::min(left[flow], rates[flow]);
    return left;
}

Bandwidth portion(Bandwidth part, Bandwidth room, Bandwidth total)
{
    return total <= room ? part : part * room / total;
}

Want want_of(const PerFlow &wanted, const Sla &sla)
{
    const Bandwidth line = octets_of(wanted, Measure::line);
    const Bandwidth frames = octets_of(wanted);
    // What an ONU that is silent has by contract is meant for the longest frames.
    const auto on_line = [&](uint32_t kbit) {
        const auto longest = flows[longest_flow];
        return frames == 0 ? kbits(kbit) * length_of(longest, Measure::line) / longest.length
                           : kbits(kbit) * line / frames;
    };
    return {line, on_line(sla.fixed), on_line(sla.assured), on_line(sla.maximum), sla.priority, sla.weight};
}

Bandwidth most_taken(const Want &want)
{
    return reserved_for(want) + missing_to(want);
}

std::vector<Bandwidth> grants(Bandwidth room, std::span<const Want> wants)
{
    std::vector<Bandwidth> reserved;
    Bandwidth taken = 0;
    for (const Want &want : wants) {
        reserved.push_back(reserved_for(want));
        taken += reserved.back();
    }
    std::vector<Bandwidth> granted;
    std::vector<Bandwidth> missing;
    for (size_t onu = 0; onu < wants.size(); ++onu) {
        const Want &want = wants[onu];
        granted.push_back(std::min(want.bandwidth, portion(reserved[onu], room, taken)));
        missing.push_back(missing_to(want));
    }
    Bandwidth left = room - std::min(room, taken);
    for (uint32_t above = max_priority + 1; above > 0 && left > 0; --above) {
        std::vector<size_t> members;
        for (size_t onu = 0; onu < wants.size(); ++onu)
            if (wants[onu].priority == above - 1 && missing[onu] > 0) members.push_back(onu);
        share_by_weight(std::move(members), wants, missing, granted, left);
    }
    return granted;
}

} // namespace ponsim
