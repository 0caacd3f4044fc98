// These tests check what the library returns for each fault on the wire: the documented failure or a result, within the
// caller's bounds, and the correct answer to the request after it.
#include <array>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "board/ipc.h"
#include "bsp_pon.h"
#include "control.h"
#include "simulator.h"
#include "view.h"

namespace
{

// The time-out is set before anything reads it. It is long enough for every correct answer, and short for answers that
// never come.
const int environment = setenv("BOARD_IPC_TIMEOUT_MS", "1000", 1) + setenv("BOARD_LOG", "off", 1);

constexpr uint32_t port = 3;
constexpr uint32_t onu_id = 5;
constexpr char untouched = '\x5e';

uint32_t value_of(int32_t ipc_value)
{
    return static_cast<uint32_t>(ipc_value);
}

// A Room has so many bytes, with guards on both sides.
template <size_t size>
struct Room {
    std::array<char, 64> before;
    alignas(8) std::array<char, size> bytes;
    std::array<char, 64> after;

    Room()
    {
        before.fill(untouched);
        bytes.fill(untouched);
        after.fill(untouched);
    }
    bool guarded() const
    {
        const std::array<char, 64> guard = Room().before;
        return before == guard && after == guard;
    }
};

View onus()
{
    return View([](db_handle **db) { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, port, 0, db); });
}

View config()
{
    return View([](db_handle **db) { return bsp_pon_onu_get_cfg_info(db, port, onu_id); });
}

// This view comes by a datagram.
View link_states()
{
    return View([](db_handle **db) { return bsp_pon_onu_ctc_get_linkstate(port, onu_id, db); });
}

// This view comes in a file.
View stations()
{
    return View([](db_handle **db) { return bsp_pon_get_arptable(port, db); });
}

class WireFault : public testing::Test
{
protected:
    static constexpr uint32_t arrivals = 4;

    void SetUp() override
    {
        for (uint32_t row = 0; row < arrivals; ++row)
            macs[row] = onus().text(row, "mac");
        ASSERT_EQ(bind(onu_id, 0), BSP_OK);
        bsp_plat_msg sla{};
        sla.plat_port = port;
        sla.plat_arg4 = onu_id;
        ASSERT_EQ(bsp_pon_onu_sla_config(&sla), BSP_OK);
        ASSERT_EQ(bsp_pon_onu_sla_get(port, onu_id, sla_in_order.data()), BSP_OK);
        control("step 60"); // lets the OLT learn the addresses of the stations
        ASSERT_GT(stations().count(), 0u);
    }

    uint32_t bind(uint32_t id, uint32_t arrival)
    {
        return bsp_pon_bind_onu_spec_id(port, id, parse(macs[arrival]).data(), "customer", nullptr, 0, nullptr);
    }
    std::string id_of(uint32_t arrival) const { return onus().of(macs[arrival], "onu_id"); }

    // Checks that everything works again.
    void expect_order()
    {
        EXPECT_EQ(onus().count(), arrivals);
        EXPECT_EQ(id_of(0), std::to_string(onu_id));
        Room<20> sla;
        EXPECT_EQ(bsp_pon_onu_sla_get(port, onu_id, sla.bytes.data()), BSP_OK);
        EXPECT_EQ(sla.bytes, sla_in_order);
        EXPECT_EQ(config().text(0, "mac"), macs[0]);
        EXPECT_GT(link_states().count(), 0u);
        EXPECT_NE(stations().text(), "");
    }

    Simulator simulator{{"--arrivals", "4", "--silent", "0", "--speed", "0"}};
    std::string macs[arrivals];
    std::array<char, 20> sla_in_order{};
};

TEST_F(WireFault, ALostAnswerIsAFailureButTheChangeIsMade)
{
    control("fault lost command=BSP_CMD_ONU_BIND count=1");
    EXPECT_EQ(bind(6, 1), BSP_ERR_IPC);
    EXPECT_EQ(id_of(1), "6");
    expect_order();
}

TEST_F(WireFault, ALostAnswerToADatagramIsAFailure)
{
    control("fault lost command=BSP_CMD_ONU_LINK_STATE_GET count=1");
    const View states = link_states();
    EXPECT_EQ(states.status(), BSP_ERR_IPC);
    EXPECT_EQ(states.count(), 0u);
    expect_order();
}

