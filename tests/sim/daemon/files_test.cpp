// These tests check the results that callers read from files.
#include "daemon/files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <vector>

#include <unistd.h>

namespace ponsim
{
namespace
{

using std::filesystem::exists;
using std::filesystem::path;
using std::filesystem::perms;

// This folder does not exist, so that nobody serves here.
const std::string sockets = testing::TempDir() + "no-sockets-" + std::to_string(getpid());

std::string content_of(const std::string &name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

perms folder_perms(uint32_t socket_mode)
{
    ResultFiles files(socket_mode, sockets);
    return status(path(files.write("")).parent_path()).permissions();
}

TEST(ResultFiles, HoldWhatIsWritten)
{
    ResultFiles files(0600, sockets);
    const std::string first = files.write(std::string("a\0b", 3)), second = files.write("");
    EXPECT_EQ(content_of(first), std::string("a\0b", 3));
    EXPECT_EQ(content_of(second), "");
    EXPECT_NE(first, second);
}

TEST(ResultFiles, HaveNamesThatTheShortestAnswerHasRoomFor)
{
    ResultFiles files(0600, sockets);
    for (int count = 0; count < 1000; ++count)
        ASSERT_LE(files.write("x").size(), 36u);
}

TEST(ResultFiles, OfThoseThatAreLeftTheLastOnesStay)
{
    ResultFiles files(0600, sockets);
    std::vector<std::string> names;
    for (int count = 0; count < 40; ++count)
        names.push_back(files.write("x"));
    EXPECT_FALSE(exists(names[7]));
    for (size_t index = 8; index < names.size(); ++index)
        EXPECT_TRUE(exists(names[index])) << index;
}

TEST(ResultFiles, MayBeRemovedByTheirReaders)
{
    ResultFiles files(0600, sockets);
    for (int count = 0; count < 40; ++count)
        EXPECT_TRUE(std::filesystem::remove(files.write("x")));
}

TEST(ResultFiles, HaveTheSameNamesAtTheSameSocketsAndOthersAtOthers)
{
    const auto first_name = [](const std::string &socket_dir) { return ResultFiles(0600, socket_dir).write("x"); };
    EXPECT_EQ(first_name(sockets), first_name(sockets));
    EXPECT_EQ(first_name(sockets), first_name(sockets + "/../" + path(sockets).filename().string()));
    EXPECT_NE(first_name(sockets), first_name(sockets + "/other"));
}

TEST(ResultFiles, WhatAKilledServiceLeftGoes)
{
    path folder;
    {
        ResultFiles files(0600, sockets);
        folder = path(files.write("x")).parent_path();
    }
    create_directory(folder);
    std::ofstream(folder / "7") << "left";
    ResultFiles files(0600, sockets);
    EXPECT_EQ(path(files.write("x")).parent_path(), folder);
    EXPECT_FALSE(exists(folder / "7"));
}

TEST(ResultFiles, WhatAKilledServiceLeftCanBeRemovedWithoutANewOne)
{
    path folder;
    {
        ResultFiles files(0600, sockets);
        folder = path(files.write("x")).parent_path();
    }
    create_directory(folder);
    std::ofstream(folder / "7") << "left";
    remove_left_results(sockets + "/other");
    EXPECT_TRUE(exists(folder / "7"));
    remove_left_results(sockets);
    EXPECT_FALSE(exists(folder));
    remove_left_results(sockets);
}

TEST(ResultFiles, AreNotWrittenThroughALink)
{
    path folder;
    {
        ResultFiles files(0600, sockets);
        folder = path(files.write("x")).parent_path();
    }
    const path target = folder.string() + "-elsewhere";
    create_directory(target);
    create_directory_symlink(target, folder);
    {
        ResultFiles files(0600, sockets);
        EXPECT_NE(path(files.write("x")).parent_path(), folder);
    }
    EXPECT_TRUE(is_empty(target));
    remove(folder);
    remove(target);
}

TEST(ResultFiles, GoWithTheService)
{
    path folder;
    {
        ResultFiles files(0600, sockets);
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
