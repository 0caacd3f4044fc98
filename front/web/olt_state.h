// What the web pages are made of: of each OLT its tables, how often the contents of each changed, and what is known of
// it in facts. Nobody changes a state: what is read makes a new one.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "collector/snapshot.h"
#include "history/history.h"
#include "http/workers.h"
#include "plant/plant.h"
#include "reach/reach.h"
#include "watch/fact.h"

namespace front
{

using Versions = std::array<uint64_t, table_count>;

struct OltState {
    std::string name;
    Limits limits;
    std::shared_ptr<const Snapshot> snapshot = std::make_shared<Snapshot>();
    std::shared_ptr<const Facts> facts = std::make_shared<Facts>();
    Versions versions{};        // of the contents of tables; 0: never read
    uint64_t facts_version = 0; // counts the changes of facts

    // Returns null where there is no such fact.
    const Fact *fact(FactKind kind, uint32_t port, const std::string &mac, const std::string &detail = {}) const;
    // Returns whether the OLT answers.
    bool is_reached() const;
    // Returns since when it does or does not; 0 where that is not known.
    UnixTime reached_since() const;
    // Returns one text as long as these tables have the same contents and the facts are the same.
    std::string version_of(std::initializer_list<Table> tables) const;
};

// Returns the state behind this one. Tables that were read get another version when they have other contents.
std::shared_ptr<const OltState> state_behind(const OltState &before, std::shared_ptr<const Snapshot> snapshot,
                                             const Facts &facts, bool facts_changed);

// An OltDoor is the way to an OLT: what is known of it, and who asks it for more. It outlives the OLT.
struct OltDoor {
    std::shared_ptr<const OltState> state;
    std::shared_ptr<Workers> workers;             // whose calls go to the OLT
    Reach reach;                                  // for threads of others
    std::shared_ptr<const Plant> plant = nullptr; // null: nobody described it
};

// Known is what the daemon knows. Any thread may call all functions.
class KnownOlts
{
public:
    virtual ~KnownOlts() = default;
    virtual std::vector<OltDoor> olts() const = 0;
    virtual std::shared_ptr<History> events() const = 0;
};

} // namespace front
