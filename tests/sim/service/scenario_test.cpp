// These tests check what scenarios describe, which mistakes in them are found, and what happens at which time.
#include "scenario/scenario.h"

#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

#include "control/control.h"
#include "model/plant/fibre.h"
#include "scenario/summary.h"
#include "scenes.h"
#include "store/configuration.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr char small[] = R"(
[service.home]
assured = 1000
maximum = 5000
down = 7000
description = "home"
load_up = 300

[kind.box]
vendor = "ACME"
model = "X4"
fe_ports = 3

[[olt]]
name = "core"
ports = 2

[[olt.port]]
number = 2

[[olt.port.branch]]
name = "feeder"
length = 1000
split = 4

[[olt.port.branch]]
name = "street"
from = "feeder"
length = 200
split = 8

[[olt.port.onu]]
name = "shop"
mac = "02:00:5e:10:00:01"
kind = "box"
service = "home"
branch = "street"
drop = 30
id = 9
loid = "shop-1"
password = "secret"

[[olt.port.onu]]
name = "home"
count = 3
service = "home"
branch = "feeder"

[[olt.port.onu]]
name = "guest"
branch = "street"
silent = true
)";

TEST(Scenario, AnOnuIsWhatItSays)
{
    const Scene scene(small);
    const Arrival &shop = scene.onu(2, "shop");
    EXPECT_EQ(text::mac_text(shop.mac), "02:00:5e:10:00:01");
    EXPECT_EQ(shop.distance, 1230u);
    EXPECT_EQ(shop.loss, splitter_loss(4) + splitter_loss(8) + 6 * connector_loss);
    EXPECT_EQ(shop.loid, "shop-1");
    EXPECT_EQ(shop.password, "secret");
    EXPECT_EQ(shop.load_up, 300u);
    EXPECT_TRUE(scene.onu(2, "guest").silent);
    EXPECT_EQ(scene.port(1).arrivals.size(), 0u);
    const Device device = scene.olt().device_of(shop.mac);
    EXPECT_EQ(device.type->vendor, "ACME");
    EXPECT_EQ(device.unis.size(), 3u);
}

TEST(Scenario, EveryOnuHasAFibreOfItsName)
{
    const Scene scene(small);
    const std::vector<Branch> &branches = scene.port(2).branches;
    for (const Arrival &arrival : scene.port(2).arrivals)
        EXPECT_EQ(branches.at(arrival.branch).name, arrival.name);
    EXPECT_EQ(branches.at(scene.onu(2, "home-2").branch).parent, 0u);
}

TEST(Scenario, ANewOltBeginsWithWhatServicesProvision)
{
    const Scene scene(small);
    const PonPort &port = scene.port(2);
    const Binding &shop = port.bindings[9].value();
    EXPECT_EQ(shop.mac, scene.onu(2, "shop").mac);
    EXPECT_EQ(shop.sla, (Sla{.fixed = 0, .assured = 1000, .maximum = 5000, .priority = 0, .weight = 1}));
    EXPECT_EQ(shop.sla_down, 7000u);
    EXPECT_EQ(shop.description, "home");
    EXPECT_TRUE(port.online(shop));
    for (uint32_t onu_id : {1, 2, 3})
        EXPECT_EQ(port.bindings[onu_id].value().mac, scene.onu(2, "home-" + std::to_string(onu_id)).mac);
    EXPECT_FALSE(scene.olt().find(scene.onu(2, "guest").mac));
}

TEST(Scenario, WhatIsLeftOpenFollowsFromTheSeed)
{
    const std::string text = "[[olt]]\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\nname = \"a\"\ncount = 4\n";
    const Scene one("seed = 1\n" + text), same("seed = 1\n" + text), other("seed = 2\n" + text);
    EXPECT_EQ(one.port(1).arrivals, same.port(1).arrivals);
    EXPECT_NE(one.onu(1, "a-1").mac, other.onu(1, "a-1").mac);
    EXPECT_EQ(one.onu(1, "a-1").mac, [] {
        std::vector<Arrival> found = population_at({.seed = 1, .arrivals = 1}, 1).arrivals;
        return found.at(0).mac;
    }());
}

