// These tests check that the same seed, requests and events give the same bytes.
#include "any_record.h"
#include "optics.h"
#include "support.h"

namespace ponsim
{
namespace
{

constexpr WantedSettings busy{.seed = 11, .ports = 2, .arrivals = 6, .silent = 10};

struct Transcript {
    std::string all;
    uint32_t good = 0;
    uint32_t refused = 0;

    void add(const Reply &reply)
    {
        (reply.status == BSP_OK ? good : refused) += 1;
        all += std::to_string(reply.status) + '\n' + reply.result.value_or("-") + '\n' + reply.answer.value_or("-") +
               '\n' + reply.problem + '\n';
        if (reply.file) all += reply.file->content + '\n';
    }
};

// A Manner says in which parts time passes.
enum class Manner { long_steps, short_steps, slices };

// Sends every command of the catalogue again and again, while time passes and things happen.
Transcript run_session(uint64_t requests_seed, Manner manner = Manner::long_steps)
{
    ServiceFixture fixture(busy);
    Random random{requests_seed, 1};
    Transcript transcript;
    const std::string first = text::mac_text(fixture.port(1).arrivals[0].mac);
    for (uint32_t id = 1; id <= 4; ++id)
        transcript.add({fixture.send(record_of(BSP_CMD_ONU_BIND, 1, id, fixture.port(1).arrivals[id - 1].mac))});
    const std::string happenings[] = {"power 1 " + first + " off", "power 1 " + first + " on",
                                      "loop 1 " + first + " 1 on", "age 1 40000", "loop 1 " + first + " 1 off"};
    for (const std::string &happening : happenings) {
        try {
            control_line(fixture, happening);
        } catch (const ControlError &error) {
            transcript.all += error.what();
        }
        for (const catalogue::Command &command : catalogue::commands()) {
            const std::string record = record_of_command(command, random);
            Message message{command.channel->type, record.data(), static_cast<uint32_t>(record.size())};
            if (command.call) message.call = *command.call;
            transcript.add(fixture.simulator.handle(message));
            for (const std::string &line : fixture.simulator.take_log())
                transcript.all += line + '\n';
        }
        constexpr ModelTime hour = 3600 * ms_per_second;
        const ModelTime end = fixture.simulator.olt().now() + hour;
        if (manner == Manner::slices)
            while (!fixture.simulator.advance(end, 1))
                continue;
        for (uint32_t steps = manner == Manner::short_steps ? 360 : 1, step = 1; step <= steps; ++step)
            fixture.simulator.advance(end - hour / steps * (steps - step));
    }
    return transcript;
}

TEST(Determinism, OfEveryCommandWhileThingsHappen)
{
    const Transcript once = run_session(5);
    const Transcript again = run_session(5);
    EXPECT_EQ(once.all.size(), again.all.size());
    EXPECT_TRUE(once.all == again.all);
    EXPECT_GT(once.good, catalogue::commands().size()) << "most were refused";
    EXPECT_GT(once.refused, 0u);
    EXPECT_FALSE(once.all == run_session(6).all) << "whatever is asked, the same is said";
}

TEST(Determinism, HowTimeIsCutIntoStepsMakesNoDifference)
{
    const Transcript at_once = run_session(5);
    EXPECT_TRUE(at_once.all == run_session(5, Manner::short_steps).all);
    EXPECT_TRUE(at_once.all == run_session(5, Manner::slices).all);
}

} // namespace
} // namespace ponsim
