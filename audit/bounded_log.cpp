#include "audit/bounded_log.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "audit/entry.h"

namespace audit
{
namespace
{

[[noreturn]] void fail(const std::string &name, const std::string &reason)
{
    throw std::runtime_error("cannot keep the log " + name + ": " + reason);
}

} // namespace

BoundedLog::BoundedLog(std::string of_file, uint64_t most, Complain how_to_complain)
    : name(std::move(of_file)), limit(most), complain(std::move(how_to_complain))
{
    open();
}

BoundedLog::~BoundedLog()
{
    close();
}

void BoundedLog::close()
{
    if (file >= 0) ::close(std::exchange(file, -1));
}

// A line that a power failure cut is ended, so that the next one stands alone.
void BoundedLog::open()
{
    file = ::open(name.c_str(), O_RDWR | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    struct stat found;
    std::string reason;
    if (file < 0 || fstat(file, &found))
        reason = std::strerror(errno);
    else if (!S_ISREG(found.st_mode) || found.st_nlink != 1)
        reason = "it is not a plain file with one name";
    else if (found.st_uid != geteuid())
        reason = "it belongs to another user";
    else if (flock(file, LOCK_EX | LOCK_NB))
        reason = "another process keeps it";
    else if ((found.st_mode & 07777) != 0600 && fchmod(file, 0600))
        reason = std::strerror(errno);
    if (!reason.empty()) {
        close();
        fail(name, reason);
    }
    size = static_cast<uint64_t>(found.st_size);
    char last = '\n';
    if (size > 0 && pread(file, &last, 1, found.st_size - 1) == 1 && last != '\n') write("\n");
}

void BoundedLog::follow_name()
{
    struct stat mine, named;
    const bool mine_still = file >= 0 && !fstat(file, &mine) && !lstat(name.c_str(), &named) &&
                            mine.st_ino == named.st_ino && mine.st_dev == named.st_dev;
    if (mine_still) return;
    close();
    open();
}

void BoundedLog::begin_anew()
{
    if (std::rename(name.c_str(), (name + ".1").c_str())) fail(name, std::strerror(errno));
    close();
    open();
}

// What was written of a text that does not fit is taken back.
void BoundedLog::write(const std::string &text)
{
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written == static_cast<ssize_t>(text.size())) {
        size += text.size();
        return;
    }
    const std::string reason = written < 0 ? std::strerror(errno) : "there is no room";
    if (written > 0 && ftruncate(file, static_cast<off_t>(size)) != 0) size += static_cast<uint64_t>(written);
    fail(name, reason);
}

void BoundedLog::append(std::string_view line)
{
    const std::lock_guard lock(mutex);
    std::string text = lost > 0 ? line_of_lost(time_of_day(), lost) + '\n' : "";
    text += line;
    text += '\n';
    try {
        follow_name();
        if (size > 0 && size + text.size() > limit) begin_anew();
        write(text);
        if (const uint64_t missing = std::exchange(lost, 0))
            complain("the log " + name + " is written again; " + std::to_string(missing) + " of its lines are lost");
    } catch (const std::runtime_error &error) {
        if (lost++ == 0) complain(error.what());
    }
}

} // namespace audit
