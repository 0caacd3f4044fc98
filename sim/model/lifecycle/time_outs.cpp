#include "model/lifecycle/time_outs.h"

#include <string>

#include "model/alarm/alarms.h"
#include "model/alarm/light_reasons.h"
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

// Losses are the alarms of a port whose links fail together.
class Losses
{
public:
    Losses(const Olt &at, const PonPort &of, Change &planned) : olt(at), port(of), change(planned) {}

    // Raises the loss of an ONU. Where the port hears no ONU any more, its own loss is the cause, and is raised first.
    void add(const Arrival &arrival)
    {
        if (!common) look_at_port();
        AlarmReason reason = loss_reason(olt, port, arrival);
        if (*common == reason) reason.cause = AlarmCause::port_los;
        raise(olt, alarm_key(port, arrival.mac, Alarm::los), reason, change);
        if (port.record(arrival.mac).up.heard())
            raise(olt, alarm_key(port, arrival.mac, Alarm::onu_los), reason, change);
    }

private:
    void look_at_port()
    {
        common = common_loss(olt, port);
        const AlarmKey key = alarm_key(port, port_itself, Alarm::port_los);
        const AlarmRecord *record = olt.alarm(key);
        if (!*common || (record && record->active())) return;
        raise(olt, key, **common, change);
        // Some may have been lost for the same cause a moment before.
        for (const auto &[at, kept] : port.alarms) {
            if (Alarm{at.alarm} != Alarm::los || !kept.active() || kept.reason != *common) continue;
            AlarmRecord lost = kept;
            lost.reason.cause = AlarmCause::port_los;
            change.put<AlarmRecord>({port.number, at.mac, at.alarm}, lost);
        }
    }

    const Olt &olt;
    const PonPort &port;
    Change &change;
    std::optional<std::optional<AlarmReason>> common; // none: not looked at yet
};

void raise_alarms(const Olt &olt, const PonPort &port, const Arrival &arrival, Missing missing, Losses &losses,
                  Change &change)
{
    if (missing == Missing::oampdu)
        raise(olt, alarm_key(port, arrival.mac, Alarm::oam_link_lost), {AlarmCause::bit_errors}, change);
    else if (port.record(arrival.mac).heard())
        raise(olt, alarm_key(port, arrival.mac, Alarm::deregistered), {AlarmCause::bit_errors}, change);
    else
        losses.add(arrival);
}

void fail(const Olt &olt, const PonPort &port, const Arrival &arrival, Missing missing, Losses &losses, Change &change)
{
    const Mac &mac = arrival.mac;
    if (olt.on_fibre(port, arrival)) raise_alarms(olt, port, arrival, missing, losses, change);
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
    for (const PonPort &port : olt.ports()) {
        const std::vector<size_t> timed_out = olt.light_watch().timed_out(port.number, olt.now());
        if (timed_out.empty()) continue;
        Losses losses(olt, port, change);
        for (const size_t index : timed_out) {
            const Arrival &arrival = port.arrivals[index];
            fail(olt, port, arrival, time_out_of(olt, port, arrival).value().missing, losses, change);
        }
    }
    return change;
}

} // namespace

const Process time_out_process{next_time_out, end_links};

} // namespace ponsim
