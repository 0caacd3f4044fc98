// These tests run ponctl i2c as a process against a fake service.
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue.h"
#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

// Returns an answer with these bytes of the memory.
std::vector<uint8_t> read_answer(uint32_t offset, const std::string &bytes)
{
    auto record = answer_to("BSP_CMD_DEBUG_I2C_READ", {{"address", 0xa0},
                                                       {"offset", offset},
                                                       {"length", static_cast<int64_t>(bytes.size())},
                                                       {"result", static_cast<int64_t>(bytes.size())}});
    const catalogue::Layout &layout = *catalogue::find_layout(*catalogue::find_command("BSP_CMD_DEBUG_I2C_READ"), true);
    std::memcpy(&record[catalogue::find_field(layout.fields, "data")->offset], bytes.data(), bytes.size());
    return record;
}

TEST(I2cRead, ShowsTheBytesByTheirPlaces)
{
    const FakeService service(bytes(read_answer(0x1e, std::string("AB\0C", 4))));
    EXPECT_EQ(service.ponctl({"i2c", "read", "3", "0xa0", "0x1e", "4"}).out,
              "     0  1  2  3  4  5  6  7  8  9  a  b  c  d  e  f\n"
              "10:                                           41 42                AB\n"
              "20: 00 43                                            .C              \n");
    const Received request = service.received().at(0);
    EXPECT_EQ(request.number("plat_port"), 3u);
    EXPECT_EQ(request.number("address"), 0xa0u);
    EXPECT_EQ(request.number("offset"), 0x1eu);
    EXPECT_EQ(request.number("length"), 4u);
}

TEST(I2cRead, IsHexadecimalDigitsInJson)
{
    const FakeService service(bytes(read_answer(2, std::string("A\0", 2))));
    const auto document = parsed(service.ponctl({"i2c", "read", "3", "0xa0", "2", "2", "-o", "json"}).out);
    EXPECT_EQ(document["address"].GetUint(), 0xa0u);
    EXPECT_STREQ(document["bytes"].GetString(), "4100");
}

TEST(I2cWrite, SendsTheBytesAndTheirLength)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"i2c", "write", "3", "0xa2", "110", "40ff", "--yes"}).code, 0);
    const Received request = service.received().at(0);
    EXPECT_EQ(request.number("plat_cmd"), 252u);
    EXPECT_EQ(request.number("address"), 0xa2u);
    EXPECT_EQ(request.number("offset"), 110u);
    EXPECT_EQ(request.number("length"), 2u);
    const catalogue::Layout &layout = *catalogue::find_layout(*catalogue::find_command("BSP_CMD_DEBUG_I2C_WRITE"));
    const uint32_t data = catalogue::find_field(layout.fields, "data")->offset;
    EXPECT_EQ(request.record[data], 0x40);
    EXPECT_EQ(request.record[data + 1], 0xff);
}

TEST(I2cWrite, RefusesWhatCannotBe)
{
    const FakeService service;
    const std::vector<std::pair<std::string, std::string>> cases{
        {"4", "BYTES: "},
        {"zz", "BYTES: "},
        {"", "BYTES: '' is not pairs of hexadecimal digits"},
        {std::string(2 * 129, '0'), "BYTES: 129 bytes are more than the 128 that go at once"},
    };
    for (const auto &[bytes, error] : cases) {
        const Finished finished = service.ponctl({"i2c", "write", "3", "0xa2", "110", bytes, "--yes"});
        EXPECT_EQ(finished.code, 2) << bytes;
        EXPECT_THAT(finished.err, HasSubstr(error));
    }
    EXPECT_THAT(service.ponctl({"i2c", "write", "3", "0xa2", "110", "40"}).err, HasSubstr("--yes: missing; writing"));
    EXPECT_TRUE(service.received().empty());
}

} // namespace
