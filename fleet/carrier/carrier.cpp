#include "fleet/carrier/carrier.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "board/ipc.h"
#include "board/service.h"
#include "call/codec/decode.h"
#include "fleet/carrier/read_back.h"

namespace fleet
{
namespace
{

using call::RecordCall;
using call::RecordOutcome;
using catalogue::Class;

constexpr int most_tries = 3;                          // of what was not answered, under the same id
constexpr int most_busy = 20;                          // answers that say so, before it is given up
constexpr std::chrono::milliseconds shortest_pause(5); // after such an answer; it doubles
constexpr std::chrono::milliseconds longest_pause(640);
constexpr uint32_t grace = 2000; // milliseconds that an answer may need on its way
constexpr size_t digest_digits = 16;

Class impact_of(const RecordCall &asked)
{
    const call::RecordRole role{asked.channel, asked.call};
    return call::worst_impact(call::command_of(*asked.record, role, asked.request), asked.call);
}

RecordOutcome failed(int32_t result)
{
    RecordOutcome outcome;
    outcome.ipc_result = result;
    return outcome;
}

} // namespace

OltCarrier::OltCarrier(Link &used, CarrierSettings wanted) : link(used), settings(std::move(wanted)) {}

void OltCarrier::note(Certainty certainty, const std::string &text)
{
    if (certainty <= worst) return;
    worst = certainty;
    why = text;
}

std::optional<std::string> OltCarrier::exchange(const std::string &request, Class impact, uint32_t milliseconds)
{
    try {
        return link.exchange(request, impact, milliseconds);
    } catch (const call::Refused &error) {
        return answer_of(Failure{Problem::refused, error.what()});
    } catch (const call::Error &error) {
        return answer_of(Failure{Problem::unavailable, error.what()});
    }
}

Answer OltCarrier::ask(const Request &request, Class impact)
{
    std::chrono::milliseconds pause = shortest_pause;
    const std::string text = to_json(request);
    int busy = 0;
    for (int tries = 0; tries < most_tries;) {
        const std::optional<std::string> answered = exchange(text, impact, request.deadline + grace);
        if (!answered) {
            // A reading can be asked again by whoever wants it.
            if (impact == Class::read) break;
            ++tries;
            continue;
        }
        Answer answer = answer_from_json(*answered, request);
        const auto *failure = std::get_if<Failure>(&answer);
        // It cannot be asked now, but a try before this one may have been executed.
        if (tries > 0 && failure && failure->problem == Problem::unavailable)
            return Failure{Problem::unknown, failure->text};
        if (!failure || failure->problem != Problem::busy || ++busy == most_busy) return answer;
        std::this_thread::sleep_for(pause);
        pause = std::min(2 * pause, longest_pause);
    }
    // A reading that was not answered changes nothing. Of anything else nobody knows.
    if (impact == Class::read) return Failure{Problem::unavailable, "no answer"};
    return Failure{Problem::unknown, "no answer"};
}

uint32_t OltCarrier::deadline() const
{
    const uint32_t bound = board_ipc_use_thread_timeout(0);
    board_ipc_use_thread_timeout(bound);
    return bound != 0 ? bound : settings.deadline;
}

RecordOutcome OltCarrier::carry(const RecordCall &asked)
{
    Request request{.id = {}, .deadline = deadline(), .what = asked};
    const Class impact = impact_of(asked);
    if (impact != Class::read) {
        const std::string digest = digest_of(request).substr(0, digest_digits);
        request.id = settings.run + "-" + digest + "-" + std::to_string(++asked_before[digest]);
    }
    const Answer answer = ask(request, impact);
    if (const auto *outcome = std::get_if<RecordOutcome>(&answer)) return *outcome;
    return outcome_of(std::get<Failure>(answer), asked);
}

RecordOutcome OltCarrier::outcome_of(const Failure &failure, const RecordCall &asked)
{
    const std::string text = settings.olt + ": " + failure.text;
    switch (failure.problem) {
    case Problem::wrong:
        throw call::UsageError(text);
    case Problem::refused:
        note(Certainty::refused, text);
        throw call::Refused(text);
    case Problem::unknown:
        return after_unknown(asked, text);
    case Problem::busy:
    case Problem::expired:
    case Problem::unavailable:
        break;
    }
    note(Certainty::unreachable, text);
    return failed(failure.problem == Problem::unavailable ? IPC_ERR_NO_SERVICE : IPC_ERR_SERVICE);
}

RecordOutcome OltCarrier::after_unknown(const RecordCall &asked, const std::string &text)
{
    if (const std::optional<RecordCall> question = question_about(asked)) {
        const Answer answer = ask({.id = {}, .deadline = deadline(), .what = *question}, Class::read);
        const auto *outcome = std::get_if<RecordOutcome>(&answer);
        if (outcome && shows(*outcome, *question, asked)) {
            RecordOutcome is_so;
            is_so.response = asked.request;
            return is_so;
        }
        if (outcome && outcome->ipc_result == IPC_OK && outcome->status == 0) {
            note(Certainty::unknown, text + "; the OLT shows that it is not so now");
            return failed(IPC_ERR_PEER_LOST);
        }
    }
    note(Certainty::unknown, text + "; whether it was executed is not known");
    return failed(IPC_ERR_PEER_LOST);
}

} // namespace fleet
