// These tests check the forwarding database: learning, ageing, flushing, limits, and the MAC tables.
#include "model/olt/fdb.h"

#include <set>

#include "forwarding.h"
#include "model/olt/llid.h"
#include "model/olt/uni_config.h"
#include "model/plant/device.h"
#include "rows.h"
#include "uni.h"
#include "views/forwarding.h"

namespace ponsim
{
namespace
{

constexpr uint32_t every_station_has_sent = 10; // s; by then every station has sent

Reply query(ServiceFixture &fixture, uint32_t command = BSP_CMD_MAC_GET, const FdbFilter &filter = {},
            uint32_t from = 0, uint32_t count = 0)
{
    return ask(fixture, PlatRecord(command, 0)
                            .put(layout::mac_query::from, from)
                            .put(layout::mac_query::count, count)
                            .put(layout::mac_query::port, filter.port)
                            .put(layout::mac_query::llid, filter.llid)
                            .put(layout::mac_query::uni, filter.uni)
                            .put(layout::mac_query::vlan, filter.vlan)
                            .put(layout::mac_query::mac, filter.mac));
}

// Returns how many entries there are.
uint32_t matching(ServiceFixture &fixture, const FdbFilter &filter = {}, uint32_t command = BSP_CMD_MAC_GET)
{
    const Reply reply = query(fixture, command, filter);
    EXPECT_EQ(reply.status, BSP_OK);
    return number_at(reply, layout::mac_count::matching);
}

uint32_t configure(ServiceFixture &fixture, const FdbConfig &config)
{
    return send(fixture, PlatRecord(BSP_CMD_FDB_CFG_SET, 0)
                             .put(layout::fdb_config::ageing, config.ageing)
                             .put(layout::fdb_config::learning, config.learning)
                             .put(layout::fdb_config::port_limit, config.port_limit));
}

uint32_t flush(ServiceFixture &fixture, uint16_t side, const FdbFilter &filter = {})
{
    return send(fixture, PlatRecord(BSP_CMD_FDB_FLUSH, 0)
                             .put(layout::fdb_flush::side, side)
                             .put(layout::fdb_flush::port, filter.port)
                             .put(layout::fdb_flush::llid, filter.llid)
                             .put(layout::fdb_flush::vlan, filter.vlan)
                             .put(layout::fdb_flush::mac, filter.mac));
}

uint32_t behave(ServiceFixture &fixture, uint32_t llid, Frames frames, uint32_t mac_limit = 0)
{
    PlatRecord request(BSP_CMD_LLID_BEHAVIOR_SET, 1, llid);
    request.record.plat_arg108 = static_cast<uint32_t>(frames);
    return send(fixture, std::move(request).put(layout::llid_behavior::mac_limit, mac_limit));
}

void cut_off(ServiceFixture &fixture, uint32_t pon_port, bool off = true)
{
    bsp_pon_msg record = record_of(BSP_CMD_OPT_RANGE_SET, pon_port);
    put(record, layout::opt_range::max_distance, off ? 0 : 20000);
    EXPECT_EQ(fixture.send(record), BSP_OK);
}

// Returns the entries that the filter selects.
std::vector<FdbEntry> entries(const ServiceFixture &fixture, const FdbFilter &filter = {})
{
    return fixture.simulator.olt().fdb().entries(filter, fixture.simulator.olt().now());
}

// This OLT has two ports with eight ONUs each, all bound from id 1 on.
struct Bound : ServiceFixture {
    explicit Bound(const std::string &file = {}) : ServiceFixture(everyone_online(2, 8), file)
    {
        for (uint32_t pon_port : {1, 2})
            for (uint32_t index = 0; index < 8; ++index)
                bind_arrived(*this, pon_port, index + 1, index);
    }
};

// This is the same OLT after its stations have been learned.
struct Learned : Bound {
    Learned() { let_pass(*this, every_station_has_sent); }
};

size_t stations_at(const ServiceFixture &fixture, uint32_t pon_port)
{
    size_t count = 0;
    for (const Arrival &arrival : fixture.port(pon_port).arrivals)
        count +=
            stations_up(fixture.simulator.olt().seed(), arrival.mac, fixture.simulator.olt().device_of(arrival.mac))
                .size();
    return count;
}

TEST(Stations, NoTwoOfAnOltHaveTheSameAddress)
{
    const Settings settings{.seed = 3, .ports = 16, .arrivals = 128, .silent = 0};
    std::set<Mac> macs;
    size_t count = 0;
    const auto add = [&](const std::vector<Station> &stations) {
        count += stations.size();
        for (const Station &station : stations)
            EXPECT_TRUE(is_station(station.mac) && macs.insert(station.mac).second);
    };
    for (uint32_t pon_port = 1; pon_port <= settings.ports; ++pon_port)
        for (const Arrival &arrival : population_at(settings, pon_port).arrivals) {
            EXPECT_TRUE(macs.insert(arrival.mac).second);
            add(stations_behind(settings.seed, arrival.mac, device_of(settings.seed, arrival.mac)));
        }
    add(network_stations(settings.seed));
    EXPECT_GT(count, 2048u);
}

TEST(Stations, AreBehindEveryUniPort)
{
    for (uint8_t last = 0; last < 50; ++last) {
        const Device device = device_of(1, stranger(last));
        std::set<uint32_t> with_stations;
        for (const Station &station : stations_behind(1, stranger(last), device))
            with_stations.insert(station.port);
        EXPECT_EQ(with_stations.size(), device.unis.size());
        EXPECT_EQ(*with_stations.rbegin(), device.unis.size());
    }
}

// Returns the UNI ports of an ONU at port 1 that have entries.
std::set<uint32_t> learned_unis(const ServiceFixture &fixture, uint32_t onu_id)
{
    std::set<uint32_t> unis;
    const Olt &olt = fixture.simulator.olt();
    for (const FdbEntry &entry : olt.fdb().entries({.network = false, .port = 1, .llid = to_llid(onu_id)}, olt.now()))
        unis.insert(entry.uni);
    return unis;
}

TEST(Fdb, HasOnlyStationsBehindUniPortsThatAreUp)
{
    Learned fixture;
    const Olt &olt = fixture.simulator.olt();
    for (const RemoteOnu &onu : onus_of(olt, fixture.port(1))) {
        std::set<uint32_t> up;
        const std::vector<std::optional<LinkMode>> links = uni_links(olt, onu);
        for (uint32_t index = 0; index < links.size(); ++index)
            if (links[index]) up.insert(index + 1);
        EXPECT_EQ(learned_unis(fixture, onu.onu_id), up);
    }
}

TEST(Fdb, ForgetsStationsBehindAUniPortThatIsDisabled)
{
    UniFixture fixture;
    fixture.pass(longest_silence);
    const std::set<uint32_t> before = learned_unis(fixture, 5);
    ASSERT_GE(before.size(), 2u);
    const uint32_t uni = *before.begin();
    ASSERT_EQ(fixture.send_setting(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ADMIN_STATE_SET, uni, word_block(0)), BSP_OK);
    fixture.pass(290 * ms_per_second);
    EXPECT_EQ(learned_unis(fixture, 5), before) << "they have not aged out";
    fixture.pass(20 * ms_per_second);
    std::set<uint32_t> others = before;
    others.erase(uni);
    EXPECT_EQ(learned_unis(fixture, 5), others);
    ASSERT_EQ(fixture.send_setting(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ADMIN_STATE_SET, uni, word_block(1)), BSP_OK);
    fixture.pass(oam_delay + longest_silence);
    EXPECT_EQ(learned_unis(fixture, 5), before);
}

TEST(Stations, SendEvery2To8Seconds)
{
    for (const Station &station : network_stations(1)) {
        const ModelTime first = station.next_frame(20000);
        const ModelTime second = station.next_frame(first);
        EXPECT_GT(first, 20000u);
        EXPECT_GE(second - first, 2000u);
        EXPECT_LE(second - first, 8000u);
        EXPECT_EQ(station.last_frame(first), first);
        EXPECT_EQ(station.last_frame(second - 1), first);
    }
}

TEST(Fdb, TheStationsOfOnlineOnusAreLearnedAsTheySend)
{
    Bound fixture;
    EXPECT_EQ(matching(fixture), 0u);
    let_pass(fixture, 3);
    const uint32_t some = matching(fixture);
    let_pass(fixture, every_station_has_sent);
    EXPECT_GT(some, 0u);
    EXPECT_LT(some, matching(fixture));
    EXPECT_EQ(matching(fixture), stations_at(fixture, 1) + stations_at(fixture, 2));
}

TEST(Fdb, AnOnuThatIsNotBoundOrSilentIsNotHeard)
{
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 2, .silent = 100});
    bind_arrived(fixture, 1, 1, 0);
    let_pass(fixture, every_station_has_sent);
    EXPECT_EQ(matching(fixture), 0u);
}

