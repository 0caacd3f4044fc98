// A Link carries a request to one OLT and brings its answer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "catalogue.h"

namespace fleet
{

class Link
{
public:
    virtual ~Link() = default;
    // Sends the request, a line of message.h, as one of this class. Returns the answer, or nothing when there was none
    // within `milliseconds`: whether the request was executed is unknown then. Throws a call::Error when it cannot be
    // sent; nothing was done then.
    virtual std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                                uint32_t milliseconds) = 0;
};

} // namespace fleet
