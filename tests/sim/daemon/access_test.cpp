// These tests check who may do what.
#include <unistd.h>

#include "daemon/access.h"
#include "support.h"

namespace ponsim
{
namespace
{

constexpr uid_t alice = 40001;
constexpr uid_t bob = 40002;

bool may(const Access &access, uid_t user, const bsp_pon_msg &record, catalogue::Call call = catalogue::Call::set)
{
    return access.refuse(user, {BSP_MSG_PON, &record, sizeof record, call}).empty();
}

const bsp_pon_msg view = record_of(BSP_CMD_VIEW_BASE_INFO_WEB); // read
const bsp_pon_msg range = record_of(BSP_CMD_OPT_RANGE_SET);     // write
const bsp_pon_msg release = record_of(BSP_CMD_ONU_RELEASE_ALL); // service-affecting
const bsp_pon_msg unknown = record_of(1);

TEST(Access, EveryoneMayDoEverythingAtFirst)
{
    EXPECT_TRUE(may(Access{}, alice, release));
}

TEST(Access, AClassIncludesTheOnesBeforeIt)
{
    Access access;
    for (const char *grant : {"40001=read", "40002=write", "40003=service-affecting"})
        ASSERT_EQ(access.grant(grant), "");
    EXPECT_TRUE(may(access, 40001, view) && !may(access, 40001, range) && !may(access, 40001, release));
    EXPECT_TRUE(may(access, 40002, view) && may(access, 40002, range) && !may(access, 40002, release));
    EXPECT_TRUE(may(access, 40003, view) && may(access, 40003, range) && may(access, 40003, release));
}

TEST(Access, TheStarIsForThoseWithoutAGrant)
{
    Access access;
    ASSERT_EQ(access.grant("40001=write"), "");
    ASSERT_EQ(access.grant("*=read"), "");
    EXPECT_TRUE(may(access, alice, range));
    EXPECT_FALSE(may(access, bob, range));
    EXPECT_TRUE(may(access, bob, view));
}

TEST(Access, AnUnknownCommandReadsOnAGetCallAndWritesOnASetCall)
{
    Access access;
    ASSERT_EQ(access.grant("*=read"), "");
    EXPECT_TRUE(may(access, alice, unknown, catalogue::Call::get));
    EXPECT_FALSE(may(access, alice, unknown, catalogue::Call::set));
    ASSERT_EQ(access.grant("*=write"), "");
    EXPECT_TRUE(may(access, alice, unknown, catalogue::Call::set));
}

TEST(Access, AGetCallDoesNotMakeACommandHarmless)
{
    Access access;
    ASSERT_EQ(access.grant("*=read"), "");
    EXPECT_FALSE(may(access, alice, release, catalogue::Call::get));
}

TEST(Access, UsersHaveNames)
{
    Access access;
    ASSERT_EQ(access.grant("root=read"), "");
    EXPECT_FALSE(may(access, 0, range));
    EXPECT_TRUE(may(access, alice, range));
}

TEST(Access, ARefusalSaysWhoAndWhy)
{
    Access access;
    ASSERT_EQ(access.grant("*=read"), "");
    EXPECT_EQ(access.refuse(alice, message_of(release)),
              "user 40001 has read access; command 369 on channel 232 is service-affecting");
}

TEST(Access, AGrantThatMakesNoSenseIsExplained)
{
    Access access;
    EXPECT_NE(access.grant("alice").find("USER=CLASS"), std::string::npos);
    EXPECT_NE(access.grant("=read").find("USER=CLASS"), std::string::npos);
    EXPECT_NE(access.grant("*=everything").find("service-affecting"), std::string::npos);
    EXPECT_NE(access.grant("no such user=read").find("no such user"), std::string::npos);
}

} // namespace
} // namespace ponsim
