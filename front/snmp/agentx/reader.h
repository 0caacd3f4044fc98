// Reads the payload of a PDU. The master is a peer: every length is checked before what it counts is read.
#pragma once

#include <string>
#include <string_view>

#include "snmp/agentx/pdu.h"
#include "snmp/core/oid.h"

namespace front::snmp::agentx
{

// Each function throws Malformed when what it reads is not there.
class Reader
{
public:
    Reader(std::string_view payload, ByteOrder byte_order) : rest(payload), order(byte_order) {}

    bool at_end() const { return rest.empty(); }
    uint8_t u8();
    uint16_t u16();
    uint32_t u32();
    uint64_t u64();
    void skip(size_t bytes) { take(bytes); }
    // Reads an object identifier into the memory of another one, and returns whether it is itself included in a range
    // that it begins.
    bool oid(Oid &into);
    std::string_view octets();
    // Reads an instance with the value that a manager sets, whatever type that has.
    Binding binding();

private:
    std::string_view take(size_t bytes);
    template <class Number>
    Number number();

    std::string_view rest;
    ByteOrder order;
};

} // namespace front::snmp::agentx
