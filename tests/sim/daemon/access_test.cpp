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

// Returns a user who is in these groups, the first of which is his own.
Asker member(uid_t user, std::vector<gid_t> groups)
{
    board_request request{};
    request.uid = user;
    request.gid = groups.front();
    request.groups = groups.data() + 1;
    request.group_count = static_cast<uint32_t>(groups.size() - 1);
    return Asker(request);
}

// Returns the sender of a datagram, of whom only his own group is known.
Asker sender(uid_t user, gid_t group)
{
    board_request request{};
    request.uid = user;
    request.gid = group;
    return Asker(request);
}

bool may(const Access &access, const Asker &asker, const bsp_pon_msg &record)
{
    return access.refuse(asker, {BSP_MSG_PON, &record, sizeof record, catalogue::Call::set}).empty();
}

TEST(Access, AGroupsGrantIsForItsMembers)
{
    Access access;
    for (const char *grant : {"@500=write", "@root=service-affecting", "*=read"})
        ASSERT_EQ(access.grant(grant), "");
    EXPECT_TRUE(may(access, member(alice, {500}), range)) << "by the group of the process";
    EXPECT_TRUE(may(access, member(alice, {100, 7, 500}), range)) << "by another of its groups";
    EXPECT_FALSE(may(access, member(alice, {100, 7}), range));
    EXPECT_FALSE(may(access, member(alice, {500}), release));
    EXPECT_TRUE(may(access, member(alice, {500, 0}), release)) << "the greatest counts";
}

TEST(Access, AUsersGrantCountsBeforeThoseOfHisGroups)
{
    Access access;
    for (const char *grant : {"@500=service-affecting", "40001=read"})
        ASSERT_EQ(access.grant(grant), "");
    EXPECT_FALSE(may(access, member(alice, {500}), range));
    EXPECT_TRUE(may(access, member(bob, {500}), release));
}

TEST(Access, WhoseGroupsAreNotKnownHasTheLeast)
{
    Access access;
    ASSERT_EQ(access.grant("@500=read"), ""); // a group that may do less than everyone
    EXPECT_TRUE(may(access, member(alice, {100}), release));
    EXPECT_FALSE(may(access, member(alice, {100, 500}), range));
    EXPECT_FALSE(may(access, sender(alice, 100), range)) << "he may be in the group";
    ASSERT_EQ(access.grant("@100=write"), "");
    EXPECT_TRUE(may(access, sender(alice, 100), range));
    ASSERT_EQ(access.grant("40001=service-affecting"), "");
    EXPECT_TRUE(may(access, sender(alice, 7), release));
}

TEST(Access, AGroupThatIsNotThereIsNamed)
{
    Access access;
    EXPECT_EQ(access.grant("@no such group=read"),
              "there is no group no such group here; name one, or give a group number");
    EXPECT_NE(access.grant("@=read"), "");
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
