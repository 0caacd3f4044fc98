#include "engine/uploads.h"

#include <algorithm>
#include <map>
#include <utility>

namespace ponsim
{

// Returns null when there is no such upload. Otherwise it becomes the one that was used last.
Uploads::Upload *Uploads::find(uint32_t user, const text::Sha256 &digest)
{
    const auto found =
        std::ranges::find_if(uploads, [&](const Upload &each) { return each.user == user && each.digest == digest; });
    if (found == uploads.end()) return nullptr;
    uploads.splice(uploads.end(), uploads, found);
    return &uploads.back();
}

void Uploads::make_room(uint32_t user, uint32_t total)
{
    std::map<uint32_t, size_t> last_used; // when each of the other users used an upload last
    size_t count = 0, bytes = total, time = 0;
    for (const Upload &each : uploads) {
        ++time;
        if (each.user != user) {
            last_used[each.user] = time;
            continue;
        }
        ++count;
        bytes += each.total;
    }
    for (auto each = uploads.begin(); count >= uploads_of_one || bytes > longest_upload;) {
        const auto next = std::next(each);
        if (each->user == user) {
            --count;
            bytes -= each->total;
            uploads.erase(each);
        }
        each = next;
    }
    if (last_used.size() < uploading_users) return;
    const auto by_time = [](const auto &one, const auto &other) { return one.second < other.second; };
    const uint32_t idle = std::ranges::min_element(last_used, by_time)->first;
    std::erase_if(uploads, [idle](const Upload &each) { return each.user == idle; });
}

std::string Uploads::add(uint32_t user, const ReceiveConfiguration &part)
{
    Upload *upload = find(user, part.digest);
    const std::string what =
        "a part at " + std::to_string(part.offset) + " of " + std::to_string(part.total) + " bytes, where ";
    if (!upload && part.offset == 0) {
        make_room(user, part.total);
        upload = &uploads.emplace_back(user, part.digest, part.total);
    }
    if (!upload) return what + "no text of this digest has begun";
    std::string &received = upload->received;
    if (part.total != upload->total || part.offset > received.size())
        return what + std::to_string(received.size()) + " of " + std::to_string(upload->total) + " have come";
    const size_t again = std::min(part.bytes.size(), received.size() - part.offset);
    if (received.compare(part.offset, again, part.bytes, 0, again) != 0)
        return what + "other bytes of a text of this digest have come";
    received.append(part.bytes, again);
    return {};
}

Uploads::Taken Uploads::take(uint32_t user, const text::Sha256 &digest)
{
    const auto missing = [&](const std::string &problem) { return Taken{{}, digest, problem}; };
    if (!find(user, digest)) return missing("no text of this digest has come from this user");
    Upload upload = std::move(uploads.back());
    uploads.pop_back();
    if (upload.received.size() != upload.total)
        return missing(std::to_string(upload.received.size()) + " of " + std::to_string(upload.total) +
                       " bytes have come");
    return {std::move(upload.received), digest};
}

} // namespace ponsim
