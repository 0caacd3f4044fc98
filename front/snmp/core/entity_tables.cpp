// The physical entities of ENTITY-MIB, and the sensors of ENTITY-SENSOR-MIB: an OLT, the modules in its cages, and what
// these measure.
#include <algorithm>
#include <map>

#include "snmp/core/items.h"
#include "snmp/core/standard_tables.h"

namespace front::snmp
{
namespace
{

// What a module measures, as ENTITY-SENSOR-MIB has it: a value times 10 to the power of the precision, in a unit with a
// scale.
struct SensorKind {
    std::string_view quantity;
    int type, scale, precision;
    double factor;
};
constexpr int other = 1, volts_dc = 4, amperes = 5, celsius = 8; // types
constexpr int milli = 8, units = 9;                              // scales
constexpr SensorKind sensor_kinds[] = {
    {"temperature", celsius, units, 2, 100},  {"voltage", volts_dc, units, 3, 1000},
    {"bias", amperes, milli, 3, 1000},        {"launch power", other, units, 2, 100},
    {"received power", other, units, 2, 100},
};

constexpr uint32_t entities_of_olt = 100'000, entities_of_cage = 10;

struct Entity {
    uint32_t index = 0;
    uint32_t container = 0;
    uint32_t position = 0; // in it
    uint32_t cage = 0;     // 0 of the OLT
    const view::sfp_quantities *sensor = nullptr;
    const SensorKind *kind = nullptr;
};

std::map<uint32_t, Entity> entities_of(const Source &source)
{
    const uint32_t chassis = source.index * entities_of_olt;
    std::map<uint32_t, Entity> found{{chassis, {.index = chassis}}};
    for (const ModuleQuantity &quantity : rows_of(source.snapshot->modules)) {
        const auto kind = std::ranges::find(sensor_kinds, quantity.of.quantity, &SensorKind::quantity);
        if (kind == std::end(sensor_kinds)) continue;
        const uint32_t module = chassis + quantity.cage * entities_of_cage;
        const auto position = static_cast<uint32_t>(kind - std::begin(sensor_kinds)) + 1;
        found[module] = {.index = module, .container = chassis, .position = quantity.cage, .cage = quantity.cage};
        found[module + position] = {.index = module + position,
                                    .container = module,
                                    .position = position,
                                    .cage = quantity.cage,
                                    .sensor = &quantity.of,
                                    .kind = kind};
    }
    return found;
}

const view::basic_info *olt_of(const Entity &of, const Making &making)
{
    const auto olt = rows_of(making.source.snapshot->olt);
    return of.cage == 0 && !olt.empty() ? olt.data() : nullptr;
}

std::string cage_name(const Entity &of, const Making &making)
{
    const auto olt = rows_of(making.source.snapshot->olt);
    if (olt.empty()) return "cage " + std::to_string(of.cage);
    const uint32_t pon_ports = olt[0].pon_ports;
    return of.cage <= pon_ports ? "PON port " + std::to_string(of.cage)
                                : "uplink " + std::to_string(of.cage - pon_ports);
}

Item description(const Entity &of, const Making &making)
{
    if (of.sensor) return std::string(of.sensor->quantity) + " of the module of " + cage_name(of, making);
    return of.cage > 0 ? "optical module of " + cage_name(of, making) : "OLT";
}

Item name(const Entity &of, const Making &making)
{
    if (of.cage == 0) return making.source.name;
    const std::string module = making.source.name + ", " + cage_name(of, making);
    return of.sensor ? module + ", " + std::string(of.sensor->quantity) : module;
}

int class_of(const Entity &of)
{
    constexpr int chassis = 3, sensor = 8, module = 9;
    return of.sensor ? sensor : of.cage > 0 ? module : chassis;
}

Item sensor_status(const Entity &of)
{
    constexpr int ok = 1, unavailable = 2;
    return of.sensor->value ? ok : unavailable;
}

constexpr Column<Entity> physical_columns[] = {
    {2, "entPhysicalDescr", Type::octets, description},
    {3, "entPhysicalVendorType", Type::oid, [](const Entity &, const Making &) { return Item(0); }},
    {4, "entPhysicalContainedIn", Type::integer, [](const Entity &of, const Making &) { return Item(of.container); }},
    {5, "entPhysicalClass", Type::integer, [](const Entity &of, const Making &) { return Item(class_of(of)); }},
    {6, "entPhysicalParentRelPos", Type::integer,
     [](const Entity &of, const Making &) { return of.cage > 0 ? Item(of.position) : Item(-1); }},
    {7, "entPhysicalName", Type::octets, name},
    {10, "entPhysicalSoftwareRev", Type::octets,
     [](const Entity &of, const Making &making) {
         const auto *olt = olt_of(of, making);
         return olt ? Item(olt->version) : std::nullopt;
     }},
    {11, "entPhysicalSerialNum", Type::octets,
     [](const Entity &of, const Making &making) {
         const auto *olt = olt_of(of, making);
         return olt ? Item(olt->serial) : std::nullopt;
     }},
    {13, "entPhysicalModelName", Type::octets,
     [](const Entity &of, const Making &making) {
         const auto *olt = olt_of(of, making);
         return olt ? Item(olt->model) : std::nullopt;
     }},
    {16, "entPhysicalIsFRU", Type::integer,
     [](const Entity &of, const Making &) { return truth(of.cage > 0 && !of.sensor); }},
};

constexpr Column<Entity> sensor_columns[] = {
    {1, "entPhySensorType", Type::integer, [](const Entity &of, const Making &) { return Item(of.kind->type); }},
    {2, "entPhySensorScale", Type::integer, [](const Entity &of, const Making &) { return Item(of.kind->scale); }},
    {3, "entPhySensorPrecision", Type::integer,
     [](const Entity &of, const Making &) { return Item(of.kind->precision); }},
    {4, "entPhySensorValue", Type::integer,
     [](const Entity &of, const Making &) { return scaled(of.sensor->value, of.kind->factor); }},
    {5, "entPhySensorOperStatus", Type::integer, [](const Entity &of, const Making &) { return sensor_status(of); }},
    {6, "entPhySensorUnitsDisplay", Type::octets,
     [](const Entity &of, const Making &) { return Item(of.sensor->unit); }},
    {7, "entPhySensorValueTimeStamp", Type::time_ticks,
     [](const Entity &, const Making &making) {
         return Item(time_ticks(making.source.snapshot->state(Table::modules).read, making.times));
     }},
    {8, "entPhySensorValueUpdateRate", Type::gauge32,
     [](const Entity &, const Making &making) {
         return gauge(making.source.snapshot->state(Table::modules).period * 1000.0);
     }},
};

} // namespace

TableInfo physical_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 47, 1, 1, 1, 1},
            .name = "entPhysicalEntry",
            .index = {{"entPhysicalIndex"}},
            .columns = kinds_of<Entity>(physical_columns),
            .made_of = {Table::olt, Table::modules},
            .make = [](Part &part, const Making &making) {
                for (const auto &[index, of] : entities_of(making.source))
                    add<Entity>(part, physical_columns, Oid{index}, of, making);
            }};
}

TableInfo sensor_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 99, 1, 1, 1},
            .name = "entPhySensorEntry",
            .index = {{"entPhysicalIndex"}},
            .columns = kinds_of<Entity>(sensor_columns),
            .made_of = {Table::modules},
            .make = [](Part &part, const Making &making) {
                for (const auto &[index, of] : entities_of(making.source))
                    if (of.sensor) add<Entity>(part, sensor_columns, Oid{index}, of, making);
            }};
}

} // namespace front::snmp
