// This file measures how long links bear it when nothing arrives.
#include <cmath>

#include "field.h"
#include "model/base/search.h"
#include "model/olt/standing.h"
#include "page.h"

namespace ponsim
{
namespace
{

constexpr uint64_t longest = 20000; // ms

// Returns the first time, in ms, of darkness that an ONU does not survive.
double first_fatal(void (*darken)(Field &), void (*light)(Field &))
{
    return static_cast<double>(first_second(1, longest, [&](uint64_t time) {
        Field field;
        darken(field);
        pass(field, time);
        light(field);
        return !field.online(0);
    }));
}

void age(Field &field, uint32_t hours_added)
{
    OnuRecord record = field.record(0);
    record.added_hours = hours_added;
    field.simulator.change(change_of<OnuRecord>({1, field.onu(0).mac}, record));
    pass(field, 0);
}

void set_time_outs(Field &field, uint32_t report, uint32_t gate)
{
    Mpcp mpcp;
    mpcp.report_timeout = report;
    mpcp.gate_timeout = gate;
    field.simulator.change(set_mpcp(field.olt(), 1, MpcpSet::timeouts, mpcp).change);
}

// The port receives an ONU with so much less than it needs for light without bit errors, in 0.01 dB.
constexpr int32_t weak = 300;

// Returns after how many seconds, in the mean, the OAM link of an ONU fails in light that is too weak.
double mean_of_oam_failures()
{
    constexpr uint64_t seeds = 100;
    double sum = 0;
    for (uint64_t seed = 1; seed <= seeds; ++seed) {
        Field field({}, seed);
        for (uint32_t index = 0; index < Field::onus; ++index) {
            field.bring(index, sensitivity(field.olt(), field.port(1), field.onu(index), Direction::up) - weak);
            const TimeOut failure = time_out_of(field.olt(), field.port(1), field.onu(index)).value();
            if (failure.missing != Missing::oampdu) throw std::logic_error("another link fails first");
            sum += static_cast<double>(failure.at - field.record(index).up.since) / ms_per_second;
        }
    }
    return sum / (seeds * Field::onus);
}

// Returns the same by formula: a frame a second, of 64 octets, and a failure after five that are lost one after the
// other.
double oam_failures_by_formula()
{
    const double q = 7.03 * std::pow(10, -weak / 1000.0);
    const double bit = std::erfc(q / std::sqrt(2.0)) / 2;
    const double lost = 1 - std::pow(1 - bit, 8 * 64);
    return (1 - std::pow(lost, 5)) / ((1 - lost) * std::pow(lost, 5));
}

constexpr uint32_t worn_out = 2000000; // hours; with so many a laser gives no light

} // namespace

PageSection timer_section()
{
    const auto cut = [](Field &field) { field.order("cut 1 feeder"); };
    const auto mend = [](Field &field) { field.order("mend 1 feeder"); };
    const auto wear_out = [](Field &field) { age(field, worn_out); };
    const auto renew = [](Field &field) { age(field, 0); };
    const auto cut_with_long_gates = [](Field &field) {
        set_time_outs(field, 1000, 1000);
        field.order("cut 1 feeder");
    };
    const auto wear_out_with_long_reports = [](Field &field) {
        set_time_outs(field, 10000, 50);
        age(field, worn_out);
    };
    const std::string gates = "64.3: an ONU that receives no GATE for gate_timeout stops sending";
    const std::string reports = "64.3: an OLT that receives no REPORT for mpcp_timeout deregisters the ONU";
    return {"Timers",
            "Light goes off for some time and comes back. The shortest time after which an ONU is no longer registered "
            "is looked "
            "for, to the millisecond.",
            {{"fibre cut, gate_timeout of 50 ms", "ms", "the shorter one of the time-outs", gates, 50,
              first_fatal(cut, mend), 0, 0},
             {"fibre cut, both time-outs of 1 s", "ms", "the time-out", gates, 1000,
              first_fatal(cut_with_long_gates, mend), 0, 0},
             {"laser of the ONU off, mpcp_timeout of 1 s", "ms", "the time-out", reports, 1000,
              first_fatal(wear_out, renew), 0, 0},
             {"laser of the ONU off, time-out of 10 s", "ms", "the time-out", reports, 10000,
              first_fatal(wear_out_with_long_reports, renew), 0, 0},
             {"OAM link in light 3 dB below the sensitivity, mean of 800", "s",
              "(1 - p^5) / ((1 - p) p^5) for frames of 64 octets that are lost with probability p",
              "annex 57A: an OAMPDU a second; 57.3: local_lost_link_timer of 5 s", oam_failures_by_formula(),
              mean_of_oam_failures(), 0.1 * oam_failures_by_formula(), 0}}};
}

} // namespace ponsim
