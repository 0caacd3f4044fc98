// Alarms, what modules measure, and how old all of it is.
#include <algorithm>
#include <map>

#include "snmp/core/items.h"
#include "snmp/core/pon_tables.h"

namespace front::snmp
{
namespace
{

using Alarm = view::onu_alarm;
using Quantity = view::sfp_quantities;

constexpr std::string_view severities[] = {"critical", "major", "minor"};
constexpr std::string_view alarm_states[] = {"active", "cleared"};
constexpr std::string_view quantities[] = {"temperature", "voltage", "bias", "launch power", "received power"};
constexpr std::string_view module_states[] = {"normal", "low warning", "low alarm", "high warning", "high alarm"};
constexpr uint64_t milliseconds = 1000; // of a second

constexpr Column<Alarm> alarm_columns[] = {
    {4, "bspAlarmName", Type::octets, [](const Alarm &alarm, const Making &) { return Item(alarm.name); }},
    {5, "bspAlarmSeverity", Type::integer,
     [](const Alarm &alarm, const Making &) { return place_of(alarm.severity, severities); }, severities},
    {6, "bspAlarmState", Type::integer,
     [](const Alarm &alarm, const Making &) { return place_of(alarm.state, alarm_states); }, alarm_states},
    {7, "bspAlarmOnuId", Type::integer, [](const Alarm &alarm, const Making &) { return Item(alarm.onu_id); }},
    {8, "bspAlarmMac", Type::octets, [](const Alarm &alarm, const Making &) { return Item(alarm.mac); }},
    {9, "bspAlarmCount", Type::gauge32, [](const Alarm &alarm, const Making &) { return Item(alarm.count); }},
    {10, "bspAlarmCause", Type::octets, [](const Alarm &alarm, const Making &) { return Item(alarm.cause); }},
    {11, "bspAlarmPlace", Type::octets, [](const Alarm &alarm, const Making &) { return Item(alarm.place); }},
    {12, "bspAlarmRaised", Type::gauge32,
     [](const Alarm &alarm, const Making &) {
         return alarm.raised ? gauge(static_cast<double>(*alarm.raised / milliseconds)) : std::nullopt;
     }},
    {13, "bspAlarmCleared", Type::gauge32,
     [](const Alarm &alarm, const Making &) {
         return alarm.cleared ? gauge(static_cast<double>(*alarm.cleared / milliseconds)) : std::nullopt;
     }},
};

// Returns a number that follows from who has the alarm, and where, so that it is the same as long as the alarm is
// listed: the hash of Fowler, Noll and Vo.
uint32_t number_of(const Alarm &alarm)
{
    uint32_t hash = 2'166'136'261;
    const auto take = [&hash](uint8_t octet) { hash = (hash ^ octet) * 16'777'619; };
    for (const uint8_t octet : alarm.mac.value_or(view::Mac{}))
        take(octet);
    for (const char letter : alarm.place.value_or(""))
        take(static_cast<uint8_t>(letter));
    return hash;
}

constexpr Column<Quantity> module_columns[] = {
    {3, "bspModuleValue", Type::integer, [](const Quantity &of, const Making &) { return scaled(of.value, 1000); }},
    {4, "bspModuleUnit", Type::octets, [](const Quantity &of, const Making &) { return Item(of.unit); }},
    {5, "bspModuleLowAlarm", Type::integer,
     [](const Quantity &of, const Making &) { return scaled(of.low_alarm, 1000); }},
    {6, "bspModuleLowWarning", Type::integer,
     [](const Quantity &of, const Making &) { return scaled(of.low_warning, 1000); }},
    {7, "bspModuleHighWarning", Type::integer,
     [](const Quantity &of, const Making &) { return scaled(of.high_warning, 1000); }},
    {8, "bspModuleHighAlarm", Type::integer,
     [](const Quantity &of, const Making &) { return scaled(of.high_alarm, 1000); }},
    {9, "bspModuleState", Type::integer,
     [](const Quantity &of, const Making &) { return place_of(of.state.value_or(""), module_states); }, module_states},
};

struct Reading {
    const TableKind &kind;
    const TableState &state;
};

constexpr Column<Reading> reading_columns[] = {
    {2, "bspReadingName", Type::octets, [](const Reading &of, const Making &) { return Item(of.kind.name); }},
    {3, "bspReadingPeriod", Type::gauge32, [](const Reading &of, const Making &) { return Item(of.state.period); }},
    {4, "bspReadingGeneration", Type::counter64,
     [](const Reading &of, const Making &) { return Item(of.state.generation); }},
    {5, "bspReadingTime", Type::octets,
     [](const Reading &of, const Making &) {
         return of.state.generation > 0 ? Item(date_and_time(of.state.read)) : std::nullopt;
     }},
    {6, "bspReadingAge", Type::gauge32,
     [](const Reading &of, const Making &making) {
         return of.state.generation > 0 ? gauge(static_cast<double>((making.times.now - of.state.read) / 1000))
                                        : std::nullopt;
     }},
    {7, "bspReadingTook", Type::gauge32,
     [](const Reading &of, const Making &) { return of.state.generation > 0 ? Item(of.state.took) : std::nullopt; }},
    {8, "bspReadingFailures", Type::counter64,
     [](const Reading &of, const Making &) { return Item(of.state.failures); }},
    {9, "bspReadingFailed", Type::gauge32, [](const Reading &of, const Making &) { return Item(of.state.failed); }},
    {10, "bspReadingError", Type::octets, [](const Reading &of, const Making &) { return Item(of.state.error); }},
};

} // namespace

TableInfo alarm_table()
{
    return {.entry = {1, 11, 1},
            .name = "bspAlarmEntry",
            .index = {{"bspOltIndex"}, {"bspAlarmPort"}, {"bspAlarmKind"}, {"bspAlarmNumber"}},
            .columns = kinds_of<Alarm>(alarm_columns),
            .made_of = {Table::alarms},
            .make = [](Part &part, const Making &making) {
                std::map<Oid, const Alarm *, OidLess> alarms;
                for (const Alarm &alarm : rows_of(making.source.snapshot->alarms)) {
                    Oid index{making.source.index, alarm.pon_port, alarm.alarm, number_of(alarm)};
                    while (!alarms.try_emplace(index, &alarm).second)
                        ++index.back();
                }
                for (const auto &[index, alarm] : alarms)
                    add<Alarm>(part, alarm_columns, index, *alarm, making);
            }};
}

TableInfo module_table()
{
    return {.entry = {1, 12, 1},
            .name = "bspModuleEntry",
            .index = {{"bspOltIndex"}, {"bspModuleCage"}, {"bspModuleQuantity", 1, quantities}},
            .columns = kinds_of<Quantity>(module_columns),
            .made_of = {Table::modules},
            .make = [](Part &part, const Making &making) {
                std::map<Oid, const Quantity *, OidLess> rows;
                for (const ModuleQuantity &quantity : rows_of(making.source.snapshot->modules)) {
                    const Item which = place_of(quantity.of.quantity, quantities);
                    if (which.present)
                        rows[{making.source.index, quantity.cage, static_cast<uint32_t>(which.number)}] = &quantity.of;
                }
                for (const auto &[index, quantity] : rows)
                    add<Quantity>(part, module_columns, index, *quantity, making);
            }};
}

TableInfo reading_table()
{
    return {.entry = {1, 13, 1},
            .name = "bspReadingEntry",
            .index = {{"bspOltIndex"}, {"bspReadingOf"}},
            .columns = kinds_of<Reading>(reading_columns),
            .made_of = {},
            .of_time = true,
            .make = [](Part &part, const Making &making) {
                for (const TableKind &kind : table_kinds())
                    add<Reading>(part, reading_columns, Oid{making.source.index, static_cast<uint32_t>(kind.table) + 1},
                                 {kind, making.source.snapshot->state(kind.table)}, making);
            }};
}

} // namespace front::snmp
