// The subagent of SNMP: a thread that answers the master agent from memory, tells it what happened, and comes back to
// it when it was gone.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "snmp/agent/mailbox.h"
#include "snmp/agent/master.h"
#include "snmp/agent/orders.h"

namespace front::snmp
{

struct AgentSettings {
    MasterAddress master;
    MibSettings mib;
    uint8_t priority; // of what is registered
    SetSettings sets;

    bool operator==(const AgentSettings &) const = default;
};

class Agent
{
public:
    // Takes a line for the log, and whether it is good news. Several threads call it.
    using Say = std::function<void(bool well, const std::string &)>;

    Agent(AgentSettings wanted, Notes note_orders, Say say_line);
    ~Agent(); // takes leave of the master, after an order that is under way
    Agent(const Agent &) = delete;
    Agent &operator=(const Agent &) = delete;

    const AgentSettings &wanted() const { return settings; }

    // Any thread may call these, and none of them waits for the master.

    // Answers from these objects from now on.
    void publish(std::shared_ptr<const Objects> objects) { mailbox.publish(std::move(objects)); }
    // Tells the master, as soon as it is there.
    void tell(std::vector<Notification> notifications) { mailbox.tell(std::move(notifications)); }
    // Returns when the master's sysUpTime was 0, in milliseconds since 1970; 0 while that is not known.
    int64_t master_started() const { return started; }

private:
    void run();
    // Returns whether the master was there.
    bool visit(std::string &said);

    const AgentSettings settings;
    const Notes notes;
    const Say say;
    std::atomic<int64_t> started = 0;
    Mailbox mailbox;
    std::thread thread;
};

} // namespace front::snmp
