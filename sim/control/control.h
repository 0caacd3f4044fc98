// Whoever runs the simulation gives these commands. They make things happen to the OLT from outside. A command is a
// line of words.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// A Control is a command that changes the OLT. `plan` throws ControlError when the words make no sense.
struct Control {
    std::string_view name;
    std::string_view usage; // the words after the name
    std::string_view brief;
    Plan (*plan)(const Olt &olt, std::span<const std::string> words);
};

class ControlError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// controls() returns the commands of all families. A family is a file of this folder with a table of its own.
std::span<const Control> controls();
std::span<const Control> fault_controls();
std::span<const Control> fibre_controls();
std::span<const Control> inventory_controls();
std::span<const Control> onu_controls();
std::span<const Control> optics_controls();
std::span<const Control> upgrade_controls();

// Returns what a command that changes the OLT changes. Throws ControlError when the words are no command, or the
// command is not possible.
Plan plan_control(const Olt &olt, std::string_view line);
// As above, but when the OLT refuses the command in its present state, the plan's status says so.
Plan read_control(const Olt &olt, std::string_view line);

std::vector<std::string> control_words(std::string_view line);
// These read the words of commands. Each throws ControlError.
uint64_t control_number(const std::string &word, uint64_t least, uint64_t greatest);
bool control_switch(const std::string &word); // on or off
// Reads decibels with at most two decimals. Returns them in 0.01 dB.
int32_t control_decibels(const std::string &word, int32_t greatest);
Mac control_mac(const std::string &word);

} // namespace ponsim
