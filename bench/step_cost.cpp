// This benchmark measures how long a step takes in which much happens: a full OLT keeps its state in a file, and each
// of its ONUs is so near to the edge of the light that its port needs that the warmth of each day degrades it. The
// argument is the number of days, a year when there is none.
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "engine/simulator.h"
#include "model/olt/light.h"
#include "model/port/fibre.h"
#include "olts.h"

namespace
{

using namespace ponsim;

// Damages the fibres of all ONUs until, at midnight, the ports receive from each of them a little more than they need
// for light without errors. The powers of a port's ONUs are spread over 0.3 dB, which is what a day's warmth takes.
void make_marginal(Simulator &simulator)
{
    constexpr int32_t spread = 30; // 0.01 dB
    for (const PonPort &port : simulator.olt().ports()) {
        Change change;
        int32_t number = 0;
        for (const Arrival &arrival : port.arrivals) {
            const int32_t wanted = port.optics->olt.sensitivity + number++ % spread;
            const int32_t damage = damage_to(port, arrival.branch) +
                                   received_level(simulator.olt(), port, arrival, Direction::up, 0) - wanted;
            change.add(set_damage(port, arrival.branch, damage).change);
        }
        simulator.change(change);
    }
}

double seconds_of_user()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec) + static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
}

} // namespace

int main(int count, char **arguments)
{
    const int days = count > 1 ? std::atoi(arguments[1]) : 365;
    constexpr ModelTime day = 24 * 3600 * ms_per_second;
    std::string folder = "/tmp/bench-XXXXXX";
    if (!mkdtemp(folder.data())) die("mkdtemp");
    {
        Store store(folder + "/olt.db", false);
        Simulator simulator(store, {},
                            std::make_shared<const OltScenario>(scenario_of(1, 16, 128, "registered").olts.front()));
        make_marginal(simulator);
        const double begin = seconds_of_user();
        simulator.advance(days * day);
        simulator.keep_time();
        const double seconds = seconds_of_user() - begin;
        std::printf("%6d days of 2048 ONUs at the edge of their light: %8.2f s of user time, %.1f s a year\n", days,
                    seconds, seconds / days * 365);
    }
    std::filesystem::remove_all(folder);
}
