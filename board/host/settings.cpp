#include "settings.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "board/service.h"
#include "board/util.h"
#include "text/number.h"

namespace board
{
namespace
{

const char *environment(const char *name)
{
    const char *value = std::getenv(name);
    return value && *value ? value : nullptr;
}

// Returns a number of the environment between `low` and `high`. Any other value is logged and replaced.
uint32_t number(const char *name, uint32_t low, uint32_t high, uint32_t standard)
{
    const char *text = environment(name);
    if (!text) return standard;
    const auto value = text::to_number<uint32_t>(text);
    if (value && *value >= low && *value <= high) return *value;
    userlog_err(__func__, __LINE__, "%s is '%s', not a number from %u to %u; %u is used", name, text, low, high,
                standard);
    return standard;
}

std::string directory_in_tmp()
{
    return "/tmp/board-ipc-" + std::to_string(geteuid());
}

std::string default_directory()
{
    if (const char *directory = environment("BOARD_IPC_DIR")) return directory;
    if (geteuid() == 0) return "/run/board-ipc";
    if (const char *runtime = environment("XDG_RUNTIME_DIR")) return std::string(runtime) + "/board-ipc";
    return directory_in_tmp();
}

// This list keeps every folder that was ever chosen, each of them once, because other threads may still be reading its
// name. It has no lock, because a child process may be forked in the middle of a change.
struct Chosen {
    std::string directory;
    const Chosen *before;
};
std::atomic<const Chosen *> all_chosen{nullptr};

// Returns null for null.
const std::string *keep(const char *directory)
{
    if (!directory) return nullptr;
    const Chosen *last = all_chosen.load(std::memory_order_acquire);
    for (const Chosen *each = last; each; each = each->before)
        if (each->directory == directory) return &each->directory;
    auto *const chosen = new Chosen{directory, last};
    while (!all_chosen.compare_exchange_weak(chosen->before, chosen, std::memory_order_acq_rel))
        continue;
    return &chosen->directory;
}

std::atomic<const std::string *> chosen_by_process{nullptr};
thread_local const std::string *chosen_by_thread = nullptr;
thread_local uint32_t timeout_of_thread = 0; // milliseconds; 0: the time-out of the environment counts

} // namespace

const Settings &settings()
{
    // This is never destroyed, because handlers of exit() may make calls.
    static const Settings &instance = *new Settings([] {
        Settings s;
        s.directory = default_directory();
        s.timeout = std::chrono::milliseconds(number("BOARD_IPC_TIMEOUT_MS", 1, 3600000, 5000));
        s.spin = std::chrono::microseconds(number("BOARD_IPC_SPIN_US", 0, 100, 0));
        return s;
    }());
    return instance;
}

const std::string &current_directory()
{
    if (chosen_by_thread) return *chosen_by_thread;
    const std::string *chosen = chosen_by_process.load(std::memory_order_acquire);
    return chosen ? *chosen : settings().directory;
}

void choose_directory(const char *directory)
{
    chosen_by_process.store(keep(directory), std::memory_order_release);
}

const char *choose_thread_directory(const char *directory)
{
    const std::string *const kept = keep(directory);
    const std::string *const before = std::exchange(chosen_by_thread, kept);
    return before ? before->c_str() : nullptr;
}

std::chrono::milliseconds current_timeout()
{
    return timeout_of_thread ? std::chrono::milliseconds(timeout_of_thread) : settings().timeout;
}

uint32_t choose_thread_timeout(uint32_t milliseconds)
{
    return std::exchange(timeout_of_thread, milliseconds);
}

bool directory_is_safe(const std::string &directory)
{
    if (directory != directory_in_tmp()) return true;
    struct stat found;
    if (lstat(directory.c_str(), &found)) return errno == ENOENT;
    return S_ISDIR(found.st_mode) && found.st_uid == geteuid();
}

bool socket_address(const std::string &directory, uint32_t module, const char *kind, sockaddr_un &address)
{
    address.sun_family = AF_UNIX;
    const int length = std::snprintf(address.sun_path, sizeof address.sun_path, "%s/%u.%s", directory.c_str(),
                                     static_cast<unsigned>(module), kind);
    return length > 0 && static_cast<size_t>(length) < sizeof address.sun_path;
}

} // namespace board

const char *board_ipc_directory(void)
{
    try {
        return board::current_directory().c_str();
    } catch (...) {
        return "";
    }
}
