#include "web/event_json.h"

namespace front
{

void write(Json &json, const Event &event)
{
    json->StartObject();
    json.member("id", event.id);
    json.member("at", event.at);
    json.member("olt", event.olt);
    json.member("kind", name_of(event.kind));
    json.member("port", event.port);
    json.member("count", event.count);
    json.member("onu_id", event.onu_id);
    json.member("mac", event.mac);
    json.member("onus", event.onus);
    json.member("detail", event.detail);
    json.member("cause", event.cause);
    json.member("place", event.place);
    json.member("measure", event.measure);
    json.member("text", sentence_of(event));
    json->EndObject();
}

void write_events(Json &json, const std::vector<Event> &events)
{
    json->StartArray();
    for (const Event &event : events)
        write(json, event);
    json->EndArray();
}

} // namespace front
