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

// A Line is a UNI port with a link.
struct Line {
    uint64_t rank;  // its number among those of the ONU, from 0 on
    uint64_t lines; // how many lines the ONU has

    // These are numbers of frames, of a million.
    uint32_t crc_errored;
    uint32_t fragments;
    uint32_t discarded;

    // The ports take the ONU's frames in turn, so that together they have them all.
    uint64_t share(uint64_t rate, ModelTime time) const { return (rate * time / count_unit + rank) / lines; }
};

std::optional<Line> line_of(const Olt &olt, const RemoteOnu &onu, uint32_t uni)
{
    const Mac &mac = onu.binding->mac;
    const std::vector<UniConfig> configs = default_configs(olt.seed(), mac, onu.device);
    Random random = random_for(olt.seed(), Purpose::lines, mac);
    std::optional<Line> line;
    uint64_t lines = 0;
    for (uint32_t index = 0; index < onu.device.unis.size(); ++index) {
        const uint32_t crc_errored = 50 + random.below(100);
        const uint32_t fragments = 100 + random.below(400);
        const uint32_t discarded = 50 + random.below(200);
        const std::optional<LinkMode> link = link_of(onu.device.unis[index], configs[index]);
        if (link && index + 1 == uni) line = Line{lines, 0, crc_errored, link->full_duplex ? 0 : fragments, discarded};
        lines += link.has_value();
    }
    if (line) line->lines = lines;
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

// Returns everything counted since the ONU began to monitor. No counter ever becomes smaller with time.
UniCounters counted(const Line &line, const Traffic::Onu &traffic, ModelTime time)
{
    UniCounters counters{};
    for (size_t index = 0; index < flows.size(); ++index) {
        const uint64_t down = line.share(traffic.passed.down[index], time);
        const uint64_t discarded = down * line.discarded / million;
        counters.discarded.down += discarded;
        pass(flows[index], down - discarded, &UniCounters::Count::down, counters);
        // The ONU sends on what it received well and had grants for.
        pass(flows[index], line.share(traffic.passed.up[index], time), &UniCounters::Count::up, counters);
        counters.discarded.up += line.share(traffic.dropped[index], time);
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
    if (!line) return {};
    const Traffic::Onu &traffic = onu.port->traffic.onu(onu.onu_id);
    return difference(counted(*line, traffic, time.to), counted(*line, traffic, time.from));
}

} // namespace ponsim
