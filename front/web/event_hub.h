// What happens is told to all who listen. The last messages are kept once for all of them: a listener costs a place in
// that list, however slowly it listens.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "http/message.h"
#include "watch/event.h"
#include "web/olt_state.h"

namespace front
{

class EventHub
{
public:
    static constexpr size_t most_messages = 4096, most_listeners = 300;

    // Any thread may call these.

    void tell(const std::vector<Event> &events);
    // Tells which tables of a state have other contents than before.
    void tell(const OltState &before, const OltState &state);
    // Says who is called when there is something to send. When it returns, nobody is calling the one before.
    void wakes(std::function<void()> wake);

    // Returns a source of all messages from now on, which begins with the tables of all OLTs and the events behind this
    // number. It ends when `may_listen` is false. Returns null when too many listen.
    std::unique_ptr<MessageSource> listen(const KnownOlts &known, std::optional<uint64_t> last_event,
                                          std::function<bool()> may_listen);

private:
    class Listener;
    struct Message {
        uint64_t event; // its number; 0: of tables
        std::string text;
    };

    void add(std::vector<Message> messages);
    // Returns what a listener at this place has not heard yet, without the events up to this number, and moves its
    // place. Returns none when more was told than is kept.
    std::optional<std::string> behind(uint64_t &place, uint64_t last_event);
    uint64_t end() const;

    mutable std::mutex guard;
    std::deque<Message> messages;
    uint64_t first = 0;    // place of the first message that is kept
    std::mutex wake_guard; // held while somebody is woken; nothing is locked before it
    std::function<void()> wake;
    std::atomic<size_t> listeners = 0;
};

} // namespace front
