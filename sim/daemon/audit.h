// An Audit keeps who changed an OLT, when, and what came of it: writes and service-affecting requests, commands of the
// simulation, and what was refused to whom.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "audit/bounded_log.h"
#include "board/service.h"
#include "engine/message.h"

namespace ponsim
{

inline constexpr uint64_t audit_limit = 16u << 20; // bytes of the file, and of the one before

class Audit
{
public:
    // Appends to the file. With an empty name nothing is kept. Throws std::runtime_error when the file cannot be used.
    explicit Audit(const std::string &file);

    // Any thread may call these. Requests that only read are not kept.
    void note(const board_request &request, const Message &message, std::string_view result);
    void note_control(const board_request &request, std::string_view result);
    // Of what is refused to one user, so many entries are kept a minute, and the others are counted.
    void note_refused(const board_request &request, const Message &message, const std::string &reason);
    void note_refused_control(const board_request &request, const std::string &reason);

private:
    // Returns whether one more refusal of the user is to be kept. Adds to the reason how many were not.
    bool takes_refusal(uid_t user, std::string &reason);

    struct Refusals {
        uint64_t minute;
        uint32_t kept;
        uint64_t left_out;
    };

    std::unique_ptr<audit::BoundedLog> log; // null: nothing is kept
    std::mutex mutex;                       // held by whoever uses the refusals
    std::map<uid_t, Refusals> refusals;
};

} // namespace ponsim
