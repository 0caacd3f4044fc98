// A Descriptor owns a file descriptor.
#pragma once

#include <unistd.h>

#include <utility>

namespace board
{

class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : descriptor(fd) {}
    Descriptor(Descriptor &&other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(descriptor, other.descriptor);
        return *this;
    }
    ~Descriptor() { close(); }

    int get() const { return descriptor; }
    explicit operator bool() const { return descriptor >= 0; }

    // Gives the descriptor up without closing it.
    int release() { return std::exchange(descriptor, -1); }
    void close()
    {
        if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
    }

private:
    int descriptor = -1;
};

} // namespace board
