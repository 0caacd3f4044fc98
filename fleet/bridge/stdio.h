// One OLT is served over two descriptors, by the lines of protocol/frame.h.
#pragma once

#include <string>

#include "fleet/bridge/request.h"
#include "fleet/protocol/frame.h"

namespace fleet
{

struct StdioSettings {
    ServedOlt olt;
    Hello hello;        // what is said first
    std::string client; // who asks
    Notes notes;
};

// Answers the requests that come, until their end. Throws std::runtime_error when a line cannot be read, or is none of
// requests: what was begun before that has ended then.
void serve_lines(int input, int output, const StdioSettings &settings);

} // namespace fleet
