// This file reads a quantity several times, and draws it as a chart with each reading.
#pragma once

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// A Rate is the growth per second of a number since it was last read. There is none after the first reading, and none
// when the number fell because it was cleared.
class Rate
{
public:
    using Clock = std::chrono::steady_clock;

    std::optional<double> next(double number, Clock::time_point now);

private:
    std::optional<double> before;
    Clock::time_point then;
};

std::string rate_text(double rate);

struct History {
    std::deque<double> values;
    Rate rate;
};

struct ChartOptions {
    bool drawn = false;
    std::string quantity; // a field of the answer; empty: the usual one
    std::shared_ptr<History> history = std::make_shared<History>();
};

// A Charted says what is read and drawn.
struct Charted {
    const char *operation;
    std::vector<std::string> words;
    std::string title;
    std::string usual; // the quantity that is drawn by default
    bool counts;       // its growth per second is drawn in place of its value
};

// Reads once, and draws the value with those that were read before.
ExitCode run_chart(const Output &output, const ChartOptions &options, const Charted &charted);

} // namespace ponctl
