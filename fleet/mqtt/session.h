// A Session is one connection to a broker from its beginning to its end. Nothing is kept for the next one. It hides
// libmosquitto, and is no business of any file beside connection.cpp.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "fleet/mqtt/message.h"

struct mosquitto;

namespace fleet
{

// What a broker says.
struct Accepted {
};
struct Subscribed {
    int number;
    size_t refused; // of the topics of that subscription
};
struct Acknowledged {
    int number;
    int reason; // of MQTT 5; an error from 128 on
};
using Heard = std::variant<Accepted, Subscribed, Acknowledged, Message>;

// One thread at a time may use a session.
class Session
{
public:
    // Begins to connect. It may wait for names to be resolved, but for nothing else.
    Session(const Broker &broker, const std::string &client, const std::optional<Message> &will);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    // Returns the socket, or -1 when there is none any more.
    int descriptor() const;
    bool wants_to_write() const;
    // Reads and writes what can be read and written without waiting, and keeps the connection alive.
    void go_on(bool readable, bool writable);
    std::vector<Heard> take_heard();
    // Returns why the connection is lost, or an empty text while it is not.
    std::string lost() const;

    // Returns the number of the message, or 0 when it cannot be sent for there is no connection. Throws
    // std::runtime_error when the broker would never take it.
    int publish(const Message &message);
    int subscribe(std::span<const std::string> topics);
    void unsubscribe(const std::string &topic);
    // Takes leave, so that no last will is published.
    void end();

private:
    struct Destroy {
        void operator()(mosquitto *handle) const;
    };
    struct Callbacks;

    void note(int result);

    std::vector<Heard> heard;
    std::string failure; // of the connection
    std::string logged;  // the last error that the library logged
    bool ended = false;
    std::unique_ptr<mosquitto, Destroy> handle;
};

} // namespace fleet
