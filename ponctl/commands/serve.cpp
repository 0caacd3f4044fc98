// ponctl serve answers requests to the OLT of this machine that come over its standard input, as over ssh.
#include <chrono>
#include <filesystem>
#include <thread>

#include <pwd.h>
#include <unistd.h>

#include "audit/bounded_log.h"
#include "audit/entry.h"
#include "board/service.h"
#include "cli/program.h"
#include "cli/state_folder.h"
#include "fleet/bridge/stdio.h"
#include "fleet/protocol/topics.h"
#include "output/exit_code.h"
#include "output/report.h"

namespace ponctl
{
namespace
{

constexpr uint64_t audit_limit = 4u << 20; // bytes

struct ServeOptions {
    bool stdio = false;
    std::string allow = "service-affecting";
    std::string client, state; // empty: the user's
};

std::string say_unless_class(const std::string &text)
{
    return catalogue::find_class(text) ? "" : "expected read, write or service-affecting";
}

std::string say_unless_name(const std::string &text)
{
    return fleet::is_name(text) ? "" : "expected 1 to 64 letters, digits, '-', '_' and '.'";
}

std::string name_of_user()
{
    const passwd *user = getpwuid(getuid());
    return user ? user->pw_name : std::to_string(getuid());
}

std::string name_of_machine()
{
    char name[65] = {};
    gethostname(name, sizeof name - 1);
    return fleet::is_name(name) ? name : "olt";
}

// Returns the folder of the journal and the audit log, which it makes for its user alone.
std::filesystem::path folder_of(const ServeOptions &options)
{
    const std::filesystem::path folder(options.state.empty() ? (state_folder() / "serve").string() : options.state);
    if (options.state.empty() && state_folder().empty())
        throw UsageError("there is no home for the journal; give --state FOLDER");
    std::error_code error;
    const bool is_new = std::filesystem::create_directories(folder, error);
    if (is_new) std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    if (error) throw UsageError(folder.string() + ": " + error.message());
    return folder;
}

// Each line opens the log anew: there may be as many of these processes as there are clients, and one has it at a time.
void keep(const std::filesystem::path &file, const std::string &line)
{
    constexpr int most_tries = 200;
    constexpr std::chrono::milliseconds pause{5};
    for (int tries = 1;; ++tries) {
        try {
            audit::BoundedLog log(file.string(), audit_limit, complain);
            return log.append(line);
        } catch (const std::runtime_error &error) {
            if (tries == most_tries) return complain(error.what());
        }
        std::this_thread::sleep_for(pause);
    }
}

ExitCode run_serve(const Output &, const ServeOptions &options)
{
    if (!options.stdio) throw UsageError("say how: ponctl serve --stdio");
    const std::filesystem::path folder = folder_of(options);
    const fleet::ServedOlt olt{.name = name_of_machine(),
                               .socket_dir = {},
                               .allow = *catalogue::find_class(options.allow),
                               .journal = (folder / "journal.jsonl").string()};
    try {
        fleet::serve_lines(
            STDIN_FILENO, STDOUT_FILENO,
            {.olt = olt,
             .hello = {.version = PONCTL_VERSION, .allow = olt.allow},
             .client = options.client.empty() ? name_of_user() : options.client,
             .notes = {.audit = [&folder](const std::string &,
                                          const std::string &line) { keep(folder / "audit.jsonl", line); },
                       .complain = complain}});
    } catch (const std::runtime_error &error) {
        complain(error.what());
        return exit_usage;
    }
    return exit_success;
}

} // namespace

void add_serve(Program &program)
{
    Command &serve = program.tree.add("serve", "Answers requests of a fleet that come over standard input");
    program.askless.push_back(&serve); // it answers for the OLT of this machine
    ServeOptions &options = serve.runs(run_serve);
    serve.option("--stdio", &options.stdio, "requests come over standard input, and are answered on standard output");
    serve.option("--allow", &options.allow, "what requests may do at most", "read|write|service-affecting")
        .is_checked_by(say_unless_class)
        .shows_default("service-affecting");
    serve.option("--client", &options.client, "who asks, as the audit log says it; the user by default", "NAME")
        .is_checked_by(say_unless_name);
    serve.option("--state", &options.state, "where the journal and the audit log are; below the home by default",
                 "FOLDER");
}

} // namespace ponctl
