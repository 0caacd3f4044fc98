#include "web/pending.h"

#include <algorithm>
#include <chrono>
#include <vector>

#include "collector/clock.h"

namespace front
{

using State = PendingConfigurations::State;

PendingConfigurations::PendingConfigurations(RollBack rolls_back) : roll_back(std::move(rolls_back))
{
    thread = std::thread([this] { run(); });
}

PendingConfigurations::~PendingConfigurations()
{
    {
        const std::lock_guard lock(guard);
        stopping = true;
    }
    changed.notify_all();
    thread.join();
}

PendingConfigurations::Pending PendingConfigurations::of(const std::string &olt) const
{
    const std::lock_guard lock(guard);
    const auto found = all.find(olt);
    return found == all.end() ? Pending() : found->second;
}

bool PendingConfigurations::keep(const std::string &olt, Pending pending)
{
    const std::lock_guard lock(guard);
    Pending &kept = all[olt];
    if (kept.state == State::waiting || kept.state == State::rolling_back) return false;
    kept = std::move(pending);
    kept.state = State::waiting;
    changed.notify_all();
    return true;
}

bool PendingConfigurations::confirm(const std::string &olt)
{
    const std::lock_guard lock(guard);
    const auto found = all.find(olt);
    if (found == all.end() || found->second.state != State::waiting) return false;
    all.erase(found);
    return true;
}

std::optional<std::string> PendingConfigurations::take(const std::string &olt)
{
    const std::lock_guard lock(guard);
    const auto found = all.find(olt);
    if (found == all.end() || (found->second.state != State::waiting && found->second.state != State::failed))
        return std::nullopt;
    found->second.state = State::rolling_back;
    return found->second.before;
}

void PendingConfigurations::end(const std::string &olt, bool success)
{
    const std::lock_guard lock(guard);
    Pending &pending = all[olt];
    pending.state = success ? State::rolled_back : State::failed;
    if (success) pending.before.clear();
}

void PendingConfigurations::run()
{
    std::unique_lock lock(guard);
    while (true) {
        std::vector<std::string> due;
        int64_t next = INT64_MAX;
        for (const auto &[olt, pending] : all) {
            if (pending.state != State::waiting) continue;
            if (stopping || pending.ends <= steady_time_now())
                due.push_back(olt);
            else
                next = std::min(next, pending.ends);
        }
        lock.unlock();
        for (const std::string &olt : due)
            roll_back(olt);
        lock.lock();
        if (!due.empty()) continue;
        if (stopping) return;
        if (next == INT64_MAX)
            changed.wait(lock);
        else
            changed.wait_for(lock, std::chrono::milliseconds(std::max<int64_t>(1, next - steady_time_now())));
    }
}

std::string_view name_of(State state)
{
    switch (state) {
    case State::none:
        break;
    case State::waiting:
        return "waiting";
    case State::rolling_back:
        return "rolling_back";
    case State::rolled_back:
        return "rolled_back";
    case State::failed:
        return "failed";
    }
    return "none";
}

} // namespace front
