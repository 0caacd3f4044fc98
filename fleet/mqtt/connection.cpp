#include "fleet/mqtt/connection.h"

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "fleet/mqtt/session.h"

namespace fleet
{
namespace
{

using std::chrono::milliseconds;

constexpr milliseconds first_pause{500}, longest_pause{30'000};
// How long a broker may take to accept a connection.
constexpr milliseconds patience{10'000};
// A quiet connection is looked after this often.
constexpr milliseconds longest_quiet{1000};
// Topics in one packet.
constexpr size_t most_topics = 200;

constexpr int first_error = 128; // of the reasons of MQTT 5

[[noreturn]] void fail()
{
    throw std::system_error(errno, std::generic_category(), "a connection to a broker");
}

} // namespace

Connection::Connection(Broker of, std::string name, std::optional<Message> last, Handler &told)
    : broker(std::move(of)),
      client(std::move(name)),
      will(std::move(last)),
      handler(told),
      pause(first_pause),
      chance(std::random_device()())
{
    poller = epoll_create1(EPOLL_CLOEXEC);
    if (poller < 0) fail();
    waker = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    epoll_event event{.events = EPOLLIN, .data = {.u64 = 0}}; // no session has this number
    if (waker >= 0 && epoll_ctl(poller, EPOLL_CTL_ADD, waker, &event) == 0) return;
    ::close(poller);
    if (waker >= 0) ::close(waker);
    fail();
}

Connection::~Connection()
{
    session.reset();
    ::close(poller);
    ::close(waker);
}

void Connection::wake() const
{
    eventfd_write(waker, 1);
}

bool Connection::is_connected() const
{
    const std::lock_guard lock(guard);
    return accepted;
}

int Connection::publish(const Message &message)
{
    const std::lock_guard lock(guard);
    if (!accepted) return 0;
    const int published = session->publish(message);
    // What the socket does not take at once is written by a turn, and so is a loss found.
    if (published == 0 || session->wants_to_write()) wake();
    return published;
}

void Connection::subscribe(std::vector<std::string> topics)
{
    const std::lock_guard lock(guard);
    std::erase_if(topics, [&](const std::string &topic) { return !subscriptions.insert(topic).second; });
    if (accepted) ask_for(topics);
    wake();
}

void Connection::unsubscribe(const std::string &topic)
{
    const std::lock_guard lock(guard);
    if (subscriptions.erase(topic) && accepted) session->unsubscribe(topic);
    wake();
}

void Connection::close()
{
    const std::lock_guard lock(guard);
    closed = true;
    if (accepted) session->end();
    wake();
}

void Connection::ask_for(const std::vector<std::string> &topics)
{
    for (size_t at = 0; at < topics.size(); at += most_topics)
        awaited.insert(session->subscribe(std::span(topics).subspan(at, std::min(most_topics, topics.size() - at))));
}

int Connection::until(Clock::time_point time) const
{
    const auto left = std::chrono::ceil<milliseconds>(time - Clock::now());
    return static_cast<int>(std::clamp(left, milliseconds{0}, longest_quiet).count());
}

// The name of a broker may take long to be resolved: meanwhile others are not to wait for the lock.
void Connection::begin(std::unique_lock<std::mutex> &lock)
{
    lock.unlock();
    auto made = std::make_unique<Session>(broker, client, will);
    lock.lock();
    session = std::move(made);
    ++number;
    next = Clock::now() + patience;
    epoll_event event{.events = 0, .data = {.u64 = number}};
    if (session->descriptor() >= 0 && epoll_ctl(poller, EPOLL_CTL_ADD, session->descriptor(), &event) != 0) fail();
}

// A socket that is not watched once but all the time would end the waits of all threads for each message, and not of
// one.
void Connection::watch()
{
    const int socket = session ? session->descriptor() : -1;
    if (socket < 0 || (watched && session->wants_to_write() == watches_room)) return;
    watched = true;
    watches_room = session->wants_to_write();
    epoll_event event{.events = EPOLLIN | EPOLLONESHOT, .data = {.u64 = number}};
    if (watches_room) event.events |= EPOLLOUT;
    epoll_ctl(poller, EPOLL_CTL_MOD, socket, &event);
}

int Connection::longest_wait() const
{
    if (session && session->descriptor() < 0) return 0;
    return accepted || closed ? static_cast<int>(longest_quiet.count()) : until(next);
}

Connection::Ready Connection::wait(int longest) const
{
    epoll_event events[2];
    const int count = epoll_wait(poller, events, 2, longest);
    Ready ready;
    for (int i = 0; i < count; ++i) {
        eventfd_t ignored = 0;
        if (events[i].data.u64 == 0)
            eventfd_read(waker, &ignored);
        else
            ready = {.session = events[i].data.u64,
                     .readable = (events[i].events & (EPOLLIN | EPOLLERR | EPOLLHUP)) != 0,
                     .writable = (events[i].events & EPOLLOUT) != 0};
    }
    return ready;
}

bool Connection::is_late() const
{
    return !accepted && Clock::now() >= next;
}

std::string Connection::lose()
{
    const std::string reason = session->lost();
    session.reset();
    accepted = announced = watched = false;
    awaited.clear();
    std::uniform_int_distribution<milliseconds::rep> some(pause.count() / 2, pause.count());
    next = Clock::now() + milliseconds(some(chance));
    pause = std::min(2 * pause, longest_pause);
    return reason.empty() ? "the broker does not answer" : reason;
}

void Connection::turn(int longest)
{
    std::unique_lock turning(turns);
    std::unique_lock lock(guard);
    if (!session && !closed && until(next) == 0) begin(lock);
    watch();
    const int most = std::min(longest, longest_wait());
    lock.unlock();
    turning.unlock();
    const Ready ready = wait(most);
    turning.lock();
    lock.lock();
    if (!session) return;

    const bool is_ready = ready.session == number; // and not one that was lost meanwhile
    if (is_ready) watched = false;
    if (session->descriptor() >= 0) session->go_on(is_ready && ready.readable, is_ready && ready.writable);
    std::vector<Heard> heard = session->take_heard();
    size_t refused = 0;
    for (const Heard &one : heard) {
        if (std::holds_alternative<Accepted>(one)) {
            accepted = true;
            pause = first_pause;
            ask_for({subscriptions.begin(), subscriptions.end()});
        } else if (const auto *subscribed = std::get_if<Subscribed>(&one)) {
            awaited.erase(subscribed->number);
            refused += subscribed->refused;
        }
    }
    const bool is_new = accepted && !announced && awaited.empty();
    announced = announced || is_new;
    std::string reason;
    if (!session->lost().empty() || is_late()) reason = lose();
    const bool tells = !closed;
    lock.unlock();

    if (refused > 0) handler.refused(refused);
    if (is_new) handler.connected();
    for (Heard &one : heard) {
        if (auto *message = std::get_if<Message>(&one)) handler.arrived(std::move(*message));
        const auto *answered = std::get_if<Acknowledged>(&one);
        if (!answered) continue;
        if (answered->reason == MQTT_RC_NO_MATCHING_SUBSCRIBERS)
            handler.unheard(answered->number);
        else
            handler.acknowledged(answered->number,
                                 answered->reason < first_error ? "" : mosquitto_reason_string(answered->reason));
    }
    if (!reason.empty() && tells) handler.lost(reason);
    // Until now nobody else was to come and wait for this turn's end.
    lock.lock();
    watch();
}

} // namespace fleet
