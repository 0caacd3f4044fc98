// What the tool says of an exchange on standard error.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "call/invocation.h"
#include "output/exit_code.h"

namespace ponctl
{

// "ponctl: MESSAGE" on standard error: what went wrong.
void complain(const std::string &message);
// The same of what is only good to know. Not where the tool is to be quiet, nor again with each of many readings.
void note(const std::string &message);

// A status word in words: "4003 PON_ERR_NO_PORT: the OLT has no such PON port".
std::string describe_status(uint32_t status);

// The exit code of a call, after one line on standard error unless all is good, which starts with `subject`.
ExitCode report(const Invocation &called, const std::string &subject = {});

// Refuses to go on in a dry run, which has no answer to make further requests of.
void expect_answer(const Invocation &called);

// The exit code of an exchange, after one line on standard error where it failed or its status is not zero, be it only
// the service's and not `status`, the one that the operation returned.
ExitCode report_exchange(std::string_view name, const Exchange &exchange, uint32_t status);

} // namespace ponctl
