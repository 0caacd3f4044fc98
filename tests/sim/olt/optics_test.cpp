// These tests check that everything that shows an optical module's values shows the same ones, whatever its age. They
// also check its modes and measurements.
#include <cmath>

#include "optics.h"
#include "rows.h"

namespace ponsim
{
namespace
{

struct Readings {
    double temperature; // degC
    double voltage;     // V
    double bias;        // mA
    double launched;    // dBm
    double received;    // dBm

    bool operator==(const Readings &) const = default;
};

void expect_near(const Readings &one, const Readings &other, const Readings &within, const char *who)
{
    EXPECT_NEAR(one.temperature, other.temperature, within.temperature) << who;
    EXPECT_NEAR(one.voltage, other.voltage, within.voltage) << who;
    EXPECT_NEAR(one.bias, other.bias, within.bias) << who;
    EXPECT_NEAR(one.launched, other.launched, within.launched) << who;
    EXPECT_NEAR(one.received, other.received, within.received) << who;
}

// Returns five numbers of an answer, with the scales of the layouts.
Readings readings(const PlatAnswer &answer, layout::At<int32_t> temperature_at, layout::At<uint32_t> voltage_at,
                  layout::At<uint32_t> bias_at, layout::At<int32_t> launched_at, layout::At<int32_t> received_at)
{
    return {answer.get(temperature_at) * 0.01, answer.get(voltage_at) * 0.0001, answer.get(bias_at) * 0.001,
            answer.get(launched_at) * 0.01, answer.get(received_at) * 0.01};
}

Readings told_by_diagnostics(ServiceFixture &fixture)
{
    namespace at = layout::optics_diagnostics;
    return readings(diagnostics(fixture, 1), at::temperature, at::voltage, at::bias, at::launch_power,
                    at::received_power);
}

Readings told_by_rssi(ServiceFixture &fixture, uint32_t onu_id)
{
    namespace at = layout::optics_rssi;
    return readings(rssi(fixture, 1, onu_id), at::temperature, at::voltage, at::bias, at::launch_power,
                    at::received_power);
}

Readings told_by_block(ServiceFixture &fixture)
{
    namespace at = layout::sfp_info;
    return readings(sfp_info(fixture, 1), at::temperature, at::voltage, at::bias, at::launch_power, at::received_power);
}

Readings told_by_table(ServiceFixture &fixture)
{
    const PlatAnswer answer(fixture, BSP_MSG_PLAT, {BSP_CMD_VIEW_SFP_INFO, 1});
    const auto rows = parse(answer.reply.result.value());
    const auto value = [&](rapidjson::SizeType row) { return rows[row]["value"].GetDouble(); };
    return {value(0), value(1), value(2), value(3), value(4)};
}

// Reads the bytes as SFF-8472 describes.
Readings told_by_i2c(ServiceFixture &fixture)
{
    const std::vector<uint8_t> bytes = memory(fixture, 1, 0xa2, 96, 10);
    const auto word = [&](size_t index) { return static_cast<uint16_t>(bytes[2 * index] << 8 | bytes[2 * index + 1]); };
    const auto dbm = [&](size_t index) { return 10 * std::log10(word(index) * 0.0001); };
    return {static_cast<int16_t>(word(0)) / 256.0, word(1) * 0.0001, word(2) * 0.002, dbm(3), dbm(4)};
}

TEST(Optics, AllThatTellOfAModuleTellTheSame)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    Readings before{};
    for (const char *line : {"age 1 0", "age 1 0", "age 1 20000", "age 1 30000"}) {
        pass(fixture, 5 * hours + 1234);
        control_line(fixture, line);
        ASSERT_EQ(trigger(fixture, 1, 5), BSP_OK);
        pass(fixture, 0);
        const Readings now = told_by_diagnostics(fixture);
        EXPECT_NE(now, before) << "nothing changed";
        before = now;
        // The bytes of the memory have more digits than the blocks.
        const Readings half_a_digit{0.0051, 0.00001, 0.00001, 0.0051, 0.0051};
        expect_near(told_by_i2c(fixture), now, half_a_digit, "the I2C bytes");
        const Readings same{1e-9, 1e-9, 1e-9, 1e-9, 1e-9};
        expect_near(told_by_rssi(fixture, 5), now, same, "the RSSI reading");
        expect_near(told_by_block(fixture), now, same, "the SFP block");
        expect_near(told_by_table(fixture), now, same, "the SFP table");
    }
}

TEST(Optics, AgeingCostsBiasAndLight)
{
    ServiceFixture fixture;
    const Readings young = told_by_diagnostics(fixture);
    control_line(fixture, "age 1 50000");
    const Readings old = told_by_diagnostics(fixture);
    EXPECT_NEAR(old.bias - young.bias, 20, 0.01) << "2 uA in 5 hours";
    EXPECT_LT(old.launched, young.launched - 1);
    EXPECT_EQ(old.temperature, young.temperature);
    EXPECT_EQ(diagnostics(fixture, 1).get(layout::optics_diagnostics::age), 50000u);
    EXPECT_EQ(diagnostics(fixture, 2).get(layout::optics_diagnostics::age), 0u);
}

TEST(Optics, TheRoomIsWarmestAtNoon)
{
    ServiceFixture fixture;
    const auto at_hour = [&](ModelTime hour) {
        fixture.simulator.advance(hour * hours);
        return told_by_diagnostics(fixture);
    };
    const Readings midnight = at_hour(0), noon = at_hour(12), evening = at_hour(18), next_noon = at_hour(36);
    EXPECT_NEAR(noon.temperature - midnight.temperature, 8, 0.011);
    EXPECT_LT(evening.temperature, noon.temperature);
    EXPECT_EQ(next_noon.temperature, noon.temperature);
    EXPECT_NEAR(noon.bias - midnight.bias, 2.0, 0.01);
    EXPECT_GT(midnight.voltage, noon.voltage);
}

TEST(Optics, ModulesDifferAndFollowFromTheSeed)
{
    ServiceFixture fixture, same, other({.seed = 2, .ports = {}, .arrivals = {}, .silent = {}});
    const auto block = [](ServiceFixture &of, uint32_t cage) {
        return sfp_info(of, cage).reply.answer->substr(124, 464);
    };
    EXPECT_EQ(block(fixture, 1), block(same, 1));
    EXPECT_NE(block(fixture, 1).substr(8), block(fixture, 2).substr(8));
    EXPECT_NE(block(fixture, 1), block(other, 1));
}

TEST(Optics, ReceivedPowerIsLaunchPowerLessTheLoss)
{
    ServiceFixture fixture(lively());
    namespace at = layout::optics_rssi;
    for (uint32_t index = 0; index < 8; ++index) {
        bind_arrival(fixture, index, index);
        const PlatAnswer answer = rssi(fixture, 1, index);
        const double launched = answer.get(at::onu_launch_power) * 0.01;
        const double loss = answer.get(at::loss) * 0.01;
        const double received = answer.get(at::received_power) * 0.01;
        const double one_unit = 10 * std::log10(1 + 0.1 / (1000 * std::pow(10, received / 10))); // 0.1 uW, in dB
        EXPECT_NEAR(received, launched - loss, one_unit / 2 + 0.02);
        const double distance = answer.get(at::distance);
        EXPECT_EQ(distance, fixture.port(1).arrivals[index].distance);
        EXPECT_NEAR(loss, 24.1 + 0.35 * distance / 1000, 0.011) << "splitter and connectors, and fibre";
    }
}

TEST(Optics, RssiSaysWhyThereIsNone)
{
    ServiceFixture fixture({.seed = {}, .ports = {}, .arrivals = {}, .silent = 100});
    EXPECT_EQ(rssi(fixture, 1, 5).status(), PON_ERR_NOT_BOUND);
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(5)));
    EXPECT_EQ(rssi(fixture, 1, 5).status(), PON_ERR_OFFLINE);
    EXPECT_EQ(rssi(fixture, 1, 128).status(), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(rssi(fixture, 17, 5).status(), PON_ERR_NO_PORT) << "an uplink has no ONUs";
    EXPECT_EQ(rssi(fixture, 1, 5, 2).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(rssi(fixture, 1, 5, 1).status(), PON_ERR_NO_MEASUREMENT);
}

TEST(Optics, UplinkModulesStandBehindThoseOfThePorts)
{
    ServiceFixture fixture;
    namespace at = layout::sfp_info;
    EXPECT_EQ(sfp_info(fixture, 16).get(at::pon_port), 16u);
    EXPECT_EQ(sfp_info(fixture, uplink_cage).get(at::pon_port), 0u);
    EXPECT_EQ(sfp_info(fixture, uplink_cage).get(at::wavelength), 1310u);
    EXPECT_GT(sfp_info(fixture, uplink_cage).get(at::received_power), -2000);
    EXPECT_EQ(sfp_info(fixture, 20).status(), BSP_OK);
    EXPECT_EQ(sfp_info(fixture, 21).status(), PON_ERR_NO_CAGE);
    EXPECT_EQ(sfp_info(fixture, 0).status(), PON_ERR_NO_CAGE);
    EXPECT_EQ(diagnostics(fixture, uplink_cage).status(), PON_ERR_NO_PORT);
}

TEST(Optics, AYoungModuleIsWithinItsThresholdsAllDay)
{
    ServiceFixture fixture;
    for (ModelTime hour : {0, 6, 12}) {
        fixture.simulator.advance(hour * hours);
        for (uint32_t cage = 1; cage <= 20; ++cage) {
            EXPECT_EQ(sfp_info(fixture, cage).get(layout::sfp_info::alarms), 0) << cage;
            EXPECT_EQ(sfp_info(fixture, cage).get(layout::sfp_info::warnings), 0) << cage;
        }
    }
}

TEST(Measurement, IsTakenOverModelTimeAndStays)
{
    ServiceFixture fixture(lively());
    namespace at = layout::optics_rssi;
    bind_arrival(fixture, 5);
    ASSERT_EQ(trigger(fixture, 1, 5, 11, 60000, 1000), BSP_OK);
    pass(fixture, 600 * ms_per_second);
    EXPECT_EQ(rssi(fixture, 1, 5, 1).status(), PON_ERR_NO_MEASUREMENT);
    EXPECT_EQ(diagnostics(fixture, 1).get(layout::optics_diagnostics::measuring), 1);
    EXPECT_EQ(trigger(fixture, 1, 5), PON_ERR_MEASURING);
    pass(fixture, 1000);
    const PlatAnswer result = rssi(fixture, 1, 5, 1);
    EXPECT_EQ(result.get(at::samples), 11u);
    EXPECT_EQ(result.get(at::time), 601 * ms_per_second);
    pass(fixture, 11 * hours);
    const auto power = result.get(at::received_power);
    EXPECT_EQ(diagnostics(fixture, 1).get(layout::optics_diagnostics::received_power), power);
    EXPECT_EQ(diagnostics(fixture, 1).get(layout::optics_diagnostics::measured_onu), 5);
    EXPECT_EQ(rssi(fixture, 1, 5, 1).get(at::received_power), power);
    EXPECT_NE(rssi(fixture, 1, 5, 0).get(at::received_power), power) << "by now the ONU has got warm";
}

TEST(Measurement, CoversWhatTheRssiReadingTellsMeanwhile)
{
    ServiceFixture fixture(lively());
    namespace at = layout::optics_rssi;
    // The nearest ONU is taken because its power has the most digits.
    const auto &arrivals = fixture.port(1).arrivals;
    const auto nearest = std::ranges::min_element(arrivals, {}, &Arrival::distance) - arrivals.begin();
    bind_arrival(fixture, 5, static_cast<size_t>(nearest));
    ASSERT_EQ(trigger(fixture, 1, 5, 100, 60000), BSP_OK);
    std::vector<int32_t> readings;
    for (int sample = 0; sample < 100; ++sample) {
        if (sample > 0) pass(fixture, 60000);
        readings.push_back(rssi(fixture, 1, 5).get(at::received_power));
    }
    const auto [least, greatest] = std::ranges::minmax(readings);
    EXPECT_LT(least, greatest);
    const PlatAnswer result = rssi(fixture, 1, 5, 1);
    EXPECT_EQ(result.get(at::least), least);
    EXPECT_EQ(result.get(at::greatest), greatest);
    double sum = 0;
    for (int32_t reading : readings)
        sum += reading;
    EXPECT_NEAR(result.get(at::received_power), sum / 100, 4) << "the average, to 0.1 uW";
}

TEST(Measurement, FindsNoLightOfAnOnuThatIsGoneByThen)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    ASSERT_EQ(trigger(fixture, 1, 5, 1, 0, 1000), BSP_OK);
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5));
    pass(fixture, 1000);
    namespace at = layout::optics_diagnostics;
    EXPECT_EQ(diagnostics(fixture, 1).get(at::received_power), -4000);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::rx_los), 1);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::measured_onu), 0xffff);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::alarms), 1u << 6) << "received power is low";
}

