// These tests ask everything that can be asked about ONUs of every kind that a scenario may describe.
#include <fstream>
#include <set>
#include <sstream>

#include "catalogue.h"
#include "scenes.h"
#include "views/onu_identity.h"

namespace ponsim
{
namespace
{

using catalogue::Call;

// A Target is what a request names in all the fields that say what it is about.
struct Target {
    uint32_t pon_port;
    uint32_t onu_id;
    uint32_t uni;
    Mac mac;
};

void put_into(std::string &bytes, const catalogue::Record &record, const char *name, const auto &value)
{
    const catalogue::Field *field = catalogue::find_field(record.fields, name);
    if (field) std::memcpy(bytes.data() + field->offset, &value, sizeof value);
}

// Returns a request that has zeros in all fields but those of command and target.
std::string request_for(const catalogue::Command &command, const Target &target)
{
    const catalogue::Record &record = *command.channel->record;
    std::string bytes(record.size, '\0');
    std::memcpy(bytes.data() + record.command->offset, &command.code, sizeof command.code);
    for (const char *name : {"pon_port", "plat_port", "onu_pon_port"})
        put_into(bytes, record, name, target.pon_port);
    for (const char *name : {"onu_id", "plat_arg4", "onu_onu_id"})
        put_into(bytes, record, name, target.onu_id);
    put_into(bytes, record, "onu_uni_port", static_cast<uint8_t>(target.uni));
    put_into(bytes, record, "onu_mac", target.mac);
    return bytes;
}

Reply send(Simulator &simulator, const catalogue::Command &command, const Target &target)
{
    const bool by_datagram = command.channel->type == BSP_MSG_PROFILE;
    const std::string request = request_for(command, target);
    return simulator.handle({command.channel->type, request.data(), static_cast<uint32_t>(request.size()),
                             command.call.value_or(by_datagram ? Call::dgram_get : Call::get)});
}

// Sends each command of the class for the target. Returns the commands that the OLT carried out. Those whose records
// name no UNI port are sent only when that of the target is 0.
std::set<std::string_view> send_each(Simulator &simulator, catalogue::Class impact, const Target &target)
{
    std::set<std::string_view> carried_out;
    for (const catalogue::Command &command : catalogue::commands()) {
        const bool about_uni = catalogue::find_field(command.channel->record->fields, "onu_uni_port") != nullptr;
        if (command.impact != impact || (target.uni != 0 && !about_uni)) continue;
        EXPECT_NO_THROW({
            const Reply reply = send(simulator, command, target);
            EXPECT_NE(reply.status, PON_ERR_UNKNOWN_COMMAND) << command.name;
            if (reply.status == BSP_OK) carried_out.insert(command.name);
        }) << command.name;
    }
    return carried_out;
}

// Returns an ONU of each kind that is bound at the OLT, and of the ONUs without a kind of the scenario one of each
// model.
std::vector<Target> one_of_each_kind(const Olt &olt)
{
    std::vector<Target> targets;
    std::set<const DeviceType *> seen;
    for (const PonPort &port : olt.ports())
        for (const RemoteOnu &onu : onus_of(olt, port))
            if (onu.online() && seen.insert(onu.device.type).second)
                targets.push_back({port.number, onu.onu_id, 1, onu.binding->mac});
    return targets;
}

// These are the queries whose answers depend on the hardware of the ONU.
constexpr std::string_view of_hardware[] = {"BSP_CMD_ONU_CHIP_ID_GET", "BSP_CMD_ONU_CAP2_GET",
                                            "BSP_CMD_ONU_MEM_INFO_GET", "BSP_CMD_ONU_DEVICE_INFO_GET"};

// Returns how many kinds were asked.
size_t ask_everything(Scene &scene)
{
    const std::vector<Target> targets = one_of_each_kind(scene.olt());
    for (Target target : targets) {
        SCOPED_TRACE(scene.olt().device_of(target.mac).type->chipset);
        for (target.uni = 0; target.uni <= max_unis; ++target.uni) {
            const std::set<std::string_view> answered = send_each(scene.simulator, catalogue::Class::read, target);
            for (const std::string_view query : of_hardware)
                EXPECT_TRUE(answered.contains(query)) << query;
        }
    }
    return targets.size();
}

class KindsOfAScenario : public testing::TestWithParam<std::filesystem::path>
{
};

TEST_P(KindsOfAScenario, AnswerEveryQuery)
{
    std::ifstream in(GetParam());
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    for (OltScenario &olt : read(text)) {
        Scene scene(std::move(olt));
        scene.simulator.advance(300 * ms_per_second); // all ONUs have registered
        EXPECT_GT(ask_everything(scene), 0u);
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, KindsOfAScenario, testing::ValuesIn(scenarios_in(SCENARIOS)), scenario_name);

// This service has the most extreme values that a scenario may state.
const std::string extreme_service = "[service.s]\nauth = true\nfixed = 1\nassured = 0\nmaximum = 1\npriority = 7\n"
                                    "weight = 100\ndown = 1\nload_up = 0\nload_down = 1000000\ndescription = '" +
                                    std::string(127, '"') + "'\n";

// Returns a scenario with an ONU of each of these kinds.
std::string scenario_of(const std::vector<std::string> &kinds)
{
    std::ostringstream described, onus;
    for (size_t number = 1; number <= kinds.size(); ++number) {
        described << "[kind.k" << number << "]\nvendor = \"ACME\"\n" << kinds[number - 1] << '\n';
        onus << "[[olt.port.onu]]\nname = \"o" << number << "\"\nkind = \"k" << number << "\"\nservice = \"s\"\n";
    }
    return described.str() + extreme_service + "[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n" + onus.str();
}

std::string kind_with(const std::string &chipset, const std::string &rest = "ge_ports = 1")
{
    return "model = \"X\"\nchipset = \"" + chipset + "\"\n" + rest;
}

// Returns the kinds that a scenario may describe at the limits of what it may say.
std::vector<std::string> kinds_at_the_limits()
{
    std::vector<std::string> kinds{"model = \"X\"\nge_ports = 1",
                                   "model = \"MMMM\"\nge_ports = 1\nfe_ports = 3\npots_ports = 2\nus_queues = 8\n"
                                   "battery = true\nigmp_snooping = true\nmulticast_control = true\nfast_leave = true\n"
                                   "vlan_translation = true\nvlan_trunk = true",
                                   "model = \"1._-\"\nfe_ports = 4\nus_queues = 1\nfec = false"};
    for (const char *chipset : {"A", "1", "A-", "A--1", "A-B-2", "AB1", "ABCDEFGH", "12345678", "A-65535", "A-65536",
                                "A-999999", "1_.-", "A-00", "SX-1001", "SX-1002"})
        kinds.push_back(kind_with(chipset));
    for (const char *ports : {"ge_ports = 4", "fe_ports = 1", "ge_ports = 2\nfe_ports = 2\npots_ports = 1"})
        kinds.push_back(kind_with("Q-1", ports));
    return kinds;
}

TEST(Kinds, AtTheLimitsAnswerEveryQuery)
{
    const std::vector<std::string> kinds = kinds_at_the_limits();
    Scene scene(scenario_of(kinds));
    EXPECT_EQ(ask_everything(scene), kinds.size());
}

TEST(Kinds, AtTheLimitsAreConfiguredWithoutAnError)
{
    const std::vector<std::string> kinds = kinds_at_the_limits();
    Scene scene(scenario_of(kinds));
    for (Target target : one_of_each_kind(scene.olt()))
        for (target.uni = 1; target.uni <= max_unis; ++target.uni)
            EXPECT_FALSE(send_each(scene.simulator, catalogue::Class::write, target).empty());
    EXPECT_EQ(ask_everything(scene), kinds.size());
}

Hardware hardware_with(std::string_view chipset, uint32_t ge_ports = 1, uint32_t fe_ports = 0, uint32_t pots_ports = 0,
                       bool battery = false)
{
    DeviceType type = device_types()[0];
    type.chipset = chipset;
    type.ge_ports = ge_ports;
    type.fe_ports = fe_ports;
    type.pots_ports = pots_ports;
    type.battery = battery;
    return hardware_of(type);
}

TEST(Kinds, HaveAChipThatFollowsFromItsName)
{
    std::set<std::pair<uint32_t, std::array<uint8_t, 3>>> chips;
    for (const std::string_view chipset : {"", "A", "AA", "ST-1", "ST-2", "SX-4400", "ABCDEFGH"}) {
        const Hardware chip = hardware_with(chipset), same = hardware_with(chipset, 0, 4, 2, true);
        EXPECT_EQ(chip.chip_date, same.chip_date) << chipset;
        EXPECT_EQ(chip.chip_revision, same.chip_revision) << chipset;
        EXPECT_GE(chip.chip_revision, 1u) << chipset;
        const auto [year, month, day] = chip.chip_date;
        EXPECT_TRUE(year >= 0x16 && year <= 0x22 && month >= 1 && month <= 0x12 && day >= 1 && day <= 0x28) << chipset;
        chips.insert({chip.chip_revision, chip.chip_date});
    }
    EXPECT_GT(chips.size(), 5u) << "the chips are alike";
}

TEST(Kinds, HaveATypeAndMemoryThatFollowFromTheirPorts)
{
    EXPECT_EQ(hardware_with("A", 1).onu_type, OnuType::sfu);
    EXPECT_EQ(hardware_with("A", 4, 0, 0, true).onu_type, OnuType::sbu);
    EXPECT_EQ(hardware_with("A", 1, 3, 2, true).onu_type, OnuType::hgu);
    EXPECT_EQ(hardware_with("A", 0, 1).memory, 8u * 1024);
    EXPECT_EQ(hardware_with("A", 0, 1).flash, 2u * 1024);
    EXPECT_EQ(hardware_with("A", 1, 3, 2).memory, 120u * 1024);
}

TEST(Kinds, TellTheirChipsVendorAndNumber)
{
    const auto name = [](std::string_view chipset) {
        const ChipName chip = chip_name(chipset);
        return std::pair(std::string(chip.vendor), chip.number);
    };
    EXPECT_EQ(name("SX-1001"), std::pair(std::string("SX"), uint16_t{1001}));
    EXPECT_EQ(name("AB12"), std::pair(std::string("AB"), uint16_t{12}));
    EXPECT_EQ(name("A-65535"), std::pair(std::string("A"), uint16_t{65535}));
    EXPECT_EQ(name("A-65536"), std::pair(std::string("A"), uint16_t{0}));
    EXPECT_EQ(name("A-"), std::pair(std::string("A"), uint16_t{0}));
    EXPECT_EQ(name("12"), std::pair(std::string(), uint16_t{12}));
    EXPECT_EQ(name(""), std::pair(std::string(), uint16_t{0}));
}

} // namespace
} // namespace ponsim
