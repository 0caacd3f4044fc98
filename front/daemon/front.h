// The whole front end by one configuration: OLTs that are collected, and the doors to what is known of them.
#pragma once

#include <memory>
#include <vector>

#include "daemon/configuration.h"
#include "daemon/olt.h"
#include "daemon/snmp_door.h"
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

    // Goes on with another configuration. OLTs that it does not change are collected on. Throws std::runtime_error when
    // its history or its place to listen cannot be had. Then everything goes on as it was.
    void change(Configuration wanted);
    // Returns whether the thread of each OLT went on not long ago.
    bool is_alive() const;

private:
    using Olts = std::vector<std::shared_ptr<Olt>>;

    std::unique_ptr<HttpServer> listen(const std::optional<ListenSettings> &where);
    void listen_elsewhere(const std::optional<ListenSettings> &where);
    // Has the door of SNMP that the configuration wants, if any.
    void open_snmp(const Configuration &wanted);
    void open_other_snmp(const Configuration &wanted);
    // Tells the door of SNMP that an OLT was looked at.
    void looked(const OltSettings &olt, const std::vector<Event> &events);
    std::vector<snmp::Source> sources() const;
    // Those that are left out end here, while others are answered.
    void replace_olts(Olts others);
    // Collects the OLTs of the configuration. Those that are collected already go on.
    void collect(const Configuration &wanted);
    OnuDetail onu_detail_now() const;
    HttpResponse answer(const HttpRequest &request) const;
    std::vector<OltSnapshot> snapshots() const;

    mutable std::mutex guard; // held to change what follows, and to read it where requests are answered
    Configuration configuration;
    std::unique_ptr<History> history;
    std::shared_ptr<SnmpDoor> snmp;
    Olts olts;
    std::unique_ptr<HttpServer> http;
};

} // namespace front
