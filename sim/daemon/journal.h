// A Journal records a session of an OLT in a file that board/trace.h describes: what the OLT is when the session
// begins, and then, in the order in which they were answered, each request and each command of the simulation with what
// came back. All have the model time at which they were answered. So the session can happen again: see rerun.h.
//
// Equal sessions make equal files. Nothing is recorded of the time of day and of the clients' processes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "board/service.h"
#include "model/base/time.h"
#include "store/store.h"

namespace ponsim
{

// Parts of the OLT's image stand in notes of the control module on this channel, one behind the other. Only the last
// part is shorter than BOARD_NOTE_MAX.
inline constexpr uint32_t image_channel = 2;

inline constexpr uint64_t ns_per_ms = 1000000;

class Journal
{
public:
    // Appends to the file. With an empty name nothing is recorded. Throws std::runtime_error when the file cannot be
    // used, and the log says why. Throws StoreError.
    Journal(const std::string &file, const Store &store, ModelTime now);

    bool is_on() const { return recorder != nullptr; }

    // Appends a request to the module, and its answer. A null answer means that the request was refused. One thread at
    // a time may call it.
    void record(ModelTime now, uint32_t module, board_request request, const board_answer *answer);

private:
    struct Close {
        void operator()(board_recorder *open) const { board_recorder_close(open); }
    };

    std::unique_ptr<board_recorder, Close> recorder; // null: nothing is recorded
};

} // namespace ponsim
