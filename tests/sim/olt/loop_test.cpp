// These tests check loops behind UNI ports, and ONUs that lose their power: what comes from outside, and what the OLT
// makes of it.
#include "model/port/loops.h"

#include "model/lifecycle/registration.h"
#include "model/plant/device.h"
#include "optics.h"
#include "rows.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;

Reply ask(ServiceFixture &fixture, uint32_t command, uint32_t argument = 0)
{
    bsp_pon_msg_ext record{};
    record.cmd = command;
    record.ext_arg = argument;
    return fixture.simulator.handle({BSP_MSG_LOOP_DETECT, &record, sizeof record});
}

uint32_t order(ServiceFixture &fixture, uint32_t command, uint32_t argument = 0)
{
    return ask(fixture, command, argument).status;
}

// Returns a word of the configuration.
uint32_t config(ServiceFixture &fixture, layout::At<uint32_t> at)
{
    const Reply reply = ask(fixture, BSP_CMD_LOOP_CONFIG_GET);
    EXPECT_EQ(reply.status, BSP_OK);
    EXPECT_EQ(reply.answer.value_or("").size(), sizeof(bsp_pon_msg_ext));
    return layout::load(reply.answer->data(), at);
}

rapidjson::Document rows(ServiceFixture &fixture)
{
    return parse(ask(fixture, BSP_CMD_LOOP_INFO).result.value_or("no result"));
}

std::string state(ServiceFixture &fixture)
{
    const auto found = rows(fixture);
    return found.Size() == 1 ? found[0]["state"].GetString() : std::to_string(found.Size()) + " rows";
}

// In this fixture ONU 5 of port 1 is online, and detection is on.
struct LoopFixture : ServiceFixture {
    Mac mac;

    explicit LoopFixture(const std::string &file = {}) : ServiceFixture(lively(), file), mac(port(1).arrivals[0].mac)
    {
        bind_arrival(*this, 5);
        order(*this, BSP_CMD_LOOP_STATE_SET, 1);
    }
    void say(const std::string &before, const std::string &after, uint32_t pon_port = 1)
    {
        control_line(*this, before + ' ' + std::to_string(pon_port) + ' ' + text::mac_text(mac) + ' ' + after);
    }
};

std::string refusal(ServiceFixture &fixture, const std::string &line)
{
    try {
        control_line(fixture, line);
    } catch (const ControlError &error) {
        return error.what();
    }
    return "not refused";
}

TEST(Loop, IsDetectedOneIntervalLaterToTheMillisecond)
{
    LoopFixture fixture;
    pass(fixture, 1234);
    fixture.say("loop", "1 on");
    EXPECT_EQ(state(fixture), "looped");
    pass(fixture, 5 * second - 1);
    EXPECT_EQ(state(fixture), "looped");
    pass(fixture, 1);
    EXPECT_EQ(state(fixture), "shut");
    EXPECT_EQ(config(fixture, layout::loop_config::detected), 1u);
    EXPECT_EQ(config(fixture, layout::loop_config::shut), 1u);
}

TEST(Loop, IsNotDetectedWhileDetectionIsOff)
{
    LoopFixture fixture;
    order(fixture, BSP_CMD_LOOP_STATE_SET, 0);
    fixture.say("loop", "1 on");
    pass(fixture, hours);
    EXPECT_EQ(state(fixture), "looped");
    order(fixture, BSP_CMD_LOOP_STATE_SET, 1);
    pass(fixture, 5 * second - 1);
    EXPECT_EQ(state(fixture), "looped");
    pass(fixture, 1);
    EXPECT_EQ(state(fixture), "shut");
}

TEST(Loop, TheIntervalStartsAnewWhenTheOnuComesBack)
{
    LoopFixture fixture;
    fixture.say("loop", "1 on");
    pass(fixture, 4 * second);
    fixture.say("power", "off");
    pass(fixture, hours);
    EXPECT_EQ(state(fixture), "looped");
    fixture.say("power", "on");
    fixture.settle();
    pass(fixture, 5 * second - 1);
    EXPECT_EQ(state(fixture), "looped");
    pass(fixture, 1);
    EXPECT_EQ(state(fixture), "shut");
}

