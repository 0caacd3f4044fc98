// These tests read records by the catalogue.
#include "call/codec/decode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "call/json.h"
#include "usage_error.h"

namespace
{

using namespace call;

const catalogue::Channel &pon()
{
    return *catalogue::find_channel("BSP_MSG_PON");
}

constexpr catalogue::Call set = catalogue::Call::set;

Bytes pon_record(const std::vector<Assignment> &assignments)
{
    Bytes bytes(pon().record->size);
    set_fields(*pon().record, {&pon(), set}, assignments, false, "", bytes);
    return bytes;
}

// Returns the fields that are shown, as NAME=TEXT.
std::vector<std::string> shown(const Bytes &bytes, catalogue::Call call = set)
{
    std::vector<std::string> fields;
    for (const DecodedField &decoded : decode(read_record(*pon().record, {&pon(), call}, bytes)))
        if (!decoded.zero) fields.push_back(std::string(decoded.field->name) + "=" + decoded.text);
    return fields;
}

using Shown = std::vector<std::string>;

TEST(Decode, ShowsFieldsAsTheyWereGiven)
{
    EXPECT_EQ(shown(pon_record({{"cmd", "365"},
                                {"pon_port", "16"},
                                {"arg_byte16", "255"},
                                {"onu_mac", "00:11:22:33:44:55"},
                                {"text237", "a text"},
                                {"data429", "hex:00ff00"}})),
              (Shown{"cmd=365 BSP_CMD_ONU_BIND", "pon_port=16", "arg_byte16=255", "onu_mac=00:11:22:33:44:55",
                     "text237=a text", "data429=hex:00ff"}));
}

TEST(Decode, ShowsTheLayoutOfTheCommandInPlaceOfTheBlockThatHoldsIt)
{
    EXPECT_EQ(shown(pon_record({{"cmd", "BSP_CMD_OPT_RANGE_SET"}, {"min_distance", "10"}, {"max_distance", "20000"}})),
              (Shown{"cmd=424 BSP_CMD_OPT_RANGE_SET", "min_distance=10 m", "max_distance=20000 m"}));
}

// Returns the fields of a classification setting from its assignments.
Bytes classification(const std::vector<Assignment> &assignments)
{
    const catalogue::Command &command = *catalogue::find_command("BSP_CMD_ONU_CLASSIFICATION_SET");
    Bytes bytes(command.channel->record->size);
    set_fields(*command.channel->record, {command.channel, set, &command}, assignments, false, "", bytes);
    return bytes;
}

TEST(DecidedValues, AreReadAndShownAsTheOtherFieldSays)
{
    const catalogue::Command &command = *catalogue::find_command("BSP_CMD_ONU_CLASSIFICATION_SET");
    // A value may come before the field that decides about it, and each rule has fields of its own.
    const Bytes bytes = classification({{"value_a_1", "0211.2233.4455"},
                                        {"field_a_1", "source-MAC"},
                                        {"field_b_1", "destination-IPv4"},
                                        {"value_b_1", "10.1.2.3"},
                                        {"field_c_1", "VLAN"},
                                        {"value_c_1", "256"},
                                        {"field_a_8", "ethertype"},
                                        {"value_a_8", "0x88a8"},
                                        {"field_b_8", "DSCP"},
                                        {"value_b_8", "hex:00000000002e"}});
    const Reading reading = read_record(*command.channel->record, {command.channel, set, &command}, bytes);
    const auto shown = [&reading](const char *name) {
        return text_of(reading, *catalogue::find_field(reading.layout->fields, name));
    };
    EXPECT_EQ(shown("value_a_1"), "02:11:22:33:44:55");
    EXPECT_EQ(shown("value_b_1"), "10.1.2.3");
    EXPECT_EQ(shown("value_c_1"), "256");
    EXPECT_EQ(shown("value_a_8"), "0x88a8");
    EXPECT_EQ(shown("value_b_8"), "46");
    EXPECT_EQ(text::to_hex(std::span(bytes).subspan(368, 6)), "00000a010203");
    EXPECT_EQ(text::to_hex(std::span(bytes).subspan(376, 6)), "000000000100");

    JsonText json;
    json.record(reading);
    EXPECT_THAT(json.written(), testing::HasSubstr(R"("value_a_1": "02:11:22:33:44:55")"));
    EXPECT_THAT(json.written(), testing::HasSubstr(R"("value_b_1": "10.1.2.3")"));
    EXPECT_THAT(json.written(), testing::HasSubstr(R"("value_c_1": 256)"));
    EXPECT_THAT(json.written(), testing::HasSubstr(R"("value_a_8": 34984)"));
}

TEST(Counted, AreThePartsThatThereAreOfTheRulesThatThereAre)
{
    const catalogue::Command &command = *catalogue::find_command("BSP_CMD_ONU_CLASSIFICATION_SET");
    const Bytes bytes = classification({{"count", "2"}, {"entries_1", "1"}, {"entries_2", "3"}, {"entries_3", "4"}});
    const Reading reading = read_record(*command.channel->record, {command.channel, set, &command}, bytes);
    const auto counted = [&reading](const char *name) {
        return is_counted(reading, *catalogue::find_field(reading.layout->fields, name));
    };
    EXPECT_TRUE(counted("field_a_1"));
    EXPECT_FALSE(counted("value_b_1"));
    EXPECT_TRUE(counted("value_c_2"));
    EXPECT_FALSE(counted("operator_d_2"));
    EXPECT_FALSE(counted("field_a_3"));
}

TEST(DecidedValues, AreRefusedWhereTheyAreNoneOfTheirKind)
{
    const auto error = [](const char *field, const char *value) {
        return usage_error_of([&] { classification({{"field_a_1", field}, {"value_a_1", value}}); });
    };
    EXPECT_THAT(error("source-MAC", "100"), testing::HasSubstr("value_a_1: '100' is not"));
    EXPECT_EQ(error("source-IPv4", "100"), "value_a_1: '100' is not an IPv4 address, as 10.0.0.2");
    EXPECT_THAT(error("VLAN", "10.0.0.1"), testing::HasSubstr("value_a_1: '10.0.0.1' is not a number from 0"));
}

TEST(Secrets, AreHiddenInARecordAndNothingElseIs)
{
    const catalogue::Record &record = *pon().record;
    const Bytes bytes = pon_record({{"cmd", "BSP_CMD_LOID_ADD"}, {"loid", "shop17"}, {"password", "a long password"}});
    const Bytes hidden = without_secrets(record, {&pon(), set}, bytes);
    EXPECT_EQ(shown(hidden), (Shown{"cmd=408 BSP_CMD_LOID_ADD", "loid=shop17", "password=***"}));
    EXPECT_EQ(std::string(hidden.begin(), hidden.end()).find("long"), std::string::npos);
    const Bytes without = pon_record({{"cmd", "BSP_CMD_LOID_ADD"}, {"loid", "shop17"}});
    EXPECT_EQ(without_secrets(record, {&pon(), set}, without), without);
}

TEST(Decode, HidesNoByteThatTheLayoutDoesNotName)
{
    Bytes bytes = pon_record({{"cmd", "BSP_CMD_ONU_RELEASE_BATCH"}, {"onu_set", "3"}});
    bytes[431] = 0xee;
    EXPECT_EQ(shown(bytes), (Shown{"cmd=367 BSP_CMD_ONU_RELEASE_BATCH", "data429=hex:0000ee", "onu_set=3"}));
}

TEST(Decode, NamesTheCommandThatTheCallIsFor)
{
    const Bytes bytes = pon_record({{"cmd", "381"}});
    EXPECT_EQ(shown(bytes, catalogue::Call::get), (Shown{"cmd=381 BSP_CMD_WHITELIST_GET"}));
    EXPECT_EQ(shown(bytes, catalogue::Call::dgram_get), (Shown{"cmd=381 BSP_CMD_ONU_INFO_GET"}));
}

TEST(Decode, ReadsTheAnswerOfACommandByTheRecordThatItIs)
{
    const catalogue::Channel &configuration = *catalogue::find_channel("BSP_MSG_ONU_CFG");
    const catalogue::Command *command = catalogue::find_command("BSP_CMD_VIEW_ONU_CONFIG");
    EXPECT_EQ(answer_record(*configuration.record, command).name, "bsp_pon_msg_ext");
    EXPECT_EQ(answer_record(*configuration.record, nullptr).name, "bsp_onu_msg");
}

TEST(Decode, ReadsAnswersByTheLayoutOfTheAnswer)
{
    const Bytes bytes = pon_record({{"cmd", "BSP_CMD_AUTH_GET"}, {"pon_port", "3"}});
    const auto layout = [&bytes](bool is_answer) {
        return read_record(*pon().record, {&pon(), catalogue::Call::get, nullptr, is_answer}, bytes).layout;
    };
    EXPECT_EQ(layout(false), nullptr);
    ASSERT_NE(layout(true), nullptr);
    EXPECT_EQ(layout(true)->name, "auth_counts");
}

TEST(Decode, ReadsAnAnswerWithoutALayoutOfItsOwnAsTheRequest)
{
    const Bytes bytes = pon_record({{"cmd", "BSP_CMD_ONU_RELEASE_BATCH"}, {"onu_set", "3"}});
    EXPECT_EQ(read_record(*pon().record, {&pon(), set, nullptr, true}, bytes).layout->name, "onu_batch");
}

TEST(Decode, TurnsTheWordsThatTheLayoutOfTheAnswerNames)
{
    Bytes bytes = pon_record({{"cmd", "BSP_CMD_WHITELIST_IDS"}});
    bytes[432] = 1;
    swap_words(*pon().record, {&pon(), catalogue::Call::get, catalogue::find_command("BSP_CMD_WHITELIST_IDS"), true},
               bytes);
    EXPECT_EQ(bytes[435], 1);
}

TEST(Decode, ShowsABlockThatIsATextAsOne)
{
    EXPECT_EQ(shown(pon_record({{"data429", "text:/tmp/result"}})), (Shown{"data429=text:/tmp/result"}));
}

TEST(Decode, LeavesOutWhatAShortRecordDoesNotReach)
{
    Bytes bytes = pon_record({{"cmd", "365"}, {"pon_port", "1"}, {"onu_id", "2"}});
    bytes.resize(11);
    EXPECT_EQ(shown(bytes), (Shown{"cmd=365 BSP_CMD_ONU_BIND", "pon_port=1"}));
    bytes.resize(3);
    EXPECT_EQ(shown(bytes), Shown{});
    bytes.resize(0);
    EXPECT_EQ(shown(bytes), Shown{});
}

TEST(Decode, TextWithoutAnEndStopsWithItsField)
{
    Bytes bytes(944);
    std::fill(bytes.begin() + 45, bytes.begin() + 109, uint8_t{'x'});
    EXPECT_EQ(shown(bytes), (Shown{"text45=" + std::string(64, 'x')}));
}

TEST(SetFields, LongTextsRunOnAndStopWithTheRecord)
{
    Bytes bytes(944);
    set_fields(*pon().record, {&pon(), set}, std::vector<Assignment>{{"text365", std::string(2000, 'x')}}, true, "",
               bytes);
    EXPECT_EQ(bytes.size(), 944u);
    EXPECT_EQ(bytes[364], 0);
    EXPECT_EQ(bytes[943], 'x');
}

} // namespace
