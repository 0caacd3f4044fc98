#include "support.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
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
        iovec part{&request, sizeof request};
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))];
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        if (recvmsg(socket, &message, MSG_CMSG_CLOEXEC) <= 0) return;
        const board::Descriptor way_back = board::passed_descriptor(message);
        for (const Packet &packet : answers(request))
            board::send_packet(datagrams ? way_back.get() : socket, packet.bytes.data(), packet.bytes.size(),
                               packet.descriptor);
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

int in_child(const std::function<int()> &body)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) _exit(body());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

size_t open_descriptors()
{
    size_t count = 0;
    for ([[maybe_unused]] const auto &entry : fs::directory_iterator("/proc/self/fd"))
        ++count;
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
