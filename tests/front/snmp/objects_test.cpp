// These tests walk the objects of SNMP, and ask for single ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "an_olt.h"
#include "snmp/core/mib.h"

namespace front::snmp
{
namespace
{

using testing::ElementsAre;
using testing::SizeIs;

const Oid root = MibSettings().root;
const Oid tx_power = below(root, {1, 2, 1, 5}), distance = below(root, {1, 4, 1, 8});
const Times now{.now = test_time, .started = test_time - 3'600'000};

std::vector<Binding> walk(const Objects &objects, const Oid &top = {})
{
    std::vector<Binding> found;
    Oid at = top;
    while (auto next = objects.next(at, false)) {
        if (!is_below(next->name, top)) break;
        EXPECT_LT(compare(at, next->name), 0);
        at = next->name;
        found.push_back(std::move(*next));
    }
    return found;
}

std::shared_ptr<const Objects> objects_of(std::vector<Source> olts, const MibSettings &settings = {})
{
    return Mib(settings).objects(olts, now);
}

class SnmpObjects : public testing::Test
{
protected:
    const std::shared_ptr<const Objects> one = objects_of({an_olt().source()});
    const std::shared_ptr<const Objects> two = objects_of({an_olt().source(2), an_olt().source(7, "south")});
};

TEST_F(SnmpObjects, AreWalkedInOrderAndEachIsFoundByItsName)
{
    const std::vector<Binding> all = walk(*two);
    EXPECT_GT(all.size(), 300u);
    for (const Binding &binding : all) {
        EXPECT_EQ(two->get(binding.name), binding.value);
        EXPECT_TRUE(two->has_object(binding.name));
        EXPECT_EQ(two->next(binding.name, true), binding);
    }
}

TEST_F(SnmpObjects, StandBelowTheRegions)
{
    for (const Binding &binding : walk(*one))
        EXPECT_EQ(std::ranges::count_if(one->regions(), [&](const Oid &top) { return is_below(binding.name, top); }),
                  1);
    EXPECT_TRUE(std::ranges::is_sorted(one->regions(), OidLess()));
}

TEST_F(SnmpObjects, AreThoseOfBspPonMibAloneWhereStandardTablesAreNotWanted)
{
    const auto objects = objects_of({an_olt().source()}, {.root = {1, 3, 6, 1, 4, 1, 1, 1}, .standard_tables = false});
    EXPECT_THAT(objects->regions(), ElementsAre(Oid{1, 3, 6, 1, 4, 1, 1, 1}));
    EXPECT_EQ(walk(*objects).size(), walk(*one, root).size());
    EXPECT_TRUE(objects->get({{1, 3, 6, 1, 4, 1, 1, 1, 1, 2, 1, 5, 1, 1}}));
}

TEST_F(SnmpObjects, ComeAfterAnythingThatStandsBeforeThem)
{
    const Oid first = below(root, {1, 1, 1, 2, 1});
    for (const Oid &before :
         {root, below(root, {1}), below(root, {1, 1, 1}), below(root, {1, 1, 1, 1, 99}), below(root, {1, 1, 1, 2}),
          below(root, {1, 1, 1, 2, 0}), below(root, {1, 1, 1, 2, 0, 255})})
        EXPECT_EQ(one->next(before, false)->name, first);
    EXPECT_EQ(one->next(below(tx_power, {1, 1}), false)->name, below(tx_power, {1, 2}));
    EXPECT_EQ(one->next(below(tx_power, {1, 1, 0}), false)->name, below(tx_power, {1, 2}));
    EXPECT_EQ(one->next(below(tx_power, {1}), false)->name, below(tx_power, {1, 1}));
    EXPECT_EQ(one->next(below(tx_power, {1, UINT32_MAX}), false)->name, below(root, {1, 2, 1, 6, 1, 1}));
    EXPECT_EQ(one->next({}, false)->name, (Oid{1, 3, 6, 1, 2, 1, 2, 2, 1, 1, 1001}));
    EXPECT_EQ(one->next({{2}}, false), std::nullopt);
}

TEST_F(SnmpObjects, GoOnFromOneOltToTheNext)
{
    EXPECT_EQ(two->next(below(tx_power, {2, 2}), false)->name, below(tx_power, {7, 1}));
    EXPECT_EQ(two->next(below(tx_power, {3}), false)->name, below(tx_power, {7, 1}));
    EXPECT_EQ(two->next(below(tx_power, {7, 2}), false)->name, below(root, {1, 2, 1, 6, 2, 1}));
}

TEST_F(SnmpObjects, EndWhereTheSearchIsToEnd)
{
    const Oid first = below(tx_power, {1, 1}), second = below(tx_power, {1, 2});
    EXPECT_EQ(one->next(first, false, below(second, {0}))->name, second);
    EXPECT_EQ(one->next(first, false, second), std::nullopt);
    EXPECT_EQ(one->next(first, true, second)->name, first);
    EXPECT_EQ(one->next(first, true, first), std::nullopt);
    EXPECT_EQ(one->next({}, false, {{1, 3}}), std::nullopt);
}

TEST_F(SnmpObjects, OfWhatIsNullThereIsNoInstance)
{
    EXPECT_EQ(one->get(below(distance, {1, 1, 5}))->number, 1200u);
    EXPECT_EQ(one->get(below(distance, {1, 2, 0})), std::nullopt);
    EXPECT_TRUE(one->has_object(below(distance, {1, 2, 0})));
    EXPECT_EQ(one->next(below(distance, {1, 1, 5}), false)->name, below(root, {1, 4, 1, 9, 1, 1, 5}));
}

TEST_F(SnmpObjects, ThatAreNotThereAreNotFound)
{
    for (const Oid &missing :
         {below(tx_power, {}), below(tx_power, {1}), below(tx_power, {1, 3}), below(tx_power, {1, 1, 1})})
        EXPECT_EQ(one->get(missing), std::nullopt);
    EXPECT_FALSE(one->has_object(below(root, {1, 2, 1, 1, 1, 1}))) << "an index is not accessible";
    EXPECT_FALSE(one->has_object(below(root, {1, 2, 1, 99, 1, 1})));
    EXPECT_FALSE(one->has_object(below(root, {1, 2, 1})));
    EXPECT_FALSE(one->has_object({{1, 3}}));
    EXPECT_TRUE(one->has_object(tx_power)) << "it has no such instance, though";
}

TEST(SnmpWithoutRows, AnOltThatIsNotYetReadHasItsNameAndWhenItWasRead)
{
    const auto objects = objects_of({OltMaker().source()});
    EXPECT_EQ(objects->get(below(root, {1, 1, 1, 2, 1}))->octets, "north");
    EXPECT_EQ(objects->get(below(root, {1, 1, 1, 3, 1}))->number, 2u) << "it does not answer";
    EXPECT_EQ(objects->get(below(root, {1, 1, 1, 4, 1})), std::nullopt);
    EXPECT_EQ(objects->get(below(root, {1, 13, 1, 4, 1, 3}))->number, 0u);
    EXPECT_EQ(objects->get(below(root, {1, 13, 1, 6, 1, 3})), std::nullopt);
    EXPECT_THAT(walk(*objects, below(root, {1, 4})), SizeIs(0));
}

TEST(SnmpWithoutRows, NoOltHasNothing)
{
    EXPECT_THAT(walk(*objects_of({})), SizeIs(0));
}

class SnmpChanges : public testing::Test
{
protected:
    std::shared_ptr<const Objects> look(UnixTime later = 0)
    {
        const Source olts[] = {olt.source()};
        return mib.objects(olts, {.now = test_time + later, .started = now.started});
    }

