#include "fleet/client/mqtt_link.h"

#include "call/permission.h"

namespace fleet
{

std::optional<std::string> answer_of(const Reply &reply)
{
    switch (reply.kind) {
    case Reply::Kind::answered:
        return reply.text;
    case Reply::Kind::silent:
        return std::nullopt;
    case Reply::Kind::unreachable:
        throw Unreachable(reply.text);
    case Reply::Kind::refused:
        throw call::Refused(reply.text);
    }
    return std::nullopt;
}

std::optional<std::string> MqttLink::exchange(const std::string &request, catalogue::Class impact,
                                              uint32_t milliseconds)
{
    // Whoever calls this may give up before the reply comes, because of another request's error.
    const auto reply = std::make_shared<std::optional<Reply>>();
    client.send(olt, impact, request, milliseconds, [reply](const Reply &came) { *reply = came; });
    while (!*reply)
        client.turn(milliseconds);
    return answer_of(**reply);
}

} // namespace fleet
