#include "views/profiles.h"

#include <cstdio>
#include <stdexcept>

#include "model/onu/profiles.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

// Returns the value of a number that is kept in hundredths of its unit.
double real(int32_t hundredths)
{
    return hundredths / 100.0;
}

uint32_t number(int32_t value)
{
    return static_cast<uint32_t>(value);
}

void add(Table<view::line_profiles> &table, uint32_t id, const Profile &profile)
{
    const std::vector<int32_t> &values = profile.values;
    table.add({.id = id,
               .name = profile.name,
               .vlan = number(values.at(0)),
               .priority = number(values.at(1)),
               .upstream = number(values.at(2)),
               .downstream = number(values.at(3)),
               .mac_limit = number(values.at(4))});
}

void add(Table<view::sla_profiles> &table, uint32_t id, const Profile &profile)
{
    const std::vector<int32_t> &values = profile.values;
    table.add({.id = id,
               .name = profile.name,
               .fixed = number(values.at(0)),
               .assured = number(values.at(1)),
               .maximum = number(values.at(2)),
               .priority = number(values.at(3)),
               .weight = number(values.at(4))});
}

void add(Table<view::alarm_profiles> &table, uint32_t id, const Profile &profile)
{
    const std::vector<int32_t> &values = profile.values;
    table.add({.id = id,
               .name = profile.name,
               .temperature_low = real(values.at(0)),
               .temperature_high = real(values.at(1)),
               .launch_power_low = real(values.at(2)),
               .launch_power_high = real(values.at(3)),
               .received_power_low = real(values.at(4)),
               .received_power_high = real(values.at(5))});
}

template <class Row>
std::string table_of(const Olt &olt, ProfileKind kind)
{
    Table<Row> table;
    for (const auto &[id, profile] : olt.profiles(kind))
        add(table, id, profile);
    return table.text();
}

std::string text_of(const ProfileField &field, int32_t value)
{
    if (!field.hundredths) return std::to_string(value);
    char text[16];
    snprintf(text, sizeof text, "%.2f", real(value));
    return text;
}

} // namespace

std::string profile_table(const Olt &olt, ProfileKind kind)
{
    switch (kind) {
    case ProfileKind::line:
        return table_of<view::line_profiles>(olt, kind);
    case ProfileKind::sla:
        return table_of<view::sla_profiles>(olt, kind);
    case ProfileKind::alarm:
        return table_of<view::alarm_profiles>(olt, kind);
    }
    throw std::logic_error("a kind of profiles without a table");
}

std::string profile_text(const Olt &olt, ProfileKind kind)
{
    const std::span<const ProfileField> fields = fields_of(kind);
    const std::map<uint32_t, Profile> &profiles = olt.profiles(kind);
    const std::string kind_name(name_of(kind));
    std::string text = "# " + kind_name + " profiles: " + std::to_string(profiles.size()) + '\n';
    for (const auto &[id, profile] : profiles) {
        text += kind_name + "-profile " + std::to_string(id) + ' ' + profile.name + '\n';
        for (size_t index = 0; index < fields.size(); ++index)
            text += ' ' + std::string(fields[index].name) + ' ' + text_of(fields[index], profile.values[index]) + '\n';
    }
    return text;
}

} // namespace ponsim
