// The Bridge lets the clients of a fleet reach OLTs by a broker: it says which there are, what happens at them,
// executes requests, and says who asked for what.
#pragma once

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "audit/bounded_log.h"
#include "fleet/bridge/engine.h"
#include "fleet/bridge/refusals.h"
#include "fleet/mqtt/connection.h"
#include "fleet/ponbridge/configuration.h"
#include "fleet/ponbridge/olt_watch.h"
#include "fleet/ponbridge/outbox.h"
#include "fleet/protocol/topics.h"
#include "fleet/selection/inventory.h"

namespace fleet
{

class Bridge : Handler
{
public:
    // Starts everything. Throws std::runtime_error when a file or folder cannot be used.
    Bridge(const Configuration &configuration, std::string version);
    // Ends after what is executed just now, and takes leave of the broker.
    ~Bridge() override;
    Bridge(const Bridge &) = delete;
    Bridge &operator=(const Bridge &) = delete;

    // Goes on with other OLTs, clients, periods and events. The fixed settings stay.
    void change(const Configuration &wanted);
    // Returns whether the thread that has the connection went on not long ago.
    bool is_alive() const;

private:
    // What is said of an OLT, and when it is read again.
    struct Said {
        Inventory inventory;
        std::string socket_dir;
        Clock::time_point due = Clock::now();
        bool visited = false; // a visit waits, or is made
        bool known = false;   // it was read once
        std::string failure;  // as it was logged last
    };

    void connected() override;
    void lost(const std::string &reason) override;
    void refused(size_t subscriptions) override;
    void arrived(Message message) override;
    void acknowledged(int number, const std::string &error) override;

    void listen();
    void visit_due();
    void visit(const std::string &olt);
    void publish(Message message);
    void publish_state();
    void publish_inventory(const Inventory &inventory);
    void say_offline();
    void serve(const Configuration &wanted);
    void watch(const Configuration &wanted);
    void note(const std::string &olt, const std::string &line);
    // Logs why a message is passed over, of each client only some in a minute.
    void pass_over(const std::string &client, const std::string &reason);

    const FixedSettings settings;
    const std::string version;
    const Topics topics;
    std::unique_ptr<audit::BoundedLog> audit_log; // null: in the program's log
    Refusals refusals;
    Outbox outbox;
    Connection connection;
    std::mutex guard; // of what follows
    std::map<std::string, Said> said;
    Clock::time_point next_visit{}; // no OLT is due before
    std::chrono::seconds period{0};
    std::string last_loss;
    std::unique_ptr<Engine> engine;
    std::map<std::string, std::unique_ptr<OltWatch>> watches; // of the thread that changes
    int last_number = 0;                                      // of what is published last, until it is answered
    std::atomic<Clock::rep> turned;
};

} // namespace fleet
