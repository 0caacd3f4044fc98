#include "output/report.h"

#include <cstdio>

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

std::string advice_on(int32_t ipc_result)
{
    if (ipc_result != IPC_ERR_NO_SERVICE) return {};
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
                 advice_on(exchange.result));
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
