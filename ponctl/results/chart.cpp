#include "results/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <deque>

namespace ponctl
{
namespace
{

constexpr size_t axis_width = 12;
constexpr int eighths = 8;

std::string axis_text(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%10.*f |", decimals, value);
    return text;
}

// Returns what a column shows in a line. A full column has eight eighths.
std::string cell(int eighth, bool blocks)
{
    static constexpr std::array<const char *, eighths + 1> bars{" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    eighth = std::clamp(eighth, 0, eighths);
    if (blocks) return bars[static_cast<size_t>(eighth)];
    return eighth >= eighths / 2 ? "#" : eighth > 0 ? "." : " ";
}

} // namespace

size_t chart_columns(const ChartStyle &style)
{
    return style.width > axis_width ? style.width - axis_width : 1;
}

std::vector<std::string> chart(const std::deque<double> &values, const ChartStyle &style)
{
    const size_t columns = std::min(values.size(), chart_columns(style));
    const auto first = values.end() - static_cast<std::ptrdiff_t>(columns);
    const auto [least, greatest] = std::minmax_element(first, values.end());
    const auto lines = static_cast<int>(style.height);
    const int gaps = std::max(lines - 1, 1);
    // Each line stands for another value. A quantity that does not change is in the middle.
    const double span = std::max(*greatest - *least, gaps * std::pow(10.0, -style.decimals));
    const double middled = (*least + *greatest - span) / 2;
    const double bottom = *least >= 0 ? std::max(middled, 0.0) : middled; // no axis below zero where nothing is

    std::vector<std::string> drawn;
    for (int line = lines - 1; line >= 0; --line) {
        const double at = bottom + span * line / gaps;
        drawn.push_back(axis_text(at, style.decimals));
        for (auto value = first; value != values.end(); ++value) {
            // The least value still has a mark.
            const auto filled = static_cast<int>(std::round((*value - bottom) / span * (lines * eighths - 1))) + 1;
            drawn.back() += cell(filled - line * eighths, style.blocks);
        }
    }
    return drawn;
}

} // namespace ponctl
