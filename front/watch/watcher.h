// A watcher finds what changes at an OLT between one reading and the next.
#pragma once

#include <array>
#include <bitset>
#include <string>
#include <vector>

#include "watch/event.h"
#include "watch/fact.h"

namespace front
{

// A FactChange is what a store of facts has to do: keep this fact, or forget the key when there is none.
struct FactChange {
    FactKey key;
    std::optional<Fact> fact;
};

// What a watcher must know again after a restart.
struct Known {
    std::bitset<fact_kind_count> kinds; // that were looked at before
    Facts facts;
};

class Watcher
{
public:
    Watcher(std::string olt_name, Limits light_limits, Known before = {})
        : olt(std::move(olt_name)), limits(light_limits), known(std::move(before))
    {
    }

    struct Found {
        std::vector<Event> events;
        std::vector<FactChange> changes;
    };
    // Compares what a snapshot shows with what was known. What is seen for the first time is no event.
    Found look(const Snapshot &snapshot, UnixTime now);

    const Known &what_is_known() const { return known; }

private:
    void look_at(FactKind kind, const Snapshot &snapshot, UnixTime now, Found &found);
    void add_event(const FactKey &key, const Fact *before, const Fact *after, UnixTime now,
                   std::vector<Event> &events) const;

    const std::string olt;
    const Limits limits;
    Known known;
    std::array<uint64_t, fact_kind_count>
        generations{}; // of the table that each kind comes from, when it was looked at
};

} // namespace front
