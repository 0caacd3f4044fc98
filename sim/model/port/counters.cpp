#include "model/port/counters.h"

#include <algorithm>
#include <functional>

#include "model/base/random.h"
#include "model/olt/bandwidth.h"

namespace ponsim
{
namespace
{

constexpr uint64_t million = 1000000;
constexpr uint64_t bits = 8; // of an octet

PerFlow share_of(const PerFlow &frames, uint32_t share)
{
    PerFlow part{};
    std::ranges::transform(frames, part.begin(), [share](uint64_t number) { return number * share / million; });
    return part;
}

// Takes a share out of the frames and returns what it took. When there are more frames, neither the share nor the rest
// ever becomes smaller.
PerFlow take(PerFlow &frames, uint32_t share)
{
    const PerFlow taken = share_of(frames, share);
    std::ranges::transform(frames, taken, frames.begin(), std::minus());
    return taken;
}

// Adds a share of the frames to them and returns what it added.
PerFlow add(PerFlow &frames, uint32_t share)
{
    const PerFlow added = share_of(frames, share);
    std::ranges::transform(frames, added, frames.begin(), std::plus());
    return added;
}

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

// The port is offered the frames. What the port passes on remains in them.
void receive(PerFlow &frames, const DropShares &shares, Counters &counters)
{
    counters.in_fcs_errors += number_of(take(frames, shares.fcs_errors));
    counters.in_code_errors += number_of(take(frames, shares.code_errors));
    count_in(frames, counters);
    police(take(frames, shares.policed), counters);
}

void discard(const PerFlow &frames, Counters &counters)
{
    counters.out_discards += number_of(frames);
    counters.out_discard_octets += octets_of(frames);
}

// The port gets the frames to send.
void send(PerFlow frames, const DropShares &shares, Counters &counters)
{
    discard(take(frames, shares.discarded), counters);
    count_out(frames, counters);
}

// The port has passed the frames on. It was offered more of them.
void count_received(PerFlow frames, const DropShares &shares, Counters &counters)
{
    police(add(frames, shares.policed), counters);
    count_in(frames, counters);
    counters.in_fcs_errors += number_of(share_of(frames, shares.fcs_errors));
    counters.in_code_errors += number_of(share_of(frames, shares.code_errors));
}

// The port has sent the frames. It got more of them to send, which it returns.
PerFlow count_sent(PerFlow frames, const DropShares &shares, Counters &counters)
{
    count_out(frames, counters);
    discard(add(frames, shares.discarded), counters);
    return frames;
}

DropShares pon_shares(const Olt &olt, const PonPort &port)
{
    return drop_shares(olt.seed(), Interface::pon, port.number);
}

DropShares uplink_shares(const Olt &olt, uint32_t uplink)
{
    return drop_shares(olt.seed(), Interface::ge, uplink);
}

} // namespace

size_t size_class(uint32_t length)
{
    constexpr std::array<uint32_t, size_classes - 1> upper_ends{64, 127, 255, 511, 1023};
    return static_cast<size_t>(std::ranges::lower_bound(upper_ends, length) - upper_ends.begin());
}

DropShares drop_shares(uint64_t seed, Interface interface, uint32_t number)
{
    Random random = random_for(seed, Purpose::traffic, interface_address(seed, interface, number));
    // The list is evaluated in order.
    return {1 + random.below(10), 1 + random.below(5), 50 + random.below(200), 10 + random.below(50)};
}

Counters pon_counters(const Olt &olt, const PonPort &port)
{
    const Streams offered = port.traffic.offered(olt.now()).frames;
    const DropShares shares = pon_shares(olt, port);
    Counters counters{};
    for (const PerFlow &stream : {offered.up, offered.up_lost}) {
        PerFlow up = whole(stream);
        receive(up, shares, counters);
    }
    counters.in_fcs_errors += number_of(whole(offered.up_errored));
    PerFlow not_let_in = whole(offered.up_policed);
    receive(not_let_in, shares, counters);
    police(not_let_in, counters);
    count_sent(whole(offered.down), shares, counters);
    discard(whole(offered.down_lost), counters);
    return counters;
}

Counters uplink_counters(const Olt &olt, uint32_t uplink)
{
    const DropShares shares = uplink_shares(olt, uplink);
    Counters counters{};
    for (const PonPort &port : olt.ports()) {
        if (uplink_of(port.number) != uplink) continue;
        const Streams offered = port.traffic.offered(olt.now()).frames;
        Counters of_port{};
        PerFlow up = whole(offered.up);
        receive(up, pon_shares(olt, port), of_port);
        send(up, shares, counters);
        PerFlow lost = whole(offered.up_lost);
        receive(lost, pon_shares(olt, port), of_port);
        discard(lost, counters);
        count_received(count_sent(whole(offered.down), pon_shares(olt, port), of_port), shares, counters);
        count_received(whole(offered.down_lost), shares, counters);
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
