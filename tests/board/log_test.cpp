// These tests check log lines. Each test logs in a child process, because BOARD_LOG is read once for each process.
#include <cerrno>
#include <cstdlib>
#include <regex>
#include <sstream>

#include <gtest/gtest.h>

#include "board/service.h"
#include "board/util.h"
#include "support.h"

namespace
{

// Takes from each line the time, program and process that it must begin with.
std::string without_starts(const std::string &log)
{
    static const std::regex start(
        "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}Z board_settings_test\\[[0-9]+\\] ");
    std::istringstream in(log);
    std::string all;
    for (std::string line; std::getline(in, line);) {
        std::smatch found;
        EXPECT_TRUE(std::regex_search(line, found, start, std::regex_constants::match_continuous)) << line;
        all += line.substr(static_cast<size_t>(found.length())) + "\n";
    }
    return all;
}

// Returns what `body` logs when BOARD_LOG has this value, without the starts of lines.
std::string logged(const char *setting, const std::function<void()> &body)
{
    return without_starts(log_of([&] {
        in_child([&] {
            if (setting)
                setenv("BOARD_LOG", setting, 1);
            else
                unsetenv("BOARD_LOG");
            body();
            return 0;
        });
    }));
}

void log_both()
{
    userlog_err("fails", 12, "ipc msg failed. rv=%d\n", -3);
    userlog_debug("looks", 34, "nothing there");
}

TEST(Log, has_errors_only_unless_told_otherwise)
{
    EXPECT_EQ(logged(nullptr, log_both), "ERROR fails:12: ipc msg failed. rv=-3\n");
    EXPECT_EQ(logged("err", log_both), "ERROR fails:12: ipc msg failed. rv=-3\n");
}

TEST(Log, has_everything_with_debug)
{
    EXPECT_EQ(logged("debug", log_both), "ERROR fails:12: ipc msg failed. rv=-3\nDEBUG looks:34: nothing there\n");
}

TEST(Log, has_nothing_with_off)
{
    EXPECT_EQ(logged("off", log_both), "");
}

TEST(Log, is_what_a_program_says_where_the_environment_says_nothing)
{
    const auto quiet = [] {
        board_log_default("off");
        log_both();
        board_log_default("debug");
        userlog_debug("looks", 56, "again");
    };
    EXPECT_EQ(logged(nullptr, quiet), "DEBUG looks:56: again\n");
    EXPECT_EQ(logged("", quiet), "DEBUG looks:56: again\n");
    EXPECT_EQ(logged("err", quiet), "ERROR fails:12: ipc msg failed. rv=-3\n");
}

TEST(Log, goes_past_standard_error_to_the_systems_log)
{
    EXPECT_EQ(logged("debug,syslog", log_both), "");
}

TEST(Log, ends_each_line_with_one_newline)
{
    EXPECT_EQ(logged("err", [] { userlog_err("f", 1, "%s", ""); }), "ERROR f:1: \n");
    EXPECT_EQ(logged("err", [] { userlog_err("f", 1, "\n"); }), "ERROR f:1: \n");
}

TEST(Log, lets_no_text_look_like_two_lines)
{
    EXPECT_EQ(logged("err", [] { userlog_err("f", 1, "%s", "one\nERROR g:2: two\r\033[2J\n"); }),
              "ERROR f:1: one ERROR g:2: two  [2J\n");
}

TEST(Log, tells_a_terminal_nothing)
{
    EXPECT_EQ(logged("err",
                     [] {
                         userlog_err("f", 1, "%s",
                                     "a\xc3\xa4 \xc2\x9b"
                                     "2J\xe2\x80\xae"
                                     "b\x9b");
                     }),
              "ERROR f:1: a\xc3\xa4   2J   b \n");
}

TEST(Log, names_the_process_that_logs)
{
    const std::string log = log_of([] {
        in_child([] {
            userlog_err("f", static_cast<int>(getpid()), "x");
            return 0;
        });
    });
    std::smatch found;
    ASSERT_TRUE(std::regex_search(log, found, std::regex("\\[([0-9]+)\\] ERROR f:([0-9]+): x\n"))) << log;
    EXPECT_EQ(found[1], found[2]);
}

TEST(Log, names_the_first_word_of_its_setting_that_it_does_not_know)
{
    const std::pair<const char *, std::string> settings[] = {{"", ""},          {"off", ""},      {"debug,syslog", ""},
                                                             {"err,", ""},      {"warn", "warn"}, {"debug,x,y", "x"},
                                                             {"Debug", "Debug"}};
    for (const auto &[setting, wrong] : settings)
        EXPECT_EQ(in_child([&, &text = setting, &word = wrong] {
                      setenv("BOARD_LOG", text, 1);
                      const char *found = board_log_unknown_word();
                      return std::string(found ? found : "") == word ? 0 : 1;
                  }),
                  0)
            << setting;
}

TEST(Log, cuts_a_line_that_is_too_long)
{
    const std::string line = logged("err", [] { userlog_err("f", 1, "%s\n", std::string(5000, 'x').c_str()); });
    EXPECT_EQ(line.substr(0, 12), "ERROR f:1: x");
    EXPECT_GT(line.size(), 900u);
    EXPECT_LT(line.size(), 1100u);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
}

TEST(Log, leaves_errno_alone)
{
    EXPECT_EQ(logged("err",
                     [] {
                         errno = ENOENT;
                         userlog_err("f", 1, "first");
                         userlog_err("f", 2, "%d", errno == ENOENT);
                     }),
              "ERROR f:1: first\nERROR f:2: 1\n");
}

} // namespace
