// These tests check what ponctl says when a service, or the operating system, does not let it in.
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/ipc.h"
#include "fake_service.h"

namespace
{

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

FakeService::Handler failing(int32_t value)
{
    return [value](const board_request &, board_answer *answer) { board_answer_fail(answer, value); };
}

TEST(Refusal, NamesTheClassTheSocketAndItsOwners)
{
    const FakeService service(failing(IPC_ERR_REFUSED));
    const Finished finished = service.ponctl({"onu", "reboot", "1/5", "--yes"});
    EXPECT_EQ(finished.code, 3);
    EXPECT_THAT(finished.err, HasSubstr("IPC failure -5: the service's access rules refuse the request; it needs "
                                        "service-affecting access, which the service behind " +
                                        service.folder() + "/6.seq of user "));
    EXPECT_THAT(finished.err, ContainsRegex("of user [^ ]+, group [^ ]+, mode 0[0-7]+ did not grant; you are user "));
}

TEST(Refusal, NamesTheClassOfEachRequest)
{
    const FakeService service(failing(IPC_ERR_REFUSED));
    EXPECT_THAT(service.ponctl({"onu", "list"}).err, HasSubstr("it needs read access"));
    EXPECT_THAT(service.ponctl({"loop", "time", "5"}).err, HasSubstr("it needs write access"));
    const std::string unknown = service.ponctl({"raw", "BSP_MSG_PON", "get", "cmd=1"}).err;
    EXPECT_THAT(unknown, Not(HasSubstr("it needs")));
    EXPECT_THAT(unknown, HasSubstr(", which the service behind "));
}

TEST(Refusal, SaysWhoseTheSocketIsThatCannotBeUsed)
{
    const FakeService service(failing(IPC_ERR_ACCESS));
    EXPECT_THAT(
        service.ponctl({"onu", "list"}).err,
        ContainsRegex("no permission to connect to the service: /[^ ]+/6\\.seq of user [^ ]+, group [^ ]+, mode "
                      "0[0-7]+; you are user "));
    chmod((service.folder() + "/6.seq").c_str(), 0600);
    EXPECT_THAT(service.ponctl({"onu", "list"}).err, HasSubstr("mode 0600"));
}

TEST(BoardLog, WithAnUnknownWordIsRefused)
{
    setenv("BOARD_LOG", "debug,verbose", 1);
    const Finished finished = ponctl({"idset", "1"});
    unsetenv("BOARD_LOG");
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err, "ponctl: BOARD_LOG: 'verbose' is not one of off, err, debug, syslog\n");
}

} // namespace
