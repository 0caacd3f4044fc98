// These tests run ponctl as a process with the options that apply to every command.
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::Not;

FakeService::Handler two_onus()
{
    return rows(384, R"([{"onu_id":1,"state":"online"},{"onu_id":2,"state":"offline"}])");
}

std::string on_terminal(std::vector<std::string> arguments)
{
    const FakeService service(two_onus());
    Terminal terminal(200);
    arguments.insert(arguments.begin(), {"onu", "list", "1"});
    EXPECT_EQ(service.ponctl(arguments, terminal.descriptor()).code, 0);
    return terminal.text();
}

TEST(Csv, IsARowForEachRow)
{
    const FakeService service(two_onus());
    EXPECT_EQ(service.ponctl({"onu", "list", "1", "-o", "csv"}).out,
              "onu_id,state,pon_port,mac,supported,distance,mode,text_a,text_b,text_c,reboots,description,loid\n"
              "1,online,0,00:00:00:00:00:00,false,,,,,,0,,\n2,offline,0,00:00:00:00:00:00,false,,,,,,0,,\n");
    EXPECT_EQ(service.ponctl({"onu", "list", "1", "-o", "csv", "--no-headings"}).out,
              "1,online,0,00:00:00:00:00:00,false,,,,,,0,,\n2,offline,0,00:00:00:00:00:00,false,,,,,,0,,\n");
}

TEST(Csv, OfACommandWithoutAResultIsHowItEnded)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"loop", "time", "5", "-o", "csv"}).out,
              "name,value\nexit_code,0\nipc_result,0\nstatus,0\nstatus_name,BSP_OK\n");
}

TEST(Quiet, SaysNothing)
{
    const FakeService service(two_onus());
    const Finished finished = service.ponctl({"onu", "list", "1", "--quiet"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out + finished.err, "");
}

TEST(Quiet, StillSaysWhatGoesWrong)
{
    const FakeService service(status(4003));
    const Finished finished = service.ponctl({"-q", "onu", "list", "99", "-o", "json"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("status 4003 PON_ERR_NO_PORT"));
}

TEST(Quiet, ShowsNoProgress)
{
    const FakeService service;
    Terminal terminal;
    service.ponctl({"-q", "onu", "multillid", "1/3-4", "2", "--yes"}, -1, -1, terminal.descriptor());
    EXPECT_EQ(terminal.text(), "");
}

TEST(Colour, TellsStatesApartOnATerminal)
{
    const std::string text = on_terminal({});
    EXPECT_THAT(text, HasSubstr("\033[32monline"));
    EXPECT_THAT(text, HasSubstr("\033[31moffline"));
}

TEST(Colour, IsNotForEveryTerminal)
{
    setenv("TERM", "dumb", 1);
    EXPECT_THAT(on_terminal({}), Not(HasSubstr("\033[")));
    EXPECT_THAT(on_terminal({"--color", "always"}), HasSubstr("\033[32monline"));
    unsetenv("TERM");
    EXPECT_THAT(on_terminal({"--color", "never"}), Not(HasSubstr("\033[")));
}

TEST(Colour, GoesElsewhereWhenAskedFor)
{
    const FakeService service(two_onus());
    EXPECT_THAT(service.ponctl({"onu", "list", "1", "--color", "always"}).out, HasSubstr("\033[32monline"));
    EXPECT_EQ(service.ponctl({"onu", "list", "1", "--color", "red"}).err,
              "ponctl: --color: 'red' is not one of auto, always, never\n");
}

TEST(Colour, OfWhatGoesWrongIsRed)
{
    const FakeService service(status(4003));
    Terminal terminal;
    service.ponctl({"onu", "list", "99"}, -1, -1, terminal.descriptor());
    EXPECT_THAT(terminal.text(), HasSubstr("\033[31mponctl: bsp_pon_exec_get_json_: status 4003"));
    EXPECT_THAT(service.ponctl({"onu", "list", "99"}).err, Not(HasSubstr("\033[")));
}

} // namespace
