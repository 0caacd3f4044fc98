// Writes a PDU.
#pragma once

#include <string>
#include <string_view>

#include "snmp/agentx/pdu.h"
#include "snmp/core/oid.h"

namespace front::snmp::agentx
{

class Writer
{
public:
    // Begins with the header. Its length is filled in by finish().
    explicit Writer(const Header &header);

    void u8(uint8_t value) { bytes.push_back(static_cast<char>(value)); }
    void u16(uint16_t value) { number(value); }
    void u32(uint32_t value) { number(value); }
    void u64(uint64_t value) { number(value); }
    void oid(OidView value, bool included = false);
    void octets(std::string_view text);
    void binding(OidView name, const Value &value);
    // Says of a name that there is no value.
    void no_object(OidView name) { without_value(128, name); }
    void no_instance(OidView name) { without_value(129, name); }
    void end_of_view(OidView name) { without_value(130, name); }

    size_t size() const { return bytes.size(); }
    std::string finish();

private:
    template <class Number>
    void number(Number value);
    void without_value(uint16_t exception, OidView name);

    std::string bytes;
    ByteOrder order;
};

} // namespace front::snmp::agentx
