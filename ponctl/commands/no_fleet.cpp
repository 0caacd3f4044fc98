// The board's edition has no commands of a fleet, because it has no libmosquitto.
#include "cli/program.h"

namespace ponctl
{

void add_fleet(Program &) {}

} // namespace ponctl
