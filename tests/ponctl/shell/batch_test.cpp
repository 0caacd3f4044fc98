// These tests run ponctl batch as a process against a fake service.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <future>

#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// Lines is a file of lines that is removed with the object.
class Lines
{
public:
    explicit Lines(const std::string &text)
    {
        const int file = mkstemp(path);
        if (write(file, text.data(), text.size()) < 0) throw std::runtime_error("cannot write");
        close(file);
    }
    ~Lines() { std::remove(path); }
    Lines(const Lines &) = delete;
    Lines &operator=(const Lines &) = delete;

    std::string name() const { return path; }

private:
    char path[32] = "/tmp/ponctl_lines_XXXXXX";
};

TEST(Batch, RunsEachLineAsACommandLine)
{
    const FakeService service;
    const Lines lines("# an OLT\n\n  onu describe 1 5 'the \"shop\"'  # comment\r\nonu describe 2 6 \"\"");
    const Finished finished = service.ponctl({"batch", lines.name()});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.err, "");
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].number("pon_port"), 1u);
    EXPECT_EQ(received[1].number("pon_port"), 2u);
}

TEST(Batch, ReadsStandardInputWhichItsCommandsDoNot)
{
    const FakeService service;
    const Lines lines("onu release 1 --all\nonu describe 1 5 shop\n");
    for (const char *command : {"batch", "shell"}) {
        const int input = open(lines.name().c_str(), O_RDONLY);
        const Finished finished =
            service.ponctl(command == std::string("batch") ? std::vector<std::string>{"batch", "-", "--keep-going"}
                                                           : std::vector<std::string>{"shell"},
                           -1, input);
        close(input);
        EXPECT_EQ(finished.code, 2);
        EXPECT_THAT(finished.err,
                    HasSubstr("standard input:1: onu release 1 --all: --yes: missing; releasing all ONUs"));
    }
    EXPECT_EQ(service.received().size(), 1u); // only the batch continued, and only it sent a request
}

TEST(Batch, StopsAtTheFirstLineThatFails)
{
    const FakeService service(status(1006));
    const Lines lines("idset 1\n\nonu describe 1 5 shop\nidset 7\n");
    const Finished finished = service.ponctl({"batch", lines.name()});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, StartsWith("ponctl: " + lines.name() +
                                         ":3: onu describe 1 5 shop: bsp_pon_onu_description: status 1006, "));
    EXPECT_EQ(finished.err.find('\n') + 1, finished.err.size()) << "one line an error";
    EXPECT_THAT(finished.out, HasSubstr("0x00000002"));
    EXPECT_THAT(finished.out, Not(HasSubstr("0x00000080")));
}

TEST(Batch, KeepsGoingWhereToldAndEndsWithTheWorstCode)
{
    const FakeService service(status(1006));
    const Lines lines("onu describe 1 5 shop\nonu describe 1 'shop\nidset 7\n");
    const Finished finished = service.ponctl({"batch", "--keep-going", lines.name()});
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.out, HasSubstr("0x00000080"));
    EXPECT_THAT(finished.err, HasSubstr(lines.name() + ":2: a quotation mark ' is not closed"));
    EXPECT_THAT(finished.err, HasSubstr("2 of 3 lines failed:\n  " + lines.name() + ":1: ended with 1\n  " +
                                        lines.name() + ":2: ended with 2\n"));
}

TEST(Batch, ReportsALineThatFailsWithoutAWord)
{
    const FakeService service(
        by_command({{384, rows(384, R"([{"pon_port":1,"onu_id":1,"mac":"02:00:00:00:00:01","state":"offline"}])")},
                    {388, rows(388, "[]")},
                    {400, rows(400, R"([{"pon_ports":1}])")},
                    {403, rows(403, "[]")},
                    {490, rows(490, "[]")}}));
    const Lines lines(" health \n");
    const Finished finished = service.ponctl({"batch", lines.name()});
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err, "ponctl: " + lines.name() + ":1: health: ended with 2\n");
}

