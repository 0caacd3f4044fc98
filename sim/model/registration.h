// What comes of an ONU that registers at a port: it is let in, turned away, or waits.
#pragma once

#include "model/olt.h"
#include "model/plan.h"

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

// An ONU that the port can hear registers: it answers in the first discovery window from `from` on.
void begin_registration(const Olt &olt, const PonPort &port, const Mac &mac, ModelTime from, Change &change);

// Adds to `change` what comes of the ONUs of a port that now reaches these: those that come into reach register, for
// those online that go out of it an alarm is raised. The reach itself is the caller's to change.
void change_reach(const Olt &olt, const PonPort &port, const Reach &reach, Change &change);

// An ONU that has arrived at the port loses its power, or has it again. One that was online raises its last alarms; one
// that is in reach again registers.
Plan set_power(const Olt &olt, uint32_t pon_port, const Mac &mac, bool on);

} // namespace ponsim
