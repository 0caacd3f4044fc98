// The configuration that an OLT has, and how it gets another one.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "call/invocation.h"
#include "configuration/difference.h"

namespace config
{

// Asks the OLT for the text of its configuration.
Invocation read_from_olt(Permission &permission);
// Returns the text that was delivered. It lives as long as the invocation.
std::string_view text_in(const Invocation &called);

// Has the OLT become the one of this text, in several calls. `told` hears of each how it went, and whether it was the
// last; a call that was not good ends it.
void load_into_olt(const std::string &text, Permission &permission,
                   const std::function<void(const Invocation &sent, bool last)> &told);

// Returns what the OLT is to have when it gets a configuration. The ONUs are asked about only where it is about some.
Fitted fitted_to_olt(const Configuration &own, const Configuration &wanted, Permission &permission);

} // namespace config