TEST_F(WireFault, ALateAnswerInTimeIsAnAnswer)
{
    control("fault late 50 count=2");
    EXPECT_EQ(bind(6, 1), BSP_OK);
    EXPECT_GT(link_states().count(), 0u);
    expect_order();
}

TEST_F(WireFault, AnAnswerTooLateIsNobodys)
{
    control("fault late 1050 command=BSP_CMD_VIEW_ONU_INFO_WEB count=1");
    EXPECT_EQ(onus().status(), BSP_ERR_IPC);
    expect_order();
    control("fault late 1050 command=BSP_CMD_ONU_LINK_STATE_GET count=1");
    EXPECT_EQ(link_states().status(), BSP_ERR_IPC);
    expect_order();
}

TEST_F(WireFault, ALateAnswerHoldsUpNobodyElse)
{
    control("fault late 60000 command=BSP_CMD_ONU_BIND");
    std::thread waiting([this] { EXPECT_EQ(bind(6, 1), BSP_ERR_IPC); });
    for (int round = 0; round < 3; ++round)
        expect_order();
    waiting.join();
}

TEST_F(WireFault, ADuplicatedAnswerIsNotTheNextOnes)
{
    control("fault duplicated 2 command=BSP_CMD_VIEW_ONU_INFO_WEB count=1");
    EXPECT_EQ(onus().count(), arrivals);
    Room<20> sla;
    EXPECT_EQ(bsp_pon_onu_sla_get(port, onu_id, sla.bytes.data()), value_of(IPC_ERR_BROKEN_ANSWER));
    EXPECT_EQ(sla.bytes, Room<20>().bytes);
    expect_order();
}

TEST_F(WireFault, AnotherStatusReachesTheCaller)
{
    control("fault status 77 command=BSP_CMD_ONU_BIND count=1");
    EXPECT_EQ(bind(6, 1), 77u);
    EXPECT_EQ(id_of(1), "6");
    expect_order();
}

TEST_F(WireFault, AResultThatIsMissingIsNoDatabase)
{
    control("fault no-result count=2");
    EXPECT_EQ(onus().text(), "");
    EXPECT_EQ(stations().text(), "");
    expect_order();
}

TEST_F(WireFault, AResultThatIsTooBigIsNoDatabase)
{
    control("fault big-result count=1");
    const View view = onus();
    EXPECT_EQ(view.status(), BSP_OK);
    EXPECT_EQ(view.text(), "");
    expect_order();
}

TEST_F(WireFault, AResultThatIsNoTableHasNoRows)
{
    for (const char *how : {"cut", "text", "type"}) {
        control("fault bad-result " + std::string(how) + " count=2");
        EXPECT_EQ(onus().count(), 0u) << how;
        EXPECT_EQ(stations().count(), 0u) << how;
        expect_order();
    }
}

TEST_F(WireFault, ATableOfOtherColumnsHasNoneOfThoseAskedFor)
{
    control("fault bad-result columns count=1");
    const View view = onus();
    EXPECT_EQ(view.count(), 2u);
    EXPECT_EQ(view.text(0, "mac"), "null");
    expect_order();
}

TEST_F(WireFault, AShortAnswerReadsAsZerosBehindItsEnd)
{
    for (const uint32_t left : {0u, 1u, 4u, 100u}) {
        control("fault short " + std::to_string(left) + " count=1");
        Room<20> sla;
        EXPECT_EQ(bsp_pon_onu_sla_get(port, onu_id, sla.bytes.data()), BSP_OK);
        const std::array<char, 20> zeros{};
        EXPECT_EQ(sla.bytes, zeros) << left;
        EXPECT_TRUE(sla.guarded());
    }
    expect_order();
}

TEST_F(WireFault, AShortAnswerHasNoText)
{
    control("fault short 20 count=2");
    Room<1024> text;
    EXPECT_EQ(bsp_pon_get_allonuinfo(text.bytes.data()), BSP_OK);
    EXPECT_STREQ(text.bytes.data(), "");
    EXPECT_EQ(config().text(), "");
    expect_order();
}

