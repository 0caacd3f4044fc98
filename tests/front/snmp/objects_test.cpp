// These tests walk the objects of SNMP, and ask for single ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "snmp/core/mib.h"

namespace
{

using namespace front;
using namespace front::snmp;

const Oid root = MibSettings().root;

Oid below(Oid top, const Oid &rest)
{
    top.insert(top.end(), rest.begin(), rest.end());
    return top;
}

std::shared_ptr<const Snapshot> ports(std::initializer_list<uint32_t> numbers)
{
    auto snapshot = std::make_shared<Snapshot>();
    auto table = std::make_shared<Rows<view::port_info>>();
    for (const uint32_t number : numbers) {
        view::port_info &port = table->rows.emplace_back();
        port.pon_port = number;
        port.tx_power = -3.25;
    }
    snapshot->ports = table;
    return snapshot;
}

TEST(SnmpObjects, AreFound)
{
    Mib mib{MibSettings()};
    const Source olts[] = {{.index = 2, .name = {}, .snapshot = ports({1, 3})},
                           {.index = 7, .name = {}, .snapshot = ports({1})}};
    const auto objects = mib.objects(olts, {});
    const Oid power = below(root, {1, 2, 1, 5});
    EXPECT_EQ(objects->get(below(power, {2, 3}))->number, static_cast<uint32_t>(-325));
    EXPECT_EQ(objects->next(below(power, {2, 1}), false)->name, below(power, {2, 3}));
    EXPECT_EQ(objects->next(below(power, {2, 3}), false)->name, below(power, {7, 1}));
    EXPECT_EQ(objects->next(below(power, {7, 1}), false), std::nullopt);
    EXPECT_EQ(mib.objects(olts, {}), objects);
}

} // namespace
