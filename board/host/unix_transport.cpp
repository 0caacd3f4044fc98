// This is the transport over Unix sockets. Each thread has one connection for the set and get calls and one datagram
// socket for the other calls, and keeps both from call to call.
//
// A datagram carries the socket to which its answer is written. So the answers to each client have buffers of their
// own, and a client that does not read its answers does not delay the others.
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <new>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/socket.h>

#include "board/util.h"
#include "closer.h"
#include "descriptor.h"
#include "packet.h"
#include "settings.h"
#include "shared_memory.h"
#include "transport.h"

namespace board
{
namespace
{

// This clock measures the time at which an exchange must end. The coarse clock's error of a few milliseconds does not
// matter here, and reading it costs a fraction of what the fine clock costs.
struct Clock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<Clock>;
    static constexpr bool is_steady = true;

    static time_point now()
    {
        timespec time;
        clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
        return time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
    }
};

// Kept sockets must be renewed after a fork, because they then belong to the parent, and after a change of the folder.
// This number counts both.
std::atomic<uint32_t> renewals{0};

void watch_forks()
{
    static const int registered = pthread_atfork(nullptr, nullptr, renew_transports);
    static_cast<void>(registered);
}

// Waits until the socket is ready for `events`. Returns false when the time is over.
bool wait_for(int socket, short events, Clock::time_point deadline)
{
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return false;
        pollfd ready{socket, events, 0};
        if (poll(&ready, 1, static_cast<int>(left)) > 0) return true;
    }
}

int32_t value_of_connect_error(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
        return IPC_ERR_ACCESS;
    case EAGAIN:
        return IPC_ERR_TIMEOUT;
    case EMFILE:
    case ENFILE:
    case ENOBUFS:
    case ENOMEM:
        return IPC_ERR_SYSTEM;
    default:
        return IPC_ERR_NO_SERVICE;
    }
}

int32_t value_of_refusal(Refusal reason)
{
    return reason == Refusal::busy ? IPC_ERR_SERVICE : IPC_ERR_INCOMPATIBLE;
}

// A Packet holds a request, and then its answer in the same memory. An exchange that touches fewer cache lines is
// faster.
union Packet {
    Packet() {}

    RequestFrame request;
    AnswerFrame answer;
};

// A Line is a socket to one module, with the memory in which results arrive over it.
class Line
{
public:
    explicit Line(bool for_datagrams) : datagrams(for_datagrams) {}
    ~Line() { drop(); }
    Line(const Line &) = delete;
    Line &operator=(const Line &) = delete;

    int32_t exchange(Packet &packet);
    bool copy_result(const Result &result, char *to) const { return view && view.copy(result, to); }
    void drop();

private:
    int source() const { return datagrams ? near_end.get() : socket.get(); }
    int32_t open(uint32_t to_module);
    int send(const RequestFrame &request);
    int32_t receive(const RequestHeader &request, AnswerFrame &answer);
    int32_t receive_memory(const Result &result);
    // Receives a packet and the descriptors that came with it. Returns the packet's length, or 0 when the peer is gone,
    // or -1 with an error number when there is no packet.
    ssize_t await_packet(void *packet, size_t size, std::vector<Descriptor> &passed);

    const bool datagrams;
    uint32_t module = 0;
    Descriptor socket;
    Descriptor near_end, far_end; // of datagrams: the two ends of the socket for answers
    ResultView view;
    Clock::time_point deadline;
    std::chrono::milliseconds timeout{}; // the time-out that the sockets have
    pid_t process = 0;                   // the one that opened them
    bool waited = false; // a part of the time is spent, so that the socket's own time-out would be too late
};

// In a child process the sockets are the parent's, who goes on with them.
void Line::drop()
{
    if (process == getpid()) {
        hang_up(std::move(socket));
        hang_up(std::move(near_end));
    }
    socket.close();
    near_end.close();
    far_end.close();
    view = ResultView();
}

// Makes the socket give up after a time: its waits for answers, or for the service to accept it.
bool set_timeout(int socket, int option, std::chrono::microseconds limit)
{
    const timeval timeout{static_cast<time_t>(limit.count() / 1000000),
                          static_cast<suseconds_t>(limit.count() % 1000000)};
    return setsockopt(socket, SOL_SOCKET, option, &timeout, sizeof timeout) == 0;
}

