// This is ponfront, which reads OLTs once and serves many.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

#include "accounts.h"
#include "board/service.h"
#include "command_line/parse.h"
#include "daemon/front.h"
#include "page/page.h"
#include "program_log/log.h"
#include "serving/serving.h"
#include "text/utf8.h"
#include "toml_file/section.h"

namespace
{

constexpr int exit_failure = 1;
constexpr int exit_usage = 2;
constexpr char default_file[] = "/etc/ponfront.toml";

constexpr char description[] = "Reads OLTs, each table once in its period, and serves monitoring systems from memory.";
constexpr char examples[] = R"(
Examples:
  ponfront                           by /etc/ponfront.toml or, without that file, the OLT on the default sockets
  ponfront --config olts.toml        by another file
  ponfront --config olts.toml --check
                                     whether the file is right, or what is wrong with it
  kill -HUP PID                      go on by what the file says now
  ponfront --config olts.toml user add ann
                                     somebody who may log in, and read
See ponfront(8) and ponfront.toml(5).)";

struct Options {
    std::string config; // empty: the default file, if there is one
    bool check = false;
    std::string log = "lines";
    std::string onus; // how much is told of each; empty: as the configuration says
};

using Command = command_line::Command<int(const Options &)>;

// What is said of a user. The role is that of a new user, or a new one.
struct UserOptions {
    std::string name, role = "read";
    bool none = false;
};

std::string say_unless_detail(const std::string &text)
{
    return front::onu_detail(text) ? "" : "expected none, state, optics or all";
}

std::string say_unless_form(const std::string &text)
{
    return text == "lines" || text == "json" ? "" : "expected lines or json";
}

int fail(const std::string &reason, int status)
{
    fprintf(stderr, "ponfront: %s\n", text::printable(reason, "\n").c_str());
    return status;
}

front::Configuration read_file(const std::string &file)
{
    if (!file.empty()) return front::read_configuration_file(file);
    if (access(default_file, F_OK) != 0) return front::default_configuration();
    return front::read_configuration_file(default_file);
}

front::Configuration read(const Options &options)
{
    front::Configuration configuration = read_file(options.config);
    if (const auto detail = front::onu_detail(options.onus)) configuration.onus = *detail;
    return configuration;
}

// Serves until a signal ends it.
int serve(const Options &options, front::Configuration configuration, const sigset_t &signals)
{
    serving::allow_many_files(); // each client is one
    front::Front served(std::move(configuration), PONFRONT_VERSION, front::page_files());
    serving::serve_until_ended(
        {.is_alive = [&] { return served.is_alive(); }, .reload = [&] { served.change(read(options)); }}, signals);
    return EXIT_SUCCESS;
}

int run(const Options &options)
{
    program_log::choose_log_form(options.log == "json" ? program_log::LogForm::json : program_log::LogForm::lines);
    const sigset_t signals = serving::hold_signals();
    try {
        front::Configuration configuration = read(options);
        if (options.check) {
            printf("ponfront: %zu OLT%s\n", configuration.olts.size(), configuration.olts.size() == 1 ? "" : "s");
            return EXIT_SUCCESS;
        }
        return serve(options, std::move(configuration), signals);
    } catch (const toml_file::Error &error) {
        return fail(error.what(), exit_usage);
    } catch (const std::runtime_error &error) {
        return fail(error.what(), exit_failure);
    }
}

std::string users_file(const Options &options)
{
    const front::Configuration configuration = read(options);
    if (!configuration.http || configuration.http->users.empty())
        throw toml_file::Error("the configuration names no file of users: users = \"FILE\" below [http]");
    return configuration.http->users;
}

void add_user_commands(Command &user)
{
    constexpr char names[] = "letters, digits, '-', '_' and '.'", roles[] = "read, write or service-affecting";
    const auto add = [&](const char *name, const char *brief, int (*act)(const Options &, const UserOptions &)) {
        Command &command = user.add(name, brief);
        UserOptions &options = command.runs(act);
        command.argument("NAME", &options.name, names).is_required();
        return std::pair{&command, &options};
    };
    const auto [added, new_user] = add("add", "Adds a user", [](const Options &all, const UserOptions &options) {
        front::add_user(users_file(all), options.name, options.role);
        return EXIT_SUCCESS;
    });
    added->option("--role", &new_user->role, "what the user may do", "read|write|service-affecting")
        .shows_default("read");
    add("passwd", "Gives a user another password", [](const Options &all, const UserOptions &options) {
        front::change_password(users_file(all), options.name);
        return EXIT_SUCCESS;
    });
    const auto [changed, user_of_role] =
        add("role", "Gives a user another role", [](const Options &all, const UserOptions &options) {
            front::change_role(users_file(all), options.name, options.role);
            return EXIT_SUCCESS;
        });
    changed->argument("ROLE", &user_of_role->role, roles).is_required();
    add("remove", "Removes a user", [](const Options &all, const UserOptions &options) {
        front::remove_user(users_file(all), options.name);
        return EXIT_SUCCESS;
    });
    const auto [token, user_of_token] =
        add("token", "Prints a new token for scripts", [](const Options &all, const UserOptions &options) {
            front::change_token(users_file(all), options.name, options.none);
            return EXIT_SUCCESS;
        });
    token->option("--none", &user_of_token->none, "only take the token away");
    user.add("list", "Lists the users").run = [](const Options &all) {
        front::list_users(users_file(all));
        return EXIT_SUCCESS;
    };
}

} // namespace

int main(int argc, char **argv)
{
    // What the client library logs of each exchange that fails is said once by this program.
    setenv("BOARD_LOG", "off", 0);
    Options options;
    Command program("ponfront", description);
    program.footer = examples;
    program.run = run;
    program.option("--help,-h", command_line::Help{}, "print this help");
    program.option("--version", command_line::Version{std::string("ponfront ") + PONFRONT_VERSION},
                   "print the version");
    program.option("--config", &options.config, std::string("configuration; ") + default_file + " by default", "FILE");
    program.option("--check", &options.check, "only say whether the configuration is right");
    program
        .option("--onus", &options.onus, "how much metrics tell of each ONU; as the configuration says by default",
                "none|state|optics|all")
        .is_checked_by(say_unless_detail);
    program.option("--log", &options.log, "form of the log on standard error", "lines|json")
        .is_checked_by(say_unless_form)
        .shows_default("lines");
    add_user_commands(program.add("user", "Adds, changes and lists users"));
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
