// These tests bind and release ONUs through the library, the host edition and a simulator in a process of its own.
#include <gtest/gtest.h>

#include <string>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "simulator.h"
#include "view.h"

namespace
{

// Returns the ONUs of a port, as the web server's view shows them.
View onus(uint32_t pon_port)
{
    return View(
        [pon_port](db_handle **db) { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, pon_port, 0, db); });
}

class Binding : public testing::Test
{
protected:
    Simulator simulator{{"--arrivals", "4", "--silent", "0"}};
    std::string first = onus(3).text(0, "mac");
    std::string second = onus(3).text(1, "mac");
    Mac first_mac = parse(first);
    Mac second_mac = parse(second);
};

TEST_F(Binding, NewOnusWait)
{
    const View port = onus(3);
    EXPECT_EQ(port.count(), 4u);
    EXPECT_EQ(port.of(first, "state"), "waiting");
    EXPECT_EQ(port.of(first, "onu_id"), "null");
}

TEST_F(Binding, BindsToTheIdThatIsAskedFor)
{
    EXPECT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), "customer", "room", 2, "note"), BSP_OK);
    const View port = onus(3);
    EXPECT_EQ(port.of(first, "onu_id"), "17");
    EXPECT_EQ(port.of(first, "state"), "online");
    EXPECT_EQ(port.of(first, "mode"), "2");
    EXPECT_EQ(port.of(first, "text_a"), "customer");
    EXPECT_EQ(port.of(first, "text_b"), "room");
    EXPECT_EQ(port.of(first, "text_c"), "note");
}

TEST_F(Binding, RefusesTextsThatTellATerminalAnything)
{
    for (const char *text : {"\033[2J", "\x7f",
                             "\xc2\x9b"
                             "2J",
                             "\xe2\x80\xae"
                             "cod",
                             "\xe2\x81\xa6", "\xd8\x9c", "\xff"}) {
        EXPECT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), text, nullptr, 0, nullptr), PON_ERR_BAD_RECORD)
            << text;
        EXPECT_EQ(onus(3).of(first, "state"), "waiting");
    }
    EXPECT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), "Tr\xc3\xa4ger", nullptr, 0, nullptr), BSP_OK);
}

TEST_F(Binding, BindsToAnIdThatTheServicePicks)
{
    EXPECT_EQ(bsp_pon_bind_onu_auto_id(3, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_bind_onu_auto_id(3, second_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    const View port = onus(3);
    EXPECT_EQ(port.of(first, "onu_id"), "1");
    EXPECT_EQ(port.of(second, "onu_id"), "2");
}

TEST_F(Binding, RefusesAnIdInUse)
{
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_bind_onu_spec_id(3, 17, second_mac.data(), nullptr, nullptr, 0, nullptr), 4006u);
    EXPECT_EQ(onus(3).of(second, "state"), "waiting");
}

TEST_F(Binding, ReleasesById)
{
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_no_bind_onu_spec_id(3, 17), BSP_OK);
    EXPECT_EQ(onus(3).of(first, "state"), "waiting");
}

TEST_F(Binding, ReleasesByMac)
{
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_no_bind_onu_by_mac(3, first_mac.data()), BSP_OK);
    EXPECT_EQ(onus(3).of(first, "state"), "waiting");
}

TEST_F(Binding, ReleasesByIdAndMacOnlyWhenBothFit)
{
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_no_bind_onu_spec_id_and_mac(3, 18, first_mac.data()), 4010u);
    EXPECT_EQ(onus(3).of(first, "state"), "online");
    EXPECT_EQ(bsp_pon_no_bind_onu_spec_id_and_mac(3, 17, first_mac.data()), BSP_OK);
    EXPECT_EQ(onus(3).of(first, "state"), "waiting");
}

TEST_F(Binding, ReleasesAPortAndNoOther)
{
    const std::string other = onus(4).text(0, "mac");
    ASSERT_EQ(bsp_pon_bind_onu_auto_id(4, parse(other).data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    ASSERT_EQ(bsp_pon_bind_onu_auto_id(3, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_no_bind_onu_all(3), BSP_OK);
    EXPECT_EQ(onus(3).of(first, "state"), "waiting");
    EXPECT_EQ(onus(4).of(other, "state"), "online");
}

TEST_F(Binding, ReleasesWhatIsOfflineAndKeepsTheRest)
{
    const Mac absent{0x02, 0xff, 0xff, 0xff, 0xff, 0x01};
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 20, absent.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 21, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    ASSERT_EQ(onus(3).of("02:ff:ff:ff:ff:01", "state"), "offline");
    EXPECT_EQ(bsp_pon_no_bind_offline_onu_all(3), BSP_OK);
    EXPECT_EQ(onus(3).of("02:ff:ff:ff:ff:01", "state"), "none");
    EXPECT_EQ(onus(3).of(first, "onu_id"), "21");
}

TEST_F(Binding, AnUnsupportedOnuIsNotBound)
{
    EXPECT_EQ(bsp_pon_onu_support_set(3, first_mac.data(), 0), BSP_OK);
    EXPECT_EQ(bsp_pon_bind_onu_auto_id(3, first_mac.data(), nullptr, nullptr, 0, nullptr), 4009u);
    EXPECT_EQ(bsp_pon_onu_support_set(3, first_mac.data(), 1), BSP_OK);
    EXPECT_EQ(bsp_pon_bind_onu_auto_id(3, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
}

TEST_F(Binding, AnUnknownCommandIsAnsweredAsSuch)
{
    EXPECT_EQ(bsp_pon_cfg(9999, 3, nullptr, 0), 4001u);
}

} // namespace
