// A Rollout says which OLTs a command goes to next, and when it goes no further. It does nothing by itself:
//
//     while (!rollout.is_over()) {
//         for (const std::string &olt : rollout.next()) start(olt);    // as many as may run at once
//         if (const auto wave = rollout.check_due()) rollout.checked(run_check(*wave));
//         else rollout.ended(olt, state);                              // of whichever OLT ends first
//     }
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fleet/rollout/plan.h"
#include "fleet/rollout/result.h"

namespace fleet
{

// What is known of a run from before, when it is resumed.
struct Progress {
    Results ended;
    std::set<std::string, std::less<>> begun; // and did not end
    size_t checked = 0;                       // so many waves, from the first on, are over and good
};

class Rollout
{
public:
    // OLTs whose result is final are not begun again. Failures of before do not count, nor does an OLT that ends as it
    // had ended before: whoever resumes has seen them.
    explicit Rollout(Plan plan, const Progress &progress = {});

    // Returns the OLTs to begin now, which run from then on. None: until one ends or a wave is checked.
    std::vector<std::string> next();
    // Throws std::logic_error when the OLT does not run.
    void ended(const std::string &olt, State state);

    // Returns the number of the wave, from 0 on, that is over and must be checked before the next one begins.
    std::optional<size_t> check_due() const;
    // Says what the check came to. Throws std::logic_error when none is due.
    void checked(bool good);

    // No further OLT begins; `why` says so for people. The first reason counts.
    void stop(const std::string &why);
    // Returns why the run ends before it went to all OLTs. The text is empty when it does not.
    const std::string &stopped() const { return reason; }

    // Returns whether nothing runs and nothing will begin.
    bool is_over() const;

    size_t wave() const { return current; } // from 0 on
    const Plan &plan() const { return planned; }
    size_t running() const { return run.size(); }
    size_t waiting() const;                                                        // OLTs that have not begun
    size_t count(State state) const { return counts[static_cast<size_t>(state)]; } // with those of before

private:
    // Goes to the next wave when one is over that need not be checked.
    void go_on();
    bool wave_is_over() const { return run.empty() && position == to_do[current].size(); }

    Plan planned;
    std::vector<std::vector<std::string>> to_do; // of each wave
    size_t current = 0, position = 0;            // the wave, and how many of it have begun
    size_t waves_checked;
    std::set<std::string, std::less<>> run;
    std::map<std::string, State, std::less<>> states_before; // of OLTs that are begun again
    std::array<size_t, number_of_states> counts{};
    size_t failures = 0; // since the run began or was resumed
    std::string reason;
};

} // namespace fleet
