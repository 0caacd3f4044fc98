// A File is a plain file of this user that several processes append to. Each function throws std::runtime_error with a
// reason when it cannot do what it says.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace fleet
{

class File
{
public:
    File() = default;
    // Opens the file. The flags are those of open() that say whether it is made, or emptied.
    File(const std::string &name, int flags);
    File(File &&other) noexcept : file(std::exchange(other.file, -1)) {}
    File &operator=(File &&other) noexcept
    {
        std::swap(file, other.file);
        return *this;
    }
    ~File();

    uint64_t size() const;
    // Returns whether the file has this name: somebody may have given the name to another one.
    bool has_name(const std::string &name) const;
    std::string read(uint64_t from, uint64_t length) const;
    // Appends the text, or nothing of it. Where it is to outlive a loss of power, returns when it is on the disk.
    enum class Keep : uint8_t { until_power_fails, for_good };
    void append(std::string_view text, Keep keep) const;
    void cut(uint64_t length) const;

    // Returns false when another process, or another File, has the lock.
    bool lock() const;
    void unlock() const;

private:
    int file = -1;
};

// Gives a file another name, in place of what had it. It has it when the function returns, also after a loss of power.
void rename_file(const std::string &from, const std::string &to);
// Makes the names in the folder of a file outlive a loss of power.
void sync_folder_of(const std::string &file);

} // namespace fleet
