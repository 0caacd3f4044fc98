#include "cli/program.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <poll.h>
#include <unistd.h>

#include "board/service.h"
#include "call/codec/values.h"
#include "call/record_call.h"
#include "cli/chart_options.h"
#include "cli/repeat.h"
#include "cli/run.h"
#include "cli/state_folder.h"
#include "command_line/command_tree.h"
#include "command_line/parse.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/mode.h"
#include "output/report.h"
#include "reach/many.h"
#include "reach/one.h"
#include "text/utf8.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// Returns whether the reader of our standard output has seen enough and is gone.
bool reader_is_gone()
{
    pollfd output{STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) > 0 && (output.revents & (POLLERR | POLLHUP));
}

// Returns the exit code of a command. It depends on whether `stdout` took the whole result.
int finish(int code)
{
    errno = 0;
    if ((std::fflush(stdout) == 0 && !std::ferror(stdout)) || reader_is_gone()) return code;
    complain(std::string("cannot write the output") + (errno ? std::string(": ") + std::strerror(errno) : ""));
    return exit_output;
}

bool is_in(const std::vector<const command_line::Syntax *> &commands, const command_line::Syntax *command)
{
    return std::ranges::find(commands, command) != commands.end();
}

// Runs the command line for one OLT: the local one, or that which the thread reaches.
int run_here(const Program &program, const Action &action, const std::optional<Watching> &watching)
{
    start_consent(program.global.yes || program.global.dry_run);
    return finish(run(action, program.global.output(), watching));
}

// Runs the command line at each OLT that it chooses.
int run_at_many(const Program &program, const std::vector<std::string> &words, const Action &action)
{
    const ManyRun wanted{.words = words,
                         .act = [&] { return run_here(program, action, std::nullopt); },
                         .run_words = [](const auto &other) { return run_line(other); },
                         .json = program.global.format == "json",
                         .csv = program.global.format == "csv"};
    return finish(run_on_many(program.global.fleet, program.global.fleet_requests(), wanted, program.global.output()));
}

// Returns whether a word behind --watch is its interval.
bool is_interval(const std::string &word)
{
    return !word.empty() && word.find_first_not_of("0123456789.") == std::string::npos;
}

} // namespace

Output GlobalOptions::output() const
{
    constexpr std::array<std::string_view, 4> names{"table", "json", "hex", "csv"}; // in the order of Format
    const auto name = std::ranges::find(names, format);
    if (name == names.end()) throw UsageError("--output: '" + format + "' is not one of " + text::join(names));
    Output output{stdout, static_cast<Format>(name - names.begin()), !no_headings};
    if (selection.any()) output.selection = &selection;
    if (quiet) {
        static std::FILE *const nowhere = std::fopen("/dev/null", "w");
        output.stream = nowhere ? nowhere : throw UsageError("--quiet: cannot open /dev/null");
        return output;
    }
    output.terminal = isatty(STDOUT_FILENO);
    output.colours = colours_on(STDOUT_FILENO);
    return output;
}

bool GlobalOptions::colours_on(int stream) const
{
    constexpr std::array<std::string_view, 3> names{"auto", "always", "never"};
    if (std::ranges::find(names, colour) == names.end())
        throw UsageError("--color: '" + colour + "' is not one of " + text::join(names));
    const char *const no_color = std::getenv("NO_COLOR"), *const terminal = std::getenv("TERM");
    if (colour != "auto") return colour == "always";
    return isatty(stream) && !(no_color && *no_color) && !(terminal && terminal == std::string_view("dumb"));
}

std::optional<Watching> GlobalOptions::watching(const std::vector<std::string> &words, bool charted) const
{
    if (interval.empty() && !charted) {
        if (!count.empty()) throw UsageError("--count: goes with --watch or --chart alone");
        return std::nullopt;
    }
    if (dry_run) throw UsageError("--dry-run: takes no readings, so it goes without --watch and --chart");
    std::string title = "ponctl";
    for (const std::string &word : words)
        title += " " + word;
    return Watching{interval.empty() ? std::string(default_interval) : interval, count, text::printable(title)};
}

void GlobalOptions::export_settings() const
{
    setenv("BOARD_LOG", "off", 0); // the tool itself reports what the libraries would log
    if (const char *unknown = board_log_unknown_word())
        throw UsageError("BOARD_LOG: '" + std::string(unknown) + "' is not one of off, err, debug, syslog");
    if (!socket_dir.empty()) setenv("BOARD_IPC_DIR", socket_dir.c_str(), 1);
    if (timeout.empty()) return;
    if (parse_number("--timeout", timeout, INT32_MAX) == 0)
        throw UsageError("--timeout: '0' is not a number of milliseconds from 1");
    setenv("BOARD_IPC_TIMEOUT_MS", timeout.c_str(), 1);
}

bool GlobalOptions::goes_to_fleet() const
{
    return !fleet.olt.empty() && !call::carrier_of_thread();
}

FleetRequests GlobalOptions::fleet_requests() const
{
    const std::filesystem::path folder = state_folder();
    FleetRequests requests{.runs = folder.empty() ? folder : folder / "runs"};
    if (!timeout.empty()) requests.timeout = parse_number("--timeout", timeout, INT32_MAX);
    return requests;
}

