// These tests check the memory of optical modules over I2C, in the layout of SFF-8472, and what can be written to it.
#include <numeric>

#include "optics.h"

namespace ponsim
{
namespace
{

std::string text(const std::vector<uint8_t> &bytes, size_t at, size_t size)
{
    return {bytes.begin() + static_cast<long>(at), bytes.begin() + static_cast<long>(at + size)};
}

uint8_t sum(const std::vector<uint8_t> &bytes, size_t first, size_t end)
{
    return static_cast<uint8_t>(
        std::accumulate(bytes.begin() + static_cast<long>(first), bytes.begin() + static_cast<long>(end), 0u));
}

TEST(ModuleMemory, SaysWhatTheModuleIs)
{
    Desk desk;
    const std::vector<uint8_t> bytes = memory(desk, 1, 0xa0, 0, 96);
    EXPECT_EQ(bytes[0], 3) << "SFP";
    EXPECT_EQ(text(bytes, 20, 16), "SIMA OPTICS     ");
    EXPECT_EQ(text(bytes, 40, 16), "SX-OLT-PX30     ");
    EXPECT_EQ(bytes[60] << 8 | bytes[61], 1490);
    const std::string serial = sfp_info(desk, 1).text(layout::sfp_info::serial);
    EXPECT_EQ(text(bytes, 68, serial.size()), serial);
    EXPECT_NE(memory(desk, 2, 0xa0, 68, 16), memory(desk, 1, 0xa0, 68, 16));
}

TEST(ModuleMemory, ItsChecksumsAreRight)
{
    Desk desk;
    for (uint32_t cage : {1u, 16u, uplink_cage}) {
        const std::vector<uint8_t> identity = memory(desk, cage, 0xa0, 0, 96);
        EXPECT_EQ(identity[63], sum(identity, 0, 63)) << "CC_BASE";
        EXPECT_EQ(identity[95], sum(identity, 64, 95)) << "CC_EXT";
        const std::vector<uint8_t> diagnostic = memory(desk, cage, 0xa2, 0, 96);
        EXPECT_EQ(diagnostic[95], sum(diagnostic, 0, 95)) << "CC_DMI";
    }
}

TEST(ModuleMemory, FlagsComeUpWhereAThresholdIsCrossed)
{
    Desk desk;
    EXPECT_EQ(memory(desk, 1, 0xa2, 112, 6), (std::vector<uint8_t>{0, 0, 0, 0, 0, 0}));
    const auto word = [&](uint32_t at) {
        const std::vector<uint8_t> bytes = memory(desk, 1, 0xa2, at, 2);
        return bytes[0] << 8 | bytes[1];
    };
    bool warned = false, alarmed = false;
    for (int step = 0; step < 26; ++step) {
        control_line(desk, "age 1 5000");
        const auto flags = memory(desk, 1, 0xa2, 112, 6);
        EXPECT_EQ((flags[0] & 0x08) != 0, word(100) > word(16)) << "bias above the high alarm";
        EXPECT_EQ((flags[0] & 0x01) != 0, word(102) < word(26)) << "launch power below the low alarm";
        EXPECT_EQ((flags[4] & 0x08) != 0, word(100) > word(20)) << "bias above the high warning";
        EXPECT_EQ((flags[4] & 0x01) != 0, word(102) < word(30)) << "launch power below the low warning";
        warned |= flags[4] == 0x09;
        alarmed |= flags[0] == 0x09;
    }
    EXPECT_TRUE(warned && alarmed);
}

TEST(ModuleMemory, IsTheSameInTheSfpBlock)
{
    Desk desk;
    pass(desk, 7 * hours);
    const PlatAnswer block = sfp_info(desk, 1);
    const auto identity = block.get<std::array<uint8_t, 96>>(layout::sfp_info::identity_memory);
    const auto diagnostic = block.get<std::array<uint8_t, 120>>(layout::sfp_info::diagnostic_memory);
    EXPECT_TRUE(std::ranges::equal(identity, memory(desk, 1, 0xa0, 0, 96)));
    EXPECT_TRUE(std::ranges::equal(diagnostic, memory(desk, 1, 0xa2, 0, 120)));
}

TEST(I2c, SaysWhatIsWrong)
{
    Desk desk;
    EXPECT_EQ(i2c_read(desk, 1, 0xa4, 0, 1).status(), PON_ERR_NO_DEVICE);
    EXPECT_EQ(i2c_read(desk, 1, 0x1a0, 0, 1).status(), PON_ERR_NO_DEVICE);
    EXPECT_EQ(i2c_read(desk, 21, 0xa0, 0, 1).status(), PON_ERR_NO_CAGE);
    EXPECT_EQ(i2c_read(desk, 1, 0xa0, 0, 0).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(i2c_read(desk, 1, 0xa0, 0, 129).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(i2c_read(desk, 1, 0xa0, 129, 128).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(i2c_read(desk, 1, 0xa0, 0xffffffff, 2).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(i2c_read(desk, 1, 0xa0, 0xffffffff, 2).get(layout::i2c_bytes::result), 0u);
    EXPECT_EQ(i2c_read(desk, 1, 0xa0, 128, 128).status(), BSP_OK);
}

TEST(I2c, AnswersNothingBehindTheBytesThatWereRead)
{
    Desk desk;
    PlatRecord request = PlatRecord(BSP_CMD_DEBUG_I2C_READ, 1)
                             .put(layout::i2c_read::address, 0xa0)
                             .put(layout::i2c_read::offset, 20)
                             .put(layout::i2c_read::length, 4);
    std::fill_n(request.record.plat_data + 16, 128, uint8_t{0xff});
    const PlatAnswer answer(desk, BSP_MSG_DEBUG, request);
    EXPECT_EQ(answer.text(layout::i2c_bytes::data), "SIMA");
    EXPECT_EQ(answer.get(byte_of(layout::i2c_bytes::data, 127)), 0);
}

TEST(I2c, TheUsersBytesAreKept)
{
    const Folder folder;
    {
        Desk desk({}, folder.file("olt.db"));
        EXPECT_EQ(i2c_write(desk, 2, 0xa2, 128, {1, 2, 3}), BSP_OK);
        EXPECT_EQ(i2c_write(desk, 2, 0xa2, 247, {9}), BSP_OK);
    }
    Desk desk({}, folder.file("olt.db"));
    EXPECT_EQ(memory(desk, 2, 0xa2, 127, 5), (std::vector<uint8_t>{0, 1, 2, 3, 0}));
    EXPECT_EQ(memory(desk, 2, 0xa2, 247, 1), (std::vector<uint8_t>{9}));
    EXPECT_EQ(memory(desk, 1, 0xa2, 128, 1), (std::vector<uint8_t>{0}));
}

TEST(I2c, OtherBytesCannotBeWrittenAndNoneIs)
{
    Desk desk;
    EXPECT_EQ(i2c_write(desk, 1, 0xa0, 96, {1}), PON_ERR_READ_ONLY);
    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 0, {1}), PON_ERR_READ_ONLY);
    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 109, {1, 0x40}), PON_ERR_READ_ONLY);
    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 247, {1, 2}), PON_ERR_READ_ONLY);
    EXPECT_EQ(memory(desk, 1, 0xa2, 110, 1), (std::vector<uint8_t>{0}));
    EXPECT_EQ(memory(desk, 1, 0xa2, 247, 1), (std::vector<uint8_t>{0}));
    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 110, {0x3f}), BSP_OK) << "the other bits are states";
    EXPECT_EQ(memory(desk, 1, 0xa2, 110, 1), (std::vector<uint8_t>{0}));
}

