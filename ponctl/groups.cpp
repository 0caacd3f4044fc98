// The commands of the program: which groups there are. A group is a file that adds it.
#include "cli/program.h"

// One line a group, in the order of the help.
#define GROUPS(group)                                                                                                  \
    group(ops) group(call) group(raw) group(trace) group(replay) group(idset) group(onu) group(port) group(arp)        \
        group(bulk) group(profile) group(loid) group(whitelist) group(blacklist) group(auth) group(alarm)              \
            group(optics) group(sla) group(p2p) group(fdb) group(upgrade) group(loop) group(config) group(debug)       \
                group(i2c) group(batch) group(shell)

namespace ponctl
{

#define DECLARE(name) void add_##name(Program &program);
GROUPS(DECLARE)
#undef DECLARE

std::span<const Group> groups()
{
#define ENTRY(name) add_##name,
    static constexpr Group all[]{GROUPS(ENTRY)};
#undef ENTRY
    return all;
}

} // namespace ponctl
