// What other threads leave for that of the agent: objects to answer from, and notifications to tell.
#pragma once

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "snmp/core/notification.h"

namespace front::snmp
{

class Mailbox
{
public:
    Mailbox();
    ~Mailbox();
    Mailbox(const Mailbox &) = delete;
    Mailbox &operator=(const Mailbox &) = delete;

    // Any thread may call these.
    void publish(std::shared_ptr<const Objects> made);
    // Only so many are kept, the last ones.
    void tell(std::vector<Notification> more);
    void stop();
    void wake() const;

    bool is_stopping() const { return stopping; }
    std::shared_ptr<const Objects> objects() const;
    std::optional<Notification> take_notification();
    // Puts back what could not be told, before all others.
    void give_back(Notification notification);
    // Returns how many notifications were lost since the last call, as there was no room for them.
    uint64_t take_lost();
    // Waits until somebody leaves something, the socket (-1 is none) can be read, or the time has passed.
    void wait(int socket, int milliseconds) const;

private:
    const int waker; // an eventfd
    std::atomic<bool> stopping = false;
    mutable std::mutex guard; // of what follows
    std::shared_ptr<const Objects> latest;
    std::deque<Notification> notifications;
    uint64_t lost = 0;
};

} // namespace front::snmp
