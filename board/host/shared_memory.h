// This file has the memory in which result databases travel from a service to a client: a sealed memfd that is passed
// over the socket.
#pragma once

#include <cstdint>

#include "descriptor.h"
#include "frame.h"

namespace board
{

// A Mapping is a shared mapping of memory.
class Mapping
{
public:
    Mapping() = default;
    Mapping(int descriptor, uint32_t length, bool writable);
    Mapping(Mapping &&other) noexcept;
    Mapping &operator=(Mapping &&other) noexcept;
    ~Mapping();

    char *data() const { return static_cast<char *>(address); }
    uint32_t size() const { return length; }
    explicit operator bool() const { return address; }

private:
    void *address = nullptr;
    uint32_t length = 0;
};

// ResultMemory is the service's side. It is the memory of one connection, which carries one result at a time, or the
// memory of one datagram's answer. A result that is longer than BOARD_RESULT_MAX gets memory of its own.
class ResultMemory
{
public:
    explicit ResultMemory(bool for_one_result) : one_result(for_one_result) {}

    // Stores a result of at most BOARD_FILE_MAX bytes in place of the one before, and describes it. Returns false when
    // the system gives no memory.
    bool put(Result::State state, uint32_t key, const char *bytes, uint32_t length, Result &result);

    // Copies the result that was stored last. Returns false when the system does not give it back.
    bool copy(const Result &result, char *to) const;

    // Returns the memory when the peer has not received it yet, otherwise -1.
    int to_pass() const { return memory.get(); }
    void passed() { memory.close(); }

private:
    bool create(uint32_t length, Descriptor &created, Mapping &mapped) const;

    bool one_result;
    uint32_t generation = 0;
    Descriptor memory;
    Mapping mapping;
};

// A ResultView is the client's side: the memory that a service passed. The client trusts it only as far as it cannot do
// harm.
class ResultView
{
public:
    // Takes the memory of a result into use. Returns false, and leaves the memory alone, when its size could change
    // while it is read, or is not for such a result.
    bool adopt(const Descriptor &memory, const Result &result);

    bool holds(const Result &result) const;
    // Copies a result. Returns false when the memory does not hold it, or no longer carries it.
    bool copy(const Result &result, char *to) const;

    explicit operator bool() const { return static_cast<bool>(mapping); }

private:
    Mapping mapping;
};

} // namespace board
