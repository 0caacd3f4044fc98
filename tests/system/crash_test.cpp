// In these tests a service dies in the middle of the calls of eight busy clients, and comes back.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <deque>
#include <map>
#include <set>
#include <thread>
#include <vector>

#include "board/datastore.h"
#include "bsp_pon.h"
#include "simulator.h"

namespace
{

constexpr uint32_t clients = 8;
constexpr int kills = 5;
constexpr uint32_t ids = 100;
constexpr uint32_t calls_between_kills = 100; // acknowledged calls of each client
constexpr std::chrono::seconds twice_the_time_out{10};

using Clock = std::chrono::steady_clock;

// A Client is alone on its port and binds and releases there, so that each of its calls has one correct answer.
class Client
{
public:
    explicit Client(uint32_t pon_port) : port(pon_port) {}

    void work(const std::atomic<bool> &stop)
    {
        for (uint32_t turn = 0; !stop; ++turn) {
            const uint32_t onu_id = turn % ids;
            bool bind = !bound[onu_id];
            uint32_t status = call(bind, onu_id);
            // Nobody can know whether a failed call took effect. Binding once more makes the state certain.
            while (status == BSP_ERR_IPC && !stop) {
                bind = true;
                status = call(bind, onu_id);
            }
            if (status == BSP_OK)
                bound[onu_id] = bind;
            else
                unknown.insert(onu_id);
            if (turn % 16 == 0) look_at_port();
        }
    }

    // Compares what was acknowledged with what the service has.
    void expect_acknowledged_bindings() const
    {
        db_handle *db = nullptr;
        ASSERT_EQ(bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, port, 0, &db), BSP_OK);
        std::set<uint32_t> found;
        for (uint32_t row = 0; row < db_rows(db); ++row) {
            int64_t onu_id = -1;
            EXPECT_EQ(db_get_integer(db, row, "onu_id", &onu_id), 0);
            found.insert(static_cast<uint32_t>(onu_id));
        }
        db_free(db);
        for (const auto &[onu_id, is_bound] : bound) {
            if (unknown.contains(onu_id)) continue;
            EXPECT_EQ(found.contains(onu_id), is_bound) << "ONU id " << onu_id;
        }
    }

    const uint32_t port;
    std::atomic<uint32_t> acknowledged = 0;
    uint32_t wrong = 0; // answers that are neither the model's nor the operation's IPC failure
    Clock::duration longest{};

private:
    uint32_t call(bool bind, uint32_t onu_id)
    {
        const uint8_t mac[] = {0x06, 0, 0, 0, static_cast<uint8_t>(port), static_cast<uint8_t>(onu_id)};
        return timed([&] {
            return bind ? bsp_pon_bind_onu_spec_id(port, onu_id, mac, nullptr, nullptr, 0, nullptr)
                        : bsp_pon_no_bind_onu_spec_id(port, onu_id);
        });
    }

    // Checks that every row of the answer is of the client's own port.
    void look_at_port()
    {
        db_handle *db = nullptr;
        timed([&] { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, port, 0, &db); });
        for (uint32_t row = 0; row < db_rows(db); ++row) {
            int64_t pon_port = 0;
            wrong += db_get_integer(db, row, "pon_port", &pon_port) || pon_port != port;
        }
        db_free(db);
    }

    template <class Call>
    uint32_t timed(Call call)
    {
        const Clock::time_point start = Clock::now();
        const uint32_t status = call();
        longest = std::max(longest, Clock::now() - start);
        acknowledged += status == BSP_OK;
        wrong += status != BSP_OK && status != BSP_ERR_IPC;
        return status;
    }

    std::map<uint32_t, bool> bound; // by ONU id, as it was acknowledged
    std::set<uint32_t> unknown;     // ids whose last call failed
};

// Waits until every client has had so many more calls acknowledged.
void wait_for_progress(const std::deque<Client> &all)
{
    const Clock::time_point deadline = Clock::now() + std::chrono::minutes(2);
    for (const Client &client : all) {
        const uint32_t enough = client.acknowledged + calls_between_kills;
        while (client.acknowledged < enough) {
            ASSERT_LT(Clock::now(), deadline) << "the client of port " << client.port << " makes no progress";
            std::this_thread::yield();
        }
    }
}

TEST(Crash, EveryAcknowledgedBindingSurvivesAndNobodyHangs)
{
    Simulator simulator{{"--arrivals", "0"}};
    std::atomic<bool> stop = false;
    std::deque<Client> all;
    for (uint32_t port = 1; port <= clients; ++port)
        all.emplace_back(port);
    std::vector<std::thread> threads;
    for (Client &client : all)
        threads.emplace_back(&Client::work, &client, std::cref(stop));
    for (int i = 0; i < kills; ++i) {
        wait_for_progress(all);
        simulator.kill();
        simulator.start();
    }
    wait_for_progress(all);
    stop = true;
    for (std::thread &thread : threads)
        thread.join();

    for (const Client &client : all) {
        SCOPED_TRACE(client.port);
        EXPECT_EQ(client.wrong, 0u);
        EXPECT_LT(client.longest, twice_the_time_out);
        client.expect_acknowledged_bindings();
    }
}

} // namespace
