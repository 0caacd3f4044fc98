// These tests check which events follow from what changes between two readings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "watch/watcher.h"

namespace
{

using namespace front;
using testing::ElementsAre;
using testing::IsEmpty;

view::Mac mac_of(uint8_t last)
{
    return {2, 0, 0, 0, 0, last};
}

view::onu_info onu(uint32_t id, std::string_view state, uint32_t port = 1)
{
    view::onu_info row{};
    row.pon_port = port;
    if (state != "waiting") row.onu_id = id;
    row.mac = mac_of(static_cast<uint8_t>(id));
    row.state = state;
    return row;
}

view::onu_alarm alarm(std::string_view name, std::optional<uint32_t> id, std::string_view cause,
                      std::string_view place = {})
{
    view::onu_alarm row{};
    row.pon_port = 1;
    row.onu_id = id;
    if (id) row.mac = mac_of(static_cast<uint8_t>(*id));
    row.name = name;
    row.state = "active";
    row.cause = cause;
    if (!place.empty()) row.place = place;
    return row;
}

view::onu_optics_table light(uint32_t id, std::optional<double> at_olt)
{
    view::onu_optics_table row{};
    row.pon_port = 1;
    row.onu_id = id;
    row.mac = mac_of(static_cast<uint8_t>(id));
    row.olt_rx_power = at_olt;
    return row;
}

// An Observed is an OLT whose tables the test writes.
class Observed : public testing::Test
{
protected:
    template <class Row>
    void set(Table table, std::shared_ptr<const Rows<Row>> Snapshot::*member, std::vector<Row> rows)
    {
        auto made = std::make_shared<Rows<Row>>();
        made->rows = std::move(rows);
        snapshot.*member = made;
        TableState &state = snapshot.states[static_cast<size_t>(table)];
        ++state.generation;
        state.read = now;
    }
    void onus(std::vector<view::onu_info> rows) { set(Table::onus, &Snapshot::onus, std::move(rows)); }
    void alarms(std::vector<view::onu_alarm> rows) { set(Table::alarms, &Snapshot::alarms, std::move(rows)); }
    void optics(std::vector<view::onu_optics_table> rows) { set(Table::optics, &Snapshot::optics, std::move(rows)); }

    // Returns what happened, each event in a line.
    std::vector<std::string> happened(Watcher &watching)
    {
        std::vector<std::string> lines;
        for (const Event &event : watching.look(snapshot, now).events)
            lines.push_back(sentence_of(event));
        now += 5'000;
        return lines;
    }
    std::vector<std::string> happened() { return happened(watcher); }

