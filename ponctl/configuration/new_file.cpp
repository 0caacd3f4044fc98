#include "configuration/new_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace ponctl
{
namespace
{

bool write_all(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0) return false;
        text.remove_prefix(static_cast<size_t>(written));
    }
    return fsync(file) == 0;
}

} // namespace

std::string replace_file(const std::string &name, std::string_view text)
{
    std::string other = name + ".XXXXXX";
    const int file = mkstemp(other.data());
    bool good = file >= 0 && write_all(file, text);
    int error = errno;
    if (file >= 0) close(file);
    if (good && std::rename(other.c_str(), name.c_str()) != 0) {
        good = false;
        error = errno;
    }
    if (good) return {};
    if (file >= 0) unlink(other.c_str());
    return name + ": cannot be written: " + std::strerror(error);
}

} // namespace ponctl
