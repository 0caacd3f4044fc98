#include "fleet/bridge/permission.h"

#include <algorithm>
#include <stdexcept>

#include "board/service.h"
#include "call/codec/decode.h"
#include "call/exchange.h"

namespace fleet
{
namespace
{

using catalogue::Class;

// How long the journal of an OLT is waited for while another process has it.
constexpr std::chrono::seconds patience{5};

// An operation that hands on the caller's record may carry another command than its own.
Class impact_of(const call::PermissionRequest &request)
{
    const call::Exchange &exchange = request.exchange;
    if (!exchange.record || !exchange.channel) return request.impact;
    const catalogue::Command *carried =
        call::command_of(*exchange.record, {exchange.channel, exchange.call}, exchange.request);
    return carried ? std::max(request.impact, call::worst_impact(carried, exchange.call)) : request.impact;
}

std::string text_of(Class impact)
{
    return std::string(catalogue::to_text(impact));
}

} // namespace

void OltPermission::check_class(Class impact) const
{
    const auto check = [&](Class most, const std::string &whose) {
        if (impact > most)
            throw Declined(Problem::refused, "it is " + text_of(impact) + ", and " + whose + " " + text_of(most));
    };
    check(asked.incoming.impact, "it was sent as");
    check(asked.olt.allow, "this OLT allows");
    if (!asked.clients) return;
    const auto client = asked.clients->find(asked.incoming.client);
    if (client == asked.clients->end())
        throw Declined(Problem::refused, "the client " + asked.incoming.client + " is not known here");
    check(client->second, "the client " + asked.incoming.client + " may");
}

uint32_t OltPermission::left() const
{
    if (!asked.end) return asked.bound;
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(*asked.end - Clock::now()).count();
    if (rest <= 0) throw Declined(Problem::expired, "its deadline passed before it was begun");
    const auto most = static_cast<uint32_t>(std::min<int64_t>(rest, UINT32_MAX));
    return asked.bound ? std::min(asked.bound, most) : most;
}

call::Verdict OltPermission::decide(const call::PermissionRequest &request)
{
    const Class impact = impact_of(request);
    // The fields of a mere reading are noted nowhere.
    noted = impact == Class::read ? audit::Wanted() : audit::wanted_by(request);
    noted->impact = impact;
    if (!request.command)
        throw Declined(Problem::wrong, request.doing + ": the catalogue of this OLT does not know the command");
    check_class(impact);
    if (impact != Class::read && !begun) begin();
    // The journal may have taken long.
    try {
        board_ipc_use_thread_timeout(left());
    } catch (const Declined &) {
        undo();
        throw;
    }
    ++sent;
    return call::Verdict::send;
}

void OltPermission::begin()
{
    const std::string &id = asked.request.id;
    if (id.empty()) throw Declined(Problem::wrong, "id: missing, and the request is no mere reading");
    const std::string digest = digest_of(asked.request);
    try {
        turn = journal.take(std::min(asked.end.value_or(Clock::time_point::max()), Clock::now() + patience));
        if (!turn) throw Declined(Problem::busy, "another program changes this OLT");
        if (const size_t damaged = journal.take_damaged())
            notes.complain(asked.olt.name + ": " + std::to_string(damaged) +
                           " lines of its journal are damaged: what they say was done may be done again");
        const std::optional<Journal::Entry> before = turn->find(id);
        if (!before) {
            left();
            turn->begin(id, digest);
            begun = true;
            return;
        }
        if (before->digest != digest) throw Declined(Problem::wrong, "id: another request had this id: " + id);
        if (!before->ended) throw Declined(Problem::unknown, "it was begun before, and what came of it is not known");
        if (before->answer.empty())
            throw Declined(Problem::unknown, "it was executed before, and its answer was too long to be kept");
        throw Repeated(before->answer);
    } catch (const call::Error &) {
        throw;
    } catch (const std::runtime_error &error) {
        notes.complain(asked.olt.name + ": " + error.what());
        throw Declined(Problem::unavailable, error.what());
    }
}

// The answer is as true as before where it cannot be kept. Then a repeated request is told that it is not known.
void OltPermission::end(const std::string &answer)
{
    if (!begun) return;
    try {
        turn->end(asked.request.id, answer);
    } catch (const std::runtime_error &error) {
        notes.complain(asked.olt.name + ": " + error.what());
    }
}

bool OltPermission::undo()
{
    if (sent > 1) return false;
    if (!begun) return true;
    try {
        turn->undo(asked.request.id);
    } catch (const std::runtime_error &error) {
        notes.complain(asked.olt.name + ": " + error.what());
    }
    begun = false;
    return true;
}

} // namespace fleet
