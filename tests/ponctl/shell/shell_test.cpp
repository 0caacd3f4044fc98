// These tests run ponctl shell on a terminal, with a user who types.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::Not;

constexpr const char *prompt = "ponctl> ";
constexpr const char *interrupt = "\003", *end_of_input = "\004", *up = "\033[A", *tab = "\t";

// Shell has what the user of a shell has on the machine.
class Shell : public testing::Test
{
protected:
    Shell()
    {
        if (!mkdtemp(state)) throw std::runtime_error("no temporary folder");
        for (const auto &[name, value] : {std::pair{"XDG_STATE_HOME", state}, {"HOME", state}, {"TERM", terminal}})
            setenv(name, value, 1);
    }
    ~Shell() override { std::filesystem::remove_all(state); }

    std::string history() const { return std::string(state) + "/ponctl/history"; }
    std::string kept_lines() const
    {
        std::ifstream file(history());
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    char state[32] = "/tmp/ponctl_state_XXXXXX";
    char terminal[6] = "vt100";
};

// When something that the editor does has appeared, the editor reads keys by itself.
void wait_for_editor(Session &session)
{
    session.expect(prompt);
    session.type("?");
    session.expect("onu");
    session.expect(prompt);
}

TEST_F(Shell, RunsLinesUntilEndOfInput)
{
    Session session({"shell"});
    session.expect(prompt);
    session.type("idset 7\r");
    session.expect("0x00000080");
    wait_for_editor(session);
    session.type(end_of_input);
    EXPECT_EQ(session.end(), 0);
}

TEST_F(Shell, NamesTheOltByTheFolderOfItsSocketsInThePrompt)
{
    Session session({"shell", "--socket-dir", "/nowhere/west/"});
    session.expect("west ponctl> ");
    session.type("onu list 1\r");
    session.expect("west ponctl [3]> ");
    session.type("exit\r");
    EXPECT_EQ(session.end(), 0);
}

TEST_F(Shell, IsLeftByExitAndQuit)
{
    for (const char *word : {"exit\r", "quit\r"}) {
        Session session({"shell"});
        session.expect(prompt);
        session.type(word);
        EXPECT_EQ(session.end(), 0);
    }
}

TEST_F(Shell, CompletesByTab)
{
    Session session({"shell"});
    session.expect(prompt);
    session.type(std::string("idse") + tab + "7\r");
    session.expect("0x00000080");
}

TEST_F(Shell, CompletesByWhatTheServiceKnows)
{
    const FakeService service(rows(386, R"([{"pon_port":7,"bound":1,"online":1,"waiting":0}])"));
    Session session({"--socket-dir", service.folder(), "shell"});
    session.expect(prompt);
    session.type(std::string("onu list ") + tab + "--no-headings --help\r");
    session.expect("Usage: ponctl onu list");
    session.expect(prompt);
    session.type("exit\r");
    session.end();
    EXPECT_EQ(kept_lines(), "onu list 7 --no-headings --help\nexit\n");
}

TEST_F(Shell, CompletesInSilenceWithoutAService)
{
    Session session({"--socket-dir", "/nowhere", "shell"});
    session.expect(prompt);
    session.type(std::string("onu list ") + tab + "?");
    EXPECT_THAT(session.expect("--no-headings"), Not(HasSubstr("ponctl:")));
}

TEST_F(Shell, ShowsAChoiceByTabAndKeepsTheLine)
{
    Session session({"shell"});
    session.expect(prompt);
    session.type(std::string("-o ") + tab);
    session.expect("json");
    session.expect("ponctl> -o ");
    session.type("json idset 7\r");
    session.expect("\"ranges\": \"7\"");
}

TEST_F(Shell, ShowsWhatCanComeNextAndKeepsTheLine)
{
    Session session({"shell"});
    session.expect(prompt);
    session.type("idset ?");
    session.expect("--last-id");
    session.expect("ponctl> idset ");
    session.type("7\r");
    session.expect("0x00000080");
}

TEST_F(Shell, TakesAQuestionMarkInQuotesForItself)
{
    Session session({"shell"});
    session.expect(prompt);
    session.type("'what?'\r");
    session.expect("there is no command 'what?'");
}

TEST_F(Shell, HasItsLinesInTheHistory)
{
    Session session({"shell"});
    session.expect(prompt);
    session.type("idset 7\r");
    session.expect("0x00000080");
    session.expect(prompt);
    session.type(std::string(up) + "\r");
    session.expect("0x00000080");
}

TEST_F(Shell, HasTheLinesOfEarlierSessionsInTheHistory)
{
    Session earlier({"shell"});
    earlier.expect(prompt);
    earlier.type("idset 7\r");
    earlier.expect("0x00000080");
    Session session({"shell"});
    session.expect(prompt);
    session.type(std::string(up) + "\r");
    session.expect("0x00000080");
}

TEST_F(Shell, KeepsLinesForItsUserAloneAndNoPasswords)
{
    Session session({"--socket-dir", "/nowhere", "shell"});
    session.expect(prompt);
    session.type("loid add 1 one --password secret\r");
    session.expect("ponctl [3]> ");
    session.type("idset 7\r");
    session.expect("0x00000080");
    session.expect(prompt);
    session.type("exit\r");
    session.end();
    EXPECT_EQ(kept_lines(), "idset 7\nexit\n");
    struct stat status;
    ASSERT_EQ(stat(history().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(Shell, KeepsTheLastThousandLines)
{
    std::filesystem::create_directories(std::filesystem::path(history()).parent_path());
    {
        std::ofstream file(history());
        for (int line = 0; line < 1500; ++line)
            file << "idset " << line % 128 << " # " << line << "\n";
    }
    Session session({"shell"});
    session.expect(prompt);
    session.type("exit\r");
    session.end();
    std::istringstream kept(kept_lines());
    std::string first, line;
    std::getline(kept, first);
    EXPECT_THAT(first, HasSubstr("# 500"));
}

TEST_F(Shell, HasTheExitCodeOfAFailureInItsPromptAndGoesOn)
{
    Session session({"shell"});
    session.expect(prompt);
    session.type("idset 'x\r");
    session.expect("' is not closed");
    session.expect("ponctl [2]> ");
    session.type("shell\r");
    session.expect("not in a line of a batch or shell");
    session.expect("ponctl [2]> ");
    session.type("idset 7\r");
    session.expect("0x00000080");
    session.expect(prompt);
}

TEST_F(Shell, EmptiesTheLineByAnInterrupt)
{
    Session session({"shell"});
    wait_for_editor(session);
    session.type("nonsense");
    session.type(interrupt);
    session.expect("^C");
    session.expect(prompt);
    session.type("idset 7\r");
    EXPECT_THAT(session.expect("0x00000080"), Not(HasSubstr("unknown")));
}

TEST_F(Shell, EndsACommandByAnInterruptAndItsLateAnswerIsNobodys)
{
    std::promise<void> asked, release;
    bool first = true;
    const FakeService service([&](const board_request &request, board_answer *answer) {
        if (!first) return rows(384, R"([{"pon_port":1,"state":"second"}])")(request, answer);
        first = false;
        asked.set_value();
        release.get_future().wait();
        rows(384, R"([{"pon_port":1,"state":"first"}])")(request, answer);
    });
    Session session({"--socket-dir", service.folder(), "--timeout", "600000", "shell"});
    session.expect(prompt);
    session.type("onu list 1\r");
    const bool waits = asked.get_future().wait_for(std::chrono::minutes(1)) == std::future_status::ready;
    if (waits) session.type(interrupt);
    session.expect("ponctl [130]> ");
    release.set_value();
    ASSERT_TRUE(waits);
    session.type("onu list 1\r");
    EXPECT_THAT(session.expect("second"), Not(HasSubstr("first")));
    session.expect(prompt);
}

TEST_F(Shell, HasItsPromptOnALineOfItsOwnBehindAnInterrupt)
{
    const FakeService service;
    Session session({"--socket-dir", service.folder(), "shell"});
    session.expect(prompt);
    session.type("port stats 1 --watch 1000\r");
    session.expect("frames_1024_1518");
    session.expect("\x1b[?7h"); // this ends the drawing of a reading
    session.type(interrupt);
    const std::string olt = service.folder().substr(service.folder().rfind('/') + 1);
    session.expect("^C\r\n" + olt + " ponctl> ");
}

} // namespace
