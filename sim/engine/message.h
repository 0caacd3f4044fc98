// A Message is a request as it came, and a Reply is the answer.
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
    uint32_t user = 0; // who sends it
};

bool is_get(const Message &message);
// Returns whether the message asks for something, by a command of the catalogue that only reads.
bool only_reads(const Message &message);

// Returns the channel whose commands a message carries. This is its own channel, or that of the PON settings, which
// also come by the platform channel as records of the PON settings' channel.
uint32_t command_channel(const Message &message);

// Returns the command code of a message. Returns none when its channel or record carries no code.
std::optional<uint32_t> command_of(const Message &message);

struct Reply {
    uint32_t status;
    bool understood = false;                // the command is known, and a get call has an answer
    std::optional<std::string> result = {}; // goes out under the command code
    std::optional<std::string> answer = {}; // the answer's bytes; none: those of the request's record
    std::string problem = {};               // for the service's log
    std::optional<ResultFile> file = {};
};

} // namespace ponsim
