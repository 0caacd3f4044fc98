#include "serving/serving.h"

#include <ctime>
#include <stdexcept>
#include <string>

#include <sys/resource.h>
#include <systemd/sd-daemon.h>

#include "program_log/log.h"

namespace serving
{
namespace
{

using program_log::log_line;
using program_log::LogLevel;

// Returns how long to wait for a signal, so that the watchdog hears of the daemon in time.
timespec turn_of_watchdog()
{
    uint64_t watchdog = 0; // microseconds
    if (sd_watchdog_enabled(0, &watchdog) <= 0) return {.tv_sec = 3600, .tv_nsec = 0};
    return {.tv_sec = static_cast<time_t>(watchdog / 2'000'000),
            .tv_nsec = static_cast<long>(watchdog / 2 % 1'000'000 * 1000)};
}

void reload(const Daemon &daemon)
{
    sd_notify(0, "RELOADING=1");
    try {
        daemon.reload();
        log_line(LogLevel::info, "goes on by the configuration that was read again");
    } catch (const std::runtime_error &error) {
        log_line(LogLevel::error, std::string("the configuration is not taken: ") + error.what());
    }
    sd_notify(0, "READY=1");
}

} // namespace

sigset_t hold_signals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return signals;
}

void allow_many_files()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

void serve_until_ended(const Daemon &daemon, const sigset_t &signals)
{
    const timespec turn = turn_of_watchdog();
    sd_notify(0, "READY=1");
    while (true) {
        const int signal = sigtimedwait(&signals, nullptr, &turn);
        if (daemon.is_alive()) sd_notify(0, "WATCHDOG=1");
        if (signal == SIGTERM || signal == SIGINT) break;
        if (signal == SIGHUP) reload(daemon);
    }
    sd_notify(0, "STOPPING=1");
}

} // namespace serving
