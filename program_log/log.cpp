#include "program_log/log.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>

#include <unistd.h>

#include "text/json.h"
#include "text/utf8.h"

namespace program_log
{
namespace
{

std::atomic<LogForm> chosen_form = LogForm::lines;

std::string_view word_of(LogLevel level)
{
    switch (level) {
    case LogLevel::info:
        break;
    case LogLevel::warning:
        return "WARNING";
    case LogLevel::error:
        return "ERROR";
    }
    return "INFO";
}

// Returns the time in the form of RFC 3339, in UTC.
std::string time_now()
{
    using namespace std::chrono;
    const int64_t milliseconds =
        duration_cast<std::chrono::milliseconds>(system_clock::now().time_since_epoch()).count();
    const std::time_t seconds = milliseconds / 1000;
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[48];
    const size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
    std::snprintf(text + length, sizeof text - length, ".%03dZ", static_cast<int>(milliseconds % 1000));
    return text;
}

} // namespace

void choose_log_form(LogForm form)
{
    chosen_form = form;
}

void log_line(LogLevel level, std::string_view said)
{
    std::string line;
    if (chosen_form == LogForm::json) {
        text::json::Buffer buffer;
        text::json::Writer writer(buffer);
        const auto member = [&](const char *key, std::string_view value) {
            writer.Key(key);
            writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
        };
        writer.StartObject();
        member("time", time_now());
        member("level", word_of(level));
        writer.Key("pid");
        writer.Int(getpid());
        member("text", text::printable(said));
        writer.EndObject();
        line.assign(buffer.GetString(), buffer.GetSize());
    } else {
        line = time_now() + " " + program_invocation_short_name + "[" + std::to_string(getpid()) + "] ";
        line.append(word_of(level)).append(" ").append(text::printable(said));
    }
    line.push_back('\n');
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace program_log
