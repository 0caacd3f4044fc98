// This file prints exchanges as results: requests that were not sent, and the ending of a command that delivers
// nothing.
#pragma once

#include <span>
#include <string>

#include "call/exchange.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// Prints requests that were not sent, below a text that says what they would change: the call and the channel, and the
// record. In JSON each has the ONUs that it hits. In hexadecimal, the bytes of the records are printed alone.
void print_requests(const Output &output, std::span<const KeptRequest> requests, const std::string &changes);

// Prints as a JSON object how a command ended that has no result.
void print_ending(const Output &output, const Exchange &last, int exit_code);

} // namespace ponctl
