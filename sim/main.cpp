// This is ponsim, the simulated PON management service.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <systemd/sd-daemon.h>
#include <unistd.h>

#include "board/service.h"
#include "command_line/parse.h"
#include "command_line/served_folders.h"
#include "control/control.h"
#include "daemon/console.h"
#include "daemon/control_client.h"
#include "daemon/host.h"
#include "recording/replay.h"
#include "recording/rerun.h"
#include "scenario/scenario.h"
#include "scenario/summary.h"
#include "storage/private.h"
#include "test_command.h"
#include "text/utf8.h"
#include "text/words.h"
#include "text/written.h"

namespace
{

constexpr int exit_failure = 1;
constexpr int exit_usage = 2;

constexpr char description[] =
    "Serves a simulated EPON OLT to the clients of the PON management library, on Unix sockets.";
constexpr char examples[] = R"(
Examples:
  ponsim                                     serve on the default sockets, keep state in the default file
  ponsim --socket-dir /tmp/olt --state none  an OLT to play with: nothing is kept
  ponsim --seed 7 --ports 4 --arrivals 32    another OLT: needs its own --state FILE, or --fresh
  ponsim --record /tmp/session               keep what it answers; ponsim replay /tmp/session serves it again
  ponsim rerun /tmp/session --until 90       let the session happen again, up to that time
  ponsim --scenario campus.toml --state none an OLT that a file describes, with what happens to it
  ponsim ctl events --follow                 what happens to alarms, as it happens
  ponsim --scenario campus.toml --check      what the file describes, or what is wrong with it
  ponsim --state campus.db --export          the OLT of a state, as a file that describes it
  ponsim test campus.toml --seeds 1-100      whether what the file expects comes true
  ponsim --socket-mode 0666 --grant '*=read' --grant alice=service-affecting
                                             everyone may look, alice may do everything
See ponsim(8).)";

struct Options {
    std::string socket_dir; // empty: that of the board library
    std::string socket_mode = "0660";
    std::string state;
    bool fresh = false;
    ponsim::WantedSettings wanted;
    std::string scenario; // file of the scenario; empty: none
    ponsim::VariableWords variables;
    bool check = false;
    bool exported = false; // print the OLT of the state as a scenario
    bool json = false;     // of what a control command shows
    std::vector<std::string> grants;
    ponsim::Access access; // what the grants add up to
    double speed = 1;
    std::string upgrade_dir;        // empty: in the folder of sockets
    std::string record;             // empty: no record
    std::string audit;              // empty: no audit log
    std::vector<std::string> words; // the words of a control command
    bool follow = false;            // events go on as they come
    std::optional<uint64_t> since;  // events after this one
    std::string replayed;           // the recording to serve, or to rerun
    std::string until;              // seconds of model time, or 1h 30min; empty: to the end
    std::string state_then;         // the file for the state at the end of a rerun; empty: none
    bool loop = false;
    std::string olt; // the OLT that the command is for; empty: the only one
    ponsim::TestWords test;
};

using Command = command_line::Command<int(const Options &)>;

// Returns the default place of the state: a file, or a folder for the files of several OLTs.
std::string default_state(size_t olts)
{
    const std::string name = olts > 1 ? "/ponsim/olts" : "/ponsim/olt.db";
    if (geteuid() == 0) return "/var/lib" + name;
    if (const char *state = getenv("XDG_STATE_HOME"); state && *state == '/') return state + name;
    const char *home = getenv("HOME");
    return (home ? home : ".") + ("/.local/state" + name);
}

std::string say_unless_octal_mode(const std::string &text)
{
    const bool octal = !text.empty() && text.find_first_not_of("01234567") == std::string::npos;
    return octal && std::stoul(text.substr(0, 9), nullptr, 8) <= 0777 ? "" : "expected octal bits up to 0777";
}

int fail(const std::string &reason, int status)
{
    fprintf(stderr, "ponsim: %s\n", text::printable(reason, "\n").c_str());
    return status;
}

