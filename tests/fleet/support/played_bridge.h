// A PlayedBridge answers for OLTs as a test says.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "fleet/client/settings.h"
#include "fleet/mqtt/connection.h"
#include "fleet/protocol/topics.h"
#include "fleet/selection/inventory.h"

class PlayedBridge : public fleet::Handler
{
public:
    // Returns the answer to a request, or nothing when there is none.
    using Answer = std::function<std::optional<std::string>(const fleet::Message &request)>;

    // Connects, publishes its state and the inventories of the OLTs, and returns when the broker has them.
    PlayedBridge(const fleet::Broker &broker, const std::string &name, const std::vector<std::string> &olts,
                 Answer answer);
    ~PlayedBridge() override;

    // Publishes what the broker keeps, or does not keep, and returns when it has it.
    void publish(const std::string &topic, const std::string &payload, bool retained = true);
    void publish_state(const fleet::BridgeState &state) { publish(topics.bridge(name), fleet::to_json(state)); }
    // Returns the requests that came.
    std::vector<fleet::Message> requests() const;
    bool is_connected() const { return connections > 0 && connection.is_connected(); }
    int connection_count() const { return connections; }

    static fleet::Inventory inventory(const std::string &olt, const std::string &bridge);

private:
    void publish(const std::vector<fleet::Message> &messages);
    void connected() override { ++connections; }
    void lost(const std::string &) override {}
    void refused(size_t) override {}
    void arrived(fleet::Message message) override;
    void acknowledged(int number, const std::string &error) override;

    const fleet::Topics topics;
    const std::string name;
    const Answer answer;
    mutable std::mutex guard; // of what follows
    std::vector<fleet::Message> came;
    std::set<int> acknowledgements; // numbers of what the broker has
    std::atomic<int> connections = 0;
    std::atomic<bool> ends = false;
    fleet::Connection connection;
    std::thread thread;
};

// Returns the settings of a client whose name is alice.
fleet::Settings settings_for(const fleet::Broker &broker);
// These are answers: what was asked, and none.
std::optional<std::string> echo(const fleet::Message &request);
std::optional<std::string> nothing(const fleet::Message &request);

// Waits until it is so, for half a minute at most. Returns whether it is.
bool wait_until(const std::function<bool()> &is_so);
