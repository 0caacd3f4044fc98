// How threads reach one OLT of a fleet over a real broker.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fleet/client/mqtt_link.h"
#include "fleet/client/shared_client.h"
#include "mosquitto.h"
#include "played_bridge.h"

namespace
{

using namespace fleet;
using catalogue::Class;

constexpr uint32_t long_time = 30'000; // milliseconds

TEST(MqttLink, IsALinkToOneOlt)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a", "mute"}, [](const Message &request) {
        return request.topic.find("/mute/") == request.topic.npos ? echo(request) : nothing(request);
    });
    Client client(settings_for(broker.local()));
    client.open(long_time);
    EXPECT_EQ(MqttLink(client, "a").exchange("5", Class::write, long_time),
              R"({"of":"pon/olt/a/call/write/alice","said":5})");
    EXPECT_EQ(MqttLink(client, "mute").exchange("5", Class::write, 20), std::nullopt);
    EXPECT_THROW(MqttLink(client, "gone").exchange("5", Class::write, long_time), Unreachable);
}

TEST(SharedClient, IsForManyThreads)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a", "b"}, echo);
    SharedClient client(settings_for(broker.local()));
    std::vector<std::thread> threads;
    std::atomic<int> good = 0;
    for (int thread = 0; thread < 6; ++thread)
        threads.emplace_back([&, thread] {
            SharedLink link(client, thread % 2 == 0 ? "a" : "b");
            for (int i = 0; i < 20; ++i) {
                const std::string number = std::to_string(1000 * thread + i);
                const auto answer = link.exchange(number, Class::read, long_time);
                if (answer && answer->find(":" + number + "}") != answer->npos) ++good;
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(good, 6 * 20);
    EXPECT_TRUE(wait_until([&] { return client.olts().size() == 2; }));
    EXPECT_EQ(client.ask("no name", Class::read, "1", long_time).kind, Reply::Kind::unreachable);
    EXPECT_THROW(SharedLink(client, "gone").exchange("1", Class::read, long_time), Unreachable);
}

TEST(SharedClient, TellsWhoeverWaitsThatItEnds)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a"}, nothing);
    auto client = std::make_unique<SharedClient>(settings_for(broker.local()));
    Reply reply;
    std::thread asking([&, asked = client.get()] { reply = asked->ask("a", Class::read, "1", 600'000); });
    EXPECT_TRUE(wait_until([&] { return !bridge.requests().empty(); }));
    client.reset();
    asking.join();
    EXPECT_EQ(reply.kind, Reply::Kind::silent);
    EXPECT_EQ(reply.text, "the client of the fleet has ended");
}

} // namespace
