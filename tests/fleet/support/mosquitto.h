// A Mosquitto is a broker that a test starts, on a Unix socket and, if it is asked for, on a free TCP port.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

#include "fleet/mqtt/connection.h"

class Mosquitto
{
public:
    // The lines are added to its configuration. {PORT} stands for the free port, and {FOLDER} for a folder of its own,
    // which has these files, too.
    explicit Mosquitto(const std::string &more = {}, const std::map<std::string, std::string> &files = {});
    ~Mosquitto();
    Mosquitto(const Mosquitto &) = delete;
    Mosquitto &operator=(const Mosquitto &) = delete;

    // These are for a broker that is not there for a while.
    void start();
    void stop();

    fleet::Broker local() const;
    uint16_t port() const { return free_port; }
    const std::string &folder() const { return directory; }

private:
    std::string directory;
    uint16_t free_port;
    pid_t child = 0;
};

// A Peer is a client of the broker that notes all it is told.
class Peer : public fleet::Handler
{
public:
    Peer(const fleet::Broker &broker, const std::string &name, std::optional<fleet::Message> will = {});

    void connected() override { ++connections; }
    void lost(const std::string &reason) override { losses.push_back(reason); }
    void refused(size_t subscriptions) override { refusals += subscriptions; }
    void arrived(fleet::Message message) override { messages.push_back(std::move(message)); }
    void acknowledged(int number, const std::string &error) override { answers[number] = error; }
    void unheard(int number) override { answers[number] = "unheard"; }

    // Turns until it is so, for half a minute at most. Returns whether it is.
    bool turn_until(const std::function<bool()> &is_so);
    // Subscribes, and returns when the broker knows it.
    void hear(const std::string &topic);
    // Returns the first message to the topic, and forgets it. A message without a topic is none.
    fleet::Message take(const std::string &topic);

    int connections = 0;
    size_t refusals = 0;
    std::vector<std::string> losses;
    std::vector<fleet::Message> messages;
    std::map<int, std::string> answers; // to what was published
    fleet::Connection connection;
};
