// How ONUs register at a port, and what comes of it: they are let in, turned away, or wait.
//
// An ONU that is switched on boots; then it answers in a discovery window of its port, by multi-point MAC control
// (IEEE 802.3, clause 64), its OAM link comes up (clause 57), and it is asked for its LOID where the port wants that.
// Only then it is there. Each step takes model time, and an ONU that is not heard any more at its end begins anew when
// it is.
#pragma once

#include "model/olt/olt.h"
#include "model/olt/plan.h"
#include "model/olt/process.h"

namespace ponsim
{

class Registration
{
public:
    // Adds to `change` what comes of it. `authentication` is that of the port once the change is made.
    Registration(const Olt &olt, const PonPort &port, const Authentication &authentication, Change &change);

    // An ONU that is on the fibre and not on the black list. One that is not bound, and is accepted by its LOID, is
    // bound to the next free id; it waits where there is none, where it is not supported, and while it is bound
    // elsewhere. One that is turned away raises an alarm, unless it was on the fibre and turned away before.
    void add(const Arrival &arrival, bool was_registered);

private:
    const Olt &olt;
    const PonPort &port;
    const Authentication &authentication;
    Change &change;
    OnuIds taken;
};

// Adds to `change` that an ONU starts anew: it is off the fibre until it has booted and registered.
void boot(const Olt &olt, const PonPort &port, const Mac &mac, Change &change);

// Adds to `change` that an ONU which the port can hear registers: it answers in the first discovery window from `from`
// on. One that boots registers after that.
void begin_registration(const Olt &olt, const PonPort &port, const Mac &mac, ModelTime from, Change &change);

// Adds to `change` what comes of the ONUs of a port that now reaches these: those that come into reach register, for
// those online that go out of it an alarm is raised. The reach itself is the caller's to change.
void change_reach(const Olt &olt, const PonPort &port, const Reach &reach, Change &change);

// An ONU that has arrived at the port loses its power, or has it again. One that was online raises its last alarms; one
// that has power again boots.
Plan set_power(const Olt &olt, uint32_t pon_port, const Mac &mac, bool on);

// The phases of ONUs that register, one after the other.
extern const Process registration_process;

} // namespace ponsim
