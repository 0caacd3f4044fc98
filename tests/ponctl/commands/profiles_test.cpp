// These tests run ponctl profile and ponctl loid as a process against a fake service.
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bsp_pon.h"
#include "fake_service.h"
#include "generated/service_words.h"

namespace
{

using testing::HasSubstr;

TEST(ProfileKinds, AreThoseOfTheCatalogue)
{
    const auto kinds = parsed(ponctl({"profile", "kinds", "-o", "json"}).out);
    ASSERT_GT(kinds.Size(), 0u);
    EXPECT_STREQ(kinds[0]["kind"].GetString(), "line");
    EXPECT_STREQ(kinds[0]["actions"].GetString(), "store, fetch, delete, list, table, text");
}

TEST(ProfileKinds, HaveTheFieldsThatAreStored)
{
    const Finished finished = ponctl({"profile", "kinds", "LINE"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out, HasSubstr("\nvlan "));
}

TEST(ProfileKinds, ThatAreUnknownAreRefused)
{
    const FakeService service;
    EXPECT_THAT(service.ponctl({"profile", "list", "lime"}).err,
                HasSubstr("ponctl: KIND: 'lime' is not a kind of profile; did you mean line? (known are line, "));
    EXPECT_EQ(service.ponctl({"profile", "text", ""}).code, 2);
    EXPECT_TRUE(service.received().empty());
}

TEST(ProfileStore, SendsTheWholeProfile)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"profile", "store", "line", "name=office", "vlan=100"}).code, 0);
    const Received received = service.settings().at(0);
    EXPECT_EQ(received.call, BOARD_CALL_DGRAM_SET);
    EXPECT_EQ(received.record.size(), 84u);
    EXPECT_EQ(received.word(0), BSP_CMD_PROFILE_LINE_STORE);
    EXPECT_EQ(received.text(24), "office");
    EXPECT_EQ(received.number("vlan"), 100u);
}

TEST(ProfileStore, KeepsWhatIsNotNamed)
{
    const FakeService service(
        bytes(answer_to("BSP_CMD_PROFILE_LINE_FETCH", {{"id", 3}, {"vlan", 100}, {"upstream", 5000}})));
    EXPECT_EQ(service.ponctl({"profile", "store", "line", "name=office", "vlan=200"}).code, 0);
    const Received sent = service.settings().at(0);
    for (const auto &[field, value] : {std::pair{"id", 3u}, {"vlan", 200u}, {"upstream", 5000u}})
        EXPECT_EQ(sent.number(field), value) << field;
}

TEST(ProfileStore, OfANewNameIsZeroElse)
{
    const FakeService service([](const board_request &request, board_answer *answer) {
        const bool fetches = request.call == BOARD_CALL_DGRAM_GET || request.call == BOARD_CALL_GET;
        if (fetches) board_answer_status(answer, PON_ERR_NO_PROFILE);
    });
    EXPECT_EQ(service.ponctl({"profile", "store", "line", "name=office", "vlan=200"}).code, 0);
    EXPECT_EQ(service.settings().at(0).number("upstream"), 0u);
}

TEST(ProfileStore, NamesTheFieldAndItsRange)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"profile", "store", "line", "name=a", "vlan=4095"}).err,
              "ponctl: vlan: '4095' is not a number from 0 to 4094\n");
    EXPECT_EQ(service.ponctl({"profile", "store", "alarm", "name=a", "temperature_low=-41"}).err,
              "ponctl: temperature_low: '-41.00' is not a number from -40 to 120 degC\n");
    EXPECT_TRUE(service.received().empty());
}

TEST(ProfileStore, NeedsFieldsOfTheKind)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"profile", "store", "line"}).code, 2);
    EXPECT_THAT(service.ponctl({"profile", "store", "line", "name=a", "vlam=1"}).err,
                HasSubstr("ponctl: vlam: not a field of BSP_CMD_PROFILE_LINE_STORE; did you mean vlan? (known are "));
    EXPECT_EQ(service.ponctl({"profile", "store", "line", "count=1"}).code, 2);
    EXPECT_TRUE(service.received().empty());
}

