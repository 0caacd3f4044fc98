// What the environment says about the IPC, read once, and the folder of sockets, which may be chosen later.
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
    std::chrono::microseconds spin;    // how long to look for the answer before blocking for it
};

const Settings &settings();

// The folder of sockets that the calling thread uses. Its text lives as long as the process.
const std::string &current_directory();
// Chooses that of all threads; null: that of the environment.
void choose_directory(const char *directory);
// Chooses that of the calling thread; null: that of all threads. Returns what was chosen before.
const char *choose_thread_directory(const char *directory);

// The bound of one exchange of the calling thread.
std::chrono::milliseconds current_timeout();
// Chooses that of the calling thread; 0: that of the environment. Returns what was chosen before.
uint32_t choose_thread_timeout(uint32_t milliseconds);

// False when the folder lies in /tmp and is not this user's own: then anybody may have made it.
bool directory_is_safe(const std::string &directory);

// The address of a module's socket, `kind` being "seq" or "dgram"; false when the path is too long for one.
bool socket_address(const std::string &directory, uint32_t module, const char *kind, sockaddr_un &address);

} // namespace board
