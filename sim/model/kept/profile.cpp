#include "model/kept/profile.h"

#include <algorithm>

#include "generated/service_words.h"
#include "model/kept/sla.h"

namespace ponsim
{
namespace
{

namespace line = layout::profile_line;
namespace sla = layout::profile_sla;
namespace alarm = layout::profile_alarm;

// All values of profiles are kept as signed numbers. A value that is too large for a signed number becomes negative,
// and so is below the least allowed value.
constexpr layout::At<int32_t> with_sign(layout::At<uint32_t> at)
{
    return {at.offset};
}

constexpr ProfileField line_fields[] = {
    {"vlan", with_sign(line::vlan), 0, 4094},
    {"priority", with_sign(line::priority), 0, 7},
    {"upstream", with_sign(line::upstream), 0, line_rate},
    {"downstream", with_sign(line::downstream), 0, line_rate},
    {"mac_limit", with_sign(line::mac_limit), 0, 1024},
};

constexpr ProfileField sla_fields[] = {
    {"fixed", with_sign(sla::fixed), 0, line_rate},     {"assured", with_sign(sla::assured), 0, line_rate},
    {"maximum", with_sign(sla::maximum), 1, line_rate}, {"priority", with_sign(sla::priority), 0, max_priority},
    {"weight", with_sign(sla::weight), 1, max_weight},
};

// Each low threshold comes right before its high threshold (see in_pairs).
constexpr ProfileField alarm_fields[] = {
    {"temperature_low", alarm::temperature_low, -4000, 12000, true},
    {"temperature_high", alarm::temperature_high, -4000, 12000, true},
    {"launch_power_low", alarm::launch_power_low, -4000, 1000, true},
    {"launch_power_high", alarm::launch_power_high, -4000, 1000, true},
    {"received_power_low", alarm::received_power_low, -4000, 1000, true},
    {"received_power_high", alarm::received_power_high, -4000, 1000, true},
};

using Values = std::span<const int32_t>;

bool any(Values)
{
    return true;
}

// Returns whether fixed and assured bandwidth together are within the maximum.
bool within_maximum(Values values)
{
    return values[0] + values[1] <= values[2];
}

bool in_pairs(Values values)
{
    for (size_t low = 0; low < values.size(); low += 2)
        if (values[low] >= values[low + 1]) return false;
    return true;
}

struct Form {
    std::string_view name;
    std::span<const ProfileField> fields;
    bool (*fit_together)(Values);
};

constexpr Form forms[profile_kinds] = {
    {"line", line_fields, any},
    {"sla", sla_fields, within_maximum},
    {"alarm", alarm_fields, in_pairs},
};

const Form &form_of(ProfileKind kind)
{
    return forms[static_cast<uint32_t>(kind) - 1];
}

} // namespace

std::string_view name_of(ProfileKind kind)
{
    return form_of(kind).name;
}

std::span<const ProfileField> fields_of(ProfileKind kind)
{
    return form_of(kind).fields;
}

bool is_good(ProfileKind kind, const Profile &profile)
{
    const Form &form = form_of(kind);
    const auto in_range = [](int32_t value, const ProfileField &field) {
        return value >= field.least && value <= field.greatest;
    };
    return !profile.name.empty() && std::ranges::equal(profile.values, form.fields, in_range) &&
           form.fit_together(profile.values);
}

} // namespace ponsim
