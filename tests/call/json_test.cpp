// These tests write and read calls and outcomes as JSON.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "call/call.h"
#include "usage_error.h"

namespace
{

using namespace call;
using testing::ElementsAre;
using testing::IsEmpty;

std::string error_of_call(const char *json)
{
    return usage_error_of([json] { call_from_json(json); });
}

std::string error_of_outcome(const std::string &json)
{
    return usage_error_of([&json] { outcome_from_json(json); });
}

Outcome an_outcome()
{
    return {.id = "7",
            .operation = "bsp_pon_get_onu_info",
            .sent = true,
            .ipc_result = 0,
            .ipc_text = "success",
            .status = 4003,
            .status_name = "PON_ERR_NO_PORT",
            .status_text = "the OLT has no such PON port",
            .outputs = {{{"db_out", R"([{"onu_id":5,"power":-12.50,"mac":null}])"}, {"text", R"("a \"word\"")"}}}};
}

TEST(CallInJson, NeedsAnOperationOnly)
{
    const Call asked = call_from_json(R"({"operation":"bsp_pon_get_port_info"})");
    EXPECT_EQ(asked.operation, "bsp_pon_get_port_info");
    EXPECT_THAT(asked.arguments, IsEmpty());
    EXPECT_FALSE(asked.allow_long);
    EXPECT_EQ(asked.deadline, std::nullopt);
    EXPECT_EQ(asked.id, "");
}

TEST(CallInJson, TakesArgumentsAsNumbersTextsIdsAndFields)
{
    const Call asked = call_from_json(R"({"operation":"o","arguments":{
        "pon_port":1,"power":-2.5,"mac":"00:11:22:33:44:55","ids":[1,2,5],"left_out":null,
        "record":{"onu_set":[3,4],"arg_value":7,"text":null}}})");
    EXPECT_THAT(asked.arguments, ElementsAre(Assignment{"pon_port", "1"}, Assignment{"power", "-2.5"},
                                             Assignment{"mac", "00:11:22:33:44:55"}, Assignment{"ids", "1,2,5"},
                                             Assignment{"record.onu_set", "3,4"}, Assignment{"record.arg_value", "7"}));
}

TEST(CallInJson, ComesBackAsItWas)
{
    const Call asked{.id = "a \"7\"",
                     .operation = "bsp_pon_bind_onu_spec_id",
                     .arguments = {{"pon_port", "1"}, {"text_a", "caf\u00e9"}, {"record.onu_id", "5"}},
                     .allow_long = true,
                     .deadline = 250};
    EXPECT_EQ(call_from_json(to_json(asked)), asked);
    const Call least{.id = {}, .operation = "o", .arguments = {}, .allow_long = false, .deadline = {}};
    EXPECT_EQ(call_from_json(to_json(least)), least);
}

TEST(CallInJson, HasOneForm)
{
    const Call asked{
        .id = "7", .operation = "o", .arguments = {{"pon_port", "1"}}, .allow_long = true, .deadline = 250};
    EXPECT_EQ(to_json(asked),
              R"({"id":"7","operation":"o","arguments":{"pon_port":"1"},"allow_long":true,"deadline_ms":250})");
}

TEST(CallInJson, IsRefusedWhereItIsNoCall)
{
    EXPECT_EQ(error_of_call("{\"operation\":\"o\",}"),
              "the call is not JSON: byte 18: Missing a name for object member.");
    EXPECT_EQ(error_of_call("[]"), "the call: expected an object");
    EXPECT_EQ(error_of_call("{}"), "operation: missing");
    EXPECT_EQ(error_of_call(R"({"operation":5})"), "operation: expected a text");
    EXPECT_EQ(error_of_call(R"({"operation":"a","operation":"b"})"), "operation: given twice");
    EXPECT_EQ(error_of_call(R"({"operation":"o","argument":{}})"),
              "argument: not a member of the call; did you mean arguments? (known are allow_long, arguments, "
              "deadline_ms, id, operation)");
    EXPECT_EQ(error_of_call(R"({"operation":"o","arguments":[]})"), "arguments: expected an object");
    EXPECT_EQ(error_of_call(R"({"operation":"o","arguments":{"pon_port":true}})"),
              "pon_port: expected a number, a text, a list of ids, or an object of fields");
    EXPECT_EQ(error_of_call(R"({"operation":"o","arguments":{"record":{"onu_set":["x"]}}})"),
              "record.onu_set: expected ids in the list");
    EXPECT_EQ(error_of_call(R"({"operation":"o","allow_long":1})"), "allow_long: expected true or false");
    EXPECT_EQ(error_of_call(R"({"operation":"o","deadline_ms":-1})"),
              "deadline_ms: expected a number from 0 to 4294967295");
    EXPECT_EQ(error_of_call(R"({"operation":"o","id":7})"), "id: expected a text");
}

TEST(OutcomeInJson, ComesBackAsItWas)
{
    EXPECT_EQ(outcome_from_json(to_json(an_outcome())), an_outcome());
    Outcome failed = an_outcome();
    failed.id.clear();
    failed.ipc_result = -3;
    failed.status_name.clear();
    failed.status_text.clear();
    failed.outputs.reset();
    EXPECT_EQ(outcome_from_json(to_json(failed)), failed);
    Outcome empty = an_outcome();
    empty.outputs->clear();
    EXPECT_EQ(outcome_from_json(to_json(empty)), empty);
}

TEST(OutcomeInJson, HasOneForm)
{
    EXPECT_EQ(to_json(an_outcome()),
              R"({"id":"7","operation":"bsp_pon_get_onu_info","sent":true,"ipc_result":0,"ipc_text":"success",)"
              R"("status":4003,"status_name":"PON_ERR_NO_PORT","status_text":"the OLT has no such PON port",)"
              R"("outputs":{"db_out":[{"onu_id":5,"power":-12.50,"mac":null}],"text":"a \"word\""}})");
}

// What comes from another program may have characters that a terminal obeys, in a text, a name or a written value.
TEST(OutcomeInJson, KeepsHarmfulCharactersFromATerminal)
{
    const auto json_of = [](const std::string &id, const std::string &name, const std::string &value) {
        Outcome outcome = an_outcome();
        outcome.id = id;
        outcome.outputs = {{{name, value}}};
        return to_json(outcome);
    };
    const std::string harmful = "a\u009b2J", escaped = "a\\u009b2J";
    EXPECT_THAT(json_of(harmful, "name", R"("value")"), testing::StartsWith(R"({"id":")" + escaped + '"'));
    EXPECT_THAT(json_of("7", harmful, R"("value")"), testing::EndsWith('"' + escaped + R"(":"value"}})"));
    EXPECT_THAT(json_of("7", "name", '"' + harmful + '"'), testing::EndsWith('"' + escaped + R"("}})"));
}

TEST(OutcomeInJson, IsRefusedWhereItIsNoOutcome)
{
    const std::string start = R"({"operation":"o","sent":true,"ipc_result":0,"ipc_text":"","status":0,)"
                              R"("status_name":null,"status_text":null)";
    EXPECT_EQ(error_of_outcome(start + R"(,"outputs":null})"), "no error");
    EXPECT_EQ(error_of_outcome(start + "}"), "outputs: missing");
    EXPECT_EQ(error_of_outcome(start + R"(,"outputs":[]})"), "outputs: expected an object, or null");
    EXPECT_EQ(error_of_outcome("null"), "the outcome: expected an object");
}

} // namespace
