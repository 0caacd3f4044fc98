// These tests check single values: what the tool reads from a command line, and what it says of values that it cannot
// read.
#include "call/codec/values.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include "usage_error.h"

namespace
{

using namespace call;
using Mac = std::array<uint8_t, 6>;

TEST(Number, IsDecimalOrHexadecimal)
{
    EXPECT_EQ(parse_number("n", "0"), 0u);
    EXPECT_EQ(parse_number("n", "4294967295"), 0xffffffffu);
    EXPECT_EQ(parse_number("n", "0xFFFFffff"), 0xffffffffu);
    EXPECT_EQ(parse_number("n", "010"), 10u);
}

TEST(Number, ErrorNamesTheArgumentAndTheRange)
{
    EXPECT_EQ(usage_error_of([] { parse_number("onu_id", "4x"); }),
              "onu_id: '4x' is not a number from 0 to 4294967295, decimal or hexadecimal with 0x");
    EXPECT_EQ(usage_error_of([] { parse_number("arg_byte16", "256", 255); }),
              "arg_byte16: '256' is not a number from 0 to 255, decimal or hexadecimal with 0x");
}

TEST(Number, RefusesWhatIsNotWhollyANumberOfTheRange)
{
    for (const char *text : {"", "-1", "+1", " 1", "1 ", "0x", "0x100000000", "4294967296", "1.5", "0x-1"})
        EXPECT_NE(usage_error_of([text] { parse_number("n", text); }), "no error") << text;
}

TEST(Mac, IsReadInEachOfItsThreeForms)
{
    const Mac mac{0x00, 0x1a, 0xff, 0x33, 0x44, 0x55};
    EXPECT_EQ(parse_mac("mac", "00:1a:ff:33:44:55"), mac);
    EXPECT_EQ(parse_mac("mac", "00-1A-FF-33-44-55"), mac);
    EXPECT_EQ(parse_mac("mac", "001a.ff33.4455"), mac);
}

TEST(Mac, ErrorNamesTheArgumentAndTheForm)
{
    EXPECT_EQ(usage_error_of([] { parse_mac("mac", "00:11"); }),
              "mac: '00:11' is not a MAC address: six pairs of hexadecimal digits, as 00:11:22:33:44:55");
}

TEST(Mac, RefusesOtherLengthsMixedSeparatorsAndOtherDigits)
{
    for (const char *text : {"", "001122334455", "00:11:22:33:44", "00:11:22:33:44:55:66", "00:11:22:33:44:5",
                             "00:11:22:33:44:5g", "00:11-22:33:44:55", "0011:2233:4455", "00:11:22:33:44:555"})
        EXPECT_NE(usage_error_of([text] { parse_mac("mac", text); }), "no error") << text;
}

TEST(IdSet, IsIdsAndRunsOfThem)
{
    EXPECT_EQ(parse_idset("set", "1-5,7"), (IdSet{0xbe, 0, 0, 0}));
    EXPECT_EQ(parse_idset("set", "127,31,32"), (IdSet{0x80000000, 1, 0, 0x80000000}));
    EXPECT_EQ(parse_idset("set", ""), IdSet{});
}

TEST(IdSet, ReadsBackAsItWasWritten)
{
    for (const char *text : {"", "0", "127", "1-5,7", "0-127", "30-33,63-64,95-96,127"})
        EXPECT_EQ(format_idset(parse_idset("set", text)), text);
}

TEST(IdSet, RefusesIdsOutsideThePortAndRunsThatFall)
{
    EXPECT_EQ(usage_error_of([] { parse_idset("onu_set", "1-128"); }),
              "onu_set: '1-128' is not a set of ONU ids from 0 to 127, as 1-5,7");
    for (const char *text : {"128", "5-1", "1-2-3", "1,,2", "a", ",", "1-", "-1", "4294967296"})
        EXPECT_NE(usage_error_of([text] { parse_idset("set", text); }), "no error") << text;
}

TEST(Block, IsDigitsTextOrAFile)
{
    EXPECT_EQ(parse_block("data", "hex:00ffA5"), (Bytes{0x00, 0xff, 0xa5}));
    EXPECT_EQ(parse_block("data", "text:a=b"), (Bytes{'a', '=', 'b'}));
    EXPECT_EQ(parse_block("data", "hex:"), Bytes{});

    char path[] = "/tmp/ponctl_block_XXXXXX";
    const int file = mkstemp(path);
    ASSERT_GE(file, 0);
    std::FILE *stream = fdopen(file, "wb");
    std::fwrite("\0\n\xff", 1, 3, stream);
    std::fclose(stream);
    EXPECT_EQ(parse_block("data", "@" + std::string(path)), (Bytes{0, '\n', 0xff}));
    std::filesystem::remove(path);
}

TEST(Block, ErrorsSayWhatIsWrong)
{
    EXPECT_EQ(usage_error_of([] { parse_block("data", "0011"); }),
              "data: '0011' is not a block of bytes: hex:0011... in pairs of digits, text:..., or @FILE");
    EXPECT_EQ(usage_error_of([] { parse_block("data", "hex:001"); }),
              "data: 'hex:001' is not a block of bytes: hex:0011... in pairs of digits, text:..., or @FILE");
    EXPECT_EQ(usage_error_of([] { parse_block("data", "@/nowhere/at/all"); }),
              "data: cannot read '/nowhere/at/all': No such file or directory");
    EXPECT_EQ(usage_error_of([] { parse_block("data", "@/"); }), "data: cannot read '/': Is a directory");
}

TEST(Command, IsANameOfTheChannelOrAnyNumber)
{
    const catalogue::Channel &pon = *catalogue::find_channel("BSP_MSG_PON");
    EXPECT_EQ(parse_command("cmd", "BSP_CMD_ONU_BIND", pon), 365u);
    EXPECT_EQ(parse_command("cmd", "99999", pon), 99999u);
    EXPECT_EQ(parse_command("cmd", "0x16d", pon), 365u);
}

TEST(Command, ErrorsSuggestTheNameOrNameTheChannel)
{
    const catalogue::Channel &pon = *catalogue::find_channel("BSP_MSG_PON");
    const catalogue::Channel &upgrade = *catalogue::find_channel("BSP_MSG_UPGRADE");
    EXPECT_EQ(usage_error_of([&] { parse_command("cmd", "BSP_CMD_ONU_BNID", pon); }),
              "cmd: 'BSP_CMD_ONU_BNID' is not a command code or the name of a command; did you mean BSP_CMD_ONU_BIND?");
    EXPECT_EQ(usage_error_of([&] { parse_command("cmd", "BSP_CMD_ONU_BIND", upgrade); }),
              "cmd: 'BSP_CMD_ONU_BIND' is not a command of BSP_MSG_UPGRADE: it belongs to BSP_MSG_PON");
}

TEST(Assignment, HasANameAndMayHaveAnEmptyValue)
{
    EXPECT_EQ(parse_assignment("a=b=c").value, "b=c");
    EXPECT_EQ(parse_assignment("a=").value, "");
    EXPECT_EQ(usage_error_of([] { parse_assignment("word"); }), "'word' is not of the form name=value");
    EXPECT_EQ(usage_error_of([] { parse_assignment("=1"); }), "'=1' is not of the form name=value");
}

} // namespace
