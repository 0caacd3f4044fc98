// These tests make calls to a service, and check what may be called.
#include <cstring>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/ipc.h"
#include "call/call.h"
#include "call/record.h"
#include "fake_service.h"
#include "usage_error.h"

namespace
{

using namespace call;
using catalogue::Class;
using testing::HasSubstr;
using testing::SizeIs;

const Call reading{.id = "r",
                   .operation = "bsp_pon_exec_get_json_",
                   .arguments = {{"cmd", "384"}, {"pon_port", "1"}},
                   .allow_long = false,
                   .deadline = {}};
const Call writing{.id = {},
                   .operation = "bsp_pon_onu_description",
                   .arguments = {{"pon_port", "1"}, {"onu_id", "5"}, {"text", "shop"}},
                   .allow_long = false,
                   .deadline = {}};
const Call affecting{.id = {},
                     .operation = "bsp_pon_no_bind_onu_all",
                     .arguments = {{"pon_port", "1"}},
                     .allow_long = false,
                     .deadline = {}};

class Performed : public testing::Test
{
protected:
    void serve(FakeService::Handler handler = {})
    {
        service.emplace(std::move(handler));
        board_ipc_use_directory(service->folder().c_str());
    }
    ~Performed() override { board_ipc_use_directory(nullptr); }

    // Returns why a call is refused. The class of what it sends decides.
    std::string refusal_of(const Call &asked, Class allowed)
    {
        UpTo permission(allowed);
        try {
            perform(asked, permission);
        } catch (const Refused &refused) {
            return refused.what();
        }
        return "not refused";
    }

    std::optional<FakeService> service;
    UpTo everything{Class::service_affecting};
};

TEST_F(Performed, DeliversWhatTheServiceAnswers)
{
    serve(result(384, R"([{"onu_id":5,"state":"online"}])"));
    const Outcome outcome = perform(reading, everything);
    EXPECT_EQ(outcome.id, "r");
    EXPECT_EQ(outcome.operation, reading.operation);
    EXPECT_TRUE(outcome.sent);
    EXPECT_EQ(outcome.ipc_result, IPC_OK);
    EXPECT_EQ(outcome.status, 0u);
    EXPECT_EQ(outcome.status_name, "BSP_OK");
    ASSERT_TRUE(outcome.outputs);
    EXPECT_EQ(*outcome.outputs, (std::vector<Delivered>{{"db_out", R"([{"onu_id":5,"state":"online"}])"}}));
}

TEST_F(Performed, SendsWhatTheArgumentsSay)
{
    serve();
    perform(writing, everything);
    ASSERT_THAT(service->received(), SizeIs(1));
    EXPECT_EQ(service->received()[0].number("pon_port"), 1u);
    EXPECT_EQ(service->received()[0].number("onu_id"), 5u);
}

TEST_F(Performed, NamesTheStatus)
{
    serve(status(4003));
    const Outcome outcome = perform(affecting, everything);
    EXPECT_EQ(outcome.status, 4003u);
    EXPECT_EQ(outcome.status_name, "PON_ERR_NO_PORT");
    EXPECT_EQ(outcome.status_text, "the OLT has no such PON port");
}

TEST_F(Performed, HasNoOutputsWhereTheExchangeFails)
{
    serve([](const board_request &, board_answer *answer) { board_answer_fail(answer, IPC_ERR_SERVICE); });
    const Outcome outcome = perform(reading, everything);
    EXPECT_EQ(outcome.ipc_result, IPC_ERR_SERVICE);
    EXPECT_EQ(outcome.ipc_text, ipc_strerror(IPC_ERR_SERVICE));
    EXPECT_FALSE(outcome.outputs);
}

TEST_F(Performed, EndsAtItsDeadline)
{
    serve([](const board_request &, board_answer *answer) { board_answer_drop(answer); });
    Call hurried = reading;
    hurried.deadline = 50;
    EXPECT_EQ(perform(hurried, everything).ipc_result, IPC_ERR_TIMEOUT);
    EXPECT_EQ(board_ipc_use_thread_timeout(0), 0u) << "the deadline outlives its call";
}

TEST_F(Performed, GoesOnInSeveralThreadsAtOnce)
{
    serve([](const board_request &request, board_answer *answer) {
        uint32_t port;
        std::memcpy(&port, static_cast<const uint8_t *>(request.data) + 4, sizeof port);
        board_answer_status(answer, port);
    });
    std::vector<std::thread> threads;
    for (uint32_t port = 1; port <= 4; ++port)
        threads.emplace_back([port] {
            UpTo permission(Class::read);
            Call asked = reading;
            asked.arguments[1].value = std::to_string(port);
            for (int round = 0; round < 50; ++round)
                EXPECT_EQ(perform(asked, permission).status, port);
        });
    for (std::thread &thread : threads)
        thread.join();
}

TEST_F(Performed, OfAWrongCallSendsNothing)
{
    serve();
    const auto error_of = [this](Call wrong) { return usage_error_of([&] { perform(wrong, everything); }); };
    Call wrong = affecting;
    wrong.operation = "bsp_pon_no_bind_onu_al";
    EXPECT_THAT(error_of(wrong), HasSubstr("operation: there is no 'bsp_pon_no_bind_onu_al'; did you mean "));
    wrong.operation.clear();
    EXPECT_EQ(error_of(wrong), "operation: missing");
    wrong = affecting;
    wrong.arguments = {};
    EXPECT_THAT(error_of(wrong), HasSubstr("pon_port: missing"));
    wrong.arguments = {{"pon_port", "one"}};
    EXPECT_THAT(error_of(wrong), HasSubstr("pon_port: 'one' is not a number"));
    wrong = affecting;
    wrong.deadline = 0;
    EXPECT_THAT(error_of(wrong), HasSubstr("deadline_ms: '0'"));
    EXPECT_THAT(service->received(), SizeIs(0));
}

TEST_F(Performed, ReadsNoFileOfThisMachine)
{
    serve();
    Call asked{.id = {},
               .operation = "bsp_pon_cfg",
               .arguments = {{"cmd", "1"}, {"pon_port", "1"}, {"data", "@/etc/hostname"}},
               .allow_long = false,
               .deadline = {}};
    EXPECT_EQ(usage_error_of([&] { perform(asked, everything); }),
              "data: '@/etc/hostname' is not a block of bytes: hex:0011... in pairs of digits, or text:...");
    EXPECT_THAT(service->received(), SizeIs(0));
}

TEST_F(Performed, AsksForPermissionByTheClassOfWhatItSends)
{
    serve();
    EXPECT_EQ(refusal_of(reading, Class::read), "not refused");
    EXPECT_EQ(refusal_of(writing, Class::write), "not refused");
    EXPECT_EQ(refusal_of(affecting, Class::service_affecting), "not refused");
    EXPECT_THAT(service->received(), SizeIs(3));
}

TEST_F(Performed, WhereItIsRefusedSendsNothing)
{
    serve();
    EXPECT_EQ(refusal_of(writing, Class::read), "calling bsp_pon_onu_description: is write, and only read is allowed");
    EXPECT_EQ(refusal_of(affecting, Class::read),
              "calling bsp_pon_no_bind_onu_all: is service-affecting, and only read is allowed");
    EXPECT_EQ(refusal_of(affecting, Class::write),
              "calling bsp_pon_no_bind_onu_all: is service-affecting, and only write is allowed");
    EXPECT_THAT(service->received(), SizeIs(0));
}

// The class of the command decides when the operation passes any command through.
TEST_F(Performed, AsksByTheCommandThatItPassesThrough)
{
    serve();
    const std::string code = std::to_string(catalogue::find_operation(affecting.operation)->command->code);
    const Call through{.id = {},
                       .operation = "bsp_pon_exec_set",
                       .arguments = {{"record.cmd", code}},
                       .allow_long = false,
                       .deadline = {}};
    EXPECT_THAT(refusal_of(through, Class::write), HasSubstr("service-affecting"));
    const Call unknown{.id = {},
                       .operation = "bsp_pon_exec_set",
                       .arguments = {{"record.cmd", "99999"}},
                       .allow_long = false,
                       .deadline = {}};
    EXPECT_THAT(refusal_of(unknown, Class::write), HasSubstr("service-affecting"));
    EXPECT_THAT(service->received(), SizeIs(0));
}

class KeepBack : public Permission
{
public:
    Verdict decide(const PermissionRequest &request) override
    {
        kept = request.exchange.request;
        return Verdict::keep_back;
    }

