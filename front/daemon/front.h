// The whole front end by one configuration: OLTs that are collected, and the doors to what is known of them.
#pragma once

#include <memory>
#include <vector>

#include "daemon/configuration.h"
#include "daemon/olt.h"
#include "history/history.h"
#include "http/server.h"

namespace front
{

class Front
{
public:
    // Starts everything. Throws std::runtime_error when something cannot be started.
    explicit Front(Configuration wanted);
    ~Front();
    Front(const Front &) = delete;
    Front &operator=(const Front &) = delete;

    // Goes on with another configuration. OLTs that it does not change are collected on. Throws std::runtime_error;
    // then everything goes on as it was, as far as it can be started again.
    void change(Configuration wanted);
    // Returns whether the thread of each OLT went on not long ago.
    bool is_alive() const;

private:
    void start_http();
    HttpResponse answer(const HttpRequest &request) const;
    std::vector<OltSnapshot> snapshots() const;

    Configuration configuration;
    std::unique_ptr<History> history;
    mutable std::mutex guard; // of the list of OLTs
    std::vector<std::shared_ptr<Olt>> olts;
    std::unique_ptr<HttpServer> http;
};

} // namespace front
