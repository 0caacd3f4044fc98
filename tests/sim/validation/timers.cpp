// This file measures how long links bear it when nothing arrives.
#include "field.h"
#include "model/base/search.h"
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
              first_fatal(wear_out_with_long_reports, renew), 0, 0}}};
}

} // namespace ponsim
