// These tests run ponbridge between a real broker and OLTs, as clients of the fleet see it.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control.h"
#include "fake_service.h"
#include "fleet/protocol/message.h"
#include "fleet/protocol/topics.h"
#include "fleet/selection/inventory.h"
#include "mosquitto.h"
#include "program.h"
#include "simulator.h"

namespace
{

using catalogue::Class;
using fleet::Inventory;
using fleet::Message;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const std::string reading = R"({"call":{"operation":"bsp_pon_get_basic_info"}})";

std::string binding(const std::string &id, const std::string &onu_id)
{
    return R"({"id":")" + id +
           R"(","call":{"operation":"bsp_pon_bind_onu_spec_id","arguments":{"pon_port":1,"onu_id":)" + onu_id +
           R"(,"mac":"06:00:00:00:00:01","value":0}}})";
}

std::string content_of(const std::string &file)
{
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

class Fleet : public testing::Test
{
protected:
    // Writes the configuration, and returns the words that run a bridge by it.
    std::vector<std::string> configured(const std::string &olts, const std::string &more = {},
                                        bool events = false) const
    {
        std::ofstream(file) << "name = \"hut\"\nstate = \"" << broker.folder() << "/state\"\naudit = \""
                            << broker.folder()
                            << "/audit\"\ninventory_period = 1\nevents = " << (events ? "true" : "false") << "\n"
                            << more << "[broker]\nsocket = \"" << broker.folder() << "/socket\"\n"
                            << olts;
        return {PONBRIDGE, "--config", file};
    }
    static std::string olt(const std::string &name, const std::string &folder, const std::string &more = {})
    {
        return "[[olt]]\nname = \"" + name + "\"\nsocket_dir = \"" + folder + "\"\n" + more;
    }

    // Sends a request, and returns its number among those of this test.
    size_t send(const std::string &name, Class impact, const std::string &request, std::optional<uint32_t> expiry = {})
    {
        const size_t number = ++sent;
        published = peer.connection.publish({.topic = topics.call({name, impact, "ann"}),
                                             .payload = request,
                                             .response_topic = reply,
                                             .correlation = correlation(number),
                                             .expiry = expiry});
        EXPECT_NE(published, 0);
        return number;
    }
    static std::string correlation(size_t number) { return std::string(1, '\0') + std::to_string(number); }
    std::string found_answer(size_t number) const
    {
        for (const Message &message : peer.messages)
            if (message.topic == reply && message.correlation == correlation(number)) return message.payload;
        return {};
    }
    std::string answer(size_t number)
    {
        EXPECT_TRUE(peer.turn_until([&] { return !found_answer(number).empty(); })) << "no answer to " << number;
        return found_answer(number);
    }
    // Asks again while no bridge hears it, as a bridge that has just come does not.
    std::string ask(const std::string &name, Class impact, const std::string &request)
    {
        size_t number = send(name, impact, request);
        EXPECT_TRUE(peer.turn_until([&] {
            if (peer.answers[published] == "unheard") number = send(name, impact, request);
            return !found_answer(number).empty();
        })) << "no answer to "
            << number;
        return found_answer(number);
    }

    // Waits for an inventory that is so.
    Inventory inventory_that(const std::function<bool(const Inventory &)> &is_so)
    {
        Inventory found;
        EXPECT_TRUE(peer.turn_until([&] {
            for (const Message &message : std::exchange(peer.messages, {})) {
                if (message.topic != topics.inventory("north") || message.payload.empty()) continue;
                found = fleet::inventory_from_json(message.payload);
                if (is_so(found)) return true;
            }
            return false;
        })) << to_json(found);
        return found;
    }
    // Waits until requests to this OLT are heard: a bridge subscribes to them before it says that it has the OLT.
    void wait_for(const std::string &name)
    {
        peer.hear(topics.inventory(name));
        EXPECT_TRUE(peer.turn_until([&] { return !peer.take(topics.inventory(name)).payload.empty(); })) << name;
    }

    // As above, of a bridge that is there again. Whoever heard of the OLT before is told once more.
    void wait_again_for(const std::string &name)
    {
        EXPECT_TRUE(peer.turn_until([&] { return !peer.take(topics.inventory(name)).payload.empty(); })) << name;
    }

    const Mosquitto broker;
    const std::string file = broker.folder() + "/bridge.toml";
    const fleet::Topics topics;
    const std::string reply = topics.reply("ann", "s1");
    size_t sent = 0;
    int published = 0; // the number of the last request among what was published
    Peer peer{broker.local(), "ann"};
    void SetUp() override { peer.hear(reply); }
};

class Simulated : public Fleet
{
protected:
    Simulator simulator{{"--ports", "2", "--arrivals", "4", "--silent", "0", "--speed", "100", "--audit",
                         Simulator::folder() + "/audit"}};
    const std::string folder = Simulator::folder() + "/ipc";
    ~Simulated() override { std::filesystem::remove(Simulator::folder() + "/audit"); }
};

TEST_F(Simulated, TellsWhichOltsItHas)
{
    Program bridge(configured(olt("north", folder, "labels = {site = \"hill\"}\n")));
    peer.hear(topics.bridge("hut"));
    peer.hear(topics.inventory("north"));
    const Inventory one = inventory_that([](const Inventory &found) { return found.answers; });
    EXPECT_EQ(one.bridge, "hut");
    EXPECT_THAT(one.labels, testing::ElementsAre(testing::Pair("site", "hill")));
    EXPECT_EQ(one.ports, 2u);
    EXPECT_THAT(one.catalogue, SizeIs(64));
    EXPECT_FALSE(one.model.empty());
    simulator.kill();
    inventory_that([](const Inventory &found) { return !found.answers; });
    simulator.start();
    inventory_that([](const Inventory &found) { return found.answers; });
}

TEST_F(Simulated, SaysWhetherItIsThere)
{
    const auto next_state = [&] {
        std::string state;
        peer.turn_until([&] { return !(state = peer.take(topics.bridge("hut")).payload).empty(); });
        return state;
    };
    peer.hear(topics.bridge("hut"));
    {
        Program bridge(configured(olt("north", folder)));
        EXPECT_THAT(next_state(), AllOf(HasSubstr("\"online\""), HasSubstr("\"olts\":1")));
        EXPECT_EQ(bridge.end(SIGTERM), 0);
        EXPECT_THAT(next_state(), HasSubstr("\"offline\""));
    }
    Program bridge(configured(olt("north", folder)));
    EXPECT_THAT(next_state(), HasSubstr("\"online\""));
    EXPECT_EQ(bridge.end(SIGKILL), -SIGKILL);
    EXPECT_THAT(next_state(), HasSubstr("\"offline\"")) << "its last will";
}

TEST_F(Simulated, ExecutesAWriteOnceAndSaysWhoAskedForIt)
{
    Program bridge(configured(olt("north", folder)));
    wait_for("north");
    peer.hear(topics.audit("north"));
    EXPECT_THAT(ask("north", Class::read, reading), AllOf(StartsWith("{\"outcome\":"), HasSubstr("\"pon_ports\":2")));
    const std::string first = ask("north", Class::service_affecting, binding("b-1", "9"));
    EXPECT_THAT(first, AllOf(StartsWith("{\"outcome\":"), HasSubstr("\"status\":0")));
    EXPECT_EQ(ask("north", Class::service_affecting, binding("b-1", "9")), first);
    const std::string at_the_olt = content_of(Simulator::folder() + "/audit");
    const size_t once = at_the_olt.find("BSP_CMD_ONU_BIND");
    ASSERT_NE(once, at_the_olt.npos);
    EXPECT_EQ(at_the_olt.find("BSP_CMD_ONU_BIND", once + 1), at_the_olt.npos) << at_the_olt;
    std::string line;
    EXPECT_TRUE(peer.turn_until([&] { return !(line = peer.take(topics.audit("north")).payload).empty(); }));
    EXPECT_THAT(line, AllOf(HasSubstr(R"("user":"ann","address":"mqtt","olt":"north","class":"service-affecting")"),
                            HasSubstr("BSP_CMD_ONU_BIND"), HasSubstr("BSP_OK")));
    EXPECT_THAT(content_of(broker.folder() + "/audit"), StartsWith(line + "\n"));
}

TEST_F(Simulated, TellsWhatHappens)
{
    Program bridge(configured(olt("north", folder), {}, true));
    peer.hear(topics.event("north"));
    wait_for("north");
    std::string event;
    int onu = 1;
    // What is seen first is no event: ONUs are bound until one is.
    EXPECT_TRUE(peer.turn_until([&] {
        if (onu < 60) send("north", Class::service_affecting, binding("b-" + std::to_string(onu), std::to_string(onu)));
        ++onu;
        peer.connection.turn(500);
        return !(event = peer.take(topics.event("north")).payload).empty();
    }));
    EXPECT_THAT(event, AllOf(HasSubstr(R"("olt":"north")"), HasSubstr(R"("kind":"onu_)"), HasSubstr("north: ")));
}

class Faked : public Fleet
{
};

TEST_F(Faked, DoesNotKnowWhatBecameOfWhatItWasKilledIn)
{
    std::atomic<int> binds = 0;
    FakeService service([&](const board_request &request, board_answer *answer) {
        if (request.call != BOARD_CALL_SET) return;
        ++binds;
        board_answer_drop(answer);
    });
    {
        Program bridge(configured(olt("north", service.folder())));
        wait_for("north");
        send("north", Class::service_affecting, binding("b-1", "9"));
        ASSERT_TRUE(peer.turn_until([&] { return binds == 1; }));
        EXPECT_EQ(bridge.end(SIGKILL), -SIGKILL);
    }
    while (!peer.take(topics.inventory("north")).payload.empty())
        ;
    Program bridge(configured(olt("north", service.folder())));
    wait_again_for("north");
    EXPECT_THAT(ask("north", Class::service_affecting, binding("b-1", "9")), StartsWith("{\"problem\":\"unknown\""));
    EXPECT_EQ(binds, 1);
}

TEST_F(Faked, AnswersOnlyWhoAsks)
{
    FakeService service;
    Program bridge(configured(olt("north", service.folder())));
    wait_for("north");
    const std::string other = topics.reply("bob", "s1");
    peer.hear(other);
    const auto publish = [&](const std::string &response, bool retained) {
        peer.connection.publish({.topic = topics.call({"north", Class::service_affecting, "ann"}),
                                 .payload = binding("b-1", "9"),
                                 .retained = retained,
                                 .response_topic = response,
                                 .correlation = "x"});
    };
    for (const std::string &response : {other, std::string(), std::string("pon/client/ann"), topics.inventory("north")})
        publish(response, false);
    bridge.expect("a request of ann is passed over: its response topic");
    EXPECT_THAT(ask("north", Class::read, reading), HasSubstr("{")) << "it goes on";
    EXPECT_EQ(peer.take(other).topic, "");
    EXPECT_THAT(service.settings(), IsEmpty());
}

TEST_F(Faked, DoesNotExecuteWhatWasRetained)
{
    FakeService service;
    const int number = peer.connection.publish({.topic = topics.call({"north", Class::service_affecting, "ann"}),
                                                .payload = binding("b-1", "9"),
                                                .retained = true,
                                                .response_topic = reply});
    ASSERT_TRUE(peer.turn_until([&] { return peer.answers.contains(number); }));
    Program bridge(configured(olt("north", service.folder())));
    bridge.expect("a request of ann is passed over: it was retained");
    EXPECT_THAT(service.settings(), IsEmpty());
}

TEST_F(Faked, HoldsToClassesAndClients)
{
    FakeService service;
    Program bridge(configured(olt("north", service.folder(), "allow = \"write\"\n")));
    wait_for("north");
    EXPECT_THAT(ask("north", Class::read, binding("b-1", "9")), HasSubstr("it was sent as read"));
    EXPECT_THAT(ask("north", Class::service_affecting, binding("b-1", "9")), HasSubstr("this OLT allows write"));
    EXPECT_THAT(ask("north", Class::read, "{"), StartsWith("{\"problem\":\"wrong\""));
    EXPECT_THAT(ask("north", Class::read, std::string(2'000'000, ' ')), HasSubstr("longer than"));
    EXPECT_THAT(service.settings(), IsEmpty());
    configured(olt("north", service.folder()), "clients = {bob = \"read\"}\n");
    bridge.send(SIGHUP);
    bridge.expect("goes on by the configuration");
    EXPECT_THAT(ask("north", Class::read, reading), HasSubstr("the client ann is not known"));
}

TEST_F(Faked, ServesOtherOltsAfterItsConfigurationWasReadAgain)
{
    FakeService north, south;
    Program bridge(configured(olt("north", north.folder())));
    wait_for("north");
    configured(olt("south", south.folder()));
    bridge.send(SIGHUP);
    bridge.expect("goes on by the configuration");
    wait_for("south");
    EXPECT_THAT(ask("south", Class::service_affecting, binding("b-1", "9")), StartsWith("{\"outcome\":"));
    EXPECT_TRUE(peer.turn_until([&] {
        for (const Message &message : peer.messages)
            if (message.topic == topics.inventory("north") && message.payload.empty()) return true;
        return false;
    })) << "north is served no more";
    configured(olt("south", south.folder(), "color = 1\n"));
    bridge.send(SIGHUP);
    bridge.expect("the configuration is not taken: " + file + ":");
    peer.hear(topics.bridge("hut"));
    configured(olt("south", south.folder()), "threads = 1\n");
    bridge.send(SIGHUP);
    for (const char *state : {"\"offline\"", "\"online\""})
        EXPECT_TRUE(
            peer.turn_until([&] { return peer.take(topics.bridge("hut")).payload.find(state) != std::string::npos; }));
    EXPECT_THAT(ask("south", Class::service_affecting, binding("b-2", "9")), StartsWith("{\"outcome\":"));
}

TEST_F(Faked, TakesEachFolderForAnOlt)
{
    FakeService service;
    const std::string olts = broker.folder() + "/olts";
    std::filesystem::create_directories(olts + "/south");
    std::filesystem::create_directory_symlink(service.folder(), olts + "/north");
    std::ofstream(olts + "/file");
    Program bridge(configured("[[folder]]\npath = \"" + olts + "\"\nlabels = {site = \"hill\"}\n"));
    peer.hear(topics.inventory("+"));
    const Inventory one = inventory_that([](const Inventory &found) { return found.answers; });
    EXPECT_THAT(one.labels, SizeIs(1));
    EXPECT_THAT(ask("south", Class::read, reading), StartsWith("{\"problem\":\"unavailable\""));
}

TEST_F(Faked, GoesOnAfterTheBrokerWasAway)
{
    FakeService service;
    Program bridge(configured(olt("north", service.folder())));
    wait_for("north");
    Mosquitto &gone = const_cast<Mosquitto &>(broker);
    const auto write = [&](const std::string &id) {
        EXPECT_THAT(ask("north", Class::service_affecting, binding(id, "9")), StartsWith("{\"outcome\":"));
    };
    write("b-1");
    gone.stop();
    bridge.expect("there is no connection with the broker");
    gone.start();
    peer.hear(topics.audit("north"));
    ASSERT_TRUE(peer.turn_until([&] { return peer.connections == 2; }));
    bridge.expect("connected with the broker");
    write("b-2");
    EXPECT_TRUE(peer.turn_until([&] { return !peer.take(topics.audit("north")).payload.empty(); }));
    EXPECT_TRUE(peer.turn_until([&] { return std::filesystem::file_size(broker.folder() + "/state/outbox") == 0; }));
}

TEST_F(Faked, SaysWhatIsWrongWithItsConfiguration)
{
    const auto says = [&](const std::string &text, int code) {
        Program bridge({PONBRIDGE, "--config", file, "--check"});
        bridge.expect(text);
        EXPECT_EQ(bridge.end(0), code);
    };
    configured(olt("north", "/run/north"));
    says("ponbridge: 1 OLT", 0);
    std::filesystem::copy_file(EXAMPLE, file, std::filesystem::copy_options::overwrite_existing);
    says("ponbridge: 1 OLT", 0);
    configured(olt("north", "north"));
    says(file + ":", 2);
    configured(olt("north", "/run/north", "allow = \"all\"\n"));
    says("allow: ", 2);
    configured(olt("north", "/a") + olt("north", "/b"));
    says("another OLT has the name north", 2);
    configured("[clients]\nann = \"much\"\n");
    says("ann: expected read, write or service-affecting", 2);
    std::ofstream(file) << "name = \"hut\"\n[broker]\nhost = \"b\"\ncertificate = \"/c\"\n";
    says("name its key, too", 2);
    std::ofstream(file) << "name = \"hut\"\n[broker]\nhost = \"b\"\nsocket = \"/s\"\n";
    says("leave one of them out", 2);
    std::ofstream(file) << "name = \"hut\"\n";
    says("broker: ", 2);
    std::filesystem::remove(file);
    says(file + ": cannot be read", 2);
    configured({});
    std::filesystem::create_directories(broker.folder() + "/state/outbox");
    Program bridge({PONBRIDGE, "--config", file});
    bridge.expect("/state/outbox: ");
    EXPECT_EQ(bridge.end(0), 1);
}

} // namespace
