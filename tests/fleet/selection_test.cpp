// These tests read inventories, and choose OLTs by them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fleet/selection/selector.h"
#include "usage_error.h"

namespace
{

using namespace fleet;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

Inventory inventory_of(const std::string &name)
{
    return {
        .olt = name, .bridge = "hut-1", .labels = {{"site", "North"}}, .answers = true, .model = "EP-16", .ports = 16};
}

// Three OLTs of two sites, and one of which nothing is known but its name.
std::vector<Olt> some_olts()
{
    std::vector<Olt> olts;
    for (const char *name : {"north-10", "north-2", "south-1", "lab.new"})
        olts.push_back({inventory_of(name), true});
    olts[0].inventory.onus = {400, 3, 1};
    olts[1].inventory.onus = {12, 0, 0};
    olts[1].online = false;
    olts[2].inventory.labels = {{"site", "south"}, {"state", "spare"}};
    olts[2].inventory.model = "EP-8";
    olts[2].inventory.ports = 8;
    olts[2].inventory.bridge = "hut-2";
    olts[3].inventory = {.olt = "lab.new", .bridge = "hut-2"};
    olts[3].online = false;
    return olts;
}

std::vector<std::string> chosen(std::string_view selector)
{
    return Selector(selector).choose(some_olts());
}

std::string error_of(std::string_view selector)
{
    return usage_error_of([&] { chosen(selector); });
}

TEST(Inventory, IsReadAsItWasWritten)
{
    const Inventory written{.olt = "north-3",
                            .bridge = "hut-7",
                            .labels = {{"site", "north"}, {"rack", "12 \"b\""}},
                            .version = "0.1.0",
                            .catalogue = "5d1c",
                            .answers = true,
                            .model = "EP-16",
                            .firmware = "2.4",
                            .ports = 16,
                            .onus = {410, 3, 1},
                            .at = 1780000000};
    const std::string line = to_json(written);
    EXPECT_EQ(inventory_from_json(line), written);
    EXPECT_EQ(line.find('\n'), line.npos);
}

TEST(Inventory, OfALaterVersionIsRead)
{
    const Inventory read = inventory_from_json(
        R"({"olt":"a","bridge":"b","answers":false,"altitude":[{"m":[1]}],"onus":{"online":4,"asleep":2},"model":null})");
    EXPECT_EQ(read.onus, (OnuCounts{4, 0, 0}));
    EXPECT_EQ(read.model, "");
}

TEST(Inventory, ThatIsWrongIsRefusedWithAReason)
{
    const auto error = [](const std::string &text) { return usage_error_of([&] { inventory_from_json(text); }); };
    EXPECT_THAT(error(""), HasSubstr("not JSON"));
    EXPECT_THAT(error("[1,2]"), HasSubstr("expected an object"));
    EXPECT_THAT(error("7"), HasSubstr("expected an object"));
    EXPECT_THAT(error("{\"olt\":\"a\","), HasSubstr("not JSON"));
    EXPECT_THAT(error(R"({"olt":"a","bridge":"b"})"), "answers: missing");
    EXPECT_THAT(error(R"({"olt":"a/b","bridge":"b","answers":true})"), StartsWith("olt: expected a name"));
    EXPECT_THAT(error(R"({"olt":"a","bridge":"b","answers":1})"), "answers: expected true or false");
    EXPECT_THAT(error(R"({"olt":"a","bridge":"b","answers":true,"model":"\u001b[2J"})"), StartsWith("model: expected"));
    EXPECT_THAT(error(R"({"olt":"a","bridge":"b","answers":true,"labels":{"x y":"1"}})"),
                StartsWith("labels: expected"));
    EXPECT_THAT(error(R"({"olt":"a","bridge":"b","answers":true,"ports":-1})"), StartsWith("ports: expected a number"));
    EXPECT_THAT(error(R"({"olt":"a","bridge":"b","answers":true,"onus":7})"), HasSubstr("expected an object"));
    EXPECT_THAT(error(R"({"olt":"a","bridge":"b","answers":true,"at":"now"})"), StartsWith("at: expected seconds"));
    EXPECT_THAT(error(R"({"olt":"a","olt":"b"})"), "olt: given twice");
    EXPECT_THAT(error(std::string(longest_inventory + 1, ' ')), "the inventory is too long");
    EXPECT_THAT(error(std::string(50000, '{')), HasSubstr("not JSON"));
    EXPECT_THAT(error("{\"x\":" + std::string(50000, '[')), HasSubstr("not JSON"));
    std::string labels;
    for (size_t label = 0; label <= most_labels; ++label)
        labels += (labels.empty() ? "\"l" : ",\"l") + std::to_string(label) + "\":\"\"";
    EXPECT_EQ(error("{\"olt\":\"a\",\"bridge\":\"b\",\"answers\":true,\"labels\":{" + labels + "}}"),
              "labels: expected fewer labels");
}

TEST(Selector, ChoosesByNames)
{
    EXPECT_THAT(chosen("north-2"), ElementsAre("north-2"));
    EXPECT_THAT(chosen("north-2, lab.new,south-1"), ElementsAre("lab.new", "north-2", "south-1"));
    EXPECT_THAT(chosen("north-*"), ElementsAre("north-2", "north-10"));
    EXPECT_THAT(chosen("north-?"), ElementsAre("north-2"));
    EXPECT_THAT(chosen("name=*-1*"), ElementsAre("north-10", "south-1"));
    EXPECT_THAT(chosen("name!=north-10,lab.new"), ElementsAre("north-2", "south-1"));
    EXPECT_THAT(chosen("NORTH-*"), IsEmpty());
}

TEST(Selector, AllHasAnOrderOfPeople)
{
    EXPECT_THAT(chosen("all"), ElementsAre("lab.new", "north-2", "north-10", "south-1"));
}

TEST(Selector, ChoosesByWhatAnOltIs)
{
    EXPECT_THAT(chosen("model=ep-16"), ElementsAre("north-2", "north-10"));
    EXPECT_THAT(chosen("model = EP-?"), ElementsAre("south-1"));
    EXPECT_THAT(chosen("bridge=hut-2"), ElementsAre("lab.new", "south-1"));
    EXPECT_THAT(chosen("state=online"), ElementsAre("north-10", "south-1"));
    EXPECT_THAT(chosen("not state=online"), ElementsAre("lab.new", "north-2"));
}

TEST(Selector, ChoosesByLabels)
{
    EXPECT_THAT(chosen("site=north"), ElementsAre("north-2", "north-10"));
    EXPECT_THAT(chosen("label.site=s*,x"), ElementsAre("south-1"));
    EXPECT_THAT(chosen("label.state=spare"), ElementsAre("south-1")) << "a label may have the name of a key";
    EXPECT_THAT(chosen("site=\"no*\""), IsEmpty()) << "in quotation marks a star is a star";
}

TEST(Selector, ComparesNumbers)
{
    EXPECT_THAT(chosen("online>=12"), ElementsAre("north-2", "north-10"));
    EXPECT_THAT(chosen("online>12"), ElementsAre("north-10"));
    EXPECT_THAT(chosen("online<12"), ElementsAre("south-1"));
    EXPECT_THAT(chosen("online <= 12"), ElementsAre("north-2", "south-1"));
    EXPECT_THAT(chosen("offline=3"), ElementsAre("north-10"));
    EXPECT_THAT(chosen("waiting!=1"), ElementsAre("north-2", "south-1"));
    EXPECT_THAT(chosen("ports=8"), ElementsAre("south-1"));
}

TEST(Selector, DoesNotChooseWhatItKnowsNothingOf)
{
    EXPECT_THAT(chosen("site!=south"), ElementsAre("north-2", "north-10"));
    EXPECT_THAT(chosen("not site=south"), ElementsAre("north-2", "north-10"));
    EXPECT_THAT(chosen("model!=EP-8"), ElementsAre("north-2", "north-10"));
    EXPECT_THAT(chosen("site=south or lab.new"), ElementsAre("lab.new", "south-1"));
}

TEST(Selector, CombinesWhatIsCompared)
{
    EXPECT_THAT(chosen("site=north and state=online"), ElementsAre("north-10"));
    EXPECT_THAT(chosen("south-1 or north-2 and state=online"), ElementsAre("south-1")) << "'and' binds first";
    EXPECT_THAT(chosen("(south-1 or north-2) and not (ports=16)"), ElementsAre("south-1"));
    EXPECT_THAT(chosen("ALL AND NOT north-*"), ElementsAre("lab.new", "south-1"));
}

TEST(Selector, SaysWhereItIsWrong)
{
    const std::string start = "the selector is wrong at character ";
    EXPECT_THAT(error_of(""), StartsWith(start + "1: expected a name"));
    EXPECT_THAT(error_of("site=north and"),
                start + "15: expected a name of OLTs or a comparison as site=north, and it ends here");
    EXPECT_THAT(error_of("site="), StartsWith(start + "6: expected a value behind site="));
    EXPECT_THAT(error_of("site=north south-1"), StartsWith(start + "12: expected 'and' or 'or', and not 'south-1'"));
    EXPECT_THAT(error_of("(site=north"), StartsWith(start + "12: expected ')' for the '(' at character 1"));
    EXPECT_THAT(error_of("north-2,"), StartsWith(start + "9: expected a name or a value behind ','"));
    EXPECT_THAT(error_of("site<north"), StartsWith(start + "1: site is a text, which '<' cannot compare"));
    EXPECT_THAT(error_of("online>many"), StartsWith(start + "8: expected a number behind online>, and not 'many'"));
    EXPECT_THAT(error_of("online=4294967296"), StartsWith(start + "8: expected a number"));
    EXPECT_THAT(error_of("state=onlin"),
                StartsWith(start + "7: state is online or offline, and not 'onlin'; did you mean online?"));
    EXPECT_THAT(error_of("a/b"), StartsWith(start + "1: 'a/b' is no name"));
    EXPECT_THAT(error_of("si*e=north"), StartsWith(start + "1: 'si*e' is neither a key nor"));
    EXPECT_THAT(error_of("site='north"), StartsWith(start + "6: the quotation mark is not closed"));
    EXPECT_THAT(error_of("site!north"), StartsWith(start + "1: 'site!north' is no name of an OLT"));
    EXPECT_THAT(error_of("not"), StartsWith(start + "4: expected a name"));
    EXPECT_THAT(error_of("or"), StartsWith(start + "1: expected a name"));
    EXPECT_THAT(error_of("\x1b[2J"), HasSubstr("'\\x1b[2J'"));
}

TEST(Selector, SaysWhatIsMisspelt)
{
    EXPECT_THAT(error_of("north-2,nroth-10"), HasSubstr("no OLT has the name 'nroth-10'; did you mean north-10?"));
    EXPECT_THAT(error_of("all and not name=south-7"), HasSubstr("no OLT has the name 'south-7'"));
    EXPECT_THAT(error_of("site=north or sites=north"), HasSubstr("no OLT has the label 'sites'; did you mean site?"));
    EXPECT_THAT(error_of("modle=EP-8"), HasSubstr("no OLT has the label 'modle'; did you mean model?"));
}

TEST(Selector, OfAnyDepthAndLengthIsRefusedInTime)
{
    EXPECT_THAT(error_of(std::string(100000, '(')), HasSubstr("nested too deeply"));
    std::string negations;
    for (int i = 0; i < 20000; ++i)
        negations += "not ";
    EXPECT_THAT(error_of(negations + "all"), HasSubstr("nested too deeply"));
    EXPECT_THAT(error_of(std::string(200000, 'a')), HasSubstr("too long"));
    std::string stars;
    for (int i = 0; i < 1000; ++i)
        stars += "*a";
    EXPECT_THAT(chosen("site=" + stars + "b"), IsEmpty());
}

TEST(Selector, KnowsThePlainNameOfOneOlt)
{
    EXPECT_TRUE(is_single_name("north-2"));
    EXPECT_TRUE(is_single_name("lab.new"));
    for (const char *other :
         {"", "all", "ALL", "not", "north-*", "a,b", "site=north", "a b", "(a)", "north-?", "\"a\""})
        EXPECT_FALSE(is_single_name(other)) << other;
}

} // namespace
