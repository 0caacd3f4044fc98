// ponctl config saves the OLT's configuration in a file, loads it from one, shows it and compares it, and applies
// another one.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "call/invocation.h"
#include "cli/program.h"
#include "cli/state_folder.h"
#include "configuration/new_file.h"
#include "configuration/olt.h"
#include "configuration/pending.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/mode.h"
#include "output/report.h"
#include "output/text.h"
#include "text/hex.h"
#include "text/sha256.h"

namespace ponctl
{
namespace
{

using namespace config;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr uint32_t longest_wait = 86400;

std::string contents_of(const std::string &file)
{
    const Bytes text = parse_block("FILE", "@" + file);
    if (text.empty()) throw UsageError("FILE: " + file + " is empty");
    return {text.begin(), text.end()};
}

ExitCode run_config_save(const Output &output, const std::string &file)
{
    if (file.empty()) throw UsageError("FILE: empty");
    const Invocation called = read_from_olt(consent());
    if (!called.good() || mode().dry_run) return report(called);
    const std::string_view text = text_in(called);
    if (file != "-") {
        const std::string problem = replace_file(file, text);
        if (!problem.empty()) complain(problem);
        return problem.empty() ? exit_success : exit_output;
    }
    if (output.format == Format::table)
        std::fwrite(text.data(), 1, text.size(), output.stream);
    else
        print_content(output, {reinterpret_cast<const uint8_t *>(text.data()), text.size()});
    return exit_success;
}

// Has the OLT become the one of this text. `name` says where the text is from.
ExitCode load(const std::string &name, const std::string &text)
{
    ExitCode code = exit_success;
    load_into_olt(text, consent(), [&](const Invocation &sent, bool last) {
        if (!sent.good() || last) code = report(sent, name + ": ");
    });
    return code;
}

ExitCode run_config_load(const Output &, const std::string &file)
{
    const std::string text = contents_of(file);
    ask_before("BSP_CMD_CONFIG_LOAD", "loading " + file + ", which replaces all that the OLT keeps,");
    return load(file, text);
}

// Starts the tool as a process of its own, which outlives this one. Its output goes to `output`, and its standard error
// to where ours goes, unless it is to be `silent`. Returns the process, or -1.
pid_t start_tool(std::vector<std::string> words, int output, bool silent)
{
    words.insert(words.begin(), "ponctl");
    std::vector<char *> arguments;
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::fflush(stdout);
    const pid_t child = fork();
    if (child != 0) return child;
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dup2(output < 0 ? nothing : output, STDOUT_FILENO);
    if (silent) {
        setsid();
        dup2(nothing, STDERR_FILENO);
    }
    execv("/proc/self/exe", arguments.data());
    _exit(exit_ipc);
}

// Reads the configuration of the OLT whose service has its sockets in this folder. Another process does it, because
// the board's libraries look for the service once in a process.
std::string saved_by_service_in(const std::string &folder)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC)) throw UsageError("cannot make a pipe: " + std::string(std::strerror(errno)));
    const pid_t child = start_tool({"--socket-dir", folder, "config", "save", "-"}, ends[1], false);
    close(ends[1]);
    std::string text;
    char chunk[65536];
    for (ssize_t length; (length = read(ends[0], chunk, sizeof chunk)) > 0;)
        text.append(chunk, static_cast<size_t>(length));
    close(ends[0]);
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR)
        ;
    if (child < 0 || status != 0) throw UsageError(folder + ": the configuration cannot be read");
    return text;
}

// A Source is a configuration, or what went wrong when it was read.
struct Source {
    ExitCode code;
    std::optional<Configuration> configuration = {};
};

// Reads the configuration of the OLT.
Source own_configuration(std::string *text = nullptr)
{
    const Invocation called = read_from_olt(consent());
    if (!called.good()) return {report(called)};
    expect_answer(called);
    const std::string read(text_in(called));
    if (text) *text = read;
    return {exit_success, Configuration("the OLT", read)};
}

