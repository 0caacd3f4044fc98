// What affects service is done only when whoever wants it has seen what will be hit, and says so again.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "call/target.h"
#include "web/json.h"
#include "web/olt_state.h"

namespace front
{

// Hits are the ONUs that a request is about.
struct Hits {
    std::string scope; // onus, port or olt
    std::vector<const view::onu_info *> onus = {};
    uint32_t online = 0;

    // Returns one text as long as the same ONUs are hit.
    std::string names() const;
};
Hits hits_of(const OltState &state, const call::Target &target);
// Hits all that is bound.
Hits all_of(const OltState &state);

// Writes the members "scope", "count", "online" and "onus".
void write(Json &json, const Hits &hits);

// Confirmations are promises to do something when it is asked for again, each for one user, thing and time.
class Confirmations
{
public:
    static constexpr int64_t good_for = 120'000; // milliseconds

    // Returns what has to be named to have it done.
    std::string promise(const std::string &what, int64_t now);
    // Returns whether it was promised, and takes the promise back.
    bool redeem(const std::string &confirm, const std::string &what, int64_t now);

private:
    static constexpr size_t most = 1024;
    struct Promise {
        std::string what;
        int64_t ends;
    };

    std::mutex guard;
    std::map<std::string, Promise> promises;
};

} // namespace front
