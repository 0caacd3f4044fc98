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
    ServiceFixture fixture;
    const std::vector<uint8_t> bytes = memory(fixture, 1, 0xa0, 0, 96);
    EXPECT_EQ(bytes[0], 3) << "SFP";
    EXPECT_EQ(text(bytes, 20, 16), "SIMA OPTICS     ");
    EXPECT_EQ(text(bytes, 40, 16), "SX-OLT-PX30     ");
    EXPECT_EQ(bytes[60] << 8 | bytes[61], 1490);
    const std::string serial = sfp_info(fixture, 1).text(layout::sfp_info::serial);
    EXPECT_EQ(text(bytes, 68, serial.size()), serial);
    EXPECT_NE(memory(fixture, 2, 0xa0, 68, 16), memory(fixture, 1, 0xa0, 68, 16));
}

TEST(ModuleMemory, ItsChecksumsAreRight)
{
    ServiceFixture fixture;
    for (uint32_t cage : {1u, 16u, uplink_cage}) {
        const std::vector<uint8_t> identity = memory(fixture, cage, 0xa0, 0, 96);
        EXPECT_EQ(identity[63], sum(identity, 0, 63)) << "CC_BASE";
        EXPECT_EQ(identity[95], sum(identity, 64, 95)) << "CC_EXT";
        const std::vector<uint8_t> diagnostic = memory(fixture, cage, 0xa2, 0, 96);
        EXPECT_EQ(diagnostic[95], sum(diagnostic, 0, 95)) << "CC_DMI";
    }
}

TEST(ModuleMemory, FlagsComeUpWhereAThresholdIsCrossed)
{
    ServiceFixture fixture;
    EXPECT_EQ(memory(fixture, 1, 0xa2, 112, 6), (std::vector<uint8_t>{0, 0, 0, 0, 0, 0}));
    const auto word = [&](uint32_t at) {
        const std::vector<uint8_t> bytes = memory(fixture, 1, 0xa2, at, 2);
        return bytes[0] << 8 | bytes[1];
    };
    bool warned = false, alarmed = false;
    for (int step = 0; step < 26; ++step) {
        control_line(fixture, "age 1 5000");
        const auto flags = memory(fixture, 1, 0xa2, 112, 6);
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
    ServiceFixture fixture;
    pass(fixture, 7 * hours);
    const PlatAnswer block = sfp_info(fixture, 1);
    const auto identity = block.get<std::array<uint8_t, 96>>(layout::sfp_info::identity_memory);
    const auto diagnostic = block.get<std::array<uint8_t, 120>>(layout::sfp_info::diagnostic_memory);
    EXPECT_TRUE(std::ranges::equal(identity, memory(fixture, 1, 0xa0, 0, 96)));
    EXPECT_TRUE(std::ranges::equal(diagnostic, memory(fixture, 1, 0xa2, 0, 120)));
}

TEST(I2c, SaysWhatIsWrong)
{
    ServiceFixture fixture;
    EXPECT_EQ(i2c_read(fixture, 1, 0xa4, 0, 1).status(), PON_ERR_NO_DEVICE);
    EXPECT_EQ(i2c_read(fixture, 1, 0x1a0, 0, 1).status(), PON_ERR_NO_DEVICE);
    EXPECT_EQ(i2c_read(fixture, 21, 0xa0, 0, 1).status(), PON_ERR_NO_CAGE);
    EXPECT_EQ(i2c_read(fixture, 1, 0xa0, 0, 0).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(i2c_read(fixture, 1, 0xa0, 0, 129).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(i2c_read(fixture, 1, 0xa0, 129, 128).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(i2c_read(fixture, 1, 0xa0, 0xffffffff, 2).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(i2c_read(fixture, 1, 0xa0, 0xffffffff, 2).get(layout::i2c_bytes::result), 0u);
    EXPECT_EQ(i2c_read(fixture, 1, 0xa0, 128, 128).status(), BSP_OK);
}

TEST(I2c, AnswersNothingBehindTheBytesThatWereRead)
{
    ServiceFixture fixture;
    PlatRecord request = PlatRecord(BSP_CMD_DEBUG_I2C_READ, 1)
                             .put(layout::i2c_read::address, 0xa0)
                             .put(layout::i2c_read::offset, 20)
                             .put(layout::i2c_read::length, 4);
    std::fill_n(request.record.plat_data + 16, 128, uint8_t{0xff});
    const PlatAnswer answer(fixture, BSP_MSG_DEBUG, request);
    EXPECT_EQ(answer.text(layout::i2c_bytes::data), "SIMA");
    EXPECT_EQ(answer.get(byte_of(layout::i2c_bytes::data, 127)), 0);
}

TEST(I2c, TheUsersBytesAreKept)
{
    const Folder folder;
    {
        ServiceFixture fixture({}, folder.file("olt.db"));
        EXPECT_EQ(i2c_write(fixture, 2, 0xa2, 128, {1, 2, 3}), BSP_OK);
        EXPECT_EQ(i2c_write(fixture, 2, 0xa2, 247, {9}), BSP_OK);
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(memory(fixture, 2, 0xa2, 127, 5), (std::vector<uint8_t>{0, 1, 2, 3, 0}));
    EXPECT_EQ(memory(fixture, 2, 0xa2, 247, 1), (std::vector<uint8_t>{9}));
    EXPECT_EQ(memory(fixture, 1, 0xa2, 128, 1), (std::vector<uint8_t>{0}));
}

TEST(I2c, OtherBytesCannotBeWrittenAndNoneIs)
{
    ServiceFixture fixture;
    EXPECT_EQ(i2c_write(fixture, 1, 0xa0, 96, {1}), PON_ERR_READ_ONLY);
    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 0, {1}), PON_ERR_READ_ONLY);
    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 109, {1, 0x40}), PON_ERR_READ_ONLY);
    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 247, {1, 2}), PON_ERR_READ_ONLY);
    EXPECT_EQ(memory(fixture, 1, 0xa2, 110, 1), (std::vector<uint8_t>{0}));
    EXPECT_EQ(memory(fixture, 1, 0xa2, 247, 1), (std::vector<uint8_t>{0}));
    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 110, {0x3f}), BSP_OK) << "the other bits are states";
    EXPECT_EQ(memory(fixture, 1, 0xa2, 110, 1), (std::vector<uint8_t>{0}));
}

