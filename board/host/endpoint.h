// An Endpoint is the sockets of a module in their folder. One live service at a time holds it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "descriptor.h"

namespace board
{

class Endpoint
{
public:
    // Takes the module's name in the folder, or logs why it cannot and returns null. Replaces what a dead service left
    // there.
    static std::unique_ptr<Endpoint> open(const std::string &directory, uint32_t module, uint32_t mode);
    ~Endpoint(); // gives the name up and leaves nothing behind

    int connections() const { return seq.get(); } // a listening socket
    int datagrams() const { return dgram.get(); }

private:
    Endpoint() = default;
    bool claim();

    std::string lock_path, seq_path, dgram_path; // the paths of the sockets are empty until they are bound
    Descriptor lock, seq, dgram;
};

} // namespace board
