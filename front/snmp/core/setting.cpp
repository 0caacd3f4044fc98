#include "snmp/core/setting.h"

#include <algorithm>
#include <array>

#include "text/hex.h"

namespace front::snmp
{
namespace
{

using Result = std::variant<Order, SetError>;

constexpr size_t longest_description = 127;
constexpr int64_t most_onu_id = 127;

// Returns an Integer32 with its sign.
int64_t integer_of(const Value &value)
{
    return static_cast<int32_t>(static_cast<uint32_t>(value.number));
}

Result describe(OidView index, const Value &value)
{
    if (value.octets.size() > longest_description) return SetError::wrong_length;
    if (value.octets.find('\0') != std::string::npos) return SetError::wrong_value;
    return Order{
        index[0],
        "bsp_pon_onu_description",
        {{"pon_port", std::to_string(index[1])}, {"onu_id", std::to_string(index[2])}, {"text", value.octets}}};
}

Result act(OidView index, const Value &value)
{
    constexpr int64_t reboot = 2, deregister = 3;
    const std::string port = std::to_string(index[1]), id = std::to_string(index[2]);
    switch (integer_of(value)) {
    case reboot:
        return Order{index[0], "bsp_pon_reboot_onu_batch", {{"record.pon_port", port}, {"record.onu_set", id}}};
    case deregister:
        return Order{index[0], "bsp_8022_deregister_onu", {{"pon_port", port}, {"onu_id", id}}};
    default:
        return SetError::wrong_value;
    }
}

Result switch_uni(OidView index, const Value &value)
{
    constexpr int64_t up = 1, down = 2;
    const int64_t wanted = integer_of(value);
    if (wanted != up && wanted != down) return SetError::wrong_value;
    return Order{index[0],
                 "bsp_pon_onu_ctc_debug",
                 {{"msg.onu_cmd", "BSP_CMD_ONU_ADMIN_STATE_SET"},
                  {"msg.onu_pon_port", std::to_string(index[1])},
                  {"msg.onu_onu_id", std::to_string(index[2])},
                  {"msg.onu_uni_port", std::to_string(index[3])},
                  {"msg.on", wanted == up ? "1" : "0"}}};
}

Result admit(OidView index, const Value &value)
{
    const int64_t id = integer_of(value);
    if (id < -1 || id > most_onu_id) return SetError::wrong_value;
    std::array<uint8_t, 6> mac{};
    std::ranges::transform(index.subspan(2), mac.begin(), [](uint32_t arc) { return static_cast<uint8_t>(arc); });
    Order order{index[0],
                "bsp_pon_bind_onu_auto_id",
                {{"pon_port", std::to_string(index[1])}, {"mac", text::mac_text(mac)}, {"value", "0"}}};
    if (id >= 0) {
        order.operation = "bsp_pon_bind_onu_spec_id";
        order.arguments.emplace_back("onu_id", std::to_string(id));
    }
    return order;
}

// A Writable is a column that can be set: where it stands below the root, and what follows from a value.
struct Writable {
    Oid column;
    Type type;
    uint32_t present; // a column of the same row that has an instance whenever there is the row
    Result (*order)(OidView index, const Value &value);
};

const std::array<Writable, 4> &writables()
{
    static const std::array<Writable, 4> all{{
        {{1, 4, 1, 3}, Type::octets, 2, describe},
        {{1, 4, 1, 17}, Type::integer, 2, act},
        {{1, 8, 1, 2}, Type::integer, 2, switch_uni},
        {{1, 9, 1, 6}, Type::integer, 6, admit},
    }};
    return all;
}

} // namespace

std::vector<Oid> writable_columns(const MibSettings &settings)
{
    std::vector<Oid> columns;
    for (const Writable &writable : writables()) {
        columns.push_back(settings.root);
        columns.back().insert(columns.back().end(), writable.column.begin(), writable.column.end());
    }
    return columns;
}

std::variant<Order, SetError> order_of(const Objects &objects, const MibSettings &settings, OidView oid,
                                       const Value &value)
{
    if (!is_below(oid, settings.root)) return SetError::not_writable;
    const OidView below = oid.subspan(settings.root.size());
    for (const Writable &writable : writables()) {
        if (!is_below(below, writable.column)) continue;
        if (value.type != writable.type) return SetError::wrong_type;
        Oid present(oid.begin(), oid.end());
        present[settings.root.size() + writable.column.size() - 1] = writable.present;
        if (!objects.get(present)) return SetError::no_creation;
        return writable.order(below.subspan(writable.column.size()), value);
    }
    return SetError::not_writable;
}

} // namespace front::snmp
