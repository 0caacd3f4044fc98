// This file draws a chart of a quantity over time, in characters.
#pragma once

#include <deque>
#include <string>
#include <vector>

namespace ponctl
{

struct ChartStyle {
    size_t width = 80; // of the whole chart with its axis, in characters
    size_t height = 10;
    int decimals = 0;   // of the values beside the axis
    bool blocks = true; // uses Unicode blocks, otherwise ASCII characters
};

// Returns how many values a chart of this style shows.
size_t chart_columns(const ChartStyle &style);

// Returns the lines of a chart of the last values, with the newest value at the right end. The axis reaches from the
// least to the greatest of them, and never below zero unless a value is. There must be at least one value.
std::vector<std::string> chart(const std::deque<double> &values, const ChartStyle &style);

} // namespace ponctl
