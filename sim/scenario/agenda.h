// The Agenda of an OLT is what happens to it from outside, in order: the events of its scenario, the failures and
// repairs that are drawn by the seed, and the steps of load curves.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <queue>
#include <span>
#include <tuple>
#include <vector>

#include "model/base/random.h"
#include "scenario/scenario.h"

namespace ponsim
{

class Agenda
{
public:
    // Has no entries when the scenario is null.
    explicit Agenda(std::shared_ptr<const OltScenario> scenario);

    // Returns the entry after so many others, or null when there are no more. It holds until the next call. Going back
    // takes as long as there are entries before.
    const Event *entry(size_t number);

    // Returns the events of the scenario from the last entry that was returned on.
    std::span<const Event> upcoming() const;

private:
    // A Due is the next failure or repair of a part, or the next step of a curve. Those of the same time come in the
    // order of their sources: first the parts, then the curves.
    struct Due {
        ModelTime at;
        size_t source;
        uint64_t number; // how often the source was due before

        bool operator>(const Due &other) const { return std::tie(at, source) > std::tie(other.at, other.source); }
    };

    Event failure_or_repair(const Due &next);
    Event step(const Due &next);
    void restart();
    void go_on();

    std::shared_ptr<const OltScenario> scenario; // null: no scenario
    size_t position = 0;                         // how many entries there are before `current`
    size_t events = 0;                           // how many of these are events of the scenario, with `current`
    std::vector<Random> chances;                 // of the parts
    std::priority_queue<Due, std::vector<Due>, std::greater<>> due;
    std::optional<Event> current; // none: there are no more
};

} // namespace ponsim