TEST(Measurement, CanBeCancelled)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    const PlatRecord cancel(BSP_CMD_OPM_CANCEL, 1);
    ASSERT_EQ(trigger(fixture, 1, 5, 1, 0, 1000), BSP_OK);
    EXPECT_EQ(PlatAnswer(fixture, BSP_MSG_PLAT, cancel).status(), BSP_OK);
    EXPECT_EQ(PlatAnswer(fixture, BSP_MSG_PLAT, cancel).status(), BSP_OK) << "there is none";
    pass(fixture, 1000);
    EXPECT_EQ(rssi(fixture, 1, 5, 1).status(), PON_ERR_NO_MEASUREMENT);
    EXPECT_EQ(trigger(fixture, 1, 5), BSP_OK);
}

TEST(Measurement, HasLimits)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    EXPECT_EQ(trigger(fixture, 1, 5, 101), PON_ERR_BAD_RECORD);
    EXPECT_EQ(trigger(fixture, 1, 5, 2, 60001), PON_ERR_BAD_RECORD);
    EXPECT_EQ(trigger(fixture, 1, 5, 1, 0, 3600001), PON_ERR_BAD_RECORD);
    EXPECT_EQ(trigger(fixture, 1, 6), PON_ERR_NOT_BOUND);
    EXPECT_EQ(trigger(fixture, 1, 5, 100, 60000, 3600000), BSP_OK);
}

