// An OltCarrier makes the exchanges of a thread at an OLT of the fleet. Everything above stays as it is at a local OLT.
//
//     fleet::OltCarrier carrier(link, {.run = run_id, .olt = "north-3", .deadline = 5000});
//     const call::Carriage carriage(carrier);
//     ... calls of the library reach north-3 ...
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "call/record_call.h"
#include "fleet/protocol/link.h"
#include "fleet/protocol/message.h"

namespace fleet
{

// How sure it is what became of the requests of a carrier.
enum class Certainty : uint8_t {
    certain,     // each was answered, or surely not executed
    unreachable, // nobody answered for the OLT, and nothing was changed
    refused,     // the OLT or its bridge does not permit what was asked, and nothing was changed by that
    unknown,     // a request that changes something may have been executed, or not
};

struct CarrierSettings {
    std::string run; // of what the requests are: the same run asks for nothing twice at an OLT
    std::string olt;
    uint32_t deadline = 10'000; // milliseconds for each request of a thread that has no bound of its own
};

class OltCarrier : public call::Carrier
{
public:
    // The link must live as long as the carrier.
    OltCarrier(Link &link, CarrierSettings settings);

    // A request that changes something has an id that follows from the run, the OLT and what is asked, and the number
    // of equal requests before. It is asked again under the same id when no answer came, and when its end is not known,
    // the OLT is asked how the setting stands. Throws call::UsageError and call::Refused as a local OLT's permission
    // would.
    call::RecordOutcome carry(const call::RecordCall &asked) override;

    // Returns the worst that is known of the requests so far, and why, for people.
    Certainty certainty() const { return worst; }
    const std::string &reason() const { return why; }

private:
    uint32_t deadline() const;
    Answer ask(const Request &request, catalogue::Class impact);
    // Returns nothing when there was no answer.
    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact, uint32_t milliseconds);
    call::RecordOutcome outcome_of(const Failure &failure, const call::RecordCall &asked);
    call::RecordOutcome after_unknown(const call::RecordCall &asked, const std::string &text);
    void note(Certainty certainty, const std::string &text);

    Link &link;
    const CarrierSettings settings;
    std::map<std::string, uint32_t> asked_before; // how often a request with this digest was asked
    Certainty worst = Certainty::certain;
    std::string why;
};

} // namespace fleet
