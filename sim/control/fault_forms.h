// This file says how faults are written as words.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "model/change/fault.h"

namespace ponsim
{

// These bounds of what can be done to an answer are those of the board's library.
inline constexpr uint32_t max_answer = 8192;        // bytes
inline constexpr uint32_t max_answer_delay = 60000; // ms
inline constexpr uint32_t max_answer_repeats = 8;

// A FaultForm says how a kind of fault is written.
struct FaultForm {
    FaultKind kind;
    std::string_view name;
    std::string_view value = {}; // the name of its value; empty: there is no value
    uint32_t least = 0;
    uint32_t greatest = 0;
    std::span<const std::string_view> words = {}; // which stand for the values from 0 on, instead of a number
    bool optional = false;                        // the value may be left out, and is 0 then
};

std::span<const FaultForm> fault_forms();

// Writes a fault as words.
std::string to_text(const Fault &fault);

} // namespace ponsim
