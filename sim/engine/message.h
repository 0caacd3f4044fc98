// A request as it came, and what is answered.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "catalogue.h"
#include "handlers/handler.h"

namespace ponsim
{

struct Message {
    uint32_t channel;
    const void *data;
    uint32_t length;
    catalogue::Call call = catalogue::Call::get;
};

bool is_get(const Message &message);

// The channel whose commands a message carries: its own; or that of the PON settings, which come by the platform
// channel, too, as records of theirs.
uint32_t command_channel(const Message &message);

// The command code of a message; none where its channel or record carries none.
std::optional<uint32_t> command_of(const Message &message);

struct Reply {
    uint32_t status;
    bool understood = false;                // the command is known: a get call has an answer
    std::optional<std::string> result = {}; // goes out under the command code
    std::optional<std::string> answer = {}; // the answer's bytes; else those of the request's record
    std::string problem = {};               // for the service's log
    std::optional<ResultFile> file = {};
};

} // namespace ponsim
