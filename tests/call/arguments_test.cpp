// These tests make the arguments that the library is called with from words of the form name=value.
#include "call/arguments.h"

#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "usage_error.h"

namespace
{

using namespace call;
using testing::HasSubstr;

using Words = std::vector<std::string>;

const catalogue::Operation &operation(const char *name)
{
    return *catalogue::find_operation(name);
}

std::string error_of(const char *name, const Words &words)
{
    return usage_error_of([&] { Arguments(operation(name), words); });
}

const char *text_at(const Arguments &arguments, size_t index)
{
    return static_cast<const char *>(arguments.values()[index].pointer);
}

constexpr const char *bind = "bsp_pon_bind_onu_spec_id";
constexpr const char *batch = "bsp_pon_no_bind_onu_batch_spec_id";

TEST(Arguments, AreTakenInAnyOrder)
{
    const Arguments arguments(operation(bind),
                              Words{"value=2", "text_a=first", "mac=00:11:22:33:44:55", "onu_id=0x5", "pon_port=1"});
    const auto values = arguments.values();
    EXPECT_EQ(values[0].number, 1u);
    EXPECT_EQ(values[1].number, 5u);
    EXPECT_EQ(std::memcmp(values[2].pointer, "\x00\x11\x22\x33\x44\x55", 6), 0);
    EXPECT_STREQ(text_at(arguments, 3), "first");
    EXPECT_EQ(values[5].number, 2u);
}

TEST(Arguments, TextsLeftOutAreNullAndEmptyOnesAreNot)
{
    const Arguments arguments(operation(bind),
                              Words{"pon_port=1", "onu_id=5", "mac=00:11:22:33:44:55", "value=0", "text_b="});
    EXPECT_EQ(arguments.values()[3].pointer, nullptr);
    EXPECT_STREQ(text_at(arguments, 4), "");
}

TEST(Arguments, NumbersAreGivenByTheNamesThatTheLayoutHas)
{
    const auto number = [](const char *name, const Words &words, size_t index) {
        return Arguments(operation(name), words).values()[index].number;
    };
    EXPECT_EQ(number("bsp_pon_onu_ctc_oam_print", {"value=messages"}, 0), 2u);
    EXPECT_EQ(number("bsp_pon_onu_ctc_oam_print", {"value=1"}, 0), 1u);
    EXPECT_EQ(number("bsp_debug_plat_ingress_behavior_get", {"port=1", "selector=GE-port"}, 1), 1u);
    EXPECT_EQ(number("bsp_debug_plat_ge_phy_set", {"port=1", "value=loopback,full-duplex"}, 1), 0x41u);
    EXPECT_EQ(error_of("bsp_pon_onu_ctc_oam_print", {"value=all"}),
              "value: 'all' is not one of nothing, errors, messages, nor a number");
}

TEST(Arguments, UnknownOnesAreNamedWithTheKnown)
{
    EXPECT_EQ(error_of(bind, {"macc=00:11:22:33:44:55"}),
              "macc: not an argument of bsp_pon_bind_onu_spec_id; did you mean mac? (known are pon_port, onu_id, mac, "
              "text_a, text_b, value, text_c)");
    EXPECT_THAT(error_of(bind, {"pon_port.x=1"}), HasSubstr("pon_port.x: not an argument of"));
    EXPECT_THAT(error_of("bsp_pon_exec_get_json", {"db_out=1"}), HasSubstr("db_out: not an argument of"));
}

TEST(Arguments, RepeatedOnesAreRefused)
{
    EXPECT_EQ(error_of(bind, {"pon_port=1", "pon_port=2"}), "pon_port: given twice");
    EXPECT_EQ(error_of(batch, {"record.pon_port=1", "record.pon_port=2"}), "record.pon_port: given twice");
}

TEST(Arguments, MissingOnesAreNamedWithWhatIsExpected)
{
    EXPECT_EQ(error_of(bind, {"pon_port=1", "onu_id=5", "value=0"}),
              "mac: missing; give mac=MAC (ONU MAC address, 6 bytes in transmission order)");
    EXPECT_EQ(error_of("bsp_pon_cfg", {"pon_port=1"}), "cmd: missing; give cmd=COMMAND (command code)");
    EXPECT_THAT(error_of(batch, {}), HasSubstr("record: missing; give record.FIELD=VALUE or record=BLOCK"));
}

TEST(Arguments, MacThatTheLibraryDoesNotCheckIsNeverNull)
{
    EXPECT_THAT(error_of("bsp_pon_no_bind_onu_spec_id_and_mac", {"pon_port=1", "onu_id=5"}), HasSubstr("mac: missing"));
}

TEST(Arguments, NumbersThatTheOperationIgnoresMayBeLeftOut)
{
    const Arguments arguments(operation("bsp_pon_exec_get_json"), Words{"cmd=384", "pon_port=1"});
    EXPECT_EQ(arguments.values()[2].number, 0u);
}

TEST(Arguments, TextsLongerThanTheirFieldNeedLeave)
{
    const Words words{"pon_port=1", "onu_id=5", "mac=00:11:22:33:44:55", "value=0", "text_b=" + std::string(64, 'x')};
    EXPECT_EQ(error_of(bind, words), "text_b: 64 bytes are more than the 63 that text173 holds; --allow-long lets them "
                                     "run on into the fields behind it");
    const Arguments arguments(operation(bind), words, true);
    EXPECT_EQ(std::strlen(text_at(arguments, 4)), 64u);
}

TEST(Arguments, TextThatFillsItsFieldGoes)
{
    EXPECT_EQ(error_of(bind, {"pon_port=1", "onu_id=5", "mac=00:11:22:33:44:55", "value=0",
                              "text_b=" + std::string(63, 'x')}),
              "no error");
}

TEST(Arguments, LengthIsThatOfItsBlockUnlessStated)
{
    const Arguments whole(operation("bsp_pon_cfg"), Words{"cmd=1", "pon_port=1", "data=hex:010203"});
    EXPECT_EQ(whole.values()[3].number, 3u);
    const Arguments part(operation("bsp_pon_cfg"), Words{"length=2", "cmd=1", "pon_port=1", "data=hex:010203"});
    EXPECT_EQ(part.values()[3].number, 2u);
    const Arguments none(operation("bsp_pon_cfg"), Words{"cmd=1", "pon_port=1"});
    EXPECT_EQ(none.values()[2].pointer, nullptr);
    EXPECT_EQ(none.values()[3].number, 0u);
}

TEST(Arguments, LengthBeyondTheBlockIsRefused)
{
    EXPECT_EQ(error_of("bsp_pon_cfg", {"cmd=1", "pon_port=1", "data=hex:010203", "length=4"}),
              "length: 4 is more than the 3 bytes of data");
}

TEST(Arguments, BlockLongerThanItsFieldNeedsLeave)
{
    const Words words{"cmd=1", "pon_port=1", "data=text:" + std::string(516, 'x')};
    EXPECT_EQ(error_of("bsp_pon_cfg", words), "data: 516 bytes are more than the 515 that data429 holds; --allow-long "
                                              "lets them run on into the fields behind it");
    EXPECT_EQ(Arguments(operation("bsp_pon_cfg"), words, true).values()[3].number, 516u);
}

TEST(Arguments, EmptyBlockIsNotNull)
{
    const Arguments arguments(operation("bsp_pon_cfg"), Words{"cmd=1", "pon_port=1", "data=hex:"});
    EXPECT_NE(arguments.values()[2].pointer, nullptr);
    EXPECT_EQ(arguments.values()[3].number, 0u);
}

TEST(Arguments, RecordTakesItsFieldsAndThoseOfItsCommand)
{
    const Arguments arguments(operation(batch), Words{"record.pon_port=3", "record.onu_set=1-5,7"});
    const auto record = arguments.bytes(0);
    ASSERT_EQ(record.size(), 944u);
    EXPECT_EQ(load_word(record.data() + 4), 3u);
    EXPECT_EQ(load_word(record.data() + 432), 0xbeu);
}

TEST(Arguments, CommandInTheRecordSaysWhichFieldsThereAre)
{
    const Arguments arguments(operation("bsp_pon_exec_set"),
                              Words{"record.max_distance=20000", "record.cmd=BSP_CMD_OPT_RANGE_SET"});
    EXPECT_EQ(load_word(arguments.bytes(0).data() + 436), 20000u);
    EXPECT_THAT(error_of("bsp_pon_exec_set", {"record.max_distance=20000", "record.cmd=1"}),
                HasSubstr("record.max_distance: not a field of bsp_pon_msg"));
}

TEST(Arguments, FieldsOfARecordAreCheckedByTheirTypes)
{
    EXPECT_EQ(error_of(batch, {"record.arg_byte16=256"}),
              "record.arg_byte16: '256' is not a number from 0 to 255, decimal or hexadecimal with 0x");
    EXPECT_EQ(error_of(batch, {"record.onu_st=1"}).substr(0, 76),
              "record.onu_st: not a field of bsp_pon_msg; did you mean onu_set? (known are ");
    EXPECT_THAT(error_of(batch, {"record.text365=" + std::string(64, 'x')}),
                HasSubstr("record.text365: 64 bytes are more than the 63 that text365 holds"));
}

TEST(Arguments, RecordTakesOnlyTheFieldsThatTheOperationUses)
{
    const Arguments arguments(operation("bsp_pon_confirm_onu"), Words{"pon_port=1", "onu.onu_id=7"});
    EXPECT_EQ(load_word(arguments.bytes(1).data() + 8), 7u);
    EXPECT_EQ(error_of("bsp_pon_confirm_onu", {"pon_port=1", "onu.pon_port=1"}),
              "onu.pon_port: not used by bsp_pon_confirm_onu (what counts of onu is onu_id, arg_byte16, onu_mac, "
              "arg_word36)");
    EXPECT_THAT(error_of("bsp_pon_confirm_onu", {"pon_port=1", "onu.onu_ld=1"}), HasSubstr("did you mean onu_id?"));
}

TEST(Arguments, CommandCodeThatTheOperationWritesIsNotTheCallers)
{
    for (const char *writing : {batch, "bsp_pon_get_onu_info", "bsp_pon_no_bind_blacklist_batch"})
        EXPECT_THAT(error_of(writing, {"record.cmd=1"}),
                    HasSubstr("record.cmd: " + std::string(writing) + " writes its own command code, BSP_CMD_"));
}

TEST(Arguments, RecordMayBeABlockWithFieldsSetOnIt)
{
    const Arguments arguments(operation(batch), Words{"record=hex:0102030405060708090a", "record.onu_id=7"});
    EXPECT_EQ(arguments.bytes(0)[4], 5);
    EXPECT_EQ(load_word(arguments.bytes(0).data() + 8), 7u);
    EXPECT_EQ(arguments.bytes(0).size(), 944u);
}

TEST(Arguments, BlockLongerThanTheRecordIsRefused)
{
    EXPECT_EQ(error_of(batch, {"record=text:" + std::string(945, 'x')}),
              "record: 945 bytes are more than the 944 of bsp_pon_msg");
}

TEST(Arguments, OutputsHaveRoomForAWholeResponse)
{
    const Arguments arguments(operation("bsp_pon_exec_get_file"), Words{"cmd=1", "pon_port=1"});
    EXPECT_EQ(arguments.bytes(2).size(), 944u);
    EXPECT_EQ(arguments.values()[2].pointer, arguments.bytes(2).data());
}

TEST(Arguments, ResponsesHaveRoomForWhatTheOperationAllows)
{
    for (const auto &[name, size] :
         {std::pair{"bsp_pon_get_w_onu_spec_id", 776u}, {"bsp_pon_onu_auth_mode_type_get", 944u}}) {
        const Words words = size == 776 ? Words{"pon_port=1", "onu_id=1"} : Words{"pon_port=1"};
        const Arguments arguments(operation(name), words);
        EXPECT_EQ(arguments.bytes(words.size()).size(), size);
        EXPECT_EQ(arguments.values()[words.size()].pointer, arguments.bytes(words.size()).data());
    }
}

TEST(Arguments, CommandIsTheOperationsOrTheCallers)
{
    EXPECT_EQ(Arguments(operation(batch), Words{"record=hex:01000000"}).command()->code, 367u);
    EXPECT_EQ(Arguments(operation("bsp_pon_exec_set"), Words{"record.cmd=365"}).command()->code, 365u);
    EXPECT_EQ(Arguments(operation("bsp_pon_exec_get_json"), Words{"cmd=384", "pon_port=0"}).command()->code, 384u);
    EXPECT_EQ(Arguments(operation("bsp_pon_exec_get"), Words{"record.cmd=381"}).command()->name,
              "BSP_CMD_WHITELIST_GET");
    EXPECT_EQ(Arguments(operation("bsp_pon_exec_get_json"), Words{"cmd=1", "pon_port=0"}).command(), nullptr);
}

} // namespace
