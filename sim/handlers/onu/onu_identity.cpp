// These commands ask what ONUs are: identity, capabilities, memory and optics, and tables of them.
#include "views/onu_identity.h"

#include <algorithm>

#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/olt/light.h"
#include "model/olt/llid.h"

namespace ponsim
{
namespace
{

constexpr uint32_t data_offset = offsetof(bsp_onu_msg, onu_data);

// Handles a query that the ONU answers itself.
template <OnuBlock (*block)(const Olt &, const RemoteOnu &)>
Outcome told_by_onu(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    return answer_with(request, block(olt, found.onu));
}

OnuBlock identity(const Olt &, const RemoteOnu &onu)
{
    namespace at = layout::onu_sn;
    OnuBlock block(54);
    block.put(at::vendor, onu.device.type->vendor);
    block.put(at::model, onu.device.type->model);
    block.put(at::mac, onu.binding->mac);
    block.put(at::hardware, onu.device.hardware);
    block.put(at::software, onu.device.software);
    block.put(at::extended_model, extended_model(*onu.device.type));
    return block;
}

OnuBlock firmware(const Olt &, const RemoteOnu &onu)
{
    OnuBlock block(128);
    block.put(layout::onu_fw::version, onu.device.software);
    return block;
}

OnuBlock chip_id(const Olt &, const RemoteOnu &onu)
{
    namespace at = layout::onu_chip_id;
    const Hardware hardware = hardware_of(*onu.device.type);
    const ChipName name = chip_name(onu.device.type->chipset);
    OnuBlock block(8);
    block.put(at::vendor, name.vendor);
    block.put(at::model, name.number);
    block.put(at::revision, hardware.chip_revision);
    block.put(at::date, hardware.chip_date);
    return block;
}

// Returns a CTC bitmap. The lowest bit of its last byte is that of the first UNI port.
std::array<uint8_t, 8> bitmap(uint32_t before, uint32_t count)
{
    static_assert(2 * max_unis <= 8);
    return {0, 0, 0, 0, 0, 0, 0, static_cast<uint8_t>(((1u << count) - 1) << before)};
}

OnuBlock capabilities(const Olt &, const RemoteOnu &onu)
{
    enum Service : uint32_t { ge = 1, fe = 2, voip = 4 };
    namespace at = layout::onu_cap;
    const DeviceType &type = *onu.device.type;
    const uint32_t services = (type.ge_ports ? ge : 0u) | (type.fe_ports ? fe : 0u) | (type.pots_ports ? voip : 0u);
    OnuBlock block(26);
    block.put(at::services, services);
    block.put(at::ge_ports, type.ge_ports);
    block.put(at::ge_bitmap, bitmap(0, type.ge_ports));
    block.put(at::fe_ports, type.fe_ports);
    block.put(at::fe_bitmap, bitmap(type.ge_ports, type.fe_ports));
    block.put(at::pots_ports, type.pots_ports);
    block.put(at::us_queues, type.us_queues);
    block.put(at::us_queues_of_port, type.us_queues);
    block.put(at::ds_queues, type.us_queues * onu.device.unis.size());
    block.put(at::ds_queues_of_port, type.us_queues);
    block.put(at::battery, type.battery);
    return block;
}

OnuBlock more_capabilities(const Olt &, const RemoteOnu &onu)
{
    namespace at = layout::onu_cap2;
    const DeviceType &type = *onu.device.type;
    OnuBlock block(64);
    block.put(at::onu_type, hardware_of(type).onu_type);
    block.put(at::multi_llid, 1);
    block.put(at::pon_interfaces, 1);
    uint8_t kinds = 0;
    uint8_t code = 0; // 0 for GE, 1 for FE, 2 for VoIP
    for (const uint32_t number : {type.ge_ports, type.fe_ports, type.pots_ports}) {
        if (number != 0) {
            block.put(at::interface_type[kinds], code);
            block.put(at::interface_number[kinds], number);
            ++kinds;
        }
        ++code;
    }
    block.put(at::interface_types, kinds);
    block.put(at::battery, type.battery);
    return block;
}

OnuBlock memory(const Olt &olt, const RemoteOnu &onu)
{
    namespace at = layout::onu_mem_info;
    const Hardware hardware = hardware_of(*onu.device.type);
    const Usage usage = usage_of(olt, onu);
    OnuBlock block(16);
    block.put(at::memory_total, hardware.memory);
    block.put(at::memory_free, usage.memory_free);
    block.put(at::flash_total, hardware.flash);
    block.put(at::flash_free, usage.flash_free);
    return block;
}

// Writes the texts that two layouts, device information and all about an ONU, have at the same offsets.
void put_identity(OnuBlock &block, const RemoteOnu &onu)
{
    namespace at = layout::onu_about;
    namespace same = layout::onu_device_info;
    static_assert(at::mac == same::mac && at::vendor == same::vendor && at::model == same::model &&
                  at::extended_model == same::extended_model && at::serial == same::serial &&
                  at::hardware == same::hardware && at::software == same::software && at::chipset == same::chipset);
    const DeviceType &type = *onu.device.type;
    block.put(at::mac, onu.binding->mac);
    block.put(at::vendor, type.vendor);
    block.put(at::model, type.model);
    block.put(at::extended_model, extended_model(type));
    block.put(at::serial, serial_number(type.vendor, onu.binding->mac));
    block.put(at::hardware, onu.device.hardware);
    block.put(at::software, onu.device.software);
    block.put(at::chipset, type.chipset);
}

OnuBlock device_info(const Olt &olt, const RemoteOnu &onu)
{
    namespace at = layout::onu_device_info;
    const DeviceType &type = *onu.device.type;
    const Hardware hardware = hardware_of(type);
    OnuBlock block(at::chipset.end() - data_offset);
    put_identity(block, onu);
    block.put(at::onu_type, hardware.onu_type);
    block.put(at::ge_ports, type.ge_ports);
    block.put(at::fe_ports, type.fe_ports);
    block.put(at::pots_ports, type.pots_ports);
    block.put(at::battery, type.battery);
    block.put(at::cpu_load, usage_of(olt, onu).cpu_load);
    block.put(at::llids, llids_of(olt, onu, Side::remote));
    block.put(at::memory_total, hardware.memory);
    block.put(at::flash_total, hardware.flash);
    block.put(at::temperature, format_of(temperature).convert(onu_readings(olt, onu)[temperature]));
    block.put(at::chip_revision, hardware.chip_revision);
    return block;
}

OnuBlock optics(const Olt &olt, const RemoteOnu &onu)
{
    namespace at = layout::onu_optics;
    const Readings readings = onu_readings(olt, onu);
    OnuBlock block(10);
    block.put(at::temperature, readings[temperature]);
    block.put(at::voltage, readings[voltage]);
    block.put(at::bias, readings[bias]);
    block.put(at::launch_power, readings[launch_power]);
    block.put(at::received_power, readings[received_power]);
    return block;
}

// Returns what the OLT has of an ONU, whatever the ONU's state.
Outcome about(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_about;
    const FoundOnu found = onu_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    const RemoteOnu &onu = found.onu;
    const Mac &mac = onu.binding->mac;
    const DeviceType &type = *onu.device.type;
    const Arrival *arrival = onu.state == OnuState::offline ? nullptr : onu.port->ranged(mac);
    const std::vector<OnuUni> unis = unis_of(olt, onu);
    const auto up =
        onu.online() ? std::ranges::count_if(unis, [](const OnuUni &uni) { return uni.link.has_value(); }) : 0;
    OnuBlock block(at::unis_up.end() - data_offset);
    put_identity(block, onu);
    block.put(at::onu_id, onu.onu_id);
    block.put(at::state, onu.state);
    block.put(at::pon_port, onu.port->number);
    block.put(at::llid, to_llid(onu.onu_id));
    block.put(at::llids, llids_of(olt, onu, Side::local));
    block.put(at::distance, arrival ? arrival->distance : 0);
    block.put(at::received_power, centi_dbm(arrival ? received_from(olt, *onu.port, *arrival, olt.now()) : 0));
    block.put(at::reboots, onu.port->record(mac).reboots);
    block.put(at::ge_ports, type.ge_ports);
    block.put(at::fe_ports, type.fe_ports);
    block.put(at::pots_ports, type.pots_ports);
    block.put(at::battery, type.battery);
    block.put(at::unis_enabled, std::ranges::count_if(unis, &OnuUni::enabled));
    block.put(at::unis_up, up);
    return answer_with(request, block);
}

// The answer to this command has its value in the UNI port number, and no data.
Outcome max_port(const Olt &olt, const Request &request)
{
    static_assert(layout::onu_max_port::unis.offset == offsetof(bsp_onu_msg, onu_uni_port));
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    auto record = request.read<bsp_onu_msg>();
    record.onu_uni_port = static_cast<uint8_t>(found.onu.device.unis.size());
    return answer_with({&record, sizeof record}, std::string_view{});
}

Outcome unis(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    return {BSP_OK, {}, onu_unis_table(unis_of(olt, found.onu), found.onu.online())};
}

Outcome serial_numbers(const Olt &olt, const Request &request)
{
    const PonPort *port = olt.port(request.read<bsp_onu_msg>().onu_pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    return {BSP_OK, {}, onu_serial_numbers_table(onus_of(olt, *port))};
}

constexpr Handler handlers[] = {
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP2_GET, told_by_onu<more_capabilities>},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_SN_GET, told_by_onu<identity>},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_FW_GET, told_by_onu<firmware>},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_CHIP_ID_GET, told_by_onu<chip_id>},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_CAP_GET, told_by_onu<capabilities>},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_MEM_INFO_GET, told_by_onu<memory>},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_ABOUT_GET, about},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_DEVICE_INFO_GET, told_by_onu<device_info>},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET, told_by_onu<optics>},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_MAX_PORT_GET, max_port},
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_UNI_SNMP, unis},
    {BSP_MSG_ONU_OAM, BSP_CMD_VIEW_ONU_SN, serial_numbers},
};

} // namespace

std::span<const Handler> onu_identity_handlers()
{
    return handlers;
}

} // namespace ponsim
