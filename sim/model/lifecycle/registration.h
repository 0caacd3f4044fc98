// ONUs register at a port, and then are let in, are turned away, or wait.
//
// An ONU that is switched on boots first, for as long as its kind takes. Then it answers in a discovery window of its
// port, by multi-point MAC control (IEEE 802.3, clause 64). Then its OAM link comes up (clause 57), and it is asked for
// its LOID if the port wants that. Only after that it is there. Each step takes model time, and needs its messages to
// pass in both directions: where bit errors spoil one of them, the step comes again. An ONU that is no longer heard at
// the end of a step begins again when it is heard.
#pragma once

#include <map>
#include <string>

#include "model/change/plan.h"
#include "model/lifecycle/process.h"
#include "model/olt/olt.h"

namespace ponsim
{

class Registration
{
public:
    // Adds to `change` what the registration brings about. `authentication` is that of the port after the change.
    Registration(const Olt &olt, const PonPort &port, const Authentication &authentication, Change &change);

    // Registers an ONU that is on the fibre and not on the blacklist. When it is not bound, and is accepted by its
    // LOID, it is bound to the next free id. It waits when there is no free id, when it is not supported, and while it
    // is bound elsewhere. An ONU that is turned away raises an alarm, unless it was on the fibre and turned away
    // before. An ONU that is let in by its
    // LOID is kept out, and asked again later, while another one at the port is let in by the same LOID.
    void add(const Arrival &arrival, bool was_registered);

private:
    void keep_out(const Arrival &arrival, const Mac &first);

    const Olt &olt;
    const PonPort &port;
    const Authentication &authentication;
    Change &change;
    OnuIds taken;
    std::map<std::string, Mac> admitted; // who is let in by a LOID
};

// Adds to `change` that an ONU starts again: it is off the fibre until it has booted and registered.
void boot(const Olt &olt, const PonPort &port, const Mac &mac, Change &change);

// Adds to `change` that an ONU within the limits of the port registers: it answers in the first discovery window from
// `from` on in which the light lets its frames pass. While the ONU is not heard, it waits for light. An ONU that boots
// registers after booting.
void begin_registration(const Olt &olt, const PonPort &port, const Mac &mac, ModelTime from, Change &change);

// Adds to `change` that the OAM link of an ONU that MPCP has registered comes up, for the first time or again.
void bring_up_oam(const Olt &olt, const PonPort &port, const Mac &mac, Change &change);

// Adds to `change` what new ranging limits mean for the ONUs of a port. ONUs that come within the limits register, and
// an alarm is raised for each ONU that is online and is outside of them now. The caller changes the limits themselves.
void change_limits(const Olt &olt, const PonPort &port, const RangingLimits &limits, Change &change);

// Takes the power from an ONU that has arrived at the port, or gives it back. An ONU that was online raises its last
// alarms. An ONU that has power again boots.
Plan set_power(const Olt &olt, uint32_t pon_port, const Mac &mac, bool on);

// This process takes ONUs that register from one phase to the next.
extern const Process registration_process;

} // namespace ponsim
