// This file reports exchanges on standard error.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "call/invocation.h"
#include "output/exit_code.h"

namespace ponctl
{

// Writes "ponctl: MESSAGE" on standard error. The message says what went wrong.
void complain(const std::string &message);
// Writes a message that is only useful to know. Writes nothing when the tool is quiet, and does not repeat it with each
// of many readings.
void note(const std::string &message);

// Returns a status word in words: "4003 PON_ERR_NO_PORT: the OLT has no such PON port".
std::string describe_status(uint32_t status);

// Returns the exit code of a call. Unless all is good, writes one line on standard error first, which starts with
// `subject`.
ExitCode report(const Invocation &called, const std::string &subject = {});

// Returns the exit code for what is wrong with what the service delivered, and reports it on standard error. The fault
// is empty when nothing is wrong.
ExitCode report_fault(std::string_view name, const std::string &fault);

// Refuses to continue in a dry run, because a dry run has no answer from which further requests can be made.
void expect_answer(const Invocation &called);

// Returns the exit code of an exchange. Writes one line on standard error first when the exchange failed or its status
// is not zero. The status of the service counts, even when `status`, which the operation returned, is zero.
ExitCode report_exchange(std::string_view name, const Exchange &exchange, uint32_t status);

} // namespace ponctl
