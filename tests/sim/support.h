// What the simulator's tests share: an OLT to plan changes on, records to send, and a folder to keep state in.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/admission.h"
#include "simulator.h"

namespace ponsim
{

// A MAC address that no ONU of the population has.
inline Mac stranger(uint8_t last, uint8_t before_last = 0)
{
    return {0x00, 0x1b, 0x21, 0xaa, before_last, last};
}

inline Binding binding_of(const Mac &mac)
{
    return {.mac = mac, .mode = 0, .text_a = {}, .text_b = {}, .text_c = {}};
}

inline OnuIds ids(std::initializer_list<uint32_t> members)
{
    OnuIds result;
    for (uint32_t onu_id : members)
        result.set(onu_id);
    return result;
}

// An OLT whose changes take place as soon as they are planned.
struct Bench {
    Olt olt;

    explicit Bench(const Settings &settings = {.seed = 1, .ports = 2, .arrivals = 4, .silent = 0}) : olt(settings) {}

    uint32_t done(const Plan &plan)
    {
        EXPECT_TRUE(plan.status == BSP_OK || plan.change.empty()) << "refused, but it has a change";
        olt.apply(plan.change);
        return plan.status;
    }
    uint32_t bind(uint32_t pon_port, const Mac &mac) { return done(bind_onu(olt, pon_port, {}, binding_of(mac))); }
    uint32_t bind(uint32_t pon_port, uint32_t onu_id, const Mac &mac)
    {
        return done(bind_onu(olt, pon_port, onu_id, binding_of(mac)));
    }

    const PonPort &port(uint32_t pon_port) const { return *olt.port(pon_port); }
    // The ONU bound to an id; all zero where there is none.
    Mac bound(uint32_t pon_port, uint32_t onu_id) const
    {
        const std::optional<Binding> &binding = port(pon_port).bindings[onu_id];
        return binding ? binding->mac : Mac{};
    }
    Mac arrived(uint32_t pon_port, size_t index = 0) const { return port(pon_port).arrivals.at(index).mac; }
    bool waits(uint32_t pon_port, const Mac &mac) const
    {
        const auto waiting = olt.waiting(port(pon_port));
        return std::ranges::any_of(waiting, [&](const Arrival *arrival) { return arrival->mac == mac; });
    }
    bool online(uint32_t pon_port, uint32_t onu_id) const
    {
        return port(pon_port).online(port(pon_port).bindings[onu_id].value());
    }
};

inline bsp_pon_msg record_of(uint32_t command, uint32_t pon_port = 0, uint32_t onu_id = 0, const Mac &mac = {})
{
    bsp_pon_msg record{};
    record.cmd = command;
    record.pon_port = pon_port;
    record.onu_id = onu_id;
    std::ranges::copy(mac, record.onu_mac);
    return record;
}

inline Message message_of(const bsp_pon_msg &record)
{
    return {BSP_MSG_PON, &record, sizeof record};
}

// Of a remote ONU.
inline bsp_onu_msg onu_record_of(uint32_t command, uint32_t pon_port = 0, uint32_t onu_id = 0)
{
    bsp_onu_msg record{};
    record.onu_cmd = command;
    record.onu_pon_port = pon_port;
    record.onu_onu_id = onu_id;
    return record;
}

inline Message message_of(uint32_t channel, const bsp_onu_msg &record)
{
    return {channel, &record, sizeof record};
}

// The whole service but its transport, with its state in memory or in a file.
struct Desk {
    Store store;
    Simulator simulator;

    explicit Desk(const WantedSettings &wanted = {}, const std::string &file = {}, bool fresh = false)
        : store(file, fresh), simulator(store, wanted)
    {
    }

    uint32_t send(const bsp_pon_msg &record) { return simulator.handle(message_of(record)).status; }
    std::string view(uint32_t command, uint32_t pon_port = 0, catalogue::Call call = catalogue::Call::get)
    {
        return ask(record_of(command, pon_port), call).result.value_or("no result");
    }
    Reply ask(const bsp_pon_msg &record, catalogue::Call call = catalogue::Call::get)
    {
        Message message = message_of(record);
        message.call = call;
        return simulator.handle(message);
    }
};

// A folder that lives as long as the test.
class Folder
{
public:
    Folder()
    {
        std::string name = testing::TempDir() + "ponsim-XXXXXX";
        path = mkdtemp(name.data());
    }
    ~Folder() { std::filesystem::remove_all(path); }
    Folder(const Folder &) = delete;

    std::string file(const std::string &name) const { return (path / name).string(); }

private:
    std::filesystem::path path;
};

} // namespace ponsim
