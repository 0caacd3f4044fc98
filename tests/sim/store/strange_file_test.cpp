// These tests open state files that no ponsim wrote: with values that cannot be, with tables of a stranger, and
// damaged.
#include <fstream>

#include <gmock/gmock.h>

#include "bsp_pon.h"
#include "database.h"
#include "support.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;

// Returns a state file on which the statement was run.
struct StrangeFile {
    Folder folder;
    std::string file = folder.file("olt.db");

    explicit StrangeFile(const std::string &sql)
    {
        {
            ServiceFixture fixture({.seed = 5, .ports = 2, .arrivals = 4, .silent = 0}, file);
            EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 1, fixture.port(1).arrivals.at(0).mac)), BSP_OK);
        }
        Database(file).run(sql);
    }

    // Returns why the file is refused. It must stay as it is, byte by byte.
    std::string refusal() const
    {
        const std::string before = content_of(file);
        try {
            const ServiceFixture fixture({}, file);
        } catch (const StoreError &error) {
            EXPECT_EQ(content_of(file), before);
            return error.what();
        }
        return "not refused";
    }
};

std::string refusal_after(const std::string &sql)
{
    return StrangeFile(sql).refusal();
}

std::string block(uint32_t channel, uint32_t command, uint32_t pon_port, uint32_t index, const std::string &hex)
{
    return "INSERT INTO block VALUES(" + std::to_string(channel) + "," + std::to_string(command) + "," +
           std::to_string(pon_port) + "," + std::to_string(index) + ",x'" + hex + "')";
}

TEST(StrangeFile, AValueThatCannotBeIsNamedWithItsTableKeyFieldAndRule)
{
    const std::pair<std::string, const char *> cases[] = {
        {"INSERT INTO loop_detection VALUES(1, 1, 0, 300, 0, 0, 0)",
         "table loop_detection, one 1: interval is 0, but must be 1 to 600"},
        {"INSERT INTO upgrade_type VALUES('a', 'ACME', 'X4', '1', 0, 'f')",
         "table upgrade_type, name \"a\": size is 0, but must be 1 to 4294967295"},
        {"INSERT INTO fibre VALUES(1, 0, 2147483647)",
         "table fibre, pon_port 1, branch 0: loss is 2147483647, but must be 1 to 10000"},
        {"UPDATE setting SET ports = 506224", "table setting: ports is 506224, but must be 1 to 16"},
        {"UPDATE setting SET arrivals = -1", "table setting: arrivals is"},
        {"INSERT INTO setting SELECT * FROM setting", "table setting: there is more than one row"},
        {"UPDATE clock SET now = 9223372036854775807", "table clock, one 1: now is 9223372036854775807"},
        {"INSERT INTO port VALUES(3, 0, 20000, 0)", "table port, pon_port 3: pon_port is 3, but must be 1 to 2"},
        {"INSERT INTO port VALUES(1, 2, 1, 0)", "table port, pon_port 1: min_distance is beyond max_distance"},
        {"UPDATE binding SET sla_maximum = 1", "there is no such SLA"},
        {"UPDATE binding SET text_a = CAST(x'ff' AS TEXT)", "text_a is no text in UTF-8"},
        {"INSERT INTO loop VALUES(1, x'020000000001', 1, 1, 0, 0, 99000, 0, 0)",
         "since is 99000, but must not be later than the time of the OLT"},
        {"INSERT INTO module VALUES(5, 0, 0, 0, 0, 0, 0, zeroblob(120), 0);"
         "INSERT INTO measurement VALUES(5, x'020000000001', 1000, 1, 0)",
         "only the module of a PON port measures"},
        {"INSERT INTO module VALUES(1, 0, 0, 0, 0, 0, 0, zeroblob(120), 0);"
         "INSERT INTO measurement VALUES(1, x'020000000001', 1000, 0, 0)",
         "samples is 0, but must be 1 to 100"},
        {"INSERT INTO measurement VALUES(1, x'020000000001', 1000, 1, 0)", "there is no row of table module for it"},
        {block(BSP_MSG_PLAT, BSP_CMD_MPCP_SET, 1, 1,
               "e80300000040000000000000e8030000320000000008000000000000400000000000000000000000"),
         "bytes has 40 bytes, but must have 32"},
        {block(BSP_MSG_PLAT, BSP_CMD_MPCP_SET, 1, 1,
               "e803000000400000e80300003200000000080000000000004000000000000000"),
         "bytes have a value that cannot be set"},
        {block(BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_PHY_SET, 1, 0, "0102"), "bytes has 2 bytes, but must have 1"},
        {block(1, 1, 1, 0, "01"), "no setting of the OLT has this channel and command"},
        {"INSERT INTO onu_setting VALUES(1, x'020000000001', " + std::to_string(BSP_CMD_ONU_PAUSE_GET) +
             ", 1, x'0000', x'00', 0)",
         "told has 2 bytes, but must have 1"},
    };
    for (const auto &[sql, problem] : cases) {
        const std::string refusal = refusal_after(sql);
        EXPECT_THAT(refusal, HasSubstr(problem)) << sql;
        EXPECT_THAT(refusal, HasSubstr("start over with --fresh, or name another file with --state")) << sql;
    }
}

