#include "model/population.h"

#include "model/random.h"

namespace ponsim
{
namespace
{

constexpr uint8_t locally_administered = 0x02;
constexpr uint32_t nearest = 200;    // m
constexpr uint32_t farthest = 19500; // m

// `number` with leading zeros.
std::string digits(uint32_t number, size_t count)
{
    const std::string text = std::to_string(number);
    return std::string(count - text.size(), '0') + text;
}

} // namespace

std::vector<Arrival> arrivals_at(const Settings &settings, uint32_t pon_port)
{
    std::vector<Arrival> arrivals;
    const uint64_t olt = Random{settings.seed, 0}.next();
    for (uint32_t index = 0; index < settings.arrivals; ++index) {
        // A stream of its own for each ONU: it stays as it is when there are more ports or more ONUs.
        Random random{settings.seed, uint64_t{pon_port} << 32 | (index + 1)};
        const auto byte = [](uint64_t value) { return static_cast<uint8_t>(value); };
        // Port and index make the address unique; the random byte before them mixes the order.
        const Mac mac{locally_administered, byte(olt),      byte(olt >> 8),
                      byte(random.next()),  byte(pon_port), byte(index)};
        const uint32_t distance = nearest + random.below(farthest - nearest + 1);
        const bool silent = random.happens(settings.silent);
        // Port and index make the LOID unique, too; the password can be told from it.
        const std::string drawn = digits(random.below(1000000), 6);
        arrivals.push_back(
            {mac, distance, silent, "loid" + drawn + digits(pon_port, 2) + digits(index, 3), "pw" + drawn});
    }
    std::ranges::sort(arrivals, {}, &Arrival::mac);
    return arrivals;
}

} // namespace ponsim
