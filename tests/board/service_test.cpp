// These tests check a service's life: its sockets in their folder, and how it ends.
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support.h"

namespace
{

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "30000"}});

constexpr uid_t somebody = 65534;

bool exists(const std::string &path)
{
    return access(path.c_str(), F_OK) == 0;
}

int32_t call()
{
    uint32_t status;
    return ipc_set_exec(test_module, test_channel, "", 1, &status);
}

void ignore(void *, const board_request *, board_answer *) {}

board_service *start(uint32_t module, const std::string &directory, uint32_t mode = 0)
{
    board_service_config config{};
    config.module = module;
    config.directory = directory.c_str();
    config.socket_mode = mode;
    config.handler = ignore;
    return board_service_start(&config);
}

TEST(Service, uses_the_folder_that_the_environment_names)
{
    EXPECT_STREQ(board_ipc_directory(), getenv("BOARD_IPC_DIR"));
    TestService service(echo());
    EXPECT_TRUE(exists(board_ipc_directory() + std::string("/6.seq")));
    EXPECT_TRUE(exists(board_ipc_directory() + std::string("/6.dgram")));
}

TEST(Service, leaves_nothing_behind_when_it_stops)
{
    const std::string folder = board_ipc_directory() + std::string("/own");
    board_service *service = start(7, folder);
    ASSERT_NE(service, nullptr);
    board_service_stop(service);
    EXPECT_EQ(rmdir(folder.c_str()), 0) << "the folder, made by the service, is empty";
}

TEST(Service, gives_its_sockets_the_mode_asked_for_whatever_the_umask)
{
    const mode_t before = umask(0177);
    board_service *standard = start(7, board_ipc_directory()), *open = start(8, board_ipc_directory(), 0666);
    umask(before);
    const auto mode = [](const char *name) {
        struct stat found {
        };
        stat((board_ipc_directory() + std::string(name)).c_str(), &found);
        return found.st_mode & 07777;
    };
    for (const char *name : {"/7.seq", "/7.dgram"})
        EXPECT_EQ(mode(name), 0660u);
    for (const char *name : {"/8.seq", "/8.dgram"})
        EXPECT_EQ(mode(name), 0666u);
    board_service_stop(standard);
    board_service_stop(open);
}

TEST(Service, is_the_only_one_of_its_module_and_folder)
{
    TestService first(echo());
    const std::string log = log_of([] { EXPECT_EQ(start(test_module, board_ipc_directory()), nullptr); });
    EXPECT_NE(log.find("another live service"), std::string::npos) << log;
    EXPECT_EQ(call(), IPC_OK) << "the first is none the worse";
    board_service *other = start(test_module + 1, board_ipc_directory());
    EXPECT_NE(other, nullptr);
    board_service_stop(other);
}

TEST(Service, takes_the_place_of_a_dead_one)
{
    const int exit_status = in_child([] {
        board_service *service = start(test_module, board_ipc_directory());
        // The child ends suddenly, and leaves its sockets and its lock.
        return service && exists(socket_path("seq")) ? 0 : 1;
    });
    EXPECT_EQ(exit_status, 0);
    EXPECT_TRUE(exists(socket_path("seq")));
    TestService next(echo());
    EXPECT_TRUE(next.is_running());
    EXPECT_EQ(call(), IPC_OK);
}

TEST(Service, says_why_it_cannot_start)
{
    const std::string log = log_of([] {
        EXPECT_EQ(start(7, "/nonexistent/folder/of/sockets"), nullptr);
        EXPECT_EQ(start(7, "/dev/null"), nullptr);
        EXPECT_EQ(start(7, "/tmp/" + std::string(200, 'x')), nullptr);
    });
    EXPECT_NE(log.find("/nonexistent/folder/of/sockets: No such file"), std::string::npos) << log;
    EXPECT_NE(log.find("/dev/null"), std::string::npos) << log;
    EXPECT_NE(log.find("too long a name"), std::string::npos) << log;
    rmdir(("/tmp/" + std::string(200, 'x')).c_str());
}

TEST(Service, stops_while_clients_are_connected)
{
    TestService service(echo());
    EXPECT_EQ(call(), IPC_OK);
    std::vector<RawClient> idle;
    for (int client = 0; client < 10; ++client)
        idle.emplace_back("seq");
    service.stop();
    for (RawClient &client : idle)
        EXPECT_EQ(client.next_packet(), "");
    EXPECT_EQ(call(), IPC_ERR_NO_SERVICE);
}

