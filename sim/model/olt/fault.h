// What whoever runs the simulation lets go wrong on the wire, between the service and its clients. The OLT knows
// nothing of it, and it is not kept.
#pragma once

#include <cstdint>
#include <optional>
#include <variant>

namespace catalogue
{
struct Command;
}

namespace ponsim
{

enum class FaultKind : uint8_t {
    late,         // the answer goes out later; value: ms
    lost,         // no answer goes out
    shortened,    // value: the bytes left
    oversized,    // value: the bytes that the answer is lengthened to
    duplicated,   // value: how many times more it goes out
    status,       // value: another status word
    no_result,    // the result database is missing
    big_result,   // longer than any that reaches a caller
    bad_result,   // value: a BadResult
    unterminated, // the texts of the answer have no end
    kill          // the service ends; value: a KillPoint
};

enum class BadResult : uint8_t { any, cut, text, type, columns };
inline constexpr uint32_t bad_results = 5;
enum class KillPoint : uint8_t { before, after };

// A kind of fault, and the requests that it happens to.
struct Fault {
    FaultKind kind;
    uint32_t value = 0;
    std::optional<uint32_t> channel = {};        // as the request comes by it; none: any
    std::optional<uint32_t> code = {};           // of a command on any channel; none: any
    const catalogue::Command *command = nullptr; // this one only; null: any
    uint32_t percent = 100;                      // of the requests that the above and `skip` leave
    std::optional<uint32_t> count = {};          // so often, then the fault is gone; none: no end
    uint32_t skip = 0;                           // as many requests first
};

struct ClearFaults {
    std::optional<uint32_t> number = {}; // none: all
};

using FaultOrder = std::variant<Fault, ClearFaults>;

} // namespace ponsim
