// Whether a command line may do what affects service. Whoever sits at a terminal is asked, once a command line; a
// script says so with --yes. What affects service the catalogue says, by the class of each command.
#pragma once

#include <string>

#include "catalogue.h"

namespace ponctl
{

struct Exchange;

// Who makes an exchange.
struct Sender {
    std::string name;                                // for the question: "calling bsp_pon_exec_set"
    const catalogue::Record *record;                 // of the request
    const catalogue::Operation *operation = nullptr; // null: none of the library's
};

// Starts a command line: `given` where nobody is to be asked.
void start_consent(bool given);

// Asks whether to do it, unless this command line has consent already. A no is a UsageError, and so is nobody to ask.
void ask(const std::string &action);
// The same where an operation or a command of this name affects service.
void ask_before(std::string_view name, const std::string &action);
// The same where a request that is about to be sent affects service. One with a command that the catalogue does not
// know does, unless it only asks for an answer.
void ask_before(const Sender &sender, const Exchange &exchange);

} // namespace ponctl
