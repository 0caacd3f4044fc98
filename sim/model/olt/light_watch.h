// Whether the light of ONUs is good, degraded or lost, and when that becomes different.
//
// What is so stands in the ONUs' records. It is decided by one process, which is due at once when light is no longer as
// the records say, whatever brought that about, and else in the second in which temperature or age make it so.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "model/olt/change.h"
#include "model/olt/plan.h"

namespace ponsim
{

class Olt;
struct PonPort;

class LightWatch
{
public:
    void start(const Olt &olt);
    // After what the change says has been done.
    void follow(const Olt &olt, const Change &change);

    // Of an ONU whose light is degraded: see weakness() of light.h. As it was when a row of the ONU was changed last.
    uint32_t weakness(uint32_t pon_port, const Mac &mac) const;
    // When light is next different from what the records say; none in a thousand years.
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

// The laser of an ONU that has arrived at the port does not go off any more, or works as it should again. While its
// light reaches the port, the receiver is blinded: it hears none of the port's ONUs.
Plan set_rogue(const Olt &olt, uint32_t pon_port, const Mac &mac, bool rogue);

} // namespace ponsim
