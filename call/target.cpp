#include "call/target.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "call/codec/decode.h"
#include "call/exchange.h"

namespace call
{
namespace
{

using catalogue::Field;
using namespace std::string_view_literals;

// Returns the first of these fields that the request has, or null when it has none of them.
const Field *first_field(const Reading &request, std::initializer_list<std::string_view> names)
{
    for (const std::string_view name : names) {
        const Field *field = request.layout ? catalogue::find_field(request.layout->fields, name) : nullptr;
        if (!field) field = catalogue::find_field(request.record->fields, name);
        if (field && request.reaches(*field)) return field;
    }
    return nullptr;
}

bool is_zero(const Reading &request, const Field &field)
{
    return without_trailing_zeros(field_bytes(field, request.bytes)).empty();
}

// Returns whether a zero in the field is a name: when an argument is sent in the field, and when the record is always
// about an ONU.
bool always_counts(const PermissionRequest &sent, const Field &field)
{
    if (field.name == "onu_onu_id" || field.name == "onu_pon_port") return true;
    return sent.operation && std::ranges::find(sent.operation->arguments, &field, &catalogue::Argument::field) !=
                                 sent.operation->arguments.end();
}

// Returns the first of these fields that names something in a request, or null.
const Field *naming_field(const PermissionRequest &sent, const Reading &request,
                          std::initializer_list<std::string_view> names)
{
    const Field *field = first_field(request, names);
    return field && (always_counts(sent, *field) || !is_zero(request, *field)) ? field : nullptr;
}

constexpr auto port_fields = {"pon_port"sv, "onu_pon_port"sv, "plat_port"sv};
constexpr auto onu_fields = {"onu_id"sv, "onu_onu_id"sv};
constexpr auto set_fields_of_onus = {"onu_set"sv, "id_set"sv};
constexpr auto mac_fields = {"onu_mac"sv};

} // namespace

bool Target::names(const std::optional<uint32_t> &id, const std::string &address) const
{
    if (!mac.empty() && mac == address) return true;
    if (onus) return id && holds(*onus, *id);
    if (onu) return id && *id == *onu;
    return mac.empty();
}

Target target_of(const PermissionRequest &sent)
{
    Target target;
    const Exchange &exchange = sent.exchange;
    if (!exchange.record || !exchange.channel) return target;
    const Reading request =
        read_record(*exchange.record, {exchange.channel, exchange.call, sent.command}, exchange.request);
    // Returns the text of what the request names, and adds it to the text of all.
    const auto named = [&](const char *what, std::initializer_list<std::string_view> names) {
        const Field *const field = naming_field(sent, request, names);
        const std::string text = field ? text_of(request, *field) : "";
        if (field) target.text += (target.text.empty() ? "" : ", ") + std::string(what) + " " + text;
        return field ? std::optional(text) : std::nullopt;
    };
    target.port = named("port", port_fields);
    if (const auto id = named("ONU", onu_fields); id && is_number(*id)) target.onu = parse_number("ONU", *id);
    const Field *const set = first_field(request, set_fields_of_onus);
    if (const auto ids = named("ONUs", set_fields_of_onus); ids && set && !is_zero(request, *set))
        target.onus = parse_idset("ONUs", *ids);
    const Field *const mac = first_field(request, mac_fields);
    if (const auto address = named("MAC address", mac_fields); address && mac && !is_zero(request, *mac))
        target.mac = *address;
    return target;
}

} // namespace call
