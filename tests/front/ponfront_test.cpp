// These tests run ponfront against a simulated OLT, as a monitoring system sees it.
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bsp_pon.h"
#include "collector/snapshot.h"
#include "control.h"
#include "http_client.h"
#include "ponfront.h"
#include "simulator.h"

namespace
{

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Served : public testing::Test
{
protected:
    ~Served() override
    {
        for (const char *ending : {"/front.toml", "/history.db", "/history.db-wal", "/history.db-shm"})
            std::remove((Simulator::folder() + ending).c_str());
    }

    // Writes a configuration with short periods and a free port.
    const std::string &configured(const std::string &more = {}) const
    {
        std::ofstream(file) << "[[olt]]\nname = \"north\"\nsocket_dir = \"" << Simulator::folder()
                            << "/ipc\"\n[periods]\nonus = 1\nalarms = 1\nports = 1\n"
                            << "[http]\nlisten = \"127.0.0.1:0\"\n[history]\nfile = \"" << Simulator::folder()
                            << "/history.db\"\n"
                            << more;
        return file;
    }
    // Waits until the page of metrics has this text, for half a minute at most.
    static std::string metrics_with(uint16_t port, const std::string &text)
    {
        std::string page;
        for (int turn = 0; turn < 300; ++turn) {
            page = http_get(port, "/metrics");
            if (page.find(text) != page.npos) break;
            usleep(100'000);
        }
        EXPECT_THAT(page, HasSubstr(text));
        return page;
    }

    const std::string file = Simulator::folder() + "/front.toml";
    Simulator simulator{{"--ports", "2", "--arrivals", "4", "--silent", "0", "--speed", "100"}};
};

TEST_F(Served, HasTheMetricsOfTheOlt)
{
    Ponfront front({"--config", configured()});
    const uint16_t port = front.port();
    EXPECT_THAT(metrics_with(port, "pon_table_age_seconds{olt=\"north\",table=\"capabilities\"}"),
                AllOf(StartsWith("HTTP/1.1 200 OK\r\n"), HasSubstr("pon_olt_up{olt=\"north\"} 1\n"),
                      HasSubstr("pon_port_onus{olt=\"north\",port=\"2\",state=\"waiting\"} "),
                      HasSubstr("pon_port_receive_octets_total{olt=\"north\",port=\"1\"} "),
                      HasSubstr("pon_uplink_receive_octets_total{olt=\"north\",port=\"4\"} ")));
    EXPECT_THAT(http_get(port, "/metrics", "Accept: application/openmetrics-text\r\n"),
                AllOf(HasSubstr("Content-Type: application/openmetrics-text"), HasSubstr("\n# EOF\n")));
    EXPECT_THAT(http_get(port, "/nothing"), StartsWith("HTTP/1.1 404 "));
    EXPECT_EQ(front.end(SIGTERM), 0);
}

TEST_F(Served, AsksTheOltNoMoreOftenForManyClients)
{
    std::string periods = "[periods]\n";
    for (const front::TableKind &kind : front::table_kinds())
        periods += std::string(kind.name) + " = \"1h\"\n";
    std::ofstream(file) << periods << "[http]\nlisten = \"127.0.0.1:0\"\n";
    const std::string recording = Simulator::folder() + "/recording";
    setenv("BOARD_IPC_TRACE", recording.c_str(), 1);
    Ponfront front({"--config", file});
    unsetenv("BOARD_IPC_TRACE");
    const uint16_t port = front.port();
    metrics_with(port, "pon_table_reads_total{olt=\"olt\",table=\"capabilities\"} 1\n");
    const auto recorded = std::filesystem::file_size(recording);
    EXPECT_GT(recorded, 0u);
    for (int scrape = 0; scrape < 100; ++scrape)
        http_get(port, "/metrics");
    EXPECT_EQ(std::filesystem::file_size(recording), recorded) << "there were more exchanges";
    std::remove(recording.c_str());
}

TEST_F(Served, TellsWhoIsBoundAndWhatHappenedMeanwhile)
{
    const uint8_t mac[] = {0x06, 0, 0, 0, 0, 1};
    {
        Ponfront front({"--config", configured()});
        metrics_with(front.port(), "pon_olt_up{olt=\"north\"} 1\n");
        ASSERT_EQ(bsp_pon_bind_onu_spec_id(1, 9, mac, nullptr, nullptr, 0, nullptr), BSP_OK);
        front.expect("north: ONU 1/9 06:00:00:00:00:01 is offline");
    }
    ASSERT_EQ(bsp_pon_no_bind_onu_spec_id(1, 9), BSP_OK);
    Ponfront again({"--config", configured()});
    again.expect("north: ONU 1/9 06:00:00:00:00:01 is gone");
}

TEST_F(Served, SaysThatAnOltDoesNotAnswerAndGoesOnWhenItDoes)
{
    Ponfront front({"--config", configured()});
    const uint16_t port = front.port();
    metrics_with(port, "pon_olt_up{olt=\"north\"} 1\n");
    simulator.kill();
    front.expect("north: the OLT does not answer any more");
    EXPECT_THAT(http_get(port, "/metrics"), HasSubstr("pon_olt_up{olt=\"north\"} 0\n"));
    simulator.start();
    front.expect("north: the OLT answers again");
    metrics_with(port, "pon_olt_up{olt=\"north\"} 1\n");
}

TEST_F(Served, SaysOnceThatATableCannotBeRead)
{
    control("fault status 4002 command=383");
    Ponfront front({"--config", configured()});
    front.expect("WARNING north: the table onus cannot be read: the OLT answers with status 4002");
    control("fault clear");
    front.expect("INFO north: the table onus can be read again");
}

TEST_F(Served, ReadsItsConfigurationAgain)
{
    Ponfront front({"--config", configured()});
    const uint16_t port = front.port();
    metrics_with(port, "pon_olt_up{olt=\"north\"} 1\n");
    configured("[metrics]\nonus = \"none\"\n");
    front.send(SIGHUP);
    front.expect("goes on by the configuration");
    EXPECT_THAT(http_get(port, "/metrics"),
                AllOf(HasSubstr("pon_olt_up{olt=\"north\"} 1\n"), Not(HasSubstr("pon_onu_"))));
    configured("[metrics]\nonus = \"few\"\n");
    front.send(SIGHUP);
    front.expect("the configuration is not taken: " + file + ":");
    EXPECT_THAT(http_get(port, "/metrics"), HasSubstr("pon_olt_up{olt=\"north\"} 1\n"));
}

TEST_F(Served, ReadsThePlantAgainAndCollectsOn)
{
    const std::string plant = Simulator::folder() + "/plant.toml";
    const auto write = [&](const std::string &name) {
        std::ofstream(plant) << "[[port]]\npon_port = 1\n[[port.splitter]]\nname = \"" << name << "\"\nratio = 8\n";
    };
    // The key belongs to the OLT, which stands first in the file.
    const auto with_plant = [&] {
        std::ifstream before(configured());
        std::string text(std::istreambuf_iterator<char>(before), {});
        text.insert(text.find("[periods]"), "plant = \"" + plant + "\"\n");
        std::ofstream(file) << text;
        return file;
    };
    write("yard");
    Ponfront front({"--config", with_plant()});
    const uint16_t port = front.port();
    metrics_with(port, "pon_table_age_seconds{olt=\"north\",table=\"onus\"}");
    const std::string path = "/api/v1/olts/north/ports/1/plant";
    EXPECT_THAT(http_get(port, path), AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("\"name\":\"yard\"")));
    EXPECT_THAT(http_get(port, "/api/v1/olts/north/ports/2/plant"), HasSubstr("\"tree\":null"));
    EXPECT_THAT(http_get(port, "/api/v1/olts/north/ports/9/plant"), StartsWith("HTTP/1.1 404 "));
    write("garden");
    front.send(SIGHUP);
    front.expect("goes on by the configuration");
    EXPECT_THAT(http_get(port, path), AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("\"name\":\"garden\"")))
        << "its tables are known still";
    std::ofstream(plant) << "[[port]]\npon_port = 0\n";
    front.send(SIGHUP);
    front.expect("the configuration is not taken: " + plant + ":2: pon_port: ");
    EXPECT_THAT(http_get(port, path), HasSubstr("\"name\":\"garden\""));
    Ponfront checked({"--config", file, "--check"});
    checked.expect(plant + ":2: pon_port: expected a number from 1 to 64");
    EXPECT_EQ(checked.end(), 2);
    std::remove(plant.c_str());
}