TEST(Fdb, TheNetworkSideIsAlwaysHeard)
{
    ServiceFixture fixture(everyone_online());
    let_pass(fixture, every_station_has_sent);
    EXPECT_EQ(matching(fixture, {}, BSP_CMD_MAC_NNI_GET), network_stations(1).size());
    let_pass(fixture, 100000);
    EXPECT_EQ(matching(fixture, {}, BSP_CMD_MAC_NNI_GET), network_stations(1).size());
}

TEST(Fdb, EntriesOfAnOnuThatGoesOfflineAgeOut)
{
    Learned fixture;
    const uint32_t before = matching(fixture, {.port = 1});
    cut_off(fixture, 1);
    let_pass(fixture, 290);
    EXPECT_EQ(matching(fixture, {.port = 1}), before);
    let_pass(fixture, 10);
    EXPECT_EQ(matching(fixture, {.port = 1}), 0u);
    EXPECT_EQ(matching(fixture, {.port = 2}), stations_at(fixture, 2));
}

TEST(Fdb, AReleasedOnusEntriesKeepItsLastId)
{
    Learned fixture;
    const uint32_t before = matching(fixture, {.port = 1, .llid = to_llid(3)});
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 3));
    let_pass(fixture, 100);
    EXPECT_EQ(matching(fixture, {.port = 1, .llid = to_llid(3)}), before);
    let_pass(fixture, 300);
    EXPECT_EQ(matching(fixture, {.port = 1, .llid = to_llid(3)}), 0u);
}

