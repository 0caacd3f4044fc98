// This file makes a session in which every command occurs.
#pragma once

#include <string>
#include <vector>

// Sends each command of the catalogue with a few words in its record, and returns what came back for each.
std::vector<std::string> send_every_command();
