// A service that dies in the middle of eight busy clients, and comes back.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <map>
#include <thread>
#include <vector>

#include "board/datastore.h"
#include "bsp_pon.h"
#include "simulator.h"

namespace
{

constexpr int clients = 8;
constexpr int kills = 3;
constexpr uint32_t ids = 100;

// What one client, alone on its port, knows of its bindings.
struct Client {
    uint32_t pon_port;
    std::map<uint32_t, bool> bound; // by ONU id: acknowledged as bound, or as released
    std::vector<uint32_t> unknown;  // ids of calls whose outcome the failed exchange does not tell
    uint32_t acknowledged = 0;
    uint32_t failed = 0;
    uint32_t unexpected = 0; // neither what the model must answer nor the operation's IPC failure
    std::chrono::steady_clock::duration longest{};
};

std::array<uint8_t, 6> mac_of(uint32_t pon_port, uint32_t onu_id)
{
    return {0x06, 0, 0, 0, static_cast<uint8_t>(pon_port), static_cast<uint8_t>(onu_id)};
}

// Binds and releases, one id after the other, until told to stop. Its answers are its own: nobody else uses the port,
// so each call has one right status.
void work(Client &client, const std::atomic<bool> &stop)
{
    for (uint32_t turn = 0; !stop; ++turn) {
        const uint32_t onu_id = 1 + turn % ids;
        const bool bind = !client.bound[onu_id];
        const auto start = std::chrono::steady_clock::now();
        const auto mac = mac_of(client.pon_port, onu_id);
        const uint32_t status =
            bind ? bsp_pon_bind_onu_spec_id(client.pon_port, onu_id, mac.data(), nullptr, nullptr, turn, nullptr)
                 : bsp_pon_no_bind_onu_spec_id(client.pon_port, onu_id);
        client.longest = std::max(client.longest, std::chrono::steady_clock::now() - start);
        if (status == BSP_OK) {
            ++client.acknowledged;
            client.bound[onu_id] = bind;
        } else if (status == BSP_ERR_IPC) {
            ++client.failed;
            client.unknown.push_back(onu_id);
            // Whatever became of it, it is bound after this, or the service is still away.
            while (!stop && bsp_pon_bind_onu_spec_id(client.pon_port, onu_id, mac.data(), nullptr, nullptr, turn,
                                                     nullptr) != BSP_OK)
                std::this_thread::yield();
            client.bound[onu_id] = true;
            if (!stop) client.unknown.pop_back();
        } else {
            ++client.unexpected;
        }
    }
}

TEST(Crash, EveryAcknowledgedBindingSurvivesAndNobodyHangs)
{
    setenv("BOARD_LOG", "off", 1); // failures are expected by the thousand
    Simulator simulator{{"--arrivals", "0"}};
    std::atomic<bool> stop = false;
    std::vector<Client> all(clients);
    std::vector<std::thread> threads;
    for (int i = 0; i < clients; ++i) {
        all[i].pon_port = 1 + i;
        threads.emplace_back(work, std::ref(all[i]), std::cref(stop));
    }
    const auto progress = [&] {
        // Each client is at work again before the next blow.
        std::vector<db_handle *> views;
        for (int view = 0; view < 20; ++view) {
            db_handle *db = nullptr;
            EXPECT_EQ(bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, 1, 0, &db), BSP_OK);
            db_free(db);
        }
    };
    for (int i = 0; i < kills; ++i) {
        progress();
        simulator.kill();
        simulator.start();
    }
    progress();
    stop = true;
    for (std::thread &thread : threads)
        thread.join();

    for (const Client &client : all) {
        SCOPED_TRACE(client.pon_port);
        EXPECT_GT(client.acknowledged, 0u);
        EXPECT_EQ(client.unexpected, 0u);
        EXPECT_LT(client.longest, std::chrono::seconds(10)); // twice the time-out

        db_handle *db = nullptr;
        ASSERT_EQ(bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, client.pon_port, 0, &db), BSP_OK);
        std::map<uint32_t, bool> found;
        for (uint32_t row = 0; row < db_rows(db); ++row) {
            int64_t onu_id = -1;
            ASSERT_EQ(db_get_integer(db, row, "onu_id", &onu_id), 0);
            found[static_cast<uint32_t>(onu_id)] = true;
        }
        db_free(db);
        for (const auto &[onu_id, bound] : client.bound) {
            if (std::find(client.unknown.begin(), client.unknown.end(), onu_id) != client.unknown.end()) continue;
            EXPECT_EQ(found[onu_id], bound) << "ONU id " << onu_id;
        }
    }
}

} // namespace