// Connects the socket. Returns 0 or an error number. A signal interrupts the wait for a service whose queue is full.
int connect_to(int socket, const sockaddr_un &address, Clock::time_point deadline)
{
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::microseconds>(deadline - Clock::now());
        if (left.count() <= 0) return EAGAIN;
        if (!set_timeout(socket, SO_SNDTIMEO, left)) return errno;
        if (!connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address)) return 0;
        if (errno != EINTR) return errno;
    }
}

int32_t Line::open(uint32_t to_module)
{
    drop();
    const std::string &directory = current_directory();
    sockaddr_un address;
    if (!socket_address(directory, to_module, datagrams ? "dgram" : "seq", address)) {
        userlog_err(__func__, __LINE__, "the folder of sockets has too long a name: %s", directory.c_str());
        return IPC_ERR_NO_SERVICE;
    }
    if (!directory_is_safe(directory)) {
        userlog_err(__func__, __LINE__, "%s is another user's; not used", directory.c_str());
        return IPC_ERR_ACCESS;
    }
    Descriptor opened(::socket(AF_UNIX, (datagrams ? SOCK_DGRAM : SOCK_SEQPACKET) | SOCK_CLOEXEC, 0));
    if (!opened) return IPC_ERR_SYSTEM;

    if (datagrams) {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends)) return IPC_ERR_SYSTEM;
        near_end = Descriptor(ends[0]);
        far_end = Descriptor(ends[1]);
    }
    if (!set_timeout(datagrams ? near_end.get() : opened.get(), SO_RCVTIMEO, current_timeout())) return IPC_ERR_SYSTEM;
    if (const int error = connect_to(opened.get(), address, deadline)) {
        userlog_debug(__func__, __LINE__, "no connection to %s: %s", address.sun_path, std::strerror(error));
        return value_of_connect_error(error);
    }
    socket = std::move(opened);
    timeout = current_timeout();
    process = getpid();
    module = to_module;
    waited = true;
    return IPC_OK;
}

// Returns 0 or an error number. A request is sent as a whole or not at all.
int Line::send(const RequestFrame &request)
{
    while (send_packet(socket.get(), &request, request.size(), far_end.get()) < 0) {
        if (errno == EINTR) continue;
        if (errno != EAGAIN) return errno;
        waited = true;
        if (!wait_for(socket.get(), POLLOUT, deadline)) return ETIMEDOUT;
    }
    return 0;
}

ssize_t Line::await_packet(void *packet, size_t size, std::vector<Descriptor> &passed)
{
    ssize_t received = -1;
    const auto receive = [&](int flags) { return receive_packet(source(), packet, size, flags, passed); };
    // Returns false when another attempt may bring a packet.
    const auto attempt = [&](int flags) {
        received = receive(flags);
        if (received < 0 && errno == ECONNRESET) {
            // The peer hung up without reading everything that was sent to it. What it sent before can still be
            // received.
            received = receive(flags | MSG_DONTWAIT);
        }
        return received >= 0 || (errno != EAGAIN && errno != EINTR);
    };

    if (!waited) {
        if (const auto spin = settings().spin; spin.count()) {
            const auto end = std::chrono::steady_clock::now() + spin;
            do {
                if (attempt(MSG_DONTWAIT)) return received;
            } while (std::chrono::steady_clock::now() < end);
        }
        if (attempt(0)) return received;
        waited = true;
        if (errno == EAGAIN) {
            errno = ETIMEDOUT;
            return -1;
        }
    }
    while (!attempt(MSG_DONTWAIT)) {
        if (!wait_for(source(), POLLIN, deadline)) {
            errno = ETIMEDOUT;
            return -1;
        }
    }
    return received;
}

int32_t value_of_receive_error(ssize_t received)
{
    return received < 0 && errno == ETIMEDOUT ? IPC_ERR_TIMEOUT : IPC_ERR_PEER_LOST;
}

// Receives the packet behind an answer whose result lies in memory that is new to this side.
int32_t Line::receive_memory(const Result &result)
{
    Head head;
    std::vector<Descriptor> passed;
    const ssize_t received = await_packet(&head, sizeof head, passed);
    Descriptor memory = take_first(std::move(passed));
    const bool is_memory = received == sizeof head && check_head(head, sizeof head) == Refusal::none &&
                           head.kind == Kind::memory && memory && view.adopt(memory, result);
    if (is_memory) return IPC_OK;
    close_passed(std::move(memory));
    return received <= 0 ? value_of_receive_error(received) : IPC_ERR_BROKEN_ANSWER;
}

