// A module's place in the folder of sockets, held by one live service at a time.
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
    // Takes the place, or says in the log why it cannot and returns null. What a dead service left there is replaced.
    static std::unique_ptr<Endpoint> open(const std::string &directory, uint32_t module, uint32_t mode);
    ~Endpoint(); // gives the place up and leaves nothing behind

    int connections() const { return seq.get(); } // listens
    int datagrams() const { return dgram.get(); }

private:
    Endpoint() = default;
    bool claim();

    std::string lock_path, seq_path, dgram_path; // the sockets' are empty until bound
    Descriptor lock, seq, dgram;
};

} // namespace board