    Snapshot snapshot;
    UnixTime now = 1'700'000'000'000;
    Watcher watcher{"north", {}};
};

TEST_F(Observed, WhatIsThereAtFirstIsNoEvent)
{
    onus({onu(1, "online"), onu(2, "offline"), onu(3, "waiting")});
    alarms({alarm("los", 2, "fibre")});
    EXPECT_THAT(happened(), IsEmpty());
}

TEST_F(Observed, TellsWhoComesAndGoes)
{
    onus({onu(1, "online")});
    alarms({});
    happened();
    onus({onu(1, "online"), onu(2, "waiting")});
    alarms({});
    EXPECT_THAT(happened(), ElementsAre("north: ONU 02:00:00:00:00:02 at port 1 waits to be bound"));
    onus({onu(1, "online"), onu(2, "online")});
    alarms({});
    EXPECT_THAT(happened(), ElementsAre("north: ONU 1/2 02:00:00:00:00:02 is online"));
    onus({onu(2, "online")});
    alarms({});
    EXPECT_THAT(happened(), ElementsAre("north: ONU 1/1 02:00:00:00:00:01 is gone"));
}

TEST_F(Observed, TellsWhyAnOnuIsOffline)
{
    onus({onu(1, "online")});
    alarms({});
    happened();
    onus({onu(1, "offline")});
    alarms({alarm("dying_gasp", 1, "power")});
    EXPECT_THAT(happened(), ElementsAre("north: ONU 1/1 02:00:00:00:00:01 is offline, power",
                                        "north: ONU 1/1 02:00:00:00:00:01 has an alarm: dying_gasp, power"));
}

TEST_F(Observed, WaitsForTheAlarmsThatSayWhy)
{
    onus({onu(1, "online")});
    alarms({});
    happened();
    onus({onu(1, "offline")});
    EXPECT_THAT(happened(), IsEmpty()) << "the alarms are older than the state";
    alarms({alarm("los", 1, "fibre", "drop-1")});
    EXPECT_THAT(happened(), testing::Contains("north: ONU 1/1 02:00:00:00:00:01 is offline, fibre at drop-1"));
}

TEST_F(Observed, ACutFeederIsOneEvent)
{
    std::vector<view::onu_info> up, down;
    std::vector<view::onu_alarm> raised{alarm("port_los", std::nullopt, "fibre", "feeder")};
    for (uint32_t id = 1; id <= 128; ++id) {
        up.push_back(onu(id, "online"));
        down.push_back(onu(id, "offline"));
        raised.push_back(alarm("los", id, "port_los"));
    }
    onus(up);
    alarms({});
    happened();
    onus(down);
    alarms(raised);
    EXPECT_THAT(happened(), ElementsAre("north: 128 ONUs of port 1 (1-128) are offline, port_los",
                                        "north: port 1 has an alarm: port_los, fibre at feeder",
                                        "north: 128 ONUs of port 1 (1-128) have an alarm: los, port_los"));
}

TEST_F(Observed, LightIsLowUntilItIsWellBeyondTheLimit)
{
    optics({light(1, -20.0)});
    happened();
    optics({light(1, -27.5)});
    EXPECT_THAT(happened(),
                ElementsAre("north: ONU 1/1 02:00:00:00:00:01 has too little light: -27.50 dBm at the OLT"));
    optics({light(1, -26.5)});
    EXPECT_THAT(happened(), IsEmpty()) << "between the limits nothing changes";
    optics({light(1, std::nullopt)});
    EXPECT_THAT(happened(), IsEmpty()) << "what is not measured stays as it was";
    optics({light(1, -25.0)});
    EXPECT_THAT(happened(),
                ElementsAre("north: ONU 1/1 02:00:00:00:00:01 has enough light again: -25.00 dBm at the OLT"));
    optics({light(1, -26.5)});
    EXPECT_THAT(happened(), IsEmpty());
}

TEST_F(Observed, RogueAndUplinksHaveEventsOfTheirOwn)
{
    alarms({});
    happened();
    view::onu_alarm uplink = alarm("uplink_down", std::nullopt, "unknown", "uplink 2");
    uplink.pon_port = 0;
    alarms({uplink, alarm("rogue", std::nullopt, "rogue")});
    EXPECT_THAT(happened(), ElementsAre("north: uplink 2 has no link, unknown",
                                        "north: port 1 is blinded by a rogue ONU: rogue, rogue"));
    alarms({});
    EXPECT_THAT(happened(), ElementsAre("north: uplink 2 has a link again, unknown",
                                        "north: port 1 is blinded no more: rogue, rogue"));
}

TEST_F(Observed, AnOltIsLostOnceTwoReadingsFailed)
{
    onus({});
    alarms({});
    happened();
    TableState &state = snapshot.states[static_cast<size_t>(Table::onus)];
    state.failed = 1;
    EXPECT_THAT(happened(), IsEmpty());
    state.failed = 2;
    EXPECT_THAT(happened(), ElementsAre("north: the OLT does not answer any more"));
    state.failed = 0;
    EXPECT_THAT(happened(), ElementsAre("north: the OLT answers again"));
}

TEST_F(Observed, WhatChangedWhileNobodyLookedIsAnEvent)
{
    onus({onu(1, "online")});
    alarms({});
    happened();
    Watcher restarted("north", {}, watcher.what_is_known());
    onus({onu(1, "offline")});
    alarms({});
    EXPECT_THAT(happened(restarted), ElementsAre("north: ONU 1/1 02:00:00:00:00:01 is offline"));
}

TEST_F(Observed, KnowsSinceWhenItIsSo)
{
    onus({onu(1, "online")});
    alarms({});
    happened();
    const FactKey key{FactKind::onu, 1, "02:00:00:00:00:01", {}};
    EXPECT_EQ(watcher.what_is_known().facts.at(key).since, 0) << "nobody knows since when";
    onus({onu(1, "offline")});
    alarms({});
    const UnixTime then = now;
    happened();
    onus({onu(1, "offline")});
    alarms({});
    happened();
    EXPECT_EQ(watcher.what_is_known().facts.at(key).since, then);
}

TEST_F(Observed, NamesAStoreWhatItHasToKeep)
{
    onus({onu(1, "online"), onu(2, "online")});
    alarms({});
    EXPECT_EQ(watcher.look(snapshot, now).changes.size(), 3u) << "two ONUs, and that the OLT is reached";
    onus({onu(1, "online")});
    alarms({});
    const auto found = watcher.look(snapshot, now);
    ASSERT_EQ(found.changes.size(), 1u);
    EXPECT_EQ(found.changes[0].key.mac, "02:00:00:00:00:02");
    EXPECT_EQ(found.changes[0].fact, std::nullopt);
}

} // namespace
