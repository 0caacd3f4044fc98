// This file measures how ONUs are discovered and register.
#include <algorithm>
#include <cmath>

#include "model/olt/mpcp.h"
#include "page.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

constexpr double quantum = 16e-9;        // s
constexpr double answer = 84 * 8 * 1e-9; // s; a REGISTER_REQ with preamble and gap
constexpr double laser = 512e-9;         // s; on or off
constexpr uint32_t onus = 32;

// Half of the ONUs of this port are `metres` farther from it than the others. All are switched on together, and boot
// equally long.
std::string cold_port(uint64_t seed, uint32_t metres)
{
    const std::string group = "[[olt.port.onu]]\nkind = \"alike\"\nservice = \"home\"\nbranch = \"main\"\ncount = 16\n";
    return "start = \"cold\"\nseed = " + std::to_string(seed) +
           "\n[kind.alike]\nmodel = \"S100\"\nboot = \"10s\"\n[service.home]\n[[olt]]\nports = 1\n[[olt.port]]\nnumber "
           "= 1\n[[olt.port.branch]]\nname = "
           "\"main\"\nsplit = 32\n" +
           group + "name = \"near\"\ndrop = 0\n" + group + "name = \"far\"\ndrop = " + std::to_string(metres) + "\n";
}

uint32_t in_phase(const Scene &scene, Phase phase)
{
    uint32_t count = 0;
    for (const Arrival &arrival : scene.port(1).arrivals)
        count += scene.port(1).record(arrival.mac).phase == phase;
    return count;
}

// Lets things happen one after the other until an ONU is in this phase. Returns the time.
ModelTime until_any_is_in(Scene &scene, Phase phase)
{
    for (int happenings = 0; happenings < 10000 && in_phase(scene, phase) == 0; ++happenings)
        scene.simulator.advance(scene.simulator.next_due().value());
    return scene.olt().now();
}

// Returns which part of the ONUs is heard in the first window, over many OLTs.
double heard(uint32_t metres)
{
    constexpr uint32_t olts = 200;
    uint32_t count = 0;
    for (uint64_t seed = 1; seed <= olts; ++seed) {
        Scene scene(cold_port(seed, metres));
        until_any_is_in(scene, Phase::mpcp);
        count += in_phase(scene, Phase::mpcp);
    }
    return static_cast<double>(count) / (olts * onus);
}

// Returns the same by the formula. An ONU waits for a time that is evenly distributed, and its answer arrives after
// that and the round trip. It is heard when no other answer begins less than its length before or after it.
double heard_by_formula(double metres)
{
    const Mpcp mpcp;
    const double length = answer + mpcp.sync_time * quantum + 2 * laser;
    const double waits = mpcp.discovery_window * quantum - length;
    constexpr double light = 2e8; // m/s, in fibre
    const double later = 2 * metres / light;
    // Returns the chance that an answer with this delay begins near the time.
    const auto begins_near = [&](double time, double delay) {
        const double from = std::max(time - length, delay);
        const double to = std::min(time + length, delay + waits);
        return std::max(0.0, to - from) / waits;
    };
    constexpr int parts = 20000;
    double sum = 0;
    for (int part = 0; part < parts; ++part) {
        const double time = (part + 0.5) / parts * waits;
        // Of the other ONUs one less than half are as far away, and half are not.
        for (const auto &[begin, own, other] : {std::array{time, 0.0, later}, std::array{time + later, later, 0.0}})
            sum +=
                std::pow(1 - begins_near(begin, own), onus / 2 - 1) * std::pow(1 - begins_near(begin, other), onus / 2);
    }
    return sum / (2 * parts);
}

} // namespace

PageSection registration_section()
{
    Scene scene(cold_port(1, 0));
    const ModelTime first_window = until_any_is_in(scene, Phase::mpcp);
    const ModelTime acknowledged = until_any_is_in(scene, Phase::oam);
    const ModelTime registered = until_any_is_in(scene, Phase::registered);
    const ModelTime next_window = until_any_is_in(scene, Phase::mpcp);
    const auto ms = [](ModelTime from, ModelTime to) { return static_cast<double>(to - from); };
    const Mpcp mpcp;
    const double exchange = mpcp.discovery_window * quantum * 1e3 + 2 * mpcp.grant_cycle * 1e-3;
    const char *const by_chance = "64.3.3: a random wait in the window; answers that overlap are lost";
    return {
        "Discovery and registration",
        "32 ONUs are switched on together, and boot equally long. Each answers the same discovery window of 16384 "
        "quanta after a random wait. "
        "An answer occupies the receiver for 84 octets, its time to synchronise, and a laser that goes on and off.",
        {{"heard in the first window, all at the same distance", "part of all",
          "(1 - 2 L / (W - L))^31, with the edges", by_chance, heard_by_formula(0), heard(0), 0.02, 3},
         {"heard in the first window, half of them 20 km farther", "part of all",
          "the same with a round trip of 2 d / (2 * 10^8 m/s)", by_chance, heard_by_formula(20000), heard(20000), 0.02,
          3},
         {"from one window to the next", "ms", "the discovery interval", "the OLT's parameter",
          static_cast<double>(mpcp.discovery_interval), ms(first_window, next_window), 0, 0},
         {"from the window to the acknowledgement", "ms", "W + two grant cycles",
          "64.3.3: REGISTER and GATE, then REGISTER_ACK in that grant", exchange, ms(first_window, acknowledged), 1, 3},
         {"OAM links", "ms", "3 states, each ended by an OAMPDU, 10 of these a second; 200 for extended OAM",
          "annex 57A: slow protocols send at most 10 frames a second; the 200 are the model's own", 500,
          ms(acknowledged, registered), 1, 0}}};
}

} // namespace ponsim