TEST(Fdb, AnEntryThatIsRefreshedInTimeStaysAsItWas)
{
    Learned fixture;
    const ModelTime since = entries(fixture, {.network = false, .port = 1}).at(0).since;
    cut_off(fixture, 1);
    let_pass(fixture, 200);
    cut_off(fixture, 1, false);
    let_pass(fixture, 1000);
    const FdbEntry entry = entries(fixture, {.network = false, .port = 1}).at(0);
    EXPECT_EQ(entry.since, since);
    EXPECT_LE(fixture.simulator.olt().now() - entry.seen, longest_silence);
}

TEST(Fdb, AnEntryThatAgedOutIsLearnedAnew)
{
    Learned fixture;
    const ModelTime since = entries(fixture, {.network = false, .port = 1}).at(0).since;
    cut_off(fixture, 1);
    let_pass(fixture, 1000);
    cut_off(fixture, 1, false);
    EXPECT_EQ(matching(fixture, {.port = 1}), 0u);
    let_pass(fixture, every_station_has_sent);
    EXPECT_GT(entries(fixture, {.network = false, .port = 1}).at(0).since, since);
}

TEST(Fdb, HowItIsLookedAtDoesNotMatter)
{
    Learned often;
    Learned once;
    cut_off(often, 1);
    cut_off(once, 1);
    for (int i = 0; i < 29; ++i) {
        let_pass(often, 10);
        matching(often);
    }
    let_pass(once, 290);
    EXPECT_EQ(query(often).result, query(once).result);
}

TEST(Fdb, TheAgeingTimeIsConfigured)
{
    Learned fixture;
    EXPECT_EQ(configure(fixture, {.ageing = 20}), BSP_OK);
    cut_off(fixture, 1);
    let_pass(fixture, 20);
    EXPECT_EQ(matching(fixture, {.port = 1}), 0u);
    EXPECT_EQ(configure(fixture, {.ageing = 0}), BSP_OK);
    cut_off(fixture, 2);
    let_pass(fixture, 2000000);
    EXPECT_EQ(matching(fixture, {.port = 2}), stations_at(fixture, 2));
}

