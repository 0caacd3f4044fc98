// These tests check which operations follow from what managers set, and that these are sent as they are meant.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "an_olt.h"
#include "bsp_pon.h"
#include "call/call.h"
#include "fake_service.h"
#include "snmp/core/setting.h"

namespace front::snmp
{
namespace
{

using testing::SizeIs;

const Oid root = MibSettings().root;
const Oid name = below(root, {1, 4, 1, 3, 1, 1, 5}), action = below(root, {1, 4, 1, 17, 1, 1, 5}),
          uni = below(root, {1, 8, 1, 2, 1, 1, 5, 2}), admit = below(root, {1, 9, 1, 6, 1, 2, 2, 0, 0, 0, 0, 9});

Value integer(int32_t number)
{
    return {.type = Type::integer, .number = static_cast<uint32_t>(number)};
}
Value octets(std::string text)
{
    return {.type = Type::octets, .octets = std::move(text)};
}

class SnmpSettings : public testing::Test
{
protected:
    ~SnmpSettings() override { board_ipc_use_thread_directory(nullptr); }

    std::variant<Order, SetError> set(const Oid &oid, const Value &value) const
    {
        return order_of(*objects, {}, oid, value);
    }
    // Calls what follows, and returns what the service receives.
    Received sent(const Oid &oid, const Value &value) const
    {
        const auto result = set(oid, value);
        if (!std::holds_alternative<Order>(result)) throw std::runtime_error("it cannot be set");
        const Order &order = std::get<Order>(result);
        EXPECT_EQ(order.olt_index, 1u);
        const FakeService service;
        board_ipc_use_thread_directory(service.folder().c_str());
        call::Call asked;
        asked.operation = order.operation;
        for (const auto &[argument, word] : order.arguments)
            asked.arguments.push_back({argument, word});
        call::UpTo permission(catalogue::Class::service_affecting);
        EXPECT_EQ(call::perform(asked, permission).status, uint32_t{BSP_OK});
        return service.received().at(0);
    }

    const Source olts[1] = {an_olt().source()};
    const std::shared_ptr<const Objects> objects = Mib({}).objects(olts, {});
};

TEST_F(SnmpSettings, DescribeAnOnu)
{
    const Received received = sent(name, octets("main street = \"7\" hex:00"));
    EXPECT_EQ(received.number("cmd"), uint64_t{BSP_CMD_ONU_DESCRIPTION_SET});
    EXPECT_EQ(received.number("pon_port"), 1u);
    EXPECT_EQ(received.number("onu_id"), 5u);
    EXPECT_EQ(received.text(237), "main street = \"7\" hex:00");
}

TEST_F(SnmpSettings, RebootAndDeregisterAnOnu)
{
    const Received reboot = sent(action, integer(2));
    EXPECT_EQ(reboot.number("cmd"), uint64_t{BSP_CMD_ONU_REBOOT_BATCH});
    EXPECT_EQ(reboot.number("pon_port"), 1u);
    EXPECT_EQ(reboot.word(432), uint32_t{1} << 5) << "the set of ids";
    const Received deregister = sent(action, integer(3));
    EXPECT_EQ(deregister.number("plat_cmd"), uint64_t{BSP_CMD_ONU_DEREGISTER});
    EXPECT_EQ(deregister.number("plat_port"), 1u);
    EXPECT_EQ(deregister.number("plat_arg4"), 5u);
}

TEST_F(SnmpSettings, SwitchAUniPort)
{
    const Received down = sent(uni, integer(2));
    EXPECT_EQ(down.number("onu_cmd"), uint64_t{BSP_CMD_ONU_ADMIN_STATE_SET});
    EXPECT_EQ(down.number("onu_pon_port"), 1u);
    EXPECT_EQ(down.number("onu_onu_id"), 5u);
    EXPECT_EQ(down.number("onu_uni_port"), 2u);
    EXPECT_EQ(down.number("on"), 0u);
    EXPECT_EQ(sent(uni, integer(1)).number("on"), 1u);
}

TEST_F(SnmpSettings, AdmitAnOnu)
{
    const Received anywhere = sent(admit, integer(-1));
    EXPECT_EQ(anywhere.number("cmd"), uint64_t{BSP_CMD_ONU_BIND_AUTO});
    EXPECT_EQ(anywhere.mac(), "02:00:00:00:00:09");
    const Received here = sent(admit, integer(0));
    EXPECT_EQ(here.number("cmd"), uint64_t{BSP_CMD_ONU_BIND});
    EXPECT_EQ(here.number("pon_port"), 2u);
    EXPECT_EQ(here.number("onu_id"), 0u);
}

TEST_F(SnmpSettings, ThatCannotBeAreRefused)
{
    const auto refused = [this](const Oid &oid, const Value &value, SetError error) {
        EXPECT_EQ(set(oid, value), (std::variant<Order, SetError>(error)));
    };
    refused(name, integer(1), SetError::wrong_type);
    refused(name, octets(std::string(128, 'x')), SetError::wrong_length);
    refused(name, octets(std::string("a\0b", 3)), SetError::wrong_value);
    refused(action, integer(1), SetError::wrong_value);
    refused(action, integer(-2), SetError::wrong_value);
    refused(uni, integer(3), SetError::wrong_value);
    refused(admit, integer(128), SetError::wrong_value);
    refused(admit, integer(-2), SetError::wrong_value);
    refused(below(root, {1, 4, 1, 3, 1, 1, 6}), octets("x"), SetError::no_creation);
    refused(below(root, {1, 4, 1, 3}), octets("x"), SetError::no_creation);
    refused(below(name, {0}), octets("x"), SetError::no_creation);
    refused(below(root, {1, 4, 1, 2, 1, 1, 5}), octets("x"), SetError::not_writable);
    refused({1, 3, 6, 1, 2, 1, 2, 2, 1, 7, 1001}, integer(2), SetError::not_writable);
}

TEST_F(SnmpSettings, AreOfTheColumnsThatAreNamed)
{
    const std::vector<Oid> columns = writable_columns({});
    ASSERT_THAT(columns, SizeIs(4));
    EXPECT_TRUE(std::ranges::is_sorted(columns, OidLess()));
    for (const Oid &oid : {name, action, uni, admit})
        EXPECT_TRUE(std::ranges::any_of(columns, [&](const Oid &column) { return is_below(oid, column); }));
}

} // namespace
} // namespace front::snmp
