// Of what is refused to a client, only some is noted each minute, so that nobody pushes out of a log what others did.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace fleet
{

class Refusals
{
public:
    // Returns whether one more refusal of the client is to be noted. Any thread may call it.
    bool take(const std::string &client);

private:
    std::mutex guard;
    std::chrono::steady_clock::time_point begin; // of the minute
    std::map<std::string, uint32_t> taken;       // in this minute
};

} // namespace fleet
