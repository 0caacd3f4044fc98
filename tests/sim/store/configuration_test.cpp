// These tests write out the OLT's configuration and take it back.
#include <algorithm>

#include <gmock/gmock.h>

#include "daemon/clock.h"
#include "plat.h"
#include "store/configuration.h"
#include "text/sha256.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;
using testing::StartsWith;

const Settings settings{.seed = 5, .ports = 2, .arrivals = 4, .silent = 0};
constexpr WantedSettings wanted{.seed = 5, .ports = 2, .arrivals = 4, .silent = 0};
constexpr size_t longest_part = 4048;

constexpr uint32_t operator_user = 1000, another_user = 1001;

// Sends a request on the profile channel.
Reply profile(ServiceFixture &fixture, uint32_t action, catalogue::Call call, const std::string &payload = {},
              uint32_t user = operator_user)
{
    bsp_profile_msg record{};
    record.action = action;
    payload.copy(reinterpret_cast<char *>(record.data), sizeof record.data);
    return fixture.simulator.handle(
        {BSP_MSG_PROFILE, &record, payload_header + static_cast<uint32_t>(payload.size()), call, user});
}

Reply read(ServiceFixture &fixture)
{
    return profile(fixture, BSP_CMD_CONFIG_READ, catalogue::Call::dgram_get);
}

std::string saved(ServiceFixture &fixture)
{
    return read(fixture).file.value().content;
}

// A text is named by its digest.
std::string name_of(const std::string &text)
{
    const text::Sha256 digest = text::sha256(text);
    return {digest.begin(), digest.end()};
}

const std::string some_name = name_of("some text of 10 bytes");

uint32_t send_part(ServiceFixture &fixture, uint32_t offset, uint32_t total, const std::string &bytes,
                   const std::string &name = some_name, uint32_t user = operator_user)
{
    const uint32_t head[] = {offset, total, static_cast<uint32_t>(bytes.size())};
    return profile(fixture, BSP_CMD_CONFIG_LOAD_PART, catalogue::Call::dgram_set,
                   std::string(reinterpret_cast<const char *>(head), sizeof head) + name + bytes, user)
        .status;
}

// Sends the part of a text that begins at an offset.
uint32_t send_part_of(ServiceFixture &fixture, const std::string &text, size_t offset, size_t length = longest_part,
                      uint32_t user = operator_user)
{
    return send_part(fixture, static_cast<uint32_t>(offset), static_cast<uint32_t>(text.size()),
                     text.substr(offset, length), name_of(text), user);
}

Reply load_named(ServiceFixture &fixture, const std::string &name = some_name, uint32_t user = operator_user)
{
    return profile(fixture, BSP_CMD_CONFIG_LOAD, catalogue::Call::dgram_set, name, user);
}

Reply load(ServiceFixture &fixture, const std::string &text)
{
    const std::string name = name_of(text); // once, because it takes long for a long text
    for (size_t offset = 0; offset < text.size(); offset += longest_part)
        EXPECT_EQ(send_part(fixture, static_cast<uint32_t>(offset), static_cast<uint32_t>(text.size()),
                            text.substr(offset, longest_part), name),
                  BSP_OK);
    return load_named(fixture, name);
}

// This OLT keeps something of every kind.
struct FullFixture : ServiceFixture {
    FullFixture() : ServiceFixture(wanted)
    {
        const Mac mac = port(1).arrivals[0].mac;
        Change change;
        Binding bound = binding_of(mac);
        bound.text_a = "hex:00 \"Träger\"";
        bound.sla = Sla{1, 2, 3, 4, 5};
        bound.sla_down = 1000;
        change.put<Binding>({1, 7}, bound);
        OnuRecord onu;
        onu.reboots = 3;
        change.put<OnuRecord>({1, mac}, onu);
        change.put<PortRecord>(2, {{1000, 9000}, 2});
        change.put<BlacklistEntry>({2, 0}, BlacklistEntry{stranger(1), "no"});
        change.put<LoidPassword>({2, "loid"}, {"secret"});
        change.put<AlarmRecord>({1, mac, 3}, {9});
        change.add(block_at({BSP_MSG_PLAT, BSP_CMD_P2P_STATE_SET, 1, 0}, std::string("\1\0\0\0", 4)));
        ModuleRecord module;
        module.measurement = {mac, 1000000, 10, 1000};
        module.result = {mac, 1, 10, 20, 10, 30};
        change.put<ModuleRecord>(1, module);
        change.put<UpgradeType>("home", UpgradeType{"SIMA", "E1", "2.0", 100, "f"});
        change.put<UpgradeRun>({1, mac}, {"home", "2.0", 100, UpgradeRun::State::done, 1});
        change.put<LoopRecord>({1, mac, 1}, LoopRecord{.looped = true});
        change.put<OnuSetting>({1, mac, BSP_CMD_ONU_PAUSE_GET, 1}, {std::string("\1", 1), std::string("\0", 1), 5});
        change.put<LoopDetection>({}, {.recovery_time = 60});
        simulator.change(change);
        simulator.advance(5000);
    }
};

