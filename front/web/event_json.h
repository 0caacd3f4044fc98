// Events as JSON.
#pragma once

#include <vector>

#include "watch/event.h"
#include "web/json.h"

namespace front
{

void write(Json &json, const Event &event);
void write_events(Json &json, const std::vector<Event> &events);

} // namespace front
