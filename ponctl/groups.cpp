// These are the groups of commands of groups.inc.
#include "cli/program.h"

namespace ponctl
{

#define GROUP(name) void add_##name(Program &program);
#include "groups.inc"
#undef GROUP

std::span<const Group> groups()
{
    static constexpr Group all[]{
#define GROUP(name) add_##name,
#include "groups.inc"
#undef GROUP
    };
    return all;
}

} // namespace ponctl
