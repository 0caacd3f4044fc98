#include "audit/entry.h"

#include <cstring>

#include <gmock/gmock.h>

#include "bsp_pon.h"
#include "call/exchange.h"

namespace
{

using audit::wanted_by;
using testing::Contains;
using testing::ElementsAre;
using testing::Pair;

constexpr uint64_t time_of_day = 1795349288042; // 2026-11-22T12:08:08.042Z

template <class Record>
audit::Wanted wanted_of(uint32_t channel, catalogue::Call call, const Record &record)
{
    return wanted_by(channel, call, {reinterpret_cast<const char *>(&record), sizeof record});
}

bsp_pon_msg binding()
{
    bsp_pon_msg record{};
    record.cmd = BSP_CMD_ONU_BIND;
    record.pon_port = 3;
    record.onu_id = 17;
    const uint8_t mac[] = {2, 0x1e, 0x61, 0xa0, 1, 2};
    std::memcpy(record.onu_mac, mac, sizeof mac);
    std::strcpy(record.text237, "for nobody else");
    return record;
}

TEST(AuditEntry, NamesTheCommandAndWhatItIsFor)
{
    const audit::Wanted wanted = wanted_of(BSP_MSG_PON, catalogue::Call::set, binding());
    EXPECT_EQ(wanted.command, catalogue::find_command(BSP_MSG_PON, BSP_CMD_ONU_BIND, catalogue::Call::set)->name);
    EXPECT_NE(wanted.impact, catalogue::Class::read);
    EXPECT_THAT(wanted.fields, Contains(Pair("pon_port", "3")));
    EXPECT_THAT(wanted.fields, Contains(Pair("onu_id", "17")));
    EXPECT_THAT(wanted.fields, Contains(Pair("onu_mac", "02:1e:61:a0:01:02")));
}

TEST(AuditEntry, HasTheClassForWhichThereWasPermission)
{
    const bsp_pon_msg record = binding();
    const auto *bytes = reinterpret_cast<const uint8_t *>(&record);
    const call::Exchange exchange{.channel = catalogue::find_channel(BSP_MSG_PON),
                                  .call = catalogue::Call::set,
                                  .request = {bytes, bytes + sizeof record},
                                  .response = {}};
    const auto as = [&](catalogue::Class impact) {
        return wanted_by(
            {.doing = {}, .impact = impact, .operation = nullptr, .command = nullptr, .exchange = exchange});
    };
    EXPECT_EQ(as(catalogue::Class::write).impact, catalogue::Class::write);
    EXPECT_EQ(as(catalogue::Class::service_affecting).impact, catalogue::Class::service_affecting);
    EXPECT_EQ(as(catalogue::Class::write).command, wanted_of(BSP_MSG_PON, catalogue::Call::set, record).command);
}

TEST(AuditEntry, LeavesOutTextsAndBlocks)
{
    for (const auto &[name, value] : wanted_of(BSP_MSG_PON, catalogue::Call::set, binding()).fields)
        EXPECT_EQ(value.find("nobody"), std::string::npos) << name;
}

TEST(AuditEntry, TakesOnlySoManyFields)
{
    bsp_pon_msg record = binding();
    std::memset(record.data429, 0xff, sizeof record.data429);
    for (const catalogue::Command &command : catalogue::commands()) {
        if (command.channel->type != BSP_MSG_PON) continue;
        record.cmd = command.code;
        EXPECT_LE(wanted_of(BSP_MSG_PON, catalogue::Call::set, record).fields.size(), audit::most_fields)
            << command.name;
    }
}

TEST(AuditEntry, DescribesWhatNobodyKnows)
{
    bsp_pon_msg record = binding();
    record.cmd = 0xfffffff0;
    const audit::Wanted unknown = wanted_of(BSP_MSG_PON, catalogue::Call::set, record);
    EXPECT_EQ(unknown.command, "4294967280");
    EXPECT_EQ(unknown.impact, catalogue::Class::write);

    const audit::Wanted nowhere = wanted_of(4711, catalogue::Call::set, record);
    EXPECT_EQ(nowhere.command, "");
    EXPECT_THAT(nowhere.fields, ElementsAre());

    const audit::Wanted cut = wanted_by(BSP_MSG_PON, catalogue::Call::dgram_set, "abc");
    EXPECT_EQ(cut.command, "");
    EXPECT_THAT(cut.fields, ElementsAre());
}

TEST(AuditEntry, IsALineOfJson)
{
    EXPECT_EQ(line_of(time_of_day, {1000, 4242},
                      audit::Wanted{catalogue::Class::service_affecting, 30, "reboot", {{"pon_port", "3"}}}, "BSP_OK"),
              R"({"time":"2026-11-22T12:08:08.042Z","user":1000,"process":4242,"class":"service-affecting",)"
              R"("channel":30,"command":"reboot","fields":{"pon_port":"3"},"result":"BSP_OK"})");
    EXPECT_EQ(
        audit::line_of(time_of_day, {0, 1}, "cut 1 \"a\x1b\n\xff", "done"),
        R"({"time":"2026-11-22T12:08:08.042Z","user":0,"process":1,"control":"cut 1 \"a\\x1b\\x0a\\xff","result":"done"})");
    EXPECT_EQ(audit::line_of(time_of_day, audit::Client{"ann", "192.0.2.1", "north"},
                             audit::Wanted{catalogue::Class::write, 30, "reboot", {}}, "BSP_OK"),
              R"({"time":"2026-11-22T12:08:08.042Z","user":"ann","address":"192.0.2.1","olt":"north","class":"write",)"
              R"("channel":30,"command":"reboot","fields":{},"result":"BSP_OK"})");
    EXPECT_EQ(
        audit::line_of(time_of_day, audit::Client{"a\nb", "::1", ""}, "log in", "done"),
        R"({"time":"2026-11-22T12:08:08.042Z","user":"a\\x0ab","address":"::1","control":"log in","result":"done"})");
    EXPECT_EQ(audit::line_of_lost(time_of_day, 7), R"({"time":"2026-11-22T12:08:08.042Z","lost":7})");
}

} // namespace
