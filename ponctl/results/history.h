// A quantity over several readings, drawn as a chart with each of them.
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

// A number that grows, and by how much a second since it was last read; nothing at first, and where it fell, because it
// was cleared.
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

// What is read, and drawn.
struct Charted {
    const char *operation;
    std::vector<std::string> words;
    std::string title;
    std::string usual; // quantity
    bool counts;       // its growth a second is drawn, in place of itself
};

// Reads once, and draws that with what was read before.
ExitCode run_chart(const Output &output, const ChartOptions &options, const Charted &charted);

} // namespace ponctl
