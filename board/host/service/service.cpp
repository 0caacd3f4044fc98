// This file has the threads of the server half: one that accepts connections, one for each connection, and those that
// serve datagrams.
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
#include <optional>
#include <vector>

#include <poll.h>
#include <pthread.h>

#include "answering.h"
#include "board/service.h"
#include "board/util.h"
#include "closer.h"
#include "endpoint.h"
#include "packet.h"
#include "settings.h"

namespace
{

using namespace board;

constexpr size_t max_connections = 256;
constexpr size_t connections_of_others = 240;            // of users other than the service's own and root
constexpr size_t connections_of_one = 64;                // of one of these users
constexpr uint32_t usual_idle_limit = 600;               // s
constexpr std::chrono::seconds pause_without_threads{1}; // or without descriptors or memory
constexpr unsigned most_datagrams_at_once = 4;           // of a service that is concurrent
constexpr size_t stack_size = size_t{1} << 20;
constexpr auto never = std::chrono::steady_clock::time_point::max();

struct Connection {
    board_service *service;
    Descriptor socket;
    Peer peer;
    pthread_t thread{};
    // Odd while a request is handled. The connection's thread counts, and the listener looks.
    std::atomic<uint32_t> steps{0};
    // The listener's thread alone uses these.
    uint32_t steps_seen = 0;
    std::chrono::steady_clock::time_point idle_since{};
};

// Only one thread counts.
void count_step(std::atomic<uint32_t> &steps)
{
    steps.store(steps.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

// Returns the groups of a connection's peer beside its own, or none where the kernel does not say.
std::optional<std::vector<gid_t>> groups_of(int socket)
{
    std::vector<gid_t> groups(32);
    for (;;) {
        auto length = static_cast<socklen_t>(groups.size() * sizeof(gid_t));
        const int failed = getsockopt(socket, SOL_SOCKET, SO_PEERGROUPS, groups.data(), &length);
        if (failed && (errno != ERANGE || length <= groups.size() * sizeof(gid_t))) return std::nullopt;
        groups.resize(length / sizeof(gid_t));
        if (!failed) return groups;
    }
}

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
    ~DatagramAnswer() { close_passed(std::move(way_back)); }

    board_answer answer{true};
    Descriptor way_back;
    Peer peer{{0, static_cast<uid_t>(-1), static_cast<gid_t>(-1)}};
};

// LateAnswers are answers to datagrams that are sent later. The thread that served the datagrams keeps them and
// continues.
class LateAnswers
{
public:
    using Clock = std::chrono::steady_clock;

    explicit LateAnswers(size_t most_answers) : most(most_answers) {}

    bool full() const { return answers.size() >= most; }
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

    // Returns when the next answer is due: never when none is kept.
    Clock::time_point next_due() const { return answers.empty() ? never : answers.begin()->first; }

private:
    const size_t most;
    std::multimap<Clock::time_point, std::unique_ptr<DatagramAnswer>> answers; // by the time when they are due
};

// Returns for how many milliseconds poll() is to wait until this time.
int wait_until(std::chrono::steady_clock::time_point time)
{
    if (time == never) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - std::chrono::steady_clock::now()).count();
    return static_cast<int>(std::max<int64_t>(left, 0));
}

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
    using Clock = LateAnswers::Clock;

    static void *listen_loop(void *service);
    static void *datagram_loop(void *service);
    static void *connection_loop(void *connection);

    void listen();
    unsigned datagrams_at_once() const { return config.concurrent ? most_datagrams_at_once : 1; }
    void serve_datagrams();
    bool start_receiver();
    void become_busy();
    void become_free();
    void accept_connection();
    void admit(Descriptor socket);
    void serve(Connection &connection);
    void serve_datagram(RequestFrame &datagram, int flags, LateAnswers &late);
    bool has_room_for(const ucred &peer) const;
    void send(DatagramAnswer &answer);
    Clock::time_point hang_up_idle();
    void leave(Connection &connection);

    const board_service_config config;
    Answering answering;
    std::unique_ptr<Endpoint> endpoint;
    std::atomic<bool> stopping{false};
    pthread_t listener{};
    bool listening = false; // true while the thread above runs

    // The listener's thread alone uses these.
    bool receiving = false;          // a thread serves datagrams
    Clock::time_point accepts_again; // until then no connection is accepted, so that others get time to end
    Clock::time_point idle_check;    // when to look for idle connections next

