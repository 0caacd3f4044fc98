// What commands do to the OLT's optical modules, and what happens to these as model time goes by.
#pragma once

#include <cstdint>
#include <span>

#include "model/olt/olt.h"
#include "model/olt/plan.h"
#include "model/olt/process.h"

namespace ponsim
{

// Writes to a module's memory at address A2h; see write_diagnostic_memory(). The ONUs of a PON port whose laser goes
// off go offline with it; when it goes on again, they register.
Plan write_module(const Olt &olt, uint32_t cage, uint32_t offset, std::span<const uint8_t> bytes);

// LAO mode: whether the laser stays on although TX disable is set.
Plan set_always_on(const Olt &olt, uint32_t pon_port, bool always_on);

// LOL mode: below which received power, in 0.01 dBm, light counts as lost. Without one it is the low alarm threshold of
// the module.
Plan set_loss_level(const Olt &olt, uint32_t pon_port, std::optional<int32_t> level);

// When the samples of a power measurement are taken. One is always taken.
struct Sampling {
    uint32_t samples;
    uint32_t interval; // ms between them
    uint32_t delay;    // ms before the first
};

// Starts to measure the power received from an ONU that is on the fibre. A port measures one ONU at a time.
Plan start_measurement(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Sampling &sampling);
// Ends it without a result; that of the one before stays.
Plan cancel_measurement(const Olt &olt, uint32_t pon_port);

// Makes a laser older.
Plan age_laser(const Olt &olt, uint32_t cage, uint32_t hours);

// The ONU on the fibre, bound to the id, whose power can be measured. `arrival` is null unless the status is BSP_OK.
struct Measurable {
    uint32_t status;
    const Arrival *arrival;
};
Measurable find_measurable(const Olt &olt, uint32_t pon_port, uint32_t onu_id);

// Measurements that end, and alarms that come as lasers age.
extern const Process measurement_process;
extern const Process ageing_process;

} // namespace ponsim