TEST(Loop, ThePortRecoversAndIsShutAgainWhileTheLoopIsThere)
{
    LoopFixture fixture;
    fixture.say("loop", "1 on");
    pass(fixture, (5 + 299) * second);
    EXPECT_EQ(rows(fixture)[0]["recovers"].GetUint(), 1u);
    pass(fixture, second);
    EXPECT_EQ(state(fixture), "looped");
    EXPECT_EQ(config(fixture, layout::loop_config::recovered), 1u);
    EXPECT_EQ(config(fixture, layout::loop_config::shut), 0u);
    pass(fixture, 5 * second);
    EXPECT_EQ(state(fixture), "shut");
    EXPECT_EQ(rows(fixture)[0]["detected"].GetUint(), 2u);
    EXPECT_EQ(config(fixture, layout::loop_config::detected), 2u);
}

TEST(Loop, OneLongStepDoesWhatManyShortOnesDo)
{
    LoopFixture at_once, by_seconds;
    at_once.say("loop", "1 on");
    by_seconds.say("loop", "1 on");
    pass(at_once, hours);
    for (int passed = 0; passed < 3600; ++passed)
        pass(by_seconds, second);
    EXPECT_EQ(ask(at_once, BSP_CMD_LOOP_INFO).result, ask(by_seconds, BSP_CMD_LOOP_INFO).result);
    // A loop is found after 5 s, then every 305 s.
    EXPECT_EQ(config(at_once, layout::loop_config::detected), 12u);
}

TEST(Loop, ALoopThatIsGoneLeavesARecoveredPort)
{
    LoopFixture fixture;
    fixture.say("loop", "1 on");
    pass(fixture, 5 * second);
    fixture.say("loop", "1 off");
    EXPECT_EQ(state(fixture), "shut");
    pass(fixture, 310 * second);
    EXPECT_EQ(state(fixture), "recovered");
    EXPECT_EQ(rows(fixture)[0]["changed"].GetUint(), 10u);
    EXPECT_TRUE(rows(fixture)[0]["recovers"].IsNull());
}

TEST(Loop, ALoopThatWasNeverFoundLeavesNothing)
{
    LoopFixture fixture;
    fixture.say("loop", "1 on");
    pass(fixture, 2 * second);
    fixture.say("loop", "1 off");
    pass(fixture, hours);
    EXPECT_EQ(state(fixture), "0 rows");
    EXPECT_EQ(config(fixture, layout::loop_config::detected), 0u);
}

TEST(Loop, InManualModeAPortRecoversByCommandOnly)
{
    LoopFixture fixture;
    order(fixture, BSP_CMD_LOOP_RECOVER_MODE_SET, 1);
    fixture.say("loop", "1 on");
    pass(fixture, 24 * hours);
    EXPECT_EQ(state(fixture), "shut");
    EXPECT_TRUE(rows(fixture)[0]["recovers"].IsNull());
    fixture.say("loop", "1 off");
    EXPECT_EQ(order(fixture, BSP_CMD_LOOP_RECOVER), BSP_OK);
    EXPECT_EQ(state(fixture), "recovered");
    EXPECT_EQ(config(fixture, layout::loop_config::recovered), 1u);
}

TEST(Loop, PortsStayShutWhenDetectionIsSwitchedOff)
{
    LoopFixture fixture;
    fixture.say("loop", "1 on");
    pass(fixture, 5 * second);
    order(fixture, BSP_CMD_LOOP_STATE_SET, 0);
    pass(fixture, 24 * hours);
    EXPECT_EQ(state(fixture), "shut");
    EXPECT_EQ(order(fixture, BSP_CMD_LOOP_RECOVER), BSP_OK);
    pass(fixture, 24 * hours);
    EXPECT_EQ(state(fixture), "looped");
    EXPECT_EQ(config(fixture, layout::loop_config::detected), 1u);
}

