// The tests of bandwidth, P2P forwarding and the forwarding database share these exchanges on the platform channel.
#pragma once

#include <string>

#include "plat.h"

namespace ponsim
{

inline constexpr size_t platform_result = 10240; // bytes; the longest result on the platform channel

inline Reply ask(ServiceFixture &fixture, const PlatRecord &request, uint32_t channel = BSP_MSG_PLAT)
{
    return PlatAnswer(fixture, channel, request).reply;
}

inline uint32_t send(ServiceFixture &fixture, const PlatRecord &request)
{
    return ask(fixture, request).status;
}

// Returns a number in an answer.
template <class Field>
Field number_at(const Reply &reply, layout::At<Field> at)
{
    EXPECT_EQ(reply.answer.value_or("").size(), sizeof(bsp_plat_msg));
    return reply.answer ? layout::load(reply.answer->data(), at) : Field{};
}

inline WantedSettings everyone_online(uint32_t ports = 2, uint32_t arrivals = 4)
{
    return {.seed = 1, .ports = ports, .arrivals = arrivals, .silent = 0};
}

// Binds the n-th ONU that has arrived at the port.
inline void bind_arrived(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id, size_t index)
{
    EXPECT_EQ(
        fixture.send(record_of(BSP_CMD_ONU_BIND, pon_port, onu_id, fixture.port(pon_port).arrivals.at(index).mac)),
        BSP_OK);
}

inline void let_pass(ServiceFixture &fixture, uint32_t seconds)
{
    fixture.simulator.advance(fixture.simulator.olt().now() + seconds * ms_per_second);
}

} // namespace ponsim
