// This file writes records of the platform and debug channels, and reads their answers.
#pragma once

#include "support.h"

namespace ponsim
{

struct PlatRecord {
    bsp_plat_msg record{};

    PlatRecord(uint32_t command, uint32_t port, uint32_t arg4 = 0)
    {
        record.plat_cmd = command;
        record.plat_port = port;
        record.plat_arg4 = arg4;
    }
    template <class Field, class Value>
    PlatRecord &&put(layout::At<Field> at, const Value &value) &&
    {
        layout::store(reinterpret_cast<char *>(&record), at, value);
        return std::move(*this);
    }
};

// A PlatAnswer is what came back on a channel.
struct PlatAnswer {
    Reply reply;

    PlatAnswer(ServiceFixture &fixture, uint32_t channel, const PlatRecord &request)
        : reply(fixture.simulator.handle({channel, &request.record, sizeof request.record}))
    {
    }
    uint32_t status() const { return reply.status; }
    template <class Field>
    Field get(layout::At<Field> at) const
    {
        const std::string &answer = reply.answer.value();
        EXPECT_EQ(answer.size(), sizeof(bsp_plat_msg));
        return layout::load(answer.data(), at);
    }
    template <class Field>
    std::string text(layout::At<Field> at) const
    {
        return reply.answer.value().c_str() + at.offset;
    }
};

} // namespace ponsim
