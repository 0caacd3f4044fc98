// A request as it comes to an OLT, whatever carries it, and what the OLT is to whoever serves it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "catalogue.h"

namespace fleet
{

using Clock = std::chrono::steady_clock;

// A longer request is refused, and so is one that is nested deeper.
inline constexpr size_t longest_request = size_t{1} << 20;
inline constexpr size_t deepest_request = 16;

struct Incoming {
    std::string client;                               // its name, as it is known for sure
    std::string address;                              // how it came: "mqtt" or "ssh"
    catalogue::Class impact = catalogue::Class::read; // what it may be at most, by how it came
    std::string text;                                 // a line of protocol/message.h
    std::optional<uint32_t> expiry = {};              // milliseconds, from when it came
    Clock::time_point came = Clock::now();
};

// An OLT that is served.
struct ServedOlt {
    std::string name;
    std::string socket_dir; // empty: that of the board library
    catalogue::Class allow = catalogue::Class::service_affecting;
    std::string journal; // file

    bool operator==(const ServedOlt &) const = default;
};

// What clients may do at most. Whoever is not named may do nothing.
using Clients = std::map<std::string, catalogue::Class, std::less<>>;

// Whoever serves is told of this by any thread.
struct Notes {
    std::function<void(const std::string &olt, const std::string &line)> audit; // a line of audit/entry.h
    std::function<void(const std::string &text)> complain;                      // for whoever runs the program
};

} // namespace fleet
