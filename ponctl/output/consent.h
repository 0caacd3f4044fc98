// Whether a command line may do what affects service. Whoever sits at a terminal is asked, once a command line; a
// script says so with --yes. What affects service the catalogue says, by the class of each command.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "call/exchange.h"
#include "output/exit_code.h"

namespace ponctl
{

// Starts a command line: `given` where nobody is to be asked.
void start_consent(bool given);

// Asks whether to do it, unless this command line has consent already. A no is Refused, and so is nobody to ask.
void ask(const std::string &action);
// The same where an operation or a command of this name affects service.
void ask_before(std::string_view name, const std::string &action);

// What every call of the tool asks: this command line's consent, for a request that affects service. One with a command
// that the catalogue does not know does, unless it only asks for an answer. In a dry run it keeps all requests back.
call::Permission &consent();
// The requests that it kept back since they were last taken.
std::vector<Exchange> take_kept_requests();

} // namespace ponctl
