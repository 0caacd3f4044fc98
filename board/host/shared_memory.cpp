#include "shared_memory.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include "board/util.h"

// The C library's headers may be older than this seal.
#ifndef F_SEAL_FUTURE_WRITE
#define F_SEAL_FUTURE_WRITE 0x0010
#endif

namespace board
{
namespace
{

// The memory starts with the generation of the result that follows.
constexpr uint32_t header_size = 64;
constexpr uint32_t full_size = header_size + BOARD_RESULT_MAX;
constexpr uint32_t greatest_size = header_size + BOARD_FILE_MAX;
constexpr int size_seals = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;

std::atomic_ref<uint32_t> generation_of(const Mapping &mapping)
{
    return std::atomic_ref<uint32_t>(*reinterpret_cast<uint32_t *>(mapping.data()));
}

} // namespace

Mapping::Mapping(int descriptor, uint32_t size, bool writable)
{
    void *const at = mmap(nullptr, size, writable ? PROT_READ | PROT_WRITE : PROT_READ, MAP_SHARED, descriptor, 0);
    if (at == MAP_FAILED) return;
    address = at;
    length = size;
}

Mapping::Mapping(Mapping &&other) noexcept
    : address(std::exchange(other.address, nullptr)), length(std::exchange(other.length, 0))
{
}

Mapping &Mapping::operator=(Mapping &&other) noexcept
{
    std::swap(address, other.address);
    std::swap(length, other.length);
    return *this;
}

Mapping::~Mapping()
{
    if (address) munmap(address, length);
}

bool ResultMemory::create(uint32_t length, Descriptor &created, Mapping &mapped) const
{
    created = Descriptor(memfd_create("board-result", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!created || ftruncate(created.get(), length)) return false;
    mapped = Mapping(created.get(), length, true);
    return static_cast<bool>(mapped);
}

bool ResultMemory::put(Result::State state, uint32_t key, const char *bytes, uint32_t length, Result &result)
{
    // Memory for a connection is sealed after this side has mapped it. Then only this side writes to it, one result
    // after the other. Memory for one result is sealed after the result is written and the memory is unmapped.
    const bool alone = one_result || length > BOARD_RESULT_MAX;
    bool done = true;
    if (alone || !mapping) {
        Descriptor created;
        Mapping mapped;
        done = create(alone ? header_size + length : full_size, created, mapped) &&
               (alone || !fcntl(created.get(), F_ADD_SEALS, size_seals | F_SEAL_FUTURE_WRITE));
        if (done) {
            memory = std::move(created);
            mapping = std::move(mapped);
        }
    }
    if (done) {
        generation_of(mapping).store(++generation);
        if (length) std::memcpy(mapping.data() + header_size, bytes, length);
        if (alone) {
            mapping = Mapping();
            done = !fcntl(memory.get(), F_ADD_SEALS, size_seals | F_SEAL_WRITE);
        }
    }
    if (!done) {
        userlog_err(__func__, __LINE__, "no shared memory for a result: %s", std::strerror(errno));
        return false;
    }
    result = {static_cast<uint16_t>(state), 0, key, header_size, length, generation};
    return true;
}

bool ResultMemory::copy(const Result &result, char *to) const
{
    // Memory for one result is no longer mapped, and is not passed yet.
    if (!mapping) return pread(memory.get(), to, result.length, result.offset) == static_cast<ssize_t>(result.length);
    std::copy_n(mapping.data() + result.offset, result.length, to); // an empty result may have a null `to`
    return true;
}

bool ResultView::adopt(const Descriptor &memory, const Result &result)
{
    const int seals = fcntl(memory.get(), F_GET_SEALS);
    struct stat found;
    if (seals < 0 || (seals & size_seals) != size_seals || !(seals & (F_SEAL_WRITE | F_SEAL_FUTURE_WRITE)) ||
        fstat(memory.get(), &found) || found.st_size < header_size ||
        found.st_size > (result.state == Result::file ? greatest_size : full_size))
        return false;
    mapping = Mapping(memory.get(), static_cast<uint32_t>(found.st_size), false);
    return static_cast<bool>(mapping);
}

bool ResultView::holds(const Result &result) const
{
    return result.offset >= header_size && result.offset <= mapping.size() &&
           result.length <= mapping.size() - result.offset;
}

bool ResultView::copy(const Result &result, char *to) const
{
    if (!holds(result)) return false;
    // A correct service writes only between a request and its answer. The generation is read after the copy, so that a
    // service which did not wait is noticed. What was copied belongs to the client, whatever the service writes next.
    std::copy_n(mapping.data() + result.offset, result.length, to); // an empty result may have a null `to`
    return generation_of(mapping).load() == result.generation;
}

} // namespace board
