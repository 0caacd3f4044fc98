// BOARD_LOG controls what is logged. It is a list of `off`, `err` (the default), `debug` (which includes err), and
// `syslog`, which replaces standard error by the system's log.
#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <syslog.h>
#include <unistd.h>

#include "board/util.h"
#include "not_cancelled.h"
#include "text/character.h"

namespace
{

struct LogSettings {
    int lowest = LOG_ERR; // the least urgent priority that is logged; -1: nothing is logged
    bool to_syslog = false;
};

LogSettings parse(std::string_view list)
{
    LogSettings s;
    while (!list.empty()) {
        const std::string_view word = list.substr(0, list.find(','));
        if (word == "off") s.lowest = -1;
        if (word == "err") s.lowest = LOG_ERR;
        if (word == "debug") s.lowest = LOG_DEBUG;
        if (word == "syslog") s.to_syslog = true;
        list.remove_prefix(std::min(list.size(), word.size() + 1));
    }
    return s;
}

const LogSettings &log_settings()
{
    static const LogSettings instance = [] {
        const char *list = std::getenv("BOARD_LOG");
        return parse(list ? list : "");
    }();
    return instance;
}

// Writes one line, whatever the text is, because a peer's bytes must neither look like lines of their own nor tell a
// terminal anything.
void log_line(int priority, const char *level, const char *function, int line, const char *format, va_list arguments)
{
    const LogSettings &s = log_settings();
    if (priority > s.lowest) return;
    const board::NotCancelled whole;
    const int error = errno;

    char text[1024];
    const size_t room = sizeof text - 1; // for the newline
    int used = std::snprintf(text, room, "%s %s:%d: ", level, function, line);
    size_t length = std::min(static_cast<size_t>(std::max(used, 0)), room - 1);
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
