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

TEST(Listing, IsInOrderOfPortAndIdAsNumbers)
{
    const FakeService service(rows(384, R"([{"pon_port":10,"onu_id":1},{"pon_port":2,"onu_id":17},)"
                                        R"({"pon_port":2,"onu_id":null},{"pon_port":2,"onu_id":5}])"));
    const Finished csv = service.ponctl({"onu", "list", "--columns", "pon_port,onu_id", "-o", "csv"});
    EXPECT_EQ(csv.out, "pon_port,onu_id\n2,5\n2,17\n2,\n10,1\n");
    const auto whole = parsed(service.ponctl({"onu", "list", "-o", "json"}).out);
    EXPECT_EQ(whole[0]["onu_id"].GetUint(), 5u);
    EXPECT_EQ(whole[3]["pon_port"].GetUint(), 10u);
}

TEST(Listing, WithoutRowsHasItsHeadingInCsvAndSaysNoneOnATerminal)
{
    const FakeService service(no_rows());
    EXPECT_EQ(service.ponctl({"blacklist", "-o", "csv"}).out, "pon_port,id,mac,text,registering\n");
    EXPECT_EQ(service.ponctl({"blacklist", "-o", "csv", "--columns", "mac,id"}).out, "mac,id\n");
    EXPECT_EQ(service.ponctl({"blacklist"}).out, "");
    Terminal terminal;
    EXPECT_EQ(service.ponctl({"blacklist"}, terminal.descriptor()).code, 0);
    EXPECT_EQ(terminal.text(), "none\r\n");
}

std::string on_narrow_terminal(Words words)
{
    const FakeService service(rows(384, R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:00:00:05","state":"online",)"
                                        R"("distance":700,"mode":1,"text_a":"first","text_b":"second",)"
                                        R"("text_c":"third","reboots":3,"description":"customer 1207"}])"));
    Terminal terminal(60);
    words.insert(words.begin(), {"onu", "list"});
    EXPECT_EQ(service.ponctl(words, terminal.descriptor()).code, 0);
    return terminal.text();
}

TEST(Listing, KeepsTheDescriptionWhereThereIsNoRoomForAll)
{
    const std::string text = on_narrow_terminal({});
    EXPECT_THAT(text, HasSubstr("DESCRIPTION"));
    EXPECT_THAT(text, testing::Not(HasSubstr("REBOOTS")));
}

TEST(Listing, KeepsEachColumnThatWasAskedFor)
{
    const std::string text =
        on_narrow_terminal({"--columns", "mac,state,distance,mode,text_a,text_b,text_c,reboots,description"});
    EXPECT_THAT(text, HasSubstr("REBOOTS"));
    EXPECT_THAT(text, HasSubstr("DESCRIPTION"));
}

TEST(Listing, OfMeasuredNumbersHasTheirPointsBelowEachOther)
{
    const FakeService service(rows(BSP_CMD_VIEW_ONU_OPTICS_ALL,
                                   R"([{"pon_port":1,"onu_id":1,"rx_power":-7},{"pon_port":1,"onu_id":2},)"
                                   R"({"pon_port":1,"onu_id":3,"rx_power":-23.25}])"));
    EXPECT_EQ(service.ponctl({"bulk", "optics", "--columns", "rx_power"}).out,
              "RX (dBm)\n   -7.00\n       -\n  -23.25\n");
    EXPECT_EQ(service.ponctl({"bulk", "optics", "--columns", "rx_power", "-o", "csv"}).out, "rx_power\n-7\n\n-23.25\n");
}

TEST(Listing, OfOperationsIsChosenAsOthers)
{
    const Words of_ops{"ops", "bind", "--where", "class=service-affecting", "--sort", "-code", "--limit", "1"};
    Words columns = of_ops;
    columns.insert(columns.end(), {"--columns", "name,code", "-o", "json"});
    Words whole = of_ops;
    whole.insert(whole.end(), {"-o", "json"});
    const auto few = parsed(ponctl(columns).out), all = parsed(ponctl(whole).out);
    ASSERT_EQ(few.Size(), 1u);
    EXPECT_EQ(few[0].MemberCount(), 2u);
    EXPECT_EQ(few[0]["name"], all[0]["name"]);
    EXPECT_EQ(few[0]["code"], all[0]["code"]);
    EXPECT_TRUE(all[0].HasMember("arguments"));
    EXPECT_THAT(ponctl({"ops", "--columns", "nme"}).err, HasSubstr("'nme' is not a column; did you mean name?"));
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
