// This keeps the replies that are views, and shares them between all who ask the same until something becomes
// different.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

#include "engine/message.h"
#include "model/base/time.h"

namespace ponsim
{

using SharedReply = std::shared_ptr<const Reply>;

// Several threads may use it at the same time.
class KeptReplies
{
public:
    // Returns the reply to the message when one is kept of this generation of the OLT and holds at that time. Returns
    // null otherwise.
    SharedReply find(const Message &message, uint64_t generation, ModelTime now) const;
    // Keeps a reply that holds until a time.
    void keep(const Message &message, uint64_t generation, ModelTime until, SharedReply reply);
    // Forgets all replies, because the generations begin anew.
    void clear();

private:
    struct Entry {
        ModelTime until;
        SharedReply reply;
    };

    mutable std::mutex mutex; // guards the members below
    uint64_t kept_generation = 0;
    std::unordered_map<std::string, Entry> kept; // by what the message says; all of one generation
};

} // namespace ponsim
