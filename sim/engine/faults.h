// This file keeps the faults that are set, and applies them to the answers to requests.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/message.h"
#include "model/change/fault.h"

namespace ponsim
{

inline constexpr uint32_t max_faults = 32;

// A FaultCase is a fault that happens to a request.
struct FaultCase {
    Fault fault;
    uint32_t number;
    uint64_t random; // for what the fault does not say
};

// The same seed, orders and requests give the same faults.
class Faults
{
public:
    explicit Faults(uint64_t olt_seed) : seed(olt_seed) {}

    // Returns why an order cannot be carried out, or an empty text when it can.
    std::string objection(const FaultOrder &order) const;
    // Carries out an order for which objection() is empty.
    void carry_out(const FaultOrder &order);

    // Returns the faults that happen to a request, in the order in which they were set.
    std::vector<FaultCase> happen_to(const Message &message);

    // Returns whether there is any fault.
    bool any() const { return !entries.empty(); }

    // Returns a line for each fault: its number, the fault as it is written, and how often it happened.
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

// Changes the status word and the result of a reply as the fault says.
void spoil(Reply &reply, const FaultCase &fault);
// Changes the bytes of an answer as the fault says.
void spoil(std::string &answer, const FaultCase &fault, const Message &message);

} // namespace ponsim
