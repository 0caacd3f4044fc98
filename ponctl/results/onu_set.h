// This file runs commands for one remote ONU, or for many ONUs of a PON port.
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
    bool all = false;   // in place of the ids: all ids that are bound
    bool but_0 = false; // id 0 names no ONU here, and is refused
};

// Reads PORT/IDS, as in 1/3-17,20, 1/5 or 1/all. Throws a UsageError that starts with SET for anything else.
OnuSet parse_onu_set(const std::string &text);
std::string format_onu_set(const OnuSet &set);
// Returns the set that a command line names in place of a port, or nothing when it names a port. Throws a UsageError
// when it names an ONU beside a set.
std::optional<OnuSet> set_in_place_of(const std::string &port, const std::string &onu = {});
// Returns the set in the words of a question: "ONU 1/5", "ONUs 1/3-17".
std::string describe_onu_set(const OnuSet &set);

struct Onu {
    uint32_t port, id;

    std::string name() const { return std::to_string(port) + "/" + std::to_string(id); }
};

// An OnuCalls holds the calls for one ONU.
struct OnuCalls {
    std::string onu; // the name of the ONU
    std::deque<Invocation> calls;
};

// Looks up the ids that are bound at a port. There must be some.
ExitCode look_up_bound(uint32_t port, IdSet &ids);

// Calls operations for each ONU of the set in turn, whether or not the ones before it failed. Then shows what all of
// them delivered, and reports what failed: each call, and a summary when there are several ONUs. Returns the worst of
// their exit codes. `show` receives whether there are several. When there are several, standard error shows the
// progress if it is a terminal.
ExitCode for_each_onu(const OnuSet &set, const std::function<void(const Onu &, std::deque<Invocation> &)> &act,
                      const std::function<void(const std::deque<OnuCalls> &, bool several)> &show);

// Returns, for calls that deliver nothing, the function that shows their statuses when the format is one for programs.
std::function<void(const std::deque<OnuCalls> &, bool several)> statuses_on(const Output &output);

// Returns the arguments that name an ONU to an operation, and more arguments. Throws a UsageError when the operation
// has no argument for an ONU.
std::vector<std::string> onu_words(const catalogue::Operation &operation, const Onu &onu,
                                   const std::vector<std::string> &more = {});

// Calls one operation for each ONU of the set, and shows the rows of all their databases as one table.
ExitCode list_onus(const Output &output, const OnuSet &set, const char *operation);

// Calls one operation, which changes something, for each ONU of the set.
ExitCode tell_onus(const Output &output, const OnuSet &set, const char *operation,
                   const std::vector<std::string> &words = {});

} // namespace ponctl
