// This file sets the bandwidth of ONUs.
#pragma once

#include <array>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "call/invocation.h"
#include "results/onu_set.h"

namespace ponctl
{

// An Sla is what a command line wants of the bandwidth of an ONU. What is left out does not change.
struct Sla {
    std::string fixed, assured, maximum, priority, weight; // upstream
    std::string down;                                      // downstream maximum

    bool has_upstream() const { return !(fixed + assured + maximum + priority + weight).empty(); }
};

// Refuses values that no SLA can have. Errors name them as the command line does, in the order of the members.
void check_sla(const Sla &sla, const std::array<std::string_view, 6> &names);

inline constexpr const char *sla_up_get = "bsp_pon_onu_sla_get";
inline constexpr const char *sla_down_get = "bsp_pon_onu_sla_down_get";

// Returns the arguments that name an ONU to the operations that read its bandwidth.
std::vector<std::string> sla_place_of(const Onu &onu);

// Sets the parts that are given, and keeps the rest as it is. Returns whether all calls succeeded.
bool set_sla(const Onu &onu, const Sla &sla, std::deque<Invocation> &calls);
// Gives an ONU the default bandwidth again, upstream and downstream.
void clear_sla(const Onu &onu, std::deque<Invocation> &calls);

} // namespace ponctl
