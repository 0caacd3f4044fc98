// The fleet of whoever runs the tool.
#pragma once

#include <string>

#include "fleet/client/client.h"

namespace ponctl
{

// Returns how the fleet is reached. `given` is a file, or empty for the user's own. Throws a UsageError that says what
// is wrong with the file, or what it should have.
fleet::Settings fleet_settings(const std::string &given);

// Connects a client, and says what is wrong with what others told the broker. Throws NotReached.
void connect(fleet::Client &client);

} // namespace ponctl
