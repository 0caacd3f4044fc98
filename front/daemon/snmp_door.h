// The door of SNMP: what is known of OLTs as objects, and what happens as notifications.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "daemon/configuration.h"
#include "snmp/agent/agent.h"
#include "web/write_log.h"

namespace front
{

class SnmpDoor
{
public:
    using Sources = std::function<std::vector<snmp::Source>()>;

    // The configuration has SNMP. What managers set is noted in the audit log.
    SnmpDoor(const Configuration &configuration, const std::shared_ptr<WriteLog> &log);

    // Returns whether the door would be the same by another configuration.
    bool is_as(const Configuration &other) const;

    // Any thread may call this after an OLT was looked at, with what happened there. Answers come from these sources
    // now.
    void look(const Sources &sources, uint32_t olt_index, const std::vector<Event> &events);

private:
    const snmp::AgentSettings settings;
    std::mutex guard; // of the tables
    snmp::Mib mib;
    snmp::Agent agent;
};

} // namespace front
