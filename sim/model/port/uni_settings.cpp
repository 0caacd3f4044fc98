#include "model/port/uni_settings.h"

#include "model/olt/olt.h"

namespace ponsim
{
namespace
{

std::optional<ModelTime> next(const Olt &olt)
{
    if (olt.arriving().empty()) return std::nullopt;
    return std::max(olt.now(), olt.arriving().begin()->first);
}

Change arrive(const Olt &olt)
{
    Change change;
    for (const auto &[time, key] : olt.arriving()) {
        if (time > olt.now()) break;
        OnuSetting setting = *olt.setting(key);
        setting.before = setting.sent;
        change.put<OnuSetting>(key, setting);
    }
    return change;
}

} // namespace

const Process settings_process{next, arrive};

} // namespace ponsim