TEST(Loop, TimeAndIntervalAreThoseThatWereSet)
{
    LoopFixture fixture;
    order(fixture, BSP_CMD_LOOP_RECOVER_TIME_SET, 10);
    order(fixture, BSP_CMD_LOOP_INTERVAL_SET, 600);
    fixture.say("loop", "1 on");
    pass(fixture, 600 * second - 1);
    EXPECT_EQ(state(fixture), "looped");
    pass(fixture, 1);
    EXPECT_EQ(state(fixture), "shut");
    pass(fixture, 10 * second);
    EXPECT_EQ(state(fixture), "looped");
}

TEST(Loop, TheConfigurationIsWhatWasSet)
{
    ServiceFixture fixture;
    namespace at = layout::loop_config;
    EXPECT_EQ(config(fixture, at::state), 0u);
    EXPECT_EQ(config(fixture, at::mode), 0u);
    EXPECT_EQ(config(fixture, at::time), 300u);
    EXPECT_EQ(config(fixture, at::interval), 5u);
    const std::tuple<uint32_t, layout::At<uint32_t>, std::vector<uint32_t>, std::vector<uint32_t>> settings[] = {
        {BSP_CMD_LOOP_STATE_SET, at::state, {0, 1}, {2, 255}},
        {BSP_CMD_LOOP_RECOVER_MODE_SET, at::mode, {0, 1}, {2, 255}},
        {BSP_CMD_LOOP_RECOVER_TIME_SET, at::time, {10, 86400}, {0, 9, 86401}},
        {BSP_CMD_LOOP_INTERVAL_SET, at::interval, {1, 600}, {0, 601}},
    };
    for (const auto &[command, offset, good, bad] : settings) {
        for (uint32_t value : good) {
            EXPECT_EQ(order(fixture, command, value), BSP_OK) << command;
            EXPECT_EQ(config(fixture, offset), value) << command;
        }
        for (uint32_t value : bad) {
            EXPECT_EQ(order(fixture, command, value), PON_ERR_BAD_RECORD) << command << ": " << value;
            EXPECT_EQ(config(fixture, offset), good.back()) << command;
        }
    }
}

TEST(Loop, WhatFollowsTheConfigurationInItsBlockIsZero)
{
    ServiceFixture fixture;
    bsp_pon_msg_ext record{};
    std::memset(&record, 0xff, sizeof record);
    record.cmd = BSP_CMD_LOOP_CONFIG_GET;
    const Reply reply = fixture.simulator.handle({BSP_MSG_LOOP_DETECT, &record, sizeof record});
    EXPECT_EQ(reply.answer.value().substr(layout::loop_config::reserved.offset, 52), std::string(52, '\0'));
}

TEST(Loop, AShutPortIsDownInTheDeviceViews)
{
    LoopFixture fixture;
    // This looks for an ONU that has a port with a link.
    const Device *linked = nullptr;
    Device device;
    size_t uni = 0;
    for (const Arrival &arrival : fixture.port(2).arrivals) {
        device = device_of(fixture.simulator.olt().seed(), arrival.mac);
        const auto configs = default_configs(fixture.simulator.olt().seed(), arrival.mac, device);
        for (uni = 0; !linked && uni < configs.size(); ++uni)
            if (link_of(device.unis[uni], configs[uni])) linked = &device;
        fixture.mac = arrival.mac;
        if (linked) break;
    }
    ASSERT_TRUE(linked);
    ASSERT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 7, fixture.mac)), BSP_OK);

    const auto links = [&] {
        const bsp_onu_msg one = onu_record_of(BSP_CMD_VIEW_ONU_PORT_CONFIG, 2, 7);
        const auto config = parse(fixture.simulator.handle(message_of(BSP_MSG_ONU_CFG, one)).result.value());
        const auto attributes = parse(fixture.view(BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP));
        const auto first = attributes.Size() - config.Size();
        const auto row = static_cast<rapidjson::SizeType>(uni - 1);
        EXPECT_EQ(attributes[first + row]["pon_port"].GetUint(), 2u);
        return std::pair<std::string, std::string>{config[row]["link"].GetString(),
                                                   attributes[first + row]["link"].GetString()};
    };
    const auto before = links();
    EXPECT_NE(before.first, "down");
    fixture.say("loop", std::to_string(uni) + " on", 2);
    pass(fixture, 5 * second);
    EXPECT_EQ(links(), (std::pair<std::string, std::string>{"down", "down"}));
    order(fixture, BSP_CMD_LOOP_RECOVER);
    EXPECT_EQ(links(), before);
}

