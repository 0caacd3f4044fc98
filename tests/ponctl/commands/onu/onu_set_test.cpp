// These tests read sets of ONUs of a port, as a command line names them.
#include "results/onu_set.h"

#include <gtest/gtest.h>

#include "usage_error.h"

namespace
{

using namespace ponctl;

TEST(OnuSet, IsAPortAndIds)
{
    const OnuSet set = parse_onu_set("2/3-5,20");
    EXPECT_EQ(set.port, 2u);
    EXPECT_FALSE(set.all);
    EXPECT_EQ(count_of(set.ids), 4u);
    EXPECT_TRUE(holds(set.ids, 3) && holds(set.ids, 4) && holds(set.ids, 5) && holds(set.ids, 20));
    EXPECT_EQ(count_of(parse_onu_set("1/0").ids), 1u);
    EXPECT_TRUE(parse_onu_set("1/all").all);
}

TEST(OnuSet, IsPrintedInItsShortestForm)
{
    EXPECT_EQ(format_onu_set(parse_onu_set("1/20,5,3,4")), "1/3-5,20");
    EXPECT_EQ(format_onu_set(parse_onu_set("0x10/all")), "16/all");
    EXPECT_EQ(describe_onu_set(parse_onu_set("1/5")), "ONU 1/5");
    EXPECT_EQ(describe_onu_set(parse_onu_set("1/5-6")), "ONUs 1/5-6");
    EXPECT_EQ(describe_onu_set(parse_onu_set("1/all")), "ONUs 1/all");
}

TEST(OnuSet, RefusesWhatIsNone)
{
    const auto error_of = [](const char *text) { return usage_error_of([text] { parse_onu_set(text); }); };
    const std::string form = "a PON port and ids of its ONUs, as 1/5, 1/3-17,20 or 1/all";
    EXPECT_EQ(error_of(""), "SET: missing; give " + form);
    for (const char *text : {"5", "/5", "1/", "all", "x/5", "-1/5"})
        EXPECT_EQ(error_of(text), "SET: '" + std::string(text) + "' is not " + form);
    for (const char *ids : {"128", "5-3", "all,3", "3/4", "3,", "*"})
        EXPECT_EQ(error_of(("1/" + std::string(ids)).c_str()),
                  "SET: '" + std::string(ids) + "' is not a set of ONU ids from 0 to 127, as 1-5,7");
    EXPECT_EQ(error_of("0/5"), "SET: '0/5' names no port: they count from 1");
}

} // namespace
