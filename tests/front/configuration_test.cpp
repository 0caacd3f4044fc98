// These tests check what a configuration may say, and what is said of a wrong one.
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "daemon/configuration.h"
#include "toml_file/section.h"

namespace
{

using namespace front;
using testing::HasSubstr;
using testing::SizeIs;

Configuration read(const std::string &text)
{
    return read_configuration(text, "front.toml");
}

std::string error_of(const std::string &text)
{
    try {
        read(text);
    } catch (const toml_file::Error &error) {
        return error.what();
    }
    return "no error";
}

TEST(Configuration, IsCompleteWithoutALine)
{
    const Configuration configuration = default_configuration();
    ASSERT_THAT(configuration.olts, SizeIs(1));
    EXPECT_EQ(configuration.olts[0].name, "olt");
    EXPECT_EQ(configuration.periods[static_cast<size_t>(Table::onus)], 5u);
    EXPECT_EQ(configuration.periods[static_cast<size_t>(Table::optics)], 300u);
    EXPECT_EQ(configuration.http, (ListenSettings{"127.0.0.1", 9911}));
    EXPECT_EQ(configuration.onus, OnuDetail::all);
    EXPECT_EQ(configuration.history, "");
}

TEST(Configuration, SaysWhoMayDoWhat)
{
    const ListenSettings http = read(R"(
[http]
users = "/etc/users"
certificate = "/etc/cert.pem"
key = "/etc/key.pem"
hosts = "Console.Example.net olt"
behind_tls = true
metrics = "users"
)")
                                    .http.value();
    EXPECT_EQ(http.users, "/etc/users");
    EXPECT_EQ(http.certificate, "/etc/cert.pem");
    EXPECT_EQ(http.key, "/etc/key.pem");
    EXPECT_THAT(http.hosts, testing::ElementsAre("console.example.net", "olt"));
    EXPECT_TRUE(http.behind_tls);
    EXPECT_TRUE(http.metrics_need_user);
    EXPECT_THAT(error_of("[http]\nkey = \"/a\"\n"), HasSubstr("belong together"));
    EXPECT_THAT(error_of("[http]\ncertificate = \"/a\"\n"), HasSubstr("belong together"));
    EXPECT_THAT(error_of("[http]\nusers = \"a\"\n"), HasSubstr("a path from the root"));
    EXPECT_THAT(error_of("[http]\nhosts = \"a/b\"\n"), HasSubstr("names with blanks"));
    EXPECT_THAT(error_of("[http]\nmetrics = \"users\"\n"), HasSubstr("there are no users"));
    EXPECT_THAT(error_of("[http]\nmetrics = \"some\"\n"), HasSubstr("metrics"));
}

// Holds the settings of a fleet in a file while it lives.
class FleetFile
{
public:
    explicit FleetFile(const std::string &text) { std::ofstream(name) << text; }
    ~FleetFile() { std::filesystem::remove(name); }
    FleetFile(const FleetFile &) = delete;
    FleetFile &operator=(const FleetFile &) = delete;

