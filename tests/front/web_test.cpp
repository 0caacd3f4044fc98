// These tests check what the answers to web browsers are made with.
#include <condition_variable>
#include <mutex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "web/confirmation.h"
#include "web/event_hub.h"
#include "web/json.h"
#include "web/pending.h"

namespace
{

using namespace front;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const view::Mac mac{2, 0, 0, 0, 0, 1};

std::shared_ptr<const OltState> state_with(std::vector<view::onu_info> onus)
{
    auto snapshot = std::make_shared<Snapshot>();
    auto rows = std::make_shared<Rows<view::onu_info>>();
    rows->rows = std::move(onus);
    snapshot->onus = rows;
    snapshot->states[static_cast<size_t>(Table::onus)].generation = 1;
    auto state = std::make_shared<OltState>();
    state->name = "north";
    state->snapshot = snapshot;
    return state;
}

view::onu_info onu(uint32_t port, std::optional<uint32_t> id, const char *state, uint8_t last)
{
    view::onu_info row{};
    row.pon_port = port;
    row.onu_id = id;
    row.mac = {2, 0, 0, 0, 0, last};
    row.state = state;
    return row;
}

class OneOlt : public KnownOlts
{
public:
    std::vector<OltDoor> olts() const override { return {{state, nullptr, {}}}; }
    std::shared_ptr<History> events() const override { return history; }

    std::shared_ptr<const OltState> state = state_with({});
    std::shared_ptr<History> history = std::make_shared<History>("", HistoryLimits{10});
};

std::vector<Event> kept(History &history, int count)
{
    Watcher::Found found;
    for (int number = 0; number < count; ++number)
        found.events.push_back({.at = number, .olt = "north", .kind = EventKind::onu_online, .port = 1});
    history.keep("north", {}, found);
    return found.events;
}

TEST(Json, WritesWhatIsNoUtf8AsItCan)
{
    Json json;
    json->StartObject();
    json.member("text", std::string_view("a\"\xff\n"));
    json.member("number", 0.0 / 0.0);
    json->EndObject();
    EXPECT_EQ(json.text(), R"({"text":"a\"\\xff\\x0a","number":null})");
}

TEST(State, CountsOtherContentsOnly)
{
    const auto first = state_with({onu(1, 1, "online", 1)});
    const auto read = [](const OltState &before, const char *state, uint64_t generation) {
        auto snapshot = std::make_shared<Snapshot>(*state_with({onu(1, 1, state, 1)})->snapshot);
        snapshot->states[static_cast<size_t>(Table::onus)].generation = generation;
        return state_behind(before, snapshot, {}, false);
    };
    const auto same = read(*first, "online", 2);
    EXPECT_EQ(same->versions, first->versions);
    EXPECT_EQ(same->version_of({Table::onus}), first->version_of({Table::onus}));
    const auto other = read(*same, "offline", 3);
    EXPECT_NE(other->version_of({Table::onus}), first->version_of({Table::onus}));
    EXPECT_EQ(other->version_of({Table::ports}), first->version_of({Table::ports}));
}

TEST(Hub, TellsTablesFirstAndThenWhatHappens)
{
    EventHub hub;
    OneOlt known;
    const auto listener = hub.listen(known, std::nullopt, [] { return true; });
    EXPECT_THAT(listener->next().value(), AllOf(HasSubstr("event: tables\n"), HasSubstr("\"olt\":\"north\"")));
    EXPECT_EQ(listener->next(), "");
    int woken = 0;
    hub.wakes([&] { ++woken; });
    hub.tell(kept(*known.history, 1));
    EXPECT_EQ(woken, 1);
    EXPECT_THAT(listener->next().value(), AllOf(StartsWith("event: event\nid: 1\ndata: {"), HasSubstr("onu_online")));
    hub.tell(*known.state, *known.state);
    EXPECT_EQ(listener->next(), "") << "nothing changed";
    hub.wakes({});
}

TEST(Hub, TellsAgainWhatWasMissed)
{
    EventHub hub;
    OneOlt known;
    kept(*known.history, 3);
    const auto listener = hub.listen(known, 1, [] { return true; });
    EXPECT_THAT(listener->next().value(), AllOf(HasSubstr("id: 2\n"), HasSubstr("id: 3\n"), Not(HasSubstr("id: 1\n"))));

    kept(*known.history, 20); // ten of them are kept
    EXPECT_THAT(hub.listen(known, 1, [] { return true; })->next().value(),
                HasSubstr("event: gap\ndata: {\"oldest\":14}"));
    EXPECT_THAT(hub.listen(known, 99, [] { return true; })->next().value(), HasSubstr("event: gap\n"));
}

