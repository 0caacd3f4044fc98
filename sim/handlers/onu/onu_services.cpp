// These commands concern the management address, FEC, time and LLIDs of ONUs, and the log output about OAM.
#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/alarm/alarms.h"
#include "model/base/block.h"
#include "model/onu/service_settings.h"
#include "model/port/sla.h"

namespace ponsim
{
namespace
{

OnuBlock no_management(const Olt &, const RemoteOnu &, uint32_t)
{
    return OnuBlock(management_size);
}

constexpr BlockSetting management{BSP_CMD_ONU_MGMT_GET, false, management_size, no_management,
                                  check_block<is_good_management>};

// The numbers of the ability are those of CTC, as those of the mode are.
enum FecAbility : uint32_t { fec_supported = 2, fec_not_supported = 3 };

OnuBlock word_block(uint32_t word)
{
    return OnuBlock(to_block(word));
}

OnuBlock first_fec(const Olt &, const RemoteOnu &onu, uint32_t)
{
    return word_block(onu.device.type->fec ? fec_disabled : fec_unknown);
}

uint32_t check_fec(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    if (!onu.device.type->fec) return PON_ERR_NOT_ABLE;
    return is_good_fec(block) ? BSP_OK : PON_ERR_BAD_RECORD;
}

constexpr BlockSetting fec{BSP_CMD_ONU_FEC_GET, false, fec_size, first_fec, check_fec};

Outcome fec_ability(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    return answer_with(request, word_block(found.onu.device.type->fec ? fec_supported : fec_not_supported));
}

OnuBlock first_time(const Olt &, const RemoteOnu &, uint32_t)
{
    constexpr uint32_t first_interval = 3600; // s
    OnuBlock block(time_size);
    block.put(layout::onu_time::interval, first_interval);
    return block;
}

constexpr BlockSetting time_config{BSP_CMD_ONU_TIME_GET, false, time_size, first_time, check_block<is_good_time>};

constexpr uint32_t sla_size = 88;
constexpr uint32_t sla_unit = 64; // kbit/s
constexpr uint32_t sla_cycle = 1000;
constexpr uint16_t longest_packet = 1518;

uint16_t in_units(uint32_t bandwidth)
{
    return static_cast<uint16_t>((bandwidth + sla_unit - 1) / sla_unit);
}

Outcome get_sla(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_sla;
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const std::optional<Sla> &stored = found.onu.binding->sla;
    const Sla sla = stored.value_or(default_sla);
    OnuBlock block(sla_size);
    block.put(at::operation, stored.has_value());
    block.put(at::services, 1);
    block.put(at::cycle, sla_cycle);
    block.put(at::queue[0], sla.priority);
    block.put(at::weight[0], sla.weight);
    block.put(at::packet_size[0], sla.fixed == 0 ? 0 : longest_packet);
    block.put(at::fixed[0], in_units(sla.fixed));
    block.put(at::guaranteed[0], in_units(sla.assured));
    block.put(at::best_effort[0], in_units(sla.maximum));
    return answer_with(request, block);
}

Outcome set_llids(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const OnuBlock llids = word_block(request.get(layout::onu_multi_llid::llids));
    if (!is_good_llids(llids)) return {PON_ERR_BAD_RECORD};
    return to_outcome(send_setting(olt, found.onu, found.onu.key(BSP_CMD_ONU_MULTI_LLID_SET), llids, word_block(1)));
}

Outcome set_print(const Olt &olt, const Request &request)
{
    constexpr std::string_view levels[] = {"nothing", "errors", "errors and messages"};
    const auto level = request.get(layout::oam_print::level);
    if (level >= std::size(levels)) return {PON_ERR_BAD_RECORD};
    if (level == from_block<uint32_t>(olt.block(BSP_MSG_ONU_OAM, BSP_CMD_OAM_PRINT, 0), 0)) return {BSP_OK};
    Outcome outcome{BSP_OK};
    outcome.change.add(block_at({BSP_MSG_ONU_OAM, BSP_CMD_OAM_PRINT, 0, 0},
                                level == 0 ? std::nullopt : std::optional(to_block(level))));
    outcome.change.log.push_back("OAM: " + std::string(levels[level]) + " printed from now on");
    return outcome;
}

// Returns whether an ONU as a whole can have the alarm.
bool is_of_onus(Alarm alarm)
{
    constexpr Alarm others[] = {Alarm::bias_high,       Alarm::power_low, Alarm::rogue,       Alarm::port_los,
                                Alarm::transmitter_off, Alarm::uni_loop,  Alarm::uplink_down, Alarm::wrong_port,
                                Alarm::same_loid,       Alarm::same_mac};
    return is_alarm(static_cast<uint32_t>(alarm)) && std::ranges::find(others, alarm) == std::end(others);
}

Outcome test_alarm(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const Alarm alarm{request.get(layout::onu_alarm_test::alarm)};
    if (!is_of_onus(alarm)) return {PON_ERR_BAD_RECORD};
    Outcome outcome{BSP_OK};
    raise(olt, alarm_key(*found.onu.port, found.onu.binding->mac, alarm), {AlarmCause::test}, outcome.change);
    return outcome;
}

constexpr auto handlers =
    family(Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_MGMT_GET, get<management>},
           Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_MGMT_SET, set<management>}, rows_of<fec>(BSP_MSG_ONU_CFG),
           Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_FEC_ABILITY_GET, fec_ability}, rows_of<time_config>(BSP_MSG_ONU_INFO),
           Handler{BSP_MSG_ONU_INFO, BSP_CMD_ONU_SLA_GET, get_sla, catalogue::Call::get},
           Handler{BSP_MSG_ONU_INFO, BSP_CMD_ONU_MULTI_LLID_SET, set_llids},
           Handler{BSP_MSG_ONU_INFO, BSP_CMD_ONU_ALARM_TEST, test_alarm, catalogue::Call::set},
           Handler{BSP_MSG_ONU_OAM, BSP_CMD_OAM_PRINT, set_print, catalogue::Call::set});

} // namespace

const BlockSetting &management_setting()
{
    return management;
}

const BlockSetting &fec_setting()
{
    return fec;
}

std::span<const Handler> onu_services_handlers()
{
    return handlers;
}

} // namespace ponsim
