// Commands for one remote ONU or for many of a PON port.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "call/invocation.h"
#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

struct OnuSet {
    uint32_t port = 0;
    IdSet ids{};
    bool all = false;   // in place of the ids: those that are bound
    bool but_0 = false; // where id 0 names no ONU: it is refused
};

// PORT/IDS as 1/3-17,20, 1/5 or 1/all. A UsageError that starts with SET where it is anything else.
OnuSet parse_onu_set(const std::string &text);
std::string format_onu_set(const OnuSet &set);
// The set that a command line names in place of a port; nothing where it names a port. A UsageError where it names an
// ONU beside a set.
std::optional<OnuSet> set_in_place_of(const std::string &port, const std::string &onu = {});
// For a question: "ONU 1/5", "ONUs 1/3-17".
std::string describe_onu_set(const OnuSet &set);

struct Onu {
    uint32_t port, id;

    std::string name() const { return std::to_string(port) + "/" + std::to_string(id); }
};

// What was called for one ONU.
struct OnuCalls {
    std::string onu; // its name
    std::deque<Invocation> calls;
};

// Calls operations for each ONU of the set in turn, whether or not those before it failed, then shows what all of them
// delivered and says what failed: each call, and for several ONUs a summary. The worst of them is the exit code. `show`
// is told whether they are several. While there are several, a terminal at standard error shows how far it is.
ExitCode for_each_onu(const OnuSet &set, const std::function<void(const Onu &, std::deque<Invocation> &)> &act,
                      const std::function<void(const std::deque<OnuCalls> &, bool several)> &show);

// For calls that deliver nothing: what shows their statuses where the format is one for programs.
std::function<void(const std::deque<OnuCalls> &, bool several)> statuses_on(const Output &output);

// The arguments that name an ONU to an operation, and more. A UsageError where the operation has none for that.
std::vector<std::string> onu_words(const catalogue::Operation &operation, const Onu &onu,
                                   const std::vector<std::string> &more = {});

// Calls one operation for each ONU of the set, and shows the rows of all their databases as one.
ExitCode list_onus(const Output &output, const OnuSet &set, const char *operation);

// Calls one operation for each ONU of the set.
ExitCode tell_onus(const Output &output, const OnuSet &set, const char *operation,
                   const std::vector<std::string> &words = {});

} // namespace ponctl
