// These tests show, compare and apply configurations of live OLTs.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control.h"
#include "process.h"
#include "simulator.h"

namespace
{

using testing::ContainsRegex;
using testing::HasSubstr;
using Words = std::vector<std::string>;

const std::string mac = "02:00:5e:10:00:01";

Words olt_with(const std::string &ports)
{
    return {"--ports", ports, "--arrivals", "4", "--silent", "0", "--speed", "0"};
}

std::string done(const Words &words)
{
    const Finished finished = ponctl(words);
    EXPECT_EQ(finished.code, 0) << testing::PrintToString(words) << finished.err;
    return finished.out;
}

class LiveConfig : public testing::Test
{
protected:
    LiveConfig()
    {
        setenv("XDG_STATE_HOME", folder.c_str(), 1);
        std::filesystem::create_directory(folder);
    }
    ~LiveConfig() override
    {
        unsetenv("XDG_STATE_HOME");
        std::filesystem::remove_all(folder);
    }

    // Binds an ONU, and saves the configuration in a file.
    void bind_and_save() const
    {
        done({"onu", "bind", "1", mac, "--id", "5", "--yes"});
        done({"onu", "describe", "1", "5", "shop"});
        control("step 60");
        done({"config", "save", saved});
    }

    const std::string folder = Simulator::folder() + "/state", saved = Simulator::folder() + "/state/saved";
};

TEST_F(LiveConfig, IsAppliedAgainAndLeavesTheStateAlone)
{
    const Simulator simulator(olt_with("2"));
    bind_and_save();
    EXPECT_THAT(done({"config", "show"}), HasSubstr("binding 1/5 mac = " + mac + "\nbinding 1/5 mode = 0\n"));
    control("step 60");
    EXPECT_EQ(done({"config", "diff", saved}), "");
    done({"onu", "describe", "1", "5", "bakery"});
    done({"onu", "bind", "2", "02:00:5e:10:00:02", "--id", "7", "--yes"});
    const std::string uptime = done({"bulk", "olt", "--columns", "uptime", "-o", "csv"});
    EXPECT_THAT(ponctl({"config", "diff", saved}).out,
                ContainsRegex("^- binding 1/5 description = shop\n\\+ binding 1/5 description = bakery\n"
                              "\\+ binding 2/7 mac = 02:00:5e:10:00:02\n"));
    EXPECT_THAT(done({"config", "apply", saved, "--yes"}), HasSubstr("+ binding 1/5 description = shop\n"));
    EXPECT_EQ(done({"config", "diff", saved}), "");
    EXPECT_EQ(done({"bulk", "olt", "--columns", "uptime", "-o", "csv"}), uptime);
}

TEST_F(LiveConfig, ThatNobodyConfirmsIsRolledBack)
{
    const Simulator simulator(olt_with("2"));
    bind_and_save();
    done({"onu", "describe", "1", "5", "bakery"});
    const std::string before = done({"config", "show"});
    done({"config", "apply", saved, "--confirm", "1", "--yes"});
    EXPECT_NE(done({"config", "show"}), before);
    for (int tries = 0; tries < 300 && done({"config", "show"}) != before; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(done({"config", "show"}), before);
}

TEST_F(LiveConfig, OfALargerOltIsAppliedAsFarAsItFits)
{
    {
        const Simulator large(olt_with("4"));
        done({"onu", "bind", "4", "02:00:5e:10:00:04", "--id", "1", "--yes"});
        bind_and_save();
    }
    const Simulator small(olt_with("2"));
    const Finished refused = ponctl({"config", "apply", saved, "--yes"});
    EXPECT_EQ(refused.code, 2);
    EXPECT_THAT(refused.err, HasSubstr("does not fit: binding 4/1: the OLT has no PON port 4"));
    done({"config", "apply", saved, "--what-fits", "--yes"});
    EXPECT_THAT(done({"config", "show"}), HasSubstr("binding 1/5 description = shop\n"));
}

// A Kept is a command line, and a line of the configuration that comes of it.
struct Kept {
    Words words;
    std::string line;
};

TEST_F(LiveConfig, ShowsAllThatTheOltKeepsByNames)
{
    const Simulator simulator(olt_with("2"));
    bind_and_save();
    const std::string zeros(64, '0');
    const std::string uni_profile = "hex:010100e8030000f205000000000000000000000100000000000000000001000000"
                                    "0081" +
                                    zeros;
    const std::vector<Kept> kept{
        {{"call", "bsp_p2p_state_set", "first=1", "second=128", "state=on"}, "P2P_STATE_SET pon_port 1 idx 0 on = on"},
        {{"call", "bsp_onu_p2p_own_port_set", "pon_port=1", "value=2"},
         "P2P_OWN_PORT_SET pon_port 1 idx 0 own_port = 2"},
        {{"call", "bsp_p2p_cfg_set", "pon_port=1", "arg108=1", "cfg.rate=5000", "cfg.first_vlan=100",
          "cfg.last_vlan=200", "cfg.multicast=on"},
         "P2P_CFG_SET pon_port 1 idx 0 rest = forward\n"
         "block BSP_CMD_P2P_CFG_SET pon_port 1 idx 0 rate = 5000 kbit/s\n"
         "block BSP_CMD_P2P_CFG_SET pon_port 1 idx 0 first_vlan = 100\n"
         "block BSP_CMD_P2P_CFG_SET pon_port 1 idx 0 last_vlan = 200\n"
         "block BSP_CMD_P2P_CFG_SET pon_port 1 idx 0 broadcast = off\n"
         "block BSP_CMD_P2P_CFG_SET pon_port 1 idx 0 multicast = on"},
        {{"call", "bsp_p2p_entry_set", "pon_port=1", "arg108=0x800", "arg104=3", "entry.action=drop",
          "entry.from_onu=5", "entry.to_port=2", "entry.to_onu=128", "entry.rate=700"},
         "P2P_ENTRY_SET pon_port 1 idx 3 traffic = 0x0800\n"
         "block BSP_CMD_P2P_ENTRY_SET pon_port 1 idx 3 action = drop\n"
         "block BSP_CMD_P2P_ENTRY_SET pon_port 1 idx 3 from_onu = 5\n"
         "block BSP_CMD_P2P_ENTRY_SET pon_port 1 idx 3 to_port = 2\n"
         "block BSP_CMD_P2P_ENTRY_SET pon_port 1 idx 3 to_onu = 128\n"
         "block BSP_CMD_P2P_ENTRY_SET pon_port 1 idx 3 rate = 700 kbit/s"},
        {{"call", "bsp_pon_plat_fdb_cfg_set", "cfg.ageing=600", "cfg.learning=on", "cfg.port_limit=1000"},
         "FDB_CFG_SET pon_port 0 idx 0 ageing = 600 s\n"
         "block BSP_CMD_FDB_CFG_SET pon_port 0 idx 0 learning = on\n"
         "block BSP_CMD_FDB_CFG_SET pon_port 0 idx 0 port_limit = 1000"},
        {{"call", "bsp_llid_behavior_set", "pon_port=1", "llid=7", "behavior=1", "params.mac_limit=5",
          "params.broadcast_rate=100", "params.multicast_rate=200", "params.unknown_rate=300",
          "params.over_limit=dropped", "params.isolated=yes"},
         "LLID_BEHAVIOR_SET pon_port 1 idx 7 frames = forwarded\n"
         "block BSP_CMD_LLID_BEHAVIOR_SET pon_port 1 idx 7 mac_limit = 5\n"
         "block BSP_CMD_LLID_BEHAVIOR_SET pon_port 1 idx 7 broadcast_rate = 100 kbit/s\n"
         "block BSP_CMD_LLID_BEHAVIOR_SET pon_port 1 idx 7 multicast_rate = 200 kbit/s\n"
         "block BSP_CMD_LLID_BEHAVIOR_SET pon_port 1 idx 7 unknown_rate = 300 kbit/s\n"
         "block BSP_CMD_LLID_BEHAVIOR_SET pon_port 1 idx 7 over_limit = dropped\n"
         "block BSP_CMD_LLID_BEHAVIOR_SET pon_port 1 idx 7 isolated = yes"},
        // These two share a code, and differ in their index.
        {{"call", "bsp_debug_8022_mpcp_set", "pon_port=1", "value=1", "data.discovery_interval=2000",
          "data.discovery_window=20000"},
         "MPCP_SET pon_port 1 idx 1 discovery_interval = 2000 ms"},
        {{"call", "bsp_debug_8022_optical_status", "pon_port=1", "id=0", "status.valid=1", "status.temperature=41.5"},
         "OPTICS_STATUS_SET pon_port 1 idx 0 temperature = 41.50 degC"},
        {{"call", "bsp_debug_plat_ge_phy_set", "port=2", "value=loopback,full-duplex"},
         "DEBUG_GE_PHY_SET pon_port 2 idx 0 control = loopback, full duplex"},
        {{"call", "bsp_debug_ctc_oam", "first=on", "second=1"}, "DEBUG_CTC_OAM pon_port 1 idx 0 on = on"},
        {{"call", "bsp_debug_onu_debug", "first=on", "second=2"}, "DEBUG_ONU pon_port 2 idx 0 on = on"},
        {{"call", "bsp_pon_prof_uni_set", "profile_id=3", "value=1", "body=" + uni_profile},
         "UNI_PROFILE_SET pon_port 0 idx 3 up_cir = 1000 kbit/s"},
        {{"call", "bsp_pon_onu_ctc_set_oui", "oui=hex:001a2b"}, "OUI_SET pon_port 0 idx 0 oui = 00:1a:2b"},
        {{"call", "bsp_pon_onu_ctc_oam_print", "value=messages"}, "OAM_PRINT pon_port 0 idx 0 level = messages"},
    };
    for (const Kept &one : kept) {
        Words words = one.words;
        words.emplace_back("--yes");
        done(words);
    }
    done({"upgrade", "add", "spring", "SIMA", "S040", "2.1.0", "4000000"});
    done({"upgrade", "bind", "1", "spring"});
    const std::string shown = done({"config", "show"});
    for (const Kept &one : kept)
        EXPECT_THAT(shown, HasSubstr("block BSP_CMD_" + one.line + "\n"));
    EXPECT_THAT(shown, HasSubstr("block BSP_CMD_UPGRADE_TYPE_BIND_PORT pon_port 1 idx 0 name = spring\n"));
    EXPECT_THAT(shown, testing::Not(HasSubstr("hex:")));
}

TEST_F(LiveConfig, ThatAnOnuIsNotAbleToDoesNotFit)
{
    const Simulator simulator(olt_with("2"));
    bind_and_save();
    std::string text;
    {
        std::ifstream file(saved);
        text.assign(std::istreambuf_iterator<char>(file), {});
    }
    const size_t last = text.rfind("{\"rows\":");
    const unsigned long rows = std::stoul(text.substr(last + 8));
    const std::string row =
        R"({"table":"onu_setting","row":[1,{"hex":"02005e100001"},683,8,{"hex":"01"},{"hex":"00"},0]})";
    std::ofstream(saved) << text.substr(0, last) << row << "\n{\"rows\":" << rows + 1 << "}\n";
    const Finished refused = ponctl({"config", "apply", saved, "--yes"});
    EXPECT_EQ(refused.code, 2);
    EXPECT_THAT(refused.err,
                ContainsRegex("BSP_CMD_ONU_PAUSE_GET uni 8: the ONU is a SIM[A-C] [A-Z0-9]+, which has only "
                              "[1-4] UNI ports?\n"));
    EXPECT_EQ(ponctl({"config", "diff", saved, "--what-fits"}).code, 0);
    EXPECT_EQ(ponctl({"config", "apply", saved, "--what-fits", "--yes"}).code, 0);
}

} // namespace
