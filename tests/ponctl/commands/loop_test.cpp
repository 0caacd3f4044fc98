// These tests run ponctl loop as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

TEST(LoopShow, IsTheSettingsInWordsAndThePorts)
{
    const FakeService service(
        by_command({{785, bytes(answer_to("BSP_CMD_LOOP_CONFIG_GET", {{"state", 1}, {"mode", 1}, {"time", 300}}))},
                    {784, rows(784, R"([{"pon_port":1,"onu_id":5,"uni":2,"state":"shut"}])")}}));
    const std::string out = service.ponctl({"loop", "show"}).out;
    EXPECT_THAT(out, HasSubstr("state     on\n"));
    EXPECT_THAT(out, HasSubstr("mode      manual\n"));
    EXPECT_THAT(out, HasSubstr("time      300 s\n"));
    EXPECT_THAT(out, HasSubstr(" shut "));
    const auto document = parsed(service.ponctl({"loop", "show", "-o", "json"}).out);
    EXPECT_EQ(document["settings"]["time"].GetUint(), 300u);
    EXPECT_EQ(document["ports"][0]["uni"].GetUint(), 2u);
}

TEST(Loop, SendsEachSettingWithItsCommand)
{
    struct Case {
        Words words;
        uint32_t code, value;
    };
    const FakeService service;
    for (const auto &[words, code, value] : {Case{{"on", "--yes"}, 779, 1},
                                             {{"off", "--yes"}, 779, 0},
                                             {{"mode", "automatic"}, 780, 0},
                                             {{"mode", "manual"}, 780, 1},
                                             {{"recover", "--yes"}, 781, 0},
                                             {{"time", "600"}, 782, 600},
                                             {{"interval", "7"}, 783, 7}}) {
        Words all{"loop"};
        all.insert(all.end(), words.begin(), words.end());
        EXPECT_EQ(service.ponctl(all).code, 0) << words[0];
        EXPECT_EQ(service.received().back().number("cmd"), code) << words[0];
        EXPECT_EQ(service.received().back().number("ext_arg"), value) << words[0];
    }
}

TEST(Loop, RefusesWhatCannotBe)
{
    const FakeService service;
    for (const char *asked : {"on", "off", "recover"})
        EXPECT_THAT(service.ponctl({"loop", asked}).err, HasSubstr("--yes: missing; ")) << asked;
    EXPECT_EQ(service.ponctl({"loop", "mode", "never"}).err, "ponctl: MODE: 'never' is not one of automatic, manual\n");
    EXPECT_THAT(service.ponctl({"loop", "time", "soon"}).err, HasSubstr("SECONDS: 'soon' is not a number"));
    EXPECT_TRUE(service.received().empty());
}

} // namespace
