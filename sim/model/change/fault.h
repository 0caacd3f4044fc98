// A fault is what whoever runs the simulation makes go wrong on the wire, between the service and its clients. The OLT
// knows nothing of faults, and they are not kept.
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
    shortened,    // value: how many bytes are left of the answer
    oversized,    // value: the bytes that the answer is lengthened to
    duplicated,   // value: how many more times the answer goes out
    status,       // value: another status word
    no_result,    // the result database is missing
    big_result,   // the result database is longer than any that reaches a caller
    bad_result,   // value: a BadResult
    unterminated, // the texts of the answer have no end
    kill          // the service ends; value: a KillPoint
};

enum class BadResult : uint8_t { any, cut, text, type, columns };
inline constexpr uint32_t bad_results = 5;
enum class KillPoint : uint8_t { before, after };

// A Fault says what kind of fault happens, and to which requests.
struct Fault {
    FaultKind kind;
    uint32_t value = 0;
    std::optional<uint32_t> channel = {};        // channel by which the request comes; none: any
    std::optional<uint32_t> code = {};           // command code, on any channel; none: any
    const catalogue::Command *command = nullptr; // only this command; null: any
    uint32_t percent = 100;                      // of the requests that the above and `skip` leave
    std::optional<uint32_t> count = {};          // the fault happens so often, then it is gone; none: no end
    uint32_t skip = 0;                           // so many requests pass unharmed first
};

struct ClearFaults {
    std::optional<uint32_t> number = {}; // number of the fault; none: all
};

using FaultOrder = std::variant<Fault, ClearFaults>;

} // namespace ponsim
