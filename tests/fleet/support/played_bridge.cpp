#include "played_bridge.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

fleet::Settings settings_for(const fleet::Broker &broker)
{
    return {.client = "alice", .broker = broker};
}

std::optional<std::string> echo(const fleet::Message &request)
{
    return "{\"of\":\"" + request.topic + "\",\"said\":" + request.payload + "}";
}

std::optional<std::string> nothing(const fleet::Message &)
{
    return std::nullopt;
}

bool wait_until(const std::function<bool()> &is_so)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!is_so()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

fleet::Inventory PlayedBridge::inventory(const std::string &olt, const std::string &bridge)
{
    return {
        .olt = olt, .bridge = bridge, .labels = {{"site", "north"}}, .answers = true, .model = "EP-16", .ports = 16};
}

PlayedBridge::PlayedBridge(const fleet::Broker &broker, const std::string &called, const std::vector<std::string> &olts,
                           Answer how)
    : name(called), answer(std::move(how)), connection(broker, called, {}, *this)
{
    std::vector<std::string> calls;
    for (const std::string &olt : olts)
        calls.push_back(topics.calls_of(olt));
    connection.subscribe(calls);
    thread = std::thread([this] {
        while (!ends)
            connection.turn(100);
    });
    if (!wait_until([this] { return is_connected(); })) throw std::runtime_error("the bridge is not connected");
    std::vector<fleet::Message> told;
    for (const std::string &olt : olts)
        told.push_back(
            {.topic = topics.inventory(olt), .payload = fleet::to_json(inventory(olt, name)), .retained = true});
    publish(told);
    publish_state({.online = true, .version = "1.0", .olts = static_cast<uint32_t>(olts.size())});
}

PlayedBridge::~PlayedBridge()
{
    ends = true;
    connection.wake();
    thread.join();
}

void PlayedBridge::publish(const std::string &topic, const std::string &payload, bool retained)
{
    publish({{.topic = topic, .payload = payload, .retained = retained}});
}

void PlayedBridge::publish(const std::vector<fleet::Message> &messages)
{
    std::set<int> numbers;
    for (const fleet::Message &message : messages) {
        int number = 0;
        const bool is_sent = wait_until([&] {
            const std::lock_guard lock(guard);
            number = connection.publish(message);
            return number != 0;
        });
        if (!is_sent) throw std::runtime_error("the broker is not there for " + message.topic);
        numbers.insert(number);
    }
    const bool are_taken = wait_until([&] {
        const std::lock_guard lock(guard);
        return std::ranges::includes(acknowledgements, numbers);
    });
    if (!are_taken) throw std::runtime_error("the broker does not take " + messages.front().topic);
    const std::lock_guard lock(guard);
    acknowledgements.clear();
}

std::vector<fleet::Message> PlayedBridge::requests() const
{
    const std::lock_guard lock(guard);
    return came;
}

void PlayedBridge::arrived(fleet::Message message)
{
    {
        const std::lock_guard lock(guard);
        came.push_back(message);
    }
    if (const std::optional<std::string> text = answer(message))
        connection.publish({.topic = message.response_topic, .payload = *text, .correlation = message.correlation});
}

void PlayedBridge::acknowledged(int number, const std::string &)
{
    const std::lock_guard lock(guard);
    acknowledgements.insert(number);
}
