// The board's edition has no shell, because it has no libedit.
#include "cli/program.h"

namespace ponctl
{

void add_shell(Program &) {}

} // namespace ponctl
