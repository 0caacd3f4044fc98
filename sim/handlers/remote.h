// Handlers of remote ONUs share this: which ONU a request is about, and settings that are blocks.
#pragma once

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "handlers/record.h"
#include "model/olt/remote.h"

namespace ponsim
{

// Finds the ONU that a request names. The ONU must be online when it has to answer itself, and when it is sent
// something. What the OLT has of the ONU can be asked for in any state.
FoundOnu onu_of(const Olt &olt, const Request &request, bool must_be_online = true);
// As above, and the request must name one of the ONU's UNI ports.
FoundOnu onu_and_uni_of(const Olt &olt, const Request &request, bool must_be_online = true);

// Returns the first bytes of a request's data.
OnuBlock data_of(const Request &request, size_t size);

// Returns the answer to a request with this data.
Outcome answer_with(const Request &request, std::string_view data);
inline Outcome answer_with(const Request &request, const OnuBlock &block)
{
    return answer_with(request, block.bytes());
}

// A BlockSetting is a setting whose block has the same form in requests and answers.
struct BlockSetting {
    uint32_t command; // the command that queries it
    bool of_uni;      // each UNI port has the setting; false: the ONU has it
    uint32_t size;
    // This returns what an ONU has until the setting is changed.
    OnuBlock (*otherwise)(const Olt &olt, const RemoteOnu &onu, uint32_t uni);
    // This returns why the ONU cannot have this setting, or BSP_OK when it can.
    uint32_t (*check)(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);
};

// This is the check of a setting that any ONU can have.
template <bool (*is_good)(const OnuBlock &)>
uint32_t check_block(const RemoteOnu &, uint32_t, const OnuBlock &block)
{
    return is_good(block) ? BSP_OK : PON_ERR_BAD_RECORD;
}

OnuBlock setting_of(const Olt &olt, const RemoteOnu &onu, uint32_t uni, Side side, const BlockSetting &setting);

Outcome get_setting(const Olt &olt, const Request &request, const BlockSetting &setting, Side side = Side::remote);
Outcome set_setting(const Olt &olt, const Request &request, const BlockSetting &setting);
// Sends an ONU the block of a setting, if it is allowed.
Plan send_setting(const Olt &olt, const RemoteOnu &onu, uint32_t number, const OnuBlock &block,
                  const BlockSetting &setting);
// Does the same as set_setting() above for a setting of which an ONU has several, by number.
Outcome set_setting(const Olt &olt, const Request &request, const RemoteOnu &onu, uint32_t number,
                    const BlockSetting &setting);

template <const BlockSetting &setting, Side side = Side::remote>
Outcome get(const Olt &olt, const Request &request)
{
    return get_setting(olt, request, setting, side);
}
template <const BlockSetting &setting>
Outcome set(const Olt &olt, const Request &request)
{
    return set_setting(olt, request, setting);
}

// Returns the handlers of a setting that is queried and set by the same code.
template <const BlockSetting &setting>
constexpr std::array<Handler, 2> rows_of(uint32_t channel)
{
    return {{{channel, setting.command, get<setting>, catalogue::Call::get},
             {channel, setting.command, set<setting>, catalogue::Call::set}}};
}
// As above, together with the handler of the command that asks for what the OLT has of the setting.
template <const BlockSetting &setting>
constexpr std::array<Handler, 3> rows_of(uint32_t channel, uint32_t local)
{
    const auto [query, set] = rows_of<setting>(channel);
    return {{query, set, {channel, local, get<setting, Side::local>}}};
}

// These settings are sent by more than one command. Those of UNI ports are found by the command that queries them.
const BlockSetting &management_setting();
const BlockSetting &fec_setting();
const BlockSetting &multicast_mode_setting();
const BlockSetting &fast_leave_setting();
const BlockSetting &uni_setting(uint32_t command);

} // namespace ponsim
