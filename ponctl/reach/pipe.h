// What a worker and its parent say to each other over a pair of sockets.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ponctl
{

enum class Said : uint32_t {
    request,  // of a worker: a request for its OLT, with class and time
    answer,   // to it
    silence,  // to it: no answer came
    failure,  // to it: it cannot be sent; the text says why
    question, // of a worker: what would be hit, a NUL, and what is to be done
    consent,  // to it
    refusal,  // to it
    end,      // of a worker: how sure it is what became of its requests, and why
};

struct Saying {
    Said kind = Said::end;
    uint32_t number = 0;       // the class of a request, or the certainty at the end
    uint32_t milliseconds = 0; // of a request
    std::string text;
};

// Returns false when nobody is at the other end.
bool say(int socket, const Saying &saying);
// Waits for it. Returns nothing when nobody is at the other end.
std::optional<Saying> listen_to(int socket);

} // namespace ponctl