TEST(Service, releases_what_its_clients_used)
{
    TestService service(echo());
    call();
    const size_t before = open_descriptors();
    for (int round = 0; round < 50; ++round)
        std::thread([] { EXPECT_EQ(call(), IPC_OK); }).join();
    EXPECT_TRUE(eventually([&] { return open_descriptors() == before; }));
}

TEST(Service, asks_for_leave_with_the_request_in_hand)
{
    TestService service(echo(), [](const board_request &request) -> const char * {
        return request.length == 2 ? "no requests of two bytes" : nullptr;
    });
    uint32_t status;
    log_of([&] { EXPECT_EQ(ipc_set_exec(test_module, test_channel, "ab", 2, &status), IPC_ERR_REFUSED); });
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "abc", 3, &status), IPC_OK);
}

TEST(Service, refuses_an_answer_that_no_frame_holds)
{
    std::atomic<int> refused{0};
    TestService service([&](const board_request &, board_answer &answer) {
        const std::string data(IPC_MAX_LENGTH + 1, 'x');
        refused = board_answer_data(&answer, data.data(), IPC_MAX_LENGTH + 1);
    });
    EXPECT_EQ(call(), IPC_OK);
    EXPECT_EQ(refused, -1);
}

TEST(Service, does_not_use_a_folder_in_which_others_may_replace_its_sockets)
{
    const std::string folder = board_ipc_directory() + std::string("/shared");
    ASSERT_EQ(mkdir(folder.c_str(), 0700), 0);
    ASSERT_EQ(chmod(folder.c_str(), 0777), 0);
    const std::string log = log_of([&] { EXPECT_EQ(start(7, folder), nullptr); });
    EXPECT_NE(log.find(folder + " cannot be used: others may replace what is in it"), std::string::npos) << log;
    ASSERT_EQ(chmod(folder.c_str(), 01777), 0);
    board_service *service = start(7, folder);
    EXPECT_NE(service, nullptr) << "in a folder such as /tmp only the owner of a file may replace it";
    board_service_stop(service);
    rmdir(folder.c_str());
}

TEST(Service, does_not_use_a_folder_of_another_user)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
    const std::string folder = board_ipc_directory() + std::string("/foreign");
    ASSERT_EQ(mkdir(folder.c_str(), 0700), 0);
    ASSERT_EQ(chown(folder.c_str(), somebody, somebody), 0);
    const std::string log = log_of([&] { EXPECT_EQ(start(7, folder), nullptr); });
    EXPECT_NE(log.find(folder + " cannot be used: it is another user's"), std::string::npos) << log;
    rmdir(folder.c_str());
}

TEST(Service, leaves_the_sockets_of_its_successor)
{
    const std::string folder = board_ipc_directory() + std::string("/replaced");
    board_service *service = start(7, folder);
    ASSERT_NE(service, nullptr);
    std::filesystem::remove_all(folder); // somebody tidies up, and starts the service again
    board_service *successor = start(7, folder);
    ASSERT_NE(successor, nullptr);
    board_service_stop(service);
    for (const char *file : {"/7.seq", "/7.dgram", "/7.lock"})
        EXPECT_TRUE(exists(folder + file)) << file;
    board_service_stop(successor);
    EXPECT_EQ(rmdir(folder.c_str()), 0);
}

TEST(Service, closes_idle_connections_and_nobody_notices)
{
    board_service_config config{};
    config.module = 7;
    config.idle_limit = 1;
    config.handler = ignore;
    board_service *service = board_service_start(&config);
    ASSERT_NE(service, nullptr);
    uint32_t status;
    EXPECT_EQ(ipc_set_exec(7, test_channel, "", 1, &status), IPC_OK);
    const size_t connected = open_descriptors();
    EXPECT_TRUE(eventually([&] { return open_descriptors() < connected; })) << "the service's end is closed";
    EXPECT_EQ(ipc_set_exec(7, test_channel, "", 1, &status), IPC_OK);
    board_service_stop(service);
}

board::RequestFrame request_to(uint32_t module)
{
    board::RequestFrame request{};
    request.header.head = {.kind = board::Kind::request, .detail = BOARD_CALL_SET};
    request.header.module = module;
    request.header.msg_type = test_channel;
    return request;
}

