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
    // Throws Unreachable.
    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                        uint32_t milliseconds) override;

private:
    Client &client;
    std::string olt;
};

} // namespace fleet
