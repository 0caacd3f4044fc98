// What the tests of bandwidth, P2P forwarding and the forwarding database share: records of the platform channel.
#pragma once

#include <string>

#include "support.h"

namespace ponsim
{

inline constexpr size_t platform_result = 10240; // of the platform channel, in bytes

// A request, and what comes of it. Fields of blocks are put at their offsets.
struct Platform {
    bsp_plat_msg record{};

    explicit Platform(uint32_t command, uint32_t pon_port = 0, uint32_t arg4 = 0)
    {
        record.plat_cmd = command;
        record.plat_port = pon_port;
        record.plat_arg4 = arg4;
    }
    template <class Value>
    Platform &put(uint32_t offset, Value value)
    {
        std::memcpy(reinterpret_cast<char *>(&record) + offset, &value, sizeof value);
        return *this;
    }
    Reply send(Desk &desk, uint32_t channel = BSP_MSG_PLAT) const
    {
        return desk.simulator.handle({channel, &record, sizeof record});
    }
    uint32_t status(Desk &desk) const { return send(desk).status; }
};

// A number of an answer that is a record of the platform channel.
template <class Value = uint32_t>
Value number_at(const Reply &reply, uint32_t offset)
{
    Value value{};
    EXPECT_EQ(reply.answer.value_or("").size(), sizeof(bsp_plat_msg));
    if (reply.answer && reply.answer->size() >= offset + sizeof value)
        std::memcpy(&value, reply.answer->data() + offset, sizeof value);
    return value;
}

inline WantedSettings everyone_online(uint32_t ports = 2, uint32_t arrivals = 4)
{
    return {.seed = 1, .ports = ports, .arrivals = arrivals, .silent = 0};
}

// Binds the n-th ONU that has arrived at the port.
inline void bind_arrived(Desk &desk, uint32_t pon_port, uint32_t onu_id, size_t index)
{
    EXPECT_EQ(desk.send(record_of(BSP_CMD_ONU_BIND, pon_port, onu_id, desk.port(pon_port).arrivals.at(index).mac)),
              BSP_OK);
}

inline void let_pass(Desk &desk, uint32_t seconds)
{
    desk.simulator.advance(desk.simulator.olt().now() + seconds * ms_per_second);
}

} // namespace ponsim
