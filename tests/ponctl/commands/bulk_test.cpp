// These tests run ponctl bulk, ponctl arp and ponctl onu configure as a process against a fake service.
#include <cstring>
#include <fstream>

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bsp_pon.h"
#include "fake_service.h"

namespace
{

using Words = std::vector<std::string>;

uint32_t command_of(const Words &words)
{
    const FakeService service;
    service.ponctl(words);
    return service.received().at(0).word(0);
}

TEST(Bulk, AsksForItsTable)
{
    EXPECT_EQ(command_of({"bulk", "optics"}), BSP_CMD_VIEW_ONU_OPTICS_ALL);
    EXPECT_EQ(command_of({"bulk", "optics", "2"}), BSP_CMD_VIEW_ONU_OPTICS);
    EXPECT_EQ(command_of({"bulk", "stats"}), BSP_CMD_VIEW_ONU_STATS_ALL);
    EXPECT_EQ(command_of({"bulk", "ports"}), BSP_CMD_VIEW_PORT_INFO);
    EXPECT_EQ(command_of({"bulk", "olt"}), BSP_CMD_VIEW_BASIC_INFO);
    EXPECT_EQ(command_of({"bulk", "all"}), BSP_CMD_ALL_ONU_INFO);
}

TEST(Bulk, IsTheRowsOfItsTable)
{
    const FakeService service(rows(BSP_CMD_VIEW_ONU_OPTICS, R"([{"pon_port":2},{"pon_port":2}])"));
    const Finished finished = service.ponctl({"bulk", "optics", "2", "-o", "json"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(parsed(finished.out).Size(), 2u);
    EXPECT_EQ(service.received().at(0).word(4), 2u);
}

TEST(Bulk, OfAllOnusIsATextOfLines)
{
    std::vector<uint8_t> record(1044);
    std::memcpy(&record[20], "1/1 online\n1/2 offline\n", 23);
    const FakeService service(bytes(record));
    EXPECT_EQ(service.ponctl({"bulk", "all"}).out, "1/1 online\n1/2 offline\n");
    EXPECT_EQ(service.ponctl({"bulk", "all", "-o", "json"}).out, "\"1/1 online\\n1/2 offline\\n\"\n");
}

TEST(Bulk, TextDoesNotReachTheTerminalsCommands)
{
    std::vector<uint8_t> record(1044);
    std::memcpy(&record[20], "\x1b[2J", 4);
    const FakeService service(bytes(record));
    EXPECT_EQ(service.ponctl({"call", "bsp_pon_get_allonuinfo"}).out, "\\x1b[2J\n");
}

TEST(Bulk, EndsWithOneForAStatus)
{
    const FakeService service(status(4003));
    for (const char *what : {"optics", "stats", "ports", "olt", "all"})
        EXPECT_EQ(service.ponctl({"bulk", what}).code, 1) << what;
}

TEST(Arp, ShowsTheRowsOfAFile)
{
    std::vector<uint8_t> record(944);
    const FakeService service([&record](const board_request &, board_answer *answer) {
        board_answer_data(answer, record.data(), static_cast<uint32_t>(record.size()));
    });
    const std::string name = service.folder() + "/result";
    std::ofstream(name) << whole_rows(BSP_CMD_ARP_TABLE, R"([{"ip":"10.0.0.1"}])");
    std::memcpy(&record[429], name.c_str(), name.size() + 1);
    const Finished finished = service.ponctl({"arp", "2", "-o", "json"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_STREQ(parsed(finished.out)[0]["ip"].GetString(), "10.0.0.1");
    EXPECT_EQ(service.received().at(0).word(0), BSP_CMD_ARP_TABLE);
    EXPECT_EQ(service.received().at(0).word(4), 2u);
    EXPECT_NE(access(name.c_str(), F_OK), 0);
}

TEST(OnuConfigure, IsTheWordOfEachOnu)
{
    std::vector<uint8_t> record(1888);
    record[20] = record[23] = 5; // 0x05000005 in both byte orders
    const FakeService service(bytes(record));
    const auto words = parsed(service.ponctl({"onu", "configure", "1/5-6", "-o", "json"}).out);
    EXPECT_EQ(words[1]["configure"].GetUint(), 0x05000005u);
    EXPECT_EQ(service.received().at(1).word(16), BSP_CMD_ONU_CONFIG_WORD);
    EXPECT_EQ(service.received().at(1).word(4), 6u);
}

} // namespace
