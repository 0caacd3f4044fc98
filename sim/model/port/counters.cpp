#include "model/port/counters.h"

#include <algorithm>

#include "model/traffic/bandwidth.h"

namespace ponsim
{
namespace
{

constexpr uint64_t bits = 8; // of an octet

PerFlow whole(const PerFlow &fractions)
{
    PerFlow frames{};
    std::ranges::transform(fractions, frames.begin(), [](uint64_t fraction) { return fraction / count_unit; });
    return frames;
}

uint64_t number_of(const PerFlow &frames)
{
    uint64_t sum = 0;
    for (uint64_t number : frames)
        sum += number;
    return sum;
}

uint64_t number_of(const PerFlow &frames, Cast cast)
{
    uint64_t sum = 0;
    for (size_t flow = 0; flow < flows.size(); ++flow)
        if (flows[flow].cast == cast) sum += frames[flow];
    return sum;
}

void count_sizes(const PerFlow &frames, Counters &counters)
{
    for (size_t flow = 0; flow < flows.size(); ++flow)
        counters.sizes.at(size_class(flows[flow].length)) += frames[flow];
}

void police(const PerFlow &frames, Counters &counters)
{
    counters.in_discards += number_of(frames);
    counters.in_discard_octets += octets_of(frames);
}

void count_in(const PerFlow &frames, Counters &counters)
{
    counters.in_octets += octets_of(frames);
    counters.in_unicast += number_of(frames, Cast::unicast);
    counters.in_multicast += number_of(frames, Cast::multicast);
    counters.in_broadcast += number_of(frames, Cast::broadcast);
    count_sizes(frames, counters);
}

void count_out(const PerFlow &frames, Counters &counters)
{
    counters.out_octets += octets_of(frames);
    counters.out_unicast += number_of(frames, Cast::unicast);
    counters.out_multicast += number_of(frames, Cast::multicast);
    counters.out_broadcast += number_of(frames, Cast::broadcast);
    count_sizes(frames, counters);
}

void discard(const PerFlow &frames, Counters &counters)
{
    counters.out_discards += number_of(frames);
    counters.out_discard_octets += octets_of(frames);
}

} // namespace

size_t size_class(uint32_t length)
{
    constexpr std::array<uint32_t, size_classes - 1> upper_ends{64, 127, 255, 511, 1023};
    return static_cast<size_t>(std::ranges::lower_bound(upper_ends, length) - upper_ends.begin());
}

Counters pon_counters(const Olt &olt, const PonPort &port)
{
    const Streams offered = port.traffic.offered(olt.now()).frames;
    Counters counters{};
    for (const PerFlow &received : {offered.up, offered.up_lost, offered.up_policed})
        count_in(whole(received), counters);
    police(whole(offered.up_policed), counters);
    // A bit error leaves a wrong code group or a wrong disparity in the 8B/10B code, so it is counted there, too.
    counters.in_fcs_errors = number_of(whole(offered.up_errored));
    counters.in_code_errors = counters.in_fcs_errors;
    count_out(whole(offered.down), counters);
    discard(whole(offered.down_lost), counters);
    return counters;
}

Counters uplink_counters(const Olt &olt, uint32_t uplink)
{
    Counters counters{};
    for (const PonPort &port : olt.ports()) {
        if (uplink_of(port.number) != uplink) continue;
        const Streams offered = port.traffic.offered(olt.now()).frames;
        count_out(whole(offered.up), counters);
        discard(whole(offered.up_lost), counters);
        for (const PerFlow &received : {offered.down, offered.down_lost})
            count_in(whole(received), counters);
    }
    return counters;
}

Load load_of(const Rates &rates)
{
    return {.in = octets_of(rates.down) * bits / rate_unit, .out = octets_of(rates.up) * bits / rate_unit};
}

Load pon_load(const PonPort &port)
{
    const Streams &streams = port.traffic.streams();
    Load load = load_of({streams.up, streams.down});
    for (const PerFlow &up : {streams.up_errored, streams.up_policed, streams.up_lost})
        load.out += load_of({.up = up}).out;
    return load;
}

Load xaui_load(const Olt &olt, uint32_t xaui)
{
    Load load;
    for (const PonPort &port : olt.ports()) {
        const uint32_t uplink = uplink_of(port.number);
        if (xaui_of(uplink) != xaui || !phy_control(olt, uplink).link_up()) continue;
        const Streams &streams = port.traffic.streams();
        for (const Load &part : {load_of({streams.up, streams.down}), load_of({streams.up_lost, streams.down_lost})}) {
            load.in += part.in;
            load.out += part.out;
        }
    }
    return load;
}

} // namespace ponsim
