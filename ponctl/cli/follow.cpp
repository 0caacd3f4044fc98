#include "cli/follow.h"

#include "call/json.h"
#include "cli/repeat.h"
#include "output/csv.h"
#include "output/mode.h"
#include "output/text.h"

namespace ponctl
{
namespace
{

void print_event(const Output &output, const Event &event, std::string &heading)
{
    if (output.format == Format::json)
        std::fprintf(output.stream, "%s\n", compact(event.document).c_str());
    else if (output.format == Format::csv)
        print_csv(output, "[" + event.document + "]", heading);
    else
        print_line(output, event.line);
}

} // namespace

ExitCode follow(const Output &output, const GlobalOptions &global, const ReadEvents &read)
{
    refuse_hex(output, "an event");
    if (mode().dry_run) {
        std::vector<Event> none;
        return read(none);
    }
    Repeat repeat(global.interval.empty() ? std::string(default_interval) : global.interval, global.count);
    std::string heading;
    while (repeat.next()) {
        std::vector<Event> events;
        const ExitCode code = read(events);
        for (const Event &event : events)
            print_event(output, event, heading);
        std::fflush(output.stream);
        if (code != exit_success) return code;
        if (std::ferror(output.stream)) return exit_success; // whoever reads the output has gone; finish() says so
    }
    return repeat.interrupted() ? exit_interrupted : exit_success;
}

} // namespace ponctl
