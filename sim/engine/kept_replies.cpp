#include "engine/kept_replies.h"

#include <utility>

namespace ponsim
{
namespace
{

constexpr size_t most_kept = 64;

std::string key_of(const Message &message)
{
    std::string key(static_cast<const char *>(message.data), message.length);
    key += std::to_string(message.channel);
    key += static_cast<char>('a' + static_cast<int>(message.call));
    return key;
}

} // namespace

SharedReply KeptReplies::find(const Message &message, uint64_t generation, ModelTime now) const
{
    const std::string key = key_of(message);
    const std::lock_guard lock(mutex);
    if (generation != kept_generation) return nullptr;
    const auto found = kept.find(key);
    return found == kept.end() || now >= found->second.until ? nullptr : found->second.reply;
}

void KeptReplies::keep(const Message &message, uint64_t generation, ModelTime until, SharedReply reply)
{
    std::string key = key_of(message);
    const std::lock_guard lock(mutex);
    if (generation != kept_generation || (kept.size() >= most_kept && !kept.contains(key))) kept.clear();
    kept_generation = generation;
    kept[std::move(key)] = {until, std::move(reply)};
}

void KeptReplies::clear()
{
    const std::lock_guard lock(mutex);
    kept.clear();
}

} // namespace ponsim
