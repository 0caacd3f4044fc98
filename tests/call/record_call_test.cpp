// These tests write exchanges of records as names and numbers, read them back, and let a carrier make them.
#include <cstring>
#include <random>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/ipc.h"
#include "call/call.h"
#include "call/codec/decode.h"
#include "call/record.h"
#include "call/record_call.h"
#include "fake_service.h"
#include "usage_error.h"

namespace
{

using namespace call;
using catalogue::Class;
using testing::HasSubstr;

Bytes any_bytes(std::mt19937 &chance, size_t size)
{
    Bytes bytes(size);
    for (uint8_t &byte : bytes) // half of them are zero, as in records
        byte = chance() % 2 ? static_cast<uint8_t>(chance()) : 0;
    return bytes;
}

RecordCall call_of(const catalogue::Command &command, catalogue::Call call, Bytes request)
{
    const uint32_t code = command.code;
    std::memcpy(request.data() + command.channel->record->command->offset, &code, sizeof code);
    return {command.channel, call, command.channel->record, std::move(request), 0};
}

// Calls `visit` for each command, with each call that can be its own.
template <class Visit>
void for_each_call(Visit visit)
{
    for (const catalogue::Command &command : catalogue::commands())
        for (const catalogue::Call call : {catalogue::Call::set, catalogue::Call::get})
            if (command.call.value_or(call) == call) visit(command, call);
}

TEST(RecordCall, OfAnyBytesIsReadAsItWasWritten)
{
    std::mt19937 chance(7);
    for_each_call([&](const catalogue::Command &command, catalogue::Call call) {
        const RecordCall asked = call_of(command, call, any_bytes(chance, command.channel->record->size));
        const RecordCall read = record_call_from_json(to_json(asked));
        EXPECT_EQ(read.channel, asked.channel) << command.name;
        EXPECT_EQ(read.call, asked.call) << command.name;
        EXPECT_EQ(read.request, asked.request) << command.name;
    });
}

TEST(RecordCall, OutcomeOfAnyBytesIsReadAsItWasWritten)
{
    std::mt19937 chance(8);
    for_each_call([&](const catalogue::Command &command, catalogue::Call call) {
        const RecordCall asked = call_of(command, call, Bytes(command.channel->record->size));
        RecordOutcome outcome;
        outcome.status = 4003;
        outcome.response = any_bytes(chance, command.channel->record->size);
        outcome.result_key = 7;
        outcome.result = R"([{"big":12345678901234567890123,"text":"a\"b"}])";
        outcome.file = {"board:file", {0, 1, 255}};
        const RecordOutcome read = record_outcome_from_json(to_json(outcome, asked), asked);
        EXPECT_EQ(read.status, outcome.status);
        EXPECT_EQ(read.response, outcome.response) << command.name;
        EXPECT_EQ(read.result_key, outcome.result_key);
        EXPECT_EQ(read.result, outcome.result);
        EXPECT_EQ(read.file.name, outcome.file.name);
        EXPECT_EQ(read.file.content, outcome.file.content);
    });
}

constexpr char bind_by_mac[] = R"({"channel":"BSP_MSG_PON","call":"set","command":"BSP_CMD_ONU_BIND","length":944,)"
                               R"("fields":{"pon_port":258,"onu_id":5,"onu_mac":"02:00:5e:10:00:01"},"bytes":{}})";

TEST(RecordCall, IsTheSameTextInEveryByteOrder)
{
    RecordCall asked{catalogue::find_channel("BSP_MSG_PON"), catalogue::Call::set,
                     catalogue::find_record("bsp_pon_msg"), Bytes(944), 0};
    const RecordRole role{asked.channel, asked.call};
    set_fields(*asked.record, role,
               std::vector<Assignment>{
                   {"cmd", "BSP_CMD_ONU_BIND"}, {"pon_port", "258"}, {"onu_id", "5"}, {"onu_mac", "02:00:5e:10:00:01"}},
               {}, "", asked.request);
    EXPECT_EQ(to_json(asked), bind_by_mac);
    EXPECT_EQ(record_call_from_json(bind_by_mac).request, asked.request);
}

std::string error_of(const std::string &json)
{
    return usage_error_of([&] { record_call_from_json(json); });
}

TEST(RecordCall, IsRefusedWhereTheCatalogueDoesNotKnowIt)
{
    const std::string start = R"({"channel":"BSP_MSG_PON","call":"set","length":944)";
    EXPECT_EQ(error_of(start + R"(,"command":"BSP_CMD_MAKE_TEA"})"), "command: there is no 'BSP_CMD_MAKE_TEA'");
    EXPECT_THAT(error_of(start + R"(,"command":"BSP_CMD_CONFIG_WRITE"})"), HasSubstr("is no command of BSP_MSG_PON"));
    EXPECT_EQ(error_of(start + R"(,"fields":{"tea":1}})"), "tea: not a field of bsp_pon_msg");
    EXPECT_EQ(error_of(start + R"(,"fields":{"pon_port":4294967296}})"),
              "pon_port: expected a whole number of 4 bytes");
    EXPECT_EQ(error_of(start + R"(,"fields":{"pon_port":-1}})"), "pon_port: expected a whole number of 4 bytes");
    EXPECT_EQ(error_of(start + R"(,"bytes":{"940":"0011223344"}})"), "940: expected bytes inside the record's length");
    EXPECT_THAT(error_of(start + R"(,"bytes":{"-1":"00"}})"), HasSubstr("is not a number"));
    EXPECT_EQ(error_of(R"({"channel":"BSP_MSG_PON","call":"set","length":8193})"),
              "length: expected a number from 0 to 8192");
    EXPECT_EQ(error_of(R"({"channel":"BSP_MSG_PON","call":"set","length":4,"fields":{"pon_port":1}})"),
              "pon_port: expected a field inside the record's length");
    EXPECT_THAT(error_of(R"({"channel":"BSP_MSG_TEA","call":"set","length":944})"), HasSubstr("BSP_MSG_TEA"));
    EXPECT_EQ(error_of(R"({"channel":"BSP_MSG_PON","call":"brew","length":944})"),
              "call: expected set, get, dgram-set or dgram-get");
    EXPECT_EQ(error_of(R"({"channel":"BSP_MSG_PON","call":"set"})"), "length: missing");
}

