// These functions are what the blacklist commands do to the OLT. The blacklist of a port concerns that port alone.
#pragma once

#include <string>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Puts an ONU on the blacklist, at the lowest free id as lowest_free() finds it. When the ONU is bound at the port, it
// is released. When it is already on the list, the text is replaced.
Plan add_to_blacklist(const Olt &olt, uint32_t pon_port, const Mac &mac, const std::string &text);

// Puts the ONU that is bound to an id on the blacklist.
Plan reject_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id);

// Puts the ONUs of all ids on the blacklist or, when an id is not bound or the list has too little room, none.
Plan reject_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);

// Takes an ONU off the blacklist. The ONU registers if it is on the fibre.
Plan remove_from_blacklist(const Olt &olt, uint32_t pon_port, const Mac &mac);

// Takes off the entries of all ids or, when one of the ids has no entry, none.
Plan remove_from_blacklist(const Olt &olt, uint32_t pon_port, const OnuIds &ids);

} // namespace ponsim
