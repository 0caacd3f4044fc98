// This benchmark measures a table of 1 MiB from the request to a readable handle. It compares this with copying the
// table out of a mapped segment and reading the copy with the same JSON library. The two take turns in one run.
#include <rapidjson/document.h>
#include <sys/mman.h>

#include <chrono>
#include <cstring>
#include <string>

#include "board/datastore.h"
#include "board/service.h"
#include "bsp_pon.h"
#include "processes.h"

namespace
{

constexpr int rounds = 101;
constexpr size_t table_size = BOARD_RESULT_MAX;

// Returns rows like those of the ONU views, up to the bound.
std::string make_table()
{
    std::string table = "[";
    for (unsigned row = 0;; ++row) {
        char text[256];
        std::snprintf(text, sizeof text,
                      "%s{\"pon_port\":%u,\"onu_id\":%u,\"mac\":\"02:00:5e:10:%02x:%02x\",\"state\":\"online\","
                      "\"supported\":true,\"distance\":%u,\"mode\":0,\"text_a\":\"customer %u\",\"text_b\":\"\"}",
                      row ? "," : "", row / 128, row % 128, row / 256 % 256, row % 256, row * 7 % 20000, row);
        if (table.size() + std::strlen(text) + 1 > table_size) return table + "]";
        table += text;
    }
}

double milliseconds(const std::function<uint32_t()> &read, uint32_t rows)
{
    const auto start = std::chrono::steady_clock::now();
    if (read() != rows) die("rows");
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main()
{
    std::string folder = "/tmp/results_cost.XXXXXX";
    if (!mkdtemp(folder.data())) die("mkdtemp");
    setenv("BOARD_IPC_DIR", folder.c_str(), 1);
    const std::string table = make_table();

    Server service(any_processor, [&](int ready) {
        board_service_config config{};
        config.module = BSP_IPC_MODULE;
        config.context = const_cast<std::string *>(&table);
        config.handler = [](void *context, const board_request *, board_answer *answer) {
            const std::string &result = *static_cast<std::string *>(context);
            board_answer_result(answer, BSP_CMD_VIEW_ONU_INFO_WEB, result.data(), static_cast<uint32_t>(result.size()));
        };
        if (!board_service_start(&config)) std::exit(1);
        announce(ready);
        pause();
    });
    void *segment = mmap(nullptr, table_size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (segment == MAP_FAILED) die("mmap");
    std::memcpy(segment, table.data(), table.size());

    const auto bare = [&] {
        std::string copy(static_cast<const char *>(segment), table.size());
        rapidjson::Document document;
        document.ParseInsitu(copy.data());
        return document.Size();
    };
    const auto exchange = [] {
        db_handle *db = nullptr;
        if (bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, 0, 0, &db) != BSP_OK) die("exchange");
        const uint32_t rows = db_rows(db);
        db_free(db);
        return rows;
    };
    const uint32_t rows = bare();
    milliseconds(exchange, rows);
    std::vector<double> bare_times, times, ratios;
    for (int round = 0; round < rounds; ++round) {
        bare_times.push_back(milliseconds(bare, rows));
        times.push_back(milliseconds(exchange, rows));
        ratios.push_back(times.back() / bare_times.back());
    }
    std::printf("%u rows, %zu bytes: exchange and read %.2f ms, copy and read %.2f ms, ratio %.2f, median of %d\n",
                rows, table.size(), median(times), median(bare_times), median(ratios), rounds);
    std::fflush(stdout);
    return std::system(("rm -rf " + folder).c_str()) ? 1 : 0;
}
