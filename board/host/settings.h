// This file has what the environment says about the IPC, which is read once, and the folder of sockets, which may be
// chosen later.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>

namespace board
{

struct Settings {
    std::string directory;             // the folder of sockets, unless another is chosen
    std::chrono::milliseconds timeout; // bound of one exchange, unless a thread has another
    std::chrono::microseconds spin;    // how long to poll for the answer before blocking for it
};

const Settings &settings();

// Returns the folder of sockets that the calling thread uses. Its text lives as long as the process.
const std::string &current_directory();
// Chooses the folder of all threads. Null means the folder of the environment.
void choose_directory(const char *directory);
// Chooses the folder of the calling thread. Null means the folder of all threads. Returns what was chosen before.
const char *choose_thread_directory(const char *directory);

// Returns the bound of one exchange of the calling thread.
std::chrono::milliseconds current_timeout();
// Chooses the bound of the calling thread. 0 means the bound of the environment. Returns what was chosen before.
uint32_t choose_thread_timeout(uint32_t milliseconds);

// Returns false when the folder is the default one in /tmp and is not this user's own, because then anybody may have
// made it.
bool directory_is_safe(const std::string &directory);

// Makes the address of a module's socket; `kind` is "seq" or "dgram". Returns false when the path is too long for an
// address.
bool socket_address(const std::string &directory, uint32_t module, const char *kind, sockaddr_un &address);

} // namespace board
