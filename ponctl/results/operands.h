// This file reads the words of a command line for ports, ONUs and operations, and makes arguments of operations from
// them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "call/codec/values.h"
#include "output/exit_code.h"

namespace ponctl
{

// Returns name=value for each argument that was given. An argument with an empty value was not given.
std::vector<std::string> words_of(std::initializer_list<Assignment> arguments);

// Returns the PON port that a command line names. Returns 0 when it is left out and that stands for all ports.
std::string port_of(const std::string &text);

// Returns a number of a command line. The text is empty when the number is left out.
std::string number_word(std::string_view name, const std::string &text, uint32_t greatest = UINT32_MAX);

// An OnuName is one ONU of a port as a command line names it: by its id or by its MAC address.
struct OnuName {
    std::string id, mac; // one of them is empty
};
OnuName onu_of(const std::string &text);
// As above, for operations for which id 0 names no ONU. They get a UsageError that says so.
OnuName onu_but_0_of(const std::string &text);
inline const std::string id_0_is_none = "here id 0 means none; name that ONU by its MAC address";

// Refuses a text of more bytes than are possible.
void check_text(const char *name, const std::string &text, size_t greatest);

// Returns the only operation that find_operations finds. Throws a UsageError with the candidates when there is not
// exactly one.
const catalogue::Operation &chosen_operation(std::span<const std::string> words);

// Returns the operation of this name. Throws a UsageError with suggestions when there is none.
const catalogue::Operation &named_operation(const std::string &name);

} // namespace ponctl
