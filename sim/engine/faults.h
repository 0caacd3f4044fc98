// The faults that are set, and what they make of a request's answer.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/message.h"
#include "model/olt/fault.h"

namespace ponsim
{

inline constexpr uint32_t max_faults = 32;

// A fault that happens to a request.
struct FaultCase {
    Fault fault;
    uint32_t number;
    uint64_t random; // for what the fault leaves open
};

// The same seed, orders and requests give the same faults.
class Faults
{
public:
    explicit Faults(uint64_t olt_seed) : seed(olt_seed) {}

    // Why an order cannot be carried out; empty when it can.
    std::string objection(const FaultOrder &order) const;
    // Carries out an order that there is no objection to.
    void carry_out(const FaultOrder &order);

    // The faults that happen to a request, in the order in which they were set.
    std::vector<FaultCase> happen_to(const Message &message);

    // One line each: its number, itself as it is written, and how often it happened.
    std::string list() const;

private:
    struct Entry {
        uint32_t number;
        Fault fault;
        uint32_t matched = 0;
        uint32_t happened = 0;
    };

    uint64_t seed;
    uint32_t last_number = 0;
    std::vector<Entry> entries;
};

// Does to a reply what a fault does to its status word and result.
void spoil(Reply &reply, const FaultCase &fault);
// Does to the bytes of an answer what a fault does to them.
void spoil(std::string &answer, const FaultCase &fault, const Message &message);

} // namespace ponsim
