#include "daemon/audit.h"

#include <utility>

#include "audit/entry.h"
#include "board/util.h"

namespace ponsim
{
namespace
{

constexpr uint32_t refusals_a_minute = 16;
constexpr size_t most_users = 1024;

void complain(const std::string &complaint)
{
    userlog_err("audit", __LINE__, "%s\n", complaint.c_str());
}

audit::Who who_of(const board_request &request)
{
    return {request.uid, request.pid};
}

audit::Wanted wanted_of(const Message &message)
{
    return audit::wanted_by(command_channel(message), message.call,
                            {static_cast<const char *>(message.data), message.length});
}

std::string_view line_of_control(const board_request &request)
{
    return {static_cast<const char *>(request.data), request.length};
}

} // namespace

Audit::Audit(const std::string &file)
{
    if (file.empty()) return;
    log = std::make_unique<audit::BoundedLog>(file, audit_limit, complain);
}

void Audit::note(const board_request &request, const Message &message, std::string_view result)
{
    if (!log || only_reads(message)) return;
    log->append(audit::line_of(audit::time_of_day(), who_of(request), wanted_of(message), result));
}

void Audit::note_control(const board_request &request, std::string_view result)
{
    if (log) log->append(audit::line_of(audit::time_of_day(), who_of(request), line_of_control(request), result));
}

bool Audit::takes_refusal(uid_t user, std::string &reason)
{
    constexpr uint64_t ms_per_minute = 60000;
    const uint64_t minute = audit::time_of_day() / ms_per_minute;
    const std::lock_guard lock(mutex);
    if (refusals.size() >= most_users && !refusals.contains(user)) refusals.clear();
    Refusals &of_user = refusals[user];
    if (of_user.minute != minute) {
        of_user.minute = minute;
        of_user.kept = 0;
    }
    if (of_user.kept == refusals_a_minute) {
        ++of_user.left_out;
        return false;
    }
    ++of_user.kept;
    if (const uint64_t left_out = std::exchange(of_user.left_out, 0))
        reason += "; " + std::to_string(left_out) + " refusals before it are left out";
    return true;
}

void Audit::note_refused(const board_request &request, const Message &message, const std::string &reason)
{
    std::string result = "refused: " + reason;
    if (log && takes_refusal(request.uid, result))
        log->append(audit::line_of(audit::time_of_day(), who_of(request), wanted_of(message), result));
}

void Audit::note_refused_control(const board_request &request, const std::string &reason)
{
    std::string result = "refused: " + reason;
    if (log && takes_refusal(request.uid, result))
        log->append(audit::line_of(audit::time_of_day(), who_of(request), line_of_control(request), result));
}

} // namespace ponsim