uint32_t laser_state(Desk &desk, uint32_t pon_port)
{
    return PlatAnswer(desk, BSP_MSG_DEBUG, {BSP_CMD_DEBUG_PON_LASER_GET, pon_port}).get(layout::pon_laser::state);
}

TEST(TxDisable, TakesTheLaserAndThePortsOnusWithIt)
{
    Desk desk(lively());
    bind_arrival(desk, 5);
    EXPECT_EQ(laser_state(desk, 1), 1u);
    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 110, {0x40}), BSP_OK);
    EXPECT_EQ(laser_state(desk, 1), 0u);
    EXPECT_EQ(diagnostics(desk, 1).get(layout::optics_diagnostics::launch_power), -4000);
    EXPECT_EQ(diagnostics(desk, 1).get(layout::optics_diagnostics::bias), 0u);
    EXPECT_FALSE(desk.port(1).online(*desk.port(1).bindings[5]));
    EXPECT_TRUE(desk.simulator.olt().waiting(desk.port(1)).empty()) << "those that waited are not seen";
    const Mac mac = desk.port(1).bindings[5]->mac;
    EXPECT_EQ(desk.port(1).alarms.at({mac, static_cast<uint32_t>(Alarm::los)}), 1u);
    EXPECT_EQ(rssi(desk, 1, 5).status(), PON_ERR_OFFLINE);
    EXPECT_FALSE(desk.simulator.olt().waiting(desk.port(2)).empty()) << "another port";

    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 110, {0}), BSP_OK);
    desk.settle();
    EXPECT_TRUE(desk.port(1).online(*desk.port(1).bindings[5]));
    EXPECT_FALSE(desk.simulator.olt().waiting(desk.port(1)).empty());
}