TEST(Scenario, APortWithoutBranchesHasOneSplitterBehindAFeeder)
{
    const Scene scene("[[olt]]\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\nname = \"a\"\ndrop = 200\n");
    EXPECT_EQ(scene.port(1).branches.at(0).name, "feeder");
    EXPECT_EQ(scene.onu(1, "a").distance, 300u);
}

TEST(Scenario, SeveralOltsHaveNamesAndSeedsOfTheirOwn)
{
    const std::vector<OltScenario> olts = read("seed = 5\n[[olt]]\nname = \"a\"\ncount = 2\n[[olt]]\nname = \"b\"\n");
    ASSERT_EQ(olts.size(), 3u);
    EXPECT_EQ(olts[1].name, "a-2");
    EXPECT_EQ(olts[1].settings.seed, 6u);
    EXPECT_EQ(olts[2].name, "b");
    EXPECT_EQ(olts[2].settings.seed, 7u);
}

TEST(Scenario, AColdStartLetsAllOnusRegister)
{
    Scene scene("start = \"cold\"\n" + std::string(small));
    const Binding shop = scene.port(2).bindings[9].value();
    EXPECT_FALSE(scene.port(2).online(shop));
    scene.simulator.advance(120 * ms_per_second);
    EXPECT_TRUE(scene.port(2).online(shop));
}

TEST(Scenario, APortThatAsksForLoidsKnowsThoseOfAServiceWithAuth)
{
    const Scene scene("[service.s]\nauth = true\n[[olt]]\n[[olt.port]]\nnumber = 1\nauth = \"loid+password\"\n"
                      "[[olt.port.onu]]\nname = \"a\"\nservice = \"s\"\n[[olt.port.onu]]\nname = \"b\"\n");
    const PonPort &port = scene.port(1);
    EXPECT_EQ(port.authentication.mode, AuthMode::loid_and_password);
    EXPECT_TRUE(port.authentication.accepts(scene.onu(1, "a")));
    EXPECT_FALSE(port.authentication.accepts(scene.onu(1, "b")));
    EXPECT_TRUE(port.online(port.bindings[1].value()));
}

std::string with_events(const std::string &events)
{
    return small + events;
}

std::string event(const std::string &at, const std::string &words, const std::string &more = {})
{
    return "[[event]]\nat = " + at + "\ndo = \"" + words + "\"\n" + more;
}

TEST(Timeline, EventsHappenAtTheirTime)
{
    Scene scene(with_events(event("\"1h 30min\"", "power 2 shop off")));
    const Binding shop = scene.port(2).bindings[9].value();
    scene.simulator.advance(5399 * ms_per_second);
    EXPECT_TRUE(scene.port(2).online(shop));
    scene.simulator.advance(5400 * ms_per_second);
    EXPECT_FALSE(scene.port(2).online(shop));
    EXPECT_THAT(scene.simulator.take_log(), ElementsAre("event at 1h 30min: power 2 shop off"));
}

TEST(Timeline, EventsOfTheSameTimeHappenInOrderOfTheFile)
{
    Scene scene(with_events(event("20", "power 2 shop on") + event("10", "power 2 shop off") +
                            event("10", "power 2 home-1 off")));
    EXPECT_THAT(scene.log_until(30), ElementsAre("event at 10s: power 2 shop off", "event at 10s: power 2 home-1 off",
                                                 "event at 20s: power 2 shop on"));
}

TEST(Timeline, AnEventIsRepeatedAsOftenAsItSays)
{
    Scene scene(with_events(event("\"1d\"", "age 1 10", "every = \"2d\"\ntimes = 3\n")));
    EXPECT_THAT(scene.log_until(100ull * 24 * 3600),
                ElementsAre("event at 1d: age 1 10", "event at 3d: age 1 10", "event at 5d: age 1 10"));
}

TEST(Timeline, OneLongStepAndManyShortOnesGiveTheSame)
{
    const std::string text = with_events(event("7", "power 2 shop off", "every = 13\ntimes = 5\n") +
                                         event("9", "power 2 shop on", "every = 13\ntimes = 5\n"));
    Scene one(text), many(text);
    one.simulator.advance(100 * ms_per_second);
    for (ModelTime time = 0; time <= 100 * ms_per_second; time += 500)
        many.simulator.advance(time);
    one.simulator.keep_time();
    many.simulator.keep_time();
    EXPECT_EQ(one.store.rows(), many.store.rows());
}

