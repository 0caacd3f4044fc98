// How a thread makes its exchanges at an OLT of the fleet, when all goes well and when it does not.
#include <deque>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/ipc.h"
#include "call/call.h"
#include "call/codec/decode.h"
#include "fleet/carrier/carrier.h"

namespace
{

using namespace fleet;
using call::RecordCall;
using call::RecordOutcome;
using catalogue::Class;
using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

RecordCall record_call(const char *channel, catalogue::Call call, const std::vector<call::Assignment> &fields)
{
    const catalogue::Channel *known = catalogue::find_channel(channel);
    RecordCall made{known, call, known->record, call::Bytes(known->record->size), 0};
    call::set_fields(*made.record, {known, call}, fields, {}, "", made.request);
    return made;
}

const RecordCall reading =
    record_call("BSP_MSG_PON", catalogue::Call::get, {{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", "1"}});
const RecordCall binding =
    record_call("BSP_MSG_PON", catalogue::Call::set, {{"cmd", "BSP_CMD_ONU_BIND"}, {"pon_port", "1"}, {"onu_id", "5"}});
const RecordCall fec =
    record_call("BSP_MSG_ONU_CFG", catalogue::Call::set,
                {{"onu_cmd", "BSP_CMD_ONU_FEC_SET"}, {"onu_pon_port", "1"}, {"onu_onu_id", "5"}, {"mode", "enabled"}});

// A Script answers requests one after the other as a test says, and notes them.
class Script : public Link
{
public:
    using Said = std::function<std::optional<std::string>(const Request &)>;

    std::optional<std::string> exchange(const std::string &request, Class impact, uint32_t) override
    {
        requests.push_back(request_from_json(request));
        classes.push_back(impact);
        if (answers.empty()) return std::nullopt;
        const Said said = answers.front();
        if (answers.size() > 1) answers.pop_front();
        return said(requests.back());
    }

    std::deque<Said> answers; // the last one again and again
    std::vector<Request> requests;
    std::vector<Class> classes;
};

std::optional<std::string> silence(const Request &)
{
    return std::nullopt;
}

std::optional<std::string> well(const Request &request)
{
    return answer_of(RecordOutcome{}, std::get<RecordCall>(request.what));
}

Script::Said failing(Problem problem)
{
    return [problem](const Request &) { return answer_of(Failure{problem, "because"}); };
}

struct Carried : testing::Test {
    Script script;
    OltCarrier carrier{script, {.run = "run-7", .olt = "north-3"}};
};

TEST_F(Carried, ReadingHasNoIdAndNeedsNone)
{
    script.answers = {well};
    EXPECT_EQ(carrier.carry(reading).ipc_result, IPC_OK);
    ASSERT_THAT(script.requests, SizeIs(1));
    EXPECT_EQ(script.requests[0].id, "");
    EXPECT_EQ(script.classes[0], Class::read);
}

TEST_F(Carried, WhatChangesSomethingHasAnIdThatAnotherTryOfTheRunHasToo)
{
    script.answers = {well};
    carrier.carry(binding);
    carrier.carry(binding);
    carrier.carry(fec);
    OltCarrier again(script, {.run = "run-7", .olt = "north-3"});
    again.carry(binding);
    OltCarrier other(script, {.run = "run-8", .olt = "north-3"});
    other.carry(binding);
    ASSERT_THAT(script.requests, SizeIs(5));
    EXPECT_NE(script.requests[0].id, script.requests[1].id) << "it was asked for twice";
    EXPECT_NE(script.requests[0].id, script.requests[2].id);
    EXPECT_EQ(script.requests[0].id, script.requests[3].id);
    EXPECT_NE(script.requests[0].id, script.requests[4].id);
    EXPECT_EQ(script.classes[0], Class::service_affecting);
}

TEST_F(Carried, WhatIsNotAnsweredIsAskedAgainUnderItsId)
{
    script.answers = {silence, silence, well};
    EXPECT_EQ(carrier.carry(binding).ipc_result, IPC_OK);
    ASSERT_THAT(script.requests, SizeIs(3));
    EXPECT_EQ(script.requests[0].id, script.requests[2].id);
    EXPECT_EQ(carrier.certainty(), Certainty::certain);
}

TEST_F(Carried, ReadingWithoutAnAnswerIsUnreachable)
{
    EXPECT_EQ(carrier.carry(reading).ipc_result, IPC_ERR_NO_SERVICE);
    EXPECT_EQ(carrier.certainty(), Certainty::unreachable);
}

TEST_F(Carried, ChangeWithoutAnAnswerIsUnknown)
{
    EXPECT_EQ(carrier.carry(binding).ipc_result, IPC_ERR_PEER_LOST);
    EXPECT_EQ(carrier.certainty(), Certainty::unknown);
    EXPECT_THAT(carrier.reason(), HasSubstr("north-3"));
}

std::optional<std::string> unsendable(const Request &)
{
    throw call::Error("the broker is gone");
}

TEST_F(Carried, WhatCannotBeSentIsUnreachable)
{
    script.answers = {unsendable};
    EXPECT_EQ(carrier.carry(binding).ipc_result, IPC_ERR_NO_SERVICE);
    EXPECT_EQ(carrier.certainty(), Certainty::unreachable);
    EXPECT_EQ(carrier.reason(), "north-3: the broker is gone");
}

TEST_F(Carried, WhatCannotBeAskedAgainIsUnknown)
{
    script.answers = {silence, unsendable};
    EXPECT_EQ(carrier.carry(binding).ipc_result, IPC_ERR_PEER_LOST);
    EXPECT_EQ(carrier.certainty(), Certainty::unknown);
}

// Answers the question how the setting stands with this.
Script::Said showing(const std::string &mode)
{
    return [mode](const Request &request) {
        const auto &question = std::get<RecordCall>(request.what);
        EXPECT_TRUE(request.id.empty());
        RecordOutcome outcome;
        outcome.response = question.request;
        const call::RecordRole role{question.channel, question.call, nullptr, true};
        call::set_fields(*question.record, role, std::vector<call::Assignment>{{"mode", mode}}, {}, "",
                         outcome.response);
        return answer_of(outcome, question);
    };
}

TEST_F(Carried, UnknownSettingThatTheOltShowsIsSo)
{
    script.answers = {failing(Problem::unknown), showing("enabled")};
    EXPECT_EQ(carrier.carry(fec).ipc_result, IPC_OK);
    EXPECT_EQ(carrier.certainty(), Certainty::certain);
}

TEST_F(Carried, UnknownSettingThatTheOltDoesNotShowStaysUnknown)
{
    script.answers = {failing(Problem::unknown), showing("disabled")};
    EXPECT_EQ(carrier.carry(fec).ipc_result, IPC_ERR_PEER_LOST);
    EXPECT_EQ(carrier.certainty(), Certainty::unknown);
    EXPECT_THAT(carrier.reason(), HasSubstr("it is not so now"));
}

TEST_F(Carried, BusyOltIsAskedAgain)
{
    script.answers = {failing(Problem::busy), failing(Problem::busy), well};
    EXPECT_EQ(carrier.carry(binding).ipc_result, IPC_OK);
    EXPECT_THAT(script.requests, SizeIs(3));
}

TEST_F(Carried, WhatIsRefusedIsAnError)
{
    script.answers = {failing(Problem::refused)};
    EXPECT_THROW(carrier.carry(binding), call::Refused);
    EXPECT_EQ(carrier.certainty(), Certainty::refused);
    script.answers = {failing(Problem::wrong)};
    EXPECT_THROW(carrier.carry(binding), call::UsageError);
}

TEST_F(Carried, WhatWasNotBegunFails)
{
    script.answers = {failing(Problem::expired)};
    EXPECT_EQ(carrier.carry(binding).ipc_result, IPC_ERR_SERVICE);
    EXPECT_EQ(carrier.certainty(), Certainty::unreachable);
    script.answers = {failing(Problem::unavailable)};
    EXPECT_EQ(carrier.carry(binding).ipc_result, IPC_ERR_NO_SERVICE);
    EXPECT_EQ(carrier.certainty(), Certainty::unreachable);
}

TEST_F(Carried, AnswerThatIsNoneIsAnError)
{
    for (const char *wrong :
         {"", "{", "{}", R"({"exchanged":{}})", R"({"problem":"tea","text":""})", R"({"outcome":{"operation":"x"}})"}) {
        script.answers = {[wrong](const Request &) { return std::string(wrong); }};
        EXPECT_THROW(carrier.carry(reading), call::UsageError) << wrong;
    }
}

} // namespace