    Bytes kept;
};

TEST_F(Performed, WhereTheRequestIsKeptBackSendsNothing)
{
    serve();
    KeepBack permission;
    const Outcome outcome = perform(affecting, permission);
    EXPECT_FALSE(outcome.sent);
    EXPECT_EQ(outcome.ipc_result, IPC_OK);
    EXPECT_FALSE(outcome.outputs);
    EXPECT_THAT(permission.kept, SizeIs(catalogue::find_operation(affecting.operation)->record->size));
    EXPECT_THAT(service->received(), SizeIs(0));
}

TEST_F(Performed, ARecordOfNoOperationIsAskedForToo)
{
    serve();
    const catalogue::Channel &channel = *catalogue::find_channel("BSP_MSG_PON");
    Bytes request(channel.record->size);
    const Sender sender{"sending a record", channel.record};
    UpTo readings(Class::read);
    const auto send = [&](Permission &permission) {
        return exchange_record(sender, permission, {catalogue::module, channel.type}, catalogue::Call::set, request, 0,
                               0);
    };
    EXPECT_THROW(send(readings), Refused);
    EXPECT_THAT(service->received(), SizeIs(0));
    EXPECT_EQ(send(everything).result, IPC_OK);
    EXPECT_THAT(service->received(), SizeIs(1));
}

TEST_F(Performed, WithoutPermissionTheIpcLibraryItselfSendsNothing)
{
    serve();
    const Bytes request(944);
    uint32_t status = 0;
    EXPECT_EQ(ipc_set_exec(catalogue::module, 232, request.data(), 944, &status), IPC_ERR_SYSTEM);
    EXPECT_THAT(service->received(), SizeIs(0));
}

} // namespace
