// These tests check how an operator describes fibres and splitters, and what is said of those who fell together.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plant/falls.h"
#include "rest/answers.h"
#include "text/json.h"
#include "toml_file/section.h"
#include "web/confirmation.h"
#include "web/event_hub.h"
#include "web/pending.h"
#include "web/write_log.h"

namespace
{

using namespace front;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// A feeder, a splitter in the yard, and one in each of two houses.
constexpr char campus[] = R"([[port]]
pon_port = 1
place = "Cabinet"

[[port.splitter]]
name = "yard"
ratio = 4
length = 400
place = "Shaft"

[[port.splitter]]
name = "house-a"
from = "yard"
ratio = 4
onus = ["02:00:00:00:00:01", "shop", "0200.0000.0003"]

[[port.splitter]]
name = "house-b"
from = "yard"
ratio = 2
onus = ["02-00-00-00-00-04", "02:00:00:00:00:05"]
)";

std::string error_of(const std::string &text)
{
    try {
        read_plant(text, "plant.toml");
    } catch (const toml_file::Error &error) {
        return error.what();
    }
    return "no error";
}

TEST(Plant, IsATreeOfEachPort)
{
    const auto plant = read_plant(campus, "plant.toml");
    const PortPlant &nodes = plant->ports.at(1);
    ASSERT_THAT(nodes, SizeIs(4));
    EXPECT_EQ(nodes[0].name, "feeder");
    EXPECT_EQ(nodes[0].place, "Cabinet");
    EXPECT_THAT(nodes[0].splitters, ElementsAre(1));
    EXPECT_THAT(nodes[1].splitters, ElementsAre(2, 3));
    EXPECT_EQ(nodes[1].length, 400u);
    EXPECT_EQ(nodes[3].from, 1u);
    EXPECT_THAT(nodes[2].onus, ElementsAre("02:00:00:00:00:01", "shop", "02:00:00:00:00:03"));
    EXPECT_THAT(path_to(nodes, 3), ElementsAre(0, 1, 3));
    EXPECT_EQ(read_plant(campus, "other.toml")->version, plant->version);
    EXPECT_NE(read_plant(std::string(campus) + "length = 5\n", "plant.toml")->version, plant->version);
}

TEST(Plant, OfTheExampleHasAllOnusOfTheCampus)
{
    const auto plant = read_plant_file(EXAMPLES "/busy-campus-plant.toml");
    std::map<uint32_t, size_t> onus;
    for (const auto &[port, nodes] : plant->ports)
        for (const PlantNode &node : nodes)
            onus[port] += node.onus.size();
    EXPECT_EQ(onus, (std::map<uint32_t, size_t>{{1, 20}, {2, 60}, {3, 60}, {4, 7}}));
}

