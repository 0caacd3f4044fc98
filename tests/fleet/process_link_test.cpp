// How an OLT is reached by a program that speaks over its standard input and output. Shells play the program.
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fleet/client/process_link.h"
#include "usage_error.h"

namespace
{

using namespace fleet;
using catalogue::Class;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr uint32_t long_time = 30'000; // milliseconds

const std::string hello = R"(echo '{"hello":{"version":"1.2","allow":"write"}}'; )";
// Answers each request with itself.
const std::string echo = R"(exec sed -u -E 's/"class":"[^"]*","request":/"answer":/')";

std::vector<std::string> shell(const std::string &script)
{
    return {"/bin/sh", "-c", script};
}

std::string error_of_starting(const std::vector<std::string> &words, uint32_t milliseconds = long_time)
{
    try {
        ProcessLink link(words, milliseconds);
    } catch (const Unreachable &error) {
        return error.what();
    }
    return "started";
}

TEST(ProcessLink, ExchangesLines)
{
    ProcessLink link(shell(hello + echo), long_time);
    EXPECT_EQ(link.hello(), (Hello{"1.2", Class::write}));
    EXPECT_EQ(link.exchange("{\"a\":1}", Class::read, long_time), "{\"a\":1}");
    EXPECT_EQ(link.exchange("{\"b\":[2,\"\\n\"]}", Class::write, long_time), "{\"b\":[2,\"\\n\"]}");
    EXPECT_EQ(link.lost(), "");
}

TEST(ProcessLink, CarriesWhatIsLongerThanAPipe)
{
    ProcessLink link(shell(hello + echo), long_time);
    const std::string request = "{\"a\":\"" + std::string(400'000, 'x') + "\"}";
    EXPECT_EQ(link.exchange(request, Class::read, long_time), request);
}

TEST(ProcessLink, PassesOverAnswersThatAreLate)
{
    ProcessLink link(shell(hello + R"(read a; read b; echo '{"correlation":"1","answer":"late"}';
                                      echo '{"correlation":"2","answer":"good"}'; cat)"),
                     long_time);
    EXPECT_EQ(link.exchange("1", Class::read, 10), std::nullopt);
    EXPECT_EQ(link.exchange("2", Class::read, long_time), "\"good\"");
}

TEST(ProcessLink, SaysWhyAProgramDoesNotStart)
{
    EXPECT_THAT(error_of_starting({"/there/is/no/program", "x"}),
                "/there/is/no/program x cannot be run: No such file or directory");
    EXPECT_THAT(error_of_starting(shell("echo 'Host key is wrong.' >&2; exit 255")),
                AllOf(StartsWith("/bin/sh -c "), HasSubstr(" has ended; it says: Host key is wrong.")));
    EXPECT_THAT(error_of_starting(shell("echo 'Welcome!'; cat")), HasSubstr(" is not what answers for an OLT: "));
    EXPECT_THAT(error_of_starting(shell("printf '\\033[31m' >&2")), HasSubstr("it says: \\x1b[31m"));
    EXPECT_THAT(error_of_starting(shell("cat"), 10), HasSubstr(" said nothing within 10 ms"));
    EXPECT_THAT(error_of_starting({}), "there is no program to run");
}

TEST(ProcessLink, SaysThatItsProgramEnded)
{
    ProcessLink link(shell(hello + "read line; echo 'out of memory' >&2"), long_time);
    EXPECT_EQ(link.exchange("1", Class::write, long_time), std::nullopt) << "nobody knows what came of it";
    EXPECT_THAT(link.lost(), HasSubstr(" has ended; it says: out of memory"));
    try {
        link.exchange("2", Class::write, long_time);
        ADD_FAILURE() << "nothing can be sent any more";
    } catch (const Unreachable &error) {
        EXPECT_EQ(error.what(), link.lost());
    }
}

TEST(ProcessLink, TakesTheAnswerOfAProgramThatEndsBehindIt)
{
    ProcessLink link(shell(hello + R"(read line; echo '{"correlation":"1","answer":7}')"), long_time);
    EXPECT_EQ(link.exchange("1", Class::write, long_time), "7");
}

TEST(ProcessLink, SaysWhatIsNoAnswer)
{
    for (const char *line : {"nonsense", "{}", "{\"correlation\":7,\"answer\":1}", "[1]", ""}) {
        ProcessLink link(shell(hello + "read line; echo '" + line + "'; cat"), long_time);
        EXPECT_EQ(link.exchange("1", Class::write, long_time), std::nullopt) << line;
        EXPECT_THAT(link.lost(), HasSubstr(" says what is no answer: ")) << line;
        EXPECT_THROW(link.exchange("2", Class::write, long_time), Unreachable) << line;
    }
}

TEST(ProcessLink, EndsItsProgram)
{
    pid_t child = 0;
    {
        ProcessLink link(shell(hello + R"(read line; echo '{"correlation":"1","answer":'$$'}'; cat)"), long_time);
        child = std::stoi(link.exchange("1", Class::read, long_time).value());
        EXPECT_EQ(kill(child, 0), 0);
    }
    EXPECT_NE(kill(child, 0), 0);
}

TEST(SshWords, AskNobodyAndTakeNoOptions)
{
    EXPECT_THAT(ssh_words("hut-3.example.net"), testing::Contains("BatchMode=yes"));
    EXPECT_THAT(ssh_words("hut-3.example.net").back(), "ponctl serve --stdio");
    EXPECT_THAT(usage_error_of([] { ssh_words("-oProxyCommand=reboot"); }), HasSubstr("is no host"));
    EXPECT_THAT(usage_error_of([] { ssh_words(""); }), HasSubstr("is no host"));
}

} // namespace
