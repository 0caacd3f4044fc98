// These tests read and write fields of layouts by their offsets.
#include "place.h"

#include <string>

#include <gtest/gtest.h>

#include "bsp_pon.h"
#include "handlers/record.h"
#include "model/olt/remote.h"

namespace ponsim
{
namespace
{

using layout::At;

constexpr At<uint8_t> byte{0};
constexpr At<uint16_t, 3, 4> often{352};
constexpr At<layout::Text<4>> text{356};

template <class Place, class Value>
constexpr bool can_be_put = requires(OnuBlock block, Place key, Value value)
{
    block.put(key, value);
};

static_assert(can_be_put<At<uint16_t>, int>);
static_assert(!can_be_put<At<uint16_t, 3, 4>, int>, "of a field that comes often, one is named");
static_assert(!can_be_put<uint32_t, int>, "an offset has no width");

TEST(Place, AFieldThatComesOftenIsNamedByItsNumber)
{
    EXPECT_EQ(often[2].offset, 360u);
    EXPECT_THROW(often[3], std::out_of_range);
}

TEST(Place, ANumberHasToFitItsField)
{
    bsp_pon_msg record{};
    Answer answer(record);
    answer.put(byte, 255);
    EXPECT_EQ(answer.outcome().answer->front(), '\xff');
    EXPECT_THROW(answer.put(byte, 256), std::logic_error);
    EXPECT_THROW(answer.put(byte, -1), std::logic_error);
    EXPECT_THROW(answer.put(At<uint8_t>{sizeof record}, 1), std::out_of_range);
}

TEST(Place, ATextHasToFitItsFieldOfAnAnswer)
{
    Answer answer(bsp_pon_msg{});
    answer.put(text, "full");
    EXPECT_EQ(answer.outcome().answer->substr(356, 5), std::string("full\0", 5));
    EXPECT_THROW(answer.put(text, "wider"), std::logic_error);
}

TEST(Place, ATextIsCutToItsFieldOfABlock)
{
    OnuBlock block(12);
    block.put(text, "wider");
    block.put(often[0], 0x0102);
    EXPECT_EQ(block.get(often[0]), 0x0102);
    EXPECT_EQ(block.bytes().substr(4), std::string("wide\0\0\0\0", 8));
    block.put(text, "x");
    EXPECT_EQ(block.bytes().substr(4), std::string("x\0\0\0\0\0\0\0", 8));
    EXPECT_THROW(block.get(At<uint32_t>{361}), std::out_of_range);
}

} // namespace
} // namespace ponsim
