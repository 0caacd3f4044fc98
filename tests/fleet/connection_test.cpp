// How a connection gets along with a real broker.
#include <fstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <poll.h>

#include "mosquitto.h"

namespace
{

using fleet::Broker;
using fleet::Message;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

TEST(Connection, CarriesAMessageWithItsProperties)
{
    const Mosquitto broker;
    Peer peer(broker.local(), "one");
    peer.hear("a/+");
    const Message sent{.topic = "a/b",
                       .payload = std::string("\0 any \xff bytes", 13),
                       .response_topic = "c/d",
                       .correlation = std::string("\1\0\2", 3),
                       .expiry = 3600};
    const int number = peer.connection.publish(sent);
    ASSERT_TRUE(peer.turn_until([&] { return !peer.messages.empty() && peer.answers.contains(number); }));
    Message got = peer.take("a/b");
    ASSERT_TRUE(got.expiry);
    EXPECT_LE(*got.expiry, 3600u);
    got.expiry = sent.expiry;
    EXPECT_EQ(got, sent);
    EXPECT_EQ(peer.answers[number], "");
    EXPECT_EQ(peer.connections, 1);
}

TEST(Connection, SaysThatNobodyHears)
{
    const Mosquitto broker;
    Peer peer(broker.local(), "one");
    ASSERT_TRUE(peer.turn_until([&] { return peer.connections == 1; }));
    const int number = peer.connection.publish({.topic = "a/b", .payload = "x"});
    ASSERT_TRUE(peer.turn_until([&] { return peer.answers.contains(number); }));
    EXPECT_EQ(peer.answers[number], "unheard");
}

TEST(Connection, FindsWhatIsRetained)
{
    const Mosquitto broker("listener {PORT} 127.0.0.1\n");
    Peer one(broker.local(), "one"), other({.host = "127.0.0.1", .port = broker.port()}, "other");
    ASSERT_TRUE(one.turn_until([&] { return one.connections == 1; }));
    const int number = one.connection.publish({.topic = "a/b", .payload = "kept", .retained = true});
    ASSERT_TRUE(one.turn_until([&] { return one.answers.contains(number); }));
    other.connection.subscribe("a/b");
    ASSERT_TRUE(other.turn_until([&] { return !other.messages.empty(); }));
    EXPECT_EQ(other.messages[0], (Message{.topic = "a/b", .payload = "kept", .retained = true}));
}

TEST(Connection, IsUsedByManyThreadsAtOnce)
{
    constexpr size_t each = 300;
    const Mosquitto broker("max_queued_messages 0\n");
    Peer peer(broker.local(), "one");
    peer.hear("a/+");
    std::atomic<size_t> published = 0;
    std::vector<std::thread> threads;
    for (const std::string topic : {"a/1", "a/2", "a/3", "a/4"})
        threads.emplace_back([&peer, &published, topic] {
            for (size_t i = 0; i < each; ++i)
                published += peer.connection.publish({.topic = topic, .payload = std::string(2000, 'x')}) != 0;
        });
    const bool all =
        peer.turn_until([&] { return peer.messages.size() == 4 * each && peer.answers.size() > 4 * each; });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_TRUE(all) << peer.messages.size() << " messages, " << peer.answers.size() << " acknowledged";
    EXPECT_EQ(published, 4 * each);
    EXPECT_THAT(peer.losses, IsEmpty());
}

// A Counting peer says how much it was told while other threads turn.
struct Counting : Peer {
    using Peer::Peer;
    void arrived(Message message) override
    {
        Peer::arrived(std::move(message));
        ++count;
    }

    std::atomic<size_t> count = 0;
};

TEST(Connection, TellsInOrderHoweverManyThreadsTurn)
{
    constexpr size_t count = 2000;
    Mosquitto broker("max_queued_messages 0\n");
    Counting peer(broker.local(), "one");
    peer.hear("a/b");
    const size_t before = peer.count;
    Peer sender(broker.local(), "sender");
    sender.hear("a/c");
    std::atomic<bool> ending = false;
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&] {
            while (!ending)
                peer.connection.turn(100);
        });
    std::vector<std::string> sent;
    for (size_t i = 0; i < count; ++i) {
        sent.push_back(std::to_string(i));
        EXPECT_NE(sender.connection.publish({.topic = "a/b", .payload = sent.back()}), 0);
    }
    EXPECT_TRUE(sender.turn_until([&] { return peer.count == before + count; }));
    broker.stop();
    broker.start();
    ASSERT_TRUE(sender.turn_until([&] { return sender.connections == 2; }));
    EXPECT_TRUE(sender.turn_until([&] {
        peer.connection.publish({.topic = "a/c", .payload = "it is back"});
        return sender.take("a/c").payload == "it is back";
    }));
    ending = true;
    for (std::thread &thread : threads)
        thread.join();
    std::vector<std::string> told;
    for (const Message &message : peer.messages)
        told.push_back(message.payload);
    EXPECT_EQ(told, sent);
    EXPECT_THAT(peer.losses, SizeIs(1));
}

