// These tests check the settings of the environment. Each test reads them in a child process, because they are read
// once for each process.
#include <cstdlib>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support.h"

namespace
{

struct Variable {
    const char *name, *value; // a null value means that the variable is not set
};

void set_environment(std::initializer_list<Variable> variables)
{
    for (const char *name : {"BOARD_IPC_DIR", "XDG_RUNTIME_DIR", "BOARD_IPC_TIMEOUT_MS", "BOARD_LOG"})
        unsetenv(name);
    for (const Variable &variable : variables)
        setenv(variable.name, variable.value, 1);
}

testing::AssertionResult folder_is(const std::string &expected, uid_t user,
                                   std::initializer_list<Variable> variables = {})
{
    const std::string log = log_of([&] {
        in_child([&] {
            set_environment(variables);
            if (geteuid() != user && setuid(user)) return 1;
            dprintf(STDERR_FILENO, "%s", board_ipc_directory());
            return 0;
        });
    });
    if (log == expected) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "it is " << log;
}

constexpr uid_t nobody = 65534;

// Without root's rights no other user is possible.
uid_t some_user()
{
    return geteuid() ? geteuid() : nobody;
}

TEST(FolderOfSockets, is_the_one_that_the_environment_names)
{
    EXPECT_TRUE(folder_is("/named", some_user(), {{"BOARD_IPC_DIR", "/named"}, {"XDG_RUNTIME_DIR", "/run/user/1"}}));
}

TEST(FolderOfSockets, is_the_systems_for_root)
{
    if (geteuid()) GTEST_SKIP() << "needs root";
    EXPECT_TRUE(folder_is("/run/board-ipc", 0, {{"XDG_RUNTIME_DIR", "/run/user/0"}}));
}

TEST(FolderOfSockets, is_the_users_own_for_others)
{
    EXPECT_TRUE(folder_is("/run/user/1/board-ipc", some_user(), {{"XDG_RUNTIME_DIR", "/run/user/1"}}));
}

TEST(FolderOfSockets, lies_in_tmp_as_the_last_resort)
{
    EXPECT_TRUE(folder_is("/tmp/board-ipc-" + std::to_string(some_user()), some_user()));
}

TEST(FolderOfSockets, in_tmp_is_not_used_when_another_user_made_it)
{
    const std::string folder = "/tmp/board-ipc-" + std::to_string(nobody);
    if (geteuid()) GTEST_SKIP() << "needs root";
    if (mkdir(folder.c_str(), 0777)) GTEST_SKIP() << folder << " is there already";
    const std::string log = log_of([] {
        const int exit_status = in_child([] {
            set_environment({});
            if (setuid(nobody)) return 1;
            uint32_t status;
            board_service_config config{};
            config.module = test_module;
            return ipc_set_exec(test_module, test_channel, "", 1, &status) == IPC_ERR_ACCESS &&
                           !board_service_start(&config)
                       ? 0
                       : 2;
        });
        EXPECT_EQ(exit_status, 0);
    });
    rmdir(folder.c_str());
    EXPECT_NE(log.find(folder + " is another user's"), std::string::npos) << log;
}

TEST(FolderOfSockets, is_the_one_that_was_chosen_until_it_is_given_back)
{
    std::string seen;
    const auto note = [&seen] { seen += board_ipc_directory(); };
    const std::string log = log_of([&] {
        in_child([&] {
            set_environment({{"BOARD_IPC_DIR", "/named"}});
            note();
            board_ipc_use_directory("/for-all");
            note();
            if (board_ipc_use_thread_directory("/for-one")) return 1;
            note();
            std::thread(note).join();
            if (board_ipc_use_thread_directory(nullptr) != std::string("/for-one")) return 2;
            note();
            board_ipc_use_directory(nullptr);
            note();
            dprintf(STDERR_FILENO, "%s", seen.c_str());
            return 0;
        });
    });
    EXPECT_EQ(log, "/named/for-all/for-one/for-all/for-all/named");
}

TEST(TimeoutSetting, that_is_no_number_is_logged_and_replaced)
{
    for (const char *value : {"soon", "0", "-1", "3600001", "10s"}) {
        const std::string log = log_of([&] {
            in_child([&] {
                set_environment({{"BOARD_IPC_TIMEOUT_MS", value}});
                board_ipc_directory();
                return 0;
            });
        });
        EXPECT_NE(log.find("'" + std::string(value) + "', not a number from 1 to 3600000; 5000 is used"),
                  std::string::npos)
            << log;
    }
}

} // namespace
