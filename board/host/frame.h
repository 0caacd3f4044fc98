// This file describes what travels over the sockets. Each packet has one frame: a request goes one way, its answer the
// other. When an answer needs memory that the client does not have yet, the next packet passes that memory.
//
// A frame starts with eight bytes that are the same in any byte order; these name the byte order of what follows. A
// peer that cannot handle a frame answers with a refusal. A refusal is those eight bytes alone, so that a peer of any
// version and byte order can read it.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "board/ipc.h"
#include "board/service.h"

namespace board
{

constexpr uint8_t frame_version = 2;
constexpr uint8_t little_endian = 1;
constexpr uint8_t big_endian = 2;
constexpr uint8_t native_order = std::endian::native == std::endian::little ? little_endian : big_endian;

enum class Kind : uint8_t { request = 1, answer = 2, refusal = 3, memory = 4 };

// A Refusal says why a frame is refused.
enum class Refusal : uint8_t { none, not_a_frame, other_version, other_byte_order, wrong_length, wrong_address, busy };

const char *text_of(Refusal reason);

struct Head {
    char magic[4] = {'B', 'I', 'P', 'C'};
    uint8_t version = frame_version;
    uint8_t byte_order = native_order;
    Kind kind;
    uint8_t detail; // request and answer: the board_call; refusal: the reason; memory: 0
};

struct RequestHeader {
    Head head;
    uint32_t module;
    uint32_t msg_type;
    uint64_t sequence; // the answer repeats it
    uint32_t length;   // of the record that follows
    uint32_t allowed;  // response bytes that the caller allows
};

// A Result describes the result database that comes with an answer.
struct Result {
    enum State : uint16_t {
        none,
        shared,   // in the memory that service and client share
        too_long, // longer than that memory: only its length is given
        file      // as shared, but the client reads it as a file
    };
    uint16_t state;
    uint16_t new_memory; // 1: the next packet passes the memory, which replaces earlier memory
    uint32_t key;        // 0 of a file
    uint32_t offset;
    uint32_t length;
    uint32_t generation; // stands in the memory's header while the result is valid

    bool in_memory() const { return state == shared || state == file; }
    bool is_database() const { return state == shared || state == too_long; }
};

struct AnswerHeader {
    Head head;
    uint32_t module;
    uint32_t msg_type;
    uint64_t sequence;
    uint32_t length; // of the response that follows
    int32_t ipc_result;
    uint32_t status;
    Result result;
};

static_assert(sizeof(Head) == 8 && sizeof(RequestHeader) == 32 && sizeof(AnswerHeader) == 56);

template <class Header>
struct Frame {
    Header header;
    unsigned char data[IPC_MAX_LENGTH];

    size_t size() const { return sizeof header + header.length; }
};

using RequestFrame = Frame<RequestHeader>;
using AnswerFrame = Frame<AnswerHeader>;

inline bool is_datagram(board_call call)
{
    return call == BOARD_CALL_DGRAM_SET || call == BOARD_CALL_DGRAM_GET;
}

// Returns whether `received` bytes start with a head that this side can handle. The value `none` means that they do.
Refusal check_head(const Head &head, size_t received);

// Returns whether a packet of `received` bytes is a request that a service of `module` takes from this kind of socket.
Refusal check_request(const RequestFrame &frame, size_t received, uint32_t module, bool datagram);

// Returns whether a packet of `received` bytes is the answer to `request`.
bool answers(const AnswerFrame &frame, size_t received, const RequestHeader &request);

} // namespace board