std::string views(ServiceFixture &fixture)
{
    return fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP) + fixture.view(BSP_CMD_BLACKLIST_GET) +
           fixture.view(BSP_CMD_VIEW_ONU_ALARM) + fixture.view(BSP_CMD_AUTH_LIST, 2);
}

// Returns what the service's log says of a text that is refused. The OLT must stay as it was.
std::string problem_with(const std::string &text, uint32_t status = PON_ERR_BAD_CONFIG)
{
    FullFixture fixture;
    const std::string before = saved(fixture);
    const Reply reply = load(fixture, text);
    EXPECT_EQ(reply.status, status);
    EXPECT_EQ(saved(fixture), before);
    return reply.problem;
}

// Returns a text with these rows.
std::string text_of(const std::vector<std::string> &rows)
{
    std::string text = write_configuration(settings, {});
    text.resize(text.find('\n') + 1);
    for (const std::string &row : rows)
        text += row + '\n';
    return text + "{\"rows\":" + std::to_string(rows.size()) + "}\n";
}

std::string bound_row(int onu_id, const std::string &mac, const std::string &text = {})
{
    return "{\"table\":\"binding\",\"row\":[1," + std::to_string(onu_id) + ",{\"hex\":\"" + mac + "\"},0,\"" + text +
           "\",\"\",\"\",\"\",0,0,0,0,0,0,0,1]}";
}

TEST(Configuration, EveryTableIsInIt)
{
    FullFixture fixture;
    const std::string text = saved(fixture);
    std::set<std::string> found;
    ServiceFixture second(settings, read_configuration(text, settings));
    for (const Row &row : second.store.rows())
        found.insert(row.table);
    for (const char *table :
         {"alarm", "auth", "binding", "blacklist", "block", "clock", "loop", "loop_detection", "measured",
          "measurement", "module", "onu", "onu_setting", "port", "traffic", "upgrade_run", "upgrade_type"})
        EXPECT_TRUE(found.contains(table)) << table;
}

TEST(Configuration, AFreshOltBecomesTheSame)
{
    FullFixture first;
    const std::string text = saved(first);
    ServiceFixture second(wanted);
    EXPECT_NE(views(second), views(first));
    EXPECT_EQ(load(second, text).status, BSP_OK);
    EXPECT_EQ(views(second), views(first));
    EXPECT_EQ(saved(second), text);
}

TEST(Configuration, WhatWasLoadedIsKept)
{
    Folder folder;
    FullFixture first;
    {
        ServiceFixture second(wanted, folder.file("olt.db"));
        EXPECT_EQ(load(second, saved(first)).status, BSP_OK);
    }
    ServiceFixture reopened({}, folder.file("olt.db"));
    EXPECT_EQ(saved(reopened), saved(first));
}

TEST(Configuration, WhatTheOltHadBeforeIsGone)
{
    FullFixture fixture;
    EXPECT_EQ(load(fixture, text_of({})).status, BSP_OK);
    ServiceFixture fresh(wanted);
    EXPECT_EQ(views(fixture), views(fresh));
}

TEST(Configuration, TimeGoesOnFromTheLaterOne)
{
    FullFixture first;
    ServiceFixture early(wanted);
    EXPECT_EQ(load(early, saved(first)).status, BSP_OK);
    EXPECT_EQ(early.simulator.olt().now(), 5000u);
    ServiceFixture late(wanted);
    late.simulator.advance(9000);
    EXPECT_EQ(load(late, saved(first)).status, BSP_OK);
    EXPECT_EQ(late.simulator.olt().now(), 9000u);
}

TEST(Configuration, ThatIsLoadedIsKeptWithTheTimeOfTheOltThatLoadsIt)
{
    FullFixture early;
    ServiceFixture late(wanted);
    late.simulator.advance(90000);
    late.simulator.keep_time();
    ASSERT_EQ(load(late, saved(early)).status, BSP_OK);
    const Simulator started_again(late.store, wanted);
    EXPECT_EQ(started_again.olt().now(), 90000u);
}

