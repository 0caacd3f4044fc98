// This file measures what a PON port has room for.
#include <cmath>

#include "model/olt/demand.h"
#include "model/olt/uni_config.h"
#include "model/traffic/bandwidth.h"
#include "optics.h"
#include "page.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

constexpr double line = 1e9;               // bit/s
constexpr double quantum = 16e-9;          // s
constexpr double laser = 512e-9;           // s; on or off
constexpr double control = 84 * 8 * 1e-9;  // s; a GATE or a REPORT of 64 octets with preamble and gap
constexpr double fec = 239.0 / 255.0;      // of the octets on the line
constexpr double sync_time = 64 * quantum; // s
constexpr double mega = 1e6;

// The ONUs of this port want to send and to be sent more than there is room for.
struct BusyPort : Scene {
    BusyPort(uint32_t onus, bool with_fec)
        : Scene(
              "[service.home]\nbound = true\nload_up = 1000000\nload_down = 1000000\n[[olt]]\nports = 1\n[[olt.port]]\n"
              "number = 1\n[[olt.port.onu]]\nname = \"onu\"\nservice = \"home\"\ncount = " +
              std::to_string(onus) + "\n")
    {
        Mpcp mpcp;
        mpcp.fec = with_fec;
        simulator.change(set_mpcp(olt(), 1, MpcpSet::grants, mpcp).change);
    }
};

// Returns the rate on the line, in Mbit/s, of the frames that ONUs send or are sent.
double rate_on_line(const Scene &scene, uint32_t onus, PerFlow Rates::*direction)
{
    Bandwidth sum = 0;
    for (uint32_t id = 0; id <= onus; ++id)
        sum += octets_of(scene.port(1).traffic.onu(id).passed.*direction, Measure::line);
    return static_cast<double>(sum) * 8 / rate_unit / mega;
}

double up_by_formula(uint32_t onus, bool with_fec)
{
    const Mpcp mpcp;
    const double cycle = mpcp.grant_cycle * 1e-6;
    const double grants = std::max<double>(onus, std::floor(cycle / (mpcp.grant_length * quantum + 2 * laser)));
    const double taken = grants * (sync_time + 2 * laser) + onus * control;
    return line * (with_fec ? fec : 1) * (1 - taken / cycle) / mega;
}

double down_by_formula(uint32_t onus, bool with_fec)
{
    const double cycle = Mpcp{}.grant_cycle * 1e-6;
    return line * (with_fec ? fec : 1) * (1 - onus * control / cycle) / mega;
}

// Returns how many frames of 64 octets come a second through the first UNI port of the ONU when there is a loop.
double frames_of_a_storm(Scene &scene, uint32_t onu_id)
{
    const std::string mac = text::mac_text(scene.port(1).bindings[onu_id]->mac);
    scene.simulator.change(plan_control(scene.olt(), "load 1 " + mac + " up 0").change);
    scene.simulator.change(plan_control(scene.olt(), "loop 1 " + mac + " 1 on").change);
    const PerFlow &frames = scene.port(1).traffic.onu(onu_id).demand.unis.at(0).up;
    return static_cast<double>(frames.back()) / rate_unit;
}

// Returns the speed of the first UNI port of an ONU, in bit/s.
double speed(const Scene &scene, uint32_t onu_id)
{
    const RemoteOnu onu = find_onu(scene.olt(), 1, onu_id).onu;
    const std::optional<LinkMode> link = uni_links(scene.olt(), onu).at(0);
    return link ? link->speed * mega : 0;
}

// Returns an ONU the first UNI port of which has this speed.
uint32_t onu_with(const Scene &scene, double wanted)
{
    for (uint32_t id = 1; id <= 16; ++id)
        if (scene.port(1).bindings[id] && speed(scene, id) == wanted) return id;
    throw std::out_of_range("no ONU with that speed");
}

} // namespace

PageSection capacity_section()
{
    PageSection section{
        "Capacity",
        "ONUs want more than there is room for. What they get is measured on the line, with the preamble and gap of "
        "each frame (20 octets). n ONUs have g grants in a cycle of 1 ms: one each, and as many as the cycle holds "
        "of 2048 quanta with the laser's times.",
        {}};
    for (const uint32_t onus : {16u, 64u})
        for (const bool with_fec : {false, true}) {
            const BusyPort scene(onus, with_fec);
            const std::string name = std::to_string(onus) + " ONUs" + (with_fec ? " with FEC" : "");
            const std::string rate = with_fec ? "10^9 * 239/255" : "10^9";
            const std::string source = std::string("64.3.6: MPCPDUs of 64 octets; 60.7.13: a laser takes 512 ns") +
                                       (with_fec ? "; 65.2: RS(255,239)" : "");
            section.rows.push_back({"upstream, " + name, "Mbit/s",
                                    rate + " * (1 - (g (sync + 2 laser) + n REPORT) / cycle)", source,
                                    up_by_formula(onus, with_fec), rate_on_line(scene, onus, &Rates::up), 0.1, 2});
            section.rows.push_back({"downstream, " + name, "Mbit/s", rate + " * (1 - n GATE / cycle)", source,
                                    down_by_formula(onus, with_fec), rate_on_line(scene, onus, &Rates::down), 0.1, 2});
        }
    for (const double bits : {100 * mega, 1000 * mega}) {
        BusyPort scene(16, false);
        const uint32_t onu = onu_with(scene, bits);
        section.rows.push_back(
            {"frames of 64 octets through a UNI port of " + std::to_string(static_cast<int>(bits / mega)) + " Mbit/s",
             "frames a second", "rate / (8 * (64 + 8 + 12))", "4.4.2: preamble 8 octets, gap 12", bits / (8 * 84),
             frames_of_a_storm(scene, onu), 0.11, 1});
    }
    return section;
}

} // namespace ponsim