TEST(Plant, SaysWhatIsWrongAndWhere)
{
    const std::string port = "[[port]]\npon_port = 1\n", splitter = "[[port.splitter]]\nname = ";
    EXPECT_EQ(error_of("[[port]]\n"), "plant.toml:1: pon_port: expected the number of a PON port");
    EXPECT_THAT(error_of("[[port]\n"), StartsWith("plant.toml:1: "));
    EXPECT_THAT(error_of("[[port]]\npon_port = 65\n"),
                HasSubstr("plant.toml:2: pon_port: expected a number from 1 to 64"));
    EXPECT_THAT(error_of(port + port), HasSubstr("plant.toml:4: pon_port: the plant of this port stands above"));
    EXPECT_THAT(error_of(port + "splitters = 1\n"),
                HasSubstr("plant.toml:3: splitters: an unknown key; did you mean "));
    EXPECT_THAT(error_of(port + splitter + "\"a\"\n"), HasSubstr("plant.toml:3: ratio: expected how many ways"));
    EXPECT_THAT(error_of(port + "[[port.splitter]]\nratio = 4\n"), HasSubstr("plant.toml:3: name: expected"));
    EXPECT_THAT(error_of(port + splitter + "\"a\"\nratio = 1\n"), HasSubstr("expected a number from 2 to 256"));
    EXPECT_THAT(error_of(port + splitter + "\"feeder\"\nratio = 4\n"), HasSubstr("another one of this port"));
    // What hangs from itself, or from what comes later, would be a loop.
    EXPECT_THAT(error_of(port + splitter + "\"yard\"\nfrom = \"yard\"\nratio = 4\n"),
                HasSubstr("plant.toml:5: from: there is no splitter of this port above it with the name yard"));
    EXPECT_THAT(error_of(port + "onus = [\"shop\", \"shop\"]\n"),
                HasSubstr("plant.toml:3: onus: shop stands above already"));
    EXPECT_THAT(error_of(port + "onus = [\"02:00:00:00:00:01\"]\n[[port]]\npon_port = 2\n"
                                "onus = [\"shop\",\n  \"0200.0000.0001\"]\n"),
                HasSubstr("plant.toml:7: onus: 0200.0000.0001 stands above already: an ONU is at one place"));
    EXPECT_THAT(error_of(port + "onus = [1]\n"), HasSubstr("plant.toml:3: onus: expected a MAC address"));
    EXPECT_THAT(error_of(port + "onus = \"shop\"\n"), HasSubstr("plant.toml:3: onus: expected a list"));
    EXPECT_THAT(error_of(port + splitter + "\"a\"\nratio = 2\nonus = [\"1\", \"2\", \"3\"]\n"),
                HasSubstr("plant.toml:5: ratio: a has 3 branches, and splits light 2 ways"));
    EXPECT_EQ(error_of(port + "onus = [\"shop\"]\n[[port]]\npon_port = 2\nonus = [\"shop\"]\n"), "no error")
        << "a text names an ONU of its port";
}

TEST(Plant, IsNeitherTooDeepNorTooLarge)
{
    const std::string port = "[[port]]\npon_port = 1\n";
    std::string deep = port + "[[port.splitter]]\nname = \"1\"\nratio = 2\n";
    for (int depth = 2; depth <= 8; ++depth)
        deep += "[[port.splitter]]\nname = \"" + std::to_string(depth) + "\"\nfrom = \"" + std::to_string(depth - 1) +
                "\"\nratio = 2\n";
    EXPECT_EQ(error_of(deep), "no error");
    EXPECT_THAT(error_of(deep + "[[port.splitter]]\nname = \"9\"\nfrom = \"8\"\nratio = 2\n"),
                HasSubstr("from: more than 8 splitters one behind the other"));
    std::string wide = port, onus = port + "onus = [";
    for (int number = 0; number < 512; ++number)
        wide += "[[port.splitter]]\nname = \"" + std::to_string(number) + "\"\nratio = 2\n";
    EXPECT_THAT(error_of(wide), HasSubstr("a port has at most 511 splitters"));
    for (int number = 0; number <= 1024; ++number)
        onus += "\"" + std::to_string(number) + "\",";
    EXPECT_THAT(error_of(onus + "]\n"), HasSubstr("a port has at most 1024 ONUs"));
}

