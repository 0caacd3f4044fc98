// The traffic of ONUs. Each ONU that is online offers frames at rates that never change; what a port has been offered
// follows from the rates and from how long they held, so that nothing has to happen in between.
#pragma once

#include <array>
#include <cstdint>

#include "model/clock.h"
#include "model/mac.h"

namespace ponsim
{

enum class Cast : uint8_t { unicast, multicast, broadcast };

// Frames of one length: all that an ONU offers is made of these.
struct Flow {
    uint32_t length; // octets, with the frame check sequence
    Cast cast;
};

inline constexpr std::array<Flow, 8> flows{{{64, Cast::unicast},
                                            {96, Cast::unicast},
                                            {192, Cast::unicast},
                                            {384, Cast::unicast},
                                            {768, Cast::unicast},
                                            {1518, Cast::unicast},
                                            {192, Cast::multicast},
                                            {64, Cast::broadcast}}};
using PerFlow = std::array<uint64_t, flows.size()>;

// Of the ONU, in frames a second. The ONUs of four full ports together stay below the rate of a GE port.
struct Rates {
    PerFlow up = {};
    PerFlow down = {};
};
Rates rates_of(uint64_t seed, const Mac &mac);

// What a PON port has been offered up to a time, in thousandths of frames.
struct Offered {
    ModelTime until = 0;
    PerFlow up = {};      // by its ONUs
    PerFlow up_lost = {}; // by its ONUs, too, while its uplink was down
    PerFlow down = {};    // by the network, for its ONUs

    bool operator==(const Offered &) const = default;
};

class Traffic
{
public:
    // What has been offered until then, which is not before it was last settled.
    Offered offered(ModelTime now) const;
    // To be called before what follows changes.
    void settle(ModelTime now) { settled = offered(now); }

    // An ONU comes online, or goes offline.
    void add(const Rates &rates);
    void remove(const Rates &rates);
    void set_uplink(bool up) { uplink_is_up = up; }
    void restore(const Offered &kept) { settled = kept; }

    uint32_t online() const { return onus; }
    // Of all its ONUs.
    const Rates &rates() const { return total; }

private:
    Offered settled;
    Rates total;
    uint32_t onus = 0;
    bool uplink_is_up = true;
};

} // namespace ponsim
