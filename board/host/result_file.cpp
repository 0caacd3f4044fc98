#include "result_file.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "board/service.h"
#include "client.h"
#include "settings.h"

namespace board
{
namespace
{

bool came_in_memory(const char *name)
{
    return !std::strcmp(name, BOARD_RESULT_FILE);
}

// A Place is a folder, and the name of a file in it.
struct Place {
    Descriptor folder; // none: the name is not that of a file in the folder of sockets
    std::string name;
};

Place find_place(const char *file)
{
    const std::string_view path(file);
    const std::string &directory = current_directory();
    if (!path.starts_with(directory) || path.substr(directory.size(), 1) != "/") return {};
    const std::string_view name = path.substr(directory.size() + 1);
    if (name.empty() || name.front() == '.' || name.find('/') != name.npos) return {};
    return {Descriptor(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)), std::string(name)};
}

// Opens the file without waiting for anybody, and without following a link. Returns why it may not be used, or null.
const char *open_file(const Place &place, Descriptor &opened, uint32_t &size)
{
    if (!place.folder) return "not in the folder of sockets";
    opened = Descriptor(openat(place.folder.get(), place.name.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    struct stat found, folder;
    if (!opened || fstat(opened.get(), &found) || fstat(place.folder.get(), &folder)) return std::strerror(errno);
    if (!S_ISREG(found.st_mode) || found.st_size > BOARD_FILE_MAX) return "not a file, or too long a one";
    if (folder.st_mode & (S_IWGRP | S_IWOTH)) return "others may write in the folder";
    if (found.st_uid != folder.st_uid) return "it is not of the folder's owner";
    size = static_cast<uint32_t>(found.st_size);
    return nullptr;
}

} // namespace

ResultFile::ResultFile(const char *name)
{
    if (!came_in_memory(name)) {
        why = open_file(find_place(name), file, size);
        return;
    }
    const Result result = last_result();
    if (result.state != Result::file) why = "none came with the last exchange";
    size = result.length;
}

int ResultFile::read(char *to, uint32_t count) const
{
    if (count > size) return -3;
    if (!file) return copy_last_result(to, count) ? 0 : -2;
    for (uint32_t done = 0; done < count;) {
        const ssize_t got = ::read(file.get(), to + done, count - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -2;
        if (got == 0) return -3;
        done += static_cast<uint32_t>(got);
    }
    return 0;
}

int remove_result_file(const char *name)
{
    if (came_in_memory(name)) return 0;
    const Place place = find_place(name);
    Descriptor opened;
    uint32_t size;
    return open_file(place, opened, size) ? -1 : unlinkat(place.folder.get(), place.name.c_str(), 0);
}

} // namespace board
