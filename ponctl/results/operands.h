// What command lines call ports, ONUs and operations, and the arguments of operations that come of it.
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

// name=value for each argument that was given: those with an empty value were not.
std::vector<std::string> words_of(std::initializer_list<Assignment> arguments);

// A PON port as a command line names it; 0 where it is left out and that stands for all ports.
std::string port_of(const std::string &text);

// A number of a command line; empty where it is left out.
std::string number_word(std::string_view name, const std::string &text, uint32_t greatest = UINT32_MAX);

// One ONU of a port as a command line names it: by its id or by its MAC address.
struct OnuName {
    std::string id, mac; // one of them is empty
};
OnuName onu_of(const std::string &text);
// The same for operations to which id 0 is none: there it is a UsageError that says so.
OnuName onu_but_0_of(const std::string &text);
inline const std::string id_0_is_none = "here id 0 means none; name that ONU by its MAC address";

// Refuses a text of more bytes than there can be.
void check_text(const char *name, const std::string &text, size_t greatest);

// The only operation that find_operations finds; a UsageError with the candidates where there is not exactly one.
const catalogue::Operation &chosen_operation(std::span<const std::string> words);

// The operation of this name; a UsageError with suggestions where there is none.
const catalogue::Operation &named_operation(const std::string &name);

} // namespace ponctl
