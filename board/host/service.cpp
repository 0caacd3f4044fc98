// This file has the threads of the server half: one that accepts connections, one for each connection, and one for the
// datagrams.
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstring>
#include <list>
#include <map>
#include <memory>
#include <mutex>

#include <poll.h>
#include <pthread.h>

#include "answering.h"
#include "board/service.h"
#include "board/util.h"
#include "endpoint.h"
#include "packet.h"
#include "settings.h"

namespace
{

using namespace board;

constexpr size_t max_connections = 256;
constexpr size_t stack_size = size_t{1} << 20;

struct Connection {
    board_service *service;
    Descriptor socket;
    ucred peer;
    pthread_t thread{};
};

// Waits as long as the answer on a connection is to be delayed. Returns false when there is nobody left to send it to,
// because the peer hung up, or because the service is about to stop and hung up itself.
bool wait_until_due(int socket, const board_answer &answer)
{
    pollfd hang_up{socket, 0, 0};
    const auto delay = static_cast<int>(answer.sending.delay.count());
    return delay == 0 || poll(&hang_up, 1, delay) == 0;
}

// A DatagramAnswer is an answer to a datagram, with the socket that it is sent to.
struct DatagramAnswer {
    board_answer answer{true};
    Descriptor way_back;
    ucred peer{0, static_cast<uid_t>(-1), static_cast<gid_t>(-1)};
};

// LateAnswers are answers to datagrams that are sent later. The one thread that serves datagrams keeps them and
// continues.
class LateAnswers
{
public:
    using Clock = std::chrono::steady_clock;

    bool full() const { return answers.size() >= BOARD_DELAYED_MAX; }
    void keep(std::unique_ptr<DatagramAnswer> answer)
    {
        answers.emplace(Clock::now() + answer->answer.sending.delay, std::move(answer));
    }

    // Returns the next answer that is due, or null when none is due.
    std::unique_ptr<DatagramAnswer> take_due()
    {
        if (answers.empty() || answers.begin()->first > Clock::now()) return nullptr;
        return std::move(answers.extract(answers.begin()).mapped());
    }

    // Waits until a packet comes, or the next answer is due. Returns false when there is no packet.
    bool wait_for_packet(int socket) const
    {
        if (answers.empty()) return true; // receiving a packet waits for it anyway
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(answers.begin()->first - Clock::now()).count();
        pollfd ready{socket, POLLIN, 0};
        return poll(&ready, 1, left > 0 ? static_cast<int>(left) : 0) > 0;
    }

private:
    std::multimap<Clock::time_point, std::unique_ptr<DatagramAnswer>> answers; // by the time when they are due
};

// Starts a thread that takes no signals, because signals belong to the program and not to the library.
bool start_thread(pthread_t &thread, void *(*body)(void *), void *argument)
{
    sigset_t all, before;
    sigfillset(&all);
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes)) return false;
    pthread_attr_setstacksize(&attributes, stack_size);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const int error = pthread_create(&thread, &attributes, body, argument);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    pthread_attr_destroy(&attributes);
    if (error) userlog_err(__func__, __LINE__, "no thread: %s", std::strerror(error));
    return !error;
}

} // namespace

struct board_service {
    explicit board_service(const board_service_config &service_config) : config(service_config), answering(config) {}

    bool start(const std::string &directory);
    ~board_service();

private:
    using Connections = std::list<Connection>;

    static void *accept_loop(void *service);
    static void *datagram_loop(void *service);
    static void *connection_loop(void *connection);

    void accept_connections();
    void admit(Descriptor socket);
    void serve(Connection &connection);
    void serve_datagrams();
    void send(DatagramAnswer &answer);
    void leave(Connection &connection);

    const board_service_config config;
    Answering answering;
    std::unique_ptr<Endpoint> endpoint;
    std::atomic<bool> stopping{false};
    pthread_t acceptor{}, datagrams{};
    bool accepting = false, receiving = false; // true while the two threads above run

    std::mutex mutex; // guards the members below
    std::condition_variable changed;
    Connections connections;
    Connections left; // their threads are at their end
};

bool board_service::start(const std::string &directory)
{
    if (!answering.is_ready()) return false;
    endpoint = Endpoint::open(directory, config.module, config.socket_mode ? config.socket_mode : 0660);
    if (!endpoint) return false;
    receiving = start_thread(datagrams, datagram_loop, this);
    accepting = receiving && start_thread(acceptor, accept_loop, this);
    return accepting;
}

board_service::~board_service()
{
    {
        // The flag is set under the lock, so that no thread misses it between looking and waiting.
        const std::lock_guard lock(mutex);
        stopping = true;
        changed.notify_all();
    }
    if (endpoint) {
        shutdown(endpoint->connections(), SHUT_RDWR);
        shutdown(endpoint->datagrams(), SHUT_RDWR);
    }
    if (accepting) pthread_join(acceptor, nullptr);
    if (receiving) pthread_join(datagrams, nullptr);

    std::unique_lock lock(mutex);
    for (Connection &connection : connections)
        shutdown(connection.socket.get(), SHUT_RDWR);
    changed.wait(lock, [this] { return connections.empty(); });
    for (Connection &connection : left)
        pthread_join(connection.thread, nullptr);
}

