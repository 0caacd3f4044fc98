// How a client of a fleet gets along with a real broker, and with bridges that the test plays.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "call/permission.h"
#include "fleet/client/mqtt_link.h"
#include "mosquitto.h"
#include "played_bridge.h"

namespace
{

using namespace fleet;
using catalogue::Class;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr uint32_t long_time = 30'000; // milliseconds

// Turns the client until it is so.
bool turn_until(Client &client, const std::function<bool()> &is_so)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!is_so()) {
        if (std::chrono::steady_clock::now() > end) return false;
        client.turn(20);
    }
    return true;
}

Reply ask(Client &client, const std::string &olt, const std::string &request, uint32_t milliseconds = long_time)
{
    std::optional<Reply> reply;
    client.send(olt, Class::read, request, milliseconds, [&](const Reply &came) { reply = came; });
    EXPECT_TRUE(turn_until(client, [&] { return reply.has_value(); }));
    return reply.value_or(Reply());
}

template <class Action>
std::string unreachable_because(Action action)
{
    try {
        action();
    } catch (const Unreachable &error) {
        return error.what();
    }
    return "reached";
}

TEST(Client, KnowsAllOltsWhenItIsConnected)
{
    const Mosquitto broker("max_queued_messages 0\n");
    constexpr size_t count = 1500;
    std::vector<std::string> names;
    for (size_t number = 1; number <= count; ++number)
        names.push_back("olt-" + std::to_string(number));
    PlayedBridge bridge(broker.local(), "hut", names, nothing);

    Client client(settings_for(broker.local()));
    EXPECT_FALSE(client.has_learnt());
    client.connect(long_time);
    EXPECT_TRUE(client.has_learnt());
    const std::vector<Olt> olts = client.olts();
    ASSERT_THAT(olts, SizeIs(count));
    EXPECT_EQ(olts[1].inventory, PlayedBridge::inventory("olt-2", "hut"));
    EXPECT_TRUE(olts[count - 1].online);
    EXPECT_THAT(client.take_problems(), IsEmpty());
}

TEST(Client, SaysHowManyOltsItDoesNotKnow)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a", "b"}, nothing);
    bridge.publish_state({.online = true, .version = "1", .olts = 5});
    Client client(settings_for(broker.local()));
    client.connect(long_time);
    EXPECT_THAT(client.take_problems(),
                ElementsAre("the bridge hut answers for 5 OLTs, and the inventories of 3 of them have not come: "
                            "you may not see them, or the broker keeps too few messages"));
    EXPECT_THAT(client.take_problems(), IsEmpty());
}

TEST(Client, KnowsWhetherAnOltIsOnline)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a", "b"}, nothing);
    Client client(settings_for(broker.local()));
    client.connect(long_time);
    EXPECT_TRUE(client.find("a")->online);
    EXPECT_EQ(client.find("c"), std::nullopt) << "nobody told of it";

    std::vector<std::string> changed;
    client.hear_changes([&](const std::string &olt) { changed.push_back(olt); });
    Inventory silent = PlayedBridge::inventory("b", "hut");
    silent.answers = false;
    bridge.publish("pon/olt/b/inventory", to_json(silent));
    EXPECT_TRUE(turn_until(client, [&] { return !client.find("b")->online; }));
    EXPECT_THAT(changed, ElementsAre("b"));

    changed.clear();
    bridge.publish_state({.online = false});
    EXPECT_TRUE(turn_until(client, [&] { return !client.find("a")->online; }));
    EXPECT_THAT(changed, ElementsAre("a", "b"));
}

TEST(Client, ForgetsAnOltThatIsTakenBack)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a", "b"}, nothing);
    Client client(settings_for(broker.local()));
    client.connect(long_time);
    bridge.publish("pon/olt/a/inventory", "");
    EXPECT_TRUE(turn_until(client, [&] { return client.olts().size() == 1; }));
    EXPECT_EQ(client.find("a"), std::nullopt);
}

