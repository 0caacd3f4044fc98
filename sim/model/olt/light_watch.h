// The LightWatch says whether the light of ONUs is good, weak, lost or too strong, in both directions, and when that
// becomes different. It also says when links fail because of it.
//
// The ONUs' records hold the decision. One process decides. It is due at once when light no longer is as the records
// say, whatever the cause, and otherwise in the second in which temperature or age change the light.
//
// Each ONU has times of its own, which are found anew when its record changes. What concerns all ONUs of a port is
// looked at once for the port: its own light, and whether a rogue ONU blinds it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/base/due_times.h"
#include "model/change/change.h"
#include "model/change/plan.h"
#include "model/plant/onu_laser.h"
#include "model/plant/reception.h"

namespace ponsim
{

class Olt;
struct PonPort;

class LightWatch
{
public:
    void start(const Olt &olt);
    // Call this after the OLT has made the change.
    void follow(const Olt &olt, const Change &change);

    // Returns when light next differs from what the records say. Returns no time when that is more than a thousand
    // years away.
    std::optional<ModelTime> next() const;
    // Returns whether that time has come for the port.
    bool is_due(uint32_t pon_port, ModelTime now) const;
    // Returns the ONUs of the port that are to be looked at then, by their places among the arrivals, in ascending
    // order.
    std::vector<size_t> due(uint32_t pon_port, ModelTime now) const;
    // Returns whether an ONU that sends all the time blinds the port.
    bool is_blinded(const Olt &olt, const PonPort &port) const;

    // Returns when the first link fails. See time_out_of() of standing.h.
    std::optional<ModelTime> next_time_out() const;
    // Returns the ONUs of the port whose links fail, in the same way.
    std::vector<size_t> timed_out(uint32_t pon_port, ModelTime now) const;

private:
    // A Path leads the light of one direction to its receiver. It changes only with the port's fibre, module and
    // parameters.
    struct Path {
        int32_t loss;
        Levels levels;
    };
    struct Onu {
        OnuLaser laser;
        Path up;
        Path down;
        Range launch = {};   // the launch power of the port with which the ONU receives as it does
        bool shines = false; // without being asked to
    };
    struct Port {
        std::vector<Onu> onus; // by arrival
        DueTimes changes;      // of their light
        DueTimes time_outs;    // of their links
        bool blinded = false;
        std::optional<ModelTime> all_at = {}; // when all ONUs are to be looked at
    };

    // Looks at a port at which there are other ONUs than before.
    void meet(const Olt &olt, const PonPort &port);
    // Looks at a port and all of its ONUs.
    void look(const Olt &olt, const PonPort &port);
    // Looks at one ONU. Returns whether what concerns all ONUs of the port may be different.
    bool look(const Olt &olt, const PonPort &port, size_t arrival);
    // Looks at what concerns all ONUs of the port.
    void look_at_port(const Olt &olt, const PonPort &port);
    static std::optional<ModelTime> first_change_upstream(const Onu &onu, const OnuRecord &record, bool blinded,
                                                          ModelTime now);

    std::vector<Port> ports;
};

// Makes the laser of an ONU that has arrived at the port older.
Plan age_onu(const Olt &olt, uint32_t pon_port, const Mac &mac, uint32_t hours);

// Makes the laser of an ONU that has arrived at the port stay on all the time, or work correctly again. While the light
// of such a laser reaches the port, the receiver is blinded: it hears none of the port's ONUs.
Plan set_rogue(const Olt &olt, uint32_t pon_port, const Mac &mac, bool rogue);

} // namespace ponsim
