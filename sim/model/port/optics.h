// This file has what commands do to the OLT's optical modules, and what happens to the modules as model time passes.
#pragma once

#include <cstdint>
#include <span>

#include "model/change/plan.h"
#include "model/lifecycle/process.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Writes to a module's memory at address A2h. See write_diagnostic_memory(). When the laser of a PON port goes off, its
// ONUs lose their light.
Plan write_module(const Olt &olt, uint32_t cage, uint32_t offset, std::span<const uint8_t> bytes);

// Sets the LAO mode: whether the laser stays on although TX disable is set.
Plan set_always_on(const Olt &olt, uint32_t pon_port, bool always_on);

// Sets the LOL mode: the received power, in 0.01 dBm, below which light counts as lost. Without a level the module's
// low alarm threshold is used.
Plan set_loss_level(const Olt &olt, uint32_t pon_port, std::optional<int32_t> level);

// Sampling says when the samples of a power measurement are taken. At least one is taken.
struct Sampling {
    uint32_t samples;
    uint32_t interval; // ms between them
    uint32_t delay;    // ms before the first
};

// Starts to measure the power received from an ONU that is on the fibre. A port measures one ONU at a time.
Plan start_measurement(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Sampling &sampling);
// Ends the measurement without a result. The result of the previous one stays.
Plan cancel_measurement(const Olt &olt, uint32_t pon_port);

// Makes a laser older.
Plan age_laser(const Olt &olt, uint32_t cage, uint32_t hours);

// Makes so much less light leave the module of a PON port than its laser gives, in 0.01 dB, as a laser that fails does.
// 0 ends it.
inline constexpr int32_t most_dimmed = 6000;
Plan dim_laser(const Olt &olt, uint32_t pon_port, int32_t loss);

// This is the ONU on the fibre, bound to the id, whose power can be measured. `arrival` is null unless the status is
// BSP_OK.
struct Measurable {
    uint32_t status;
    const Arrival *arrival;
};
Measurable find_measurable(const Olt &olt, uint32_t pon_port, uint32_t onu_id);

// In these processes measurements end, and alarms are raised as lasers age.
extern const Process measurement_process;
extern const Process ageing_process;

} // namespace ponsim
