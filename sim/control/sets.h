// Commands name ports, ONUs, branches and UNI ports as sets, in one grammar. A set is one element or several that are
// separated by commas.
//
//   ports     a number, a range such as 1-4, or all
//   ONUs      a name; all; a pattern of names such as a-*; @BRANCH, which stands for the ONUs beyond a branch; an ONU
//   id
//             that is bound or a range of such ids, with id: before it where a name would look the same; a MAC address
//   branches  a name; all; a pattern of names; or an ONU, whose own fibre is meant
//   UNIs      a number, a range, or all that the ONU has
//
// What comes first in this list holds: an ONU that is called 1-3 is meant by 1-3, and id:1-3 are ids. `*` is another
// word for all. Every element must select something at one of the ports at least. An ONU that was taken away is at its
// port no more, although its link may not have failed yet.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "control/control.h"

namespace ponsim
{

using Ports = std::vector<const PonPort *>;

// Each function throws ControlError when an element makes no sense, or selects nothing.
Ports control_ports(const Olt &olt, const std::string &word);
std::vector<OnuAtPort> control_onus(const Ports &ports, const std::string &word);
std::vector<BranchKey> control_branches(const Ports &ports, const std::string &word);
// Returns the numbers in ascending order. `all` stands for all from `least` to `greatest`.
std::vector<uint32_t> control_numbers(const std::string &word, uint32_t least, uint32_t greatest);
std::vector<UniKey> control_unis(const Olt &olt, const std::vector<OnuAtPort> &onus, const std::string &word);

// Returns whether the ONU is beyond the branch.
bool is_beyond(const PonPort &port, const Arrival &arrival, uint32_t branch);

// These write for people what is meant.
std::string text_of(const Olt &olt, const OnuAtPort &onu);
std::string text_of(const Olt &olt, const UniKey &uni);
std::string text_of(const Olt &olt, const BranchKey &branch);
std::string text_of(const Olt &olt, uint32_t number);

void add(Change &change, const Change &more);

// Plans something for each target of a set, or for none. When one is refused, the plan says which one it is.
template <class Target>
Plan plan_each(const Olt &olt, const std::vector<Target> &targets,
               const std::function<Plan(const Olt &, const Target &)> &plan_one);

} // namespace ponsim