// Sends the words to a running ponsim, and prints the answer.
int control(const Options &options)
{
    std::string line;
    for (const std::string &word : options.words)
        line += (line.empty() ? "" : " ") + word;
    if (options.json) line += " --json";
    const char *set = getenv("BOARD_IPC_DIR");
    std::string socket_dir = options.socket_dir.empty() && set ? set : options.socket_dir;
    if (!options.olt.empty()) {
        if (socket_dir.empty()) return fail("--olt needs the sockets' folder: add --socket-dir DIR", exit_usage);
        socket_dir += '/' + options.olt;
    }
    if (!socket_dir.empty()) board_ipc_use_directory(socket_dir.c_str());
    try {
        if (line == "events") {
            ponsim::print_events(options.since, options.follow);
            return EXIT_SUCCESS;
        }
        if (options.follow || options.since) return fail("--follow and --since belong to events alone", exit_usage);
        const std::optional<ponsim::ModelTime> step = ponsim::step_length(line);
        const std::string said = step ? ponsim::send_step(line, *step) : ponsim::send_control(line);
        fputs(text::printable(said, "\t\n").c_str(), stdout);
        return EXIT_SUCCESS;
    } catch (const ponsim::NoServiceError &) {
        const std::string directory = board_ipc_directory();
        const std::vector<std::string> olts = command_line::served_folders(directory, ponsim::control_module);
        if (olts.empty()) throw;
        return fail(directory + " has the OLTs " + text::join(olts) + ": add " +
                        (socket_dir.empty() ? "--socket-dir " + directory + " " : "") + "--olt NAME",
                    exit_usage);
    }
}

std::string socket_directory(const Options &options)
{
    return options.socket_dir.empty() ? board_ipc_directory() : options.socket_dir;
}

uint32_t mode_bits(const Options &options)
{
    return static_cast<uint32_t>(std::stoul(options.socket_mode, nullptr, 8));
}

// Returns what the line that announces the service says of the OLTs.
std::string describe(const std::vector<std::unique_ptr<ponsim::Host>> &hosts)
{
    const ponsim::Settings &first = hosts[0]->simulator().settings();
    if (hosts.size() == 1 && first.scenario.empty())
        return "seed " + std::to_string(first.seed) + ", " + std::to_string(first.ports) + " ports, " +
               std::to_string(first.arrivals) + " arrivals a port, " + std::to_string(first.silent) + "% silent";
    size_t ports = 0, onus = 0;
    for (const std::unique_ptr<ponsim::Host> &host : hosts)
        for (const ponsim::PonPort &port : host->simulator().olt().ports()) {
            ++ports;
            onus += port.arrivals.size();
        }
    return (hosts.size() == 1 ? "OLT " + first.olt : std::to_string(hosts.size()) + " OLTs") + ", " +
           std::to_string(ports) + " ports, " + std::to_string(onus) + " ONUs";
}

// Signals are blocked before any other thread starts, so that all threads leave the signals to the wait of this one.
sigset_t block_stop_signals()
{
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, SIGINT);
    sigaddset(&stop, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stop, nullptr);
    return stop;
}

// Tells whoever waits that the service is there, and returns when a signal ends it.
void serve_until(const sigset_t &stop, const std::string &announcement)
{
    printf("ponsim: serving on %s\n", announcement.c_str());
    fflush(stdout);
    sd_notify(0, "READY=1");
    int signal;
    sigwait(&stop, &signal);
    sd_notify(0, "STOPPING=1");
}

// A file that cannot grow is an error that is answered, and not the end of the service.
void survive_full_files()
{
    signal(SIGXFSZ, SIG_IGN);
}

