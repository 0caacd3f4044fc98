#include "cli/program.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <poll.h>
#include <unistd.h>

#include "consent.h"
#include "cli/help.h"
#include "report.h"

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

// Exit code of a command whose result was written as far as `stdout` takes it.
int finish(int code)
{
    errno = 0;
    if ((std::fflush(stdout) == 0 && !std::ferror(stdout)) || reader_is_gone()) return code;
    complain(std::string("cannot write the output") + (errno ? std::string(": ") + std::strerror(errno) : ""));
    return exit_output;
}

} // namespace

Output GlobalOptions::output() const
{
    const bool headings = !no_headings;
    if (format == "table") return {stdout, Format::table, headings};
    if (format == "json") return {stdout, Format::json, headings};
    if (format == "hex") return {stdout, Format::hex, headings};
    throw UsageError("--output: '" + format + "' is not one of table, json, hex");
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

Program::Program() : app("Reaches every operation of an EPON OLT's PON management service.", "ponctl")
{
    app.formatter(std::make_shared<HelpFormatter>());
    app.require_subcommand(1);
    app.fallthrough();
    app.set_help_flag("-h,--help", "print this help");
    app.set_version_flag("--version", "ponctl " PONCTL_VERSION, "print the version");
    app.add_option("-o,--output", global.format, "form of the output; table when left out")
        ->type_name("table|json|hex");
    app.add_flag("--no-headings", global.no_headings, "tables without their heading line");
    app.add_flag("--yes", global.yes, "do not ask before what affects ONUs in service");
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
}

int run_line(const std::vector<std::string> &words)
{
    Program program;
    try {
        program.app.parse(std::vector<std::string>(words.rbegin(), words.rend())); // it takes them from the back
        program.global.export_settings();
        start_consent(program.global.yes);
        return finish(program.command(program.global.output()));
    } catch (const CLI::ParseError &error) {
        if (error.get_exit_code() == 0) return finish(program.app.exit(error));
        complain(explain(program.app, error));
    } catch (const UsageError &error) {
        complain(error.what());
    }
    return exit_usage;
}

} // namespace ponctl
