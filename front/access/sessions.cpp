#include "access/sessions.h"

#include <algorithm>

#include "access/secrets.h"

namespace front
{

std::string Sessions::begin(const User &user)
{
    const std::string name = new_token();
    const int64_t now = clock();
    const std::lock_guard lock(guard);
    if (sessions.size() >= most)
        sessions.erase(std::ranges::min_element(sessions, {}, [](const auto &entry) { return entry.second.used; }));
    sessions[hash_of_token(name)] = {user.name, user.password, new_token(), now, now};
    return name;
}

std::optional<Session> Sessions::find(const std::string &name)
{
    const std::string hash = hash_of_token(name);
    const int64_t now = clock();
    const std::lock_guard lock(guard);
    const auto found = sessions.find(hash);
    if (found == sessions.end()) return std::nullopt;
    Session &session = found->second;
    if (now - session.begun > longest || now - session.used > longest_idle) {
        sessions.erase(found);
        return std::nullopt;
    }
    session.used = now;
    return session;
}

void Sessions::end(const std::string &name)
{
    const std::lock_guard lock(guard);
    sessions.erase(hash_of_token(name));
}

} // namespace front