TEST(Connection, ComesBackWithItsSubscriptionsAfterABrokerWasAway)
{
    Mosquitto broker;
    Peer peer(broker.local(), "one");
    peer.hear("a/b");
    broker.stop();
    ASSERT_TRUE(peer.turn_until([&] { return !peer.losses.empty(); }));
    EXPECT_EQ(peer.connection.publish({.topic = "a/b", .payload = "x"}), 0);
    EXPECT_FALSE(peer.connection.is_connected());
    peer.connection.subscribe("c/d");
    broker.start();
    ASSERT_TRUE(peer.turn_until([&] { return peer.connections == 2; }));
    for (const char *topic : {"a/b", "c/d"}) {
        EXPECT_NE(peer.connection.publish({.topic = topic, .payload = "y"}), 0);
        EXPECT_TRUE(peer.turn_until([&] { return peer.take(topic).payload == "y"; })) << topic;
    }
    peer.connection.unsubscribe("a/b");
    EXPECT_NE(peer.connection.publish({.topic = "a/b", .payload = "z"}), 0);
    EXPECT_NE(peer.connection.publish({.topic = "c/d", .payload = "z"}), 0);
    EXPECT_TRUE(peer.turn_until([&] { return peer.take("c/d").payload == "z"; }));
    EXPECT_EQ(peer.take("a/b").payload, "");
}

TEST(Connection, LeavesALastWillUnlessItTakesLeave)
{
    const Mosquitto broker;
    Peer peer(broker.local(), "heir");
    peer.hear("will/+");
    for (const bool takes_leave : {true, false}) {
        Peer other(broker.local(), "other", Message{.topic = "will/other", .payload = takes_leave ? "polite" : "rude"});
        ASSERT_TRUE(other.turn_until([&] { return other.connections == 1; }));
        if (takes_leave) other.connection.close();
    }
    ASSERT_TRUE(peer.turn_until([&] { return !peer.messages.empty(); }));
    EXPECT_EQ(peer.messages[0].payload, "rude");
}

TEST(Connection, SaysWhyThereIsNone)
{
    const Mosquitto broker;
    Peer peer({.host = "127.0.0.1", .port = broker.port()}, "one");
    ASSERT_TRUE(peer.turn_until([&] { return peer.losses.size() == 2; }));
    EXPECT_THAT(peer.losses, Each(HasSubstr("Connection refused")));
    Peer missing({.socket = broker.folder() + "/nobody"}, "one");
    ASSERT_TRUE(missing.turn_until([&] { return !missing.losses.empty(); }));
    EXPECT_THAT(missing.losses[0], HasSubstr("No such file"));
}

TEST(Connection, TrustsOnlyItsAuthority)
{
    const Mosquitto broker("listener {PORT} 127.0.0.1\ncertfile " CERTIFICATES "/localhost.pem\nkeyfile " CERTIFICATES
                           "/localhost.key.pem\n");
    Peer peer({.host = "localhost", .port = broker.port(), .ca = CERTIFICATES "/localhost.pem"}, "one");
    peer.hear("a/b");
    Peer strange({.host = "localhost", .port = broker.port(), .ca = "/etc/ssl/certs/ca-certificates.crt"}, "two");
    ASSERT_TRUE(strange.turn_until([&] { return !strange.losses.empty(); }));
    EXPECT_THAT(strange.losses[0], HasSubstr("certificate verify failed"));
    Peer plain({.host = "localhost", .port = broker.port()}, "three");
    ASSERT_TRUE(plain.turn_until([&] { return !plain.losses.empty(); }));
    EXPECT_EQ(plain.connections, 0);
    Peer wrong({.host = "localhost", .port = broker.port(), .ca = "/nowhere.pem"}, "four");
    ASSERT_TRUE(wrong.turn_until([&] { return !wrong.losses.empty(); }));
    EXPECT_EQ(wrong.connections, 0);
}

TEST(Connection, SaysWhatTheBrokerDoesNotPermit)
{
    Mosquitto broker("acl_file {FOLDER}/acl\n", {{"acl", "topic readwrite a/b\n"}});
    Peer peer(broker.local(), "one");
    peer.connection.subscribe(std::vector<std::string>{"a/b", "c/d"});
    ASSERT_TRUE(peer.turn_until([&] { return peer.connections == 1; }));
    const int number = peer.connection.publish({.topic = "c/d", .payload = "x"});
    ASSERT_TRUE(peer.turn_until([&] { return peer.answers.contains(number); }));
    EXPECT_THAT(peer.answers[number], HasSubstr("Not authorized"));
}

TEST(Connection, HasADescriptorToWaitFor)
{
    const Mosquitto broker;
    Peer peer(broker.local(), "one");
    peer.hear("a/b");
    EXPECT_TRUE(peer.turn_until([&] { return !peer.answers.empty(); }));
    peer.connection.turn(0);
    pollfd ready{peer.connection.descriptor(), POLLIN, 0};
    peer.connection.wake();
    EXPECT_EQ(poll(&ready, 1, 0), 1);
    peer.connection.turn(0);
    peer.connection.publish({.topic = "a/b", .payload = "x"});
    EXPECT_EQ(poll(&ready, 1, 30'000), 1);
    EXPECT_TRUE(peer.turn_until([&] { return !peer.messages.empty(); }));
}

} // namespace
