// These tests run ponctl config as a process against a fake service.
#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue.h"
#include "fake_service.h"
#include "text/hex.h"
#include "text/sha256.h"

namespace
{

using testing::HasSubstr;

// Config makes a folder that exists as long as the test.
class Config : public testing::Test
{
protected:
    Config()
    {
        std::string name = testing::TempDir() + "ponctl-XXXXXX";
        folder = mkdtemp(name.data());
        setenv("XDG_STATE_HOME", folder.c_str(), 1);
    }
    ~Config() override
    {
        unsetenv("XDG_STATE_HOME");
        std::filesystem::remove_all(folder);
    }

    std::string path(const char *name) const { return (folder / name).string(); }
    void write(const char *name, const std::string &text) const { std::ofstream(path(name)) << text; }
    std::string content(const char *name) const
    {
        std::ifstream file(path(name));
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // Returns a handler that answers with this configuration as a file.
    static FakeService::Handler answer_with(const std::string &configuration)
    {
        return [configuration](const board_request &, board_answer *answer) {
            const auto size = static_cast<uint32_t>(configuration.size());
            std::array<char, 24 + sizeof BOARD_RESULT_FILE> data{};
            std::memcpy(&data[8], &size, sizeof size);
            std::memcpy(&data[24], BOARD_RESULT_FILE, sizeof BOARD_RESULT_FILE);
            board_answer_data(answer, data.data(), data.size());
            board_answer_file(answer, configuration.data(), size);
        };
    }

    std::filesystem::path folder;
};

TEST_F(Config, IsSavedInAFileThatOnlyItsOwnerReads)
{
    write("saved", "old");
    const FakeService service(answer_with("line 1\nline 2\n"));
    EXPECT_EQ(service.ponctl({"config", "save", path("saved")}).code, 0);
    EXPECT_EQ(content("saved"), "line 1\nline 2\n");
    EXPECT_EQ(std::filesystem::status(path("saved")).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(service.received().at(0).word(0), 1u);
    EXPECT_EQ(service.received().at(0).channel, 235u);
}

TEST_F(Config, IsSavedToStandardOutput)
{
    const FakeService service(answer_with("line 1\nline 2\n"));
    EXPECT_EQ(service.ponctl({"config", "save", "-"}).out, "line 1\nline 2\n");
}

TEST_F(Config, AFileStaysWhereTheServiceRefuses)
{
    write("saved", "old");
    const FakeService service(status(4026));
    EXPECT_EQ(service.ponctl({"config", "save", path("saved")}).code, 1);
    EXPECT_EQ(content("saved"), "old");
}

TEST_F(Config, AFileThatCannotBeWrittenIsNamed)
{
    const FakeService service(answer_with("text"));
    const Finished finished = service.ponctl({"config", "save", "/nowhere/olt"});
    EXPECT_EQ(finished.code, 4);
    EXPECT_THAT(finished.err, HasSubstr("/nowhere/olt: cannot be written"));
}

TEST_F(Config, IsLoadedInPartsAndThenTaken)
{
    const std::string text = std::string(4048, 'a') + "rest";
    const text::Sha256 digest = text::sha256(text);
    const auto digest_at = [](const Received &request, size_t offset) {
        text::Sha256 found{};
        if (request.record.size() >= offset + found.size())
            std::copy_n(request.record.begin() + static_cast<ptrdiff_t>(offset), found.size(), found.begin());
        return found;
    };
    write("saved", text);
    const FakeService service;
    EXPECT_EQ(service.ponctl({"config", "load", path("saved"), "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[0].word(0), 2u);
    EXPECT_EQ(received[0].word(24), 0u);
    EXPECT_EQ(received[0].word(28), 4052u);
    EXPECT_EQ(received[0].word(32), 4048u);
    EXPECT_EQ(digest_at(received[0], 36), digest);
    EXPECT_EQ(received[1].word(24), 4048u);
    EXPECT_EQ(received[1].word(32), 4u);
    EXPECT_EQ(digest_at(received[1], 36), digest);
    EXPECT_EQ(received[1].text(68), "rest");
    EXPECT_EQ(received[2].word(0), 3u);
    EXPECT_EQ(digest_at(received[2], 24), digest);
    EXPECT_EQ(received[2].call, BOARD_CALL_DGRAM_SET);
}

TEST_F(Config, LoadingStopsAtAPartThatIsRefused)
{
    write("saved", std::string(10000, 'a'));
    const FakeService service(status(4095));
    const Finished finished = service.ponctl({"config", "load", path("saved"), "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr("PON_ERR_BAD_CONFIG"));
    EXPECT_EQ(service.received().size(), 1u);
}

TEST_F(Config, LoadingNeedsAFileAndAConfirmation)
{
    write("saved", "text");
    write("empty", "");
    const FakeService service;
    EXPECT_THAT(service.ponctl({"config", "load", path("saved")}).err, HasSubstr("--yes: missing; loading"));
    EXPECT_THAT(service.ponctl({"config", "load", path("none"), "--yes"}).err, HasSubstr("none"));
    EXPECT_THAT(service.ponctl({"config", "load", path("empty"), "--yes"}).err, HasSubstr("empty is empty"));
    EXPECT_EQ(service.ponctl({"config", "load", path("empty"), "--yes"}).code, 2);
    EXPECT_TRUE(service.received().empty());
}

// Returns the configuration of an OLT with so many ports and these rows.
std::string configuration(uint32_t ports, const std::vector<std::string> &rows)
{
    std::string text =
        R"({"ponsim_configuration":11,"ports":)" + std::to_string(ports) +
        R"(,"tables":{"binding":{"key":["pon_port","onu_id"],"values":["mac","description"],)"
        R"("configured":["mac","description"]},"onu":{"key":["pon_port","mac"],"values":["reboots","upgrade_type"],)"
        R"("configured":["upgrade_type"]},"clock":{"key":["one"],"values":["now"],"configured":[]}}})"
        "\n";
    for (const std::string &row : rows)
        text += row + "\n";
    return text + R"({"rows":)" + std::to_string(rows.size()) + "}\n";
}

std::string binding(uint32_t port, uint32_t id, const std::string &description)
{
    return R"({"table":"binding","row":[)" + std::to_string(port) + "," + std::to_string(id) +
           R"(,{"hex":"02005e100001"},")" + description + "\"]}";
}
std::string onu(uint32_t reboots, const std::string &type)
{
    return R"({"table":"onu","row":[1,{"hex":"02005e100001"},)" + std::to_string(reboots) + ",\"" + type + "\"]}";
}
std::string clock_at(uint32_t now)
{
    return R"({"table":"clock","row":[1,)" + std::to_string(now) + "]}";
}

// Returns the text that was loaded part by part.
std::string loaded(const std::vector<Received> &requests)
{
    std::string text;
    for (const Received &request : requests)
        if (request.word(0) == 2) text += request.text(68).substr(0, request.word(32));
    return text;
}

TEST_F(Config, IsShownByNamesInAStableOrder)
{
    write("saved", configuration(16, {binding(10, 1, "shop"), clock_at(5), binding(2, 17, ""), onu(3, "acme")}));
    const std::string shown = "binding 2/17 mac = 02:00:5e:10:00:01\n"
                              "binding 10/1 mac = 02:00:5e:10:00:01\n"
                              "binding 10/1 description = shop\n"
                              "onu 1/02:00:5e:10:00:01 upgrade_type = acme\n";
    EXPECT_EQ(ponctl({"config", "show", path("saved")}).out, shown);
    const FakeService service(answer_with(content("saved")));
    EXPECT_EQ(service.ponctl({"config", "show"}).out, shown);
    const auto document = parsed(service.ponctl({"config", "show", "-o", "json"}).out);
    EXPECT_STREQ(document[2]["key"].GetString(), "10/1");
    EXPECT_STREQ(document[2]["value"].GetString(), "shop");
}

TEST_F(Config, ShowsTheFieldsOfSettingsAndProfiles)
{
    // A block has the byte order of its OLT, which is that of this machine.
    const auto word = [](uint32_t number) {
        return text::to_hex({reinterpret_cast<const uint8_t *>(&number), sizeof number});
    };
    const std::string fields = word(100) + word(5) + word(20000) + word(100000) + word(16);
    write("saved",
          R"({"ponsim_configuration":11,"ports":1,"tables":{"onu_setting":{"key":["pon_port","mac","command","uni"],)"
          R"("values":["told"],"configured":["told"]},"profile":{"key":["kind","id"],"values":["name","fields"],)"
          R"("configured":["name","fields"]}}})"
          "\n"
          R"({"table":"onu_setting","row":[1,{"hex":"02005e100001"},662,0,{"hex":"01"}]})"
          "\n"
          R"({"table":"onu_setting","row":[1,{"hex":"02005e100001"},4711,0,{"hex":"0a0b"}]})"
          "\n"
          R"({"table":"profile","row":[1,7,"gold",{"hex":")" +
              fields + "\"}]}\n{\"rows\":3}\n");
    const std::string out = ponctl({"config", "show", path("saved")}).out;
    EXPECT_THAT(
        out,
        HasSubstr(
            "onu_setting 1/02:00:5e:10:00:01 command BSP_CMD_ONU_MC_SWITCH_GET uni 0 mode = controllable multicast\n"));
    EXPECT_THAT(out, HasSubstr("onu_setting 1/02:00:5e:10:00:01 command 4711 uni 0 told = hex:0a0b\n"));
    EXPECT_THAT(out, HasSubstr("profile line id 7 name = gold\n"
                               "profile line id 7 vlan = 100\n"
                               "profile line id 7 priority = 5\n"
                               "profile line id 7 upstream = 20000 kbit/s\n"));
}

// Returns a line of names of tables, and rows behind it.
std::string configuration_of(const std::string &tables, const std::vector<std::string> &rows)
{
    std::string text = R"({"ponsim_configuration":11,"ports":2,"tables":{)" + tables + "}}\n";
    for (const std::string &row : rows)
        text += row + "\n";
    return text + R"({"rows":)" + std::to_string(rows.size()) + "}\n";
}

constexpr const char *auth_table =
    R"("auth":{"key":["pon_port","loid"],"values":["password"],"configured":["password"]})";

TEST_F(Config, HidesPasswordsUnlessTheyAreWanted)
{
    const auto with = [](const char *password) {
        return configuration_of(auth_table, {R"({"table":"auth","row":[1,"shop17",")" + std::string(password) + "\"]}",
                                             R"({"table":"auth","row":[1,"open",""]})"});
    };
    write("one", with("sesame"));
    write("other", with("mustard"));
    EXPECT_EQ(ponctl({"config", "show", path("one")}).out, "auth 1 loid shop17 password = ***\n");
    EXPECT_EQ(ponctl({"config", "show", path("one"), "--secrets"}).out, "auth 1 loid shop17 password = sesame\n");
    EXPECT_THAT(ponctl({"config", "show", path("one"), "-o", "json"}).out, testing::Not(HasSubstr("sesame")));
    const Finished different = ponctl({"config", "diff", path("one"), path("other")});
    EXPECT_EQ(different.out, "- auth 1 loid shop17 password = ***\n+ auth 1 loid shop17 password = ***\n");
    EXPECT_EQ(different.code, 1);
    const auto document = parsed(ponctl({"config", "diff", path("one"), path("other"), "-o", "json"}).out);
    EXPECT_STREQ(document[0]["before"].GetString(), "***");
    EXPECT_STREQ(
        parsed(ponctl({"config", "diff", path("one"), path("other"), "-o", "json", "--secrets"}).out)[0]["after"]
            .GetString(),
        "mustard");
    const FakeService service(answer_with(with("sesame")));
    EXPECT_THAT(service.ponctl({"config", "apply", path("other"), "--dry-run"}).out,
                testing::Not(HasSubstr("mustard")));
    EXPECT_EQ(service.ponctl({"config", "save", path("backup")}).code, 0);
    EXPECT_THAT(content("backup"), HasSubstr("sesame"));
}

TEST_F(Config, ShowsTheConditionsOfRulesAsPeopleWriteThem)
{
    constexpr size_t size = 298;
    const std::string head = "0101", rule = "011300ff02", is_vlan = "0300000000006401", is_source = "0600000a01020301";
    const std::string block = head + rule + is_vlan + is_source;
    write("saved",
          configuration_of(
              R"("onu_setting":{"key":["pon_port","mac","command","uni"],"values":["told"],"configured":["told"]})",
              {R"({"table":"onu_setting","row":[1,{"hex":"02005e100001"},696,2,{"hex":")" + block +
               std::string(2 * size - block.size(), '0') + "\"}]}"}));
    const std::string start = "onu_setting 1/02:00:5e:10:00:01 command BSP_CMD_ONU_CLASSIFICATION_GET uni 2 ";
    std::string expected;
    for (const char *line :
         {"action = add", "count = 1", "precedence_1 = 1", "length_1 = 19", "queue_1 = 0", "mark_1 = 255",
          "entries_1 = 2", "field_a_1 = VLAN", "value_a_1 = 100", "operator_a_1 = equal", "field_b_1 = source-IPv4",
          "value_b_1 = 10.1.2.3", "operator_b_1 = equal"})
        expected += start + line + "\n";
    EXPECT_EQ(ponctl({"config", "show", path("saved")}).out, expected);
}

TEST_F(Config, ThatTheOnusAreNotAbleToDoesNotFit)
{
    const std::string tables =
        R"("onu_setting":{"key":["pon_port","mac","command","uni"],"values":["told"],"configured":["told"]},)"
        R"("onu":{"key":["pon_port","mac"],"values":["upgrade_type"],"configured":["upgrade_type"]},)"
        R"("upgrade_type":{"key":["name"],"values":["vendor","model"],"configured":["vendor","model"]})";
    const auto setting = [](uint32_t command, uint32_t uni, const std::string &hex) {
        return R"({"table":"onu_setting","row":[1,{"hex":"02005e100001"},)" + std::to_string(command) + "," +
               std::to_string(uni) + R"(,{"hex":")" + hex + "\"}]}";
    };
    const std::string trunk = "0301" + std::string(314, '0');
    write("wanted", configuration_of(tables, {setting(662, 0, "00"), setting(662, 1, "01"),
                                              setting(catalogue::find_command("BSP_CMD_ONU_PAUSE_GET")->code, 3, "01"),
                                              setting(catalogue::find_command("BSP_CMD_ONU_VLAN_GET")->code, 1, trunk),
                                              R"({"table":"onu","row":[1,{"hex":"02005e100001"},"spring"]})",
                                              R"({"table":"upgrade_type","row":["spring","SIMA","S040"]})"}));
    const std::string own =
        configuration_of(tables, {setting(catalogue::find_command("BSP_CMD_ONU_PAUSE_GET")->code, 3, "00")});
    const uint32_t abilities = catalogue::find_command("BSP_CMD_VIEW_ONU_CAP_SNMP")->code;
    const FakeService service([&](const board_request &request, board_answer *answer) {
        if (request.msg_type != 232) return answer_with(own)(request, answer);
        rows(abilities, R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:10:00:01","vendor":"SIMB","model":"E020",)"
                        R"("fe_ports":2,"us_queues":1}])")(request, answer);
    });
    const Finished refused = service.ponctl({"config", "apply", path("wanted"), "--yes"});
    EXPECT_EQ(refused.code, 2);
    EXPECT_THAT(refused.err, HasSubstr("uni 3: the ONU is a SIMB E020, which has only 2 UNI ports\n"));
    EXPECT_THAT(refused.err, HasSubstr("uni 1: the ONU is a SIMB E020, which knows no controllable multicast\n"));
    EXPECT_THAT(refused.err, HasSubstr("uni 1: the ONU is a SIMB E020, which knows no VLAN trunks\n"));
    EXPECT_THAT(refused.err, HasSubstr("the ONU is a SIMB E020, and upgrade type spring is for a SIMA S040\n"));
    EXPECT_THAT(refused.err, testing::Not(HasSubstr("uni 0")));

    // What does not fit stays as it is at the OLT, and the rest is compared.
    const Finished compared = service.ponctl({"config", "diff", path("wanted"), "--what-fits"});
    EXPECT_EQ(compared.code, 1);
    EXPECT_THAT(compared.err, HasSubstr("does not fit: onu_setting 1/02:00:5e:10:00:01 command BSP_CMD_ONU_PAUSE_GET"));
    EXPECT_THAT(compared.out, HasSubstr("- onu_setting 1/02:00:5e:10:00:01 command BSP_CMD_ONU_MC_SWITCH_GET uni 0"));
    EXPECT_THAT(compared.out, testing::Not(HasSubstr("PAUSE")));
    EXPECT_EQ(service.ponctl({"config", "diff", path("wanted"), path("wanted"), "--what-fits"}).err,
              "ponctl: --what-fits: not with SECOND, because the OLT says what fits\n");
    EXPECT_EQ(service.ponctl({"config", "apply", path("wanted"), "--what-fits", "--yes"}).code, 0);
    EXPECT_THAT(loaded(service.received()), HasSubstr("662,0"));
    EXPECT_THAT(loaded(service.received()), testing::Not(HasSubstr("662,1")));
}

TEST_F(Config, ThatIsDamagedOrHasNoNamesIsRefusedWithItsLine)
{
    const std::string good = configuration(2, {binding(1, 1, "a")});
    const std::vector<std::pair<std::string, std::string>> cases{
        {R"({"ponsim_configuration":11,"ports":2})"
         "\n",
         "line 1: the values have no names here"},
        {"text\n", "line 1: this is no line of a configuration"},
        {good.substr(0, good.size() - 5), "line 3: the text is cut off here"},
        {good.substr(0, good.rfind("{\"rows\"")), "the text ends without the number of its rows"},
        {configuration(2, {R"({"table":"nothing","row":[1]})"}), "line 2: table nothing is not named"},
        {configuration(2, {R"({"table":"clock","row":[1]})"}), "line 2: the row has another number of values"},
        {configuration(2, {R"({"table":"clock","row":[1,1.5]})"}), "line 2: a value is neither"},
    };
    for (const auto &[text, error] : cases) {
        write("saved", text);
        const Finished finished = ponctl({"config", "show", path("saved")});
        EXPECT_EQ(finished.code, 2);
        EXPECT_THAT(finished.err, HasSubstr(error));
    }
}

TEST_F(Config, DiffersInSettingsAlone)
{
    write("one", configuration(16, {binding(1, 1, "old"), binding(1, 2, "same"), clock_at(5)}));
    write("other", configuration(16, {binding(1, 1, "new"), binding(1, 2, "same"), clock_at(9)}));
    const Finished finished = ponctl({"config", "diff", path("one"), path("other")});
    EXPECT_EQ(finished.out, "- binding 1/1 description = old\n+ binding 1/1 description = new\n");
    EXPECT_EQ(finished.code, 1);
    const FakeService service(answer_with(content("other")));
    EXPECT_EQ(service.ponctl({"config", "diff", path("one")}).out, finished.out);
    EXPECT_EQ(service.ponctl({"config", "diff", path("other")}).code, 0);
    EXPECT_EQ(service.ponctl({"config", "diff", path("one"), service.folder()}).out, finished.out);
    const auto document = parsed(service.ponctl({"config", "diff", path("one"), "-o", "json"}).out);
    EXPECT_STREQ(document[0]["before"].GetString(), "old");
    EXPECT_STREQ(document[0]["after"].GetString(), "new");
}

TEST_F(Config, IsAppliedWithoutTheState)
{
    const FakeService service(answer_with(configuration(16, {binding(1, 1, "old"), clock_at(5), onu(3, "")})));
    write("wanted", configuration(16, {binding(1, 1, "new"), binding(1, 2, "more"), clock_at(9), onu(7, "acme")}));
    const Finished finished = service.ponctl({"config", "apply", path("wanted"), "--yes"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("+ binding 1/2 description = more\n"));
    EXPECT_EQ(loaded(service.received()),
              configuration(16, {binding(1, 1, "new"), binding(1, 2, "more"), clock_at(5), onu(3, "acme")}));
}

TEST_F(Config, IsNotAppliedInADryRunNorWithoutConsentNorWhereNothingDiffers)
{
    const FakeService service(answer_with(configuration(16, {binding(1, 1, "old")})));
    write("wanted", configuration(16, {binding(1, 1, "new")}));
    write("same", configuration(16, {binding(1, 1, "old"), clock_at(5)}));
    EXPECT_EQ(service.ponctl({"config", "apply", path("wanted"), "--dry-run"}).out,
              "- binding 1/1 description = old\n+ binding 1/1 description = new\n");
    EXPECT_THAT(service.ponctl({"config", "apply", path("wanted")}).err,
                HasSubstr("--yes: missing; applying " + path("wanted") + ", by which 1 settings change,"));
    EXPECT_EQ(service.ponctl({"config", "apply", path("same"), "--yes"}).code, 0);
    for (const Received &request : service.received())
        EXPECT_EQ(request.word(0), 1u);
}

TEST_F(Config, OfAnotherOltIsAppliedAsFarAsItFitsWhenThatIsWanted)
{
    const FakeService service(answer_with(configuration(1, {clock_at(5)})));
    write("wanted", configuration(16, {binding(1, 1, "fits"), binding(9, 1, "does not")}));
    const Finished refused = service.ponctl({"config", "apply", path("wanted"), "--yes"});
    EXPECT_EQ(refused.code, 2);
    EXPECT_THAT(refused.err, HasSubstr("does not fit: binding 9/1: the OLT has no PON port 9"));
    EXPECT_THAT(refused.err, HasSubstr("--what-fits: missing"));
    EXPECT_EQ(loaded(service.received()), "");
    EXPECT_EQ(service.ponctl({"config", "apply", path("wanted"), "--what-fits", "--yes"}).code, 0);
    EXPECT_EQ(loaded(service.received()), configuration(1, {binding(1, 1, "fits"), clock_at(5)}));
}

TEST_F(Config, ThatIsConfirmedStays)
{
    const FakeService service(answer_with(configuration(16, {binding(1, 1, "old")})));
    write("wanted", configuration(16, {binding(1, 1, "new")}));
    const Finished applied = service.ponctl({"config", "apply", path("wanted"), "--confirm", "3600", "--yes"});
    EXPECT_EQ(applied.code, 0) << applied.err;
    EXPECT_THAT(applied.err, HasSubstr("rolled back in 3600 s unless 'ponctl config confirm' comes before"));
    EXPECT_THAT(service.ponctl({"config", "apply", path("wanted"), "--confirm", "9", "--yes"}).err,
                HasSubstr("another configuration waits to be confirmed"));
    EXPECT_EQ(service.ponctl({"config", "confirm"}).code, 0);
    const Finished again = service.ponctl({"config", "confirm"});
    EXPECT_EQ(again.code, 1);
    EXPECT_THAT(again.err, HasSubstr("no configuration waits to be confirmed"));
    EXPECT_EQ(service.ponctl({"config", "rollback", "--yes"}).code, 1);
}

TEST_F(Config, IsKeptOrRolledBackAsTheUserAnswers)
{
    const FakeService service(answer_with(configuration(16, {binding(1, 1, "old")})));
    write("wanted", configuration(16, {binding(1, 1, "new")}));
    const std::vector<std::string> words{"config", "apply", path("wanted"), "--confirm", "3600", "--yes"};
    const Terminal terminal;
    terminal.type("y\n");
    const Finished kept = service.ponctl(words, -1, terminal.descriptor());
    EXPECT_EQ(kept.code, 0);
    EXPECT_THAT(kept.err, HasSubstr("keep the new configuration? It is rolled back in 3600 s. [y/n]"));
    terminal.type("n\n");
    const Finished taken_back = service.ponctl(words, -1, terminal.descriptor());
    EXPECT_EQ(taken_back.code, 1);
    EXPECT_THAT(taken_back.err, HasSubstr("the configuration before was rolled back"));
}

TEST_F(Config, ThatIsRolledBackIsTheOneBeforeWithItsState)
{
    const std::string before = configuration(16, {binding(1, 1, "old"), clock_at(5)});
    const FakeService service(answer_with(before));
    write("wanted", configuration(16, {binding(1, 1, "new")}));
    service.ponctl({"config", "apply", path("wanted"), "--confirm", "3600", "--yes"});
    const size_t applied = loaded(service.received()).size();
    EXPECT_EQ(service.ponctl({"config", "rollback", "--yes"}).code, 0);
    EXPECT_EQ(loaded(service.received()).substr(applied), before);
    EXPECT_EQ(service.ponctl({"config", "confirm"}).code, 1);
}

} // namespace
