// These tests let a subagent meet a master agent that comes and goes.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <mutex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "master.h"
#include "snmp/agent/agent.h"

namespace
{

using namespace front;
using namespace front::snmp;
using agentx::Error;
using testing::HasSubstr;
using testing::SizeIs;

const MibSettings mib_settings;

std::shared_ptr<const Objects> ports(uint32_t count)
{
    auto snapshot = std::make_shared<Snapshot>();
    auto table = std::make_shared<Rows<view::port_info>>();
    for (uint32_t number = 1; number <= count; ++number)
        table->rows.emplace_back().pon_port = number;
    snapshot->ports = table;
    const Source olts[] = {{.index = 1, .name = "north", .snapshot = snapshot}};
    return Mib(mib_settings).objects(olts, {});
}

Notification numbered(uint32_t number)
{
    return {.name = {1, 3, 6, 1, 4, 1, 8072, 9999, 9999, 0, number}, .objects = {}};
}

// What an agent says, by any thread.
class Lines
{
public:
    Agent::Say say()
    {
        return [this](bool well, const std::string &text) {
            const std::lock_guard lock(guard);
            lines.push_back((well ? "+ " : "- ") + text);
        };
    }
    size_t with(const std::string &text)
    {
        const std::lock_guard lock(guard);
        return static_cast<size_t>(
            std::ranges::count_if(lines, [&](const std::string &line) { return line.find(text) != line.npos; }));
    }
    // Waits until a line has this text, for half a minute at most.
    void expect(const std::string &text)
    {
        for (int turn = 0; turn < 3000 && with(text) == 0; ++turn)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        EXPECT_GT(with(text), 0u) << text;
    }

private:
    std::mutex guard;
    std::vector<std::string> lines;
};

class SnmpAgent : public testing::Test
{
protected:
    ~SnmpAgent() override { std::filesystem::remove_all(folder); }

    static std::string made_folder()
    {
        std::string name = "/tmp/agentx-XXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        return name;
    }
    AgentSettings settings(std::optional<catalogue::Class> sets = {}) const
    {
        return {.master = {.path = path, .host = {}},
                .mib = mib_settings,
                .priority = 100,
                .sets = {.up_to = sets, .olts = {{1, {.name = "north", .reach = {.folder = folder + "/nobody"}}}}}};
    }

    const std::string folder = made_folder(), path = folder + "/master";
    const size_t regions = ports(1)->regions().size();
    Lines lines;
};

TEST_F(SnmpAgent, AnswersFromWhatIsPublishedLast)
{
    Master master(path);
    Agent agent(settings(), {}, lines.say());
    EXPECT_EQ(master.take_subagent(regions)[0], ports(1)->regions()[0]);
    lines.expect("+ SNMP is answered by the master agent at unix:" + path);
    const Oid of_ports{1, 3, 6, 1, 4, 1, 8072, 9999, 9999, 1, 2};
    agent.publish(ports(2));
    const size_t few = master.walk(of_ports).size();
    agent.publish(ports(4));
    EXPECT_EQ(master.walk(of_ports).size(), 2 * few);
    EXPECT_GT(few, 0u);
    EXPECT_GT(agent.master_started(), 0);
}

TEST_F(SnmpAgent, TakesLeave)
{
    Master master(path);
    {
        Agent agent(settings(), {}, lines.say());
        master.take_subagent(regions);
        lines.expect("+ SNMP is answered");
    }
    master.expect_leave();
}

TEST_F(SnmpAgent, ComesBackAndTellsWhatHappenedMeanwhile)
{
    Master master(path);
    Agent agent(settings(), {}, lines.say());
    master.take_subagent(regions);
    lines.expect("+ SNMP is answered");
    agent.tell({numbered(1)});
    EXPECT_EQ(master.take_notification(), numbered(1).name);
    master.drop_subagent();
    lines.expect("is gone: the connection has ended");
    agent.tell({numbered(2), numbered(3)});
    master.take_subagent(regions);
    EXPECT_EQ(master.take_notification(), numbered(2).name);
    EXPECT_EQ(master.take_notification(), numbered(3).name);
}

TEST_F(SnmpAgent, KeepsTheLastNotificationsWhileNobodyIsThere)
{
    Agent agent(settings(), {}, lines.say());
    lines.expect("- the SNMP master agent at unix:" + path + " cannot be reached: No such file or directory");
    for (uint32_t number = 1; number <= 1500; ++number)
        agent.tell({numbered(number)});
    Master master(path);
    master.take_subagent(regions);
    EXPECT_EQ(master.take_notification(), numbered(501).name);
    lines.expect("- 500 SNMP notifications are lost");
    EXPECT_EQ(lines.with("cannot be reached"), 1u);
}

TEST_F(SnmpAgent, SaysWhatTheMasterDoesNotTake)
{
    Master master(path);
    Agent agent(settings(), {}, lines.say());
    master.take_subagent(regions, Error::duplicate_registration);
    lines.expect("- the SNMP master agent does not take 1.3.6.1.4.1.8072.9999.9999: a duplicate registration; another "
                 "subagent has it");
    lines.expect("- SNMP is answered by");
}

TEST_F(SnmpAgent, GoesOnWhenTheMasterSendsWhatIsNoPdu)
{
    // A path at which there is no socket at all is a master that cannot be reached, and neither ends the agent.
    std::ofstream(path) << "no socket";
    Agent agent(settings(), {}, lines.say());
    lines.expect("cannot be reached: Connection refused");
    Master master(path);
    master.take_subagent(regions);
    lines.expect("+ SNMP is answered");
}

TEST(MasterAddress, IsAPathOrAnAddressWithAPort)
{
    EXPECT_EQ(to_master_address("/run/master"), (MasterAddress{.path = "/run/master", .host = {}}));
    EXPECT_EQ(to_master_address("unix:/run/master"), (MasterAddress{.path = "/run/master", .host = {}}));
    EXPECT_EQ(to_master_address("tcp:127.0.0.1:705"), (MasterAddress{.path = {}, .host = "127.0.0.1", .port = 705}));
    EXPECT_EQ(text_of(to_master_address("tcp:[::1]:705").value()), "tcp:[::1]:705");
    for (const char *wrong : {"", "run/master", "tcp:705", "tcp:127.0.0.1:", "tcp:127.0.0.1:0", "tcp:nowhere:705",
                              "tcp:127.0.0.1:70500", "udp:127.0.0.1:705"})
        EXPECT_EQ(to_master_address(wrong), std::nullopt) << wrong;
    EXPECT_EQ(to_master_address("/" + std::string(200, 'x')), std::nullopt);
}

} // namespace
