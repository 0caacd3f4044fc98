// These tests check the management address, FEC, time, SLA and LLIDs of ONUs, the log output about OAM, and alarm
// tests.
#include "model/olt/remote.h"
#include "model/port/sla.h"
#include "rows.h"
#include "support.h"

namespace ponsim
{
namespace
{

using catalogue::Call;
using Bytes = std::vector<uint8_t>;

constexpr uint32_t data_offset = offsetof(bsp_onu_msg, onu_data);

// At port 1, ONU 1 is online and can correct errors, and ONU 2 is online and cannot. The ONU that is bound to 3 has not
// arrived.
struct Onus : ServiceFixture {
    explicit Onus(const std::string &file = {})
        : ServiceFixture({.seed = 1, .ports = 1, .arrivals = 32, .silent = 0}, file)
    {
        for (const Arrival &arrival : port(1).arrivals)
            bind(device_of(1, arrival.mac).type->fec ? 1 : 2, arrival.mac);
        bind(3, stranger(3));
    }
    void bind(uint32_t onu_id, const Mac &mac)
    {
        if (!port(1).bindings[onu_id]) send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, mac));
    }

    Reply call(Call call, uint32_t channel, bsp_onu_msg record)
    {
        Message message = message_of(channel, record);
        message.call = call;
        return simulator.handle(message);
    }
    uint32_t set(uint32_t channel, uint32_t command, uint32_t onu_id, const Bytes &data)
    {
        bsp_onu_msg record = onu_record_of(command, 1, onu_id);
        std::ranges::copy(data, record.onu_data);
        return call(Call::set, channel, record).status;
    }
    uint32_t set_arg(uint32_t channel, uint32_t command, uint32_t onu_id, uint32_t value)
    {
        bsp_onu_msg record = onu_record_of(command, 1, onu_id);
        record.onu_arg24 = value;
        return call(Call::set, channel, record).status;
    }
    uint32_t status(uint32_t channel, uint32_t command, uint32_t onu_id)
    {
        return call(Call::get, channel, onu_record_of(command, 1, onu_id)).status;
    }
    Bytes get(uint32_t channel, uint32_t command, uint32_t onu_id, size_t size)
    {
        const Reply reply = call(Call::get, channel, onu_record_of(command, 1, onu_id));
        EXPECT_EQ(reply.status, BSP_OK);
        const std::string answer = reply.answer.value();
        return {answer.begin() + data_offset, answer.begin() + data_offset + static_cast<ptrdiff_t>(size)};
    }
    void wait(ModelTime duration = oam_delay) { simulator.advance(simulator.olt().now() + duration); }
};

const Bytes some_management{10, 0, 0, 5, 255, 255, 255, 0, 10, 0, 0, 1, 100, 0, 3, 1, 46};

uint32_t set_management(Onus &onus, const Bytes &block)
{
    return onus.set(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MGMT_SET, 1, block);
}

Bytes management(Onus &onus)
{
    return onus.get(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MGMT_GET, 1, 17);
}

// Sends management settings that differ in one byte from correct ones.
uint32_t set_management_with(size_t index, uint8_t value)
{
    Onus onus;
    Bytes block = some_management;
    block[index] = value;
    return set_management(onus, block);
}

TEST(OnuManagement, IsOffAtFirst)
{
    Onus onus;
    EXPECT_EQ(management(onus), Bytes(17));
}

TEST(OnuManagement, IsWhatTheOnuWasToldOnceItHasIt)
{
    Onus onus;
    EXPECT_EQ(set_management(onus, some_management), BSP_OK);
    onus.wait(oam_delay - 1);
    EXPECT_EQ(management(onus), Bytes(17));
    onus.wait(1);
    EXPECT_EQ(management(onus), some_management);
}

TEST(OnuManagement, SurvivesReopening)
{
    const Folder folder;
    {
        Onus onus(folder.file("state"));
        ASSERT_EQ(set_management(onus, some_management), BSP_OK);
        onus.wait();
        onus.simulator.keep_time();
    }
    Onus onus(folder.file("state"));
    EXPECT_EQ(management(onus), some_management);
}

