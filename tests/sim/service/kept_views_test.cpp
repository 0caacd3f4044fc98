// These tests check that views which are kept have the same bytes as those that are made anew.
#include "asked.h"
#include "model/base/look.h"
#include "optics.h"

namespace ponsim
{
namespace
{

class KeptViews : public testing::Test
{
protected:
    KeptViews() : fixture({.seed = 11, .ports = 2, .arrivals = 6, .silent = 10}), asked(all_that_reads(random))
    {
        for (uint32_t id = 1; id <= 4; ++id)
            EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, id, fixture.port(1).arrivals[id - 1].mac)), BSP_OK);
        bsp_pon_msg_ext detection{};
        detection.cmd = BSP_CMD_LOOP_STATE_SET;
        detection.ext_arg = 1;
        EXPECT_EQ(fixture.simulator.handle({BSP_MSG_LOOP_DETECT, &detection, sizeof detection}).status, BSP_OK);
    }

    // Makes something different: by a request of any command, or from outside.
    void change_something()
    {
        const std::string onu = text::mac_text(fixture.port(1).arrivals[random.below(4)].mac);
        const std::string lines[] = {"power 1 " + onu + " off",
                                     "power 1 " + onu + " on",
                                     "bend 1 " + onu + " 5",
                                     "mend 1 " + onu,
                                     "loop 1 " + onu + " 1 on",
                                     "loop 1 " + onu + " 1 off",
                                     "load 1 " + onu + " up 900",
                                     "age-onu 1 " + onu + " 50",
                                     "plug 1 " + onu + " all 10HD",
                                     "unplug 1 " + onu + " 1",
                                     "leave 1 " + onu,
                                     "arrive 1 mac=" + onu + " kind=B400",
                                     "swap 1 " + onu + " kind=S100",
                                     "move 1 " + onu + " 2",
                                     "age 1 1000"};
        if (random.below(3) == 0) {
            try {
                control_line(fixture, lines[random.below(std::size(lines))]);
            } catch (const ControlError &) {
                // The ONU may be released by now.
            }
            return;
        }
        const auto commands = catalogue::commands();
        const catalogue::Command &command = commands[random.below(static_cast<uint32_t>(commands.size()))];
        const Asked order{&command, record_of_command(command, random)};
        Message message = order.message();
        if (!command.call) message.call = catalogue::Call::set;
        fixture.simulator.handle(message);
    }

    Random random{3, 1};
    ServiceFixture fixture;
    std::vector<Asked> asked;
};

TEST_F(KeptViews, HaveTheBytesOfThoseThatAreMadeAnew)
{
    Simulator &simulator = fixture.simulator;
    const ModelTime waits[] = {0, 1, 100, 250, 900, 5000, 60000, 3600000};
    size_t kept_for_later = 0, checked = 0;
    for (int round = 0; round < 300; ++round) {
        if (random.below(3) > 0) change_something();
        simulator.advance(simulator.olt().now());
        for (const Asked &each : asked)
            simulator.look(each.message(), simulator.olt().now());
        const ModelTime later = simulator.olt().now() + waits[random.below(std::size(waits))];
        std::vector<SharedReply> kept;
        for (const Asked &each : asked)
            kept.push_back(simulator.look(each.message(), later));
        const bool moved = later > simulator.olt().now();
        simulator.advance(later);
        for (size_t index = 0; index < asked.size(); ++index) {
            const std::string anew = said_anew(simulator.olt(), asked[index]);
            const SharedReply now = simulator.look(asked[index].message(), later);
            if (kept[index]) {
                ASSERT_EQ(said(*kept[index]), anew) << asked[index].command->name << " in round " << round;
            }
            if (now) {
                ASSERT_EQ(said(*now), anew) << asked[index].command->name << " in round " << round;
            }
            kept_for_later += kept[index] && moved;
            checked += now != nullptr;
        }
    }
    EXPECT_GT(checked, asked.size() * 100);
    EXPECT_GT(kept_for_later, asked.size() * 5) << "nothing is kept for long";
}

TEST_F(KeptViews, AreSharedUntilSomethingChanges)
{
    fixture.settle();
    Simulator &simulator = fixture.simulator;
    const bsp_pon_msg record = record_of(BSP_CMD_VIEW_ONU_INFO_WEB);
    Message message = message_of(record);
    message.call = catalogue::Call::get;
    const ModelTime now = simulator.olt().now();
    const SharedReply first = simulator.look(message, now);
    ASSERT_TRUE(first);
    EXPECT_EQ(simulator.look(message, now), first);
    EXPECT_EQ(simulator.look(message, now + 1), first) << "nothing in it follows from the time";
    bsp_pon_msg text = record_of(BSP_CMD_ONU_DESCRIPTION_SET, 1, 1);
    EXPECT_EQ(fixture.send(text), BSP_OK);
    const SharedReply second = simulator.look(message, simulator.olt().now());
    ASSERT_TRUE(second);
    EXPECT_NE(second, first);
}

TEST_F(KeptViews, WhatIsDueOrGoesWrongOrWritesNeedsATurnOfItsOwn)
{
    fixture.settle();
    Simulator &simulator = fixture.simulator;
    const bsp_pon_msg record = record_of(BSP_CMD_VIEW_ONU_INFO_WEB);
    Message message = message_of(record);
    message.call = catalogue::Call::get;
    EXPECT_FALSE(simulator.look(message, simulator.olt().now() + 3600000)) << "it is not made for a later time";
    const bsp_pon_msg release = record_of(BSP_CMD_ONU_RELEASE, 1, 1);
    Message order = message_of(release);
    order.call = catalogue::Call::get;
    EXPECT_FALSE(simulator.look(order, simulator.olt().now()));
    control_line(fixture, "cut 1 feeder");
    EXPECT_FALSE(simulator.look(message, simulator.olt().now())) << "the light is lost at once";
    simulator.advance(simulator.olt().now());
    EXPECT_TRUE(simulator.look(message, simulator.olt().now()));
    control_line(fixture, "fault lost");
    EXPECT_FALSE(simulator.look(message, simulator.olt().now()));
}

TEST(Look, HoldsUntilTheFirstOfItsAnswersDoesNot)
{
    Olt olt(Settings{});
    olt.advance(1500);
    const Look outer;
    EXPECT_EQ(outer.holds_until(), std::numeric_limits<ModelTime>::max());
    EXPECT_TRUE(olt.has_come(1500));
    EXPECT_FALSE(olt.has_come(9000));
    EXPECT_EQ(outer.holds_until(), 9000u);
    {
        const Look inner;
        EXPECT_EQ(olt.second(), 1u);
        EXPECT_EQ(inner.holds_until(), 2000u);
    }
    EXPECT_EQ(outer.holds_until(), 2000u);
    EXPECT_EQ(olt.now(), 1500u);
    EXPECT_EQ(outer.holds_until(), 1501u);
}

} // namespace
} // namespace ponsim
