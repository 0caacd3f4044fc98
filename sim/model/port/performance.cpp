#include "model/port/performance.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace ponsim
{
namespace
{

void pass(const Flow &flow, uint64_t frames, uint64_t UniCounters::Count::*direction, UniCounters &counters)
{
    counters.frames.*direction += frames;
    counters.octets.*direction += frames * flow.length;
    counters.sizes.at(size_class(flow.length)).*direction += frames;
    if (flow.cast == Cast::broadcast) counters.broadcast.*direction += frames;
    if (flow.cast == Cast::multicast) counters.multicast.*direction += frames;
}

uint64_t whole(uint64_t fractions)
{
    return fractions / count_unit;
}

// Returns what a port has counted. No counter ever becomes smaller with more frames.
UniCounters counted(const UniFrames &frames)
{
    UniCounters counters{};
    for (size_t index = 0; index < flows.size(); ++index) {
        pass(flows[index], whole(frames.down[index]), &UniCounters::Count::down, counters);
        pass(flows[index], whole(frames.up[index]), &UniCounters::Count::up, counters);
        counters.discarded.down += whole(frames.discarded[index]);
        counters.discarded.up += whole(frames.dropped[index]);
    }
    counters.fragments.up = whole(frames.fragments);
    counters.drop_events = counters.discarded;
    counters.crc_errored.up = whole(frames.crc_errored);
    counters.errored.up = counters.fragments.up + counters.crc_errored.up;
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
    const Ledger *ledger = olt.ledger({onu.port->number, onu.binding->mac});
    if (!ledger) return {};
    const Traffic::Onu &traffic = onu.port->traffic.onu(onu.onu_id);
    const auto at = [&](ModelTime after) {
        const std::vector<UniFrames> unis = counted_at(*ledger, traffic, ledger->since + after);
        return counted(uni <= unis.size() ? unis[uni - 1] : UniFrames{});
    };
    return difference(at(time.to), at(time.from));
}

} // namespace ponsim