    std::string table() const { return "[fleet]\nsettings = \"" + name + "\"\n"; }

private:
    const std::string name = std::filesystem::temp_directory_path() / ("fleet-" + std::to_string(getpid()) + ".toml");
};

TEST(Configuration, ReachesOltsThroughAFleet)
{
    const FleetFile file("client = \"front\"\n[broker]\nsocket = \"/run/broker\"\n");
    const std::string olts = "[[olt]]\nname = \"a\"\nfleet = \"north-3\"\n[[olt]]\nname = \"b\"\n";
    const Configuration configuration = read(file.table() + olts);
    EXPECT_EQ(configuration.olts[0].reach.olt, "north-3");
    EXPECT_TRUE(configuration.olts[0].reach.fleet);
    EXPECT_FALSE(configuration.olts[1].reach.fleet);
    EXPECT_EQ(configuration.olts, read(file.table() + olts).olts) << "it is the same when it is read again";

    EXPECT_EQ(error_of(olts), "front.toml:3: fleet: no fleet is configured: [fleet] names the file of its settings");
    EXPECT_EQ(error_of(file.table() + "[[olt]]\nname = \"a\"\nfleet = \"north/3\"\n"),
              "front.toml:5: fleet: expected the name of an OLT of the fleet, found \"north/3\"");
    EXPECT_EQ(error_of(file.table() + "[[olt]]\nname = \"a\"\nfleet = \"n\"\n[[olt]]\nname = \"b\"\nfleet = \"n\"\n"),
              "front.toml:8: fleet: a is the same OLT");
    EXPECT_EQ(error_of(file.table() + "[[olt]]\nname = \"a\"\nfleet = \"n\"\nsocket_dir = \"/a\"\n"),
              "front.toml:5: fleet: an OLT with a socket_dir is on this machine");
}

TEST(Configuration, SaysEverything)
{
    const Configuration configuration = read(R"(
[[olt]]
name = "north"
socket_dir = "/run/north"
[[olt]]
name = "south"
socket_dir = "/run/south"
[periods]
onus = 10
optics = "10min"
[light]
olt_low = -28
olt_well = -26.5
[history]
file = "/var/lib/ponfront/history.db"
events = 5000
[audit]
file = "/var/log/ponfront/audit.jsonl"
[http]
listen = "[::1]:8080"
[metrics]
onus = "optics"
)");
    ASSERT_THAT(configuration.olts, SizeIs(2));
    EXPECT_EQ(configuration.olts[1], (OltSettings{"south", {.folder = "/run/south"}, 2}));
    EXPECT_EQ(configuration.periods[static_cast<size_t>(Table::onus)], 10u);
    EXPECT_EQ(configuration.periods[static_cast<size_t>(Table::optics)], 600u);
    EXPECT_EQ(configuration.limits.olt, (LightLimits{-28, -26.5}));
    EXPECT_EQ(configuration.history, "/var/lib/ponfront/history.db");
    EXPECT_EQ(configuration.history_limits.events, 5000u);
    EXPECT_EQ(configuration.audit, "/var/log/ponfront/audit.jsonl");
    EXPECT_EQ(configuration.http, (ListenSettings{"::1", 8080}));
    EXPECT_EQ(configuration.onus, OnuDetail::optics);
}

TEST(Configuration, SaysHowLongLightIsKept)
{
    constexpr UnixTime day = 24 * light_hour;
    EXPECT_EQ(default_configuration().history_limits, (HistoryLimits{100'000, 2 * day, 31 * day}));
    EXPECT_EQ(read("[history]\nlight = \"1h\"\nlight_hourly = \"365d\"\n").history_limits,
              (HistoryLimits{100'000, light_hour, 365 * day}));
    EXPECT_THAT(error_of("[history]\nlight = \"59min\"\n"),
                HasSubstr("front.toml:2: light: expected a time from an hour to 31 days"));
    EXPECT_THAT(error_of("[history]\nlight = \"32d\"\n"), HasSubstr("31 days"));
    EXPECT_THAT(error_of("[history]\nlight_hourly = \"5000d\"\n"), HasSubstr("front.toml:2: light_hourly: expected"));
    EXPECT_THAT(error_of("[history]\nlight = \"3d\"\nlight_hourly = \"2d\"\n"),
                HasSubstr("front.toml:3: light_hourly: expected no less than light"));
}

TEST(Configuration, CanServeNoHttp)
{
    EXPECT_EQ(read("[http]\nenabled = false\n").http, std::nullopt);
}

TEST(Configuration, IsRefusedWithLineAndReason)
{
    EXPECT_THAT(error_of("[[olt]\n"), HasSubstr("front.toml:1: "));
    EXPECT_EQ(error_of("\n[perods]\n"), "front.toml:2: perods: an unknown key; did you mean periods?");
    EXPECT_EQ(error_of("[periods]\nonu = 5\n"), "front.toml:2: onu: an unknown key; did you mean onus?");
    EXPECT_EQ(error_of("[periods]\nonus = 0\n"),
              "front.toml:2: onus: expected whole seconds, from one to a day, found 0");
    EXPECT_EQ(error_of("[[olt]]\nsocket_dir = \"/run\"\n"), "front.toml:1: name: expected a name");
    EXPECT_EQ(error_of("[[olt]]\nname = \"a\"\nsocket_dir = \"run\"\n"),
              "front.toml:3: socket_dir: expected a path from the root, as \"/run/board-ipc\", found \"run\"");
    EXPECT_EQ(error_of("[[olt]]\nname = \"a\"\n[[olt]]\nname = \"a\"\nsocket_dir = \"/b\"\n"),
              "front.toml:4: name: another OLT has this name");
    EXPECT_EQ(error_of("[[olt]]\nname = \"a\"\n[[olt]]\nname = \"b\"\n"),
              "front.toml:3: socket_dir: a is the same OLT");
    EXPECT_EQ(error_of("[light]\nolt_low = -20\n"),
              "front.toml:1: olt_well: expected more than olt_low, so that light between them changes nothing");
    EXPECT_EQ(error_of("[light]\nolt_low = 100\n"),
              "front.toml:2: olt_low: expected a number from -60 to 20, found 100");
    EXPECT_EQ(error_of("[http]\nlisten = \"8080\"\n"),
              "front.toml:2: listen: expected ADDRESS:PORT, as \"127.0.0.1:9911\" or \"[::1]:9911\", found \"8080\"");
    EXPECT_EQ(error_of("[http]\nlisten = \"127.0.0.1:99999\"\n").substr(0, 32), "front.toml:2: listen: expected A");
    EXPECT_EQ(error_of("metrics = 5\n"), "front.toml:1: metrics: expected a table, as [metrics], found 5");
    EXPECT_EQ(error_of("[metrics]\nonus = \"some\"\n"),
              "front.toml:2: onus: expected \"none\", \"state\", \"optics\" or \"all\", found \"some\"");
}

TEST(Configuration, NamesAFileThatCannotBeRead)
{
    EXPECT_THROW(read_configuration_file("/nowhere/front.toml"), toml_file::Error);
}

TEST(Configuration, WithOtherDoorsIsCollectedAsBefore)
{
    const Configuration one = read(""), other = read("[metrics]\nonus = \"none\"\n"),
                        third = read("[periods]\nonus = 9\n");
    EXPECT_TRUE(one.collects_as(other));
    EXPECT_FALSE(one.collects_as(third));
}

TEST(Configuration, HasSnmpWhereThatIsSaid)
{
    EXPECT_FALSE(default_configuration().snmp);
    const auto snmp = read("[snmp]\n").snmp;
    ASSERT_TRUE(snmp);
    EXPECT_EQ(snmp->master.path, "/var/agentx/master");
    EXPECT_TRUE(snmp->mib.standard_tables);
    EXPECT_EQ(snmp->priority, 100);
    EXPECT_FALSE(snmp->sets);
    EXPECT_FALSE(read("[snmp]\nenabled = false\n").snmp);
}

TEST(Configuration, SaysEverythingOfSnmp)
{
    const Configuration configuration = read(R"(
[[olt]]
name = "north"
index = 7
[snmp]
agentx = "tcp:127.0.0.1:705"
root = "1.3.6.1.4.1.99999.1"
standard_tables = false
priority = 50
sets = "service_affecting"
[audit]
file = "/var/log/ponfront/audit.jsonl"
)");
    EXPECT_EQ(configuration.olts[0].index, 7u);
    const SnmpSettings &snmp = configuration.snmp.value();
    EXPECT_EQ(snmp::text_of(snmp.master), "tcp:127.0.0.1:705");
    EXPECT_EQ(snmp.mib.root, (snmp::Oid{1, 3, 6, 1, 4, 1, 99999, 1}));
    EXPECT_FALSE(snmp.mib.standard_tables);
    EXPECT_EQ(snmp.priority, 50);
    EXPECT_EQ(snmp.sets, catalogue::Class::service_affecting);
    EXPECT_EQ(configuration.audit, "/var/log/ponfront/audit.jsonl");
}

TEST(Configuration, SaysWhatIsWrongWithSnmp)
{
    EXPECT_THAT(error_of("[snmp]\nagentx = \"master\"\n"), HasSubstr("front.toml:2: agentx: "));
    EXPECT_THAT(error_of("[snmp]\nagentx = \"master\"\n"), HasSubstr("the path of a Unix socket"));
    for (const char *root : {"1.3", "1.3.6.x.1", "3.1.1.1", "1.40.1.1", "1.3.6.1.4294967296", ".1.3.6.1",
                             "1.3.6.1.2.1.2", "1.3.6.1.6.3.99"})
        EXPECT_THAT(error_of("[snmp]\nroot = \"" + std::string(root) + "\"\n"), HasSubstr("an arc of yours")) << root;
    EXPECT_THAT(error_of("[snmp]\nsets = \"all\"\n"), HasSubstr("sets: "));
    EXPECT_THAT(error_of("[[olt]]\nname = \"a\"\nsocket_dir = \"/a\"\nindex = 2\n[[olt]]\nname = \"b\"\n"),
                HasSubstr("a has the index 2"));
    EXPECT_THAT(error_of("[[olt]]\nname = \"a\"\nindex = 256\n"), HasSubstr("index: "));
}

} // namespace
