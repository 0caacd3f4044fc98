// This file measures how many frames bit errors break.
#include <cmath>

#include "field.h"
#include "page.h"

namespace ponsim
{
namespace
{

constexpr int32_t sensitivity = -2978;
constexpr double q_at_sensitivity = 7.03;

// Returns the bit error ratio of light that is so much weaker than the sensitivity, in 0.01 dB.
double ratio(int32_t weaker)
{
    const double q = q_at_sensitivity * std::pow(10, -weaker / 1000.0);
    return std::erfc(q / std::sqrt(2.0)) / 2;
}

// Returns the part of the frames sent, of a million, that are broken.
double broken_by_formula(const PerFlow &sent, double bit_errors)
{
    double all = 0;
    double broken = 0;
    for (size_t flow = 0; flow < flows.size(); ++flow) {
        const auto frames = static_cast<double>(sent[flow]);
        all += frames;
        broken -= frames * std::expm1(8.0 * flows[flow].length * std::log1p(-bit_errors));
    }
    return 1e6 * broken / all;
}

double number_of(const PerFlow &frames)
{
    double sum = 0;
    for (const uint64_t number : frames)
        sum += static_cast<double>(number);
    return sum;
}

struct Broken {
    double by_formula;
    double measured;
};

// Weakens the light of one ONU, and lets it send while the temperature changes nothing.
Broken broken(int32_t weaker)
{
    Field field;
    field.bring(0, sensitivity - weaker);
    const auto errored = [&] { return number_of(field.port(1).traffic.offered(field.olt().now()).frames.up_errored); };
    const double before = errored();
    const PerFlow sent = field.port(1).traffic.onu(1).passed.up;
    constexpr ModelTime time = 1000 * ms_per_second;
    field.simulator.advance(field.olt().now() + time);
    return {broken_by_formula(sent, ratio(weaker)), 1e6 * (errored() - before) / (number_of(sent) * time)};
}

} // namespace

PageSection bit_error_section()
{
    PageSection section{
        "Bit errors",
        "A receiver that thermal noise limits has a Q factor in proportion to the optical power, and 7.03 at its "
        "sensitivity, which is a bit error ratio p of 10^-12. An ONU sends its mix of frames of L octets for 1000 "
        "seconds; the port counts those with a wrong check sequence.",
        {}};
    for (const int32_t weaker : {25, 75, 125, 200, 300}) {
        const Broken result = broken(weaker);
        section.rows.push_back({"frames broken by light " + std::to_string(weaker / 100) + "." +
                                    std::to_string(weaker % 100 + 100).substr(1) + " dB below the sensitivity",
                                "of a million", "p = erfc(Q / sqrt 2) / 2, Q = 7.03 * 10^(-dB / 10); 1 - (1 - p)^(8 L)",
                                "textbook; 60.1: BER of 10^-12 at the sensitivity", result.by_formula, result.measured,
                                0.02 * result.by_formula + 0.001, 3});
    }
    return section;
}

} // namespace ponsim
