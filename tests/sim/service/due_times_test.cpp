// These tests check that what an OLT works out again for what has changed alone is what an OLT finds that looks at
// everything: when light changes, when links fail, and what passes.
#include <array>
#include <string>

#include "model/base/random.h"
#include "model/olt/light.h"
#include "model/olt/mpcp.h"
#include "model/port/fibre.h"
#include "optics.h"

namespace ponsim
{
namespace
{

// Four ONUs are bound at each port of this OLT. Ports 1 and 5 share an uplink.
struct Session : ServiceFixture {
    static constexpr uint32_t ports = 5;
    static constexpr uint32_t onus = 4;

    explicit Session(uint64_t number)
        : ServiceFixture({.seed = number, .ports = ports, .arrivals = onus, .silent = 0}), random(number, 7)
    {
        for (uint32_t pon_port = 1; pon_port <= ports; ++pon_port)
            for (uint32_t id = 1; id <= onus; ++id)
                send(record_of(BSP_CMD_ONU_BIND, pon_port, id, port(pon_port).arrivals.at(id - 1).mac));
    }

    const Olt &olt() const { return simulator.olt(); }

    // Lets something happen that a user, a digger or time may bring about.
    void happen()
    {
        const uint32_t pon_port = 1 + random.below(ports);
        const PonPort &at = port(pon_port);
        const Arrival &onu = at.arrivals.at(random.below(onus));
        const std::string number = std::to_string(pon_port) + ' ';
        const std::string mac = text::mac_text(onu.mac) + ' ';
        const std::string branch = random.happens(25) ? "feeder " : at.branches.at(onu.branch).name + ' ';
        const auto number_below = [this](uint32_t bound) { return std::to_string(1 + random.below(bound)); };
        const std::string on_or_off = random.happens(50) ? "on" : "off";
        switch (random.below(14)) {
        case 0:
            return control_line(*this, "bend " + number + branch + number_below(12));
        case 1:
            return control_line(*this, "cut " + number + branch);
        case 2:
        case 3:
            return control_line(*this, "mend " + number + branch);
        case 4:
            return control_line(*this, "dim " + number + (random.happens(50) ? number_below(12) : "off"));
        case 5:
            return control_line(*this, "rogue " + number + mac + (random.happens(30) ? "on" : "off"));
        case 6:
            return control_line(*this, "power " + number + mac + on_or_off);
        case 7:
            return control_line(*this, "load " + number + mac + "up " + number_below(1000000));
        case 8:
            return control_line(*this, "load " + number + mac + "down " + number_below(1000000));
        case 9: {
            Mpcp mpcp = mpcp_of(olt(), pon_port);
            mpcp.fec = random.below(2);
            return simulator.change(set_mpcp(olt(), pon_port, MpcpSet::grants, mpcp).change);
        }
        case 10: {
            Mpcp mpcp = mpcp_of(olt(), pon_port);
            mpcp.gate_timeout = 10 + random.below(990);
            return simulator.change(set_mpcp(olt(), pon_port, MpcpSet::timeouts, mpcp).change);
        }
        case 11:
            return simulator.change(set_ranging_limits(olt(), pon_port, {0, random.below(20000)}).change);
        default:
            return marginal(pon_port, onu);
        }
    }

    // Brings the light of an ONU near one of the edges of what its port bears, so that warmth moves it over the edge.
    void marginal(uint32_t pon_port, const Arrival &onu)
    {
        const PonPort &at = port(pon_port);
        const Transceiver &receiver = at.optics->olt;
        const std::array edges{receiver.sensitivity, olt().module(pon_port)->loss_threshold(),
                               receiver.sensitivity - 150};
        const int32_t wanted = edges.at(random.below(edges.size())) + static_cast<int32_t>(random.below(40)) - 5;
        const int32_t damage =
            damage_to(at, onu.branch) + received_level(olt(), at, onu, Direction::up, olt().now()) - wanted;
        if (damage > 0) simulator.change(set_damage(at, onu.branch, damage).change);
    }

    void let_time_pass()
    {
        constexpr std::array<ModelTime, 5> longest{1, 100, 5000, 600 * ms_per_second, 4 * 3600 * ms_per_second};
        pass(*this, random.below(static_cast<uint32_t>(longest.at(random.below(longest.size()))) + 1));
    }

    Random random;
};

void expect_as_when_all_is_looked_at(const Session &session)
{
    const Olt &olt = session.olt();
    Olt anew(session.simulator.settings());
    anew.apply(session.store.load());
    ASSERT_EQ(anew.now(), olt.now());
    EXPECT_EQ(olt.light_watch().next(), anew.light_watch().next());
    EXPECT_EQ(olt.light_watch().next_time_out(), anew.light_watch().next_time_out());
    constexpr ModelTime ahead = 24 * 3600 * ms_per_second;
    for (const PonPort &port : olt.ports()) {
        const PonPort &as_found = *anew.port(port.number);
        EXPECT_EQ(port.onus, as_found.onus);
        for (const ModelTime at : {olt.now(), olt.now() + 1000, olt.now() + ahead / 4, olt.now() + ahead}) {
            EXPECT_EQ(olt.light_watch().due(port.number, at), anew.light_watch().due(port.number, at));
            EXPECT_EQ(olt.light_watch().timed_out(port.number, at), anew.light_watch().timed_out(port.number, at));
        }
        EXPECT_EQ(olt.light_watch().is_blinded(olt, port), anew.light_watch().is_blinded(anew, as_found));
        EXPECT_EQ(port.traffic.streams(), as_found.traffic.streams());
        EXPECT_EQ(port.traffic.online(), as_found.traffic.online());
        EXPECT_EQ(port.traffic.offered(olt.now()), as_found.traffic.offered(olt.now()));
        for (uint32_t id = 1; id <= Session::onus; ++id) {
            EXPECT_EQ(port.traffic.onu(id).passed.up, as_found.traffic.onu(id).passed.up);
            EXPECT_EQ(port.traffic.onu(id).passed.down, as_found.traffic.onu(id).passed.down);
            EXPECT_EQ(port.traffic.onu(id).dropped, as_found.traffic.onu(id).dropped);
        }
    }
}

class DueTimes : public testing::TestWithParam<uint64_t>
{
};

TEST_P(DueTimes, OfEachOnuAreThoseThatALookAtEverythingFinds)
{
    Session session(GetParam());
    uint32_t errored = 0;
    for (int happening = 0; happening < 150 && !HasFailure(); ++happening) {
        session.happen();
        session.let_time_pass();
        session.simulator.keep_time();
        SCOPED_TRACE("happening " + std::to_string(happening));
        expect_as_when_all_is_looked_at(session);
        for (const PonPort &port : session.olt().ports())
            for (const auto &[mac, record] : port.onus)
                errored += record.up.light == Light::degraded || record.down.light == Light::degraded;
    }
    EXPECT_GT(errored, 100u) << "hardly any light was marginal";
}

INSTANTIATE_TEST_SUITE_P(OfSessions, DueTimes, testing::Range<uint64_t>(1, 9));

} // namespace
} // namespace ponsim