TEST(Hub, TellsOfAGapToWhoListensTooSlowly)
{
    EventHub hub;
    OneOlt known;
    const auto listener = hub.listen(known, std::nullopt, [] { return true; });
    listener->next();
    const std::vector<Event> many(EventHub::most_messages + 1,
                                  {.id = 5, .olt = "north", .kind = EventKind::onu_online});
    hub.tell(many);
    EXPECT_THAT(listener->next().value(), AllOf(StartsWith("event: gap\n"), HasSubstr("event: tables\n")));
    EXPECT_EQ(listener->next(), "");
}

TEST(Hub, EndsWithTheSessionAndBoundsHowManyListen)
{
    EventHub hub;
    const OneOlt known;
    bool may = true;
    auto listener = hub.listen(known, std::nullopt, [&may] { return may; });
    may = false;
    EXPECT_EQ(listener->next(), std::nullopt);
    std::vector<std::unique_ptr<MessageSource>> others;
    while (auto other = hub.listen(known, std::nullopt, [] { return true; }))
        others.push_back(std::move(other));
    EXPECT_EQ(others.size() + 1, EventHub::most_listeners);
    listener.reset();
    EXPECT_NE(hub.listen(known, std::nullopt, [] { return true; }), nullptr);
}

TEST(Hits, AreWhatARequestNames)
{
    const auto state = state_with(
        {onu(1, 1, "online", 1), onu(1, 2, "offline", 2), onu(2, 1, "online", 3), onu(1, std::nullopt, "waiting", 4)});
    const auto count = [&](const call::Target &target) { return hits_of(*state, target).onus.size(); };
    call::Target target;
    EXPECT_EQ(count(target), 3u) << "all that is bound";
    target.port = "1";
    EXPECT_EQ(hits_of(*state, target).scope, "port");
    EXPECT_EQ(count(target), 2u);
    EXPECT_EQ(hits_of(*state, target).online, 1u);
    target.onu = 2;
    EXPECT_EQ(hits_of(*state, target).scope, "onus");
    EXPECT_EQ(count(target), 1u);
    target.onu.reset();
    target.mac = "02:00:00:00:00:04";
    EXPECT_EQ(count(target), 1u) << "one that waits, by its address";
    EXPECT_EQ(all_of(*state).scope, "olt");
}

TEST(Confirmations, AreGoodOnceForOneThingAndTime)
{
    Confirmations confirmations;
    const std::string good = confirmations.promise("a", 0);
    EXPECT_TRUE(confirmations.redeem(good, "a", 1));
    EXPECT_FALSE(confirmations.redeem(good, "a", 2)) << "again";
    EXPECT_FALSE(confirmations.redeem(confirmations.promise("a", 0), "b", 1)) << "for another thing";
    EXPECT_FALSE(confirmations.redeem(confirmations.promise("a", 0), "a", Confirmations::good_for)) << "too late";
    EXPECT_FALSE(confirmations.redeem("", "a", 0));
    const std::string first = confirmations.promise("a", 0);
    for (int number = 0; number < 2000; ++number)
        confirmations.promise("b", 1);
    EXPECT_FALSE(confirmations.redeem(first, "a", 1)) << "there are not without bound";
}

TEST(Light, IsKeptFinelyForAWhileAndThenByTheHour)
{
    History history("", {10});
    view::onu_optics_table row{};
    row.pon_port = 300;
    row.mac = mac;
    row.rx_power = -18.25;
    row.temperature = 41.5;
    constexpr UnixTime start = 1'000 * light_hour, step = light_step / 5;
    const UnixTime end = start + HistoryLimits().light + 24 * light_hour;
    for (UnixTime at = start; at <= end; at += step)
        history.keep_light("north", at, {&row, 1});
    const auto samples = [&](UnixTime from, UnixTime to) { return history.light_of("north", 300, mac, from, to); };
    EXPECT_EQ(samples(0, start + 23 * light_hour).size(), 24u) << "one an hour";
    EXPECT_EQ(samples(end - light_hour + 1, end).size(), 12u) << "one in five minutes";
    const LightSample last = samples(end, end).at(0);
    EXPECT_EQ(last.at, end);
    EXPECT_EQ(last.values[0], -18.25);
    EXPECT_EQ(last.values[1], std::nullopt);
    EXPECT_EQ(last.values[3], 41.5);
    EXPECT_TRUE(history.light_of("north", 1, mac, 0, end).empty());
    EXPECT_TRUE(history.light_of("south", 300, mac, 0, end).empty());
    for (UnixTime at = end; at <= end + HistoryLimits().hourly; at += light_hour)
        history.keep_light("north", at, {&row, 1});
    EXPECT_GE(samples(0, INT64_MAX).front().at, end);
}