TEST_F(WireFault, AnOversizedAnswerIsDeliveredUpToTheRoom)
{
    control("fault oversized 8192 count=3");
    Room<20> sla;
    EXPECT_EQ(bsp_pon_onu_sla_get(port, onu_id, sla.bytes.data()), BSP_OK);
    EXPECT_EQ(sla.bytes, sla_in_order);
    EXPECT_TRUE(sla.guarded());

    Room<sizeof(bsp_pon_msg)> record;
    record.bytes.fill('\0');
    const uint32_t command = BSP_CMD_VIEW_ONU_INFO_WEB;
    std::memcpy(record.bytes.data(), &command, sizeof command);
    EXPECT_EQ(bsp_pon_exec_get(reinterpret_cast<bsp_pon_msg *>(record.bytes.data())), BSP_OK);
    EXPECT_TRUE(record.guarded());

    Room<1024> text;
    EXPECT_EQ(bsp_pon_get_allonuinfo(text.bytes.data()), BSP_OK);
    EXPECT_TRUE(text.guarded());
    EXPECT_LT(strnlen(text.bytes.data(), text.bytes.size()), text.bytes.size());
    expect_order();
}

TEST_F(WireFault, ATextWithoutItsEndEndsWithTheAnswer)
{
    control("fault unterminated count=4");
    Room<1024> text;
    EXPECT_EQ(bsp_pon_get_allonuinfo(text.bytes.data()), BSP_OK);
    EXPECT_EQ(strnlen(text.bytes.data(), text.bytes.size()), text.bytes.size() - 1);
    EXPECT_TRUE(text.guarded());

    const std::string cut = config().text();
    EXPECT_EQ(cut.size(), sizeof(bsp_pon_msg_ext::ext_payload));
    EXPECT_EQ(cut.back(), 'x');
    EXPECT_EQ(link_states().count(), 0u) << "it is no table any more";
    EXPECT_EQ(stations().text(), "") << "there is no such file";
    expect_order();
}

TEST_F(WireFault, AServiceThatDiesBeforeTheChangeLeavesNothingOfIt)
{
    control("fault kill before command=BSP_CMD_ONU_BIND");
    EXPECT_EQ(bind(6, 1), BSP_ERR_IPC);
    EXPECT_EQ(bind(6, 1), BSP_ERR_IPC) << "it is gone";
    simulator.kill();
    simulator.start();
    EXPECT_EQ(id_of(1), "null");
    expect_order();
    EXPECT_EQ(bind(6, 1), BSP_OK) << "the fault went with it";
}

TEST_F(WireFault, AServiceThatDiesAfterTheChangeHasMadeIt)
{
    control("fault kill after command=BSP_CMD_ONU_BIND");
    EXPECT_EQ(bind(6, 1), BSP_ERR_IPC);
    simulator.kill();
    simulator.start();
    EXPECT_EQ(id_of(1), "6");
    expect_order();
}

TEST_F(WireFault, AllAtOnceDoNoHarm)
{
    for (const char *fault : {"short 60", "oversized 8192", "duplicated 3", "no-result", "big-result", "bad-result",
                              "unterminated", "late 1", "status 77"})
        control("fault " + std::string(fault) + " percent=15");
    for (int round = 0; round < 200; ++round) {
        Room<20> sla;
        const uint32_t got = bsp_pon_onu_sla_get(port, onu_id, sla.bytes.data());
        EXPECT_TRUE(got == BSP_OK || got == 77 || got == value_of(IPC_ERR_BROKEN_ANSWER)) << got;
        Room<1024> text;
        const uint32_t status = bsp_pon_get_allonuinfo(text.bytes.data());
        EXPECT_TRUE(status == BSP_OK || status == 77 || status == value_of(IPC_ERR_BROKEN_ANSWER)) << status;
        EXPECT_TRUE(sla.guarded() && text.guarded());
        for (View (*ask)() : {onus, config, link_states, stations}) {
            const View view = ask();
            EXPECT_TRUE(view.status() == BSP_OK || view.status() == 77 || view.status() == BSP_ERR_IPC)
                << view.status();
            for (uint32_t row = 0; row < view.count(); ++row)
                view.text(row, "mac");
        }
    }
    control("fault clear");
    onus(); // receives the last duplicate
    link_states();
    expect_order();
}

} // namespace