TEST(Configuration, TheClockReachesATimeAndDoesNotGoBack)
{
    Clock clock(100, 0);
    clock.reach(300);
    EXPECT_EQ(clock.now(), 300u);
    clock.reach(200);
    EXPECT_EQ(clock.now(), 300u);
}

TEST(Configuration, BothChannelsTellTheSizeAndWhereTheNameGoes)
{
    FullFixture fixture;
    const PlatAnswer platform(fixture, BSP_MSG_CFGWR, PlatRecord(0, 0));
    const Reply reply = read(fixture);
    EXPECT_EQ(platform.get(layout::At<uint32_t>{120}), reply.file.value().content.size());
    EXPECT_EQ(platform.reply.file.value().name_at, 124u);
    EXPECT_EQ(platform.reply.file.value().content, reply.file.value().content);
    uint32_t count;
    std::memcpy(&count, reply.answer.value().data() + 8, sizeof count);
    EXPECT_EQ(count, reply.file.value().content.size());
    EXPECT_EQ(reply.file.value().name_at, 24u);
}

TEST(Configuration, OnlyTheWholeIsWritten)
{
    ServiceFixture fixture;
    EXPECT_EQ(PlatAnswer(fixture, BSP_MSG_CFGWR, PlatRecord(0, 1)).status(), PON_ERR_BAD_RECORD);
    EXPECT_EQ(PlatAnswer(fixture, BSP_MSG_CFGWR, PlatRecord(0, 0, 1)).status(), PON_ERR_BAD_RECORD);
}

TEST(Configuration, PartsMustGoOnWhereTheLastOneEnded)
{
    ServiceFixture fixture(wanted);
    EXPECT_EQ(send_part(fixture, 3, 10, "def"), PON_ERR_BAD_CONFIG);
    EXPECT_EQ(send_part(fixture, 0, 10, "abc"), BSP_OK);
    EXPECT_EQ(send_part(fixture, 4, 10, "e"), PON_ERR_BAD_CONFIG);
    EXPECT_EQ(send_part(fixture, 3, 11, "d"), PON_ERR_BAD_CONFIG);
    EXPECT_EQ(send_part(fixture, 3, 10, "def"), BSP_OK);
    EXPECT_THAT(load_named(fixture).problem, HasSubstr("6 of 10 bytes have come"));
}

TEST(Configuration, NobodyAddsToWhatAnotherUserSendsOrLoadsIt)
{
    ServiceFixture fixture(wanted);
    FullFixture first;
    const std::string text = saved(first), name = name_of(text);
    const size_t half = text.size() / 2;
    const auto send = [&](uint32_t user, size_t from, size_t to) {
        for (size_t offset = from; offset < to; offset += longest_part)
            ASSERT_EQ(send_part_of(fixture, text, offset, std::min(longest_part, to - offset), user), BSP_OK);
    };
    send(operator_user, 0, half);
    EXPECT_EQ(send_part_of(fixture, text, half, 10, another_user), PON_ERR_BAD_CONFIG);
    EXPECT_EQ(send_part(fixture, 0, static_cast<uint32_t>(text.size()), "{\"row", name, another_user), BSP_OK);
    send(operator_user, half, text.size());
    EXPECT_THAT(load_named(fixture, name, another_user).problem, HasSubstr("5 of "));
    EXPECT_THAT(load_named(fixture, name, another_user).problem, HasSubstr("no text of this digest"));
    EXPECT_EQ(load_named(fixture, name).status, BSP_OK);
    EXPECT_EQ(saved(fixture), text);
}

TEST(Configuration, TwoThatAUserSendsAtTheSameTimeStayApart)
{
    FullFixture first;
    ServiceFixture other(wanted), fixture(wanted);
    const std::string one = saved(first), two = saved(other);
    for (size_t offset = 0; offset < std::max(one.size(), two.size()); offset += longest_part)
        for (const std::string *text : {&one, &two})
            if (offset < text->size()) {
                EXPECT_EQ(send_part_of(fixture, *text, offset), BSP_OK);
            }
    EXPECT_EQ(load_named(fixture, name_of(one)).status, BSP_OK);
    EXPECT_EQ(saved(fixture), one);
    EXPECT_EQ(load_named(fixture, name_of(two)).status, BSP_OK);
}

TEST(Configuration, APartMayComeAgainButNotWithOtherBytes)
{
    FullFixture first;
    ServiceFixture fixture(wanted);
    const std::string text = saved(first);
    EXPECT_EQ(send_part_of(fixture, text, 0, 20), BSP_OK);
    EXPECT_EQ(send_part_of(fixture, text, 0, 10), BSP_OK);
    EXPECT_EQ(send_part_of(fixture, text, 10, 20), BSP_OK);
    EXPECT_EQ(send_part(fixture, 10, static_cast<uint32_t>(text.size()), "not it", name_of(text)), PON_ERR_BAD_CONFIG);
    EXPECT_EQ(load(fixture, text).status, BSP_OK);
}

