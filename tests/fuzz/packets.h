// Inputs of targets that send requests to an OLT are sequences of packets: a byte that says which call it is or, with
// 0, that time passes; a byte for the channel; two bytes for the length of the record or the seconds; of a record, two
// bytes for how much of it follows, and that. The rest of it is zeros.
#pragma once

#include <optional>
#include <random>
#include <vector>

#include "engine/message.h"
#include "input.h"

namespace fuzz
{

inline constexpr uint32_t most_packets = 32;

class Packet
{
public:
    Packet(uint8_t of_call, uint8_t at_channel, std::vector<uint8_t> with_bytes)
        : call(of_call), channel(at_channel), bytes(std::move(with_bytes))
    {
    }

    // Returns for how long time passes. Returns none when the packet is a request.
    std::optional<ponsim::ModelTime> pause() const;
    // Returns the request. It lives as long as the packet. Its record lies aligned for words, and nothing is readable
    // behind the words in which it ends.
    ponsim::Message message();

    // Changes a field of a request, as its channel or its command has them.
    void change_field(std::minstd_rand &chance);

    void write_to(std::vector<uint8_t> &input) const;

private:
    uint8_t call;
    uint8_t channel;
    std::vector<uint8_t> bytes; // or two of the seconds
    std::vector<uint32_t> words;
};

std::vector<Packet> packets_of(Input input);

} // namespace fuzz
