// A rerun lets a recorded session happen again: the OLT begins as it was, each request and each command comes at its
// model time, and each answer is compared with the recorded one.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "model/base/time.h"
#include "store/store.h"

namespace ponsim
{

struct RerunResult {
    size_t sessions = 0;
    size_t requests = 0;
    size_t commands = 0; // of the simulation
    size_t refused = 0;  // requests that were refused, and so did nothing
    size_t different = 0;
    ModelTime now = 0; // when it ended
    StoreImage image;  // the OLT as it is then
};

// Reruns the sessions in a file up to this time of the last of them, or to their ends. Tells `say` of each exchange
// whose answer is another one. Files of upgrade types are not in the recording; they are read from the folder, unless
// its name is empty. Throws std::runtime_error when the file is no recording that can be rerun, and StoreError.
RerunResult rerun(const std::string &file, const std::string &upgrade_folder, std::optional<ModelTime> until,
                  const std::function<void(const std::string &)> &say);

} // namespace ponsim