TEST(Batch, DoesNotRepeatPasswords)
{
    const FakeService service(status(1006));
    const Lines lines("auth set 1 loid --loid shop --password geheim --yes\n");
    const Finished finished = service.ponctl({"batch", lines.name()});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err,
                StartsWith("ponctl: " + lines.name() + ":1: bsp_pon_onu_auth_mode_type_set: status 1006"));
    EXPECT_THAT(finished.err, Not(HasSubstr("geheim")));
}

TEST(Batch, HasTheGlobalOptionsForDefaultsOfItsLines)
{
    const FakeService service(rows(384, "[]"));
    const Lines lines("idset 7\n-o table idset 7\nonu list\n");
    const Finished finished = service.ponctl({"-o", "json", "batch", lines.name()});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_THAT(finished.out, StartsWith("{"));
    EXPECT_THAT(finished.out, HasSubstr("FORM"));
}

TEST(Batch, GivesEachLineItsOwnFolderOfSockets)
{
    const FakeService first, second;
    const Lines lines("onu describe 1 5 shop\n--socket-dir " + second.folder() + " onu describe 1 5 shop\n");
    EXPECT_EQ(first.ponctl({"batch", lines.name()}).code, 0);
    EXPECT_EQ(first.received().size(), 1u);
    EXPECT_EQ(second.received().size(), 1u);
}

TEST(Batch, EchoesLinesBeforeWhatTheyPrint)
{
    const Lines lines("idset 7 # seven\n");
    EXPECT_THAT(ponctl({"batch", "--echo", lines.name()}).out, StartsWith("+ idset 7 # seven\nFORM"));
}

TEST(Batch, SeesFailuresWhereChildrenAreIgnored)
{
    const auto before = std::signal(SIGCHLD, SIG_IGN); // ponctl inherits this
    Session session({"batch", "-"});
    std::signal(SIGCHLD, before);
    session.type("idset 300\n\004");
    EXPECT_EQ(session.end(), 2);
}

TEST(Batch, EndsAtACommandThatIsInterrupted)
{
    std::promise<void> asked, release;
    const FakeService service([&](const board_request &, board_answer *) {
        asked.set_value();
        release.get_future().wait();
    });
    const Lines lines("onu describe 1 5 shop\nidset 7\n");
    Session session({"--socket-dir", service.folder(), "--timeout", "600000", "batch", "--keep-going", lines.name()});
    const bool waits = asked.get_future().wait_for(std::chrono::minutes(1)) == std::future_status::ready;
    if (waits) session.type("\003");
    EXPECT_THAT(session.expect(":1: interrupted"), Not(HasSubstr("0x00000080")));
    EXPECT_EQ(session.end(), 130);
    release.set_value();
}

TEST(Batch, RefusesBatchesAndShellsInIt)
{
    for (const char *line : {"shell", "batch -"}) {
        const Lines lines(line);
        const Finished finished = ponctl({"batch", lines.name()});
        EXPECT_EQ(finished.code, 2);
        EXPECT_THAT(finished.err, HasSubstr("not in a line of a batch or shell"));
    }
}

TEST(Batch, SaysWhatItCannotRead)
{
    const Finished missing = ponctl({"batch", "/nowhere/lines"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_THAT(missing.err, HasSubstr("'/nowhere/lines' cannot be read: No such file"));
    const Finished folder = ponctl({"batch", "/tmp"});
    EXPECT_EQ(folder.code, 2);
    EXPECT_THAT(folder.err, HasSubstr("/tmp: cannot be read"));
}

TEST(Batch, PrintsTheLinesThatIncludeAText)
{
    const FakeService service(rows(384, R"([{"onu_id":1,"state":"online"},{"onu_id":2,"state":"offline"}])"));
    const Lines lines("onu list 1 --columns onu_id,state | include OFFLINE\n");
    EXPECT_EQ(service.ponctl({"batch", lines.name()}).out, " 2 offline\n");
    const Lines wrong("onu list 1 | grep x\n"), failing("onu lists | include x\n");
    const Finished refused = service.ponctl({"batch", wrong.name()});
    EXPECT_EQ(refused.code, 2);
    EXPECT_THAT(refused.err, HasSubstr("behind | there can be 'include TEXT' alone"));
    EXPECT_EQ(service.ponctl({"batch", failing.name()}).code, 2);
}

} // namespace