TEST(Client, PassesOverWhatIsWrong)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a"}, nothing);
    bridge.publish("pon/olt/b/inventory", to_json(PlayedBridge::inventory("a", "hut")));
    bridge.publish("pon/olt/c/inventory", "{");
    bridge.publish("pon/bridge/barn/state", "{\"state\":\"upside down\"}");
    Client client(settings_for(broker.local()));
    client.connect(long_time);
    EXPECT_THAT(client.olts(), SizeIs(1));
    EXPECT_THAT(client.take_problems(),
                testing::UnorderedElementsAre("pon/olt/b/inventory: the inventory is of the OLT 'a'",
                                              StartsWith("pon/olt/c/inventory: the inventory is not JSON"),
                                              "pon/bridge/barn/state: state: expected online or offline"));
}

TEST(Client, AsksAnOlt)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a"}, echo);
    Client client(settings_for(broker.local()));
    client.open(long_time);
    std::optional<Reply> reply;
    client.send("a", Class::service_affecting, "7", 2500, [&](const Reply &came) { reply = came; });
    EXPECT_EQ(client.pending(), 1u);
    ASSERT_TRUE(turn_until(client, [&] { return reply.has_value(); }));
    EXPECT_EQ(client.pending(), 0u);
    EXPECT_EQ(reply->kind, Reply::Kind::answered);
    EXPECT_EQ(reply->text, R"({"of":"pon/olt/a/call/service-affecting/alice","said":7})");
    const Message request = bridge.requests().at(0);
    EXPECT_THAT(request.response_topic, StartsWith("pon/client/alice/"));
    EXPECT_TRUE(Topics().is_reply_to("alice", request.response_topic));
    EXPECT_THAT(request.expiry.value_or(0), testing::AllOf(testing::Ge(1u), testing::Le(3u)));
}

TEST(Client, AsksAThousandAtOnce)
{
    const Mosquitto broker("max_queued_messages 0\n");
    std::vector<std::string> names;
    for (int number = 0; number < 50; ++number)
        names.push_back("olt-" + std::to_string(number));
    PlayedBridge bridge(broker.local(), "hut", names, echo);
    Client client(settings_for(broker.local()));
    client.open(long_time);
    constexpr size_t count = 2500; // more than may be under way
    std::map<size_t, std::string> replies;
    for (size_t number = 0; number < count; ++number)
        client.send(names[number % names.size()], Class::read, std::to_string(number), long_time,
                    [&, number](const Reply &came) {
                        if (came.kind == Reply::Kind::answered) replies.emplace(number, came.text);
                    });
    EXPECT_TRUE(turn_until(client, [&] { return client.pending() == 0; }));
    ASSERT_THAT(replies, SizeIs(count));
    for (const auto &[number, text] : replies)
        ASSERT_THAT(text, AllOf(HasSubstr("/olt/" + names[number % names.size()] + "/"),
                                HasSubstr(":" + std::to_string(number) + "}")));
}

TEST(Client, SaysAtOnceThatNobodyAnswersForAnOlt)
{
    const Mosquitto broker;
    Client client(settings_for(broker.local()));
    client.open(long_time);
    const Reply reply = ask(client, "a", "1");
    EXPECT_EQ(reply.kind, Reply::Kind::unreachable);
    EXPECT_EQ(reply.text, "nobody answers for the OLT a");
    EXPECT_THROW(client.send("a/b", Class::read, "1", 1, {}), call::UsageError);
}

TEST(Client, SaysThatNoAnswerCame)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a"}, nothing);
    Client client(settings_for(broker.local()));
    client.open(long_time);
    const Reply reply = ask(client, "a", "1", 50);
    EXPECT_EQ(reply.kind, Reply::Kind::silent);
    EXPECT_EQ(reply.text, "no answer of the OLT a came within 50 ms");
}

TEST(Client, PassesOverAnswersThatNobodyWaitsFor)
{
    const Mosquitto broker;
    Message first;
    PlayedBridge bridge(broker.local(), "hut", {"a"}, [&](const Message &request) -> std::optional<std::string> {
        if (request.payload == "1") first = request;
        return "\"" + request.payload + "\"";
    });
    Client client(settings_for(broker.local()));
    client.open(long_time);
    int calls = 0;
    client.send("a", Class::read, "1", long_time, [&](const Reply &) { ++calls; });
    EXPECT_TRUE(turn_until(client, [&] { return calls == 1; }));
    bridge.publish(first.response_topic, "no correlation", false);
    EXPECT_EQ(ask(client, "a", "2").text, "\"2\"");
    EXPECT_EQ(calls, 1);
}