Program::Program(const GlobalOptions &defaults)
    : tree("ponctl", "Reaches every operation of an EPON OLT's PON management service."), global(defaults)
{
    tree.option("-h,--help", command_line::Help{}, "print this help");
    tree.option("--version", command_line::Version{"ponctl " PONCTL_VERSION}, "print the version");
    tree.option("-o,--output", &global.format, "form of the output; table when left out", "table|json|hex|csv");
    tree.option("--no-headings", &global.no_headings, "tables and CSV without their heading line");
    tree.option("-q,--quiet", &global.quiet, "no results, and on standard error only what goes wrong");
    tree.option("--color", &global.colour, "whether output is coloured; auto, when left out: on a terminal alone",
                "auto|always|never");
    tree.option("--yes", &global.yes, "do not ask before what affects ONUs in service");
    tree.option("--dry-run", &global.dry_run, "show what would be sent and whom it would hit, and change nothing");
    tree.option("--secrets", &global.secrets, "show passwords, which are *** otherwise");
    tree.option("--watch", &global.interval, "read again and again, with so many seconds between; 2 when left out",
                "SECONDS")
        .may_leave_out_value({std::string(default_interval), is_interval});
    tree.option("--count", &global.count, "with --watch: end after so many readings; else with Ctrl-C", "N");
    tree.option("--socket-dir", &global.socket_dir, "folder of the service's sockets; BOARD_IPC_DIR when left out",
                "DIR");
    tree.option("--timeout", &global.timeout, "milliseconds to wait for an answer; BOARD_IPC_TIMEOUT_MS when left out",
                "MS");
    tree.option("--olt", &global.fleet.olt,
                "OLTs of the fleet: a name, names and patterns with commas between them, site=north and model=..., "
                "all; or ssh://HOST; the local OLT when left out",
                "SELECTOR");
    tree.option("--fleet", &global.fleet.settings, "how the fleet is reached; PONCTL_FLEET when left out", "FILE");
    tree.option("--concurrency", &global.fleet.concurrency, "of many OLTs, so many at a time; 50 when left out", "N");
    tree.option("--limit", &global.fleet.limit, "of many OLTs, the first so many", "N");
    tree.option("--waves", &global.fleet.waves, "go to many OLTs in waves, and on while all is well", "1,5%,25%,rest");
    tree.option("--max-failures", &global.fleet.max_failures,
                "go to no further OLT when it failed at more; with waves 0 when left out, else no bound", "N|PERCENT%");
    tree.option("--check", &global.fleet.check,
                "command between waves, which must not end worse than before; health when left out", "COMMAND");
    for (const Group add : groups())
        add(*this);
}

int run_line(const std::vector<std::string> &words, const GlobalOptions &defaults)
{
    Program program(defaults);
    try {
        const command_line::Line line = command_line::parse(program.tree, words);
        const Action &action = static_cast<const Command &>(*line.command).run;
        program.global.export_settings();
        const bool goes_to_fleet = program.global.goes_to_fleet() && !is_in(program.askless, line.command);
        const bool goes_to_many = goes_to_fleet && !is_one_olt(program.global.fleet);
        if (is_in(program.line_runners, line.command)) {
            if (goes_to_many) throw UsageError("--olt: what runs lines goes to one OLT; give each line its --olt");
            mode() = {.quiet = program.global.quiet, .red = program.global.colours_on(STDERR_FILENO)};
            return finish(action(program.global.output()));
        }
        // What a command line has of a connection lasts as long as the line.
        std::optional<OneOlt> reached;
        if (goes_to_fleet && !goes_to_many) reached.emplace(program.global.fleet, program.global.fleet_requests());
        const bool follows = is_in(program.followers, line.command);
        if (goes_to_many && (follows || !program.global.interval.empty()))
            throw UsageError("--olt: what is read again and again goes to one OLT");
        if (follows && !program.global.dry_run) {
            mode() = {.quiet = program.global.quiet, .watched = true, .red = program.global.colours_on(STDERR_FILENO)};
            return finish(action(program.global.output()));
        }
        const auto watching = follows ? std::nullopt : program.global.watching(words, line.gives(chart_option));
        const bool plans = is_in(program.planners, line.command);
        mode() = {.quiet = program.global.quiet,
                  .dry_run = program.global.dry_run && !plans,
                  .planned = program.global.dry_run && plans,
                  .watched = watching.has_value(),
                  .secrets = program.global.secrets,
                  .red = program.global.colours_on(STDERR_FILENO)};
        return goes_to_many ? run_at_many(program, words, action) : run_here(program, action, watching);
    } catch (const command_line::TextWanted &wanted) {
        std::fputs(wanted.text.c_str(), stdout);
        return finish(exit_success);
    } catch (const command_line::WrongLine &error) {
        complain(error.what());
    } catch (const TooLarge &error) {
        complain(error.what());
        return exit_output;
    } catch (const NotReached &error) {
        complain(error.what());
        return exit_ipc;
    } catch (const Error &error) {
        complain(error.what());
    }
    return exit_usage;
}

} // namespace ponctl
