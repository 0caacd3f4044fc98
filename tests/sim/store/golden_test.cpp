// These tests check what this version makes of OLT states that are kept with the tests.
//
// For each version of the schema, the folder golden has a state file as SQL, and the configuration to which it is
// carried over. With WRITE_GOLDEN=1 in the environment, both are written again for this version, and the configurations
// for earlier versions.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>

#include <gtest/gtest.h>

#include "database.h"
#include "forwarding.h"
#include "model/olt/remote.h"
#include "optics.h"
#include "profiles.h"
#include "scenario/scenario.h"
#include "store/configuration.h"
#include "store/digest.h"
#include "upgrade.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;

// Behind these ports everything that can be kept of an OLT comes about, by itself, by events or by commands.
constexpr char scenario_text[] = R"(seed = 7
start = "registered"

[kind.box]
vendor = "ACME"
model = "X4"
chipset = "SX-4400"
fe_ports = 4
us_queues = 8
igmp_snooping = true
multicast_control = true
vlan_translation = true

[service.home]
assured = 1000
maximum = 50000
priority = 3
weight = 10
down = 70000
description = "home"
load_up = 3000

[[olt]]
name = "golden"
ports = 2

[[olt.port]]
number = 1

[[olt.port.onu]]
name = "home"
count = 6
kind = "box"
service = "home"

[[olt.port]]
number = 2

[[olt.port.onu]]
name = "shop"
count = 4
kind = "box"

[[event]]
at = 3
do = "power 1 home-6 off"

[[event]]
at = 4
do = "bend 1 home-2 0.75"

[[event]]
at = "2h"
do = "power 1 home-6 on"
)";

std::shared_ptr<const OltScenario> golden_scenario()
{
    return std::make_shared<const OltScenario>(read_scenario(scenario_text, "golden.toml").olts.at(0));
}

uint32_t tell_onu(ServiceFixture &fixture, uint32_t channel, uint32_t command, uint32_t uni, const std::string &bytes)
{
    bsp_onu_msg record = onu_record_of(command, 1, 1);
    record.onu_uni_port = static_cast<uint8_t>(uni);
    bytes.copy(reinterpret_cast<char *>(record.onu_data), bytes.size());
    Message message = message_of(channel, record);
    message.call = catalogue::Call::set;
    return fixture.simulator.handle(message).status;
}

uint32_t order_loops(ServiceFixture &fixture, uint32_t command, uint32_t argument)
{
    bsp_pon_msg_ext record{};
    record.cmd = command;
    record.ext_arg = argument;
    return fixture.simulator.handle({BSP_MSG_LOOP_DETECT, &record, sizeof record}).status;
}

void authenticate(ServiceFixture &fixture)
{
    bsp_pon_msg auth = record_of(BSP_CMD_AUTH_SET, 2);
    auth.arg_word12 = 3; // by MAC address, or by LOID
    strcpy(auth.text45, "a loid");
    strcpy(auth.text109, "secret");
    EXPECT_EQ(fixture.send(auth), BSP_OK);
    bsp_pon_msg limits = record_of(BSP_CMD_OPT_RANGE_SET, 2);
    put(limits, layout::opt_range::min_distance, 0);
    put(limits, layout::opt_range::max_distance, 18000);
    EXPECT_EQ(fixture.send(limits), BSP_OK);
}

void admit(ServiceFixture &fixture)
{
    bsp_pon_msg bind = record_of(BSP_CMD_ONU_BIND, 2, 5, fixture.port(2).arrivals.at(0).mac);
    bind.arg_value = 0xfffffffe;
    strcpy(bind.text237, "über \"alles\"");
    strcpy(bind.text173, "b");
    strcpy(bind.text365, "c");
    EXPECT_EQ(fixture.send(bind), BSP_OK);
    bsp_pon_msg description = record_of(BSP_CMD_ONU_DESCRIPTION_SET, 2, 5);
    strcpy(description.text237, "Träger");
    EXPECT_EQ(fixture.send(description), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 2, 0, fixture.port(2).arrivals.at(1).mac)), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_SUPPORT_SET, 2, 0, stranger(9))), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_CONFIRM, 2, 0, fixture.port(2).arrivals.at(2).mac)), BSP_OK);
    EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_P2P_STATE_SET, 0)
                                .put(layout::p2p_switch::port, 2u)
                                .put(layout::p2p_switch::onu, 5u)
                                .put(layout::p2p_switch::on, 0u)),
              BSP_OK);
}

void configure(ProfileFixture &fixture)
{
    EXPECT_EQ(tell_onu(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ADMIN_STATE_SET, 2, std::string(4, '\0')), BSP_OK);
    EXPECT_EQ(tell_onu(fixture, BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_SWITCH_SET, 0, std::string(1, '\1')), BSP_OK);
    EXPECT_EQ(tell_onu(fixture, BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_MONITOR_SET, 0, std::string(1, '\1')), BSP_OK);
    EXPECT_EQ(fixture.keep(16, "gold", gold_line), BSP_OK);
    EXPECT_EQ(fixture.keep(32, "gold", with_id(gold_sla, 9)), BSP_OK);
    EXPECT_EQ(fixture.keep(48, "cold", cold_alarm), BSP_OK);
    EXPECT_EQ(add_type(fixture, "acme", "ACME", "X4", "9.9", 300 * 1024, "x4.bin"), BSP_OK);
    EXPECT_EQ(bind_to_port(fixture, 1, "acme"), BSP_OK);
    EXPECT_EQ(bind_to_onus(fixture, 1, ids({3}), "acme"), BSP_OK);
    EXPECT_EQ(upgrade_one(fixture, 1, 3), BSP_OK);
    EXPECT_EQ(order_loops(fixture, BSP_CMD_LOOP_STATE_SET, 1), BSP_OK);
}

