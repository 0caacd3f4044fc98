// A Connection is there as often as a broker lets it: what is lost is connected again, after a while that grows from
// failure to failure and is never the same for two clients. Every message is published with QoS 1.
//
//     fleet::Connection connection({.host = "broker.example.net", .port = 8883, .ca = "ca.pem"}, "north-7", {},
//     handler); connection.subscribe("pon/olt/+/event"); while (!stopping)
//         connection.turn(1000);
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "fleet/mqtt/message.h"

namespace fleet
{

class Session;

// A Handler is told what happens by the threads that call Connection::turn, in the order in which it happens and one at
// a time. It may use the connection.
class Handler
{
public:
    virtual ~Handler() = default;
    // The connection is there, and the broker has answered all subscriptions.
    virtual void connected() {}
    // The connection is lost, or there was none. What was published and not acknowledged may have been lost, too.
    virtual void lost(const std::string &reason) = 0;
    // The broker does not permit some subscriptions.
    virtual void refused(size_t subscriptions) = 0;
    virtual void arrived(Message message) = 0;
    // The broker has answered what was published under this number. An error says why it did not take it; otherwise it
    // is empty.
    virtual void acknowledged(int number, const std::string &error) { (void)number, (void)error; }
    // As above: nobody has subscribed to the topic.
    virtual void unheard(int number) { acknowledged(number, {}); }
};

class Connection
{
public:
    // The last will is what the broker publishes when the connection ends without leave. Throws std::runtime_error when
    // the system lacks what it takes. Nothing is connected before the first turn.
    Connection(Broker broker, std::string client, std::optional<Message> will, Handler &handler);
    ~Connection(); // ends without leave
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    // Goes on for so many milliseconds at most, and until something happened. Several threads may call this at once.
    // What happens lets one of them go on: the others wait for what comes next.
    void turn(int milliseconds);
    // Returns a descriptor that is readable when a turn would not wait. It stays the same. While nothing happens, a
    // turn is needed each second.
    int descriptor() const { return poller; }

    // Any thread may call these.

    // Lets at least one turn that is waiting return.
    void wake() const;
    bool is_connected() const;
    // Returns the number of the message, by which it will be acknowledged, or 0 when there is no connection. Whoever
    // needs to know more of the number than that it was returned holds a lock against acknowledged(). Throws
    // std::runtime_error when the broker would never take the message.
    int publish(const Message &message);
    // What was subscribed to once is subscribed to in every later connection.
    void subscribe(std::vector<std::string> topics);
    void subscribe(const std::string &topic) { subscribe(std::vector{topic}); }
    void unsubscribe(const std::string &topic);
    // Takes leave of the broker, so that there is no last will. Nothing is connected again.
    void close();

private:
    using Clock = std::chrono::steady_clock;

    // What a socket is ready for.
    struct Ready {
        uint64_t session = 0; // its number
        bool readable = false, writable = false;
    };

    void begin(std::unique_lock<std::mutex> &lock);
    // Lets the socket end one wait, when something happens.
    void watch();
    // Returns for how many milliseconds a turn may wait.
    int longest_wait() const;
    Ready wait(int milliseconds) const;
    void ask_for(const std::vector<std::string> &topics);
    // Gives the session up, and says why.
    std::string lose();
    bool is_late() const;
    int until(Clock::time_point time) const;

    const Broker broker;
    const std::string client;
    const std::optional<Message> will;
    Handler &handler;
    int poller = -1, waker = -1;
    std::mutex turns; // held by a turn except while it waits

    mutable std::mutex guard; // of what follows
    std::unique_ptr<Session> session;
    uint64_t number = 0;    // of the session
    bool accepted = false;  // by the broker
    bool announced = false; // to the handler
    bool closed = false;
    bool watched = false;      // the session's socket
    bool watches_room = false; // for writing
    std::set<int> awaited;     // numbers of subscriptions that are not answered yet
    std::set<std::string> subscriptions;
    Clock::time_point next = Clock::now(); // when to connect, or when to give up to be accepted
    std::chrono::milliseconds pause;       // before the next attempt, at most
    std::minstd_rand chance;
};

} // namespace fleet