// Each OLT has some ten files and sockets open. The limit of a process that does not ask for more is for few of them.
void allow_many_open_files()
{
    rlimit limit;
    if (getrlimit(RLIMIT_NOFILE, &limit)) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

int replay(const Options &options)
{
    const std::string socket_dir = socket_directory(options);
    const sigset_t stop = block_stop_signals();
    ponsim::Recording recording(options.replayed);
    const ponsim::Replay service(recording, options.loop, socket_dir, mode_bits(options));
    if (!service.serving()) return fail("cannot serve on " + socket_dir, exit_failure);
    serve_until(stop, socket_dir + " (" + std::to_string(recording.size()) + " exchanges recorded in " +
                          options.replayed + ")");
    return EXIT_SUCCESS;
}

int rerun(const Options &options)
{
    std::optional<ponsim::ModelTime> until;
    if (!options.until.empty()) until = text::read_time(options.until);
    if (!options.until.empty() && !until) until = ponsim::read_seconds(options.until);
    const ponsim::RerunResult result =
        ponsim::rerun(options.replayed, options.upgrade_dir, until,
                      [](const std::string &different) { printf("ponsim: %s\n", different.c_str()); });
    if (!options.state_then.empty()) storage::write_private_file(options.state_then, result.image.bytes);
    const std::string refused = result.refused ? ", " + std::to_string(result.refused) + " refused requests" : "";
    printf("ponsim: %zu requests and %zu commands%s, up to %s: %zu were answered otherwise\n", result.requests,
           result.commands, refused.c_str(), ponsim::seconds_text(result.now).c_str(), result.different);
    return result.different == 0 ? EXIT_SUCCESS : exit_failure;
}

int serve(const Options &options)
{
    const sigset_t stop = block_stop_signals();
    allow_many_open_files();
    survive_full_files();
    ponsim::Scenario scenario;
    if (!options.scenario.empty())
        scenario = ponsim::read_scenario_file(options.scenario, {.variables = options.variables.read()});
    ponsim::HostOptions together;
    together.socket_dir = socket_directory(options);
    together.socket_mode = mode_bits(options);
    together.fresh = options.fresh;
    together.wanted = options.wanted;
    together.speed = options.speed;
    together.upgrade_folder = options.upgrade_dir;
    together.record = options.record;
    together.audit = options.audit;
    if (options.state.empty())
        together.state = default_state(scenario.olts.size());
    else if (options.state != "none")
        together.state = options.state;
    ponsim::Timekeeper timekeeper;
    std::vector<std::unique_ptr<ponsim::Host>> hosts;
    for (const ponsim::HostOptions &each : ponsim::host_each(together, std::move(scenario)))
        hosts.push_back(std::make_unique<ponsim::Host>(each, options.access, timekeeper));

    serve_until(stop, together.socket_dir + " (" + describe(hosts) + ", state " +
                          (together.state.empty() ? "none" : together.state) + ")");
    for (const std::unique_ptr<ponsim::Host> &host : hosts)
        host->stop();
    return EXIT_SUCCESS;
}

// Prints the OLT of a state file as a scenario.
int print_scenario(const Options &options)
{
    const std::string file = options.state.empty() ? default_state(1) : options.state;
    if (!std::filesystem::is_regular_file(file)) return fail(file + ": expected the state file of an OLT", exit_usage);
    ponsim::Store store(file, false);
    if (!store.settings()) return fail(file + ": there is no OLT in it", exit_failure);
    const ponsim::Simulator simulator(store, {});
    fputs(ponsim::scenario_text(simulator).c_str(), stdout);
    return EXIT_SUCCESS;
}

int serve_or_check(const Options &options)
{
    if (options.exported) return print_scenario(options);
    if (!options.check) return serve(options);
    fputs(ponsim::summary_of(ponsim::read_scenario_file(options.scenario, {.variables = options.variables.read()}))
              .c_str(),
          stdout);
    return EXIT_SUCCESS;
}

int test(const Options &options)
{
    if (options.wanted.seed) return fail("test takes --seeds, as 1-100, in the place of --seed", exit_usage);
    return ponsim::run_test(options.test);
}

// Declares the command line, which puts its values into `options`.
void declare(Command &program, Options &options)
{
    program.footer = examples;
    program.option("-h,--help", command_line::Help{}, "Print this help message and exit");
    program.option("--version", command_line::Version{"ponsim " PONSIM_VERSION},
                   "Display program version information and exit");
    program.option("--socket-dir", &options.socket_dir, "Folder of the sockets [BOARD_IPC_DIR, or see ponsim(8)]",
                   "DIR");
    program.option("--socket-mode", &options.socket_mode, "Permission bits of the sockets, octal", "MODE")
        .is_checked_by(say_unless_octal_mode)
        .shows_default(options.socket_mode);
    program.option("--state", &options.state, "Where the OLT's state is kept; none keeps it in memory only", "FILE")
        .shows_default(default_state(1));
    program.option("--fresh", &options.fresh, "Discard the state that the file has, and start over");
    const auto &scenario = program
                               .option("--scenario", &options.scenario,
                                       "What the OLTs are and what happens: see ponsim-scenario(5)", "FILE")
                               .is_existing_file();
    program.option("--check", &options.check, "Only read the scenario, and print what it describes").needs(scenario);
    program.option("--export", &options.exported, "Only print the OLT of the state file as a scenario")
        .excludes(scenario);
    options.variables.declare(program).needs(scenario);
    program.option("--seed", &options.wanted.seed, "Which OLT: another seed, other ONUs [1]", "N").excludes(scenario);
    program.option("--ports", &options.wanted.ports, "PON ports [16]", "N")
        .excludes(scenario)
        .is_within(1, ponsim::max_ports);
    program.option("--arrivals", &options.wanted.arrivals, "ONUs that have arrived at each port [8]", "N")
        .excludes(scenario)
        .is_within(0, ponsim::onus_per_port);
    program.option("--silent", &options.wanted.silent, "Percentage of them that go offline when bound [10]", "PERCENT")
        .excludes(scenario)
        .is_within(0, 100);
    program
        .option("--speed", &options.speed,
                "How many times as fast as the time of day model time passes; 0 stops it, "
                "but for ponsim ctl step",
                "FACTOR")
        .is_within(0, 1e6)
        .shows_default("1");
    program.option("--upgrade-dir", &options.upgrade_dir,
                   "Folder below which files of upgrade types may be read [upgrade in the folder of sockets]", "DIR");
    program.option("--record", &options.record, "Append each exchange to this file, for ponctl trace and replays",
                   "FILE");
    program.option("--audit", &options.audit,
                   "Append who changed what, when, and what came of it to this file, as JSON lines", "FILE");
    program.option("--grant", &options.grants,
                   "What a user may do: CLASS is read, write or service-affecting, each with those before it; USER is "
                   "a name, a number, @ and a group, or * for everyone else; may be repeated [*=service-affecting]",
                   "USER=CLASS");
    program.run = serve_or_check;

    Command &ctl = program.add("ctl", "Controls a running ponsim: ponsim ctl help lists the commands");
    ctl.option("--olt", &options.olt, "Which one, where a ponsim serves several", "NAME");
    ctl.option("--json", &options.json, "Show as JSON, where a command shows a table");
    ctl.option("--follow", &options.follow, "Print the events of alarms as they come, until interrupted");
    ctl.option("--since", &options.since, "Print only the events after this one", "N");
    ctl.argument("WORDS", &options.words, "A command and its words");
    ctl.footer = examples;
    ctl.run = control;
    Command &replayed = program.add("replay", "Serves a recording: answers requests as they were answered then");
    replayed.argument("FILE", &options.replayed, "The recording").is_required();
    replayed.option("--loop", &options.loop, "Start over where the answers to a request end, not repeat the last");
    replayed.footer = examples;
    replayed.run = replay;
    Command &again = program.add("rerun", "Lets a recorded session happen again, and compares what is answered");
    again.argument("FILE", &options.replayed, "The recording, which ponsim --record made").is_required();
    again.option("--until", &options.until, "Stop at this model time [the end of the recording]", "TIME");
    again.option("--state", &options.state_then, "Keep the OLT as it is then in this new file; ponsim goes on with it",
                 "FILE");
    again.footer = examples;
    again.run = rerun;
    Command &tested = program.add("test", "Runs scenarios as tests: checks whether what they expect comes true");
    ponsim::declare_test(tested, options.test);
    tested.run = test;
}

} // namespace

int main(int argc, char **argv)
{
    Options options;
    Command program("ponsim", description);
    declare(program, options);
    try {
        const command_line::Line line =
            command_line::parse(program, {argv + 1, argv + argc}, command_line::Manner::wide);
        if (const char *unknown = board_log_unknown_word())
            return fail("BOARD_LOG: '" + std::string(unknown) + "' is not one of off, err, debug, syslog", exit_usage);
        for (const std::string &grant : options.grants)
            if (const std::string wrong = options.access.grant(grant); !wrong.empty())
                return fail("--grant " + grant + ": " + wrong, exit_usage);
        return static_cast<const Command &>(*line.command).run(options);
    } catch (const command_line::TextWanted &wanted) {
        fputs(wanted.text.c_str(), stdout);
        return EXIT_SUCCESS;
    } catch (const command_line::WrongLine &error) {
        fputs(text::printable(error.what(), "\t\n").c_str(), stderr);
        return exit_usage;
    } catch (const ponsim::ControlError &error) {
        return fail(error.what(), exit_usage);
    } catch (const ponsim::ScenarioError &error) {
        return fail(error.what(), exit_usage);
    } catch (const std::exception &error) {
        return fail(error.what(), exit_failure);
    }
}
