#include "embedded/private_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace ponsim
{
namespace
{

namespace fs = std::filesystem;

constexpr char prefix[] = "ponsim-embedded.";
constexpr size_t random_letters = 6;
// No OLT has a folder of this name beside it: their names begin with a letter or a digit.
constexpr char lock_name[] = "/.lock";

bool has_own_name(const fs::path &folder)
{
    const std::string name = folder.filename().string();
    return name.starts_with(prefix) && name.size() == sizeof prefix - 1 + random_letters;
}

bool is_own_folder(const fs::path &folder)
{
    struct stat found;
    return lstat(folder.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == geteuid();
}

bool is_same_file(int opened, const std::string &name)
{
    struct stat one, other;
    return fstat(opened, &one) == 0 && lstat(name.c_str(), &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

} // namespace

PrivateFolder::PrivateFolder()
{
    const std::string pattern = (fs::temp_directory_path() / prefix).string() + std::string(random_letters, 'X');
    for (;;) {
        name = pattern;
        if (!mkdtemp(name.data())) throw std::system_error(errno, std::generic_category(), name);
        const std::string file = name + lock_name;
        held = open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        // Somebody else may sweep the folder away before its lock is held. Then the next one is tried.
        if (held >= 0 && flock(held, LOCK_EX | LOCK_NB) == 0 && is_same_file(held, file)) return;
        const int error = errno;
        if (held >= 0) close(held);
        if (held < 0 && error != ENOENT) {
            rmdir(name.c_str());
            throw std::system_error(error, std::generic_category(), file);
        }
    }
}

PrivateFolder::~PrivateFolder()
{
    std::error_code ignored;
    fs::remove_all(name, ignored);
    close(held);
}

void sweep_private_folders()
{
    std::error_code error;
    fs::directory_iterator entry(fs::temp_directory_path(error), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path &folder = entry->path();
        if (!has_own_name(folder) || !is_own_folder(folder)) continue;
        // Without a lock nobody can tell whether the folder's owner is gone, so it stays.
        const std::string file = folder.string() + lock_name;
        const int lock = open(file.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
        if (lock < 0) continue;
        if (flock(lock, LOCK_EX | LOCK_NB) == 0 && is_same_file(lock, file)) {
            std::error_code ignored;
            fs::remove_all(folder, ignored);
        }
        close(lock);
    }
}

} // namespace ponsim
