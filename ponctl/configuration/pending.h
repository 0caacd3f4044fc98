// This file keeps the configuration that an OLT had before another one was applied, until the new one is confirmed.
//
// The text lies in a file whose name says what becomes of it. Every step is one rename, so that of a confirmation and
// a rollback at the same time only one succeeds, whichever processes they come from.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace ponctl
{

class Pending
{
public:
    enum class State {
        none,
        waiting,
        confirmed,
        rolling_back, // or the rollback failed
        rolled_back
    };

    // The folder is that of one OLT.
    explicit Pending(std::filesystem::path of_olt) : folder(std::move(of_olt)) {}

    State state() const;
    // Keeps the text. Throws a UsageError when it cannot be written. The name of its guard differs from every other.
    void keep(std::string_view text, const std::string &guard) const;
    // Returns whether the text that waits is the one of this guard.
    bool waits_for(const std::string &guard) const;
    // Returns whether a configuration was waiting.
    bool confirm() const;
    // Returns the text to roll back to, or nothing when none is waiting. A rollback that failed can be taken again.
    std::optional<std::string> take() const;
    void end_rollback() const;

private:
    bool rename(State from, State to) const;
    std::filesystem::path file(State state) const;

    const std::filesystem::path folder;
};

} // namespace ponctl
