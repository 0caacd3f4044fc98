// These tests run ponctl onu find as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;

FakeService::Handler three_onus()
{
    return by_command(
        {{384,
          rows(384, R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:10:00:01","state":"online","loid":"shop-1",)"
                    R"("description":"Main Street 7"},)"
                    R"({"pon_port":2,"onu_id":9,"mac":"02:00:5e:ab:00:02","state":"offline","loid":null,)"
                    R"("text_b":"customer 1207"},)"
                    R"({"pon_port":3,"onu_id":null,"mac":"02:11:5e:ab:00:02","state":"waiting","loid":"kiosk"}])")},
         {385, rows(385, R"([{"pon_port":1,"mac":"02:00:5e:10:00:01","vendor":"SIMA"},)"
                         R"({"pon_port":2,"mac":"02:00:5e:ab:00:02","vendor":"SIMB"}])")},
         {410, rows(410, R"([{"pon_port":2,"loid":"bakery","mac":null,"onu_id":9},)"
                         R"({"pon_port":4,"loid":"nobody","mac":null,"onu_id":null}])")}});
}

std::string found(const std::string &text)
{
    const FakeService service(three_onus());
    const Finished finished =
        service.ponctl({"onu", "find", text, "--columns", "pon_port,onu_id,found_by", "--no-headings", "-o", "csv"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    return finished.out;
}

TEST(OnuFind, FindsAMacAddressOrItsBeginningInAnySpelling)
{
    for (const char *text : {"02:00:5e:10:00:01", "02-00-5E-10-00-01", "0200.5e10.0001", "02005e10"})
        EXPECT_EQ(found(text), "1,5,mac\n") << text;
    EXPECT_EQ(found("02:00"), "1,5,mac\n2,9,mac\n");
}

TEST(OnuFind, FindsLoidsAlsoOfOnusThatAreOfflineAndOfNone)
{
    EXPECT_EQ(found("SHOP"), "1,5,loid\n");
    EXPECT_EQ(found("baker"), "2,9,loid\n");
    EXPECT_EQ(found("kiosk"), "3,,loid\n");
    EXPECT_EQ(found("nobody"), "4,,loid\n");
}

TEST(OnuFind, FindsDescriptionsBindTextsAndSerialNumbers)
{
    EXPECT_EQ(found("main street"), "1,5,description\n");
    EXPECT_EQ(found("1207"), "2,9,text_b\n");
    EXPECT_EQ(found("simb5EAB0002"), "2,9,serial\n");
}

TEST(OnuFind, EndsWithOneWhereNoOnuHasTheText)
{
    const FakeService service(three_onus());
    const Finished finished = service.ponctl({"onu", "find", "elsewhere"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("ponctl: no ONU has 'elsewhere' in its MAC address, LOID"));
    EXPECT_EQ(ponctl({"onu", "find", ""}).err, "ponctl: TEXT: empty\n");
}

} // namespace
