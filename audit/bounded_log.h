// A BoundedLog is a file of lines that grows no further than it may, and that says in a line of audit/entry.h how many
// lines it has lost.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace audit
{

class BoundedLog
{
public:
    // Tells whoever runs the program that lines are lost, and when no more are.
    using Complain = std::function<void(const std::string &)>;

    // Appends to the file, which is made when there is none. It is for its own user only. When a line would make it
    // longer than `limit` bytes, the file gets the name FILE.1, in place of what had it, and a new one begins. Throws
    // std::runtime_error when the file cannot be used: when another user or process has it, or it is no plain file.
    BoundedLog(std::string file, uint64_t limit, Complain complain);
    BoundedLog(const BoundedLog &) = delete;
    ~BoundedLog();

    // Appends the line, which has no newline. When it cannot be written, as on a full disk, it is lost. Any thread may
    // call it.
    void append(std::string_view line);

private:
    void open();
    void close();
    void begin_anew();
    // Opens the file again when somebody has moved or removed it.
    void follow_name();
    void write(const std::string &text);

    const std::string name;
    const uint64_t limit;
    const Complain complain;
    std::mutex mutex; // held by whoever uses the rest
    int file = -1;
    uint64_t size = 0; // of the file
    uint64_t lost = 0; // lines since the last that was written
};

} // namespace audit
