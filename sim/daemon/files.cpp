#include "daemon/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include "store/digest.h"

namespace ponsim
{
namespace
{

constexpr size_t most_left = 32;

[[noreturn]] void fail(const std::string &what)
{
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

std::filesystem::path folder_for(const std::string &socket_dir)
{
    return "/tmp/ponsim-" + digest((std::filesystem::absolute(socket_dir) / "").lexically_normal().string());
}

// A folder or link of that name that belongs to another user stays.
void remove_own(const std::filesystem::path &folder)
{
    struct stat found;
    std::error_code ignored;
    if (lstat(folder.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == geteuid())
        std::filesystem::remove_all(folder, ignored);
}

} // namespace

void remove_left_results(const std::string &socket_dir)
{
    remove_own(folder_for(socket_dir));
}

ResultFiles::ResultFiles(uint32_t mode, const std::string &socket_dir)
    : socket_mode(mode), wanted(folder_for(socket_dir))
{
}

ResultFiles::~ResultFiles()
{
    std::error_code ignored;
    if (!folder.empty()) std::filesystem::remove_all(folder, ignored);
}

void ResultFiles::make_folder()
{
    remove_own(wanted); // what a killed service has left
    if (mkdir(wanted.c_str(), 0700) == 0) {
        folder = wanted;
    } else {
        char name[] = "/tmp/ponsim-XXXXXX";
        if (!mkdtemp(name)) fail("cannot make a folder for result files");
        folder = name;
    }
    chmod(folder.c_str(), 0700u | (socket_mode & 060 ? 050u : 0u) | (socket_mode & 06 ? 05u : 0u));
}

std::string ResultFiles::write(std::string_view content)
{
    if (folder.empty()) make_folder();
    const std::filesystem::path file = folder / std::to_string(++written);
    std::ofstream out(file, std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    if (!out.flush()) fail(file.string() + " cannot be written");
    left.push_back(file);
    if (left.size() > most_left) {
        std::error_code ignored;
        std::filesystem::remove(left.front(), ignored);
        left.pop_front();
    }
    return file.string();
}

} // namespace ponsim
