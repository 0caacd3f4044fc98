// This file gives tests a stream whose text they look at.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

// Returns what `write` writes to its stream. When `write` throws, so does this.
inline std::string written(const std::function<void(std::FILE *)> &write)
{
    struct Memory {
        ~Memory() { std::free(text); }
        char *text = nullptr;
        size_t size = 0;
    } memory;
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> stream(open_memstream(&memory.text, &memory.size), std::fclose);
    write(stream.get());
    stream.reset();
    return {memory.text, memory.size};
}
