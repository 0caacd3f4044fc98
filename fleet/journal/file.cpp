#include "fleet/journal/file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fleet
{
namespace
{

[[noreturn]] void fail(int error)
{
    throw std::runtime_error(std::strerror(error));
}

struct stat state_of(int file)
{
    struct stat state;
    if (fstat(file, &state)) fail(errno);
    return state;
}

} // namespace

File::File(const std::string &name, int flags)
    : file(open(name.c_str(), O_RDWR | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags, 0600))
{
    if (file < 0) fail(errno);
    struct stat state;
    std::string reason;
    if (fstat(file, &state))
        reason = std::strerror(errno);
    else if (!S_ISREG(state.st_mode))
        reason = "it is not a plain file";
    else if (state.st_uid != geteuid())
        reason = "it belongs to another user";
    if (reason.empty()) return;
    close(std::exchange(file, -1));
    throw std::runtime_error(reason);
}

File::~File()
{
    if (file >= 0) close(file);
}

uint64_t File::size() const
{
    return static_cast<uint64_t>(state_of(file).st_size);
}

bool File::has_name(const std::string &name) const
{
    struct stat named;
    if (file < 0 || lstat(name.c_str(), &named)) return false;
    const struct stat mine = state_of(file);
    return mine.st_ino == named.st_ino && mine.st_dev == named.st_dev;
}

std::string File::read(uint64_t from, uint64_t length) const
{
    std::string content(length, '\0');
    for (size_t done = 0; done < length;) {
        const ssize_t got = pread(file, content.data() + done, length - done, static_cast<off_t>(from + done));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail(errno);
        if (got == 0) throw std::runtime_error("somebody has cut it");
        done += static_cast<size_t>(got);
    }
    return content;
}

void File::append(std::string_view text, Keep keep) const
{
    const uint64_t before = size();
    const ssize_t written = write(file, text.data(), text.size());
    const bool is_whole = written == static_cast<ssize_t>(text.size());
    if (is_whole && (keep == Keep::until_power_fails || fdatasync(file) == 0)) return;
    const std::string reason = written >= 0 && !is_whole ? "there is no room" : std::strerror(errno);
    if (written > 0) cut(before);
    throw std::runtime_error(reason);
}

void File::cut(uint64_t length) const
{
    if (ftruncate(file, static_cast<off_t>(length))) fail(errno);
}

bool File::lock() const
{
    if (flock(file, LOCK_EX | LOCK_NB) == 0) return true;
    if (errno != EWOULDBLOCK && errno != EINTR) fail(errno);
    return false;
}

void File::unlock() const
{
    flock(file, LOCK_UN);
}

void sync_folder_of(const std::string &file)
{
    const std::string folder = std::filesystem::path(file).parent_path();
    const int opened = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0) fail(errno);
    const int result = fsync(opened);
    const int error = errno;
    close(opened);
    if (result) fail(error);
}

void rename_file(const std::string &from, const std::string &to)
{
    if (std::rename(from.c_str(), to.c_str())) fail(errno);
    sync_folder_of(to);
}

} // namespace fleet