TEST(Loop, AReleasedOnusPortIsListedWithoutAnId)
{
    LoopFixture fixture;
    fixture.say("loop", "1 on");
    EXPECT_EQ(rows(fixture)[0]["onu_id"].GetUint(), 5u);
    EXPECT_EQ(rows(fixture)[0]["mac"].GetString(), text::mac_text(fixture.mac));
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5));
    pass(fixture, hours);
    EXPECT_TRUE(rows(fixture)[0]["onu_id"].IsNull());
    EXPECT_EQ(state(fixture), "looped") << "nobody can shut the port of an ONU that is not bound";
}

// Adds loops at as many ONUs, with ids from 1 on. Returns the UNI ports that have them.
std::vector<UniKey> fill(ServiceFixture &fixture, size_t wanted)
{
    std::vector<UniKey> places;
    for (const PonPort &port : fixture.simulator.olt().ports())
        for (const Arrival &arrival : port.arrivals) {
            if (places.size() == wanted) return places;
            fixture.send(record_of(BSP_CMD_ONU_BIND_AUTO, port.number, 0, arrival.mac));
            places.push_back({port.number, arrival.mac, 1});
        }
    return places;
}

std::string loop_line(const UniKey &key, bool on)
{
    return "loop " + std::to_string(key.pon_port) + ' ' + text::mac_text(key.mac) + " 1 " + (on ? "on" : "off");
}

TEST(Loop, ANewOneReplacesThePortThatRecoveredLongestAgo)
{
    ServiceFixture fixture(lively());
    order(fixture, BSP_CMD_LOOP_STATE_SET, 1);
    const auto places = fill(fixture, max_loops + 2);
    for (size_t index = 0; index < max_loops; ++index)
        control_line(fixture, loop_line(places[index], true));
    pass(fixture, 5 * second);
    // The 30th recovers before the 10th.
    for (size_t index : {30u, 10u}) {
        control_line(fixture, loop_line(places[index], false));
        order(fixture, BSP_CMD_LOOP_RECOVER);
        pass(fixture, 5 * second);
    }
    control_line(fixture, loop_line(places[max_loops], true));
    EXPECT_FALSE(fixture.simulator.olt().loops().contains(places[30]));
    EXPECT_TRUE(fixture.simulator.olt().loops().contains(places[10]));
    EXPECT_EQ(fixture.simulator.olt().loops().size(), max_loops);
}

TEST(Loop, NoMoreOfThemThanAreKept)
{
    ServiceFixture fixture(lively());
    const auto places = fill(fixture, max_loops + 1);
    for (size_t index = 0; index < max_loops; ++index)
        control_line(fixture, loop_line(places[index], true));
    EXPECT_NE(refusal(fixture, loop_line(places[max_loops], true)).find("no room left"), std::string::npos);
    EXPECT_EQ(rows(fixture).Size(), max_loops);
}

