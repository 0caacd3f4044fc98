// This file measures the resources that a process holds.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

inline size_t open_files(pid_t process)
{
    const std::filesystem::directory_iterator files("/proc/" + std::to_string(process) + "/fd");
    return static_cast<size_t>(std::distance(begin(files), end(files)));
}

// Returns the memory of a process in KiB.
inline size_t memory_of(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::stoul(line.substr(6));
    return 0;
}

#ifdef SANITIZED
inline constexpr bool keeps_what_is_freed = true; // the sanitizer's allocator keeps it
#else
inline constexpr bool keeps_what_is_freed = false;
#endif
