// This file measures the resources that a process holds.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>

inline size_t open_files(pid_t process)
{
    const std::filesystem::directory_iterator files("/proc/" + std::to_string(process) + "/fd");
    return static_cast<size_t>(std::distance(begin(files), end(files)));
}