TEST(EventQuery, FindsWhatIsAskedFor)
{
    History history("", {100});
    Watcher::Found found;
    const auto add = [&](Event event) { found.events.push_back(std::move(event)); };
    add({.at = 10, .olt = "north", .kind = EventKind::onu_offline, .port = 1, .onu_id = 5, .mac = "02:00:00:00:00:05"});
    add({.at = 20, .olt = "north", .kind = EventKind::onu_offline, .port = 1, .count = 3, .onus = "4-6"});
    add({.at = 30, .olt = "north", .kind = EventKind::onu_offline, .port = 1, .count = 2, .onus = "7,9"});
    add({.at = 40, .olt = "south", .kind = EventKind::onu_online, .port = 1, .onu_id = 5});
    history.keep("north", {}, found);
    const auto ids = [&](const EventQuery &query) {
        std::vector<uint64_t> all;
        for (const Event &event : history.find(query, 100))
            all.push_back(event.id);
        return all;
    };
    using testing::ElementsAre;
    EXPECT_THAT(ids({}), ElementsAre(4, 3, 2, 1));
    EXPECT_THAT(ids({.olt = "north", .port = 1, .mac = "02:00:00:00:00:05", .onu_id = 5}), ElementsAre(2, 1));
    EXPECT_THAT(ids({.kinds = {EventKind::onu_online, EventKind::light_low}}), ElementsAre(4));
    EXPECT_THAT(ids({.from = 20, .to = 30}), ElementsAre(3, 2));
    EXPECT_THAT(ids({.before = 3}), ElementsAre(2, 1));
    EXPECT_THAT(ids({.after = 3}), ElementsAre(4));
    EXPECT_EQ(history.find({}, 2).size(), 2u);
    EXPECT_EQ(history.bounds(), std::pair(uint64_t{1}, uint64_t{4}));
}

// Takes what waits back, and says so.
struct RolledBack {
    void operator()(const std::string &)
    {
        const std::lock_guard lock(guard);
        const auto text = pending->take("north");
        if (!text) return;
        pending->end("north", *text == "good");
        ++count;
        changed.notify_all();
    }
    std::mutex guard;
    std::condition_variable changed;
    int count = 0;
    PendingConfigurations *pending = nullptr;
};

TEST(Pending, GoesBackUnlessItIsConfirmed)
{
    using State = PendingConfigurations::State;
    RolledBack back;
    auto pending = std::make_unique<PendingConfigurations>([&back](const std::string &olt) { back(olt); });
    back.pending = pending.get();
    EXPECT_FALSE(pending->confirm("north"));
    ASSERT_TRUE(pending->keep("north", {.ends = INT64_MAX, .before = "good"}));
    EXPECT_FALSE(pending->keep("north", {.ends = INT64_MAX, .before = "other"})) << "one waits already";
    EXPECT_EQ(pending->of("north").state, State::waiting);
    EXPECT_TRUE(pending->confirm("north"));
    EXPECT_FALSE(pending->take("north"));

    ASSERT_TRUE(pending->keep("north", {.ends = 0, .before = "bad"}));
    {
        std::unique_lock lock(back.guard);
        back.changed.wait(lock, [&back] { return back.count == 1; });
    }
    EXPECT_EQ(pending->of("north").state, State::failed);
    EXPECT_EQ(pending->take("north"), "bad") << "it can be tried again";
    pending->end("north", true);
    EXPECT_EQ(pending->of("north").state, State::rolled_back);

    ASSERT_TRUE(pending->keep("north", {.ends = INT64_MAX, .before = "good"}));
    pending.reset();
    EXPECT_EQ(back.count, 2) << "nobody can confirm it any more";
}

} // namespace
