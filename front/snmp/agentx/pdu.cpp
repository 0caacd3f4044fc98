#include "snmp/agentx/pdu.h"

#include "snmp/agentx/reader.h"

namespace front::snmp::agentx
{

std::string_view text_of(Error error)
{
    switch (error) {
    case Error::none:
        return "no error";
    case Error::too_big:
        return "too big";
    case Error::general:
        return "a general error";
    case Error::no_access:
        return "no access";
    case Error::wrong_type:
        return "a wrong type";
    case Error::wrong_length:
        return "a wrong length";
    case Error::wrong_encoding:
        return "a wrong encoding";
    case Error::wrong_value:
        return "a wrong value";
    case Error::no_creation:
        return "it cannot be created";
    case Error::inconsistent_value:
        return "an inconsistent value";
    case Error::resource_unavailable:
        return "no room for it";
    case Error::commit_failed:
        return "the commit failed";
    case Error::undo_failed:
        return "it cannot be undone";
    case Error::authorization:
        return "no authorization";
    case Error::not_writable:
        return "not writable";
    case Error::inconsistent_name:
        return "an inconsistent name";
    case Error::open_failed:
        return "the session cannot be opened";
    case Error::not_open:
        return "the session is not open";
    case Error::unsupported_context:
        return "an unsupported context";
    case Error::duplicate_registration:
        return "a duplicate registration";
    case Error::unknown_registration:
        return "an unknown registration";
    case Error::parse:
        return "it cannot be parsed";
    case Error::request_denied:
        return "the request is denied";
    case Error::processing:
        return "it cannot be processed";
    }
    return "an unknown error";
}

std::string_view text_of(CloseReason reason)
{
    switch (reason) {
    case CloseReason::other:
        break;
    case CloseReason::parse_error:
        return "it could not parse a PDU";
    case CloseReason::protocol_error:
        return "a PDU was against the protocol";
    case CloseReason::timeouts:
        return "too many requests were not answered in time";
    case CloseReason::shutdown:
        return "it ends";
    case CloseReason::by_manager:
        return "a manager wanted it";
    }
    return "it gave no reason";
}

Header read_header(std::string_view bytes)
{
    if (bytes.size() < Header::size) throw Malformed("a header ends too early");
    Header header{};
    const auto byte = [&](size_t at) { return static_cast<uint8_t>(bytes[at]); };
    if (byte(0) != Header::protocol) throw Malformed("a PDU has the version " + std::to_string(byte(0)));
    header.type = static_cast<PduType>(byte(1));
    header.flags = byte(2);
    Reader reader(bytes.substr(4, Header::size - 4), header.order());
    header.session = reader.u32();
    header.transaction = reader.u32();
    header.packet = reader.u32();
    header.length = reader.u32();
    if (header.length > most_payload || header.length % 4 != 0)
        throw Malformed("a PDU has a payload of " + std::to_string(header.length) + " bytes");
    return header;
}

} // namespace front::snmp::agentx