// Accepts an answer only when everything in it is correct.
int32_t Line::receive(const RequestHeader &request, AnswerFrame &answer)
{
    std::vector<Descriptor> passed; // an answer brings none
    const ssize_t received = await_packet(&answer, sizeof answer, passed);
    close_passed(std::move(passed));
    if (received <= 0) return value_of_receive_error(received);
    const AnswerHeader &header = answer.header;
    switch (check_head(header.head, static_cast<size_t>(received))) {
    case Refusal::none:
        break;
    case Refusal::not_a_frame:
        return IPC_ERR_BROKEN_ANSWER;
    default:
        return IPC_ERR_INCOMPATIBLE;
    }
    if (header.head.kind == Kind::refusal) return value_of_refusal(static_cast<Refusal>(header.head.detail));
    if (!answers(answer, static_cast<size_t>(received), request)) return IPC_ERR_BROKEN_ANSWER;
    if (header.result.state > Result::file) return IPC_ERR_BROKEN_ANSWER;
    if (!header.result.in_memory()) return IPC_OK;

    if (header.result.new_memory) {
        if (const int32_t value = receive_memory(header.result)) return value;
    }
    return view.holds(header.result) ? IPC_OK : IPC_ERR_BROKEN_ANSWER;
}

int32_t Line::exchange(Packet &packet)
{
    deadline = Clock::now() + current_timeout();
    waited = false;
    if (socket && timeout != current_timeout()) {
        timeout = current_timeout();
        if (!set_timeout(source(), SO_RCVTIMEO, timeout)) return IPC_ERR_SYSTEM;
    }

    // A kept connection may have lost its peer since the last call. A request that the socket does not take is surely
    // not delivered.
    const RequestHeader request = packet.request.header;
    int error = ENOTCONN;
    if (socket && module == request.module) error = send(packet.request);
    if (error == EPIPE || error == ECONNRESET || error == ECONNREFUSED || error == ENOTCONN) {
        if (const int32_t value = open(request.module)) return value;
        error = send(packet.request);
    }

    int32_t value;
    if (error == 0 || error == EPIPE || error == ECONNRESET) {
        // A service that refuses a connection sends the reason before it hangs up.
        value = receive(request, packet.answer);
    } else if (error == ETIMEDOUT) {
        value = IPC_ERR_TIMEOUT;
    } else {
        value = error == ECONNREFUSED ? IPC_ERR_NO_SERVICE : IPC_ERR_SYSTEM;
    }
    // The line is dropped, so that a late answer cannot be taken for the answer to the next request.
    if (value) drop();
    return value;
}

class UnixTransport : public Transport
{
public:
    int32_t exchange(const Call &call, Reply &reply) override
    {
        if (const uint32_t now = renewals.load(std::memory_order_acquire); now != renewals_seen) {
            drop();
            renewals_seen = now;
        }
        RequestFrame &request = packet.request;
        request.header = {.head = {.kind = Kind::request, .detail = static_cast<uint8_t>(call.call)},
                          .module = call.module,
                          .msg_type = call.msg_type,
                          .sequence = ++sequence,
                          .length = call.length,
                          .allowed = call.allowed};
        if (call.length) std::memcpy(request.data, call.request, call.length);

        last = is_datagram(call.call) ? &datagrams : &connection;
        if (const int32_t value = last->exchange(packet)) return value;
        const AnswerFrame &answer = packet.answer;
        if (answer.header.ipc_result) return answer.header.ipc_result;
        reply = {answer.header.status, answer.data, answer.header.length, answer.header.result};
        return IPC_OK;
    }

    bool copy_result(const Result &result, char *to) override { return last->copy_result(result, to); }

    void drop() override
    {
        connection.drop();
        datagrams.drop();
    }

private:
    Line connection{false};
    Line datagrams{true};
    Line *last = &connection;
    uint64_t sequence = 0;
    uint32_t renewals_seen = renewals.load();
    Packet packet;
};

} // namespace

void renew_transports()
{
    renewals.fetch_add(1, std::memory_order_release);
}

std::unique_ptr<Transport> make_unix_transport()
{
    watch_forks();
    return std::make_unique<UnixTransport>();
}

} // namespace board