void *board_service::accept_loop(void *service)
{
    static_cast<board_service *>(service)->accept_connections();
    return nullptr;
}

void *board_service::datagram_loop(void *service)
{
    static_cast<board_service *>(service)->serve_datagrams();
    return nullptr;
}

void *board_service::connection_loop(void *connection)
{
    Connection &own = *static_cast<Connection *>(connection);
    own.service->serve(own);
    own.service->leave(own);
    return nullptr;
}

void board_service::accept_connections()
{
    while (!stopping) {
        Descriptor socket(accept4(endpoint->connections(), nullptr, nullptr, SOCK_CLOEXEC));
        if (socket) {
            admit(std::move(socket));
        } else if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
            // The connection stays in the queue. Other connections get time to end.
            userlog_err(__func__, __LINE__, "cannot accept a connection: %s", std::strerror(errno));
            std::unique_lock lock(mutex);
            changed.wait_for(lock, std::chrono::seconds(1), [this] { return stopping.load(); });
        }
    }
}

void board_service::admit(Descriptor socket)
{
    ucred peer{};
    socklen_t length = sizeof peer;
    getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &peer, &length);

    const std::lock_guard lock(mutex);
    if (connections.size() < max_connections) {
        Connection &connection = connections.emplace_back(this, std::move(socket), peer);
        if (start_thread(connection.thread, connection_loop, &connection)) return;
        socket = std::move(connection.socket);
        connections.pop_back();
    }
    answering.complaints.log(peer, "refused a connection", text_of(Refusal::busy));
    const Head refusal = refusal_of(Refusal::busy);
    send_packet(socket.get(), &refusal, sizeof refusal, -1);
}

void board_service::serve(Connection &connection)
{
    const int socket = connection.socket.get();
    RequestFrame request;
    board_answer answer(false);
    for (;;) {
        const ssize_t received = recv(socket, &request, sizeof request, MSG_TRUNC);
        if (received < 0 && errno == EINTR) continue;
        if (received <= 0) return;
        Head refusal;
        if (!answering.handle(request, static_cast<size_t>(received), false, connection.peer, answer, refusal)) {
            send_packet(socket, &refusal, sizeof refusal, -1);
            return;
        }
        if (!wait_until_due(socket, answer)) return;
        if (!answering.send(socket, answer)) {
            answering.complaints.log(connection.peer, "gave up a connection", std::strerror(errno));
            return;
        }
    }
}

// This is the last thing that a connection's thread does. The thread cannot wait for its own end, so the next thread
// that leaves waits for it, or else the service does.
void board_service::leave(Connection &connection)
{
    Connections before;
    {
        const std::lock_guard lock(mutex);
        connection.socket.close();
        before.swap(left);
        const auto own = std::find_if(connections.begin(), connections.end(),
                                      [&](const Connection &other) { return &other == &connection; });
        left.splice(left.end(), connections, own);
        changed.notify_all();
    }
    for (Connection &other : before)
        pthread_join(other.thread, nullptr);
}

void board_service::serve_datagrams()
{
    const int socket = endpoint->datagrams();
    RequestFrame request;
    LateAnswers late;
    while (!stopping) {
        while (const auto due = late.take_due())
            send(*due);
        if (!late.wait_for_packet(socket)) continue;
        iovec part{&request, sizeof request};
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(ucred)) + CMSG_SPACE(sizeof(int))];
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        const ssize_t received = recvmsg(socket, &message, MSG_TRUNC | MSG_CMSG_CLOEXEC);
        if (received < 0 || stopping) continue;

        auto answer = std::make_unique<DatagramAnswer>();
        ucred &peer = answer->peer;
        for (cmsghdr *at = CMSG_FIRSTHDR(&message); at; at = CMSG_NXTHDR(&message, at))
            if (at->cmsg_level == SOL_SOCKET && at->cmsg_type == SCM_CREDENTIALS)
                std::memcpy(&peer, CMSG_DATA(at), sizeof peer);
        answer->way_back = passed_descriptor(message);
        if (!answer->way_back) {
            answering.complaints.log(peer, "refused a packet", "no socket for the answer came with it");
            continue;
        }
        Head refusal;
        if (!answering.handle(request, static_cast<size_t>(received), true, peer, answer->answer, refusal)) {
            send_packet(answer->way_back.get(), &refusal, sizeof refusal, -1);
        } else if (answer->answer.sending.delay.count() == 0) {
            send(*answer);
        } else if (late.full()) {
            answering.complaints.log(peer, "an answer is not late", "too many others are");
            send(*answer);
        } else {
            late.keep(std::move(answer));
        }
    }
}

void board_service::send(DatagramAnswer &answer)
{
    if (!answering.send(answer.way_back.get(), answer.answer))
        answering.complaints.log(answer.peer, "could not deliver an answer", std::strerror(errno));
}

board_service *board_service_start(const board_service_config *config)
{
    try {
        auto service = std::make_unique<board_service>(*config);
        if (service->start(config->directory ? config->directory : current_directory())) return service.release();
    } catch (const std::exception &thrown) {
        userlog_err(__func__, __LINE__, "the service does not start: %s", thrown.what());
    }
    return nullptr;
}

void board_service_stop(board_service *service)
{
    delete service;
}
