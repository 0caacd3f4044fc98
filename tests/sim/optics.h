// The tests of optical modules share these requests.
#pragma once

#include <vector>

#include "control/control.h"
#include "daemon/console.h"
#include "plat.h"

namespace ponsim
{

inline constexpr uint32_t uplink_cage = 17; // the first one, after 16 PON ports
inline constexpr ModelTime hours = 3600 * ms_per_second;

inline PlatAnswer diagnostics(ServiceFixture &fixture, uint32_t pon_port)
{
    return {fixture, BSP_MSG_PLAT, {BSP_CMD_OPTICS_DIAG_GET, pon_port}};
}

inline PlatAnswer rssi(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id, uint32_t selector = 0)
{
    return {fixture, BSP_MSG_PLAT,
            PlatRecord(BSP_CMD_OPTICS_RSSI_GET, pon_port, onu_id)
                .put(word_at(offsetof(bsp_plat_msg, plat_arg120)), selector)};
}

inline PlatAnswer sfp_info(ServiceFixture &fixture, uint32_t cage)
{
    return {fixture, BSP_MSG_PLAT, {BSP_CMD_SFP_INFO_GET, cage}};
}

inline PlatAnswer i2c_read(ServiceFixture &fixture, uint32_t cage, uint32_t address, uint32_t offset, uint32_t length)
{
    return {fixture, BSP_MSG_DEBUG,
            PlatRecord(BSP_CMD_DEBUG_I2C_READ, cage)
                .put(layout::i2c_read::address, address)
                .put(layout::i2c_read::offset, offset)
                .put(layout::i2c_read::length, length)};
}

// Returns bytes of a module's memory.
inline std::vector<uint8_t> memory(ServiceFixture &fixture, uint32_t cage, uint32_t address, uint32_t offset,
                                   uint32_t length)
{
    const PlatAnswer answer = i2c_read(fixture, cage, address, offset, length);
    EXPECT_EQ(answer.status(), BSP_OK);
    EXPECT_EQ(answer.get(layout::i2c_bytes::result), length);
    const auto data = answer.get(layout::i2c_bytes::data);
    return {data.begin(), data.begin() + length};
}

inline uint32_t i2c_write(ServiceFixture &fixture, uint32_t cage, uint32_t address, uint32_t offset,
                          const std::vector<uint8_t> &bytes)
{
    std::array<uint8_t, 128> data{};
    std::copy_n(bytes.begin(), bytes.size(), data.begin());
    return PlatAnswer(fixture, BSP_MSG_DEBUG,
                      PlatRecord(BSP_CMD_DEBUG_I2C_WRITE, cage)
                          .put(layout::i2c_write::address, address)
                          .put(layout::i2c_write::offset, offset)
                          .put(layout::i2c_write::length, bytes.size())
                          .put(layout::i2c_write::data, data))
        .status();
}

// Starts to measure an ONU.
inline uint32_t trigger(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id, uint32_t samples = 1,
                        uint32_t interval = 0, uint32_t delay = 0)
{
    return PlatAnswer(fixture, BSP_MSG_PLAT,
                      PlatRecord(BSP_CMD_OPM_TRIGGER, pon_port, onu_id)
                          .put(layout::opm_trigger::samples, samples)
                          .put(layout::opm_trigger::interval, interval)
                          .put(layout::opm_trigger::delay, delay))
        .status();
}

inline uint32_t set_lao(ServiceFixture &fixture, uint32_t pon_port, uint32_t mode)
{
    return PlatAnswer(
               fixture, BSP_MSG_PLAT,
               PlatRecord(BSP_CMD_LAO_MODE_SET, pon_port).put(word_at(offsetof(bsp_plat_msg, plat_arg112)), mode))
        .status();
}

inline uint32_t set_lol(ServiceFixture &fixture, uint32_t pon_port, uint32_t mode, int32_t level = 0)
{
    return PlatAnswer(fixture, BSP_MSG_PLAT,
                      PlatRecord(BSP_CMD_LOL_MODE_SET, pon_port)
                          .put(word_at(offsetof(bsp_plat_msg, plat_arg112)), mode)
                          .put(layout::lol_mode::level, level))
        .status();
}

// Carries out a line as `ponsim ctl` does.
inline void control_line(ServiceFixture &fixture, const std::string &line)
{
    Clock clock(fixture.simulator.olt().now(), 0);
    control(fixture.simulator, clock, line);
}

inline void pass(ServiceFixture &fixture, ModelTime time)
{
    fixture.simulator.advance(fixture.simulator.olt().now() + time);
}

// Binds an ONU with this id at port 1, and expects it to be online.
inline void bind_arrival(ServiceFixture &fixture, uint32_t onu_id, size_t index = 0)
{
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, fixture.port(1).arrivals.at(index).mac)), BSP_OK);
    EXPECT_TRUE(fixture.port(1).online(*fixture.port(1).bindings[onu_id]));
}

inline WantedSettings lively()
{
    return {.seed = {}, .ports = {}, .arrivals = {}, .silent = 0};
}

} // namespace ponsim