// Changes something different of the module in each cage: light that counts as lost, measurements, memory, and age.
void use_modules(ServiceFixture &fixture)
{
    EXPECT_EQ(set_lol(fixture, 1, 1, -3100), BSP_OK);
    EXPECT_EQ(i2c_write(fixture, 2, 0xa2, 128, {1, 2, 3}), BSP_OK);
    EXPECT_EQ(trigger(fixture, 1, 1, 4, 100), BSP_OK);
    EXPECT_EQ(set_lao(fixture, 2, 1), BSP_OK);
    control_line(fixture, "age 2 100000");
    control_line(fixture, "dim 2 0.5");
    control_line(fixture, "age 3 1234");
}

void tell_story(ProfileFixture &fixture)
{
    pass(fixture, 10 * second);
    authenticate(fixture);
    admit(fixture);
    configure(fixture);
    use_modules(fixture);
    control_line(fixture, "loop 1 home-1 1 on");
    control_line(fixture, "loop 1 home-2 3 on");
    control_line(fixture, "load 1 home-4 up 250");
    control_line(fixture, "flood 1 home-4 17");
    control_line(fixture, "age-onu 1 home-5 2000");
    control_line(fixture, "age-onu 2 shop-4 850000"); // until its light is degraded
    control_line(fixture, "bend 2 shop-3 20");        // until both lights of it are lost
    pass(fixture, 3600 * second);
    control_line(fixture, "swap 1 home-3 kind=S040 loid=swapped mac=02:00:5e:10:00:03");
    control_line(fixture, "arrive 2 name=late mac=02:00:5e:10:00:04 kind=box service=home");
    control_line(fixture, "unplug 2 shop-2 3");
    control_line(fixture, "plug 2 late 1 10HD");
    control_line(fixture, "power 1 home-5 off");
    control_line(fixture, "power 1 home-5 on");
    EXPECT_EQ(trigger(fixture, 1, 2, 10, 1000), BSP_OK);
    pass(fixture, second);
}

std::string configuration_of(const ServiceFixture &fixture)
{
    return write_configuration(fixture.simulator.settings(), fixture.store.rows());
}

// Compares the text with the file. With WRITE_GOLDEN in the environment, it first writes the text to the file.
void expect_golden(const std::string &text, const std::string &name)
{
    const std::string file = GOLDEN "/" + name;
    if (std::getenv("WRITE_GOLDEN")) std::ofstream(file, std::ios::binary) << text;
    const std::string golden = content_of(file);
    EXPECT_EQ(digest(text), digest(golden));
    EXPECT_EQ(text, golden);
}

std::string of_version(int64_t version, const std::string &ending)
{
    return "state-" + std::to_string(version) + ending;
}

std::map<int64_t, std::string> golden_states()
{
    std::map<int64_t, std::string> states;
    for (const auto &entry : std::filesystem::directory_iterator(GOLDEN)) {
        const std::string name = entry.path().filename();
        std::smatch match;
        if (std::regex_match(name, match, std::regex("state-([0-9]+)\\.sql"))) states[std::stol(match[1])] = name;
    }
    return states;
}

TEST(Golden, TheStoryLeavesTheGoldenState)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    std::string configuration;
    {
        ProfileFixture fixture({}, file, false, golden_scenario());
        tell_story(fixture);
        fixture.simulator.keep_time();
        configuration = configuration_of(fixture);
    }
    Database database(file);
    expect_golden(database.dump(), of_version(Store::version(), ".sql"));
    expect_golden(configuration, of_version(Store::version(), ".jsonl"));
    for (const std::string &table : database.tables())
        EXPECT_NE(database.column("SELECT count(*) FROM " + table).at(0), "0") << table;
}

TEST(Golden, EachStateIsReadAndGivesItsConfiguration)
{
    const std::map<int64_t, std::string> states = golden_states();
    ASSERT_TRUE(states.contains(Store::version()));
    for (const auto &[version, state] : states) {
        const Folder folder;
        restore(GOLDEN "/" + state, folder.file("olt.db"));
        const ServiceFixture fixture({}, folder.file("olt.db"));
        expect_golden(configuration_of(fixture), of_version(version, ".jsonl"));
    }
}

TEST(Golden, EachStateHasTheTablesOfANewOneThen)
{
    const Folder folder;
    const auto schema_of = [](const std::string &file) {
        {
            const ServiceFixture fixture({}, file);
        }
        return Database(file).schema();
    };
    for (const auto &[version, state] : golden_states()) {
        const std::string file = folder.file(state);
        restore(GOLDEN "/" + state, file);
        EXPECT_EQ(schema_of(file), schema_of(folder.file("new.db"))) << state;
    }
}

TEST(Golden, EachConfigurationIsReadAndWrittenAgain)
{
    const Settings settings = golden_scenario()->settings;
    for (const auto &[version, state] : golden_states()) {
        const std::string text = content_of(GOLDEN "/" + of_version(version, ".jsonl"));
        ServiceFixture fixture(settings, read_configuration(text, settings));
        EXPECT_EQ(configuration_of(fixture), text);
    }
}

} // namespace
} // namespace ponsim
