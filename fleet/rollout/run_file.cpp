#include "fleet/rollout/run_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include "call/codec/errors.h"
#include "fleet/protocol/topics.h"
#include "fleet/rollout/run_json.h"
#include "text/hex.h"
#include "text/utf8.h"
#include "text/words.h"

namespace fleet
{
namespace
{

using call::UsageError;

constexpr std::string_view ending = ".run";
constexpr mode_t own_file = 0600;

[[noreturn]] void fail(const std::filesystem::path &file)
{
    throw std::runtime_error(file.string() + ": " + std::strerror(errno));
}

// Removes files of runs that nobody can resume any more.
void remove_old_runs(const std::filesystem::path &folder, uint64_t now)
{
    for (const std::string &id : runs_in(folder)) {
        const std::filesystem::path file = folder / (id + std::string(ending));
        struct stat found;
        if (lstat(file.c_str(), &found) == 0 && static_cast<uint64_t>(found.st_mtime) + longest_run < now)
            unlink(file.c_str());
    }
}

std::string content_of(int descriptor, const std::filesystem::path &file)
{
    std::string text;
    char part[65536];
    for (;;) {
        const ssize_t size = read(descriptor, part, sizeof part);
        if (size < 0 && errno == EINTR) continue;
        if (size < 0) fail(file);
        if (size == 0) return text;
        text.append(part, static_cast<size_t>(size));
    }
}

} // namespace

std::string new_run_id(uint64_t now)
{
    const auto time = static_cast<time_t>(now);
    struct tm day = {};
    gmtime_r(&time, &day);
    char text[sizeof "r20261123-"];
    if (std::strftime(text, sizeof text, "r%Y%m%d-", &day) == 0) throw std::logic_error("the year has five digits");
    std::array<uint8_t, 4> chance;
    if (getrandom(chance.data(), chance.size(), 0) != static_cast<ssize_t>(chance.size()))
        throw std::runtime_error(std::string("no random number: ") + std::strerror(errno));
    return text + text::to_hex(chance);
}

std::vector<std::string> runs_in(const std::filesystem::path &folder)
{
    std::vector<std::string> ids;
    std::error_code none;
    for (const auto &entry : std::filesystem::directory_iterator(folder, none)) {
        const std::string name = entry.path().filename();
        if (name.ends_with(ending) && is_name(name)) ids.push_back(name.substr(0, name.size() - ending.size()));
    }
    std::ranges::sort(ids, std::greater<>());
    return ids;
}

RunFile::RunFile(const std::filesystem::path &folder, const Run &run)
    : file(folder / (run.id + std::string(ending))), what(run)
{
    remove_old_runs(folder, run.at);
    open(O_CREAT | O_EXCL);
    fchmod(descriptor.number, own_file);
    append(line_of(run));
    // The name of the file must be on the disk, too.
    const int above = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool written = above >= 0 && fsync(above) == 0;
    if (above >= 0) close(above);
    if (!written) fail(folder);
}

RunFile::RunFile(const std::filesystem::path &folder, std::string_view id, uint64_t now)
    : file(folder / (std::string(id) + std::string(ending)))
{
    const std::string named = "the run '" + text::printable(id) + "' ";
    if (!is_name(id) || !std::filesystem::exists(file)) {
        const std::vector<std::string> ids = runs_in(folder);
        throw UsageError("there is no run '" + text::printable(id) + "' in " + folder.string() +
                         text::suggestion(id, std::vector<std::string_view>(ids.begin(), ids.end())));
    }
    open(O_NOFOLLOW);
    read(content_of(descriptor.number, file));
    if (what.id != id) throw UsageError(named + "cannot be resumed: its file is of the run '" + what.id + "'");
    if (is_over) throw UsageError(named + "is over: there is nothing to resume");
    if (what.at + longest_run < now)
        throw UsageError(named + "is older than 30 days, and OLTs do not keep for longer what was asked of them: see "
                                 "what is so there, and begin a new run");
    append(line_of_resumed(now));
}

RunFile::Descriptor::~Descriptor()
{
    if (number >= 0) close(number);
}

void RunFile::open(int flags)
{
    descriptor.number = ::open(file.c_str(), O_RDWR | O_APPEND | O_CLOEXEC | flags, own_file);
    if (descriptor.number < 0) fail(file);
    // A child that this process leaves behind keeps the lock, so that nobody resumes what still runs.
    if (flock(descriptor.number, LOCK_EX | LOCK_NB) != 0)
        throw UsageError("another process runs this run: " + file.string() + " is in use");
}

void RunFile::read(std::string_view text)
{
    // What stands behind the last newline is torn.
    const size_t end = text.rfind('\n');
    const size_t length = end == text.npos ? 0 : end + 1;
    if (length == 0) throw UsageError(file.string() + ": the run was not begun: the file is empty");
    std::optional<RunReader> reader;
    uint32_t number = 0;
    for (size_t at = 0; at < length;) {
        const size_t stop = text.find('\n', at);
        const std::string_view line = text.substr(at, stop - at);
        at = stop + 1;
        ++number;
        try {
            if (reader) {
                reader->read(line);
            } else {
                what = run_from_line(line);
                reader.emplace(what);
            }
        } catch (const UsageError &error) {
            throw UsageError(file.string() + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    size = static_cast<off_t>(length);
    if (length < text.size() && ftruncate(descriptor.number, size) != 0) fail(file);
    before = std::move(reader->progress);
    is_over = reader->over;
    for (const auto &[digest, result] : reader->outcomes)
        kept.insert(digest);
}

void RunFile::append(const std::string &line, bool at_once)
{
    const std::string whole = line + "\n";
    size_t written = 0;
    bool failed = false;
    while (!failed && written < whole.size()) {
        const ssize_t part = write(descriptor.number, whole.data() + written, whole.size() - written);
        if (part >= 0) written += static_cast<size_t>(part);
        failed = part < 0 && errno != EINTR;
    }
    if (!failed && (!at_once || fsync(descriptor.number) == 0)) {
        size += static_cast<off_t>(whole.size());
        return;
    }
    const int error = errno;
    // A line that is torn must be the last one, so it goes before another one comes.
    if (ftruncate(descriptor.number, size) != 0) close(std::exchange(descriptor.number, -1));
    errno = error;
    fail(file);
}

void RunFile::begun(std::span<const std::string> olts)
{
    append(line_of_begun(olts));
}

void RunFile::ended(const std::string &olt, const Result &result)
{
    const std::string digest = digest_of(result);
    const bool is_new = !kept.contains(digest);
    append((is_new ? line_of_outcome(digest, result) + "\n" : "") + line_of_ended(olt, digest), false);
    kept.insert(digest);
}

void RunFile::checked(size_t wave, int32_t exit)
{
    append(line_of_checked(wave, exit));
}

void RunFile::over(const std::string &stopped)
{
    append(line_of_over(stopped));
}

} // namespace fleet
