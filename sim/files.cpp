#include "files.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace ponsim
{
namespace
{

constexpr size_t most_left = 32;

[[noreturn]] void fail(const std::string &what)
{
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

} // namespace

ResultFiles::~ResultFiles()
{
    std::error_code ignored;
    if (!folder.empty()) std::filesystem::remove_all(folder, ignored);
}

std::string ResultFiles::write(std::string_view content)
{
    if (folder.empty()) {
        char name[] = "/tmp/ponsim-XXXXXX";
        if (!mkdtemp(name)) fail("cannot make a folder for result files");
        folder = name;
        chmod(name, 0700u | (socket_mode & 060 ? 050u : 0u) | (socket_mode & 06 ? 05u : 0u));
    }
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
