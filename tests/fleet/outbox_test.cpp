// What an outbox keeps, and how long.
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include "fleet/ponbridge/outbox.h"
#include "mosquitto.h"

namespace
{

using fleet::Message;
using fleet::Outbox;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// A Sender publishes what an outbox has.
class Sender : public Peer
{
public:
    Sender(const Mosquitto &broker, Outbox &used) : Peer(broker.local(), "sender"), outbox(used) {}

    void connected() override
    {
        Peer::connected();
        outbox.connected(connection);
    }
    void lost(const std::string &reason) override
    {
        outbox.lost();
        Peer::lost(reason);
    }
    void acknowledged(int number, const std::string &error) override
    {
        if (!outbox.acknowledged(number, error)) Peer::acknowledged(number, error);
    }
    void unheard(int number) override { acknowledged(number, {}); }
    ~Sender() override { outbox.lost(); }

    Outbox &outbox;
};

class Kept : public testing::Test
{
protected:
    Kept() { file = (std::filesystem::path(mkdtemp(folder.data())) / "outbox").string(); }
    ~Kept() override { std::filesystem::remove_all(folder); }

    std::unique_ptr<Outbox> open(uint64_t limit = Outbox::usual_limit)
    {
        return std::make_unique<Outbox>(
            file, [this](const std::string &text) { complaints.push_back(text); }, limit);
    }
    static std::vector<std::string> payloads(const Peer &peer)
    {
        std::vector<std::string> found;
        for (const Message &message : peer.messages)
            found.push_back(message.payload);
        return found;
    }

    std::string folder = "/tmp/outbox_test_XXXXXX";
    std::string file;
    std::vector<std::string> complaints;
};

TEST_F(Kept, PublishesLaterWhatItWasGivenBeforeARestart)
{
    auto outbox = open();
    outbox->add("a/b", "one");
    outbox->add("a/b", "\"two\"\n");
    outbox.reset();
    outbox = open();
    EXPECT_EQ(outbox->size(), 2u);
    const Mosquitto broker;
    Peer peer(broker.local(), "reader");
    peer.hear("a/b");
    Sender sender(broker, *outbox);
    ASSERT_TRUE(sender.turn_until([&] { return outbox->size() == 0; }));
    ASSERT_TRUE(peer.turn_until([&] { return peer.messages.size() == 2; }));
    EXPECT_THAT(payloads(peer), ElementsAre("one", "\"two\"\n"));
    EXPECT_EQ(std::filesystem::file_size(file), 0u);
    outbox->add("a/b", "three");
    ASSERT_TRUE(sender.turn_until([&] { return outbox->size() == 0; }));
    EXPECT_EQ(std::filesystem::file_size(file), 0u);
    EXPECT_THAT(complaints, IsEmpty());
}

TEST_F(Kept, KeepsEverythingWhileTheBrokerIsAway)
{
    constexpr int count = 500;
    Mosquitto broker("max_queued_messages 0\n");
    auto outbox = open();
    Sender sender(broker, *outbox);
    ASSERT_TRUE(sender.turn_until([&] { return sender.connections == 1; }));
    broker.stop();
    ASSERT_TRUE(sender.turn_until([&] { return !sender.losses.empty(); }));
    for (int i = 0; i < count; ++i)
        outbox->add("a/b", std::to_string(i));
    EXPECT_EQ(outbox->size(), size_t{count});
    broker.start();
    Peer peer(broker.local(), "reader");
    peer.hear("a/b");
    ASSERT_TRUE(sender.turn_until([&] { return outbox->size() == 0; }));
    ASSERT_TRUE(peer.turn_until([&] { return peer.messages.size() >= count; }));
    EXPECT_EQ(payloads(peer).front(), "0");
    EXPECT_EQ(payloads(peer).back(), std::to_string(count - 1));
}

TEST_F(Kept, LosesWhatComesWhenTooMuchWaitsAndSaysSoOnce)
{
    auto outbox = open(200);
    for (int i = 0; i < 10; ++i)
        outbox->add("a/b", std::string(40, 'x'));
    const size_t kept = outbox->size();
    EXPECT_LT(kept, 10u);
    EXPECT_GT(kept, 0u);
    EXPECT_THAT(complaints, ElementsAre(HasSubstr("too much waits")));
    const Mosquitto broker;
    Sender sender(broker, *outbox);
    ASSERT_TRUE(sender.turn_until([&] { return outbox->size() == 0; }));
    outbox->add("a/b", "y");
    EXPECT_THAT(complaints,
                ElementsAre(HasSubstr("too much waits"), HasSubstr(std::to_string(10 - kept) + " messages are lost")));
}

TEST_F(Kept, PassesOverLinesThatAreCutOrDamaged)
{
    open()->add("a/b", "one");
    std::ofstream(file, std::ios::app) << "{\"topic\":1}\n{\"topic\":\"a/b\",\"te";
    EXPECT_EQ(open()->size(), 1u);
    EXPECT_THAT(complaints, ElementsAre(HasSubstr("1 lines are damaged")));
    const auto first = open();
    EXPECT_THROW(open(), std::runtime_error) << "another one keeps it";
}

TEST_F(Kept, DoesNotWaitForWhatTheBrokerNeverTakes)
{
    const Mosquitto broker("acl_file {FOLDER}/acl\n", {{"acl", "topic readwrite a/b\n"}});
    auto outbox = open();
    outbox->add("c/d", "one");
    outbox->add("a/b", "two");
    Sender sender(broker, *outbox);
    ASSERT_TRUE(sender.turn_until([&] { return outbox->size() == 0; }));
    EXPECT_THAT(complaints, ElementsAre(HasSubstr("Not authorized")));
}

} // namespace
