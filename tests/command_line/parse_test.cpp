// These tests read command lines by a tree of commands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command_line/help.h"
#include "command_line/parse.h"

namespace
{

using namespace command_line;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Words = std::vector<std::string>;
using Program = Command<std::string(int)>;

struct Sent {
    std::string place;
    std::optional<std::string> text;
    Words tags;
    bool again = false;
};

std::string send(int times, const Sent &sent)
{
    return std::to_string(times) + " to " + sent.place + ": " + sent.text.value_or("nothing") +
           (sent.again ? " again" : "") + ", tags " + std::to_string(sent.tags.size());
}

std::string list(int times)
{
    return "listed " + std::to_string(times);
}

bool is_digits(const std::string &word)
{
    return !word.empty() && word.find_first_not_of("0123456789") == std::string::npos;
}

// The program of these tests has every kind of command, argument and option.
class CommandLine : public testing::Test
{
protected:
    CommandLine()
    {
        program.option("-h,--help", Help{}, "print this help");
        program.option("--version", Version{"post 2"}, "print the version");
        program.option("-o,--output", &form, "form of the output", "table|json");
        program.option("--watch", &interval, "read again and again", "SECONDS").may_leave_out_value({"2", is_digits});
        program.option("--ports", &ports, "how many ports", "N").is_within(1, 16);

        Program &post = program.add("post", "Posts things");
        Program &letter = post.add("letter", "Posts a letter");
        Sent &sent = letter.runs(send);
        letter.argument("PLACE", &sent.place, "where it goes").is_required();
        letter.argument("TEXT", &sent.text, "what stands in it");
        letter.option("--tag", &sent.tags, "a tag; may be repeated", "TAG");
        const Operand &again = letter.option("--again", &sent.again, "once more");
        letter.option("--why", &reason, "the reason", "TEXT").needs(again);
        letter.footer = "A letter takes a day.";
        post.add("list", "Lists what was posted").runs(list);
    }

    std::string run(const Words &words, int times = 1)
    {
        const Line line = parse(program, words);
        return static_cast<const Program &>(*line.command).run(times);
    }
    std::string error(const Words &words, Manner manner = Manner::filled)
    {
        try {
            parse(program, words, manner);
        } catch (const WrongLine &wrong) {
            return wrong.what();
        }
        return "no error";
    }
    std::string text(const Words &words)
    {
        try {
            parse(program, words);
        } catch (const TextWanted &wanted) {
            return wanted.text;
        }
        return "no text";
    }

