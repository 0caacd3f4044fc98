// These tests run ponctl --watch as a process against a fake service.
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Words = std::vector<std::string>;

FakeService::Handler one_onu()
{
    return rows(384, R"([{"onu_id":1,"state":"online"}])");
}

Words list_twice(const Words &more = {})
{
    Words words{"onu", "list", "1", "--watch", "0", "--count", "2"};
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

TEST(Watch, ReadsAsOftenAsItIsToldTo)
{
    const FakeService service(one_onu());
    const Finished finished = service.ponctl(list_twice({"--no-headings"}));
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(service.received().size(), 2u);
    const std::string reading = finished.out.substr(0, finished.out.find('\n') + 1);
    EXPECT_THAT(reading, HasSubstr("online"));
    EXPECT_EQ(finished.out, reading + "\n" + reading);
}

TEST(Watch, IsADocumentALineInJson)
{
    const FakeService service(one_onu());
    const std::string line = whole_rows(384, R"([{"onu_id":1,"state":"online"}])");
    EXPECT_EQ(service.ponctl(list_twice({"-o", "json"})).out, line + "\n" + line + "\n");
}

TEST(Watch, HasOneHeadingInCsv)
{
    const FakeService service(one_onu());
    EXPECT_EQ(service.ponctl(list_twice({"-o", "csv"})).out,
              "onu_id,state,pon_port,mac,supported,distance,mode,text_a,text_b,text_c,reboots,description,loid\n"
              "1,online,0,00:00:00:00:00:00,false,,,,,,0,,\n1,online,0,00:00:00:00:00:00,false,,,,,,0,,\n");
}

TEST(Watch, DrawsATerminalAnewFromItsTop)
{
    const FakeService service(one_onu());
    Terminal terminal(200);
    EXPECT_EQ(service.ponctl(list_twice(), terminal.descriptor()).code, 0);
    const std::string text = terminal.text();
    EXPECT_THAT(text, StartsWith("\033[H"));
    EXPECT_THAT(text, HasSubstr("onu list 1 --watch 0 --count 2, every 0 s, at 2"));
    EXPECT_NE(text.find("\033[H", 1), text.npos);
    EXPECT_THAT(text, Not(HasSubstr("\033[2J")));
}

TEST(Watch, DrawsNoMoreLinesThanThereAre)
{
    std::string ids;
    for (int id = 0; id < 60; ++id)
        ids += (ids.empty() ? "" : ",") + std::string("{\"onu_id\":") + std::to_string(id) + "}";
    const FakeService service(rows(384, "[" + ids + "]"));
    Terminal terminal(200);
    service.ponctl({"onu", "list", "1", "--watch", "0", "--count", "1"}, terminal.descriptor());
    const std::string text = terminal.text();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 23);
}

TEST(Watch, GoesWithoutAnInterval)
{
    const FakeService service(one_onu());
    EXPECT_EQ(service.ponctl({"onu", "--watch", "list", "1", "--count", "1"}).code, 0);
    EXPECT_EQ(service.ponctl({"--count", "1", "--watch", "onu", "list", "1"}).code, 0);
}

TEST(Watch, IsNotForWhatChangesSomething)
{
    const FakeService service;
    for (const Words &words : {Words{"call", "bsp_pon_no_bind_onu_all", "pon_port=1"}, Words{"loop", "time", "5"},
                               Words{"sla", "clear", "1", "3", "--yes"}, Words{"raw", "BSP_MSG_PON", "set", "cmd=365"},
                               Words{"onu", "set", "1/5", "multi-llid", "onu_arg24=3"}}) {
        Words watched = words;
        watched.insert(watched.end(), {"--watch", "0"});
        const Finished finished = service.ponctl(watched);
        EXPECT_EQ(finished.code, 2) << words.front();
        EXPECT_THAT(finished.err, StartsWith("ponctl: --watch: only readings are repeated; "));
    }
    EXPECT_TRUE(service.received().empty());
}

TEST(Watch, IsNotForADryRun)
{
    EXPECT_THAT(ponctl({"port", "list", "--watch", "--dry-run"}).err,
                StartsWith("ponctl: --dry-run: takes no readings"));
}

} // namespace
