#include "support.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "packet.h"

namespace fs = std::filesystem;

namespace
{

// The test program's environment is made before any other object.
std::string &test_directory()
{
    static std::string name;
    return name;
}

pid_t owner;

// No test waits longer than this, whatever goes wrong.
constexpr std::chrono::seconds patience{30};

sockaddr_un address_of(const char *kind)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socket_path(kind).copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

void set_patience(const board::Descriptor &socket)
{
    const timeval limit{patience.count(), 0};
    setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
}

board::Descriptor new_socket(const char *kind)
{
    const int type = std::strcmp(kind, "dgram") ? SOCK_SEQPACKET : SOCK_DGRAM;
    board::Descriptor created(socket(AF_UNIX, type | SOCK_CLOEXEC, 0));
    set_patience(created);
    return created;
}

} // namespace

TestEnvironment::TestEnvironment(std::initializer_list<Variable> variables)
{
    char name[] = "/tmp/board-test-XXXXXX";
    if (!mkdtemp(name)) std::abort();
    test_directory() = name;
    owner = getpid();
    setenv("BOARD_IPC_DIR", name, 1);
    for (const Variable &variable : variables)
        setenv(variable.name, variable.value, 1);
}

TestEnvironment::~TestEnvironment()
{
    if (getpid() != owner) return;
    std::error_code ignored;
    fs::remove_all(test_directory(), ignored);
}

TestService::TestService(Handler handle, Authorize allow, const char *record)
    : handler(std::move(handle)), authorize(std::move(allow))
{
    if (record && !(recorder = board_recorder_open(record))) return;
    board_service_config config{};
    config.module = test_module;
    config.context = this;
    config.handler = [](void *context, const board_request *request, board_answer *answer) {
        auto &self = *static_cast<TestService *>(context);
        self.handler(*request, *answer);
        if (self.recorder) board_recorder_write(self.recorder, recorded_time, test_module, request, answer);
    };
    if (authorize)
        config.authorize = [](void *context, const board_request *request) {
            auto &self = *static_cast<TestService *>(context);
            const char *refusal = self.authorize(*request);
            if (refusal && self.recorder)
                board_recorder_write(self.recorder, recorded_time, test_module, request, nullptr);
            return refusal;
        };
    service = board_service_start(&config);
}

void TestService::stop()
{
    board_service_stop(service);
    service = nullptr;
    board_recorder_close(recorder);
    recorder = nullptr;
}

Handler echo(uint32_t status)
{
    return [status](const board_request &request, board_answer &answer) {
        board_answer_status(&answer, status);
        board_answer_data(&answer, request.data, request.length);
    };
}

std::string socket_path(const char *kind)
{
    return test_directory() + "/" + std::to_string(test_module) + "." + kind;
}

RawClient::RawClient(const char *kind) : socket(new_socket(kind))
{
    const sockaddr_un service = address_of(kind);
    if (connect(socket.get(), reinterpret_cast<const sockaddr *>(&service), sizeof service)) socket.close();
    if (std::strcmp(kind, "dgram")) return;
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends)) std::abort();
    answers = board::Descriptor(ends[0]);
    answers_of_service = board::Descriptor(ends[1]);
    set_patience(answers);
}

bool RawClient::send(const void *packet, size_t size, bool wait)
{
    for (;;) {
        if (board::send_packet(socket.get(), packet, size, answers_of_service.get()) >= 0) return true;
        if (!wait || errno != EAGAIN) return false;
        pollfd writable{socket.get(), POLLOUT, 0};
        poll(&writable, 1, 1000);
    }
}

std::string RawClient::next_packet()
{
    const int source = answers ? answers.get() : socket.get();
    std::string packet(sizeof(board::AnswerFrame), '\0');
    ssize_t got = recv(source, packet.data(), packet.size(), 0);
    // A reset means that the service left something unread. What the service itself sent can be read after it.
    if (got < 0 && errno == ECONNRESET) got = recv(source, packet.data(), packet.size(), 0);
    packet.resize(got < 0 ? 0 : static_cast<size_t>(got));
    return packet;
}

RawService::RawService(const char *kind, Answers answer, bool then_hang_up)
    : answers(std::move(answer)),
      hang_up(then_hang_up),
      datagrams(!std::strcmp(kind, "dgram")),
      listener(new_socket(kind))
{
    const sockaddr_un address = address_of(kind);
    unlink(address.sun_path);
    if (bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address)) std::abort();
    if (!datagrams) listen(listener.get(), 8);
    thread = std::thread([this] {
        if (datagrams) return serve(listener.get());
        for (;;) {
            const board::Descriptor connection(accept(listener.get(), nullptr, nullptr));
            if (!connection) return;
            serve(connection.get());
        }
    });
}

