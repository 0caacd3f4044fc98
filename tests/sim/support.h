// The simulator's tests share this: an OLT to plan changes on, records to send, and a folder to keep state in.
#pragma once

#include <array>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "bsp_pon.h"
#include "engine/simulator.h"
#include "generated/service_words.h"
#include "model/lifecycle/admission.h"
#include "model/lifecycle/authentication.h"
#include "model/lifecycle/blacklist.h"
#include "model/lifecycle/registration.h"
#include "model/olt/alarms.h"

namespace ponsim
{

// Returns a MAC address that no ONU of the population has.
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

// This fixture makes the changes of an OLT as soon as they are planned.
struct OltFixture {
    Olt olt;

    explicit OltFixture(const Settings &settings = {.seed = 1, .ports = 2, .arrivals = 4, .silent = 0}) : olt(settings)
    {
    }

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

    uint32_t reject(uint32_t pon_port, const Mac &mac) { return done(add_to_blacklist(olt, pon_port, mac, {})); }
    uint32_t set_mode(uint32_t pon_port, AuthMode mode)
    {
        return done(set_authentication(olt, pon_port, {static_cast<uint32_t>(mode), {}, {}, false}));
    }
    // Adds a record with this LOID, and leaves the mode as it is.
    uint32_t accept(uint32_t pon_port, const std::string &loid, const std::string &password = {})
    {
        const auto mode = static_cast<uint32_t>(port(pon_port).authentication.mode);
        return done(set_authentication(olt, pon_port, {mode, loid, password, false}));
    }
    uint32_t confirm(uint32_t pon_port, uint32_t onu_id, const Mac &mac, bool exempt = true)
    {
        return done(confirm_onu(olt, pon_port, onu_id, mac, {.exempt = exempt, .mode = 0}));
    }
    // Lets time pass until no ONU boots or registers any more.
    void settle()
    {
        for (int times = 0; times < 1000 && !olt.registrations().empty(); ++times) {
            olt.advance(olt.registrations().begin()->at);
            olt.apply(registration_process.happen(olt));
        }
        EXPECT_TRUE(olt.registrations().empty());
    }
    // Sets the limits. After this, the ONUs that come into reach have registered.
    void range(uint32_t pon_port, uint32_t min, uint32_t max)
    {
        EXPECT_EQ(done(set_ranging_limits(olt, pon_port, {min, max})), BSP_OK);
        settle();
    }
    uint32_t alarms(uint32_t pon_port, const Mac &mac, Alarm alarm) const
    {
        const auto &raised = port(pon_port).alarms;
        const auto found = raised.find({mac, static_cast<uint32_t>(alarm)});
        return found == raised.end() ? 0 : found->second;
    }

    const PonPort &port(uint32_t pon_port) const { return *olt.port(pon_port); }
    // Returns the ONU bound to an id, or all zero when there is none.
    Mac bound(uint32_t pon_port, uint32_t onu_id) const
    {
        const std::optional<Binding> &binding = port(pon_port).bindings[onu_id];
        return binding ? binding->mac : Mac{};
    }
    Mac arrived(uint32_t pon_port, size_t index = 0) const { return port(pon_port).arrivals.at(index).mac; }
    const Arrival &arrival(uint32_t pon_port, size_t index = 0) const { return port(pon_port).arrivals.at(index); }
    OnuState state(uint32_t pon_port, uint32_t onu_id) const
    {
        return port(pon_port).state(port(pon_port).bindings[onu_id].value());
    }
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

// Returns a record of a remote ONU.
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

template <class Record, class Field, class Value>
void put(Record &record, layout::At<Field> at, const Value &value)
{
    layout::store(reinterpret_cast<char *>(&record), at, value);
}

// Finds a word that the record itself has, and no layout.
inline layout::At<uint32_t> word_at(size_t offset)
{
    return {static_cast<uint32_t>(offset)};
}

// Finds a byte of a field.
template <class Field>
layout::At<uint8_t> byte_of(layout::At<Field> at, uint32_t index)
{
    return {at.offset + index};
}

inline std::array<uint32_t, 4> words_of(const OnuIds &ids)
{
    std::array<uint32_t, 4> words{};
    for (uint32_t id = 0; id < onus_per_port; ++id)
        words[id / 32] |= uint32_t{ids[id]} << id % 32;
    return words;
}

// An AnswerRecord is an answer that is a record of the PON channel.
struct AnswerRecord {
    bsp_pon_msg record{};
    uint32_t status;

    explicit AnswerRecord(const Reply &reply) : status(reply.status)
    {
        EXPECT_EQ(reply.answer.value_or("").size(), sizeof record);
        if (reply.answer) std::memcpy(&record, reply.answer->data(), std::min(reply.answer->size(), sizeof record));
    }
    template <class Field>
    Field get(layout::At<Field> at) const
    {
        return layout::load(reinterpret_cast<const char *>(&record), at);
    }
    template <class Field>
    std::string text(layout::At<Field> at) const
    {
        return reinterpret_cast<const char *>(&record) + at.offset;
    }
};

inline Store store_with(const Settings &settings, const Change &kept)
{
    Store store({}, false);
    store.set_settings(settings);
    store.write(kept);
    return store;
}

// This fixture is the whole service without its transport. Its state is in memory or in a file.
struct ServiceFixture {
    Store store;
    Simulator simulator;

    explicit ServiceFixture(const WantedSettings &wanted = {}, const std::string &file = {}, bool fresh = false,
                            std::shared_ptr<const OltScenario> scenario = {})
        : store(file, fresh), simulator(store, wanted, std::move(scenario))
    {
    }

    // Starts with an OLT that was left in this state, in memory.
    ServiceFixture(const Settings &settings, const Change &kept)
        : store(store_with(settings, kept)), simulator(store, {})
    {
    }

    const PonPort &port(uint32_t pon_port) const { return *simulator.olt().port(pon_port); }
    // Lets time pass until no ONU boots or registers any more.
    void settle()
    {
        const auto &registrations = simulator.olt().registrations();
        for (int times = 0; times < 1000 && !registrations.empty(); ++times)
            simulator.advance(registrations.begin()->at);
        EXPECT_TRUE(registrations.empty());
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

// This folder lives as long as the test.
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
