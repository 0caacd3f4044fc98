// This is the caller's side of the control module.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#include "model/base/time.h"

namespace ponsim
{

// This error says that no ponsim serves in the folder of sockets.
class NoServiceError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Sends a line to the ponsim in the calling thread's folder of sockets, and returns its answer. Throws ControlError
// when ponsim refuses the line, NoServiceError, and std::runtime_error when ponsim cannot be reached.
std::string send_control(const std::string &line);

// As above for a line that orders a step of this length. Waits for its end as long as it takes. When standard error is
// a terminal, a line there shows meanwhile how much of the step has passed.
std::string send_step(const std::string &line, ModelTime length);

// Prints the events of alarms after the number `since` or, without a number, all that the history has. With `follow`,
// goes on with those that come, until the program is interrupted or ponsim ends. ponsim keeps nothing for whoever
// follows: it is asked again and again, and says which events its history has lost meanwhile. Throws as send_control()
// does.
void print_events(std::optional<uint64_t> since, bool follow);

// Returns the model time that ponsim tells in its answer to `now`.
ModelTime time_told(const std::string &answer);

} // namespace ponsim
