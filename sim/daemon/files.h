// Callers read some results from files of the service.
#pragma once

#include <deque>
#include <filesystem>
#include <string>
#include <string_view>

namespace ponsim
{

// Removes the results of a service with these sockets that ended without doing so. What another user has there stays.
void remove_left_results(const std::string &socket_dir);

class ResultFiles
{
public:
    // Whoever may connect to sockets with the permission bits `mode` may read the files. Their names follow from the
    // sockets' folder: no two services have the same names at a time, and a service has the same names whenever it is
    // started.
    ResultFiles(uint32_t mode, const std::string &socket_dir);
    ~ResultFiles();
    ResultFiles(const ResultFiles &) = delete;
    ResultFiles &operator=(const ResultFiles &) = delete;

    // Returns the name, which has at most 36 characters, because the shortest answer has room for no more. Callers are
    // free to remove the file. Of the files that they do not remove, the last ones stay. Throws std::runtime_error.
    std::string write(std::string_view content);

private:
    void make_folder();

    uint32_t socket_mode;
    std::filesystem::path wanted;
    std::filesystem::path folder; // empty until the first file is written
    uint32_t written = 0;
    std::deque<std::filesystem::path> left;
};

} // namespace ponsim
