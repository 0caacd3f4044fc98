// These tests store, fetch, list and delete profiles under action codes.
#include <sqlite3.h>

#include "profiles.h"
#include "rows.h"

namespace ponsim
{
namespace
{

uint32_t word_at(const std::string &bytes, size_t offset)
{
    uint32_t word = 0;
    EXPECT_LE(offset + sizeof word, bytes.size());
    if (offset + sizeof word <= bytes.size()) memcpy(&word, bytes.data() + offset, sizeof word);
    return word;
}

TEST(Profiles, WhatWasStoredIsFetchedWhole)
{
    ProfileFixture fixture;
    for (uint32_t kind : all_kinds) {
        ASSERT_EQ(fixture.keep(kind, "Größe L", with_id(words_of_kind(kind), 9)), BSP_OK);
        EXPECT_EQ(fixture.fetched(kind, "Größe L"), payload_of("Größe L", with_id(words_of_kind(kind), 9))) << kind;
    }
}

TEST(Profiles, AnAnswerRepeatsItsAction)
{
    ProfileFixture fixture;
    fixture.keep(16, "gold", gold_line);
    const std::string answer = fixture.get(18, name_field("gold")).answer.value_or("");
    EXPECT_EQ(word_at(answer, 0), 18u);
    EXPECT_EQ(word_at(answer, 4), 1u);
}

TEST(Profiles, AKindHasNamesOfItsOwn)
{
    ProfileFixture fixture;
    fixture.keep(16, "gold", gold_line);
    EXPECT_EQ(fixture.get(32 + fetch, name_field("gold")).status, PON_ERR_NO_PROFILE);
    EXPECT_EQ(fixture.set(48 + drop, name_field("gold")), PON_ERR_NO_PROFILE);
    EXPECT_EQ(fixture.get(16 + fetch, name_field("gold")).status, BSP_OK);
}

TEST(Profiles, TheNameMayStandInAPayloadOfAWholeProfile)
{
    ProfileFixture fixture;
    fixture.keep(32, "gold", gold_sla);
    EXPECT_EQ(fixture.get(32 + fetch, payload_of("gold", gold_line)).status, BSP_OK);
    EXPECT_EQ(fixture.set(32 + drop, payload_of("gold", gold_line)), BSP_OK);
}

TEST(Profiles, ADeletedProfileIsUnknown)
{
    ProfileFixture fixture;
    fixture.keep(16, "gold", gold_line);
    EXPECT_EQ(fixture.set(16 + drop, name_field("gold")), BSP_OK);
    EXPECT_EQ(fixture.get(16 + fetch, name_field("gold")).status, PON_ERR_NO_PROFILE);
    EXPECT_EQ(fixture.set(16 + drop, name_field("gold")), PON_ERR_NO_PROFILE);
}

TEST(Profiles, ANewProfileGetsTheLowestFreeId)
{
    ProfileFixture fixture;
    fixture.keep(16, "one", gold_line);
    fixture.keep(16, "three", with_id(gold_line, 3));
    fixture.keep(16, "two", gold_line);
    EXPECT_EQ(word_at(fixture.fetched(16, "one"), 32), 1u);
    EXPECT_EQ(word_at(fixture.fetched(16, "two"), 32), 2u);
}

TEST(Profiles, AProfileTakesThePlaceOfTheOneOfItsName)
{
    ProfileFixture fixture;
    fixture.keep(16, "gold", with_id(gold_line, 7));
    const Words changed{0, 200, 0, 0, 0, 0};
    EXPECT_EQ(fixture.keep(16, "gold", changed), BSP_OK);
    EXPECT_EQ(fixture.fetched(16, "gold"), payload_of("gold", with_id(changed, 7)));
    EXPECT_EQ(fixture.simulator.olt().profiles(ProfileKind::line).size(), 1u);
}

TEST(Profiles, AProfileMovesToAnotherId)
{
    ProfileFixture fixture;
    fixture.keep(16, "gold", with_id(gold_line, 7));
    EXPECT_EQ(fixture.keep(16, "gold", with_id(gold_line, 8)), BSP_OK);
    EXPECT_EQ(fixture.keep(16, "silver", with_id(gold_line, 7)), BSP_OK);
    EXPECT_EQ(word_at(fixture.fetched(16, "gold"), 32), 8u);
}

TEST(Profiles, AnIdIsOneProfiles)
{
    ProfileFixture fixture;
    fixture.keep(16, "gold", with_id(gold_line, 7));
    EXPECT_EQ(fixture.keep(16, "silver", with_id(gold_line, 7)), PON_ERR_ID_IN_USE);
    EXPECT_EQ(fixture.keep(32, "silver", with_id(gold_sla, 7)), BSP_OK);
}

TEST(Profiles, ThereAre256OfAKind)
{
    ProfileFixture fixture;
    for (int n = 0; n < 256; ++n)
        ASSERT_EQ(fixture.keep(32, std::to_string(n), gold_sla), BSP_OK) << n;
    EXPECT_EQ(fixture.keep(32, "256", gold_sla), PON_ERR_TABLE_FULL);
    EXPECT_EQ(fixture.keep(32, "255", gold_sla), BSP_OK);
    EXPECT_EQ(fixture.keep(16, "256", gold_line), BSP_OK);
    EXPECT_EQ(fixture.set(32 + drop, name_field("100")), BSP_OK);
    EXPECT_EQ(fixture.keep(32, "256", gold_sla), BSP_OK);
    EXPECT_EQ(word_at(fixture.fetched(32, "256"), 32), 101u);
}

TEST(Profiles, EachValueHasItsRange)
{
    struct Range {
        uint32_t kind;
        size_t word;
        int32_t least;
        int32_t greatest;
        Words others;
    };
    const Words wide_sla{0, 0, 0, 1000000, 0, 1};
    const Words wide_alarm{0, -4000, 12000, -4000, 1000, -4000, 1000};
    const Range ranges[] = {
        {16, 0, 0, 256, gold_line},        {16, 1, 0, 4094, gold_line},      {16, 2, 0, 7, gold_line},
        {16, 3, 0, 1000000, gold_line},    {16, 4, 0, 1000000, gold_line},   {16, 5, 0, 1024, gold_line},
        {32, 1, 0, 1000000, wide_sla},     {32, 2, 0, 1000000, wide_sla},    {32, 3, 1, 1000000, wide_sla},
        {32, 4, 0, 7, wide_sla},           {32, 5, 1, 100, wide_sla},        {48, 1, -4000, 11999, wide_alarm},
        {48, 2, -3999, 12000, wide_alarm}, {48, 3, -4000, 999, wide_alarm},  {48, 4, -3999, 1000, wide_alarm},
        {48, 5, -4000, 999, wide_alarm},   {48, 6, -3999, 1000, wide_alarm},
    };
    for (const auto &[kind, word, least, greatest, others] : ranges) {
        ProfileFixture fixture;
        const auto kept = [&](int32_t value) {
            Words words = others;
            words[word] = value;
            return fixture.keep(kind, "x", words);
        };
        EXPECT_EQ(kept(least), BSP_OK) << kind << ' ' << word;
        EXPECT_EQ(kept(greatest), BSP_OK) << kind << ' ' << word;
        EXPECT_EQ(kept(least - 1), PON_ERR_BAD_RECORD) << kind << ' ' << word;
        EXPECT_EQ(kept(greatest + 1), PON_ERR_BAD_RECORD) << kind << ' ' << word;
    }
}

TEST(Profiles, FixedAndAssuredBandwidthStayWithinTheMaximum)
{
    ProfileFixture fixture;
    EXPECT_EQ(fixture.keep(32, "x", {0, 400, 600, 1000, 0, 1}), BSP_OK);
    EXPECT_EQ(fixture.keep(32, "x", {0, 400, 601, 1000, 0, 1}), PON_ERR_BAD_RECORD);
}

TEST(Profiles, ALowThresholdIsBelowItsHighOne)
{
    for (size_t low : {1, 3, 5}) {
        ProfileFixture fixture;
        Words words = cold_alarm;
        words[low] = words[low + 1];
        EXPECT_EQ(fixture.keep(48, "x", words), PON_ERR_BAD_RECORD) << low;
        --words[low];
        EXPECT_EQ(fixture.keep(48, "x", words), BSP_OK) << low;
    }
}

TEST(Profiles, ANameIsACleanTextThatEndsInItsField)
{
    ProfileFixture fixture;
    for (const std::string &bad : {std::string(), std::string(32, 'x'), std::string("a\nb"), std::string("\xff")})
        EXPECT_EQ(fixture.keep(16, bad, gold_line), PON_ERR_BAD_RECORD) << bad;
    EXPECT_EQ(fixture.keep(16, std::string(31, 'x'), gold_line), BSP_OK);
    EXPECT_EQ(fixture.get(16 + fetch, std::string(32, 'x')).status, PON_ERR_BAD_RECORD);
}

TEST(Profiles, APayloadOfAnotherLengthIsRefused)
{
    ProfileFixture fixture;
    for (uint32_t kind : all_kinds) {
        const std::string whole = payload_of("gold", words_of_kind(kind));
        EXPECT_EQ(fixture.set(kind + put_in, whole + '\0'), PON_ERR_BAD_RECORD) << kind;
        EXPECT_EQ(fixture.set(kind + put_in, whole.substr(0, whole.size() - 1)), PON_ERR_BAD_RECORD) << kind;
        ASSERT_EQ(fixture.set(kind + put_in, whole), BSP_OK) << kind;
        for (size_t length : {size_t{31}, size_t{33}, whole.size() - 1}) {
            EXPECT_EQ(fixture.get(kind + fetch, whole.substr(0, length)).status, PON_ERR_BAD_RECORD) << length;
            EXPECT_EQ(fixture.set(kind + drop, whole.substr(0, length)), PON_ERR_BAD_RECORD) << length;
        }
    }
}

TEST(Profiles, TheShortestAndTheLongestRequestAreHandled)
{
    for (size_t length : {0, 4092})
        for (uint32_t kind : all_kinds) {
            ProfileFixture fixture;
            fixture.keep(kind, "gold", words_of_kind(kind));
            const std::string payload(length, '\0');
            EXPECT_EQ(fixture.set(kind + put_in, payload), PON_ERR_BAD_RECORD);
            EXPECT_EQ(fixture.get(kind + fetch, payload).status, PON_ERR_BAD_RECORD);
            EXPECT_EQ(fixture.set(kind + drop, payload), PON_ERR_BAD_RECORD);
            EXPECT_EQ(word_at(fixture.get(kind + list, payload).answer.value_or(""), 24), 1u);
            EXPECT_TRUE(fixture.get(kind + table, payload).file);
            EXPECT_TRUE(fixture.get(kind + text, payload).file);
        }
}

TEST(Profiles, AnActionBelongsToItsCall)
{
    ProfileFixture fixture;
    for (uint32_t kind : all_kinds) {
        for (uint32_t action : {fetch, list, table, text})
            EXPECT_EQ(fixture.set(kind + action, {}), PON_ERR_UNKNOWN_COMMAND);
        for (uint32_t action : {put_in, drop})
            EXPECT_EQ(fixture.get(kind + action).status, PON_ERR_UNKNOWN_COMMAND);
        EXPECT_EQ(fixture.get(kind).status, PON_ERR_UNKNOWN_COMMAND);
        EXPECT_EQ(fixture.get(kind + 7).status, PON_ERR_UNKNOWN_COMMAND);
    }
}

TEST(Profiles, TheListHasIdsAndNamesInOrderOfId)
{
    ProfileFixture fixture;
    fixture.keep(16, "second", with_id(gold_line, 20));
    fixture.keep(16, "first", with_id(gold_line, 3));
    const std::string answer = fixture.get(16 + list).answer.value_or("");
    EXPECT_EQ(word_at(answer, 24), 2u);
    EXPECT_EQ(word_at(answer, 28), 3u);
    EXPECT_EQ(answer.substr(32, 32), name_field("first"));
    EXPECT_EQ(word_at(answer, 64), 20u);
    EXPECT_EQ(answer.substr(68, 32), name_field("second"));
    EXPECT_EQ(answer.find_first_not_of('\0', 100), std::string::npos);
}

TEST(Profiles, ALongListGoesOnFromTheIdThatIsStated)
{
    ProfileFixture fixture;
    for (int n = 0; n < 256; ++n)
        fixture.keep(16, std::string(28, 'x') + std::to_string(n), gold_line);
    std::vector<uint32_t> seen;
    std::vector<uint32_t> numbers;
    uint32_t from = 0;
    for (int answers = 0; answers < 4; ++answers) {
        const std::string payload(reinterpret_cast<const char *>(&from), sizeof from);
        const std::string answer = fixture.get(16 + list, payload).answer.value_or("");
        EXPECT_LE(answer.size(), sizeof(bsp_profile_msg));
        numbers.push_back(word_at(answer, 24));
        for (uint32_t entry = 0; entry < numbers.back(); ++entry)
            seen.push_back(word_at(answer, 28 + entry * 36));
        from = seen.back() + 1;
    }
    EXPECT_EQ(numbers, (std::vector<uint32_t>{113, 113, 30, 0}));
    ASSERT_EQ(seen.size(), 256u);
    for (uint32_t index = 0; index < 256; ++index)
        EXPECT_EQ(seen[index], index + 1);
}

TEST(Profiles, TheTableHasARowAProfile)
{
    ProfileFixture fixture;
    fixture.keep(16, "say \"gold\"", with_id(gold_line, 20));
    fixture.keep(48, "cold", cold_alarm);
    EXPECT_EQ(fixture.file(16 + table), R"([{"id":20,"name":"say \"gold\"","vlan":100,"priority":5,"upstream":20000,)"
                                        R"("downstream":100000,"mac_limit":16}])");
    EXPECT_EQ(fixture.file(32 + table), "[]");
    const rapidjson::Document alarms = parse(fixture.file(48 + table));
    ASSERT_EQ(alarms.Size(), 1u);
    EXPECT_EQ(alarms[0]["temperature_low"].GetDouble(), -40.0);
    EXPECT_EQ(alarms[0]["received_power_low"].GetDouble(), -28.5);
}

TEST(Profiles, TheLongestTableStaysWithinAResult)
{
    ProfileFixture fixture;
    for (int n = 0; n < 256; ++n)
        fixture.keep(48, std::string(28, '"') + std::to_string(n), cold_alarm);
    EXPECT_EQ(parse(fixture.file(48 + table)).Size(), 256u);
    EXPECT_LE(fixture.file(48 + table).size(), max_result);
}

TEST(Profiles, TheNameOfATableFitsTheAnswersRoom)
{
    ProfileFixture fixture;
    const Reply reply = fixture.get(16 + table);
    EXPECT_EQ(reply.answer, std::nullopt);
    EXPECT_EQ(reply.file.value().name_at, 24u);
}

TEST(Profiles, TheTextHasALineAValue)
{
    ProfileFixture fixture;
    fixture.keep(32, "gold", gold_sla);
    fixture.keep(48, "cold store", with_id(cold_alarm, 2));
    EXPECT_EQ(fixture.file(16 + text), "# line profiles: 0\n");
    EXPECT_EQ(fixture.file(32 + text),
              "# sla profiles: 1\nsla-profile 1 gold\n fixed 1000\n assured 2000\n maximum 5000\n"
              " priority 7\n weight 100\n");
    EXPECT_EQ(fixture.file(48 + text), "# alarm profiles: 1\nalarm-profile 2 cold store\n temperature_low -40.00\n"
                                       " temperature_high 70.50\n launch_power_low -1.00\n launch_power_high 6.00\n"
                                       " received_power_low -28.50\n received_power_high -8.00\n");
}

TEST(Profiles, TheAnswerCountsTheBytesOfTheText)
{
    ProfileFixture fixture;
    fixture.keep(32, "größer", gold_sla);
    const Reply reply = fixture.get(32 + text);
    EXPECT_EQ(word_at(reply.answer.value_or(""), 8), reply.file.value().content.size());
    EXPECT_EQ(reply.file.value().name_at, 24u);
}

TEST(Profiles, TheySurviveReopening)
{
    Folder folder;
    {
        ProfileFixture fixture(WantedSettings{}, folder.file("olt.db"));
        for (uint32_t kind : all_kinds) {
            fixture.keep(kind, "kept", with_id(words_of_kind(kind), 5));
            fixture.keep(kind, "kept", with_id(words_of_kind(kind), 6));
            fixture.keep(kind, "gone", words_of_kind(kind));
            fixture.set(kind + drop, name_field("gone"));
        }
    }
    ProfileFixture fixture(WantedSettings{}, folder.file("olt.db"));
    for (uint32_t kind : all_kinds) {
        EXPECT_EQ(fixture.fetched(kind, "kept"), payload_of("kept", with_id(words_of_kind(kind), 6)));
        EXPECT_EQ(fixture.get(kind + fetch, name_field("gone")).status, PON_ERR_NO_PROFILE);
        EXPECT_EQ(word_at(fixture.get(kind + list).answer.value_or(""), 24), 1u);
    }
}

TEST(Profiles, ADamagedOneIsFoundOnOpening)
{
    for (const char *damage :
         {"kind = 4", "kind = 0", "id = 257", "id = 0", "name = ''", "fields = x''", "fields = zeroblob(20)",
          "fields = x'e8030000d007000088130000070000006400000000'", "fields = x'00'"}) {
        Folder folder;
        const std::string file = folder.file("olt.db");
        ProfileFixture(WantedSettings{}, file).keep(32, "gold", gold_sla);
        sqlite3 *db = nullptr;
        ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
        const std::string update = std::string("UPDATE profile SET ") + damage;
        EXPECT_EQ(sqlite3_exec(db, update.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << update;
        sqlite3_close(db);
        EXPECT_THROW(ProfileFixture(WantedSettings{}, file), StoreError) << damage;
    }
}

} // namespace
} // namespace ponsim
