// These tests check blocks of a fixed size and words of the answer, with ponctl call.
#include <bit>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

// The order of the bytes of a word differs between machines.
constexpr bool big_endian = std::endian::native == std::endian::big;

const Words flush{"call", "bsp_pon_plat_fdb_flush", "--yes"};

Words with(Words words, const Words &more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

TEST(FixedBlock, IsFilledUpWithZeros)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl(with(flush, {"filter=hex:0102"})).code, 0);
    const Received request = service.received().at(0);
    EXPECT_EQ(request.record[124], 1);
    EXPECT_EQ(request.record[125], 2);
    EXPECT_EQ(request.record[126], 0);
}

TEST(FixedBlock, IsGivenByTheFieldsInsideIt)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl(with(flush, {"filter.vlan=100", "filter.side=1", "filter.mac=02:00:00:00:00:01"})).code,
              0);
    EXPECT_EQ(service.received().at(0).number("vlan"), 100u);
    EXPECT_EQ(service.received().at(0).number("side"), 1u);
    EXPECT_EQ(service.received().at(0).number("mac"), big_endian ? 0x020000000001u : 0x010000000002u);
}

TEST(FixedBlock, MayBeBytesWithFieldsSetOnThem)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl(with(flush, {"filter=hex:0102", "filter.vlan=100"})).code, 0);
    EXPECT_EQ(service.received().at(0).record[124], 1);
    EXPECT_EQ(service.received().at(0).number("vlan"), 100u);
}

TEST(FixedBlock, RefusesWhatItCannotHold)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl(with(flush, {"filter=text:12345678901234567"})).err,
              "ponctl: filter: 17 bytes are more than its 16\n");
    EXPECT_THAT(service.ponctl(with(flush, {"filter.vlan=65536"})).err,
                HasSubstr("filter.vlan: '65536' is not a number from 0 to 65535"));
    EXPECT_THAT(service.ponctl(with(flush, {"filter.vlam=1"})).err,
                HasSubstr("filter.vlam: not used by bsp_pon_plat_fdb_flush; did you mean vlan? (what counts of filter "
                          "is side, port, llid, vlan, mac)"));
    EXPECT_THAT(service.ponctl(flush).err, HasSubstr("filter: missing; give filter.FIELD=VALUE or filter=BLOCK"));
    EXPECT_TRUE(service.received().empty());
}

TEST(FixedBlock, TakesScaledValuesInTheirUnit)
{
    const FakeService service;
    EXPECT_EQ(service
                  .ponctl({"call", "bsp_debug_8022_optical_status", "pon_port=1", "status.temperature=-35.5",
                           "status.time=18446744073709551615"})
                  .code,
              0);
    // Two commands share the code. The block of this one starts with flags, and the temperature is behind them.
    EXPECT_EQ(static_cast<int32_t>(service.received().at(0).word(128)), -3550);
    EXPECT_EQ(service.received().at(0).word(148), UINT32_MAX);
    EXPECT_EQ(service.received().at(0).word(152), UINT32_MAX);
}

TEST(FixedBlock, ThatComesBackIsDecodedByTheAnswersLayout)
{
    const FakeService service(bytes(answer_to("BSP_CMD_OPTICS_DIAG_GET", {{"temperature", 3550}})));
    const Words call{"call", "bsp_om_plat_diag_get", "pon_port=1"};
    EXPECT_THAT(service.ponctl(call).out, HasSubstr("temperature        35.50 degC\n"));
    EXPECT_THAT(service.ponctl(with(call, {"-o", "hex"})).out,
                HasSubstr(big_endian ? "  124  00 00 0d de " : "  124  de 0d 00 00 "));
    const auto document = parsed(service.ponctl(with(call, {"-o", "json"})).out);
    EXPECT_DOUBLE_EQ(document["outputs"]["out"]["temperature"].GetDouble(), 35.5);
    EXPECT_FALSE(document["outputs"]["out"].HasMember("plat_port"));
}

TEST(FixedBlock, MayGoAndComeBack)
{
    const FakeService service(bytes(answer_to("BSP_CMD_DEBUG_I2C_READ", {{"address", 0xa2}, {"result", 9}})));
    const Finished finished =
        service.ponctl({"call", "bsp_debug_8022_i2c_read", "port=3", "buf.address=0xa0", "buf.length=1"});
    EXPECT_EQ(service.received().at(0).number("address"), 0xa0u);
    EXPECT_EQ(service.received().at(0).number("length"), 1u);
    EXPECT_THAT(finished.out, HasSubstr("address 0xa2\n"));
    EXPECT_THAT(finished.out, HasSubstr("result  9\n"));
}

TEST(WordsOfTheAnswer, AreShownWithTheUnitOfTheirLayout)
{
    const FakeService service(bytes(answer_to("BSP_CMD_MAC_AGE_GET", {{"ageing", 300}, {"entries", 12}})));
    EXPECT_EQ(service.ponctl({"call", "bsp_pon_plat_mac_age_get"}).out, "first: 300 s\nsecond: 12\n");
    const auto document = parsed(service.ponctl({"call", "bsp_pon_plat_mac_age_get", "-o", "json"}).out);
    EXPECT_EQ(document["outputs"]["first"].GetUint(), 300u);
    EXPECT_THAT(service.ponctl({"call", "bsp_pon_plat_mac_age_get", "-o", "hex"}).out,
                HasSubstr(big_endian ? "  120  00 00 01 2c " : "  120  2c 01 "));
}

TEST(ByteArguments, AreNumbersUpTo255)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"call", "bsp_pon_loop_detect_status", "state=255", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"call", "bsp_pon_loop_detect_status", "state=256"}).err,
              "ponctl: state: '256' is not a number from 0 to 255, decimal or hexadecimal with 0x\n");
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(RecordOfAnotherChannel, IsTheOneThatTheOperationTakes)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"call", "bsp_poncfg_set", "record.cmd=424", "record.pon_port=3", "--yes"}).code, 0);
    const Received request = service.received().at(0);
    EXPECT_EQ(request.record.size(), 944u);
    EXPECT_EQ(request.word(0), 424u);
    EXPECT_EQ(request.word(4), 3u);
}

TEST(Ops, ShowSizes)
{
    const std::string page = ponctl({"ops", "bsp_debug_8022_i2c_read"}).out;
    EXPECT_THAT(page, HasSubstr("144 bytes"));
    EXPECT_THAT(page, HasSubstr("address: number of 4 bytes at offset 124;"));
    EXPECT_THAT(page, HasSubstr("buf.FIELD=VALUE"));
    EXPECT_THAT(ponctl({"ops", "bsp_om_plat_diag_get"}).out, HasSubstr("(degC, in steps of 0.01)"));
}

} // namespace
