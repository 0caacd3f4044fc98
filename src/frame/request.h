// The request record of one operation: cleared, with its command code and what the caller's arguments put into it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "bsp_pon.h"
#include "frame/exchange.h"

namespace frame
{

// Zeroes `length` bytes. A call, because the compiler's own way to clear a record of known size is slower and larger.
void clear(void *record, uint32_t length);

// Copies `text` with its NUL to `offset` of a record of `length` bytes. A text longer than its field runs on into the
// fields behind it and stops at the record's last byte. Null: nothing is copied.
void put_text(void *record, uint32_t length, uint32_t offset, const char *text);

// Copies `count` bytes of `block` to `offset` of a record of `length` bytes, as far as the record reaches. Null:
// nothing is copied.
void put_block(void *record, uint32_t length, uint32_t offset, const void *block, uint32_t count);

inline uint32_t &command_of(bsp_pon_msg &record)
{
    return record.cmd;
}

template <class Record>
class Request
{
public:
    explicit Request(uint32_t command)
    {
        clear(&record, sizeof record);
        command_of(record) = command;
    }

    // A copy of the caller's record, with the operation's own command code.
    Request(uint32_t command, const Record &callers)
    {
        __builtin_memcpy(&record, &callers, sizeof record);
        command_of(record) = command;
    }

    Record *operator->() { return &record; }
    const Record &operator*() const { return record; }

    void put_mac(const uint8_t *mac) { __builtin_memcpy(record.onu_mac, mac, sizeof record.onu_mac); }

    template <size_t size>
    void put(char (Record::*field)[size], const char *text)
    {
        put_text(&record, sizeof record, offset_of(field), text);
    }

    template <size_t size>
    void put(uint8_t (Record::*field)[size], const void *block, uint32_t count)
    {
        put_block(&record, sizeof record, offset_of(field), block, count);
    }

    // The record, ready to be sent on a channel for an answer that offers `preset` bytes.
    Sent on(uint32_t channel, uint32_t preset, Failure failure = Failure::report) const
    {
        return {channel, &record, sizeof record, preset, failure};
    }

private:
    template <class Member>
    uint32_t offset_of(Member Record::*field) const
    {
        return static_cast<uint32_t>(reinterpret_cast<const char *>(&(record.*field)) -
                                     reinterpret_cast<const char *>(&record));
    }

    Record record;
};

} // namespace frame