    std::mutex mutex; // guards the members below
    std::condition_variable gone;
    Connections connections;
    Connections left;                 // their threads are at their end
    std::vector<pthread_t> receivers; // they serve datagrams
    unsigned busy = 0;                // so many of them are handling a datagram
};

bool board_service::start(const std::string &directory)
{
    endpoint = Endpoint::open(directory, config.module, config.socket_mode ? config.socket_mode : 0660);
    if (!endpoint) return false;
    receivers.reserve(datagrams_at_once());
    listening = start_thread(listener, listen_loop, this);
    return listening;
}

board_service::~board_service()
{
    stopping = true;
    if (endpoint) endpoint->stop();
    if (listening) pthread_join(listener, nullptr);

    std::unique_lock lock(mutex);
    const std::vector<pthread_t> last_receivers = receivers;
    lock.unlock();
    for (const pthread_t thread : last_receivers)
        pthread_join(thread, nullptr);

    lock.lock();
    for (Connection &connection : connections)
        shutdown(connection.socket.get(), SHUT_RDWR);
    gone.wait(lock, [this] { return connections.empty(); });
    for (Connection &connection : left)
        pthread_join(connection.thread, nullptr);
}

void *board_service::listen_loop(void *service)
{
    static_cast<board_service *>(service)->listen();
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

void board_service::listen()
{
    while (!stopping) {
        Clock::time_point next = hang_up_idle();
        const bool accepting = Clock::now() >= accepts_again;
        // What is stopped is always ready, so the service can stop at any time.
        const auto wanted = static_cast<short>(accepting ? POLLIN : 0);
        const int datagrams = receiving ? -1 : endpoint->datagrams();
        pollfd ready[] = {
            {endpoint->connections(), wanted, 0}, {datagrams, wanted, 0}, {endpoint->stopped(), POLLIN, 0}};
        if (!accepting) next = std::min(next, accepts_again);
        if (poll(ready, std::size(ready), wait_until(next)) <= 0) continue;
        if (ready[0].revents) accept_connection();
        if (ready[1].revents) {
            const std::lock_guard lock(mutex);
            receiving = start_receiver();
            if (!receiving) accepts_again = Clock::now() + pause_without_threads;
        }
    }
}

// Starts one more thread that serves datagrams. The caller holds the lock.
bool board_service::start_receiver()
{
    pthread_t thread;
    if (stopping || !start_thread(thread, datagram_loop, this)) return false;
    receivers.push_back(thread);
    return true;
}

// As long as there may be more receivers, one is left to receive what comes next.
void board_service::become_busy()
{
    const std::lock_guard lock(mutex);
    if (++busy == receivers.size() && receivers.size() < datagrams_at_once()) start_receiver();
}

void board_service::become_free()
{
    const std::lock_guard lock(mutex);
    --busy;
}

void board_service::serve_datagrams()
{
    RequestFrame datagram;
    LateAnswers late(BOARD_DELAYED_MAX / datagrams_at_once());
    while (!stopping) {
        while (const auto due = late.take_due())
            send(*due);
        const Clock::time_point next_due = late.next_due();
        pollfd ready[] = {{endpoint->datagrams(), POLLIN, 0}, {endpoint->stopped(), POLLIN, 0}};
        // Of several threads that wait to receive, a datagram wakes one. It would wake all that poll.
        if (next_due == never && endpoint->stopped() < 0)
            serve_datagram(datagram, 0, late);
        else if (poll(ready, std::size(ready), wait_until(next_due)) > 0)
            serve_datagram(datagram, MSG_DONTWAIT, late);
    }
}

// A time-out of each socket would do the same, but would cost each exchange a timer. Returns when to look again: never
// when there are no connections.
board_service::Clock::time_point board_service::hang_up_idle()
{
    const std::chrono::seconds limit{config.idle_limit ? config.idle_limit : usual_idle_limit};
    const std::lock_guard lock(mutex);
    if (connections.empty()) return never;
    const auto now = Clock::now();
    if (now < idle_check) return idle_check;
    for (Connection &each : connections) {
        const uint32_t steps = each.steps.load(std::memory_order_relaxed);
        const bool handling = steps % 2;
        if (steps != each.steps_seen || handling) {
            each.steps_seen = steps;
            each.idle_since = now;
        } else if (now - each.idle_since >= limit) {
            // From here on the peer cannot send. A request that it has sent is handled, so none is lost.
            shutdown(each.socket.get(), SHUT_RD);
        }
    }
    idle_check = now + limit / 4;
    return idle_check;
}

void board_service::accept_connection()
{
    Descriptor socket(accept4(endpoint->connections(), nullptr, nullptr, SOCK_CLOEXEC));
    if (socket) {
        admit(std::move(socket));
    } else if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
        // The connection stays in the queue.
        userlog_err(__func__, __LINE__, "cannot accept a connection: %s", std::strerror(errno));
        accepts_again = Clock::now() + pause_without_threads;
    }
}

