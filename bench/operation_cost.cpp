// This benchmark measures the cost of an operation with a stub IPC, beside the same operation written in C.
//
//   operation_cost                  nanoseconds of a call, by Google Benchmark
//   operation_cost --list           the names of the cases
//   operation_cost CASE SIDE COUNT  makes COUNT calls; SIDE is lib or c: for counting instructions from outside
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "baseline.h"
#include "bsp_pon.h"

namespace
{

const uint8_t mac[] = {0x02, 0x00, 0x5e, 0x10, 0x00, 0x01};
bsp_pon_msg record;
db_handle *db;
char name[515];
uint32_t word;

struct Case {
    const char *name;
    uint32_t (*lib)();
    uint32_t (*c)();
};

const Case cases[] = {
    {"bind", [] { return bsp_pon_bind_onu_spec_id(1, 5, mac, nullptr, nullptr, 2, nullptr); },
     [] { return c_bind(1, 5, mac, nullptr, nullptr, 2, nullptr); }},
    {"bind_with_texts", [] { return bsp_pon_bind_onu_spec_id(1, 5, mac, "customer-1207", "room-3", 2, "note"); },
     [] { return c_bind(1, 5, mac, "customer-1207", "room-3", 2, "note"); }},
    {"bind_with_texts/C_strcpy",
     [] { return bsp_pon_bind_onu_spec_id(1, 5, mac, "customer-1207", "room-3", 2, "note"); },
     [] { return c_bind_unbounded(1, 5, mac, "customer-1207", "room-3", 2, "note"); }},
    {"release", [] { return bsp_pon_no_bind_onu_spec_id(1, 5); }, [] { return c_release(1, 5); }},
    {"release_by_mac", [] { return bsp_pon_no_bind_onu_by_mac(1, mac); }, [] { return c_release_by_mac(1, mac); }},
    {"reboot_batch", [] { return bsp_pon_reboot_onu_batch(&record); }, [] { return c_reboot_batch(&record); }},
    {"cfg_64_bytes", [] { return bsp_pon_cfg(1, 2, &record, 64); }, [] { return c_cfg(1, 2, &record, 64); }},
    {"exec_get", [] { return bsp_pon_exec_get(&record); }, [] { return c_get(&record); }},
    {"exec_get_json", [] { return bsp_pon_exec_get_json(384, 1, 0, &db); }, [] { return c_get_json(384, 1, 0, &db); }},
    {"exec_get_file", [] { return bsp_pon_exec_get_file(384, 1, name); }, [] { return c_get_file(384, 1, name); }},
    {"whitelist", [] { return bsp_pon_get_w_onu_spec_id(1, 5, &record); }, [] { return c_white(1, 5, &record); }},
    {"view_web", [] { return bsp_pon_get_onu_info_web(&db, &record); }, [] { return c_view_web(&db, &record); }},
    {"view_snmp", [] { return bsp_pon_get_onu_info_snmp(&db); }, [] { return c_view_snmp(&db); }},
    {"pon_stats", [] { return bsp_debug_8022_pon_stats(1, &record); }, [] { return c_pon_stats(1, &record); }},
    {"own_port_get", [] { return bsp_onu_p2p_own_port_get(1, &word); }, [] { return c_own_port(1, &word); }},
    {"upgrade_one", [] { return bsp_pon_onu_upgrade_one(&record); }, [] { return c_upgrade(&record); }},
    {"lol_mode", [] { return bsp_om_lol_mode_set(1, 5, 2, &record); }, [] { return c_lol_mode(1, 5, 2, &record); }},
    {"onu_sn", [] { return bsp_pon_onu_ctc_get_sn(1, 5, &record); }, [] { return c_onu_sn(1, 5, &record); }},
    {"onu_vlan", [] { return bsp_pon_onu_ctc_get_vlan(1, 5, 2, &record); },
     [] { return c_onu_vlan(1, 5, 2, &record); }},
    {"onu_mgmt_set", [] { return bsp_pon_onu_ctc_set_mgmt(1, 5, &record); },
     [] { return c_onu_mgmt_set(1, 5, &record); }},
};

void repeat(uint32_t (*call)(), long count)
{
    for (; count > 0; --count)
        benchmark::DoNotOptimize(call());
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::string_view(argv[1]) == "--list") {
        for (const Case &each : cases)
            std::puts(each.name);
        return 0;
    }
    if (argc == 4 && argv[1][0] != '-') {
        for (const Case &each : cases) {
            if (std::string_view(argv[1]) != each.name) continue;
            repeat(std::string_view(argv[2]) == "lib" ? each.lib : each.c, std::atol(argv[3]));
            return 0;
        }
        std::fprintf(stderr, "operation_cost: no case named %s; see --list\n", argv[1]);
        return 2;
    }
    for (const Case &each : cases)
        for (const bool lib : {true, false})
            benchmark::RegisterBenchmark((std::string(each.name) + (lib ? "/lib" : "/c")).c_str(),
                                         [call = lib ? each.lib : each.c](benchmark::State &state) {
                                             for (auto _ : state)
                                                 benchmark::DoNotOptimize(call());
                                         });
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
}