// Returns how many connections a process of this user gets when it
// asks for one after the other, up to 100.
int connections_of(uid_t user)
{
    return in_child([user] {
        if (setuid(user)) return 126;
        std::vector<RawClient> clients;
        const board::Head refusal{.kind = board::Kind::refusal, .detail = 0};
        for (int count = 0; count < 100; ++count) {
            RawClient &client = clients.emplace_back("seq");
            const board::RequestFrame request = request_to(test_module);
            if (!client.send(&request, request.size())) return count;
            const std::string answer = client.next_packet();
            if (answer.size() == sizeof refusal) return count;
        }
        return 100;
    });
}

TEST(Service, leaves_room_for_others_whoever_takes_all_connections_of_a_user)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can be several users";
    ASSERT_EQ(chmod(board_ipc_directory(), 0755), 0);
    board_service *service = start(test_module, board_ipc_directory(), 0666);
    ASSERT_NE(service, nullptr);
    const std::string log = log_of([] {
        EXPECT_EQ(connections_of(somebody), 64);
        EXPECT_EQ(connections_of(0), 100);
    });
    EXPECT_NE(log.find("refused a connection"), std::string::npos) << log;
    board_service_stop(service);
}

TEST(Service, leaves_room_for_those_who_run_it_whoever_takes_all_other_connections)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can be several users";
    ASSERT_EQ(chmod(board_ipc_directory(), 0755), 0);
    board_service *service = start(test_module, board_ipc_directory(), 0666);
    ASSERT_NE(service, nullptr);
    std::vector<RawClient> clients;
    const std::string log = log_of([&] {
        for (uid_t user = somebody - 4; user <= somebody; ++user)
            as_user(user, [&] {
                for (int count = 0; count < 70; ++count)
                    clients.emplace_back("seq");
            });
        uint32_t status;
        EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    });
    EXPECT_NE(log.find("refused a connection"), std::string::npos) << log;
    board_service_stop(service);
}

// Returns whether the kernel says in which groups a peer is. Emulators of other processors do not pass that on.
bool kernel_knows_groups()
{
    return in_child([] {
               const gid_t groups[] = {4242, 4243};
               gid_t said[8];
               socklen_t length = sizeof said;
               int ends[2];
               if (setgroups(2, groups) || socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends)) return 1;
               return getsockopt(ends[0], SOL_SOCKET, SO_PEERGROUPS, said, &length) == 0 && length == sizeof groups ? 0
                                                                                                                    : 1;
           }) == 0;
}

TEST(Service, knows_the_groups_of_a_connections_peer_and_not_those_of_a_datagrams_sender)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can be in any group";
    if (!kernel_knows_groups()) GTEST_SKIP() << "the kernel, or an emulator of it, does not say the groups of peers";
    ASSERT_EQ(chmod(board_ipc_directory(), 0755), 0);
    std::atomic<int> known{-2}; // how many groups of the last request's peer; -1: not known
    std::atomic<bool> right{false};
    TestService service([&](const board_request &request, board_answer &) {
        known = request.groups ? static_cast<int>(request.group_count) : -1;
        right = request.group_count == 2 && request.groups[0] == 4242 && request.groups[1] == 4243;
    });
    const auto ask = [](const std::vector<gid_t> &groups, bool datagram) {
        return in_child([&] {
            if (setgroups(groups.size(), groups.data())) return 126;
            uint32_t status;
            return (datagram ? ipc_dgram_set_exec(test_module, test_channel, "", 1, &status)
                             : ipc_set_exec(test_module, test_channel, "", 1, &status)) == IPC_OK
                       ? 0
                       : 1;
        });
    };
    EXPECT_EQ(ask({4242, 4243}, false), 0);
    EXPECT_TRUE(right) << known;
    EXPECT_EQ(ask({}, false), 0);
    EXPECT_EQ(known, 0);
    EXPECT_EQ(ask(std::vector<gid_t>(100, 7), false), 0);
    EXPECT_EQ(known, 100);
    EXPECT_EQ(ask({4242, 4243}, true), 0);
    EXPECT_EQ(known, -1);
}

TEST(Service, stops_when_there_is_none)
{
    board_service_stop(nullptr);
}

} // namespace
