// An Entry says who wanted what of an OLT, when, and what came of it. It is a line of JSON in an audit log.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue.h"

namespace call
{
struct PermissionRequest;
}

namespace audit
{

// A Wanted is a request as an entry describes it.
struct Wanted {
    catalogue::Class impact;
    uint32_t channel;
    std::string command; // its name, or its code when the catalogue does not know it; empty: the request has none
    // Fields that are not zero, with their values for people: numbers and addresses. Texts and blocks are left out,
    // because they may be secrets.
    std::vector<std::pair<std::string, std::string>> fields;
};

// Reads a request. Only so many fields are taken.
inline constexpr size_t most_fields = 24;
Wanted wanted_by(uint32_t channel, catalogue::Call call, std::string_view request);
// Reads what a program of ours is about to send.
Wanted wanted_by(const call::PermissionRequest &request);

// Who is a process of a user, as the kernel names it.
struct Who {
    uint32_t user;
    int32_t process;
};

// A Client is somebody who has logged in to a server, and came from this address, with something for this OLT.
struct Client {
    std::string user, address, olt; // empty: nobody, or no OLT
};

// Returns the time of day of now, in milliseconds since 1970.
uint64_t time_of_day();

// Time of day is in milliseconds since 1970. Returns the lines without their newlines.
std::string line_of(uint64_t time, const Who &who, const Wanted &wanted, std::string_view result);
std::string line_of(uint64_t time, const Client &client, const Wanted &wanted, std::string_view result);
// Of a command that is a line of words.
std::string line_of(uint64_t time, const Who &who, std::string_view command, std::string_view result);
std::string line_of(uint64_t time, const Client &client, std::string_view command, std::string_view result);
std::string line_of_lost(uint64_t time, uint64_t lost);

} // namespace audit
