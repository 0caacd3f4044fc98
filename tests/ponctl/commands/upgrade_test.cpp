// These tests run ponctl upgrade as a process against a fake service.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

TEST(UpgradeTypes, AreATable)
{
    const FakeService service(
        rows(792, R"([{"name":"a1","vendor":"SIMA","model":"E1","version":"2.0","size":100,"file":""}])"));
    EXPECT_THAT(service.ponctl({"upgrade", "types"}).out, HasSubstr("a1   SIMA   E1    2.0"));
}

TEST(UpgradeAdd, SendsTheType)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"upgrade", "add", "home", "SIMA", "E1", "2.0", "4000000", "--file", "home.bin"}).code, 0);
    const Received type = service.received().at(0);
    EXPECT_EQ(type.number("cmd"), 790u);
    EXPECT_EQ(type.text(20), "home");
    EXPECT_EQ(type.text(52), "SIMA");
    EXPECT_EQ(type.text(57), "E1");
    EXPECT_EQ(type.text(73), "2.0");
    EXPECT_EQ(type.number("size"), 4000000u);
    EXPECT_EQ(type.text(96), "home.bin");
}

TEST(UpgradeDelete, SendsTheName)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"upgrade", "delete", "home"}).code, 0);
    EXPECT_EQ(service.received().at(0).number("cmd"), 791u);
    EXPECT_EQ(service.received().at(0).text(20), "home");
}

TEST(UpgradeLoad, SendsThePathFromTheRoot)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"upgrade", "load", "types.txt"}).code, 0);
    EXPECT_EQ(service.ponctl({"upgrade", "load", "/etc/../tmp/types.txt"}).code, 0);
    EXPECT_EQ(service.received().at(0).text(20), (std::filesystem::current_path() / "types.txt").string());
    EXPECT_EQ(service.received().at(1).text(20), "/tmp/types.txt");
}

TEST(UpgradeBind, IsForAPortOrForSomeOnus)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"upgrade", "bind", "3", "home"}).code, 0);
    EXPECT_EQ(service.ponctl({"upgrade", "bind", "3", "home", "--onus", "1-3"}).code, 0);
    EXPECT_EQ(service.ponctl({"upgrade", "bind", "3", "--none"}).code, 0);
    const auto received = service.received();
    EXPECT_EQ(received.at(0).number("cmd"), 796u);
    EXPECT_EQ(received.at(0).number("pon_port"), 3u);
    EXPECT_EQ(received.at(0).text(24), "home");
    EXPECT_EQ(received.at(1).number("cmd"), 795u);
    EXPECT_EQ(received.at(1).text(24), "home");
    EXPECT_EQ(received.at(1).word(56), 0xeu);
    EXPECT_EQ(received.at(2).number("cmd"), 796u);
    EXPECT_EQ(received.at(2).text(24), "");
}

TEST(UpgradeStart, IsForAPortOrForOneOnu)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"upgrade", "start", "3", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"upgrade", "start", "3", "--onu", "0", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"upgrade", "start", "3", "--onu", "9", "--yes"}).code, 0);
    const auto received = service.received();
    EXPECT_EQ(received.at(0).number("cmd"), 798u);
    EXPECT_EQ(received.at(0).number("pon_port"), 3u);
    EXPECT_EQ(received.at(1).number("cmd"), 797u);
    EXPECT_EQ(received.at(1).number("onu_id"), 0u);
    EXPECT_EQ(received.at(2).number("onu_id"), 9u);
}

TEST(UpgradeStatus, IsTheViewOfVersionsAndRuns)
{
    const FakeService service(rows(387, R"([{"pon_port":3,"onu_id":9,"run":"downloading","progress":40}])"));
    const auto document = parsed(service.ponctl({"upgrade", "status", "3", "-o", "json"}).out);
    EXPECT_STREQ(document[0]["run"].GetString(), "downloading");
    EXPECT_EQ(service.received().at(0).word(4), 3u);
}

TEST(Upgrade, RefusesWhatCannotBe)
{
    const FakeService service;
    const std::vector<std::pair<Words, std::string>> cases{
        {{"add", std::string(32, 'x'), "SIMA", "E1", "2.0", "1"}, "NAME: 32 bytes are more than the 31"},
        {{"add", "x", "SIMON", "E1", "2.0", "1"}, "VENDOR: 5 bytes are more than the 4"},
        {{"add", "x", "SIMA", "E1", "2.0", "big"}, "SIZE: 'big' is not a number"},
        {{"delete", ""}, "NAME: empty"},
        {{"bind", "3"}, "which type? give either NAME or --none"},
        {{"bind", "3", "home", "--none"}, "which type? give either NAME or --none"},
        {{"bind", "3", "home", "--onus", "200"}, "--onus: '200' is not a set of ONU ids"},
        {{"start", "3", "--onu", "128", "--yes"}, "--onu: '128' is not a number from 0 to 127"},
        {{"start", "3"}, "--yes: missing; upgrading the ONUs of port 3"},
    };
    for (const auto &[more, error] : cases) {
        Words words{"upgrade"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2) << error;
        EXPECT_THAT(finished.err, HasSubstr("ponctl: " + error));
    }
    EXPECT_TRUE(service.received().empty());
}

} // namespace
