#include "snmp/core/notification.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "snmp/core/items.h"
#include "snmp/core/standard_tables.h"
#include "text/hex.h"

namespace front::snmp
{
namespace
{

const Oid link_down{1, 3, 6, 1, 6, 3, 1, 1, 5, 3}, link_up{1, 3, 6, 1, 6, 3, 1, 1, 5, 4};
const Oid if_entry{1, 3, 6, 1, 2, 1, 2, 2, 1};
constexpr uint32_t if_index_column = 1, admin_column = 7, oper_column = 8;
constexpr int up = 1, down = 2;

// By kind of event. The number of a notification is that of its kind, from 1 on.
constexpr std::array<std::string_view, event_kind_count> names{
    "bspOltLost",
    "bspOltBack",
    "bspOnuWaiting",
    "bspOnuOnline",
    "bspOnuOffline",
    "bspOnuRefused",
    "bspOnuRemoved",
    "bspLightLow",
    "bspLightWell",
    "bspRogueFound",
    "bspRogueGone",
    "bspLoopFound",
    "bspLoopGone",
    "",
    "",
    "bspModuleAlarm",
    "bspModuleWell",
    "bspAlarmOn",
    "bspAlarmOff",
    "bspUpgradeDone",
    "bspUpgradeFailed",
};

constexpr EventObject objects_of_events[] = {
    {1, "bspEventOlt", Type::octets},    {2, "bspEventOltIndex", Type::integer}, {3, "bspEventPort", Type::integer},
    {4, "bspEventOnuId", Type::integer}, {5, "bspEventMac", Type::octets},       {6, "bspEventCount", Type::gauge32},
    {7, "bspEventOnus", Type::octets},   {8, "bspEventDetail", Type::octets},    {9, "bspEventCause", Type::octets},
    {10, "bspEventPlace", Type::octets}, {11, "bspEventText", Type::octets},     {12, "bspEventMeasure", Type::integer},
};

Oid below(Oid top, std::initializer_list<uint32_t> rest)
{
    top.insert(top.end(), rest);
    return top;
}

std::string octets_of(const std::string &mac)
{
    const auto address = text::to_mac(mac);
    return address ? std::string(address->begin(), address->end()) : std::string();
}

Value value_of(const Item &item, Type type)
{
    return {.type = type, .number = item.number, .octets = item.octets.substr(0, longest_text)};
}

Notification own_notification(const Event &event, uint32_t olt_index, const MibSettings &settings)
{
    const Item values[] = {event.olt,
                           olt_index,
                           event.port,
                           event.onu_id ? Item(*event.onu_id) : Item(-1),
                           octets_of(event.mac),
                           event.count,
                           event.onus,
                           event.detail,
                           event.cause,
                           event.place,
                           sentence_of(event),
                           scaled(event.measure, 100)};
    static_assert(std::size(values) == std::size(objects_of_events));
    const uint32_t number = static_cast<uint32_t>(event.kind) + 1;
    Notification told{below(settings.root, {0, number}), {}};
    for (size_t i = 0; i < std::size(values); ++i)
        if (values[i].present)
            told.objects.push_back({below(settings.root, {1, 14, objects_of_events[i].number, 0}),
                                    value_of(values[i], objects_of_events[i].type)});
    return told;
}

Notification link_notification(bool is_up, uint32_t if_index, const Objects *objects)
{
    const Oid admin_name = below(if_entry, {admin_column, if_index});
    const std::optional<Value> admin = objects ? objects->get(admin_name) : std::nullopt;
    return {is_up ? link_up : link_down,
            {{below(if_entry, {if_index_column, if_index}), {.type = Type::integer, .number = if_index}},
             {admin_name, admin.value_or(Value{.type = Type::integer, .number = up})},
             {below(if_entry, {oper_column, if_index}),
              {.type = Type::integer, .number = static_cast<uint64_t>(is_up ? up : down)}}}};
}

// Returns the ifIndex of the interface whose link this event is about, if there is one.
std::optional<uint32_t> interface_of(const Event &event, uint32_t olt_index)
{
    if (event.kind == EventKind::link_down || event.kind == EventKind::link_up) {
        constexpr std::string_view uplink = "uplink ";
        uint32_t number = 0;
        if (!event.place.starts_with(uplink)) return std::nullopt;
        const char *const digits = event.place.data() + uplink.size(), *const end =
                                                                           event.place.data() + event.place.size();
        if (std::from_chars(digits, end, number).ptr != end || digits == end) return std::nullopt;
        return uplink_if_index(olt_index, number);
    }
    const bool is_alarm = event.kind == EventKind::alarm_raised || event.kind == EventKind::alarm_cleared;
    if (is_alarm && event.detail == "transmitter_off") return pon_if_index(olt_index, event.port);
    return std::nullopt;
}

} // namespace

std::span<const EventObject> event_objects()
{
    return objects_of_events;
}

std::string_view notification_name(EventKind kind)
{
    return names[static_cast<size_t>(kind)];
}

std::vector<Notification> notifications_of(const Event &event, uint32_t olt_index, const MibSettings &settings,
                                           const Objects *objects)
{
    std::vector<Notification> told;
    const std::optional<uint32_t> if_index = interface_of(event, olt_index);
    if (if_index && settings.standard_tables) {
        const bool is_up = event.kind == EventKind::link_up || event.kind == EventKind::alarm_cleared;
        told.push_back(link_notification(is_up, *if_index, objects));
    }
    if (!notification_name(event.kind).empty()) told.push_back(own_notification(event, olt_index, settings));
    return told;
}

} // namespace front::snmp
