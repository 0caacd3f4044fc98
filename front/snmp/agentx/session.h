// A session with the master agent, as a state that bytes go into and come out of: it opens itself, registers its
// regions, answers what the master asks, and tells it of what happened. Nothing here waits, and nothing is sent.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "snmp/agentx/reader.h"
#include "snmp/agentx/writer.h"
#include "snmp/core/notification.h"
#include "snmp/core/setting.h"

namespace front::snmp::agentx
{

struct Plan {
    MibSettings mib;
    Oid id;                  // of the subagent
    std::string description; // of the subagent, for people
    std::vector<Oid> regions;
    uint8_t priority = 127; // of the regions; the least number wins
    uint8_t timeout = 0;    // seconds that the master waits for an answer; 0: as it likes
};

struct Refusal {
    Oid region;
    Error error;
};

// A Commit is what a manager sets, after all of it was found to be right.
struct Commit {
    Header asked;
    std::vector<Order> orders;
};

// What came of a commit.
struct Committed {
    size_t failed = 0;           // the place of what failed, from 1; 0: nothing did
    bool changed_nothing = true; // the OLT is as it was before
};

class Session
{
public:
    enum class State : uint8_t { opening, registering, open, closed };
    // Says whether an order may be carried out, or why not. Nothing is carried out yet. Without one nothing may be set.
    using Permit = std::function<Error(const Order &)>;

    Session(Plan wanted, Permit permitted);

    // Takes what the master sent and answers each PDU that is complete. A master that sends something else than PDUs
    // closes the session.
    void receive(std::string_view bytes, const Objects &objects);
    // Returns what is to be sent.
    std::string take_output() { return std::exchange(output, {}); }

    State state() const { return now; }
    // Returns why it is closed, for people.
    const std::string &reason() const { return why_closed; }
    const std::vector<Refusal> &refused() const { return refusals; }
    // Returns the master's sysUpTime, in hundredths of a second, when it answered last.
    uint32_t up_time() const { return master_up_time; }

    // Whether the master still has to answer what it was asked or told. It is told one thing at a time.
    bool waits() const { return awaited.has_value(); }
    // These tell the master something, in an open session that does not wait.
    void notify(const Notification &notification);
    void ping() { send_and_wait(writer_of(PduType::ping)); }
    // Returns what the master answered to a notification, once.
    std::optional<Error> take_answer() { return std::exchange(answer_to_notification, {}); }
    // Ends the session and says why.
    void close(CloseReason reason, std::string text);

    // Returns what is to be carried out, one commit at a time. Others may be answered meanwhile.
    std::optional<Commit> take_commit();
    void committed(const Commit &commit, const Committed &result);

private:
    struct Set {
        std::vector<Order> orders;
        bool running = false;
        Committed result{};
    };

    Writer writer_of(PduType type);
    void send_and_wait(Writer writer);
    void register_next();
    void handle(const Header &header, std::string_view payload, const Objects &objects);
    void take_response(const Header &header, Reader reader);
    void answer(const Header &header, Reader reader, const Objects &objects);
    void answer_values(const Header &header, Reader reader, const Objects &objects);
    void answer_test(const Header &header, Reader reader, const Objects &objects);
    void answer_commit(const Header &header);
    void answer_undo(const Header &header);
    void respond(const Header &header, Error error, size_t index = 0);

    Plan plan;
    Permit permit;
    State now = State::opening;
    std::string why_closed;
    std::string input, output;
    uint32_t id = 0; // of the session, which the master gives
    uint32_t last_packet = 0;
    uint32_t master_up_time = 0;
    struct Awaited {
        uint32_t packet;
        PduType type;
    };
    std::optional<Awaited> awaited;
    size_t registered = 0; // how many regions were sent
    std::vector<Refusal> refusals;
    std::optional<Error> answer_to_notification;
    std::map<uint32_t, Set> sets; // by transaction
    std::vector<Commit> commits;  // to be carried out
};

} // namespace front::snmp::agentx
