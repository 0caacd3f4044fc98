#include "web/event_hub.h"

#include <algorithm>

#include "web/event_json.h"

namespace front
{
namespace
{

constexpr size_t most_at_first = 1000; // events that are told again

std::string message_of(const Event &event)
{
    Json json;
    write(json, event);
    const std::string id = event.id > 0 ? "id: " + std::to_string(event.id) + "\n" : "";
    return "event: event\n" + id + "data: " + json.text() + "\n\n";
}

// Returns the tables of a state that have other contents than before.
std::string message_of(const OltState *before, const OltState &state)
{
    Json json;
    json->StartObject();
    json.member("olt", state.name);
    json.member("reached", state.is_reached());
    json.key("versions");
    json->StartObject();
    for (const TableKind &kind : table_kinds()) {
        const auto table = static_cast<size_t>(kind.table);
        if (!before || before->versions[table] != state.versions[table]) json.member(kind.name, state.versions[table]);
    }
    json->EndObject();
    json->EndObject();
    return "event: tables\ndata: " + json.text() + "\n\n";
}

std::string gap_message(uint64_t oldest)
{
    return "event: gap\ndata: {\"oldest\":" + std::to_string(oldest) + "}\n\n";
}

} // namespace

class EventHub::Listener : public MessageSource
{
public:
    Listener(EventHub &event_hub, const KnownOlts &known_olts, std::optional<uint64_t> last_event,
             std::function<bool()> may_go_on)
        : hub(event_hub), known(known_olts), may_listen(std::move(may_go_on)), place(hub.end()), heard(last_event)
    {
    }
    ~Listener() override { --hub.listeners; }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    std::optional<std::string> next() override
    {
        if (!may_listen()) return std::nullopt;
        if (!begun) {
            begun = true;
            return "retry: 2000\n\n" + tables() + missed_events();
        }
        if (std::optional<std::string> text = hub.behind(place, heard.value_or(0))) return text;
        place = hub.end();
        return gap_message(known.events()->bounds().first) + tables();
    }

private:
    std::string tables() const
    {
        std::string text;
        for (const OltDoor &olt : known.olts())
            text += message_of(nullptr, *olt.state);
        return text;
    }
    std::string missed_events()
    {
        const std::shared_ptr<History> history = known.events();
        const auto [oldest, newest] = history->bounds();
        if (!heard) return {};
        std::string text;
        // What was not kept, or is too much, or comes from another history, cannot be told again.
        if (*heard > newest || (newest > 0 && *heard + 1 < oldest) || newest - *heard > most_at_first) {
            text = gap_message(oldest);
        } else {
            for (const Event &event : history->events(*heard, most_at_first))
                text += message_of(event);
        }
        heard = newest;
        return text;
    }

    EventHub &hub;
    const KnownOlts &known;
    const std::function<bool()> may_listen;
    uint64_t place;
    std::optional<uint64_t> heard; // number of the last event that was told before
    bool begun = false;
};

void EventHub::add(std::vector<Message> added)
{
    {
        const std::lock_guard lock(guard);
        for (Message &message : added)
            messages.push_back(std::move(message));
        while (messages.size() > most_messages) {
            messages.pop_front();
            ++first;
        }
    }
    const std::lock_guard lock(wake_guard);
    if (wake) wake();
}

void EventHub::tell(const std::vector<Event> &events)
{
    if (events.empty()) return;
    std::vector<Message> added;
    for (const Event &event : events)
        added.push_back({event.id, message_of(event)});
    add(std::move(added));
}

void EventHub::tell(const OltState &before, const OltState &state)
{
    if (before.versions == state.versions && before.is_reached() == state.is_reached()) return;
    add({{0, message_of(&before, state)}});
}

void EventHub::wakes(std::function<void()> who)
{
    const std::lock_guard lock(wake_guard);
    wake = std::move(who);
}

uint64_t EventHub::end() const
{
    const std::lock_guard lock(guard);
    return first + messages.size();
}

std::optional<std::string> EventHub::behind(uint64_t &place, uint64_t last_event)
{
    const std::lock_guard lock(guard);
    if (place < first) return std::nullopt;
    std::string text;
    for (; place < first + messages.size(); ++place) {
        const Message &message = messages[place - first];
        if (message.event == 0 || message.event > last_event) text += message.text;
    }
    return text;
}

std::unique_ptr<MessageSource> EventHub::listen(const KnownOlts &known, std::optional<uint64_t> last_event,
                                                std::function<bool()> may_listen)
{
    if (listeners.fetch_add(1) >= most_listeners) {
        --listeners;
        return nullptr;
    }
    return std::make_unique<Listener>(*this, known, last_event, std::move(may_listen));
}

} // namespace front
