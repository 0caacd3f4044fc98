// These tests check what every command prints in JSON: one document, whose keys do not change.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue.h"
#include "fake_service.h"

namespace
{

using Words = std::vector<std::string>;

// A File is removed with the object.
class File
{
public:
    explicit File(const std::string &content)
    {
        char path[] = "/tmp/ponctl_json_XXXXXX";
        close(mkstemp(path));
        name = path;
        std::ofstream(name) << content;
    }
    ~File() { std::filesystem::remove(name); }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    std::string name;
};

// This is a table of the ONU that the service has.
constexpr const char *onus = "pon_port,onu_id,mac,description\n1,1,00:11:22:33:44:55,x\n";

// This is a configuration with one setting.
const std::string one_setting = R"({"ponsim_configuration":1,"ports":1,"tables":{"port":{"key":["pon_port"],)"
                                R"("values":["mode"],"configured":["mode"]}}})"
                                "\n"
                                R"({"table":"port","row":[1,2]})"
                                "\n{\"rows\":1}\n";

// Every command of the tool is here, with arguments. FILE stands for a file, TRACE for a file with a trace,
// TABLE for one with ONUs, CONFIG for one with a configuration.
const std::vector<std::string> lines{
    "ops bsp_pon_no_bind_onu_all",
    "ops ont_id_res_str",
    "ops no-such-word",
    "call bsp_pon_no_bind_onu_all pon_port=1",
    "call bsp_pon_get_onu_alarm record.pon_port=1",
    "call bsp_pon_get_onu_alarm --onus 1/1-2",
    "raw BSP_MSG_PON get cmd=381",
    "raw BSP_MSG_PON set cmd=365",
    "trace TRACE",
    "replay TRACE -v",
    "idset 1-5",
    "onu list 1",
    "onu find x",
    "onu why 1/1",
    "onu show 1 1",
    "onu show 1/1-2",
    "onu bind 1 00:11:22:33:44:55",
    "onu bind 1 00:11:22:33:44:55 --id 1",
    "onu release 1 --id 1",
    "onu release 1/1",
    "onu confirm 1 1",
    "onu describe 1 1 text",
    "onu reboot 1/1",
    "onu reject 1 1",
    "onu allow 1 --ids 1",
    "onu info 1/1",
    "onu info 1/1-2",
    "onu ports 1/1",
    "onu ports 1/1-2",
    "onu ports 1/1 --uni 1",
    "onu vlan 1/1",
    "onu multicast 1/1",
    "onu multicast 1/1 --local",
    "onu perf 1/1 --uni 1",
    "onu perf on 1/1",
    "onu perf off 1/1",
    "onu optics 1/1",
    "onu configure 1/1",
    "onu services 1/1",
    "onu image 1/1",
    "onu image push 1/1 FILE --version 1",
    "onu image commit 1/1",
    "onu multillid 1/1 2",
    "onu set 1/1 multi-llid onu_arg24=3",
    "onu export",
    "onu import TABLE",
    "onu settings",
    "onu settings multi-llid",
    "port list",
    "port show 1",
    "port stats 1",
    "arp 1",
    "bulk optics",
    "bulk stats",
    "bulk ports",
    "bulk olt",
    "bulk all",
    "profile kinds",
    "profile kinds line",
    "profile list line",
    "profile text line",
    "profile show line x",
    "profile store line name=x",
    "profile delete line x",
    "loid list 1",
    "loid add 1 x",
    "loid delete 1 x",
    "whitelist ids 1",
    "blacklist 1",
    "blacklist list 1",
    "blacklist ids 1",
    "auth show",
    "auth show 1",
    "auth set 1 loid",
    "auth remove 1 x",
    "alarm list",
    "alarm list 1/1-2",
    "alarm list --active",
    "alarm clear 1",
    "health",
    "optics",
    "optics 1",
    "optics 1 --onu 1",
    "sla show 1",
    "sla show 1 1",
    "sla show 1/1-2",
    "sla set 1 1 --max 1",
    "sla clear 1 1",
    "p2p show",
    "p2p show 1",
    "p2p set 1 on",
    "p2p entry 1 1 drop",
    "p2p own-port 1",
    "fdb show",
    "fdb age",
    "fdb flush",
    "fdb set 300",
    "upgrade types",
    "upgrade add n v m 1 1",
    "upgrade delete n",
    "upgrade load FILE",
    "upgrade bind 1 n",
    "upgrade start 1",
    "upgrade status",
    "loop show",
    "loop on",
    "loop off",
    "loop recover",
    "loop mode manual",
    "loop time 5",
    "loop interval 5",
    "config load FILE",
    "config save FILE",
    "config save -",
    "config show CONFIG",
    "config diff CONFIG CONFIG",
    "config apply CONFIG",
    "config confirm",
    "config rollback",
    "debug pon-mac 1",
    "debug pon-phy 1",
    "debug laser 1",
    "debug ge-mac 1",
    "debug ge-phy 1",
    "debug xaui-mac 1",
    "debug xaui-phy 1",
    "debug mgmt 1",
    "debug ingress 1",
    "debug egress 1",
    "debug ge-phy-set 1 reset",
    "debug fdb-dump",
    "debug ctc-oam on",
    "debug onu on",
    "i2c read 1 0xa0 0 4",
    "i2c write 1 0xa0 0 40",
};

std::string cell(catalogue::ColumnType type)
{
    switch (type) {
    case catalogue::ColumnType::boolean:
        return "true";
    case catalogue::ColumnType::mac:
        return "\"00:11:22:33:44:55\"";
    case catalogue::ColumnType::text:
        return "\"x\"";
    case catalogue::ColumnType::u32:
    case catalogue::ColumnType::u64:
    case catalogue::ColumnType::real:
        break;
    }
    return "1";
}

// Answers each command with a record of zeros, and with a row when it delivers rows.
void answer_all(const board_request &request, board_answer *answer)
{
    const std::vector<uint8_t> zeros(request.allowed);
    if (!zeros.empty()) board_answer_data(answer, zeros.data(), static_cast<uint32_t>(zeros.size()));
    const catalogue::Field &field = *catalogue::find_channel(request.msg_type)->record->command;
    uint32_t code;
    std::memcpy(&code, static_cast<const uint8_t *>(request.data) + field.offset, sizeof code);
    const catalogue::Command *command =
        catalogue::find_command(request.msg_type, code, static_cast<catalogue::Call>(request.call));
    const catalogue::View *view = command ? catalogue::find_view(*command) : nullptr;
    if (!view) return;
    std::string row;
    for (const catalogue::Column &column : view->columns)
        row += (row.empty() ? "\"" : ",\"") + std::string(column.name) + "\":" + cell(column.type);
    row = "[{" + row + "}]";
    board_answer_result(answer, code, row.data(), static_cast<uint32_t>(row.size()));
}

void collect(const rapidjson::Value &value, const std::string &path, std::set<std::string> &keys)
{
    if (value.IsArray())
        for (const auto &each : value.GetArray())
            collect(each, path + "[]", keys);
    if (!value.IsObject()) return;
    for (const auto &member : value.GetObject()) {
        const std::string key = path + (path.empty() ? "" : ".") + member.name.GetString();
        keys.insert(key);
        collect(member.value, key, keys);
    }
}

Words words_of(const std::string &line)
{
    std::istringstream in(line);
    Words words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

bool reads_a_trace(const Words &words)
{
    return words.front() == "trace" || words.front() == "replay";
}

TEST(JsonOfEveryCommand, IsOneDocumentWithKeysThatStay)
{
    const FakeService service(answer_all);
    const File file("x"), trace(""), table(onus);
    const File configuration(one_setting);
    setenv("BOARD_IPC_TRACE", trace.name.c_str(), 1);
    std::filesystem::remove(trace.name);
    service.ponctl({"port", "list"});
    unsetenv("BOARD_IPC_TRACE");
    std::string actual;
    for (const std::string &line : lines) {
        SCOPED_TRACE(line);
        Words words = words_of(line);
        for (std::string &word : words)
            word = word == "FILE"     ? file.name
                   : word == "TRACE"  ? trace.name
                   : word == "TABLE"  ? table.name
                   : word == "CONFIG" ? configuration.name
                                      : word;
        words.insert(words.end(), {"-o", "json", "--yes"});
        const Finished finished = service.ponctl(words);
        std::set<std::string> keys;
        EXPECT_NO_THROW(collect(parsed(finished.out), "", keys)) << finished.err;
        actual += line + ":";
        for (const std::string &key : keys)
            actual += " " + key;
        actual += "\n";
    }
    std::ostringstream expected;
    expected << std::ifstream(JSON_KEYS).rdbuf();
    std::ofstream("json_keys.actual") << actual;
    EXPECT_EQ(actual, expected.str()) << "where that is meant, json_keys.actual goes in the place of " JSON_KEYS;
}

// Finds the commands below a command in its help.
void find_commands(const Words &above, std::vector<Words> &found)
{
    Words asked = above;
    asked.push_back("--help");
    std::istringstream help(ponctl(asked).out);
    bool any = false, listed = false;
    for (std::string text; std::getline(help, text);) {
        if (listed && text.starts_with("  ") && text[2] != ' ') {
            Words below = above;
            below.push_back(words_of(text).front());
            find_commands(below, found);
            any = true;
        }
        if (!text.empty() && text[0] != ' ') listed = text == "Subcommands:";
    }
    if (!any) found.push_back(above);
}

TEST(JsonOfEveryCommand, LeavesNoCommandOut)
{
    std::vector<Words> commands;
    find_commands({}, commands);
    EXPECT_GT(commands.size(), 80u);
    for (const Words &command : commands) {
        if (command == Words{"batch"} || command == Words{"shell"}) continue; // these print what their lines do
        // These need a broker, or speak with another program: tests/fleet has them.
        if (command.front() == "fleet" || command == Words{"serve"}) continue;
        if (command.back() == "watch") continue; // these print an object for each event, which tests of theirs check
        const auto runs_it = [&command](const std::string &line) {
            const Words words = words_of(line);
            return words.size() >= command.size() && std::equal(command.begin(), command.end(), words.begin());
        };
        EXPECT_TRUE(std::ranges::any_of(lines, runs_it)) << testing::PrintToString(command);
    }
}

TEST(JsonOfACommandThatFails, IsHowItEnded)
{
    const FakeService service(status(4003));
    for (const char *line : {"onu list 99", "port show 99", "optics 99", "loop time 5", "sla show 99"}) {
        Words words = words_of(line);
        words.insert(words.end(), {"-o", "json"});
        const auto document = parsed(service.ponctl(words).out);
        EXPECT_EQ(document["exit_code"].GetInt(), 1) << line;
        EXPECT_STREQ(document["status_name"].GetString(), "PON_ERR_NO_PORT") << line;
    }
}

TEST(JsonOfAFailedExchange, NamesTheFailure)
{
    const auto document = parsed(ponctl({"--socket-dir", "/nowhere", "port", "list", "-o", "json"}).out);
    EXPECT_EQ(document["exit_code"].GetInt(), 3);
    EXPECT_NE(document["ipc_result"].GetInt(), 0);
}

TEST(JsonOfAnEmptyList, IsAnEmptyArray)
{
    const std::vector<std::pair<const char *, uint32_t>> lists{
        {"onu list 1", 384}, {"alarm list", 388}, {"fdb show", 485}};
    for (const auto &[line, key] : lists) {
        const FakeService service(result(key, "[]"));
        Words words = words_of(line);
        words.insert(words.end(), {"-o", "json"});
        EXPECT_EQ(service.ponctl(words).out, "[]\n") << line;
    }
    const FakeService service(result(645, "[]"));
    const auto of_onu = parsed(service.ponctl({"onu", "vlan", "1/1", "-o", "json"}).out);
    EXPECT_TRUE(of_onu[0]["vlan"].IsArray());
    EXPECT_TRUE(of_onu[0]["vlan"].Empty());
}

TEST(JsonOfASettingForOnus, IsTheStatusOfEach)
{
    const FakeService service(status(4013));
    const auto document = parsed(service.ponctl({"onu", "multillid", "1/3-4", "2", "--yes", "-o", "json"}).out);
    ASSERT_EQ(document.Size(), 2u);
    EXPECT_STREQ(document[1]["onu"].GetString(), "1/4");
    EXPECT_EQ(document[1]["status"].GetUint(), 4013u);
}

TEST(EveryCommand, HasBytesInHexOrNothing)
{
    const FakeService service(answer_all);
    const File file("x"), table(onus);
    size_t shown = 0;
    for (const std::string &line : lines) {
        Words words = words_of(line);
        if (reads_a_trace(words)) continue;
        for (std::string &word : words)
            word = word == "FILE" ? file.name : word == "TABLE" ? table.name : word;
        words.insert(words.end(), {"-o", "hex", "--yes"});
        const Finished finished = service.ponctl(words);
        const bool has_rows = line != "onu ports 1/1-2";
        if (finished.out.empty() || !has_rows) continue;
        EXPECT_THAT(finished.out, testing::ContainsRegex("(^|\n) +[0-9]+  ([0-9a-f]{2} )+")) << line;
        EXPECT_THAT(finished.out, testing::Not(testing::HasSubstr("FIELD"))) << line;
        ++shown;
    }
    EXPECT_GT(shown, 50u);
}

TEST(EveryCommand, CanBeDry)
{
    const FakeService service(answer_all);
    const File file("x"), table(onus), configuration(one_setting);
    for (const std::string &line : lines) {
        Words words = words_of(line);
        if (reads_a_trace(words)) continue;
        if (line.starts_with("config apply")) continue; // it asks the OLT what it has, to say what would change
        for (std::string &word : words)
            word = word == "FILE"     ? file.name
                   : word == "TABLE"  ? table.name
                   : word == "CONFIG" ? configuration.name
                                      : word;
        words.insert(words.end(), {"-o", "json", "--dry-run"});
        const Finished finished = service.ponctl(words);
        EXPECT_NO_THROW(EXPECT_TRUE(parsed(finished.out).IsArray())) << line << finished.err;
        EXPECT_TRUE(finished.err.empty() || finished.err.starts_with("ponctl: --dry-run: ")) << line << finished.err;
    }
    EXPECT_TRUE(service.settings().empty());
}

} // namespace
