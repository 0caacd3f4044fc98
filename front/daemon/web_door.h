// The door of clients of HTTP, by one configuration: users, the console, and the server.
#pragma once

#include <span>

#include "daemon/configuration.h"
#include "http/server.h"
#include "rest/console.h"

namespace front
{

struct WebDoor {
    // Throws std::runtime_error when it cannot listen, and when it would listen to other machines without users.
    // Services are those of the console, without a gate.
    WebDoor(const ListenSettings &where, Services services, Console::Metrics metrics, std::span<const PageFile> page);

    Console console;
    HttpServer server;
};

} // namespace front
