// A SharedClient is a client for many threads. A thread of its own turns it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fleet/client/client.h"
#include "fleet/protocol/link.h"

namespace fleet
{

class SharedClient
{
public:
    // Connects. Throws Unreachable.
    SharedClient(const Settings &settings, uint32_t milliseconds);
    // Whoever waits for an answer gets none.
    ~SharedClient();
    SharedClient(const SharedClient &) = delete;
    SharedClient &operator=(const SharedClient &) = delete;

    // Any thread may call these functions. The second waits for the reply.
    std::vector<Olt> olts() const;
    Reply ask(const std::string &olt, catalogue::Class impact, const std::string &request, uint32_t milliseconds);

private:
    class Turning;
    std::unique_ptr<Turning> turning;
};

// The client must outlive the link.
class SharedLink : public Link
{
public:
    SharedLink(SharedClient &of, std::string name) : client(of), olt(std::move(name)) {}
    // Throws Unreachable.
    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                        uint32_t milliseconds) override;

private:
    SharedClient &client;
    std::string olt;
};

} // namespace fleet