TEST(Loop, TheLongestTableFitsItsBound)
{
    constexpr uint32_t most = 0xffffffff;
    Change kept = change_of<LoopDetection>({}, {.on = true, .recovery_time = 86400});
    kept.put<ModelClock>({}, {ModelTime{most} * second});
    for (uint32_t index = 0; index < max_loops; ++index) {
        const uint32_t onu_id = onus_per_port - 1 - index / max_unis;
        const Mac mac = stranger(static_cast<uint8_t>(onu_id));
        if (index % max_unis == 0) kept.put<Binding>({16, onu_id}, binding_of(mac));
        // "recovered" is the longest state. The longest row of another state is that of a port that is to recover.
        kept.put<LoopRecord>({16, mac, 1 + index % max_unis}, LoopRecord{.shut = true, .detected = most});
    }
    ServiceFixture fixture(Settings{}, kept);
    const size_t beyond_shut = std::string("recovered").size() - std::string("shut").size();
    const size_t beyond_soon = std::string("86400").size() - std::string("0").size();
    const std::string table = ask(fixture, BSP_CMD_LOOP_INFO).result.value();
    EXPECT_NE(table.find("\"detected\":4294967295,\"changed\":4294967295,\"recovers\":0"), std::string::npos);
    EXPECT_LE(table.size() + max_loops * (beyond_shut + beyond_soon) + 1, 10240u);
}

TEST(Loop, AllIsKeptOverARestart)
{
    const Folder folder;
    std::string before;
    {
        LoopFixture fixture(folder.file("olt.db"));
        order(fixture, BSP_CMD_LOOP_INTERVAL_SET, 7);
        fixture.say("loop", "1 on");
        pass(fixture, 9 * second);
        fixture.say("loop", "1 off");
        bind_arrival(fixture, 6, 1);
        control_line(fixture, loop_line({1, fixture.port(1).arrivals[1].mac, 1}, true));
        pass(fixture, 3 * second);
        fixture.simulator.keep_time();
        before = ask(fixture, BSP_CMD_LOOP_INFO).result.value();
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(ask(fixture, BSP_CMD_LOOP_INFO).result, before);
    EXPECT_EQ(config(fixture, layout::loop_config::interval), 7u);
    EXPECT_EQ(config(fixture, layout::loop_config::detected), 1u);
    pass(fixture, 4 * second);
    EXPECT_EQ(config(fixture, layout::loop_config::detected), 2u) << "the interval goes on where it was";
}

TEST(Loop, TheControlSaysWhatIsWrong)
{
    LoopFixture fixture;
    const std::string mac = text::mac_text(fixture.mac);
    const std::string unbound = text::mac_text(fixture.port(1).arrivals[1].mac);
    for (const auto &[line, part] : {std::pair<std::string, std::string>{"loop 1 " + mac + " 1", "expected a PON port"},
                                     {"loop 17 " + mac + " 1 on", "17: expected a number from 1 to 16"},
                                     {"loop 1 nonsense 1 on", "nonsense: expected a MAC address"},
                                     {"loop 1 " + mac + " 1 maybe", "maybe: expected on or off"},
                                     {"loop 1 " + mac + " 5 on", "5: expected a number from 1 to 4"},
                                     {"loop 1 " + unbound + " 1 on", "no ONU is bound"},
                                     {"loop 2 " + mac + " 1 on", "no ONU is bound"}})
        EXPECT_NE(refusal(fixture, line).find(part), std::string::npos) << line << ": " << refusal(fixture, line);
}

TEST(Loop, AnOnuHasTheUniPortsOfItsDevice)
{
    ServiceFixture fixture(lively());
    for (const UniKey &key : fill(fixture, 40)) {
        const size_t unis = device_of(fixture.simulator.olt().seed(), key.mac).unis.size();
        for (uint32_t uni = 1; uni <= max_unis; ++uni)
            EXPECT_EQ(set_loop(fixture.simulator.olt(), {key.pon_port, key.mac, uni}, true).status,
                      uni <= unis ? BSP_OK : PON_ERR_NO_UNI);
    }
}

uint32_t alarms(const ServiceFixture &fixture, const Mac &mac, Alarm alarm)
{
    const auto &all = fixture.port(1).alarms;
    const auto found = all.find({mac, static_cast<uint32_t>(alarm)});
    return found == all.end() ? 0 : found->second.count;
}

TEST(Power, AnOnlineOnuThatLosesItGoesOfflineWithItsLastAlarms)
{
    LoopFixture fixture;
    fixture.say("power", "off");
    EXPECT_FALSE(fixture.port(1).online(*fixture.port(1).bindings[5]));
    EXPECT_EQ(alarms(fixture, fixture.mac, Alarm::dying_gasp), 1u);
    EXPECT_EQ(alarms(fixture, fixture.mac, Alarm::los), 1u);
    fixture.say("power", "off");
    EXPECT_EQ(alarms(fixture, fixture.mac, Alarm::los), 1u) << "it has lost it already";
    fixture.say("power", "on");
    EXPECT_FALSE(fixture.port(1).online(*fixture.port(1).bindings[5])) << "it boots";
    fixture.settle();
    EXPECT_TRUE(fixture.port(1).online(*fixture.port(1).bindings[5]));
    EXPECT_EQ(fixture.port(1).onus.size(), 0u);
}

TEST(Power, AnOnuThatWaitsWithoutItIsNotSeen)
{
    ServiceFixture fixture(lively());
    const Mac mac = fixture.port(1).arrivals[0].mac;
    control_line(fixture, "power 1 " + text::mac_text(mac) + " off");
    EXPECT_EQ(parse(fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 1)).Size(), 7u);
    EXPECT_TRUE(fixture.port(1).alarms.empty());
    control_line(fixture, "power 1 " + text::mac_text(mac) + " on");
    fixture.settle();
    EXPECT_EQ(parse(fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 1)).Size(), 8u);
}