TEST(Timeline, ARefusedEventIsToldAndThoseAfterItHappen)
{
    Scene scene(with_events(event("5", "loop 2 guest 1 on") + event("6", "power 2 shop off")));
    const std::vector<std::string> log = scene.log_until(10);
    ASSERT_EQ(log.size(), 2u);
    EXPECT_THAT(log[0], HasSubstr("event at 5s: loop 2 guest 1 on: refused: "));
    EXPECT_EQ(log[1], "event at 6s: power 2 shop off");
}

TEST(Timeline, AnEventHappensOnceOverRestarts)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    const auto scenario = std::make_shared<const OltScenario>(read(with_events(event("5", "age 1 10"))).at(0));
    {
        Store store(file, false);
        Simulator(store, {}, scenario).advance(5 * ms_per_second);
    }
    Store store(file, false);
    Simulator simulator(store, {}, scenario);
    simulator.advance(20 * ms_per_second);
    EXPECT_TRUE(simulator.take_log().empty());
    EXPECT_EQ(simulator.olt().module(1)->record().added_hours, 10u);
}

TEST(Timeline, GoesOnFromTheStoreAlone)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    {
        Store store(file, false);
        Simulator(store, {}, std::make_shared<const OltScenario>(read(with_events(event("5", "age 1 10"))).at(0)));
    }
    Store store(file, false);
    Simulator simulator(store, {});
    EXPECT_EQ(simulator.settings().olt, "core");
    EXPECT_EQ(simulator.olt().port(2)->arrivals.size(), 5u);
    simulator.advance(5 * ms_per_second);
    EXPECT_EQ(simulator.take_log().size(), 1u);
}

std::string configuration_of(const Scene &scene)
{
    return write_configuration(scene.simulator.settings(), scene.store.rows());
}

TEST(Timeline, AConfigurationKnowsHowFarItWas)
{
    Scene scene(with_events(event("5", "age 1 10") + event("50", "power 2 shop off")));
    scene.simulator.advance(10 * ms_per_second);
    const Change read_back = read_configuration(configuration_of(scene), scene.simulator.settings());
    const Timeline *timeline = read_back.find<Timeline>({});
    ASSERT_TRUE(timeline);
    EXPECT_EQ(timeline->done, 1u);
}

TEST(Scenario, AConfigurationOfAnotherOneIsRefused)
{
    const Scene scene(small), other(with_events(event("5", "age 1 10"))), none("[[olt]]\n");
    EXPECT_NO_THROW(read_configuration(configuration_of(scene), scene.simulator.settings()));
    for (const Scene *each : {&other, &none})
        EXPECT_THROW(read_configuration(configuration_of(scene), each->simulator.settings()), OtherOltError);
    Settings plain = scene.simulator.settings();
    plain.scenario.clear();
    EXPECT_THROW(read_configuration(configuration_of(scene), plain), OtherOltError);
}

TEST(Scenario, AnotherOneIsRefusedByAState)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    const auto open = [&](const std::string &text) {
        Store store(file, false);
        Simulator(store, {}, std::make_shared<const OltScenario>(read(text).at(0)));
    };
    open(small);
    EXPECT_NO_THROW(open(small));
    try {
        open(with_events(event("5", "age 1 10")));
        FAIL() << "not refused";
    } catch (const StoreError &error) {
        EXPECT_THAT(error.what(), HasSubstr("out to go on with it, add --fresh"));
    }
    Store store(file, false);
    EXPECT_THROW(Simulator(store, {.seed = 7, .ports = {}, .arrivals = {}, .silent = {}}), StoreError);
}

TEST(Scenario, TimesAreReadAsTheyAreWritten)
{
    for (const auto &[text, seconds] : {std::pair<const char *, ModelTime>{"\"1d 2h 3min 4s\"", 93784},
                                        {"\"90 min\"", 5400},
                                        {"\"1h30min\"", 5400},
                                        {"0", 0},
                                        {"61", 61}})
        EXPECT_EQ(read(with_events(event(text, "age 1 1"))).at(0).events.at(0).at, seconds * ms_per_second) << text;
    EXPECT_EQ(text::time_text(93784 * ms_per_second), "1d 2h 3min 4s");
    EXPECT_EQ(text::time_text(0), "0s");
}

struct Wrong {
    std::string text;
    std::string message;
};

