// BOARD_LOG controls what is logged. It is a list of `off`, `err` (the default), `debug` (which includes err), and
// `syslog`, which replaces standard error by the system's log.
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

#include <syslog.h>
#include <unistd.h>

#include "board/service.h"
#include "board/util.h"
#include "not_cancelled.h"
#include "text/character.h"

namespace
{

// It fits a word, so that every target reads it as a whole.
struct LogSettings {
    int16_t lowest = LOG_ERR; // the least urgent priority that is logged; -1: nothing is logged
    bool to_syslog = false;
};
static_assert(sizeof(LogSettings) <= sizeof(uint32_t));

// Returns whether the word is one of those that BOARD_LOG may have, after doing what it says.
bool apply(std::string_view word, LogSettings &s)
{
    if (word == "off")
        s.lowest = -1;
    else if (word == "err")
        s.lowest = LOG_ERR;
    else if (word == "debug")
        s.lowest = LOG_DEBUG;
    else if (word == "syslog")
        s.to_syslog = true;
    else
        return word.empty();
    return true;
}

// Returns the first word that is not understood, or an empty text.
std::string_view parse(std::string_view list, LogSettings &s)
{
    std::string_view wrong;
    while (!list.empty()) {
        const std::string_view word = list.substr(0, list.find(','));
        if (!apply(word, s) && wrong.empty()) wrong = word;
        list.remove_prefix(std::min(list.size(), word.size() + 1));
    }
    return wrong;
}

std::string_view setting()
{
    const char *list = std::getenv("BOARD_LOG");
    return list ? list : "";
}

// What is logged where the environment says nothing. A program may change it while its threads log.
std::atomic<LogSettings> default_settings{LogSettings{}};

LogSettings log_settings()
{
    static const bool is_set = !setting().empty();
    static const LogSettings instance = [] {
        LogSettings s;
        parse(setting(), s);
        return s;
    }();
    return is_set ? instance : default_settings.load(std::memory_order_relaxed);
}

// Writes what a line on standard error begins with: the time of day, the program and its process. The system's log adds
// these by itself. Returns how many characters it took.
int start_line(char *text, size_t room)
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm parts{};
    gmtime_r(&now.tv_sec, &parts);
    char time[32];
    std::strftime(time, sizeof time, "%Y-%m-%dT%H:%M:%S", &parts);
    return std::snprintf(text, room, "%s.%03ldZ %.64s[%d] ", time, now.tv_nsec / 1000000, program_invocation_short_name,
                         static_cast<int>(getpid()));
}

// Writes one line, whatever the text is, because a peer's bytes must neither look like lines of their own nor tell a
// terminal anything.
void log_line(int priority, const char *level, const char *function, int line, const char *format, va_list arguments)
{
    const LogSettings s = log_settings();
    if (priority > s.lowest) return;
    const board::NotCancelled whole;
    const int error = errno;

    char text[1024];
    const size_t room = sizeof text - 1; // for the newline
    int used = s.to_syslog ? 0 : start_line(text, room);
    size_t length = std::min(static_cast<size_t>(std::max(used, 0)), room - 1);
    used = std::snprintf(text + length, room - length, "%s %s:%d: ", level, function, line);
    length = std::min(length + static_cast<size_t>(std::max(used, 0)), room - 1);
    used = std::vsnprintf(text + length, room - length, format, arguments);
    length = std::min(length + static_cast<size_t>(std::max(used, 0)), room - 1);
    if (length && text[length - 1] == '\n') --length;
    for (size_t at = 0; at < length;) {
        const text::Character character = text::first_character({text + at, length - at});
        if (!character.shown) std::fill_n(text + at, character.length, ' ');
        at += character.length;
    }

    if (s.to_syslog) {
        syslog(priority, "%.*s", static_cast<int>(length), text);
    } else {
        text[length++] = '\n';
        // If the log itself cannot be written, there is nobody to inform.
        [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, length);
    }
    errno = error;
}

} // namespace

void userlog_err(const char *function, int line, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    log_line(LOG_ERR, "ERROR", function, line, format, arguments);
    va_end(arguments);
}

void userlog_debug(const char *function, int line, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    log_line(LOG_DEBUG, "DEBUG", function, line, format, arguments);
    va_end(arguments);
}

void board_log_default(const char *words)
{
    LogSettings s;
    parse(words, s);
    default_settings.store(s, std::memory_order_relaxed);
}

const char *board_log_unknown_word(void)
{
    LogSettings unused;
    static std::string word;
    word = parse(setting(), unused);
    return word.empty() ? nullptr : word.c_str();
}
