// These tests run ponctl p2p as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/service.h"
#include "catalogue.h"
#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

uint32_t code(const char *command)
{
    return catalogue::find_command(command)->code;
}

// Answers for a port, with its entries beside it.
void tell_of_port(const board_request &, board_answer *answer)
{
    const auto record = answer_to("BSP_CMD_P2P_OWN_PORT_GET", {{"on", 1},
                                                               {"rest", 1},
                                                               {"own_port", 3},
                                                               {"rate", 5000},
                                                               {"first_vlan", 10},
                                                               {"last_vlan", 20},
                                                               {"broadcast", 1},
                                                               {"multicast", 0}});
    board_answer_data(answer, record.data(), static_cast<uint32_t>(record.size()));
    const std::string rows = whole_rows(code("BSP_CMD_P2P_OWN_PORT_GET"), R"([{"entry":4,"action":"drop"}])");
    board_answer_result(answer, code("BSP_CMD_P2P_OWN_PORT_GET"), rows.data(), static_cast<uint32_t>(rows.size()));
}

FakeService::Handler port_with_entries()
{
    return by_command({{code("BSP_CMD_P2P_OWN_PORT_GET"), tell_of_port}});
}

TEST(P2pShow, IsThePortInWordsWithItsEntries)
{
    const FakeService service(port_with_entries());
    const std::string out = service.ponctl({"p2p", "show", "2"}).out;
    EXPECT_THAT(out, HasSubstr("state      on\n"));
    EXPECT_THAT(out, HasSubstr("rest       forward\n"));
    EXPECT_THAT(out, HasSubstr("rate       5000 kbit/s\n"));
    EXPECT_THAT(out, HasSubstr("multicast  off\n"));
    EXPECT_THAT(out, HasSubstr("4       - drop "));
    EXPECT_EQ(service.received()[0].number("plat_port"), 2u);
    const auto document = parsed(service.ponctl({"p2p", "show", "2", "-o", "json"}).out);
    EXPECT_EQ(document["port"]["own_port"].GetUint(), 3u);
    EXPECT_EQ(document["entries"][0]["entry"].GetUint(), 4u);
}

TEST(P2pSet, SwitchesThePortOrAnOnu)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"p2p", "set", "2", "on", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"p2p", "set", "0", "off", "--onu", "7", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].number("plat_cmd"), code("BSP_CMD_P2P_STATE_SET"));
    EXPECT_EQ(received[0].number("port"), 2u);
    EXPECT_EQ(received[0].number("onu"), 128u);
    EXPECT_EQ(received[0].number("on"), 1u);
    EXPECT_EQ(received[1].number("port"), 0u);
    EXPECT_EQ(received[1].number("onu"), 7u);
    EXPECT_EQ(received[1].number("on"), 0u);
}

TEST(P2pSet, KeepsWhatIsNotGivenOfTheConfiguration)
{
    const FakeService service(port_with_entries());
    EXPECT_EQ(service.ponctl({"p2p", "set", "2", "--vlans", "30-40", "--multicast", "on", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[1].number("plat_cmd"), code("BSP_CMD_P2P_CFG_SET"));
    EXPECT_EQ(received[1].number("plat_arg108"), 1u);
    for (const auto &[field, value] :
         {std::pair{"rate", 5000u}, {"first_vlan", 30u}, {"last_vlan", 40u}, {"broadcast", 1u}, {"multicast", 1u}})
        EXPECT_EQ(received[1].number(field), value) << field;
}

TEST(P2pEntry, SendsItsPlaceItsTrafficAndItsEnds)
{
    const FakeService service;
    EXPECT_EQ(service
                  .ponctl({"p2p", "entry", "2", "31", "forward", "--to-port", "3", "--to-onu", "9", "--rate", "77",
                           "--ethertype", "0x88cc", "--yes"})
                  .code,
              0);
    const Received entry = service.received().at(0);
    EXPECT_EQ(entry.number("plat_arg104"), 31u);
    EXPECT_EQ(entry.number("plat_arg108"), 0x88ccu);
    for (const auto &[field, value] :
         {std::pair{"action", 1u}, {"from_onu", 128u}, {"to_port", 3u}, {"to_onu", 9u}, {"rate", 77u}})
        EXPECT_EQ(entry.number(field), value) << field;
}

TEST(P2pOwnPort, IsShownAndSet)
{
    const FakeService service(port_with_entries());
    EXPECT_EQ(service.ponctl({"p2p", "own-port", "2"}).out, "FIELD    VALUE\nown_port 3\n");
    EXPECT_EQ(service.ponctl({"p2p", "own-port", "2", "any", "--yes"}).code, 0);
    EXPECT_EQ(service.received()[1].number("plat_cmd"), code("BSP_CMD_P2P_OWN_PORT_SET"));
    EXPECT_EQ(service.received()[1].number("own_port"), 0u);
}

TEST(P2p, RefusesWhatCannotBe)
{
    const FakeService service;
    const std::vector<std::pair<Words, std::string>> cases{
        {{"set", "1", "--yes"}, "nothing to set; give on or off"},
        {{"set", "1", "maybe", "--yes"}, "STATE: 'maybe' is not one of off, on"},
        {{"set", "0", "--rate", "1", "--yes"}, "PORT: 0 stands for all ports"},
        {{"set", "1", "--onu", "3", "--rate", "1", "--yes"}, "--onu: goes with on or off alone"},
        {{"set", "1", "--vlans", "5000", "--yes"}, "--vlans: '5000' is not a number from 0 to 4094"},
        {{"set", "1", "on"}, "--yes: missing; "},
        {{"entry", "1", "0", "forward", "--yes"}, "--to-port: missing; "},
        {{"entry", "1", "0", "drop", "--vlan", "1", "--ethertype", "0x800", "--yes"}, "--vlan and --ethertype: "},
    };
    for (const auto &[more, error] : cases) {
        Words words{"p2p"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2) << error;
        EXPECT_THAT(finished.err, HasSubstr("ponctl: " + error));
    }
    EXPECT_TRUE(service.received().empty());
}

} // namespace