    Program program{"post", "Is a post office."};
    std::string form = "table", interval, reason;
    std::optional<uint32_t> ports;
};

TEST_F(CommandLine, RunsWhatItNamesWithWhatItGives)
{
    EXPECT_EQ(run({"post", "letter", "Rome"}, 3), "3 to Rome: nothing, tags 0");
    EXPECT_EQ(run({"post", "list"}), "listed 1");
}

TEST_F(CommandLine, PutsWhatItGivesWhereTheOperandsSay)
{
    EXPECT_EQ(run({"post", "letter", "--tag", "a", "Rome", "hello", "--tag=b", "--again"}),
              "1 to Rome: hello again, tags 2");
}

TEST_F(CommandLine, HasOptionsOfTheProgramAnywhere)
{
    parse(program, {"post", "list", "-o", "json", "--ports", "16"});
    EXPECT_EQ(form, "json");
    EXPECT_EQ(ports, 16u);
}

TEST_F(CommandLine, MayLeaveOutAValue)
{
    parse(program, {"--watch", "post", "list"});
    EXPECT_EQ(interval, "2");
}

TEST_F(CommandLine, MayGiveAValueThatCouldBeLeftOut)
{
    parse(program, {"post", "list", "--watch", "7"});
    EXPECT_EQ(interval, "7");
}

TEST_F(CommandLine, LeavesWordsBehindTwoDashesAlone)
{
    EXPECT_THAT(with_left_out_values(program, {"--watch", "--", "--watch"}), ElementsAre("--watch=2", "--", "--watch"));
}

TEST_F(CommandLine, KnowsWhatWasGiven)
{
    const Line line = parse(program, {"post", "letter", "Rome", "--again"});
    EXPECT_TRUE(line.gives("--again"));
    EXPECT_TRUE(line.gives("PLACE"));
    EXPECT_FALSE(line.gives("--tag"));
}

TEST_F(CommandLine, SaysWhatIsWrong)
{
    EXPECT_EQ(error({}), "which command? 'post --help' lists them");
    EXPECT_EQ(error({"post"}), "which command? 'post post --help' lists them");
    EXPECT_EQ(error({"post", "lst"}), "there is no command 'lst'; did you mean list?");
    EXPECT_EQ(error({"post", "zzzzzz"}), "there is no command 'zzzzzz'; 'post post --help' lists them");
    EXPECT_EQ(error({"post", "list", "--outptu"}), "there is no option --outptu; did you mean --output?");
    EXPECT_EQ(error({"post", "list", "x"}), "'x' is a word too many; see 'post post list --help'");
    EXPECT_EQ(error({"post", "letter"}), "PLACE: missing; see 'post post letter --help'");
    EXPECT_EQ(error({"post", "letter", "Rome", "-o"}), "--output: give it one value; see 'post post letter --help'");
    EXPECT_THAT(error({"post", "letter", "Rome", "--why", "x"}), HasSubstr("--why requires --again"));
    EXPECT_THAT(error({"post", "list", "--ports", "17"}), HasSubstr("17 not in range 1 to 16"));
}

TEST_F(CommandLine, IsRefusedByWhatLooksAtItAsAWhole)
{
    program.commands.front()->commands.back()->check = [] { throw WrongLine("not today"); };
    EXPECT_EQ(error({"post", "list"}), "not today");
    EXPECT_EQ(error({"post", "letter", "Rome"}), "no error");
}

TEST_F(CommandLine, ShowsTheHelpWhereWhatLooksAtItWantsThat)
{
    program.commands.front()->commands.back()->check = [] { throw ShowHelp(); };
    EXPECT_EQ(text({"post", "list"}), help_of(*program.commands.front()->commands.back()));
}

TEST_F(CommandLine, WithAVersionOptionShowsTheVersion)
{
    EXPECT_EQ(text({"--version"}), "post 2\n");
}

TEST_F(CommandLine, WithAHelpOptionShowsTheHelpOfTheCommand)
{
    EXPECT_EQ(text({"post", "letter", "--help"}), "Posts a letter\n"
                                                  "Usage: post post letter [OPTIONS] PLACE [TEXT]\n"
                                                  "\n"
                                                  "Positionals:\n"
                                                  "  PLACE                       where it goes\n"
                                                  "  TEXT                        what stands in it\n"
                                                  "\n"
                                                  "Options:\n"
                                                  "  -h,--help                   print this help\n"
                                                  "  --tag TAG ...               a tag; may be repeated\n"
                                                  "  --again                     once more\n"
                                                  "  --why TEXT                  the reason\n"
                                                  "\n"
                                                  "A letter takes a day.\n");
}

TEST_F(CommandLine, WideHelpHasTypesAndBounds)
{
    try {
        parse(program, {"--help"}, Manner::wide);
        FAIL();
    } catch (const TextWanted &wanted) {
        EXPECT_THAT(wanted.text, HasSubstr("--ports N:UINT in [1 - 16]  how many ports\n"));
    }
    EXPECT_THAT(error({"--ports", "0"}, Manner::wide), HasSubstr("\nRun with --help for more information.\n"));
}

TEST_F(CommandLine, LeavesHiddenCommandsOutOfTheHelpOnly)
{
    Syntax &listing = *program.commands.front()->commands.back();
    listing.hidden = true;
    EXPECT_THAT(help_of(*program.commands.front()), Not(HasSubstr("Lists what")));
    EXPECT_EQ(all_commands_of(program).size(), 3u);
    EXPECT_EQ(run({"post", "list"}), "listed 1");
}

TEST(OperandOfACommandLine, KnowsWhatItIsCalled)
{
    std::string into;
    Program program("tool", "Does.");
    const Operand &option = program.option("-o,--output", &into, "form", "table|json");
    const Operand &argument = program.argument("PORT", &into, "port");
    EXPECT_THAT(option.spellings(), ElementsAre("-o", "--output"));
    EXPECT_EQ(option.plain_name(), "output");
    EXPECT_THAT(option.choices(), ElementsAre("table", "json"));
    EXPECT_EQ(argument.value_name(), "PORT");
    EXPECT_THAT(argument.choices(), IsEmpty());
}

} // namespace
