// Tests of UNI ports share this: an ONU of a given model is bound and online, is queried, and receives settings.
#pragma once

#include <algorithm>

#include "model/onu/remote.h"
#include "rows.h"
#include "support.h"

namespace ponsim
{

// This model has four FE ports and all abilities that concern VLANs.
inline constexpr std::string_view able = "S040";

// In this fixture ONU 5 of port 1 is online, and the ONU with id 6 is not.
struct UniFixture : ServiceFixture {
    Mac mac{};
    Device device;

    explicit UniFixture(std::string_view model = able, const std::string &file = {})
        : ServiceFixture({.seed = 1, .ports = 1, .arrivals = 64, .silent = 0}, file)
    {
        const auto of_model = [model](const Arrival &arrival) {
            return device_of(1, arrival.mac).type->model == model;
        };
        mac = std::ranges::find_if(port(1).arrivals, of_model)->mac;
        device = device_of(1, mac);
        send(record_of(BSP_CMD_ONU_BIND, 1, 5, mac));
        send(record_of(BSP_CMD_ONU_BIND, 1, 6, stranger(6)));
    }

    Reply ask(uint32_t channel, uint32_t command, uint32_t uni = 0, uint32_t onu_id = 5)
    {
        bsp_onu_msg record = onu_record_of(command, 1, onu_id);
        record.onu_uni_port = static_cast<uint8_t>(uni);
        return simulator.handle(message_of(channel, record));
    }
    uint32_t send_setting(uint32_t channel, uint32_t command, uint32_t uni, const OnuBlock &block, uint32_t onu_id = 5)
    {
        bsp_onu_msg record = onu_record_of(command, 1, onu_id);
        record.onu_uni_port = static_cast<uint8_t>(uni);
        block.bytes().copy(reinterpret_cast<char *>(record.onu_data), block.bytes().size());
        Message message = message_of(channel, record);
        message.call = catalogue::Call::set;
        return simulator.handle(message).status;
    }
    // Returns the first bytes of the data in an ONU's answer.
    OnuBlock block(uint32_t channel, uint32_t command, uint32_t uni, size_t size)
    {
        const Reply reply = ask(channel, command, uni);
        EXPECT_EQ(reply.status, BSP_OK);
        return OnuBlock(reply.answer.value().substr(offsetof(bsp_onu_msg, onu_data), size));
    }
    rapidjson::Document table(uint32_t channel, uint32_t command, uint32_t onu_id = 5)
    {
        return parse(ask(channel, command, 0, onu_id).result.value_or("no result"));
    }
    // Returns the link of a UNI port from the view of its configuration.
    std::string link(uint32_t uni)
    {
        return table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_PORT_CONFIG)[uni - 1]["link"].GetString();
    }
    void pass(ModelTime time) { simulator.advance(simulator.olt().now() + time); }
};

inline OnuBlock word_block(uint32_t value)
{
    OnuBlock block(4);
    block.put(layout::onu_admin_state::on, value);
    return block;
}

} // namespace ponsim
