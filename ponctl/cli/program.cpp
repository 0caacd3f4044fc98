#include "cli/program.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <poll.h>
#include <unistd.h>

#include "cli/help.h"
#include "consent.h"
#include "mode.h"
#include "report.h"
#include "words.h"

namespace ponctl
{
namespace
{

// Whether the reader of our standard output has seen enough and gone.
bool reader_is_gone()
{
    pollfd output{STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) > 0 && (output.revents & (POLLERR | POLLHUP));
}

constexpr const char *default_interval = "2";

// Exit code of a command whose result was written as far as `stdout` takes it.
int finish(int code)
{
    errno = 0;
    if ((std::fflush(stdout) == 0 && !std::ferror(stdout)) || reader_is_gone()) return code;
    complain(std::string("cannot write the output") + (errno ? std::string(": ") + std::strerror(errno) : ""));
    return exit_output;
}

} // namespace

std::vector<std::string> with_interval(const std::vector<std::string> &words)
{
    std::vector<std::string> whole;
    bool options = true;
    for (size_t index = 0; index < words.size(); ++index) {
        whole.push_back(words[index]);
        if (words[index] == "--") options = false;
        if (!options || words[index] != "--watch") continue;
        const bool given = index + 1 < words.size() && !words[index + 1].empty() &&
                           words[index + 1].find_first_not_of("0123456789.") == std::string::npos;
        whole.back() += std::string("=") + (given ? words[++index] : default_interval);
    }
    return whole;
}

Output GlobalOptions::output() const
{
    constexpr std::array<std::string_view, 4> names{"table", "json", "hex", "csv"}; // in the order of Format
    const auto name = std::ranges::find(names, format);
    if (name == names.end()) throw UsageError("--output: '" + format + "' is not one of " + join(names));
    Output output{stdout, static_cast<Format>(name - names.begin()), !no_headings};
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
        throw UsageError("--color: '" + colour + "' is not one of " + join(names));
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
    return Watching{interval.empty() ? default_interval : interval, count, printable(title)};
}

void GlobalOptions::export_settings() const
{
    setenv("BOARD_LOG", "off", 0); // what the libraries would log the tool says itself
    if (!socket_dir.empty()) setenv("BOARD_IPC_DIR", socket_dir.c_str(), 1);
    if (timeout.empty()) return;
    if (parse_number("--timeout", timeout, INT32_MAX) == 0)
        throw UsageError("--timeout: '0' is not a number of milliseconds from 1");
    setenv("BOARD_IPC_TIMEOUT_MS", timeout.c_str(), 1);
}

Program::Program(const GlobalOptions &defaults)
    : app("Reaches every operation of an EPON OLT's PON management service.", "ponctl"), global(defaults)
{
    app.formatter(std::make_shared<HelpFormatter>());
    app.require_subcommand(1);
    app.fallthrough();
    app.set_help_flag("-h,--help", "print this help");
    app.set_version_flag("--version", "ponctl " PONCTL_VERSION, "print the version");
    app.add_option("-o,--output", global.format, "form of the output; table when left out")
        ->type_name("table|json|hex|csv");
    app.add_flag("--no-headings", global.no_headings, "tables and CSV without their heading line");
    app.add_flag("-q,--quiet", global.quiet, "no results, and on standard error only what goes wrong");
    app.add_option("--color", global.colour, "whether output is coloured; auto, when left out: on a terminal alone")
        ->type_name("auto|always|never");
    app.add_flag("--yes", global.yes, "do not ask before what affects ONUs in service");
    app.add_flag("--dry-run", global.dry_run, "show the requests that would be sent, and send nothing");
    app.add_option("--watch", global.interval, "read again and again, with so many seconds between; 2 when left out")
        ->option_text("[SECONDS]");
    app.add_option("--count", global.count, "with --watch: end after so many readings; else with Ctrl-C")
        ->type_name("N");
    app.add_option("--socket-dir", global.socket_dir, "folder of the service's sockets; BOARD_IPC_DIR when left out")
        ->type_name("DIR");
    app.add_option("--timeout", global.timeout,
                   "milliseconds to wait for an answer; BOARD_IPC_TIMEOUT_MS when left out")
        ->type_name("MS");
    add_ops(app, command);
    add_call(app, command);
    add_raw(app, command);
    add_trace(app, command);
    add_replay(app, command);
    add_idset(app, command);
    add_onu(app, command);
    add_port(app, command);
    add_arp(app, command);
    add_bulk(app, command);
    add_profile(app, command);
    add_loid(app, command);
    add_whitelist(app, command);
    add_blacklist(app, command);
    add_auth(app, command);
    add_alarm(app, command);
    add_optics(app, command);
    add_sla(app, command);
    add_p2p(app, command);
    add_fdb(app, command);
    add_upgrade(app, command);
    add_loop(app, command);
    add_config(app, command);
    add_debug(app, command);
    add_i2c(app, command);
    add_batch(app, lines, global);
    add_shell(app, lines, global);
}

int run_line(const std::vector<std::string> &words, const GlobalOptions &defaults)
{
    Program program(defaults);
    try {
        const std::vector<std::string> whole = with_interval(words);
        program.app.parse(std::vector<std::string>(whole.rbegin(), whole.rend())); // it takes them from the back
        program.global.export_settings();
        if (program.lines) {
            mode() = {.quiet = program.global.quiet, .red = program.global.colours_on(STDERR_FILENO)};
            return finish(program.lines(program.global.output()));
        }
        const auto watching = program.global.watching(words, wants_chart(program.app));
        mode() = {.quiet = program.global.quiet,
                  .dry_run = program.global.dry_run,
                  .watched = watching.has_value(),
                  .red = program.global.colours_on(STDERR_FILENO)};
        start_consent(program.global.yes || program.global.dry_run);
        return finish(run(program.command, program.global.output(), watching));
    } catch (const CLI::ParseError &error) {
        if (error.get_exit_code() == 0) return finish(program.app.exit(error));
        complain(explain(program.app, error));
    } catch (const UsageError &error) {
        complain(error.what());
    }
    return exit_usage;
}

} // namespace ponctl
