#include "web/write_log.h"

#include "collector/clock.h"

namespace front
{
namespace
{

constexpr uint64_t longest_file = 64ull << 20; // bytes
constexpr uint32_t refusals_a_minute = 16;
constexpr size_t most_addresses = 1024;

} // namespace

WriteLog::WriteLog(const std::string &file, Say say_line) : say(std::move(say_line))
{
    if (file.empty()) return;
    log = std::make_unique<audit::BoundedLog>(file, longest_file, say);
}

void WriteLog::write(const std::string &line)
{
    log ? log->append(line) : say("audit: " + line);
}

void WriteLog::note(const audit::Client &client, const audit::Wanted &wanted, std::string_view result)
{
    write(audit::line_of(audit::time_of_day(), client, wanted, result));
}

void WriteLog::note(const audit::Client &client, std::string_view action, std::string_view result)
{
    write(audit::line_of(audit::time_of_day(), client, action, result));
}

void WriteLog::note_refused(const audit::Client &client, const audit::Wanted &wanted, std::string_view reason)
{
    if (takes_refusal(client.address)) note(client, wanted, "refused: " + std::string(reason));
}

void WriteLog::note_refused(const audit::Client &client, std::string_view action, std::string_view reason)
{
    if (takes_refusal(client.address)) note(client, action, "refused: " + std::string(reason));
}

bool WriteLog::takes_refusal(const std::string &address)
{
    constexpr int64_t ms_per_minute = 60'000;
    const int64_t now = steady_time_now() / ms_per_minute;
    const std::lock_guard lock(guard);
    if (now != minute || refusals.size() >= most_addresses) refusals.clear();
    minute = now;
    return ++refusals[address] <= refusals_a_minute;
}

} // namespace front