// Returns the text of a scenario with one port. The lines begin in line 4 of it.
std::string at_port(const std::string &lines)
{
    return "[[olt]]\n[[olt.port]]\nnumber = 1\n" + lines;
}

std::string onu(const std::string &lines)
{
    return at_port("[[olt.port.onu]]\nname = \"a\"\n" + lines);
}

std::string branch(const std::string &name, const std::string &lines)
{
    return "[[olt.port.branch]]\nname = \"" + name + "\"\n" + lines;
}

std::string chain(size_t fibres)
{
    std::string text = branch("b1", "");
    for (size_t count = 2; count <= fibres; ++count)
        text += branch("b" + std::to_string(count), "from = \"b" + std::to_string(count - 1) + "\"\n");
    return text;
}

const std::vector<Wrong> wrong{
    {"seed = \n", "1: "},
    {"", "1: olt: expected at least one [[olt]]"},
    {"sed = 1\n[[olt]]\n", "1: sed: an unknown key; did you mean seed?"},
    {"seed = -1\n[[olt]]\n", "1: seed: expected a number from 0 to 9223372036854775807, found -1"},
    {"seed = \"x\"\n[[olt]]\n", "1: seed: expected a number from 0 to 9223372036854775807, found \"x\""},
    {"start = \"warm\"\n[[olt]]\n", "1: start: expected \"registered\" or \"cold\", found \"warm\""},
    {"olt = 1\n", "1: olt: expected tables with [[double brackets]], found 1"},
    {"olt = [1]\n", "1: expected a table, found 1"},
    {"kind = 1\n[[olt]]\n", "1: kind: expected tables with names, as [kind.NAME], found 1"},
    {"[[olt]]\nports = 17\n", "2: ports: expected a number from 1 to 16, found 17"},
    {"[[olt]]\nname = \"a b\"\n",
     "2: name: expected a name of at most 32 letters, digits, '-', '_' and '.', found \"a b\""},
    {"[[olt]]\n[[olt]]\n", "2: name: there is an OLT olt already"},
    {"[[olt]]\nname = \"a\"\ncount = 1025\n", "3: count: expected a number from 1 to 1024, found 1025"},
    {"[[olt]]\n[[olt.prot]]\n", "2: prot: an unknown key; did you mean port?"},
    {"[[olt]]\n[[olt.port]]\n", "2: number: expected that of a PON port, or numbers"},
    {"[[olt]]\nports = 2\n[[olt.port]]\nnumber = 3\n", "4: number: expected a number from 1 to 2, found 3"},
    {"[[olt]]\n[[olt.port]]\nnumbers = \"3-1\"\n",
     "3: numbers: expected numbers from 1 to 16, each once, as \"1-16\", found \"3-1\""},
    {"[[olt]]\n[[olt.port]]\nnumber = 1\nnumbers = \"2\"\n", "4: numbers: expected either number or numbers"},
    {at_port("[[olt.port]]\nnumbers = \"1-2\"\n"), "5: numbers: port 1 is described in line 2 already"},
    {at_port("auth = \"none\"\n"),
     "4: auth: expected \"mac\", \"loid\", \"loid+password\" or \"mac-or-loid\", found \"none\""},
    {at_port(branch("b", "lenght = 1\n")), "6: lenght: an unknown key; did you mean length?"},
    {at_port(branch("b", "split = 3\n")), "6: split: expected 1, 2, 4, 8, 16, 32, 64 or 128, found 3"},
    {at_port(branch("b", "split = 256\n")), "6: split: expected a number from 1 to 128, found 256"},
    {at_port(branch("b", "length = 20001\n")), "6: length: expected a number from 0 to 20000, found 20001"},
    {at_port(branch("b", "from = \"c\"\n")), "6: from: there is no earlier branch c"},
    {at_port(branch("main", "split = 2\n") + branch("c", "from = \"mian\"\n")),
     "9: from: there is no earlier branch mian; did you mean main?"},
    {at_port(branch("b", "") + branch("c", "")), "6: from: expected a branch: the fibre of the port begins with b"},
    {at_port(branch("b", "split = 2\n") + branch("b", "from = \"b\"\n")),
     "8: name: there is a fibre b at this port already"},
    {at_port(branch("b", "") + branch("c", "from = \"b\"\n") + branch("d", "from = \"b\"\n")),
     "11: from: b has no splitter, and a fibre goes on from it"},
    {at_port(branch("b", "split = 2\n") + branch("c", "from = \"b\"\n") + branch("d", "from = \"b\"\n") +
             branch("e", "from = \"b\"\n")),
     "15: from: b has a splitter, all 2 ends of which are taken"},
    {at_port(chain(7)), "23: from: expected at most 6 fibres one behind the other"},
    {at_port(branch("b", "length = 15000\n") + branch("c", "from = \"b\"\nlength = 6000\n")),
     "10: length: expected a distance from the OLT of at most 20000 m, found 21000"},
    {at_port(branch("b", "split = 128\n") + branch("c", "from = \"b\"\nsplit = 128\nlength = 5\n")),
     "11: length: expected a loss of at most 45.00 dB to the OLT, found 47.20"},
    {at_port("[[olt.port.onu]]\n"), "4: name: expected a name"},
    {onu("") + "[[olt.port.onu]]\nname = \"a\"\n", "7: name: there is a fibre a at this port already"},
    {onu("count = 129\n"), "6: count: expected a number from 1 to 128, found 129"},
    {onu("count = 100\n") + "[[olt.port.onu]]\nname = \"b\"\ncount = 29\n",
     "9: count: expected at most 128 ONUs at port 1"},
    {onu("mac = \"02:00\"\n"), "6: mac: 02:00: expected a MAC address, as 02:00:5e:10:00:01"},
    {onu("mac = \"03:00:5e:10:00:01\"\n"), "6: mac: 03:00:5e:10:00:01: expected the address of one station"},
    {onu("mac = \"02:00:5e:10:00:01\"\n") + "[[olt.port.onu]]\nname = \"b\"\nmac = \"02:00:5E:10:00:01\"\n",
     "9: mac: 02:00:5e:10:00:01 is the address of a at port 1 already"},
    {onu("count = 2\nmac = \"02:00:5e:10:00:01\"\n"), "7: mac: expected without count: it is that of one ONU"},
    {onu("kind = \"box\"\n"), "6: kind: there is no kind box"},
    {"[service.home]\n" + onu("service = \"hone\"\n"), "7: service: there is no service hone; did you mean home?"},
    {onu("id = 1\n"), "6: id: expected with a service that binds the ONU"},
    {"[service.s]\n" + onu("service = \"s\"\nid = 128\n"), "8: id: expected a number from 0 to 127, found 128"},
    {"[service.s]\n" + onu("service = \"s\"\nid = 120\ncount = 9\n"),
     "8: id: expected room for all of count up to 127"},
    {"[service.s]\n" + onu("service = \"s\"\nid = 5\n") + "[[olt.port.onu]]\nname = \"b\"\nservice = \"s\"\nid = 5\n",
     "12: id: ONU id 5 of port 1 is taken already"},
    {at_port(branch("b", "split = 2\n") + branch("c", "from = \"b\"\n") + "[[olt.port.onu]]\nname = \"a\"\n"),
     "10: branch: expected one: the port has several"},
    {onu("") + "[[olt.port.onu]]\nname = \"b\"\nbranch = \"a\"\n", "8: branch: a ends at an ONU"},
    {onu("drop = 19901\n"), "6: drop: expected a distance from the OLT of at most 20000 m, found 20001"},
    {onu("loid = \"0123456789012345678901234\"\n"),
     "6: loid: expected a text of 1 to 24 bytes without control characters"},
    {onu("silent = 1\n"), "6: silent: expected true or false, found 1"},
    {"[service.s]\nfixed = 600000\n" + onu("service = \"s\"\ncount = 2\n"),
     "8: service: expected at most 927049 kbit/s fixed and assured at port 1, found 1200000"},
    {"[service.s]\nassured = 10\nmaximum = 5\n[[olt]]\n",
     "3: maximum: expected at least what is fixed and assured, 10, found 5"},
    {"[service.s]\nweight = 101\n[[olt]]\n", "2: weight: expected a number from 1 to 100, found 101"},
    {"[service.s]\nspeed = 1\n[[olt]]\n", "2: speed: an unknown key; known are "},
    {"[kind.k]\nvendro = \"ACME\"\nmodel = \"X\"\nge_ports = 1\n[[olt]]\n",
     "2: vendro: an unknown key; did you mean vendor?"},
    {"[kind.k]\nmodel = \"S100\"\nge_port = 1\n[[olt]]\n", "3: ge_port: an unknown key; did you mean ge_ports?"},
    {"[kind.k]\nmodel = \"S100\"\nchipset = \"A-1\"\n[[olt]]\n",
     "3: chipset: expected with a vendor: a built-in model has its own"},
    {"[[olt]]\n[[olt.port]]\nnumbers = \"1\"\nnumbr = 1\n", "4: numbr: an unknown key; did you mean number?"},
    {at_port("[[olt.port.onu]]\nname = \"a\"\ncount = 2\nmca = \"02:00:5e:10:00:01\"\n"),
     "7: mca: an unknown key; did you mean mac?"},
    {onu("serivce = \"s\"\nid = 5\n"), "6: serivce: an unknown key; did you mean service?"},
    {onu("kinds = \"x\"\nkind = \"x\"\n"), "6: kinds: an unknown key; did you mean kind?"},
    {at_port(branch("b", "form = \"a\"\n")), "6: form: an unknown key; did you mean from?"},
    {"[[olt]]\n[[event]]\nta = 1\n", "3: ta: an unknown key; known are at, do, every, times, olt"},
    {"[[olt]]\n[[event]]\nat = 1\ntime = 2\n", "4: time: an unknown key; did you mean times?"},
    {"[[olt]]\nprots = 2\ncuont = 1\n", "2: prots: an unknown key; did you mean ports?"},
    {"[[olt]]\nzz = 1\nsed = 1\n", "2: zz: an unknown key; known are "},
    {"[[event]]\nta = 1\n[[olt]]\nprots = 2\n", "2: ta: an unknown key"},
    {"[kind.b]\nvendro = \"ACME\"\n[kind.a]\nvendro = \"ACME\"\n[[olt]]\n", "2: vendro: an unknown key"},
    {"olt = [{zz = 1, name = 5, ab = 2}]\n", "1: zz: an unknown key"},
    {"[[olt]]\nports = 17\nseeds = 1\n", "3: seeds: an unknown key; did you mean seed?"},
    {"[olt]\nprots = 2\n", "1: olt: expected tables with [[double brackets]], found a table"},
    {"[[kind]]\nvendro = 2\n", "1: kind: expected tables with names, as [kind.NAME], found an array"},
    {"[kind.k]\nmodel = \"S10O\"\n[[olt]]\n", "2: model: there is no built-in model S10O; did you mean S100?"},
    {"[kind.k]\nvendor = \"ABC\"\nmodel = \"X\"\n[[olt]]\n", "2: vendor: expected 4 characters, found \"ABC\""},
    {"[kind.k]\nvendor = \"ABCD\"\nmodel = \"X\"\n[[olt]]\n",
     "1: ge_ports: expected 1 to 4 GE and FE ports together, found 0"},
    {"[[olt]]\n[[event]]\ndo = \"age 1 1\"\n", "2: at: expected a time"},
    {"[[olt]]\n[[event]]\nat = 1\n", "2: do: expected a control command"},
    {"[[olt]]\n" + event("\"1 week\"", "age 1 1"),
     "3: at: expected seconds, or a time as \"1d 2h 30min 5s\", of at most ten years, found \"1 week\""},
    {"[[olt]]\n" + event("-1", "age 1 1"), "3: at: expected seconds, or a time"},
    {"[[olt]]\n" + event("1", "fly"), "4: do: fly: not a command; ponsim ctl help lists the commands"},
    {"[[olt]]\n" + event("1", "step 5"), "4: do: step: not a command"},
    {"[[olt]]\nports = 1\n" + event("1", "power 2 x on"), "5: do: 2: expected a number from 1 to 1"},
    {"[[olt]]\n" + event("1", "power 1 x on"),
     "4: do: x: expected a MAC address, as 02:00:5e:10:00:01, or the name of an ONU at PON port 1"},
    {"[[olt]]\n" + event("1", "age 1 1", "every = 5\n"), "5: every: expected every and times together"},
    {"[[olt]]\n" + event("1", "age 1 1", "times = 5\n"), "5: times: expected every and times together"},
    {"[[olt]]\n" + event("1", "age 1 1", "every = 0\ntimes = 2\n"), "5: every: expected at least a second"},
    {"[[olt]]\n" + event("1", "age 1 1", "every = \"365d\"\ntimes = 12\n"),
     "6: times: expected the last time within ten years"},
    {"[[olt]]\nname = \"core\"\n" + event("1", "age 1 1", "olt = \"cord\"\n"),
     "6: olt: there is no OLT cord; did you mean core?"},
};