TEST(Fdb, TheAgeingIsTold)
{
    Learned fixture;
    configure(fixture, {.ageing = 77});
    const Reply reply = ask(fixture, PlatRecord(BSP_CMD_MAC_AGE_GET, 0));
    EXPECT_EQ(number_at(reply, layout::At<uint32_t>{120}), 77u);
    EXPECT_EQ(number_at(reply, layout::At<uint32_t>{112}),
              matching(fixture) + matching(fixture, {}, BSP_CMD_MAC_NNI_GET));
}

TEST(Fdb, WithoutLearningNothingIsLearnedAndEverythingAges)
{
    Learned fixture;
    const uint32_t before = matching(fixture);
    EXPECT_EQ(configure(fixture, {.learning = 0}), BSP_OK);
    EXPECT_EQ(matching(fixture), before);
    let_pass(fixture, 300);
    EXPECT_EQ(matching(fixture) + matching(fixture, {}, BSP_CMD_MAC_NNI_GET), 0u);
    configure(fixture, {});
    let_pass(fixture, every_station_has_sent);
    EXPECT_EQ(matching(fixture), before);
}

TEST(Fdb, APortHasNoMoreThanItsLimit)
{
    Learned fixture;
    EXPECT_EQ(configure(fixture, {.port_limit = 5}), BSP_OK);
    EXPECT_EQ(matching(fixture, {.port = 1}), 5u);
    EXPECT_EQ(matching(fixture), 10u);
}

TEST(Fdb, ThoseThatWereLearnedFirstStayWithinTheLimit)
{
    Learned fixture;
    std::vector<FdbEntry> all = entries(fixture, {.network = false, .port = 1});
    std::ranges::sort(all, {}, &FdbEntry::since);
    configure(fixture, {.port_limit = 1});
    EXPECT_EQ(entries(fixture, {.network = false, .port = 1}).at(0).since, all.front().since);
}

TEST(Fdb, AConfigurationHasToMakeSense)
{
    ServiceFixture fixture(everyone_online());
    for (const FdbConfig &bad : {FdbConfig{.ageing = 9}, FdbConfig{.ageing = 1000001}, FdbConfig{.learning = 2}})
        EXPECT_EQ(configure(fixture, bad), PON_ERR_BAD_RECORD);
    EXPECT_EQ(configure(fixture, {.ageing = 10}), BSP_OK);
    EXPECT_EQ(configure(fixture, {.ageing = 1000000}), BSP_OK);
}

TEST(Fdb, FlushedEntriesComeBackWhenTheirStationsSend)
{
    Learned fixture;
    const uint32_t before = matching(fixture);
    EXPECT_EQ(flush(fixture, 0), BSP_OK);
    EXPECT_EQ(matching(fixture) + matching(fixture, {}, BSP_CMD_MAC_NNI_GET), 0u);
    let_pass(fixture, every_station_has_sent);
    EXPECT_EQ(matching(fixture), before);
}

TEST(Fdb, FlushedEntriesOfAnOfflineOnuStayAway)
{
    Learned fixture;
    cut_off(fixture, 1);
    flush(fixture, 1);
    let_pass(fixture, every_station_has_sent);
    EXPECT_EQ(matching(fixture, {.port = 1}), 0u);
    EXPECT_EQ(matching(fixture, {.port = 2}), stations_at(fixture, 2));
}

TEST(Fdb, AFlushForgetsWhatItsFilterHoldsForAndNothingElse)
{
    const auto left_after = [](uint16_t side, const FdbFilter &filter) {
        Learned fixture;
        EXPECT_EQ(flush(fixture, side, filter), BSP_OK);
        return entries(fixture).size();
    };
    Learned fixture;
    const std::vector<FdbEntry> all = entries(fixture);
    const auto without = [&](auto matches) {
        return all.size() - static_cast<size_t>(std::ranges::count_if(all, matches));
    };
    const FdbEntry &first = all.front();
    EXPECT_EQ(left_after(1, {}), without([](const FdbEntry &entry) { return entry.onu_id.has_value(); }));
    EXPECT_EQ(left_after(2, {}), without([](const FdbEntry &entry) { return !entry.onu_id; }));
    EXPECT_EQ(left_after(1, {.port = 2}),
              without([](const FdbEntry &entry) { return entry.onu_id && entry.port == 2; }));
    EXPECT_EQ(left_after(2, {.port = 2}),
              without([](const FdbEntry &entry) { return !entry.onu_id && entry.port == 2; }));
    EXPECT_EQ(left_after(1, {.port = first.port, .llid = to_llid(*first.onu_id)}),
              without([&](const FdbEntry &entry) { return entry.port == first.port && entry.onu_id == first.onu_id; }));
    EXPECT_EQ(left_after(0, {.vlan = 1}), without([](const FdbEntry &entry) { return entry.vlan == 1; }));
    EXPECT_EQ(left_after(0, {.mac = first.mac}), all.size() - 1);
}

