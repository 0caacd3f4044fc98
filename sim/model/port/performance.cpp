#include "model/port/performance.h"

#include <algorithm>
#include <bit>
#include <functional>

#include "model/base/random.h"

namespace ponsim
{
namespace
{

constexpr uint64_t million = 1000000;
constexpr uint32_t slowest = 100; // Mbit/s, the line rate of an FE port

// A Line is a UNI port that has a link. An ONU that has no link at all sends and receives all the same. Then each of
// its ports is a line, so that no frame is lost.
struct Line {
    uint64_t from;      // frames of a round that the lines before it take
    uint64_t turns;     // frames of a round that it takes
    uint64_t all_turns; // frames of a round

    // These are numbers of frames, of a million.
    uint32_t crc_errored;
    uint32_t fragments;
    uint32_t discarded;

    // The ports take the ONU's frames in turn, the faster ones more at a time, so that together they have them all, and
    // none has more than its line carries.
    uint64_t share(uint64_t count) const
    {
        const uint64_t frames = count / count_unit;
        const uint64_t of_turn = frames % all_turns;
        return frames / all_turns * turns + std::clamp(of_turn, from, from + turns) - from;
    }
};

std::optional<Line> line_of(const Olt &olt, const RemoteOnu &onu, uint32_t uni)
{
    const Mac &mac = onu.binding->mac;
    const std::vector<UniConfig> configs = default_configs(olt.seed(), mac, onu.device);
    Random random = random_for(olt.seed(), Purpose::lines, mac);
    std::vector<std::optional<LinkMode>> links;
    for (uint32_t index = 0; index < onu.device.unis.size(); ++index)
        links.push_back(link_of(onu.device.unis[index], configs[index]));
    const bool linked = std::ranges::any_of(links, [](const auto &link) { return link.has_value(); });
    std::optional<Line> line;
    uint64_t all_turns = 0;
    for (uint32_t index = 0; index < onu.device.unis.size(); ++index) {
        const uint32_t crc_errored = 50 + random.below(100);
        const uint32_t fragments = 100 + random.below(400);
        const uint32_t discarded = 50 + random.below(200);
        if (linked && !links[index]) continue;
        const uint64_t turns = onu.device.unis[index].line_rate / slowest;
        const bool collisions = links[index] && !links[index]->full_duplex;
        if (index + 1 == uni) line = Line{all_turns, turns, 0, crc_errored, collisions ? fragments : 0, discarded};
        all_turns += turns;
    }
    if (line) line->all_turns = all_turns;
    return line;
}

void pass(const Flow &flow, uint64_t frames, uint64_t UniCounters::Count::*direction, UniCounters &counters)
{
    counters.frames.*direction += frames;
    counters.octets.*direction += frames * flow.length;
    counters.sizes.at(size_class(flow.length)).*direction += frames;
    if (flow.cast == Cast::broadcast) counters.broadcast.*direction += frames;
    if (flow.cast == Cast::multicast) counters.multicast.*direction += frames;
}

// Returns what a port has counted of the ONU's frames. No counter ever becomes smaller with more frames.
UniCounters counted(const Line &line, const OnuFrames &frames)
{
    UniCounters counters{};
    for (size_t index = 0; index < flows.size(); ++index) {
        const uint64_t down = line.share(frames.down[index]);
        const uint64_t discarded = down * line.discarded / million;
        counters.discarded.down += discarded;
        pass(flows[index], down - discarded, &UniCounters::Count::down, counters);
        // The ONU sends on what it received well and had grants for.
        pass(flows[index], line.share(frames.up[index]), &UniCounters::Count::up, counters);
        counters.discarded.up += line.share(frames.dropped[index]);
    }
    counters.crc_errored.up = counters.frames.up * line.crc_errored / million;
    counters.fragments.up = counters.frames.up * line.fragments / million;
    counters.drop_events = counters.discarded;
    counters.errored.up = counters.crc_errored.up + counters.fragments.up;
    return counters;
}

UniCounters difference(const UniCounters &counters, const UniCounters &before)
{
    using Words = std::array<uint64_t, sizeof(UniCounters) / sizeof(uint64_t)>;
    auto words = std::bit_cast<Words>(counters);
    std::ranges::transform(words, std::bit_cast<Words>(before), words.begin(), std::minus());
    return std::bit_cast<UniCounters>(words);
}

} // namespace

std::optional<MonitoringTime> current_period(const Olt &olt, const RemoteOnu &onu)
{
    const std::optional<ModelTime> since = on_since(olt, onu);
    if (!since) return std::nullopt;
    const ModelTime time = olt.now() - *since;
    return MonitoringTime{time - time % monitoring_period, time};
}

std::optional<MonitoringTime> last_period(const Olt &olt, const RemoteOnu &onu)
{
    const std::optional<MonitoringTime> current = current_period(olt, onu);
    if (!current || current->from == 0) return std::nullopt;
    return MonitoringTime{current->from - monitoring_period, current->from};
}

UniCounters uni_counters(const Olt &olt, const RemoteOnu &onu, uint32_t uni, const MonitoringTime &time)
{
    const std::optional<Line> line = line_of(olt, onu, uni);
    const Ledger *ledger = olt.ledger({onu.port->number, onu.binding->mac});
    if (!line || !ledger) return {};
    const Traffic::Onu &rates = onu.port->traffic.onu(onu.onu_id);
    const auto at = [&](ModelTime after) { return counted(*line, counted_at(*ledger, rates, ledger->since + after)); };
    return difference(at(time.to), at(time.from));
}

} // namespace ponsim
