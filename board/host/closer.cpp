#include "closer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <iterator>
#include <mutex>
#include <vector>

#include <pthread.h>
#include <sys/socket.h>

#include "board/util.h"
#include "packet.h"

namespace board
{
namespace
{

using Clock = std::chrono::steady_clock;

// One wake-up of a closing thread is for so many descriptors, or for what has come in so long a time.
constexpr size_t batch = 64;
constexpr std::chrono::milliseconds pause{20};
// A thread that has been closing one descriptor for so long waits for a peer. Then another one takes its place.
constexpr std::chrono::milliseconds patience{200};
constexpr std::chrono::seconds idle_limit{1};
constexpr int most_threads = 64;
// With so many descriptors to close, whoever brings another one waits for so long.
constexpr size_t many = 2 * batch;
constexpr std::chrono::milliseconds wait_when_many{100};
constexpr size_t stack_size = size_t{256} << 10;

// Takes something out of a socket that close() would have to close with it: a connection that nobody has accepted, or
// the descriptors of a packet that nobody has received. Returns nothing when there is none, or when this is no such
// socket.
std::vector<Descriptor> take_out(const Descriptor &socket)
{
    std::vector<Descriptor> found;
    if (!has_option(socket.get(), SO_DOMAIN, AF_UNIX)) return found;
    if (has_option(socket.get(), SO_ACCEPTCONN, 1)) {
        shutdown(socket.get(), SHUT_RDWR); // then accept() does not wait for another connection
        if (Descriptor connection{accept4(socket.get(), nullptr, nullptr, SOCK_CLOEXEC)})
            found.push_back(std::move(connection));
        return found;
    }
    constexpr int most_packets = 1 << 16;
    constexpr pid_t nobody = -1;
    char bytes[4096];
    // Only a stream has no empty packets. Elsewhere one looks like the end, but for the credentials that it brings.
    const bool is_stream = has_option(socket.get(), SO_TYPE, SOCK_STREAM);
    const int wanted = 1;
    setsockopt(socket.get(), SOL_SOCKET, SO_PASSCRED, &wanted, sizeof wanted);
    for (int packets = 0; packets < most_packets; ++packets) {
        ucred sender{.pid = nobody, .uid = 0, .gid = 0};
        const ssize_t received = receive_packet(socket.get(), bytes, sizeof bytes, MSG_DONTWAIT, found, &sender);
        if (received < 0 || !found.empty() || (received == 0 && (is_stream || sender.pid == nobody))) break;
    }
    return found;
}

// The closing threads may outlive everything else of the process, so this is never destroyed.
class Closer
{
public:
    void add(std::vector<Descriptor> passed);

private:
    static void *run(void *closer)
    {
        static_cast<Closer *>(closer)->close_all();
        return nullptr;
    }

    // Returns whether a thread takes what is pending soon.
    bool has_thread() const { return waiting > 0 || Clock::now() - closing_since < patience; }
    void close_all();
    void close_next(std::unique_lock<std::mutex> &lock);
    void see_to_thread(bool complain);
    bool start_thread();

    std::mutex mutex; // guards the members below
    std::condition_variable more, fewer;
    std::vector<Descriptor> pending;
    Clock::time_point closing_since{}; // when a thread took a descriptor; the epoch when it has closed that
    int threads = 0;
    int waiting = 0; // threads that wait for descriptors
};

void Closer::close_all()
{
    std::unique_lock lock(mutex);
    while (more.wait_for(lock, idle_limit, [this] { return !pending.empty(); })) {
        more.wait_for(lock, pause, [this] { return pending.size() >= batch; });
        --waiting;
        while (!pending.empty())
            close_next(lock);
        ++waiting;
    }
    --waiting;
    --threads;
}

// Closes the last descriptor. When there is more in it, that is closed before.
void Closer::close_next(std::unique_lock<std::mutex> &lock)
{
    Descriptor next = std::move(pending.back());
    pending.pop_back();
    const Clock::time_point since = closing_since = Clock::now();
    fewer.notify_all();
    lock.unlock();
    std::vector<Descriptor> found = take_out(next);
    if (found.empty()) {
        const linger none{};
        setsockopt(next.get(), SOL_SOCKET, SO_LINGER, &none, sizeof none); // fails when this is no socket
        next.close();
    }
    lock.lock();
    if (!found.empty()) pending.push_back(std::move(next));
    std::move(found.begin(), found.end(), std::back_inserter(pending));
    if (closing_since == since) closing_since = {};
}

bool Closer::start_thread()
{
    sigset_t all, before;
    sigfillset(&all);
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes)) return false;
    pthread_attr_setstacksize(&attributes, stack_size);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    pthread_t thread;
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const bool started = !pthread_create(&thread, &attributes, run, this);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    pthread_attr_destroy(&attributes);
    return started;
}

// Sees to it that a thread takes what is pending. Complains when that cannot be, if wanted.
void Closer::see_to_thread(bool complain)
{
    if (has_thread()) {
        more.notify_all();
    } else if (threads < most_threads && start_thread()) {
        ++threads;
        ++waiting;
    } else if (complain) {
        userlog_err("close_passed", __LINE__, "%zu descriptors of peers stay open: closing others has no end",
                    pending.size());
    }
}

void Closer::add(std::vector<Descriptor> passed)
{
    std::unique_lock lock(mutex);
    const size_t before = pending.size();
    std::move(passed.begin(), passed.end(), std::back_inserter(pending));
    // A thread is woken seldom, because every datagram brings a descriptor.
    const bool one_batch_more = before / batch != pending.size() / batch;
    if (before == 0 || one_batch_more || !has_thread()) see_to_thread(one_batch_more);
    fewer.wait_for(lock, wait_when_many, [this] { return pending.size() < many; });
}

std::atomic<Closer *> closer{nullptr};

// In a child process the threads do not exist, and one of them may have held the lock.
void forget_closer()
{
    closer = nullptr;
}

Closer &this_process_closer()
{
    static const int registered = pthread_atfork(nullptr, nullptr, forget_closer);
    static_cast<void>(registered);
    Closer *known = closer;
    if (known) return *known;
    auto *const made = new Closer;
    if (closer.compare_exchange_strong(known, made)) return *made;
    delete made;
    return *known;
}

} // namespace

void close_passed(std::vector<Descriptor> passed)
{
    if (!passed.empty()) this_process_closer().add(std::move(passed));
}

void close_passed(Descriptor passed)
{
    if (!passed) return;
    std::vector<Descriptor> one;
    one.push_back(std::move(passed));
    close_passed(std::move(one));
}

void hang_up(Descriptor socket)
{
    if (!socket) return;
    shutdown(socket.get(), SHUT_RDWR); // nothing more comes in
    for (std::vector<Descriptor> found = take_out(socket); !found.empty(); found = take_out(socket))
        close_passed(std::move(found));
}

} // namespace board
