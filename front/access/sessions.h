// Sessions of users that have logged in. They are in memory only: a restart ends all of them.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "access/users.h"

namespace front
{

// Times are milliseconds of a clock that never goes back.
using SteadyClock = std::function<int64_t()>;

struct Session {
    std::string user;
    std::string password; // by which the user was recognised at log-in; another one ends the session
    std::string token;    // that every change must name, and that no other site knows
    int64_t begun = 0, used = 0;
};

class Sessions
{
public:
    static constexpr int64_t longest = 12 * 3600 * 1000, longest_idle = 30 * 60 * 1000;
    static constexpr size_t most = 4096; // beyond that the one that was used least lately ends

    explicit Sessions(SteadyClock clock_of_sessions) : clock(std::move(clock_of_sessions)) {}

    // Returns the name of a new session, which only its browser knows.
    std::string begin(const User &user);
    // Returns a session that has not ended, and takes note that it is used.
    std::optional<Session> find(const std::string &name);
    void end(const std::string &name);

private:
    const SteadyClock clock;
    std::mutex guard;
    std::map<std::string, Session> sessions; // by the hash of the name
};

} // namespace front
