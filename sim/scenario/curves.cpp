#include "scenario/curves.h"

#include <algorithm>

#include "text/number.h"

namespace ponsim
{
namespace
{

constexpr size_t most_points = 96; // of a curve
constexpr uint32_t greatest_percent = 1000;

// Returns the time of day that is written as 20:15. Returns nothing when it is not a time of day.
std::optional<ModelTime> time_of_day(std::string_view text)
{
    if (text.size() != 5 || text[2] != ':') return std::nullopt;
    const auto hours = text::to_number<uint32_t>(text.substr(0, 2));
    const auto minutes = text::to_number<uint32_t>(text.substr(3));
    if (!hours || !minutes || *hours > 23 || *minutes > 59) return std::nullopt;
    return (*hours * 60 + *minutes) * 60 * ms_per_second;
}

std::vector<CurvePoint> read_points(const toml_file::Value &curve)
{
    const std::string expected =
        "curve: expected 1 to " + std::to_string(most_points) + " times of day with a percentage, as \"20:00\" = 100";
    const toml_file::Table *table = curve.table();
    if (!table || table->empty() || table->size() > most_points) fail_at(curve, expected);
    std::vector<CurvePoint> points;
    for (const auto &[time, value] : *table) {
        const std::optional<ModelTime> at = time_of_day(time);
        if (!at) fail_at(value, "curve: expected a time of day from 00:00 to 23:59, found " + time);
        const auto *percent = std::get_if<int64_t>(&value.value);
        if (!percent || *percent < 0 || *percent > greatest_percent)
            fail_at(value, "curve: expected a percentage from 0 to " + std::to_string(greatest_percent) + " at " +
                               time + ", found " + describe(value));
        points.push_back({*at, static_cast<uint32_t>(*percent)});
    }
    return points; // in order of time, because the table is in order of text
}

} // namespace

std::map<std::string, std::vector<CurvePoint>> read_curves(const toml_file::Section &root)
{
    std::map<std::string, std::vector<CurvePoint>> curves;
    for (const auto &[name, curve] : root.members("curve"))
        curves.emplace(name, read_points(curve));
    return curves;
}

} // namespace ponsim
