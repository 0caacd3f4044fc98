// These tests check what managers are told by themselves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "an_olt.h"
#include "snmp/core/notification.h"

namespace front::snmp
{
namespace
{

using testing::IsEmpty;
using testing::SizeIs;

const Oid root = MibSettings().root;
const Oid if_status{1, 3, 6, 1, 2, 1, 2, 2, 1};

// Returns the value of an object of bspEvent, if the notification has it.
std::optional<Value> value_in(const Notification &told, uint32_t number)
{
    for (const Binding &object : told.objects)
        if (object.name == below(root, {1, 14, number, 0})) return object.value;
    return std::nullopt;
}

TEST(SnmpNotifications, TellOfAnOnuThatIsOffline)
{
    const Event event{.at = test_time,
                      .olt = "north",
                      .kind = EventKind::onu_offline,
                      .port = 2,
                      .onu_id = 7,
                      .mac = "02:00:00:00:00:07",
                      .cause = "power"};
    const auto told = notifications_of(event, 3, {});
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].name, below(root, {0, 5}));
    ASSERT_THAT(told[0].objects, SizeIs(11));
    EXPECT_EQ(value_in(told[0], 1)->octets, "north");
    EXPECT_EQ(value_in(told[0], 2)->number, 3u);
    EXPECT_EQ(value_in(told[0], 3)->number, 2u);
    EXPECT_EQ(value_in(told[0], 4)->number, 7u);
    EXPECT_EQ(value_in(told[0], 5)->octets, std::string("\2\0\0\0\0\7", 6));
    EXPECT_EQ(value_in(told[0], 9)->octets, "power");
    EXPECT_EQ(value_in(told[0], 11)->octets, sentence_of(event));
}

TEST(SnmpNotifications, TellOfManyOnusAtOnce)
{
    const Event event{
        .olt = "north", .kind = EventKind::onu_offline, .port = 2, .count = 128, .onus = "0-127", .cause = "fibre"};
    const auto told = notifications_of(event, 1, {});
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(value_in(told[0], 4)->number, static_cast<uint32_t>(-1));
    EXPECT_EQ(value_in(told[0], 5)->octets, "");
    EXPECT_EQ(value_in(told[0], 6)->number, 128u);
    EXPECT_EQ(value_in(told[0], 7)->octets, "0-127");
}

TEST(SnmpNotifications, HaveWhatWasMeasuredBehindTheRest)
{
    const Event event{
        .olt = "north", .kind = EventKind::light_low, .port = 1, .onu_id = 5, .detail = "olt", .measure = -27.5};
    const auto told = notifications_of(event, 1, {});
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].objects.back().name, below(root, {1, 14, 12, 0}));
    EXPECT_EQ(told[0].objects.back().value.number, static_cast<uint32_t>(-2750));
}

TEST(SnmpNotifications, TellOfUplinksAsOfInterfaces)
{
    Event event{.olt = "north", .kind = EventKind::link_down, .place = "uplink 2"};
    const auto down = notifications_of(event, 3, {});
    ASSERT_THAT(down, SizeIs(1));
    EXPECT_EQ(down[0].name, (Oid{1, 3, 6, 1, 6, 3, 1, 1, 5, 3}));
    ASSERT_THAT(down[0].objects, SizeIs(3));
    EXPECT_EQ(down[0].objects[0], (Binding{below(if_status, {1, 3502}), {.type = Type::integer, .number = 3502}}));
    EXPECT_EQ(down[0].objects[2], (Binding{below(if_status, {8, 3502}), {.type = Type::integer, .number = 2}}));
    event.kind = EventKind::link_up;
    EXPECT_EQ(notifications_of(event, 3, {})[0].name.back(), 4u);
    EXPECT_THAT(notifications_of(event, 3, {.standard_tables = false}), IsEmpty());
    for (const char *place : {"", "uplink ", "uplink x", "uplink 2x", "branch 2"}) {
        event.place = place;
        EXPECT_THAT(notifications_of(event, 3, {}), IsEmpty()) << place;
    }
}

TEST(SnmpNotifications, SayOfALinkWhatItsInterfaceIsToBe)
{
    OltMaker olt = an_olt();
    olt.set(&Snapshot::uplinks, Table::uplinks,
            std::vector<Uplink>{{.port = 1, .mac = {}, .max_frame = 0, .speed = 0, .link = false, .enabled = false}});
    const Source olts[] = {olt.source()};
    const auto objects = Mib({}).objects(olts, {});
    const Event event{.olt = "north", .kind = EventKind::link_down, .place = "uplink 1"};
    EXPECT_EQ(notifications_of(event, 1, {}, objects.get())[0].objects[1].value.number, 2u);
    EXPECT_EQ(notifications_of(event, 1, {})[0].objects[1].value.number, 1u);
}

TEST(SnmpNotifications, TellOfAPonPortWithoutItsLaserTwice)
{
    const Event event{.olt = "north", .kind = EventKind::alarm_raised, .port = 4, .detail = "transmitter_off"};
    const auto told = notifications_of(event, 1, {});
    ASSERT_THAT(told, SizeIs(2));
    EXPECT_EQ(told[0].name.back(), 3u);
    EXPECT_EQ(told[0].objects[0].value.number, 1004u);
    EXPECT_EQ(told[1].name, below(root, {0, 18}));
}

TEST(SnmpNotifications, ThereIsOneForEachKindOfEvent)
{
    for (size_t kind = 0; kind < event_kind_count; ++kind) {
        const Event event{.olt = "north", .kind = static_cast<EventKind>(kind), .place = "uplink 1"};
        EXPECT_THAT(notifications_of(event, 1, {}), SizeIs(1)) << name_of(event.kind);
    }
}

} // namespace
} // namespace front::snmp