// Reads what a command line names: a file, a folder of sockets, or the OLT when nothing is named.
Source source_of(const std::string &name)
{
    if (name.empty()) return own_configuration();
    std::error_code none;
    if (std::filesystem::is_directory(name, none))
        return {exit_success, Configuration(name, saved_by_service_in(name))};
    return {exit_success, Configuration(name, contents_of(name))};
}

// Returns a value of a setting as it is shown.
std::string shown(const ConfigSetting &setting, const std::string &value)
{
    return setting.is_secret ? shown_secret(value) : value;
}

ExitCode run_config_show(const Output &output, const std::string &name)
{
    refuse_hex(output, "a configuration");
    const Source source = source_of(name);
    if (!source.configuration) return source.code;
    const auto settings = settings_of(*source.configuration);
    if (output.format != Format::json) {
        for (const auto &[place, setting] : settings)
            print_line(output, setting.line(shown(setting, setting.value)));
        return exit_success;
    }
    Json json(output.stream);
    json->StartArray();
    for (const auto &[place, setting] : settings) {
        json->StartObject();
        json.member("table", setting.table);
        json.member("key", setting.key);
        json.member("name", setting.name);
        json.member("value", shown(setting, setting.value));
        json->EndObject();
    }
    json->EndArray();
    return exit_success;
}

void print_differences(const Output &output, const std::vector<ConfigDifference> &different)
{
    if (output.format != Format::json) {
        const auto print = [&output](char sign, const ConfigSetting &setting, const std::string &value) {
            if (!value.empty()) print_line(output, std::string(1, sign) + " " + setting.line(shown(setting, value)));
        };
        for (const ConfigDifference &difference : different) {
            print('-', difference.setting, difference.before);
            print('+', difference.setting, difference.after);
        }
        return;
    }
    Json json(output.stream);
    json->StartArray();
    for (const ConfigDifference &difference : different) {
        json->StartObject();
        json.member("table", difference.setting.table);
        json.member("key", difference.setting.key);
        json.member("name", difference.setting.name);
        json.member_or_null("before", shown(difference.setting, difference.before));
        json.member_or_null("after", shown(difference.setting, difference.after));
        json->EndObject();
    }
    json->EndArray();
}

struct DiffOptions {
    std::string first, second;
    bool what_fits = false;
};

// Compares what the OLT can have of a configuration with what it has, and says what it cannot have.
ExitCode diff_what_fits(const Output &output, const std::string &name)
{
    const Source wanted = source_of(name), own = own_configuration();
    if (!wanted.configuration || !own.configuration) return std::max(wanted.code, own.code);
    const Fitted fits = fitted_to_olt(*own.configuration, *wanted.configuration, looking());
    for (const std::string &what : fits.left_out)
        note(name + ": does not fit: " + what);
    const Configuration fitting(name, text_of(own.configuration->first_line, fits.rows));
    const auto different = differences(fitting, *own.configuration);
    print_differences(output, different);
    return different.empty() ? exit_success : exit_status;
}

ExitCode run_config_diff(const Output &output, const DiffOptions &options)
{
    refuse_hex(output, "a configuration");
    if (options.what_fits && !options.second.empty())
        throw UsageError("--what-fits: not with SECOND, because the OLT says what fits");
    if (options.what_fits) return diff_what_fits(output, options.first);
    const Source first = source_of(options.first);
    if (!first.configuration) return first.code;
    const Source second = source_of(options.second);
    if (!second.configuration) return second.code;
    const auto different = differences(*first.configuration, *second.configuration);
    print_differences(output, different);
    return different.empty() ? exit_success : exit_status;
}

// Returns where the configuration before is kept until the new one of this OLT is confirmed.
Pending pending_of_olt()
{
    const std::filesystem::path state = state_folder();
    if (state.empty()) throw UsageError("--confirm: HOME is not set, so the configuration before cannot be kept");
    const char *const sockets = std::getenv("BOARD_IPC_DIR");
    std::error_code none;
    const std::string olt = sockets ? std::filesystem::absolute(sockets, none).lexically_normal().string() : "default";
    const text::Sha256 digest = text::sha256(olt);
    return Pending(state / "pending" / text::to_hex(std::span(digest).first(8)));
}