TEST(Client, SaysWhatTheBrokerDoesNotPermit)
{
    const Mosquitto broker("acl_file {FOLDER}/acl\n", {{"acl", "topic read pon/#\ntopic write pon/olt/+/inventory\n"
                                                               "topic write pon/bridge/+/state\n"}});
    PlayedBridge bridge(broker.local(), "hut", {"a"}, echo);
    Client client(settings_for(broker.local()));
    client.open(long_time);
    const Reply reply = ask(client, "a", "1");
    EXPECT_EQ(reply.kind, Reply::Kind::refused);
    EXPECT_THAT(reply.text, HasSubstr("the broker does not take the request: "));
    MqttLink link(client, "a");
    EXPECT_THROW(link.exchange("1", Class::read, long_time), call::Refused);
    EXPECT_THAT(unreachable_because([&] { client.connect(long_time); }),
                HasSubstr("does not permit alice to publish to itself, on pon/client/alice/#"));
}

TEST(Client, SaysWhyTheBrokerIsNotReached)
{
    Client nowhere(settings_for({.socket = "/tmp/there/is/no/broker"}));
    EXPECT_THAT(unreachable_because([&] { nowhere.connect(long_time); }),
                StartsWith("the broker at /tmp/there/is/no/broker is not reached: "));
    EXPECT_THAT(ask(nowhere, "a", "1", 1).text, StartsWith("the broker at /tmp/there/is/no/broker is not reached: "));
    EXPECT_EQ(ask(nowhere, "a", "1", 1).kind, Reply::Kind::unreachable);
}

TEST(Client, GoesOnWhenTheBrokerIsThereAgain)
{
    Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a"}, echo);
    PlayedBridge other(broker.local(), "barn", {"b"}, echo);
    Client client(settings_for(broker.local()));
    client.connect(long_time);
    EXPECT_THAT(client.olts(), SizeIs(2));

    // The broker keeps nothing: only one of the bridges says again what it answers for.
    broker.stop();
    std::optional<Reply> reply;
    EXPECT_TRUE(turn_until(client, [&] { return !bridge.is_connected(); }));
    client.send("a", Class::read, "1", long_time, [&](const Reply &came) { reply = came; });
    broker.start();
    ASSERT_TRUE(wait_until([&] { return bridge.connection_count() > 1; }));
    bridge.publish("pon/olt/a/inventory", to_json(PlayedBridge::inventory("a", "hut")));
    ASSERT_TRUE(turn_until(client, [&] { return reply.has_value(); }));
    EXPECT_EQ(reply->text, R"({"of":"pon/olt/a/call/read/alice","said":1})");
    EXPECT_TRUE(turn_until(client, [&] { return client.olts().size() == 1; }));
    EXPECT_TRUE(turn_until(client, [&] { return client.find("a").has_value(); }));
}

TEST(Client, HearsWhatHappens)
{
    const Mosquitto broker;
    PlayedBridge bridge(broker.local(), "hut", {"a"}, nothing);
    Client client(settings_for(broker.local()));
    std::vector<std::string> heard;
    client.hear_events([&](const std::string &olt, std::string_view text) {
        heard.push_back("event of " + olt + ": " + std::string(text));
    });
    client.hear_audit([&](const std::string &olt, std::string_view text) {
        heard.push_back("audit of " + olt + ": " + std::string(text));
    });
    client.connect(long_time);
    bridge.publish("pon/olt/a/event", "{1}", false);
    bridge.publish("pon/olt/a/audit", "{2}", false);
    EXPECT_TRUE(turn_until(client, [&] { return heard.size() == 2; }));
    EXPECT_THAT(heard, ElementsAre("event of a: {1}", "audit of a: {2}"));
}

} // namespace
