#include "scenario/distribution.h"

#include <algorithm>
#include <numeric>

namespace ponsim
{
namespace
{

constexpr uint32_t greatest_weight = 1000000;

// Returns the value of the only key that the table has.
const toml_file::Value *only(const toml_file::Value &value, const char *key)
{
    const toml_file::Table *table = value.table();
    if (!table || table->size() != 1 || table->begin()->first != key) return nullptr;
    return &table->begin()->second;
}

std::optional<uint32_t> whole(const toml_file::Value &value, uint32_t least, uint32_t greatest)
{
    const auto *number = std::get_if<int64_t>(&value.value);
    if (!number || *number < least || *number > greatest) return std::nullopt;
    return static_cast<uint32_t>(*number);
}

// Returns two numbers within bounds.
std::optional<std::pair<uint32_t, uint32_t>> pair_of(const toml_file::Value &value, uint32_t least, uint32_t greatest,
                                                     uint32_t least_second)
{
    const toml_file::Array *array = value.array();
    if (!array || array->size() != 2) return std::nullopt;
    const std::optional<uint32_t> first = whole(array->front(), least, greatest);
    const std::optional<uint32_t> second = whole(array->back(), least_second, greatest);
    if (!first || !second) return std::nullopt;
    return std::pair{*first, *second};
}

// Draws a number of the normal distribution with mean 0 and deviation 65536: the sum of twelve uniform ones.
int64_t normal(Random &random)
{
    int64_t sum = 0;
    for (int draw = 0; draw < 12; ++draw)
        sum += static_cast<int64_t>(random.next() >> 48);
    return sum - 12 * 65535 / 2;
}

} // namespace

std::optional<NumberDistribution> NumberDistribution::read(const toml_file::Section &section, const std::string &key,
                                                           uint32_t least, uint32_t greatest, uint32_t greatest_alone)
{
    const toml_file::Value *value = section.written(key);
    if (!value) return std::nullopt;
    NumberDistribution distribution;
    if (!value->table()) {
        distribution.least = distribution.greatest = section.number_or(key, least, greatest_alone, 0);
        return distribution;
    }
    const std::string bounds = " from " + std::to_string(least) + " to " + std::to_string(greatest);
    if (const toml_file::Value *uniform = only(*value, "uniform")) {
        const auto pair = pair_of(*uniform, least, greatest, least);
        if (!pair || pair->first > pair->second)
            fail_at(*uniform, key + ": expected uniform = [LEAST, GREATEST] of numbers" + bounds);
        std::tie(distribution.least, distribution.greatest) = *pair;
        return distribution;
    }
    const toml_file::Value *normal = only(*value, "normal");
    const auto pair = normal ? pair_of(*normal, least, greatest, 1) : std::nullopt;
    if (!pair)
        fail_at(
            normal ? *normal : *value,
            key + ": expected a number, { uniform = [LEAST, GREATEST] } or { normal = [MEAN, DEVIATION] }, of numbers" +
                bounds);
    distribution.least = least;
    distribution.greatest = greatest;
    std::tie(distribution.mean, distribution.deviation) = *pair;
    return distribution;
}

uint32_t NumberDistribution::draw(Random random) const
{
    if (deviation == 0) return least + static_cast<uint32_t>(random.next() % (uint64_t{greatest} - least + 1));
    const int64_t drawn = mean + deviation * normal(random) / 65536;
    return static_cast<uint32_t>(std::clamp<int64_t>(drawn, least, greatest));
}

NameDistribution::NameDistribution(const toml_file::Section &section, const std::string &key)
{
    const toml_file::Value *value = section.written(key);
    const toml_file::Value *choice = value ? only(*value, "choice") : nullptr;
    if (!value || !value->table()) {
        choices.emplace_back(section.needed_name(key), value);
        weights.push_back(1);
        return;
    }
    if (!choice || !choice->table() || choice->table()->empty())
        fail_at(*value, key + ": expected a name, or { choice = { NAME = WEIGHT, ... } }");
    for (const auto &[name, weight] : *choice->table()) {
        const std::optional<uint32_t> number = whole(weight, 1, greatest_weight);
        if (!number)
            fail_at(weight, key + ": expected a weight from 1 to " + std::to_string(greatest_weight) + " for " + name +
                                ", found " + describe(weight));
        choices.emplace_back(name, &weight);
        weights.push_back(*number);
    }
}

const std::string &NameDistribution::draw(Random random) const
{
    uint64_t at = random.next() % std::accumulate(weights.begin(), weights.end(), uint64_t{0});
    size_t index = 0;
    while (at >= weights[index])
        at -= weights[index++];
    return choices[index].first;
}

bool draw_flag(const toml_file::Section &section, const std::string &key, bool otherwise, Random random)
{
    const toml_file::Value *value = section.written(key);
    if (!value || !value->table()) return section.flag_or(key, otherwise);
    const toml_file::Value *chance = only(*value, "chance");
    const std::optional<uint32_t> percent = chance ? whole(*chance, 0, 100) : std::nullopt;
    if (!percent) fail_at(*value, key + ": expected true, false or { chance = PERCENT } from 0 to 100");
    return random.happens(*percent);
}

} // namespace ponsim
