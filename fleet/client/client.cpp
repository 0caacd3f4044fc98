#include "fleet/client/client.h"

#include "fleet/client/core.h"

namespace fleet
{

Client::Client(const Settings &settings) : core(std::make_unique<Core>(settings)) {}

Client::~Client() = default;

void Client::connect(uint32_t milliseconds)
{
    core->connect(milliseconds);
}

void Client::open(uint32_t milliseconds)
{
    core->open(milliseconds);
}

void Client::begin_to_learn()
{
    core->begin_to_learn();
}

bool Client::has_learnt() const
{
    return core->has_learnt();
}

std::vector<Olt> Client::olts() const
{
    return core->known.olts();
}

std::optional<Olt> Client::find(const std::string &olt) const
{
    return core->known.find(olt);
}

std::vector<std::string> Client::take_problems()
{
    return core->known.take_problems();
}

void Client::send(const std::string &olt, catalogue::Class impact, std::string request, uint32_t milliseconds,
                  Done done)
{
    core->send(olt, impact, std::move(request), milliseconds, std::move(done));
}

size_t Client::pending() const
{
    return core->pending();
}

void Client::hear_events(Heard heard)
{
    core->hear(core->topics.event("+"), std::move(heard), &Core::events);
}

void Client::hear_audit(Heard heard)
{
    core->hear(core->topics.audit("+"), std::move(heard), &Core::audit);
}

void Client::hear_changes(std::function<void(const std::string &olt)> heard)
{
    core->known.changed = std::move(heard);
}

void Client::turn(uint32_t milliseconds)
{
    core->turn(milliseconds);
}

int Client::descriptor() const
{
    return core->connection.descriptor();
}

void Client::wake() const
{
    core->connection.wake();
}

} // namespace fleet
