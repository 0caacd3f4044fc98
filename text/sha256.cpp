#include "text/sha256.h"

#include <bit>
#include <cstddef>
#include <string>

namespace text
{
namespace
{

constexpr size_t block_size = 64;

constexpr uint32_t constants[] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

// The state is eight words, and each block of the text changes it.
using State = std::array<uint32_t, 8>;

void add_block(State &state, const char *block)
{
    std::array<uint32_t, block_size> w{};
    for (size_t at = 0; at < block_size; ++at)
        w[at / 4] = w[at / 4] << 8 | static_cast<uint8_t>(block[at]);
    for (size_t at = 16; at < block_size; ++at) {
        const uint32_t before = w[at - 15], later = w[at - 2];
        w[at] = w[at - 16] + w[at - 7] + (std::rotr(before, 7) ^ std::rotr(before, 18) ^ before >> 3) +
                (std::rotr(later, 17) ^ std::rotr(later, 19) ^ later >> 10);
    }
    auto [a, b, c, d, e, f, g, h] = state;
    for (size_t at = 0; at < block_size; ++at) {
        const uint32_t first =
            h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + ((e & f) ^ (~e & g)) + constants[at] + w[at];
        const uint32_t second = (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const State mixed{a, b, c, d, e, f, g, h};
    for (size_t at = 0; at < state.size(); ++at)
        state[at] += mixed[at];
}

} // namespace

Sha256 sha256(std::string_view text)
{
    State state{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    const size_t whole = text.size() - text.size() % block_size;
    for (size_t at = 0; at < whole; at += block_size)
        add_block(state, text.data() + at);

    // Behind the text come a bit 1, bits 0 up to the end of a block, and in its last eight bytes the text's length in
    // bits.
    std::string end(text.substr(whole));
    end += '\x80';
    end.resize(end.size() + 8 <= block_size ? block_size - 8 : 2 * block_size - 8);
    const uint64_t bits = uint64_t{text.size()} * 8;
    for (int shift = 56; shift >= 0; shift -= 8)
        end += static_cast<char>(bits >> shift);
    for (size_t at = 0; at < end.size(); at += block_size)
        add_block(state, end.data() + at);

    Sha256 digest;
    for (size_t at = 0; at < digest.size(); ++at)
        digest[at] = static_cast<uint8_t>(state[at / 4] >> (24 - at % 4 * 8));
    return digest;
}

} // namespace text