TEST(OnuManagement, CanBeSwitchedOffWithEverything0Only)
{
    Onus onus;
    set_management(onus, some_management);
    EXPECT_EQ(set_management_with(15, 0), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_management(onus, Bytes(17)), BSP_OK);
    onus.wait();
    EXPECT_EQ(management(onus), Bytes(17));
}

TEST(OnuManagement, TheMaskIsContiguousAndLeavesRoomForHosts)
{
    EXPECT_EQ(set_management_with(6, 253), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_management_with(7, 254), PON_ERR_BAD_RECORD); // 31 bits
    EXPECT_EQ(set_management_with(4, 0), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_management_with(7, 248), BSP_OK); // 10.0.0.0 to 10.0.0.7
}

TEST(OnuManagement, TheAddressIsNeitherTheFirstNorTheLastOfItsNetwork)
{
    EXPECT_EQ(set_management_with(3, 0), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_management_with(3, 255), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_management_with(3, 254), BSP_OK);
}

TEST(OnuManagement, TheGatewayIsAnotherHostOfTheNetworkOrNone)
{
    EXPECT_EQ(set_management_with(10, 1), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_management_with(11, 5), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_management_with(11, 255), PON_ERR_BAD_RECORD);
    Onus onus;
    Bytes block = some_management;
    std::fill(block.begin() + 8, block.begin() + 12, uint8_t{0});
    EXPECT_EQ(set_management(onus, block), BSP_OK);
}

TEST(OnuManagement, VlanPriorityModeAndDscpHaveTheirRanges)
{
    for (const auto &[index, value] : {std::pair<size_t, uint8_t>{13, 0x10}, {14, 8}, {15, 2}, {16, 64}})
        EXPECT_EQ(set_management_with(index, value), PON_ERR_BAD_RECORD) << index;
    EXPECT_EQ(set_management_with(13, 0x0f), BSP_OK); // VLAN 3940
}

uint32_t set_fec(Onus &onus, uint32_t onu_id, uint8_t mode)
{
    return onus.set(BSP_MSG_ONU_CFG, BSP_CMD_ONU_FEC_SET, onu_id, {mode, 0, 0, 0});
}

Bytes fec(Onus &onus, uint32_t onu_id)
{
    return onus.get(BSP_MSG_ONU_CFG, BSP_CMD_ONU_FEC_GET, onu_id, 4);
}

TEST(OnuFec, IsDisabledUntilItIsEnabled)
{
    Onus onus;
    EXPECT_EQ(fec(onus, 1), (Bytes{3, 0, 0, 0}));
    EXPECT_EQ(set_fec(onus, 1, 2), BSP_OK);
    EXPECT_EQ(fec(onus, 1), (Bytes{3, 0, 0, 0}));
    onus.wait();
    EXPECT_EQ(fec(onus, 1), (Bytes{2, 0, 0, 0}));
}

TEST(OnuFec, IsUnknownOfAnOnuThatCannotCorrectErrors)
{
    Onus onus;
    EXPECT_EQ(fec(onus, 2), (Bytes{1, 0, 0, 0}));
    EXPECT_EQ(set_fec(onus, 2, 2), PON_ERR_NOT_ABLE);
    EXPECT_EQ(onus.get(BSP_MSG_ONU_CFG, BSP_CMD_ONU_FEC_ABILITY_GET, 1, 4), (Bytes{2, 0, 0, 0}));
    EXPECT_EQ(onus.get(BSP_MSG_ONU_CFG, BSP_CMD_ONU_FEC_ABILITY_GET, 2, 4), (Bytes{3, 0, 0, 0}));
}

TEST(OnuFec, IsSetToEnabledOrDisabledOnly)
{
    Onus onus;
    for (uint8_t mode : {0, 1, 4})
        EXPECT_EQ(set_fec(onus, 1, mode), PON_ERR_BAD_RECORD);
}

const Bytes some_time{10, 1, 0, 1, 10, 1, 0, 2, 60, 0, 0, 0, 0xc4, 0xff, 1, 1}; // every 60 s, 60 min west

uint32_t set_time_with(size_t index, uint8_t value)
{
    Onus onus;
    Bytes block = some_time;
    block[index] = value;
    return onus.set(BSP_MSG_ONU_INFO, BSP_CMD_ONU_TIME_SET, 1, block);
}