TEST_F(Served, GoesOnWhereAChangeCannotBeMade)
{
    Ponfront front({"--config", configured()});
    const uint16_t port = front.port();
    metrics_with(port, "pon_olt_up{olt=\"north\"} 1\n");
    std::ofstream(file) << "[history]\nfile = \"/nowhere/history.db\"\n[http]\nlisten = \"127.0.0.1:0\"\n";
    front.send(SIGHUP);
    front.expect("the configuration is not taken: /nowhere/history.db: ");
    EXPECT_THAT(http_get(port, "/metrics"), HasSubstr("pon_olt_up{olt=\"north\"} 1\n"));
    std::ofstream(file) << "[http]\nlisten = \"192.0.2.1:9\"\n";
    front.send(SIGHUP);
    front.expect("listening on 127.0.0.1");
    front.expect("the configuration is not taken: listening on 192.0.2.1 needs users");
    std::ofstream(file) << "[http]\nlisten = \"127.0.0.1:0\"\ncertificate = \"/nowhere\"\nkey = \"/nowhere\"\n";
    front.send(SIGHUP);
    front.expect("listening on 127.0.0.1");
    front.expect("the configuration is not taken: /nowhere: cannot be read");
    configured("events = 5\n");
    front.send(SIGHUP);
    front.expect("goes on by the configuration");
}

