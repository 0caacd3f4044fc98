// These tests check who may read what ponsim keeps.
#include "storage/private.h"

#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

#include "database.h"
#include "support.h"

namespace ponsim
{
namespace
{

uint32_t mode_of(const std::string &file)
{
    struct stat found {
    };
    EXPECT_EQ(stat(file.c_str(), &found), 0) << file;
    return found.st_mode & 07777;
}

// This umask holds until the end of the scope.
class Umask
{
public:
    explicit Umask(mode_t mask) : before(umask(mask)) {}
    ~Umask() { umask(before); }
    Umask(const Umask &) = delete;

private:
    mode_t before;
};

// Returns a file of another user. Only root can make one; for others there is one of root.
std::string file_of_another_user(const Folder &folder)
{
    if (geteuid() != 0) return "/etc/passwd";
    constexpr uid_t somebody = 65534;
    const std::string file = folder.file("another");
    std::ofstream(file).flush();
    EXPECT_EQ(chown(file.c_str(), somebody, somebody), 0);
    return file;
}

std::string error_of(const std::string &file)
{
    try {
        const Store store(file, false);
    } catch (const StoreError &error) {
        return error.what();
    }
    return {};
}

TEST(Private, AStateFileAndItsLogAreForTheirOwnerWhateverTheUmaskIs)
{
    for (const mode_t mask : {0000u, 0022u, 0277u}) {
        const Folder folder;
        const std::string file = folder.file("olt.db");
        const Umask umask(mask);
        ServiceFixture fixture({}, file);
        EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1))), BSP_OK);
        EXPECT_EQ(mode_of(file), 0600u);
        EXPECT_EQ(mode_of(file + "-wal"), 0600u);
    }
}

TEST(Private, AStateFileThatOthersCouldReadIsTightenedWithItsLog)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    {
        ServiceFixture fixture({}, file);
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
        // A killed service leaves both files behind, as these copies.
        for (const char *suffix : {"", "-wal"})
            std::filesystem::copy_file(file + suffix, folder.file("left.db") + suffix);
    }
    const std::string left = folder.file("left.db");
    for (const char *suffix : {"", "-wal"})
        ASSERT_EQ(chmod((left + suffix).c_str(), 0664), 0);
    ServiceFixture fixture({}, left);
    EXPECT_EQ(mode_of(left), 0600u);
    EXPECT_EQ(mode_of(left + "-wal"), 0600u);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5)), BSP_OK) << "what was acknowledged is gone";
}

TEST(Private, AFileThatIsNoStateKeepsItsMode)
{
    const Folder folder;
    const std::string file = folder.file("notes");
    std::ofstream(file) << std::string(5000, 'x');
    ASSERT_EQ(chmod(file.c_str(), 0644), 0);
    EXPECT_NE(error_of(file), "");
    EXPECT_EQ(mode_of(file), 0644u);
}

TEST(Private, AnotherUsersFileIsNotUsed)
{
    const Folder folder;
    const std::string file = file_of_another_user(folder);
    const uint32_t before = mode_of(file);
    EXPECT_EQ(error_of(file), file + ": belongs to another user; name another file");
    EXPECT_EQ(mode_of(file), before);
}

TEST(Private, AnotherUsersLogBesideAnOwnFileIsNotUsed)
{
    const Folder folder;
    const std::string file = folder.file("olt.db"), log = file + "-wal";
    symlink(file_of_another_user(folder).c_str(), log.c_str());
    EXPECT_EQ(error_of(file), log + ": belongs to another user; name another file");
}

TEST(Private, FoldersThatAreMadeAreForTheirOwnerAndOthersStayAsTheyAre)
{
    const Folder folder;
    const std::string there = folder.file("there");
    ASSERT_TRUE(std::filesystem::create_directory(there));
    ASSERT_EQ(chmod(there.c_str(), 0755), 0);
    {
        const Umask umask(0277);
        storage::make_private_folders(there + "/a/b/");
    }
    storage::make_private_folders(there + "/a/b/c");
    EXPECT_EQ(mode_of(there), 0755u);
    for (const char *made : {"/a", "/a/b", "/a/b/c"})
        EXPECT_EQ(mode_of(there + made), 0700u) << made;
}

TEST(Private, AFolderThatCannotBeMadeIsNamed)
{
    const Folder folder;
    std::ofstream(folder.file("file")).flush();
    try {
        storage::make_private_folders(folder.file("file") + "/below");
        FAIL() << "it was made";
    } catch (const std::filesystem::filesystem_error &error) {
        EXPECT_NE(std::string(error.what()).find(folder.file("file")), std::string::npos) << error.what();
    }
}

} // namespace
} // namespace ponsim