TEST(ProfileShow, HasTheFieldsOfTheProfile)
{
    const FakeService service([](const board_request &, board_answer *answer) {
        std::vector<uint8_t> record(84);
        std::memcpy(&record[24], "office", 6);
        const uint32_t vlan = 100;
        std::memcpy(&record[60], &vlan, sizeof vlan);
        board_answer_data(answer, record.data(), 84);
    });
    const Finished finished = service.ponctl({"profile", "show", "line", "office", "-o", "json"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    const auto profile = parsed(finished.out);
    EXPECT_STREQ(profile["name"].GetString(), "office");
    EXPECT_EQ(profile["vlan"].GetUint(), 100u);
    EXPECT_EQ(service.received().at(0).word(0), BSP_CMD_PROFILE_LINE_FETCH);
    EXPECT_EQ(service.received().at(0).text(24), "office");
    EXPECT_EQ(service.received().at(0).record.size(), 60u);
}

TEST(ProfileShow, OfOneThatIsNotThereIsAStatus)
{
    const FakeService service(status(PON_ERR_NO_PROFILE));
    const Finished finished = service.ponctl({"profile", "show", "line", "office"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("PON_ERR_NO_PROFILE"));
}

TEST(ProfileDelete, NamesTheProfileOnceItIsConfirmed)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"profile", "delete", "line", "office"}).code, 2);
    EXPECT_TRUE(service.received().empty());
    EXPECT_EQ(service.ponctl({"profile", "delete", "line", "office", "--yes"}).code, 0);
    EXPECT_EQ(service.received().at(0).word(0), BSP_CMD_PROFILE_LINE_DELETE);
    EXPECT_EQ(service.received().at(0).text(24), "office");
}

TEST(ProfileListAndText, AskForTheirFiles)
{
    const FakeService service(status(PON_ERR_NO_PORT));
    EXPECT_EQ(service.ponctl({"profile", "list", "line"}).code, 1);
    EXPECT_EQ(service.ponctl({"profile", "text", "line"}).code, 1);
    EXPECT_EQ(service.received().at(0).word(0), BSP_CMD_PROFILE_LINE_TABLE);
    EXPECT_EQ(service.received().at(1).word(0), BSP_CMD_PROFILE_LINE_TEXT);
}

TEST(Loid, IsAddedWithItsPassword)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"loid", "add", "3", "shop17", "--password", "secret"}).code, 0);
    const Received received = service.received().at(0);
    EXPECT_EQ(received.word(0), BSP_CMD_LOID_ADD);
    EXPECT_EQ(received.word(4), 3u);
    EXPECT_EQ(received.text(45), "shop17");
    EXPECT_EQ(received.text(109), "secret");
}

TEST(Loid, IsDeleted)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"loid", "delete", "3", "shop17"}).code, 0);
    EXPECT_EQ(service.received().at(0).word(0), BSP_CMD_LOID_DELETE);
    EXPECT_EQ(service.received().at(0).text(45), "shop17");
}

TEST(Loid, IsATextThatFitsItsField)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"loid", "add", "3", ""}).code, 2);
    EXPECT_EQ(service.ponctl({"loid", "add", "3", std::string(64, 'x')}).code, 2);
    EXPECT_TRUE(service.received().empty());
}

TEST(Loid, ListHasARowEach)
{
    const FakeService service(rows(BSP_CMD_VIEW_LOID_LIST, R"([{"pon_port":3}])"));
    const Finished finished = service.ponctl({"loid", "list", "3", "-o", "json"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(parsed(finished.out)[0]["pon_port"].GetUint(), 3u);
    EXPECT_EQ(service.received().at(0).word(4), 3u);
}

} // namespace
