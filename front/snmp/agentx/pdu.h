// The words of AgentX (RFC 2741), in which a subagent speaks with the master agent of SNMP.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace front::snmp::agentx
{

enum class PduType : uint8_t {
    open = 1,
    close,
    register_region,
    unregister_region,
    get,
    get_next,
    get_bulk,
    test_set,
    commit_set,
    undo_set,
    cleanup_set,
    notify,
    ping,
    index_allocate,
    index_deallocate,
    add_capabilities,
    remove_capabilities,
    response,
};

// What a response says. Numbers below 256 are those of SNMP.
enum class Error : uint16_t {
    none = 0,
    too_big = 1,
    general = 5,
    no_access = 6,
    wrong_type = 7,
    wrong_length = 8,
    wrong_encoding = 9,
    wrong_value = 10,
    no_creation = 11,
    inconsistent_value = 12,
    resource_unavailable = 13,
    commit_failed = 14,
    undo_failed = 15,
    authorization = 16,
    not_writable = 17,
    inconsistent_name = 18,
    open_failed = 256,
    not_open = 257,
    unsupported_context = 262,
    duplicate_registration = 263,
    unknown_registration = 264,
    parse = 266,
    request_denied = 267,
    processing = 268,
};
// Returns an error in words.
std::string_view text_of(Error error);

// Why a session is closed.
enum class CloseReason : uint8_t { other = 1, parse_error, protocol_error, timeouts, shutdown, by_manager };
std::string_view text_of(CloseReason reason);

enum class ByteOrder : uint8_t { little, big };
// Returns a number of this machine as one of that order, or the other way round.
template <class Number>
Number in_order(Number number, ByteOrder order)
{
    constexpr ByteOrder native = std::endian::native == std::endian::big ? ByteOrder::big : ByteOrder::little;
    if (order == native) return number;
    auto bytes = std::bit_cast<std::array<uint8_t, sizeof number>>(number);
    std::ranges::reverse(bytes);
    return std::bit_cast<Number>(bytes);
}

struct Header {
    static constexpr size_t size = 20;
    static constexpr uint8_t protocol = 1;
    static constexpr uint8_t with_context = 0x08, network_order = 0x10; // flags

    PduType type;
    uint8_t flags;
    uint32_t session;
    uint32_t transaction;
    uint32_t packet;
    uint32_t length; // of the payload behind it

    ByteOrder order() const { return flags & network_order ? ByteOrder::big : ByteOrder::little; }
};

// A payload is no longer than this. It is many times what fits into a message of SNMP.
inline constexpr uint32_t most_payload = 1 << 20;
inline constexpr size_t most_subids = 128; // numbers of an object identifier

// The peer sent bytes that are no PDU, or a PDU that says nothing sensible.
struct Malformed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Reads a header. Throws Malformed when the bytes behind it cannot be found by it.
Header read_header(std::string_view bytes);

} // namespace front::snmp::agentx
