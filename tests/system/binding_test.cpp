// ONUs bound and released through the library, the host edition and a simulator in a process of its own.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

#include "board/datastore.h"
#include "bsp_pon.h"
#include "simulator.h"

namespace
{

using Mac = std::array<uint8_t, 6>;

// The ONUs of a port, as the web server's view has them.
class Onus
{
public:
    explicit Onus(uint32_t pon_port)
    {
        EXPECT_EQ(bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, pon_port, 0, &db), BSP_OK);
    }
    ~Onus() { db_free(db); }
    Onus(const Onus &) = delete;

    uint32_t count() const { return db_rows(db); }

    // A cell of the ONU with this MAC address; "none" where there is no such ONU, "null" where there is no value.
    std::string of(const std::string &mac, const char *column) const
    {
        for (uint32_t row = 0; row < db_rows(db); ++row) {
            if (text(row, "mac") == mac) return text(row, column);
        }
        return "none";
    }

    std::string text(uint32_t row, const char *column) const
    {
        const char *cell = db_get_text(db, row, column);
        return cell ? cell : "null";
    }

private:
    db_handle *db = nullptr;
};

Mac parse(const std::string &text)
{
    Mac mac{};
    std::sscanf(text.c_str(), "%hhx:%hhx:%hhx:%hhx:%hhx:%hhx", &mac[0], &mac[1], &mac[2], &mac[3], &mac[4], &mac[5]);
    return mac;
}

class Binding : public testing::Test
{
protected:
    Simulator simulator{{"--arrivals", "4", "--silent", "0"}};
    std::string first = Onus(3).text(0, "mac");
    std::string second = Onus(3).text(1, "mac");
    Mac first_mac = parse(first);
    Mac second_mac = parse(second);
};

TEST_F(Binding, NewOnusWait)
{
    const Onus onus(3);
    EXPECT_EQ(onus.count(), 4u);
    EXPECT_EQ(onus.of(first, "state"), "waiting");
    EXPECT_EQ(onus.of(first, "onu_id"), "null");
}

TEST_F(Binding, BindsToTheIdThatIsAskedFor)
{
    EXPECT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), "customer", "room", 2, "note"), BSP_OK);
    const Onus onus(3);
    EXPECT_EQ(onus.of(first, "onu_id"), "17");
    EXPECT_EQ(onus.of(first, "state"), "online");
    EXPECT_EQ(onus.of(first, "mode"), "2");
    EXPECT_EQ(onus.of(first, "text_a"), "customer");
    EXPECT_EQ(onus.of(first, "text_b"), "room");
    EXPECT_EQ(onus.of(first, "text_c"), "note");
}

TEST_F(Binding, BindsToAnIdThatTheServicePicks)
{
    EXPECT_EQ(bsp_pon_bind_onu_auto_id(3, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_bind_onu_auto_id(3, second_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    const Onus onus(3);
    EXPECT_EQ(onus.of(first, "onu_id"), "1");
    EXPECT_EQ(onus.of(second, "onu_id"), "2");
}

TEST_F(Binding, RefusesAnIdInUse)
{
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_bind_onu_spec_id(3, 17, second_mac.data(), nullptr, nullptr, 0, nullptr), 4006u);
    EXPECT_EQ(Onus(3).of(second, "state"), "waiting");
}

TEST_F(Binding, ReleasesById)
{
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_no_bind_onu_spec_id(3, 17), BSP_OK);
    EXPECT_EQ(Onus(3).of(first, "state"), "waiting");
}

TEST_F(Binding, ReleasesByMac)
{
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_no_bind_onu_by_mac(3, first_mac.data()), BSP_OK);
    EXPECT_EQ(Onus(3).of(first, "state"), "waiting");
}

TEST_F(Binding, ReleasesByIdAndMacOnlyWhenBothFit)
{
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 17, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_no_bind_onu_spec_id_and_mac(3, 18, first_mac.data()), 4010u);
    EXPECT_EQ(Onus(3).of(first, "state"), "online");
    EXPECT_EQ(bsp_pon_no_bind_onu_spec_id_and_mac(3, 17, first_mac.data()), BSP_OK);
    EXPECT_EQ(Onus(3).of(first, "state"), "waiting");
}

TEST_F(Binding, ReleasesAPortAndNoOther)
{
    const std::string other = Onus(4).text(0, "mac");
    ASSERT_EQ(bsp_pon_bind_onu_auto_id(4, parse(other).data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    ASSERT_EQ(bsp_pon_bind_onu_auto_id(3, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    EXPECT_EQ(bsp_pon_no_bind_onu_all(3), BSP_OK);
    EXPECT_EQ(Onus(3).of(first, "state"), "waiting");
    EXPECT_EQ(Onus(4).of(other, "state"), "online");
}

TEST_F(Binding, ReleasesWhatIsOfflineAndKeepsTheRest)
{
    const Mac absent{0x02, 0xff, 0xff, 0xff, 0xff, 0x01};
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 20, absent.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    ASSERT_EQ(bsp_pon_bind_onu_spec_id(3, 21, first_mac.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
    ASSERT_EQ(Onus(3).of("02:ff:ff:ff:ff:01", "state"), "offline");
    EXPECT_EQ(bsp_pon_no_bind_offline_onu_all(3), BSP_OK);
    EXPECT_EQ(Onus(3).of("02:ff:ff:ff:ff:01", "state"), "none");
    EXPECT_EQ(Onus(3).of(first, "onu_id"), "21");
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
