// The LightWatch says whether the light of ONUs is good, degraded or lost, and when that becomes different.
//
// The ONUs' records hold the decision. One process decides. It is due at once when light no longer is as the records
// say, whatever the cause, and otherwise in the second in which temperature or age change the light.
#pragma once

#include <cstdint>
#include <map>
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

    // Returns the weakness (see weakness() of light.h) of an ONU whose light is degraded, as it was when a row of the
    // ONU was last changed.
    uint32_t weakness(uint32_t pon_port, const Mac &mac) const;
    // Returns when light next differs from what the records say. Returns no time when that is more than a thousand
    // years away.
    std::optional<ModelTime> next() const;
    bool is_due(uint32_t pon_port, ModelTime now) const;

private:
    struct Port {
        std::map<Mac, uint32_t> weak; // ONUs whose light is degraded
        std::optional<ModelTime> next;
    };

    void look(const Olt &olt, const PonPort &port);

    std::vector<Port> ports;
};

// Makes the laser of an ONU that has arrived at the port older.
Plan age_onu(const Olt &olt, uint32_t pon_port, const Mac &mac, uint32_t hours);

// Makes the laser of an ONU that has arrived at the port stay on all the time, or work correctly again. While the light
// of such a laser reaches the port, the receiver is blinded: it hears none of the port's ONUs.
Plan set_rogue(const Olt &olt, uint32_t pon_port, const Mac &mac, bool rogue);

} // namespace ponsim
