// Uploads are texts that clients send in parts and then have loaded.
//
// An upload belongs to its user, and is named by the digest of the whole text, which every part of it carries. So
// nobody adds to what another user sends, and two texts that a user sends at the same time stay apart.
#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "handlers/handler.h"
#include "text/sha256.h"

namespace ponsim
{

// Each user has so many uploads at a time, which announce at most longest_upload bytes together. Of so many users there
// are uploads. What was used least recently gives way to what is new.
inline constexpr size_t uploads_of_one = 4;
inline constexpr size_t uploading_users = 8;

class Uploads
{
public:
    // Adds a part. One that has come already is accepted again. Returns what is wrong with the part, or an empty text.
    std::string add(uint32_t user, const ReceiveConfiguration &part);

    struct Taken {
        std::string text;
        text::Sha256 digest;
        std::string problem = {}; // why there is no text; empty: there is one
    };
    // Gives a user's text out, which is forgotten then, whether it is whole or not. Whether it has this digest is for
    // whoever reads it, because that takes long.
    Taken take(uint32_t user, const text::Sha256 &digest);

private:
    struct Upload {
        uint32_t user;
        text::Sha256 digest;
        uint32_t total; // bytes of the whole text
        std::string received = {};
    };

    Upload *find(uint32_t user, const text::Sha256 &digest);
    void make_room(uint32_t user, uint32_t total);

    std::list<Upload> uploads; // the one that was used last is at the end
};

} // namespace ponsim
