#include "configuration/pending.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include <unistd.h>

#include "configuration/new_file.h"
#include "output/exit_code.h"

namespace ponctl
{

namespace fs = std::filesystem;

fs::path Pending::file(State state) const
{
    constexpr std::array<const char *, 5> names{"", "waiting", "confirmed", "rolling-back", "rolled-back"};
    return folder / names[static_cast<size_t>(state)];
}

Pending::State Pending::state() const
{
    std::error_code none;
    // In this order, so that a rename between two looks is not missed.
    for (const State state : {State::waiting, State::rolling_back, State::confirmed, State::rolled_back})
        if (fs::exists(file(state), none)) return state;
    return State::none;
}

void Pending::keep(std::string_view text, const std::string &guard) const
{
    std::error_code error;
    fs::create_directories(folder, error);
    fs::permissions(folder, fs::perms::owner_all, error);
    for (const State state : {State::confirmed, State::rolled_back, State::rolling_back})
        fs::remove(file(state), error);
    std::string problem = replace_file((folder / "guard").string(), guard);
    if (problem.empty()) problem = replace_file(file(State::waiting).string(), text);
    if (!problem.empty()) throw UsageError("--confirm: " + problem);
}

bool Pending::waits_for(const std::string &guard) const
{
    std::ifstream in(folder / "guard");
    return std::string{std::istreambuf_iterator<char>(in), {}} == guard && state() == State::waiting;
}

bool Pending::rename(State from, State to) const
{
    return std::rename(file(from).c_str(), file(to).c_str()) == 0;
}

bool Pending::confirm() const
{
    if (!rename(State::waiting, State::confirmed)) return false;
    // The text has passwords, and nobody needs it any more.
    return truncate(file(State::confirmed).c_str(), 0) == 0;
}

std::optional<std::string> Pending::take() const
{
    if (!rename(State::waiting, State::rolling_back) && state() != State::rolling_back) return std::nullopt;
    std::ifstream in(file(State::rolling_back));
    return std::string{std::istreambuf_iterator<char>(in), {}};
}

void Pending::end_rollback() const
{
    rename(State::rolling_back, State::rolled_back);
    [[maybe_unused]] const int ignored = truncate(file(State::rolled_back).c_str(), 0);
}

} // namespace ponctl
