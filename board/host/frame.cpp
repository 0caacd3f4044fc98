#include "frame.h"

#include <cstring>

namespace board
{

const char *text_of(Refusal reason)
{
    switch (reason) {
    case Refusal::none:
        return "nothing wrong";
    case Refusal::not_a_frame:
        return "not a frame";
    case Refusal::other_version:
        return "a frame of another version";
    case Refusal::other_byte_order:
        return "a frame of the other byte order";
    case Refusal::wrong_length:
        return "a frame whose length is wrong";
    case Refusal::wrong_address:
        return "a request for another module or call";
    case Refusal::busy:
        return "too many connections";
    }
    return "an unknown reason";
}

Refusal check_head(const Head &head, size_t received)
{
    const Head own{.kind = Kind::request, .detail = 0};
    if (received < sizeof head || std::memcmp(head.magic, own.magic, sizeof own.magic)) return Refusal::not_a_frame;
    if (head.version != frame_version) return Refusal::other_version;
    if (head.byte_order != native_order) return Refusal::other_byte_order;
    return Refusal::none;
}

Refusal check_request(const RequestFrame &frame, size_t received, uint32_t module, bool datagram)
{
    const RequestHeader &header = frame.header;
    if (const Refusal reason = check_head(header.head, received); reason != Refusal::none) return reason;
    if (header.head.kind != Kind::request) return Refusal::not_a_frame;
    if (received < sizeof header || header.length > sizeof frame.data || received != frame.size())
        return Refusal::wrong_length;
    if (header.module != module || header.head.detail > BOARD_CALL_DGRAM_GET ||
        is_datagram(static_cast<board_call>(header.head.detail)) != datagram)
        return Refusal::wrong_address;
    return Refusal::none;
}

bool answers(const AnswerFrame &frame, size_t received, const RequestHeader &request)
{
    const AnswerHeader &header = frame.header;
    return received >= sizeof header && header.head.kind == Kind::answer && header.length <= sizeof frame.data &&
           received == frame.size() && header.head.detail == request.head.detail && header.module == request.module &&
           header.msg_type == request.msg_type && header.sequence == request.sequence;
}

} // namespace board
