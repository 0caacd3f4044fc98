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
    // Begins to connect and to learn which OLTs there are. Does not wait: what is asked meanwhile does.
    explicit SharedClient(const Settings &settings);
    // Whoever waits for a reply is told that nobody is reached any more.
    ~SharedClient();
    SharedClient(const SharedClient &) = delete;
    SharedClient &operator=(const SharedClient &) = delete;

    // Any thread may call these functions. Each waits for what it returns.
    std::vector<Olt> olts() const;
    Reply ask(const std::string &olt, catalogue::Class impact, const std::string &request, uint32_t milliseconds);

private:
    class Turner;
    std::unique_ptr<Turner> turner;
};

// The client must outlive the link.
class SharedLink : public Link
{
public:
    SharedLink(SharedClient &of, std::string name) : client(of), olt(std::move(name)) {}
    // Throws Unreachable, and call::Refused when the broker does not permit it.
    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                        uint32_t milliseconds) override;

private:
    SharedClient &client;
    std::string olt;
};

} // namespace fleet
