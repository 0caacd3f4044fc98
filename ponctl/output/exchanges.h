// Exchanges as results: requests that were not sent, and how a command ended that delivers nothing.
#pragma once

#include <span>

#include "call/exchange.h"
#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// Requests that were not sent: which call on which channel, the record, and its bytes.
void print_requests(const Output &output, std::span<const Exchange> requests);

// How a command ended that has no result: as a JSON object.
void print_ending(const Output &output, const Exchange &last, int exit_code);

} // namespace ponctl
