// These tests read numbers of every width, sign and scale from words, and turn them into text.
#include "call/codec/numbers.h"

#include <cstring>

#include <gtest/gtest.h>

#include "call/codec/decode.h"
#include "usage_error.h"

namespace
{

using namespace call;
using catalogue::Field;
using catalogue::FieldType;

constexpr Field temperature{"temperature", FieldType::s16, 124, 2, "degC", 0.1, {}};
constexpr Field voltage{"voltage", FieldType::u32, 128, 4, "V", 0.0001, {}};
constexpr Field frames{"frames", FieldType::u64, 136, 8, {}, 1, {}};
constexpr Field vlan{"vlan", FieldType::u16, 132, 2, {}, 1, {}};
constexpr Field level{"level", FieldType::s32, 144, 4, "dBm", 0.01, {}};
constexpr Field fields[]{temperature, voltage, vlan, frames, level};

template <class Number>
std::vector<uint8_t> bytes_of(Number number)
{
    std::vector<uint8_t> bytes(sizeof number);
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

// Returns what a field shows after it was set from a word.
std::string set_and_shown(const Field &field, const char *word)
{
    const uint64_t number = parse_number(field.name, word, field);
    const auto *bytes = reinterpret_cast<const uint8_t *>(&number);
    return number_text(field, {bytes, field.size});
}

std::string error_of(const Field &field, const char *word)
{
    return usage_error_of([&] { parse_number(field.name, word, field); });
}

TEST(Numbers, AreShownInTheirUnitsWithTheDecimalsOfTheScale)
{
    EXPECT_EQ(number_text(temperature, bytes_of<int16_t>(355)), "35.5");
    EXPECT_EQ(number_text(temperature, bytes_of<int16_t>(-5)), "-0.5");
    EXPECT_EQ(number_text(voltage, bytes_of<uint32_t>(33000)), "3.3000");
    EXPECT_EQ(number_text(level, bytes_of<int32_t>(-2795)), "-27.95");
    EXPECT_DOUBLE_EQ(number_of(level, bytes_of<int32_t>(-2795)), -27.95);
}

TEST(Numbers, AreShownWholeWhateverTheirWidth)
{
    EXPECT_EQ(number_text(frames, bytes_of<uint64_t>(UINT64_MAX)), "18446744073709551615");
    EXPECT_EQ(number_text(vlan, bytes_of<uint16_t>(65535)), "65535");
}

TEST(Numbers, AreGivenInTheirUnits)
{
    EXPECT_EQ(set_and_shown(temperature, "35.5"), "35.5");
    EXPECT_EQ(set_and_shown(temperature, "-40"), "-40.0");
    EXPECT_EQ(set_and_shown(level, "-27.95"), "-27.95");
    EXPECT_EQ(set_and_shown(vlan, "0x10"), "16");
    EXPECT_EQ(set_and_shown(frames, "18446744073709551615"), "18446744073709551615");
}

TEST(Numbers, ThatAFieldCannotHoldAreRefused)
{
    EXPECT_EQ(error_of(temperature, "3276.8"),
              "temperature: '3276.8' is not a number from -3276.8 to 3276.7 degC in steps of 0.1");
    EXPECT_EQ(error_of(temperature, "35.55").substr(0, 31), "temperature: '35.55' is not a n");
    EXPECT_EQ(error_of(vlan, "65536"), "vlan: '65536' is not a number from 0 to 65535, decimal or hexadecimal with 0x");
    for (const char *wrong : {"", "-1", "1.5", "0x", "0x-1", "1 "})
        EXPECT_NE(error_of(vlan, wrong), "no error") << wrong;
    for (const char *wrong : {"", "nan", "inf", "1e3", "1.5 ", "degC"})
        EXPECT_NE(error_of(temperature, wrong), "no error") << wrong;
}

TEST(Numbers, OfATraceOfTheOtherByteOrderAreTurnedWhole)
{
    const catalogue::Channel &channel = *catalogue::find_channel("BSP_MSG_PLAT");
    Bytes bytes(channel.record->size);
    const auto put = [&bytes](const Field &field, std::initializer_list<uint8_t> turned) {
        std::copy(turned.begin(), turned.end(), bytes.begin() + field.offset);
    };
    put(vlan, {1, 2});
    put(temperature, {3, 4});
    put(voltage, {1, 2, 3, 4});
    put(frames, {1, 2, 3, 4, 5, 6, 7, 8});
    swap_words(fields, bytes);
    const auto at = [&bytes](const Field &field) {
        return Bytes(&bytes[field.offset], &bytes[field.offset + field.size]);
    };
    EXPECT_EQ(at(vlan), (Bytes{2, 1}));
    EXPECT_EQ(at(temperature), (Bytes{4, 3}));
    EXPECT_EQ(at(voltage), (Bytes{4, 3, 2, 1}));
    EXPECT_EQ(at(frames), (Bytes{8, 7, 6, 5, 4, 3, 2, 1}));
}

// Returns the fields that are shown of a block at offset 124, as NAME=TEXT.
std::vector<std::string> shown(const Bytes &bytes)
{
    const catalogue::Channel &channel = *catalogue::find_channel("BSP_MSG_PLAT");
    const catalogue::Layout layout{"test", channel.record, {}, fields, true, {}};
    std::vector<std::string> texts;
    for (const DecodedField &decoded :
         decode({channel.record, &layout, {&channel, catalogue::Call::get, nullptr, true}, bytes, 124}))
        texts.push_back(std::string(decoded.field->name) + "=" + decoded.text);
    return texts;
}

TEST(Block, ShowsTheFieldsOfItsLayoutThatItReachesAlsoWhereTheyAreZero)
{
    Bytes bytes(134);
    bytes[3] = 1;
    EXPECT_EQ(shown(bytes), (std::vector<std::string>{"temperature=0.0 degC", "voltage=0.0000 V", "vlan=0"}));
}

TEST(Block, HidesNoByteThatTheLayoutDoesNotName)
{
    Bytes bytes(134);
    bytes[126] = 7;
    EXPECT_EQ(shown(bytes).front(), "plat_data=hex:000007");
}

} // namespace
