// The whole front end by one configuration: OLTs that are collected, and the doors to what is known of them.
#pragma once

#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "daemon/configuration.h"
#include "daemon/olt.h"
#include "daemon/snmp_door.h"
#include "daemon/web_door.h"
#include "history/history.h"
#include "rest/console.h"
#include "web/confirmation.h"
#include "web/event_hub.h"
#include "web/pending.h"

namespace front
{

class Front : public KnownOlts
{
public:
    // Starts everything; the page is what browsers run. Throws std::runtime_error when something cannot be started.
    Front(Configuration wanted, std::string program_version, std::span<const PageFile> page);
    ~Front() override;
    Front(const Front &) = delete;
    Front &operator=(const Front &) = delete;

    // Goes on with another configuration. OLTs that it does not change are collected on. Throws std::runtime_error when
    // its history, its audit log or its place to listen cannot be had. Then everything goes on as it was.
    void change(Configuration wanted);
    // Returns whether the thread of each OLT went on not long ago.
    bool is_alive() const;

    std::vector<OltDoor> olts() const override;
    std::shared_ptr<History> events() const override;

private:
    using Olts = std::vector<std::shared_ptr<Olt>>;

    std::unique_ptr<WebDoor> listen(const std::optional<ListenSettings> &where, const std::shared_ptr<WriteLog> &log);
    void listen_elsewhere(const std::optional<ListenSettings> &where, const std::shared_ptr<WriteLog> &log);
    // Has the door of SNMP that the configuration wants, if any.
    void open_snmp(const Configuration &wanted);
    void open_other_snmp(const Configuration &wanted);
    // Tells everybody whom it concerns that an OLT was looked at.
    void looked(const Olt &olt, const OltState &before, const OltState &now, const std::vector<Event> &events);
    // Lets SNMP answer from what is known now, and tell what happened at an OLT.
    void tell_snmp(uint32_t olt_index, const std::vector<Event> &events);
    std::vector<snmp::Source> sources() const;
    void stop_listening();
    // Those that are left out end here, while others are answered.
    void replace_olts(Olts others);
    // Collects the OLTs of the configuration. Those that are collected already go on.
    void collect(const Configuration &wanted);
    void roll_back(const std::string &olt);
    HttpResponse metrics(const HttpRequest &request);

    const std::string version;
    const std::span<const PageFile> page_files;
    EventHub hub;
    Pages pages;
    Confirmations confirmations;
    mutable std::mutex guard; // held to change what follows, and to read it where requests are answered
    Configuration configuration;
    std::shared_ptr<History> history;
    std::shared_ptr<WriteLog> write_log;
    std::shared_ptr<SnmpDoor> snmp;
    Olts collected;
    PendingConfigurations pending;
    std::unique_ptr<WebDoor> http;
};

} // namespace front
