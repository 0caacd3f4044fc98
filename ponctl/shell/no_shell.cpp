// The board's edition has no shell, because it has no libedit, and nothing that completes command lines.
#include "cli/program.h"

namespace ponctl
{

void add_shell(Program &) {}
void add_complete(Program &) {}

} // namespace ponctl