TEST(Scenario, AWrongOneIsExplainedWithItsLine)
{
    for (const Wrong &each : wrong) {
        try {
            read(each.text);
            ADD_FAILURE() << "taken:\n" << each.text;
        } catch (const ScenarioError &error) {
            EXPECT_THAT(error.what(), testing::StartsWith("test.toml:" + each.message)) << each.text;
        }
    }
}

TEST(Scenario, NoByteOfATextThatIsChangedBreaksTheReader)
{
    for (size_t at = 0; at < sizeof small - 1; ++at)
        for (const char byte : {'\0', '"', '[', '9'}) {
            std::string text = small;
            text[at] = byte;
            try {
                read(text);
            } catch (const ScenarioError &) {
                continue;
            }
        }
}

// Returns a scenario of one port whose only fibre ends at so many splits, with two ONUs at the ends of 100 and 200 m.
std::string budget(const std::string &optical_class, uint32_t split)
{
    return "[[olt]]\nports = 1\nclass = \"" + optical_class +
           "\"\n[[olt.port]]\nnumber = 1\n[[olt.port.branch]]\nname = \"main\"\nsplit = " + std::to_string(split) +
           "\n[[olt.port.onu]]\nname = \"near\"\ndrop = 100\n[[olt.port.onu]]\nname = \"far\"\ndrop = 200\n";
}

