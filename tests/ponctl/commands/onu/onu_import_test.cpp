// These tests run ponctl onu import and ponctl onu export as a process against a fake service.
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;

constexpr uint32_t view_onus = 384, bind = 365;

// OnuImport has a table in a file of its own.
class OnuImport : public testing::Test
{
protected:
    ~OnuImport() override { std::filesystem::remove(path); }

    const std::string &table(const std::string &text) const
    {
        std::ofstream(path) << text;
        return path;
    }

    const std::string path = testing::TempDir() + "ponctl_table_" + std::to_string(getpid());
};

// Answers with these ONUs, and with no rows of anything else.
FakeService::Handler with_onus(const std::string &onus)
{
    return [onus](const board_request &request, board_answer *answer) {
        const bool listing =
            request.call == BOARD_CALL_GET && *static_cast<const uint32_t *>(request.data) == view_onus;
        (listing ? rows(view_onus, onus) : no_rows())(request, answer);
    };
}

TEST_F(OnuImport, BindsDescribesAndSetsUp)
{
    const FakeService service(with_onus("[]"));
    const std::string &file = table("mac,pon_port,onu_id,description,loid,password,sla_down\n"
                                    "0200.5e10.0001,1,7,\"main street, 7\",shop,secret,5000\n");
    const Finished finished = service.ponctl({"onu", "import", file, "--yes", "-o", "json"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    const auto sent = service.settings();
    ASSERT_EQ(sent.size(), 4u);
    EXPECT_EQ(sent[0].word(0), bind);
    EXPECT_EQ(sent[0].mac(), "02:00:5e:10:00:01");
    EXPECT_EQ(sent[1].text(237), "main street, 7");
    EXPECT_EQ(sent[2].text(45), "shop");
    EXPECT_EQ(sent[2].text(109), "secret");
    EXPECT_EQ(sent[3].number("maximum"), 5000u);
    const auto document = parsed(finished.out);
    EXPECT_STREQ(document[0]["onu"].GetString(), "1/7");
    EXPECT_STREQ(document[0]["work"].GetString(), "bind, description, LOID, SLA");
    EXPECT_EQ(document[0]["line"].GetUint(), 2u);
}

TEST_F(OnuImport, LeavesAloneWhatIsAsTheTableSays)
{
    const FakeService service(
        with_onus(R"([{"pon_port":1,"onu_id":7,"mac":"02:00:5e:10:00:01","state":"online","description":"a"}])"));
    const std::string &file = table("pon_port,mac,description\n1,02:00:5e:10:00:01,a\n");
    const Finished finished = service.ponctl({"onu", "import", file});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("nothing"));
    EXPECT_TRUE(service.settings().empty());
}

TEST_F(OnuImport, ChecksAllLinesBeforeTheFirstIsCarriedOut)
{
    const FakeService service(with_onus("[]"));
    const std::string &file = table("pon_port,mac,onu_id,sla_weight\n"
                                    "1,02:00:5e:10:00:01,7,\n"
                                    "1,02:00:5e:10:00,8,\n"
                                    "1,02:00:5e:10:00:03,128,\n"
                                    "\n"
                                    "1,02:00:5e:10:00:04,9,101\n"
                                    "1,02:00:5e:10:00:05,7,\n");
    const Finished finished = service.ponctl({"onu", "import", file, "--yes"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.err, testing::StartsWith("ponctl: FILE: nothing was done:\n  line 3: mac: "));
    EXPECT_THAT(finished.err, HasSubstr("\n  line 4: onu_id: '128' is not a number from 0 to 127"));
    EXPECT_THAT(finished.err, HasSubstr("\n  line 6: sla_weight: '101' is not a number from 1 to 100"));
    EXPECT_THAT(finished.err, HasSubstr("\n  line 7: 1/7 is on line 2 already\n"));
    EXPECT_TRUE(service.received().empty());
}

TEST_F(OnuImport, RefusesWhatTheOltHasOtherwise)
{
    const FakeService service(with_onus(R"([{"pon_port":1,"onu_id":7,"mac":"02:00:5e:10:00:01"},
                                            {"pon_port":1,"onu_id":8,"mac":"02:00:5e:10:00:02","text_a":"x"}])"));
    const std::string &file = table("pon_port,mac,onu_id,text_a\n"
                                    "1,02:00:5e:10:00:03,7,\n"
                                    "2,02:00:5e:10:00:01,,\n"
                                    "1,02:00:5e:10:00:02,,y\n");
    const Finished finished = service.ponctl({"onu", "import", file, "--yes"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err, "ponctl: FILE: nothing was done:\n"
                            "  line 2: onu_id: 1/7 is bound to 02:00:5e:10:00:01\n"
                            "  line 3: mac: 02:00:5e:10:00:01 is bound as 1/7\n"
                            "  line 4: text_a: 1/8 is bound with 'x'; release it first\n");
    EXPECT_TRUE(service.settings().empty());
}

TEST_F(OnuImport, ShowsWhatItWouldDo)
{
    const FakeService service(with_onus("[]"));
    const std::string &file = table("pon_port,mac,onu_id,description\n1,02:00:5e:10:00:01,7,a\n");
    const Finished finished = service.ponctl({"onu", "import", file, "--dry-run"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_THAT(finished.out, testing::ContainsRegex("2 1/7 02:00:5e:10:00:01 a +bind, description\n"));
    EXPECT_TRUE(service.settings().empty());
}

TEST_F(OnuImport, GoesOnWithTheNextLineAndSaysWhichFailed)
{
    const FakeService service([](const board_request &request, board_answer *answer) {
        if (request.call == BOARD_CALL_GET) return with_onus("[]")(request, answer);
        const auto *record = static_cast<const uint32_t *>(request.data);
        if (record[0] == bind && record[2] == 7) board_answer_status(answer, 4005);
    });
    const std::string &file = table("pon_port,mac,onu_id,description\n"
                                    "1,02:00:5e:10:00:01,7,a\n"
                                    "1,02:00:5e:10:00:02,8,b\n");
    const Finished finished = service.ponctl({"onu", "import", file, "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, testing::StartsWith("ponctl: line 2: bsp_pon_bind_onu_spec_id: status 4005 "));
    EXPECT_THAT(finished.out, HasSubstr("failed: "));
    EXPECT_EQ(service.settings().size(), 3u);
}

TEST_F(OnuImport, NamesAColumnThatIsNone)
{
    EXPECT_THAT(ponctl({"onu", "import", table("pon_port,mac,descripton\n")}).err,
                HasSubstr("FILE: line 1: 'descripton' is not a column; did you mean description?"));
    EXPECT_EQ(ponctl({"onu", "import", table("mac\n")}).err, "ponctl: FILE: line 1: no column pon_port\n");
}

TEST(OnuExport, WritesWhatImportReads)
{
    const FakeService service(with_onus(
        R"([{"pon_port":1,"onu_id":7,"mac":"02:00:5e:10:00:01","mode":0,"description":"main street, 7"},
            {"pon_port":1,"onu_id":null,"mac":"02:00:5e:10:00:02"}])"));
    EXPECT_EQ(service.ponctl({"onu", "export"}).out,
              "pon_port,onu_id,mac,mode,text_a,text_b,text_c,description,loid,sla_fixed,sla_assured,sla_maximum,"
              "sla_priority,sla_weight,sla_down\n"
              "1,7,02:00:5e:10:00:01,0,,,,\"main street, 7\",,,,,,,\n");
}

} // namespace
