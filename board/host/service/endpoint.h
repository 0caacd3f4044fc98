// An Endpoint is the sockets of a module in their folder. One live service at a time holds it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <sys/stat.h>
#include <sys/un.h>

#include "descriptor.h"

namespace board
{

class Endpoint
{
public:
    // Takes the module's name in the folder, or logs why it cannot and returns null. Uses the sockets with these names
    // that the service manager gave the process. Otherwise it makes them, and replaces what a dead service left there.
    static std::unique_ptr<Endpoint> open(const std::string &directory, uint32_t module, uint32_t mode);
    ~Endpoint(); // gives the name up and leaves nothing behind

    int connections() const { return seq.get(); } // a listening socket
    int datagrams() const { return dgram.get(); }
    // Returns whether the kernel refuses packets with descriptors on the connections. Then nothing has to take these
    // out, which is the dearer way to receive a packet.
    bool descriptors_refused() const { return refuses_descriptors; }
    // Makes the sockets always ready for who waits for them or for stopped().
    void stop();
    // Returns what becomes readable when the sockets are stopped and are not this service's to shut down, or -1.
    int stopped() const { return stop_signal.get(); }

private:
    // An Own is a file that this service made. What has its name later may be another's.
    struct Own {
        std::string name;
        dev_t device = 0;
        ino_t inode = 0; // 0: none is made yet
    };

    Endpoint() = default;
    bool claim();
    // Takes a socket of the service manager.
    bool inherit_socket(const sockaddr_un &address, int type, Descriptor &bound);
    bool bind_socket(const std::string &path, int type, uint32_t mode, Descriptor &bound, Own &own);
    // Notes which file has the name now.
    bool note(Own &own) const;
    void remove(const Own &own) const;

    Descriptor folder; // whatever has its name later
    Own lock_file, seq_file, dgram_file;
    Descriptor lock, seq, dgram;
    Descriptor stop_signal; // where another process has the sockets too
    bool refuses_descriptors = false;
};

} // namespace board
