// A chart of a quantity over time, in characters.
#pragma once

#include <deque>
#include <string>
#include <vector>

namespace ponctl
{

struct ChartStyle {
    size_t width = 80; // of the whole chart with its axis, in characters
    size_t height = 10;
    int decimals = 0;   // of the values at the axis
    bool blocks = true; // of Unicode; else ASCII
};

// How many values a chart of this style shows.
size_t chart_columns(const ChartStyle &style);

// The lines of a chart of the last values, the newest at the right end; the axis reaches from the least to the greatest
// of them. There must be a value.
std::vector<std::string> chart(const std::deque<double> &values, const ChartStyle &style);

} // namespace ponctl
