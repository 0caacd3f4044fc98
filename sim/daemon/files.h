// Results that callers read from files of the service.
#pragma once

#include <deque>
#include <filesystem>
#include <string>
#include <string_view>

namespace ponsim
{

class ResultFiles
{
public:
    // Whoever may connect to sockets with the permission bits `mode` may read them. Their names follow from the
    // sockets' folder: no two services have the same one at a time, and one has the same names whenever it is started.
    ResultFiles(uint32_t mode, const std::string &socket_dir);
    ~ResultFiles();
    ResultFiles(const ResultFiles &) = delete;
    ResultFiles &operator=(const ResultFiles &) = delete;

    // Returns the name, of at most 36 characters, which is what the shortest answer has room for. Callers are free to
    // remove the file; of those that they leave, the last ones stay. Throws std::runtime_error.
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
