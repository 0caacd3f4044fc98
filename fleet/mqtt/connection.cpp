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
constexpr milliseconds longest_wait{1000};
// What is held for an answer is held this long.
constexpr milliseconds longest_hold{1};
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
    epoll_event event{.events = EPOLLIN, .data = {.fd = waker}};
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
    const int number = session->publish(message);
    hold(false);
    // What the socket does not take at once is written by a turn, and so is a loss found.
    if (number == 0 || session->wants_to_write()) wake();
    return number;
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
    return static_cast<int>(std::clamp(left, milliseconds{0}, longest_wait).count());
}

// The name of a broker may take long to be resolved: meanwhile others are not to wait for the lock.
void Connection::begin(std::unique_lock<std::mutex> &lock)
{
    lock.unlock();
    auto made = std::make_unique<Session>(broker, client, will);
    lock.lock();
    session = std::move(made);
    next = Clock::now() + patience;
    epoll_event event{.events = EPOLLIN, .data = {.fd = session->descriptor()}};
    if (session->descriptor() >= 0 && epoll_ctl(poller, EPOLL_CTL_ADD, session->descriptor(), &event) != 0) fail();
}

void Connection::wait(std::unique_lock<std::mutex> &lock, int longest)
{
    const int socket = session ? session->descriptor() : -1;
    if (socket >= 0 && session->wants_to_write() != watches_room) {
        watches_room = !watches_room;
        epoll_event event{.events = EPOLLIN, .data = {.fd = socket}};
        if (watches_room) event.events |= EPOLLOUT;
        epoll_ctl(poller, EPOLL_CTL_MOD, socket, &event);
    }
    const milliseconds looked_after = held ? longest_hold : longest_wait;
    const int most = accepted || closed ? static_cast<int>(looked_after.count()) : until(next);
    const bool is_lost = session && socket < 0;
    lock.unlock();
    epoll_event events[2];
    const int count = epoll_wait(poller, events, 2, is_lost ? 0 : std::min(longest, most));
    lock.lock();
    bool readable = false, writable = false;
    for (int i = 0; i < count; ++i) {
        eventfd_t ignored = 0;
        if (events[i].data.fd == waker)
            eventfd_read(waker, &ignored);
        else {
            readable = events[i].events & (EPOLLIN | EPOLLERR | EPOLLHUP);
            writable = events[i].events & EPOLLOUT;
        }
    }
    if (!session || session->descriptor() < 0) return;
    if (readable && answers) hold(true);
    session->go_on(readable, writable);
}

bool Connection::is_late() const
{
    return !accepted && Clock::now() >= next;
}

std::string Connection::lose()
{
    const std::string reason = session->lost();
    session.reset();
    accepted = announced = held = watches_room = false;
    awaited.clear();
    std::uniform_int_distribution<milliseconds::rep> some(pause.count() / 2, pause.count());
    next = Clock::now() + milliseconds(some(chance));
    pause = std::min(2 * pause, longest_pause);
    return reason.empty() ? "the broker does not answer" : reason;
}

void Connection::hold(bool what)
{
    if (std::exchange(held, what) != what && session->descriptor() >= 0) session->hold(what);
}

void Connection::turn(int longest)
{
    std::unique_lock lock(guard);
    if (!session && !closed && until(next) == 0) begin(lock);
    wait(lock, longest);
    if (!session) return;

    std::vector<Heard> heard = session->take_heard();
    const bool nothing_arrived =
        std::ranges::none_of(heard, [](const Heard &one) { return std::holds_alternative<Message>(one); });
    if (nothing_arrived) hold(false);
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
}

} // namespace fleet
