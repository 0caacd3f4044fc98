// What handlers of remote ONUs share: which ONU a request is about, and settings that are blocks.
#pragma once

#include "handlers/record.h"
#include "model/onu/remote.h"

namespace ponsim
{

// The ONU that a request names. An ONU that is asked something itself must be online, and so must one that is told
// something; what the OLT has of it can be asked whatever its state.
FoundOnu onu_of(const Olt &olt, const Request &request, bool must_be_online = true);
// The same; the request must name one of its UNI ports.
FoundOnu onu_and_uni_of(const Olt &olt, const Request &request, bool must_be_online = true);

// The first bytes of a request's data.
OnuBlock data_of(const Request &request, size_t size);

// The answer to a request with this data.
Outcome answer_with(const Request &request, std::string_view data);
inline Outcome answer_with(const Request &request, const OnuBlock &block)
{
    return answer_with(request, block.bytes());
}

// A setting that is a block of the same form in requests and answers.
struct BlockSetting {
    uint32_t command; // that asks for it
    bool of_uni;      // of each of the UNI ports; else of the ONU
    uint32_t size;
    // What an ONU has until it is told otherwise.
    OnuBlock (*otherwise)(const Olt &olt, const RemoteOnu &onu, uint32_t uni);
    // Why the ONU cannot be told this; BSP_OK when it can.
    uint32_t (*check)(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);
};

OnuBlock setting_of(const Olt &olt, const RemoteOnu &onu, uint32_t uni, Side side, const BlockSetting &setting);

Outcome get_setting(const Olt &olt, const Request &request, const BlockSetting &setting, Side side = Side::remote);
Outcome set_setting(const Olt &olt, const Request &request, const BlockSetting &setting);
// Tells an ONU a block of a setting, unless it cannot be told that.
Plan tell_setting(const Olt &olt, const RemoteOnu &onu, uint32_t number, const OnuBlock &block,
                  const BlockSetting &setting);
// The same as set_setting() for a setting of which an ONU has several, by number.
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

// The handlers of a setting that is asked for and told by one code.
template <const BlockSetting &setting>
constexpr std::array<Handler, 2> rows_of(uint32_t channel)
{
    return {{{channel, setting.command, get<setting>, catalogue::Call::get},
             {channel, setting.command, set<setting>, catalogue::Call::set}}};
}
// The same with that of the command that asks for what the OLT has of it.
template <const BlockSetting &setting>
constexpr std::array<Handler, 3> rows_of(uint32_t channel, uint32_t local)
{
    const auto [asked, told] = rows_of<setting>(channel);
    return {{asked, told, {channel, local, get<setting, Side::local>}}};
}

// Settings that more than one command tells. Those of UNI ports go by the command that asks for them.
const BlockSetting &management_setting();
const BlockSetting &fec_setting();
const BlockSetting &multicast_mode_setting();
const BlockSetting &fast_leave_setting();
const BlockSetting &uni_setting(uint32_t command);

} // namespace ponsim
