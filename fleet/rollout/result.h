// A Result is what a command came to at one OLT.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace fleet
{

enum class State : uint8_t {
    done,        // it ended with exit code 0
    failed,      // it ended with another one
    unknown,     // it was sent, and nobody knows what came of it
    unreachable, // nobody answers for the OLT; nothing was done
    refused,     // it is not permitted there; nothing was done
};
inline constexpr size_t number_of_states = 5;

std::string_view name_of(State state);
std::optional<State> state_named(std::string_view name);

struct Result {
    State state = State::done;
    int32_t exit = 0;
    std::string output = {}; // what the command wrote for this OLT: text, or a document of JSON
    std::string errors = {}; // and on standard error

    bool operator==(const Result &) const = default;
};

// The results of OLTs, by their names.
using Results = std::map<std::string, Result, std::less<>>;

// Returns whether the command need not go to the OLT again when a run is resumed: it came to an end there. In the other
// states nothing was done, or the OLT is asked again what was done.
bool is_final(State state);

} // namespace fleet