TEST(Fdb, AFlushReachesWhatALimitHides)
{
    Learned fixture;
    configure(fixture, {.port_limit = 1});
    flush(fixture, 1);
    EXPECT_EQ(matching(fixture), 0u);
}

TEST(Fdb, AFilterHasToMakeSense)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(flush(fixture, 3), PON_ERR_BAD_RECORD);
    EXPECT_EQ(flush(fixture, 0, {.port = 1}), PON_ERR_BAD_RECORD);
    EXPECT_EQ(flush(fixture, 1, {.port = 3}), PON_ERR_NO_PORT);
    EXPECT_EQ(flush(fixture, 2, {.port = 5}), PON_ERR_NO_PORT);
    EXPECT_EQ(flush(fixture, 2, {.llid = 1}), PON_ERR_BAD_RECORD);
    EXPECT_EQ(flush(fixture, 1, {.llid = 129}), PON_ERR_BAD_LLID);
    EXPECT_EQ(query(fixture, BSP_CMD_MAC_GET, {.port = 3}).status, PON_ERR_NO_PORT);
    EXPECT_EQ(query(fixture, BSP_CMD_MAC_NNI_GET, {.uni = 1}).status, PON_ERR_BAD_RECORD);
    EXPECT_EQ(query(fixture, BSP_CMD_MAC_GET, {}, 0, 101).status, PON_ERR_BAD_RECORD);
}

TEST(Fdb, IsForgottenByARestartButItsConfigurationIsNot)
{
    Folder folder;
    {
        Bound fixture(folder.file("olt.db"));
        configure(fixture, {.ageing = 30, .port_limit = 2});
        let_pass(fixture, every_station_has_sent);
        EXPECT_EQ(matching(fixture), 4u);
        fixture.simulator.keep_time();
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(matching(fixture) + matching(fixture, {}, BSP_CMD_MAC_NNI_GET), 0u);
    let_pass(fixture, every_station_has_sent);
    EXPECT_EQ(matching(fixture), 4u);
    cut_off(fixture, 1);
    let_pass(fixture, 30);
    EXPECT_EQ(matching(fixture, {.port = 1}), 0u);
}

TEST(LlidBehavior, LimitsWhatIsLearnedFromALink)
{
    Learned fixture;
    ASSERT_GT(matching(fixture, {.port = 1, .llid = 2}), 1u);
    EXPECT_EQ(behave(fixture, 2, Frames::learned, 1), BSP_OK);
    EXPECT_EQ(matching(fixture, {.port = 1, .llid = 2}), 1u);
    EXPECT_EQ(behave(fixture, 2, Frames::learned, 0), BSP_OK);
    EXPECT_GT(matching(fixture, {.port = 1, .llid = 2}), 1u);
}

TEST(LlidBehavior, OfALinkThatIsNotLearnedFromOrDroppedEntriesAge)
{
    for (Frames frames : {Frames::forwarded, Frames::dropped}) {
        Learned fixture;
        EXPECT_EQ(behave(fixture, 2, frames), BSP_OK);
        EXPECT_GT(matching(fixture, {.port = 1, .llid = 2}), 0u);
        let_pass(fixture, 300);
        EXPECT_EQ(matching(fixture, {.port = 1, .llid = 2}), 0u);
    }
}

TEST(LlidBehavior, IsOfTheLinkNotOfTheOnu)
{
    Learned fixture;
    behave(fixture, 2, Frames::dropped);
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 1));
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 2));
    bind_arrived(fixture, 1, 2, 0);
    let_pass(fixture, 300);
    EXPECT_GT(matching(fixture, {.port = 1, .llid = 3}), 0u);
    EXPECT_EQ(llid_behavior(fixture.simulator.olt(), 1, 2).frames, Frames::dropped);
}

