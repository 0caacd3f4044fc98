// This is ponbridge, which lets the clients of a fleet reach OLTs by a broker.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "board/service.h"
#include "command_line/parse.h"
#include "fleet/ponbridge/bridge.h"
#include "program_log/log.h"
#include "serving/serving.h"
#include "text/utf8.h"
#include "toml_file/section.h"

namespace
{

using fleet::Bridge;
using fleet::Configuration;

constexpr int exit_failure = 1;
constexpr int exit_usage = 2;
constexpr char default_file[] = "/etc/ponbridge.toml";

constexpr char description[] = "Lets the clients of a fleet reach OLTs by a broker of MQTT.";
constexpr char examples[] = R"(
Examples:
  ponbridge                          by /etc/ponbridge.toml
  ponbridge --config hut.toml        by another file
  ponbridge --config hut.toml --check
                                     whether the file is right, or what is wrong with it
  kill -HUP PID                      go on by what the file says now
See ponbridge(8) and ponbridge.toml(5).)";

struct Options {
    std::string config = default_file;
    bool check = false;
    std::string log = "lines";
};

using Command = command_line::Command<int(const Options &)>;

std::string say_unless_form(const std::string &text)
{
    return text == "lines" || text == "json" ? "" : "expected lines or json";
}

int fail(const std::string &reason, int status)
{
    fprintf(stderr, "ponbridge: %s\n", text::printable(reason, "\n").c_str());
    return status;
}

// A Served is the bridge by the configuration that was taken last.
class Served
{
public:
    explicit Served(Configuration taken)
        : configuration(std::move(taken)), bridge(std::make_unique<Bridge>(configuration, PONBRIDGE_VERSION))
    {
    }

    const Bridge &operator*() const { return *bridge; }

    // Throws std::runtime_error when the configuration cannot be taken. Then everything goes on as it was.
    void change(const Configuration &wanted)
    {
        if (wanted.fixed == configuration.fixed) {
            bridge->change(wanted);
            configuration = wanted;
            return;
        }
        bridge.reset(); // its files and its name at the broker are those of one at a time
        try {
            bridge = std::make_unique<Bridge>(wanted, PONBRIDGE_VERSION);
        } catch (const std::runtime_error &) {
            bridge = std::make_unique<Bridge>(configuration, PONBRIDGE_VERSION);
            throw;
        }
        configuration = wanted;
    }

private:
    Configuration configuration;
    std::unique_ptr<Bridge> bridge;
};

// Serves until a signal ends it.
int serve(const Options &options, Configuration configuration, const sigset_t &signals)
{
    serving::allow_many_files(); // each OLT has a journal
    Served served(std::move(configuration));
    serving::serve_until_ended({.is_alive = [&] { return (*served).is_alive(); },
                                .reload = [&] { served.change(fleet::read_configuration_file(options.config)); }},
                               signals);
    return EXIT_SUCCESS;
}

int run(const Options &options)
{
    program_log::choose_log_form(options.log == "json" ? program_log::LogForm::json : program_log::LogForm::lines);
    const sigset_t signals = serving::hold_signals();
    Configuration configuration = fleet::read_configuration_file(options.config);
    if (!options.check) return serve(options, std::move(configuration), signals);
    printf("ponbridge: %zu OLT%s\n", configuration.olts.size(), configuration.olts.size() == 1 ? "" : "s");
    return EXIT_SUCCESS;
}

// An OLT's answer comes sooner than a thread that sleeps is woken. On a single processor the OLT could not answer
// meanwhile.
void wait_awake_for_answers()
{
    constexpr char microseconds[] = "70";
    if (std::thread::hardware_concurrency() > 1) setenv("BOARD_IPC_SPIN_US", microseconds, 0);
}

} // namespace

int main(int argc, char **argv)
{
    wait_awake_for_answers();
    // What the client library logs of each exchange that fails is in the answer.
    setenv("BOARD_LOG", "off", 0);
    Options options;
    Command program("ponbridge", description);
    program.footer = examples;
    program.run = run;
    program.option("--help,-h", command_line::Help{}, "print this help");
    program.option("--version", command_line::Version{std::string("ponbridge ") + PONBRIDGE_VERSION},
                   "print the version");
    program.option("--config", &options.config, "configuration", "FILE").shows_default(default_file);
    program.option("--check", &options.check, "only say whether the configuration is right");
    program.option("--log", &options.log, "form of the log on standard error", "lines|json")
        .is_checked_by(say_unless_form)
        .shows_default("lines");
    try {
        const command_line::Line line =
            command_line::parse(program, {argv + 1, argv + argc}, command_line::Manner::wide);
        if (const char *unknown = board_log_unknown_word())
            return fail("BOARD_LOG: '" + std::string(unknown) + "' is not one of off, err, debug, syslog", exit_usage);
        return static_cast<const Command &>(*line.command).run(options);
    } catch (const command_line::TextWanted &wanted) {
        fputs(wanted.text.c_str(), stdout);
        return EXIT_SUCCESS;
    } catch (const command_line::WrongLine &error) {
        fputs(text::printable(error.what(), "\t\n").c_str(), stderr);
        return exit_usage;
    } catch (const toml_file::Error &error) {
        return fail(error.what(), exit_usage);
    } catch (const std::exception &error) {
        return fail(error.what(), exit_failure);
    }
}
