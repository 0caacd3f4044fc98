// In this test eight clients are busy with an OLT on which events happen. No answer is lost or belongs to another
// client, and nothing grows.
//
// SOAK_EXCHANGES says how many exchanges there are. Without it there are so few that every run of the tests can make
// them.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "board/datastore.h"
#include "bsp_pon.h"
#include "control.h"
#include "generated/service_words.h"
#include "resources.h"
#include "simulator.h"
#include "view.h"

namespace
{

constexpr uint32_t clients = 8;
constexpr uint32_t onus = 8; // on each port
constexpr uint64_t rounds = 20;

uint64_t wanted_exchanges()
{
    const char *wanted = std::getenv("SOAK_EXCHANGES");
    return wanted ? std::strtoull(wanted, nullptr, 10) : 40000;
}

// Returns whether the process comes back to so many open files. It waits for that, because the service closes a
// connection when it notices that its client is gone, which is soon.
bool comes_back_to(pid_t process, size_t files)
{
    for (int tries = 0; tries < 10000; ++tries) {
        if (open_files(process) <= files) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

// A Client is alone on its port, so that each of its calls has one correct answer.
class Client
{
public:
    explicit Client(uint32_t pon_port) : port(pon_port) {}

    void bind_all()
    {
        const View waiting(
            [&](db_handle **db) { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, port, 0, db); });
        ASSERT_EQ(waiting.count(), onus);
        for (uint32_t onu_id = 0; onu_id < onus; ++onu_id) {
            const Mac mac = parse(waiting.text(onu_id, "mac"));
            ASSERT_EQ(bsp_pon_bind_onu_spec_id(port, onu_id, mac.data(), "", "", 0, ""), BSP_OK);
        }
        ASSERT_EQ(bsp_profile_exec_set(BSP_CMD_PROFILE_LINE_STORE, &profile(), sizeof(Profile)), BSP_OK);
    }

    void work(uint64_t exchanges)
    {
        for (const uint64_t end = turn + exchanges; turn < end; ++turn) {
            const auto onu_id = static_cast<uint32_t>(turn / 6 % onus);
            switch (turn % 6) {
            case 0:
                describe(onu_id);
                break;
            case 1:
                look_up(onu_id);
                break;
            case 2:
                fetch_profile();
                break;
            case 3:
                ask_remote(onu_id);
                break;
            case 4:
                look_at_port();
                break;
            default:
                store_profile();
            }
        }
    }

    const uint32_t port;
    uint64_t wrong = 0; // answers that are not the correct one
    uint64_t offline = 0;

private:
    struct Profile {
        std::array<char, 32> name;
        uint32_t id, vlan, priority, upstream, downstream, mac_limit;
    };
    static_assert(sizeof(Profile) == 56);

    const Profile &profile()
    {
        const std::string name = "client " + std::to_string(port);
        name.copy(own.name.data(), own.name.size());
        own.id = port;
        own.upstream = static_cast<uint32_t>(turn % 1000000);
        return own;
    }
    void store_profile()
    {
        wrong += bsp_profile_exec_set(BSP_CMD_PROFILE_LINE_STORE, &profile(), sizeof(Profile)) != BSP_OK;
    }
    void fetch_profile()
    {
        Profile got{};
        wrong += bsp_profile_exec_get_(BSP_CMD_PROFILE_LINE_FETCH, own.name.data(), own.name.size(), &got,
                                       sizeof got) != BSP_OK;
        wrong += std::memcmp(&got, &own, sizeof got) != 0;
    }
    void describe(uint32_t onu_id)
    {
        std::string &text = descriptions[onu_id];
        text = "port " + std::to_string(port) + ", turn " + std::to_string(turn);
        wrong += bsp_pon_onu_description(port, onu_id, text.c_str()) != BSP_OK;
    }
    void look_up(uint32_t onu_id)
    {
        bsp_pon_msg record{};
        record.cmd = BSP_CMD_WHITELIST_GET;
        record.pon_port = port;
        record.onu_id = onu_id;
        wrong += bsp_pon_exec_get(&record) != BSP_OK;
        wrong += record.pon_port != port || record.onu_id != onu_id;
        const char *const description =
            reinterpret_cast<const char *>(&record) + layout::whitelist_entry::description.offset;
        wrong += descriptions[onu_id] != description;
    }
    void ask_remote(uint32_t onu_id)
    {
        uint8_t mode = 0xff;
        const uint32_t status = bsp_pon_onu_ctc_get_mc_switch_remote(port, onu_id, &mode);
        wrong += status != BSP_OK && status != PON_ERR_OFFLINE;
        offline += status == PON_ERR_OFFLINE;
    }
    void look_at_port()
    {
        const View view([&](db_handle **db) { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, port, 0, db); });
        wrong += view.status() != BSP_OK || view.count() != onus;
        for (uint32_t row = 0; row < view.count(); ++row) {
            wrong += view.text(row, "pon_port") != std::to_string(port);
            wrong += view.text(row, "description") != descriptions.at(std::stoul(view.text(row, "onu_id")));
        }
    }

    uint64_t turn = 0;
    Profile own{};
    std::array<std::string, onus> descriptions;
};

// Lets events happen again and again until it is over: fibres are cut, and repaired two turns later.
void let_happen(const std::atomic<bool> &over)
{
    for (uint64_t turn = 0; !over; ++turn) {
        const std::string port = std::to_string(1 + turn % clients);
        const std::string before = std::to_string(1 + (turn + clients - 2) % clients);
        control("cut " + port + " feeder");
        control("step 1");
        if (turn >= 2) control("mend " + before + " feeder");
        control("step 60");
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // otherwise there would be little time for anything
                                                                   // else
    }
}

TEST(Soak, NoAnswerIsLostOrAnothersAndNothingGrows)
{
    const Simulator simulator{{"--arrivals", std::to_string(onus), "--silent", "0", "--speed", "0"}};
    std::deque<Client> all;
    for (uint32_t port = 1; port <= clients; ++port)
        all.emplace_back(port).bind_all();

    const size_t files = open_files(simulator.process());
    const size_t own_files = open_files(getpid());
    size_t memory = 0;
    const uint64_t exchanges = wanted_exchanges();
    for (uint64_t round = 0; round < rounds; ++round) {
        std::atomic<bool> over = false;
        std::thread fate(let_happen, std::cref(over));
        std::vector<std::thread> threads;
        for (Client &client : all)
            threads.emplace_back(&Client::work, &client, exchanges / rounds / clients);
        for (std::thread &thread : threads)
            thread.join();
        over = true;
        fate.join();
        // At this time every kind of answer has had its memory.
        if (round == rounds / 4) memory = memory_of(simulator.process());
    }

    uint64_t offline = 0;
    for (const Client &client : all) {
        EXPECT_EQ(client.wrong, 0u) << "the client of port " << client.port;
        offline += client.offline;
    }
    EXPECT_GT(offline, 0u) << "nothing happened to the ONUs";
    EXPECT_TRUE(comes_back_to(simulator.process(), files));
    EXPECT_LE(open_files(getpid()), own_files);
    const size_t memory_now = memory_of(simulator.process());
    // The tolerance covers the allocator's own fluctuation.
    if (!keeps_what_is_freed) {
        EXPECT_LE(memory_now, memory + memory / 10 + 1024) << "KiB, of the service";
    }
    RecordProperty("exchanges", std::to_string(exchanges));
    std::printf("%llu exchanges of %u clients, %llu of them to ONUs that were offline; the service had %zu KiB after a "
                "quarter and %zu KiB at the end\n",
                static_cast<unsigned long long>(exchanges), clients, static_cast<unsigned long long>(offline), memory,
                memory_now);
}

} // namespace