TEST(LlidBehavior, HasToMakeSense)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(behave(fixture, 0, Frames::learned), PON_ERR_BAD_LLID);
    EXPECT_EQ(behave(fixture, 129, Frames::learned), PON_ERR_BAD_LLID);
    EXPECT_EQ(behave(fixture, 128, Frames::learned), BSP_OK);
    EXPECT_EQ(behave(fixture, 1, Frames{3}), PON_ERR_BAD_RECORD);
    EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_LLID_BEHAVIOR_SET, 3, 1)), PON_ERR_NO_PORT);
    for (const auto at : {layout::llid_behavior::broadcast_rate, layout::llid_behavior::multicast_rate,
                          layout::llid_behavior::unknown_rate})
        EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_LLID_BEHAVIOR_SET, 1, 1).put(at, 1000001)), PON_ERR_BAD_RECORD);
    for (const auto at : {layout::llid_behavior::over_limit, layout::llid_behavior::isolated})
        EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_LLID_BEHAVIOR_SET, 1, 1).put(at, 2)), PON_ERR_BAD_RECORD);
}

TEST(LlidBehavior, SurvivesARestart)
{
    Folder folder;
    {
        Bound fixture(folder.file("olt.db"));
        behave(fixture, 2, Frames::learned, 1);
        behave(fixture, 3, Frames::dropped);
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    let_pass(fixture, every_station_has_sent);
    EXPECT_EQ(matching(fixture, {.port = 1, .llid = 2}), 1u);
    EXPECT_EQ(matching(fixture, {.port = 1, .llid = 3}), 0u);
}

TEST(MacTable, ShowsWhereAStationIs)
{
    Learned fixture;
    const FdbEntry entry = entries(fixture).front();
    EXPECT_EQ(query(fixture, BSP_CMD_MAC_GET, {.mac = entry.mac}).result,
              R"([{"pon_port":1,"onu_id":)" + std::to_string(*entry.onu_id) + R"(,"uni":)" + std::to_string(entry.uni) +
                  R"(,"vlan":)" + std::to_string(entry.vlan) + R"(,"mac":")" + text::mac_text(entry.mac) +
                  R"(","age":)" + std::to_string((fixture.simulator.olt().now() - entry.seen) / 1000) + "}]");
}

TEST(MacTable, IsPagedByFromAndCount)
{
    Learned fixture;
    const rapidjson::Document all = parse(query(fixture).result.value());
    const Reply page = query(fixture, BSP_CMD_MAC_GET, {}, 3, 2);
    const rapidjson::Document rows = parse(page.result.value());
    ASSERT_EQ(rows.Size(), 2u);
    EXPECT_EQ(rows[0], all[3]);
    EXPECT_EQ(rows[1], all[4]);
    EXPECT_EQ(number_at(page, layout::mac_count::matching), all.Size());
    EXPECT_EQ(query(fixture, BSP_CMD_MAC_GET, {}, 0xffffffff, 2).result, "[]");
}

TEST(MacTable, OfTheNetworkSideNamesUplinks)
{
    Learned fixture;
    const rapidjson::Document rows = parse(query(fixture, BSP_CMD_MAC_NNI_GET).result.value());
    ASSERT_EQ(rows.Size(), network_stations(1).size());
    for (const auto &row : rows.GetArray()) {
        EXPECT_GE(row["uplink"].GetUint(), 1u);
        EXPECT_LE(row["uplink"].GetUint(), ge_uplinks);
    }
}

TEST(MacTable, TheLongestStaysWithin10240)
{
    const std::vector<FdbEntry> longest(max_shown, FdbEntry{16, 127, 4, 4094, stranger(1), 0, 0});
    // Without ageing an entry may be as old as model time can be.
    EXPECT_LE(mac_table(longest, ModelTime{0xffffffff} * ms_per_second).size(), platform_result);
    EXPECT_LE(network_mac_table(longest, ModelTime{0xffffffff} * ms_per_second).size(), platform_result);
}

} // namespace
} // namespace ponsim