TEST_F(Served, ChecksItsConfiguration)
{
    Ponfront good({"--config", configured(), "--check"});
    good.expect("ponfront: 1 OLT");
    EXPECT_EQ(good.end(), 0);
    Ponfront bad({"--config", configured("[light]\nlow = 1\n"), "--check"});
    bad.expect(": low: an unknown key");
    EXPECT_EQ(bad.end(), 2);
    Ponfront missing({"--config", "/nowhere.toml"});
    missing.expect("/nowhere.toml: cannot be read");
    EXPECT_EQ(missing.end(), 2);
}

TEST_F(Served, TellsAsMuchOfOnusAsItsCommandLineSays)
{
    Ponfront front({"--config", configured(), "--onus", "none"});
    EXPECT_THAT(metrics_with(front.port(), "pon_olt_up{olt=\"north\"} 1\n"), Not(HasSubstr("pon_onu_")));
    Ponfront wrong({"--onus", "few"});
    wrong.expect("expected none, state, optics or all");
    EXPECT_EQ(wrong.end(), 2);
}

TEST_F(Served, HasUsersWhoseFileItsCommandsChange)
{
    const std::string users = Simulator::folder() + "/users";
    std::ofstream(file) << "[http]\nlisten = \"0.0.0.0:0\"\nusers = \"" << users << "\"\n";
    const auto user = [this](const std::string &words, const std::string &typed = "correct horse battery") {
        const std::string line =
            "echo '" + typed + "' | " PONFRONT " --config " + file + " user " + words + " > " + file + ".out 2>&1";
        return WEXITSTATUS(std::system(line.c_str()));
    };
    Ponfront before({"--config", file});
    before.expect("/users: cannot be read");
    EXPECT_EQ(before.end(), 1);
    EXPECT_NE(user("add ann --role boss"), 0);
    EXPECT_NE(user("add a/b"), 0);
    EXPECT_NE(user("add ann", "short"), 0);
    EXPECT_EQ(user("add ann"), 0);
    EXPECT_NE(user("add ann"), 0) << "twice";
    EXPECT_EQ(user("role ann write"), 0);
    EXPECT_EQ(user("passwd ann", "another password"), 0);
    EXPECT_NE(user("passwd bob"), 0);
    EXPECT_EQ(user("token ann"), 0);
    std::string token;
    std::ifstream(file + ".out") >> token;
    {
        Ponfront front({"--config", file});
        const uint16_t port = front.port();
        EXPECT_THAT(http_get(port, "/api/v1/session", "Authorization: Bearer " + token + "\r\n"),
                    HasSubstr("\"user\":\"ann\",\"role\":\"write\""));
        EXPECT_THAT(http_post(port, "/api/v1/session", R"({"user":"ann","password":"another password"})"),
                    StartsWith("HTTP/1.1 200 "));
        EXPECT_EQ(user("remove ann"), 0);
        EXPECT_THAT(http_get(port, "/api/v1/session", "Authorization: Bearer " + token + "\r\n"),
                    HasSubstr("\"user\":null"));
    }
    Ponfront without({"--config", file});
    without.expect("listening on 0.0.0.0 needs users");
    EXPECT_EQ(without.end(), 1);
    for (const std::string &name : {users, file + ".out"})
        std::remove(name.c_str());
}

TEST_F(Served, SpeaksTls)
{
    configured("");
    std::ifstream in(file);
    std::string text(std::istreambuf_iterator<char>(in), {});
    const std::string listen = "listen = \"127.0.0.1:0\"\n";
    text.insert(text.find(listen) + listen.size(),
                "certificate = \"" SUPPORT "/localhost.pem\"\nkey = \"" SUPPORT "/localhost.key.pem\"\n");
    std::ofstream(file) << text;
    Ponfront front({"--config", file});
    const uint16_t port = front.port();
    const std::string line = "curl --silent --include --max-time 30 --cacert " SUPPORT
                             "/localhost.pem --resolve localhost:" +
                             std::to_string(port) + ":127.0.0.1 https://localhost:" + std::to_string(port) +
                             "/api/v1/session > " + file + ".out 2>&1";
    EXPECT_EQ(std::system(line.c_str()), 0);
    std::ifstream said(file + ".out");
    EXPECT_THAT(std::string(std::istreambuf_iterator<char>(said), {}),
                AllOf(HasSubstr("200"), HasSubstr("Strict-Transport-Security: "), HasSubstr("\"role\":\"read\"")));
    std::remove((file + ".out").c_str());
    EXPECT_THAT(http_get(port, "/metrics"), Not(HasSubstr("pon_"))) << "without encryption";
}

TEST_F(Served, LogsObjectsOnDemand)
{
    Ponfront front({"--config", configured(), "--log", "json"});
    EXPECT_THAT(front.expect("listening on"), AllOf(StartsWith("{\"time\":\"20"), HasSubstr("\"level\":\"INFO\"")));
}

} // namespace
