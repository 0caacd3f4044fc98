// These tests check blocks of memory and result files.
#include <cstring>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "board/datastore.h"
#include "board/util.h"
#include "support.h"

namespace
{

TEST(Block, can_be_used_and_released)
{
    void *block = pmalloc(100);
    ASSERT_NE(block, nullptr);
    std::memset(block, 1, 100);
    pfree(block);
    pfree(nullptr);
}

const TestEnvironment environment;

// The file is in the folder of sockets, where the functions take files.
class ResultFile : public testing::Test
{
protected:
    ResultFile() { std::ofstream(name) << "0123456789"; }
    ~ResultFile() override { unlink(name); }

    const std::string path = board_ipc_directory() + std::string("/result");
    const char *const name = path.c_str();
    char bytes[12] = "###########";
};

TEST_F(ResultFile, gives_exactly_the_bytes_asked_for)
{
    EXPECT_EQ(get_from_file(name, 4, bytes), 0);
    EXPECT_STREQ(bytes, "0123#######");
    EXPECT_EQ(get_from_file(name, 10, bytes), 0);
    EXPECT_STREQ(bytes, "0123456789#");
}

TEST_F(ResultFile, that_is_too_short_missing_or_unreadable_fails_in_its_own_way)
{
    const int too_short = get_from_file(name, 11, bytes);
    const int missing = get_from_file((path + "-missing").c_str(), 1, bytes);
    EXPECT_NE(too_short, 0);
    EXPECT_NE(missing, 0);
    EXPECT_NE(too_short, missing);
}

TEST_F(ResultFile, elsewhere_is_neither_read_nor_removed)
{
    const std::string folder = board_ipc_directory();
    std::filesystem::create_directory(folder + "/sub");
    std::ofstream(folder + "/sub/file") << "0123456789";
    char elsewhere[] = "/tmp/board-util-XXXXXX";
    close(mkstemp(elsewhere));
    std::ofstream(elsewhere) << "0123456789";
    for (const std::string &other :
         {std::string(elsewhere), folder + "/sub/file", folder + "/../" + (elsewhere + 5), folder, folder + "/",
          folder + "/.", std::string("result"), std::string(), folder + "result"}) {
        EXPECT_NE(get_from_file(other.c_str(), 1, bytes), 0) << other;
        EXPECT_NE(delete_file(other.c_str()), 0) << other;
    }
    EXPECT_TRUE(std::filesystem::exists(elsewhere));
    EXPECT_TRUE(std::filesystem::exists(folder + "/sub/file"));
    unlink(elsewhere);
}

TEST_F(ResultFile, that_is_no_regular_file_is_neither_followed_nor_waited_for)
{
    for (const auto &make :
         {+[](const char *at) { return symlink("/etc/hostname", at); },
          +[](const char *at) { return mkfifo(at, 0600); }, +[](const char *at) { return mkdir(at, 0700); }}) {
        unlink(name);
        ASSERT_EQ(make(name), 0);
        EXPECT_NE(get_from_file(name, 1, bytes), 0);
        EXPECT_NE(delete_file(name), 0);
        EXPECT_EQ(db_create_fromfile(name), nullptr);
        std::filesystem::remove(name);
    }
}

TEST_F(ResultFile, of_another_user_is_neither_read_nor_removed)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
    constexpr uid_t somebody = 65534;
    ASSERT_EQ(chown(name, somebody, somebody), 0);
    EXPECT_NE(get_from_file(name, 1, bytes), 0);
    EXPECT_NE(delete_file(name), 0);
    EXPECT_EQ(access(name, F_OK), 0);
}

TEST_F(ResultFile, where_others_may_write_is_neither_read_nor_removed)
{
    ASSERT_EQ(chmod(board_ipc_directory(), 01777), 0);
    EXPECT_NE(get_from_file(name, 1, bytes), 0);
    EXPECT_NE(delete_file(name), 0);
    EXPECT_EQ(access(name, F_OK), 0);
    ASSERT_EQ(chmod(board_ipc_directory(), 0700), 0);
}

class PassedFile : public testing::TestWithParam<decltype(&ipc_get_exec)>
{
protected:
    // Makes an exchange of which the answer is a file.
    static void get(const std::string &content)
    {
        TestService service([&](const board_request &, board_answer &answer) {
            EXPECT_EQ(board_answer_file(&answer, content.data(), static_cast<uint32_t>(content.size())), 0);
        });
        uint32_t length = 0, status = 1;
        ASSERT_EQ(GetParam()(test_module, test_channel, "", 1, nullptr, &length, &status), IPC_OK);
    }
};

TEST_P(PassedFile, is_read_until_the_next_exchange)
{
    for (const size_t size : {size_t{10}, size_t{BOARD_RESULT_MAX}, size_t{BOARD_RESULT_MAX} + 1, size_t{5} << 20}) {
        std::string content(size, 'f');
        content.back() = '.';
        get(content);
        std::string read(size, '#');
        EXPECT_EQ(get_from_file(BOARD_RESULT_FILE, static_cast<uint32_t>(size), read.data()), 0);
        EXPECT_TRUE(read == content) << size;
        EXPECT_NE(get_from_file(BOARD_RESULT_FILE, static_cast<uint32_t>(size) + 1, read.data()), 0);
        char first = '#';
        EXPECT_EQ(get_from_file(BOARD_RESULT_FILE, 1, &first), 0);
        EXPECT_EQ(first, 'f');
        EXPECT_EQ(delete_file(BOARD_RESULT_FILE), 0);
        EXPECT_EQ(db_from_shmem(0, UINT32_MAX), nullptr) << "a file is no result database";
    }
    TestService service(echo());
    uint32_t status = 1;
    ASSERT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    char byte;
    EXPECT_NE(get_from_file(BOARD_RESULT_FILE, 1, &byte), 0);
}

TEST_P(PassedFile, makes_a_result_database)
{
    get(R"([{"a":1}])");
    db_handle *db = db_create_fromfile(BOARD_RESULT_FILE);
    ASSERT_NE(db, nullptr);
    EXPECT_EQ(db_rows(db), 1u);
    db_free(db);
}

INSTANTIATE_TEST_SUITE_P(Connection, PassedFile, testing::Values(&ipc_get_exec));
INSTANTIATE_TEST_SUITE_P(Datagram, PassedFile, testing::Values(&ipc_dgram_get_exec));

TEST_F(ResultFile, can_be_removed_once)
{
    EXPECT_EQ(delete_file(name), 0);
    EXPECT_NE(access(name, F_OK), 0);
    EXPECT_NE(delete_file(name), 0);
}

} // namespace
