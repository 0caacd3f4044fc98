// Results that callers read from files.
#include "files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <vector>

namespace ponsim
{
namespace
{

using std::filesystem::exists;
using std::filesystem::path;
using std::filesystem::perms;

std::string content_of(const std::string &name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

perms folder_perms(uint32_t socket_mode)
{
    ResultFiles files(socket_mode);
    return status(path(files.write("")).parent_path()).permissions();
}

TEST(ResultFiles, HoldWhatIsWritten)
{
    ResultFiles files(0600);
    const std::string first = files.write(std::string("a\0b", 3)), second = files.write("");
    EXPECT_EQ(content_of(first), std::string("a\0b", 3));
    EXPECT_EQ(content_of(second), "");
    EXPECT_NE(first, second);
}

TEST(ResultFiles, HaveNamesThatTheShortestAnswerHasRoomFor)
{
    ResultFiles files(0600);
    for (int count = 0; count < 1000; ++count)
        ASSERT_LE(files.write("x").size(), 36u);
}

TEST(ResultFiles, OfThoseThatAreLeftTheLastOnesStay)
{
    ResultFiles files(0600);
    std::vector<std::string> names;
    for (int count = 0; count < 40; ++count)
        names.push_back(files.write("x"));
    EXPECT_FALSE(exists(names[7]));
    for (size_t index = 8; index < names.size(); ++index)
        EXPECT_TRUE(exists(names[index])) << index;
}

TEST(ResultFiles, MayBeRemovedByTheirReaders)
{
    ResultFiles files(0600);
    for (int count = 0; count < 40; ++count)
        EXPECT_TRUE(std::filesystem::remove(files.write("x")));
}

TEST(ResultFiles, GoWithTheService)
{
    path folder;
    {
        ResultFiles files(0600);
        folder = path(files.write("x")).parent_path();
        EXPECT_TRUE(exists(folder));
    }
    EXPECT_FALSE(exists(folder));
}

TEST(ResultFiles, MayBeReadByWhoMayConnect)
{
    constexpr perms group = perms::group_read | perms::group_exec, others = perms::others_read | perms::others_exec;
    EXPECT_EQ(folder_perms(0600), perms::owner_all);
    EXPECT_EQ(folder_perms(0660), perms::owner_all | group);
    EXPECT_EQ(folder_perms(0666), perms::owner_all | group | others);
}

} // namespace
} // namespace ponsim