TEST(StrangeFile, TablesOfAStrangerAreRefused)
{
    for (const char *sql :
         {"CREATE TRIGGER t AFTER INSERT ON binding BEGIN DELETE FROM binding; END", "CREATE VIEW v AS SELECT 1",
          "CREATE INDEX i ON binding(mode)", "CREATE TABLE more(x)", "DROP TABLE auth",
          "DROP TABLE auth; CREATE VIEW auth AS SELECT 1 AS pon_port, 'a' AS loid, 'b' AS password",
          "ALTER TABLE auth ADD COLUMN more TEXT"})
        EXPECT_THAT(refusal_after(sql), HasSubstr("its tables are not those that ponsim makes")) << sql;
}

TEST(StrangeFile, AnEarlierVersionsFileThatIsRefusedStaysAtItsVersion)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    restore(GOLDEN "/state-7.sql", file);
    Database(file).run("UPDATE loop_detection SET interval = 0");
    const std::string before = Database(file).dump();
    try {
        const ServiceFixture fixture({}, file);
        ADD_FAILURE() << "not refused";
    } catch (const StoreError &error) {
        EXPECT_THAT(error.what(), HasSubstr("interval is 0, but must be 1 to 600"));
    }
    EXPECT_EQ(Database(file).dump(), before);
}

// Overwrites a page of the file.
void damage(const std::string &file, size_t page)
{
    constexpr size_t page_size = 1024;
    std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
    bytes.seekp(static_cast<std::streamoff>(page * page_size));
    bytes << std::string(page_size, '\x5a');
}

TEST(StrangeFile, ADamagedFileIsNoticedWhenItIsOpenedAndFreshReplacesIt)
{
    StrangeFile strange("PRAGMA wal_checkpoint(TRUNCATE)");
    const size_t pages = std::filesystem::file_size(strange.file) / 1024;
    ASSERT_GT(pages, 10u);
    for (size_t page = 1; page < pages; ++page) {
        const std::string whole = content_of(strange.file);
        damage(strange.file, page);
        EXPECT_THAT(strange.refusal(), testing::AnyOf(HasSubstr("damaged"), HasSubstr("malformed"))) << page;
        std::ofstream(strange.file, std::ios::binary) << whole;
    }
    EXPECT_EQ(strange.refusal(), "not refused");
    damage(strange.file, 3);
    {
        const ServiceFixture fixture({.seed = 5, .ports = 2, .arrivals = 4, .silent = 0}, strange.file, true);
    }
    EXPECT_EQ(strange.refusal(), "not refused");
}

TEST(StrangeFile, AChangeThatCannotBeIsNotStored)
{
    ServiceFixture fixture({.seed = 5, .ports = 2, .arrivals = 4, .silent = 0});
    const auto before = fixture.store.rows();
    Change change;
    change.put<PortRecord>(1, {{0, 1000}, 0});
    change.put<LoopDetection>({}, {.interval = 0});
    try {
        fixture.simulator.change(change);
        ADD_FAILURE() << "stored";
    } catch (const StoreError &error) {
        EXPECT_THAT(error.what(), HasSubstr("interval is 0, but must be 1 to 600"));
    }
    EXPECT_EQ(fixture.store.rows(), before);
}

} // namespace
} // namespace ponsim
