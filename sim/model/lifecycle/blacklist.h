// What the black-list commands do to the OLT. The black list of a port concerns that port alone.
#pragma once

#include <string>

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

// Puts an ONU on the black list, on the lowest free id as in lowest_free(); where it is bound at the port, it is
// released. For one that is on it already, the text is replaced.
Plan add_to_blacklist(const Olt &olt, uint32_t pon_port, const Mac &mac, const std::string &text);

// The ONU that is bound to an id.
Plan reject_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id);

// All of the ONUs bound to the ids or, where an id is not bound or the list has too little room, none.
Plan reject_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);

// Takes an ONU off the black list. It registers where it is on the fibre.
Plan remove_from_blacklist(const Olt &olt, uint32_t pon_port, const Mac &mac);

// All of the entries or, where there is none of an id, none.
Plan remove_from_blacklist(const Olt &olt, uint32_t pon_port, const OnuIds &ids);

} // namespace ponsim
