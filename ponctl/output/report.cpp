#include "output/report.h"

#include <cstdio>

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "board/ipc.h"
#include "board/service.h"
#include "call/invocation.h"
#include "command_line/served_folders.h"
#include "output/exit_code.h"
#include "output/mode.h"
#include "text/utf8.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// Returns a message as it is written. A message of several lines lists candidates, for example.
std::string line_of(const std::string &message)
{
    return "ponctl: " + text::printable(message, "\n");
}

void say(const std::string &line)
{
    if (mode().held)
        *mode().held += line;
    else
        std::fputs(line.c_str(), stderr);
}

// Returns the name of a user or of a group, or its number when it has no name.
template <class Entry>
std::string name_or_number(const Entry *entry, const char *name, uint32_t number)
{
    return entry ? name : std::to_string(number);
}

std::string user_name(uid_t user)
{
    const passwd *const entry = getpwuid(user);
    return name_or_number(entry, entry ? entry->pw_name : "", user);
}

std::string group_name(gid_t of)
{
    const group *const entry = getgrgid(of);
    return name_or_number(entry, entry ? entry->gr_name : "", of);
}

// Returns whose the socket is that the exchange went to: "/run/board-ipc/6.seq of user ponsim, group noc, mode 0660".
std::string socket_of(const Exchange &exchange)
{
    const bool datagram = exchange.call == catalogue::Call::dgram_set || exchange.call == catalogue::Call::dgram_get;
    const std::string socket =
        board_ipc_directory() + std::string("/") + std::to_string(catalogue::module) + (datagram ? ".dgram" : ".seq");
    struct stat found {
    };
    if (stat(socket.c_str(), &found)) return socket + " (you may not look into its folder)";
    char permissions[16];
    std::snprintf(permissions, sizeof permissions, "%04o", static_cast<unsigned>(found.st_mode & 07777));
    return socket + " of user " + user_name(found.st_uid) + ", group " + group_name(found.st_gid) + ", mode " +
           permissions;
}

// Returns the class of access that the request needs, as a service with rules would demand it, or an empty text.
std::string class_needed(const Exchange &exchange)
{
    if (!exchange.record || !exchange.channel) return {};
    const catalogue::Command *command =
        call::command_of(*exchange.record, {exchange.channel, exchange.call}, exchange.request);
    return command ? std::string(to_text(command->impact)) : std::string();
}

// Says who may do what was refused. You are the user whom the service sees.
std::string advice_on_refusal(const Exchange &exchange)
{
    const std::string you = "; you are user " + user_name(geteuid());
    if (exchange.result == IPC_ERR_ACCESS) return ": " + socket_of(exchange) + you;
    const std::string needed = class_needed(exchange);
    return (needed.empty() ? std::string() : "; it needs " + needed + " access") + ", which the service behind " +
           socket_of(exchange) + " did not grant" + you;
}

std::string advice_on(const Exchange &exchange)
{
    if (exchange.result == IPC_ERR_ACCESS || exchange.result == IPC_ERR_REFUSED) return advice_on_refusal(exchange);
    if (exchange.result != IPC_ERR_NO_SERVICE) return {};
    const std::string directory = board_ipc_directory();
    const std::vector<std::string> olts = command_line::served_folders(directory, catalogue::module);
    if (!olts.empty())
        return " in " + directory + ", but in its folders " + text::join(olts) + "; name one, as with --socket-dir " +
               directory + '/' + olts[0];
    return " in " + directory + "; start ponsim, or name its folder with --socket-dir";
}

} // namespace

void complain(const std::string &message)
{
    const std::string line = line_of(message);
    say(mode().red ? "\033[31m" + line + "\033[m\n" : line + "\n");
}

void note(const std::string &message)
{
    if (!mode().quiet && !mode().watched) say(line_of(message) + "\n");
}

std::string describe_status(uint32_t status)
{
    const catalogue::Status *known = catalogue::find_status(status);
    return std::to_string(status) +
           (known ? " " + std::string(known->name) + ": " + std::string(known->brief) : ", which has no name");
}

ExitCode report(const Invocation &called, const std::string &subject)
{
    const std::string name = subject + std::string(called.operation().name);
    const ExitCode code = report_exchange(name, called.exchange(), called.status());
    return code == exit_success ? report_fault(name, called.fault()) : code;
}

ExitCode report_fault(std::string_view name, const std::string &fault)
{
    if (fault.empty()) return exit_success;
    complain(std::string(name) + ": " + fault);
    return exit_ipc;
}

void expect_answer(const Invocation &called)
{
    if (mode().dry_run)
        throw UsageError("--dry-run: the requests that follow are made of what " +
                         std::string(called.operation().name) + " answers");
}

ExitCode report_exchange(std::string_view name, const Exchange &exchange, uint32_t status)
{
    const std::string start = std::string(name) + ": ";
    if (exchange.result != IPC_OK) {
        complain(start + "IPC failure " + std::to_string(exchange.result) + ": " + ipc_strerror(exchange.result) +
                 advice_on(exchange));
        return exit_ipc;
    }
    if (status == 0 && exchange.status == 0) return exit_success;
    if (status == 0)
        complain(start + "the service's status, which the operation drops, is " + describe_status(exchange.status));
    else
        complain(start + "status " + describe_status(status));
    return exit_status;
}

} // namespace ponctl