std::vector<std::string> summary_lines(const std::string &text)
{
    std::istringstream in(summary_of(read_scenario(text, "test.toml")));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

TEST(Summary, HasTheClassAndTheMarginOfEachPort)
{
    const std::vector<std::string> lines = summary_lines(budget("PX20", 32));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0],
              "OLT                               Port  ONUs  Bound  Fibres  Loss to ONUs, dB  Class  Margin, dB");
    // 16.5 of the splitter, 1 of four connectors, and 0.035 a fibre of 100 m. Downstream 23.5 may be lost.
    EXPECT_EQ(lines[1],
              "olt                                  1     2      0       3  17.53 to 17.57    PX20         5.95");
    EXPECT_EQ(lines[2], "olt: 0 events");
}

TEST(Summary, WarnsOfLightThatIsTooWeakOrTooStrong)
{
    EXPECT_THAT(summary_lines(budget("PX10", 128)),
                testing::Contains("olt, port 1: warning: the light of far (and 1 more) is too weak: it loses 24.15 dB "
                                  "downstream, and the optics are made for 19.50 at most"));
    EXPECT_THAT(summary_lines(budget("PX30", 2)),
                testing::Contains("olt, port 1: warning: the light of near (and 1 more) may overload the receiver: it "
                                  "loses 4.32 dB downstream, and the optics are made for 15.00 at least"));
    for (const uint32_t split : {16, 32, 64})
        EXPECT_EQ(summary_lines(budget("PX20", split)).size(), 3u) << split;
}

class ShippedScenario : public testing::TestWithParam<std::filesystem::path>
{
};

TEST_P(ShippedScenario, RunsToItsEndWithoutARefusedEvent)
{
    std::ifstream in(GetParam());
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    for (OltScenario &olt : read_scenario(text, GetParam().string()).olts) {
        const ModelTime end = olt.events.empty() ? 3600 * ms_per_second : olt.events.back().at;
        const size_t events = olt.events.size();
        Scene scene(std::move(olt));
        scene.simulator.advance(end);
        size_t happened = 0;
        for (const std::string &line : scene.simulator.take_log()) {
            EXPECT_EQ(line.find("refused"), std::string::npos) << line;
            happened += line.starts_with("event at ");
        }
        EXPECT_EQ(happened, events);
    }
}

TEST_P(ShippedScenario, HasLightEnoughAndNotTooMuch)
{
    EXPECT_THAT(summary_of(read_scenario_file(GetParam())), Not(HasSubstr("warning")));
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ShippedScenario, testing::ValuesIn(scenarios_in(SCENARIOS)), scenario_name);

} // namespace
} // namespace ponsim
