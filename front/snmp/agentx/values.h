// Answers what a master agent asks for: single values, and what is next in ranges of object identifiers.
#pragma once

#include "snmp/agentx/reader.h"
#include "snmp/agentx/writer.h"
#include "snmp/core/objects.h"

namespace front::snmp::agentx
{

// Writes the values that a Get, GetNext or GetBulk asks for. Returns false when there is no room for them. Throws
// Malformed.
bool write_values(Writer &writer, PduType type, Reader reader, const Objects &objects);

} // namespace front::snmp::agentx
