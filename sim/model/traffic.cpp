#include "model/traffic.h"

#include <algorithm>
#include <functional>

#include "model/random.h"

namespace ponsim
{
namespace
{

// The highest rates of an ONU, in frames a second.
constexpr std::array<uint32_t, flows.size()> most_up{60, 20, 10, 10, 10, 25, 2, 2};
constexpr std::array<uint32_t, flows.size()> most_down{40, 20, 20, 20, 20, 100, 10, 2};

void accumulate(PerFlow &sum, const PerFlow &rates, ModelTime time)
{
    for (size_t flow = 0; flow < flows.size(); ++flow)
        sum[flow] += rates[flow] * time;
}

template <class Operation>
void combine(PerFlow &sum, const PerFlow &other, Operation operation)
{
    std::ranges::transform(sum, other, sum.begin(), operation);
}

} // namespace

Rates rates_of(uint64_t seed, const Mac &mac)
{
    Random random = random_for(seed, Purpose::traffic, mac);
    Rates rates;
    for (size_t flow = 0; flow < flows.size(); ++flow) {
        rates.up[flow] = 1 + random.below(most_up[flow]);
        rates.down[flow] = 1 + random.below(most_down[flow]);
    }
    return rates;
}

Offered Traffic::offered(ModelTime now) const
{
    Offered result = settled;
    const ModelTime passed = now - settled.until;
    accumulate(uplink_is_up ? result.up : result.up_lost, total.up, passed);
    if (uplink_is_up) accumulate(result.down, total.down, passed);
    result.until = now;
    return result;
}

void Traffic::add(const Rates &rates)
{
    combine(total.up, rates.up, std::plus());
    combine(total.down, rates.down, std::plus());
    ++onus;
}

void Traffic::remove(const Rates &rates)
{
    combine(total.up, rates.up, std::minus());
    combine(total.down, rates.down, std::minus());
    --onus;
}

} // namespace ponsim
