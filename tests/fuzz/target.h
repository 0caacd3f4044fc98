// Each fuzz target is a program with the first of these functions. libFuzzer calls it with inputs that it makes up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" {
// Does with the bytes what a target is for. An input is wrong when the program crashes, or does not end.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
// Changes an input in place, as the target's inputs are made. A target without this function has its inputs changed
// byte by byte. Returns the new size.
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t room, unsigned seed);
// This is libFuzzer's own way to change bytes.
size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t room);
}

namespace fuzz
{

// What must be so, whatever the input is.
inline void require(bool holds, const char *what)
{
    if (holds) return;
    std::fprintf(stderr, "this does not hold: %s\n", what);
    std::abort();
}

} // namespace fuzz
