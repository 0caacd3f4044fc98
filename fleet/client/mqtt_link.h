// A MqttLink reaches one OLT over a broker.
#pragma once

#include <string>

#include "fleet/client/client.h"
#include "fleet/protocol/link.h"

namespace fleet
{

// The client must outlive the link, and one thread has both: it turns the client while it waits.
class MqttLink : public Link
{
public:
    MqttLink(Client &of, std::string name) : client(of), olt(std::move(name)) {}
    // Throws Unreachable, and call::Refused when the broker does not permit it.
    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                        uint32_t milliseconds) override;

private:
    Client &client;
    std::string olt;
};

// Returns the answer that a reply has, or nothing when none came in time. Throws Unreachable and call::Refused.
std::optional<std::string> answer_of(const Reply &reply);

} // namespace fleet
