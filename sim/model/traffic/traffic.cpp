#include "model/traffic/traffic.h"

#include <algorithm>

#include "model/base/random.h"
#include "model/traffic/bandwidth.h"

namespace ponsim
{
namespace
{

// These are the highest rates of an ONU, in frames a second.
constexpr std::array<uint32_t, flows.size()> most_up{60, 20, 10, 10, 10, 25, 2, 2};
constexpr std::array<uint32_t, flows.size()> most_down{40, 20, 20, 20, 20, 100, 10, 2};

constexpr PerFlow Streams::*all_streams[]{&Streams::up,         &Streams::up_errored,  &Streams::up_policed,
                                          &Streams::up_lost,    &Streams::down,        &Streams::down_lost,
                                          &Streams::up_unheard, &Streams::down_errored};

void accumulate(PerFlow &sum, const PerFlow &rates, ModelTime time)
{
    for (size_t flow = 0; flow < flows.size(); ++flow)
        sum[flow] += rates[flow] * time;
}

// Broken says how many frames are broken on the fibre.
struct Broken {
    PerFlow frames = {};
    SlowErrors slow = {};
};
// A remainder that is too small for one frame of its flow adds to the next flow. What is left at the end breaks frames
// of the last flow that has any left.
Broken broken(const PerFlow &sent, const PerFlow &shares)
{
    Broken result;
    uint64_t parts = 0;
    for (size_t flow = 0; flow < flows.size(); ++flow) {
        parts += sent[flow] * shares[flow];
        result.frames[flow] = std::min(sent[flow], parts / all_errored);
        parts -= result.frames[flow] * all_errored;
        if (sent[flow] > result.frames[flow]) result.slow.flow = flow;
    }
    if (sent[result.slow.flow] > result.frames[result.slow.flow]) result.slow.rate = (parts << 32) / all_errored;
    return result;
}

// Returns what of the frames that the ONU is sent does not reach it as it was sent.
Broken broken_down(const Traffic::Onu &onu)
{
    const PerFlow &sent = onu.passed.down;
    return onu.demand.errors.heard ? broken(sent, onu.demand.errors.down) : Broken{sent};
}

// Returns the frames that the OLT lets in of those that it receives from an ONU.
PerFlow let_in(const PerFlow &received, const Demand &demand)
{
    PerFlow result = received;
    for (size_t cast = 0; cast < demand.let_in.size(); ++cast) {
        if (!demand.let_in[cast]) continue;
        PerFlow of_cast{};
        for (size_t flow = 0; flow < flows.size(); ++flow)
            if (static_cast<size_t>(flows[flow].cast) == cast) of_cast[flow] = received[flow];
        result = without(result, without(of_cast, cut(of_cast, *demand.let_in[cast])));
    }
    return result;
}

// Returns what of the frames that the ONU sends does not reach its port as it was sent.
Broken broken_up(const Traffic::Onu &onu)
{
    return onu.demand.errors.heard ? broken(onu.passed.up, onu.demand.errors.up) : Broken{};
}

// Makes the ONU send what it is granted.
void send(Traffic::Onu &onu, Bandwidth granted)
{
    onu.passed.up = cut(onu.demand.wanted.up, granted, Measure::line);
    onu.dropped = without(onu.demand.wanted.up, onu.passed.up);
}

// Returns what becomes of the frames of an ONU on the line and at its port.
Streams streams_of(const Traffic::Onu &onu, const PerFlow &errored_up, const PerFlow &errored_down)
{
    Streams streams;
    streams.down = onu.passed.down;
    streams.down_lost = onu.down_lost;
    streams.down_errored = errored_down;
    if (!onu.demand.errors.heard) {
        streams.up_unheard = onu.passed.up;
        return streams;
    }
    streams.up_errored = errored_up;
    const PerFlow received = without(onu.passed.up, errored_up);
    streams.up = let_in(received, onu.demand);
    streams.up_policed = without(received, streams.up);
    return streams;
}

// Returns the room of an uplink in each direction.
Bandwidth room_of(bool uplink_is_up)
{
    return uplink_is_up ? kbits(uplink_rate) : 0;
}

// Returns the start of the period in which the time is.
ModelTime period_start(const Ledger &ledger, ModelTime time)
{
    return time - (time - ledger.since) % monitoring_period;
}

} // namespace

Rates rates_of(uint64_t seed, const Mac &mac)
{
    Random random = random_for(seed, Purpose::traffic, mac);
    Rates rates;
    for (size_t flow = 0; flow < flows.size(); ++flow) {
        rates.up[flow] = rate_unit * (1 + random.below(most_up[flow]));
        rates.down[flow] = rate_unit * (1 + random.below(most_down[flow]));
    }
    return rates;
}

uint64_t SlowErrors::count(ModelTime from, ModelTime to) const
{
    __extension__ using Wide = unsigned __int128;
    const auto until = [this](ModelTime time) { return static_cast<uint64_t>(Wide{rate} * time >> 32); };
    return until(to) - until(from);
}

Offered Traffic::offered(ModelTime now) const
{
    Offered result = settled;
    for (PerFlow Streams::*stream : all_streams)
        accumulate(result.frames.*stream, passing.*stream, now - settled.until);
    PerFlow passed_on = passing.up; // frames of each flow that slow errors may break
    for (const auto &[onu_id, errors] : slow) {
        const auto &[up, down, of_policed] = errors;
        result.frames.down_errored[down.flow] += down.count(settled.until, now);
        if (up.rate == 0) continue;
        const uint64_t count = up.count(settled.until, now);
        result.frames.up_errored[up.flow] += count;
        if (of_policed) {
            result.frames.up_policed[up.flow] -= count;
        } else if (passed_on[up.flow] > 0) {
            result.frames.up[up.flow] -= count;
            --passed_on[up.flow];
        } else {
            result.frames.up_lost[up.flow] -= count;
        }
    }
    result.until = now;
    return result;
}

Traffic::Needs Traffic::needs_of(const Demand &demand)
{
    return {.uplink = octets_of(demand.wanted.down, Measure::line),
            .down = octets_of(cut(demand.wanted.down, demand.most_down), Measure::line),
            .up = most_taken(want_of(demand.wanted.up, demand.sla))};
}

void Traffic::set(uint32_t onu_id, const std::optional<Demand> &demand)
{
    if (const auto found = onus.find(onu_id); found != onus.end()) {
        if (std::erase(fresh, onu_id) == 0) exclude(onu_id, found->second);
        const Needs less = needs_of(found->second.demand);
        needs = {needs.uplink - less.uplink, needs.down - less.down, needs.up - less.up};
        onus.erase(found);
    }
    if (!demand) return;
    onus[onu_id] = {*demand};
    fresh.push_back(onu_id);
    const Needs more = needs_of(*demand);
    needs = {needs.uplink + more.uplink, needs.down + more.down, needs.up + more.up};
}

void Traffic::set_errors(uint32_t onu_id, const Errors &errors)
{
    const auto found = onus.find(onu_id);
    if (found == onus.end()) return;
    const bool counted = std::ranges::find(fresh, onu_id) == fresh.end();
    if (counted) exclude(onu_id, found->second);
    found->second.demand.errors = errors;
    if (counted) include(onu_id, found->second);
}

const Traffic::Onu &Traffic::onu(uint32_t onu_id) const
{
    static const Onu none{};
    const auto found = onus.find(onu_id);
    return found == onus.end() ? none : found->second;
}

void Traffic::include(uint32_t onu_id, const Onu &onu)
{
    const Broken up = broken_up(onu);
    const Broken down = broken_down(onu);
    const Streams streams = streams_of(onu, up.frames, down.frames);
    for (PerFlow Streams::*stream : all_streams)
        add(on_line.*stream, streams.*stream);
    if (up.slow.rate != 0 || down.slow.rate != 0) slow[onu_id] = {up.slow, down.slow, streams.up[up.slow.flow] == 0};
}

void Traffic::exclude(uint32_t onu_id, const Onu &onu)
{
    const Streams streams = streams_of(onu, broken_up(onu).frames, broken_down(onu).frames);
    for (PerFlow Streams::*stream : all_streams)
        on_line.*stream = without(on_line.*stream, streams.*stream);
    slow.erase(onu_id);
}

void Traffic::pass_alone(Onu &onu)
{
    const Demand &demand = onu.demand;
    const Want want = want_of(demand.wanted.up, demand.sla);
    onu.passed.down = cut(demand.wanted.down, demand.most_down);
    onu.down_lost = without(demand.wanted.down, onu.passed.down);
    send(onu, grants(capacity.up, {&want, 1}).front());
}

// The network sends as much as the uplink has room for, and the port as much as the SLAs and its line have room for.
void Traffic::pass_down(Bandwidth room, Bandwidth wanted)
{
    Bandwidth total = 0;
    for (auto &[onu_id, onu] : onus) {
        const PerFlow &down = onu.demand.wanted.down;
        onu.down_lost = cut(down, portion(octets_of(down, Measure::line), room, wanted), Measure::line);
        onu.passed.down = cut(onu.down_lost, onu.demand.most_down);
        total += octets_of(onu.passed.down, Measure::line);
    }
    for (auto &[onu_id, onu] : onus) {
        PerFlow &down = onu.passed.down;
        down = cut(down, portion(octets_of(down, Measure::line), capacity.down, total), Measure::line);
        onu.down_lost = without(onu.down_lost, down);
    }
}

// The ONUs send what they are granted.
void Traffic::pass_up()
{
    std::vector<Want> wants;
    for (const auto &[onu_id, onu] : onus)
        wants.push_back(want_of(onu.demand.wanted.up, onu.demand.sla));
    const std::vector<Bandwidth> granted = grants(capacity.up, wants);
    auto grant = granted.begin();
    for (auto &[onu_id, onu] : onus)
        send(onu, *grant++);
}

void Traffic::share(std::span<Traffic *const> ports, bool uplink_is_up)
{
    const Bandwidth room = room_of(uplink_is_up);
    Bandwidth wanted_down = 0;
    bool has_room = true;
    bool had_room = true;
    for (const Traffic *port : ports) {
        wanted_down += port->needs.uplink;
        has_room = has_room && port->has_room();
        had_room = had_room && port->roomy;
    }
    has_room = has_room && wanted_down <= room;
    for (Traffic *port : ports) {
        if (has_room && had_room) {
            for (const uint32_t onu_id : port->fresh) {
                port->pass_alone(port->onus.at(onu_id));
                port->include(onu_id, port->onus.at(onu_id));
            }
        } else {
            port->pass_down(room, wanted_down);
            port->pass_up();
            port->on_line = {};
            port->slow.clear();
            for (const auto &[onu_id, onu] : port->onus)
                port->include(onu_id, onu);
        }
        port->fresh.clear();
        port->roomy = has_room;
    }
    pass_on(ports, uplink_is_up);
}

void Traffic::pass_on(std::span<Traffic *const> ports, bool uplink_is_up)
{
    Bandwidth up = 0;
    for (const Traffic *port : ports)
        up += octets_of(port->on_line.up, Measure::line);
    for (Traffic *port : ports) {
        const PerFlow &received = port->on_line.up;
        const Bandwidth part = portion(octets_of(received, Measure::line), room_of(uplink_is_up), up);
        port->passing = port->on_line;
        port->passing.up = cut(received, part, Measure::line);
        port->passing.up_lost = without(received, port->passing.up);
    }
}

std::vector<UniFrames> uni_rates(const Traffic::Onu &onu)
{
    const std::vector<UniDemand> &demands = onu.demand.unis;
    std::vector<UniFrames> rates(demands.size());
    const PerFlow down = without(onu.passed.down, broken_down(onu).frames);
    for (size_t flow = 0; flow < flows.size(); ++flow) {
        apportion(
            onu.passed.up[flow], demands.size(), [&](size_t uni) { return demands[uni].up[flow]; },
            [&](size_t uni, uint64_t share) { rates[uni].up[flow] = share; });
        apportion(
            down[flow], demands.size(), [&](size_t uni) { return demands[uni].down[flow]; },
            [&](size_t uni, uint64_t share) { rates[uni].down[flow] = share; });
    }
    for (size_t uni = 0; uni < demands.size(); ++uni) {
        const UniDemand &demand = demands[uni];
        rates[uni].dropped = without(demand.up, rates[uni].up);
        add(rates[uni].dropped, demand.limited);
        const PerFlow for_users = rates[uni].down;
        rates[uni].down = cut(cut(for_users, demand.line_down, Measure::line), demand.most_down);
        rates[uni].discarded = without(for_users, rates[uni].down);
        rates[uni].fragments = demand.fragments;
        rates[uni].crc_errored = demand.crc_errored;
    }
    return rates;
}

namespace
{

// Takes away the frames that slow errors broke, from those of the first UNI port that gets any of their flow.
void take_broken(std::vector<UniFrames> &frames, std::span<const UniFrames> rates, const SlowErrors &errors,
                 uint64_t count)
{
    for (size_t uni = 0; uni < rates.size(); ++uni)
        for (PerFlow UniFrames::*received : {&UniFrames::down, &UniFrames::discarded}) {
            if ((rates[uni].*received)[errors.flow] == 0) continue;
            (frames[uni].*received)[errors.flow] -= count;
            return;
        }
}

std::vector<UniFrames> counted_at(const Ledger &ledger, const Traffic::Onu &onu, std::span<const UniFrames> rates,
                                  ModelTime time)
{
    if (time <= ledger.since) return {};
    if (time < ledger.until)
        return time == period_start(ledger, ledger.until) ? ledger.at_period : ledger.at_last_period;
    std::vector<UniFrames> frames = ledger.frames;
    frames.resize(std::max(frames.size(), rates.size()));
    const ModelTime passed = time - ledger.until;
    for (size_t uni = 0; uni < rates.size(); ++uni) {
        for (PerFlow UniFrames::*count : {&UniFrames::up, &UniFrames::dropped, &UniFrames::down, &UniFrames::discarded})
            accumulate(frames[uni].*count, rates[uni].*count, passed);
        frames[uni].fragments += rates[uni].fragments * passed;
        frames[uni].crc_errored += rates[uni].crc_errored * passed;
    }
    const SlowErrors slow = broken_down(onu).slow;
    take_broken(frames, rates, slow, slow.count(ledger.until, time));
    return frames;
}

} // namespace

std::vector<UniFrames> counted_at(const Ledger &ledger, const Traffic::Onu &onu, ModelTime time)
{
    return counted_at(ledger, onu, uni_rates(onu), time);
}

Ledger settled(const Ledger &ledger, const Traffic::Onu &onu, ModelTime now)
{
    if (now <= ledger.until) return ledger;
    const std::vector<UniFrames> rates = uni_rates(onu);
    Ledger result = ledger;
    const ModelTime period = period_start(ledger, now);
    result.until = now;
    result.frames = counted_at(ledger, onu, rates, now);
    result.at_period = counted_at(ledger, onu, rates, period);
    result.at_last_period = counted_at(ledger, onu, rates, period - std::min(period, monitoring_period));
    return result;
}

} // namespace ponsim