TEST(Power, WithItAgainAnOnuRegisters)
{
    OltFixture fixture;
    const Arrival &arrival = fixture.arrival(1);
    const auto switch_power = [&](bool on) {
        EXPECT_EQ(fixture.done(set_power(fixture.olt, 1, arrival.mac, on)), BSP_OK);
        fixture.settle();
    };
    switch_power(false);
    fixture.set_mode(1, AuthMode::loid);
    fixture.accept(1, arrival.loid);
    EXPECT_FALSE(fixture.olt.find(arrival.mac)) << "it could not register without power";
    switch_power(true);
    EXPECT_TRUE(fixture.olt.find(arrival.mac));
    switch_power(false);
    fixture.reject(1, arrival.mac);
    switch_power(true);
    EXPECT_EQ(fixture.alarms(1, arrival.mac, Alarm::rejected), 1u);
}

TEST(Power, OutOfReachItChangesNothingYet)
{
    OltFixture fixture;
    const Arrival &arrival = fixture.arrival(1);
    fixture.bind(1, 5, arrival.mac);
    fixture.done(set_power(fixture.olt, 1, arrival.mac, false));
    fixture.range(1, arrival.distance + 1, max_distance);
    EXPECT_EQ(fixture.alarms(1, arrival.mac, Alarm::los), 1u) << "the one of the power";
    fixture.done(set_power(fixture.olt, 1, arrival.mac, true));
    fixture.settle();
    EXPECT_FALSE(fixture.online(1, 5));
    fixture.range(1, 0, max_distance);
    EXPECT_TRUE(fixture.online(1, 5));
}

TEST(Power, IsKeptOverARestart)
{
    const Folder folder;
    {
        LoopFixture fixture(folder.file("olt.db"));
        fixture.say("power", "off");
    }
    const ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_FALSE(fixture.port(1).online(*fixture.port(1).bindings[5]));
}

TEST(Power, TheControlSaysWhatIsWrong)
{
    LoopFixture fixture;
    for (const auto &[line, part] :
         {std::pair<std::string, std::string>{"power 1 " + text::mac_text(stranger(1)) + " off",
                                              "has arrived at the port"},
          {"power 2 " + text::mac_text(fixture.mac) + " off", "has arrived at the port"},
          {"power 1 " + text::mac_text(fixture.mac), "expected a PON port"},
          {"power 0 " + text::mac_text(fixture.mac) + " off", "0: expected a number from 1 to 16"}})
        EXPECT_NE(refusal(fixture, line).find(part), std::string::npos) << line << ": " << refusal(fixture, line);
}

} // namespace
} // namespace ponsim
