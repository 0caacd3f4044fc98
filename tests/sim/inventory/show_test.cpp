// These tests check what is shown of a plant that is not healthy.
#include "control/show.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include "daemon/console.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;
using testing::Not;

struct Plant : Scene {
    Plant()
        : Scene("[service.home]\n[[olt]]\nports = 2\n[[olt.port]]\nnumbers = \"1-2\"\n[[olt.port.onu]]\n"
                "name = \"a\"\ncount = 3\nservice = \"home\"\n")
    {
    }

    std::string say(const std::string &line)
    {
        Clock clock(olt().now(), 0);
        return control(simulator, clock, line);
    }
    void pass(ModelTime time) { simulator.advance(olt().now() + time); }
};

TEST(Show, SaysThatNothingIsWrong)
{
    Plant plant;
    EXPECT_EQ(plant.say("show"), "nothing differs from a healthy plant\n");
    EXPECT_EQ(plant.say("show 1 --json"), "{\"model_time_ms\":0,\"differences\":[]}\n");
    EXPECT_THROW(plant.say("show 3"), ControlError);
    EXPECT_THROW(plant.say("show 1 2"), ControlError);
}

TEST(Show, ListsWhatIsDoneToThePlant)
{
    Plant plant;
    const std::string mac = text::mac_text(plant.onu(1, "a-1").mac);
    const auto shown = [&](const std::string &line) {
        plant.say(line);
        return plant.say("show 1");
    };
    EXPECT_EQ(shown("bend 1 a-1 3.5"), "PORT  WHAT  WHERE       HOW MUCH\n1     bent  branch a-1  3.50 dB\n");
    EXPECT_EQ(shown("cut 1 a-1"), "PORT  WHAT  WHERE       HOW MUCH\n1     cut   branch a-1\n");
    plant.say("mend 1 a-1");
    EXPECT_EQ(shown("power 1 a-1 off"), "PORT  WHAT  WHERE                    HOW MUCH\n"
                                        "1     off   a-1 (" +
                                            mac + ")\n");
    plant.say("power 1 a-1 on");
    plant.pass(60000);
    EXPECT_THAT(shown("dim 1 2"), HasSubstr("1     dimmed  cage 1  2 dB\n"));
    EXPECT_THAT(shown("age 1 48"), HasSubstr("1     aged    cage 1  48 h\n"));
    EXPECT_THAT(shown("age-onu 1 a-1 7"), HasSubstr("aged    a-1 (" + mac + ")  7 h\n"));
    EXPECT_THAT(shown("load 1 a-1 up 500"), HasSubstr("up 500 kbit/s\n"));
    EXPECT_THAT(shown("flood 1 a-1 9"), HasSubstr("9 frames/s\n"));
    EXPECT_THAT(shown("upgrade-fault 1 a-1 on"), HasSubstr("bad-image"));
    EXPECT_THAT(shown("loop 1 a-1 1 on"), HasSubstr("looped     a-1 (" + mac + "), UNI 1\n"));
    EXPECT_THAT(shown("unplug 1 a-2 1"), HasSubstr("unplugged"));
    EXPECT_THAT(shown("plug 1 a-2 1 10HD"), HasSubstr("10HD"));
    EXPECT_EQ(plant.say("show 2"), "nothing differs from a healthy plant\n");
    plant.say("rogue 1 a-1 on");
    plant.pass(0);
    EXPECT_THAT(plant.say("show"), HasSubstr("blinded"));
    plant.say("leave 1 a-3");
    EXPECT_THAT(plant.say("show"), HasSubstr("leaving"));
    plant.pass(60000);
    EXPECT_THAT(plant.say("show"), HasSubstr("gone"));
    EXPECT_THAT(plant.say("show"), Not(HasSubstr("leaving")));
    plant.say("fault lost count=1");
    EXPECT_THAT(plant.say("show"), HasSubstr("fault"));
    plant.say("age 3 5");
    EXPECT_THAT(plant.say("show"), HasSubstr("-     aged       cage 3"));
}

TEST(Show, IsAlsoJson)
{
    Plant plant;
    plant.say("bend 1 a-1 3.5");
    plant.say("unplug 1 a-2 1");
    rapidjson::Document shown;
    shown.Parse(plant.say("show --json").c_str());
    ASSERT_FALSE(shown.HasParseError());
    const auto &differences = shown["differences"];
    ASSERT_EQ(differences.Size(), 2u);
    EXPECT_STREQ(differences[0]["kind"].GetString(), "bent");
    EXPECT_EQ(differences[0]["pon_port"].GetUint(), 1u);
    EXPECT_STREQ(differences[0]["branch"].GetString(), "a-1");
    EXPECT_EQ(differences[0]["value"].GetDouble(), 3.5);
    EXPECT_STREQ(differences[0]["unit"].GetString(), "dB");
    EXPECT_STREQ(differences[1]["name"].GetString(), "a-2");
    EXPECT_EQ(differences[1]["mac"].GetString(), text::mac_text(plant.onu(1, "a-2").mac));
    EXPECT_EQ(differences[1]["uni"].GetUint(), 1u);
    EXPECT_FALSE(differences[1].HasMember("value"));
}

} // namespace
} // namespace ponsim
