// These tests plug ONUs and devices in and out at random, and compare the running OLT with one that is started again
// from the same state. What the ONUs count adds up to what their ports count, whoever comes and goes.
#include <map>

#include "asked.h"
#include "counting.h"
#include "inventory_steps.h"
#include "model/olt/fdb.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;

// Returns all that can be asked of the OLT, and what follows from its state by itself.
std::vector<std::string> all_said(ServiceFixture &fixture, const std::vector<Asked> &asked)
{
    const Olt &olt = fixture.simulator.olt();
    std::vector<std::string> all;
    for (const Asked &each : asked)
        all.push_back(std::string(each.command->name) + ": " + said_anew(olt, each));
    for (const PonPort &port : olt.ports())
        for (const Arrival &arrival : port.arrivals)
            all.push_back(text::mac_text(arrival.mac) + ' ' + arrival.name + ' ' + std::to_string(arrival.distance) +
                          ' ' + std::to_string(arrival.branch) + ' ' + port.branches.at(arrival.branch).name);
    all.push_back(std::to_string(fixture.simulator.next_due().value_or(0)));
    return all;
}

TEST(Inventory, OfAnOltThatIsStartedAgainIsTheSame)
{
    for (uint64_t number = 1; number <= 4; ++number) {
        const Folder folder;
        Random random{number, 3};
        std::vector<Asked> asked = all_that_reads(random);
        auto fixture = std::make_unique<ServiceFixture>(
            WantedSettings{.seed = number, .ports = 3, .arrivals = 4, .silent = 10}, folder.file("olt.db"));
        uint32_t steps = 0;
        for (int round = 0; round < 12; ++round) {
            std::string lines;
            for (int each = 0; each < 8; ++each) {
                const std::string line = step(*fixture, random, 3);
                if (try_line(*fixture, line)) {
                    ++steps;
                    lines += line + '\n';
                }
                bind_or_release(*fixture, random, 3);
                pass(*fixture, random.below(2) ? random.below(3000) : random.below(60) * second);
            }
            SCOPED_TRACE(lines);
            // Stations that were heard are forgotten by an OLT that is started again.
            fixture->simulator.change(flush_fdb(fixture->simulator.olt(), {}).change);
            pass(*fixture, 0);
            fixture->simulator.keep_time();
            const std::vector<std::string> before = all_said(*fixture, asked);
            const auto ledgers = fixture->simulator.olt().kept<Ledger>();
            fixture.reset();
            fixture = std::make_unique<ServiceFixture>(WantedSettings{}, folder.file("olt.db"));
            const std::vector<std::string> now = all_said(*fixture, asked);
            ASSERT_EQ(now.size(), before.size());
            for (size_t index = 0; index < now.size(); ++index)
                ASSERT_EQ(now[index], before[index]);
            EXPECT_EQ(fixture->simulator.olt().kept<Ledger>(), ledgers);
        }
        EXPECT_GT(steps, 40u);
    }
}

TEST(Ledger, LosesNoFrameWhoeverComesAndGoes)
{
    uint32_t exact = 0;
    for (uint64_t number = 1; number <= 6; ++number) {
        Counting fixture;
        Random random{number, 5};
        const uint32_t ports[] = {1, 5}; // which share an uplink
        for (int round = 0; round < 100; ++round) {
            std::map<uint32_t, Sum> offered;
            std::map<OnuAtPort, std::pair<ModelTime, Sum>> counted;
            const auto each_onu = [&](auto visit) {
                for (const uint32_t pon_port : ports)
                    for (const std::optional<Binding> &binding : fixture.port(pon_port).bindings)
                        if (binding) visit(OnuAtPort{pon_port, binding->mac});
            };
            for (const uint32_t pon_port : ports)
                offered[pon_port] = offered_at(fixture, pon_port);
            each_onu([&](const OnuAtPort &onu) {
                counted[onu] = {fixture.olt().ledger(onu)->since, counted_by(fixture, onu)};
            });
            const uint32_t pon_port = ports[random.below(2)];
            const Mac mac = fixture.port(pon_port).bindings[1 + random.below(onus)].value().mac;
            const std::string onu = ' ' + std::to_string(pon_port) + ' ' + text::mac_text(mac);
            const std::string lines[] = {"leave" + onu,
                                         "arrive " + std::to_string(pon_port) + " mac=" + text::mac_text(mac),
                                         "arrive " + std::to_string(pon_port) + " mac=" + text::mac_text(mac),
                                         "plug" + onu + " 1",
                                         "unplug" + onu + " all",
                                         "plug" + onu + " all 10HD",
                                         "move" + onu + ' ' + std::to_string(pon_port),
                                         "load" + onu + " down " + std::to_string(random.below(line_rate))};
            const std::string line = lines[random.below(std::size(lines))];
            try_line(fixture, line);
            pass(fixture, random.below(2) ? random.below(3000) : random.below(90) * second);
            SCOPED_TRACE(line + " in round " + std::to_string(round));
            std::map<uint32_t, Sum> of_onus;
            std::map<uint32_t, bool> restarted;
            each_onu([&](const OnuAtPort &each) {
                const auto &[since, before] = counted.at(each);
                const bool same = fixture.olt().ledger(each)->since == since;
                const Sum now = counted_by(fixture, each);
                const Sum from = same ? before : Sum{};
                restarted[each.pon_port] = restarted[each.pon_port] || !same;
                for (size_t flow = 0; flow < flows.size(); ++flow) {
                    of_onus[each.pon_port].up[flow] += now.up[flow] - from.up[flow];
                    of_onus[each.pon_port].down[flow] += now.down[flow] - from.down[flow];
                }
            });
            for (const uint32_t port : ports) {
                const Sum now = offered_at(fixture, port), before = offered.at(port);
                for (size_t flow = 0; flow < flows.size(); ++flow) {
                    const uint64_t up = now.up[flow] - before.up[flow], down = now.down[flow] - before.down[flow];
                    ASSERT_LE(of_onus[port].up[flow], up) << port;
                    ASSERT_LE(of_onus[port].down[flow], down) << port;
                    if (restarted[port]) continue;
                    ASSERT_EQ(of_onus[port].up[flow], up) << port;
                    ASSERT_EQ(of_onus[port].down[flow], down) << port;
                    exact += up > 0;
                }
            }
        }
    }
    EXPECT_GT(exact, 1000u) << "too little was compared";
}

} // namespace
} // namespace ponsim
