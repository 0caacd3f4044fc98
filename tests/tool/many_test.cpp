// These tests run ponctl against a live simulator, as an operator who brings customers into service does.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ponctl/support/process.h"
#include "simulator.h"

namespace
{

using testing::AllOf;
using testing::HasSubstr;

// Tool has an OLT whose first port has ONUs that wait, and a folder for files.
class Tool : public testing::Test
{
protected:
    ~Tool() override { std::remove(file.c_str()); }

    static std::string out_of(const std::vector<std::string> &words)
    {
        const Finished finished = ponctl(words);
        EXPECT_EQ(finished.code, 0) << finished.err;
        return finished.out;
    }

    // Returns the MAC addresses of the ONUs of port 1, in order.
    static std::vector<std::string> macs()
    {
        std::istringstream lines(out_of({"onu", "list", "1", "--columns", "mac", "--no-headings"}));
        std::vector<std::string> found;
        for (std::string line; std::getline(lines, line);)
            found.push_back(line.substr(0, line.find(' ')));
        return found;
    }

    const std::string &table(const std::string &text) const
    {
        std::ofstream(file) << text;
        return file;
    }

    const Simulator simulator{{"--fresh", "--speed", "100"}};
    const std::string file = Simulator::folder() + "/onus.csv";
};

TEST_F(Tool, ImportsWhatItExported)
{
    const auto mac = macs();
    ASSERT_GE(mac.size(), 2u);
    const std::string rows = "1,5," + mac[0] +
                             ",0,a,,,\"main street, 7\",,100,200,3000,2,10,50000\n" //
                             "1,9," +
                             mac[1] + ",0,,,,-dash,,,,,,,\n";
    const std::string heading = "pon_port,onu_id,mac,mode,text_a,text_b,text_c,description,loid,sla_fixed,sla_assured,"
                                "sla_maximum,sla_priority,sla_weight,sla_down\n";
    EXPECT_THAT(out_of({"onu", "import", table(heading + rows), "--dry-run"}), HasSubstr("bind, description, SLA\n"));
    EXPECT_EQ(out_of({"onu", "export"}), "");
    EXPECT_THAT(out_of({"onu", "import", file, "--yes"}), HasSubstr("done"));
    const std::string exported = out_of({"onu", "export", "1"});
    EXPECT_EQ(exported, heading + "1,5," + mac[0] + ",0,a,,,\"main street, 7\",,100,200,3000,2,10,50000\n" + "1,9," +
                            mac[1] + ",0,,,,'-dash,,,,,,,\n");
    EXPECT_THAT(out_of({"onu", "import", table(exported)}), AllOf(HasSubstr("nothing"), Not(HasSubstr("bind"))));
}

TEST_F(Tool, SetsWhatIsNamedAndKeepsTheRest)
{
    const auto mac = macs();
    out_of({"onu", "import", table("pon_port,onu_id,mac\n1,5," + mac.at(0) + "\n"), "--yes"});
    out_of({"onu", "set", "1/5", "mgmt", "mode=static-address", "address=10.0.0.2/24", "gateway=10.0.0.1", "--yes"});
    out_of({"onu", "set", "1/5", "mgmt", "vlan=7", "--yes"});
    EXPECT_THAT(out_of({"onu", "services", "1/5", "mgmt"}),
                AllOf(HasSubstr("address  10.0.0.2\n"), HasSubstr("mask     255.255.255.0\n"),
                      HasSubstr("gateway  10.0.0.1\n"), HasSubstr("vlan     7\n"), HasSubstr("static address\n")));
    EXPECT_THAT(out_of({"onu", "set", "1/5", "mgmt", "mode=off", "--dry-run"}),
                AllOf(HasSubstr("1/5 " + mac[0] + " online"),
                      HasSubstr("address 10.0.0.2 -> 0.0.0.0, mask 255.255.255.0 -> 0.0.0.0, gateway 10.0.0.1 -> "
                                "0.0.0.0, vlan 7 -> 0, mode static address -> off\n"),
                      HasSubstr("1 ONU, of which 1 is online\n")));
    out_of({"onu", "set", "1/5", "mgmt", "mode=off", "--yes"});
    EXPECT_THAT(out_of({"onu", "services", "1/5", "mgmt"}), HasSubstr("vlan     0\n"));
}

TEST_F(Tool, WaitsForTheEndOfUpgrades)
{
    const auto mac = macs();
    out_of({"onu", "import", table("pon_port,onu_id,mac\n1,5," + mac.at(0) + "\n"), "--yes"});
    std::istringstream kind(out_of({"upgrade", "status", "1", "--columns", "vendor,model", "--no-headings"}));
    std::string vendor, model;
    kind >> vendor >> model;
    out_of({"upgrade", "add", "spring", vendor, model, "9.9", "100000"});
    out_of({"upgrade", "bind", "1", "spring", "--onus", "5"});
    EXPECT_THAT(out_of({"upgrade", "start", "1/5", "--wait", "--yes"}), testing::ContainsRegex("1/5 done +9.9 +-\n"));
    out_of({"upgrade", "add", "autumn", vendor, model, "9.8", "100000000"});
    out_of({"upgrade", "bind", "1", "autumn", "--onus", "5"});
    const Finished late = ponctl({"upgrade", "start", "1/5", "--wait", "--timeout", "0", "--yes"});
    EXPECT_EQ(late.code, 1);
    EXPECT_THAT(late.err, HasSubstr("ponctl: --timeout: 0 s have passed, and upgrades are still under way\n"));
}

} // namespace