ExitCode roll_back(const Pending &pending)
{
    const std::optional<std::string> before = pending.take();
    if (!before) {
        complain("no configuration waits to be confirmed");
        return exit_status;
    }
    const ExitCode code = load("the configuration before", *before);
    if (code == exit_success) pending.end_rollback();
    return code;
}

struct GuardOptions {
    std::string seconds;
    std::string name; // no other guard has it
};

// Waits for the end of the time, and rolls back unless the configuration was confirmed. Another one may wait then, with
// a guard of its own.
ExitCode run_config_guard(const Output &, const GuardOptions &options)
{
    const Pending pending = pending_of_olt();
    const auto end = Clock::now() + std::chrono::seconds(parse_number("SECONDS", options.seconds, longest_wait));
    while (Clock::now() < end && pending.waits_for(options.name))
        std::this_thread::sleep_for(100ms);
    if (!pending.waits_for(options.name)) return exit_success;
    constexpr int most_tries = 10; // the service may be starting again
    ExitCode code = exit_ipc;
    for (int tries = 0; tries < most_tries && code != exit_success; ++tries) {
        if (tries > 0) std::this_thread::sleep_for(1s);
        code = roll_back(pending);
    }
    return code;
}

// Asks at the terminal until the configuration is confirmed or rolled back, wherever that happens.
ExitCode wait_for_answer(const Pending &pending, const std::string &seconds)
{
    std::cerr << "ponctl: keep the new configuration? It is rolled back in " << seconds << " s. [y/n] " << std::flush;
    while (pending.state() == Pending::State::waiting) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (poll(&input, 1, 100) <= 0) continue;
        std::string answer;
        if (!std::getline(std::cin, answer)) return exit_status; // the terminal is gone
        if (answer == "y" || answer == "yes") pending.confirm();
        if (answer == "n" || answer == "no") roll_back(pending);
    }
    std::cerr << '\n';
    for (int tries = 0; tries < 100 && pending.state() == Pending::State::rolling_back; ++tries)
        std::this_thread::sleep_for(100ms);
    if (pending.state() == Pending::State::confirmed) return exit_success;
    complain(pending.state() == Pending::State::rolled_back
                 ? "the configuration before was rolled back"
                 : "the rollback failed; 'ponctl config rollback' tries it again");
    return exit_status;
}

struct ApplyOptions {
    std::string file;
    std::string seconds; // to confirm; empty: nothing is confirmed
    bool what_fits = false;
};

// Says what the OLT cannot have. Throws a UsageError unless the rest is wanted.
void report_left_out(const ApplyOptions &options, const Configuration &own, const Configuration &wanted,
                     const std::vector<std::string> &left_out)
{
    if (own.olt != wanted.olt) note(options.file + ": this is the configuration of another OLT");
    for (const std::string &what : left_out)
        complain(options.file + ": does not fit: " + what);
    if (!left_out.empty() && !options.what_fits)
        throw UsageError("--what-fits: missing; without it a file is applied as a whole or not at all");
}

