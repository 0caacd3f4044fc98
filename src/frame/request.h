// A Request is the request record of one operation. It is cleared and has its command code; the caller's arguments are
// then put into it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "bsp_pon.h"
#include "frame/exchange.h"

namespace frame
{

// Copies `text` with its NUL into `room` bytes. A text that is longer fills them all.
void put_text(char *to, uint32_t room, const char *text);

// Copies `count` bytes of `block` into `room` bytes, as many as fit. Copies nothing when `block` is null.
FRAME_SHARED void put_block(uint8_t *to, uint32_t room, const void *block, uint32_t count)
{
    if (block) __builtin_memcpy(to, block, count < room ? count : room);
}

// A Head says where a record of each kind carries its command code, the port that it is about, and the id on that port.
template <class Record>
struct Head;
template <>
struct Head<bsp_pon_msg> {
    static constexpr auto command = &bsp_pon_msg::cmd, port = &bsp_pon_msg::pon_port, id = &bsp_pon_msg::onu_id;
};
template <>
struct Head<bsp_pon_msg_ext> {
    static constexpr auto command = &bsp_pon_msg_ext::cmd;
};
template <>
struct Head<bsp_plat_msg> {
    static constexpr auto command = &bsp_plat_msg::plat_cmd, port = &bsp_plat_msg::plat_port,
                          id = &bsp_plat_msg::plat_arg4;
};
template <>
struct Head<bsp_onu_msg> {
    static constexpr auto command = &bsp_onu_msg::onu_cmd, port = &bsp_onu_msg::onu_pon_port,
                          id = &bsp_onu_msg::onu_onu_id;
};

template <class Record>
class Request
{
public:
    FRAME_SHARED explicit Request(uint32_t command)
    {
        clear(&record, sizeof record);
        record.*Head<Record>::command = command;
    }

    FRAME_SHARED Request(uint32_t command, uint32_t port, uint32_t id)
    {
        clear(&record, sizeof record);
        record.*Head<Record>::command = command;
        record.*Head<Record>::port = port;
        record.*Head<Record>::id = id;
    }

    // Copies the caller's record and writes the operation's own command code into the copy.
    Request(uint32_t command, const Record &callers)
    {
        __builtin_memcpy(&record, &callers, sizeof record);
        record.*Head<Record>::command = command;
    }

    Record *operator->() { return &record; }
    const Record &operator*() const { return record; }

    void put_mac(const uint8_t *mac) { __builtin_memcpy(record.onu_mac, mac, sizeof record.onu_mac); }

    // A text or block that is longer than its field continues into the fields behind it, and stops at the record's last
    // byte. A null text leaves its field empty.
    template <class Byte, size_t size>
    void put(Byte (Record::*field)[size], const char *text)
    {
        if (text) put_text(base() + offset_of(field), sizeof record - offset_of(field), text);
    }

    template <size_t size>
    void put(uint8_t (Record::*field)[size], const void *block, uint32_t count)
    {
        put_block(reinterpret_cast<uint8_t *>(base()) + offset_of(field), sizeof record - offset_of(field), block,
                  count);
    }

    // Copies a block that always has the same number of bytes. The block must not be null.
    template <uint32_t count, size_t size>
    void copy(uint8_t (Record::*field)[size], const void *block)
    {
        static_assert(count <= size);
        __builtin_memcpy(record.*field, block, count);
    }

private:
    // A copy may go past the end of a field, so its address is computed from the record as a whole.
    char *base() { return reinterpret_cast<char *>(&record); }

    template <class Member>
    uint32_t offset_of(Member Record::*field)
    {
        return static_cast<uint32_t>(reinterpret_cast<char *>(&(record.*field)) - base());
    }

    Record record;
};

} // namespace frame
