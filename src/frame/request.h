// The request record of one operation: cleared, with its command code and what the caller's arguments put into it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "bsp_pon.h"
#include "frame/exchange.h"

namespace frame
{

// Copies `text` with its NUL into `room` bytes. A text longer than that fills them all.
void put_text(char *to, uint32_t room, const char *text);

// Copies `count` bytes of `block` into `room` bytes, as many as fit. Null: nothing is copied.
FRAME_SHARED void put_block(uint8_t *to, uint32_t room, const void *block, uint32_t count)
{
    if (block) __builtin_memcpy(to, block, count < room ? count : room);
}

// Where a record of each kind carries its command code, and the port and the id on it that it is about.
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

    // A copy of the caller's record, with the operation's own command code.
    Request(uint32_t command, const Record &callers)
    {
        __builtin_memcpy(&record, &callers, sizeof record);
        record.*Head<Record>::command = command;
    }

    Record *operator->() { return &record; }
    const Record &operator*() const { return record; }

    void put_mac(const uint8_t *mac) { __builtin_memcpy(record.onu_mac, mac, sizeof record.onu_mac); }

    // A text or block longer than its field runs on into the fields behind it, and stops at the record's last byte.
    // A null text leaves its field empty.
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

    // A block that has as many bytes whatever it says; it must be there.
    template <uint32_t count, size_t size>
    void copy(uint8_t (Record::*field)[size], const void *block)
    {
        static_assert(count <= size);
        __builtin_memcpy(record.*field, block, count);
    }

private:
    // Copies start from the record as a whole: a field is not where they end.
    char *base() { return reinterpret_cast<char *>(&record); }

    template <class Member>
    uint32_t offset_of(Member Record::*field)
    {
        return static_cast<uint32_t>(reinterpret_cast<char *>(&(record.*field)) - base());
    }

    Record record;
};

} // namespace frame