TEST(LolMode, MovesTheLevelBelowWhichLightIsLost)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    trigger(fixture, 1, 5);
    pass(fixture, 0);
    namespace at = layout::optics_diagnostics;
    const auto power = diagnostics(fixture, 1).get(at::received_power);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::rx_los), 0);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::lol_level), -3301) << "the low alarm threshold";
    EXPECT_EQ(set_lol(fixture, 1, 1, power + 50), BSP_OK);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::rx_los), 1);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::lol_mode), 1);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::lol_level), power + 50);
    EXPECT_EQ(memory(fixture, 1, 0xa2, 110, 1)[0] & 2, 2) << "the state of RX_LOS";
    EXPECT_EQ(rssi(fixture, 1, 5).get(layout::optics_rssi::light), 0);
    EXPECT_EQ(set_lol(fixture, 1, 0), BSP_OK);
    EXPECT_EQ(diagnostics(fixture, 1).get(at::rx_los), 0);
    EXPECT_EQ(set_lol(fixture, 1, 2), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_lol(fixture, 1, 1, 1), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_lol(fixture, 1, 1, -4001), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set_lol(fixture, 17, 0), PON_ERR_NO_PORT);
}

TEST(OpticalStatus, IsShownBesideWhatTheModuleSays)
{
    ServiceFixture fixture;
    namespace at = layout::pon_phy;
    const auto send_setting = [&](uint8_t valid, uint8_t laser, uint8_t los) {
        return PlatAnswer(fixture, BSP_MSG_PLAT,
                          PlatRecord(BSP_CMD_OPTICS_STATUS_SET, 1)
                              .put(layout::optical_status::valid, valid)
                              .put(layout::optical_status::laser, laser)
                              .put(layout::optical_status::rx_los, los))
            .status();
    };
    using Flags = std::array<uint8_t, 4>;
    const auto flags = [&](layout::At<uint8_t> first) {
        return PlatAnswer(fixture, BSP_MSG_DEBUG, {BSP_CMD_DEBUG_PON_PHY_GET, 1}).get(layout::At<Flags>{first.offset});
    };
    EXPECT_EQ(flags(at::set), (Flags{}));
    EXPECT_EQ(send_setting(1, 0, 1), BSP_OK);
    EXPECT_EQ(flags(at::set), (Flags{1, 0, 0, 1}));
    EXPECT_EQ(flags(at::laser), (Flags{1, 0, 0, 0}));
    EXPECT_EQ(send_setting(0, 1, 1), BSP_OK);
    EXPECT_EQ(flags(at::set), (Flags{}));
    EXPECT_EQ(send_setting(1, 2, 0), PON_ERR_BAD_RECORD);
}

} // namespace
} // namespace ponsim
