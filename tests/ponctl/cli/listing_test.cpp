// These tests choose rows and columns of listings, whatever the command and the form of the output.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bsp_pon.h"
#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

FakeService::Handler four_onus()
{
    return rows(384, R"([{"pon_port":1,"onu_id":1,"state":"online","distance":700},)"
                     R"({"pon_port":1,"onu_id":2,"state":"offline","distance":null},)"
                     R"({"pon_port":2,"onu_id":1,"state":"online","distance":1940},)"
                     R"({"pon_port":2,"onu_id":7,"state":"online","distance":80}])");
}

const Words chosen{
    "--where", "state=online and distance>=80", "--sort", "-distance", "--columns", "onu_id,distance", "--limit", "2"};

Finished listed(const Words &more)
{
    const FakeService service(four_onus());
    Words words{"onu", "list"};
    words.insert(words.end(), chosen.begin(), chosen.end());
    words.insert(words.end(), more.begin(), more.end());
    return service.ponctl(words);
}

TEST(Listing, IsChosenInEveryForm)
{
    EXPECT_EQ(listed({}).out, "ID DISTANCE (m)\n 1         1940\n 1          700\n");
    EXPECT_EQ(listed({"-o", "csv"}).out, "onu_id,distance\n1,1940\n1,700\n");
    EXPECT_EQ(parsed(listed({"-o", "json"}).out),
              parsed(R"([{"onu_id":1,"distance":1940},{"onu_id":1,"distance":700}])"));
    EXPECT_THAT(listed({"-o", "hex"}).out, HasSubstr("[{\"onu_id\":1,\"di"));
}

TEST(Listing, OfWhichNothingIsWantedIsEmpty)
{
    const FakeService service(four_onus());
    EXPECT_EQ(service.ponctl({"onu", "list", "--where", "distance>5000"}).out, "");
    const Finished finished = service.ponctl({"onu", "list", "--where", "distance>5000", "-o", "json"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "[]\n");
}

TEST(Listing, NamesAColumnThatIsNone)
{
    const FakeService service(four_onus());
    for (const char *option : {"--where", "--sort", "--columns"}) {
        const Finished finished = service.ponctl({"onu", "list", option, "stat=1"});
        EXPECT_EQ(finished.code, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, HasSubstr(std::string("ponctl: ") + option + ": 'stat"));
        EXPECT_THAT(finished.err, HasSubstr("is not a column; did you mean state? (known are pon_port, onu_id, mac"));
    }
}

TEST(Listing, OfSeveralOnusIsChosenForEach)
{
    const FakeService service(
        rows(645, R"([{"uni":1,"vlan_mode":"tag"},{"uni":2,"vlan_mode":"transparent"},{"uni":3,"vlan_mode":"tag"}])"));
    const Words words{"onu", "vlan", "1/3,14", "--where", "vlan_mode=tag", "--columns", "uni", "--sort", "-uni"};
    EXPECT_EQ(service.ponctl(words).out, "ONU  UNI\n1/3    3\n1/3    1\n1/14   3\n1/14   1\n");
}

TEST(Listing, CountsTimesFromTheTimeOfTheService)
{
    const FakeService service(by_command(
        {{388, rows(388, R"([{"pon_port":1,"onu_id":5,"raised":1000},{"pon_port":1,"onu_id":6,"raised":90000000}])")},
         {BSP_CMD_VIEW_BASIC_INFO, rows(BSP_CMD_VIEW_BASIC_INFO, R"([{"uptime":100000.5}])")}}));
    const Finished finished =
        service.ponctl({"alarm", "list", "--where", "raised<1d-ago", "--columns", "onu_id", "--no-headings"});
    EXPECT_EQ(finished.out, " 5\n") << finished.err;
}

TEST(Listing, IsWhatTheOptionsBelongToAlone)
{
    EXPECT_EQ(ponctl({"loop", "on", "--where", "a=1"}).code, 2);
    const FakeService service(bytes(std::vector<uint8_t>(944)));
    const Finished finished = service.ponctl({"onu", "ports", "1/5", "--uni", "1", "--limit", "1"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.err, HasSubstr("what is asked for here is no listing"));
}

} // namespace
