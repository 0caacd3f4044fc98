#include "fleet/client/shared_client.h"

#include <chrono>
#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

#include "fleet/client/mqtt_link.h"

namespace fleet
{

// The thread that has the client. Others give it jobs.
class SharedClient::Turner
{
public:
    using Job = std::function<void(Client &)>;

    explicit Turner(const Settings &settings) : client(settings)
    {
        client.begin_to_learn();
        thread = std::thread([this] { turn(); });
    }
    ~Turner()
    {
        {
            const std::lock_guard lock(mutex);
            ends = true;
        }
        client.wake();
        thread.join();
    }

    // Returns whether the job will be done.
    bool add(Job job)
    {
        {
            const std::lock_guard lock(mutex);
            if (ends) return false;
            jobs.push_back(std::move(job));
        }
        client.wake();
        return true;
    }

private:
    static constexpr uint32_t longest_turn = 1000; // milliseconds

    void turn()
    {
        for (bool goes_on = true; goes_on;) {
            std::deque<Job> due;
            {
                const std::lock_guard lock(mutex);
                due.swap(jobs);
                goes_on = !ends;
            }
            for (const Job &job : due)
                job(client);
            if (goes_on) turn_client();
        }
    }

    void turn_client()
    {
        try {
            client.turn(longest_turn);
        } catch (const std::exception &) {
            // The system lacks what a connection takes, and may have it later. Whoever waits is told when it is late.
            std::this_thread::sleep_for(std::chrono::milliseconds(longest_turn));
        }
    }

    Client client;
    std::mutex mutex; // of what follows
    std::deque<Job> jobs;
    bool ends = false;
    std::thread thread;
};

SharedClient::SharedClient(const Settings &settings) : turner(std::make_unique<Turner>(settings)) {}

SharedClient::~SharedClient() = default;

namespace
{

// Returns what the promise of the future becomes, or `otherwise` when nobody keeps it any more.
template <class Value>
Value value_of(std::future<Value> future, Value otherwise)
{
    try {
        return future.get();
    } catch (const std::future_error &) {
        return otherwise;
    }
}

} // namespace

std::vector<Olt> SharedClient::olts() const
{
    auto promise = std::make_shared<std::promise<std::vector<Olt>>>();
    auto future = promise->get_future();
    turner->add([promise](const Client &client) { promise->set_value(client.olts()); });
    promise.reset();
    return value_of(std::move(future), {});
}

Reply SharedClient::ask(const std::string &olt, catalogue::Class impact, const std::string &request,
                        uint32_t milliseconds)
{
    auto promise = std::make_shared<std::promise<Reply>>();
    auto future = promise->get_future();
    turner->add([=](Client &client) {
        try {
            client.send(olt, impact, request, milliseconds,
                        [promise](const Reply &reply) { promise->set_value(reply); });
        } catch (const call::UsageError &error) {
            promise->set_value({Reply::Kind::unreachable, error.what()});
        }
    });
    promise.reset();
    return value_of(std::move(future), {Reply::Kind::silent, "the client of the fleet has ended"});
}

std::optional<std::string> SharedLink::exchange(const std::string &request, catalogue::Class impact,
                                                uint32_t milliseconds)
{
    return answer_of(client.ask(olt, impact, request, milliseconds));
}

} // namespace fleet
