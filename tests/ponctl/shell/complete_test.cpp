// These tests check what may be typed next on a command line.
#include <filesystem>
#include <fstream>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/program.h"
#include "shell/complete.h"
#include "text/words.h"

namespace
{

using namespace ponctl;
using testing::AllOf;
using testing::Contains;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Words = std::vector<std::string>;

// Returns what the tool would answer for an OLT with two ports.
std::string an_olt(const Words &words)
{
    static const std::map<Words, std::string> answers{
        {{"port", "list"}, R"([{"pon_port":1,"bound":2,"online":1},{"pon_port":2,"bound":0,"online":0}])"},
        {{"onu", "list", "1"},
         R"([{"onu_id":5,"mac":"02:00:5e:00:00:05","state":"online","description":"shop"},)"
         R"({"onu_id":17,"mac":"02:00:5e:00:00:17","state":"offline","description":null},)"
         R"({"onu_id":null,"mac":"02:00:5f:00:00:01","state":"waiting","description":null}])"},
        {{"blacklist", "1"}, R"([{"id":3,"mac":"02:00:66:00:00:01"}])"},
        {{"onu", "settings"}, R"([{"command":"vlan","brief":"VLANs"},{"command":"mc-vlan","brief":"more"}])"},
        {{"onu", "settings", "vlan"},
         R"([{"field":"mode","type":"byte","values":"transparent,tag"},{"field":"pvid","type":"number","values":""}])"},
        {{"profile", "kinds"}, R"([{"kind":"line"},{"kind":"sla"}])"},
        {{"profile", "list", "sla"}, R"([{"id":1,"name":"gold"}])"},
        {{"upgrade", "types"}, R"([{"name":"basic"}])"},
        {{"onu", "list", "1", "--limit", "0", "-o", "csv"}, "onu_id,mac,distance\n"},
    };
    const auto answer = answers.find(words);
    return answer == answers.end() ? std::string() : answer->second;
}

std::string no_service(const Words &)
{
    return {};
}

Words words_of(const Completion &completion)
{
    Words words;
    for (const Candidate &candidate : completion.candidates)
        words.push_back(candidate.word);
    return words;
}

Words after(const Words &before, const std::string &word = {})
{
    return words_of(complete(before, word, an_olt));
}

TEST(Completion, FindsTheColumnsOfTheListing)
{
    EXPECT_THAT(after({"onu", "list", "1", "--columns"}, "mac,"), ElementsAre("mac,onu_id", "mac,mac", "mac,distance"));
    EXPECT_THAT(after({"onu", "list", "1", "--sort"}, "-d"), ElementsAre("-distance"));
    EXPECT_THAT(after({"onu", "list", "1", "--where"}, "onu_id=5 and d"), ElementsAre("onu_id=5 and distance"));
}

TEST(Completion, LeavesPathsToAShellOfTheSystem)
{
    EXPECT_EQ(complete({"config", "load"}, "", no_service).paths, Paths::files);
    EXPECT_EQ(complete({"--socket-dir"}, "", no_service).paths, Paths::folders);
    EXPECT_EQ(complete({"onu", "list"}, "", no_service).paths, Paths::none);
}

TEST(Completion, FindsEveryCommandAndOptionOfTheProgram)
{
    GlobalOptions of_a_line;
    of_a_line.nested = true;
    const Program program(of_a_line);
    size_t seen = 0;
    for (const command_line::Syntax *command : all_commands_of(program.tree)) {
        const Words words = command->parent ? text::split(command->path(), ' ') : Words();
        if (!words.empty()) {
            const Words before(words.begin(), words.end() - 1);
            EXPECT_THAT(after(before, words.back()), Contains(words.back()));
        }
        for (const command_line::Operand &option : command->options) {
            const std::string name = "--" + option.plain_name();
            EXPECT_THAT(after(words, name), Contains(name)) << command->name;
        }
        ++seen;
    }
    EXPECT_GT(seen, 80u);
}

TEST(Completion, OffersNoShellInAShell)
{
    EXPECT_THAT(after({}), AllOf(Contains("onu"), Not(Contains("shell")), Not(Contains("batch"))));
}

TEST(Completion, OffersOptionsOnlyWhereADashStartsThem)
{
    EXPECT_THAT(after({"onu", "release", "1"}), Not(Contains("--yes")));
    EXPECT_THAT(after({"onu", "release", "1"}, "--y"), ElementsAre("--yes"));
    EXPECT_THAT(after({"onu", "release", "1", "--yes"}, "--y"), IsEmpty());
}

TEST(Completion, OffersTheGlobalOptionsEverywhere)
{
    EXPECT_THAT(after({"onu", "list"}, "--time"), ElementsAre("--timeout"));
    EXPECT_THAT(after({"-o", "json", "onu"}, "sho"), ElementsAre("show"));
}

TEST(Completion, OffersTheChoicesThatTheHelpNames)
{
    EXPECT_THAT(after({"-o"}), AllOf(Contains("table"), Contains("json"), Contains("hex")));
    EXPECT_THAT(after({"auth", "set", "1"}), ElementsAre("mac", "loid", "loid-password", "hybrid"));
    EXPECT_THAT(after({"p2p", "entry", "1", "2"}), ElementsAre("forward", "drop", "remove"));
    EXPECT_THAT(after({"p2p", "set", "1", "--broadcast"}), ElementsAre("on", "off"));
    EXPECT_THAT(after({"p2p", "set", "1"}, "--rest=d"), ElementsAre("--rest=drop"));
    EXPECT_THAT(after({"raw", "232"}, "dgram"), ElementsAre("dgram-set", "dgram-get"));
    EXPECT_THAT(after({"onu", "services", "1/5", "wan"}, "w"), ElementsAre("wan", "wlan"));
}

TEST(Completion, OffersNoChoicesWhereTheHelpNamesNone)
{
    EXPECT_THAT(after({"debug", "fdb-dump"}), ElementsAre("1", "2"));
    EXPECT_THAT(after({"sla", "set", "1", "5", "--weight"}), IsEmpty());
    EXPECT_THAT(after({"trace", "--timeout"}), IsEmpty());
}

TEST(Completion, AsksTheServiceForPortsAndOnus)
{
    EXPECT_THAT(after({"onu", "show"}), ElementsAre("1", "2"));
    EXPECT_THAT(after({"onu", "show", "1"}, "1"), ElementsAre("17"));
    EXPECT_THAT(after({"onu", "show", "1"}, "02:00:5f"), ElementsAre("02:00:5f:00:00:01"));
    EXPECT_THAT(after({"onu", "bind", "1"}, "02:00:5e:00:00:0"), ElementsAre("02:00:5e:00:00:05"));
    EXPECT_THAT(after({"sla", "show", "1"}), ElementsAre("5", "17"));
    EXPECT_THAT(after({"optics", "1", "--onu"}), ElementsAre("5", "17"));
}

TEST(Completion, SaysWhatItIsThatTheServiceKnows)
{
    EXPECT_EQ(complete({"onu", "show"}, "1", an_olt).candidates.front().help, "2 bound, 1 online");
    EXPECT_EQ(complete({"sla", "show", "1"}, "5", an_olt).candidates.front().help, "02:00:5e:00:00:05, online, shop");
}

TEST(Completion, AsksForTheBlackListWhereOnusAreTakenOffIt)
{
    EXPECT_THAT(after({"onu", "allow", "1"}), ElementsAre("02:00:66:00:00:01"));
    EXPECT_THAT(after({"onu", "allow", "1", "--ids"}), ElementsAre("3"));
}

TEST(Completion, BuildsSetsOfOnus)
{
    EXPECT_THAT(after({"onu", "info"}), ElementsAre("1/", "2/"));
    EXPECT_THAT(after({"onu", "info"}, "1/"), ElementsAre("1/5", "1/17", "1/all"));
    EXPECT_THAT(after({"onu", "info"}, "1/3-"), ElementsAre("1/3-5", "1/3-17"));
    EXPECT_THAT(after({"onu", "reject", "1"}, "3,1"), ElementsAre("3,17"));
    EXPECT_THAT(after({"idset"}), IsEmpty());
}

TEST(Completion, NeedsNoService)
{
    EXPECT_THAT(words_of(complete({"onu", "show"}, "", no_service)), IsEmpty());
    EXPECT_EQ(complete({"onu", "show"}, "", no_service).expected.front().word, "PORT");
    EXPECT_THAT(words_of(complete({"onu", "show"}, "", [](const Words &) { return "{ no rows"; })), IsEmpty());
}

TEST(Completion, KnowsOperationsAndTheirArguments)
{
    EXPECT_THAT(after({"call"}, "bsp_pon_no_bind_off"), ElementsAre("bsp_pon_no_bind_offline_onu_all"));
    const Words call{"call", "bsp_pon_bind_onu_spec_id"};
    EXPECT_THAT(after(call, "p"), ElementsAre("pon_port="));
    EXPECT_THAT(after({call[0], call[1], "pon_port=1"}, "p"), IsEmpty());
    EXPECT_THAT(after(call, "pon_port="), ElementsAre("pon_port=1", "pon_port=2"));
    EXPECT_THAT(after({call[0], call[1], "pon_port=1"}, "onu_id=1"), ElementsAre("onu_id=17"));
    EXPECT_THAT(after({call[0], call[1], "pon_port=1"}, "mac=02:00:5f"), ElementsAre("mac=02:00:5f:00:00:01"));
    EXPECT_THAT(after({"call", "bsp_pon_exec_get_json_"}, "cmd=BSP_CMD_VIEW_ONU_INFO_W"),
                ElementsAre("cmd=BSP_CMD_VIEW_ONU_INFO_WEB"));
    EXPECT_THAT(after({"call", "bsp_pon_get_onu_blacklist"}, "record.pon"), ElementsAre("record.pon_port="));
    EXPECT_THAT(after({"call", "bsp_pon_onu_ctc_oam_print"}, "value="),
                ElementsAre("value=nothing", "value=errors", "value=messages"));
    EXPECT_THAT(after({"call", "bsp_debug_plat_ge_phy_set"}, "value=reset,i"), ElementsAre("value=reset,isolate"));
}

TEST(Completion, KnowsChannelsAndTheirFields)
{
    EXPECT_THAT(after({"raw"}, "BSP_MSG_PON"), Contains("BSP_MSG_PON"));
    EXPECT_THAT(after({"raw", "BSP_MSG_PON", "get"}, "pon"), Contains("pon_port="));
    EXPECT_THAT(after({"raw", "BSP_MSG_PON", "get"}, "pon_port="), ElementsAre("pon_port=1", "pon_port=2"));
}

TEST(Completion, KnowsSettingsAndProfiles)
{
    EXPECT_THAT(after({"onu", "set", "1/5"}), ElementsAre("vlan", "mc-vlan"));
    EXPECT_THAT(after({"onu", "set", "1/5", "vlan", "mode=1"}), ElementsAre("pvid="));
    EXPECT_THAT(after({"onu", "set", "1/5", "vlan"}, "mode=t"), ElementsAre("mode=transparent", "mode=tag"));
    EXPECT_THAT(after({"onu", "set", "1/5", "vlan"}, "mode=tag,t"),
                ElementsAre("mode=tag,transparent", "mode=tag,tag"));
    EXPECT_THAT(after({"onu", "set", "1/5", "vlan"}, "pvid="), IsEmpty());
    EXPECT_THAT(after({"profile", "show"}), ElementsAre("line", "sla"));
    EXPECT_THAT(after({"profile", "show", "sla"}), ElementsAre("gold"));
    EXPECT_THAT(after({"upgrade", "bind", "1"}), ElementsAre("basic"));
}

TEST(Completion, KnowsFiles)
{
    char folder[] = "/tmp/ponctl_files_XXXXXX";
    ASSERT_TRUE(mkdtemp(folder));
    const std::string start = std::string(folder) + "/";
    std::ofstream(start + "olt one.cfg");
    std::ofstream(start + ".hidden");
    std::filesystem::create_directory(start + "images");
    EXPECT_THAT(after({"config", "load"}, start), ElementsAre(start + "images/", start + "olt one.cfg"));
    EXPECT_THAT(after({"config", "load"}, start + ".h"), ElementsAre(start + ".hidden"));
    EXPECT_EQ(press_tab("config load " + start + "o", an_olt).typed, "lt\\ one.cfg ");
    EXPECT_EQ(press_tab("config load '" + start + "o", an_olt).typed, "lt one.cfg' ");
    std::filesystem::remove_all(folder);
}

TEST(Tab, TypesTheRestOfTheOnlyCandidate)
{
    EXPECT_EQ(press_tab("whit", an_olt).typed, "elist ");
    EXPECT_EQ(press_tab("onu info 2", an_olt).typed, "/");
    EXPECT_EQ(press_tab("onu why 2", an_olt).typed, "/");
    EXPECT_EQ(press_tab("call bsp_pon_bind_onu_spec_id pon", an_olt).typed, "_port=");
}

TEST(Tab, TypesWhatCandidatesShareBeforeItShowsThem)
{
    EXPECT_EQ(press_tab("onu show 1 02", an_olt).typed, ":00:5");
    EXPECT_THAT(press_tab("onu show 1 02", an_olt).choice, IsEmpty());
    EXPECT_EQ(press_tab("onu show 1 02:00:5", an_olt).typed, "");
    EXPECT_EQ(press_tab("onu show 1 02:00:5", an_olt).choice.size(), 3u);
}

TEST(Tab, DoesNothingInAComment)
{
    EXPECT_EQ(press_tab("onu list # whit", an_olt).typed, "");
}

TEST(HelpAtTheCursor, NamesCommandsWithTheirHelp)
{
    EXPECT_THAT(help_at("onu re", an_olt),
                AllOf(HasSubstr("  reject   Puts ONUs on the blacklist"), HasSubstr("  release  Releases the binding"),
                      Not(HasSubstr("list\n"))));
}

TEST(HelpAtTheCursor, NamesArgumentsWithTypesAndUnits)
{
    EXPECT_THAT(help_at("onu show ", an_olt), AllOf(ContainsRegex("  PORT +PON port number"), HasSubstr("--output")));
    EXPECT_THAT(help_at("sla set 1 5 --fixed ", an_olt), HasSubstr("KBITS  upstream kbit/s"));
    EXPECT_THAT(help_at("call bsp_pon_bind_onu_spec_id m", an_olt), HasSubstr("mac=      mac; ONU MAC address"));
}

TEST(HelpAtTheCursor, SaysWhereNothingFollows)
{
    EXPECT_EQ(help_at("onu list 1 2", an_olt), "  nothing more\n");
}

} // namespace
