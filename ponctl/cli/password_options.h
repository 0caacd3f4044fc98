// This file has the options of commands that take a password.
#pragma once

#include <string>

#include "cli/program.h"
#include "results/secret.h"

namespace ponctl
{

// Adds --password and --password-file. `what` says whose password it is.
void add_password(Command &command, Secret &secret, const std::string &what);

} // namespace ponctl