// A Loopback makes exchanges as they are made far away: of what was read from JSON, and by another thread.
class Loopback : public Carrier
{
public:
    RecordOutcome carry(const RecordCall &asked) override
    {
        ++carried;
        std::string answer;
        std::thread([&] {
            UpTo everything(Class::service_affecting);
            const RecordCall read = record_call_from_json(to_json(asked));
            answer = to_json(perform(read, everything), read);
        }).join();
        return record_outcome_from_json(answer, asked);
    }

    int carried = 0;
};

class Carried : public testing::Test
{
protected:
    void serve(FakeService::Handler handler)
    {
        service.emplace(std::move(handler));
        board_ipc_use_directory(service->folder().c_str());
    }
    ~Carried() override { board_ipc_use_directory(nullptr); }

    // Expects that a call comes to the same by a carrier as by the board's library.
    void expect_the_same(const Call &asked)
    {
        UpTo everything(Class::service_affecting);
        const Outcome direct = perform(asked, everything);
        const Carriage carriage(loopback);
        EXPECT_EQ(to_json(perform(asked, everything)), to_json(direct));
        EXPECT_EQ(loopback.carried, 1);
    }

    std::optional<FakeService> service;
    Loopback loopback;
};

Call named(const char *operation, std::vector<Assignment> arguments)
{
    return {.id = {}, .operation = operation, .arguments = std::move(arguments), .allow_long = false, .deadline = {}};
}

TEST_F(Carried, ResultDatabaseIsDelivered)
{
    serve(result(384, R"([{"onu_id":5,"state":"online"}])"));
    expect_the_same(named("bsp_pon_exec_get_json_", {{"cmd", "384"}, {"pon_port", "1"}}));
}

TEST_F(Carried, RecordIsDeliveredWithItsStatus)
{
    std::mt19937 chance(9);
    const Bytes answer = any_bytes(chance, 944);
    serve([&](const board_request &, board_answer *made) {
        board_answer_status(made, 4003);
        board_answer_data(made, answer.data(), static_cast<uint32_t>(answer.size()));
    });
    expect_the_same(named("bsp_pon_exec_get", {{"record.cmd", "381"}}));
}

TEST_F(Carried, ShortAnswerLeavesTheRest)
{
    serve(bytes({1, 2, 3}));
    expect_the_same(named("bsp_pon_exec_get", {{"record.cmd", "381"}, {"record.onu_id", "77"}}));
}

TEST_F(Carried, FileIsDelivered)
{
    serve([](const board_request &, board_answer *made) {
        Bytes answer(4120);
        std::strcpy(reinterpret_cast<char *>(answer.data()) + 24, BOARD_RESULT_FILE);
        board_answer_data(made, answer.data(), static_cast<uint32_t>(answer.size()));
        board_answer_file(made, R"([{"profile":1}])", 15);
    });
    expect_the_same(named("bsp_profile_exec_get_json", {{"action", "5"}}));
}

TEST_F(Carried, SettingIsMadeOnce)
{
    serve({});
    UpTo everything(Class::service_affecting);
    const Carriage carriage(loopback);
    perform(named("bsp_pon_onu_description", {{"pon_port", "1"}, {"onu_id", "5"}, {"text", "shop"}}), everything);
    ASSERT_EQ(service->received().size(), 1u);
    EXPECT_EQ(service->received()[0].number("pon_port"), 1u);
    EXPECT_EQ(service->received()[0].number("onu_id"), 5u);
}

TEST_F(Carried, FailureIsThatOfTheFarExchange)
{
    serve([](const board_request &, board_answer *answer) { board_answer_fail(answer, IPC_ERR_SERVICE); });
    expect_the_same(named("bsp_pon_exec_get_json_", {{"cmd", "384"}, {"pon_port", "1"}}));
}

TEST_F(Carried, NothingIsCarriedWithoutPermission)
{
    serve({});
    UpTo reading(Class::read);
    const Carriage carriage(loopback);
    EXPECT_THROW(perform(named("bsp_pon_no_bind_onu_all", {{"pon_port", "1"}}), reading), Refused);
    EXPECT_EQ(loopback.carried, 0);
}

TEST_F(Carried, WhatTheCarrierThrowsReachesTheCaller)
{
    struct Broken : Carrier {
        RecordOutcome carry(const RecordCall &) override { throw Error("the line is cut"); }
    } broken;
    UpTo reading(Class::read);
    const Carriage carriage(broken);
    EXPECT_THROW(perform(named("bsp_pon_exec_get_json_", {{"cmd", "384"}, {"pon_port", "1"}}), reading), Error);
}

} // namespace
