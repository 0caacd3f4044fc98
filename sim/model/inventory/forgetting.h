// Ports remember ONUs, and what ONUs have, beyond the time in which the ONUs are there. That comes to an end here, so
// that no port has more records of ONUs than an OLT can be loaded with.
#pragma once

#include "model/change/change.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Returns the least key that a family can have for the ONU, or for the port.
template <class Key>
Key first_key(uint32_t pon_port, const Mac &mac = {})
{
    Key key{};
    key.pon_port = pon_port;
    key.mac = mac;
    return key;
}

// Forgets the records of a family that belong to the ONU.
template <class Record>
void forget(const Olt &olt, const OnuAtPort &onu, Change &change)
{
    const auto &records = olt.kept<Record>();
    for (auto at = records.lower_bound(first_key<typename Family<Record>::Key>(onu.pon_port, onu.mac));
         at != records.end() && at->first.pon_port == onu.pon_port && at->first.mac == onu.mac; ++at)
        change.drop<Record>(at->first);
}

// Returns whether the port was found with the ONU. What was found is there unless it is remembered that it has gone.
bool is_found(const Olt &olt, const OnuAtPort &onu);

// Forgets what an ONU itself has that is neither bound nor there: it went with the ONU.
void forget_own(const Olt &olt, const OnuAtPort &onu, Change &change);

// Adds to a change what is forgotten by it. An ONU that is released and not there goes with all that it has. Where a
// port would have more records of a family than it can have, records of ONUs make room that are neither bound nor
// there, and alarms that were cleared; those that have been like this longest go first, as far as that is known. So a
// change that happens by itself never has to be refused.
void add_forgotten(const Olt &olt, Change &change);

} // namespace ponsim
