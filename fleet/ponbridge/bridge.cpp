#include "fleet/ponbridge/bridge.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "audit/entry.h"
#include "fleet/ponbridge/inventory_reader.h"
#include "program_log/log.h"
#include "storage/private.h"

namespace fleet
{

using program_log::log_line;
using program_log::LogLevel;
namespace
{

constexpr uint64_t audit_limit = 64u << 20; // bytes
constexpr size_t longest_correlation = 1024;
constexpr int turn_time = 500; // milliseconds
constexpr std::chrono::seconds longest_turn{120};
// An OLT that does not answer is asked again this soon.
constexpr std::chrono::seconds pause_without_answer{5};

void warn(const std::string &text)
{
    log_line(LogLevel::warning, text);
}

std::string outbox_in(const std::string &state)
{
    storage::make_private_folders(state + "/journal");
    return state + "/outbox";
}

} // namespace

Bridge::Bridge(const Configuration &configuration, std::string program_version)
    : settings(configuration.fixed),
      version(std::move(program_version)),
      topics(settings.root),
      outbox(outbox_in(settings.state), warn),
      connection(settings.broker, "ponbridge-" + settings.name,
                 Message{.topic = topics.bridge(settings.name), .payload = to_json(BridgeState{}), .retained = true},
                 *this)
{
    if (!settings.audit.empty()) audit_log = std::make_unique<audit::BoundedLog>(settings.audit, audit_limit, warn);
    const auto noted = [this](const std::string &olt, const std::string &line) { note(olt, line); };
    engine = std::make_unique<Engine>(settings.engine, Notes{.audit = noted, .complain = warn});
    serve(configuration);
    watch(configuration);
    turned = Clock::now().time_since_epoch().count();
    engine->listen({.turn = [this] { listen(); }, .wake = [this] { connection.wake(); }});
}

Bridge::~Bridge()
{
    watches.clear();
    engine->end(); // whoever waits is answered
    say_offline();
}

bool Bridge::is_alive() const
{
    return Clock::now() - Clock::time_point(Clock::duration(turned)) < longest_turn;
}

void Bridge::note(const std::string &olt, const std::string &line)
{
    audit_log ? audit_log->append(line) : log_line(LogLevel::info, "audit: " + line);
    outbox.add(topics.audit(olt), line);
}

void Bridge::change(const Configuration &wanted)
{
    serve(wanted);
    watch(wanted);
    publish_state();
    connection.wake();
}

void Bridge::serve(const Configuration &wanted)
{
    std::vector<ServedOlt> olts;
    std::vector<std::string> gone, calls;
    {
        const std::lock_guard lock(guard);
        period = std::chrono::seconds(wanted.inventory_period);
        std::map<std::string, Said> others;
        for (const BridgedOlt &olt : wanted.olts) {
            const std::string &name = olt.served.name;
            olts.push_back(olt.served);
            calls.push_back(topics.calls_of(name));
            Said &now = others[name];
            const auto before = said.find(name);
            const bool is_same = before != said.end() && before->second.socket_dir == olt.served.socket_dir;
            if (is_same) now = before->second;
            now.socket_dir = olt.served.socket_dir;
            now.due = Clock::now();
            now.visited = false; // a visit of an OLT that is served in another way is not made
            now.inventory.olt = name;
            now.inventory.bridge = settings.name;
            now.inventory.labels = olt.labels;
            now.inventory.version = version;
            now.inventory.catalogue = catalogue_digest();
            now.known = false; // so that it is published
        }
        for (const auto &[name, olt] : said)
            if (!others.contains(name)) gone.push_back(name);
        said = std::move(others);
        next_visit = {};
    }
    engine->serve(olts, wanted.clients);
    for (const std::string &name : gone) {
        connection.unsubscribe(topics.calls_of(name));
        publish({.topic = topics.inventory(name), .payload = {}, .retained = true});
    }
    connection.subscribe(calls);
}

void Bridge::watch(const Configuration &wanted)
{
    std::map<std::string, std::unique_ptr<OltWatch>> others;
    const auto tell = [this](const std::string &olt, const std::string &event) {
        outbox.add(topics.event(olt), event);
    };
    for (const BridgedOlt &olt : wanted.olts) {
        if (!wanted.events) break;
        // All that a watch is made with belongs to its key.
        const std::string key =
            olt.served.name + " " + std::to_string(wanted.inventory_period) + " " + olt.served.socket_dir;
        const auto before = watches.find(key);
        others[key] = before != watches.end() ? std::move(before->second)
                                              : std::make_unique<OltWatch>(olt.served.name, olt.served.socket_dir,
                                                                           wanted.inventory_period, tell);
    }
    watches = std::move(others);
}

void Bridge::listen()
{
    turned = Clock::now().time_since_epoch().count();
    connection.turn(turn_time);
    visit_due();
}

// A broker that cannot answer what came before the leave takes the connection for lost, and publishes the last will.
void Bridge::say_offline()
{
    constexpr int most_turns = 20;
    try {
        last_number = connection.publish(
            {.topic = topics.bridge(settings.name), .payload = to_json(BridgeState{}), .retained = true});
    } catch (const std::runtime_error &error) {
        warn(error.what());
    }
    for (int i = 0; i < most_turns && last_number != 0; ++i)
        connection.turn(50);
    connection.close();
}

void Bridge::visit_due()
{
    const Clock::time_point now = Clock::now();
    std::vector<std::string> due;
    {
        const std::lock_guard lock(guard);
        // This is asked with each message, and there may be a thousand OLTs.
        if (now < next_visit) return;
        next_visit = Clock::time_point::max();
        for (auto &[name, olt] : said) {
            if (olt.visited) continue;
            if (olt.due > now) {
                next_visit = std::min(next_visit, olt.due);
                continue;
            }
            olt.visited = true;
            due.push_back(name);
        }
    }
    for (const std::string &name : due)
        engine->visit(name, [this, name] { visit(name); });
}

void Bridge::visit(const std::string &name)
{
    Inventory read;
    const std::string failure = read_inventory(read);
    std::unique_lock lock(guard);
    const auto found = said.find(name);
    if (found == said.end()) return;
    Said &olt = found->second;
    Inventory now = olt.inventory;
    now.answers = read.answers;
    if (failure.empty()) {
        now.model = read.model;
        now.firmware = read.firmware;
        now.ports = read.ports;
        now.onus = read.onus;
    }
    olt.visited = false;
    const bool is_well = now.answers;
    olt.due = Clock::now() + (is_well ? period : std::min<std::chrono::seconds>(period, pause_without_answer));
    next_visit = std::min(next_visit, olt.due);
    const bool is_new_failure = std::exchange(olt.failure, failure) != failure;
    const bool is_other = !std::exchange(olt.known, true) || now != olt.inventory;
    if (is_other) now.at = audit::time_of_day() / 1000;
    olt.inventory = now;
    lock.unlock();
    if (is_new_failure && !failure.empty()) warn(name + ": the inventory cannot be read: " + failure);
    if (is_new_failure && failure.empty()) log_line(LogLevel::info, name + ": the OLT answers again");
    if (is_other) publish_inventory(now);
}

// What a connection does not take is published by the next one.
void Bridge::publish(Message message)
{
    try {
        connection.publish(message);
    } catch (const std::runtime_error &error) {
        warn(error.what());
    }
}

void Bridge::publish_inventory(const Inventory &inventory)
{
    publish({.topic = topics.inventory(inventory.olt), .payload = to_json(inventory), .retained = true});
}

void Bridge::publish_state()
{
    std::unique_lock lock(guard);
    const BridgeState state{.online = true, .version = version, .olts = static_cast<uint32_t>(said.size())};
    lock.unlock();
    publish({.topic = topics.bridge(settings.name), .payload = to_json(state), .retained = true});
}

void Bridge::connected()
{
    log_line(LogLevel::info, "connected with the broker");
    std::vector<Inventory> known;
    {
        const std::lock_guard lock(guard);
        last_loss.clear();
        for (const auto &[name, olt] : said)
            if (olt.known) known.push_back(olt.inventory);
    }
    for (const Inventory &inventory : known)
        publish_inventory(inventory);
    publish_state();
    outbox.connected(connection);
}

void Bridge::lost(const std::string &reason)
{
    outbox.lost();
    const std::lock_guard lock(guard);
    if (std::exchange(last_loss, reason) != reason) warn("there is no connection with the broker: " + reason);
}

void Bridge::refused(size_t subscriptions)
{
    log_line(LogLevel::error, "the broker does not permit " + std::to_string(subscriptions) +
                                  " subscriptions to requests; see its access list");
}

void Bridge::acknowledged(int number, const std::string &error)
{
    if (number == last_number) last_number = 0;
    if (!outbox.acknowledged(number, error) && !error.empty()) warn("the broker does not take a message: " + error);
}

void Bridge::pass_over(const std::string &client, const std::string &reason)
{
    if (refusals.take(client)) warn("a request of " + client + " is passed over: " + reason);
}

void Bridge::arrived(Message message)
{
    const std::optional<CallTopic> topic = topics.read_call(message.topic);
    if (!topic) return pass_over("somebody", "its topic is none of requests");
    const std::string &client = topic->client;
    if (message.retained) return pass_over(client, "it was retained, so that nobody knows who waits for it");
    if (!topics.is_reply_to(client, message.response_topic))
        return pass_over(client, "its response topic is none of this client");
    if (message.correlation.size() > longest_correlation) return pass_over(client, "its correlation data is too long");
    std::optional<uint32_t> expiry;
    if (message.expiry)
        expiry = static_cast<uint32_t>(std::min<uint64_t>(uint64_t{1000} * *message.expiry, UINT32_MAX));
    engine->ask(topic->olt,
                {.client = client,
                 .address = "mqtt",
                 .impact = topic->impact,
                 .text = std::move(message.payload),
                 .expiry = expiry,
                 .came = Clock::now()},
                [this, response = std::move(message.response_topic),
                 correlation = std::move(message.correlation)](std::string answer) {
                    publish({.topic = response, .payload = std::move(answer), .correlation = correlation});
                });
}

} // namespace fleet
