// Configurations that were applied, and go back by themselves unless somebody confirms them.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace front
{

class PendingConfigurations
{
public:
    enum class State : uint8_t { none, waiting, rolling_back, rolled_back, failed };
    struct Pending {
        State state = State::none;
        int64_t ends = 0;        // time that never goes back
        int64_t rolls_back = 0;  // time of day
        std::string user = {};   // who applied it
        std::string before = {}; // the text of the configuration before
    };
    // Goes back to what was before; the function is called when the time of an OLT is over, or this ends.
    using RollBack = std::function<void(const std::string &olt)>;

    explicit PendingConfigurations(RollBack rolls_back);
    ~PendingConfigurations(); // goes back wherever nobody confirmed
    PendingConfigurations(const PendingConfigurations &) = delete;
    PendingConfigurations &operator=(const PendingConfigurations &) = delete;

    // Any thread may call these.

    Pending of(const std::string &olt) const;
    // Returns false when one waits already.
    bool keep(const std::string &olt, Pending pending);
    // Forgets what waits. Returns whether something did.
    bool confirm(const std::string &olt);
    // Returns the text to go back to, which somebody else can no longer take or confirm. A failed one can be taken
    // again.
    std::optional<std::string> take(const std::string &olt);
    void end(const std::string &olt, bool success);

private:
    void run();

    const RollBack roll_back;
    mutable std::mutex guard;
    std::condition_variable changed;
    std::map<std::string, Pending> all;
    bool stopping = false;
    std::thread thread;
};

std::string_view name_of(PendingConfigurations::State state);

} // namespace front