    Mib mib{MibSettings()};
    OltMaker olt = an_olt();
};

TEST_F(SnmpChanges, ThereAreNoneWhileNothingIsRead)
{
    const auto before = look();
    EXPECT_EQ(look(), before);
    EXPECT_EQ(look(900), before);
    EXPECT_NE(look(1000), before) << "a second later all is a second older";
    olt.read(Table::optics);
    EXPECT_NE(look(1000), before);
}

TEST_F(SnmpChanges, LeaveAWalkThatIsUnderWayToGoOn)
{
    const auto before = look();
    Oid at = below(tx_power, {1, 1});
    view::port_info port{};
    port.pon_port = 2;
    port.tx_power = 1;
    olt.set(&Snapshot::ports, Table::ports, {port});
    const auto after = look();
    EXPECT_EQ(before->next(at, false)->value.number, static_cast<uint32_t>(-4000));
    EXPECT_EQ(after->next(at, false)->value.number, 100u);
    EXPECT_EQ(after->get(at), std::nullopt);
}

TEST_F(SnmpChanges, AnOltThatIsGoneIsGone)
{
    look();
    const auto objects = mib.objects({}, now);
    EXPECT_THAT(walk(*objects), SizeIs(0));
    EXPECT_EQ(mib.objects({}, now), objects);
}

TEST_F(SnmpChanges, AnOltThatDoesNotAnswerKeepsWhatWasKnown)
{
    const auto before = walk(*look(), below(root, {1, 4}));
    Source lost = olt.source();
    auto stale = std::make_shared<Snapshot>(*lost.snapshot);
    TableState &state = stale->states[static_cast<size_t>(Table::onus)];
    state.failed = 2;
    state.failures = 9;
    state.error = "the OLT does not answer";
    lost.snapshot = stale;
    const Source olts[] = {lost};
    const auto objects = mib.objects(olts, {.now = test_time + 90'000, .started = now.started});
    EXPECT_EQ(walk(*objects, below(root, {1, 4})), before);
    EXPECT_EQ(objects->get(below(root, {1, 1, 1, 3, 1}))->number, 2u);
    EXPECT_EQ(objects->get(below(root, {1, 13, 1, 6, 1, 3}))->number, 90u);
    EXPECT_EQ(objects->get(below(root, {1, 13, 1, 8, 1, 3}))->number, 9u);
    EXPECT_EQ(objects->get(below(root, {1, 13, 1, 10, 1, 3}))->octets, "the OLT does not answer");
}

} // namespace
} // namespace front::snmp
