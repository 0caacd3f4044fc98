// What retained messages say of the OLTs of a fleet.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fleet/mqtt/message.h"
#include "fleet/protocol/topics.h"
#include "fleet/selection/inventory.h"

namespace fleet
{

class KnownOlts
{
public:
    using Changed = std::function<void(const std::string &olt)>;

    // Takes an inventory of an OLT or the state of a bridge. What is wrong with it becomes a problem.
    void take(const Topics &topics, const Message &message);
    // From here on all is told anew. What was not told until then is forgotten by forget_old().
    void begin_anew() { ++round; }
    void forget_old();

    std::vector<Olt> olts() const; // in the order of people
    std::optional<Olt> find(const std::string &olt) const;
    void add_problem(const std::string &problem);
    std::vector<std::string> take_problems();

    Changed changed; // may be empty

private:
    template <class What>
    struct Told {
        What what;
        uint64_t round;
    };
    struct InOrder {
        bool operator()(const std::string &name, const std::string &other) const;
    };

    bool is_online(const Inventory &inventory) const;
    void take_inventory(const std::string &olt, const std::string &text);
    void take_state(const std::string &bridge, const std::string &text);
    void tell_olts_of(const std::string &bridge) const;
    void tell(const std::string &olt) const;

    std::map<std::string, Told<Inventory>, InOrder> inventories;
    std::map<std::string, Told<BridgeState>> bridges;
    std::vector<std::string> problems;
    uint64_t round = 0;
};

} // namespace fleet
