// The board's edition reaches only its own OLT, because it has no libmosquitto.
#include "output/exit_code.h"
#include "reach/many.h"
#include "reach/one.h"

namespace ponctl
{
namespace
{

[[noreturn]] void refuse()
{
    throw UsageError("--olt: this edition reaches only the OLT that it runs on");
}

} // namespace

class OneOlt::Reached
{
};

OneOlt::OneOlt(const FleetOptions &, const FleetRequests &)
{
    refuse();
}

OneOlt::~OneOlt() = default;

bool is_one_olt(const FleetOptions &)
{
    return true;
}

int run_on_many(const FleetOptions &, const FleetRequests &, const ManyRun &, const Output &)
{
    refuse();
}

} // namespace ponctl
