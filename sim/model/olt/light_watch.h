// The LightWatch says whether the light of ONUs is good, weak, lost or too strong, in both directions, and when that
// becomes different. It also says when links fail because of it.
//
// The ONUs' records hold the decision. One process decides. It is due at once when light no longer is as the records
// say, whatever the cause, and otherwise in the second in which temperature or age change the light.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/change/change.h"
#include "model/change/plan.h"

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
    std::optional<ModelTime> next() const { return first_of(&Port::next); }
    bool is_due(uint32_t pon_port, ModelTime now) const { return is_due(pon_port, &Port::next, now); }
    // Returns when the first link fails. See time_out_of() of standing.h.
    std::optional<ModelTime> next_time_out() const { return first_of(&Port::time_out); }
    bool times_out(uint32_t pon_port, ModelTime now) const { return is_due(pon_port, &Port::time_out, now); }

private:
    struct Port {
        std::optional<ModelTime> next;
        std::optional<ModelTime> time_out;
    };
    using Time = std::optional<ModelTime> Port::*;

    std::optional<ModelTime> first_of(Time time) const;
    bool is_due(uint32_t pon_port, Time time, ModelTime now) const;
    void look(const Olt &olt, const PonPort &port);

    std::vector<Port> ports;
};

// Makes the laser of an ONU that has arrived at the port older.
Plan age_onu(const Olt &olt, uint32_t pon_port, const Mac &mac, uint32_t hours);

// Makes the laser of an ONU that has arrived at the port stay on all the time, or work correctly again. While the light
// of such a laser reaches the port, the receiver is blinded: it hears none of the port's ONUs.
Plan set_rogue(const Olt &olt, uint32_t pon_port, const Mac &mac, bool rogue);

} // namespace ponsim
