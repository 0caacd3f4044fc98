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

void accumulate(PerFlow &sum, const PerFlow &rates, ModelTime time)
{
    for (size_t flow = 0; flow < flows.size(); ++flow)
        sum[flow] += rates[flow] * time;
}

// Returns how many frames are broken on the fibre. A remainder that is too small for one frame of its flow adds to the
// next flow.
PerFlow broken(const PerFlow &sent, const PerFlow &shares)
{
    PerFlow result{};
    uint64_t parts = 0;
    for (size_t flow = 0; flow < flows.size(); ++flow) {
        parts += sent[flow] * shares[flow];
        result[flow] = std::min(sent[flow], parts / all_errored);
        parts -= result[flow] * all_errored;
    }
    return result;
}

// Returns the frames that the ONU receives of those that it is sent.
PerFlow received(const Traffic::Onu &onu)
{
    const PerFlow &sent = onu.passed.down;
    return onu.demand.heard ? without(sent, broken(sent, onu.demand.errored_down)) : PerFlow{};
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

Offered Traffic::offered(ModelTime now) const
{
    Offered result = settled;
    for (PerFlow Streams::*stream : {&Streams::up, &Streams::up_errored, &Streams::up_policed, &Streams::up_lost,
                                     &Streams::down, &Streams::down_lost, &Streams::up_unheard, &Streams::down_errored})
        accumulate(result.frames.*stream, passing.*stream, now - settled.until);
    result.until = now;
    return result;
}

void Traffic::set(uint32_t onu_id, const std::optional<Demand> &demand)
{
    if (demand)
        onus[onu_id] = {*demand};
    else
        onus.erase(onu_id);
}

const Traffic::Onu &Traffic::onu(uint32_t onu_id) const
{
    static const Onu none{};
    const auto found = onus.find(onu_id);
    return found == onus.end() ? none : found->second;
}

Bandwidth Traffic::wanted_down() const
{
    Bandwidth sum = 0;
    for (const auto &[onu_id, onu] : onus)
        sum += octets_of(onu.demand.wanted.down, Measure::line);
    return sum;
}

// The network sends as much as the uplink has room for, and the port as much as the SLAs and its line have room for.
void Traffic::pass_down(Bandwidth room, Bandwidth wanted)
{
    passing.down = {};
    passing.down_lost = {};
    passing.down_errored = {};
    Bandwidth total = 0;
    for (auto &[onu_id, onu] : onus) {
        const PerFlow &down = onu.demand.wanted.down;
        const PerFlow sent = cut(down, portion(octets_of(down, Measure::line), room, wanted), Measure::line);
        add(passing.down_lost, sent);
        onu.passed.down = cut(sent, onu.demand.most_down);
        total += octets_of(onu.passed.down, Measure::line);
    }
    for (auto &[onu_id, onu] : onus) {
        PerFlow &down = onu.passed.down;
        down = cut(down, portion(octets_of(down, Measure::line), capacity.down, total), Measure::line);
        add(passing.down, down);
        add(passing.down_errored, without(down, received(onu)));
    }
    passing.down_lost = without(passing.down_lost, passing.down);
}

// The ONUs send what they are granted.
void Traffic::pass_up()
{
    passing.up = {};
    passing.up_errored = {};
    passing.up_policed = {};
    passing.up_unheard = {};
    std::vector<Want> wants;
    for (const auto &[onu_id, onu] : onus)
        wants.push_back(want_of(onu.demand.wanted.up, onu.demand.sla));
    const std::vector<Bandwidth> granted = grants(capacity.up, wants);
    auto grant = granted.begin();
    for (auto &[onu_id, onu] : onus) {
        onu.passed.up = cut(onu.demand.wanted.up, *grant++, Measure::line);
        onu.dropped = without(onu.demand.wanted.up, onu.passed.up);
        if (!onu.demand.heard) {
            add(passing.up_unheard, onu.passed.up);
            continue;
        }
        const PerFlow errored = broken(onu.passed.up, onu.demand.errored_up);
        const PerFlow received = without(onu.passed.up, errored);
        const PerFlow passed_on = let_in(received, onu.demand);
        add(passing.up, passed_on);
        add(passing.up_errored, errored);
        add(passing.up_policed, without(received, passed_on));
    }
}

void Traffic::share(std::span<Traffic *const> ports, bool uplink_is_up)
{
    const Bandwidth room = uplink_is_up ? kbits(uplink_rate) : 0;
    Bandwidth wanted_down = 0;
    for (const Traffic *port : ports)
        wanted_down += port->wanted_down();
    Bandwidth up = 0;
    for (Traffic *port : ports) {
        port->pass_down(room, wanted_down);
        port->pass_up();
        up += octets_of(port->passing.up, Measure::line);
    }
    for (Traffic *port : ports) {
        const PerFlow received = port->passing.up;
        port->passing.up = cut(received, portion(octets_of(received, Measure::line), room, up), Measure::line);
        port->passing.up_lost = without(received, port->passing.up);
    }
}

std::vector<UniFrames> uni_rates(const Traffic::Onu &onu)
{
    const std::vector<UniDemand> &demands = onu.demand.unis;
    std::vector<UniFrames> rates(demands.size());
    const PerFlow down = received(onu);
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

std::vector<UniFrames> counted_at(const Ledger &ledger, std::span<const UniFrames> rates, ModelTime time)
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
    return frames;
}

} // namespace

std::vector<UniFrames> counted_at(const Ledger &ledger, const Traffic::Onu &onu, ModelTime time)
{
    return counted_at(ledger, uni_rates(onu), time);
}

Ledger settled(const Ledger &ledger, const Traffic::Onu &onu, ModelTime now)
{
    if (now <= ledger.until) return ledger;
    const std::vector<UniFrames> rates = uni_rates(onu);
    Ledger result = ledger;
    const ModelTime period = period_start(ledger, now);
    result.until = now;
    result.frames = counted_at(ledger, rates, now);
    result.at_period = counted_at(ledger, rates, period);
    result.at_last_period = counted_at(ledger, rates, period - std::min(period, monitoring_period));
    return result;
}

} // namespace ponsim