uint32_t laser_state(ServiceFixture &fixture, uint32_t pon_port)
{
    return PlatAnswer(fixture, BSP_MSG_DEBUG, {BSP_CMD_DEBUG_PON_LASER_GET, pon_port}).get(layout::pon_laser::state);
}

TEST(TxDisable, TakesTheLaserAndThePortsOnusWithIt)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    EXPECT_EQ(laser_state(fixture, 1), 1u);
    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 110, {0x40}), BSP_OK);
    EXPECT_EQ(laser_state(fixture, 1), 0u);
    EXPECT_EQ(diagnostics(fixture, 1).get(layout::optics_diagnostics::launch_power), -4000);
    EXPECT_EQ(diagnostics(fixture, 1).get(layout::optics_diagnostics::bias), 0u);
    pass(fixture, gate_time_out);
    EXPECT_FALSE(fixture.port(1).online(*fixture.port(1).bindings[5]));
    EXPECT_TRUE(fixture.simulator.olt().waiting(fixture.port(1)).empty()) << "those that waited are not seen";
    const Mac mac = fixture.port(1).bindings[5]->mac;
    EXPECT_EQ(fixture.port(1).alarms.at({mac, static_cast<uint32_t>(Alarm::los)}).count, 1u);
    EXPECT_EQ(rssi(fixture, 1, 5).status(), PON_ERR_OFFLINE);
    EXPECT_FALSE(fixture.simulator.olt().waiting(fixture.port(2)).empty()) << "another port";

    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 110, {0}), BSP_OK);
    fixture.settle();
    EXPECT_TRUE(fixture.port(1).online(*fixture.port(1).bindings[5]));
    EXPECT_FALSE(fixture.simulator.olt().waiting(fixture.port(1)).empty());
}

TEST(TxDisable, LetsOnusRegisterWhenItEnds)
{
    ServiceFixture fixture(lively());
    const Arrival &arrival = fixture.port(1).arrivals[0];
    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 110, {0x40}), BSP_OK);
    pass(fixture, gate_time_out);
    bsp_pon_msg auth = record_of(BSP_CMD_AUTH_SET, 1);
    auth.arg_word12 = 1;
    strcpy(auth.text45, arrival.loid.c_str());
    EXPECT_EQ(fixture.send(auth), BSP_OK);
    EXPECT_EQ(fixture.simulator.olt().find(arrival.mac), std::nullopt) << "it is not on the fibre";
    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 110, {0}), BSP_OK);
    fixture.settle();
    EXPECT_NE(fixture.simulator.olt().find(arrival.mac), std::nullopt);
}

TEST(TxDisable, DoesNotReachALaserThatIsAlwaysOn)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 110, {0x40}), BSP_OK);
    EXPECT_EQ(set_lao(fixture, 1, 1), BSP_OK);
    EXPECT_EQ(laser_state(fixture, 1), 2u);
    EXPECT_EQ(diagnostics(fixture, 1).get(layout::optics_diagnostics::lao_mode), 1);
    fixture.settle();
    EXPECT_TRUE(fixture.port(1).online(*fixture.port(1).bindings[5]));
    EXPECT_EQ(set_lao(fixture, 1, 0), BSP_OK);
    pass(fixture, gate_time_out);
    EXPECT_FALSE(fixture.port(1).online(*fixture.port(1).bindings[5]));
    EXPECT_EQ(set_lao(fixture, 1, 2), PON_ERR_BAD_RECORD);
}

TEST(TxDisable, SurvivesARestartWithAllThatIsKeptOfTheModule)
{
    const Folder folder;
    ModuleRecord kept;
    {
        ServiceFixture fixture(lively(), folder.file("olt.db"));
        bind_arrival(fixture, 5);
        bind_arrival(fixture, 6, 1);
        EXPECT_EQ(trigger(fixture, 1, 5, 3, 1000), BSP_OK);
        pass(fixture, 2000);
        EXPECT_EQ(trigger(fixture, 1, 6, 7, 4000, 500), BSP_OK);
        EXPECT_EQ(set_lol(fixture, 1, 1, -2500), BSP_OK);
        control_line(fixture, "age 1 130000");
        pass(fixture, 0);
        EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 110, {0x40}), BSP_OK);
        EXPECT_EQ(i2c_write(fixture, 1, 0xa2, 200, {7}), BSP_OK);
        EXPECT_EQ(set_lao(fixture, 2, 1), BSP_OK);
        kept = fixture.simulator.olt().module(1)->record();
    }
    EXPECT_TRUE(kept.measurement && kept.result && kept.raised);
    ServiceFixture fixture(lively(), folder.file("olt.db"));
    EXPECT_EQ(fixture.simulator.olt().module(1)->record(), kept);
    EXPECT_TRUE(fixture.simulator.olt().module(2)->record().always_on);
    pass(fixture, gate_time_out);
    EXPECT_FALSE(fixture.port(1).online(*fixture.port(1).bindings[5]));
}

} // namespace
} // namespace ponsim
