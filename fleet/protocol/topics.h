// Where messages are published. Of a fleet these are all topics, below one root:
//
//     ROOT/olt/OLT/call/CLASS/CLIENT     a request to an OLT, of this class at most, by this client
//     ROOT/client/CLIENT/SESSION         what answers a client's requests
//     ROOT/olt/OLT/inventory             retained: what an OLT is and has
//     ROOT/olt/OLT/event                 what happens at an OLT
//     ROOT/olt/OLT/audit                 who asked what of an OLT through the fleet
//     ROOT/bridge/BRIDGE/state           retained: whether a bridge is there; also its last will
//
// So a broker can permit topics by OLT, by class, and by the name in a client's certificate.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "catalogue.h"

namespace fleet
{

// Names of OLTs, bridges, clients and sessions have 1 to 64 letters, digits, '-', '_' and '.'.
bool is_name(std::string_view text);
// The levels of a root are such names.
bool is_root(std::string_view text);

inline constexpr std::string_view default_root = "pon";

struct CallTopic {
    std::string olt;
    catalogue::Class impact = catalogue::Class::read;
    std::string client;

    bool operator==(const CallTopic &) const = default;
};

class Topics
{
public:
    explicit Topics(std::string below = std::string(default_root)) : root(std::move(below)) {}

    std::string call(const CallTopic &topic) const;
    // Returns nothing when it is no topic of requests.
    std::optional<CallTopic> read_call(std::string_view topic) const;
    // Of requests to this OLT, of all classes and clients; "+" stands for all OLTs, here and below.
    std::string calls_of(std::string_view olt) const;

    std::string reply(std::string_view client, std::string_view session) const;
    // Returns whether answers to this client may be published there.
    bool is_reply_to(std::string_view client, std::string_view topic) const;

    std::string inventory(std::string_view olt) const;
    std::string event(std::string_view olt) const;
    std::string audit(std::string_view olt) const;
    std::string bridge(std::string_view bridge) const;
    // Returns the name of the OLT or bridge that such a topic is about. The text is empty when it is another topic.
    std::string olt_of(std::string_view topic) const;
    std::string bridge_of(std::string_view topic) const;

private:
    std::string root;
};

} // namespace fleet
