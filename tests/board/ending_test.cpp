// These tests end threads and processes while, or after, they use the library.
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "board/datastore.h"
#include "board/util.h"
#include "support.h"

namespace
{

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "30000"}, {"BOARD_LOG", "debug"}});

int32_t call()
{
    uint32_t status;
    return ipc_set_exec(test_module, test_channel, "", 1, &status);
}

TEST(Ending, of_a_thread_that_is_cancelled_in_a_call_waits_for_its_end)
{
    std::atomic<bool> handling{false}, go_on{false};
    static std::atomic<int> returned;
    returned = 0;
    TestService service([&](const board_request &, board_answer &) {
        handling = true;
        while (!go_on)
            usleep(1000);
    });
    pthread_t thread;
    const auto body = [](void *) -> void * {
        returned += call() == IPC_OK;
        pthread_testcancel();
        ++returned; // is not reached
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, nullptr, body, nullptr), 0);
    EXPECT_TRUE(eventually([&] { return handling.load(); }));
    ASSERT_EQ(pthread_cancel(thread), 0);
    go_on = true;
    void *how = nullptr;
    ASSERT_EQ(pthread_join(thread, &how), 0);
    EXPECT_EQ(how, PTHREAD_CANCELED);
    EXPECT_EQ(returned, 1);
}

std::atomic<int> calls_of_destructors{0};

void call_at_the_end(void *)
{
    calls_of_destructors += call() == IPC_OK;
    userlog_debug("ending", 1, "a thread ends");
}

TEST(Ending, of_a_thread_may_make_calls)
{
    TestService service(echo());
    pthread_key_t key;
    ASSERT_EQ(pthread_key_create(&key, call_at_the_end), 0);
    static pthread_key_t shared;
    shared = key;
    const size_t before = open_descriptors();
    for (int thread = 0; thread < 5; ++thread)
        std::thread([] {
            EXPECT_EQ(call(), IPC_OK);
            pthread_setspecific(shared, &shared);
        }).join();
    EXPECT_EQ(calls_of_destructors, 5);
    EXPECT_TRUE(eventually([&] { return open_descriptors() <= before; })) << "nothing is left open";
    pthread_key_delete(key);
}

// A handler of exit() that was registered before the first call runs after all that the call made is destroyed.
TEST(Ending, of_a_process_may_make_calls)
{
    TestService service(echo());
    const int exit_status = in_child([] {
        std::atexit([] {
            db_handle *db = db_from_string("[{\"a\":1}]");
            const bool read = db_rows(db) == 1 && db_rows(nullptr) == 0;
            db_free(db);
            _exit(read && call() == IPC_OK ? 0 : 1);
        });
        if (call() != IPC_OK) return 2;
        std::exit(3);
    });
    EXPECT_EQ(exit_status, 0);
}

// Connecting to a service whose queue is full waits, and a signal interrupts that.
TEST(Ending, of_a_wait_by_a_signal_does_not_end_the_call)
{
    struct sigaction action {
    };
    action.sa_handler = [](int) {};
    struct sigaction before;
    ASSERT_EQ(sigaction(SIGUSR1, &action, &before), 0);
    board::Descriptor listener(socket(AF_UNIX, SOCK_SEQPACKET, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = socket_path("seq");
    mkdir(board_ipc_directory(), 0755);
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener.get(), reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    ASSERT_EQ(listen(listener.get(), 0), 0);
    RawClient first("seq");
    std::atomic<bool> done{false};
    int32_t value = 0;
    std::thread caller([&] {
        board_ipc_use_thread_timeout(1000);
        value = call();
        done = true;
    });
    while (!done) {
        pthread_kill(caller.native_handle(), SIGUSR1);
        usleep(10000);
    }
    caller.join();
    EXPECT_EQ(value, IPC_ERR_TIMEOUT) << "there is a service";
    unlink(path.c_str());
    sigaction(SIGUSR1, &before, nullptr);
}

} // namespace
