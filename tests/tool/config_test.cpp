// These tests show, compare and apply configurations of live OLTs.
#include <chrono>
#include <filesystem>
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

} // namespace
