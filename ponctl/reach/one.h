// One OLT that is reached over a fleet's broker, or over ssh. A command line does there what it does locally.
#pragma once

#include <memory>

#include "reach/options.h"

namespace ponctl
{

// While an OneOlt lives, the requests of the thread go to the OLT.
class OneOlt
{
public:
    // Throws an Error that says why the OLT is not reached.
    OneOlt(const FleetOptions &options, const FleetRequests &requests);
    ~OneOlt();
    OneOlt(const OneOlt &) = delete;
    OneOlt &operator=(const OneOlt &) = delete;

private:
    class Reached;
    std::unique_ptr<Reached> reached;
};

} // namespace ponctl