TEST(Configuration, ATextOfAnotherDigestIsNotLoaded)
{
    ServiceFixture fixture(wanted);
    EXPECT_EQ(send_part(fixture, 0, 3, "abc"), BSP_OK);
    EXPECT_THAT(load_named(fixture).problem, HasSubstr("another digest"));
    EXPECT_EQ(profile(fixture, BSP_CMD_CONFIG_LOAD, catalogue::Call::dgram_set).status, PON_ERR_BAD_RECORD);
    EXPECT_EQ(profile(fixture, BSP_CMD_CONFIG_LOAD, catalogue::Call::dgram_set, some_name + "x").status,
              PON_ERR_BAD_RECORD);
}

// Whoever begins another text of the user, of that many bytes, makes room for it.
size_t texts_after(uint32_t bytes)
{
    ServiceFixture fixture(wanted);
    size_t left = 0;
    const auto name = [](int number) { return name_of(std::to_string(number)); };
    EXPECT_EQ(send_part(fixture, 0, 3, "abc", name(0), another_user), BSP_OK);
    for (int number = 0; number < 10; ++number)
        EXPECT_EQ(send_part(fixture, 0, bytes, "a", name(number)), BSP_OK);
    for (int number = 0; number < 10; ++number)
        left += send_part(fixture, 1, bytes, "b", name(number)) == BSP_OK;
    EXPECT_EQ(send_part(fixture, 0, 3, "abc", name(0), another_user), BSP_OK);
    EXPECT_THAT(load_named(fixture, name(0), another_user).problem, HasSubstr("another digest")) << "is still there";
    return left;
}

TEST(Configuration, AUserHasAFewTextsAtATimeAndSoManyBytes)
{
    EXPECT_EQ(texts_after(10), 4u);
    EXPECT_EQ(texts_after(32 * 1024 * 1024), 2u);
    EXPECT_EQ(texts_after(64 * 1024 * 1024), 1u);
}

TEST(Configuration, OfManyUsersThoseWhoSentLastHaveTexts)
{
    ServiceFixture fixture(wanted);
    for (uint32_t user = 0; user < 9; ++user)
        EXPECT_EQ(send_part(fixture, 0, 10, "a", some_name, user), BSP_OK);
    EXPECT_EQ(send_part(fixture, 1, 10, "b", some_name, 0), PON_ERR_BAD_CONFIG);
    for (uint32_t user = 1; user < 9; ++user)
        EXPECT_EQ(send_part(fixture, 1, 10, "b", some_name, user), BSP_OK);
}

TEST(Configuration, OffsetZeroStartsAnew)
{
    FullFixture first;
    ServiceFixture second(wanted);
    EXPECT_EQ(send_part(second, 0, 10, "abc"), BSP_OK);
    EXPECT_EQ(load(second, saved(first)).status, BSP_OK);
}

