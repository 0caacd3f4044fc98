#include "fleet/bridge/refusals.h"

namespace fleet
{
namespace
{

constexpr uint32_t most_a_minute = 16;
constexpr size_t most_clients = 1024;

} // namespace

bool Refusals::take(const std::string &client)
{
    const auto now = std::chrono::steady_clock::now();
    const std::lock_guard lock(guard);
    if (now - begin >= std::chrono::minutes(1)) {
        taken.clear();
        begin = now;
    }
    if (taken.size() >= most_clients && !taken.contains(client)) return false;
    return ++taken[client] <= most_a_minute;
}

} // namespace fleet
