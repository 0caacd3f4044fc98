#include "fleet/rollout/result.h"

#include <algorithm>
#include <array>

namespace fleet
{
namespace
{

constexpr std::array<std::string_view, number_of_states> names{"done", "failed", "unknown", "unreachable", "refused"};

} // namespace

std::string_view name_of(State state)
{
    return names[static_cast<size_t>(state)];
}

std::optional<State> state_named(std::string_view name)
{
    const auto found = std::ranges::find(names, name);
    return found == names.end() ? std::nullopt : std::optional(static_cast<State>(found - names.begin()));
}

bool is_final(State state)
{
    return state == State::done || state == State::failed;
}

} // namespace fleet
