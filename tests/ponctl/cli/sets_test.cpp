// These tests check sets of ONUs, and operations that are found by words.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using Words = std::vector<std::string>;

// Returns the words at an offset of the requests that a command line sends.
std::vector<uint32_t> sent(const Words &words, size_t offset, FakeService::Handler handler = {})
{
    const FakeService service(std::move(handler));
    const Finished finished = service.ponctl(words);
    EXPECT_EQ(finished.code, 0) << finished.err;
    std::vector<uint32_t> found;
    for (const Received &received : service.received())
        found.push_back(received.word(offset));
    return found;
}

TEST(Sets, AreForEveryCommandThatTakesAnOnu)
{
    constexpr size_t onu_id = 8, plat_onu = 4, upgrade_onu = 24;
    EXPECT_THAT(sent({"onu", "release", "1/3-5", "--yes"}, onu_id), ElementsAre(3, 4, 5));
    EXPECT_THAT(sent({"onu", "confirm", "1/3,5", "--yes"}, onu_id), ElementsAre(3, 5));
    EXPECT_THAT(sent({"onu", "describe", "1/3,5", "a shop"}, onu_id), ElementsAre(3, 5));
    EXPECT_THAT(sent({"onu", "reject", "1/3,5", "--yes"}, onu_id), ElementsAre(3, 5));
    EXPECT_THAT(sent({"alarm", "clear", "1/3,5"}, onu_id), ElementsAre(3, 5));
    EXPECT_THAT(sent({"alarm", "list", "1/3,5"}, onu_id, result(388, "[]")), ElementsAre(3, 5));
    EXPECT_THAT(sent({"sla", "clear", "1/3,5", "--yes"}, plat_onu), ElementsAre(3, 3, 5, 5));
    EXPECT_THAT(sent({"sla", "set", "1", "3,5", "--down-max", "9", "--yes"}, plat_onu), ElementsAre(3, 5));
    EXPECT_THAT(sent({"upgrade", "start", "1/3,5", "--yes"}, upgrade_onu), ElementsAre(3, 5));
    const FakeService service;
    EXPECT_EQ(service.ponctl({"p2p", "set", "1", "on", "--onu", "3,5", "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[0].number("onu"), 3u);
    EXPECT_EQ(service.received()[1].number("onu"), 5u);
}

TEST(Sets, OfAllAreTheBoundOnus)
{
    const auto bound = rows(384, R"([{"pon_port":1,"onu_id":7},{"pon_port":1,"onu_id":9},{"pon_port":1}])");
    const FakeService service([&](const board_request &request, board_answer *answer) {
        if (request.call == BOARD_CALL_DGRAM_GET || request.call == BOARD_CALL_GET) bound(request, answer);
    });
    const Finished finished = service.ponctl({"onu", "release", "1/all", "--yes"});
    std::vector<uint32_t> ids;
    for (const Received &received : service.received())
        if (received.call == BOARD_CALL_SET) ids.push_back(received.word(8));
    EXPECT_THAT(ids, ElementsAre(7, 9)) << finished.err;
}

TEST(Sets, GoOnAfterAFailureAndSumItUp)
{
    const FakeService service(status(4005));
    const Finished finished = service.ponctl({"onu", "release", "1/3-5", "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(service.received().size(), 3u);
    EXPECT_THAT(finished.err, HasSubstr("ponctl: 3 of 3 ONUs failed: 1/3-5\n"));
}

TEST(Sets, ShowSeveralOnusUnderTheirNames)
{
    const FakeService service(by_command({{381, rows(381, R"([{"pon_port":1,"onu_id":5,"state":"online"}])")},
                                          {709, status(4005)},
                                          {710, result(710, "[]")}}));
    const Finished finished = service.ponctl({"onu", "show", "1/5-6", "-o", "json"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr("ponctl: there is no ONU 1/6\n"));
    EXPECT_STREQ(parsed(finished.out)[0]["information"]["state"].GetString(), "online");
    EXPECT_THAT(service.ponctl({"onu", "show", "1/5-6"}).out, testing::StartsWith("ONU 1/5\n"));
}

TEST(Sets, AreRefusedWhereIdZeroMeansAll)
{
    const FakeService service;
    const Finished finished = service.ponctl({"alarm", "clear", "1/0-5"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err, "ponctl: SET: here id 0 means none; name that ONU by its MAC address\n");
    EXPECT_TRUE(service.received().empty());
}

TEST(Sets, StandInPlaceOfAnOnu)
{
    for (const Words &words : {Words{"onu", "show", "1/5", "5"}, Words{"onu", "show", "1"},
                               Words{"onu", "release", "1/5", "--id", "5"}, Words{"onu", "describe", "1", "5"},
                               Words{"sla", "clear", "1"}, Words{"upgrade", "start", "1/5", "--onu", "5"}})
        EXPECT_EQ(ponctl(words).code, 2);
}

TEST(CallEach, CallsTheOperationForEachOnu)
{
    EXPECT_THAT(sent({"call", "bsp_pon_no_bind_onu_spec_id", "--onus", "1/3-5", "--yes"}, 8), ElementsAre(3, 4, 5));
    EXPECT_THAT(sent({"call", "bsp_pon_onu_upgrade_one", "--onus", "1/3,5", "--yes"}, 24), ElementsAre(3, 5));
}

TEST(CallEach, HasAnObjectForEachOnuInJson)
{
    const FakeService service(bytes(pon_record({{436, 1940}})));
    const auto out = parsed(service.ponctl({"call", "bsp_pon_get_w_onu_spec_id", "--onus", "1/3,5", "-o", "json"}).out);
    EXPECT_EQ(out[1]["outputs"]["resp"]["distance"].GetUint(), 1940u);
}

TEST(CallEach, IsForOperationsWithAnOnu)
{
    EXPECT_EQ(ponctl({"call", "bsp_pon_plat_fdb_flush", "--onus", "1/3"}).err,
              "ponctl: --onus: bsp_pon_plat_fdb_flush has no argument pon_port\n");
}

TEST(CallByWords, TakesTheOnlyMatchAndNamesIt)
{
    const FakeService service;
    const Finished finished = service.ponctl({"call", "release", "offline", "pon_port=3", "--yes"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.err, "ponctl: calling bsp_pon_no_bind_offline_onu_all\n");
    ASSERT_EQ(service.received().size(), 1u);
    EXPECT_EQ(service.received()[0].word(4), 3u);
}

TEST(CallByWords, ListsSeveralMatches)
{
    const FakeService service;
    const Finished finished = service.ponctl({"call", "bind", "onu", "mac", "pon_port=1"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.err, HasSubstr(" operations have all of the words 'bind onu mac'; give more words or a whole "
                                        "name:\n  "));
    EXPECT_THAT(finished.err, HasSubstr("\n  bsp_pon_bind_onu_spec_id: "));
    EXPECT_TRUE(service.received().empty());
}

TEST(CallByWords, SaysThatThereIsNoMatch)
{
    EXPECT_EQ(ponctl({"call", "purple", "elephant"}).err,
              "ponctl: no operation has all of the words 'purple elephant'; look for it by fewer with 'ponctl ops "
              "WORD...'\n");
}

} // namespace