TEST(OnuTime, IsThatOfTheOltUntilItIsSet)
{
    Onus onus;
    EXPECT_EQ(onus.get(BSP_MSG_ONU_INFO, BSP_CMD_ONU_TIME_GET, 1, 16),
              (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0x0e, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(onus.set(BSP_MSG_ONU_INFO, BSP_CMD_ONU_TIME_SET, 1, some_time), BSP_OK);
    onus.wait();
    EXPECT_EQ(onus.get(BSP_MSG_ONU_INFO, BSP_CMD_ONU_TIME_GET, 1, 16), some_time);
}

TEST(OnuTime, IntervalZoneModeAndSummerHaveTheirRanges)
{
    EXPECT_EQ(set_time_with(8, 15), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_time_with(8, 16), BSP_OK);
    EXPECT_EQ(set_time_with(10, 2), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_time_with(13, 0xfc), PON_ERR_BAD_RECORD); // 828 min west
    EXPECT_EQ(set_time_with(13, 0x03), PON_ERR_BAD_RECORD); // 964 min east
    EXPECT_EQ(set_time_with(14, 2), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_time_with(15, 2), PON_ERR_BAD_RECORD);
}

TEST(OnuTime, SntpNeedsAServer)
{
    Onus onus;
    Bytes block = some_time;
    std::fill(block.begin(), block.begin() + 4, uint8_t{0});
    EXPECT_EQ(onus.set(BSP_MSG_ONU_INFO, BSP_CMD_ONU_TIME_SET, 1, block), PON_ERR_BAD_RECORD);
    block[14] = 0;
    EXPECT_EQ(onus.set(BSP_MSG_ONU_INFO, BSP_CMD_ONU_TIME_SET, 1, block), BSP_OK);
}

TEST(OnuSla, IsTheDefaultAsOneService)
{
    Onus onus;
    Bytes wanted(88);
    const Bytes head{0, 0, 0, 1, 0xe8, 0x03, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0x09, 0x3d}; // 15625 times 64 kbit/s
    std::ranges::copy(head, wanted.begin());
    EXPECT_EQ(onus.get(BSP_MSG_ONU_INFO, BSP_CMD_ONU_SLA_GET, 1, 88), wanted);
}

TEST(OnuSla, IsThatWhichTheOltHasStored)
{
    Onus onus;
    Plan plan = set_sla(onus.simulator.olt(), 1, 1, Sla{640, 1281, 64000, 7, 100});
    ASSERT_EQ(plan.status, BSP_OK);
    onus.simulator.change(std::move(plan.change));
    Bytes wanted(88);
    const Bytes head{1, 0, 0, 1, 0xe8, 0x03, 0, 0, 7, 100, 0xee, 0x05, 10, 0, 21, 0, 0xe8, 0x03};
    std::ranges::copy(head, wanted.begin());
    EXPECT_EQ(onus.get(BSP_MSG_ONU_INFO, BSP_CMD_ONU_SLA_GET, 1, 88), wanted);
}

TEST(OnuSla, IsNotSetAtTheOnu)
{
    Onus onus;
    EXPECT_EQ(onus.set(BSP_MSG_ONU_INFO, BSP_CMD_ONU_SLA_GET, 1, Bytes(88)), PON_ERR_UNKNOWN_COMMAND);
}

uint32_t llids(const Onus &onus, Side side)
{
    const RemoteOnu onu = find_onu(onus.simulator.olt(), 1, 1).onu;
    return setting_of(onus.simulator.olt(), onu.key(BSP_CMD_ONU_MULTI_LLID_SET), side, OnuBlock(4))
        .get(layout::At<uint32_t>{data_offset});
}

TEST(OnuLlids, AreToldToTheOnu)
{
    Onus onus;
    EXPECT_EQ(onus.set_arg(BSP_MSG_ONU_INFO, BSP_CMD_ONU_MULTI_LLID_SET, 1, 8), BSP_OK);
    EXPECT_EQ(llids(onus, Side::local), 8u);
    EXPECT_EQ(llids(onus, Side::remote), 1u);
    onus.wait();
    EXPECT_EQ(llids(onus, Side::remote), 8u);
}

TEST(OnuLlids, AreOneToEight)
{
    Onus onus;
    for (uint32_t count : {0u, 9u, 0x100u})
        EXPECT_EQ(onus.set_arg(BSP_MSG_ONU_INFO, BSP_CMD_ONU_MULTI_LLID_SET, 1, count), PON_ERR_BAD_RECORD);
    EXPECT_EQ(onus.set_arg(BSP_MSG_ONU_INFO, BSP_CMD_ONU_MULTI_LLID_SET, 1, 1), BSP_OK);
}

TEST(OnuServices, AnOnuThatIsOfflineOrNotBoundIsAStatus)
{
    Onus onus;
    for (const auto &[onu_id, status] :
         {std::pair{3u, PON_ERR_OFFLINE}, {4u, PON_ERR_NOT_BOUND}, {128u, PON_ERR_BAD_ONU_ID}}) {
        for (uint32_t command : {BSP_CMD_ONU_MGMT_GET, BSP_CMD_ONU_FEC_GET, BSP_CMD_ONU_FEC_ABILITY_GET})
            EXPECT_EQ(onus.status(BSP_MSG_ONU_CFG, command, onu_id), status) << command;
        for (uint32_t command : {BSP_CMD_ONU_TIME_GET, BSP_CMD_ONU_SLA_GET})
            EXPECT_EQ(onus.status(BSP_MSG_ONU_INFO, command, onu_id), status) << command;
        EXPECT_EQ(onus.set(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MGMT_SET, onu_id, some_management), status);
        EXPECT_EQ(onus.set_arg(BSP_MSG_ONU_INFO, BSP_CMD_ONU_MULTI_LLID_SET, onu_id, 2), status);
        EXPECT_EQ(onus.set_arg(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ALARM_TEST, onu_id, 2), status);
    }
}

uint32_t print(ServiceFixture &fixture, uint32_t level)
{
    bsp_onu_msg record = onu_record_of(BSP_CMD_OAM_PRINT);
    record.onu_arg24 = level;
    Message message = message_of(BSP_MSG_ONU_OAM, record);
    message.call = Call::set;
    return fixture.simulator.handle(message).status;
}

TEST(OamPrint, IsLoggedWhenItChanges)
{
    Onus onus;
    EXPECT_EQ(print(onus, 0), BSP_OK);
    EXPECT_TRUE(onus.simulator.take_log().empty());
    EXPECT_EQ(print(onus, 2), BSP_OK);
    EXPECT_EQ(onus.simulator.take_log(), std::vector<std::string>{"OAM: errors and messages printed from now on"});
    EXPECT_EQ(print(onus, 2), BSP_OK);
    EXPECT_TRUE(onus.simulator.take_log().empty());
    EXPECT_EQ(print(onus, 0), BSP_OK);
    EXPECT_EQ(onus.simulator.take_log().size(), 1u);
}

TEST(OamPrint, IsKept)
{
    const Folder folder;
    for (size_t lines : {1, 0}) {
        Onus onus(folder.file("state"));
        EXPECT_EQ(print(onus, 1), BSP_OK);
        EXPECT_EQ(onus.simulator.take_log().size(), lines);
    }
}

TEST(OamPrint, OfAnotherLevelIsRefused)
{
    Onus onus;
    EXPECT_EQ(print(onus, 3), PON_ERR_BAD_RECORD);
    EXPECT_TRUE(onus.simulator.take_log().empty());
}

TEST(AlarmTest, ShowsInTheViewOfAlarms)
{
    Onus onus;
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(onus.set_arg(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ALARM_TEST, 1, 2), BSP_OK);
    const rapidjson::Document rows = parse(onus.view(BSP_CMD_VIEW_ONU_ALARM, 1));
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_EQ(rows[0]["onu_id"].GetUint(), 1u);
    EXPECT_STREQ(rows[0]["name"].GetString(), "dying_gasp");
    EXPECT_EQ(rows[0]["count"].GetUint(), 2u);
}

TEST(AlarmTest, AlarmsOfPortsAndUnknownOnesAreRefused)
{
    Onus onus;
    for (uint32_t alarm : {0u, 5u, 6u, 8u, 9u, 16u})
        EXPECT_EQ(onus.set_arg(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ALARM_TEST, 1, alarm), PON_ERR_BAD_RECORD) << alarm;
    EXPECT_EQ(parse(onus.view(BSP_CMD_VIEW_ONU_ALARM, 1)).Size(), 0u);
}

} // namespace
} // namespace ponsim
