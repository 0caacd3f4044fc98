// In this test ten scrapers and a walker of SNMP read full OLTs through ponfront, while the OLTs die and come back.
// Nothing that ponfront holds grows. The long form, with snmpd and its walkers, is "make soak".
//
// SOAK_SCRAPES says how many scrapes there are. Without it there are so few that every run of the tests can make them.
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <gtest/gtest.h>

#include "http_client.h"
#include "master.h"
#include "ponfront.h"
#include "resources.h"
#include "simulator.h"
#include "snmp/core/mib.h"

namespace
{

// A sanitizer makes the simulator slow. Two OLTs are the fewest that have folders of their own.
constexpr int olts = keeps_what_is_freed ? 2 : 5, ports = keeps_what_is_freed ? 4 : 16;
constexpr int onus = 128, scrapers = 10, rounds = 3;

int wanted_scrapes()
{
    const char *wanted = std::getenv("SOAK_SCRAPES");
    return wanted ? std::atoi(wanted) : 80;
}

std::string scenario()
{
    const std::string file = Simulator::folder() + "/full.toml";
    std::ofstream(file) << "[service.home]\nbound = true\n[[olt]]\nname = \"olt\"\ncount = " << olts
                        << "\nports = " << ports << "\n[[olt.port]]\nnumbers = \"1-" << ports
                        << "\"\n[[olt.port.onu]]\nname = \"a\"\nservice = \"home\"\ncount = " << onus << "\n";
    return file;
}

std::string configuration()
{
    const std::string file = Simulator::folder() + "/front.toml";
    std::ofstream written(file);
    for (int olt = 1; olt <= olts; ++olt)
        written << "[[olt]]\nname = \"olt-" << olt << "\"\nsocket_dir = \"" << Simulator::folder() << "/ipc/olt-" << olt
                << "\"\n";
    written << "[periods]\nonus = 1\nalarms = 1\nports = 1\noptics = 1\n[http]\nlisten = \"127.0.0.1:0\"\n"
            << "[snmp]\nagentx = \"" << Simulator::folder() << "/agentx\"\n";
    return file;
}

// Returns how many of these metrics are 1.
size_t count_ones(const std::string &page, const std::string &metric)
{
    size_t count = 0;
    for (size_t at = 0; (at = page.find('\n' + metric + '{', at)) != page.npos; ++at)
        count += page.compare(page.find(' ', at), 3, " 1\n") == 0;
    return count;
}

// Waits until all OLTs answer, so that there is a connection to each, and all ONUs are online; for two minutes at most.
void wait_for_all(uint16_t port)
{
    size_t answering = 0, online = 0;
    for (int tries = 0; tries < 1200 && (answering < olts || online < size_t{olts} * ports * onus); ++tries) {
        const std::string page = http_get(port, "/metrics");
        answering = count_ones(page, "pon_olt_up");
        online = count_ones(page, "pon_onu_up");
        usleep(100'000);
    }
    EXPECT_EQ(answering, size_t{olts});
    EXPECT_EQ(online, size_t{olts} * ports * onus);
}

void scrape(uint16_t port, int times)
{
    std::vector<std::thread> threads;
    for (int scraper = 0; scraper < scrapers; ++scraper)
        threads.emplace_back([port, times] {
            for (int i = 0; i < times / scrapers / rounds; ++i) {
                // The page has megabytes, which nobody wants to see when it is wrong.
                const std::string page = http_get(port, "/metrics");
                EXPECT_NE(page.find("pon_table_reads_total{olt=\"olt-1\",table=\"onus\"} "), page.npos)
                    << page.size() << " bytes: " << page.substr(0, 300);
            }
        });
    for (std::thread &thread : threads)
        thread.join();
}

// A Walker goes through the states of all ONUs again and again, until it ends.
class Walker
{
public:
    // Returns how many states it found the last time.
    size_t end()
    {
        ending = true;
        thread.join();
        return found;
    }

private:
    void walk()
    {
        front::snmp::Oid states = front::snmp::MibSettings().root;
        states.insert(states.end(), {1, 4, 1, 4});
        master.take_subagent(front::snmp::Mib({}).objects({}, {})->regions().size());
        do {
            usleep(100'000);
            found = master.walk(states).size();
        } while (!ending);
    }

    Master master{Simulator::folder() + "/agentx"};
    std::atomic<bool> ending = false;
    size_t found = 0;
    std::thread thread{&Walker::walk, this};
};

TEST(FrontSoak, NothingGrows)
{
    Simulator simulator({"--scenario", scenario(), "--fresh"});
    Walker walker;
    Ponfront front({"--config", configuration()});
    const uint16_t port = front.port();
    wait_for_all(port);
    size_t files = 0, memory = 0; // after the first round, which needs what the later ones need
    for (int round = 0; round < rounds; ++round) {
        simulator.kill();
        scrape(port, wanted_scrapes());
        simulator.start();
        wait_for_all(port);
        scrape(port, wanted_scrapes());
        if (round > 0) continue;
        wait_for_all(port);
        files = open_files(front.process());
        memory = memory_of(front.process());
    }
    // When the files were counted first, an OLT that was late may have had no connection: it gets one with the next
    // question. What is never closed would be more, for each OLT has died once more in each round behind that. A
    // question that is just asked, or a connection that is just closed, has a file, too.
    size_t files_now = 0;
    for (int tries = 0; tries < 600; ++tries) {
        files_now = open_files(front.process());
        if (files_now <= files + olts) break;
        usleep(100'000);
    }
    EXPECT_LE(files_now, files + olts);
    if (!keeps_what_is_freed) {
        // How many answers are made at the same time differs from round to round. What is never freed would be many
        // times more, because each of hundreds of snapshots takes megabytes.
        EXPECT_LT(memory_of(front.process()), 2 * memory) << "KiB, of which there were " << memory;
    }
    EXPECT_EQ(walker.end(), size_t{olts} * ports * onus);
    EXPECT_EQ(front.end(SIGTERM), 0);
}

} // namespace
