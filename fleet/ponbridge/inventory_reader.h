// What the inventory of an OLT says, as the OLT tells it.
#pragma once

#include <string>

#include "fleet/selection/inventory.h"

namespace fleet
{

// Asks the OLT that the calls of this thread go to, in one exchange, and fills in what it tells: whether it answers,
// its model, firmware, ports and ONUs. Returns why it cannot be read, or an empty text.
std::string read_inventory(Inventory &inventory);

// Returns a digest of all operations, commands and their codes, by which bridges of another version are found.
const std::string &catalogue_digest();

} // namespace fleet
