// An embedded simulator has its sockets in a temporary folder, unless it was given another one.
#pragma once

#include <string>

namespace ponsim
{

// This folder is removed together with the object. Until then its lock is held. The kernel releases the lock when the
// last process that has it is gone, however that process ends.
class PrivateFolder
{
public:
    // Throws std::system_error.
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder &) = delete;

    const std::string &path() const { return name; }
    // Returns the descriptor that holds the lock. A child process that inherits it holds the lock, too.
    int lock() const { return held; }

private:
    std::string name;
    int held = -1;
};

// Removes the folders of simulators of this user whose processes ended without doing so.
void sweep_private_folders();

} // namespace ponsim
