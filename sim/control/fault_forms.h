// How faults are written.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "model/olt/fault.h"

namespace ponsim
{

// What an answer can be made to do: bounds of the board's library.
inline constexpr uint32_t max_answer = 8192;        // bytes
inline constexpr uint32_t max_answer_delay = 60000; // ms
inline constexpr uint32_t max_answer_repeats = 8;

// How a kind of fault is written.
struct FaultForm {
    FaultKind kind;
    std::string_view name;
    std::string_view value = {}; // what the value is called; empty: there is none
    uint32_t least = 0;
    uint32_t greatest = 0;
    std::span<const std::string_view> words = {}; // that stand for the values from 0 on, instead of a number
    bool optional = false;                        // without a value it is 0
};

std::span<const FaultForm> fault_forms();

// As it is written.
std::string to_text(const Fault &fault);

} // namespace ponsim
