// A request is executed at an OLT by the calling thread, which the OLT's folder of sockets was chosen for.
#pragma once

#include <string>

#include "fleet/bridge/refusals.h"
#include "fleet/bridge/request.h"
#include "fleet/journal/journal.h"

namespace fleet
{

// Everything must outlive the call. The clients may be null: then what a client may do is said by how its requests
// come.
struct Executor {
    const ServedOlt &olt;
    Journal &journal;
    const Clients *clients;
    Refusals &refusals;
    const Notes &notes;
};

// Returns the answer, a line of protocol/message.h. Throws nothing that a request could be the reason of.
std::string execute(const Incoming &incoming, const Executor &by);

} // namespace fleet
