// The AlarmWatch says which alarms no longer are as their conditions say: which are to be raised, and which to be
// cleared.
//
// Each alarm has a condition, which follows from the OLT as it is, and not from the time. When it ends, the alarm ends.
// Alarms of a state, such as weak light, are also raised by their conditions. All others are raised by the change that
// is their cause: that light was lost long enough, or that an ONU was rebooted, is not seen from the OLT as it is.
#pragma once

#include <map>
#include <set>
#include <span>
#include <utility>

#include "model/change/change.h"

namespace ponsim
{

class Olt;
struct PonPort;
struct Arrival;

// Alarms of a port have this where alarms of an ONU have its address.
inline constexpr Mac port_itself{};

AlarmKey alarm_key(const PonPort &port, const Mac &mac, Alarm alarm);

// Returns whether the condition of the alarm holds, so that an alarm that was raised goes on.
bool holds(const Olt &olt, const AlarmKey &key);

class AlarmWatch
{
public:
    void start(const Olt &olt);
    // Call this after the OLT has made the change, with the ONUs whose bindings it changed. The cost grows with the
    // ONUs that the change concerns, and not with those of the OLT. Only what concerns a whole port is looked at for
    // all of its ONUs.
    void follow(const Olt &olt, const Change &change, std::span<const std::pair<uint32_t, Mac>> moved);

    // Returns whether an ONU at another port has the same address. Who has arrived where does not change.
    bool is_twin(uint32_t pon_port, const Mac &mac) const { return twins.contains({pon_port, mac}); }

    // Returns the alarms that are to be raised (true) or cleared (false).
    const std::map<AlarmKey, bool> &pending() const { return waiting; }

private:
    void look(const Olt &olt, const AlarmKey &key);
    // Notes whether the alarm has to be raised or cleared.
    void await(const AlarmKey &key, bool active, bool wanted);
    void look_at_onu(const Olt &olt, const PonPort &port, const Mac &mac);
    // Looks at the alarms of the port itself.
    void look_at_port(const Olt &olt, const PonPort &port);
    void look_at_all(const Olt &olt, const PonPort &port);

    void look_at_twins(const Olt &olt);

    std::map<AlarmKey, bool> waiting;
    std::set<std::pair<uint32_t, Mac>> twins; // ONUs with their ports, where one at another port has the same address
};

} // namespace ponsim