// A user who takes all connections that the user may have does not lock out the others, and nobody locks out those who
// run the service. The caller holds the lock.
bool board_service::has_room_for(const ucred &peer) const
{
    const auto owner = [](const ucred &each) { return each.uid == geteuid() || each.uid == 0; };
    if (owner(peer)) return connections.size() < max_connections;
    size_t others = 0, own = 0;
    for (const Connection &each : connections) {
        others += !owner(each.peer);
        own += each.peer.uid == peer.uid;
    }
    return others < connections_of_others && own < connections_of_one && connections.size() < max_connections;
}

void board_service::admit(Descriptor socket)
{
    Peer peer{};
    socklen_t length = sizeof(ucred);
    getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, static_cast<ucred *>(&peer), &length);
    peer.groups = groups_of(socket.get());

    {
        const std::lock_guard lock(mutex);
        if (has_room_for(peer)) {
            Connection &connection = connections.emplace_back(this, std::move(socket), peer);
            connection.idle_since = Clock::now();
            if (start_thread(connection.thread, connection_loop, &connection)) return;
            socket = std::move(connection.socket);
            connections.pop_back();
        }
    }
    answering.complaints.log(peer, "refused a connection", text_of(Refusal::busy));
    const Head refusal = refusal_of(Refusal::busy);
    send_packet(socket.get(), &refusal, sizeof refusal, -1);
    // What the peer has sent already may carry descriptors.
    shutdown(socket.get(), SHUT_RDWR);
    close_passed(std::move(socket));
}

void board_service::serve(Connection &connection)
{
    const int socket = connection.socket.get();
    RequestFrame request;
    board_answer answer(false);
    // Descriptors have no meaning on a connection.
    const auto receive = [&] {
        if (endpoint->descriptors_refused()) return recv(socket, &request, sizeof request, MSG_TRUNC);
        std::vector<Descriptor> passed;
        const ssize_t received = receive_packet(socket, &request, sizeof request, 0, passed);
        close_passed(std::move(passed));
        return received;
    };
    for (;;) {
        const ssize_t received = receive();
        if (received < 0 && errno == EINTR) continue;
        if (received <= 0) return;
        count_step(connection.steps);
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
        count_step(connection.steps);
    }
}

// This is the last thing that a connection's thread does. The thread cannot wait for its own end, so the next thread
// that leaves waits for it, or else the service does.
void board_service::leave(Connection &connection)
{
    Connections before;
    Descriptor socket;
    {
        const std::lock_guard lock(mutex);
        socket = std::move(connection.socket);
        before.swap(left);
        const auto own = std::find_if(connections.begin(), connections.end(),
                                      [&](const Connection &other) { return &other == &connection; });
        left.splice(left.end(), connections, own);
        gone.notify_all();
    }
    hang_up(std::move(socket));
    for (Connection &other : before)
        pthread_join(other.thread, nullptr);
}

void board_service::serve_datagram(RequestFrame &datagram, int flags, LateAnswers &late)
{
    auto answer = std::make_unique<DatagramAnswer>();
    const Peer &peer = answer->peer;
    std::vector<Descriptor> passed;
    const ssize_t received =
        receive_packet(endpoint->datagrams(), &datagram, sizeof datagram, flags, passed, &answer->peer);
    answer->way_back = take_first(std::move(passed));
    if (received < 0 || stopping) return;
    if (!is_way_back(answer->way_back))
        return answering.complaints.log(peer, "refused a packet", "no socket for the answer came with it");
    become_busy();
    Head refusal;
    const bool handled = answering.handle(datagram, static_cast<size_t>(received), true, peer, answer->answer, refusal);
    become_free();
    if (!handled) {
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
