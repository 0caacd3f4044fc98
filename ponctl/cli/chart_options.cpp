#include "cli/chart_options.h"

#include "cli/program.h"
#include "results/history.h"

namespace ponctl
{
void add_chart(Command &command, ChartOptions &options)
{
    const auto &chart = command.option(
        std::string(chart_option), &options.drawn,
        "read again and again as with --watch, and draw one quantity: of counters, their growth a second");
    command.option("--quantity", &options.quantity, "with --chart: what to draw, by its name in JSON", "NAME")
        .needs(chart);
}

} // namespace ponctl
