// This is the control module. Whoever runs the simulation sends commands as lines of words, which are answered with
// text. Besides the commands that change the OLT there are commands that let time pass, and commands that report on the
// simulation.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "daemon/clock.h"
#include "engine/delivery.h"
#include "engine/simulator.h"

namespace ponsim
{

// This IPC module stands beside that of the PON service, in the same folder of sockets. It has one channel.
inline constexpr uint32_t control_module = 106;
inline constexpr uint32_t control_channel = 1;
// These are the statuses of answers.
inline constexpr uint32_t control_done = 0;
inline constexpr uint32_t control_refused = 1;
// An answer that is too long for a message comes as the result under this key.
inline constexpr uint32_t control_result = 1;

// A Step lets model time pass in slices. Between two slices others may look at the OLT and change it: it is as it is at
// a time on the way, which is the time that the clock shows.
class Step
{
public:
    Step(Simulator &stepped, Clock &time, ModelTime length) : simulator(stepped), clock(time), left(length) {}

    // Lets a slice pass, which is to be kept before others have a turn. Returns whether more are left. The last one
    // keeps the time. Throws StoreError.
    bool go_on();

private:
    Simulator &simulator;
    Clock &clock;
    ModelTime left;
};

// Writes a model time for people: 1.5 s of model time.
std::string seconds_text(ModelTime time);

// Reads seconds with up to three decimals. Throws ControlError.
ModelTime read_seconds(const std::string &word);

// Returns how much time a line lets pass. Returns none when the line is another command. Throws ControlError.
std::optional<ModelTime> step_length(std::string_view line);

// Carries out one line. The answer is a text for people. Throws ControlError and StoreError.
std::string control(Simulator &simulator, Clock &clock, std::string_view line);
// Returns the OLT as it is, as a scenario. Throws ControlError.
std::string scenario_text(const Simulator &simulator);
// Returns how what a command says goes to its client. It points to the text, unless that is too long.
Delivery delivery_of(uint32_t status, std::string_view said);
// Returns the answer to a step that has been carried out, and to the question for the time.
std::string time_passed(const Simulator &simulator);

} // namespace ponsim
