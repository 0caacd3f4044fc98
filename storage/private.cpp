#include "storage/private.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>

namespace storage
{
namespace
{

constexpr mode_t own_file = 0600, own_folder = 0700;

} // namespace

void make_private_file(const std::string &file)
{
    // A file that is there is not opened: when it is closed, all locks would go that this process has on it.
    if (access(file.c_str(), F_OK) == 0) return;
    const int made = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, own_file);
    if (made < 0) return;
    fchmod(made, own_file);
    close(made);
}

void write_private_file(const std::string &file, std::string_view content)
{
    const int made = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, own_file);
    if (made < 0) throw std::runtime_error(file + ": " + std::strerror(errno));
    bool written = true;
    while (written && !content.empty()) {
        const ssize_t size = write(made, content.data(), content.size());
        if (size > 0) content.remove_prefix(static_cast<size_t>(size));
        written = size > 0;
    }
    const int error = errno;
    close(made);
    if (written) return;
    unlink(file.c_str());
    throw std::runtime_error(file + ": " + std::strerror(error));
}

bool is_of_another_user(const std::string &file)
{
    struct stat found;
    return stat(file.c_str(), &found) == 0 && found.st_uid != geteuid();
}

void make_private(const std::string &file)
{
    struct stat found;
    if (stat(file.c_str(), &found) == 0) chmod(file.c_str(), found.st_mode & own_folder);
}

void make_private_folders(const std::filesystem::path &folder)
{
    if (folder.empty() || std::filesystem::is_directory(folder)) return;
    make_private_folders(folder.has_filename() ? folder.parent_path() : folder.parent_path().parent_path());
    if (mkdir(folder.c_str(), own_folder) == 0)
        chmod(folder.c_str(), own_folder);
    else if (errno != EEXIST || !std::filesystem::is_directory(folder))
        throw std::filesystem::filesystem_error("cannot make the folder", folder, {errno, std::generic_category()});
}

} // namespace storage
