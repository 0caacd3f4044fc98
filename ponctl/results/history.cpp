#include "results/history.h"

#include <deque>

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "call/codec/numbers.h"
#include "call/invocation.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "output/text.h"
#include "results/chart.h"
#include "results/sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// Returns the field of the answer that has the quantity.
const catalogue::Field &quantity_of(const char *operation, const std::string &name)
{
    const catalogue::Command &command = *catalogue::find_operation(operation)->command;
    std::vector<std::string_view> names;
    for (const catalogue::Field &field : catalogue::find_layout(command, true)->fields) {
        if (!is_number(field.type)) continue;
        if (field.name == name) return field;
        names.push_back(field.name);
    }
    throw UsageError("--quantity: '" + name + "' is not one of " + text::join(names));
}

// Returns the style of a chart that fits the terminal, with a line above it and two free lines around it.
ChartStyle style_on(int terminal, int decimals)
{
    ChartStyle style{.decimals = decimals, .blocks = std::string_view(nl_langinfo(CODESET)) == "UTF-8"};
    winsize size{};
    constexpr unsigned short others = 5;
    if (ioctl(terminal, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        style.width = size.ws_col - 1u;
        style.height = size.ws_row > others ? std::min<size_t>(style.height, size.ws_row - others) : 1;
    }
    return style;
}

} // namespace

std::string rate_text(double rate)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.1f", rate);
    return text;
}

std::optional<double> Rate::next(double number, Clock::time_point now)
{
    const double seconds = std::chrono::duration<double>(now - then).count();
    std::optional<double> rate;
    if (before && number >= *before && seconds > 0) rate = (number - *before) / seconds;
    before = number;
    then = now;
    return rate;
}

ExitCode run_chart(const Output &output, const ChartOptions &options, const Charted &charted)
{
    if (!output.terminal || output.format != Format::table)
        throw UsageError("--chart: is drawn on a terminal, as a table; elsewhere take --watch with -o json or csv");
    const std::string name = options.quantity.empty() ? charted.usual : options.quantity;
    const catalogue::Field &field = quantity_of(charted.operation, name);
    const Invocation called(charted.operation, charted.words, consent());
    const Rate::Clock::time_point now = Rate::Clock::now();
    if (!called.good()) return report(called);
    const Reading reading = called.answer();
    const double number = field_number(reading, name).value_or(0);
    const std::optional<double> value = charted.counts ? options.history->rate.next(number, now) : number;

    const ChartStyle style = style_on(STDOUT_FILENO, charted.counts ? 1 : decimals_of(field));
    std::deque<double> &values = options.history->values;
    if (value) values.push_back(*value);
    if (values.size() > chart_columns(style)) values.pop_front();
    print_line(output, charted.title + " " + name + " " + field_text(reading, name));
    if (charted.counts) std::fprintf(output.stream, "%s a second\n", value ? rate_text(*value).c_str() : "-");
    if (!values.empty())
        for (const std::string &line : chart(values, style))
            std::fprintf(output.stream, "%s\n", line.c_str());
    return exit_success;
}

} // namespace ponctl
