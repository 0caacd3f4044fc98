// These tests read and write values by what the catalogue says of their meaning.
#include "call/codec/meaning.h"

#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "call/codec/numbers.h"
#include "usage_error.h"

namespace
{

using call::Bytes;
using catalogue::Field;
using catalogue::FieldType;
using catalogue::Named;
using testing::ElementsAre;

constexpr Named modes[] = {{"transparent", 0}, {"static address", 7}};
constexpr Named parts[] = {{"FEC", 0}, {"fast leave", 2}};

constexpr Field mode{.name = "mode",
                     .type = FieldType::u16,
                     .offset = 0,
                     .size = 2,
                     .unit = "",
                     .scale = 1,
                     .brief = "",
                     .values = modes};
constexpr Field flags{.name = "parts",
                      .type = FieldType::u16,
                      .offset = 0,
                      .size = 2,
                      .unit = "",
                      .scale = 1,
                      .brief = "",
                      .flags = parts};
constexpr Field tpid{.name = "tpid",
                     .type = FieldType::u16,
                     .offset = 0,
                     .size = 2,
                     .unit = "",
                     .scale = 1,
                     .brief = "",
                     .range = catalogue::Range{1536, 65535},
                     .hexadecimal = true};

constexpr Field composed(FieldType type, uint32_t size)
{
    return {.name = "it", .type = type, .offset = 0, .size = size, .unit = "", .scale = 1, .brief = ""};
}

Bytes bytes_of(uint16_t number)
{
    Bytes bytes(sizeof number);
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

// Returns the number that the first bytes hold as the field stores it.
uint16_t number_in(uint64_t bytes)
{
    uint16_t number;
    std::memcpy(&number, &bytes, sizeof number);
    return number;
}

TEST(Meaning, OfANumberIsItsNameOrTheNumber)
{
    EXPECT_EQ(call::meaning_text(mode, bytes_of(7)), "static address");
    EXPECT_EQ(call::meaning_text(mode, bytes_of(3)), "3");
    EXPECT_EQ(call::name_of(mode, bytes_of(3)), std::nullopt);
}

TEST(Meaning, OfFlagsIsTheNamesOfThoseThatAreSet)
{
    EXPECT_EQ(call::meaning_text(flags, bytes_of(0)), "-");
    EXPECT_EQ(call::meaning_text(flags, bytes_of(5)), "FEC, fast leave");
    EXPECT_THAT(call::flags_of(flags, bytes_of(0x8001)), ElementsAre("FEC", "bit 15"));
}

TEST(Meaning, OfAHexadecimalNumberIsItsDigits)
{
    EXPECT_EQ(call::meaning_text(tpid, bytes_of(0x8100)), "0x8100");
    EXPECT_EQ(call::meaning_text(tpid, bytes_of(0xa2)), "0xa2");
}

TEST(Meaning, IsReadByNameInAnySpellingOrByNumber)
{
    for (const char *text : {"static address", "static-address", "Static-Address", "7", "0x7"})
        EXPECT_EQ(number_in(call::parse_meaning("mode", text, mode)), 7) << text;
    EXPECT_EQ(usage_error_of([] { call::parse_meaning("mode", "static", mode); }),
              "mode: 'static' is not one of transparent, static-address, nor a number");
}

TEST(Meaning, OfFlagsIsReadWithCommas)
{
    EXPECT_EQ(number_in(call::parse_meaning("parts", "fast-leave,fec", flags)), 5);
    EXPECT_EQ(number_in(call::parse_meaning("parts", "none", flags)), 0);
    EXPECT_EQ(usage_error_of([] { call::parse_meaning("parts", "FEC,slow", flags); }),
              "parts: 'slow' is not one of none, FEC, fast-leave, nor a number");
}

TEST(Allowed, IsANameOrANumberOfTheRange)
{
    call::check_allowed("mode", mode, bytes_of(7));
    call::check_allowed("tpid", tpid, bytes_of(1536));
    EXPECT_EQ(usage_error_of([] { call::check_allowed("mode", mode, bytes_of(3)); }),
              "mode: '3' is not one of transparent, static-address");
    EXPECT_EQ(usage_error_of([] { call::check_allowed("tpid", tpid, bytes_of(1535)); }),
              "tpid: '1535' is not a number from 1536 to 65535");
}

TEST(ComposedValue, IsShownAsPeopleWriteIt)
{
    EXPECT_EQ(call::composed_text(composed(FieldType::ipv4, 4), Bytes{10, 0, 0, 2}), "10.0.0.2");
    EXPECT_EQ(call::composed_text(composed(FieldType::oui, 3), Bytes{0, 0x1a, 0xff}), "00:1a:ff");
    EXPECT_EQ(call::composed_text(composed(FieldType::date, 3), Bytes{0x22, 0x02, 0x24}), "2022-02-24");
    EXPECT_EQ(call::composed_text(composed(FieldType::list, 3), Bytes{0, 1, 7}), "0, 1, 7");
    EXPECT_EQ(call::composed_text(composed(FieldType::ports, 2), Bytes{0x01, 0x06}), "2, 3, 9");
    EXPECT_EQ(call::composed_text(composed(FieldType::ports, 2), Bytes{0, 0}), "-");
}

TEST(ComposedValue, IsReadAsPeopleWriteItOrAsABlock)
{
    for (const char *text : {"10.0.0.2", "hex:0a000002"})
        EXPECT_EQ(call::parse_composed("it", text, composed(FieldType::ipv4, 4)), (Bytes{10, 0, 0, 2})) << text;
    for (const char *text : {"00:1A:ff", "00-1a-ff", "001aff", "hex:001aff"})
        EXPECT_EQ(call::parse_composed("it", text, composed(FieldType::oui, 3)), (Bytes{0, 0x1a, 0xff})) << text;
    for (const char *text : {"2022-02-24", "220224", "hex:220224"})
        EXPECT_EQ(call::parse_composed("it", text, composed(FieldType::date, 3)), (Bytes{0x22, 0x02, 0x24})) << text;
    for (const auto &[text, type, size] : {std::tuple{"10.0.0", FieldType::ipv4, 4u},
                                           {"hex:0a", FieldType::ipv4, 4u},
                                           {"00:1a", FieldType::oui, 3u},
                                           {"2022-0x-24", FieldType::date, 3u},
                                           {"1,2", FieldType::list, 2u}})
        EXPECT_NE(usage_error_of([&] { call::parse_composed("it", text, composed(type, size)); }), "no error") << text;
}

} // namespace
