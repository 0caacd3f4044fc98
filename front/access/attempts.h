// How often somebody may fail to log in.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace front
{

class Attempts
{
public:
    // So many failures in this span are allowed of one name; times are milliseconds.
    Attempts(uint32_t most_failures, int64_t span_of_time) : most(most_failures), span(span_of_time) {}

    // Counts an attempt before it is known how it ends. Returns after how many seconds the next is allowed: 0, this one
    // is.
    uint32_t begin(const std::string &name, int64_t now);
    // It ended well.
    void forgive(const std::string &name);

private:
    static constexpr size_t most_names = 4096;
    struct Count {
        uint32_t attempts = 0;
        int64_t since = 0;
    };

    const uint32_t most;
    const int64_t span;
    std::mutex guard;
    std::map<std::string, Count> counts;
};

} // namespace front
