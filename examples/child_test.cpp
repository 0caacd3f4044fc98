// This test has two simulated OLTs in a process of their own. What is bound at one OLT is unknown to the other.
//
// It links pkg-config's ponsim, as embedded_test.c does. The program ponsim is looked for in PATH.
#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include "board/datastore.h"
#include "board/service.h"
#include "bsp_pon.h"
#include "bsp_testing/simulator.h"

namespace
{

constexpr char scenario[] = R"(
[[olt]]
name = "north"
[[olt.port]]
number = 1
[[olt.port.onu]]
name = "kitchen"
mac = "02:00:5e:10:00:01"

[[olt]]
name = "south"
)";

using Simulator = std::unique_ptr<bsp_simulator, void (*)(bsp_simulator *)>;

Simulator spawn()
{
    char error[256];
    bsp_simulator_options options = BSP_SIMULATOR_OPTIONS;
    options.scenario = scenario;
    Simulator simulator(bsp_simulator_spawn(&options, nullptr, error, sizeof error), bsp_simulator_stop);
    if (!simulator) throw std::runtime_error(error);
    return simulator;
}

void expect(bool good, const char *what)
{
    if (!good) throw std::runtime_error(what);
}

uint32_t onus_at_port_1()
{
    bsp_pon_msg record{};
    record.pon_port = 1;
    db_handle *db = nullptr;
    expect(bsp_pon_get_onu_info_web(&db, &record) == BSP_OK, "the OLT lists its ONUs");
    const uint32_t rows = db_rows(db);
    db_free(db);
    return rows;
}

void test_two_olts()
{
    const Simulator simulator = spawn();
    const std::array<uint8_t, 6> kitchen{0x02, 0x00, 0x5e, 0x10, 0x00, 0x01};

    board_ipc_use_directory(bsp_simulator_directory(simulator.get(), "north"));
    expect(bsp_pon_bind_onu_spec_id(1, 5, kitchen.data(), nullptr, nullptr, 0, nullptr) == BSP_OK, "north binds it");
    expect(onus_at_port_1() == 1, "north has it");

    board_ipc_use_directory(bsp_simulator_directory(simulator.get(), "south"));
    expect(onus_at_port_1() == 0, "south has none");
}

} // namespace

int main()
{
    try {
        test_two_olts();
        std::puts("child_test: passed");
        return 0;
    } catch (const std::exception &wrong) {
        std::fprintf(stderr, "child_test: %s\n", wrong.what());
        return 1;
    }
}
