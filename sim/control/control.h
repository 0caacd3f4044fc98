// Commands of whoever runs the simulation: what happens to the OLT from outside. They are lines of words.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

// A command that changes the OLT. `plan` throws ControlError when the words make no sense.
struct Control {
    std::string_view name;
    std::string_view usage; // the words behind the name
    std::string_view brief;
    Plan (*plan)(const Olt &olt, std::span<const std::string> words);
};

class ControlError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Of all families; a family is a file of this folder with a table of its own.
std::span<const Control> controls();
std::span<const Control> fault_controls();
std::span<const Control> fibre_controls();
std::span<const Control> onu_controls();
std::span<const Control> optics_controls();
std::span<const Control> upgrade_controls();

// What the words of a command that changes the OLT change. Throws ControlError: it cannot be, or is none.
Plan plan_control(const Olt &olt, std::string_view line);
// The same, of a command that the OLT may refuse as it is now: that is told by the plan's status.
Plan read_control(const Olt &olt, std::string_view line);

std::vector<std::string> control_words(std::string_view line);
// What the words of the commands say; each throws ControlError.
uint64_t control_number(const std::string &word, uint64_t least, uint64_t greatest);
bool control_switch(const std::string &word); // on or off
Mac control_mac(const std::string &word);
const PonPort &control_port(const Olt &olt, const std::string &word);
// An ONU by its MAC address, or one at the port by its name.
Mac control_onu(const PonPort &port, const std::string &word);

} // namespace ponsim
