#include "snmp/agent/mailbox.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace front::snmp
{
namespace
{

constexpr size_t most_notifications = 1000;

} // namespace

Mailbox::Mailbox()
    : waker(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      latest(std::make_shared<const Objects>(std::vector<ObjectTable>{}, std::vector<Oid>{}))
{
    if (waker < 0) throw std::runtime_error("no eventfd: " + std::string(std::strerror(errno)));
}

Mailbox::~Mailbox()
{
    close(waker);
}

void Mailbox::wake() const
{
    const uint64_t one = 1;
    static_cast<void>(!write(waker, &one, sizeof one)); // it fails only where it is to wake already
}

void Mailbox::publish(std::shared_ptr<const Objects> made)
{
    const std::lock_guard lock(guard);
    latest.swap(made);
}

void Mailbox::tell(std::vector<Notification> more)
{
    {
        const std::lock_guard lock(guard);
        for (Notification &notification : more)
            notifications.push_back(std::move(notification));
        for (; notifications.size() > most_notifications; ++lost)
            notifications.pop_front();
    }
    if (!more.empty()) wake();
}

void Mailbox::stop()
{
    stopping = true;
    wake();
}

std::shared_ptr<const Objects> Mailbox::objects() const
{
    const std::lock_guard lock(guard);
    return latest;
}

std::optional<Notification> Mailbox::take_notification()
{
    const std::lock_guard lock(guard);
    if (notifications.empty()) return {};
    Notification first = std::move(notifications.front());
    notifications.pop_front();
    return first;
}

void Mailbox::give_back(Notification notification)
{
    const std::lock_guard lock(guard);
    notifications.push_front(std::move(notification));
}

uint64_t Mailbox::take_lost()
{
    const std::lock_guard lock(guard);
    return std::exchange(lost, 0);
}

void Mailbox::wait(int socket, int milliseconds) const
{
    pollfd either[] = {{waker, POLLIN, 0}, {socket, POLLIN, 0}};
    poll(either, 2, milliseconds);
    uint64_t count;
    if (either[0].revents) static_cast<void>(!read(waker, &count, sizeof count));
}

} // namespace front::snmp
