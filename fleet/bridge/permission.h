// What is permitted of a request at an OLT, and that it is begun once: both are decided when it is about to be sent.
#pragma once

#include <optional>
#include <string>

#include "audit/entry.h"
#include "call/permission.h"
#include "fleet/bridge/request.h"
#include "fleet/journal/journal.h"
#include "fleet/protocol/message.h"

namespace fleet
{

// The request is not sent. The failure says why.
struct Declined : call::Error {
    explicit Declined(Failure why) : call::Error(why.text), failure(std::move(why)) {}
    Declined(Problem problem, std::string text) : Declined(Failure{problem, std::move(text)}) {}

    Failure failure;
};

// The request was executed already, and this answered it.
struct Repeated : call::Error {
    explicit Repeated(std::string text) : call::Error("it was executed already"), answer(std::move(text)) {}

    std::string answer;
};

class OltPermission : public call::Permission
{
public:
    // What a request is compared with. All of it must outlive the permission.
    struct Asked {
        const ServedOlt &olt;
        const Clients *clients; // null: what the way says by which a request came is enough
        const Incoming &incoming;
        const Request &request;
        std::optional<Clock::time_point> end; // when it is not worth to be begun any more
        uint32_t bound;                       // milliseconds for the exchange; 0: none of its own
    };

    OltPermission(const Asked &what, Journal &of, const Notes &told) : asked(what), journal(of), notes(told) {}

    // Throws Declined or Repeated.
    call::Verdict decide(const call::PermissionRequest &request) override;

    // Returns what was to be sent. Returns nothing when it did not come to that.
    const std::optional<audit::Wanted> &wanted() const { return noted; }
    // Returns whether it stands in the journal that the request was begun.
    bool has_begun() const { return begun; }
    // These write into the journal what came of it: the answer, or that nothing was done.
    void end(const std::string &answer);
    // Returns false when something may have been done: a part of the request was sent before.
    bool undo();

private:
    void check_class(catalogue::Class impact) const;
    // Returns the milliseconds that are left for the exchange. Returns 0 when nothing bounds it.
    uint32_t left() const;
    void begin();

    const Asked asked;
    Journal &journal;
    const Notes &notes;
    std::optional<audit::Wanted> noted;
    std::optional<Journal::Turn> turn; // from the beginning to the end
    bool begun = false;
    int sent = 0;
};

} // namespace fleet
