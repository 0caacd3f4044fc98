// How the tables are read that ports of the OLT are asked for one by one, or addresses page by page.
#pragma once

#include "collector/snapshot.h"

namespace front
{

// Each throws a Fault.

Rows<PortCounters> read_counters(const Snapshot &snapshot);
Rows<ModuleQuantity> read_modules(const Snapshot &snapshot);
Rows<Uplink> read_uplinks(const Snapshot &snapshot);
Rows<PortMpcp> read_mpcp(const Snapshot &snapshot);
Rows<Station> read_stations(const Snapshot &snapshot);

} // namespace front
