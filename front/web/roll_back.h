// An OLT gets a configuration of which everything is decided already.
#pragma once

#include <string>

namespace front
{

// Loads the text into the OLT of the calling thread. Returns what went wrong, or an empty text.
std::string load_configuration(const std::string &text);

} // namespace front