ExitCode run_config_apply(const Output &output, const ApplyOptions &options)
{
    refuse_hex(output, "a configuration");
    if (!options.seconds.empty() && parse_number("--confirm", options.seconds, longest_wait) == 0)
        throw UsageError("--confirm: '0' is not a number of seconds from 1");
    const Configuration wanted(options.file, contents_of(options.file));
    std::string before;
    const Source own = own_configuration(&before);
    if (!own.configuration) return own.code;
    const Fitted fits = fitted_to_olt(*own.configuration, wanted, looking());
    const std::string text = text_of(own.configuration->first_line, fits.rows);
    const auto different = differences(*own.configuration, Configuration(options.file, text));
    report_left_out(options, *own.configuration, wanted, fits.left_out);
    print_differences(output, different);
    std::fflush(output.stream);
    if (mode().planned || different.empty()) return exit_success;

    ask_before("BSP_CMD_CONFIG_LOAD",
               "applying " + options.file + ", by which " + std::to_string(different.size()) + " settings change,");
    if (options.seconds.empty()) return load(options.file, text);
    const Pending pending = pending_of_olt();
    if (pending.state() == Pending::State::waiting)
        throw UsageError("--confirm: another configuration waits to be confirmed");
    const std::string guard = std::to_string(getpid()) + "-" + std::to_string(Clock::now().time_since_epoch().count());
    pending.keep(before, guard);
    if (start_tool({"--yes", "config", "guard", options.seconds, guard}, -1, true) < 0)
        throw UsageError(std::string("--confirm: cannot start a process: ") + std::strerror(errno));
    if (const ExitCode code = load(options.file, text); code != exit_success) {
        pending.confirm(); // nothing was changed, so there is nothing to roll back
        return code;
    }
    if (isatty(STDIN_FILENO)) return wait_for_answer(pending, options.seconds);
    note("rolled back in " + options.seconds + " s unless 'ponctl config confirm' comes before");
    return exit_success;
}

ExitCode run_config_confirm(const Output &)
{
    if (mode().dry_run || pending_of_olt().confirm()) return exit_success;
    complain("no configuration waits to be confirmed");
    return exit_status;
}

ExitCode run_config_rollback(const Output &)
{
    if (mode().dry_run) return exit_success; // what waits goes on waiting
    ask_before("BSP_CMD_CONFIG_LOAD", "rolling back to the configuration before");
    return roll_back(pending_of_olt());
}

} // namespace

void add_config(Program &program)
{
    Command &config = program.tree.add("config", "Saves, shows, compares and applies the configuration of the OLT");

    Command &save = config.add("save", "Saves all that the OLT keeps in a file");
    std::string &file = save.runs(run_config_save);
    save.argument("FILE", &file, "the file, which is replaced; - for standard output").is_required();

    Command &load = config.add("load", "Has the OLT become the one that was saved");
    std::string &loaded = load.runs(run_config_load);
    load.argument("FILE", &loaded,
                  "what was saved, of an OLT with the same seed, ports, arrivals and silent "
                  "share")
        .is_required();

    Command &show = config.add("show", "Shows what is configured, a line a setting");
    show.argument("SOURCE", &show.runs(run_config_show),
                  "what was saved, or the folder of a service's sockets; the OLT when left out", "FILE");

    Command &diff = config.add("diff", "Shows in which settings two configurations are different");
    DiffOptions &sources = diff.runs(run_config_diff);
    diff.argument("FIRST", &sources.first, "what was saved, or the folder of a service's sockets", "FILE")
        .is_required();
    diff.argument("SECOND", &sources.second, "as FIRST; the OLT when left out", "FILE");
    diff.option("--what-fits", &sources.what_fits, "compare only what the OLT can have of FIRST, and note the rest");
    diff.footer = "The exit code is 1 when they are different.";

    Command &apply = config.add("apply", "Configures the OLT as it is in a file, and leaves its state alone");
    ApplyOptions &applied = apply.runs(run_config_apply);
    apply.argument("FILE", &applied.file, "what was saved, of this OLT or another one").is_required();
    apply.option("--confirm", &applied.seconds,
                 "roll back unless the new configuration is confirmed within so many seconds", "SECONDS");
    apply.option("--what-fits", &applied.what_fits, "apply the rest where the OLT cannot have all of it");
    apply.footer = "With --dry-run it shows which settings would change, and changes nothing.";
    program.planners.push_back(&apply);

    config.add("confirm", "Keeps the configuration that was applied with --confirm").runs(run_config_confirm);
    config.add("rollback", "Goes back to the configuration before it at once").runs(run_config_rollback);
    Command &guard = config.add("guard", "Rolls back after so many seconds");
    GuardOptions &guarded = guard.runs(run_config_guard);
    guard.argument("SECONDS", &guarded.seconds, "how long to wait").is_required();
    guard.argument("GUARD", &guarded.name, "its name").is_required();
    guard.hidden = true;
}

} // namespace ponctl
