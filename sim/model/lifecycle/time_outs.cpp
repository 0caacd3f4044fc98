#include "model/lifecycle/time_outs.h"

#include <string>

#include "model/lifecycle/alarms.h"
#include "model/lifecycle/debug.h"
#include "model/lifecycle/registration.h"
#include "model/olt/mpcp.h"
#include "model/olt/standing.h"

namespace ponsim
{
namespace
{

std::string reason_of(const Mpcp &mpcp, Missing missing)
{
    switch (missing) {
    case Missing::gate:
        return "deregistered: it received no GATE for " + std::to_string(mpcp.gate_timeout) + " ms";
    case Missing::report:
        return "deregistered: no REPORT for " + std::to_string(mpcp.report_timeout) + " ms";
    case Missing::oampdu:
        return "OAM link lost: no OAMPDU for " + std::to_string(lost_link_time / ms_per_second) + " s";
    }
    return {};
}

void raise_alarms(const PonPort &port, const Mac &mac, Missing missing, Change &change)
{
    const OnuRecord record = port.record(mac);
    if (missing == Missing::oampdu) {
        raise(port, mac, Alarm::oam_link_lost, change);
    } else if (record.heard()) {
        raise(port, mac, Alarm::deregistered, change);
    } else {
        raise(port, mac, Alarm::los, change);
        if (record.up.heard()) raise(port, mac, Alarm::onu_los, change);
    }
}

void fail(const Olt &olt, const PonPort &port, const Arrival &arrival, Missing missing, Change &change)
{
    const Mac &mac = arrival.mac;
    if (is_on_fibre(olt, port, arrival)) raise_alarms(port, mac, missing, change);
    report(olt, DebugSwitch::onu, port.number, mac, reason_of(mpcp_of(olt, port.number), missing), change);
    if (missing == Missing::oampdu)
        bring_up_oam(olt, port, mac, change);
    else // A window that opens at this very moment is too early.
        begin_registration(olt, port, mac, olt.now() + 1, change);
}

std::optional<ModelTime> next_time_out(const Olt &olt)
{
    return olt.light_watch().next_time_out();
}

Change end_links(const Olt &olt)
{
    Change change;
    for (const PonPort &port : olt.ports())
        for (const size_t index : olt.light_watch().timed_out(port.number, olt.now())) {
            const Arrival &arrival = port.arrivals[index];
            fail(olt, port, arrival, time_out_of(olt, port, arrival).value().missing, change);
        }
    return change;
}

} // namespace

const Process time_out_process{next_time_out, end_links};

} // namespace ponsim
