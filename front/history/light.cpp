#include "history/light.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace front
{
namespace
{

// Of each ONU there are two bytes of the port, six of the address, and two of each value in hundredths, all with the
// highest byte first, so that blocks can be compared as they are.
constexpr size_t key_size = 2 + 6, record_size = key_size + 2 * light_values;
constexpr int16_t not_measured = INT16_MIN;

using Key = std::array<uint8_t, key_size>;

Key key_of(uint32_t port, const view::Mac &mac)
{
    Key key{static_cast<uint8_t>(port >> 8), static_cast<uint8_t>(port)};
    std::ranges::copy(mac, key.begin() + 2);
    return key;
}

int16_t hundredths(const std::optional<double> &value)
{
    constexpr double greatest = 327;
    if (!value || !std::isfinite(*value)) return not_measured;
    return static_cast<int16_t>(std::lround(100 * std::clamp(*value, -greatest, greatest)));
}

std::optional<double> value_of(const uint8_t *bytes)
{
    const auto number = static_cast<int16_t>(static_cast<uint16_t>(bytes[0] << 8 | bytes[1]));
    return number == not_measured ? std::nullopt : std::optional(number / 100.0);
}

} // namespace

std::vector<uint8_t> light_block(std::span<const view::onu_optics_table> table)
{
    using Record = std::array<uint8_t, record_size>;
    std::vector<Record> records;
    for (const view::onu_optics_table &onu : table) {
        Record record{};
        std::ranges::copy(key_of(onu.pon_port, onu.mac), record.begin());
        size_t at = key_size;
        for (const auto &value : {onu.rx_power, onu.olt_rx_power, onu.tx_power, onu.temperature}) {
            const auto number = static_cast<uint16_t>(hundredths(value));
            record[at++] = static_cast<uint8_t>(number >> 8);
            record[at++] = static_cast<uint8_t>(number);
        }
        records.push_back(record);
    }
    std::ranges::sort(records);
    std::vector<uint8_t> block;
    for (const Record &record : records)
        block.insert(block.end(), record.begin(), record.end());
    return block;
}

std::optional<LightSample> sample_in(std::span<const uint8_t> block, uint32_t port, const view::Mac &mac)
{
    const Key wanted = key_of(port, mac);
    size_t first = 0, behind = block.size() / record_size;
    while (first < behind) {
        const size_t middle = (first + behind) / 2;
        const uint8_t *const record = block.data() + middle * record_size;
        const int order = std::memcmp(record, wanted.data(), key_size);
        if (order == 0) {
            LightSample sample;
            for (size_t value = 0; value < light_values; ++value)
                sample.values[value] = value_of(record + key_size + 2 * value);
            return sample;
        }
        (order < 0 ? first : behind) = order < 0 ? middle + 1 : middle;
    }
    return std::nullopt;
}

} // namespace front