TEST(Configuration, PartsThatCannotBeAreRefused)
{
    ServiceFixture fixture(wanted);
    EXPECT_EQ(send_part(fixture, 0, 10, ""), PON_ERR_BAD_RECORD);
    EXPECT_EQ(send_part(fixture, 0, 2, "abc"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(send_part(fixture, 0xffffffff, 10, "abc"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(send_part(fixture, 0, 64 * 1024 * 1024 + 1, "abc"), PON_ERR_BAD_RECORD);
    const std::string head = std::string("\0\0\0\0\4\0\0\0\4\0\0\0", 12) + some_name;
    EXPECT_EQ(profile(fixture, BSP_CMD_CONFIG_LOAD_PART, catalogue::Call::dgram_set, head + "abc").status,
              PON_ERR_BAD_RECORD);
    EXPECT_EQ(profile(fixture, BSP_CMD_CONFIG_LOAD_PART, catalogue::Call::dgram_set, head.substr(0, 43)).status,
              PON_ERR_BAD_RECORD);
}

TEST(Configuration, ATextIsLoadedOnce)
{
    ServiceFixture fixture(wanted);
    EXPECT_EQ(load(fixture, text_of({})).status, BSP_OK);
    EXPECT_EQ(load_named(fixture, name_of(text_of({}))).status, PON_ERR_BAD_CONFIG);
}

TEST(Configuration, AnotherOltsIsRefused)
{
    ServiceFixture other({.seed = 6, .ports = 2, .arrivals = 4, .silent = 0});
    EXPECT_THAT(problem_with(saved(other), PON_ERR_OTHER_OLT), HasSubstr("--seed 6 --ports 2"));
}

TEST(Configuration, AnotherVersionIsRefused)
{
    EXPECT_THAT(problem_with("{\"ponsim_configuration\":99}\n"), HasSubstr("line 1: version 99"));
}

TEST(Configuration, ATextThatIsCutOffIsRefused)
{
    FullFixture fixture;
    const std::string text = saved(fixture);
    EXPECT_THAT(problem_with(text.substr(0, text.size() - 1)), HasSubstr("cut off"));
    EXPECT_THAT(problem_with(text.substr(0, text.rfind('\n', text.size() - 2) + 1)),
                HasSubstr("the text ends without the number of its rows"));
    EXPECT_THAT(problem_with(text + "{}\n"), HasSubstr("goes on"));
}

TEST(Configuration, AWrongRowIsNamedByItsLine)
{
    const std::string good = bound_row(1, "001b21aa0001");
    const std::pair<std::string, const char *> cases[] = {
        {"x", "line 3: Invalid value."},
        {"[]", "line 3: not a JSON object"},
        {"{\"table\":\"binding\"}", "line 3: neither a table"},
        {"{\"table\":\"clock\",\"row\":[1,1.5]}", "line 3: value 2"},
        {"{\"table\":\"clock\",\"row\":[1,{\"hex\":\"0\"}]}", "line 3: value 2"},
        {"{\"table\":\"nothing\",\"row\":[1]}", "line 3: there is no table nothing"},
        {"{\"table\":\"setting\",\"row\":[1,2,3,4]}", "line 3: there is no table setting"},
        {"{\"table\":\"clock\",\"row\":[1]}", "line 3: table clock, one 1: there are 1 values, but must be 2"},
        {"{\"table\":\"clock\",\"row\":[1,-1]}",
         "line 3: table clock, one 1: now is -1, but must be 0 to 315360000000000"},
        {"{\"table\":\"clock\",\"row\":[1,\"5\"]}", "line 3: table clock, one 1: now must be a number"},
        {"{\"table\":\"port\",\"row\":[3,0,20000,0]}",
         "line 3: table port, pon_port 3: pon_port is 3, but must be 1 to 2"},
        {"{\"table\":\"port\",\"row\":[2,4294967296,20000,0]}",
         "line 3: table port, pon_port 2: min_distance is 4294967296, but must be 0 to 20000"},
        {bound_row(2, "001b21aa00"), "line 3: table binding, pon_port 1, onu_id 2: mac has 5 bytes, but must have 6"},
        {bound_row(1, "001b21aa0002"), "line 3: table binding, pon_port 1, onu_id 1: the row is there twice"},
        {bound_row(2, "001b21aa0001"), "line 3: table binding, pon_port 1, onu_id 2: the ONU is bound twice"},
        {bound_row(2, "001b21aa0002", std::string(128, 'x')),
         "line 3: table binding, pon_port 1, onu_id 2: text_a has 128 bytes, but must have 0 to 127"},
    };
    for (const auto &[row, problem] : cases)
        EXPECT_THAT(problem_with(text_of({good, row, bound_row(9, "001b21aa0009")})),
                    StartsWith(std::string("configuration: ") + problem));
}

TEST(Configuration, ABlockOfAnotherSizeThanItsCommandsIsRefused)
{
    const std::string channel = std::to_string(BSP_MSG_DEBUG), command = std::to_string(BSP_CMD_DEBUG_GE_PHY_SET);
    const std::string row =
        "{\"table\":\"block\",\"row\":[" + channel + "," + command + ",1,0,{\"hex\":\"0102030405\"}]}";
    EXPECT_THAT(problem_with(text_of({bound_row(1, "001b21aa0001"), row})),
                HasSubstr("line 3: table block, channel " + channel + ", command " + command +
                          ", pon_port 1, idx 0: bytes has 5 bytes, but must have 1"));
}

TEST(Configuration, TheWrongNumberOfRowsIsRefused)
{
    std::string text = text_of({bound_row(1, "001b21aa0001")});
    text.replace(text.find("{\"rows\":1}"), 10, "{\"rows\":2}");
    EXPECT_THAT(problem_with(text), HasSubstr("line 3: the text has 1 rows"));
}

TEST(Configuration, DeepNestingDoesNoHarm)
{
    EXPECT_THAT(problem_with(std::string(1000000, '[') + "\n"), HasSubstr("line 1"));
}

} // namespace
} // namespace ponsim
