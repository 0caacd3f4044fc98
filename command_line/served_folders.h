// Where a program serves several OLTs, each has its sockets in a folder of its own, beside those of the others.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>

namespace command_line
{

// Returns the names of the folders in `directory` in which a service of the module has a socket.
inline std::vector<std::string> served_folders(const std::string &directory, uint32_t module)
{
    const auto has_socket = [module](const std::string &folder) {
        struct stat found;
        return stat((folder + '/' + std::to_string(module) + ".seq").c_str(), &found) == 0 && S_ISSOCK(found.st_mode);
    };
    struct Close {
        void operator()(DIR *folder) const { closedir(folder); }
    };
    std::vector<std::string> names;
    const std::unique_ptr<DIR, Close> folder(opendir(directory.c_str()));
    while (const dirent *entry = folder ? readdir(folder.get()) : nullptr) {
        const std::string name = entry->d_name;
        if (name != "." && name != ".." && has_socket(directory + '/' + name)) names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

} // namespace command_line
