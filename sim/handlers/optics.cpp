// These commands concern the OLT's optical modules: what they measure, their memory, and their modes.
#include "model/port/optics.h"

#include <algorithm>
#include <cstddef>

#include "generated/service_words.h"
#include "handlers/chip.h"
#include "handlers/record.h"
#include "model/olt/light.h"
#include "model/plant/fibre.h"
#include "model/plant/module_memory.h"
#include "views/optics.h"

namespace ponsim
{
namespace
{

constexpr uint32_t identity_address = 0xa0;
constexpr uint32_t diagnostic_address = 0xa2;
constexpr uint16_t line_rate = 1250; // MBd
constexpr size_t status_size = 32;

int32_t formatted(Quantity quantity, int32_t reading)
{
    return format_of(quantity).convert(reading);
}

int32_t threshold(const Module &module, Quantity quantity, int32_t Thresholds::*which)
{
    return formatted(quantity, module.type().thresholds[quantity].*which);
}

// Returns the module of the PON port that the record names. Returns null when there is no such port.
const Module *port_module(const Olt &olt, const bsp_plat_msg &record)
{
    return olt.port(record.plat_port) ? olt.module(record.plat_port) : nullptr;
}

uint16_t measured_onu(const Olt &olt, const Module &module)
{
    constexpr uint16_t none = 0xffff;
    if (!module.record().result) return none;
    return static_cast<uint16_t>(olt.id_at(module.cage(), module.record().result->mac).value_or(none));
}

Outcome diagnostics(const Olt &olt, const Request &request)
{
    namespace at = layout::optics_diagnostics;
    const auto record = request.read<bsp_plat_msg>();
    const Module *module = port_module(olt, record);
    if (!module) return {PON_ERR_NO_PORT};
    const Readings readings = module->readings(olt.now());
    Answer answer(head_of(record));
    answer.put(at::temperature, formatted(temperature, readings[temperature]));
    answer.put(at::voltage, formatted(voltage, readings[voltage]));
    answer.put(at::bias, formatted(bias, readings[bias]));
    answer.put(at::launch_power, formatted(launch_power, readings[launch_power]));
    answer.put(at::received_power, formatted(received_power, readings[received_power]));
    answer.put(at::alarms, module->alarms(olt.now()));
    answer.put(at::warnings, module->warnings(olt.now()));
    answer.put(at::laser, module->laser_on());
    answer.put(at::tx_fault, module->fault(olt.now()));
    answer.put(at::rx_los, module->loss_of_light(olt.now()));
    answer.put(at::measuring, module->record().measurement.has_value());
    answer.put(at::lao_mode, module->record().always_on);
    answer.put(at::lol_mode, module->record().loss_level.has_value());
    answer.put(at::measured_onu, measured_onu(olt, *module));
    answer.put(at::age, module->laser_hours(olt.now()));
    answer.put(at::bias_high_warning, threshold(*module, bias, &Thresholds::high_warning));
    answer.put(at::bias_high_alarm, threshold(*module, bias, &Thresholds::high_alarm));
    answer.put(at::launch_low_warning, threshold(*module, launch_power, &Thresholds::low_warning));
    answer.put(at::launch_low_alarm, threshold(*module, launch_power, &Thresholds::low_alarm));
    answer.put(at::lol_level, module->loss_threshold());
    return answer.outcome();
}

// An Rssi is a reading that was taken, in 0.1 uW.
struct Rssi {
    ModelTime time;
    uint32_t samples;
    int32_t average;
    int32_t least;
    int32_t greatest;
};

Outcome rssi_answer(const Olt &olt, const bsp_plat_msg &record, const Arrival *arrival, const Rssi &rssi)
{
    namespace at = layout::optics_rssi;
    const Module &module = *olt.module(record.plat_port);
    const Readings readings = module.readings(olt.now());
    const PonPort &port = *olt.port(record.plat_port);
    const Mac &mac = port.bindings[record.plat_arg4]->mac;
    Answer answer(head_of(record));
    answer.put(at::mac, mac);
    answer.put(at::onu_id, record.plat_arg4);
    answer.put(at::light, rssi.average >= module.loss_level());
    answer.put(at::received_power, formatted(received_power, rssi.average));
    answer.put(at::onu_launch_power,
               arrival ? laser_of(olt, port, mac).power(olt.now() / ms_per_second) : formatted(launch_power, 0));
    answer.put(at::loss, arrival ? path_loss(port, *arrival, Direction::up) : 0);
    answer.put(at::distance, arrival ? arrival->distance : 0);
    answer.put(at::samples, rssi.samples);
    answer.put(at::least, formatted(received_power, rssi.least));
    answer.put(at::greatest, formatted(received_power, rssi.greatest));
    answer.put(at::time, rssi.time);
    answer.put(at::temperature, formatted(temperature, readings[temperature]));
    answer.put(at::voltage, formatted(voltage, readings[voltage]));
    answer.put(at::bias, formatted(bias, readings[bias]));
    answer.put(at::launch_power, formatted(launch_power, readings[launch_power]));
    answer.put(at::state, standing(rssi.average, module.type().thresholds[received_power]));
    return answer.outcome();
}

enum RssiSelector : uint32_t { received_now = 0, last_measurement = 1 };

Outcome rssi(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_plat_msg>();
    if (record.plat_arg120 > last_measurement) return {PON_ERR_BAD_RECORD};
    const Measurable onu = find_measurable(olt, record.plat_port, record.plat_arg4);
    if (record.plat_arg120 == received_now) {
        if (onu.status != BSP_OK) return {onu.status};
        const int32_t power = received_from(olt, *olt.port(record.plat_port), *onu.arrival, olt.now());
        return rssi_answer(olt, record, onu.arrival, {olt.now(), 1, power, power, power});
    }
    if (onu.status != BSP_OK && onu.status != PON_ERR_OFFLINE) return {onu.status};
    const auto &result = olt.module(record.plat_port)->record().result;
    if (!result || result->mac != olt.port(record.plat_port)->bindings[record.plat_arg4]->mac)
        return {PON_ERR_NO_MEASUREMENT};
    return rssi_answer(olt, record, onu.arrival,
                       {result->at, result->samples, static_cast<int32_t>(result->average),
                        static_cast<int32_t>(result->least), static_cast<int32_t>(result->greatest)});
}

Outcome sfp_info(const Olt &olt, const Request &request)
{
    namespace at = layout::sfp_info;
    const auto record = request.read<bsp_plat_msg>();
    const Module *module = olt.module(record.plat_port);
    if (!module) return {PON_ERR_NO_CAGE};
    const ModelTime now = olt.now();
    const ModuleType &type = module->type();
    const ModuleMemory identity = identity_memory(*module);
    const ModuleMemory diagnostic = diagnostic_memory(*module, now);
    Answer answer(head_of(record));
    answer.put(at::cage, module->cage());
    answer.put(at::pon_port, module->of_pon_port() ? module->cage() : 0);
    answer.put(at::vendor, type.vendor);
    answer.put(at::part, type.part);
    answer.put(at::revision, type.revision);
    answer.put(at::serial, module->serial());
    answer.put(at::date, module->date());
    answer.put(at::oui, std::span(identity).subspan(37, 3));
    answer.put(at::connector, type.connector);
    answer.put(at::wavelength, type.wavelength);
    answer.put(at::reach, type.reach);
    answer.put(at::rate, line_rate);
    answer.put(at::age, module->laser_hours(now));
    answer.put(at::laser, module->laser_on());
    answer.put(at::tx_fault, module->fault(now));
    answer.put(at::rx_los, module->loss_of_light(now));
    answer.put(at::measuring, module->record().measurement.has_value());
    answer.put(at::alarms, module->alarms(now));
    answer.put(at::warnings, module->warnings(now));

    const Readings readings = module->readings(now);
    const auto put = [&](Quantity quantity, auto value, auto high_alarm, auto low_alarm, auto high_warning,
                         auto low_warning, layout::At<uint32_t> state) {
        const Thresholds &thresholds = type.thresholds[quantity];
        const bool measured = quantity != received_power || module->receives();
        answer.put(value, formatted(quantity, readings[quantity]));
        answer.put(high_alarm, formatted(quantity, thresholds.high_alarm));
        answer.put(low_alarm, formatted(quantity, thresholds.low_alarm));
        answer.put(high_warning, formatted(quantity, thresholds.high_warning));
        answer.put(low_warning, formatted(quantity, thresholds.low_warning));
        answer.put(state, measured ? standing(readings[quantity], thresholds) : Standing::normal);
    };
    put(temperature, at::temperature, at::temperature_high_alarm, at::temperature_low_alarm,
        at::temperature_high_warning, at::temperature_low_warning, at::temperature_state);
    put(voltage, at::voltage, at::voltage_high_alarm, at::voltage_low_alarm, at::voltage_high_warning,
        at::voltage_low_warning, at::voltage_state);
    put(bias, at::bias, at::bias_high_alarm, at::bias_low_alarm, at::bias_high_warning, at::bias_low_warning,
        at::bias_state);
    put(launch_power, at::launch_power, at::launch_power_high_alarm, at::launch_power_low_alarm,
        at::launch_power_high_warning, at::launch_power_low_warning, at::launch_power_state);
    put(received_power, at::received_power, at::received_power_high_alarm, at::received_power_low_alarm,
        at::received_power_high_warning, at::received_power_low_warning, at::received_power_state);
    answer.put(at::identity_memory, std::span(identity).first(96));
    answer.put(at::diagnostic_memory, std::span(diagnostic).first(120));
    answer.put(at::lao_mode, module->record().always_on);
    answer.put(at::lol_mode, module->record().loss_level.has_value());
    answer.put(at::lol_level, module->loss_threshold());
    return answer.outcome();
}

Outcome sfp_table(const Olt &olt, const Request &request)
{
    const Module *module = olt.module(request.read<bsp_plat_msg>().plat_port);
    if (!module) return {PON_ERR_NO_CAGE};
    return {BSP_OK, {}, module_table(*module, olt.now())};
}

// An I2cRange says where on the bus the requested bytes are.
struct I2cRange {
    uint32_t address;
    uint32_t offset;
    uint32_t length;
    uint32_t result;
    std::array<uint8_t, 128> data;
};
static_assert(layout::i2c_write::address.offset + sizeof(I2cRange) == layout::i2c_write::data.end());

uint32_t check(const Olt &olt, uint32_t cage, const I2cRange &range)
{
    constexpr uint32_t end = std::tuple_size_v<ModuleMemory>;
    if (!olt.module(cage)) return PON_ERR_NO_CAGE;
    if (range.address != identity_address && range.address != diagnostic_address) return PON_ERR_NO_DEVICE;
    const bool good = range.length >= 1 && range.length <= range.data.size() && range.offset < end &&
                      range.length <= end - range.offset;
    return good ? BSP_OK : PON_ERR_BAD_RECORD;
}

Outcome i2c_read(const Olt &olt, const Request &request)
{
    namespace at = layout::i2c_bytes;
    const auto record = request.read<bsp_plat_msg>();
    const auto range = request.read<I2cRange>(layout::i2c_read::address.offset);
    Answer answer(head_of(record));
    answer.put(at::address, range.address);
    answer.put(at::offset, range.offset);
    answer.put(at::length, range.length);
    Outcome outcome{check(olt, record.plat_port, range)};
    if (outcome.status == BSP_OK) {
        const Module &module = *olt.module(record.plat_port);
        const ModuleMemory memory =
            range.address == identity_address ? identity_memory(module) : diagnostic_memory(module, olt.now());
        answer.put(at::result, range.length);
        answer.put(at::data, std::span(memory).subspan(range.offset, range.length));
    }
    outcome.answer = answer.outcome().answer;
    return outcome;
}

Outcome i2c_write(const Olt &olt, const Request &request)
{
    const uint32_t cage = request.read<bsp_plat_msg>().plat_port;
    const auto range = request.read<I2cRange>(layout::i2c_write::address.offset);
    if (const uint32_t status = check(olt, cage, range)) return {status};
    if (range.address == identity_address) return {PON_ERR_READ_ONLY};
    return to_outcome(write_module(olt, cage, range.offset, std::span(range.data).first(range.length)));
}

Outcome opm_trigger(const Olt &olt, const Request &request)
{
    namespace at = layout::opm_trigger;
    const auto record = request.read<bsp_plat_msg>();
    const Sampling sampling{request.get(at::samples), request.get(at::interval), request.get(at::delay)};
    return to_outcome(start_measurement(olt, record.plat_port, record.plat_arg4, sampling));
}

Outcome opm_cancel(const Olt &olt, const Request &request)
{
    return to_outcome(cancel_measurement(olt, request.read<bsp_plat_msg>().plat_port));
}

bool is_zero(std::span<const uint8_t> bytes)
{
    return std::ranges::all_of(bytes, [](uint8_t byte) { return byte == 0; });
}

Outcome lao_mode(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_plat_msg>();
    const auto reserved = request.get(layout::lao_mode::reserved);
    if (record.plat_arg112 > 1 || !is_zero(reserved)) return {PON_ERR_BAD_RECORD};
    return to_outcome(set_always_on(olt, record.plat_port, record.plat_arg112 == 1));
}

Outcome lol_mode(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_plat_msg>();
    const auto level = request.get(layout::lol_mode::level);
    const auto reserved = request.get(layout::lol_mode::reserved);
    const bool own_level = record.plat_arg112 == 1;
    if (record.plat_arg4 != 0 || record.plat_arg112 > 1 || !is_zero(reserved) || (!own_level && level != 0))
        return {PON_ERR_BAD_RECORD};
    return to_outcome(set_loss_level(olt, record.plat_port, own_level ? std::optional(level) : std::nullopt));
}

// The MPCP setting has the same code. It has an argument other than 0.
Outcome optical_status(const Olt &olt, const Request &request)
{
    namespace at = layout::optical_status;
    const auto record = request.read<bsp_plat_msg>();
    if (record.plat_arg108 != 0) return mpcp_set(olt, request);
    if (!olt.port(record.plat_port)) return {PON_ERR_NO_PORT};
    const auto flags =
        std::array{request.get(at::valid), request.get(at::laser), request.get(at::tx_fault), request.get(at::rx_los)};
    if (std::ranges::any_of(flags, [](uint8_t flag) { return flag > 1; })) return {PON_ERR_BAD_RECORD};
    const auto block = request.read<std::array<char, status_size>>(at::valid.offset);
    const bool valid = flags[0] == 1;
    return {BSP_OK, change_of(block_at({BSP_MSG_PLAT, BSP_CMD_OPTICS_STATUS_SET, record.plat_port, 0},
                                       valid ? std::optional(std::string(block.begin(), block.end())) : std::nullopt))};
}

Outcome pon_laser(const Olt &olt, const Request &request)
{
    enum State : uint32_t { off, on, forced_on };
    const auto record = request.read<bsp_plat_msg>();
    const Module *module = port_module(olt, record);
    if (!module) return {PON_ERR_NO_PORT};
    Answer answer(head_of(record));
    const State when_on = module->record().tx_disabled ? forced_on : on;
    answer.put(layout::pon_laser::state, module->laser_on() ? when_on : off);
    return answer.outcome();
}

Outcome pon_phy(const Olt &olt, const Request &request)
{
    namespace at = layout::pon_phy;
    const auto record = request.read<bsp_plat_msg>();
    const Module *module = port_module(olt, record);
    if (!module) return {PON_ERR_NO_PORT};
    Answer answer(head_of(record));
    answer.put(at::laser, module->laser_on());
    answer.put(at::tx_fault, module->fault(olt.now()));
    answer.put(at::rx_los, module->loss_of_light(olt.now()));
    answer.put(at::lao_mode, module->record().always_on);
    constexpr std::array flags{at::set, at::set_laser, at::set_tx_fault, at::set_rx_los};
    if (const std::string *status = olt.block(BSP_MSG_PLAT, BSP_CMD_OPTICS_STATUS_SET, record.plat_port))
        for (size_t index = 0; index < flags.size(); ++index)
            answer.put(flags.at(index), static_cast<uint8_t>(status->at(index)));
    answer.put(at::rate, line_rate);
    answer.put(at::wavelength, module->type().wavelength);
    return answer.outcome();
}

constexpr Handler handlers[] = {
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_PON_PHY_GET, pon_phy},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_PON_LASER_GET, pon_laser},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_I2C_READ, i2c_read},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_I2C_WRITE, i2c_write},
    {BSP_MSG_PLAT, BSP_CMD_OPTICS_STATUS_SET, optical_status},
    {BSP_MSG_PLAT, BSP_CMD_OPM_TRIGGER, opm_trigger},
    {BSP_MSG_PLAT, BSP_CMD_OPM_CANCEL, opm_cancel},
    {BSP_MSG_PLAT, BSP_CMD_LAO_MODE_SET, lao_mode},
    {BSP_MSG_PLAT, BSP_CMD_LOL_MODE_SET, lol_mode},
    {BSP_MSG_PLAT, BSP_CMD_OPTICS_DIAG_GET, diagnostics},
    {BSP_MSG_PLAT, BSP_CMD_OPTICS_RSSI_GET, rssi},
    {BSP_MSG_PLAT, BSP_CMD_SFP_INFO_GET, sfp_info},
    {BSP_MSG_PLAT, BSP_CMD_VIEW_SFP_INFO, sfp_table},
};

} // namespace

std::span<const Handler> optics_handlers()
{
    return handlers;
}

} // namespace ponsim
