#include "views/profiles.h"

#include <cstdio>
#include <stdexcept>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/onu/profiles.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

uint32_t table_command(ProfileKind kind)
{
    switch (kind) {
    case ProfileKind::line:
        return BSP_CMD_PROFILE_LINE_TABLE;
    case ProfileKind::sla:
        return BSP_CMD_PROFILE_SLA_TABLE;
    case ProfileKind::alarm:
        return BSP_CMD_PROFILE_ALARM_TABLE;
    }
    throw std::logic_error("a kind of profiles without a table");
}

std::string text_of(const ProfileField &field, int32_t value)
{
    if (!field.hundredths) return std::to_string(value);
    char text[16];
    snprintf(text, sizeof text, "%.2f", value / 100.0);
    return text;
}

} // namespace

std::string profile_table(const Olt &olt, ProfileKind kind)
{
    const std::span<const ProfileField> fields = fields_of(kind);
    Table table(BSP_MSG_PROFILE, table_command(kind));
    for (const auto &[id, profile] : olt.profiles(kind)) {
        table.cell("id", id);
        table.cell("name", std::string_view(profile.name));
        for (size_t index = 0; index < fields.size(); ++index) {
            const int32_t value = profile.values[index];
            if (fields[index].hundredths)
                table.cell(fields[index].name, value / 100.0);
            else
                table.cell(fields[index].name, static_cast<uint32_t>(value));
        }
    }
    return std::string(table.text());
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