TEST(Falls, AreOfThoseWhoWentOfflineTogether)
{
    const auto plant = read_plant(campus, "plant.toml");
    const PortPlant &nodes = plant->ports.at(1);
    const auto fell = [](size_t node, UnixTime since, std::string_view cause) {
        return PlacedOnu{.node = node, .state = "offline", .since = since, .cause = cause};
    };
    std::vector<PlacedOnu> onus{fell(2, 50'000, "fibre"), fell(2, 51'000, "unknown"), fell(2, 90'000, "fibre"),
                                fell(3, 50'000, "power"), fell(3, 50'500, "power")};
    std::vector<Fall> falls = falls_of(nodes, onus, 10'000);
    ASSERT_THAT(falls, SizeIs(2)) << "one ONU alone fell with nobody";
    EXPECT_THAT(falls[0].onus, ElementsAre(0, 1)) << "the newest first";
    EXPECT_EQ(falls[0].first, 50'000);
    EXPECT_EQ(falls[0].last, 51'000);
    EXPECT_EQ(falls[0].cause, "") << "two causes";
    EXPECT_EQ(falls[0].node, 2u);
    EXPECT_TRUE(falls[0].whole);
    EXPECT_EQ(falls[1].cause, "power");
    EXPECT_EQ(falls[1].node, 3u);

    onus[2] = {.node = 2, .state = "online"};
    onus[3] = fell(3, 50'000, "fibre");
    falls = falls_of(nodes, onus, 10'000);
    ASSERT_THAT(falls, SizeIs(1)) << "one that lost its power alone fell with nobody";
    EXPECT_THAT(falls[0].onus, ElementsAre(0, 3, 1));
    EXPECT_EQ(falls[0].node, 1u) << "of both houses: the yard";
    EXPECT_FALSE(falls[0].whole) << "one of them is online";

    onus[0].node = onus[1].node = std::nullopt;
    falls = falls_of(nodes, onus, 10'000);
    ASSERT_THAT(falls, SizeIs(1));
    EXPECT_EQ(falls[0].node, std::nullopt) << "one place says nothing";
    onus[0].since = onus[1].since = 0;
    EXPECT_THAT(falls_of({}, onus, 10'000), IsEmpty()) << "nobody knows since when";
}

// The answer about port 1, whose OLT has these ONUs and this plant.
class PlantPageTest : public testing::Test, public KnownOlts
{
protected:
    std::vector<OltDoor> olts() const override { return {}; }
    std::shared_ptr<History> events() const override { return nullptr; }

    void add(uint32_t port, uint8_t last, std::optional<uint32_t> id, const char *state, const char *description = "",
             UnixTime since = 0)
    {
        view::onu_info row{};
        row.pon_port = port;
        row.onu_id = id;
        row.mac = {2, 0, 0, 0, 0, last};
        row.state = state;
        row.description = description;
        onus->rows.push_back(row);
        if (since == 0) return;
        (*facts)[{FactKind::onu, port, text::mac_text(row.mac), {}}] = {
            .value = state, .onu_id = id, .cause = "fibre", .since = since};
    }
    text::json::Document page(std::shared_ptr<const Plant> plant)
    {
        const auto ports = std::make_shared<Rows<view::port_info>>();
        ports->rows.emplace_back().pon_port = 1;
        auto snapshot = std::make_shared<Snapshot>();
        snapshot->onus = onus;
        snapshot->ports = ports;
        for (TableState &state : snapshot->states)
            state = {.period = 5, .generation = 1, .error = {}};
        auto state = std::make_shared<OltState>();
        state->name = "north";
        state->snapshot = snapshot;
        state->facts = facts;
        EventHub hub;
        Confirmations confirmations;
        PendingConfigurations pending([](const std::string &) {});
        Pages pages;
        const Context context{.services = {.known = *this,
                                           .gate = nullptr,
                                           .hub = hub,
                                           .log = nullptr,
                                           .confirmations = confirmations,
                                           .pending = pending,
                                           .pages = pages,
                                           .version = "1"},
                              .request = {},
                              .identity = {},
                              .places = {{"olt", "north"}, {"port", "1"}},
                              .olt = {state, nullptr, {}, std::move(plant)}};
        const HttpResponse response = answer_plant(context);
        text::json::Document document;
        document.Parse(response.shared->data(), response.shared->size());
        return document;
    }

    std::shared_ptr<Rows<view::onu_info>> onus = std::make_shared<Rows<view::onu_info>>();
    std::shared_ptr<Facts> facts = std::make_shared<Facts>();
};

TEST_F(PlantPageTest, CountsBelowEachNodeAndNamesThePlaceOfACut)
{
    add(1, 1, 1, "offline", "", 5000);
    add(1, 2, 2, "offline", "shop", 6000);
    add(1, 4, 4, "online", "bakery");
    add(1, 7, std::nullopt, "waiting");
    add(2, 5, 1, "online", "moved");
    const auto answer = page(read_plant(campus, "plant.toml"));
    const auto &yard = answer["tree"]["splitters"][0], &house = yard["splitters"][0];
    EXPECT_STREQ(answer["tree"]["kind"].GetString(), "feeder");
    EXPECT_STREQ(yard["place"].GetString(), "Shaft");
    EXPECT_EQ(yard["counts"]["onus"].GetUint(), 5u);
    EXPECT_EQ(yard["counts"]["online"].GetUint(), 1u);
    EXPECT_EQ(yard["counts"]["missing"].GetUint(), 2u);
    EXPECT_EQ(house["counts"]["offline"].GetUint(), 2u);
    EXPECT_STREQ(house["onus"][1]["named"].GetString(), "shop");
    EXPECT_EQ(house["onus"][1]["onu_id"].GetUint(), 2u);
    EXPECT_TRUE(house["onus"][2]["state"].IsNull()) << "an ONU that nobody knows is missing";
    const auto &moved = yard["splitters"][1]["onus"][1];
    EXPECT_TRUE(moved["state"].IsNull());
    EXPECT_EQ(moved["pon_port"].GetUint(), 2u) << "it is at another port";
    ASSERT_EQ(answer["unplanned"].Size(), 1u);
    EXPECT_STREQ(answer["unplanned"][0]["mac"].GetString(), "02:00:00:00:00:07");
    ASSERT_EQ(answer["falls"].Size(), 1u);
    EXPECT_STREQ(answer["falls"][0]["node"].GetString(), "house-a");
    EXPECT_EQ(answer["falls"][0]["path"].Size(), 3u);
    EXPECT_TRUE(answer["falls"][0]["whole"].GetBool());
}

TEST_F(PlantPageTest, SaysWhoFellTogetherWithoutAPlantToo)
{
    add(1, 1, 1, "offline", "", 5000);
    add(1, 2, 2, "offline", "shop", 5000);
    const auto answer = page(nullptr);
    EXPECT_TRUE(answer["tree"].IsNull());
    EXPECT_EQ(answer["unplanned"].Size(), 2u);
    ASSERT_EQ(answer["falls"].Size(), 1u);
    EXPECT_TRUE(answer["falls"][0]["node"].IsNull());
    EXPECT_STREQ(answer["falls"][0]["cause"].GetString(), "fibre");
}

// Texts come from ONUs and whoever described them: they are data, whatever bytes they have.
TEST_F(PlantPageTest, HasHostileTextsAsTexts)
{
    constexpr char text[] = "\"}],</script>\n\r\t\x01\x7f\u2028\u202e\\";
    add(1, 1, 1, "online", text);
    add(1, 2, 2, "online", "\xff\xc0\x80\xed\xa0\x80");
    const auto answer = page(nullptr);
    ASSERT_FALSE(answer.HasParseError());
    EXPECT_STREQ(answer["unplanned"][0]["description"].GetString(), text);
    EXPECT_STREQ(answer["unplanned"][1]["description"].GetString(), "\\xff\\xc0\\x80\\xed\\xa0\\x80")
        << "what is no UTF-8 is written as it is";
}

TEST_F(PlantPageTest, DoesNotGuessWhichOfTwoATextNames)
{
    add(1, 2, 2, "online", "shop");
    add(1, 3, 3, "online", "shop");
    const auto answer =
        page(read_plant("[[port]]\npon_port = 1\nonus = [\"shop\", \"02:00:00:00:00:03\"]\n", "plant.toml"));
    EXPECT_TRUE(answer["tree"]["onus"][0]["mac"].IsNull());
    EXPECT_STREQ(answer["tree"]["onus"][1]["mac"].GetString(), "02:00:00:00:00:03");
    EXPECT_EQ(answer["tree"]["counts"]["missing"].GetUint(), 1u);
}

} // namespace
