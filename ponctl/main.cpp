// The command line: which command, with which options.
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>

#include <CLI/CLI.hpp>
#include <poll.h>
#include <unistd.h>

#include "commands.h"
#include "report.h"
#include "words.h"

namespace ponctl
{
namespace
{

struct GlobalOptions {
    std::string format = "table";
    bool no_headings = false;
    std::string socket_dir;
    std::string timeout;

    Output output() const
    {
        const bool headings = !no_headings;
        if (format == "table") return {stdout, Format::table, headings};
        if (format == "json") return {stdout, Format::json, headings};
        if (format == "hex") return {stdout, Format::hex, headings};
        throw UsageError("--output: '" + format + "' is not one of table, json, hex");
    }

    // The board's IPC library reads its settings from the environment.
    void export_settings() const
    {
        if (!socket_dir.empty()) setenv("BOARD_IPC_DIR", socket_dir.c_str(), 1);
        if (timeout.empty()) return;
        if (parse_number("--timeout", timeout, INT32_MAX) == 0)
            throw UsageError("--timeout: '0' is not a number of milliseconds from 1");
        setenv("BOARD_IPC_TIMEOUT_MS", timeout.c_str(), 1);
    }
};

std::string brief_of(const char *operation, const char *argument)
{
    for (const catalogue::Argument &known : catalogue::find_operation(operation)->arguments)
        if (known.name == argument) return std::string(known.brief);
    return {};
}

// The command that the command line chose.
using Command = std::function<ExitCode(const Output &)>;

void add_ops(CLI::App &app, Command &command)
{
    CLI::App *ops = app.add_subcommand("ops", "Lists the operations, or shows one of them");
    auto words = std::make_shared<std::vector<std::string>>();
    ops->add_option("WORD", *words,
                    "words that must all occur in name, brief, family, class or command; an operation's whole name "
                    "shows its page");
    ops->callback([words, &command] { command = [words](const Output &output) { return run_ops(output, *words); }; });
}

void add_call(CLI::App &app, Command &command)
{
    struct Options : CallOptions {
        std::string operation;
        std::vector<std::string> words;
        bool help = false;
    };
    CLI::App *call = app.add_subcommand("call", "Calls an operation; 'ponctl ops' lists them");
    auto options = std::make_shared<Options>();
    call->set_help_flag();
    call->add_flag("-h,--help", options->help, "Print this help; with an OPERATION, the page of that operation");
    call->add_option("OPERATION", options->operation, "name of the operation");
    call->add_option("ARGUMENT", options->words, "its arguments, as name=value, in any order");
    call->add_flag("--allow-long", options->allow_long,
                   "let texts and blocks that are longer than their field run on into the fields behind it");
    call->add_flag("--dry-run", options->dry_run, "show the request that would be sent, and send nothing");
    call->callback([call, options, &command] {
        if (options->operation.empty()) {
            if (!options->help) throw UsageError("OPERATION: missing; 'ponctl ops' lists the operations");
            throw CLI::CallForHelp();
        }
        const catalogue::Operation &operation = named_operation(options->operation);
        command = [options, &operation](const Output &output) {
            if (!options->help) return run_call(output, operation, options->words, *options);
            print_page(output, operation);
            return exit_success;
        };
    });
}

void add_raw(CLI::App &app, Command &command)
{
    CLI::App *raw = app.add_subcommand("raw", "Sends any record on any channel");
    auto options = std::make_shared<RawOptions>();
    raw->add_option("CHANNEL", options->channel, "name or number of the channel, as BSP_MSG_PON or 232")->required();
    raw->add_option("CALL", options->call, "set, get, dgram-set or dgram-get")->required();
    raw->add_option("FIELD=VALUE", options->fields, "fields of the record; all others are zero");
    raw->add_option("--record", options->record, "another record than the channel's own");
    raw->add_option("--data", options->data, "first bytes of the record: hex:0011..., text:..., or @FILE");
    raw->add_option("--preset", options->preset,
                    "response bytes allowed; 0 states no bound (default: the record's size)");
    raw->add_flag("--allow-long", options->allow_long,
                  "let texts and blocks that are longer than their field run on into the fields behind it");
    raw->add_flag("--dry-run", options->dry_run, "show the request that would be sent, and send nothing");
    raw->callback(
        [options, &command] { command = [options](const Output &output) { return run_raw(output, *options); }; });
}

void add_trace(CLI::App &app, Command &command)
{
    CLI::App *trace =
        app.add_subcommand("trace", "Lists what went over the IPC, from a file that BOARD_IPC_TRACE named");
    auto file = std::make_shared<std::string>();
    auto verbose = std::make_shared<bool>(false);
    trace->add_option("FILE", *file, "the trace file")->required();
    trace->add_flag("-v,--verbose", *verbose, "show the records too");
    trace->callback([file, verbose, &command] {
        command = [file, verbose](const Output &output) { return run_trace(output, *file, *verbose); };
    });
}

void add_onu(CLI::App &app, Command &command)
{
    CLI::App *onu = app.add_subcommand("onu", "Lists, binds and releases ONUs");
    onu->require_subcommand(1);

    CLI::App *list = onu->add_subcommand("list", "Lists the ONUs: the bound ones, and those that wait");
    auto port = std::make_shared<std::string>();
    list->add_option("PORT", *port, "PON port number; all ports when left out");
    list->callback(
        [port, &command] { command = [port](const Output &output) { return run_onu_list(output, *port); }; });

    constexpr const char *binding = "bsp_pon_bind_onu_spec_id";
    CLI::App *bind = onu->add_subcommand("bind", "Binds an ONU to an ONU id");
    auto bound = std::make_shared<BindOptions>();
    bind->add_option("PORT", bound->port, brief_of(binding, "pon_port"))->required();
    bind->add_option("MAC", bound->mac, brief_of(binding, "mac"))->required();
    bind->add_option("--id", bound->id, brief_of(binding, "onu_id") + "; the service picks one when left out");
    bind->add_option("--text-a", bound->text_a, brief_of(binding, "text_a"));
    bind->add_option("--text-b", bound->text_b, brief_of(binding, "text_b"));
    bind->add_option("--text-c", bound->text_c, brief_of(binding, "text_c"));
    bind->add_option("--mode", bound->mode, brief_of(binding, "value") + "; 0 when left out");
    bind->callback(
        [bound, &command] { command = [bound](const Output &output) { return run_onu_bind(output, *bound); }; });

    CLI::App *release = onu->add_subcommand("release", "Releases the binding of an ONU, or of many");
    auto released = std::make_shared<ReleaseOptions>();
    release->add_option("PORT", released->port, brief_of(binding, "pon_port"))->required();
    release->add_option("--id", released->id, brief_of(binding, "onu_id"));
    release->add_option("--mac", released->mac, brief_of(binding, "mac"));
    release->add_flag("--offline", released->offline, "release all offline ONUs of the port");
    release->add_flag("--all", released->all, "release all ONUs of the port");
    release->add_flag("--yes", released->confirmed, "do not ask before --all and --offline");
    release->callback([released, &command] {
        command = [released](const Output &output) { return run_onu_release(output, *released); };
    });
}

void add_port(CLI::App &app, Command &command)
{
    CLI::App *port = app.add_subcommand("port", "Lists the PON ports");
    port->require_subcommand(1);
    port->add_subcommand("list", "Lists the PON ports with their ONUs and ranging limits")->callback([&command] {
        command = run_port_list;
    });
}

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

int run(int argc, char **argv)
{
    CLI::App app("Reaches every operation of an EPON OLT's PON management service.", "ponctl");
    GlobalOptions global;
    Command command;
    app.require_subcommand(1);
    app.fallthrough();
    app.set_version_flag("--version", "ponctl " PONCTL_VERSION);
    app.add_option("-o,--output", global.format, "table, json or hex")->option_text("FORMAT");
    app.add_flag("--no-headings", global.no_headings, "tables without their heading line");
    app.add_option("--socket-dir", global.socket_dir, "folder of the service's sockets")->option_text("DIR");
    app.add_option("--timeout", global.timeout, "milliseconds to wait for an answer")->option_text("MS");
    add_ops(app, command);
    add_call(app, command);
    add_raw(app, command);
    add_trace(app, command);
    add_onu(app, command);
    add_port(app, command);

    try {
        app.parse(argc, argv);
        global.export_settings();
        return finish(command(global.output()));
    } catch (const CLI::ParseError &error) {
        if (error.get_exit_code() == 0) return finish(app.exit(error));
        const auto unknown = app.remaining(true);
        complain((unknown.empty() ? error.what() : "unknown: " + unknown.front()) + " (see --help)");
    } catch (const UsageError &error) {
        complain(error.what());
    }
    return exit_usage;
}

} // namespace
} // namespace ponctl

int main(int argc, char **argv)
{
    std::setlocale(LC_CTYPE, "");
    std::signal(SIGPIPE, SIG_IGN);
    return ponctl::run(argc, argv);
}
