#include "model/port/optics.h"

#include <algorithm>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/olt/light.h"
#include "model/plant/module_memory.h"

namespace ponsim
{
namespace
{

constexpr uint32_t max_delay = 3600000; // ms

Plan refuse(uint32_t status)
{
    return {status};
}

const Module *pon_module(const Olt &olt, uint32_t pon_port)
{
    return olt.port(pon_port) ? olt.module(pon_port) : nullptr;
}

// Returns the ONU when its light reaches the port. Returns null when the ONU is not bound there, or does not send.
const Arrival *sending(const Olt &olt, const PonPort &port, const Mac &mac)
{
    const std::optional<uint32_t> onu_id = olt.id_at(port.number, mac);
    if (!onu_id || port.state(*port.bindings[*onu_id]) == OnuState::offline) return nullptr;
    return port.ranged(mac);
}

// When the measurement ends, it is decided for all of its samples at once whether there is light.
ModuleRecord::Result result_of(const Olt &olt, const PonPort &port, const ModuleRecord::Measurement &measurement)
{
    ModuleRecord::Result result{measurement.mac, measurement.end, measurement.samples, 0, 0, 0};
    const Arrival *arrival = sending(olt, port, measurement.mac);
    if (!arrival) return result;
    uint32_t sum = 0;
    for (uint32_t sample = 0; sample < measurement.samples; ++sample) {
        const ModelTime at = measurement.end - ModelTime{sample} * measurement.interval;
        const auto power = static_cast<uint32_t>(received_from(olt, port, *arrival, at));
        sum += power;
        result.least = sample == 0 ? power : std::min(result.least, power);
        result.greatest = std::max(result.greatest, power);
    }
    result.average = (sum + measurement.samples / 2) / measurement.samples;
    return result;
}

// Returns the earliest time that TimeOf gives for a module.
template <class TimeOf>
std::optional<ModelTime> earliest(const Olt &olt, TimeOf time_of)
{
    std::optional<ModelTime> first;
    for (const Module &module : olt.modules()) {
        const std::optional<ModelTime> time = time_of(module);
        if (time && (!first || *time < *first)) first = time;
    }
    return first;
}

std::optional<ModelTime> end_of_measurement(const Module &module)
{
    if (!module.record().measurement) return std::nullopt;
    return module.record().measurement->end;
}

std::optional<ModelTime> next_end(const Olt &olt)
{
    return earliest(olt, end_of_measurement);
}

Change end_measurements(const Olt &olt)
{
    Change change;
    for (const Module &module : olt.modules()) {
        const std::optional<ModelTime> end = end_of_measurement(module);
        if (!end || *end > olt.now()) continue;
        ModuleRecord record = module.record();
        record.result = result_of(olt, *olt.port(module.cage()), *record.measurement);
        record.measurement.reset();
        change.put<ModuleRecord>(module.cage(), record);
    }
    return change;
}

std::optional<ModelTime> next_alarm(const Olt &olt)
{
    return earliest(olt, [](const Module &module) { return module.next_alarm(); });
}

Change notice_alarms(const Olt &olt)
{
    Change change;
    for (const Module &module : olt.modules()) {
        const uint32_t due = module.due_alarms(olt.now());
        if (due == 0) continue;
        ModuleRecord record = module.record();
        record.raised |= due;
        change.put<ModuleRecord>(module.cage(), record);
    }
    return change;
}

} // namespace

const Process measurement_process{next_end, end_measurements};
const Process ageing_process{next_alarm, notice_alarms};

Plan write_module(const Olt &olt, uint32_t cage, uint32_t offset, std::span<const uint8_t> bytes)
{
    const Module *module = olt.module(cage);
    if (!module) return refuse(PON_ERR_NO_CAGE);
    ModuleRecord record = module->record();
    if (!write_diagnostic_memory(record, offset, bytes)) return refuse(PON_ERR_READ_ONLY);
    return {BSP_OK, change_of<ModuleRecord>(module->cage(), record)};
}

Plan set_always_on(const Olt &olt, uint32_t pon_port, bool always_on)
{
    const Module *module = pon_module(olt, pon_port);
    if (!module) return refuse(PON_ERR_NO_PORT);
    ModuleRecord record = module->record();
    record.always_on = always_on;
    return {BSP_OK, change_of<ModuleRecord>(module->cage(), record)};
}

Plan set_loss_level(const Olt &olt, uint32_t pon_port, std::optional<int32_t> level)
{
    const Module *module = pon_module(olt, pon_port);
    if (!module) return refuse(PON_ERR_NO_PORT);
    if (level && !ModuleRecord::loss_levels.contains(*level)) return refuse(PON_ERR_BAD_RECORD);
    ModuleRecord record = module->record();
    record.loss_level = level;
    return {BSP_OK, change_of<ModuleRecord>(module->cage(), record)};
}

Measurable find_measurable(const Olt &olt, uint32_t pon_port, uint32_t onu_id)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT, nullptr};
    if (onu_id >= onus_per_port) return {PON_ERR_BAD_ONU_ID, nullptr};
    if (!port->bindings[onu_id]) return {PON_ERR_NOT_BOUND, nullptr};
    const Arrival *arrival = sending(olt, *port, port->bindings[onu_id]->mac);
    return {arrival ? BSP_OK : PON_ERR_OFFLINE, arrival};
}

Plan start_measurement(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Sampling &sampling)
{
    const Measurable onu = find_measurable(olt, pon_port, onu_id);
    if (onu.status != BSP_OK) return refuse(onu.status);
    using Measurement = ModuleRecord::Measurement;
    const uint32_t samples = std::max(sampling.samples, 1u);
    if (!Measurement::all_samples.contains(samples) || !Measurement::intervals.contains(sampling.interval) ||
        sampling.delay > max_delay)
        return refuse(PON_ERR_BAD_RECORD);
    ModuleRecord record = olt.module(pon_port)->record();
    if (record.measurement) return refuse(PON_ERR_MEASURING);
    const ModelTime end = olt.now() + sampling.delay + ModelTime{samples - 1} * sampling.interval;
    record.measurement = {onu.arrival->mac, end, samples, sampling.interval};
    return {BSP_OK, change_of<ModuleRecord>(pon_port, record)};
}

Plan cancel_measurement(const Olt &olt, uint32_t pon_port)
{
    const Module *module = pon_module(olt, pon_port);
    if (!module) return refuse(PON_ERR_NO_PORT);
    ModuleRecord record = module->record();
    if (!record.measurement) return {BSP_OK};
    record.measurement.reset();
    return {BSP_OK, change_of<ModuleRecord>(pon_port, record)};
}

Plan age_laser(const Olt &olt, uint32_t cage, uint32_t hours)
{
    const Module *module = olt.module(cage);
    if (!module) return refuse(PON_ERR_NO_CAGE);
    ModuleRecord record = module->record();
    record.added_hours = std::min(record.added_hours + hours, max_laser_hours);
    return {BSP_OK, change_of<ModuleRecord>(cage, record)};
}

Plan dim_laser(const Olt &olt, uint32_t pon_port, int32_t loss)
{
    const Module *module = pon_module(olt, pon_port);
    if (!module) return refuse(PON_ERR_NO_PORT);
    ModuleRecord record = module->record();
    record.dimmed = loss;
    // Age does not end, but this does, and then a low launch power is something new.
    if (loss == 0) record.raised &= ~(1u << static_cast<uint32_t>(Alarm::power_low));
    return {BSP_OK, change_of<ModuleRecord>(pon_port, record)};
}

} // namespace ponsim
