// These tests carry the configuration of a full OLT to another one through the library.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "board/datastore.h"
#include "board/util.h"
#include "bsp_pon.h"
#include "control.h"
#include "full_olt.h"
#include "simulator.h"
#include "text/sha256.h"
#include "view.h"

namespace
{

std::string saved()
{
    void *data = nullptr;
    uint32_t length = 0;
    EXPECT_EQ(bsp_profile_exec_get_cfgwr(BSP_CMD_CONFIG_READ, &data, &length), BSP_OK);
    std::string text(static_cast<const char *>(data), length);
    pfree(data);
    return text;
}

uint32_t load(const std::string &text)
{
    constexpr size_t longest_part = 4048;
    const text::Sha256 digest = text::sha256(text);
    for (size_t offset = 0; offset < text.size(); offset += longest_part) {
        const std::string bytes = text.substr(offset, longest_part);
        const uint32_t head[] = {static_cast<uint32_t>(offset), static_cast<uint32_t>(text.size()),
                                 static_cast<uint32_t>(bytes.size())};
        std::string part(reinterpret_cast<const char *>(head), sizeof head);
        part.append(digest.begin(), digest.end());
        part += bytes;
        EXPECT_EQ(bsp_profile_exec_set(BSP_CMD_CONFIG_LOAD_PART, part.data(), static_cast<uint32_t>(part.size())),
                  BSP_OK);
    }
    return bsp_profile_exec_set(BSP_CMD_CONFIG_LOAD, digest.data(), digest.size());
}

// Returns a view as it was received.
template <class Ask>
std::string document(Ask ask)
{
    db_handle *db = nullptr;
    EXPECT_EQ(ask(&db), BSP_OK);
    const char *text = db_text(db, nullptr);
    std::string copy(text ? text : "");
    EXPECT_FALSE(copy.empty());
    db_free(db);
    return copy;
}

std::string views()
{
    std::string text = document(bsp_pon_get_uni_attribute_snmp) + document(bsp_pon_get_loop_detect_info);
    for (const uint32_t command : {BSP_CMD_VIEW_ONU_INFO_WEB, BSP_CMD_VIEW_ONU_INFO_SNMP, BSP_CMD_BLACKLIST_GET})
        text += document([command](db_handle **db) { return bsp_pon_exec_get_json_(command, 0, 0, db); });
    return text;
}

// Returns the VLANs of the UNI ports of a port's ONUs, which must be bound.
std::string vlans(uint32_t pon_port)
{
    std::string text;
    for (uint32_t id = 0; id < onus_per_port; ++id)
        text += document([=](db_handle **db) { return bsp_pon_onu_ctc_get_vlan_json(db, pon_port, id); });
    return text;
}

void set_vlan(uint32_t pon_port, uint32_t onu_id, uint16_t vlan)
{
    bsp_onu_msg record{};
    record.onu_cmd = BSP_CMD_ONU_VLAN_SET;
    record.onu_pon_port = pon_port;
    record.onu_onu_id = onu_id;
    record.onu_uni_port = 1;
    constexpr uint16_t tpid = 0x8100;
    record.onu_data[0] = 1; // tag
    std::memcpy(&record.onu_data[2], &vlan, sizeof vlan);
    std::memcpy(&record.onu_data[6], &tpid, sizeof tpid);
    EXPECT_EQ(bsp_pon_onu_ctc_config(&record), BSP_OK);
}

void tell_some()
{
    const Mac stranger{0x00, 0x1b, 0x21, 0, 0, 1};
    EXPECT_EQ(bsp_pon_blacklist_add_onu_auto_id(2, stranger.data(), "stolen"), BSP_OK);
    EXPECT_EQ(bsp_pon_loop_detect_recover_time(77), BSP_OK);
    for (uint32_t id = 0; id < onus_per_port; ++id)
        set_vlan(3, id, static_cast<uint16_t>(100 + id));
    control("step 60");
}

TEST(Configuration, AFullOltBecomesTheSameOnAnotherService)
{
    std::string text, before, vlans_before;
    {
        Simulator first(full_olt);
        bind_all();
        tell_some();
        before = views();
        vlans_before = vlans(3);
        text = saved();
    }
    const Simulator second(full_olt);
    EXPECT_FALSE(views() == before);
    ASSERT_EQ(load(text), BSP_OK);
    EXPECT_TRUE(views() == before);
    EXPECT_TRUE(vlans(3) == vlans_before);
    EXPECT_TRUE(saved() == text);
}

TEST(Configuration, AnotherOltRefusesIt)
{
    std::string text;
    {
        const Simulator first({"--seed", "1"});
        text = saved();
    }
    const Simulator second({"--seed", "2"});
    EXPECT_EQ(load(text), 4096u);
}

} // namespace