TEST(TxDisable, LetsOnusRegisterWhenItEnds)
{
    Desk desk(lively());
    const Arrival &arrival = desk.port(1).arrivals[0];
    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 110, {0x40}), BSP_OK);
    bsp_pon_msg auth = record_of(BSP_CMD_AUTH_SET, 1);
    auth.arg_word12 = 1;
    strcpy(auth.text45, arrival.loid.c_str());
    EXPECT_EQ(desk.send(auth), BSP_OK);
    EXPECT_EQ(desk.simulator.olt().find(arrival.mac), std::nullopt) << "it is not on the fibre";
    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 110, {0}), BSP_OK);
    desk.settle();
    EXPECT_NE(desk.simulator.olt().find(arrival.mac), std::nullopt);
}

TEST(TxDisable, DoesNotReachALaserThatIsAlwaysOn)
{
    Desk desk(lively());
    bind_arrival(desk, 5);
    EXPECT_EQ(i2c_write(desk, 1, 0xa2, 110, {0x40}), BSP_OK);
    EXPECT_EQ(set_lao(desk, 1, 1), BSP_OK);
    EXPECT_EQ(laser_state(desk, 1), 2u);
    EXPECT_EQ(diagnostics(desk, 1).get(layout::optics_diagnostics::lao_mode), 1);
    desk.settle();
    EXPECT_TRUE(desk.port(1).online(*desk.port(1).bindings[5]));
    EXPECT_EQ(set_lao(desk, 1, 0), BSP_OK);
    EXPECT_FALSE(desk.port(1).online(*desk.port(1).bindings[5]));
    EXPECT_EQ(set_lao(desk, 1, 2), PON_ERR_BAD_RECORD);
}

TEST(TxDisable, SurvivesARestartWithAllThatIsKeptOfTheModule)
{
    const Folder folder;
    ModuleRecord kept;
    {
        Desk desk(lively(), folder.file("olt.db"));
        bind_arrival(desk, 5);
        bind_arrival(desk, 6, 1);
        EXPECT_EQ(trigger(desk, 1, 5, 3, 1000), BSP_OK);
        pass(desk, 2000);
        EXPECT_EQ(trigger(desk, 1, 6, 7, 4000, 500), BSP_OK);
        EXPECT_EQ(set_lol(desk, 1, 1, -2500), BSP_OK);
        control_line(desk, "age 1 130000");
        pass(desk, 0);
        EXPECT_EQ(i2c_write(desk, 1, 0xa2, 110, {0x40}), BSP_OK);
        EXPECT_EQ(i2c_write(desk, 1, 0xa2, 200, {7}), BSP_OK);
        EXPECT_EQ(set_lao(desk, 2, 1), BSP_OK);
        kept = desk.simulator.olt().module(1)->record();
    }
    EXPECT_TRUE(kept.measurement && kept.result && kept.raised);
    Desk desk(lively(), folder.file("olt.db"));
    EXPECT_EQ(desk.simulator.olt().module(1)->record(), kept);
    EXPECT_TRUE(desk.simulator.olt().module(2)->record().always_on);
    EXPECT_FALSE(desk.port(1).online(*desk.port(1).bindings[5]));
}

} // namespace
} // namespace ponsim