RawService::~RawService()
{
    shutdown(listener.get(), SHUT_RDWR);
    thread.join();
}

void RawService::serve(int socket)
{
    board::RequestFrame request;
    do {
        // The listener hangs up when the service must end.
        pollfd ready[] = {{socket, POLLIN, 0}, {listener.get(), 0, 0}};
        if (poll(ready, 2, -1) < 0 || ready[1].revents) return;
        std::vector<board::Descriptor> passed;
        if (board::receive_packet(socket, &request, sizeof request, 0, passed) <= 0) return;
        const board::Descriptor way_back = board::take_first(std::move(passed));
        for (const Packet &packet : answers(request)) {
            board::send_packet(datagrams ? way_back.get() : socket, packet.bytes.data(), packet.bytes.size(),
                               packet.descriptor);
            if (packet.given_away) close(packet.descriptor);
        }
    } while (!hang_up);
}

board::AnswerFrame answer_to(const board::RequestFrame &request)
{
    board::AnswerFrame answer{};
    answer.header.head = {.kind = board::Kind::answer, .detail = request.header.head.detail};
    answer.header.module = request.header.module;
    answer.header.msg_type = request.header.msg_type;
    answer.header.sequence = request.header.sequence;
    answer.header.length = request.header.length;
    std::memcpy(answer.data, request.data, request.header.length);
    return answer;
}

std::string bytes_of(const board::AnswerFrame &frame)
{
    return {reinterpret_cast<const char *>(&frame), frame.size()};
}

board::Descriptor lingering_connection(board::Descriptor &other_end)
{
    const board::Descriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *const at = reinterpret_cast<sockaddr *>(&address);
    board::Descriptor connection(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (bind(listener.get(), at, sizeof address) || listen(listener.get(), 1) ||
        getsockname(listener.get(), at, &length) || connect(connection.get(), at, sizeof address))
        std::abort();
    other_end = board::Descriptor(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
    const std::string data(65536, 'x');
    while (send(connection.get(), data.data(), data.size(), MSG_DONTWAIT) > 0)
        continue;
    const linger hour{1, 3600};
    setsockopt(connection.get(), SOL_SOCKET, SO_LINGER, &hour, sizeof hour);
    return connection;
}

bool send_with(const board::Descriptor &socket, const void *packet, size_t size,
               const std::vector<board::Descriptor> &passed)
{
    std::vector<int> descriptors;
    for (const board::Descriptor &each : passed)
        descriptors.push_back(each.get());
    const size_t bytes = descriptors.size() * sizeof(int);
    std::vector<cmsghdr> control(CMSG_SPACE(bytes) / sizeof(cmsghdr) + 1);
    iovec part{const_cast<void *>(packet), size};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = CMSG_SPACE(bytes);
    cmsghdr *const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(bytes);
    std::memcpy(CMSG_DATA(header), descriptors.data(), bytes);
    return sendmsg(socket.get(), &message, MSG_DONTWAIT | MSG_NOSIGNAL) == static_cast<ssize_t>(size);
}

// The C library's functions would change the user of all threads.
void as_user(uid_t user, const std::function<void()> &body)
{
    if (syscall(SYS_setresuid, -1, user, -1)) std::abort();
    body();
    if (syscall(SYS_setresuid, -1, 0, -1)) std::abort();
}

int in_child(const std::function<int()> &body)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) _exit(body());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// The library closes some descriptors a moment later, so the number counts when it has been the same for a while.
size_t open_descriptors()
{
    size_t count = 0;
    for (int same = 0; same < 4; ++same) {
        if (same) usleep(20000);
        size_t now = 0;
        for ([[maybe_unused]] const auto &entry : fs::directory_iterator("/proc/self/fd"))
            ++now;
        if (std::exchange(count, now) != now) same = 0;
    }
    return count;
}

size_t shared_mappings()
{
    std::ifstream maps("/proc/self/maps");
    size_t count = 0;
    for (std::string line; std::getline(maps, line);)
        count += line.find("board-result") != std::string::npos;
    return count;
}

std::string log_of(const std::function<void()> &body)
{
    char name[] = "/tmp/board-log-XXXXXX";
    const int file = mkstemp(name);
    unlink(name);
    const int standard_error = dup(STDERR_FILENO);
    dup2(file, STDERR_FILENO);
    body();
    dup2(standard_error, STDERR_FILENO);
    close(standard_error);
    std::string text(static_cast<size_t>(lseek(file, 0, SEEK_END)), '\0');
    const ssize_t got = pread(file, text.data(), text.size(), 0);
    close(file);
    text.resize(got < 0 ? 0 : static_cast<size_t>(got));
    return text;
}

bool eventually(const std::function<bool()> &condition)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::yield();
    }
    return true;
}
