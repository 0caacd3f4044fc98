// A master agent of AgentX for tests. It takes one subagent at a time, and waits for nothing longer than half a minute.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "snmp/agentx/reader.h"
#include "snmp/agentx/writer.h"

class Master
{
public:
    // Listens on a Unix socket.
    explicit Master(std::string socket);
    ~Master();
    Master(const Master &) = delete;
    Master &operator=(const Master &) = delete;

    // Lets the next subagent in and registers so many regions for it. Returns them. The answer to each is this error.
    std::vector<front::snmp::Oid> take_subagent(size_t regions,
                                                front::snmp::agentx::Error error = front::snmp::agentx::Error::none);
    // Ends the connection without a word.
    void drop_subagent();

    // Asks for one value after the other below an object identifier, and returns all.
    std::vector<front::snmp::Binding> walk(const front::snmp::Oid &top);
    // Tests and commits a value. Returns the first error, or none.
    front::snmp::agentx::Error set(const front::snmp::Binding &binding);
    // Waits for a notification, takes it, and returns its name.
    front::snmp::Oid take_notification();
    // Waits until the subagent takes leave.
    void expect_leave();

private:
    struct Pdu {
        front::snmp::agentx::Header header;
        std::string payload;
    };
    Pdu read_pdu();
    std::string read_bytes(size_t count) const;
    // Returns a PDU that is no response, after those that have come before it.
    Pdu next_of(front::snmp::agentx::PduType type);
    void respond(const front::snmp::agentx::Header &header, front::snmp::agentx::Error error) const;
    front::snmp::agentx::Writer request(front::snmp::agentx::PduType type);
    std::string answer_to(front::snmp::agentx::Writer request);
    front::snmp::agentx::Error error_of(const std::string &response) const;
    void send(const std::string &bytes) const;

    const std::string path;
    int listener = -1, connection = -1;
    uint32_t packet = 0;
    std::deque<Pdu> told; // and not looked at yet
};
